#pragma once

#include <string>

#include "access/contracts/any_object.h"
#include "base/variant.h"

/// What the logic needs of the spreadsheet application: one abstract class for each kind of object,
/// with the operations under the application's own names. Every operation may raise a Failure: 9 for
/// an index that isn't there, 462 when the application is gone, 1004 for what the application refuses.
namespace quintara::excel {

class Range;
class Workbook;
class Workbooks;
class Worksheet;
class Worksheets;

/// What `Range.SpecialCells` looks for.
namespace cell_type {
inline constexpr int kLastCell = 11;
}  // namespace cell_type

/// Where `Range.End` goes.
namespace direction {
inline constexpr int kToLeft = -4159;
}  // namespace direction

/// The program name under which the platform creates an application of its own.
inline constexpr const char* kProgramName = "Excel.Application";

/// One running application, made for whoever created it.
class Application : public AnyObject {
 public:
  /// False keeps it without windows and questions.
  virtual bool Visible() = 0;
  virtual void SetVisible(bool visible) = 0;
  /// The number of worksheets that `Workbooks.Add` makes, from 1 to 255.
  virtual int SheetsInNewWorkbook() = 0;
  virtual void SetSheetsInNewWorkbook(int count) = 0;
  /// The open workbooks.
  virtual Ref<excel::Workbooks> Workbooks() = 0;
  /// The workbook opened or added last of those that are open; nothing when none is.
  virtual Ref<Workbook> ActiveWorkbook() = 0;
  /// Ends the application. Changes that weren't saved are lost; what is held of it fails from then on.
  virtual void Quit() = 0;
};

/// The open workbooks in the order in which they came. A closed one leaves the collection at once, so
/// whoever closes them all goes from the last to the first.
class Workbooks : public AnyObject {
 public:
  virtual int Count() = 0;
  /// The workbook at `index`, from 1.
  virtual Ref<Workbook> Item(int index) = 0;
  /// A new, empty workbook, made active. It has no file yet.
  virtual Ref<Workbook> Add() = 0;
  /// Opens a file and makes it active; the one that is open already, if it is. Fails for a path that
  /// can't be read and for what is no workbook, is damaged, or asks for a password.
  virtual Ref<Workbook> Open(const std::string& fullPath) = 0;
};

/// One open workbook.
class Workbook : public AnyObject {
 public:
  virtual Ref<excel::Worksheets> Worksheets() = 0;
  /// Writes it to its file. Fails for a workbook that has none.
  virtual void Save() = 0;
  /// Writes it as a workbook of the format `.xls`, which is its file from then on. A file of that
  /// name is replaced.
  virtual void SaveAs(const std::string& fullPath) = 0;
  /// Closes it. What is held of it fails from then on.
  virtual void Close(bool saveChanges) = 0;
};

/// The worksheets of a workbook in their order, hidden ones included.
class Worksheets : public AnyObject {
 public:
  /// The worksheet at `index`, from 1.
  virtual Ref<Worksheet> Item(int index) = 0;
};

/// One worksheet; rows and columns are counted from 1.
class Worksheet : public AnyObject {
 public:
  /// The cells of an address: "B3", or two corners such as "A1:N20", in whatever order they stand.
  virtual Ref<excel::Range> Range(const std::string& address) = 0;
  /// All its cells.
  virtual Ref<excel::Range> Cells() = 0;
  /// One cell. Fails with 1004 outside of the worksheet, as in row or column 0.
  virtual Ref<excel::Range> Cells(int row, int column) = 0;
};

/// A rectangle of cells, often a single one.
class Range : public AnyObject {
 public:
  /// What a single cell holds: empty, a Boolean, a double, or a text. A date is a number; of a formula it
  /// is the result. Fails with 13 for a cell that shows an error and for several cells.
  virtual Variant Value() = 0;
  /// Writes the value into each cell of the range; the empty one clears. In cells of the number format "@"
  /// it becomes a text, and only there is a text sure to stay one: an application may take it for the number
  /// or the formula that it looks like.
  virtual void SetValue(const Variant& value) = 0;
  /// The number format of its first cell, "General" where none was set.
  virtual std::string NumberFormat() = 0;
  /// Sets the number format of each cell; "@" is that of texts. Values that are there stay as they are.
  virtual void SetNumberFormat(const std::string& format) = 0;
  /// Copies all its cells, empty ones too, over those whose first one is the first of `destination`, which
  /// may belong to another worksheet or workbook.
  virtual void Copy(const Ref<Range>& destination) = 0;
  /// With `cell_type::kLastCell` the one cell in the last row and the last column in use on the worksheet.
  virtual Ref<Range> SpecialCells(int type) = 0;
  /// From its first cell, with `direction::kToLeft`, the beginning of the cells in use there, or else the
  /// next cell in use on the way; column 1 when there is none.
  virtual Ref<Range> End(int where) = 0;
  /// The row of its first cell.
  virtual int Row() = 0;
};

}  // namespace quintara::excel
