#include "hosts/vault/links.h"

#include <limits>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "base/failure.h"
#include "hosts/vault/object_storage.h"
#include "hosts/vault/sequences.h"

namespace quintara::vault {
namespace {

Link LinkOf(const SqlRow& row) {
  return {static_cast<std::int32_t>(IntegerOf(row[0])), static_cast<std::int16_t>(IntegerOf(row[1])),
          static_cast<std::int32_t>(IntegerOf(row[2])), static_cast<int>(IntegerOf(row[3]))};
}

std::vector<Link> LinksOf(const std::vector<SqlRow>& rows) {
  std::vector<Link> links;
  links.reserve(rows.size());
  for (const auto& row : rows) links.push_back(LinkOf(row));
  return links;
}

// The object itself and all that holds it, at any height. A new parent has nothing above it, so that a
// structure that is built from below costs no search.
std::unordered_set<std::int64_t> HoldersOf(const ObjectData& object) {
  auto& core = object.TheCore();
  std::unordered_set<std::int64_t> holders;
  const auto rows = core.Data().Query(
      "i",
      "WITH RECURSIVE holder(id) AS (SELECT CAST(? AS INTEGER) UNION SELECT l.from_object FROM vd_link l JOIN holder h "
      "ON l.to_object = h.id AND l.\"CLASS_ID\" = ?) SELECT id FROM holder",
      {std::int64_t{object.Id()}, std::int64_t{core.TheSchema().StructureLink().id}});
  for (const auto& row : rows) holders.insert(IntegerOf(row[0]));
  return holders;
}

void RequireNoCycle(const std::unordered_set<std::int64_t>& holders, const ObjectData& parent,
                    const ClassInfo& childClass, std::int32_t child) {
  if (!holders.contains(child)) return;
  throw Failure(failure::kInvalidCall, Described(parent.Info(), parent.Id()) + " can't hold " +
                                           Described(childClass, child) + ", which is itself or holds it");
}

void RequireComponent(const ClassInfo& info) {
  if (!info.IsVersioned()) {
    throw Failure(failure::kInvalidCall, "Objects of the class \"" + info.name + "\" can't stand in a structure");
  }
}

std::int64_t NextPlace(Core& core, std::int32_t from, std::int16_t linkClass) {
  return 1 + IntegerOf(core.Data().QueryOne(ColumnType::kInteger,
                                            "SELECT MAX(place) FROM vd_link WHERE from_object = ? AND \"CLASS_ID\" = ?",
                                            {std::int64_t{from}, std::int64_t{linkClass}}));
}

void InsertLink(Core& core, std::int16_t linkClass, std::int32_t from, std::int32_t to, std::int64_t place,
                int quantity) {
  core.Data().Execute(
      "INSERT INTO vd_link (\"OBJECT_ID\", \"CLASS_ID\", from_object, to_object, place, \"QUANTITY\") VALUES (?, ?, ?, "
      "?, ?, ?)",
      {std::int64_t{NextNumber(core.Data(), sequence::kLink)}, std::int64_t{linkClass}, std::int64_t{from},
       std::int64_t{to}, place, std::int64_t{quantity}});
}

int QuantityTogether(std::int64_t one, std::int64_t other) {
  if (one + other > std::numeric_limits<int>::max()) {
    throw Failure(failure::kOverflow, "Overflow: a component has too many instances");
  }
  return static_cast<int>(one + other);
}

// One entry for each distinct child, at the place of its first.
std::vector<Link> Merged(const std::vector<Link>& children) {
  std::vector<Link> merged;
  std::unordered_map<std::int32_t, std::size_t> places;
  for (const auto& child : children) {
    const auto [place, isNew] = places.try_emplace(child.other, merged.size());
    if (isNew) {
      merged.push_back(child);
    } else {
      merged[place->second].quantity = QuantityTogether(merged[place->second].quantity, child.quantity);
    }
  }
  return merged;
}

bool HoldsAnything(const ObjectData& object) {
  const auto first = object.TheCore().Data().QueryOne(
      ColumnType::kInteger, "SELECT to_object FROM vd_link WHERE from_object = ? AND \"CLASS_ID\" = ? LIMIT 1",
      {std::int64_t{object.Id()}, std::int64_t{object.TheCore().TheSchema().StructureLink().id}});
  return IntegerOf(first) != 0;
}

void AddStructureLink(const ObjectData& from, const ObjectData& to, const ClassInfo& linkClass, int quantity) {
  auto& core = from.TheCore();
  RequireComponent(from.Info());
  RequireComponent(to.Info());
  RequireChangeable(from);
  if (quantity < 1) throw Failure(failure::kInvalidCall, "A component has at least one instance");
  if (const auto there = FindLink(core.Data(), linkClass.id, from.Id(), to.Id())) {
    const auto before = core.Data().QueryOne(
        ColumnType::kInteger, "SELECT \"QUANTITY\" FROM vd_link WHERE \"OBJECT_ID\" = ?", {std::int64_t{*there}});
    core.Data().Execute("UPDATE vd_link SET \"QUANTITY\" = ? WHERE \"OBJECT_ID\" = ?",
                        {std::int64_t{QuantityTogether(IntegerOf(before), quantity)}, std::int64_t{*there}});
    return;
  }
  // What holds nothing closes no cycle, so that a structure that is built from above costs no search either.
  if (from.Id() == to.Id() || HoldsAnything(to)) RequireNoCycle(HoldersOf(from), from, to.Info(), to.Id());
  InsertLink(core, linkClass.id, from.Id(), to.Id(), NextPlace(core, from.Id(), linkClass.id), quantity);
}

}  // namespace

std::vector<Link> ChildrenOf(const ObjectData& object) {
  auto& core = object.TheCore();
  return LinksOf(core.Data().Query("iiii",
                                   "SELECT l.\"OBJECT_ID\", o.class_id, l.to_object, l.\"QUANTITY\" FROM vd_link l "
                                   "JOIN vd_object o ON o.object_id = l.to_object "
                                   "WHERE l.from_object = ? AND l.\"CLASS_ID\" = ? ORDER BY l.place",
                                   {std::int64_t{object.Id()}, std::int64_t{core.TheSchema().StructureLink().id}}));
}

std::vector<Link> ParentsOf(const ObjectData& object, std::int16_t classId) {
  auto& core = object.TheCore();
  std::string sql =
      "SELECT l.\"OBJECT_ID\", o.class_id, l.from_object, l.\"QUANTITY\" FROM vd_link l JOIN vd_object o ON "
      "o.object_id = l.from_object "
      "WHERE l.to_object = ? AND l.\"CLASS_ID\" = ?";
  std::vector<SqlValue> values = {std::int64_t{object.Id()}, std::int64_t{core.TheSchema().StructureLink().id}};
  if (classId != 0) {
    sql += " AND o.class_id = ?";
    values.emplace_back(std::int64_t{classId});
  }
  return LinksOf(core.Data().Query("iiii", sql + " ORDER BY l.from_object", values));
}

std::optional<std::int32_t> FindLink(Database& database, std::int16_t linkClass, std::int32_t from, std::int32_t to) {
  const auto id = database.QueryOne(
      ColumnType::kInteger,
      "SELECT \"OBJECT_ID\" FROM vd_link WHERE from_object = ? AND \"CLASS_ID\" = ? AND to_object = ?",
      {std::int64_t{from}, std::int64_t{linkClass}, std::int64_t{to}});
  if (IntegerOf(id) == 0) return std::nullopt;
  return static_cast<std::int32_t>(IntegerOf(id));
}

void AddLink(const ObjectData& from, const ObjectData& to, const ClassInfo& linkClass, int quantity) {
  if (!linkClass.IsLink())
    throw Failure(failure::kInvalidCall, "The class \"" + linkClass.name + "\" is no class of links");
  auto& core = from.TheCore();
  core.InTransaction([&] {
    RowOf(from);
    RowOf(to);
    if (linkClass.kind == ClassKind::kStructureLink) {
      AddStructureLink(from, to, linkClass, quantity);
      return;
    }
    if (FindLink(core.Data(), linkClass.id, from.Id(), to.Id())) {
      throw Failure(failure::kInvalidCall,
                    Described(from.Info(), from.Id()) + " is linked to " + Described(to.Info(), to.Id()) + " already");
    }
    InsertLink(core, linkClass.id, from.Id(), to.Id(), NextPlace(core, from.Id(), linkClass.id), 1);
  });
}

void RemoveLink(Core& core, std::int32_t linkId) {
  core.InTransaction([&] {
    const auto rows = core.Data().Query("ii", "SELECT \"CLASS_ID\", from_object FROM vd_link WHERE \"OBJECT_ID\" = ?",
                                        {std::int64_t{linkId}});
    if (rows.empty()) throw Failure(failure::kInvalidCall, "The vault has no link " + std::to_string(linkId));
    if (core.TheSchema().ClassById(static_cast<int>(IntegerOf(rows[0][0]))).kind == ClassKind::kStructureLink) {
      const auto from = static_cast<std::int32_t>(IntegerOf(rows[0][1]));
      RequireChangeable(core, core.TheSchema().ClassById(FindRow(core.Data(), from)->classId), from);
    }
    core.Data().Execute("DELETE FROM vd_link WHERE \"OBJECT_ID\" = ?", {std::int64_t{linkId}});
  });
}

void SetChildren(const ObjectData& parent, const std::vector<Link>& children) {
  auto& core = parent.TheCore();
  const auto& linkClass = core.TheSchema().StructureLink();
  core.InTransaction([&] {
    RequireComponent(parent.Info());
    RequireChangeable(parent);
    core.Data().Execute("DELETE FROM vd_link WHERE from_object = ? AND \"CLASS_ID\" = ?",
                        {std::int64_t{parent.Id()}, std::int64_t{linkClass.id}});
    const auto holders = HoldersOf(parent);
    std::unordered_set<std::int32_t> taken;
    std::int64_t place = 0;
    for (const auto& child : children) {
      const auto& info = core.TheSchema().ClassById(child.otherClass);
      RequireComponent(info);
      RequireNoCycle(holders, parent, info, child.other);
      if (child.quantity < 1 || !taken.insert(child.other).second) {
        throw Failure(failure::kInvalidCall, "The structure of " + Described(parent.Info(), parent.Id()) + " names " +
                                                 Described(info, child.other) + " twice, or without an instance");
      }
      InsertLink(core, linkClass.id, parent.Id(), child.other, ++place, child.quantity);
    }
  });
}

void ReplaceChildren(const ObjectData& parent, const std::vector<ChildReplacement>& replacements) {
  auto& core = parent.TheCore();
  core.InTransaction([&] {
    auto children = ChildrenOf(parent);
    std::unordered_map<std::int32_t, std::size_t> places;
    for (std::size_t i = 0; i < children.size(); ++i) places[children[i].other] = i;
    for (const auto& [from, to] : replacements) {
      const auto place = places.find(from->Id());
      if (place == places.end()) {
        throw Failure(failure::kInvalidCall,
                      Described(parent.Info(), parent.Id()) + " doesn't hold " + Described(from->Info(), from->Id()));
      }
      children[place->second].other = to->Id();
      children[place->second].otherClass = RowOf(*to).classId;
    }
    SetChildren(parent, Merged(children));
  });
}

void CopyOutgoingLinks(Core& core, std::int32_t from, std::int32_t to) {
  const auto rows = core.Data().Query("iiii",
                                      "SELECT \"CLASS_ID\", to_object, place, \"QUANTITY\" FROM vd_link WHERE "
                                      "from_object = ? ORDER BY \"CLASS_ID\", place",
                                      {std::int64_t{from}});
  for (const auto& row : rows) {
    InsertLink(core, static_cast<std::int16_t>(IntegerOf(row[0])), to, static_cast<std::int32_t>(IntegerOf(row[1])),
               IntegerOf(row[2]), static_cast<int>(IntegerOf(row[3])));
  }
}

}  // namespace quintara::vault
