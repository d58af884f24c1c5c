#include "screens/table/bet_focus.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "core/game_state.h"
#include "screens/table/pile_layout.h"
#include "screens/table/table_layout.h"

namespace {

/// How far a step goes along its direction, and across it.
struct Step {
  double Along;
  double Across;
};

Step StepOf(QPointF way, Way direction) {
  switch (direction) {
    case Way::Left: return {-way.x(), std::abs(way.y())};
    case Way::Right: return {way.x(), std::abs(way.y())};
    case Way::Up: return {-way.y(), std::abs(way.x())};
    default: return {way.y(), std::abs(way.x())};
  }
}

/// The bet that is least far from a place, as `farness` tells; infinite for one that won't do.
template <typename Farness>
int Nearest(int otherwise, const Farness& farness) {
  int nearest = otherwise;
  double least = std::numeric_limits<double>::infinity();
  for (const int bet : BetsInReach()) {
    const double far = farness(ChipPosition(bet));
    if (far >= least) continue;
    least = far;
    nearest = bet;
  }
  return nearest;
}

double Length(QPointF way) { return std::hypot(way.x(), way.y()); }

}  // namespace

bool IsInReach(int betId) {
  if (!IsShownOnTable(betId)) return false;
  const auto holds = [](int id) { return Game.Bets[static_cast<unsigned>(id)] > Currency(); };
  if (IsPlace(betId)) return !holds(betId + kBuyOffset);
  if (IsBuy(betId)) return holds(betId);
  const bool odds = holds(DontPass) && Game.Point != 0;
  if (betId == DontPass) return !odds;
  return betId != DontPassOdds || odds;
}

std::vector<int> BetsInReach() {
  std::vector<int> bets;
  for (int bet = Lay4; bet <= LastBet; ++bet)
    if (IsInReach(bet)) bets.push_back(bet);
  return bets;
}

int NextBet(int betId, Way way) {
  const QPointF from = ChipPosition(betId);
  if (!IsInReach(betId))
    return Nearest(betId, [from](QPointF place) { return Length(place - from); });
  constexpr double kNever = std::numeric_limits<double>::infinity();
  for (const bool aside : {false, true}) {
    const int next = Nearest(betId, [&](QPointF place) {
      const Step step = StepOf(place - from, way);
      const bool fits = step.Along > 0 && (aside || step.Across <= step.Along);
      return fits ? Length(place - from) : kNever;
    });
    if (next != betId) return next;
  }
  return betId;
}

QPainterPath RegionOfBet(int betId) {
  if (const QPainterPath& outline = SpotOutline(betId == DontPassOdds ? int(DontPass) : betId);
      !outline.isEmpty())
    return outline;
  QPainterPath region;
  for (const QPolygonF& box : ChipBoxes(betId)) region.addPolygon(box);
  return region;
}
