#pragma once

#include <string>
#include <utility>

#include "access/contracts/veldora.h"
#include "base/ref.h"

namespace quintara::test {

/// A session that hands everything on to another one; a test overrides what shall be different.
class HandingOn : public veldora::VdSession {
 public:
  explicit HandingOn(Ref<veldora::VdSession> session) : session_(std::move(session)) {}

  void OpenDatabaseConnection(const std::string& connection, const std::string& password, bool join) override {
    session_->OpenDatabaseConnection(connection, password, join);
  }
  Ref<veldora::VdUserInfo> UserMetaInfo() override { return session_->UserMetaInfo(); }
  void UserLogin(const std::string& login, const std::string& password) override {
    session_->UserLogin(login, password);
  }
  void UserLogoff() override { session_->UserLogoff(); }
  Ref<veldora::VdDatabase> Database() override { return session_->Database(); }
  Ref<veldora::VdMetaInfo> MetaInfo() override { return session_->MetaInfo(); }
  Ref<veldora::VdConfig> Config() override { return session_->Config(); }
  Ref<veldora::VdObjectStore> ObjectStore() override { return session_->ObjectStore(); }
  std::string Language() override { return session_->Language(); }
  Ref<AnyObject> GetService(const std::string& programName) override { return session_->GetService(programName); }
  Ref<veldora::VdAuthorizations> Authorizations() override { return session_->Authorizations(); }
  std::string ApplicationName() override { return session_->ApplicationName(); }
  std::string ClientName() override { return session_->ClientName(); }

 private:
  Ref<veldora::VdSession> session_;
};

/// A vault client that offers a session of the test's making, or nothing; all else is another one's.
class ClientWithSession : public veldora::VdApplication, public std::enable_shared_from_this<ClientWithSession> {
 public:
  ClientWithSession(Ref<veldora::VdApplication> client, const Ref<veldora::VdSession>& session)
      : client_(std::move(client)), engine_(MakeRef<EngineWithSession>(client_->Engine(), session)) {}

  Ref<veldora::VdEngine> Engine() override { return engine_; }
  Ref<veldora::VdRecList> NewRecList() override { return client_->NewRecList(); }
  Ref<veldora::VdApplication> AsVdApplication() override { return Ref<veldora::VdApplication>(shared_from_this()); }

 private:
  class EngineWithSession : public veldora::VdEngine {
   public:
    EngineWithSession(Ref<veldora::VdEngine> engine, Ref<veldora::VdSession> session)
        : engine_(std::move(engine)), session_(std::move(session)) {}

    Ref<veldora::VdSession> Sessions(int /*index*/) override { return session_; }
    Ref<veldora::VdDatabase> Databases(int index) override { return engine_->Databases(index); }

   private:
    Ref<veldora::VdEngine> engine_;
    Ref<veldora::VdSession> session_;
  };

  Ref<veldora::VdApplication> client_;
  Ref<veldora::VdEngine> engine_;
};

}  // namespace quintara::test
