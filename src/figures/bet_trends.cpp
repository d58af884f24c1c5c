#include "figures/bet_trends.h"

#include "core/game_state.h"
#include "core/text.h"

std::vector<BetTrend> FigureBetTrends() {
  std::vector<BetTrend> trends;
  for (int betId = Lay4; betId <= LastBet; ++betId) {
    const int streak = Game.BetOutcome[static_cast<unsigned>(betId)][1];
    BetTrend trend{betId, BetName(betId), "", PaletteBlack};
    if (streak != 0) {
      trend.Streak = CountText(streak);
      trend.Color = streak < 0 ? PaletteRed : PaletteBlue;
    }
    trends.push_back(std::move(trend));
  }
  return trends;
}

TextTable TableOf(const std::vector<BetTrend>& trends) {
  TextTable table{std::string(kBetTrendsHeading), {"Bet", "Trend"}, {}};
  for (const BetTrend& trend : trends) table.Rows.push_back({trend.Name, trend.Streak});
  return table;
}
