#include "screens/table/table_layout.h"

#include <algorithm>

#include "core/game_state.h"
#include "core/help_topics.h"

namespace {

struct PlacedRect {
  int Id;
  QRectF Rect;
};

constexpr double kPanelLeft = 500;
constexpr double kPanelTop = 100;
constexpr double kPanelBottom = 404;

constexpr double kRackTop = 3;
constexpr double kRackSlotTop = 4;
constexpr double kRackBottom = 28;
constexpr double kStackPitch = 51;
constexpr double kStackWidth = 48;
constexpr double kStackLeft = 181;   // of the first shown stack; the others lie to its left
constexpr double kStackChipX = 217;  // its first chip
constexpr double kStackChipY = 17.5;
constexpr double kChipPitch = 25;
constexpr double kLargestChipLeft = 234;

constexpr QRectF kCAndEBox{445, 315.5, 54.5, 59.5};
constexpr QRectF kComeBox{120.8, 177.5, 378.7, 80};
constexpr QRectF kFieldBox{120.8, 257.5, 378.7, 58};
constexpr QPointF kBigCorner{150, 286.4};  // where Big 6, Big 8 and the Field meet
constexpr QRectF kStickPersonBox{505, 4, 131, 93};
constexpr QRectF kPanelSwitchBox{599, 379, 36, 28};
constexpr QRectF kNoBetBox{121, 406, 378, 26};

constexpr PlacedRect kMarkerSpots[] = {
    {BuyMarkerSpot, {385.5, 7, kMarkerSize, kMarkerSize}},
    {OffMarkerSpot, {423.5, 7, kMarkerSize, kMarkerSize}},
    {OnMarkerSpot, {461.5, 7, kMarkerSize, kMarkerSize}},
};

constexpr double kPropLeft = 511;
constexpr double kPropMiddle = 573.5;
constexpr double kPropRight = 635;
constexpr double kHalf = kPropMiddle - kPropLeft;
constexpr double kWhole = kPropRight - kPropLeft;

constexpr PlacedRect kPropCells[] = {
    {Seven, {kPropLeft, 107, kWhole, 39}},        {Craps, {kPropLeft, 146, kWhole, 39}},
    {Hard4, {kPropLeft, 185, kHalf, 39}},         {Hard10, {kPropLeft, 224, kHalf, 39}},
    {Hard6, {kPropMiddle, 185, kHalf, 39}},       {Hard8, {kPropMiddle, 224, kHalf, 39}},
    {Three, {kPropLeft, 263, kHalf, 39}},         {Eleven, {kPropLeft, 302, kHalf, 39}},
    {Two, {kPropMiddle, 263, kHalf, 39}},         {Twelve, {kPropMiddle, 302, kHalf, 39}},
    {Horn, {538.5, 341, kPropRight - 538.5, 34}}, {World, {kPropLeft, 341, 27.5, 34}},
};

constexpr int kHopColumn1[] = {Over7, Hop13, Hop22, Hop14, Hop23, Hop36, Hop45, Hop55, Hop46};
constexpr int kHopColumn2[] = {Under7, Hop15, Hop33, Hop24, Hop16,
                               Hop25,  Hop34, Hop44, Hop26, Hop35};
constexpr double kHopRow = 25;
constexpr QRectF kHopWorld{511, 325, 62, 47};

bool Within(const QRectF& rect, double x, double y) {
  return x >= rect.left() && x < rect.right() && y >= rect.top() && y < rect.bottom();
}

bool IsShapedSpot(int spot, double x, double y) {
  return SpotOutline(spot).contains(QPointF(x, y));
}

int StackAt(double x, double y) {
  for (int place = 0; place < 4; ++place)
    if (Within(StackSpotRect(place), x, y)) return Game.VisibleStacks[static_cast<unsigned>(place)];
  return NoSpot;
}

bool IsMarker(double x, double y) {
  return std::ranges::any_of(kMarkerSpots,
                             [&](const PlacedRect& spot) { return Within(spot.Rect, x, y); });
}

bool IsRail(double x, double y) {
  return !FeltOutline().contains(QPointF(x, y)) && !IsMarker(x, y);
}

int PanelBetAt(double x, double y) {
  if (Game.DisplayHopBets) {
    for (int id = World; id <= Hop55; ++id)
      if (Within(PanelCell(id, true), x, y)) return id;
    return NoSpot;
  }
  for (const PlacedRect& cell : kPropCells)
    if (Within(cell.Rect, x, y)) return cell.Id;
  return NoSpot;
}

bool IsDontBar(double x, double y) {
  return (x >= 95 && x < 120 && y >= 52 && y < 257) || (x >= 180 && x < 445 && y >= 316 && y < 341);
}

int DontBarSpot() {
  return Game.Bets[DontPass] > Currency() && Game.Point != 0 ? DontPassOdds : DontPass;
}

/// The rows of the numbers box, from the top: the first whose `Top` and `Bottom` hold decides.
struct NumberRow {
  double Top;
  double Bottom;
  int FirstBet;
};
constexpr NumberRow kNumberRows[] = {
    {52, 77, Lay4},        {77, 90, DontCome4}, {89, 114, DontCome4Odds},
    {115, 140, Come4Odds}, {139, 152, Come4},
};

int NumbersBoxSpot(double x, double y) {
  if (Within(kDontComeBox, x, y)) return DontCome;
  for (int column = 0; column < 6; ++column) {
    const QRectF place = NumberColumn(column);
    if (x < place.left() || x >= place.right()) continue;
    for (const NumberRow& row : kNumberRows)
      if (y >= row.Top && y < row.Bottom) return row.FirstBet + column;
    return Place4 + column;
  }
  return NoSpot;
}

int FeltSpotAt(double x, double y) {
  for (int spot : {int(PassLine), int(PassLineOdds), int(NoBetSpot)})
    if (IsShapedSpot(spot, x, y)) return spot;
  if (IsDontBar(x, y)) return DontBarSpot();
  for (int spot : {int(Big6), int(Big8), int(Field), int(Come), int(CAndE)})
    if (IsShapedSpot(spot, x, y)) return spot;
  if (Within(kNumbersBox, x, y)) return NumbersBoxSpot(x, y);
  return NoSpot;
}

/// With a Buy bet up, the shared spot of Place and Buy is the Buy bet.
int BuyOverPlace(int spot) {
  if (IsPlace(spot) && Game.Bets[static_cast<unsigned>(spot + kBuyOffset)] > Currency())
    return spot + kBuyOffset;
  return spot;
}

bool IsOnDice(double x, double y, const QPointF (&dice)[2]) {
  return std::ranges::any_of(dice, [&](const QPointF& die) {
    return Within({die.x() - kDieSize / 2, die.y() - kDieSize / 2, kDieSize, kDieSize}, x, y);
  });
}

SpotHit HitOf(int spot) {
  SpotHit hit;
  hit.HotSpot = spot;
  hit.HelpTopic = TopicOfSpot(spot);
  return hit;
}

QPainterPath RectPath(const QRectF& rect) {
  QPainterPath path;
  path.addRect(rect);
  return path;
}

QRectF CornerSquare(double radius) {
  return {kCorner.x() - radius, kCorner.y() - radius, 2 * radius, 2 * radius};
}

/// A band that runs down the left side, round the corner and along the bottom.
QPainterPath BandPath(double inner, double outer) {
  QPainterPath path(QPointF(kCorner.x() - outer, kArmTop));
  path.lineTo(kCorner.x() - outer, kCorner.y());
  path.arcTo(CornerSquare(outer), 180, 90);
  path.lineTo(kLineRight, kCorner.y() + outer);
  path.lineTo(kLineRight, kCorner.y() + inner);
  path.lineTo(kCorner.x(), kCorner.y() + inner);
  path.arcTo(CornerSquare(inner), 270, -90);
  path.lineTo(kCorner.x() - inner, kArmTop);
  path.closeSubpath();
  return path;
}

constexpr double kBigSplitAngle = 214;  // where Big 6 ends and Big 8 begins, on the corner

QPainterPath Big6Path() {
  QPainterPath path(QPointF(kCorner.x() - kBarOuter, kFieldBox.top()));
  path.lineTo(kCorner.x() - kBarOuter, kCorner.y());
  path.arcTo(CornerSquare(kBarOuter), 180, kBigSplitAngle - 180);
  path.lineTo(kBigCorner);
  path.lineTo(kFieldBox.topLeft());
  path.closeSubpath();
  return path;
}

QPainterPath Big8Path() {
  QPainterPath path(kBigCorner);
  path.arcTo(CornerSquare(kBarOuter), kBigSplitAngle, 270 - kBigSplitAngle);
  path.lineTo(179.5, kCorner.y() + kBarOuter);
  path.lineTo(179.5, kFieldBox.bottom());
  path.closeSubpath();
  return path;
}

QPainterPath FieldPath() {
  QPainterPath path(kFieldBox.topLeft());
  path.lineTo(kFieldBox.topRight());
  path.lineTo(kFieldBox.bottomRight());
  path.lineTo(179.5, kFieldBox.bottom());
  path.closeSubpath();
  return path;
}

QPainterPath StickPersonPath() {
  QPainterPath path;
  path.addRoundedRect(kStickPersonBox, 6, 6);
  path.addRoundedRect(kPanelSwitchBox, 5, 5);
  return path;
}

std::array<QPainterPath, NoBetSpot + 1> BuildOutlines() {
  std::array<QPainterPath, NoBetSpot + 1> outlines;
  outlines[PassLine] = BandPath(kPassInner, kPassOuter);
  outlines[PassLineOdds] = BandPath(kPassOuter + 1, kOddsOuter);
  outlines[DontPass].addRect(95, 52, 25, 205);
  outlines[DontPass].addRect(180, 316, 265, 25);
  outlines[Big6] = Big6Path();
  outlines[Big8] = Big8Path();
  outlines[Field] = FieldPath();
  outlines[Come] = RectPath(kComeBox);
  outlines[CAndE] = RectPath(kCAndEBox);
  outlines[StickPersonSpot] = StickPersonPath();
  outlines[NoBetSpot] = RectPath(kNoBetBox);
  for (const PlacedRect& cell : kPropCells)
    outlines[static_cast<unsigned>(cell.Id)] = RectPath(cell.Rect);
  return outlines;
}

template <std::size_t Count>
QRectF HopCell(const int (&column)[Count], int betId, double left, double width) {
  const auto found = std::ranges::find(column, betId);
  if (found == std::end(column)) return {};
  return {left, kPanelTop + kHopRow * static_cast<double>(found - std::begin(column)), width,
          kHopRow};
}

}  // namespace

SpotHit FindHotSpot(double x, double y, const QPointF (&dice)[2]) {
  SpotHit hit;
  if (!Within({0, 0, kTableWidth, kTableHeight}, x, y)) return hit;
  if (const int stack = StackAt(x, y)) return HitOf(stack);
  if (IsShapedSpot(StickPersonSpot, x, y)) {
    hit.PickedSpot = StickPersonSpot;
    hit.HelpTopic = TopicOfSpot(StickPersonSpot);
    return hit;
  }
  if (IsRail(x, y)) return HitOf(RailSpot);
  if (Game.RecorderStatus >= Recording && Within(kRecorderRect, x, y)) {
    hit.HotSpot = DiceSpot;
    hit.HelpTopic = kTopicDiceRolls;
    return hit;
  }
  const bool onPanel = x >= kPanelLeft && y >= kPanelTop && y < kPanelBottom;
  const int spot = BuyOverPlace(onPanel ? PanelBetAt(x, y) : FeltSpotAt(x, y));
  if (spot != NoSpot) return HitOf(spot);
  for (const PlacedRect& marker : kMarkerSpots) {
    if (!Within(marker.Rect, x, y)) continue;
    hit.PickedSpot = marker.Id;
    hit.HelpTopic = TopicOfSpot(marker.Id);
    return hit;
  }
  return HitOf(IsOnDice(x, y, dice) ? DiceSpot : NoSpot);
}

int HotSpotAt(double x, double y) { return FindHotSpot(x, y).HotSpot; }

int PickedSpotAt(double x, double y) { return FindHotSpot(x, y).PickedSpot; }

int RackSlotAt(double x, double y) {
  for (int color = 1; color <= kLastStackColor; ++color)
    if (Within(RackSlotRect(color), x, y)) return color;
  return 0;
}

QRectF RackSlotRect(int chipColor) {
  const double height = kRackBottom - kRackSlotTop;
  if (chipColor >= 1 && chipColor <= 5)
    return {kLargestChipLeft + kChipPitch * (5 - chipColor), kRackSlotTop, 24, height};
  if (chipColor >= kFirstStackColor && chipColor <= kLastStackColor) {
    const double left = StackSpotRect(chipColor - kFirstStackColor).left();
    return {left, kRackSlotTop, 25, height};
  }
  return {};
}

QRectF StackSpotRect(int place) {
  return {kStackLeft - kStackPitch * place, kRackTop, kStackWidth, kRackBottom - kRackTop};
}

int VisibleStackPlace(int betId) {
  const auto found = std::ranges::find(Game.VisibleStacks, betId);
  return found == Game.VisibleStacks.end() ? -1
                                           : static_cast<int>(found - Game.VisibleStacks.begin());
}

QPointF ChipPosition(int betId) {
  if (const int place = VisibleStackPlace(betId); place >= 0)
    return {kStackChipX - kStackPitch * place, kStackChipY};
  const auto slot = static_cast<unsigned>(betId);
  return {Game.BetChipX[slot], Game.BetChipY[slot]};
}

QRectF PuckRect(int point) {
  const double x = point == 0 ? 130 : 54 * (point - point / 7) - 32;
  return {x, 38, kPuckSize, kPuckSize};
}

QRectF MarkerSpotRect(int markerSpot) {
  for (const PlacedRect& marker : kMarkerSpots)
    if (marker.Id == markerSpot) return marker.Rect;
  return {};
}

const QPainterPath& SpotOutline(int spot) {
  static const std::array<QPainterPath, NoBetSpot + 1> outlines = BuildOutlines();
  static const QPainterPath empty;
  return spot >= 0 && spot <= NoBetSpot ? outlines[static_cast<unsigned>(spot)] : empty;
}

QRectF PanelCell(int betId, bool hopPanel) {
  if (!hopPanel) {
    for (const PlacedRect& cell : kPropCells)
      if (cell.Id == betId) return cell.Rect;
    return {};
  }
  if (betId == World) return kHopWorld;
  const QRectF first = HopCell(kHopColumn1, betId, 511, 62);
  return first.isEmpty() ? HopCell(kHopColumn2, betId, 574, 61) : first;
}

const QPainterPath& FeltOutline() {
  static const QPainterPath felt = [] {
    constexpr double kLeft = 33;
    constexpr double kTop = 37;
    constexpr double kBottom = 436;
    constexpr double kTopRadius = 15;
    constexpr double kBottomRadius = 118;
    QPainterPath path(QPointF(kTableWidth, kTop));
    path.lineTo(kLeft + kTopRadius, kTop);
    path.arcTo(QRectF(kLeft, kTop, 2 * kTopRadius, 2 * kTopRadius), 90, 90);
    path.lineTo(kLeft, kBottom - kBottomRadius);
    path.arcTo(QRectF(kLeft, kBottom - 2 * kBottomRadius, 2 * kBottomRadius, 2 * kBottomRadius),
               180, 90);
    path.lineTo(kTableWidth, kBottom);
    path.closeSubpath();
    return path;
  }();
  return felt;
}

QRectF NumberColumn(int index) { return {176.0 + 54 * index, 52, 53, 125}; }
