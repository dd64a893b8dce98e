#include <map>
#include <optional>
#include <set>
#include <unordered_map>
#include <utility>

#include "access/contracts/veldora_objects.h"
#include "base/failure.h"
#include "base/text.h"
#include "hosts/vault/core.h"
#include "hosts/vault/deposits.h"
#include "hosts/vault/file_names.h"
#include "hosts/vault/object_data.h"
#include "hosts/vault/sequences.h"

namespace quintara {
namespace vault {
namespace {

using Kind = VaultFinding::Kind;
namespace state = veldora::state;

/// One look over the whole vault.
class Inspection {
 public:
  explicit Inspection(Core& core) : core_(core), data_(core.Data()) {}

  std::vector<VaultFinding> Run() {
    CheckDeposits();
    CheckStrays();
    for (const auto& info : core_.TheSchema().Classes()) {
      if (!info->IsLink()) CheckObjects(*info);
    }
    CheckClasses();
    CheckVersions();
    CheckLinks();
    CheckCycles();
    CheckSequences();
    return std::move(findings_);
  }

 private:
  void Find(Kind kind, std::string text) { findings_.push_back({kind, std::move(text)}); }

  // Many objects may have one and the same content: it is read once.
  void CheckContent(const std::string& what, const FileStore::Content& content) {
    auto [known, isNew] = contents_.try_emplace({content.sha256, content.size});
    referred_.insert(content.sha256);
    if (isNew) {
      try {
        core_.Store().Read(content);
      } catch (const Failure& failure) {
        known->second = failure;
      }
    }
    if (!known->second) return;
    Find(known->second->Number() == failure::kInvalidFormat ? Kind::kDamagedFile : Kind::kMissingFile,
         what + ": " + known->second->Description());
  }

  void CheckDeposits() {
    for (const auto& row : data_.Query("i", "SELECT deposit_id FROM vd_deposit ORDER BY deposit_id")) {
      const auto deposit = *FindDeposit(data_, IntegerOf(row[0]));
      const auto what = DirectoryOf(deposit.id) + "/" + deposit.name;
      CheckContent(what, deposit.file);
      if (deposit.light) CheckContent(what + ".lwt", *deposit.light);
    }
  }

  void CheckStrays() {
    for (const auto& path : core_.Store().Strangers()) {
      if (!IsOnItsWay(path)) Find(Kind::kStrayFile, "\"" + path + "\" doesn't belong to the store");
    }
    for (const auto& digest : core_.Store().Holdings()) {
      if (!referred_.contains(digest)) Find(Kind::kStrayFile, "No object has the stored file " + digest);
    }
  }

  // What was committed and couldn't be moved into place serves from where it is.
  bool IsOnItsWay(const std::string& path) const {
    const auto name = FileNameOf(path);
    const auto folder = FromPath(ToPath(path).parent_path().filename());
    return folder == "incoming" && referred_.contains(name.substr(0, name.find('.')));
  }

  void CheckObjects(const ClassInfo& info) {
    const bool versioned = info.IsVersioned();
    const std::string file = versioned ? "t.\"TDM_FILE_ID\", t.\"DIRECTORY\", t.\"FILE_NAME\"" : "NULL, NULL, NULL";
    const auto rows = data_.Query(
        "iiiiiittitii",
        "SELECT o.object_id, t.\"OBJECT_ID\", t.\"STATE\", o.owner_id, o.deposit_id, " + file +
            ", d.deposit_id, d.name, t.\"CLASS_ID\", u.user_id FROM vd_object o LEFT JOIN " + Quoted(info.table) +
            " t ON t.\"OBJECT_ID\" = o.object_id LEFT JOIN vd_deposit d ON d.deposit_id = o.deposit_id "
            "LEFT JOIN vd_user u ON u.user_id = o.owner_id WHERE o.class_id = ? ORDER BY o.object_id",
        {std::int64_t{info.id}});
    for (const auto& row : rows) CheckObject(info, row);
    const auto extra = data_.Query("i",
                                   "SELECT t.\"OBJECT_ID\" FROM " + Quoted(info.table) +
                                       " t LEFT JOIN vd_object o ON o.object_id = t.\"OBJECT_ID\" AND o.class_id = ? "
                                       "WHERE o.object_id IS NULL",
                                   {std::int64_t{info.id}});
    for (const auto& row : extra)
      Find(Kind::kObject, Name(info, row[0]) + " has attributes, but isn't an object of the vault");
  }

  void CheckObject(const ClassInfo& info, const SqlRow& row) {
    const auto name = Name(info, row[0]);
    if (IntegerOf(row[1]) == 0) return Find(Kind::kObject, name + " has no attributes");
    if (IntegerOf(row[10]) != info.id) Find(Kind::kObject, name + " has the CLASS_ID of another class");
    if (!info.IsVersioned()) return;
    const auto current = IntegerOf(row[2]);
    const auto owner = IntegerOf(row[3]);
    if (current < state::kNew || current > state::kObsolete)
      Find(Kind::kObject, name + " is in the unknown state " + std::to_string(current));
    if (current == state::kCheckedOut && owner == 0) Find(Kind::kObject, name + " is checked out by nobody");
    if (current != state::kCheckedOut && current != state::kNew && owner != 0) {
      Find(Kind::kObject, name + " belongs to a user, though it isn't checked out");
    }
    if (owner != IntegerOf(row[11])) Find(Kind::kObject, name + " belongs to a user who isn't there");
    CheckFileOf(name, row);
  }

  void CheckFileOf(const std::string& name, const SqlRow& row) {
    const auto deposit = IntegerOf(row[4]);
    if (deposit != 0 && IntegerOf(row[8]) == 0) return Find(Kind::kMissingFile, name + " has a file that isn't there");
    const bool named = TextOf(row[6]) == DirectoryOf(deposit) && TextOf(row[7]) == TextOf(row[9]);
    if (deposit != IntegerOf(row[5]) || (deposit != 0 && !named)) {
      Find(Kind::kObject, name + " names another file than it has");
    }
  }

  void CheckClasses() {
    for (const auto& row : data_.Query("ii", "SELECT object_id, class_id FROM vd_object ORDER BY object_id")) {
      const auto* info = ClassOf(row[1]);
      if (info != nullptr && !info->IsLink()) continue;
      Find(Kind::kObject, "The object " + std::to_string(IntegerOf(row[0])) + " is of no class of objects");
    }
  }

  void CheckVersions() {
    const auto rows = data_.Query("itiii",
                                  "SELECT class_id, identity, COUNT(*), MIN(version), MAX(version) FROM vd_object "
                                  "WHERE identity IS NOT NULL GROUP BY class_id, identity ORDER BY class_id, identity");
    for (const auto& row : rows) {
      if (IntegerOf(row[3]) == 1 && IntegerOf(row[4]) == IntegerOf(row[2])) continue;
      const auto* info = ClassOf(row[0]);
      Find(Kind::kVersion, (info == nullptr ? "Class " + std::to_string(IntegerOf(row[0])) : info->name) + " \"" +
                               TextOf(row[1]) + "\" has a gap in its revisions");
    }
    for (const auto& info : core_.TheSchema().Classes()) {
      if (!info->IsVersioned()) continue;
      const auto differing = data_.Query(
          "i",
          "SELECT o.object_id FROM vd_object o JOIN " + Quoted(info->table) +
              " t ON t.\"OBJECT_ID\" = o.object_id WHERE o.identity IS NULL OR COALESCE(t.\"CN_ID\", '') <> o.identity "
              "ORDER BY o.object_id");
      for (const auto& row : differing) Find(Kind::kVersion, Name(*info, row[0]) + " has no CN_ID of its own");
    }
  }

  void CheckLinks() {
    const auto rows = data_.Query(
        "iiiiii",
        "SELECT l.\"OBJECT_ID\", l.\"CLASS_ID\", f.object_id, t.object_id, f.class_id, t.class_id FROM vd_link l "
        "LEFT JOIN vd_object f ON f.object_id = l.from_object LEFT JOIN vd_object t ON t.object_id = l.to_object "
        "ORDER BY l.\"OBJECT_ID\"");
    for (const auto& row : rows) {
      const auto name = "Link " + std::to_string(IntegerOf(row[0]));
      if (IntegerOf(row[2]) == 0 || IntegerOf(row[3]) == 0) Find(Kind::kLink, name + " has an end that isn't there");
      const auto* info = ClassOf(row[1]);
      if (info == nullptr || !info->IsLink()) {
        Find(Kind::kLink, name + " is of no class of links");
      } else if (info->kind == ClassKind::kStructureLink && !(IsComponent(row[4]) && IsComponent(row[5]))) {
        Find(Kind::kLink, name + " holds in a structure what can't stand in one");
      }
    }
    const auto places = data_.Query("i",
                                    "SELECT from_object FROM vd_link GROUP BY from_object, \"CLASS_ID\" "
                                    "HAVING COUNT(*) <> COUNT(DISTINCT place) ORDER BY from_object");
    for (const auto& row : places) {
      Find(Kind::kLink, "The links of the object " + std::to_string(IntegerOf(row[0])) + " have no clear order");
    }
  }

  // What is left when all that holds nothing, or only what was taken already, is taken away.
  void CheckCycles() {
    std::unordered_map<std::int64_t, std::vector<std::int64_t>> holders;
    std::unordered_map<std::int64_t, int> open;
    const auto rows = data_.Query("ii", "SELECT from_object, to_object FROM vd_link WHERE \"CLASS_ID\" = ?",
                                  {std::int64_t{core_.TheSchema().StructureLink().id}});
    for (const auto& row : rows) {
      holders[IntegerOf(row[1])].push_back(IntegerOf(row[0]));
      ++open[IntegerOf(row[0])];
    }
    std::vector<std::int64_t> taken;
    for (const auto& [child, parents] : holders) {
      if (!open.contains(child)) taken.push_back(child);
    }
    while (!taken.empty()) {
      const auto child = taken.back();
      taken.pop_back();
      for (const auto parent : holders[child]) {
        if (--open[parent] == 0) taken.push_back(parent);
      }
    }
    for (const auto& [object, count] : std::map<std::int64_t, int>(open.begin(), open.end())) {
      if (count > 0)
        Find(Kind::kLink, "The object " + std::to_string(object) + " stands in or above a structure that holds itself");
    }
  }

  void CheckSequences() {
    const std::map<std::string, std::string> largest = {{sequence::kObject, "SELECT MAX(object_id) FROM vd_object"},
                                                        {sequence::kLink, "SELECT MAX(\"OBJECT_ID\") FROM vd_link"},
                                                        {sequence::kDeposit, "SELECT MAX(deposit_id) FROM vd_deposit"},
                                                        {sequence::kUser, "SELECT MAX(user_id) FROM vd_user"}};
    for (const auto& [name, sql] : largest) {
      const auto next =
          IntegerOf(data_.QueryOne(ColumnType::kInteger, "SELECT next_value FROM vd_sequence WHERE name = ?", {name}));
      if (next <= IntegerOf(data_.QueryOne(ColumnType::kInteger, sql))) {
        Find(Kind::kObject, "The sequence \"" + name + "\" would give a number again");
      }
    }
  }

  const ClassInfo* ClassOf(const SqlValue& id) const {
    for (const auto& info : core_.TheSchema().Classes()) {
      if (info->id == IntegerOf(id)) return info.get();
    }
    return nullptr;
  }
  // An end that isn't there has been told of already.
  bool IsComponent(const SqlValue& classId) const {
    const auto* info = ClassOf(classId);
    return IntegerOf(classId) == 0 || (info != nullptr && info->IsVersioned());
  }

  static std::string Name(const ClassInfo& info, const SqlValue& id) {
    return Described(info, static_cast<std::int32_t>(IntegerOf(id)));
  }

  Core& core_;
  Database& data_;
  std::vector<VaultFinding> findings_;
  std::set<std::string> referred_;
  std::map<std::pair<std::string, std::int64_t>, std::optional<Failure>> contents_;
};

}  // namespace
}  // namespace vault

std::vector<VaultFinding> EmbeddedVault::Check() {
  core_->TheGate().Pass("EmbeddedVault.Check");
  core_->RequireLoggedOn();
  if (core_->IsInTransaction()) throw Failure(failure::kInvalidCall, "A vault can't be checked while it is changed");
  // With the writers' lock, so that nothing is half done while it looks.
  core_->Data().Begin(true);
  try {
    auto findings = vault::Inspection(*core_).Run();
    core_->Data().Rollback();
    return findings;
  } catch (const std::exception&) {
    core_->Data().Rollback();
    throw;
  }
}

}  // namespace quintara
