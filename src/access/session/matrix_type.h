#pragma once

namespace quintara {

/// The form of a matrix document: a workbook, the older one, or an XML file.
enum class MatrixType { Excel = 0, XML = 1 };

}  // namespace quintara
