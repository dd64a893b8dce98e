#include "hosts/workbook/memory_engine.h"

#include <utility>

#include "base/failure.h"
#include "hosts/workbook/xml_reader.h"
#include "hosts/workbook/xml_writer.h"

namespace quintara::workbook {
namespace {

class MemoryDocument final : public Document {
 public:
  explicit MemoryDocument(Sheets sheets) : sheets_(std::move(sheets)) {}

  int SheetCount() override { return static_cast<int>(sheets_.size()); }
  CellGrid Read(int sheet) override { return CellsOf(sheet); }
  void Write(int sheet, const CellGrid& grid) override { CellsOf(sheet) = grid; }
  std::string Bytes() override { return WriteXmlWorkbook(sheets_); }
  void Close() override { sheets_.clear(); }

 private:
  CellGrid& CellsOf(int sheet) { return sheets_[static_cast<std::size_t>(sheet - 1)].cells; }

  Sheets sheets_;
};

}  // namespace

std::unique_ptr<Document> MemoryEngine::Add(int sheets) {
  Sheets made;
  for (int i = 1; i <= sheets; ++i) made.push_back({"Sheet" + std::to_string(i), {}});
  return std::make_unique<MemoryDocument>(std::move(made));
}

std::unique_ptr<Document> MemoryEngine::Load(const std::string& bytes, const std::string& name) {
  return std::make_unique<MemoryDocument>(ReadXmlWorkbook(bytes, name));
}

void MemoryEngine::RequireAlive() const {
  if (ended_) throw Failure(failure::kServerGone, "The spreadsheet application has ended");
}

}  // namespace quintara::workbook
