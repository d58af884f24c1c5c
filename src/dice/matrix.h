// The probability matrix: skewed dice.
#pragma once

#include "core/game_state.h"

/// The fair matrix.
decltype(DiceState::ProbMatrix) FairMatrix();

inline constexpr int kLocksLayer = 0;
inline constexpr int kSharesLayer = 1;
inline constexpr int kWholeShare = 100'000;  // 100 %

/// A cell of either layer of the matrix.
struct MatrixPlace {
  int Row = 0;
  int Column = 0;

  bool operator==(const MatrixPlace&) const = default;
};

/// Where the share of a throw lies.
constexpr MatrixPlace PlaceOfThrow(int die1, int die2) {
  const int row = die1 + die2 - 1;
  return {row, row >= 7 ? 8 - die2 : die1 + 1};
}

/// The share of a throw, in thousandths of a percent.
inline int ShareOfThrow(const ProbabilityMatrix& matrix, int die1, int die2) {
  const MatrixPlace at = PlaceOfThrow(die1, die2);
  return matrix[kSharesLayer][static_cast<unsigned>(at.Column)][static_cast<unsigned>(at.Row)];
}

/// Lays the fair matrix down: 36 cells of 2778, their totals and faces, no locks, axis 1 and 6.
void SetFairMatrix();

/// Sets `Die1` and `Die2` from `x`, 1 to 100,000, by walking the cells. An x beyond the sum of the
/// cells is drawn again from a source of its own, which leaves the chosen generator alone; a matrix
/// without a positive share falls back on two fair dice.
void DiceFromMatrix(int x);

/// The percent chance of a roll event 0 to 90: by the matrix, or of fair dice. Events 0 and 1 are
/// every roll; an id that names no event has none. A total reads its own cell of the matrix.
float EventShare(int event, bool useMatrix);

/// The percent chance of a roll event for the screens of figures: of fair dice, or the sum of the
/// combination cells of the matrix that make it up, for totals too.
double EventProbability(int event, bool skewed);
