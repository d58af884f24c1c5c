#include "figures/summary.h"

#include "bets/ledger.h"
#include "core/game_state.h"
#include "core/number_format.h"
#include "core/text.h"
#include "figures/bet_sums.h"
#include "figures/sim_time.h"
#include "rules/comps.h"

namespace {

std::string Count(int count) { return FormatNumber(count, kWholePattern); }
std::string Stat(ShooterStat stat) { return Count(Game.ShooterStats[stat]); }

/// The mean of a counter over finished hands.
std::string PerHand(ShooterStat sum) {
  const int hands = Game.ShooterStats[ShootersFinished];
  return FormatNumber(hands > 0 ? static_cast<double>(Game.ShooterStats[sum]) / hands : 0,
                      kStandardPattern);
}

int ColorOf(bool negative) { return negative ? PaletteRed : PaletteBlack; }

SummaryRow MoneyRow(std::string_view control, std::string label, Currency amount) {
  return {control, std::move(label), MoneyText(amount), ColorOf(amount < 0)};
}

/// An average that doesn't come to whole dollars shows its cents.
SummaryRow AverageBankroll() {
  const int rolls = Game.RollCount[0];
  const double average = rolls > 0 ? Game.BankrollSum.ToDouble() / rolls : 0;
  return {"lblBankrollAverage",
          "Average:", FormatNumber(average, IsWhole(average) ? kWholePattern : kStandardPattern),
          ColorOf(average < 0)};
}

// --- Groups ---

SummaryGroup Time() {
  return {"",
          {{"lblTotalRolls", "Total rolls:", Count(Game.RollCount[0])},
           {"lblRollsPerHour", "Rolls / hr:", RollsPerHourText()},
           {"lblHours", "Sim hrs:", SimHoursText(Game.RollCount[0])},
           {"lblCompValue", "Total comp value:", CompValueText(FigureComps(CompsForSummary))}}};
}

SummaryGroup BankrollGroup() {
  return {" Bankroll:",
          {MoneyRow("lblBankrollHigh", "High:", Game.BankrollHigh),
           MoneyRow("lblBankroll", "Current:", Bankroll()),
           MoneyRow("lblBankrollLow", "Low:", Game.BankrollLow), AverageBankroll()}};
}

BetSums SumsOfAllBets() {
  BetSums sums;
  for (int betId = Lay4; betId <= LastBet; ++betId)
    AddSums(sums, SumsOfBet(betId, BetData::ActualWagers));
  return sums;
}

/// The names of the labels of one of the two blocks of bets.
struct BetControls {
  std::string_view Decided, Won, Lost, NetLabel, Net, Percentage;
};

SummaryGroup BetGroup(std::string_view heading, const BetSums& sums, BetStat stat,
                      const BetControls& controls) {
  const auto text = [](WideCount raw) {
    const bool whole = raw % Currency::kScale == 0;
    return FormatAmount(raw, whole ? kWholePattern : kStandardPattern);
  };
  const WideCount decided = sums.Wagers[stat];
  const WideCount net = sums.Wins[stat] - sums.Losses[stat];
  const double share = decided == 0 ? 0 : static_cast<double>(net) / static_cast<double>(decided);
  const std::string netLabel = net < 0 ? "Net loss:" : "Net win:";
  return {
      heading,
      {{controls.Decided, "Bets decided:", text(decided)},
       {controls.Won, "Bets won:", text(sums.Wins[stat])},
       {controls.Lost, "Bets lost:", text(sums.Losses[stat])},
       {controls.Net, netLabel, text(net), ColorOf(net < 0), controls.NetLabel},
       {controls.Percentage, "", FormatNumber(share, "#,#.00%;-#,#.00%;0%"), ColorOf(net < 0)}}};
}

SummaryGroup Hands() {
  return {" Hands:",
          {{"lblHandTotal", "Total completed:", Stat(ShootersFinished)},
           {"lblHandLongestRolls", "Longest #  of rolls:", Stat(MostRollsByShooter)},
           {"lblHandAverageRolls", "Average # of rolls:", PerHand(FinishedRollsSum)},
           {"lblHandLongestPasses", "Most passes:", Stat(MostPassesByShooter)},
           {"lblHandAveragePasses", "Average # of passes:", PerHand(FinishedPassesSum)},
           {"lblHandCurrentRolls", "# of rolls (current hand):", Stat(ShooterRolls)},
           {"lblHandCurrentPasses", "# of passes (current hand):", Stat(ShooterPasses)}}};
}

SummaryGroup Passes() {
  return {"",
          {{"lblNumComeoutRolls", "# of come-out rolls:", Stat(ComeOutRolls)},
           {"lblPassesComeout", "# that passed (7, 11):", Stat(PassesByNatural)},
           {"lblDontPassesComeout", "# that missed (2, 3, 12):", Stat(MissesOnComeOut)},
           {"lblNumPointsEstablished", "# of points established:", Stat(PointsEstablished)},
           {"lblPassesPoints", "# that passed (rolled point):", Stat(PassesByPoint)},
           {"lblDontPassesPoints", "# that missed (seven-out):", Stat(MissesBySevenOut)},
           {"lblTotalPasses", "Total passes:",
            Count(Game.ShooterStats[PassesByNatural] + Game.ShooterStats[PassesByPoint])},
           {"lblTotalDontPasses", "Total misses:",
            Count(Game.ShooterStats[MissesOnComeOut] + Game.ShooterStats[MissesBySevenOut])}}};
}

}  // namespace

std::vector<SummaryGroup> FigureSummary() {
  SettleLedger();
  const BetSums sums = SumsOfAllBets();
  return {Time(),
          BankrollGroup(),
          BetGroup(" Total number of:", sums, StatCount,
                   {"lblNumBetsDecided", "lblNumBetsWon", "lblNumBetsLost", "lblNetNum",
                    "lblNumBetsNet", "lblNumBetsNetPercentage"}),
          BetGroup(" Total $ amount of:", sums, StatSum,
                   {"lblAmountBetsMade", "lblAmountBetsWon", "lblAmountBetsLost", "lblNetAmount",
                    "lblAmountBetsNet", "lblAmountBetsNetPercentage"}),
          Hands(),
          Passes()};
}

TextTable TableOf(const std::vector<SummaryGroup>& summary) {
  TextTable table{"Summary", {}, {}};
  for (const SummaryGroup& group : summary) {
    if (!group.Heading.empty()) table.Rows.push_back({std::string(group.Heading), ""});
    for (const SummaryRow& row : group.Rows) table.Rows.push_back({row.Label, row.Text});
  }
  return table;
}
