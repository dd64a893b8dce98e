#include "automation/dispatch/com.h"
// Needs what that brings.
#include <shellapi.h>

#include <cstdio>
#include <exception>
#include <string>
#include <vector>

#include "base/text16_windows.h"
#include "hosts/hosts_program.h"

namespace quintara::hosts {
namespace {

enum class Exit { kDone = 0, kFailed = 1, kWrongSwitches = 2 };

// The program has no console of its own, but may have been given streams.
bool WriteTo(DWORD stream, const std::string& text) {
  const auto handle = GetStdHandle(stream);
  DWORD written = 0;
  return handle && handle != INVALID_HANDLE_VALUE &&
         WriteFile(handle, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
}

void ShowBox(const std::string& text, UINT icon) {
  MessageBoxW(nullptr, Wide(text).c_str(), L"Quintara hosts", MB_OK | MB_SETFOREGROUND | icon);
}

void Log(const std::string& file, const std::string& line) {
  if (file.empty()) return;
  if (auto* const log = _wfopen(Wide(file).c_str(), L"ab")) {
    std::fputs((line + "\r\n").c_str(), log);
    std::fclose(log);
  }
}

struct Manner {
  bool isHidden = false;
  std::string log;
};

void Note(const Manner& manner, const std::string& text) {
  Log(manner.log, text);
  WriteTo(STD_ERROR_HANDLE, "QuintaraHosts: " + text + "\n");
}

Exit Complain(const Manner& manner, const std::string& text, Exit code) {
  Note(manner, text);
  if (!manner.isHidden) ShowBox(text, MB_ICONERROR);
  return code;
}

void Tell(const Manner& manner, const std::string& text) {
  if (!WriteTo(STD_OUTPUT_HANDLE, text) && !manner.isHidden) ShowBox(text, MB_ICONINFORMATION);
}

std::vector<std::string> Arguments() {
  int count = 0;
  auto** const texts = CommandLineToArgvW(GetCommandLineW(), &count);
  std::vector<std::string> arguments;
  for (int i = 1; i < count; ++i) arguments.push_back(Narrow(texts[i]));
  LocalFree(texts);
  return arguments;
}

std::string TextOf(const Registered& registered) {
  std::string text;
  for (const auto* name : registered.taken) text += std::string("registered  ") + name->programName + "\n";
  for (const auto* name : registered.held)
    text += std::string("left        ") + name->programName + ", which another program holds\n";
  return text;
}

void RegisterForGood(const Switches& switches, const Manner& manner) {
  const auto registration = Registration::ForGood();
  registration.Unregister();
  std::vector<const ServedName*> names;
  for (const auto& name : ServedNames()) {
    if (name.host != Host::kControl) names.push_back(&name);
  }
  const auto registered =
      registration.Register(names, [&](const ServedName& name) { return CommandFor(name, switches.kept); });
  Tell(manner, TextOf(registered));
}

Exit Run(const Switches& switches, const Manner& manner) {
  switch (switches.task) {
    case Switches::Task::kHelp: Tell(manner, HelpText()); return Exit::kDone;
    case Switches::Task::kRegister: RegisterForGood(switches, manner); return Exit::kDone;
    case Switches::Task::kUnregister: Registration::ForGood().Unregister(); return Exit::kDone;
    case Switches::Task::kServe: break;
  }
  CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  {
    HostsProgram program(switches);
    for (const auto* name : program.Names().held) {
      Note(manner, std::string("\"") + name->programName + "\" stays with the program that holds it");
    }
    program.Run();
  }
  CoUninitialize();
  return Exit::kDone;
}

Exit RunArguments(const std::vector<std::string>& arguments) {
  Manner manner;
  for (const auto& argument : arguments) manner.isHidden = manner.isHidden || argument == "--hidden";
  try {
    const auto switches = ParseSwitches(arguments);
    manner = {switches.hidden, switches.logFile};
    return Run(switches, manner);
  } catch (const WrongSwitch& wrong) {
    return Complain(manner, wrong.what(), Exit::kWrongSwitches);
  } catch (const std::exception& error) {
    return Complain(manner, error.what(), Exit::kFailed);
  }
}

}  // namespace
}  // namespace quintara::hosts

int WINAPI wWinMain(HINSTANCE /*instance*/, HINSTANCE /*before*/, PWSTR /*line*/, int /*show*/) {
  using namespace quintara::hosts;
  return static_cast<int>(RunArguments(Arguments()));
}
