#include <clocale>
#include <iostream>
#include <string>
#include <vector>

#include "quintara/interruption.h"
#include "quintara/run_quintara.h"

int main(int argumentCount, char** arguments) {
  // Characters only: numbers in files have a point in every locale.
  std::setlocale(LC_CTYPE, "");
  quintara::CatchInterruptions();
  const std::vector<std::string> own(arguments + (argumentCount > 0 ? 1 : 0), arguments + argumentCount);
  return quintara::RunQuintara(own, {std::cin, std::cout, std::cerr, quintara::TerminalOfThisProcess()});
}
