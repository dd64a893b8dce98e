#include "hosts/switches.h"

#include <charconv>
#include <filesystem>
#include <functional>
#include <map>
#include <system_error>

#include "base/text.h"

namespace quintara::hosts {
namespace {

Host HostNamed(const std::string& name) {
  static const std::map<std::string, Host> hosts{{"VAULT", Host::kVault}, {"CAD", Host::kCad}, {"EXCEL", Host::kExcel}};
  const auto found = hosts.find(Capitals(name));
  if (found == hosts.end()) throw WrongSwitch("'" + name + "' is no host; there are vault, cad and excel");
  return found->second;
}

std::set<Host> HostsNamed(const std::string& list) {
  std::set<Host> hosts;
  for (const auto& name : Split(list, ',')) hosts.insert(HostNamed(name));
  return hosts;
}

std::string LanguageNamed(const std::string& language) {
  const auto code = Capitals(language);
  const auto isLetter = [](char c) { return c >= 'A' && c <= 'Z'; };
  if (code.size() != 2 || !isLetter(code[0]) || !isLetter(code[1])) {
    throw WrongSwitch("'" + language + "' is no language; one is named by two letters, such as EN");
  }
  return code;
}

unsigned long ProcessNamed(const std::string& text) {
  unsigned long id = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), id);
  if (error != std::errc() || end != text.data() + text.size() || id == 0) {
    throw WrongSwitch("'" + text + "' is no id of a process");
  }
  return id;
}

// Automation starts a process in a folder of its own choice.
std::string Absolute(const std::string& path) {
  std::error_code error;
  const auto absolute = std::filesystem::absolute(ToPath(path), error);
  return error ? path : FromPath(absolute);
}

/// One switch: what takes its value, or what it sets. Those that are kept go on to processes that automation starts.
struct Known {
  std::function<void(Switches&, const std::string&)> take = {};
  std::function<void(Switches&)> set = {};
  bool isKept = false;
  bool isPath = false;
};

const std::map<std::string, Known>& AllKnown() {
  using Task = Switches::Task;
  static const std::map<std::string, Known> known{
      {"VAULT", {[](Switches& s, const std::string& v) { s.vault = v; }, {}, true, true}},
      {"USER", {[](Switches& s, const std::string& v) { s.user = v; }, {}, true}},
      {"LANG", {[](Switches& s, const std::string& v) { s.language = LanguageNamed(v); }, {}, true}},
      {"WORK", {[](Switches& s, const std::string& v) { s.work = v; }, {}, true, true}},
      {"SERVE", {[](Switches& s, const std::string& v) { s.hosts.merge(HostsNamed(v)); }}},
      {"VAULT-ONLY", {{}, [](Switches& s) { s.hosts.insert(Host::kVault); }}},
      {"CAD-ONLY", {{}, [](Switches& s) { s.hosts.insert(Host::kCad); }}},
      {"EXCEL-ONLY", {{}, [](Switches& s) { s.hosts.insert(Host::kExcel); }}},
      {"CONTROL", {{}, [](Switches& s) { s.hosts.insert(Host::kControl); }}},
      {"ONLY", {[](Switches& s, const std::string& v) { s.only = v; }}},
      {"INIT", {{}, [](Switches& s) { s.init = true; }}},
      {"ZORVA-STARTED-FIRST", {{}, [](Switches& s) { s.zorvaStartedFirst = true; }, true}},
      {"HIDDEN", {{}, [](Switches& s) { s.hidden = true; }, true}},
      {"READY", {[](Switches& s, const std::string& v) { s.readyFile = v; }}},
      {"LOG", {[](Switches& s, const std::string& v) { s.logFile = v; }, {}, true, true}},
      {"ENDS-WITH", {[](Switches& s, const std::string& v) { s.endsWith = ProcessNamed(v); }}},
      {"EMBEDDING", {{}, [](Switches& s) { s.startedByAutomation = true; }}},
      {"AUTOMATION", {{}, [](Switches& s) { s.startedByAutomation = true; }}},
      {"REGSERVER", {{}, [](Switches& s) { s.task = Task::kRegister; }}},
      {"UNREGSERVER", {{}, [](Switches& s) { s.task = Task::kUnregister; }}},
      {"HELP", {{}, [](Switches& s) { s.task = Task::kHelp; }}},
      {"?", {{}, [](Switches& s) { s.task = Task::kHelp; }}}};
  return known;
}

// "--vault", "-vault" and "/vault" are one.
std::string NameOf(const std::string& argument) {
  const auto start = argument.find_first_not_of('-');
  if (argument.starts_with('/')) return Capitals(argument.substr(1));
  if (start == 0 || start > 2) throw WrongSwitch("'" + argument + "' is no switch");
  return Capitals(argument.substr(start));
}

void RequireSense(const Switches& switches) {
  if (!switches.only.empty()) {
    const auto* const name = FindServedName(switches.only);
    if (!name || !name->isStarted) throw WrongSwitch("'" + switches.only + "' is no name that can be served alone");
  }
  const bool opensVault = switches.hosts.contains(Host::kVault) || !switches.vault.empty();
  if (switches.init && !opensVault) throw WrongSwitch("--init is of no use without a vault");
  if (switches.init && switches.vault.empty()) throw WrongSwitch("--init needs --vault, which names the folder");
}

}  // namespace

bool Switches::Serves(const ServedName& name) const {
  return only.empty() ? hosts.contains(name.host) : &name == FindServedName(only);
}

Switches ParseSwitches(const std::vector<std::string>& arguments) {
  Switches switches;
  const auto all = switches.hosts;
  switches.hosts.clear();
  for (auto argument = arguments.begin(); argument != arguments.end(); ++argument) {
    const auto equals = argument->starts_with('-') ? argument->find('=') : argument->npos;
    const auto spelled = argument->substr(0, equals);
    const auto known = AllKnown().find(NameOf(spelled));
    if (known == AllKnown().end()) throw WrongSwitch("'" + spelled + "' is no switch; --help tells them");
    const auto& [take, set, isKept, isPath] = known->second;
    if (isKept) switches.kept.push_back(spelled);
    if (set) {
      if (equals != argument->npos) throw WrongSwitch(spelled + " takes no value");
      set(switches);
      continue;
    }
    auto value = equals == argument->npos ? std::string() : argument->substr(equals + 1);
    if (equals == argument->npos && ++argument != arguments.end()) value = *argument;
    if (value.empty()) throw WrongSwitch(spelled + " needs a value");
    if (isPath) value = Absolute(value);
    if (isKept) switches.kept.push_back(value);
    take(switches, value);
  }
  auto hosts = switches.hosts;
  hosts.erase(Host::kControl);
  if (hosts.empty()) switches.hosts.insert(all.begin(), all.end());
  RequireSense(switches);
  return switches;
}

std::string HelpText() {
  return R"(QuintaraHosts serves the embedded hosts to other programs by their names:

  Veldora.VdApplication    the vault; running object only
  Veldora.VdClientContext, Veldora.VdTranslator
                           what belongs to the vault; created
  ZORVA.Application        the CAD host; running object, or created
  Excel.Application        workbooks in memory; each creation is a new one
  QuintaraHosts.Control    with --control: what tests prepare the hosts with; running object, and created
                           while it runs

What is served
  --serve HOSTS      of vault, cad and excel, parted by commas; all of them without it
  --vault-only, --cad-only, --excel-only
                     the same for one
  --control          the control as well
The integration engine between vault and CAD host is there where a process serves the CAD host and has a vault: the
one that it serves, or, with --serve cad, the one that --vault names.

The vault
  --vault FOLDER     else QUINTARA_VAULT, else the nearest quintara.vault from the current folder upwards
  --init             makes one in FOLDER where there is none
  --user NAME        else QUINTARA_USER, else admin; QUINTARA_PASSWORD holds the password
  --lang CODE        of the texts, such as EN; else QUINTARA_LANG, else the language of the desktop
  --work FOLDER      the user's work directory; else QUINTARA_WORK, else the folder work\NAME of the vault
  --zorva-started-first
                     the vault says that the CAD host has started it

Registration, for the current user only
  /regserver         registers all names for good, with the switches of the vault, --hidden and --log given beside it:
                     automation then starts what can be created when nobody serves it
  /unregserver       takes back exactly what that wrote
  Without it the names are registered for as long as the process serves them. A name that another program holds is
  never touched: it stays that program's, and is told of.
  -Embedding, /automation, --only NAME
                     how automation starts it: it then serves that name alone, and ends with the last object; the CAD
                     host stays until it is closed

The process
  --hidden           without a window; questions of the hosts are answered as a dismissed box would be
  --ready FILE       writes its process id there as soon as it serves
  --log FILE         appends what goes wrong
  --ends-with ID     ends when that process does
  --help             this text

It ends when its window is closed. Exit code 0: done; 1: failed; 2: wrong switches.
)";
}

}  // namespace quintara::hosts
