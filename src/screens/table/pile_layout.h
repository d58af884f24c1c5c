// How the chips of the record lie on the screen: piles that grow upward inside the box of their
// bet, with the amount at their foot.
#pragma once

#include <QPointF>
#include <QPolygonF>
#include <QRectF>
#include <QString>
#include <array>
#include <vector>

#include "core/bets.h"

inline constexpr double kTagCapital = 5;  // height of a digit in a tag

/// A chip as it is drawn, in table units.
struct DrawnChip {
  int BetId = 0;
  int Picture = 0;
  QPointF Centre;
};

/// An amount beside its chips. A flat bet and its odds share one, as do Place and Buy.
struct AmountTag {
  QString Text;
  QRectF Rect;
  bool Negative = false;
  double Capital = kTagCapital;  // height of a digit
};

/// All that the bets bring to the table.
struct TablePiles {
  std::vector<DrawnChip> Chips;  // in the order of painting
  std::vector<AmountTag> Tags;
  std::array<QPointF, kSlots> Foot;  // of the first pile of a bet; without chips its place
};

inline constexpr double kChipRadius = 10.65;  // of what is drawn in the square of a chip
inline constexpr double kChipRise = 1.9;      // at most, from a chip of a pile to the next
inline constexpr double kTagPadding = 3.4;    // beside its text, both sides together

/// Reads the chips, amounts and panels of the record and lays them out. Chips of one spot make one
/// pile; the first lies where the record tells, or as near to it as the box of the bet allows. A
/// pile of more than 7 chips, or one that has no room for its chips, shows fewer of them, from the
/// first to the last.
TablePiles LayOutPiles();

/// The same with each chip at its place in the record, and each amount above the left of its first
/// chip; only the chips of a Chip-Stack lie on each other, as the rack has no room beside them.
TablePiles LayOutPilesAsTold();

/// The box of a bet or a shown Chip-Stack, which holds its chips; several where it has parts. Empty
/// for a bet that the right-hand panel doesn't show.
std::vector<QPolygonF> ChipBoxes(int betId);

/// The place nearest to `place` at which a disc lies inside the box of a bet.
QPointF InsideBox(int betId, QPointF place, double radius);

/// The square of the puck as it is drawn: that of the point, or its upper corner where chips lie in
/// it.
QRectF PuckPlace(const std::vector<DrawnChip>& chips);

/// Chips, markers and amounts of a bet that the right-hand panel doesn't show aren't drawn.
bool IsShownOnTable(int betId);
