#include "hosts/office/office_fixture.h"

namespace quintara::test {
namespace {

Ref<excel::Application>& Shared() {
  static Ref<excel::Application> shared;
  return shared;
}

class Ending : public testing::Environment {
 public:
  void TearDown() override { Shared() = nullptr; }
};

const auto* const kEnding = testing::AddGlobalTestEnvironment(new Ending);

}  // namespace

std::shared_ptr<Gate> TheGate() {
  static const auto gate = std::make_shared<Gate>();
  return gate;
}

SpreadsheetSurroundings Surroundings() {
  return {TheGate(), std::make_shared<NativeContents>(TheGate())};
}

const office::Bridge& BridgeOf(const Ref<excel::Application>& application) {
  const auto& session = dynamic_cast<workbook::ApplicationObject&>(*application).TheSession();
  return dynamic_cast<const office::Bridge&>(session.TheEngine());
}

Ref<excel::Application> SharedApplication() {
  if (!Shared()) Shared() = StartSpreadsheet(Surroundings());
  return Shared();
}

Spreadsheet::Spreadsheet() : app(SharedApplication()) {}

Spreadsheet::~Spreadsheet() {
  TheGate()->Reset();
  app->SetSheetsInNewWorkbook(3);
  for (int count = app->Workbooks()->Count(); count > 0; --count) app->Workbooks()->Item(count)->Close(false);
}

Ref<excel::Worksheet> Spreadsheet::Sheet(int index) const {
  return app->ActiveWorkbook()->Worksheets()->Item(index);
}

Variant Spreadsheet::Value(const std::string& address, int sheet) const {
  return Sheet(sheet)->Range(address)->Value();
}

void Spreadsheet::Put(const std::string& address, const Variant& value, int sheet) const {
  Sheet(sheet)->Range(address)->SetValue(value);
}

void Spreadsheet::Reopen(const std::string& name) const {
  const auto workbook = app->ActiveWorkbook();
  workbook->SaveAs(folder.Path(name));
  workbook->Close(false);
  app->Workbooks()->Open(folder.Path(name));
}

std::string Spreadsheet::WorkbookWith(const Variant& value) const {
  const auto workbook = app->Workbooks()->Add();
  workbook->Worksheets()->Item(1)->Range("A1")->SetValue(value);
  workbook->SaveAs(folder.Path("bytes.xls"));
  workbook->Close(false);
  return folder.Read("bytes.xls");
}

}  // namespace quintara::test
