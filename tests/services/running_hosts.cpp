#include "services/running_hosts.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <utility>

#include "base/text.h"
#include "hosts/vault/database.h"
#include "hosts/vault/sha256.h"

namespace quintara::test {
namespace {

constexpr auto kControls = "norvik.solutions.NLS.Controls.QNTR";
constexpr auto kErrors = "norvik.solutions.NLS.Errors.QNTR";

class CadSide final : public IntegrationCad {
 public:
  explicit CadSide(CadHost& host) : host_(host) {}

  void Save(const Ref<zorva::Document>& document, const std::string& path) override { host_.Save(document, path); }

 private:
  CadHost& host_;
};

// The texts of one catalogue by their keys.
std::map<std::string, std::string> TextsOf(const std::string& language, Catalogue catalogue) {
  std::map<std::string, std::string> texts;
  Texts all;
  ForEachText(all, [&](const std::string&, const TextKey& key) {
    if (key.catalogue == catalogue) texts[std::string(key.key)] = CatalogueTextOf(language, key);
  });
  return texts;
}

const char* AppendixOf(Catalogue catalogue) {
  return catalogue == Catalogue::kControls ? "Controls" : "Errors";
}

// Passwords are kept so that a log-on takes its time, which no test here is about.
void MakeLogOnCheap(const VaultPlan& plan, FileContents& files) {
  vault::Database database(ReadVaultFolder(plan.folder, files).connection);
  const auto digest = vault::HexText(vault::PasswordDigest(plan.password, "salt", 1));
  database.Execute("UPDATE vd_user SET salt = 'salt', password_hash = ?", {"pbkdf2-sha256:1:" + digest});
}

// Puts a new vault into the folder of the plan. One for all is made and then copied, since all that is made
// is written through to the disk.
void CopyNewVault(VaultPlan plan) {
  static const TemporaryFolder made;
  const auto& columns = plan.settings;
  const auto name = columns.id + columns.userId + columns.section + columns.subject + columns.valuePrefix;
  const auto folder = std::exchange(plan.folder, made.Path(name + columns.valueLong));
  if (!IsVault(plan.folder)) {
    NativeContents files(std::make_shared<Gate>());
    InitVault(plan, files);
    MakeLogOnCheap(plan, files);
  }
  std::filesystem::copy(ToPath(plan.folder), ToPath(folder), std::filesystem::copy_options::recursive);
}

}  // namespace

void PrintTo(const Box& box, std::ostream* out) {
  *out << '"' << box.text << "\" in style " << box.style << " under \"" << box.title << '"';
}

std::string CatalogueTextOf(const std::string& language, const TextKey& key) {
  auto text = language + " " + std::string(key.key);
  for (std::size_t i = 0; i < key.parameters.size(); ++i) text += " [REP" + std::to_string(i + 1) + "]";
  return text;
}

std::string Says(const std::string& key, const std::vector<std::string>& parameters) {
  auto text = "EN " + key;
  for (const auto& parameter : parameters) text += " [" + parameter + "]";
  for (std::size_t at = 0; (at = text.find("ENT", at)) != std::string::npos; at += 2) text.replace(at, 3, "\r\n");
  return text;
}

Box TextBox(const std::string& key, int style, const std::vector<std::string>& parameters) {
  return {Says(key, parameters), style, "Quintara"};
}

Box Report(const std::string& label, int style, const std::string& description) {
  return TextBox("COMMON.UNEXPECTED_ERROR", style, {label, description});
}

RunningHosts::RunningHosts(const SettingsColumns& columns)
    : VaultBase({}),
      host({platform.TheGate(), std::make_shared<NativeContents>(platform.TheGate()), {}}),
      cadSide(std::make_unique<CadSide>(host)) {
  gate = platform.TheGate();
  files = std::make_shared<NativeContents>(gate);
  auto plan = Plan();
  plan.settings = columns;
  CopyNewVault(plan);
  Open();
  WriteTexts("EN");
}

RunningHosts::~RunningHosts() {
  ResetProcess();
}

void RunningHosts::RunVault() {
  RunVault(vault->Application());
}

void RunningHosts::RunVault(const Ref<veldora::VdApplication>& client) {
  auto& native = platform.Native();
  native.Register("Veldora.VdApplication", client);
  native.RegisterMaker("Veldora.VdClientContext", [this] { return Ref<AnyObject>(vault->NewClientContext()); });
  native.RegisterMaker("Veldora.VdTranslator", [this] { return Ref<AnyObject>(vault->NewTranslator()); });
}

void RunningHosts::RunZorva() {
  platform.Native().Register("ZORVA.Application", host.Application());
  engine = MakeRef<EmbeddedEngine>(
      EmbeddedEngine::Surroundings{gate, Session(), host.Application(), &vault->Integration(), cadSide.get()});
  host.RegisterItem("HIXEngine", engine);
}

void RunningHosts::RunVaultIn(const std::string& language) {
  auto options = Options();
  options.language = language;
  Open(options);
  RunVault();
  RunZorva();
}

bool RunningHosts::Init() {
  auto& init = Process().gClsInit;
  if (!init) init = std::make_shared<Cls_Init>();
  return init->Init();
}

std::vector<Box> RunningHosts::BoxesOfInit() {
  const auto before = static_cast<std::ptrdiff_t>(platform.Boxes().size());
  Init();
  return {platform.Boxes().begin() + before, platform.Boxes().end()};
}

std::string RunningHosts::NLSPath(const std::string& language, const std::string& appendix) const {
  const auto* nameSpace = appendix == "Controls" ? kControls : kErrors;
  return vault->Folder().base + "/NLS/" + language + "/Custom/" + appendix + "/" + nameSpace + "/1.0/NLS.xml";
}

void RunningHosts::WriteTexts(const std::string& language, const std::vector<std::string>& leftOut) const {
  for (const auto catalogue : {Catalogue::kControls, Catalogue::kMessages}) {
    std::string xml = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<NLS>\n";
    for (const auto& [key, text] : TextsOf(language, catalogue)) {
      if (std::ranges::find(leftOut, key) == leftOut.end()) xml += "<Text Key=\"" + key + "\">" + text + "</Text>\n";
    }
    const auto path = NLSPath(language, AppendixOf(catalogue));
    std::filesystem::create_directories(ToPath(path).parent_path());
    std::ofstream(ToPath(path), std::ios::binary) << xml << "</NLS>\n";
  }
}

void RunningHosts::RemoveNLSFile(const std::string& language, const std::string& appendix) const {
  std::filesystem::remove(ToPath(NLSPath(language, appendix)));
}

std::vector<std::string> TextsUnlike(const std::string& language) {
  auto expected = TextsOf(language, Catalogue::kControls);
  expected.merge(TextsOf(language, Catalogue::kMessages));
  std::vector<std::string> unlike;
  ForEachText(Process().texts, [&](const std::string& text, const TextKey& key) {
    if (text != expected.at(std::string(key.key))) unlike.emplace_back(key.key);
  });
  return unlike;
}

std::vector<std::string> CallsOf(const std::vector<std::string>& calls, const std::string& name) {
  std::vector<std::string> found;
  std::ranges::copy_if(calls, std::back_inserter(found), [&](const auto& call) { return call.starts_with(name); });
  return found;
}

}  // namespace quintara::test
