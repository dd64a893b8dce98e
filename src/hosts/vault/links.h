#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "hosts/vault/object_data.h"

namespace quintara::vault {

/// One link, seen from one of its ends.
struct Link {
  std::int32_t id = 0;
  std::int16_t otherClass = 0;
  std::int32_t other = 0;
  int quantity = 1;
};

/// The direct components, in the order in which they were linked.
std::vector<Link> ChildrenOf(const ObjectData& object);
/// What holds the object as a component, in the order of their ids; `classId` 0 is any class.
std::vector<Link> ParentsOf(const ObjectData& object, std::int16_t classId);
std::optional<std::int32_t> FindLink(Database& database, std::int16_t linkClass, std::int32_t from, std::int32_t to);

/// Links `from` to `to`, in a transaction of its own. A structure link is refused when it would close
/// a cycle or the parent can't be changed; a second one to the same child adds to the number of its
/// instances. Any other link is made once.
void AddLink(const ObjectData& from, const ObjectData& to, const ClassInfo& linkClass, int quantity);

/// Removes a link, in a transaction of its own; of a structure link the parent must be changeable.
void RemoveLink(Core& core, std::int32_t linkId);

/// Makes `children` all that `parent` holds, in this order.
void SetChildren(const ObjectData& parent, const std::vector<Link>& children);

struct ChildReplacement {
  const ObjectData* from;
  const ObjectData* to;
};
/// Lets `parent` hold others where it held these; numbers of instances and places stay. Those that
/// become one stand at the place of the first, with the instances of all.
void ReplaceChildren(const ObjectData& parent, const std::vector<ChildReplacement>& replacements);

/// Copies all links that go out from one object to another; in a transaction.
void CopyOutgoingLinks(Core& core, std::int32_t from, std::int32_t to);

}  // namespace quintara::vault
