#include "hosts/hosts_program.h"

#include <algorithm>

#include "automation/dispatch/objects.h"
#include "base/attempt.h"
#include "base/failure.h"
#include "base/text.h"
#include "base/text16_windows.h"
#include "hosts/desk/places.h"

namespace quintara::hosts {
namespace {

using automation::ComPtr;
using automation::Outgoing;

std::string Variable(const wchar_t* name) {
  std::wstring text(GetEnvironmentVariableW(name, nullptr, 0), L'\0');
  if (text.empty()) return {};
  text.resize(GetEnvironmentVariableW(name, text.data(), static_cast<DWORD>(text.size())));
  return Narrow(text);
}

std::string Told(const std::string& option, const wchar_t* variable) {
  return option.empty() ? Variable(variable) : option;
}

// Ticks of the window until a process that nobody uses goes: two minutes.
constexpr int kPatience = 2400;

// The language of the desktop where there are texts in it.
std::string LanguageOfDesktop() {
  switch (PRIMARYLANGID(GetUserDefaultUILanguage())) {
    case LANG_FRENCH: return "FR";
    case LANG_GERMAN: return "DE";
    default: return "EN";
  }
}

std::string Quoted(const std::string& argument) {
  if (argument.find_first_of(" \t") == std::string::npos) return argument;
  // One at the end would belong to the quotation mark.
  const auto last = argument.find_last_not_of('\\');
  return "\"" + argument + std::string(argument.size() - 1 - last, '\\') + "\"";
}

}  // namespace

std::string CommandFor(const ServedName& name, const std::vector<std::string>& kept) {
  std::wstring path(32768, L'\0');
  path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
  auto command = "\"" + Narrow(path) + "\" --only " + name.programName;
  for (const auto& argument : kept) command += " " + Quoted(argument);
  return command;
}

HostsProgram::HostsProgram(const Switches& switches)
    : switches_(switches),
      calls_(gate_),
      questions_(!switches.hidden),
      desk_(gate_, {[this](const std::string& warning) { return questions_.Ask(warning); },
                    [this](const VaultDialog& dialog) { return questions_.Pick(dialog); }}),
      service_(calls_),
      registration_(Registration::OfProcess(GetCurrentProcessId())) {
  // Some systems go on offering what a process that has died could make, to all programs.
  calls_.BeforeEnd([this] { service_.Withdraw(); });
  RefuseDoubles();
  OpenVault();
  if (Serves(Host::kCad)) desk_.StartCad();
  control_ = MakeRef<Control>(
      Control::Surroundings{desk_, calls_, questions_, [this] { Publish(); }, [this] { isEnding_ = true; }});
  RegisterNames();
  Publish();
  for (const auto& name : ServedNames()) {
    if (name.isCreated && switches_.Serves(name)) Offer(name);
  }
  window_ = std::make_unique<SessionWindow>(
      SessionWindow::Events{[this] { return Lines(); }, [this] { return !calls_.IsBusy(); }, [this] { Tick(); }},
      switches_.hidden);
}

HostsProgram::~HostsProgram() {
  window_.reset();
  ErrorState failure;
  Attempt(failure, [&] { registration_.Unregister(); });
}

bool HostsProgram::Serves(Host host) const {
  return std::ranges::any_of(ServedNames(),
                             [&](const ServedName& name) { return name.host == host && switches_.Serves(name); });
}

// Nobody could tell which of two is meant.
void HostsProgram::RefuseDoubles() const {
  for (const auto& name : ServedNames()) {
    if (name.isRunning && switches_.Serves(name) && IsRunningElsewhere(name)) {
      throw Failure(failure::kInvalidCall, std::string("another process serves \"") + name.programName + "\" already");
    }
  }
}

void HostsProgram::OpenVault() {
  const bool isForEngine = Serves(Host::kCad) && !switches_.vault.empty();
  if (!Serves(Host::kVault) && !isForEngine) return;
  VaultChoice choice;
  choice.folder = Told(switches_.vault, L"QUINTARA_VAULT");
  if (choice.folder.empty()) choice.folder = VaultUpwards();
  if (choice.folder.empty()) {
    throw Failure(failure::kPathNotFound,
                  "there is no vault here; --vault FOLDER names one, and --init beside it makes one");
  }
  choice.login = Told(switches_.user, L"QUINTARA_USER");
  if (choice.login.empty()) choice.login = "admin";
  choice.password = Variable(L"QUINTARA_PASSWORD");
  choice.workFolder = Told(switches_.work, L"QUINTARA_WORK");
  choice.language = Capitals(Told(switches_.language, L"QUINTARA_LANG"));
  if (choice.language.empty()) choice.language = LanguageOfDesktop();
  choice.zorvaStartedFirst = switches_.zorvaStartedFirst;
  choice.mayMake = switches_.init;
  try {
    desk_.OpenVault(choice);
  } catch (const LogOnRefused& refused) {
    throw LogOnRefused(refused.Number(),
                       refused.Description() + "; --user names the user, QUINTARA_PASSWORD holds the password");
  }
}

void HostsProgram::RegisterNames() {
  Registration::TidyUp();
  std::vector<const ServedName*> names;
  for (const auto& name : ServedNames()) {
    if (switches_.Serves(name)) names.push_back(&name);
  }
  registered_ = registration_.Register(names, [&](const ServedName& name) { return CommandFor(name, switches_.kept); });
}

void HostsProgram::Publish() {
  for (const auto& name : ServedNames()) {
    if (name.isRunning && switches_.Serves(name)) service_.Publish(name, NewObject(name));
  }
}

void HostsProgram::Offer(const ServedName& name) {
  service_.Offer(name, [this, &name] { return NewObject(name); });
}

ComPtr<IDispatch> HostsProgram::NewObject(const ServedName& name) {
  const std::string_view called = name.programName;
  if (called == "Veldora.VdApplication") return Outgoing(desk_.RequireVault().Application());
  if (called == "Veldora.VdClientContext") return Outgoing(desk_.RequireVault().NewClientContext());
  if (called == "Veldora.VdTranslator") return Outgoing(desk_.RequireVault().NewTranslator());
  if (called == "ZORVA.Application") return Outgoing(desk_.RequireCad().Application());
  if (called == "Excel.Application") return Outgoing(desk_.NewSpreadsheet());
  return Outgoing(Ref<automation::HostsControl>(control_));
}

void HostsProgram::TellReady() const {
  if (switches_.readyFile.empty()) return;
  // Whoever waits for the file finds it whole.
  NativeContents(std::make_shared<Gate>())
      .WriteWhole(switches_.readyFile, std::to_string(GetCurrentProcessId()) + "\n");
}

void HostsProgram::Run() {
  TellReady();
  HANDLE other = nullptr;
  if (switches_.endsWith != 0) {
    other = OpenProcess(SYNCHRONIZE, FALSE, switches_.endsWith);
    if (!other) return;
  }
  const DWORD count = other ? 1 : 0;
  for (MSG message; !isEnding_;) {
    while (!isEnding_ && PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
      if (message.message == WM_QUIT) isEnding_ = true;
      if (IsDialogMessageW(window_->Handle(), &message)) continue;
      TranslateMessage(&message);
      DispatchMessageW(&message);
    }
    if (isEnding_) break;
    if (MsgWaitForMultipleObjects(count, &other, FALSE, INFINITE, QS_ALLINPUT) == WAIT_OBJECT_0 && other) break;
  }
  if (other) CloseHandle(other);
}

void HostsProgram::Tick() {
  if (calls_.IsBusy()) return;
  if (desk_.Cad()) {
    const Gate::Rest unseen(*gate_);
    desk_.Cad()->NoteSleep();
  }
  if (!switches_.startedByAutomation || switches_.only.empty()) return;
  if (!IsUnused()) return;
  // Whoever had it started may have died before.
  if (service_.Created() > 0 || ++ticksInVain_ > kPatience) isEnding_ = true;
}

// The objects that it holds itself are not for counting. A CAD host is left to its user.
bool HostsProgram::IsUnused() const {
  return !desk_.Cad() && service_.Locks() <= 0 && automation::ServedObjects() <= service_.Published();
}

SessionWindow::Lines HostsProgram::Lines() {
  SessionWindow::Lines lines;
  for (const auto* name : registered_.taken) lines.emplace_back(name->programName, name->title);
  for (const auto* name : registered_.held) lines.emplace_back(name->programName, "held by another program");
  if (desk_.Vault()) {
    lines.emplace_back("Vault", desk_.Vault()->Folder().folder);
    lines.emplace_back("User", desk_.Choice().login);
    lines.emplace_back("Work directory", desk_.Choice().workFolder);
  }
  if (desk_.Cad() && !calls_.IsBusy()) {
    const Gate::Rest unseen(*gate_);
    const auto active =
        OrElse(std::string("none"), [&] { return desk_.Cad()->Application()->ActiveDocument()->Name(); });
    lines.emplace_back("Active document", active);
  }
  lines.emplace_back("Calls served", std::to_string(calls_.Count()));
  return lines;
}

}  // namespace quintara::hosts
