#pragma once

#include <string>
#include <utility>
#include <vector>

#include "automation/dispatch/com.h"
#include "automation/dispatch/value.h"
#include "automation/server/class_factory.h"
#include "automation/server/interface.h"
#include "automation/server/public_classes.h"

namespace quintara::test {

using automation::ComPtr;
using automation::Value;

/// An argument that a script leaves out between others.
struct LeftOut {};

/// What a late-bound call came to.
struct Outcome {
  HRESULT result = S_OK;
  Value value;
  HRESULT code = S_OK;  ///< of the error that was told
  std::string description;
  std::string source;
  UINT faulty = 99;  ///< the place of the refused argument, counted as the caller passes them

  Variant Given() const { return automation::ToVariant(value.Raw(), nullptr); }
};

/// Arguments in the order in which a script writes them; those in `names` are the last ones.
struct CallArguments {
  std::vector<Value> values;
  std::vector<std::wstring> names;
};

// How a script passes values: constants as they are, variables by reference.
Value Passed(const char* text);
Value Passed(const std::string& text);
Value Passed(bool value);
Value Passed(int value);
Value Passed(double value);
Value Passed(LeftOut leftOut);
Value Passed(const ComPtr<IDispatch>& object);
Value Passed(std::nullptr_t nothing);
Value Passed(Value& variable);
Value Passed(Value&& constant);
/// A reference to a variable that has a type.
Value Passed(BSTR* variable);
Value Passed(short* variable);
Value Passed(LONG* variable);
Value Passed(double* variable);
Value Passed(IDispatch** variable);

/// An object as scripts use it.
class Client {
 public:
  explicit Client(ComPtr<IDispatch> object) : object_(std::move(object)) {}
  /// A new object of a public class of the server that is linked to this program.
  explicit Client(const std::string& className);
  explicit Client(const char* className) : Client(std::string(className)) {}

  template <class... Arguments>
  Outcome Call(const std::string& method, Arguments&&... arguments) const {
    CallArguments all;
    (all.values.push_back(Passed(std::forward<Arguments>(arguments))), ...);
    return CallWith(method, std::move(all));
  }
  Outcome CallWith(const std::string& method, CallArguments arguments, WORD flags = DISPATCH_METHOD) const;

  const ComPtr<IDispatch>& Object() const noexcept { return object_; }
  template <class Interface>
  ComPtr<Interface> As() const {
    ComPtr<Interface> other;
    object_.As(&other);
    return other;
  }

 private:
  ComPtr<IDispatch> object_;
};

/// Arrays as scripts make them.
Value ArrayOf(std::vector<Value> elements, LONG first = 0);
template <class... Elements>
Value Array(Elements&&... elements) {
  std::vector<Value> all;
  (all.push_back(Passed(std::forward<Elements>(elements))), ...);
  return ArrayOf(std::move(all));
}

/// The result of an error of automation scripts.
constexpr HRESULT RunTimeError(int number) {
  return static_cast<HRESULT>(0x800A0000U + static_cast<unsigned>(number));
}

}  // namespace quintara::test
