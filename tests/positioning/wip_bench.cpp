#include "positioning/wip_bench.h"

#include <algorithm>

#include "positioning/matrix_sheets.h"

namespace quintara::test {

namespace {

class BlindFileSystem final : public FileSystemObject {
 public:
  bool FileExists(const std::string& /*path*/) override { return false; }
  void DeleteFile(const std::string& /*path*/, bool /*force*/) override {}
  std::string GetExtensionName(const std::string& /*path*/) override { return {}; }
  bool FolderExists(const std::string& /*path*/) override { return false; }
  void CreateFolder(const std::string& /*path*/) override {}
  Ref<FileSystemObject> AsFileSystemObject() override { return MakeRef<BlindFileSystem>(); }
};

}  // namespace

std::vector<Component> ComponentsOf(const Ref<zorva::Product>& root) {
  std::vector<Component> components;
  const auto children = root->Products();
  for (int i = 1; i <= children->Count(); ++i) {
    const auto child = children->Item(i);
    Component component{child->PartNumber(), child->Name(), {}};
    child->Position()->GetComponents(component.position);
    components.push_back(std::move(component));
  }
  return components;
}

std::vector<PositionMatrix> PositionsOf(const Ref<zorva::Product>& root) {
  const auto children = root->Products();
  std::vector<PositionMatrix> positions(static_cast<std::size_t>(children->Count()));
  for (int i = 1; auto& position : positions) children->Item(i++)->Position()->GetComponents(position);
  return positions;
}

std::vector<std::string> NamesOf(const Ref<zorva::Product>& root) {
  const auto children = root->Products();
  std::vector<std::string> names;
  for (int i = 1; i <= children->Count(); ++i) names.push_back(children->Item(i)->Name());
  return names;
}

WipBench::WipBench() : spreadsheet(gate) {
  RunVault();
  RunZorva();
  platform.Native().RegisterMaker(excel::kProgramName, [this] { return Ref<AnyObject>(spreadsheet.Start()); });
}

void WipBench::GivenProduct(const std::vector<std::string>& partNumbers) {
  Node flat{"WIP~~TEST", "WIP~~TEST", kIdentityPosition, {}};
  for (std::size_t i = 0; i < partNumbers.size(); ++i) {
    flat.children.push_back({partNumbers[i], "child " + std::to_string(i + 1), kIdentityPosition, {}});
  }
  document = host.Build(StructureOf(flat));
  root = document->Product();
}

void WipBench::GivenWip(const std::vector<std::string>& partNumbers) {
  GivenProduct(partNumbers);
  Mark("WIP", "TRUE");
}

void WipBench::Mark(const std::string& property, const std::string& value) {
  root->UserProperties()->CreateString(property, value);
}

Ref<veldora::VdObject> WipBench::AddMatrix(const std::string& ending, const std::string& bytes) {
  folder.Write("source/PLANT Matrix" + ending, bytes);
  return vault->AddObject("Document", {{"CN_DESCRIPTION", "PLANT Matrix"}},
                          folder.Path("source/PLANT Matrix" + ending));
}

void WipBench::Remember(const std::string& prefix, const Ref<veldora::VdObject>& matrix) {
  Mark(prefix + "CID", std::to_string(matrix->ClassId()));
  Mark(prefix + "OID", std::to_string(matrix->ObjectId()));
}

void WipBench::GivenXmlMatrix(const Node& tree) {
  Remember("DocXML", AddMatrix(".xml", MatrixText(tree)));
}

void WipBench::GivenWorkbook(const Node& tree) {
  GivenWorkbookCells(tree);
  Remember("DocExcel", AddMatrix(".xls", "a workbook"));
}

void WipBench::GivenWorkbookCells(const Node& tree) {
  spreadsheet->sheets.assign(2, {});
  PutMatrix(tree, [&](int sheet, int row, int column, const Variant& value) {
    spreadsheet->sheets[static_cast<std::size_t>(sheet - 1)][{row, column}] = value;
  });
}

void WipBench::GivenBlindFileSystem() {
  platform.Native().RegisterMaker("Scripting.FileSystemObject",
                                  [] { return Ref<AnyObject>(MakeRef<BlindFileSystem>()); });
}

std::vector<std::string> WipBench::WithoutStart(const std::vector<std::string>& calls) {
  const auto last = std::ranges::find(calls, "Application.ActiveDocument");
  std::vector<std::string> left;
  std::copy_if(last, calls.end(), std::back_inserter(left), [](const auto& call) {
    return !call.starts_with("Vd") && !call.starts_with("Files.") && !call.starts_with("FileSystem.");
  });
  return left;
}

void ExpectedCalls::Read(int sheet, int row, int column) {
  const auto place = std::to_string(row) + ", " + std::to_string(column);
  calls.push_back("Worksheet.Cells(" + std::to_string(sheet) + ": " + place + ")");
  calls.emplace_back("Range.Value");
}

void ExpectedCalls::ReadPosition(int row) {
  for (int column = 15; column <= 26; ++column) Read(1, row, column);
}

void ExpectedCalls::ReadUpward(int row, int column) {
  for (; row >= 1; --row) Read(1, row, column);
}

Node Plant() {
  return {"PLANT",
          "PLANT",
          At(1000),
          {{"BOLT", "BOLT.1", At(1), {}},
           {"GROUP", "GROUP.1", At(0, 100), {{"BOLT", "BOLT.1.1", At(2), {}}, {"BOLT", "BOLT.2", At(3), {}}}},
           {"PLATE", "PLATE.1", At(0, 0, 5), {}}}};
}

}  // namespace quintara::test
