#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "access/contracts/geometry.h"
#include "hosts/vault/embedded_vault.h"

namespace quintara {

/// An assembly as it is to stand in a vault: its parts and assemblies, each once.
struct AssemblyPlan {
  struct Child {
    std::size_t definition;  ///< index in `definitions`, before that of the parent
    int quantity = 1;        ///< number of its instances
  };
  struct Definition {
    std::string partNumber;  ///< unique over all definitions without regard to case
    bool isAssembly = false;
    std::string description;      ///< may be empty
    std::string file;             ///< path; the vault gives it out under the same name
    std::string lightFile;        ///< path of its light representation; empty for none
    std::vector<Child> children;  ///< each distinct child once; empty for a part
  };

  std::vector<Definition> definitions;  ///< children stand before what holds them
};

struct AssemblyImportOptions {
  /// The classes; empty for those that the vault was made with.
  std::string productClass;
  std::string partClass;
  /// Whether two product files of different bytes hold the same children at the same positions.
  /// Without it they don't.
  std::function<bool(const std::string& stored, const std::string& fresh)> sameChildren;
  /// Called for each assembly that was added or revised, when all of it is stored but for its check-in.
  std::function<void(const Ref<veldora::VdObject>& assembly, std::size_t definition)> beforeCheckIn;
  /// A failure that it throws ends the import, which leaves nothing behind then.
  Progress progress;
};

/// What became of one definition.
struct ImportedObject {
  enum class Outcome { kAdded, kRevised, kUnchanged };

  Outcome outcome = Outcome::kUnchanged;
  std::string revision;                       ///< the newest one from now on
  IntegrationVault::Identity identity{0, 0};  ///< of that revision; object id 0 where it isn't there yet
};

// `EmbeddedVault::ImportAssembly` follows these rules.
//
// Objects are told apart by their part numbers, letter by letter. What isn't in the vault is added. What
// is there counts as changed
// - when its file has other bytes or another name; an assembly's only if `sameChildren` doesn't find the
//   same children at the same positions in it;
// - when an assembly's links name other children, in another order, or other numbers of instances. Which
//   revisions they name doesn't matter.
// A light representation follows from the file, so that it is stored with it and never compared. What is
// unchanged isn't touched, whatever changed below it; what changed gets a new revision, in the place of a
// checked-in or released one. Structure links of what is added or revised lead to the newest revisions.
// All of these are checked in.
//
// It is one transaction. It fails, naming every object that stands in the way, before anything is changed:
// - where what changed is new, checked out or obsolete in its newest revision;
// - where a part number is one of an object of another class, of several objects, or differs only in
//   capitals from one in the vault, since their files would have one name on some file systems.

}  // namespace quintara
