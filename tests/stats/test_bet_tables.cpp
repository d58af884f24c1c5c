#include <gtest/gtest.h>

#include <array>
#include <tuple>
#include <vector>

#include "rules/defaults.h"
#include "stats/bet_tables.h"

namespace {

using Stats = std::array<Currency, kBetStats>;

class BetTables : public ::testing::Test {
 protected:
  void SetUp() override { LayDownDefaults(); }

  static Stats Of(const BetTable& table, BetKind kind, int betId) {
    Stats stats = table[kind][static_cast<unsigned>(betId)];
    stats[StatEstablished] = 0;
    return stats;
  }
  static Stats Wagers(BetKind kind, int betId) { return Of(Game.BetWagers, kind, betId); }
  static Stats Wins(BetKind kind, int betId) { return Of(Game.BetWins, kind, betId); }
  static Stats Losses(BetKind kind, int betId) { return Of(Game.BetLosses, kind, betId); }
};

TEST_F(BetTables, DecisionsAreCountedSummedAndRanged) {
  RecordBetOutcome(Actual, Field, 10, 20);
  RecordBetOutcome(Actual, Field, 5, -5);
  RecordBetOutcome(Actual, Field, 15, 15);
  EXPECT_EQ(Wagers(Actual, Field), (Stats{0, 3, 30, 15, 5, 15, 1, 15}));
  EXPECT_EQ(Wins(Actual, Field), (Stats{0, 2, 35, 20, 15, 15, 1, 15}));
  EXPECT_EQ(Losses(Actual, Field), (Stats{0, 1, 5, 5, 5, 5, 1, 5}));
  EXPECT_EQ(Wagers(Phantom, Field), Stats());
}

TEST_F(BetTables, PushRecordsNothing) {
  RecordBetOutcome(Actual, DontPass, 10, 0);
  RecordBetOutcome(Phantom, DontPass, 1, 0);
  EXPECT_EQ(Wagers(Actual, DontPass), Stats());
  EXPECT_EQ(Wagers(Phantom, DontPass), Stats());
}

TEST_F(BetTables, VigUpFrontJoinsTheWager) {
  const std::tuple<bool, BetKind, int, Currency, Currency, Currency> cases[] = {
      {true, Actual, Buy10, 50, 97, 53},
      {true, Actual, Lay4, 40, -42, 42},
      {true, Phantom, Buy4, 1, 2, Currency::FromRaw(10'500)},
      {true, Phantom, 2, 1, 1, Currency::FromRaw(10'333)},  // wins 2 for 3
      {false, Actual, Buy10, 50, 97, 50},
      {false, Phantom, Lay4, 1, -1, 1}};
  for (const auto& [upFront, kind, betId, wager, net, sum] : cases) {
    LayDownDefaults();
    Game.BuyVigHeld[5] = 3;
    Game.LayVigHeld[0] = 2;
    Game.BuyVigUpFront = Game.LayVigUpFront = upFront;
    RecordBetOutcome(kind, betId, wager, net);
    EXPECT_EQ(Wagers(kind, betId)[StatSum], sum) << betId;
    const Stats results = net > 0 ? Wins(kind, betId) : Losses(kind, betId);
    EXPECT_EQ(results[StatSum], Abs(net));
  }
}

TEST_F(BetTables, PhantomOnANumberCountsOnlyWhileEstablished) {
  const auto counts = [](int bet) {
    const Currency before = Wagers(Phantom, bet)[StatCount];
    RecordBetOutcome(Phantom, bet, 1, 1);
    return Wagers(Phantom, bet)[StatCount] > before;
  };
  for (const int family : {DontComeFamily, DontComeOddsFamily, ComeFamily, ComeOddsFamily}) {
    const int six = BetOnNumber(BetFamily(family), 6);
    UpdateEstablished(7, true);
    EXPECT_FALSE(counts(six)) << six;
    UpdateEstablished(6, true);
    for (const int craps : {2, 3, 11, 12}) UpdateEstablished(craps, true);
    EXPECT_TRUE(counts(six)) << six;
    EXPECT_FALSE(counts(BetOnNumber(BetFamily(family), 8)));
    UpdateEstablished(6, false);  // on the come-out
    EXPECT_FALSE(counts(six)) << six;
    UpdateEstablished(6, true);
    UpdateEstablished(7, true);
    EXPECT_FALSE(counts(six)) << six;
    Game.AllowPutBets = true;  // they let the Come side through
    EXPECT_EQ(counts(six), family == ComeFamily || family == ComeOddsFamily);
    Game.AllowPutBets = false;
  }
  RecordBetOutcome(Actual, DontCome4, 10, 10);  // actual wagers need no mark
  EXPECT_EQ(Wagers(Actual, DontCome4)[StatCount], Currency(1));
}

TEST_F(BetTables, NextRollClearsOnlyItsOwnStats) {
  RecordBetOutcome(Actual, Hop55, 2, 60);
  RecordBetOutcome(Phantom, Hop55, 1, -1);
  ClearRollStats();
  EXPECT_EQ(Wagers(Actual, Hop55), (Stats{0, 1, 2, 2, 2, 2, 0, 0}));
  EXPECT_EQ(Wins(Actual, Hop55), (Stats{0, 1, 60, 60, 60, 60, 0, 0}));
  EXPECT_EQ(Losses(Phantom, Hop55), (Stats{0, 1, 1, 1, 1, 1, 0, 0}));
}

}  // namespace
