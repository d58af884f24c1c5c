#include "screens/table/pile_layout.h"

#include <QLineF>
#include <QPainterPath>
#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <span>

#include "core/game_state.h"
#include "core/text.h"
#include "screens/art/chip_art.h"
#include "screens/table/table_layout.h"

namespace {

constexpr double kOneSpot = 5.5;      // chips that lie nearer to each other than this make a pile
constexpr double kLeastRise = 0.9;    // lower, and chips can't be told apart
constexpr int kMostEdges = 6;         // a pile has one chip more to show
constexpr double kRoomUnderOdds = 6;  // that a flat bet's pile takes, as the odds lie on it
constexpr double kPileStep = 3;       // between the chips of a pile in the record
constexpr QPointF kHeelStep(14,
                            -3);  // from the odds that match Don't Pass to those that lean on it

constexpr double kTagHeight = 7.4;
constexpr double kTagDrop = 5.2;  // from the centre of a chip to the top of its tag
constexpr double kTagGap = 0.5;   // to the lines of the box
constexpr double kWorstSqueeze = 0.62;

using Boxes = std::vector<QPolygonF>;

struct Pile {
  QPointF Base;
  QPointF Told;  // where the record has its first chip
  std::vector<int> Pictures;
  double Height = 0;  // from the first chip to the last
};

struct BetPiles {
  std::vector<Pile> Piles;
  QPointF Last;  // the chip before, as the record has it
  std::size_t LastPile = 0;
};

// ---- Boxes ----

QPolygonF RectPolygon(const QRectF& rect) { return QPolygonF(rect); }

/// The rows of the numbers box that hold the chips of a family. The bets on a number that came or
/// didn't come share a half, with their odds nearer to the middle.
struct ChipRow {
  int FirstBet;
  double Top;
  double Bottom;
};
constexpr ChipRow kChipRows[] = {
    {Lay4, 52, 77},          {DontCome4, 77, 114.5}, {DontCome4Odds, 90, 114.5}, {Come4, 115, 152},
    {Come4Odds, 115, 140.0}, {Place4, 152, 177},     {Buy4, 152, 177},
};

Boxes BoxesOnFelt(int betId) {
  if (betId > Buy10) {
    const int outline = betId == DontPassOdds ? DontPass : betId;
    if (betId == DontCome) return {RectPolygon(kDontComeBox)};
    const QList<QPolygonF> parts = SpotOutline(outline).toSubpathPolygons();
    return {parts.begin(), parts.end()};
  }
  const int column = (betId - 1) % 6;
  const ChipRow* row = std::ranges::find(kChipRows, betId - column, &ChipRow::FirstBet);
  const QRectF number = NumberColumn(column);
  return {RectPolygon({number.left(), row->Top, number.width(), row->Bottom - row->Top})};
}

/// How far a place is from the outline of a box, and where the outline is nearest.
struct Edge {
  double Distance = std::numeric_limits<double>::max();
  QPointF Nearest;
  QPointF Inward;
};

QPointF NearestOn(const QLineF& line, QPointF place) {
  const QPointF along = line.p2() - line.p1();
  const double length = QPointF::dotProduct(along, along);
  if (length == 0) return line.p1();
  const double share = QPointF::dotProduct(place - line.p1(), along) / length;
  return line.pointAt(std::clamp(share, 0.0, 1.0));
}

double Length(QPointF way) { return std::hypot(way.x(), way.y()); }

Edge EdgeOf(const QPolygonF& box, QPointF place) {
  Edge edge;
  for (qsizetype i = 0; i + 1 < box.size(); ++i) {
    const QPointF nearest = NearestOn(QLineF(box[i], box[i + 1]), place);
    const double distance = Length(place - nearest);
    if (distance >= edge.Distance) continue;
    edge.Distance = distance;
    edge.Nearest = nearest;
  }
  const bool inside = box.containsPoint(place, Qt::OddEvenFill);
  const QPointF way = inside ? place - edge.Nearest : edge.Nearest - place;
  if (edge.Distance > 0) edge.Inward = way / edge.Distance;
  if (!inside) edge.Distance = -edge.Distance;
  return edge;
}

const QPolygonF* BoxAround(const Boxes& boxes, QPointF place) {
  const auto nearest = std::ranges::max_element(
      boxes, {}, [place](const QPolygonF& box) { return EdgeOf(box, place).Distance; });
  return nearest == boxes.end() ? nullptr : &*nearest;
}

constexpr double kTouch = 0.01;

/// Pushes a disc off the edges that it crosses, one after the other.
QPointF PushedInside(const QPolygonF& box, QPointF place, double radius) {
  constexpr int kPushes = 40;
  for (int push = 0; push < kPushes; ++push) {
    const Edge edge = EdgeOf(box, place);
    if (edge.Distance >= radius - kTouch) break;
    const QPointF inward = edge.Inward.isNull() ? box.boundingRect().center() - place : edge.Inward;
    place = edge.Nearest + inward / std::max(Length(inward), kTouch) * radius;
  }
  return place;
}

/// How far a chip can go up, or down, before it crosses an edge; as far as it is asked to.
double RoomFrom(const QPolygonF& box, QPointF place, double wanted, double direction) {
  constexpr double kStep = 0.2;
  double room = 0;
  while (room < wanted && EdgeOf(box, place + QPointF(0, direction * (room + kStep))).Distance >=
                              kChipRadius - 2 * kTouch)
    room += kStep;
  return std::min(room, wanted);
}

// ---- Piles ----

/// Buy chips lie on the Place chips of their number.
int PileOwner(int betId) { return IsBuy(betId) ? betId - kBuyOffset : betId; }

/// True when the record has a chip beside the one before because it lies on it.
bool FollowsInPile(const BetPiles& bet, QPointF told) {
  if (bet.Piles.empty() || bet.Piles[bet.LastPile].Pictures.empty()) return false;
  const QPointF step = told - bet.Last;
  return step.y() == 0 && std::abs(step.x()) == kPileStep;
}

void LayChip(BetPiles& bet, int betId, const Chip& chip) {
  QPointF told(chip.X, chip.Y);
  const QPointF step = told - bet.Last;
  const bool follows = FollowsInPile(bet, told);
  const bool heeled = !bet.Piles.empty() && betId == DontPassOdds && step == kHeelStep;
  bet.Last = told;
  if (heeled) told = bet.Piles[bet.LastPile].Told + kHeelStep;
  const QPointF place = IsChipStack(betId) ? ChipPosition(betId) : told;
  if (!follows) {
    const QPointF base = InsideBox(betId, place, kChipRadius);
    const auto found = std::ranges::find_if(
        bet.Piles, [base](const Pile& pile) { return Length(pile.Base - base) <= kOneSpot; });
    bet.LastPile = static_cast<std::size_t>(found - bet.Piles.begin());
    if (found == bet.Piles.end()) bet.Piles.push_back({base, told, {}, 0});
  }
  bet.Piles[bet.LastPile].Pictures.push_back(chip.Picture);
}

std::array<BetPiles, kSlots> PilesOfRecord() {
  std::array<BetPiles, kSlots> bets;
  const auto count = static_cast<std::size_t>(std::clamp(Game.ChipCount, 0, kMaxChips));
  for (const Chip& chip : std::span(Game.ChipList).first(count)) {
    if (chip.BetId <= 0 || chip.BetId >= kSlots || !IsShownOnTable(chip.BetId)) continue;
    const int owner = PileOwner(chip.BetId);
    LayChip(bets[static_cast<unsigned>(owner)], owner, chip);
  }
  return bets;
}

int EdgesOf(const Pile& pile) {
  return std::min(static_cast<int>(pile.Pictures.size()) - 1, kMostEdges);
}

/// Gives the pile its height, and moves it down where its top would cross the box.
void FitUnderTop(Pile& pile, const QPolygonF& box, double wanted) {
  const double up = RoomFrom(box, pile.Base, wanted, -1);
  const double down = RoomFrom(box, pile.Base, wanted - up, 1);
  pile.Base.ry() += down;
  pile.Height = up + down;
}

void FitIntoBox(Pile& pile, int betId) {
  const Boxes boxes = ChipBoxes(betId);
  const QPolygonF* box = BoxAround(boxes, pile.Base);
  const int edges = EdgesOf(pile);
  if (box == nullptr || edges == 0) return;
  double wanted = edges * kChipRise;
  if (IsComeOnNumber(betId) || IsDontComeOnNumber(betId)) wanted = std::min(wanted, kRoomUnderOdds);
  FitUnderTop(pile, *box, wanted);
  if (pile.Height >= kLeastRise) return;
  // In a narrow corner it moves out as far as is needed to be seen as a pile.
  pile.Base = PushedInside(*box, pile.Base, kChipRadius + kLeastRise);
  FitUnderTop(pile, *box, wanted);
}

void DrawPile(TablePiles& piles, int betId, const Pile& pile) {
  const auto last = static_cast<double>(pile.Pictures.size() - 1);
  const int edges =
      std::min(EdgesOf(pile), std::max(1, static_cast<int>(pile.Height / kLeastRise)));
  for (int i = 0; i <= edges; ++i) {
    const double share = edges == 0 ? 0 : double(i) / edges;
    const auto chip = static_cast<std::size_t>(std::lround(share * last));
    piles.Chips.push_back(
        {betId, pile.Pictures[chip], pile.Base - QPointF(0, share * pile.Height)});
  }
}

/// Piles lower on the table stand before those behind them.
void DrawPiles(TablePiles& piles, int betId, BetPiles& bet) {
  for (Pile& pile : bet.Piles) FitIntoBox(pile, betId);
  if (!bet.Piles.empty()) piles.Foot[static_cast<unsigned>(betId)] = bet.Piles.front().Base;
  std::ranges::stable_sort(bet.Piles, {}, [](const Pile& pile) { return pile.Base.y(); });
  for (const Pile& pile : bet.Piles) DrawPile(piles, betId, pile);
}

// ---- Amounts ----

bool HasMoney(int betId) { return Game.Bets[static_cast<unsigned>(betId)] != Currency(); }

/// The flat bet that odds belong to, and whose box has room for what they tell.
int FlatOf(int betId) {
  if (betId == DontPassOdds) return DontPass;
  return IsComeOdds(betId) || IsDontComeOdds(betId) ? betId - kOddsOffset : betId;
}

/// The bet whose tag tells the amount: the flat bet's for its odds, Place's for Buy.
int TagOwner(int betId) {
  const int owner = PileOwner(FlatOf(betId));
  return HasMoney(owner) ? owner : betId;
}

double WidthOf(const QString& text) {
  return TextOutline(text, Lettering::Plain, kTagCapital, 1e6).boundingRect().width();
}

/// The amount with what stands before its digits, in short where it would be squeezed too much to
/// be read.
QString AmountText(Currency amount, const QString& unit, double room) {
  const QString sign = (amount < Currency() ? QStringLiteral("-") : QString()) + unit;
  const QString text = sign + QString::fromStdString(MoneyText(Abs(amount)));
  if (WidthOf(text) * kWorstSqueeze <= room || Abs(amount) < Currency(1000)) return text;
  return sign + ChipLabel(Abs(amount), false);
}

/// The free width of a box between two heights, around `x`; empty where `x` isn't in the box.
QRectF SpanOf(const QPolygonF& box, double x, double top, double bottom) {
  const QRectF bounds = box.boundingRect();
  double left = bounds.left();
  double right = bounds.right();
  for (const double y : {top, bottom}) {
    if (!box.containsPoint({x, y}, Qt::OddEvenFill)) return {};
    for (qsizetype i = 0; i + 1 < box.size(); ++i) {
      const QPointF a = box[i];
      const QPointF b = box[i + 1];
      if ((a.y() <= y) == (b.y() <= y)) continue;
      const double cross = a.x() + (y - a.y()) / (b.y() - a.y()) * (b.x() - a.x());
      (cross <= x ? left : right) = cross <= x ? std::max(left, cross) : std::min(right, cross);
    }
  }
  return {left + kTagGap, top, right - left - 2 * kTagGap, bottom - top};
}

/// Where the tag of a pile may lie: below the print of its last chip, at its foot if the box has
/// the room.
QRectF TagRoom(const Boxes& boxes, QPointF foot, double height) {
  constexpr double kLeastWidth = 16;
  constexpr double kPrint = 2.65;  // what is printed on a chip ends that far below its centre
  const QPolygonF* box = BoxAround(boxes, foot);
  if (box == nullptr) return {};
  QRectF best;
  for (double drop = kTagDrop; drop >= kPrint - height; drop -= 0.1) {
    const double top = foot.y() + drop;
    const QRectF span = SpanOf(*box, foot.x(), top, top + kTagHeight + kTagGap);
    if (span.width() > best.width()) best = span;
    if (best.width() >= kLeastWidth) break;
  }
  best.setHeight(kTagHeight);
  return best;
}

struct TagBuild {
  std::vector<int> Bets;
  QPointF Foot;
  double Height = 0;  // of the pile
};

void AddTag(TablePiles& piles, int owner, const TagBuild& tag) {
  const QRectF room = TagRoom(ChipBoxes(FlatOf(owner)), tag.Foot, tag.Height);
  const double most = room.width() - kTagPadding;
  const double share = most / static_cast<double>(tag.Bets.size());
  AmountTag built;
  for (const int bet : tag.Bets) {
    const Currency amount = Game.Bets[static_cast<unsigned>(bet)];
    const bool first = built.Text.isEmpty();
    if (!first) built.Text += QStringLiteral(" + ");
    built.Text += AmountText(amount, first ? QStringLiteral("$") : QString(), share);
    built.Negative = built.Negative || amount < Currency();
  }
  const double width = std::min(most, WidthOf(built.Text)) + kTagPadding;
  const double left = std::clamp(tag.Foot.x() - width / 2, room.left(), room.right() - width);
  built.Rect = QRectF(left, room.top(), width, kTagHeight);
  if (most > 0) piles.Tags.push_back(std::move(built));
}

/// The ids of what can lie on the table, bets and shown Chip-Stacks.
std::vector<int> ShownIds() {
  std::vector<int> ids;
  for (int bet = Lay4; bet <= LastBet; ++bet)
    if (IsShownOnTable(bet)) ids.push_back(bet);
  ids.insert(ids.end(), Game.VisibleStacks.begin(), Game.VisibleStacks.end());
  return ids;
}

/// Below the lowest pile of a bet no chip of it is in the way.
void PutAtLowestPile(TagBuild& tag, const BetPiles& bet, QPointF footWithoutChips) {
  tag.Foot = bet.Piles.empty() ? footWithoutChips : bet.Piles.back().Base;
  tag.Height = bet.Piles.empty() ? 0 : bet.Piles.back().Height;
}

void LayOutTags(TablePiles& piles, const std::array<BetPiles, kSlots>& bets) {
  std::array<TagBuild, kSlots> tags;
  for (const int id : ShownIds()) {
    if (!HasMoney(id)) continue;
    TagBuild& tag = tags[static_cast<unsigned>(TagOwner(id))];
    if (tag.Bets.empty() || IsDontComeOdds(id))
      PutAtLowestPile(tag, bets[static_cast<unsigned>(PileOwner(id))],
                      piles.Foot[static_cast<unsigned>(id)]);
    tag.Bets.push_back(id);
  }
  for (const int id : ShownIds())
    if (const TagBuild& tag = tags[static_cast<unsigned>(id)]; !tag.Bets.empty())
      AddTag(piles, id, tag);
}

}  // namespace

bool IsShownOnTable(int betId) {
  if (IsChipStack(betId)) return VisibleStackPlace(betId) >= 0;
  if (!IsBet(betId)) return false;
  return Game.DisplayHopBets ? !IsOnPropPanelOnly(betId) : !IsOnHopPanelOnly(betId);
}

std::vector<QPolygonF> ChipBoxes(int betId) {
  static const std::array<Boxes, kBetSlots> onFelt = [] {
    std::array<Boxes, kBetSlots> boxes;
    for (int bet = Lay4; bet <= LastBet; ++bet)
      boxes[static_cast<unsigned>(bet)] = BoxesOnFelt(bet);
    return boxes;
  }();
  if (!IsShownOnTable(betId)) return {};
  if (const int place = VisibleStackPlace(betId); place >= 0)
    return {RectPolygon(StackSpotRect(place).adjusted(0, -0.5, 0, 1.5))};
  const QRectF cell = PanelCell(betId, Game.DisplayHopBets);
  return cell.isEmpty() ? onFelt[static_cast<unsigned>(betId)] : Boxes{RectPolygon(cell)};
}

QPointF InsideBox(int betId, QPointF place, double radius) {
  const Boxes boxes = ChipBoxes(betId);
  const QPolygonF* box = BoxAround(boxes, place);
  return box == nullptr ? place : PushedInside(*box, place, radius);
}

TablePiles LayOutPiles() {
  TablePiles piles;
  std::array<BetPiles, kSlots> bets = PilesOfRecord();
  for (const int id : ShownIds()) {
    QPointF& foot = piles.Foot[static_cast<unsigned>(id)];
    foot = IsBuy(id) && !bets[static_cast<unsigned>(PileOwner(id))].Piles.empty()
               ? piles.Foot[static_cast<unsigned>(PileOwner(id))]
               : InsideBox(id, ChipPosition(id), kChipRadius);
    DrawPiles(piles, id, bets[static_cast<unsigned>(id)]);
  }
  LayOutTags(piles, bets);
  return piles;
}

QRectF PuckPlace(const std::vector<DrawnChip>& chips) {
  constexpr double kDisc = 18.3 / 39;  // its radius with the shadow, of the square
  constexpr double kSmall = 23;
  const QRectF square = PuckRect(Game.Point);
  const double reach = square.width() * kDisc + kChipRadius;
  const bool covered = std::ranges::any_of(
      chips, [&](const DrawnChip& chip) { return Length(chip.Centre - square.center()) < reach; });
  if (!covered) return square;
  const QPointF corner = square.topRight() + QPointF(0.5 - kSmall, -1);
  return {corner, QSizeF(kSmall, kSmall)};
}
