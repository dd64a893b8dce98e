#include <clocale>
#include <cstdlib>
#include <iostream>
#include <string>
#include <vector>

#include "quintara/interruption.h"
#include "quintara/leaks_of_others.h"
#include "quintara/run_quintara.h"

namespace {

std::string EnvironmentValue(const std::string& name) {
  const char* value = std::getenv(name.c_str());
  return value == nullptr ? std::string() : value;
}

}  // namespace

int main(int argumentCount, char** arguments) {
  // Characters only: numbers in files have a point in every locale.
  std::setlocale(LC_CTYPE, "");
  quintara::CatchInterruptions();
  const std::vector<std::string> own(arguments + (argumentCount > 0 ? 1 : 0), arguments + argumentCount);
  quintara::ProgramSurroundings surroundings{std::cin, std::cout, std::cerr, quintara::TerminalOfThisProcess()};
  surroundings.environment = EnvironmentValue;
  return quintara::RunQuintara(own, surroundings);
}
