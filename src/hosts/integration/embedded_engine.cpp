#include "hosts/integration/embedded_engine.h"

#include <utility>

#include "base/failure.h"
#include "base/file_names.h"
#include "hosts/integration/structure_refresh.h"

namespace quintara {
namespace {

using Identity = IntegrationVault::Identity;
using veldora::HIXDocument;
using veldora::VdObject;

std::string FileNameOf(const Ref<VdObject>& object) {
  return object->Record()->ValueAsString("CAD_REF_FILE_NAME");
}

/// The handle of a vault object and, once it is asked for, of its document in the CAD host.
class DocumentObject final : public HIXDocument {
 public:
  DocumentObject(EmbeddedEngine::Surroundings around, Identity object, Ref<zorva::Document> openDocument)
      : identity(object), document(std::move(openDocument)), around_(std::move(around)) {}

  Ref<zorva::Document> Document() override {
    around_.gate->Pass("HIXDocument.Document");
    if (!document) document = around_.zorva->Documents()->Read(Path());
    return document;
  }

  /// Where the object's file stands in the work directory.
  std::string Path() const {
    const auto object = around_.session->ObjectStore()->ObjectById(identity.classId, identity.objectId);
    const auto name = FileNameOf(object);
    if (name.empty()) {
      throw Failure(failure::kFileNotFound, "The vault object " + std::to_string(identity.objectId) + " has no file");
    }
    return PathIn(around_.vault->WorkDirectory(), name);
  }

  Identity identity;
  Ref<zorva::Document> document;

 private:
  EmbeddedEngine::Surroundings around_;
};

DocumentObject& OwnHandle(const Ref<HIXDocument>& handle) {
  if (!handle) throw Failure(failure::kObjectNotSet);
  auto* own = dynamic_cast<DocumentObject*>(&*handle);
  if (own == nullptr) throw Failure(failure::kTypeMismatch, "Type mismatch: the handle belongs to another engine");
  return *own;
}

Identity IdentityOf(const Ref<VdObject>& object) {
  return {object->ClassId(), object->ObjectId()};
}

std::pair<std::int16_t, std::int32_t> KeyOf(const Identity& identity) {
  return {identity.classId, identity.objectId};
}

}  // namespace

EmbeddedEngine::EmbeddedEngine(Surroundings surroundings) : around_(std::move(surroundings)) {}

void EmbeddedEngine::RequireConnected() const {
  if (!connected_) throw Failure(failure::kInvalidCall, "The integration engine isn't connected to the vault");
}

Ref<VdObject> EmbeddedEngine::ObjectOf(const Identity& identity) const {
  const auto object = around_.session->ObjectStore()->ObjectById(identity.classId, identity.objectId);
  if (object) return object;
  throw Failure(failure::kInvalidCall, "The vault has no object " + std::to_string(identity.classId) + ":" +
                                           std::to_string(identity.objectId));
}

bool EmbeddedEngine::IsConnected() {
  around_.gate->Pass("HIXEngine.IsConnected");
  return connected_;
}

void EmbeddedEngine::Connect(const std::string& login, const std::string& password) {
  around_.gate->Pass("HIXEngine.Connect", [] { return std::string("***"); });
  // The engine works in the vault's session, so the user is the one who is logged on there.
  const auto user = around_.session->UserMetaInfo();
  if (user->Login() != login || user->Password() != password) {
    throw Failure(failure::kPermissionDenied,
                  "Nobody is logged on to the vault under this name and with this password");
  }
  connected_ = true;
}

void EmbeddedEngine::Disconnect() {
  around_.gate->Pass("HIXEngine.Disconnect");
  connected_ = false;
}

Ref<HIXDocument> EmbeddedEngine::DocumentInfo(const std::string& fullName) {
  around_.gate->Pass("HIXEngine.DocumentInfo", [&] { return fullName; });
  RequireConnected();
  const auto identity = around_.vault->NotedObject(fullName);
  return identity ? MakeRef<DocumentObject>(around_, *identity, nullptr) : Ref<HIXDocument>();
}

std::int16_t EmbeddedEngine::DocumentClassId(const Ref<HIXDocument>& handle) {
  around_.gate->Pass("HIXEngine.DocumentClassId");
  return OwnHandle(handle).identity.classId;
}

std::int32_t EmbeddedEngine::DocumentObjectId(const Ref<HIXDocument>& handle) {
  around_.gate->Pass("HIXEngine.DocumentObjectId");
  return OwnHandle(handle).identity.objectId;
}

Ref<HIXDocument> EmbeddedEngine::DocumentHandle(std::int16_t classId, std::int32_t objectId) {
  around_.gate->Pass("HIXEngine.DocumentHandle",
                     [&] { return std::to_string(classId) + ", " + std::to_string(objectId); });
  RequireConnected();
  return MakeRef<DocumentObject>(around_, IdentityOf(ObjectOf({classId, objectId})), nullptr);
}

Ref<HIXDocument> EmbeddedEngine::DocumentHandleOf(const Ref<zorva::Document>& document) {
  around_.gate->Pass("HIXEngine.DocumentHandleOf");
  RequireConnected();
  const auto path = document->FullName();
  const auto identity = around_.vault->NotedObject(path);
  if (!identity) throw Failure(failure::kInvalidCall, "The vault doesn't know the document \"" + path + "\"");
  return MakeRef<DocumentObject>(around_, *identity, document);
}

void EmbeddedEngine::CheckOutDocument(const Ref<HIXDocument>& handle) {
  around_.gate->Pass("HIXEngine.CheckOutDocument");
  RequireConnected();
  auto& own = OwnHandle(handle);
  integration::Refreshed refreshed;
  Identity identity{};
  Ref<zorva::Document> opened;
  // All that may fail comes before the end of the transaction.
  around_.vault->InTransaction([&] {
    refreshed = integration::RefreshStructure(ObjectOf(own.identity), around_.session, *around_.vault);
    identity = IdentityOf(refreshed.root);
    const auto replaced = around_.vault->FilesToReplace(refreshed.root);
    if (!replaced.empty() && !integration::Permits(*around_.vault, "$User\\LifeCycleSetUp\\CheckOutOverwrite", "YES")) {
      throw Failure(failure::kPermissionDenied, "The check-out would replace the file \"" + replaced.front() + "\"");
    }
    around_.vault->CopyStructureToWork(refreshed.root);
    opened = around_.zorva->Documents()->Open(DocumentObject(around_, identity, nullptr).Path());
  });
  own.identity = identity;
  own.document = opened;
  taken_[KeyOf(identity)] = std::move(refreshed.taken);
}

std::vector<Ref<VdObject>> EmbeddedEngine::TakenWith(const Identity& identity) const {
  const auto taken = taken_.find(KeyOf(identity));
  if (taken != taken_.end()) return taken->second;
  return {ObjectOf(identity)};
}

void EmbeddedEngine::CommitStep1(const Ref<HIXDocument>& handle) {
  around_.gate->Pass("HIXEngine.CommitStep1");
  RequireConnected();
  auto& own = OwnHandle(handle);
  around_.vault->InTransaction([&] {
    if (own.document && own.document->AsProductDocument()) around_.cad->Save(own.document, own.Path());
    for (const auto& object : TakenWith(own.identity)) {
      const auto name = FileNameOf(object);
      if (!name.empty()) around_.cad->RenewLight(PathIn(around_.vault->WorkDirectory(), name));
      around_.vault->StoreWorkingCopy(object);
    }
  });
}

void EmbeddedEngine::CommitStep2(const Ref<HIXDocument>& handle) {
  around_.gate->Pass("HIXEngine.CommitStep2");
  RequireConnected();
  const auto identity = OwnHandle(handle).identity;
  const auto util = around_.session->GetService("VdUtil.VdSessionUtil")->AsVdSessionUtil();
  around_.vault->InTransaction([&] {
    for (const auto& object : TakenWith(identity)) util->CheckIn(object, nullptr, false);
  });
  taken_.erase(KeyOf(identity));
}

Ref<veldora::HIXEngine> EmbeddedEngine::AsHIXEngine() {
  return Ref<veldora::HIXEngine>(shared_from_this());
}

}  // namespace quintara
