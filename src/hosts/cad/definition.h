#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "access/contracts/position_matrix.h"
#include "access/contracts/zorva.h"
#include "hosts/cad/name_ledger.h"
#include "hosts/cad/owned_list.h"
#include "hosts/cad/properties.h"

namespace quintara::cad {

class Definition;
class DocumentObject;
class Occurrence;

/// What two files with the same content have in common.
struct ContentDigest {
  std::uint64_t size = 0;
  std::uint64_t first = 0;
  std::uint64_t second = 0;

  bool operator==(const ContentDigest&) const = default;
};

ContentDigest DigestOf(const std::string& bytes);

/// One child of a definition.
struct Instance {
  std::string name;
  std::shared_ptr<Definition> definition;
  PositionMatrix position = kIdentityPosition;
  PropertyList properties;

  Definition* owner = nullptr;  ///< set when it is appended
  std::size_t index = 0;        ///< the place in the owner was at most this one
};

/// A reference: what the instances of one file and content share. Definitions form a graph without
/// cycles, each held by the instances of it and by what is open.
class Definition : public std::enable_shared_from_this<Definition> {
 public:
  enum class Kind { kAssembly, kPart, kMissing };

  Definition(Kind kind, std::string partNumber);
  ~Definition();
  Definition(const Definition&) = delete;
  Definition& operator=(const Definition&) = delete;

  /// A missing one stands for a file that couldn't be found: only its path is known.
  Kind TheKind() const noexcept { return kind_; }
  const OwnedList<Instance>& Children() const noexcept { return children_; }

  Instance& Append(std::unique_ptr<Instance> instance);
  /// Takes a child away; products that stood for it are dead from then on.
  void Remove(std::size_t index);
  /// Makes a child stand for another definition, without properties of its own. Index, position
  /// and name stay; products that stood for it are dead from then on.
  void Replace(std::size_t index, std::shared_ptr<Definition> definition);
  /// Takes a file that has been found into the place of a missing one; products that stood for the
  /// child live on, in the form in which they were asked to be.
  static void Adopt(Instance& child, const std::shared_ptr<Definition>& found);
  void Rename(Instance& instance, const std::string& name);
  std::size_t IndexOf(Instance& instance) const;
  /// A name for a new child: `base`, point, first free number.
  std::string FreeName(const std::string& base);
  /// What names of instances of this one begin with: its part number; of a missing file its name.
  std::string BaseName() const;

  /// True when `other` is this one or stands somewhere below it.
  bool Holds(const Definition& other) const;

  std::string partNumber;
  PropertyList properties;
  std::string path;  ///< normal and absolute; empty without a file
  ContentDigest content;
  std::uint64_t found = 0;              ///< greater when this content was found in its file later than another
  std::optional<std::string> rootName;  ///< the name of the root where it isn't the part number
  PositionMatrix rootPosition = kIdentityPosition;
  std::shared_ptr<DocumentObject> document;  ///< made when it is first asked for

 private:
  friend class Occurrence;

  void Release(std::vector<std::shared_ptr<Definition>>& pending);
  void ForgetOccurrences(const Instance& child);
  NameLedger& Names();

  Kind kind_;
  OwnedList<Instance> children_;
  std::unique_ptr<NameLedger> names_;
  Occurrence* firstOccurrence_ = nullptr;
};

}  // namespace quintara::cad
