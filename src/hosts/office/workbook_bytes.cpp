#include "hosts/office/workbook_bytes.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "base/failure.h"
#include "base/xml.h"

namespace quintara::office {
namespace {

using namespace std::string_view_literals;

constexpr auto kCompound = "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1"sv;
constexpr auto kPackage = "PK\x03\x04"sv;
constexpr std::size_t kHeader = 512;
constexpr std::size_t kFirstTables = 109;  // numbers of table sectors that the header itself holds
constexpr std::uint32_t kFree = 0xFFFFFFFF;

// The sectors of a compound file. What is asked for past its end throws.
class Sectors {
 public:
  explicit Sectors(std::string_view bytes) : bytes_(bytes) {
    const auto shift = Byte(30);
    if (shift != 9 && shift != 12) throw Failure(failure::kInvalidFormat);
    size_ = std::size_t{1} << shift;
  }

  std::size_t Numbers() const noexcept { return size_ / 4; }
  std::uint32_t InHeader(std::size_t offset) const { return Number(offset); }
  std::uint32_t InSector(std::uint32_t sector, std::size_t index) const { return Number(Start(sector) + 4 * index); }
  /// The last sector of all may be shorter than the others.
  bool Has(std::size_t sector) const noexcept { return Start(sector) < bytes_.size(); }

 private:
  std::size_t Start(std::size_t sector) const noexcept { return std::max(kHeader, size_) + sector * size_; }
  std::uint8_t Byte(std::size_t offset) const {
    if (offset >= bytes_.size()) throw Failure(failure::kInvalidFormat);
    return static_cast<std::uint8_t>(bytes_[offset]);
  }
  std::uint32_t Number(std::size_t offset) const {
    std::uint32_t number = 0;
    for (std::size_t i = 4; i-- > 0;) number = number << 8U | Byte(offset + i);
    return number;
  }

  std::string_view bytes_;
  std::size_t size_;
};

// The sectors that hold the table of which sector follows which.
std::vector<std::uint32_t> TableSectors(const Sectors& sectors) {
  std::vector<std::uint32_t> tables;
  const std::size_t count = sectors.InHeader(44);
  if (!sectors.Has(count)) throw Failure(failure::kInvalidFormat);
  for (std::size_t i = 0; i < std::min(count, kFirstTables); ++i) tables.push_back(sectors.InHeader(76 + 4 * i));
  for (auto sector = sectors.InHeader(68); tables.size() < count;
       sector = sectors.InSector(sector, sectors.Numbers() - 1)) {
    for (std::size_t i = 0; i + 1 < sectors.Numbers() && tables.size() < count; ++i) {
      tables.push_back(sectors.InSector(sector, i));
    }
  }
  return tables;
}

bool HasAllSectors(std::string_view bytes) {
  try {
    const Sectors sectors(bytes);
    const auto tables = TableSectors(sectors);
    for (std::size_t table = 0; table < tables.size(); ++table) {
      for (std::size_t i = 0; i < sectors.Numbers(); ++i) {
        const bool used = sectors.InSector(tables[table], i) != kFree;
        if (used && !sectors.Has(table * sectors.Numbers() + i)) return false;
      }
    }
    return !tables.empty();
  } catch (const Failure&) {
    return false;
  }
}

// LibreOffice takes what is cut off for an empty workbook.
bool IsXmlWorkbook(const std::string& bytes) {
  XmlDocument document;
  return document.Parse(bytes) && BaseName(document.Root().name()) == "Workbook";
}

}  // namespace

void RequireWorkbook(const std::string& bytes, const std::string& path) {
  if (bytes.starts_with(kPackage) || (bytes.starts_with(kCompound) && HasAllSectors(bytes))) return;
  const bool isMarkup = bytes.find_first_not_of(" \t\r\n") == bytes.find('<') && !bytes.empty();
  if (isMarkup && IsXmlWorkbook(bytes)) return;
  const auto* fault = "is no workbook";
  if (bytes.empty()) fault = "is empty";
  if (bytes.starts_with(kCompound)) fault = "is damaged: a part of the workbook is missing";
  if (isMarkup) fault = "is a page of text, no workbook";
  throw Failure(failure::kRefused, path + " " + fault);
}

}  // namespace quintara::office
