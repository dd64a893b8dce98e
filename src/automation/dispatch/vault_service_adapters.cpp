#include <array>

#include "automation/dispatch/late_bound.h"

namespace quintara::automation {
namespace {

class VdSessionUtilAdapter final : public LateBound<veldora::VdSessionUtil> {
 public:
  using LateBound::LateBound;

  bool CanPerform(const Ref<veldora::VdObject>& object, const Ref<veldora::VdOperation>& operation, int flag) override {
    return Ask<&veldora::VdSessionUtil::CanPerform>(object, operation, flag);
  }
  Ref<veldora::VdObject> CheckOut(const Ref<veldora::VdObject>& object, const Ref<veldora::VdRecord>& record,
                                  bool invokeScripts) override {
    return Ask<&veldora::VdSessionUtil::CheckOut>(object, record, invokeScripts);
  }
  int CheckIn(const Ref<veldora::VdObject>& object, const Ref<veldora::VdRecord>& record, bool invokeScripts) override {
    return Ask<&veldora::VdSessionUtil::CheckIn>(object, record, invokeScripts);
  }
  int Release(const Ref<veldora::VdObject>& object, const Ref<veldora::VdRecord>& record, bool invokeScripts) override {
    return Ask<&veldora::VdSessionUtil::Release>(object, record, invokeScripts);
  }
  Ref<veldora::VdObject> NewRelease(const Ref<veldora::VdObject>& object, const Ref<veldora::VdRecord>& record,
                                    bool invokeScripts) override {
    return Ask<&veldora::VdSessionUtil::NewRelease>(object, record, invokeScripts);
  }
  int Obsolete(const Ref<veldora::VdObject>& object, const Ref<veldora::VdRecord>& record,
               bool invokeScripts) override {
    return Ask<&veldora::VdSessionUtil::Obsolete>(object, record, invokeScripts);
  }
  void RunOperation(const Ref<veldora::VdObject>& object, const Ref<veldora::VdOperation>& operation, bool flag,
                    const Ref<veldora::VdRecList>& rows, const Ref<veldora::VdRecList>& parameters) override {
    Ask<&veldora::VdSessionUtil::RunOperation>(object, operation, flag, rows, parameters);
  }
  int CopyVaultFile(std::int32_t vaultObjectId, const std::string& vaultDirectory, const std::string& fileName,
                    const std::string& targetDirectory, const std::string& targetName) override {
    return Ask<&veldora::VdSessionUtil::CopyVaultFile>(vaultObjectId, vaultDirectory, fileName, targetDirectory,
                                                       targetName);
  }
  void CopyDocumentFile(const Ref<veldora::VdObject>& document, const std::string& targetName,
                        const std::string& targetDirectory, int flag) override {
    Ask<&veldora::VdSessionUtil::CopyDocumentFile>(document, targetName, targetDirectory, flag);
  }
};

class VdClientPathsAdapter final : public LateBound<veldora::VdClientPaths> {
 public:
  using LateBound::LateBound;

  std::string CurrentKey() override { return Ask<&veldora::VdClientPaths::CurrentKey>(); }
  std::string WorkDirectoryOf(const std::string& key) override {
    return Ask<&veldora::VdClientPaths::WorkDirectoryOf>(key);
  }
};

class VdServiceContextAdapter final : public LateBound<veldora::VdServiceContext> {
 public:
  using LateBound::LateBound;

  Ref<veldora::VdClientPaths> Paths() override { return Ask<&veldora::VdServiceContext::Paths>(); }
};

class VdClientContextServiceAdapter final : public LateBound<veldora::VdClientContextService> {
 public:
  using LateBound::LateBound;

  Ref<veldora::VdServiceContext> Context() override { return Ask<&veldora::VdClientContextService::Context>(); }
};

class VdDialogInputAdapter final : public LateBound<veldora::VdDialogInput> {
 public:
  using LateBound::LateBound;

  void SetObjects(const Ref<AnyObject>& objects) override { Ask<&veldora::VdDialogInput::SetObjects>(objects); }
};

class VdDialogOutputAdapter final : public LateBound<veldora::VdDialogOutput> {
 public:
  using LateBound::LateBound;

  Ref<veldora::VdObjects> Objects() override { return Ask<&veldora::VdDialogOutput::Objects>(); }
};

class VdDialogWindowAdapter final : public LateBound<veldora::VdDialogWindow> {
 public:
  using LateBound::LateBound;

  void SetTitle(const std::string& title) override { Ask<&veldora::VdDialogWindow::SetTitle>(title); }
  void SetWindowOptionA(int value) override { Ask<&veldora::VdDialogWindow::SetWindowOptionA>(value); }
  void SetWindowOptionB(int value) override { Ask<&veldora::VdDialogWindow::SetWindowOptionB>(value); }
  void Show() override { Ask<&veldora::VdDialogWindow::Show>(); }
  int Result() override { return Ask<&veldora::VdDialogWindow::Result>(); }
};

class VdDialogAdapter final : public LateBound<veldora::VdDialog> {
 public:
  using LateBound::LateBound;

  Ref<veldora::VdDialogInput> Input() override { return Ask<&veldora::VdDialog::Input>(); }
  Ref<veldora::VdDialogOutput> Output() override { return Ask<&veldora::VdDialog::Output>(); }
  Ref<veldora::VdDialogWindow> Window() override { return Ask<&veldora::VdDialog::Window>(); }
};

class VdDialogsAdapter final : public LateBound<veldora::VdDialogs> {
 public:
  using LateBound::LateBound;

  Ref<veldora::VdDialog> New(int kind) override { return Ask<&veldora::VdDialogs::New>(kind); }
};

class VdCommonGUIAdapter final : public LateBound<veldora::VdCommonGUI> {
 public:
  using LateBound::LateBound;

  Ref<veldora::VdDialogs> Dialogs() override { return Ask<&veldora::VdCommonGUI::Dialogs>(); }
};

class VdGUIServicesAdapter final : public LateBound<veldora::VdGUIServices> {
 public:
  using LateBound::LateBound;

  Ref<veldora::VdDialog> New(int kind) override { return Ask<&veldora::VdGUIServices::New>(kind); }
};

class VdConfigProviderAdapter final : public LateBound<veldora::VdConfigProvider> {
 public:
  using LateBound::LateBound;

  Variant Value(const std::string& uri, const std::string& key) override {
    return Ask<&veldora::VdConfigProvider::Value>(uri, key);
  }
};

class VdClientContextAdapter final : public LateBound<veldora::VdClientContext> {
 public:
  using LateBound::LateBound;

  Ref<veldora::VdConfigProvider> Open(const std::string& clientName, const std::string& databaseType,
                                      const std::string& applicationName, const std::string& uri,
                                      const std::string& reserved) override {
    return Ask<&veldora::VdClientContext::Open>(clientName, databaseType, applicationName, uri, reserved);
  }
};

class VdTranslatorAdapter final : public LateBound<veldora::VdTranslator> {
 public:
  using LateBound::LateBound;

  void SetLanguage(const std::string& language) override { Ask<&veldora::VdTranslator::SetLanguage>(language); }
  std::string Translate(const std::string& nameSpace, const std::string& key, const std::string& appendix,
                        const std::string& version) override {
    return Ask<&veldora::VdTranslator::Translate>(nameSpace, key, appendix, version);
  }
};

class HIXDocumentAdapter final : public LateBound<veldora::HIXDocument> {
 public:
  using LateBound::LateBound;

  Ref<zorva::Document> Document() override { return Ask<&veldora::HIXDocument::Document>(); }
};

class HIXEngineAdapter final : public LateBound<veldora::HIXEngine> {
 public:
  using LateBound::LateBound;

  bool IsConnected() override { return Ask<&veldora::HIXEngine::IsConnected>(); }
  void Connect(const std::string& login, const std::string& password) override {
    Ask<&veldora::HIXEngine::Connect>(login, password);
  }
  void Disconnect() override { Ask<&veldora::HIXEngine::Disconnect>(); }
  Ref<veldora::HIXDocument> DocumentInfo(const std::string& fullName) override {
    return Ask<&veldora::HIXEngine::DocumentInfo>(fullName);
  }
  std::int16_t DocumentClassId(const Ref<veldora::HIXDocument>& handle) override {
    return Ask<&veldora::HIXEngine::DocumentClassId>(handle);
  }
  std::int32_t DocumentObjectId(const Ref<veldora::HIXDocument>& handle) override {
    return Ask<&veldora::HIXEngine::DocumentObjectId>(handle);
  }
  Ref<veldora::HIXDocument> DocumentHandle(std::int16_t classId, std::int32_t objectId) override {
    return Ask<&veldora::HIXEngine::DocumentHandle>(classId, objectId);
  }
  Ref<veldora::HIXDocument> DocumentHandleOf(const Ref<zorva::Document>& document) override {
    return Ask<&veldora::HIXEngine::DocumentHandleOf>(document);
  }
  void CheckOutDocument(const Ref<veldora::HIXDocument>& handle) override {
    Ask<&veldora::HIXEngine::CheckOutDocument>(handle);
  }
  void CommitStep1(const Ref<veldora::HIXDocument>& handle) override { Ask<&veldora::HIXEngine::CommitStep1>(handle); }
  void CommitStep2(const Ref<veldora::HIXDocument>& handle) override { Ask<&veldora::HIXEngine::CommitStep2>(handle); }
};

}  // namespace

template <>
Ref<veldora::VdSessionUtil> Adapt(ComPtr<IDispatch> object, const std::shared_ptr<Connection>& connection) {
  return MakeAdapter<VdSessionUtilAdapter>(std::move(object), connection);
}

template <>
Ref<veldora::VdClientPaths> Adapt(ComPtr<IDispatch> object, const std::shared_ptr<Connection>& connection) {
  return MakeAdapter<VdClientPathsAdapter>(std::move(object), connection);
}

template <>
Ref<veldora::VdServiceContext> Adapt(ComPtr<IDispatch> object, const std::shared_ptr<Connection>& connection) {
  return MakeAdapter<VdServiceContextAdapter>(std::move(object), connection);
}

template <>
Ref<veldora::VdClientContextService> Adapt(ComPtr<IDispatch> object, const std::shared_ptr<Connection>& connection) {
  return MakeAdapter<VdClientContextServiceAdapter>(std::move(object), connection);
}

template <>
Ref<veldora::VdDialogInput> Adapt(ComPtr<IDispatch> object, const std::shared_ptr<Connection>& connection) {
  return MakeAdapter<VdDialogInputAdapter>(std::move(object), connection);
}

template <>
Ref<veldora::VdDialogOutput> Adapt(ComPtr<IDispatch> object, const std::shared_ptr<Connection>& connection) {
  return MakeAdapter<VdDialogOutputAdapter>(std::move(object), connection);
}

template <>
Ref<veldora::VdDialogWindow> Adapt(ComPtr<IDispatch> object, const std::shared_ptr<Connection>& connection) {
  return MakeAdapter<VdDialogWindowAdapter>(std::move(object), connection);
}

template <>
Ref<veldora::VdDialog> Adapt(ComPtr<IDispatch> object, const std::shared_ptr<Connection>& connection) {
  return MakeAdapter<VdDialogAdapter>(std::move(object), connection);
}

template <>
Ref<veldora::VdDialogs> Adapt(ComPtr<IDispatch> object, const std::shared_ptr<Connection>& connection) {
  return MakeAdapter<VdDialogsAdapter>(std::move(object), connection);
}

template <>
Ref<veldora::VdCommonGUI> Adapt(ComPtr<IDispatch> object, const std::shared_ptr<Connection>& connection) {
  return MakeAdapter<VdCommonGUIAdapter>(std::move(object), connection);
}

template <>
Ref<veldora::VdGUIServices> Adapt(ComPtr<IDispatch> object, const std::shared_ptr<Connection>& connection) {
  return MakeAdapter<VdGUIServicesAdapter>(std::move(object), connection);
}

template <>
Ref<veldora::VdConfigProvider> Adapt(ComPtr<IDispatch> object, const std::shared_ptr<Connection>& connection) {
  return MakeAdapter<VdConfigProviderAdapter>(std::move(object), connection);
}

template <>
Ref<veldora::VdClientContext> Adapt(ComPtr<IDispatch> object, const std::shared_ptr<Connection>& connection) {
  return MakeAdapter<VdClientContextAdapter>(std::move(object), connection);
}

template <>
Ref<veldora::VdTranslator> Adapt(ComPtr<IDispatch> object, const std::shared_ptr<Connection>& connection) {
  return MakeAdapter<VdTranslatorAdapter>(std::move(object), connection);
}

template <>
Ref<veldora::HIXDocument> Adapt(ComPtr<IDispatch> object, const std::shared_ptr<Connection>& connection) {
  return MakeAdapter<HIXDocumentAdapter>(std::move(object), connection);
}

template <>
Ref<veldora::HIXEngine> Adapt(ComPtr<IDispatch> object, const std::shared_ptr<Connection>& connection) {
  return MakeAdapter<HIXEngineAdapter>(std::move(object), connection);
}

}  // namespace quintara::automation
