// The places of the table: a drawing of 640 by 480 units on which every bet has its region.
#pragma once

#include <QPainterPath>
#include <QPointF>
#include <QRectF>
#include <array>

#include "core/help_topics.h"
#include "core/table_state.h"

inline constexpr double kTableWidth = 640;
inline constexpr double kTableHeight = 480;

/// What lies under the mouse beside the bets (1 to 83) and the Chip-Stacks (101 up).
enum TableSpot : int {
  NoSpot = 0,
  DiceSpot = 88,
  BuyMarkerSpot = 89,
  OffMarkerSpot = 90,
  OnMarkerSpot = 91,
  StickPersonSpot = 92,
  RailSpot = 93,
  NoBetSpot = 94,
};

/// `ChipColor` of the places of the rack: 1 to 5 the chips, 7 to 10 the shown stacks.
inline constexpr int kFirstStackColor = 7;
inline constexpr int kLastStackColor = 10;

inline constexpr double kChipSize = 22;
inline constexpr double kDieSize = 32;
inline constexpr double kMarkerSize = 17;
inline constexpr double kPuckSize = 39;

/// The centres of the two dice where they rest.
inline constexpr QPointF kDiceHome[2] = {{539, 393}, {579, 393}};
/// The centres of the two dice while they are thrown and stay in place.
inline constexpr QPointF kDiceHold[2] = {{539, 390}, {579, 390}};

/// A point on or above this line of the stick person's spot is the person; below it is the switch
/// of the right-hand panel.
inline constexpr double kStickPersonBottom = 374;

/// What a mouse position means.
struct SpotHit {
  int HotSpot = NoSpot;         // what a click acts on
  int PickedSpot = NoSpot;      // the marker or the stick person under the mouse
  int HelpTopic = kTopicTable;  // what F1 opens
};

/// What lies at a place of the table, with the dice standing at `dice`.
SpotHit FindHotSpot(double x, double y, const QPointF (&dice)[2] = kDiceHome);

/// `HotSpot` of a place of the table, with the dice at home.
int HotSpotAt(double x, double y);

/// `PickedSpot` of a place of the table.
int PickedSpotAt(double x, double y);

/// The `ChipColor` that a click on the rack picks up at a place; 0 between the places.
int RackSlotAt(double x, double y);

/// The place of the rack that shows `chipColor` (1 to 5, 7 to 10); empty for other values.
QRectF RackSlotRect(int chipColor);

/// The spot of a Chip-Stack shown at place 0 to 3 of `VisibleStacks`, its rack place included.
QRectF StackSpotRect(int place);

/// The place of a Chip-Stack in `VisibleStacks`, 0 to 3; -1 for one that isn't shown.
int VisibleStackPlace(int betId);

/// Where the first chip of a bet or shown Chip-Stack is drawn.
QPointF ChipPosition(int betId);

/// The square of the puck for a point, or for none.
QRectF PuckRect(int point);

/// The square of a marker of the tool panel: `BuyMarkerSpot`, `OffMarkerSpot` or `OnMarkerSpot`.
QRectF MarkerSpotRect(int markerSpot);

/// Where the recorder's lamp stands while the dice are recorded or played back.
inline constexpr QRectF kRecorderRect{452, 375, 52, 27};

/// The regions of the drawing that are no plain rectangles of the numbers box, as closed outlines:
/// the line bets, the don't bar, Come, Field, Big 6 and 8, C and E, the proposition cells, the
/// stick person (`StickPersonSpot`) and the spot that takes no bet. Empty for other ids.
const QPainterPath& SpotOutline(int spot);

/// The cell of a bet in the right-hand panel, with the hop bets shown or not; empty for a bet that
/// isn't there.
QRectF PanelCell(int betId, bool hopPanel);

/// The felt: what the rail encloses.
const QPainterPath& FeltOutline();

/// The numbers box, the Don't Come box and the six number columns.
inline constexpr QRectF kNumbersBox{121, 51, 379, 127};
inline constexpr QRectF kDontComeBox{122, 52, 53, 125};

/// The column, 0 to 5, of a number of the numbers box.
QRectF NumberColumn(int index);

/// The ids of a bet that only one of the two right-hand panels shows.
constexpr bool IsOnHopPanelOnly(int betId) { return betId >= Over7 && betId <= Hop55; }
constexpr bool IsOnPropPanelOnly(int betId) {
  return (betId >= Hard4 && betId <= Craps) || betId == Horn;
}

/// The corner of the Pass Line band: its centre, and the distances of its lines from it.
inline constexpr QPointF kCorner{150, 287};
inline constexpr double kBarOuter = 55.2;
inline constexpr double kPassInner = 55.2;
inline constexpr double kPassOuter = 88;
inline constexpr double kOddsOuter = 114;
inline constexpr double kArmTop = 51.5;
inline constexpr double kLineRight = 445;
