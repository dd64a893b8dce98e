#pragma once

#include <array>
#include <cstdint>
#include <span>

#include "access/contracts/position_matrix.h"
#include "access/contracts/spreadsheet.h"
#include "access/contracts/zorva.h"
#include "base/ref.h"
#include "base/variant.h"

namespace quintara {

/// The twelve numbers of a position as the cells of a workbook hold them, columns 15 to 26. They become numbers
/// where they are used: what is empty is 0, a text that is no number is failure 13.
using PositionCells = std::array<Variant, PositionMatrix().size()>;

/// What both positioning commands have to read positions from the first worksheet of a matrix workbook: a row for
/// each instance in depth-first order, its part number in the column of its level, the root in row 1, column 1.
/// Failures go to the caller.
class WorkbookPositions {
 public:
  /// Goes up from row `ligne_fils`, which may be the one, to the nearest row that has something in the column to the
  /// left of `colonne_fils`: the parent's, which stays in `ligne_fils` too. Past row 1 or column 1 the worksheet
  /// fails, and `ligne_fils` keeps its value.
  std::int16_t recherche_Ligne_produit_Pere(const Ref<excel::Worksheet>& CurrentWorkSheet, std::int16_t& ligne_fils,
                                            std::int16_t colonne_fils);

  /// Composes a position in its parent with the parent's into `MatriceResultat`. Failure 9 for an array that hasn't
  /// twelve elements.
  void Operation_Matrice(std::span<const Variant> MatriceFils, std::span<const Variant> MatricePere);

  /// The position found or composed last, at first twelve empty values.
  PositionCells MatriceResultat;

 protected:
  WorkbookPositions() = default;
  ~WorkbookPositions() = default;

  static PositionCells PositionAt(const Ref<excel::Worksheet>& tree, int row);
  // Composes the position of the instance at `row` and `column` with those of all that hold it, the root included.
  void ComposeUpward(const Ref<excel::Worksheet>& tree, std::int16_t row, std::int16_t column, PositionCells position);
  // Sets `MatriceResultat` on a component.
  void Place(const Ref<zorva::Product>& component) const;
};

}  // namespace quintara
