#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "access/contracts/file_system.h"
#include "hosts/gate/gate.h"
#include "hosts/vault/database.h"
#include "hosts/vault/embedded_vault.h"
#include "hosts/vault/file_store.h"
#include "hosts/vault/schema.h"

namespace quintara::vault {

/// The traversal policy's options; kept, given back and without a meaning here.
struct BehaviorOptions {
  int a = 1;
  int b = 1;
  int c = 1;
  bool d = false;
  int e = 1;
};

/// What the objects of one running vault share: the connection, the store, the schema and the user.
class Core {
 public:
  Core(const EmbeddedVault::Options& options, const VaultFolder& folder);
  Core(const Core&) = delete;
  Core& operator=(const Core&) = delete;

  Gate& TheGate() const { return *options_.gate; }
  Database& Data() { return database_; }
  FileStore& Store() { return store_; }
  FileContents& Files() { return *options_.files; }
  const Schema& TheSchema() const { return schema_; }
  const EmbeddedVault::Options& Options() const { return options_; }
  const VaultFolder& Folder() const { return folder_; }

  /// Runs `body` as one transaction, or as a savepoint of the one that is under way. A failure in it
  /// undoes all that it changed, in the database and in the store, and comes out.
  void InTransaction(const std::function<void()>& body);
  bool IsInTransaction() const noexcept { return depth_ > 0; }
  /// Lets `then` run, once, when the transaction that is under way is undone, after that.
  void WhenUndone(std::function<void()> then) { whenUndone_.push_back(std::move(then)); }

  // The user.
  void LogOn(const std::string& login, const std::string& password);
  void LogOff();
  void RequireLoggedOn() const;
  std::int32_t UserId() const { return userId_; }
  const std::string& Login() const { return login_; }
  const std::string& Password() const { return password_; }
  /// Fails, naming user, operation and class, where the right is missing.
  void RequireRight(const std::string& operation, const ClassInfo& info);
  /// Fails for a user without the right to all operations on all classes.
  void RequireAdministrator();

  // Configuration.
  std::string ConfigValue(const std::string& path);
  void SetConfigValue(const std::string& path, const std::string& value);
  /// The values as they stood at the last log-on.
  const std::map<std::string, std::string>& ConfigAtLogOn() const { return configAtLogOn_; }

  std::shared_ptr<BehaviorOptions> defaultBehavior = std::make_shared<BehaviorOptions>();

 private:
  void RunOuter(const std::function<void()>& body);
  void RunWhenUndone() noexcept;
  void RunNested(const std::function<void()>& body);
  bool IsReferred(const std::string& sha256);
  std::int64_t ConfigOwner(const std::string& path) const;

  EmbeddedVault::Options options_;
  VaultFolder folder_;
  Database database_;
  FileStore store_;
  Schema schema_;
  int depth_ = 0;
  std::vector<std::function<void()>> whenUndone_;
  bool loggedOn_ = false;
  std::int32_t userId_ = 0;
  std::string login_;
  std::string password_;
  std::map<std::string, std::string> configAtLogOn_;
};

/// The time now, as the vault writes it: UTC, "2024-05-31T13:45:00Z".
std::string TimeStamp();

}  // namespace quintara::vault
