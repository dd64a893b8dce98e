#include "commands/refresh_bench.h"

#include "access/session/process.h"
#include "hosts/cad/cad_host.h"
#include "support/tiny_files.h"

namespace quintara::test {
namespace {

PositionMatrix At(double x) {
  auto position = kIdentityPosition;
  position[9] = x;
  return position;
}

AssemblyStructure Car() {
  enum : std::size_t { kBolt, kNut, kFrame, kCar };
  AssemblyStructure car{};
  car.definitions = {{"BOLT", false, {}},
                     {"NUT", false, {}},
                     {"FRAME", true, {{"BOLT.1", kBolt, At(1)}, {"BOLT.2", kBolt, At(2)}}},
                     {"CAR", true, {{"FRAME.1", kFrame, At(100)}, {"NUT.7", kNut, At(200)}}}};
  car.root = kCar;
  return car;
}

}  // namespace

const std::vector<std::string>& NewValues() {
  static const std::vector<std::string> values = {"YES",   "TRUE", "NO",  "NODIALOG", "FALSE", "TRUE",
                                                  "FALSE", "TRUE", "YES", "NO",       "YES"};
  return values;
}

std::vector<std::string> OldValues() {
  std::vector<std::string> values;
  for (std::size_t i = 1; i <= SettingPaths().size(); ++i) values.push_back("old " + std::to_string(i));
  return values;
}

const std::vector<std::string>& KeysOfFailure() {
  static const std::vector<std::string> keys = {R"($User\LIFE CYCLE\SwitchToLatestForceCheckOut)",
                                                R"($User\LifeCycleSetup\ReplacingObjectsReportOnCheckOut)",
                                                R"($User\LifeCycleSetup\UseLightLifeCycleScreen)"};
  return keys;
}

std::vector<std::string> NewOnly(const std::set<std::size_t>& numbers) {
  auto values = OldValues();
  for (const auto number : numbers) values[number - 1] = NewValues()[number - 1];
  return values;
}

std::string Write(const std::string& path, const std::string& value) {
  return "VdConfig.SetValue(" + path + ", " + value + ")";
}

std::string WriteOld(std::size_t number) {
  return Write(SettingPaths()[number - 1], OldValues()[number - 1]);
}

Box RunReport(const std::string& description) {
  return TextBox("COMMON.UNEXPECTED_ERROR", kCritical, {"Cls_GlobalRefreshVD.Run", description});
}

Box ReloadReport(const std::string& description) {
  return TextBox("COMMON.UNEXPECTED_ERROR", kCritical, {"Cls_GlobalRefreshVD.ReloadSession", description});
}

Box Successful() {
  return TextBox("QD.GLOBALREFRESH.SUCCESSFUL", kInformationModal);
}

RefreshBench::RefreshBench(First first) {
  vault->InTransaction([this] { StoreAll(); });
  auto options = Options();
  options.zorvaStartedFirst = first == First::kZorva;
  Open(options);
  for (auto& [partNumber, object] : objects) object = Again(object);
  newBolt = Again(newBolt);
  matrix = Again(matrix);
  RunVault();
  RunZorva();
  EXPECT_TRUE(Init());
  platform.Native().OnYield([this] { ++yields; });
}

void RefreshBench::StoreAll() {
  WriteProductFiles(Car(), folder.Path("source"), *files);
  for (const auto& definition : Car().definitions) {
    const auto file = definition.partNumber + (definition.isAssembly ? ".ZVAProduct" : ".stp");
    if (!definition.isAssembly) folder.Write("source/" + file, TinyStep(definition.partNumber));
    objects[definition.partNumber] =
        vault->AddObject(definition.isAssembly ? "ZORVA Product" : "ZORVA Part",
                         {{"NM_CN_PART_NUMBER", definition.partNumber}}, folder.Path("source/" + file));
  }
  vault->SetStructure(Of("FRAME"), {{Of("BOLT"), 2}});
  vault->SetStructure(Of("CAR"), {{Of("FRAME"), 1}, {Of("NUT"), 1}});
  AddMatrix();
  for (const auto& [partNumber, object] : objects) CheckIn(object);
  newBolt = vault->NewRevision(Of("BOLT"));
  folder.Write("source/BOLT.stp", TinyStep("BOLT", "newer"));
  vault->StoreFile(newBolt, folder.Path("source/BOLT.stp"));
  CheckIn(newBolt);
  for (std::size_t i = 0; i < SettingPaths().size(); ++i) {
    Session()->Config()->SetValue(SettingPaths()[i], OldValues()[i]);
  }
}

void RefreshBench::AddMatrix() {
  folder.Write("source/CAR Matrix.xml", "<old/>");
  matrix = vault->AddObject("Document",
                            {{"CN_DESCRIPTION", "CAR Matrix"},
                             {"NM_CN_PART_NUMBER", "CAR Matrix"},
                             {"FILE_TYPE", std::to_string(vault->FileTypeId("xml"))}},
                            folder.Path("source/CAR Matrix.xml"));
  Link(Of("CAR"), matrix, "Document Link");
  CheckIn(matrix);
}

Ref<veldora::VdRecList> RefreshBench::SelectionOf(const std::vector<Ref<VdObject>>& selected) const {
  const auto list = Session()->ObjectStore()->NewObjects();
  for (const auto& object : selected) list->Add(object);
  return list->Records();
}

std::string RefreshBench::RevisionAndState(const std::string& partNumber) const {
  const auto newest = vault->FindNewest(partNumber).at(0);
  return newest.revision + std::to_string(newest.state);
}

std::vector<std::string> RefreshBench::Holds(const std::string& partNumber) const {
  std::vector<std::string> components;
  for (const auto& component : vault->Structure(Latest(Of(partNumber)))) {
    const auto record = component.object->Record();
    components.push_back(record->ValueAsString("NM_CN_PART_NUMBER") + " " + record->ValueAsString("REVISION"));
  }
  return components;
}

std::vector<Ref<VdObject>> RefreshBench::Matrices() const {
  std::vector<Ref<VdObject>> found;
  for (const auto& linked : vault->Links(Latest(Of("CAR")))) {
    if (linked.isStructure || !linked.goesOut) continue;
    const auto& [classId, objectId] = linked.object.identity;
    found.push_back(Store()->ObjectById(classId, objectId));
  }
  return found;
}

std::vector<Box> RefreshBench::Refresh() {
  return Refresh(SelectionOf({Of("CAR")}));
}

std::vector<Box> RefreshBench::Refresh(const Ref<veldora::VdRecList>& selection) {
  const auto before = static_cast<std::ptrdiff_t>(platform.Boxes().size());
  yields = 0;
  gate->StartRecording();
  if (failing != 0) gate->FailCall(failing);
  EXPECT_NO_THROW(Cls_GlobalRefreshVD().Run(selection));
  gate->StopRecording();
  EXPECT_TRUE(failing == 0 || gate->HasFailed());
  failing = 0;
  return {platform.Boxes().begin() + before, platform.Boxes().end()};
}

std::vector<std::string> RefreshBench::ValuesOf(const std::vector<std::string>& paths) const {
  std::vector<std::string> values;
  for (const auto& path : paths) values.push_back(Session()->Config()->Value(path));
  return values;
}

std::vector<std::string> CallsOfARefresh(First first) {
  RefreshBench bench(first);
  EXPECT_THAT(bench.Refresh(), testing::ElementsAre(Successful()));
  return bench.gate->Record();
}

std::vector<std::string> KnownRefreshTest::calls_;

void KnownRefreshTest::SetUpTestSuite() {
  calls_ = CallsOfARefresh(First::kVault);
}

int KnownRefreshTest::PlaceOf(const std::string& beginning, int nth) {
  for (std::size_t i = 0; i < calls_.size(); ++i) {
    if (calls_[i].starts_with(beginning) && --nth == 0) return static_cast<int>(i) + 1;
  }
  ADD_FAILURE() << "no such call: " << beginning;
  return 1;
}

}  // namespace quintara::test
