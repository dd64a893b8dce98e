#pragma once

#include <cstdint>
#include <string>

#include "access/contracts/veldora_objects.h"

/// The running vault client: its sessions, databases, users and configuration.
namespace quintara::veldora {

class VdDatabase : public AnyObject {
 public:
  virtual std::string ConnectionString() = 0;
  virtual std::string ConnectionPassword() = 0;
  virtual std::string Alias() = 0;
  virtual int DatabaseType() = 0;
};

/// The user who is logged on.
class VdUserInfo : public AnyObject {
 public:
  virtual std::string Login() = 0;
  virtual std::string Password() = 0;
  virtual std::int32_t UserId() = 0;
};

/// The vault's tree of configuration values. Paths look like
/// "$User\LifeCycleSetUp\LatestAvailableOnCheckOut".
class VdConfig : public AnyObject {
 public:
  /// The folder of the NLS files and of the macro project.
  virtual std::string BaseDirectory() = 0;
  /// Empty for a path that isn't there.
  virtual std::string Value(const std::string& path) = 0;
  /// Makes what is missing of the path.
  virtual void SetValue(const std::string& path, const std::string& text) = 0;
};

class VdAuthorizations : public AnyObject {
 public:
  virtual bool IsAllowed(std::int32_t userId, std::int32_t operationId, const Ref<VdObject>& object) = 0;
};

/// The session of a logged-on user.
class VdSession : public AnyObject {
 public:
  /// Joins the session to its database; `join` is always True.
  virtual void OpenDatabaseConnection(const std::string& connection, const std::string& password, bool join) = 0;
  virtual Ref<VdUserInfo> UserMetaInfo() = 0;
  /// Logs a user on again. Fails for a wrong login or password.
  virtual void UserLogin(const std::string& login, const std::string& password) = 0;
  /// Ends the user's log-on; the session object survives.
  virtual void UserLogoff() = 0;
  virtual Ref<VdDatabase> Database() = 0;
  virtual Ref<VdMetaInfo> MetaInfo() = 0;
  virtual Ref<VdConfig> Config() = 0;
  virtual Ref<VdObjectStore> ObjectStore() = 0;
  /// A code such as "EN".
  virtual std::string Language() = 0;
  /// A service of the session by its program name, compared without case; nothing when there is
  /// none of that name.
  virtual Ref<AnyObject> GetService(const std::string& programName) = 0;
  virtual Ref<VdAuthorizations> Authorizations() = 0;
  /// The client that was started first: "Veldora" or "ZORVA".
  virtual std::string ApplicationName() = 0;
  virtual std::string ClientName() = 0;
};

class VdEngine : public AnyObject {
 public:
  /// Index 0 is the session of the running client; nothing without one.
  virtual Ref<VdSession> Sessions(int index) = 0;
  virtual Ref<VdDatabase> Databases(int index) = 0;
};

/// The running vault client.
class VdApplication : public AnyObject {
 public:
  virtual Ref<VdEngine> Engine() = 0;
  /// A new, empty table.
  virtual Ref<VdRecList> NewRecList() = 0;
};

}  // namespace quintara::veldora
