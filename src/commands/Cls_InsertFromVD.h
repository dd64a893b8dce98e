#pragma once

#include "access/contracts/veldora.h"
#include "base/ref.h"

namespace quintara {

/// Looks whether an object of the vault stands in the work in progress that is active in the CAD host already.
class Cls_InsertFromVD {
 public:
  /// Inserts nothing. Opens the workbook of the work in progress's matrix and warns of an old one; shows a box for each
  /// direct child of the root with the object's part number. The workbook is never saved, and the spreadsheet
  /// application ended on every road. A failure ends it without a word.
  void Run(const Ref<veldora::VdObject>& VeldoraObject);
};

}  // namespace quintara
