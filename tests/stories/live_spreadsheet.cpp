#include "stories/live_spreadsheet.h"

#include <gtest/gtest.h>

#include <memory>
#include <utility>

#include "hosts/native/native_platform.h"
#include "quintara/spreadsheet_access.h"

namespace quintara::test {
namespace {

struct Running {
  Ref<excel::Application> shared;
  Ref<excel::Application> writer;
};

Running& TheRunning() {
  static Running running;
  return running;
}

class Ending : public testing::Environment {
 public:
  void TearDown() override { TheRunning() = {}; }
};

// An application that goes on when it is ended, with nothing open.
class Lasting final : public excel::Application, public std::enable_shared_from_this<Lasting> {
 public:
  explicit Lasting(Ref<excel::Application> real) : real_(std::move(real)) {}

  bool Visible() override { return real_->Visible(); }
  void SetVisible(bool visible) override { real_->SetVisible(visible); }
  int SheetsInNewWorkbook() override { return real_->SheetsInNewWorkbook(); }
  void SetSheetsInNewWorkbook(int count) override { real_->SetSheetsInNewWorkbook(count); }
  Ref<excel::Workbooks> Workbooks() override { return real_->Workbooks(); }
  Ref<excel::Workbook> ActiveWorkbook() override { return real_->ActiveWorkbook(); }
  void Quit() override {
    const auto workbooks = real_->Workbooks();
    for (int count = workbooks->Count(); count > 0; --count) workbooks->Item(count)->Close(false);
  }
  Ref<excel::Application> AsSpreadsheetApplication() override { return Ref<excel::Application>(shared_from_this()); }

 private:
  Ref<excel::Application> real_;
};

const auto* const kEnding = testing::AddGlobalTestEnvironment(new Ending);

}  // namespace

Ref<excel::Application> StartLive() {
  const auto gate = std::make_shared<Gate>();
  NativePlatform platform(gate, {});
  RegisterSpreadsheet(platform, gate, QUINTARA_SPREADSHEET_LIBRARY);
  return platform.Create("Excel.application")->AsSpreadsheetApplication();
}

Ref<excel::Application> SharedLive() {
  auto& shared = TheRunning().shared;
  if (!shared) shared = StartLive();
  return shared;
}

Ref<excel::Application> SharedWriter() {
  auto& writer = TheRunning().writer;
  if (!writer) writer = MakeRef<Lasting>(StartLive());
  return writer;
}

}  // namespace quintara::test
