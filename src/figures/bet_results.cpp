#include "figures/bet_results.h"

#include <array>

#include "bets/ledger.h"
#include "core/game_state.h"
#include "core/text.h"
#include "figures/luck.h"
#include "figures/sim_time.h"
#include "rules/advantage.h"

namespace {

constexpr std::array<const char*, kBetResultsRows> kLabels = {
    "Total #",     "Total $",     "High $",        "Low $",         "Average $",     "Last $",
    "Last roll #", "Last roll $", "Avg. # / hour", "Avg. $ / hour", "Expctd value $"};

constexpr std::string_view kNetPattern = "#,#.###;-#,#.###;0";
constexpr std::string_view kPercentPattern = "#,#.00 %;-#,#.00 %;0 %";
constexpr std::string_view kExpectedPattern = "0.0# %;-0.0# %;0 %";

/// The rows that show a stat as it is.
struct StatRow {
  BetResultsRowIndex Row;
  BetStat Stat;
};
constexpr std::array<StatRow, 7> kStatRows = {{{TotalCountRow, StatCount},
                                               {TotalAmountRow, StatSum},
                                               {HighRow, StatHighest},
                                               {LowRow, StatLowest},
                                               {LastRow, StatLast},
                                               {LastRollCountRow, StatRollCount},
                                               {LastRollAmountRow, StatRollAmount}}};

double Dollars(WideCount raw) { return static_cast<double>(raw) / Currency::kScale; }

bool IsWholeAmount(WideCount raw) { return raw % Currency::kScale == 0; }

// --- Cells ---

std::string CellText(WideCount raw) {
  return FormatAmount(raw, IsWholeAmount(raw) ? kWholePattern : kFourDecimals);
}
std::string CellText(double value) {
  return FormatNumber(value, IsWhole(value) ? kWholePattern : kFourDecimals);
}
std::string NetText(WideCount raw) {
  return FormatAmount(raw, IsWholeAmount(raw) ? kWholePattern : kNetPattern);
}
std::string NetText(double value) {
  return FormatNumber(value, IsWhole(value) ? kWholePattern : kNetPattern);
}

void FillNet(BetResultsRow& row, double net, double wagers, std::string_view pattern) {
  row.NetPct = wagers == 0 ? "0 %" : FormatNumber(net / wagers, pattern);
  row.NetColor = net < 0 ? PaletteRed : PaletteDarkBlue;
}

/// A row of the three columns, of either kind of number.
template <class Number>
void FillRow(BetResultsRow& row, Number wagers, Number wins, Number losses) {
  row.Wagers = CellText(wagers);
  row.Wins = CellText(wins);
  row.Losses = CellText(losses);
  row.Net = NetText(wins - losses);
  FillNet(row, static_cast<double>(wins - losses), static_cast<double>(wagers), kPercentPattern);
}

// --- Rows ---

double Average(const WideStats& stats) {
  return stats[StatCount] > 0 ? Dollars(stats[StatSum]) / Dollars(stats[StatCount]) : 0;
}

void FillPerHour(BetResultsRow& row, const BetSums& sums, BetStat stat, double hours) {
  const auto perHour = [stat, hours](const WideStats& stats) {
    return hours > 0 ? Dollars(stats[stat]) / hours : 0;
  };
  FillRow(row, perHour(sums.Wagers), perHour(sums.Wins), perHour(sums.Losses));
}

void FillExpected(BetResultsRow& row, double expected, const BetSums& sums) {
  row.Net = NetText(expected);
  FillNet(row, expected, Dollars(sums.Wagers[StatSum]), kExpectedPattern);
}

/// What the selected bets have brought, what they should have, and what stands on them.
struct Selected {
  BetSums Sums;
  double Expected = 0;
  Currency OnBets;
  Currency OnBetsLastRoll;
  bool Any = false;
};

Selected SumSelected(const BetSelection& selection) {
  Selected result;
  for (int betId = Lay4; betId <= LastBet; ++betId) {
    const auto id = static_cast<unsigned>(betId);
    if (!selection.Selected[id]) continue;
    const BetSums sums = SumsOfBet(betId, selection.Data);
    result.Any = true;
    AddSums(result.Sums, sums);
    if (sums.Wagers[StatSum] != 0)
      result.Expected += Dollars(sums.Wagers[StatSum]) * FigureAdvantage(betId).EVDec;
    result.OnBets += Game.Bets[id];
    result.OnBetsLastRoll += Game.BetsAtRoll[id];
  }
  return result;
}

void FillRows(std::vector<BetResultsRow>& rows, const Selected& selected, double hours) {
  const BetSums& sums = selected.Sums;
  rows.resize(kBetResultsRows);
  for (std::size_t row = 0; row < rows.size(); ++row) rows[row].Label = kLabels[row];
  for (const auto [row, stat] : kStatRows)
    FillRow(rows[row], sums.Wagers[stat], sums.Wins[stat], sums.Losses[stat]);
  FillRow(rows[AverageRow], Average(sums.Wagers), Average(sums.Wins), Average(sums.Losses));
  FillPerHour(rows[CountPerHourRow], sums, StatCount, hours);
  FillPerHour(rows[AmountPerHourRow], sums, StatSum, hours);
  FillExpected(rows[ExpectedRow], selected.Expected, sums);
}

std::string EmptyText(const Selected& selected) {
  if (!selected.Any) return "Select one or more bets to see their results.";
  return selected.Sums.Wagers[StatCount] == 0 ? "None of the selected bets has been decided yet."
                                              : "";
}

}  // namespace

BetResults FigureBetResults(const BetSelection& selection) {
  SettleLedger();
  const Selected selected = SumSelected(selection);
  const std::int64_t rolls = RollsOf(selection.Data);
  const Luck luck = FigureLuck(selection);
  BetResults results;
  results.TotalRolls = CountText(rolls);
  results.RollsPerHour = RollsPerHourText();
  results.SimHours = SimHoursText(rolls);
  results.OnBets = MoneyText(selected.OnBets);
  results.OnBetsLastRoll = MoneyText(selected.OnBetsLastRoll);
  FillRows(results.Rows, selected, SimHours(rolls));
  results.Luck = LuckText(luck);
  results.LuckTip = LuckTip(luck);
  results.Empty = EmptyText(selected);
  return results;
}

TextTable TableOf(const BetResults& results, const BetSelection& selection) {
  std::string names;
  for (int betId = Lay4; betId <= LastBet; ++betId)
    if (selection.Selected[static_cast<unsigned>(betId)])
      names += (names.empty() ? "" : ", ") + BetName(betId);
  TextTable table{"Bet Results", {"", "Wagers", "Wins", "Losses", "Net", "Net %"}, {}};
  table.Rows = {{"Bets:", names, "", "", "", ""},
                {"Total rolls:", results.TotalRolls, "", "", "", ""},
                {"Rolls / hr:", results.RollsPerHour, "", "", "", ""},
                {"Sim hrs:", results.SimHours, "", "", "", ""}};
  for (const BetResultsRow& row : results.Rows)
    table.Rows.push_back({row.Label, row.Wagers, row.Wins, row.Losses, row.Net, row.NetPct});
  table.Rows.push_back({"Luck", results.Luck, "", "", "", ""});
  return table;
}
