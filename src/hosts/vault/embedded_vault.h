#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "access/contracts/file_system.h"
#include "access/contracts/integration.h"
#include "access/contracts/veldora.h"
#include "base/failure.h"
#include "hosts/gate/gate.h"

namespace quintara {

namespace vault {
class Core;
class IntegrationSide;
}  // namespace vault

struct AssemblyImportOptions;
struct AssemblyPlan;
struct ImportedObject;

/// Where a vault's parts are, as its folder tells.
struct VaultFolder {
  std::string folder;      ///< absolute
  std::string connection;  ///< "sqlite:PATH", or what begins with "postgresql://"
  std::string store;       ///< the folder of the files
  std::string base;        ///< the folder of the NLS files and the macro project
};

/// One of the vault's object dialogs, to be answered by whoever made the vault.
struct VaultDialog {
  int kind = 0;  ///< 1: pick one of the objects; 8: look at one
  std::string title;
  std::vector<Ref<veldora::VdObject>> objects;
};

/// The index of the picked object, or nothing when the user dismissed the dialog.
using VaultDialogAnswer = std::function<std::optional<std::size_t>(const VaultDialog&)>;

/// The columns of the settings tables, which exist in three generations.
struct SettingsColumns {
  std::string id;
  std::string userId;
  std::string section;
  std::string subject;
  std::string valuePrefix;
  std::string valueLong;

  /// `prefix` is "TDM_", "TDMX_" or "CN_".
  static SettingsColumns OfGeneration(const std::string& prefix);
};

/// What `InitVault` makes.
struct VaultPlan {
  std::string folder;
  /// Empty for a database file in the folder; else what begins with "postgresql://".
  std::string connection;
  /// Empty for the folder's own; a folder that a team's machines share.
  std::string store;
  std::string login = "admin";
  std::string password;
  /// The bytes of the NLS files by their path below "NLS", "EN/Custom/Controls/..." and so on.
  std::map<std::string, std::string> texts;
  SettingsColumns settings = SettingsColumns::OfGeneration("TDMX_");
  /// Names of the classes of assemblies and of parts.
  std::string productClass = "ZORVA Product";
  std::string partClass = "ZORVA Part";
  /// Further classes of objects with a life cycle.
  std::vector<std::string> furtherClasses;
};

/// Makes a vault: its tables, classes, settings, store and folders. Fails, and leaves nothing behind,
/// where there is a vault already. A PostgreSQL database that holds a vault is joined instead, which
/// needs the name of its store; True then, and its users and settings stay as they are.
bool InitVault(const VaultPlan& plan, FileContents& files);

/// Whether `folder` is the folder of a vault.
bool IsVault(const std::string& folder);

/// What the folder of a vault says; fails for a folder that is none.
VaultFolder ReadVaultFolder(const std::string& folder, FileContents& files);

/// One thing that `EmbeddedVault::Check` found wrong.
struct VaultFinding {
  enum class Kind { kDamagedFile, kMissingFile, kStrayFile, kObject, kLink, kVersion };

  Kind kind;
  std::string text;  ///< names the object or file

  bool operator==(const VaultFinding&) const = default;
};

/// The vault doesn't know the user, or not with this password.
class LogOnRefused : public Failure {
 public:
  using Failure::Failure;
};

/// What a user calls a state: "checked in".
std::string StateName(int value);

/// The embedded vault: an SQL database and a store of files behind the contract of the vault. Every
/// operation of the contract passes the gate. One thread; any number of processes.
class EmbeddedVault {
 public:
  struct Options {
    std::shared_ptr<Gate> gate;
    std::shared_ptr<FileContents> files;
    std::string login = "admin";
    std::string password;
    std::string workDirectory;  ///< absolute
    std::string language = "EN";
    /// Whether the CAD host was started before the vault.
    bool zorvaStartedFirst = false;
    /// Without it a dialog is dismissed.
    VaultDialogAnswer answerDialog;
  };

  /// The identity of an object and what a user calls it.
  struct Listed {
    IntegrationVault::Identity identity;
    std::string partNumber;
    std::string revision;
    int state = 0;
    int version = 0;  ///< counts the revisions, from 1
    std::string className;
    bool hasComponents = false;
    std::string description;
    std::string fileName;
    std::string owner;      ///< the login of the user who has it checked out or made it; or empty
    std::string changedBy;  ///< a login
    std::string changedAt;  ///< UTC, "2024-05-31T13:45:00Z"
  };
  /// An object at the other end of a link.
  struct Linked {
    std::string linkClass;
    bool isStructure = false;  ///< it is a component, or holds one
    bool goesOut = false;      ///< the link leads to it, else it comes from it
    int quantity = 1;
    Listed object;
  };
  /// An object of a structure, with its components as indexes and the numbers of their instances.
  struct Held {
    Listed object;
    std::vector<std::pair<std::size_t, int>> components;
  };
  struct Right {
    std::string operation;  ///< empty for all operations
    std::string className;  ///< empty for all classes
  };
  struct User {
    std::string login;
    std::vector<Right> rights;
  };
  /// A component of a structure and the number of its instances.
  struct Component {
    Ref<veldora::VdObject> object;
    int quantity = 1;
  };
  using AttributeTexts = std::map<std::string, std::string>;

  /// Opens the vault of a folder and logs the user on; `LogOnRefused` when that isn't possible. Migrates older tables;
  /// fails for newer ones.
  EmbeddedVault(const std::string& folder, const Options& options);
  ~EmbeddedVault();
  EmbeddedVault(const EmbeddedVault&) = delete;
  EmbeddedVault& operator=(const EmbeddedVault&) = delete;

  /// "Veldora.VdApplication".
  Ref<veldora::VdApplication> Application();
  /// Makers of "Veldora.VdClientContext" and "Veldora.VdTranslator".
  Ref<veldora::VdClientContext> NewClientContext();
  Ref<veldora::VdTranslator> NewTranslator();
  IntegrationVault& Integration();
  const VaultFolder& Folder() const;

  /// Runs `body` as one transaction; one inside another is a savepoint.
  void InTransaction(const std::function<void()>& body);

  // Users. These are for a user with all rights, and fail for any other.
  void AddUser(const std::string& login, const std::string& password, bool allRights);
  /// Gives or takes the right to run an operation; the empty name stands for all operations, or classes.
  void Grant(const std::string& login, const std::string& operation, const std::string& className);
  void Revoke(const std::string& login, const std::string& operation, const std::string& className);

  // Objects. What these change obeys state and rights as the contract's operations do.
  /// Stores a new object with these attributes, its masks filled. The file, if `path` isn't empty, is
  /// taken from there, its light representation too where it stands beside.
  Ref<veldora::VdObject> AddObject(const std::string& className, const AttributeTexts& attributes,
                                   const std::string& path);
  /// Makes the file at `path` the content of an object that can be changed.
  void StoreFile(const Ref<veldora::VdObject>& object, const std::string& path);
  /// Makes `components`, in this order, all that `parent` holds. One entry for each distinct child.
  void SetStructure(const Ref<veldora::VdObject>& parent, const std::vector<Component>& components);
  std::vector<Component> Structure(const Ref<veldora::VdObject>& parent);
  /// The next revision of a checked-in or released object, in state 0.
  Ref<veldora::VdObject> NewRevision(const Ref<veldora::VdObject>& object);
  /// The bytes of an object's file and of its light representation; empty where there is none. They
  /// need the right to copy files.
  std::string FileOf(const Ref<veldora::VdObject>& object);
  std::string LightFileOf(const Ref<veldora::VdObject>& object);

  // Whole assemblies; assembly_import.h tells the rules.
  /// Brings an assembly in, as one transaction. One entry for each definition.
  std::vector<ImportedObject> ImportAssembly(const AssemblyPlan& plan, const AssemblyImportOptions& options);
  /// What that would do, with the same failures. Changes nothing.
  std::vector<ImportedObject> PreviewImport(const AssemblyPlan& plan, const AssemblyImportOptions& options);

  // Looking up.
  /// The newest revisions of all products and parts with this part number.
  std::vector<Listed> FindNewest(const std::string& partNumber);
  std::vector<Listed> FindRevision(const std::string& partNumber, const std::string& revision);
  /// All products and parts in the order of their part numbers: of each the newest revision, or all of them.
  std::vector<Listed> List(bool allRevisions);
  /// All revisions of the object, the oldest one first; none for an object without revisions.
  std::vector<Listed> Revisions(const Ref<veldora::VdObject>& object);
  /// What is linked to an object: first what its links lead to, in their order, then what leads to it.
  std::vector<Linked> Links(const Ref<veldora::VdObject>& object);
  /// Each object of the structure below `root` once, the root first.
  std::vector<Held> WholeStructure(const Ref<veldora::VdObject>& root);
  /// All users in the order in which they were added.
  std::vector<User> Users();
  /// The id of a file type such as "ZVAPart"; fails for an unknown one.
  int FileTypeId(const std::string& name);

  /// Recomputes what must hold: every file's digest, the ends and order of links, cycles, versions,
  /// states, and that the store holds nothing else. Changes nothing.
  std::vector<VaultFinding> Check();

  // For whoever looks after its speed.
  /// The statements that the database was given so far.
  std::int64_t StatementCount() const;
  /// How the database would find the rows of a query: its own words, a line for each step.
  std::vector<std::string> ExplainQuery(const Ref<veldora::VdQueryDefinition>& definition);

 private:
  std::shared_ptr<vault::Core> core_;
  Ref<veldora::VdApplication> application_;
  std::unique_ptr<vault::IntegrationSide> integration_;
};

}  // namespace quintara
