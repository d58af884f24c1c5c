// Roll totals and frequencies: what the two screens show of the throws.
#include "dice/matrix.h"
#include "figures/roll_freqs.h"
#include "figures/roll_totals.h"
#include "support/table_fixture.h"

namespace {

class RollFigures : public TableTest {
 protected:
  RollFigures() { Game.Notify = 0; }

  /// A matrix on which only 3-4 comes up.
  static void LoadDice() {
    SetFairMatrix();
    for (auto& column : Game.ProbMatrix[1]) column.fill(0);
    Game.ProbMatrix[1][4][6] = 100'000;
    Game.UseSkewedProbability = true;
  }

  static void ChooseEvent(int event) {
    const auto items = FreqItems();
    const auto item = std::ranges::find(items, event, &FreqItem::Event);
    Game.RollFreqChoice = static_cast<int>(item - items.begin());
  }
};

TEST_F(RollFigures, TheScaleRisesByFoursAndFivesAndFollowsADouble) {
  const std::pair<double, double> cases[] = {{0, 4},           {2.78, 4}, {4, 4},   {4.001, 8},
                                             {7.99, 8},        {8, 10},   {10, 10}, {16.7, 20},
                                             {0.55 * 100, 60}, {100, 100}};
  for (const auto& [highest, top] : cases) EXPECT_EQ(TopOfScale(highest), top) << highest;
}

TEST_F(RollFigures, EveryDisplayCoversTheRollsInTheOrderOfItsLabels) {
  for (const auto& [a, b] : {std::pair{1, 2}, {2, 1}, {1, 2}, {6, 6}, {3, 1}}) Roll(a, b);
  const std::tuple<std::size_t, const char*, const char*, double> displays[] = {
      {11, "NUMBER", "2 3 4 5 6 7 8 9 10 11 12 ", 100},
      {21, "COMBINATIONS",
       "1-1 1-2 1-3 2-2 1-4 2-3 1-5 2-4 3-3 1-6 2-5 3-4 2-6 3-5 4-4 3-6 4-5 4-6 5-5 5-6 6-6 ", 100},
      {36, "COMBINATIONS",
       "1-1 1-2 2-1 1-3 3-1 2-2 1-4 4-1 2-3 3-2 1-5 5-1 2-4 4-2 3-3 1-6 6-1 2-5 5-2 3-4 4-3 2-6 "
       "6-2 3-5 5-3 4-4 3-6 6-3 4-5 5-4 4-6 6-4 5-5 5-6 6-5 6-6 ",
       100},
      {12, "DIE1", "1 2 3 4 5 6 1 2 3 4 5 6 ", 200}};
  for (int display = 0; display < 4; ++display) {
    Game.RollTotalsDisplay = display;
    const RollTotals totals = FigureRollTotals();
    const auto& [bars, heading, named, rolls] = displays[display];
    EXPECT_EQ(std::tuple(totals.Bars.size(), totals.Headings[0].Text), std::tuple(bars, heading));
    std::string labels;
    double probable = 0, actual = 0;
    std::set<int> events;
    for (const RollTotalsBar& bar : totals.Bars) {
      labels += bar.Label + " ";
      probable += bar.Probable;
      actual += bar.Actual;
      events.insert(bar.Event);
      EXPECT_LE(std::max(bar.ProbableHeight, bar.ActualHeight), kRollTotalsBarHeight);
    }
    EXPECT_EQ(std::tuple(labels, events.size()), std::tuple(named, bars));
    EXPECT_NEAR(probable, rolls, 1e-9);
    EXPECT_NEAR(actual, rolls, 1e-9);
    EXPECT_EQ(TableOf(totals).Rows.size(), bars + 1);
  }
  Game.RollTotalsDisplay = 2;
  const RollTotals totals = FigureRollTotals();
  EXPECT_EQ(totals.Top, 40);
  EXPECT_EQ(totals.ScaleLabels, (std::array<std::string, 5>{"0", "10", "20", "30", "40"}));
  EXPECT_DOUBLE_EQ(totals.Bars[1].ActualHeight, 223);
  EXPECT_EQ(totals.Bars[1].Tip,
            "1-2: probable 2.78 %, actual 40.00 %, 2 rolls, 2 since last appeared");
  EXPECT_EQ(totals.TotalRolls, "5");
}

TEST_F(RollFigures, ComparesWithSkewedDiceOnlyWhereAskedAndDrawsTheImpossible) {
  RollTotals totals = FigureRollTotals();
  EXPECT_EQ(totals.Top, 20) << "by the probable values alone";
  EXPECT_FALSE(totals.Empty.empty());
  EXPECT_EQ(totals.Bars[0].ActualText, "0");
  EXPECT_FALSE(totals.OffersComparison);
  Game.ShowVsSkewed = true;
  EXPECT_FALSE(FigureRollTotals().VersusSkewed);
  Roll(1, 1);
  LoadDice();
  totals = FigureRollTotals();
  EXPECT_EQ(totals.Top, 100);
  EXPECT_TRUE(totals.Bars[0].ProbableHeight == 0 && totals.Bars[0].ActualHeight > 0);
  EXPECT_EQ(totals.Bars[0].ProbableText, "0");
  EXPECT_EQ(totals.Bars[5].Probable, 100) << "by the cells, whatever stands for the total";
  for (auto& column : Game.ProbMatrix[1]) column.fill(0);
  Game.RollCount = {};
  EXPECT_EQ(FigureRollTotals().Top, 4) << "no bar at all";
}

TEST_F(RollFigures, TheListHasEachEventOnceInTheOrderOfNumbers) {
  std::set<int> events;
  for (const FreqItem& item : FreqItems()) events.insert(item.Event);
  EXPECT_EQ(events.size(), 88U);
  EXPECT_EQ(*events.begin() * 100 + *events.rbegin(), 289);
  // An item that tells one throw or all of a total is that event.
  const auto items = FreqItems();
  for (const FreqItem& item : items) {
    const std::string text(item.Text);
    EXPECT_TRUE(!text.starts_with("Any ") || item.Event == std::stoi(text.substr(4))) << text;
    const std::size_t dice = text.find('(');
    if (dice == std::string::npos) continue;
    Roll(text[dice + 1] - '0', text[dice + 3] - '0');
    EXPECT_EQ(Game.RollsSince[item.Event], 0) << text;
    const double ways = EventProbability(item.Event, false) * 36 / 100;
    EXPECT_NEAR(ways, text.find("or") == std::string::npos ? 1 : 2, 1e-9) << text;
  }
  EXPECT_EQ(items[0].Text, "Number 2 (1-1)");
  EXPECT_EQ(items[59].Text, "Numbers 4,5,6,8,9,10");
  EXPECT_EQ(items[87].Text, "Die 2, face 6");
}

TEST_F(RollFigures, AFrequencyTellsCountsGapsAndTheCurveBesideThem) {
  ChooseEvent(7);
  RollFreqs freqs = FigureRollFreqs(false);
  EXPECT_EQ(freqs.Average + freqs.ActualPercent + freqs.LastRolled, "000");
  EXPECT_FALSE(freqs.Empty.empty());
  for (const int die2 : {4, 4, 1, 1, 4}) Roll(3, die2);  // 7 at rolls 1, 2 and 5
  auto& gaps = Game.RollGapTally[7];
  gaps[199] = 1;
  gaps[200] = 2;
  gaps[0] = 500;
  freqs = FigureRollFreqs(false);
  EXPECT_EQ(freqs.TotalRollsAll + " " + freqs.TotalRolls + " " + freqs.LastRolled, "5 3 0");
  EXPECT_EQ(freqs.ActualPercent + " " + freqs.IdealPercent, "60.00 16.67");
  EXPECT_EQ(freqs.Average, "117.33") << "(1 + 1 + 3 + 199 + 500) / 6";
  ASSERT_EQ(freqs.Gaps.size(), 200U);
  EXPECT_EQ(freqs.Gaps[0].TallyText + freqs.Gaps[1].GapText + freqs.Gaps[199].GapText, "2200+");
  EXPECT_NEAR(freqs.Gaps[2].Expected, 6 * 25 / 216.0, 1e-9);
  double all = 0;
  for (const GapRow& row : freqs.Gaps) all += row.Expected;
  EXPECT_NEAR(all, 6, 1e-9);
  EXPECT_EQ(freqs.HighestGap, 2);
  EXPECT_EQ(TableOf(freqs).Rows[0][0] + TableOf(freqs).Headings[2], "Total game rolls:Expected");
}

TEST_F(RollFigures, TheProbableFlipsOnlyWithSkewedDice) {
  ChooseEvent(12);
  RollFreqs freqs = FigureRollFreqs(true);
  EXPECT_EQ(freqs.ProbableCaption, "True probable %:");
  EXPECT_FALSE(freqs.CanFlip);
  LoadDice();
  freqs = FigureRollFreqs(true);
  EXPECT_EQ(freqs.ProbableCaption, "Skewed probable %:");
  EXPECT_EQ(freqs.IdealPercent, "0");
  EXPECT_EQ(FigureRollFreqs(false).IdealPercent, "2.78");
  ChooseEvent(7);
  EXPECT_EQ(FigureRollFreqs(true).Gaps[1].Expected, 0) << "a 7 each roll leaves no other gap";
}

}  // namespace
