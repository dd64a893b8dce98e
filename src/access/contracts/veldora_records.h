#pragma once

#include <cstdint>
#include <string>

#include "access/contracts/any_object.h"
#include "base/variant.h"

/// The vault's records and tables of rows.
namespace quintara::veldora {

/// Type codes of columns.
namespace column_type {
inline constexpr int kInteger = 1;
inline constexpr int kText = 2;
}  // namespace column_type

class VdColumn : public AnyObject {
 public:
  std::string Name() override = 0;
  virtual int Size() = 0;
  virtual int TypeCode() = 0;
};

/// The columns of a record or table.
class VdColumns : public AnyObject {
 public:
  virtual int Count() = 0;
  /// The column at `index`, from 0. Fails past the end.
  virtual Ref<VdColumn> Item(int index) = 0;
  virtual bool Contains(const std::string& name) = 0;
};

/// The attribute values of one object, or one row of a result. Attributes of a row are named by
/// alias, point and attribute ("S.OBJECT_ID"), those of an object by the bare name. What is unknown
/// to the object's class or the table fails.
class VdRecord : public AnyObject {
 public:
  /// A value that was never set is the empty text, or 0 of an integer attribute.
  virtual Variant Value(const std::string& attribute) = 0;
  /// Failure 13 for a text that is no number; 0 for the empty one.
  virtual std::int32_t ValueAsInteger(const std::string& attribute) = 0;
  virtual std::string ValueAsString(const std::string& attribute) = 0;
  /// Sets a value from its text; it reaches the database with the object's next storing.
  virtual void ValuateFromString(const std::string& attribute, const std::string& text) = 0;
  virtual Ref<VdColumns> Header() = 0;
};

/// A table of rows. The operations of `VdRecord` are those of its first row.
class VdRecList : public VdRecord {
 public:
  virtual int RecordCount() = 0;
  /// The row at `row`, from 0. Fails past the end.
  virtual Ref<VdRecord> GetRecord(int row) = 0;
  /// Adds a column; see `column_type`. Fails for a name that is there already.
  virtual void AddField(const std::string& name, int typeCode, int size) = 0;
  /// Appends an empty row and gives its index.
  virtual int AddRow() = 0;
  virtual void SetValue(const std::string& field, int row, const Variant& value) = 0;
  virtual int ColumnCount() = 0;
  /// The name of the column at `column`, from 0.
  virtual std::string ColumnName(int column) = 0;
  /// The text of a cell.
  virtual std::string ValueAt(const std::string& field, int row) = 0;
  virtual void SetCell(int column, int row, const Variant& value) = 0;
};

}  // namespace quintara::veldora
