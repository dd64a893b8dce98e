#pragma once

#include <memory>
#include <string>

#include "access/contracts/veldora_services.h"
#include "hosts/vault/object_data.h"
#include "hosts/vault/served.h"

namespace quintara::vault {

class SessionUtilObject final : public Served<"VdSessionUtil", veldora::VdSessionUtil>,
                                public std::enable_shared_from_this<SessionUtilObject> {
 public:
  using Served::Served;

  bool CanPerform(const Ref<veldora::VdObject>& object, const Ref<veldora::VdOperation>& operation, int flag) override;
  Ref<veldora::VdObject> CheckOut(const Ref<veldora::VdObject>& object, const Ref<veldora::VdRecord>& record,
                                  bool invokeScripts) override;
  int CheckIn(const Ref<veldora::VdObject>& object, const Ref<veldora::VdRecord>& record, bool invokeScripts) override;
  int Release(const Ref<veldora::VdObject>& object, const Ref<veldora::VdRecord>& record, bool invokeScripts) override;
  Ref<veldora::VdObject> NewRelease(const Ref<veldora::VdObject>& object, const Ref<veldora::VdRecord>& record,
                                    bool invokeScripts) override;
  int Obsolete(const Ref<veldora::VdObject>& object, const Ref<veldora::VdRecord>& record, bool invokeScripts) override;
  void RunOperation(const Ref<veldora::VdObject>& object, const Ref<veldora::VdOperation>& operation, bool flag,
                    const Ref<veldora::VdRecList>& rows, const Ref<veldora::VdRecList>& parameters) override;
  int CopyVaultFile(std::int32_t vaultObjectId, const std::string& vaultDirectory, const std::string& fileName,
                    const std::string& targetDirectory, const std::string& targetName) override;
  void CopyDocumentFile(const Ref<veldora::VdObject>& document, const std::string& targetName,
                        const std::string& targetDirectory, int flag) override;

  Ref<veldora::VdSessionUtil> AsVdSessionUtil() override;

 private:
  void Run(const std::shared_ptr<ObjectData>& data, const std::string& operation);
};

class ClientContextServiceObject final : public Served<"VdClientContextService", veldora::VdClientContextService>,
                                         public std::enable_shared_from_this<ClientContextServiceObject> {
 public:
  using Served::Served;

  Ref<veldora::VdServiceContext> Context() override;

  Ref<veldora::VdClientContextService> AsVdClientContextService() override;
};

class ClientContextObject final : public Served<"VdClientContext", veldora::VdClientContext>,
                                  public std::enable_shared_from_this<ClientContextObject> {
 public:
  using Served::Served;

  Ref<veldora::VdConfigProvider> Open(const std::string& clientName, const std::string& databaseType,
                                      const std::string& applicationName, const std::string& uri,
                                      const std::string& reserved) override;

  Ref<veldora::VdClientContext> AsVdClientContext() override;
};

}  // namespace quintara::vault
