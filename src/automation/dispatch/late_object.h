#pragma once

#include <map>
#include <memory>
#include <span>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "automation/dispatch/com.h"
#include "automation/dispatch/operation.h"
#include "automation/dispatch/value.h"

namespace quintara::automation {

/// The ids under which an object, or all objects of a kind, answer to names. The names must outlive it.
using IdTable = std::unordered_map<std::string_view, DISPID>;

/// What is known of a program that is driven: the ids of its kinds of objects, each asked for once, and the adapters of
/// its objects, so that one object has one adapter of a kind.
class Connection {
 public:
  /// The table of a kind, told by its name.
  std::shared_ptr<IdTable> IdsOf(std::string_view kind);

  /// The place of the adapter that an object has as this kind, empty where there is none.
  std::weak_ptr<AnyObject>& AdapterOf(const ComPtr<IDispatch>& object, std::string_view kind);
  /// Called at an adapter's end.
  void Forget(const ComPtr<IDispatch>& object, std::string_view kind);

 private:
  std::unordered_map<std::string_view, std::shared_ptr<IdTable>> kinds_;
  std::map<std::pair<IUnknown*, std::string_view>, std::weak_ptr<AnyObject>> adapters_;
};

/// An object of another program, driven by the names of its members. Every failure names the kind and the member.
class LateObject {
 public:
  /// Its ids are those of the whole kind where `sharesIds`.
  LateObject(ComPtr<IDispatch> object, std::shared_ptr<Connection> connection, std::string_view kind, bool sharesIds);

  /// Asks for a member with arguments in their order, and gives what it gives.
  Value Invoke(std::string_view member, Use use, std::span<Value> arguments);
  /// Whether the object has a member of that name.
  bool Has(std::string_view member);

  const ComPtr<IDispatch>& Object() const noexcept { return object_; }
  const std::shared_ptr<Connection>& TheConnection() const noexcept { return connection_; }

 private:
  HRESULT IdOf(std::string_view member, DISPID& id);
  HRESULT Ask(DISPID id, Use use, std::span<Value> arguments, Value& result, EXCEPINFO& details);

  ComPtr<IDispatch> object_;
  std::shared_ptr<Connection> connection_;
  std::string_view kind_;
  std::shared_ptr<IdTable> ids_;
};

}  // namespace quintara::automation
