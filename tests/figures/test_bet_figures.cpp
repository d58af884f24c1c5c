// Bet sums, trends and the summary, and the games before this one.

#include "figures/bet_results.h"
#include "figures/bet_sums.h"
#include "figures/bet_trends.h"
#include "figures/summary.h"
#include "persistence/game_file.h"
#include "stats/bet_tables.h"
#include "support/table_fixture.h"

namespace {

class BetFigures : public TableTest {
 protected:
  /// Field wins 20 on 10 and loses 5, then 15; Place 6 loses 12.
  static void Decide() {
    RecordBetOutcome(Actual, Field, 10, 20);
    RecordBetOutcome(Actual, Field, 5, -5);
    RecordBetOutcome(Actual, Field, 15, -15);
    RecordBetOutcome(Actual, Place6, 12, -12);
    Game.RollCount[0] += 3;
  }

  static std::map<std::string, SummaryRow> Summary() {
    std::map<std::string, SummaryRow> rows;
    for (const SummaryGroup& group : FigureSummary())
      for (const SummaryRow& row : group.Rows) rows[std::string(row.Control)] = row;
    return rows;
  }
};

TEST_F(BetFigures, TotalsRowAddsTheStatsOfARangeAndStaysWithinMoney) {
  Decide();
  SumBetStats(Place4, Field, true);
  EXPECT_EQ(Game.BetWagers[Actual][0], (BetStats{0, 4, 42, 27, 17, 27, 2, 27}));
  SumBetStats(Field, Field, false);
  EXPECT_EQ(Game.BetLosses[Actual][0][StatSum], Currency(12 + 2 * 20));
  const Currency most = Currency::FromRaw(INT64_MAX);
  Game.BetWins[Actual][Field][StatSum] = Game.BetWins[Actual][Place6][StatSum] = most;
  SumBetStats(Lay4, LastBet, true);
  EXPECT_EQ(Game.BetWins[Actual][0][StatSum], most);
}

TEST_F(BetFigures, GamesThatEndJoinTheSumOfAllAndTheRunningOneIsSeen) {
  Decide();
  NewGame(false);
  EXPECT_EQ(Game.WagerSquares[Field], 0);
  RecordBetOutcome(Actual, Field, 2, 2);
  Game.RollCount[0] = 1;
  BetSums sums = SumsOfBet(Field, BetData::AllGames);
  const auto dollars = [](WideCount raw) { return static_cast<double>(raw) / Currency::kScale; };
  EXPECT_EQ(dollars(sums.Wagers[StatCount]), 4);
  EXPECT_EQ(dollars(sums.Wagers[StatSum]), 32);
  EXPECT_EQ(dollars(sums.Wagers[StatHighest]), 15);
  EXPECT_EQ(dollars(sums.Wagers[StatLowest]), 2);
  EXPECT_EQ(dollars(sums.Wagers[StatLast]), 2);
  EXPECT_EQ(dollars(sums.Losses[StatLast]), 15) << "of the game before";
  EXPECT_EQ(dollars(sums.Wagers[StatRollCount]), 1);
  EXPECT_EQ(sums.Squares, 100 + 25 + 225 + 4);
  EXPECT_EQ(RollsOf(BetData::AllGames), 4);
  EXPECT_EQ(RollsOf(BetData::ActualWagers), 1);
  AddSums(sums, SumsOfBet(Place6, BetData::AllGames));
  EXPECT_EQ(dollars(sums.Wagers[StatLowest]), 2);
  EXPECT_EQ(dollars(sums.Losses[StatLast]), 27);
}

TEST_F(BetFigures, ASelectionIsKeptWithTheGameAndSquaresAreMended) {
  const ScratchFolder folder("bet_figures");
  Game.DataPath = folder / "";
  EXPECT_EQ(KeptSelection(), BetSelection());
  BetSelection selection;
  selection.Selected[Lay4] = selection.Selected[Hop55] = true;
  selection.Data = BetData::AllGames;
  KeepSelection(selection);
  Decide();
  Game.RollCount = {};
  Game.BetWagers = Game.BetWins = Game.BetLosses = {};
  RecordBetOutcome(Actual, Hop55, 3, -3);
  Game.WagerSquares[Field] = 7;  // of no wager
  SaveGame(folder / "a.crp");
  KeepSelection({});
  Game.WagerSquares = {};
  OpenGame(folder / "a.crp", true);
  EXPECT_EQ(KeptSelection(), selection);
  EXPECT_EQ(Game.WagerSquares[Field], 0);
}

TEST_F(BetFigures, TrendsShowLossesInRedAndNothingForNothing) {
  Game.BetOutcome[Field][1] = -3;
  Game.BetOutcome[Lay4][1] = 2;
  const auto trends = FigureBetTrends();
  ASSERT_EQ(trends.size(), 83U);
  EXPECT_TRUE(trends[Field - 1].Streak == "-3" && trends[Field - 1].Color == PaletteRed);
  EXPECT_TRUE(trends[0].Streak == "2" && trends[0].Color == PaletteBlue);
  EXPECT_EQ(trends[PassLine - 1].Streak, "");
}

TEST_F(BetFigures, TheSummaryTellsTheWholeGame) {
  auto rows = Summary();
  EXPECT_EQ(rows["lblHandAverageRolls"].Text, "0");
  EXPECT_EQ(rows["lblBankrollAverage"].Text, "0");
  EXPECT_EQ(rows["lblNumBetsNetPercentage"].Text, "0%");
  EXPECT_EQ(rows["lblNumBetsNet"].Label, "Net win:");
  Decide();
  Game.SimRollsPerHour = Currency::FromRaw(1'205'000);
  Game.BankrollSum = -1000;
  Game.BankrollLow = -500;
  rows = Summary();
  const std::pair<const char*, const char*> told[] = {{"lblRollsPerHour", "120.5"},
                                                      {"lblHours", ".0249"},
                                                      {"lblBankrollAverage", "-333.33"},
                                                      {"lblNumBetsDecided", "4"},
                                                      {"lblNumBetsNet", "-2"},
                                                      {"lblAmountBetsNet", "-12"},
                                                      {"lblAmountBetsNetPercentage", "-28.57%"}};
  for (const auto& [control, text] : told) EXPECT_EQ(rows[control].Text, text) << control;
  EXPECT_EQ(rows["lblBankrollLow"].Color, PaletteRed);
  EXPECT_EQ(rows["lblNumBetsNet"].Label, "Net loss:");
  Game.ShooterStats[ShootersFinished] = 3;
  Game.ShooterStats[FinishedRollsSum] = 100'000'000;
  EXPECT_EQ(Summary()["lblHandAverageRolls"].Text, "33,333,333.33");
}

TEST_F(BetFigures, ElevenRowsOfAnySelectionAndItsLuck) {
  Decide();
  Game.RollCount[0] = 60;
  Game.Bets[Place6] = 18;
  Game.BetsAtRoll[Place6] = 12;
  const auto cells = [](const BetResults& results) {
    std::vector<std::string> text;
    for (const BetResultsRow& row : results.Rows)
      text.push_back(row.Label + "|" + row.Wagers + "|" + row.Wins + "|" + row.Losses + "|" +
                     row.Net + "|" + row.NetPct);
    return text;
  };
  BetSelection selection;
  selection.Selected[Field] = selection.Selected[Place6] = selection.Selected[Lay4] = true;
  Game.FieldPayoff[1].Win = Game.FieldPayoff[21].Win = 2;
  BetResults results = FigureBetResults(selection);
  EXPECT_EQ(
      cells(results),
      (std::vector<std::string>{
          "Total #|4|1|3|-2|-50.00 %", "Total $|42|20|32|-12|-28.57 %", "High $|15|20|15|5|33.33 %",
          "Low $|5|20|5|15|300.00 %", "Average $|10.5|20|10.6667|9.333|88.89 %",
          "Last $|27|20|27|-7|-25.93 %", "Last roll #|2|1|2|-1|-50.00 %",
          "Last roll $|27|20|27|-7|-25.93 %", "Avg. # / hour|8|2|6|-4|-50.00 %",
          "Avg. $ / hour|84|40|64|-24|-28.57 %", "Expctd value $||||-1.849|-4.4 %"}));
  EXPECT_EQ(results.Rows[TotalAmountRow].NetColor, PaletteRed);
  EXPECT_EQ(results.Rows[HighRow].NetColor, PaletteDarkBlue);
  EXPECT_EQ(results.OnBets + " " + results.OnBetsLastRoll, "18 12");
  EXPECT_EQ(results.SimHours, ".5");
  EXPECT_TRUE(results.Luck.starts_with("about -0.")) << results.Luck;
  EXPECT_NE(results.LuckTip.find("several bets"), std::string::npos);
  selection.Selected[Field] = false;
  results = FigureBetResults(selection);
  // One lost bet of 12: (-12 + 12 x 0.015152) / (12 x 1.0797).
  EXPECT_EQ(results.Luck, "-0.91 (18.07 % do worse)");
  Game.IncludeZeroOutcomes = true;
  EXPECT_EQ(FigureBetResults(selection).Luck, results.Luck);
  EXPECT_EQ(TableOf(results, selection).Rows[0][1].substr(0, 7), "Lay 4, ");
}

TEST_F(BetFigures, NothingDividesByNothingAndTheLargestFitIn) {
  for (const BetData data : {BetData::ActualWagers, BetData::PhantomWagers, BetData::AllGames})
    for (const bool any : {false, true}) {
      BetSelection selection;
      selection.Selected.fill(any);
      selection.Data = data;
      Game.RollCount[0] = 0;
      const BetResults results = FigureBetResults(selection);
      EXPECT_FALSE(results.Empty.empty());
      EXPECT_EQ(results.Luck, "-");
      for (const BetResultsRow& row : results.Rows) EXPECT_EQ(row.Net + row.NetPct, "00 %");
    }
  BetSelection all;
  all.Selected.fill(true);
  Game.RollCount[0] = kMaxRolls;
  for (unsigned bet = Lay4; bet <= LastBet; ++bet) {
    Game.BetWagers[Actual][bet].fill(Currency::FromRaw(INT64_MAX));
    Game.BetLosses[Actual][bet] = Game.BetWagers[Actual][bet];
    Game.WagerSquares[bet] = 1e30;
  }
  const BetResults results = FigureBetResults(all);
  EXPECT_EQ(results.Rows[TotalAmountRow].Wagers, "76,553,987,905,894,639.1981");
  EXPECT_EQ(results.Rows[TotalAmountRow].NetPct, "-100.00 %");
  EXPECT_EQ(results.TotalRolls, "100,000,000");
  for (const auto& row : TableOf(results, all).Rows)
    for (const std::string& cell : row)
      EXPECT_TRUE(cell.find("nan") == std::string::npos && cell.find("inf") == std::string::npos);
}

}  // namespace
