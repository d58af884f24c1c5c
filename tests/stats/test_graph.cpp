#include "stats/bankroll_graph.h"
#include "stats/graph_view.h"
#include "support/table_fixture.h"

namespace {

class Graph : public TableTest {
 protected:
  Graph() { RestartGraph(); }

  /// Ends a roll with this bankroll.
  void Roll(Currency bankroll) {
    ++Game.RollCount[0];
    Game.Bets[BankrollIndex] = bankroll;
    Game.BankrollSum += bankroll;
    all_.push_back(bankroll);
    AddBankrollPoint();
  }

  /// The bankroll after a roll of a game that climbs and falls.
  static Currency Wave(int roll) { return 500 + roll % 37 * 3 - roll % 11 * 5; }

  void RollTo(int roll) {
    while (Game.RollCount[0] < roll) Roll(Wave(Game.RollCount[0] + 1));
  }

  /// The mean of the last `span` rolls, by the list of all of them.
  Currency MeanOfLast(int span) const {
    const auto count = std::min(static_cast<std::size_t>(span), all_.size());
    Currency sum;
    for (std::size_t i = all_.size() - count; i < all_.size(); ++i) sum += all_[i];
    return Currency::FromDouble(sum / Currency(count));
  }

  static Currency Average(int point) { return Game.BankrollAverage[point]; }

  std::vector<Currency> all_;
};

TEST_F(Graph, PageTurnsAfter525Points) {
  RollTo(525);
  EXPECT_EQ(Game.BankrollHistoryCount, 525);
  EXPECT_EQ(Game.BankrollHistory[0], Currency(1));
  RollTo(526);
  EXPECT_EQ(Game.BankrollHistoryCount, 1);
  EXPECT_EQ(Game.BankrollHistory[0], Currency(526));
  EXPECT_EQ(Game.BankrollHistory[1], Wave(526));
  for (unsigned point = 1; point <= 525; ++point)
    ASSERT_EQ(Game.BankrollHistory[525 + point], Wave(static_cast<int>(point)));
  RollTo(700);
  EXPECT_EQ(BankrollMovingAverage(175, 9'999), MeanOfLast(525));  // a span beyond a page is a page
}

TEST_F(Graph, AverageIsThatOfTheLastRollsAsRolledAndFiguredAnew) {
  for (const int span : {1, 120, 525, 0}) {  // 0 averages the whole game
    LayDownDefaults();
    RestartGraph();
    all_.clear();
    EXPECT_EQ(BankrollMovingAverage(0, span), Currency());
    Game.BankrollAverageSpan = span;
    for (int roll = 1; roll <= 1'200; ++roll) {
      RollTo(roll);
      ASSERT_EQ(Average(Game.BankrollHistoryCount), MeanOfLast(span == 0 ? roll : span))
          << span << " at " << roll;
    }
    const auto asRolled = Game.BankrollAverage;
    Game.BankrollAverage = {};
    RecomputeBankrollAverage();
    for (int point = 1; point <= Game.BankrollHistoryCount; ++point)
      ASSERT_EQ(Average(point), asRolled[point]) << span << " at " << point;
  }
}

TEST_F(Graph, HighAndLowAreThoseOfThePage) {
  const auto expectRange = [](Currency low, Currency high) {
    EXPECT_EQ(std::pair(Game.GraphPeriodLow, Game.GraphPeriodHigh), std::pair(low, high));
  };
  Roll(2'000);
  Roll(-50);
  for (int roll = 3; roll <= 525; ++roll) Roll(700);
  expectRange(-50, 2'000);
  Roll(710);
  expectRange(710, 710);
  Roll(690);
  Game.GraphPeriodHigh = Game.GraphPeriodLow = 0;
  RecomputeBankrollAverage();
  expectRange(690, 710);
}

TEST_F(Graph, NewGameStartsEmpty) {
  RollTo(600);
  Game.GraphScale = 40;
  Game.RollCount[0] = 0;
  Game.Bets[BankrollIndex] = 300;
  RestartGraph();
  EXPECT_TRUE(Game.BankrollHistoryCount == 0 && Game.GraphScale == 1 && Game.GraphTop == 450);
  EXPECT_EQ(Game.GraphPeriodHigh, Currency(300));
  EXPECT_EQ(Game.BankrollHistory[526], Currency());
}

TEST_F(Graph, ANewSpanFindsTheHighAndLowOfThePageAgain) {
  RollTo(20);
  Game.GraphPeriodHigh = 9'999;
  SetBankrollAverageSpan(1'000);
  EXPECT_EQ(Game.BankrollAverageSpan, kGraphPoints);
  const auto [low, high] = std::ranges::minmax(all_);
  EXPECT_TRUE(Game.GraphPeriodHigh == high && Game.GraphPeriodLow == low);
}

TEST_F(Graph, ScalesGoUpAndDownOneLadder) {
  Currency scale = NextGraphScale(0);
  for (; NextGraphScale(scale) > scale; scale = NextGraphScale(scale))
    EXPECT_EQ(PreviousGraphScale(NextGraphScale(scale)), scale);
  EXPECT_GT(scale, Currency(1'000'000));
}

}  // namespace
