#include "bets/forecast.h"

#include <algorithm>

#include "bets/decide_bet.h"
#include "bets/decision_table.h"

namespace {

constexpr int kThrows = 36;

int WaysOf(int die1, int die2) { return die1 == die2 ? 1 : 2; }

/// The throws of a total in rows of equal nets, easy throws before the pair.
std::vector<ForecastRow> RowsOfTotal(int total) {
  std::vector<ForecastRow> rows;
  for (int low = std::max(1, total - 6); 2 * low <= total; ++low) {
    const int high = total - low;
    const Currency net = NetIfRolled(low, high);
    const auto same = std::find_if(rows.begin(), rows.end(),
                                   [&](const ForecastRow& row) { return row.Net == net; });
    if (same == rows.end())
      rows.push_back({total, low, high, WaysOf(low, high), net});
    else
      same->Ways += WaysOf(low, high);
  }
  // The row of the total comes first.
  std::stable_sort(rows.begin(), rows.end(),
                   [](const ForecastRow& a, const ForecastRow& b) { return a.Ways > b.Ways; });
  rows.front().Die1 = rows.front().Die2 = 0;
  return rows;
}

}  // namespace

Currency NetIfRolled(int die1, int die2) {
  const DecidedThrow thrown{die1, die2, Game.Point};
  Currency net;
  for (const DecisionStep& step : DecisionsOf(Game.Point, die1, die2, Game.BarDont)) {
    if (step.Kind != StepKind::Decide || Game.BetWorking[step.Bet] < Working) continue;
    const Currency bet = Game.Bets[step.Bet];
    if (bet == 0) continue;
    net +=
        FigurePayoff(FigureReal, step.Bet, static_cast<DecisionCode>(step.Code), bet, thrown).Net;
  }
  return net;
}

std::vector<ForecastRow> ForecastRolls() {
  std::vector<ForecastRow> rows;
  for (int total = 2; total <= 12; ++total)
    for (const ForecastRow& row : RowsOfTotal(total)) rows.push_back(row);
  return rows;
}

Currency MeanOfForecast(const std::vector<ForecastRow>& rows) {
  Currency sum;
  for (const ForecastRow& row : rows) sum += row.Net * row.Ways;
  return Currency::FromCount(sum / Currency(kThrows) * Currency::kScale);
}
