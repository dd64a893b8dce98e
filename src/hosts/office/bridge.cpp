#include "hosts/office/bridge.h"

#include <signal.h>
#include <com/sun/star/bridge/UnoUrlResolver.hpp>
#include <com/sun/star/connection/NoConnectException.hpp>
#include <com/sun/star/frame/Desktop.hpp>
#include <cppuhelper/bootstrap.hxx>
#include <rtl/bootstrap.hxx>
#include <thread>

#include "base/failure.h"
#include "hosts/office/connection.h"
#include "hosts/office/passing_file.h"
#include "hosts/office/workbook_bytes.h"

namespace quintara::office {
namespace {

namespace star = com::sun::star;

constexpr int kStartAgain = 81;  // with which LibreOffice ends once it has made a new profile
constexpr int kStarts = 3;
constexpr std::chrono::milliseconds kRetry{20};

// The library's own objects here, one set for the whole process. It has threads, so it stays until the end.
const Reference<uno::XComponentContext>& LocalContext() {
  static const auto* context = [] {
    rtl::Bootstrap::set("URE_MORE_TYPES", "file://" QUINTARA_OFFICE_PROGRAM "/types/offapi.rdb");
    return new Reference<uno::XComponentContext>(cppu::defaultBootstrap_InitialComponentContext());
  }();
  return *context;
}

// The library writes to the pipe, mostly from threads of its own, which take over the signal mask of the thread that
// makes them. With an office that is gone, the signal of a broken pipe would end the program.
class PipeSignalBlocked {
 public:
  PipeSignalBlocked() {
    sigemptyset(&pipe_);
    sigaddset(&pipe_, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &pipe_, &before_);
  }
  ~PipeSignalBlocked() {
    const timespec atOnce = {0, 0};
    while (sigismember(&before_, SIGPIPE) == 0 && sigtimedwait(&pipe_, nullptr, &atOnce) == SIGPIPE) {
    }
    pthread_sigmask(SIG_SETMASK, &before_, nullptr);
  }
  PipeSignalBlocked(const PipeSignalBlocked&) = delete;
  PipeSignalBlocked& operator=(const PipeSignalBlocked&) = delete;

 private:
  sigset_t pipe_{};
  sigset_t before_{};
};

[[noreturn]] void ThrowNotStarted(const std::string& why) {
  throw Failure(failure::kCannotCreateObject, "The spreadsheet application can't be started: " + why);
}

}  // namespace

rtl::OUString ToUno(std::string_view utf8) {
  return {utf8.data(), static_cast<sal_Int32>(utf8.size()), RTL_TEXTENCODING_UTF8};
}

std::string FromUno(const rtl::OUString& text) {
  const auto bytes = rtl::OUStringToOString(text, RTL_TEXTENCODING_UTF8);
  return {bytes.getStr(), static_cast<std::size_t>(bytes.getLength())};
}

Connection::Connection(const std::string& program, const Limits& theLimits) : limits(theLimits) {
  try {
    Start(program);
  } catch (const uno::Exception& error) {
    ThrowNotStarted(FromUno(error.Message));
  }
}

void Connection::Start(const std::string& program) {
  const PipeSignalBlocked blocked;
  const auto pipe = folder.Name();
  const auto resolver = star::bridge::UnoUrlResolver::create(LocalContext());
  const auto url = ToUno("uno:pipe,name=" + pipe + ";urp;StarOffice.ComponentContext");
  for (int start = 1;; ++start) {
    process.emplace(program, folder.Path(), pipe);
    watchdog.emplace(*process);
    watchdog->Expect(limits.start);
    while (!process->Ending()) {
      try {
        const Reference<uno::XComponentContext> remote(resolver->resolve(url), uno::UNO_QUERY_THROW);
        desktop = star::frame::Desktop::create(remote);
        watchdog->Answered();
        process->NotePipes();
        return;
      } catch (const star::connection::NoConnectException&) {
        std::this_thread::sleep_for(kRetry);
      }
    }
    const int ending = *process->Ending();
    if (watchdog->HasBitten()) ThrowNotStarted("it doesn't answer");
    if (ending != kStartAgain || start == kStarts) ThrowNotStarted("it ended with code " + std::to_string(ending));
    watchdog.reset();
  }
}

std::string Connection::NewFile(const std::string& extension) {
  return folder.Path() + "/passing" + std::to_string(++passing_) + extension;
}

void Connection::RequireAlive() const {
  if (!watchdog->IsAlive()) ThrowEnded();
}

void Connection::ThrowEnded() const {
  throw Failure(failure::kServerGone, watchdog->HasBitten() ? "The spreadsheet application didn't answer and was ended"
                                                            : "The spreadsheet application has ended");
}

void Connection::ThrowRefused(const std::string& what, const rtl::OUString& why) {
  if (process->Ending()) ThrowEnded();
  throw Failure(failure::kRefused, what + ": " + FromUno(why));
}

void Connection::End() noexcept {
  if (!desktop.is()) return;
  watchdog->Expect(limits.end);
  try {
    desktop->terminate();
  } catch (const uno::Exception&) {
    // The connection may be gone before the answer has come, or have been for long.
  }
  desktop.clear();
  if (!process->EndsWithin(limits.end)) process->Kill();
  watchdog->NoteEnd();
}

Bridge::Bridge(const std::string& program, const Limits& limits)
    : connection_(std::make_shared<Connection>(program, limits)) {}

Bridge::~Bridge() {
  End();
}

std::unique_ptr<workbook::Document> Bridge::Add(int sheets) {
  return AddDocument(connection_, sheets);
}

// LibreOffice gets a copy, so that it leaves no lock beside the file, holds none, and meets no odd path.
std::unique_ptr<workbook::Document> Bridge::Load(const std::string& bytes, const std::string& name) {
  RequireWorkbook(bytes, name);
  const PassingFile copy(connection_->NewFile(bytes.starts_with("PK") ? ".xlsx" : ".xls"));
  copy.Write(bytes);
  return LoadDocument(connection_, copy.Path(), name);
}

const std::string& Bridge::Folder() const {
  return connection_->folder.Path();
}

bool Bridge::IsAlive() const noexcept {
  return connection_->watchdog->IsAlive();
}

void Bridge::RequireAlive() const {
  connection_->RequireAlive();
}

void Bridge::End() noexcept {
  connection_->End();
}

int Bridge::Process() const noexcept {
  return connection_->process->Id();
}

int Bridge::Calls() const noexcept {
  return connection_->calls;
}

}  // namespace quintara::office
