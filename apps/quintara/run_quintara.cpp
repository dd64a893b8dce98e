#include "quintara/run_quintara.h"

#include <exception>
#include <ostream>

#include "quintara/command_line.h"
#include "quintara/interruption.h"
#include "quintara/wrong_use.h"
#include "views/console/screen_text.h"

namespace quintara {
namespace {

int Run(const Command& command, const ProgramSurroundings& surroundings) {
  CommandContext context(surroundings, command.common);
  try {
    command.verb(context);
  } catch (const WrongUse&) {
    // A question that was interrupted has no answer, which isn't what went wrong.
    if (!WasInterrupted()) throw;
    context.Complain("interrupted");
  } catch (const std::exception& error) {
    // The terminal interrupts the geometry's workers too, and what they die of is not the news.
    context.Complain(WasInterrupted() ? "interrupted" : error.what());
  }
  return context.AllWentWell() ? kDone : kFailed;
}

int Report(const char* text, int exitCode, std::ostream& errors) {
  errors << "quintara: " << Lines(text) << '\n';
  return exitCode;
}

}  // namespace

int RunQuintara(const std::vector<std::string>& arguments, const ProgramSurroundings& surroundings) {
  try {
    const auto parsed = ParseCommandLine(arguments);
    if (!parsed.verb) {
      surroundings.out << parsed.text;
      return kDone;
    }
    const int exitCode = Run(parsed, surroundings);
    surroundings.out.flush();
    return surroundings.out ? exitCode : Report("the result can't be written", kFailed, surroundings.errors);
  } catch (const WrongUse& wrongUse) {
    return Report(wrongUse.what(), kWrongUse, surroundings.errors);
  } catch (const std::exception& error) {
    return Report(error.what(), kFailed, surroundings.errors);
  }
}

}  // namespace quintara
