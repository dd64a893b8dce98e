#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "access/contracts/file_system.h"
#include "access/contracts/veldora.h"
#include "access/contracts/zorva.h"
#include "access/session/matrix_type.h"
#include "base/attempt.h"
#include "base/ref.h"
#include "base/variant.h"

namespace quintara {

/// The common operations on the two host systems, and the one way to speak to the user. Stateless;
/// one instance lives in a process global, see `Utils`.
///
/// Where it isn't told otherwise, a failure is shown as `COMMON.UNEXPECTED_ERROR` and the result is
/// the neutral one, and nothing is ever shown where "failures give" a value.
class Cls_Utils {
 public:
  // Components of the CAD host.

  /// True when the part number of the product can be read: a component that isn't loaded in
  /// design form can't give it. Failures count as False.
  bool IsInDesignMode(const Ref<zorva::Product>& ZVAProduct);

  /// The part number. A component that isn't in design form is brought into it for the reading
  /// (work mode 0) and set back afterwards (1). A failure gives the empty text, and the component
  /// may then stay in mode 0.
  std::string GetThePartNumber(const Ref<zorva::Product>& ZVAProduct);

  // Identity.

  /// True when `ClassID` is the class of one of the names in `Settings`, which has commas and no
  /// blanks between them. Failures, such as a name that the vault doesn't know (the empty text is one
  /// empty name), go to the caller.
  bool IsCorrectClassID(const Ref<veldora::VdSession>& Session, const std::string& Settings, std::int16_t ClassID);

  /// True when no product holds this one: what holds it and is of no product class doesn't count.
  bool IsTheRoot(const Ref<veldora::VdSession>& Session, const Ref<veldora::VdObject>& ZORVAProduct,
                 const Ref<veldora::VdBehavior>& Behavior);

  /// The id of a class by its name; failures give 0.
  std::int16_t IndiceClasse(const Ref<veldora::VdSession>& Session, const std::string& NomClasse);
  /// The id of a file type by its name, such as "xml"; failures give 0.
  std::int16_t IndiceFileType(const Ref<veldora::VdSession>& Session, const std::string& NomType);

  /// The vault object whose identity stands in the properties "CLASS_ID" and "OBJECT_ID" of a
  /// component loaded as a light representation; nothing, after a warning that names the component,
  /// where they are missing, no numbers, or lead nowhere, as after any failure. A number is a finite
  /// decimal ("12", "1.2e1"), with blanks around it at most; it is rounded, halves to the even
  /// number. Without a component, whose name no warning could tell, the failure goes to the caller.
  Ref<veldora::VdObject> RetrieveVDObject_FromLWT(const Ref<veldora::VdSession>& Session,
                                                  const Ref<zorva::Product>& ZVAProduct);
  /// The vault object of the document behind a component; nothing where the vault doesn't know it or
  /// it was never saved. A failure gives nothing too, and is shown only if `DisplayError`.
  Ref<veldora::VdObject> RetrieveVDObject(const Ref<veldora::VdSession>& CurrentSession,
                                          const Ref<zorva::Product>& ZORVAObject, bool DisplayError = false);

  /// The next value of the sequence of an attribute; empty, after a message that names the
  /// attribute, on a failure.
  std::string GetIdSequence(const Ref<veldora::VdSession>& Session, const std::string& ClassName,
                            const std::string& AttributID);

  /// Writes a property of a CAD object: the one that is there, else a new one. False only when a new
  /// one can't be made: a failure on the way to the one that is there, or in writing it, is ignored.
  bool WriteStringProperty(const Ref<zorva::Product>& ZORVAObject, const std::string& PropertyName,
                           const std::string& PropertyValue);
  /// A property of a CAD object; where there is none, and on a failure, "-1" for the `ReturnType`
  /// "Integer" and else the empty text.
  std::string ReadStringProperty(const Ref<zorva::Product>& ZORVAObject, const std::string& PropertyName,
                                 const std::string& ReturnType = {});

  /// True when the product bears the mark of a work in progress.
  bool TestWIP(const Ref<zorva::Product>& ZORVAObject);
  /// True when the active document of the CAD host is a work in progress. Failures give False.
  bool IsAWIP();

  /// True when the vault has a class of that name; otherwise a message names it.
  bool CheckClassName(const Ref<veldora::VdSession>& VdSession, const std::string& ClassName);

  // Matrix documents. Each is linked to the product that it was made from; its description is that
  // product's part number and " Matrix", its file type tells its form.

  /// The newest revision of the first document linked to the product whose description ends in "Matrix";
  /// whose part number stands before that doesn't matter. Nothing where there is none.
  Ref<veldora::VdObject> GetDocumentMatrixFromObject(const Ref<veldora::VdSession>& Session,
                                                     const Ref<veldora::VdObject>& ZORVAProduct,
                                                     const Ref<veldora::VdBehavior>& Behavior, MatrixType TypeOfMatrix);
  /// The newest revision of a document; failures give nothing.
  Ref<veldora::VdObject> GetDocumentFromID(const Ref<veldora::VdSession>& Session, std::int16_t ClassID,
                                           std::int32_t ObjectID);
  /// Brings the document's file into the work directory, which is made if it isn't there, under its
  /// description and ".xls" or ".xml", in place of a file of that name. 1 on success; failures give 0.
  std::int16_t CopyMatrixFromDocument(const Ref<veldora::VdSession>& Session, const Ref<veldora::VdObject>& DocExcel,
                                      MatrixType TypeOfMatrix);
  /// The matrices of all root products that hold this object, each once; those of a root itself.
  /// Nothing where there are none, and after a failure.
  Ref<veldora::VdObjects> GetLinkedDocs(const Ref<veldora::VdSession>& Session,
                                        const Ref<veldora::VdObject>& ZVAProduct, MatrixType TypeOfMatrix);
  /// Lets the user pick one of several; nothing when none was picked, and after a failure.
  Ref<veldora::VdObject> ChooseMatrix(const Ref<veldora::VdSession>& Session, const Ref<veldora::VdObjects>& DocExcel);
  /// Looks for the matrix of exactly this product, in the session of the process, and asks whether to
  /// write it; `ForceYes` answers for the user. `oMatrix` is written only where one exists. The result
  /// is always False. Failures go to the caller.
  bool IsMatrixAlreadyExist(const Ref<zorva::Product>& oZORVARoot, const Ref<veldora::VdObject>& oVDRoot,
                            bool& bMatrixExists, bool& bMatrixToUpdate, Ref<veldora::VdObject>& oMatrix,
                            MatrixType TypeOfMatrix, bool ForceYes = false);
  /// Whether the product has a matrix of its own, without a question. Failures go to the caller.
  bool IsMatrixAlreadyExistAsInformation(const Ref<zorva::Product>& oZORVARoot, const Ref<veldora::VdObject>& oVDRoot,
                                         MatrixType TypeOfMatrix);

  // Life cycle and structure.

  /// Takes an object through "CHECKIN" (from the states 0 and 2), "RELEASE" (0, 1, 2), "OBSOLETE" (3),
  /// "CHECKOUT" (1) or "NEWRELEASE" (3). A state that doesn't allow it, another name and a failure show
  /// the same refusal, which names the object by its key attributes; the result is then False.
  bool LifeCycleOperation(const Ref<veldora::VdSession>& VdSession, const Ref<veldora::VdObject>& VdObject,
                          const std::string& OperationName, bool InvokeScripts = false);
  /// The simple forms, which don't look at the state and never say that they failed.
  void CheckInObject(const Ref<veldora::VdSession>& oVdSession, const Ref<veldora::VdObject>& Object);
  void ReleaseObject(const Ref<veldora::VdSession>& oVdSession, const Ref<veldora::VdObject>& Object);
  /// Gives a new object the next values of its numbered attributes, and its first revision. Failures
  /// go to the caller.
  void PopulateObjectMasks(const Ref<veldora::VdSession>& oVdSession, const Ref<veldora::VdObject>& objVdObject);
  /// The newest revision; the object itself after a failure.
  Ref<veldora::VdObject> LastVersion(const Ref<veldora::VdObject>& Object);
  /// True when all objects are checked in or released. A failure that comes up before one is found that
  /// isn't leaves True.
  bool AcceptGlobalRefresh(const Ref<veldora::VdObjects>& WorkObjects);
  /// Everything below an object, breadth first, an object as often as it is held. `AttributeNames`, with
  /// commas between them, are read for all of them in one step.
  bool GetAllChildren(const Ref<veldora::VdSession>& VdSession, const Ref<veldora::VdObject>& VdObject,
                      Ref<veldora::VdObjects>& VdAllChildren, const Ref<veldora::VdBehavior>& VdBehavior = nullptr,
                      const std::string& AttributeNames = {});
  /// The part number that a matrix was made from: its description without the last word. Failures give
  /// the empty text.
  std::string GetTheRootName(const Ref<veldora::VdObject>& DocumentObject);
  /// The objects of one class that are linked to this one through links of another, each once; nothing
  /// where there are none.
  bool RetrieveAllObjectsLinked(const Ref<veldora::VdSession>& Session, const Ref<veldora::VdObject>& VDObject,
                                const std::string& LinkedObjectsClassName, const std::string& LinkClassName,
                                Ref<veldora::VdObjects>& ObjectsLinked);
  /// Removes the link between two objects; True also where there is none.
  bool RemoveLogicalLink(const Ref<veldora::VdSession>& Session, const Ref<veldora::VdObject>& VDObject1,
                         const Ref<veldora::VdObject>& VDObject2, const std::string& LinkName);

  // Files of the work directory. The copies take the place of a file of their name; they give the full
  // path in the work directory, or the empty text on a failure, which only the first of them shows.

  /// The object's file, under its own name, with those of all that it holds.
  std::string CopyVeldoraObjectToWork(const Ref<veldora::VdObject>& oVdObject);
  /// The light representation, as part number and ".lwt". A missing one isn't noticed.
  std::string CopyVeldoraObjectLWTToWork(const Ref<veldora::VdObject>& oVdObject, const Ref<FileSystemObject>& fs);
  /// The object's file as part number and extension, and its light representation beside it under that
  /// name and ".lwt": the path of the latter. Empty unless both are there.
  std::string CopyVeldoraObjectToWorkAndGetLWT(const Ref<veldora::VdSession>& CurrentSession,
                                               const Ref<veldora::VdObject>& oVdObject,
                                               const Ref<FileSystemObject>& fs);
  /// As the second, with `sTemp` behind the part number, so that it doesn't meet the one in use.
  std::string CopyVeldoraObjectLWTToWork_Temp(const Ref<veldora::VdObject>& oVdObject, const std::string& sTemp,
                                              const Ref<FileSystemObject>& fs);

  /// The instance names from a component up to the root, parted by backslashes; it ends at the first
  /// that bears the root's name.
  std::string BuildFullName(const Ref<zorva::Product>& ZORVAObject, const Ref<zorva::Product>& ZORVARoot);

  /// What stands before and behind the last point of a path, wherever that is; without a point the whole
  /// path and the empty text.
  std::string StripFileExtension(const std::string& FileName);
  std::string GetFileExtension(const std::string& FileName);

  /// Runs a procedure of the macro project "ProjectQNTR.zvavba", which lies in the folder "QNTR" of the
  /// vault's base directory, in the CAD host.
  bool ExecuteZorvaScript(const std::string& ModuleName, const std::string& ProcedureName);
  /// True when a product document is active. Failures give False.
  bool HasActiveDocument(const Ref<zorva::Application>& CurrentZorvaApplication);

  // Messages.

  /// Shows `Message` in a box titled "Quintara" with the style `MessageType` and gives its answer, a
  /// button code as a 32-bit integer. In `Message` itself "REP1", "REP2", ... are replaced by the
  /// elements of `Parameter`, one after the other, and then "ENT" by a line break: a text shown again
  /// repeats the first values. An empty `Message` shows `COMMON.UTILS.MESSAGE_IS_EMPTY` in style 16
  /// and gives an empty result. Failures go to the caller, 13 for an element that is no text.
  Variant ShowMessage(std::string& Message, int MessageType, const std::vector<Variant>& Parameter);
  /// The same text without a box, and without a change of `Message`; empty for an empty one.
  std::string GetMessage(const std::string& Message, const std::vector<Variant>& Parameter);
  /// Shows a failure to those who debug: only while the environment variable "DEBUG" is "true",
  /// capitals ignored.
  void GetError(const std::string& FunctionName, const ErrorState& error);
  /// The same for an error that is read only when it is shown; what `error` throws goes to the caller.
  void GetError(const std::string& FunctionName, const std::function<ErrorState()>& error);

 private:
  friend class UtilsInternals;  // the tests' way to the private operations

  Ref<veldora::VdObjects> CollectRootMatrices(const Ref<veldora::VdSession>& Session,
                                              const Ref<veldora::VdObject>& Object, std::int16_t ProductClassId,
                                              const Ref<veldora::VdBehavior>& Behavior,
                                              Ref<veldora::VdObjects> Documents, MatrixType TypeOfMatrix);
  bool AddObjectToObjects(const Ref<veldora::VdSession>& Session, const Ref<veldora::VdObject>& Object,
                          Ref<veldora::VdObjects>& Objects);
  bool CompareObjects(const Ref<veldora::VdObject>& Object1, const Ref<veldora::VdObject>& Object2, bool& Same);
};

/// The instance of this process, made where there is none.
Cls_Utils& Utils();

}  // namespace quintara
