#include "geometry/worker.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <exception>
#include <optional>

#include "base/attempt.h"
#include "base/failure.h"

namespace quintara {
namespace {

// What crosses the pipe: a kind, a number (a fraction, or that of a failure) and a text.
struct Message {
  enum Kind : std::uint8_t { kProgress, kResult, kFailure };
  Kind kind;
  double number;
  std::string text;
};

struct Head {
  std::uint64_t length;
  double number;
  Message::Kind kind;
};

void WriteAll(int file, const void* bytes, std::size_t count) {
  const auto* at = static_cast<const char*>(bytes);
  while (count > 0) {
    const auto written = write(file, at, count);
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) _exit(EXIT_FAILURE);
    at += written;
    count -= static_cast<std::size_t>(written);
  }
}

void Send(int file, const Message& message) {
  const Head head = {message.text.size(), message.number, message.kind};
  WriteAll(file, &head, sizeof head);
  WriteAll(file, message.text.data(), message.text.size());
}

bool ReadAll(int file, void* bytes, std::size_t count) {
  auto* at = static_cast<char*>(bytes);
  while (count > 0) {
    const auto got = read(file, at, count);
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0) return false;
    at += got;
    count -= static_cast<std::size_t>(got);
  }
  return true;
}

std::optional<Message> Receive(int file) {
  Head head{};
  if (!ReadAll(file, &head, sizeof head)) return std::nullopt;
  Message message = {head.kind, head.number, std::string(head.length, '\0')};
  if (!ReadAll(file, message.text.data(), message.text.size())) return std::nullopt;
  return message;
}

void DieWith(pid_t parent) {
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  if (getppid() != parent) _exit(EXIT_FAILURE);
}

// A crash is an ordinary end here: it leaves no core file and no report, and no handler of the
// program takes part in it.
void PrepareToCrash(unsigned seconds) {
  const rlimit none = {0, 0};
  setrlimit(RLIMIT_CORE, &none);
  const rlimit busy = {seconds, seconds + 5};
  setrlimit(RLIMIT_CPU, &busy);
  for (const int number : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT, SIGXCPU, SIGINT, SIGTERM}) signal(number, SIG_DFL);
}

// Libraries print when they please; a full pipe or a mixed-up terminal is the least of it.
void Silence() {
  const int nowhere = open("/dev/null", O_RDWR | O_CLOEXEC);
  for (const int file : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) dup2(nowhere, file);
}

[[noreturn]] void Work(const WorkerTask& task, const std::function<std::string(const Progress&)>& body, int pipe) {
  PrepareToCrash(task.seconds);
  Silence();
  const auto tell = [pipe](double fraction, const std::string& what) {
    Send(pipe, {Message::kProgress, fraction, what});
  };
  try {
    Send(pipe, {Message::kResult, 0, body(tell)});
  } catch (const std::exception& error) {
    const auto state = StateOf(error);
    const bool ours = dynamic_cast<const Failure*>(&error) != nullptr;
    const auto text = ours ? state.description : task.file + ": " + task.trouble + " (" + state.description + ")";
    Send(pipe, {Message::kFailure, static_cast<double>(state.number), text});
  }
  _exit(EXIT_SUCCESS);
}

std::string EndOf(const WorkerTask& task, int status) {
  const auto start = task.file + ": " + task.trouble + " (the " + task.worker;
  if (!WIFSIGNALED(status)) return start + " ended with code " + std::to_string(WEXITSTATUS(status)) + ")";
  if (WTERMSIG(status) == SIGXCPU) return start + " came to no end)";
  return start + " ended with signal " + std::to_string(WTERMSIG(status)) + ")";
}

// The worker as its parent sees it. Whatever happens to the parent's call, the worker is gone at its end.
class Child {
 public:
  Child(pid_t process, int pipe) : process_(process), pipe_(pipe) {}
  Child(const Child&) = delete;
  Child& operator=(const Child&) = delete;
  ~Child() {
    if (process_ > 0) {
      kill(process_, SIGKILL);
      Wait();
    }
    close(pipe_);
  }

  std::optional<Message> Next() { return Receive(pipe_); }

  int Wait() {
    int status = 0;
    while (waitpid(process_, &status, 0) < 0 && errno == EINTR) {
    }
    process_ = 0;
    return status;
  }

 private:
  pid_t process_;
  int pipe_;
};

std::string Follow(const WorkerTask& task, Child& child, const Progress& progress) {
  while (auto message = child.Next()) {
    switch (message->kind) {
      case Message::kProgress:
        if (progress) progress(message->number, message->text);
        break;
      case Message::kResult: return std::move(message->text);
      case Message::kFailure: throw Failure(static_cast<int>(message->number), message->text);
    }
  }
  throw Failure(failure::kInvalidFormat, EndOf(task, child.Wait()));
}

}  // namespace

std::string RunInWorker(const WorkerTask& task, const std::function<std::string(const Progress&)>& body,
                        const Progress& progress) {
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) throw Failure(failure::kInternal, std::strerror(errno));
  const auto parent = getpid();
  const auto process = fork();
  if (process == 0) {
    DieWith(parent);
    Work(task, body, ends[1]);
  }
  const int error = errno;
  close(ends[1]);
  Child child(process, ends[0]);
  if (process < 0)
    throw Failure(failure::kInternal, task.file + ": no process could be started (" + std::strerror(error) + ")");
  return Follow(task, child, progress);
}

}  // namespace quintara
