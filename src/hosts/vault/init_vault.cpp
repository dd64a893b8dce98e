#include <filesystem>
#include <system_error>
#include <utility>
#include <vector>

#include "base/failure.h"
#include "base/text.h"
#include "base/xml.h"
#include "hosts/vault/embedded_vault.h"
#include "hosts/vault/file_names.h"
#include "hosts/vault/file_store.h"
#include "hosts/vault/migrations.h"
#include "hosts/vault/schema_setup.h"

namespace quintara {
namespace {

namespace fs = std::filesystem;

constexpr auto kFolderFile = "vault.xml";
constexpr auto kFolderRoot = "Vault";
constexpr auto kDatabaseFile = "vault.sqlite";

std::string In(const std::string& folder, const std::string& name) {
  return FromPath(ToPath(folder) / ToPath(name));
}

/// The files and folders made so far; those that were there before stay.
class MadePaths {
 public:
  ~MadePaths() {
    std::error_code ignored;
    for (auto path = paths_.rbegin(); path != paths_.rend(); ++path) fs::remove_all(ToPath(*path), ignored);
  }
  MadePaths() = default;
  MadePaths(const MadePaths&) = delete;
  MadePaths& operator=(const MadePaths&) = delete;

  /// With the folders above it that are missing too.
  void Note(const std::string& path) {
    std::error_code ignored;
    std::vector<fs::path> missing;
    for (auto at = ToPath(path); at != at.root_path() && !fs::exists(at, ignored); at = at.parent_path()) {
      missing.push_back(at);
    }
    for (auto at = missing.rbegin(); at != missing.rend(); ++at) paths_.push_back(FromPath(*at));
  }
  void MakeFolder(const std::string& path) {
    Note(path);
    std::error_code error;
    fs::create_directories(ToPath(path), error);
    if (error) throw Failure(failure::kPathAccess, "The folder \"" + path + "\" can't be made: " + error.message());
  }
  void Keep() { paths_.clear(); }

 private:
  std::vector<std::string> paths_;
};

// Without the separator that "." and "gears.vault/" leave at its end, behind which its name would be empty.
std::string FolderPath(const std::string& folder) {
  const auto path = ToPath(vault::NormalPath(folder));
  return FromPath(path.has_filename() ? path : path.parent_path());
}

std::string FolderText(const VaultPlan& plan) {
  XmlDocument document;
  auto root = document.Node().append_child(kFolderRoot);
  root.append_attribute("Connection") = plan.connection.c_str();
  root.append_attribute("Store") = plan.store.empty() ? "" : vault::NormalPath(plan.store).c_str();
  return document.Text();
}

void MakeBase(const VaultPlan& plan, const std::string& base, FileContents& files, MadePaths& made) {
  made.MakeFolder(base);
  made.MakeFolder(In(base, "QNTR"));
  files.Write(In(In(base, "QNTR"), "ProjectQNTR.zvavba"),
              "# Procedures that the CAD host runs for Quintara\nRetrieveMatrix.UpdateDisplay\n");
  for (const auto& [path, bytes] : plan.texts) {
    const auto file = In(In(base, "NLS"), path);
    made.MakeFolder(FromPath(ToPath(file).parent_path()));
    files.Write(file, bytes);
  }
}

// Gives whether a vault was there to be joined.
bool MakeDatabase(const VaultPlan& plan, const std::string& connection) {
  vault::Database database(connection);
  if (vault::SchemaVersion(database) != 0) {
    if (plan.connection.empty() || plan.store.empty()) {
      throw Failure(failure::kPathAccess, "The database holds a vault already; to join it, its store must be named");
    }
    return true;
  }
  database.Begin(true);
  try {
    vault::MakeTables(database);
    vault::SetUpSchema(database, plan);
    database.Commit();
  } catch (const std::exception&) {
    database.Rollback();
    throw;
  }
  return false;
}

// Who may read the folder's file may read the password in it.
void ProtectFolderFile(const std::string& path) {
  std::error_code ignored;
  fs::permissions(ToPath(path), fs::perms::owner_read | fs::perms::owner_write, ignored);
}

}  // namespace

SettingsColumns SettingsColumns::OfGeneration(const std::string& prefix) {
  return {prefix + "ID",      prefix + "USER_ID", prefix + "SECTION",
          prefix + "SUBJECT", prefix + "VALUE_",  prefix + "VALUE_LONG"};
}

bool IsVault(const std::string& folder) {
  std::error_code ignored;
  return fs::is_regular_file(ToPath(In(folder, kFolderFile)), ignored);
}

VaultFolder ReadVaultFolder(const std::string& folder, FileContents& files) {
  const auto absolute = FolderPath(folder);
  const auto path = In(absolute, kFolderFile);
  std::error_code ignored;
  if (!fs::exists(ToPath(path), ignored)) throw Failure(failure::kPathNotFound, "\"" + folder + "\" is no vault");
  XmlDocument document;
  if (!document.Parse(files.Read(path)) || vault::FileNameOf(absolute).empty()) {
    throw Failure(failure::kInvalidFormat, "The file \"" + path + "\" is broken: " + document.ParseError().reason);
  }
  if (document.Root().name() != std::string(kFolderRoot)) {
    throw Failure(failure::kInvalidFormat, "The file \"" + path + "\" doesn't describe a vault");
  }
  const std::string connection = document.Root().attribute("Connection").value();
  const std::string store = document.Root().attribute("Store").value();
  // Opening would make an empty one.
  if (const auto file = In(absolute, kDatabaseFile); connection.empty() && !fs::exists(ToPath(file), ignored)) {
    throw Failure(failure::kFileNotFound, "The vault's database \"" + file + "\" is missing");
  }
  return {absolute, connection.empty() ? "sqlite:" + In(absolute, kDatabaseFile) : connection,
          store.empty() ? In(absolute, "store") : store, In(absolute, "base")};
}

bool InitVault(const VaultPlan& plan, FileContents& files) {
  const auto folder = FolderPath(plan.folder);
  const auto folderFile = In(folder, kFolderFile);
  std::error_code ignored;
  if (fs::exists(ToPath(folderFile), ignored))
    throw Failure(failure::kPathAccess, "There is a vault in \"" + plan.folder + "\" already");
  MadePaths made;
  made.MakeFolder(folder);
  const auto store = plan.store.empty() ? In(folder, "store") : vault::NormalPath(plan.store);
  made.Note(store);
  vault::FileStore(store, files).Make();
  MakeBase(plan, In(folder, "base"), files, made);
  for (const auto* name : {"vault.sqlite", "vault.sqlite-wal", "vault.sqlite-shm", kFolderFile})
    made.Note(In(folder, name));
  files.Write(folderFile, {});
  ProtectFolderFile(folderFile);
  files.Write(folderFile, FolderText(plan));
  // Last, since a database of a server can't be taken back once it is made.
  const bool joined =
      MakeDatabase(plan, plan.connection.empty() ? "sqlite:" + In(folder, kDatabaseFile) : plan.connection);
  made.Keep();
  return joined;
}

}  // namespace quintara
