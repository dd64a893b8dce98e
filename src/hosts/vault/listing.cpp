#include <algorithm>
#include <unordered_map>
#include <utility>

#include "hosts/vault/core.h"
#include "hosts/vault/embedded_vault.h"
#include "hosts/vault/object.h"
#include "hosts/vault/object_storage.h"
#include "hosts/vault/schema_setup.h"

namespace quintara {
namespace vault {
namespace {

using Listed = EmbeddedVault::Listed;

/// What stands before and behind the columns and tables of a listing; the object is "o" there.
struct Selection {
  std::string with;
  std::string joins;
  std::string condition;
  std::vector<SqlValue> values;
};

constexpr auto kListedTypes = "itttitittti";

std::string ListedColumns(const Core& core) {
  return "o.object_id, c.\"NM_CN_PART_NUMBER\", c.\"CN_DESCRIPTION\", c.\"REVISION\", c.\"STATE\", w.login, o.version, "
         "c.\"FILE_NAME\", m.login, COALESCE(c.\"MODIFICATION_DATE\", c.\"CREATION_DATE\"), CASE WHEN EXISTS (SELECT 1 "
         "FROM vd_link h WHERE h.from_object = o.object_id AND h.\"CLASS_ID\" = " +
         std::to_string(core.TheSchema().StructureLink().id) + ") THEN 1 ELSE 0 END";
}

Listed ListedOf(const ClassInfo& info, const SqlRow& row) {
  Listed listed;
  listed.identity = {info.id, static_cast<std::int32_t>(IntegerOf(row[0]))};
  listed.partNumber = TextOf(row[1]);
  listed.description = TextOf(row[2]);
  listed.revision = TextOf(row[3]);
  listed.state = static_cast<int>(IntegerOf(row[4]));
  listed.owner = TextOf(row[5]);
  listed.version = static_cast<int>(IntegerOf(row[6]));
  listed.className = info.name;
  listed.fileName = TextOf(row[7]);
  listed.changedBy = TextOf(row[8]);
  listed.changedAt = TextOf(row[9]);
  listed.hasComponents = IntegerOf(row[10]) != 0;
  return listed;
}

/// The objects of one class that a selection tells, with what stands in further columns of each row.
template <class Take>
void SelectListed(Core& core, const ClassInfo& info, const Selection& selection, const std::string& furtherTypes,
                  const std::string& furtherColumns, Take&& take) {
  const auto rows = core.Data().Query(
      kListedTypes + furtherTypes,
      selection.with + "SELECT " + ListedColumns(core) + furtherColumns + " FROM vd_object o JOIN " +
          Quoted(info.table) +
          " c ON c.\"OBJECT_ID\" = o.object_id LEFT JOIN vd_user w ON w.user_id = o.owner_id LEFT JOIN vd_user m ON "
          "m.user_id = COALESCE(c.\"USER_ID_MOD\", c.\"USER_OBJECT_ID\") " +
          selection.joins + " WHERE " + selection.condition,
      selection.values);
  for (const auto& row : rows) take(ListedOf(info, row), row);
}

// Part numbers are compared byte by byte, since the two databases sort texts in two ways.
void Sort(std::vector<Listed>& listed) {
  std::ranges::sort(listed, {}, [](const Listed& one) {
    return std::tie(one.partNumber, one.identity.classId, one.version, one.identity.objectId);
  });
}

std::vector<Listed> Components(Core& core, const Selection& selection) {
  std::vector<Listed> found;
  for (const auto& info : core.TheSchema().Classes()) {
    if (!IsComponentClass(*info)) continue;
    SelectListed(core, *info, selection, "", "",
                 [&](Listed listed, const SqlRow&) { found.push_back(std::move(listed)); });
  }
  Sort(found);
  return found;
}

void AddLinks(Core& core, std::int32_t self, bool goesOut, std::vector<EmbeddedVault::Linked>& links) {
  const std::string end = goesOut ? "l.to_object" : "l.from_object";
  const Selection selection{
      {},
      "JOIN vd_link l ON " + end + " = o.object_id JOIN vd_class k ON k.class_id = l.\"CLASS_ID\"",
      goesOut ? "l.from_object = ?" : "l.to_object = ?",
      {std::int64_t{self}}};
  struct Found {
    std::int64_t linkClass;
    std::int64_t place;
    EmbeddedVault::Linked linked;
  };
  std::vector<Found> found;
  const std::int64_t structure = core.TheSchema().StructureLink().id;
  for (const auto& info : core.TheSchema().Classes()) {
    if (!info->IsVersioned()) continue;
    SelectListed(core, *info, selection, "tiii", ", k.name, l.\"QUANTITY\", l.\"CLASS_ID\", l.place",
                 [&](Listed listed, const SqlRow& row) {
                   const auto further = row.end() - 4;
                   found.push_back({IntegerOf(further[2]),
                                    goesOut ? IntegerOf(further[3]) : std::int64_t{listed.identity.objectId},
                                    {TextOf(further[0]), IntegerOf(further[2]) == structure, goesOut,
                                     static_cast<int>(IntegerOf(further[1])), std::move(listed)}});
                 });
  }
  std::ranges::sort(found, {}, [](const Found& one) { return std::tie(one.linkClass, one.place); });
  for (auto& one : found) links.push_back(std::move(one.linked));
}

constexpr auto kBelow =
    "WITH RECURSIVE below(id) AS (SELECT CAST(? AS INTEGER) UNION SELECT l.to_object FROM vd_link l JOIN below b ON "
    "l.from_object = b.id AND l.\"CLASS_ID\" = ?) ";

}  // namespace
}  // namespace vault

std::vector<EmbeddedVault::Listed> EmbeddedVault::FindNewest(const std::string& partNumber) {
  core_->TheGate().Pass("EmbeddedVault.FindNewest", [&] { return partNumber; });
  core_->RequireLoggedOn();
  return vault::Components(*core_,
                           {{}, {}, std::string("c.\"NM_CN_PART_NUMBER\" = ? AND ") + vault::kIsNewest, {partNumber}});
}

std::vector<EmbeddedVault::Listed> EmbeddedVault::FindRevision(const std::string& partNumber,
                                                               const std::string& revision) {
  core_->TheGate().Pass("EmbeddedVault.FindRevision", [&] { return partNumber + ", " + revision; });
  core_->RequireLoggedOn();
  return vault::Components(*core_,
                           {{}, {}, "c.\"NM_CN_PART_NUMBER\" = ? AND c.\"REVISION\" = ?", {partNumber, revision}});
}

std::vector<EmbeddedVault::Listed> EmbeddedVault::List(bool allRevisions) {
  core_->TheGate().Pass("EmbeddedVault.List");
  core_->RequireLoggedOn();
  return vault::Components(*core_, {{}, {}, allRevisions ? "1 = 1" : vault::kIsNewest, {}});
}

std::vector<EmbeddedVault::Listed> EmbeddedVault::Revisions(const Ref<veldora::VdObject>& object) {
  core_->TheGate().Pass("EmbeddedVault.Revisions");
  core_->RequireLoggedOn();
  const auto& data = *vault::DataOf(object);
  std::vector<Listed> found;
  if (!data.Info().IsVersioned()) return found;
  const vault::Selection selection{
      {}, {}, "o.class_id = ? AND o.identity = ?", {std::int64_t{data.Info().id}, vault::RowOf(data).identity}};
  vault::SelectListed(*core_, data.Info(), selection, "", "",
                      [&](Listed listed, const vault::SqlRow&) { found.push_back(std::move(listed)); });
  std::ranges::sort(found, {}, &Listed::version);
  return found;
}

std::vector<EmbeddedVault::Linked> EmbeddedVault::Links(const Ref<veldora::VdObject>& object) {
  core_->TheGate().Pass("EmbeddedVault.Links");
  core_->RequireLoggedOn();
  const auto self = vault::DataOf(object)->Id();
  std::vector<Linked> links;
  vault::AddLinks(*core_, self, true, links);
  vault::AddLinks(*core_, self, false, links);
  return links;
}

std::vector<EmbeddedVault::Held> EmbeddedVault::WholeStructure(const Ref<veldora::VdObject>& root) {
  core_->TheGate().Pass("EmbeddedVault.WholeStructure");
  core_->RequireLoggedOn();
  const std::int64_t self = vault::DataOf(root)->Id();
  const std::int64_t linkClass = core_->TheSchema().StructureLink().id;
  std::vector<Held> held(1);
  std::unordered_map<std::int64_t, std::size_t> places{{self, 0}};
  for (const auto& info : core_->TheSchema().Classes()) {
    if (!info->IsVersioned()) continue;
    const vault::Selection selection{vault::kBelow, "JOIN below ON below.id = o.object_id", "1 = 1", {self, linkClass}};
    vault::SelectListed(*core_, *info, selection, "", "", [&](Listed listed, const vault::SqlRow&) {
      const auto [place, isNew] = places.try_emplace(listed.identity.objectId, held.size());
      if (isNew) held.emplace_back();
      held[place->second].object = std::move(listed);
    });
  }
  const auto rows =
      core_->Data().Query("iii",
                          std::string(vault::kBelow) +
                              "SELECT l.from_object, l.to_object, l.\"QUANTITY\" FROM vd_link l JOIN below "
                              "ON below.id = l.from_object WHERE l.\"CLASS_ID\" = ? "
                              "ORDER BY l.from_object, l.place",
                          {self, linkClass, linkClass});
  for (const auto& row : rows) {
    held[places.at(vault::IntegerOf(row[0]))].components.emplace_back(places.at(vault::IntegerOf(row[1])),
                                                                      static_cast<int>(vault::IntegerOf(row[2])));
  }
  return held;
}

std::vector<EmbeddedVault::User> EmbeddedVault::Users() {
  core_->TheGate().Pass("EmbeddedVault.Users");
  core_->RequireLoggedOn();
  std::vector<User> users;
  const auto rows = core_->Data().Query(
      "tiit",
      "SELECT u.login, r.operation_id, r.class_id, k.name FROM vd_user u LEFT JOIN vd_right r ON r.user_id = u.user_id "
      "LEFT JOIN vd_class k ON k.class_id = r.class_id ORDER BY u.user_id, r.operation_id, r.class_id");
  for (const auto& row : rows) {
    const auto login = vault::TextOf(row[0]);
    if (users.empty() || users.back().login != login) users.push_back({login, {}});
    if (std::holds_alternative<std::monostate>(row[1])) continue;
    const auto operation = static_cast<std::int32_t>(vault::IntegerOf(row[1]));
    users.back().rights.push_back(
        {operation == 0 ? std::string() : core_->TheSchema().OperationName(operation), vault::TextOf(row[3])});
  }
  return users;
}

}  // namespace quintara
