#pragma once

#include <string_view>
#include <unordered_map>
#include <vector>

#include "base/xml.h"
#include "matrix/name_table.h"
#include "matrix/xml_element.h"

namespace quintara {

/// Stands in for the scans of a loaded matrix document: finds elements by part number and by full
/// name as a scan of all elements in document order would, and keeps what was converted. The
/// document must live longer and stay unchanged. Elements are numbered from 0 in document order.
/// All but `Build` need a built index.
class MatrixIndex {
 public:
  static constexpr int kNone = -1;

  explicit MatrixIndex(XmlNode document) : document_(document) {}

  /// Reads the tree, at the first call only: one pass over the attributes, in document order, which
  /// is several times as fast as reading elements here and there. Failure 6 for more than 32,767
  /// elements.
  void Build();

  /// The elements whose first PART_NUMBER attribute is `partNumber`, in document order.
  const std::vector<int>& WithPartNumber(std::string_view partNumber) const;
  /// The first element whose first FULL_INSTANCE_NAME attribute is `fullName`; the last element of
  /// the document if there is none. Failure 91 for a document without elements.
  int FindByFullName(std::string_view fullName) const;
  /// Failure 6 when a scan that reaches `element` meets one with more attributes, 32,767, than it
  /// can count.
  void CheckScanUpTo(int element) const;
  void CheckWholeScan() const { CheckScanUpTo(Size() - 1); }

  int Size() const noexcept { return static_cast<int>(elements_.size()); }
  XmlNode Node(int element) const;
  /// The element above, or `kNone` for the root element.
  int Parent(int element) const;
  /// A number that stands for the element's part number, or `kNone` without the attribute.
  int PartNumberId(int element) const;
  std::string_view PartNumberOf(int partNumberId) const;

  /// An element as it was read. Without `isConverted` something in it isn't a number; that is a
  /// failure only when the element is needed.
  struct Record {
    XMLElement element;
    int chainStart = kNone;  ///< the element that is found by the record's full name
    bool isConverted = true;
  };
  Record& RecordOf(int element);

  /// Whether some ancestor of an element, or the element itself, is a component of the flat
  /// product: kept here because the answer holds for all that stands below, as long as the list of
  /// the children stays the same.
  enum class Cover : char { kUnknown, kNo, kYes };
  Cover& CoverOf(int element);

 private:
  struct Entry {
    XmlNode node;
    int parent = kNone;
    int partNumberId = kNone;
    Cover cover = Cover::kUnknown;
  };

  XmlNode Next(XmlNode node, int& parent) const;
  void Read(int element);
  void FindChainStarts();
  int IdOf(std::string_view partNumber);

  XmlNode document_;
  bool isBuilt_ = false;
  std::vector<Entry> elements_;
  std::vector<Record> records_;
  std::unordered_map<std::string_view, int> partNumberIds_;
  std::vector<std::string_view> partNumbers_;
  std::vector<std::vector<int>> byPartNumber_;
  NameTable byFullName_;
  int firstOverlong_ = kNone;
};

}  // namespace quintara
