#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "commands/Cls_GlobalRefreshVD.h"
#include "quintara/command_context.h"
#include "quintara/component_verbs.h"
#include "quintara/object_arguments.h"
#include "quintara/session_start.h"
#include "quintara/stored_matrix.h"
#include "quintara/vault_objects.h"

namespace quintara {
namespace {

using veldora::VdObject;
using Held = EmbeddedVault::Held;
using Key = std::pair<int, int>;
using Components = std::map<Key, int>;

/// A product and all that it holds, at one time.
struct Snapshot {
  std::vector<Held> all;  ///< the product first
  std::map<Key, Components> holds;
  std::map<std::string, std::string> revisions;  ///< by part number, "A checked in"

  bool IsAsIn(const Snapshot& other, const Held& one) const;
};

Key KeyOf(const Held& held) {
  return {held.object.identity.classId, held.object.identity.objectId};
}

std::string RevisionText(const EmbeddedVault::Listed& object) {
  return object.revision + " " + StateText(object);
}

Snapshot SnapshotOf(EmbeddedVault& vault, const Ref<VdObject>& product) {
  Snapshot snapshot{vault.WholeStructure(product->GetVersion(veldora::version::kLast)), {}, {}};
  for (const auto& held : snapshot.all) {
    auto& components = snapshot.holds[KeyOf(held)];
    for (const auto& [index, quantity] : held.components) components[KeyOf(snapshot.all[index])] = quantity;
    auto& revisions = snapshot.revisions[held.object.partNumber];
    revisions += (revisions.empty() ? "" : ", ") + RevisionText(held.object);
  }
  return snapshot;
}

// In its revision and in what it holds.
bool Snapshot::IsAsIn(const Snapshot& other, const Held& one) const {
  const auto found = other.holds.find(KeyOf(one));
  return found != other.holds.end() && found->second == holds.at(KeyOf(one));
}

TextTable ChangesBetween(const Snapshot& before, const Snapshot& now) {
  TextTable table({{"object"}, {"before"}, {"now"}});
  for (const auto& held : now.all) {
    if (now.IsAsIn(before, held)) continue;
    const auto& partNumber = held.object.partNumber;
    const auto known = before.revisions.find(partNumber);
    table.AddRow({partNumber, known == before.revisions.end() ? "" : known->second, RevisionText(held.object)});
  }
  return table;
}

bool IsInWork(const EmbeddedVault::Listed& object) {
  return object.state == veldora::state::kNew || object.state == veldora::state::kCheckedOut;
}

// What the refresh has taken and not brought back, or what of it someone works on all the while.
void TellWhatIsInWork(CommandContext& context, const Snapshot& before, const Snapshot& now, bool isRefreshed) {
  for (const auto& held : now.all) {
    if (!IsInWork(held.object)) continue;
    const bool wasInWork = std::ranges::any_of(
        before.all, [&](const Held& one) { return KeyOf(one) == KeyOf(held) && IsInWork(one.object); });
    if (wasInWork) continue;
    const auto called = "'" + held.object.partNumber + "' (revision " + held.object.revision + ") ";
    if (isRefreshed) {
      context.Note(called + "is still in work: " + StateText(held.object));
    } else {
      context.Complain(called + "is left " + StateText(held.object));
    }
  }
}

}  // namespace

void RunRefresh(CommandContext& context, const RefreshOptions& options) {
  StartSession(context);
  const auto object = ObjectArgument(context, options.product);
  auto& vault = context.RequireVault();
  const auto before = SnapshotOf(vault, object);
  const auto matrixBefore = FindStoredMatrix(object);

  Cls_GlobalRefreshVD().Run(SelectionOf(object));

  const bool isRefreshed = context.AllWentWell();
  const auto now = SnapshotOf(vault, object);
  if (const auto changes = ChangesBetween(before, now); !changes.Empty()) context.Print(changes);
  TellWhatIsInWork(context, before, now, isRefreshed);
  const auto matrix = FindStoredMatrix(object);
  if (matrix && (isRefreshed || matrix != matrixBefore)) {
    context.Print("matrix " + Called(*matrix) + ": " + ChangeText(matrixBefore, matrix));
  }
  if (isRefreshed) context.Print("refreshed " + Called(object->GetVersion(veldora::version::kLast)));
}

}  // namespace quintara
