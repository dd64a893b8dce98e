#include "measured_process.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace quintara::bench {
namespace {

constexpr double kKilobytes = 1024;  // in a megabyte

[[noreturn]] void Become(const std::vector<std::string>& command, const std::string& folder,
                         const std::string& output) {
  const int nothing = open("/dev/null", O_RDONLY);
  const int file = open(output.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0666);
  if (nothing < 0 || file < 0 || chdir(folder.c_str()) != 0) _exit(126);
  dup2(nothing, STDIN_FILENO);
  dup2(file, STDOUT_FILENO);
  dup2(file, STDERR_FILENO);
  std::vector<char*> arguments;
  for (const auto& argument : command) arguments.push_back(const_cast<char*>(argument.c_str()));
  arguments.push_back(nullptr);
  execv(arguments.front(), arguments.data());
  _exit(127);
}

std::string EndOf(const std::string& file) {
  constexpr std::size_t kMost = 2000;
  std::ostringstream text;
  text << std::ifstream(file).rdbuf();
  const auto all = text.str();
  return all.substr(all.size() - std::min(all.size(), kMost));
}

}  // namespace

Consumption Run(const std::vector<std::string>& command, const std::string& folder, const std::string& output) {
  const auto start = std::chrono::steady_clock::now();
  const auto process = fork();
  if (process == 0) Become(command, folder, output);
  int status = 0;
  rusage usage{};
  while (wait4(process, &status, 0, &usage) < 0) {
    if (errno != EINTR) throw std::runtime_error(command.front() + " can't be started");
  }
  const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
  if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) {
    std::string line;
    for (const auto& word : command) line += word + " ";
    throw std::runtime_error(line + "failed:\n" + EndOf(output));
  }
  return {elapsed.count(), static_cast<double>(usage.ru_maxrss) / kKilobytes};
}

}  // namespace quintara::bench
