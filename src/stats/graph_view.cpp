#include "stats/graph_view.h"

#include <cmath>

namespace {

Currency History(int point) { return Game.BankrollHistory[static_cast<unsigned>(point)]; }

constexpr int kRoom = 250;      // what the page may span before the scale widens
constexpr int kLinesAbove = 3;  // lines above the centre

constexpr std::int64_t kSmallestStep = 100;  // a hundredth, in ten-thousandths
constexpr std::int64_t kLargestStep = 40'000LL * 1'000'000 * Currency::kScale;

/// The first step of the ladder above `scale`.
Currency StepAbove(Currency scale) {
  std::int64_t decade = kSmallestStep;
  while (true) {
    for (const std::int64_t factor : {1, 2, 4}) {
      const Currency step = Currency::FromRaw(decade * factor);
      if (step > scale || decade * factor >= kLargestStep) return step;
    }
    decade *= 10;
  }
}

Currency TopAbove(Currency value) {
  const Currency line = Game.GraphScale * kGraphLine;
  return WholeTimes(Int(value / line) + kLinesAbove, line);
}

/// What the graph is centred on.
Currency CentreOf(ReferenceLines lines) {
  if (!Game.BankrollRefLines) return Bankroll();
  const bool first = lines.First > 0 && lines.First <= Game.BankrollHistoryCount;
  const bool second = lines.Second > 0 && lines.Second <= Game.BankrollHistoryCount;
  if (first && second)
    return Currency::FromDouble((History(lines.First) + History(lines.Second)) / Currency(2));
  if (first) return History(lines.First);
  return second ? History(lines.Second) : Bankroll();
}

void WidenScale() {
  while (Game.GraphPeriodHigh - Game.GraphPeriodLow > Game.GraphScale * kRoom) {
    const Currency wider = StepAbove(Game.GraphScale);
    if (wider <= Game.GraphScale) return;
    Game.GraphScale = wider;
    Game.GraphTop = TopAbove(Game.GraphPeriodHigh);
  }
}

void MoveTop() {
  const Currency line = Game.GraphScale * kGraphLine;
  const Currency above = Game.GraphPeriodHigh - Game.GraphTop;
  if (above > 0) Game.GraphTop += WholeTimes(std::ceil(above / line), line);
  const Currency below = Game.GraphTop - Game.GraphScale * kGraphPanel - Game.GraphPeriodLow;
  if (below > 0) Game.GraphTop -= WholeTimes(std::ceil(below / line), line);
}

}  // namespace

Currency NextGraphScale(Currency scale) { return StepAbove(scale); }

Currency PreviousGraphScale(Currency scale) {
  Currency below = Currency::FromRaw(kSmallestStep);
  for (Currency step = below; step < scale; step = StepAbove(step)) below = step;
  return below;
}

void RefitGraph(bool recentre, ReferenceLines lines) {
  constexpr int kSnapBack = 2;
  if (Game.GraphScale <= 0) Game.GraphScale = 1;
  if (Game.BankrollAutoAdjustType == kSnapBack && Game.BankrollHistoryCount == 0)
    Game.GraphScale = Game.GraphBaseScale;
  if (recentre) Game.GraphTop = TopAbove(CentreOf(lines));
  if (Game.BankrollAutoAdjustType == 0) return;
  WidenScale();
  MoveTop();
}

void SetGraphScale(Currency scale, ReferenceLines lines) {
  Game.GraphScale = scale;
  Game.GraphBaseScale = scale;
  RefitGraph(true, lines);
}

void MoveZeroLine(int lines) {
  Game.GraphTop -= Game.GraphScale * kGraphLine * lines;
  RefitGraph(false);
}
