#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "rules/defaults.h"
#include "stats/graph.h"

namespace {

class Graph : public ::testing::Test {
 protected:
  void SetUp() override {
    LayDownDefaults();
    RestartGraph();
  }

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

  static Currency Average(int point) { return Game.BankrollAverage[static_cast<unsigned>(point)]; }

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
  for (unsigned point = 1; point <= 525; ++point) {
    ASSERT_EQ(Game.BankrollHistory[525 + point], Wave(static_cast<int>(point)));
  }
}

TEST_F(Graph, AverageReachesIntoThePageBefore) {
  for (const int span : {1, 120, 525}) {
    LayDownDefaults();
    RestartGraph();
    all_.clear();
    Game.BankrollAverageSpan = span;
    for (int roll = 1; roll <= 1'200; ++roll) {
      RollTo(roll);
      ASSERT_EQ(Average(Game.BankrollHistoryCount), MeanOfLast(span)) << span << " at " << roll;
    }
  }
}

TEST_F(Graph, SpanBeyondAPageIsAPage) {
  RollTo(700);
  EXPECT_EQ(BankrollMovingAverage(175, 9'999), MeanOfLast(525));
}

TEST_F(Graph, SpanOfZeroAveragesTheWholeGame) {
  EXPECT_EQ(BankrollMovingAverage(0, 0), Currency());
  Game.BankrollAverageSpan = 0;
  RollTo(900);
  EXPECT_EQ(Average(Game.BankrollHistoryCount), MeanOfLast(900));
}

TEST_F(Graph, AveragesFiguredAnewAreThoseOfTheRolls) {
  for (const int span : {0, 120}) {
    LayDownDefaults();
    RestartGraph();
    all_.clear();
    Game.BankrollAverageSpan = span;
    RollTo(800);
    const auto asRolled = Game.BankrollAverage;
    const int points = Game.BankrollHistoryCount;
    Game.BankrollAverage = {};
    RecomputeBankrollAverage();
    for (int point = 1; point <= points; ++point) {
      ASSERT_EQ(Average(point), asRolled[static_cast<unsigned>(point)]) << span << " at " << point;
    }
  }
}

TEST_F(Graph, HighAndLowAreThoseOfThePage) {
  Roll(2'000);
  Roll(-50);
  for (int roll = 3; roll <= 525; ++roll) Roll(700);
  EXPECT_EQ(Game.GraphPeriodHigh, Currency(2'000));
  EXPECT_EQ(Game.GraphPeriodLow, Currency(-50));
  Roll(710);
  EXPECT_EQ(Game.GraphPeriodHigh, Currency(710));
  EXPECT_EQ(Game.GraphPeriodLow, Currency(710));
  Roll(690);
  Game.GraphPeriodHigh = Game.GraphPeriodLow = 0;
  RecomputeBankrollAverage();
  EXPECT_EQ(Game.GraphPeriodHigh, Currency(710));
  EXPECT_EQ(Game.GraphPeriodLow, Currency(690));
}

TEST_F(Graph, NewGameStartsEmpty) {
  RollTo(600);
  Game.GraphScale = 40;
  Game.RollCount[0] = 0;
  Game.Bets[BankrollIndex] = 300;
  RestartGraph();
  EXPECT_EQ(Game.BankrollHistoryCount, 0);
  EXPECT_EQ(Game.GraphScale, Currency(1));
  EXPECT_EQ(Game.GraphTop, Currency(450));
  EXPECT_EQ(Game.GraphPeriodHigh, Currency(300));
  EXPECT_EQ(Game.BankrollHistory[526], Currency());
}

}  // namespace
