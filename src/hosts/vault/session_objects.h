#pragma once

#include <memory>
#include <string>

#include "access/contracts/veldora_session.h"
#include "hosts/vault/served.h"

namespace quintara::vault {

class DatabaseObject final : public Served<"VdDatabase", veldora::VdDatabase> {
 public:
  using Served::Served;

  std::string ConnectionString() override;
  std::string ConnectionPassword() override;
  std::string Alias() override;
  int DatabaseType() override;
};

class UserInfoObject final : public Served<"VdUserInfo", veldora::VdUserInfo> {
 public:
  using Served::Served;

  std::string Login() override;
  std::string Password() override;
  std::int32_t UserId() override;
};

class ConfigObject final : public Served<"VdConfig", veldora::VdConfig> {
 public:
  using Served::Served;

  std::string BaseDirectory() override;
  std::string Value(const std::string& path) override;
  void SetValue(const std::string& path, const std::string& text) override;
};

class AuthorizationsObject final : public Served<"VdAuthorizations", veldora::VdAuthorizations> {
 public:
  using Served::Served;

  bool IsAllowed(std::int32_t userId, std::int32_t operationId, const Ref<veldora::VdObject>& object) override;
};

class SessionObject final : public Served<"VdSession", veldora::VdSession>,
                            public std::enable_shared_from_this<SessionObject> {
 public:
  using Served::Served;

  void OpenDatabaseConnection(const std::string& connection, const std::string& password, bool join) override;
  Ref<veldora::VdUserInfo> UserMetaInfo() override;
  void UserLogin(const std::string& login, const std::string& password) override;
  void UserLogoff() override;
  Ref<veldora::VdDatabase> Database() override;
  Ref<veldora::VdMetaInfo> MetaInfo() override;
  Ref<veldora::VdConfig> Config() override;
  Ref<veldora::VdObjectStore> ObjectStore() override;
  std::string Language() override;
  Ref<AnyObject> GetService(const std::string& programName) override;
  Ref<veldora::VdAuthorizations> Authorizations() override;
  std::string ApplicationName() override;
  std::string ClientName() override;

  Ref<veldora::VdSession> AsVdSession() override;
};

class EngineObject final : public Served<"VdEngine", veldora::VdEngine> {
 public:
  explicit EngineObject(std::shared_ptr<Core> core);

  Ref<veldora::VdSession> Sessions(int index) override;
  Ref<veldora::VdDatabase> Databases(int index) override;

 private:
  Ref<veldora::VdSession> session_;
};

class ApplicationObject final : public Served<"VdApplication", veldora::VdApplication>,
                                public std::enable_shared_from_this<ApplicationObject> {
 public:
  explicit ApplicationObject(std::shared_ptr<Core> core);

  Ref<veldora::VdEngine> Engine() override;
  Ref<veldora::VdRecList> NewRecList() override;

  Ref<veldora::VdApplication> AsVdApplication() override;

 private:
  Ref<veldora::VdEngine> engine_;
};

/// The vault's name behind the "veldora://" scheme: that of its folder.
std::string AliasOf(const Core& core);
/// The client's names, as the session and the configuration service know them.
std::string ApplicationNameOf(const Core& core);
inline constexpr auto kClientName = "Quintara";

}  // namespace quintara::vault
