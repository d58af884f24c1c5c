#include "stats/bankroll_graph.h"

#include <algorithm>

#include "stats/graph_view.h"

namespace {

constexpr int kPreviousPageEnd = 2 * kGraphPoints;

Currency& History(int point) { return Game.BankrollHistory[static_cast<unsigned>(point)]; }

/// A sum of bankrolls in ten-thousandths, which money has no room for.
__extension__ using WideSum = __int128;

Currency Mean(WideSum sum, int count) {
  if (count <= 0) return {};
  const auto counted = static_cast<double>(Currency(count).Raw());
  // Most sums fit into 64 bits, which are converted at a fraction of the cost.
  const auto narrow = static_cast<std::int64_t>(sum);
  const double dividend = narrow == sum ? static_cast<double>(narrow) : static_cast<double>(sum);
  return Currency::FromDouble(dividend / counted);
}

/// The mean over all rolls of the game, as far as a point; the page keeps only its own rolls, so
/// that any point but the newest is taken for the one before it.
Currency MeanOfGame(int point) {
  const int rolls = Game.RollCount[0];
  if (point >= Game.BankrollHistoryCount) return Mean(Game.BankrollSum.Raw(), rolls);
  return Mean(WideSum{Game.BankrollSum.Raw()} - Bankroll().Raw(), rolls - 1);
}

/// The mean of `span` points back from a point, or of as many as there are.
Currency MeanOfSpan(int point, int span) {
  const bool earlierPage = Game.RollCount[0] > kGraphPoints;
  WideSum sum = 0;
  int summed = 0;
  for (int at = point; summed < span && at > 0; ++summed) {
    sum += History(at).Raw();
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

void RecomputeMeansOfGame(int newest) {
  WideSum sum = Game.BankrollSum.Raw();
  int rolls = Game.RollCount[0];
  const int last = Game.BankrollHistoryCount;
  for (int point = last; point > std::max(last - newest, 0); --point, --rolls) {
    Game.BankrollAverage[static_cast<unsigned>(point)] = Mean(sum, rolls);
    sum -= History(point).Raw();
  }
}

/// What `MeanOfSpan` says of each point: the sum of the point before takes one in and lets one go.
void RecomputeMeansOfSpan(int newest, int span) {
  const bool earlierPage = Game.RollCount[0] > kGraphPoints;
  const auto at = [](int point) {
    return History(point > 0 ? point : point + kPreviousPageEnd).Raw();
  };
  const int last = Game.BankrollHistoryCount;
  const int first = std::max(last - newest, 0) + 1;
  const int oldest = earlierPage ? 1 - kGraphPoints : 1;
  WideSum sum = 0;
  for (int point = std::max(first - span, oldest); point < first; ++point) sum += at(point);
  for (int point = first; point <= last; ++point) {
    sum += at(point);
    const int gone = point - span;
    if (gone >= oldest) sum -= at(gone);
    Game.BankrollAverage[static_cast<unsigned>(point)] =
        Mean(sum, std::min(span, point - oldest + 1));
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

void RecomputeAverages(int newest) {
  if (Game.BankrollAverageSpan > 0)
    RecomputeMeansOfSpan(newest, std::min(Game.BankrollAverageSpan, kGraphPoints));
  else
    RecomputeMeansOfGame(newest);
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

void SetBankrollAverageSpan(long long span) {
  Game.BankrollAverageSpan = static_cast<int>(std::clamp<long long>(span, 0, kGraphPoints));
  RecomputeBankrollAverage();
}
