#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "automation/dispatch/operation.h"
#include "automation/dispatch/value.h"

namespace quintara::automation {

/// An operation as it is offered to other programs. `run` takes its arguments in their order, at least as many as
/// `arity` says, and gives what it gives; the failures are the contract's, and 13 for an argument that isn't what is
/// asked for.
struct ServedOperation {
  std::string_view name;
  Use use;
  std::size_t arity;
  Value (*run)(AnyObject& object, std::span<const VARIANT> arguments);
};

/// The operations of a kind under their ids, those of the kinds that it is derived from among them.
class ServedKind {
 public:
  ServedKind(std::string_view name, std::vector<ServedOperation> operations);

  std::string_view Name() const noexcept { return name_; }
  /// The id of a name, in whatever capitals; `DISPID_UNKNOWN` for none. What gives an item by its index is the value
  /// of a collection.
  DISPID IdOf(std::string_view name) const;
  /// The operation of an id for that use and number of arguments; nothing where there is none. `isKnown` tells whether
  /// the id is one at all.
  const ServedOperation* Find(DISPID id, bool isPut, std::size_t arguments, bool& isKnown) const;

 private:
  DISPID IdAt(std::size_t index) const;

  std::string_view name_;
  std::vector<ServedOperation> operations_;
  std::vector<std::string> names_;  ///< in capitals, each once
};

/// What an object is, where only a more general kind of it is known.
const ServedKind& KindOf(AnyObject& object, const ServedKind& known);

/// An object of ours for other programs; the same one again as long as they hold it. `kind` is what is known of it.
ComPtr<IDispatch> Serve(const Ref<AnyObject>& object, const ServedKind& kind);

}  // namespace quintara::automation
