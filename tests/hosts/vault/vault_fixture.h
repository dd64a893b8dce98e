#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "access/contracts/veldora.h"
#include "base/failure.h"
#include "hosts/native/native_files.h"
#include "hosts/vault/contract/fixture.h"
#include "hosts/vault/embedded_vault.h"
#include "support/test_platform.h"

namespace quintara::test {

/// Where a test's vault keeps its tables.
struct OnSqlite {
  static constexpr auto kName = "Sqlite";
  /// The connection of a database of the test's own; empty for a file in the vault's folder.
  static std::string NewConnection() { return {}; }
};
struct OnPostgres {
  static constexpr auto kName = "Postgres";
  /// Needs a server that PGHOST and its like tell of.
  static std::string NewConnection();
};

using Databases = testing::Types<OnSqlite, OnPostgres>;

struct DatabaseName {
  template <class Maker>
  static std::string GetName(int) {
    return Maker::kName;
  }
};

/// All that the database of a vault holds, as text: equal dumps are equal vaults.
std::string DumpOf(const std::string& connection);

/// A vault of its own, with the user "admin" logged on.
class VaultBase {
 public:
  explicit VaultBase(std::string connection);

  VaultPlan Plan() const;
  EmbeddedVault::Options Options() const;
  /// Opens the vault, closing the one that is open.
  void Open(const EmbeddedVault::Options& options);
  void Open() { Open(Options()); }
  std::unique_ptr<EmbeddedVault> OpenAnother(const EmbeddedVault::Options& options) const;

  Ref<veldora::VdSession> Session() const { return vault->Application()->Engine()->Sessions(0); }
  Ref<veldora::VdObjectStore> Store() const { return Session()->ObjectStore(); }
  Ref<veldora::VdBehavior> Behavior() const { return Store()->DefaultBehavior()->Clone(); }
  Ref<veldora::VdSessionUtil> Util() const { return Session()->GetService("VdUtil.VdSessionUtil")->AsVdSessionUtil(); }
  std::int16_t ClassId(const std::string& name) const { return Session()->MetaInfo()->ClassByName(name)->ClassId(); }
  Ref<veldora::VdOperation> Operation(const std::string& name) const {
    return Session()->MetaInfo()->OperationByName(name);
  }

  Ref<VdObject> AddPart(const std::string& partNumber) const;
  /// With a file of these bytes, taken from outside the work directory.
  Ref<VdObject> AddPart(const std::string& partNumber, const std::string& bytes, const std::string& light = {}) const;
  Ref<VdObject> AddProduct(const std::string& partNumber, const std::vector<Ref<VdObject>>& children = {}) const;
  Ref<VdObject> AddDocument(const std::string& description) const;
  void Link(const Ref<VdObject>& from, const Ref<VdObject>& to, const std::string& linkClass) const;
  void CheckIn(const Ref<VdObject>& object) const { Util()->CheckIn(object, nullptr, false); }
  void Release(const Ref<VdObject>& object) const { Util()->Release(object, nullptr, false); }
  void CheckOut(const Ref<VdObject>& object) const { Util()->CheckOut(object, nullptr, false); }

  /// The same object, read afresh.
  Ref<VdObject> Again(const Ref<VdObject>& object) const {
    return Store()->ObjectById(object->ClassId(), object->ObjectId());
  }
  int StateOf(const Ref<VdObject>& object) const { return Again(object)->Record()->ValueAsInteger("STATE"); }
  std::string TextOf(const Ref<VdObject>& object, const std::string& attribute) const {
    return Again(object)->Record()->ValueAsString(attribute);
  }
  std::vector<std::string> PartNumbers(const Ref<veldora::VdObjects>& objects) const;
  std::string WorkPath(const std::string& name) const { return folder.Path("work/" + name); }
  void WriteWork(const std::string& name, const std::string& bytes) const { folder.Write("work/" + name, bytes); }
  std::string ReadWork(const std::string& name) const { return folder.Read("work/" + name); }
  bool WorkHas(const std::string& name) const { return folder.Has("work/" + name); }
  std::string Dump() const { return DumpOf(vault->Folder().connection); }

  TemporaryFolder folder;
  std::shared_ptr<Gate> gate = std::make_shared<Gate>();
  std::shared_ptr<NativeContents> files = std::make_shared<NativeContents>(gate);
  std::unique_ptr<EmbeddedVault> vault;
  std::vector<VaultDialog> dialogs;
  std::optional<std::size_t> dialogAnswer;

 private:
  std::string connection_;
};

template <class Maker>
class VaultTest : public testing::Test, public VaultBase {
 protected:
  VaultTest() : VaultBase(Maker::NewConnection()) {
    InitVault(Plan(), *files);
    Open();
  }
};

}  // namespace quintara::test
