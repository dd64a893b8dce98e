#include <array>

#include "automation/dispatch/late_bound.h"

namespace quintara::automation {
namespace {

class VdDatabaseAdapter final : public LateBound<veldora::VdDatabase> {
 public:
  using LateBound::LateBound;

  std::string ConnectionString() override { return Ask<&veldora::VdDatabase::ConnectionString>(); }
  std::string ConnectionPassword() override { return Ask<&veldora::VdDatabase::ConnectionPassword>(); }
  std::string Alias() override { return Ask<&veldora::VdDatabase::Alias>(); }
  int DatabaseType() override { return Ask<&veldora::VdDatabase::DatabaseType>(); }
};

class VdUserInfoAdapter final : public LateBound<veldora::VdUserInfo> {
 public:
  using LateBound::LateBound;

  std::string Login() override { return Ask<&veldora::VdUserInfo::Login>(); }
  std::string Password() override { return Ask<&veldora::VdUserInfo::Password>(); }
  std::int32_t UserId() override { return Ask<&veldora::VdUserInfo::UserId>(); }
};

class VdConfigAdapter final : public LateBound<veldora::VdConfig> {
 public:
  using LateBound::LateBound;

  std::string BaseDirectory() override { return Ask<&veldora::VdConfig::BaseDirectory>(); }
  std::string Value(const std::string& path) override { return Ask<&veldora::VdConfig::Value>(path); }
  void SetValue(const std::string& path, const std::string& text) override {
    Ask<&veldora::VdConfig::SetValue>(path, text);
  }
};

class VdAuthorizationsAdapter final : public LateBound<veldora::VdAuthorizations> {
 public:
  using LateBound::LateBound;

  bool IsAllowed(std::int32_t userId, std::int32_t operationId, const Ref<veldora::VdObject>& object) override {
    return Ask<&veldora::VdAuthorizations::IsAllowed>(userId, operationId, object);
  }
};

class VdSessionAdapter final : public LateBound<veldora::VdSession> {
 public:
  using LateBound::LateBound;

  void OpenDatabaseConnection(const std::string& connection, const std::string& password, bool join) override {
    Ask<&veldora::VdSession::OpenDatabaseConnection>(connection, password, join);
  }
  Ref<veldora::VdUserInfo> UserMetaInfo() override { return Ask<&veldora::VdSession::UserMetaInfo>(); }
  void UserLogin(const std::string& login, const std::string& password) override {
    Ask<&veldora::VdSession::UserLogin>(login, password);
  }
  void UserLogoff() override { Ask<&veldora::VdSession::UserLogoff>(); }
  Ref<veldora::VdDatabase> Database() override { return Ask<&veldora::VdSession::Database>(); }
  Ref<veldora::VdMetaInfo> MetaInfo() override { return Ask<&veldora::VdSession::MetaInfo>(); }
  Ref<veldora::VdConfig> Config() override { return Ask<&veldora::VdSession::Config>(); }
  Ref<veldora::VdObjectStore> ObjectStore() override { return Ask<&veldora::VdSession::ObjectStore>(); }
  std::string Language() override { return Ask<&veldora::VdSession::Language>(); }
  Ref<AnyObject> GetService(const std::string& programName) override {
    return Ask<&veldora::VdSession::GetService>(programName);
  }
  Ref<veldora::VdAuthorizations> Authorizations() override { return Ask<&veldora::VdSession::Authorizations>(); }
  std::string ApplicationName() override { return Ask<&veldora::VdSession::ApplicationName>(); }
  std::string ClientName() override { return Ask<&veldora::VdSession::ClientName>(); }
};

class VdEngineAdapter final : public LateBound<veldora::VdEngine> {
 public:
  using LateBound::LateBound;

  Ref<veldora::VdSession> Sessions(int index) override { return Ask<&veldora::VdEngine::Sessions>(index); }
  Ref<veldora::VdDatabase> Databases(int index) override { return Ask<&veldora::VdEngine::Databases>(index); }
};

class VdApplicationAdapter final : public LateBound<veldora::VdApplication> {
 public:
  using LateBound::LateBound;

  Ref<veldora::VdEngine> Engine() override { return Ask<&veldora::VdApplication::Engine>(); }
  Ref<veldora::VdRecList> NewRecList() override { return Ask<&veldora::VdApplication::NewRecList>(); }
};

}  // namespace

template <>
Ref<veldora::VdDatabase> Adapt(ComPtr<IDispatch> object, const std::shared_ptr<Connection>& connection) {
  return MakeAdapter<VdDatabaseAdapter>(std::move(object), connection);
}

template <>
Ref<veldora::VdUserInfo> Adapt(ComPtr<IDispatch> object, const std::shared_ptr<Connection>& connection) {
  return MakeAdapter<VdUserInfoAdapter>(std::move(object), connection);
}

template <>
Ref<veldora::VdConfig> Adapt(ComPtr<IDispatch> object, const std::shared_ptr<Connection>& connection) {
  return MakeAdapter<VdConfigAdapter>(std::move(object), connection);
}

template <>
Ref<veldora::VdAuthorizations> Adapt(ComPtr<IDispatch> object, const std::shared_ptr<Connection>& connection) {
  return MakeAdapter<VdAuthorizationsAdapter>(std::move(object), connection);
}

template <>
Ref<veldora::VdSession> Adapt(ComPtr<IDispatch> object, const std::shared_ptr<Connection>& connection) {
  return MakeAdapter<VdSessionAdapter>(std::move(object), connection);
}

template <>
Ref<veldora::VdEngine> Adapt(ComPtr<IDispatch> object, const std::shared_ptr<Connection>& connection) {
  return MakeAdapter<VdEngineAdapter>(std::move(object), connection);
}

template <>
Ref<veldora::VdApplication> Adapt(ComPtr<IDispatch> object, const std::shared_ptr<Connection>& connection) {
  return MakeAdapter<VdApplicationAdapter>(std::move(object), connection);
}

}  // namespace quintara::automation
