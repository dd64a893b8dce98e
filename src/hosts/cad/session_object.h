#pragma once

#include <concepts>
#include <memory>
#include <string>
#include <utility>

#include "access/contracts/zorva.h"
#include "hosts/gate/gate.h"
#include "hosts/gate/operation_name.h"

namespace quintara::cad {

class Session;

/// How long the objects of a document, or of the session itself, stand for anything.
struct Life {
  std::shared_ptr<Gate> gate;
  std::weak_ptr<Session> session;
  std::weak_ptr<AnyObject> document;  ///< empty for the objects of the session
  std::string name;                   ///< of the document, for failures once it is closed
  bool open = true;

  bool IsOpen() const noexcept { return open && !session.expired(); }
  bool IsOf(const Session& other) const { return session.lock().get() == &other; }
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
/// object still stands for something. A conversion only passes: an object stays of its kind. The
/// host itself converts by casts, which don't.
template <OperationLiteral Kind, class Contract>
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

  Ref<zorva::Application> AsApplication() override { return Converted<"AsApplication", zorva::Application>(); }
  Ref<zorva::Document> AsDocument() override { return Converted<"AsDocument", zorva::Document>(); }
  Ref<zorva::ProductDocument> AsProductDocument() override {
    return Converted<"AsProductDocument", zorva::ProductDocument>();
  }
  Ref<zorva::Product> AsProduct() override { return Converted<"AsProduct", zorva::Product>(); }
  Ref<zorva::Products> AsProducts() override { return Converted<"AsProducts", zorva::Products>(); }

 protected:
  virtual const Life& TheLife() const = 0;
  /// This object, with the ownership of what it belongs to.
  virtual std::shared_ptr<AnyObject> Self() { return nullptr; }
  virtual Ref<AnyObject> Owner() = 0;
  virtual void RequireAlive() const { TheLife().RequireOpen(); }

  template <OperationLiteral Operation>
  void Pass() const {
    TheLife().gate->Pass(kGateName<Kind, Operation>);
    RequireAlive();
  }
  template <OperationLiteral Operation, std::invocable Detail>
  void Pass(Detail&& detail) const {
    TheLife().gate->Pass(kGateName<Kind, Operation>, std::forward<Detail>(detail));
    RequireAlive();
  }

 private:
  template <OperationLiteral Conversion, class Wanted>
  Ref<Wanted> Converted() {
    TheLife().gate->Pass(kGateName<Kind, Conversion>);
    return Ref<Wanted>(std::dynamic_pointer_cast<Wanted>(Self()));
  }
};

}  // namespace quintara::cad
