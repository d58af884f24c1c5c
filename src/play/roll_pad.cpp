#include "play/roll_pad.h"

#include <algorithm>

#include "dice/plain_random.h"

namespace {

constexpr int kFaces = 6;
constexpr int kLowest = 2;
constexpr int kHighest = 12;

bool IsFace(int face) { return face >= 1 && face <= kFaces; }

PadCell PairCell(int row, int column, int die1, int die2) {
  return {row,         column,       1,
          die1 + die2, {die1, die2}, std::to_string(die1) + "-" + std::to_string(die2)};
}

/// The totals below 7, the 7 on a row of its own, and those above.
std::vector<PadCell> TotalCells() {
  std::vector<PadCell> cells;
  for (int total = kLowest; total <= kHighest; ++total) {
    const int row = total < 7 ? 0 : (total == 7 ? 1 : 2);
    const int column = total < 7 ? total - kLowest : (total == 7 ? 0 : total - 8);
    cells.push_back({row, column, total == 7 ? 5 : 1, total, {}, std::to_string(total)});
  }
  return cells;
}

/// A column for each total, as high as there are ways to throw it.
std::vector<PadCell> TriangleCells() {
  std::vector<PadCell> cells;
  for (int total = kLowest; total <= kHighest; ++total) {
    int row = kFaces - WaysToThrow(total);
    for (int die1 = std::max(1, total - kFaces); die1 <= std::min(kFaces, total - 1); ++die1)
      cells.push_back(PairCell(row++, total - kLowest, die1, total - die1));
  }
  return cells;
}

/// A row for each face of die 1.
std::vector<PadCell> BoxCells() {
  std::vector<PadCell> cells;
  for (int die1 = 1; die1 <= kFaces; ++die1)
    for (int die2 = 1; die2 <= kFaces; ++die2)
      cells.push_back(PairCell(die1 - 1, die2 - 1, die1, die2));
  return cells;
}

/// Two rows of three.
std::vector<PadCell> FaceCells() {
  std::vector<PadCell> cells;
  for (int face = 1; face <= kFaces; ++face)
    cells.push_back({(face - 1) / 3, (face - 1) % 3, 1, 0, {face, 0}, std::to_string(face)});
  return cells;
}

}  // namespace

std::vector<PadCell> CellsOfPad(int display) {
  switch (display) {
    case PadTriangle: return TriangleCells();
    case PadBox: return BoxCells();
    case PadFaces: return FaceCells();
    default: return TotalCells();
  }
}

NamedThrow DrawTotal(int total) {
  const int die1 = PlainRandom(std::max(1, total - kFaces), std::min(kFaces, total - 1));
  return {die1, total - die1};
}

std::optional<NamedThrow> PadEntry::TakeDigit(int display, int digit) {
  if (display != PadTotals) return TakeFace(digit);
  if (first_ == 0 && digit == 1) {
    first_ = 1;
    return {};
  }
  const int total = 10 * first_ + digit;
  if (total < kLowest || total > kHighest) return {};
  first_ = 0;
  return DrawTotal(total);
}

std::optional<NamedThrow> PadEntry::TakeCell(const PadCell& cell) {
  if (cell.Total == 0) return TakeFace(cell.Dice.Die1);
  first_ = 0;
  return cell.Dice.Die1 == 0 ? DrawTotal(cell.Total) : cell.Dice;
}

std::optional<NamedThrow> PadEntry::TakeFace(int face) {
  if (!IsFace(face)) return {};
  if (first_ == 0) {
    first_ = face;
    return {};
  }
  const NamedThrow thrown = {first_, face};
  first_ = 0;
  return thrown;
}
