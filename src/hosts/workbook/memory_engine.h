#pragma once

#include <memory>
#include <string>

#include "hosts/workbook/engine.h"

namespace quintara::workbook {

/// Keeps workbooks in memory. Their files are of the spreadsheet program's XML form of 2003.
class MemoryEngine final : public Engine {
 public:
  std::unique_ptr<Document> Add(int sheets) override;
  std::unique_ptr<Document> Load(const std::string& bytes, const std::string& name) override;
  void RequireAlive() const override;
  void End() noexcept override { ended_ = true; }

 private:
  bool ended_ = false;
};

}  // namespace quintara::workbook
