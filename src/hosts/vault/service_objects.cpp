#include "hosts/vault/service_objects.h"

#include <utility>

#include "base/failure.h"
#include "hosts/vault/deposits.h"
#include "hosts/vault/file_copies.h"
#include "hosts/vault/life_cycle.h"
#include "hosts/vault/object.h"
#include "hosts/vault/session_objects.h"

namespace quintara::vault {
namespace {

constexpr int kDone = 0;
constexpr int kNoSuchFile = 1;
constexpr auto kCurrentKey = "WORK";

void RequireNoRecord(const Ref<veldora::VdRecord>& record) {
  if (record)
    throw Failure(failure::kInvalidCall, "A life-cycle operation takes no record: store the attributes first");
}

std::string OperationNameOf(const Core& core, const Ref<veldora::VdOperation>& operation) {
  return core.TheSchema().OperationName(operation->OperationId());
}

class ClientPathsObject final : public Served<"VdClientPaths", veldora::VdClientPaths> {
 public:
  using Served::Served;

  std::string CurrentKey() override {
    Pass<"CurrentKey">();
    return kCurrentKey;
  }
  std::string WorkDirectoryOf(const std::string& key) override {
    Pass<"WorkDirectoryOf">([&] { return key; });
    if (key != kCurrentKey) throw Failure(failure::kInvalidCall, "The client has no paths of the key \"" + key + "\"");
    return core_->Options().workDirectory;
  }
};

class ServiceContextObject final : public Served<"VdServiceContext", veldora::VdServiceContext> {
 public:
  using Served::Served;

  Ref<veldora::VdClientPaths> Paths() override {
    Pass<"Paths">();
    return MakeRef<ClientPathsObject>(core_);
  }
};

class ConfigProviderObject final : public Served<"VdConfigProvider", veldora::VdConfigProvider> {
 public:
  using Served::Served;

  Variant Value(const std::string& uri, const std::string& key) override {
    Pass<"Value">([&] { return uri + ", " + key; });
    if (uri != "veldora://" + AliasOf(*core_))
      throw Failure(failure::kInvalidCall, "Nothing is known under \"" + uri + "\"");
    return core_->ConfigValue(key);
  }
};

}  // namespace

bool SessionUtilObject::CanPerform(const Ref<veldora::VdObject>& object, const Ref<veldora::VdOperation>& operation,
                                   int /*flag*/) {
  Pass<"CanPerform">();
  return vault::CanPerform(*DataOf(object), OperationNameOf(*core_, operation));
}

Ref<veldora::VdObject> SessionUtilObject::CheckOut(const Ref<veldora::VdObject>& object,
                                                   const Ref<veldora::VdRecord>& record, bool /*invokeScripts*/) {
  Pass<"CheckOut">();
  RequireNoRecord(record);
  vault::CheckOut(*DataOf(object));
  return ObjectOf(*DataOf(object));
}

int SessionUtilObject::CheckIn(const Ref<veldora::VdObject>& object, const Ref<veldora::VdRecord>& record,
                               bool /*invokeScripts*/) {
  Pass<"CheckIn">();
  RequireNoRecord(record);
  vault::CheckIn(*DataOf(object));
  return kDone;
}

int SessionUtilObject::Release(const Ref<veldora::VdObject>& object, const Ref<veldora::VdRecord>& record,
                               bool /*invokeScripts*/) {
  Pass<"Release">();
  RequireNoRecord(record);
  vault::Release(*DataOf(object));
  return kDone;
}

Ref<veldora::VdObject> SessionUtilObject::NewRelease(const Ref<veldora::VdObject>& object,
                                                     const Ref<veldora::VdRecord>& record, bool /*invokeScripts*/) {
  Pass<"NewRelease">();
  RequireNoRecord(record);
  return ObjectOf(vault::NewRelease(*DataOf(object), false));
}

int SessionUtilObject::Obsolete(const Ref<veldora::VdObject>& object, const Ref<veldora::VdRecord>& record,
                                bool /*invokeScripts*/) {
  Pass<"Obsolete">();
  RequireNoRecord(record);
  MakeObsolete(*DataOf(object));
  return kDone;
}

void SessionUtilObject::Run(const std::shared_ptr<ObjectData>& data, const std::string& name) {
  if (name == operation::kCopyFile) return CopyStructure(*data);
  if (name == operation::kCheckIn) return vault::CheckIn(*data);
  if (name == operation::kCheckOut) return vault::CheckOut(*data);
  if (name == operation::kRelease) return vault::Release(*data);
  if (name == operation::kObsolete) return MakeObsolete(*data);
  if (name == operation::kNewRelease) return static_cast<void>(vault::NewRelease(*data, false));
  throw Failure(failure::kInvalidCall, "The operation \"" + name + "\" can't be run");
}

void SessionUtilObject::RunOperation(const Ref<veldora::VdObject>& object, const Ref<veldora::VdOperation>& operation,
                                     bool /*flag*/, const Ref<veldora::VdRecList>& /*rows*/,
                                     const Ref<veldora::VdRecList>& parameters) {
  Pass<"RunOperation">([&] { return OperationNameOf(*core_, operation); });
  if (parameters && parameters->RecordCount() > 0 &&
      parameters->ValueAsInteger("OPERATION_ID") != operation->OperationId()) {
    throw Failure(failure::kInvalidCall, "The parameters are those of another operation");
  }
  Run(DataOf(object), OperationNameOf(*core_, operation));
}

int SessionUtilObject::CopyVaultFile(std::int32_t vaultObjectId, const std::string& vaultDirectory,
                                     const std::string& fileName, const std::string& targetDirectory,
                                     const std::string& targetName) {
  Pass<"CopyVaultFile">([&] { return vaultDirectory + ", " + fileName + ", " + targetDirectory + ", " + targetName; });
  if (vaultObjectId != kStoreId) return kNoSuchFile;
  return CopyStoredFile(*core_, vaultDirectory, fileName, targetDirectory, targetName) ? kDone : kNoSuchFile;
}

void SessionUtilObject::CopyDocumentFile(const Ref<veldora::VdObject>& document, const std::string& targetName,
                                         const std::string& targetDirectory, int /*flag*/) {
  Pass<"CopyDocumentFile">([&] { return targetName + ", " + targetDirectory; });
  CopyFileOf(*DataOf(document), targetName, targetDirectory, false);
}

Ref<veldora::VdSessionUtil> SessionUtilObject::AsVdSessionUtil() {
  return Ref<veldora::VdSessionUtil>(shared_from_this());
}

Ref<veldora::VdServiceContext> ClientContextServiceObject::Context() {
  Pass<"Context">();
  return MakeRef<ServiceContextObject>(core_);
}

Ref<veldora::VdClientContextService> ClientContextServiceObject::AsVdClientContextService() {
  return Ref<veldora::VdClientContextService>(shared_from_this());
}

Ref<veldora::VdConfigProvider> ClientContextObject::Open(const std::string& clientName, const std::string& databaseType,
                                                         const std::string& applicationName, const std::string& uri,
                                                         const std::string& /*reserved*/) {
  Pass<"Open">([&] { return clientName + ", " + databaseType + ", " + applicationName + ", " + uri; });
  return MakeRef<ConfigProviderObject>(core_);
}

Ref<veldora::VdClientContext> ClientContextObject::AsVdClientContext() {
  return Ref<veldora::VdClientContext>(shared_from_this());
}

}  // namespace quintara::vault
