#include "hosts/vault/import_comparison.h"

#include <algorithm>
#include <map>
#include <tuple>
#include <unordered_map>
#include <utility>

#include "access/contracts/veldora_objects.h"
#include "base/failure.h"
#include "base/text.h"
#include "hosts/vault/deposits.h"
#include "hosts/vault/file_names.h"
#include "hosts/vault/object_storage.h"
#include "hosts/vault/schema_setup.h"
#include "hosts/vault/sha256.h"

namespace quintara::vault {
namespace {

namespace state = veldora::state;

[[noreturn]] void ThrowBadPlan(const std::string& text) {
  throw Failure(failure::kInvalidCall, "The assembly can't be imported: " + text);
}

void RequireChildren(const AssemblyPlan& plan, std::size_t parent) {
  const auto& definition = plan.definitions[parent];
  std::vector<std::size_t> named;
  for (const auto& child : definition.children) {
    if (child.definition >= parent) ThrowBadPlan("\"" + definition.partNumber + "\" stands before one of its children");
    if (child.quantity < 1) ThrowBadPlan("\"" + definition.partNumber + "\" has a child without an instance");
    named.push_back(child.definition);
  }
  std::ranges::sort(named);
  if (std::ranges::adjacent_find(named) != named.end())
    ThrowBadPlan("\"" + definition.partNumber + "\" names one child twice");
  if (!definition.isAssembly && !named.empty()) ThrowBadPlan("the part \"" + definition.partNumber + "\" has children");
}

/// The definitions by part number, in capitals.
using Numbers = std::unordered_map<std::string, std::size_t>;

Numbers NumbersOf(const AssemblyPlan& plan) {
  Numbers numbers;
  for (std::size_t i = 0; i < plan.definitions.size(); ++i) {
    const auto& definition = plan.definitions[i];
    if (definition.partNumber.empty()) ThrowBadPlan("a part number is empty");
    if (!numbers.emplace(Capitals(definition.partNumber), i).second)
      ThrowBadPlan("it has the part number \"" + definition.partNumber + "\" twice");
    RequireFileName(FileNameOf(definition.file));
    RequireChildren(plan, i);
  }
  return numbers;
}

const ClassInfo& ClassNamed(const Schema& schema, const std::string& name, const char* table) {
  const auto* info = name.empty() ? schema.FindTable(table) : &schema.ClassByName(name);
  if (info == nullptr || !info->IsVersioned()) ThrowBadPlan("the vault has no class for it in " + std::string(table));
  return *info;
}

// Rows whose ids are among `ids`, with statements of one length: the last id fills a list up.
template <class Take>
void QueryTogether(Database& database, std::string_view columns, const std::string& sql,
                   const std::vector<std::int64_t>& ids, Take&& take) {
  constexpr std::size_t kTogether = 200;
  std::string marks = "?";
  for (std::size_t i = 1; i < kTogether; ++i) marks += ",?";
  for (std::size_t first = 0; first < ids.size(); first += kTogether) {
    const auto last = std::min(first + kTogether, ids.size());
    std::vector<SqlValue> values(kTogether, ids[last - 1]);
    std::copy(ids.begin() + static_cast<std::ptrdiff_t>(first), ids.begin() + static_cast<std::ptrdiff_t>(last),
              values.begin());
    for (const auto& row : database.Query(columns, sql + " IN (" + marks + ")", values)) take(row);
  }
}

/// Finds, of each definition, what the vault has under its part number.
class Finder {
 public:
  Finder(Core& core, const Numbers& numbers) : core_(core), numbers_(numbers), found_(numbers.size()) {}

  /// One list for each definition.
  std::vector<std::vector<PresentObject>> Run() {
    for (const auto& info : core_.TheSchema().Classes()) {
      if (IsComponentClass(*info)) FindIn(*info);
    }
    return std::move(found_);
  }

 private:
  // All part numbers are looked at, since no index knows them in capitals.
  std::vector<std::int64_t> IdsIn(const ClassInfo& info) const {
    const std::string number = Quoted(kPartNumberAttribute);
    std::vector<std::int64_t> ids;
    const auto rows = core_.Data().Query("ti", "SELECT " + number + ", \"OBJECT_ID\" FROM " + Quoted(info.table) +
                                                   " WHERE " + number + " IS NOT NULL ORDER BY " + number);
    for (const auto& row : rows) {
      if (numbers_.contains(Capitals(TextOf(row[0])))) ids.push_back(IntegerOf(row[1]));
    }
    return ids;
  }

  void FindIn(const ClassInfo& info) {
    const std::string sql =
        "SELECT o.object_id, o.class_id, o.identity, c.\"NM_CN_PART_NUMBER\", c.\"REVISION\", "
        "c.\"CAD_REF_FILE_NAME\", c.\"STATE\", o.deposit_id FROM " +
        Quoted(info.table) + " c JOIN vd_object o ON o.object_id = c.\"OBJECT_ID\" WHERE " + kIsNewest +
        " AND c.\"OBJECT_ID\"";
    QueryTogether(core_.Data(), "iittttii", sql, IdsIn(info), [&](const SqlRow& row) {
      PresentObject present{static_cast<std::int32_t>(IntegerOf(row[0])),
                            static_cast<std::int16_t>(IntegerOf(row[1])),
                            TextOf(row[2]),
                            TextOf(row[3]),
                            TextOf(row[4]),
                            TextOf(row[5]),
                            static_cast<int>(IntegerOf(row[6])),
                            IntegerOf(row[7])};
      const auto definition = numbers_.at(Capitals(present.partNumber));
      found_[definition].push_back(std::move(present));
    });
  }

  Core& core_;
  const Numbers& numbers_;
  std::vector<std::vector<PresentObject>> found_;
};

/// Holds a plan against the vault, and notes all that stands in its way.
class Comparer {
 public:
  Comparer(Core& core, const AssemblyPlan& plan, const AssemblyImportOptions& options)
      : core_(core), plan_(plan), options_(options), comparisons_(plan.definitions.size()) {}

  std::vector<Comparison> Run() {
    Match();
    // What the vault holds of another kind can't be compared.
    ThrowObstacles();
    for (std::size_t i = 0; i < comparisons_.size(); ++i) {
      if (options_.progress) {
        options_.progress(static_cast<double>(i) / static_cast<double>(comparisons_.size()),
                          "Comparing " + plan_.definitions[i].partNumber);
      }
      comparisons_[i].changed = IsChanged(i);
      NoteState(i);
    }
    ThrowObstacles();
    return std::move(comparisons_);
  }

 private:
  void Match() {
    const auto numbers = NumbersOf(plan_);
    const auto& products = ClassNamed(core_.TheSchema(), options_.productClass, kProductTable);
    const auto& parts = ClassNamed(core_.TheSchema(), options_.partClass, kPartTable);
    const auto found = Finder(core_, numbers).Run();
    for (std::size_t i = 0; i < comparisons_.size(); ++i) {
      comparisons_[i].info = plan_.definitions[i].isAssembly ? &products : &parts;
      Choose(i, found[i]);
    }
  }

  void Choose(std::size_t index, const std::vector<PresentObject>& found) {
    const auto& wanted = plan_.definitions[index].partNumber;
    if (found.empty()) return;
    for (const auto& one : found) {
      if (one.partNumber != wanted)
        return Refuse(wanted, "differs only in capitals from \"" + one.partNumber + "\", which the vault has");
      if (one.classId != comparisons_[index].info->id) {
        return Refuse(wanted, "is an object of the class \"" + core_.TheSchema().ClassById(one.classId).name +
                                  "\" in the vault, and here one of \"" + comparisons_[index].info->name + "\"");
      }
    }
    if (found.size() > 1)
      return Refuse(wanted, "is the part number of " + std::to_string(found.size()) + " objects of the vault");
    comparisons_[index].present = found.front();
  }

  void Refuse(const std::string& partNumber, const std::string& reason) {
    obstacles_.push_back("\"" + partNumber + "\" " + reason);
  }

  bool IsChanged(std::size_t index) {
    const auto& present = comparisons_[index].present;
    if (!present) return true;
    const auto& definition = plan_.definitions[index];
    if (present->deposit == 0 || present->cadName != FileNameOf(definition.file)) return true;
    const auto stored = FindDeposit(core_.Data(), present->deposit)->file;
    const auto fresh = core_.Files().Read(definition.file);
    if (Sha256Text(fresh) != stored.sha256) {
      if (!definition.isAssembly || !options_.sameChildren) return true;
      if (!options_.sameChildren(core_.Store().Read(stored), fresh)) return true;
    }
    return definition.isAssembly && HasOtherLinks(index);
  }

  bool HasOtherLinks(std::size_t index) {
    using Held = std::tuple<std::int64_t, std::string, std::int64_t>;
    std::vector<Held> linked;
    const auto rows = core_.Data().Query(
        "iti",
        "SELECT o.class_id, o.identity, l.\"QUANTITY\" FROM vd_link l JOIN vd_object "
        "o ON o.object_id = l.to_object WHERE l.from_object = ? AND "
        "l.\"CLASS_ID\" = ? ORDER BY l.place",
        {std::int64_t{comparisons_[index].present->id}, std::int64_t{core_.TheSchema().StructureLink().id}});
    for (const auto& row : rows) linked.emplace_back(IntegerOf(row[0]), TextOf(row[1]), IntegerOf(row[2]));
    std::vector<Held> wanted;
    for (const auto& child : plan_.definitions[index].children) {
      const auto& present = comparisons_[child.definition].present;
      if (!present) return true;
      wanted.emplace_back(present->classId, present->identity, child.quantity);
    }
    return linked != wanted;
  }

  void NoteState(std::size_t index) {
    const auto& comparison = comparisons_[index];
    if (!comparison.present || !comparison.changed) return;
    const int current = comparison.present->state;
    if (current == state::kCheckedIn || current == state::kReleased) return;
    Refuse(plan_.definitions[index].partNumber,
           "has changed, and its revision " + comparison.present->revision + " is " + StateName(current));
  }

  void ThrowObstacles() const {
    if (obstacles_.empty()) return;
    std::string text;
    for (const auto& obstacle : obstacles_) text += (text.empty() ? "" : "; ") + obstacle;
    throw Failure(failure::kPermissionDenied, "The assembly can't be imported: " + text);
  }

  Core& core_;
  const AssemblyPlan& plan_;
  const AssemblyImportOptions& options_;
  std::vector<Comparison> comparisons_;
  std::vector<std::string> obstacles_;
};

}  // namespace

std::vector<Comparison> CompareWithVault(Core& core, const AssemblyPlan& plan, const AssemblyImportOptions& options) {
  return Comparer(core, plan, options).Run();
}

}  // namespace quintara::vault
