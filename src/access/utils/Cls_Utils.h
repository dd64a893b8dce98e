#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "access/contracts/veldora.h"
#include "access/contracts/zorva.h"
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
};

/// The instance of this process, made where there is none.
Cls_Utils& Utils();

}  // namespace quintara
