#include "automation/driver/driver.h"

// Behind the system's header, on which it depends.
#include <shellapi.h>

#include <fstream>
#include <iostream>
#include <sstream>

#include "base/text.h"
#include "base/text16_windows.h"

namespace quintara::driver {
namespace {

constexpr int kFailed = 1;
constexpr int kUnusable = 2;

std::vector<std::string> Arguments() {
  int count = 0;
  const auto words = CommandLineToArgvW(GetCommandLineW(), &count);
  std::vector<std::string> arguments;
  for (int i = 1; i < count; ++i) arguments.push_back(Narrow(words[i]));
  LocalFree(words);
  return arguments;
}

std::string Content(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  std::ostringstream content;
  content << stream.rdbuf();
  if (!stream) throw Failed("the file can't be read");
  return content.str();
}

int Run(const std::string& script, const Variables& variables) {
  const auto folder = variables.find("PICTURES");
  std::vector<Step> steps;
  try {
    steps = ReadSteps(Content(ToPath(script)), variables);
  } catch (const Failed& failed) {
    std::cerr << script << ": " << failed.what() << '\n';
    return kUnusable;
  }
  Driver driver(std::cout, folder == variables.end() ? std::filesystem::path(".") : ToPath(folder->second));
  for (const auto& step : steps) {
    try {
      driver.Do(step);
    } catch (const Failed& failed) {
      std::cout << "FAILED in " << script << ", line " << step.line << ", " << step.words[0] << ": " << failed.what()
                << '\n'
                << driver.Situation() << std::flush;
      if (folder != variables.end()) driver.TakePicture("failed");
      return kFailed;
    }
  }
  std::cout << "all " << steps.size() << " steps done\n";
  return 0;
}

}  // namespace
}  // namespace quintara::driver

// quintara_driver SCRIPT [NAME=VALUE...]: carries out the steps of a script; ${NAME} in it stands for VALUE. Pictures
// of the screen go to the folder PICTURES, also one when a step fails. Ends with 0, with 1 after a step that failed,
// with 2 where the script can't be read.
int main() {
  const auto arguments = quintara::driver::Arguments();
  if (arguments.empty()) {
    std::cerr << "quintara_driver SCRIPT [NAME=VALUE...]\n\n" << quintara::driver::Driver::Usage();
    return quintara::driver::kUnusable;
  }
  quintara::driver::Variables variables;
  for (std::size_t i = 1; i < arguments.size(); ++i) {
    const auto sign = arguments[i].find('=');
    if (sign == std::string::npos) {
      std::cerr << arguments[i] << " gives no value to a name\n";
      return quintara::driver::kUnusable;
    }
    variables[arguments[i].substr(0, sign)] = arguments[i].substr(sign + 1);
  }
  return quintara::driver::Run(arguments[0], variables);
}
