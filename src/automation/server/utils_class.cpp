#include "access/utils/Cls_Utils.h"

#include "automation/dispatch/late_object.h"
#include "automation/server/public_classes.h"
#include "automation/server/public_object.h"

namespace quintara::automation {

ErrorState ErrorIn(const ComPtr<IDispatch>& object) {
  if (!object) throw Failure(failure::kObjectNotSet);
  LateObject error(object, nullptr, "ErrObject", false);
  const auto number = error.Invoke("Number", Use::kCall, {});
  const auto description = error.Invoke("Description", Use::kCall, {});
  return {ToVariant(number.Raw(), nullptr).ToInteger32(), ToVariant(description.Raw(), nullptr).ToText()};
}

namespace {

// The form that reads the error only if it is shown.
constexpr auto kGetError =
    static_cast<void (Cls_Utils::*)(const std::string&, const std::function<ErrorState()>&)>(&Cls_Utils::GetError);

class UtilsObject final : public PublicObject<"Cls_Utils", ::_Cls_Utils, Cls_Utils> {
 public:
  HRESULT STDMETHODCALLTYPE IsInDesignMode(IDispatch** ZVAProduct, VARIANT_BOOL* Result) override {
    return Answer<&Cls_Utils::IsInDesignMode>(Result, ZVAProduct);
  }
  HRESULT STDMETHODCALLTYPE GetThePartNumber(IDispatch** ZVAProduct, BSTR* Result) override {
    return Answer<&Cls_Utils::GetThePartNumber>(Result, ZVAProduct);
  }
  HRESULT STDMETHODCALLTYPE IsCorrectClassID(IDispatch** Session, BSTR* Settings, short* ClassID,
                                             VARIANT_BOOL* Result) override {
    return Answer<&Cls_Utils::IsCorrectClassID>(Result, Session, Settings, ClassID);
  }
  HRESULT STDMETHODCALLTYPE IsTheRoot(IDispatch** Session, IDispatch** ZORVAProduct, IDispatch** Behavior,
                                      VARIANT_BOOL* Result) override {
    return Answer<&Cls_Utils::IsTheRoot>(Result, Session, ZORVAProduct, Behavior);
  }
  HRESULT STDMETHODCALLTYPE IndiceClasse(IDispatch** Session, BSTR* NomClasse, short* Result) override {
    return Answer<&Cls_Utils::IndiceClasse>(Result, Session, NomClasse);
  }
  HRESULT STDMETHODCALLTYPE IndiceFileType(IDispatch** Session, BSTR* NomType, short* Result) override {
    return Answer<&Cls_Utils::IndiceFileType>(Result, Session, NomType);
  }
  HRESULT STDMETHODCALLTYPE RetrieveVDObject_FromLWT(IDispatch** Session, IDispatch** ZVAProduct,
                                                     IDispatch** Result) override {
    return Answer<&Cls_Utils::RetrieveVDObject_FromLWT>(Result, Session, ZVAProduct);
  }
  HRESULT STDMETHODCALLTYPE RetrieveVDObject(IDispatch** CurrentSession, IDispatch** ZORVAObject,
                                             VARIANT_BOOL* DisplayError, IDispatch** Result) override {
    return Answer<&Cls_Utils::RetrieveVDObject>(Result, CurrentSession, ZORVAObject, DisplayError);
  }
  HRESULT STDMETHODCALLTYPE GetIdSequence(IDispatch** Session, BSTR* ClassName, BSTR* AttributID,
                                          BSTR* Result) override {
    return Answer<&Cls_Utils::GetIdSequence>(Result, Session, ClassName, AttributID);
  }
  HRESULT STDMETHODCALLTYPE WriteStringProperty(IDispatch** ZORVAObject, BSTR* PropertyName, BSTR* PropertyValue,
                                                VARIANT_BOOL* Result) override {
    return Answer<&Cls_Utils::WriteStringProperty>(Result, ZORVAObject, PropertyName, PropertyValue);
  }
  HRESULT STDMETHODCALLTYPE ReadStringProperty(IDispatch** ZORVAObject, BSTR* PropertyName, BSTR* ReturnType,
                                               BSTR* Result) override {
    return Answer<&Cls_Utils::ReadStringProperty>(Result, ZORVAObject, PropertyName, ReturnType);
  }
  HRESULT STDMETHODCALLTYPE TestWIP(IDispatch** ZORVAObject, VARIANT_BOOL* Result) override {
    return Answer<&Cls_Utils::TestWIP>(Result, ZORVAObject);
  }
  HRESULT STDMETHODCALLTYPE CheckClassName(IDispatch** VdSession, BSTR* ClassName, VARIANT_BOOL* Result) override {
    return Answer<&Cls_Utils::CheckClassName>(Result, VdSession, ClassName);
  }
  HRESULT STDMETHODCALLTYPE IsAWIP(VARIANT_BOOL* Result) override { return Answer<&Cls_Utils::IsAWIP>(Result); }
  HRESULT STDMETHODCALLTYPE GetDocumentMatrixFromObject(IDispatch** Session, IDispatch** ZORVAProduct,
                                                        IDispatch** Behavior, ::MatrixType* TypeOfMatrix,
                                                        IDispatch** Result) override {
    return Answer<&Cls_Utils::GetDocumentMatrixFromObject>(Result, Session, ZORVAProduct, Behavior, TypeOfMatrix);
  }
  HRESULT STDMETHODCALLTYPE GetDocumentFromID(IDispatch** Session, short* ClassID, LONG* ObjectID,
                                              IDispatch** Result) override {
    return Answer<&Cls_Utils::GetDocumentFromID>(Result, Session, ClassID, ObjectID);
  }
  HRESULT STDMETHODCALLTYPE CopyMatrixFromDocument(IDispatch** Session, IDispatch** DocExcel,
                                                   ::MatrixType* TypeOfMatrix, short* Result) override {
    return Answer<&Cls_Utils::CopyMatrixFromDocument>(Result, Session, DocExcel, TypeOfMatrix);
  }
  HRESULT STDMETHODCALLTYPE GetLinkedDocs(IDispatch** Session, IDispatch** ZVAProduct, ::MatrixType* TypeOfMatrix,
                                          IDispatch** Result) override {
    return Answer<&Cls_Utils::GetLinkedDocs>(Result, Session, ZVAProduct, TypeOfMatrix);
  }
  HRESULT STDMETHODCALLTYPE ChooseMatrix(IDispatch** Session, IDispatch** DocExcel, IDispatch** Result) override {
    return Answer<&Cls_Utils::ChooseMatrix>(Result, Session, DocExcel);
  }
  HRESULT STDMETHODCALLTYPE IsMatrixAlreadyExist(IDispatch** oZORVARoot, IDispatch** oVDRoot,
                                                 VARIANT_BOOL* bMatrixExists, VARIANT_BOOL* bMatrixToUpdate,
                                                 IDispatch** oMatrix, ::MatrixType* TypeOfMatrix,
                                                 VARIANT_BOOL* ForceYes, VARIANT_BOOL* Result) override {
    return Answer<&Cls_Utils::IsMatrixAlreadyExist>(Result, oZORVARoot, oVDRoot, bMatrixExists, bMatrixToUpdate,
                                                    oMatrix, TypeOfMatrix, ForceYes);
  }
  HRESULT STDMETHODCALLTYPE IsMatrixAlreadyExistAsInformation(IDispatch** oZORVARoot, IDispatch** oVDRoot,
                                                              ::MatrixType* TypeOfMatrix,
                                                              VARIANT_BOOL* Result) override {
    return Answer<&Cls_Utils::IsMatrixAlreadyExistAsInformation>(Result, oZORVARoot, oVDRoot, TypeOfMatrix);
  }
  HRESULT STDMETHODCALLTYPE LifeCycleOperation(IDispatch** VdSession, IDispatch** VdObject, BSTR* OperationName,
                                               VARIANT_BOOL* InvokeScripts, VARIANT_BOOL* Result) override {
    return Answer<&Cls_Utils::LifeCycleOperation>(Result, VdSession, VdObject, OperationName, InvokeScripts);
  }
  HRESULT STDMETHODCALLTYPE CheckInObject(IDispatch** oVdSession, IDispatch** Object) override {
    return Do<&Cls_Utils::CheckInObject>(oVdSession, Object);
  }
  HRESULT STDMETHODCALLTYPE ReleaseObject(IDispatch** oVdSession, IDispatch** Object) override {
    return Do<&Cls_Utils::ReleaseObject>(oVdSession, Object);
  }
  HRESULT STDMETHODCALLTYPE PopulateObjectMasks(IDispatch** oVdSession, IDispatch** objVdObject) override {
    return Do<&Cls_Utils::PopulateObjectMasks>(oVdSession, objVdObject);
  }
  HRESULT STDMETHODCALLTYPE LastVersion(IDispatch** Object, IDispatch** Result) override {
    return Answer<&Cls_Utils::LastVersion>(Result, Object);
  }
  HRESULT STDMETHODCALLTYPE AcceptGlobalRefresh(IDispatch** WorkObjects, VARIANT_BOOL* Result) override {
    return Answer<&Cls_Utils::AcceptGlobalRefresh>(Result, WorkObjects);
  }
  HRESULT STDMETHODCALLTYPE GetAllChildren(IDispatch** VdSession, IDispatch** VdObject, IDispatch** VdAllChildren,
                                           IDispatch** VdBehavior, BSTR* AttributeNames,
                                           VARIANT_BOOL* Result) override {
    return Answer<&Cls_Utils::GetAllChildren>(Result, VdSession, VdObject, VdAllChildren, VdBehavior, AttributeNames);
  }
  HRESULT STDMETHODCALLTYPE GetTheRootName(IDispatch** DocumentObject, BSTR* Result) override {
    return Answer<&Cls_Utils::GetTheRootName>(Result, DocumentObject);
  }
  HRESULT STDMETHODCALLTYPE RetrieveAllObjectsLinked(IDispatch** Session, IDispatch** VDObject,
                                                     BSTR* LinkedObjectsClassName, BSTR* LinkClassName,
                                                     IDispatch** ObjectsLinked, VARIANT_BOOL* Result) override {
    return Answer<&Cls_Utils::RetrieveAllObjectsLinked>(Result, Session, VDObject, LinkedObjectsClassName,
                                                        LinkClassName, ObjectsLinked);
  }
  HRESULT STDMETHODCALLTYPE RemoveLogicalLink(IDispatch** Session, IDispatch** VDObject1, IDispatch** VDObject2,
                                              BSTR* LinkName, VARIANT_BOOL* Result) override {
    return Answer<&Cls_Utils::RemoveLogicalLink>(Result, Session, VDObject1, VDObject2, LinkName);
  }
  HRESULT STDMETHODCALLTYPE CopyVeldoraObjectToWork(IDispatch** oVdObject, BSTR* Result) override {
    return Answer<&Cls_Utils::CopyVeldoraObjectToWork>(Result, oVdObject);
  }
  HRESULT STDMETHODCALLTYPE CopyVeldoraObjectLWTToWork(IDispatch** oVdObject, IDispatch** fs, BSTR* Result) override {
    return Answer<&Cls_Utils::CopyVeldoraObjectLWTToWork>(Result, oVdObject, fs);
  }
  HRESULT STDMETHODCALLTYPE CopyVeldoraObjectToWorkAndGetLWT(IDispatch** CurrentSession, IDispatch** oVdObject,
                                                             IDispatch** fs, BSTR* Result) override {
    return Answer<&Cls_Utils::CopyVeldoraObjectToWorkAndGetLWT>(Result, CurrentSession, oVdObject, fs);
  }
  HRESULT STDMETHODCALLTYPE CopyVeldoraObjectLWTToWork_Temp(IDispatch** oVdObject, BSTR* sTemp, IDispatch** fs,
                                                            BSTR* Result) override {
    return Answer<&Cls_Utils::CopyVeldoraObjectLWTToWork_Temp>(Result, oVdObject, sTemp, fs);
  }
  HRESULT STDMETHODCALLTYPE BuildFullName(IDispatch** ZORVAObject, IDispatch** ZORVARoot, BSTR* Result) override {
    return Answer<&Cls_Utils::BuildFullName>(Result, ZORVAObject, ZORVARoot);
  }
  HRESULT STDMETHODCALLTYPE StripFileExtension(BSTR* FileName, BSTR* Result) override {
    return Answer<&Cls_Utils::StripFileExtension>(Result, FileName);
  }
  HRESULT STDMETHODCALLTYPE GetFileExtension(BSTR* FileName, BSTR* Result) override {
    return Answer<&Cls_Utils::GetFileExtension>(Result, FileName);
  }
  HRESULT STDMETHODCALLTYPE ExecuteZorvaScript(BSTR* ModuleName, BSTR* ProcedureName, VARIANT_BOOL* Result) override {
    return Answer<&Cls_Utils::ExecuteZorvaScript>(Result, ModuleName, ProcedureName);
  }
  HRESULT STDMETHODCALLTYPE HasActiveDocument(IDispatch** CurrentZorvaApplication, VARIANT_BOOL* Result) override {
    return Answer<&Cls_Utils::HasActiveDocument>(Result, CurrentZorvaApplication);
  }
  HRESULT STDMETHODCALLTYPE ShowMessage(BSTR* Message, LONG* MessageType, SAFEARRAY** Parameter,
                                        VARIANT* Result) override {
    return Answer<&Cls_Utils::ShowMessage>(Result, Message, MessageType, Parameter);
  }
  HRESULT STDMETHODCALLTYPE GetMessage(BSTR* Message, SAFEARRAY** Parameter, BSTR* Result) override {
    return Answer<&Cls_Utils::GetMessage>(Result, Message, Parameter);
  }
  HRESULT STDMETHODCALLTYPE GetError(BSTR* FunctionName, IDispatch** error) override {
    return Do<kGetError>(FunctionName, error);
  }
};

}  // namespace

void AddUtilsClass(std::vector<PublicClass>& all) {
  all.push_back(ClassOf<UtilsObject, ::Cls_Utils, ::_Cls_Utils>(L"Cls_Utils"));
}

}  // namespace quintara::automation
