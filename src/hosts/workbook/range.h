#pragma once

#include <memory>
#include <string>

#include "hosts/workbook/cell_area.h"
#include "hosts/workbook/session.h"

namespace quintara::workbook {

class RangeObject final : public WorkbookPart<"Range", excel::Range> {
 public:
  RangeObject(std::shared_ptr<Session> session, std::shared_ptr<OpenWorkbook> workbook, int sheet,
              const CellArea& area);

  Variant Value() override;
  void SetValue(const Variant& value) override;
  std::string NumberFormat() override;
  void SetNumberFormat(const std::string& format) override;
  void Copy(const Ref<excel::Range>& destination) override;
  Ref<excel::Range> SpecialCells(int type) override;
  Ref<excel::Range> End(int where) override;
  int Row() override;

 private:
  std::string Place() const;
  Ref<excel::Range> CellObject(int row, int column) const;

  int sheet_;
  CellArea area_;
};

}  // namespace quintara::workbook
