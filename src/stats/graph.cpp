#include "stats/graph.h"

#include <algorithm>

namespace {

constexpr int kPreviousPageEnd = 2 * kGraphPoints;

Currency& History(int point) { return Game.BankrollHistory[static_cast<unsigned>(point)]; }

Currency Mean(Currency sum, int count) {
  return count > 0 ? Currency::FromDouble(sum / Currency(count)) : Currency();
}

/// The mean over all rolls of the game, as far as a point; the page keeps only its own rolls, so
/// that any point but the newest is taken for the one before it.
Currency MeanOfGame(int point) {
  const int rolls = Game.RollCount[0];
  if (point >= Game.BankrollHistoryCount) return Mean(Game.BankrollSum, rolls);
  return Mean(Game.BankrollSum - Bankroll(), rolls - 1);
}

/// The mean of `span` points back from a point, or of as many as there are.
Currency MeanOfSpan(int point, int span) {
  const bool earlierPage = Game.RollCount[0] > kGraphPoints;
  Currency sum;
  int summed = 0;
  for (int at = point; summed < span && at > 0; ++summed) {
    sum += History(at);
    --at;
    if (at == 0 && earlierPage) at = kPreviousPageEnd;
  }
  return Mean(sum, summed);
}

void StartPage() {
  Game.BankrollHistoryCount = 0;
  Game.BankrollAverage = {};
  History(0) = Game.RollCount[0];
  Game.GraphPeriodHigh = Bankroll();
  Game.GraphPeriodLow = Bankroll();
  RefitGraph(Game.BankrollAutoAdjustType > 0);
}

void TurnPage() {
  const auto page = Game.BankrollHistory.begin() + 1;
  std::copy(page, page + kGraphPoints, page + kGraphPoints);
  StartPage();
}

void RecomputeMeansOfGame() {
  Currency sum = Game.BankrollSum;
  int rolls = Game.RollCount[0];
  for (int point = Game.BankrollHistoryCount; point > 0; --point, --rolls) {
    Game.BankrollAverage[static_cast<unsigned>(point)] = Mean(sum, rolls);
    sum -= History(point);
  }
}

void RecomputePeriod() {
  if (Game.BankrollHistoryCount < 1) {
    Game.GraphPeriodHigh = Game.GraphPeriodLow = Bankroll();
    return;
  }
  const auto first = Game.BankrollHistory.begin() + 1;
  const auto [low, high] = std::minmax_element(first, first + Game.BankrollHistoryCount);
  Game.GraphPeriodLow = *low;
  Game.GraphPeriodHigh = *high;
}

}  // namespace

void AddBankrollPoint(bool withAverage) {
  const Currency bankroll = Bankroll();
  // A new page first: its scale has nothing to do with what the old one spanned.
  if (Game.BankrollHistoryCount >= kGraphPoints) TurnPage();
  if (bankroll > Game.GraphPeriodHigh || bankroll < Game.GraphPeriodLow) {
    Game.GraphPeriodHigh = std::max(Game.GraphPeriodHigh, bankroll);
    Game.GraphPeriodLow = std::min(Game.GraphPeriodLow, bankroll);
    RefitGraph(false);
  }
  const int point = ++Game.BankrollHistoryCount;
  History(point) = bankroll;
  if (!withAverage) return;
  Game.BankrollAverage[static_cast<unsigned>(point)] =
      BankrollMovingAverage(point, Game.BankrollAverageSpan);
}

Currency BankrollMovingAverage(int point, int span) {
  return span > 0 ? MeanOfSpan(point, std::min(span, kGraphPoints)) : MeanOfGame(point);
}

void RecomputeAverages() {
  if (Game.BankrollAverageSpan > 0) {
    for (int point = 1; point <= Game.BankrollHistoryCount; ++point) {
      Game.BankrollAverage[static_cast<unsigned>(point)] =
          BankrollMovingAverage(point, Game.BankrollAverageSpan);
    }
  } else {
    RecomputeMeansOfGame();
  }
}

void RecomputeBankrollAverage() {
  RecomputeAverages();
  RecomputePeriod();
}

void RestartGraph() {
  Game.BankrollHistory = {};
  Game.BankrollAverage = {};
  Game.BankrollHistoryCount = 0;
  History(0) = 1;  // the page begins with roll 1
  Game.GraphPeriodHigh = Bankroll();
  Game.GraphPeriodLow = Bankroll();
  Game.GraphScale = 1;
  RefitGraph(true);
}

namespace {

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
  if (first && second) return Mean(History(lines.First) + History(lines.Second), 2);
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

void SetBankrollAverageSpan(long long span) {
  Game.BankrollAverageSpan = static_cast<int>(std::clamp<long long>(span, 0, kGraphPoints));
  RecomputeAverages();
}
