// The manual roll pad: throws that the player names instead of leaving them to the generators.
#pragma once

#include <optional>
#include <string>
#include <vector>

/// What `PadDisplay` can be.
enum PadDisplayKind : int { PadTotals = 0, PadTriangle = 1, PadBox = 2, PadFaces = 3 };
inline constexpr int kPadDisplays = 4;

struct NamedThrow {
  int Die1 = 0;
  int Die2 = 0;

  bool operator==(const NamedThrow&) const = default;
};

/// A cell of the pad. Its place is given in steps of the pad's grid, its width in the same.
struct PadCell {
  int Row = 0;
  int Column = 0;
  int Width = 1;
  int Total = 0;          // 0 for a single face
  NamedThrow Dice{};      // no dice where only the total is named; for a face, die 1 alone
  std::string Caption{};  // "7", "3-4", "5"
};

/// The cells of a display, in the order of the keys that go from one to the next.
std::vector<PadCell> CellsOfPad(int display);

/// How many ways there are to throw a total.
constexpr int WaysToThrow(int total) { return total <= 7 ? total - 1 : 13 - total; }

/// Two dice that make a total from 2 to 12: die 1 is drawn from all that can make it, by the
/// runtime's own random function.
NamedThrow DrawTotal(int total);

/// What has been chosen on the pad and doesn't name a throw yet: the 1 of a total from 10 to 12, or
/// the face of die 1.
class PadEntry {
 public:
  /// Takes a digit typed, from 0 to 9. The throw that it completes, if it does; a digit that leads
  /// to no throw changes nothing.
  std::optional<NamedThrow> TakeDigit(int display, int digit);

  /// Takes a click on a cell. A throw that had been begun is given up, unless the cell is a face.
  std::optional<NamedThrow> TakeCell(const PadCell& cell);

  /// The digit or face that waits for a second one; 0 for none.
  int First() const { return first_; }
  void Clear() { first_ = 0; }

 private:
  std::optional<NamedThrow> TakeFace(int face);

  int first_ = 0;
};
