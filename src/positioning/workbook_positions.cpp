#include "positioning/workbook_positions.h"

#include <algorithm>

#include "base/counter16.h"
#include "base/failure.h"
#include "matrix/matrix_workbook.h"
#include "matrix/position_arithmetic.h"
#include "positioning/flat_list.h"

namespace quintara {
namespace {

PositionMatrix NumbersIn(std::span<const Variant> cells) {
  PositionMatrix numbers{};
  if (cells.size() != numbers.size()) throw Failure(failure::kSubscriptOutOfRange);
  std::ranges::transform(cells, numbers.begin(), &Variant::ToDouble);
  return numbers;
}

}  // namespace

std::int16_t WorkbookPositions::recherche_Ligne_produit_Pere(const Ref<excel::Worksheet>& CurrentWorkSheet,
                                                             std::int16_t& ligne_fils, std::int16_t colonne_fils) {
  const Counter16 column = colonne_fils - 1;
  Counter16 row = ligne_fils;
  while (TextAt(CurrentWorkSheet, row, column).empty()) --row;
  return ligne_fils = static_cast<std::int16_t>(int{row});
}

void WorkbookPositions::Operation_Matrice(std::span<const Variant> MatriceFils, std::span<const Variant> MatricePere) {
  std::ranges::copy(Compose(NumbersIn(MatriceFils), NumbersIn(MatricePere)), MatriceResultat.begin());
}

PositionCells WorkbookPositions::PositionAt(const Ref<excel::Worksheet>& tree, int row) {
  PositionCells cells;
  for (int column = matrix_workbook::kFirstOfPosition; auto& cell : cells) cell = ValueAt(tree, row, column++);
  return cells;
}

void WorkbookPositions::ComposeUpward(const Ref<excel::Worksheet>& tree, std::int16_t row, std::int16_t column,
                                      PositionCells position) {
  while (row != 1 || column != 1) {
    recherche_Ligne_produit_Pere(tree, row, column);
    --column;
    Operation_Matrice(position, PositionAt(tree, row));
    position = MatriceResultat;
  }
}

void WorkbookPositions::Place(const Ref<zorva::Product>& component) const {
  component->Position()->SetComponents(NumbersIn(MatriceResultat));
}

}  // namespace quintara
