#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "hosts/vault/database.h"

namespace quintara::vault {

/// Attributes that every class of objects or every versioned class has.
namespace attribute {
inline constexpr auto kObjectId = "OBJECT_ID";
inline constexpr auto kClassId = "CLASS_ID";
inline constexpr auto kState = "STATE";
inline constexpr auto kIdentity = "CN_ID";
inline constexpr auto kDescription = "CN_DESCRIPTION";
inline constexpr auto kRevision = "REVISION";
inline constexpr auto kFileName = "FILE_NAME";
inline constexpr auto kFileType = "FILE_TYPE";
inline constexpr auto kDirectory = "DIRECTORY";
inline constexpr auto kCadFileName = "CAD_REF_FILE_NAME";
inline constexpr auto kVaultObjectId = "VAULT_OBJECT_ID";
inline constexpr auto kFileId = "TDM_FILE_ID";
inline constexpr auto kQuantity = "QUANTITY";
inline constexpr auto kCreated = "CREATION_DATE";
inline constexpr auto kCreatedBy = "USER_OBJECT_ID";
inline constexpr auto kModified = "MODIFICATION_DATE";
inline constexpr auto kModifiedBy = "USER_ID_MOD";
}  // namespace attribute

struct AttributeInfo {
  std::string name;
  bool isInteger = false;
  int size = 255;
  bool isKey = false;
};

/// How the values of an attribute are numbered.
struct MaskInfo {
  std::string sequence;  ///< empty for one that has none
  int width = 0;         ///< least number of digits
  std::string firstRevision;
};

/// Objects of a versioned class have revisions, a life cycle and files; those of a plain one are
/// rows, as settings are; those of a link class join two others, and those of the structure link join
/// a product and its component.
enum class ClassKind { kPlain = 0, kVersioned = 1, kLink = 2, kStructureLink = 3 };

struct ClassInfo {
  std::int16_t id = 0;
  std::string name;
  std::string table;  ///< where its objects stand
  ClassKind kind = ClassKind::kPlain;
  std::vector<AttributeInfo> attributes;
  std::map<std::string, MaskInfo> masks;  ///< by attribute

  std::optional<std::size_t> Find(std::string_view attribute) const;
  /// Fails, naming class and attribute, for one that the class hasn't.
  std::size_t PlaceOf(std::string_view attribute) const;
  bool Has(std::string_view attribute) const { return Find(attribute).has_value(); }
  bool IsLink() const { return kind == ClassKind::kLink || kind == ClassKind::kStructureLink; }
  bool IsVersioned() const { return kind == ClassKind::kVersioned; }

 private:
  friend class Schema;
  std::unordered_map<std::string, std::size_t> places_;
};

/// The classes and operations of a vault, as they stood when it was opened.
class Schema {
 public:
  explicit Schema(Database& database);

  /// These three fail for what isn't known; `Find...` give null then.
  const ClassInfo& ClassById(int classId) const;
  const ClassInfo& ClassByName(const std::string& name) const;
  std::int32_t OperationByName(const std::string& name) const;
  const ClassInfo* FindClass(const std::string& name) const;
  const ClassInfo* FindTable(const std::string& table) const;
  std::string OperationName(std::int32_t operationId) const;

  /// The class of the links of the product structure.
  const ClassInfo& StructureLink() const { return *structureLink_; }
  const std::vector<std::unique_ptr<ClassInfo>>& Classes() const { return classes_; }

 private:
  static void ReadAttributes(Database& database, ClassInfo& info);
  static void ReadMasks(Database& database, ClassInfo& info);

  std::vector<std::unique_ptr<ClassInfo>> classes_;
  std::unordered_map<int, const ClassInfo*> byId_;
  std::unordered_map<std::string, const ClassInfo*> byName_;
  std::map<std::string, std::int32_t> operations_;
  const ClassInfo* structureLink_ = nullptr;
};

/// An identifier between quotation marks, as SQL wants it.
std::string Quoted(const std::string& identifier);
/// The attributes of a class as a list of columns, and the letters of their types for `Query`.
std::string ColumnList(const ClassInfo& info, const std::string& alias = {});
std::string ColumnTypes(const ClassInfo& info);

}  // namespace quintara::vault
