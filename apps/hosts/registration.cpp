#include "hosts/registration.h"

#include <algorithm>
#include <charconv>
#include <utility>

#include "base/text.h"
#include "hosts/registry_key.h"

namespace quintara::hosts {
namespace {

const std::string kClasses = "Software\\Classes";
const std::string kOwn = "Software\\QuintaraHosts";
const std::string kForGood = "Registered";
const std::string kRunning = "Running ";
// Stands in no path of a key and in no text that is written.
constexpr char kBetween = '\t';

std::string KeyOf(const ServedName& name) {
  return kClasses + "\\" + name.programName;
}

bool IsHeldIn(HKEY root, const ServedName& name) {
  const auto path = KeyOf(name);
  if (!HasKey(root, path)) return false;
  const auto clsid = TextAt(root, path + "\\CLSID", "");
  return !clsid || Capitals(*clsid) != Capitals(TextOf(name.clsid));
}

bool IsHeld(const ServedName& name) {
  return IsHeldIn(HKEY_LOCAL_MACHINE, name) || IsHeldIn(HKEY_CURRENT_USER, name);
}

// Processes that start at once look at the same keys.
class Turn {
 public:
  Turn() : mutex_(CreateMutexW(nullptr, FALSE, L"Local\\QuintaraHosts registration")) {
    WaitForSingleObject(mutex_, INFINITE);
  }
  ~Turn() {
    ReleaseMutex(mutex_);
    CloseHandle(mutex_);
  }
  Turn(const Turn&) = delete;
  Turn& operator=(const Turn&) = delete;

 private:
  HANDLE mutex_;
};

// When a process began; its id alone may be another's tomorrow. 0 for none that runs.
unsigned long long BeginningOf(unsigned long id) {
  const auto process = OpenProcess(SYNCHRONIZE | PROCESS_QUERY_LIMITED_INFORMATION, FALSE, id);
  if (!process) return 0;
  FILETIME began{};
  FILETIME other{};
  const bool isRunning =
      WaitForSingleObject(process, 0) == WAIT_TIMEOUT && GetProcessTimes(process, &began, &other, &other, &other);
  CloseHandle(process);
  return isRunning ? (static_cast<unsigned long long>(began.dwHighDateTime) << 32U) + began.dwLowDateTime : 0;
}

std::string JournalOf(unsigned long id) {
  return kRunning + std::to_string(id) + " " + std::to_string(BeginningOf(id));
}

}  // namespace

Registration::Registration(std::string name) : name_(std::move(name)), journal_(kOwn + "\\" + name_) {}

Registration Registration::ForGood() {
  return Registration(kForGood);
}

Registration Registration::OfProcess(unsigned long id) {
  return Registration(JournalOf(id));
}

bool Registration::IsThere() const {
  return HasKey(HKEY_CURRENT_USER, journal_);
}

Registered Registration::Register(const std::vector<const ServedName*>& names,
                                  const std::function<std::string(const ServedName&)>& commandOf) const {
  const Turn turn;
  Registered registered;
  for (const auto* name : names) (IsHeld(*name) ? registered.held : registered.taken).push_back(name);
  if (registered.taken.empty()) return registered;
  MakeKey(kOwn);
  MakeKey(journal_);
  for (const auto* name : registered.taken) Register(*name, name->isStarted ? commandOf(*name) : std::string());
  return registered;
}

void Registration::Register(const ServedName& name, const std::string& command) const {
  const auto clsid = TextOf(name.clsid);
  const auto ofClass = kClasses + "\\CLSID\\" + clsid;
  Key(kClasses);
  Key(kClasses + "\\CLSID");
  Key(ofClass);
  Text(ofClass, "", std::string("Quintara: ") + name.title);
  Key(ofClass + "\\ProgID");
  Text(ofClass + "\\ProgID", "", name.programName);
  if (!command.empty()) {
    Key(ofClass + "\\LocalServer32");
    Text(ofClass + "\\LocalServer32", "", command);
  }
  Key(KeyOf(name));
  Text(KeyOf(name), "", std::string("Quintara: ") + name.title);
  Key(KeyOf(name) + "\\CLSID");
  Text(KeyOf(name) + "\\CLSID", "", clsid);
}

// The journal is written first: what isn't there in the end is no harm.
void Registration::Key(const std::string& path) const {
  const auto entry = "key" + (kBetween + path);
  if (HasKey(HKEY_CURRENT_USER, path) && !IsInAnother(entry)) return;
  Note(entry);
  MakeKey(path);
}

void Registration::Text(const std::string& path, const std::string& value, const std::string& text) const {
  const auto entry = "value" + (kBetween + path) + kBetween + value + kBetween + text;
  const auto there = TextAt(HKEY_CURRENT_USER, path, value);
  // It is another registration's, which has the same use for it.
  if (there && (*there != text || !IsInAnother(entry))) return;
  Note(entry);
  WriteText(path, value, text);
}

bool Registration::IsInAnother(const std::string& entry) const {
  return std::ranges::any_of(SubkeysOf(kOwn), [&](const std::string& other) {
    if (other == name_) return false;
    const auto entries = TextsAt(kOwn + "\\" + other);
    return std::ranges::any_of(entries, [&](const auto& numbered) { return numbered.second == entry; });
  });
}

void Registration::Note(const std::string& entry) const {
  const auto entries = TextsAt(journal_);
  if (std::ranges::any_of(entries, [&](const auto& numbered) { return numbered.second == entry; })) return;
  const auto number = std::to_string(entries.size() + 1);
  WriteText(journal_, std::string(4 - std::min<std::size_t>(4, number.size()), '0') + number, entry);
}

void Registration::Unregister() const {
  const Turn turn;
  auto entries = TextsAt(journal_);
  std::ranges::reverse(entries);
  for (const auto& [number, entry] : entries) {
    if (!IsInAnother(entry)) {
      const auto parts = Split(entry, kBetween);
      if (parts.size() == 2) EraseEmptyKey(parts[1]);
      if (parts.size() == 4 && TextAt(HKEY_CURRENT_USER, parts[1], parts[2]) == parts[3])
        EraseValue(parts[1], parts[2]);
    }
    EraseValue(journal_, number);
  }
  EraseEmptyKey(journal_);
  EraseEmptyKey(kOwn);
}

void Registration::TidyUp() {
  const Turn turn;
  for (const auto& name : SubkeysOf(kOwn)) {
    if (!name.starts_with(kRunning)) continue;
    unsigned long id = 0;
    std::from_chars(name.data() + kRunning.size(), name.data() + name.size(), id);
    if (name != JournalOf(id)) Registration(name).Unregister();
  }
}

}  // namespace quintara::hosts
