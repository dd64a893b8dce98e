#pragma once

#include <array>
#include <concepts>
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "access/contracts/zorva.h"
#include "hosts/gate/gate.h"

namespace quintara::cad {

class Session;

/// A text as an argument of a template.
template <std::size_t Size>
struct Literal {
  char text[Size];
  consteval Literal(const char (&characters)[Size]) {
    for (std::size_t i = 0; i < Size; ++i) text[i] = characters[i];
  }
};

template <Literal Kind, Literal Operation>
inline constexpr auto kOperationText = [] {
  constexpr std::size_t kKind = sizeof Kind.text - 1;
  constexpr std::size_t kOperation = sizeof Operation.text - 1;
  std::array<char, kKind + 1 + kOperation> text{};
  for (std::size_t i = 0; i < kKind; ++i) text[i] = Kind.text[i];
  text[kKind] = '.';
  for (std::size_t i = 0; i < kOperation; ++i) text[kKind + 1 + i] = Operation.text[i];
  return text;
}();

/// "Product.PartNumber" of the literals "Product" and "PartNumber".
template <Literal Kind, Literal Operation>
inline constexpr std::string_view kOperationName{kOperationText<Kind, Operation>.data(),
                                                 kOperationText<Kind, Operation>.size()};

/// How long the objects of a document, or of the session itself, stand for anything.
struct Life {
  std::shared_ptr<Gate> gate;
  std::weak_ptr<Session> session;
  std::weak_ptr<AnyObject> document;  ///< empty for the objects of the session
  std::string name;                   ///< of the document, for failures once it is closed
  bool open = true;

  bool IsOpen() const noexcept { return open && !session.expired(); }
  void RequireOpen() const {
    if (!IsOpen()) [[unlikely]]
      ThrowClosed();
  }
  /// The session; fails when it has ended.
  std::shared_ptr<Session> TheSession() const;
  [[noreturn]] void ThrowClosed() const;
};

/// The session's application object; fails when the session has ended.
Ref<zorva::Application> ApplicationOf(const Life& life);

/// The base of the host's objects: each operation first passes the gate, then requires that the
/// object still stands for something.
template <Literal Kind, class Contract>
class SessionObject : public Contract {
 public:
  std::string Name() override {
    Pass<"Name">();
    return Kind.text;
  }
  Ref<AnyObject> Parent() override {
    Pass<"Parent">();
    return Owner();
  }
  Ref<zorva::Application> Application() override {
    Pass<"Application">();
    return ApplicationOf(TheLife());
  }

 protected:
  virtual const Life& TheLife() const = 0;
  virtual Ref<AnyObject> Owner() = 0;
  virtual void RequireAlive() const { TheLife().RequireOpen(); }

  template <Literal Operation>
  void Pass() const {
    TheLife().gate->Pass(kOperationName<Kind, Operation>);
    RequireAlive();
  }
  template <Literal Operation, std::invocable Detail>
  void Pass(Detail&& detail) const {
    TheLife().gate->Pass(kOperationName<Kind, Operation>, std::forward<Detail>(detail));
    RequireAlive();
  }
};

}  // namespace quintara::cad
