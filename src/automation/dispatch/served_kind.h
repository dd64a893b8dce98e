#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "automation/dispatch/operation.h"
#include "automation/dispatch/value.h"

namespace quintara::automation {

class ServedKind;

/// An operation as it is offered to other programs. `run` takes its arguments in their order, at least as many as
/// `arity` says, and gives what it gives; the failures are the contract's, and 13 for an argument that isn't what is
/// asked for. `gives` tells the kind of what it gives, where that is an object, and
/// `givesValue` whether there is anything.
struct ServedOperation {
  std::string_view name;
  Use use;
  std::size_t arity;
  Value (*run)(AnyObject& object, std::span<const VARIANT> arguments);
  const ServedKind& (*gives)();
  bool givesValue;
};

/// The operations of a kind under their ids, those of the kinds that it is derived from among them.
class ServedKind {
 public:
  /// `isOpen`: its objects may be of a kind that is derived from it.
  ServedKind(std::string_view name, bool isOpen, std::vector<ServedOperation> operations);

  std::string_view Name() const noexcept { return name_; }
  bool IsOpen() const noexcept { return isOpen_; }
  std::span<const ServedOperation> Operations() const noexcept { return operations_; }
  /// The id of a name, in whatever capitals; `DISPID_UNKNOWN` for none. `DISPID_VALUE` is what gives an item of a
  /// collection by its index, and the value of an object that is no collection.
  DISPID IdOf(std::string_view name) const;
  /// The operation of an id for that use and number of arguments; nothing where there is none. `isKnown` tells whether
  /// the id is one at all.
  const ServedOperation* Find(DISPID id, bool isPut, std::size_t arguments, bool& isKnown) const;
  /// Where there is none: the operation of that id which gives an object whose own value takes the arguments that it
  /// leaves, as in "Worksheets(1)" and "Cells(1, 2) = 3". Nothing where there is none of these either.
  const ServedOperation* FindGiver(DISPID id, bool isPut, std::size_t arguments) const;

 private:
  DISPID IdAt(std::size_t index) const;

  std::string_view name_;
  bool isOpen_;
  std::vector<ServedOperation> operations_;
  std::vector<std::string> names_;  ///< in capitals, each once
  std::vector<DISPID> ids_;         ///< of each operation
  bool isCollection_;
};

/// What an object is, where it is known as one of an open kind; it is asked only then.
const ServedKind& KindOf(AnyObject& object, const ServedKind& known);

/// An object of ours for other programs; the same one again as long as they hold it. `kind` is what is known of it.
ComPtr<IDispatch> Serve(const Ref<AnyObject>& object, const ServedKind& kind);

}  // namespace quintara::automation
