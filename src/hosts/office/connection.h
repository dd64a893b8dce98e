#pragma once

#include <com/sun/star/frame/XDesktop2.hpp>
#include <com/sun/star/lang/DisposedException.hpp>
#include <com/sun/star/uno/Exception.hpp>
#include <com/sun/star/uno/Reference.hxx>
#include <memory>
#include <optional>
#include <rtl/ustring.hxx>
#include <string>
#include <string_view>
#include <utility>

#include "hosts/office/bridge.h"
#include "hosts/office/office_process.h"
#include "hosts/office/watchdog.h"

namespace quintara::office {

namespace uno = com::sun::star::uno;
using uno::Reference;

rtl::OUString ToUno(std::string_view utf8);
std::string FromUno(const rtl::OUString& text);

/// One connection to one process.
struct Connection {
  Connection(const std::string& program, const Limits& limits);

  /// Runs `body`, which talks to LibreOffice, within the time limit; the library's exceptions become failures.
  template <class Body>
  auto Talk(const std::string& what, Body&& body);
  /// One call of it. `Query` is one too, where the object stands on the other side.
  template <class Body>
  auto Call(Body&& body) {
    ++calls;
    return std::forward<Body>(body)();
  }
  template <class Interface, class Object>
  Reference<Interface> Query(const Object& object) {
    ++calls;
    return Reference<Interface>(object, uno::UNO_QUERY_THROW);
  }

  /// A path for a file that passes between LibreOffice and us.
  std::string NewFile(const std::string& extension);

  void RequireAlive() const;
  void End() noexcept;

  PrivateFolder folder;
  Limits limits;
  std::optional<OfficeProcess> process;
  std::optional<Watchdog> watchdog;
  Reference<com::sun::star::frame::XDesktop2> desktop;
  int calls = 0;

 private:
  void Start(const std::string& program);
  [[noreturn]] void ThrowEnded() const;
  [[noreturn]] void ThrowRefused(const std::string& what, const rtl::OUString& why);

  int passing_ = 0;
};

template <class Body>
auto Connection::Talk(const std::string& what, Body&& body) {
  struct Expected {
    Watchdog& watchdog;
    ~Expected() { watchdog.Answered(); }
  };
  RequireAlive();
  watchdog->Expect(limits.answer);
  const Expected expected{*watchdog};
  try {
    return std::forward<Body>(body)();
  } catch (const com::sun::star::lang::DisposedException&) {
    ThrowEnded();
  } catch (const uno::Exception& error) {
    ThrowRefused(what, error.Message);
  }
}

std::unique_ptr<workbook::Document> AddDocument(const std::shared_ptr<Connection>& connection, int sheets);
std::unique_ptr<workbook::Document> LoadDocument(const std::shared_ptr<Connection>& connection, const std::string& path,
                                                 const std::string& name);

}  // namespace quintara::office
