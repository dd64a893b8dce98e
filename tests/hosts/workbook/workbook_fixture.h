#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "hosts/native/native_files.h"
#include "hosts/workbook/contract/fixture.h"
#include "hosts/workbook/workbook_host.h"

namespace quintara::test {

/// An application with workbooks in memory.
class InMemory : public testing::Test {
 protected:
  Ref<excel::Worksheet> Sheet(int index = 1) const { return app->ActiveWorkbook()->Worksheets()->Item(index); }
  Variant Value(const std::string& address, int sheet = 1) const { return Sheet(sheet)->Range(address)->Value(); }
  std::string Format(const std::string& address) const { return Sheet()->Range(address)->NumberFormat(); }
  void Put(const std::string& address, const Variant& value, int sheet = 1) const {
    Sheet(sheet)->Range(address)->SetValue(value);
  }
  void Open(const std::string& name) const { app->Workbooks()->Open(folder.Path(name)); }
  /// Saves the active workbook, closes it and opens it again.
  void Reopen() const {
    app->ActiveWorkbook()->SaveAs(folder.Path("again.xls"));
    app->ActiveWorkbook()->Close(false);
    Open("again.xls");
  }

  TemporaryFolder folder;
  std::shared_ptr<Gate> gate = std::make_shared<Gate>();
  Ref<excel::Application> app = StartWorkbooksInMemory(gate, std::make_shared<NativeContents>(gate));
};

}  // namespace quintara::test
