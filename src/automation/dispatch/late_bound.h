#pragma once

#include <array>
#include <concepts>
#include <memory>
#include <span>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "automation/dispatch/kinds.h"
#include "automation/dispatch/kinds_excel.h"
#include "automation/dispatch/kinds_vault_objects.h"
#include "automation/dispatch/kinds_vault_session.h"
#include "automation/dispatch/kinds_zorva.h"
#include "automation/dispatch/late_object.h"

namespace quintara::automation {

/// What every adapter is beside its contract, so that the object behind it can go out again.
class Adapter {
 public:
  virtual ~Adapter() = default;
  virtual const LateObject& Behind() const = 0;
};

/// The adapter of a contract for an object of another program; nothing for nothing.
template <class Contract>
Ref<Contract> Adapt(ComPtr<IDispatch> object, const std::shared_ptr<Connection>& connection);

// How arguments go out and results come in.
inline Value Encode(bool value) {
  return Value(value);
}
inline Value Encode(std::int16_t value) {
  return Value(value);
}
inline Value Encode(std::int32_t value) {
  return Value(value);
}
inline Value Encode(const std::string& value) {
  return Value(value);
}
inline Value Encode(const Variant& value) {
  return Value(value);
}
inline Value Encode(const std::vector<std::string>& value) {
  return Value(value);
}
template <class Contract>
Value Encode(const Ref<Contract>& object) {
  return Value(Outgoing(object));
}

template <class T>
struct Decoder;
template <>
struct Decoder<Variant> {
  static Variant From(const Value& value, const LateObject& source) {
    return ToVariant(value.Raw(), source.TheConnection());
  }
};
template <>
struct Decoder<std::string> {
  static std::string From(const Value& value, const LateObject& source) {
    return Decoder<Variant>::From(value, source).ToText();
  }
};
template <>
struct Decoder<bool> {
  static bool From(const Value& value, const LateObject& source) {
    return Decoder<Variant>::From(value, source).ToBoolean();
  }
};
template <>
struct Decoder<std::int16_t> {
  static std::int16_t From(const Value& value, const LateObject& source) {
    return Decoder<Variant>::From(value, source).ToInteger16();
  }
};
template <>
struct Decoder<std::int32_t> {
  static std::int32_t From(const Value& value, const LateObject& source) {
    return Decoder<Variant>::From(value, source).ToInteger32();
  }
};
template <>
struct Decoder<Ref<AnyObject>> {
  static Ref<AnyObject> From(const Value& value, const LateObject& source) {
    return Incoming(ObjectIn(value.Raw()), source.TheConnection());
  }
};
template <class Contract>
struct Decoder<Ref<Contract>> {
  static Ref<Contract> From(const Value& value, const LateObject& source) {
    return Adapt<Contract>(ObjectIn(value.Raw()), source.TheConnection());
  }
};

template <auto Member>
struct ResultOfMember;
template <class Class, class Result, class... Arguments, Result (Class::*Member)(Arguments...)>
struct ResultOfMember<Member> {
  using Type = Result;
};

/// An object of another program that answers a contract. Each operation of a contract is a line in the adapter that
/// derives from this; those of `AnyObject` are here.
template <class Contract>
class LateBound : public Contract, public Adapter {
 public:
  using ContractType = Contract;

  LateBound(ComPtr<IDispatch> object, const std::shared_ptr<Connection>& connection)
      : object_(std::move(object), connection, Kind<Contract>::kName, Kind<Contract>::kSharesIds) {}

  ~LateBound() override { object_.TheConnection()->Forget(object_.Object(), Kind<Contract>::kName); }
  LateBound(const LateBound&) = delete;
  LateBound& operator=(const LateBound&) = delete;

  const LateObject& Behind() const final { return object_; }

  std::string Name() override { return Ask<&AnyObject::Name>(); }
  void SetName(const std::string& name) override { Ask<&AnyObject::SetName>(name); }
  Ref<AnyObject> Parent() override { return Ask<&AnyObject::Parent>(); }
  Ref<AnyObject> GetItem(const std::string& name) override { return Ask<&AnyObject::GetItem>(name); }
  Ref<zorva::Application> Application() override { return Ask<&AnyObject::Application>(); }

  Ref<zorva::Application> AsApplication() override { return As<zorva::Application>(); }
  Ref<zorva::Document> AsDocument() override { return As<zorva::Document>(); }
  Ref<zorva::ProductDocument> AsProductDocument() override { return As<zorva::ProductDocument>(); }
  Ref<zorva::Product> AsProduct() override { return As<zorva::Product>(); }
  Ref<zorva::Products> AsProducts() override { return As<zorva::Products>(); }
  Ref<FileSystemObject> AsFileSystemObject() override { return As<FileSystemObject>(); }
  Ref<excel::Application> AsSpreadsheetApplication() override { return As<excel::Application>(); }
  Ref<excel::Worksheet> AsWorksheet() override { return As<excel::Worksheet>(); }
  Ref<veldora::HIXEngine> AsHIXEngine() override { return As<veldora::HIXEngine>(); }
  Ref<veldora::VdAliasResults> AsVdAliasResults() override { return As<veldora::VdAliasResults>(); }
  Ref<veldora::VdApplication> AsVdApplication() override { return As<veldora::VdApplication>(); }
  Ref<veldora::VdClientContext> AsVdClientContext() override { return As<veldora::VdClientContext>(); }
  Ref<veldora::VdClientContextService> AsVdClientContextService() override {
    return As<veldora::VdClientContextService>();
  }
  Ref<veldora::VdCommonGUI> AsVdCommonGUI() override { return As<veldora::VdCommonGUI>(); }
  Ref<veldora::VdGUIServices> AsVdGUIServices() override { return As<veldora::VdGUIServices>(); }
  Ref<veldora::VdObject> AsVdObject() override { return As<veldora::VdObject>(); }
  Ref<veldora::VdObjects> AsVdObjects() override { return As<veldora::VdObjects>(); }
  Ref<veldora::VdRecList> AsVdRecList() override { return As<veldora::VdRecList>(); }
  Ref<veldora::VdSession> AsVdSession() override { return As<veldora::VdSession>(); }
  Ref<veldora::VdSessionUtil> AsVdSessionUtil() override { return As<veldora::VdSessionUtil>(); }
  Ref<veldora::VdTranslator> AsVdTranslator() override { return As<veldora::VdTranslator>(); }

 protected:
  /// Asks for the operation that a member of a contract is.
  template <auto Member, class... Arguments>
  auto Ask(const Arguments&... arguments) {
    using Result = typename ResultOfMember<Member>::Type;
    std::array<Value, sizeof...(Arguments)> values{Encode(arguments)...};
    const auto value = InvokeAs<Member>(values);
    if constexpr (!std::is_void_v<Result>) return Decoder<Result>::From(value, object_);
  }

  /// The same with an array in front, by reference: it holds afterwards what the host has made of it.
  template <auto Member, class... Arguments>
  Value AskWithArray(Value& array, const Arguments&... arguments) {
    std::array values{Value::Reference(array), Encode(arguments)...};
    return InvokeAs<Member>(values);
  }

  template <auto Member>
  Value InvokeAs(std::span<Value> arguments) {
    using Operation = OperationOf<Member>;
    return object_.Invoke(Operation::kName, Operation::kUse, arguments);
  }

 private:
  // What it is by its contract needs no question; what it is besides shows in a member that only such objects have.
  template <class Other>
  Ref<Other> As() {
    if constexpr (!std::derived_from<Contract, Other>) {
      if (!object_.Has(Kind<Other>::kTelltale)) return nullptr;
    }
    return Adapt<Other>(object_.Object(), object_.TheConnection());
  }

  LateObject object_;
};

/// An adapter for an object, which is itself again where it is one of ours: failure 13 where that is of another kind.
template <class AdapterClass>
auto MakeAdapter(ComPtr<IDispatch> object, const std::shared_ptr<Connection>& connection) {
  using Contract = typename AdapterClass::ContractType;
  if (!object) return Ref<Contract>();
  if (const auto own = OwnObject(object)) {
    auto known = std::dynamic_pointer_cast<Contract>(own.Shared());
    if (!known) throw Failure(failure::kTypeMismatch);
    return Ref<Contract>(std::move(known));
  }
  if (!connection) return MakeAdapter<AdapterClass>(std::move(object), std::make_shared<Connection>());
  auto& known = connection->AdapterOf(object, Kind<Contract>::kName);
  if (auto adapter = known.lock()) return Ref<Contract>(std::static_pointer_cast<Contract>(std::move(adapter)));
  auto adapter = std::make_shared<AdapterClass>(std::move(object), connection);
  known = adapter;
  return Ref<Contract>(std::move(adapter));
}

}  // namespace quintara::automation
