#include <gtest/gtest.h>

#include <array>
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

TEST_F(BetTables, HeldVigJoinsAnActualWager) {
  Game.BuyVigHeld[5] = 3;
  Game.LayVigHeld[0] = 2;
  RecordBetOutcome(Actual, Buy10, 50, 97);
  RecordBetOutcome(Actual, Lay4, 40, -42);
  EXPECT_EQ(Wagers(Actual, Buy10)[StatSum], Currency(53));
  EXPECT_EQ(Wins(Actual, Buy10)[StatSum], Currency(97));
  EXPECT_EQ(Wagers(Actual, Lay4)[StatSum], Currency(42));
  EXPECT_EQ(Losses(Actual, Lay4)[StatSum], Currency(42));
}

TEST_F(BetTables, RateOfVigJoinsAPhantomWager) {
  RecordBetOutcome(Phantom, Buy4, 1, 2);
  RecordBetOutcome(Phantom, 2, 1, 1);  // Lay 5 wins 2 for 3
  EXPECT_EQ(Wagers(Phantom, Buy4)[StatSum], Currency::FromRaw(10'500));
  EXPECT_EQ(Wagers(Phantom, 2)[StatSum], Currency::FromRaw(10'333));
}

TEST_F(BetTables, VigOnTheWinStaysOutOfTheWager) {
  Game.BuyVigUpFront = Game.LayVigUpFront = false;
  Game.BuyVigHeld[5] = 3;
  RecordBetOutcome(Actual, Buy10, 50, 97);
  RecordBetOutcome(Phantom, Lay4, 1, -1);
  EXPECT_EQ(Wagers(Actual, Buy10)[StatSum], Currency(50));
  EXPECT_EQ(Wagers(Phantom, Lay4)[StatSum], Currency(1));
}

TEST_F(BetTables, PhantomOnANumberCountsOnlyWhileEstablished) {
  const int six[] = {BetOnNumber(DontComeFamily, 6), BetOnNumber(DontComeOddsFamily, 6),
                     BetOnNumber(ComeFamily, 6), BetOnNumber(ComeOddsFamily, 6)};
  for (const int bet : six) RecordBetOutcome(Phantom, bet, 1, 1);
  for (const int bet : six) EXPECT_EQ(Wagers(Phantom, bet), Stats()) << bet;
  UpdateEstablished(6, true);
  for (const int bet : six) RecordBetOutcome(Phantom, bet, 1, 1);
  for (const int bet : six) EXPECT_EQ(Wagers(Phantom, bet)[StatCount], Currency(1)) << bet;
  RecordBetOutcome(Phantom, BetOnNumber(ComeFamily, 8), 1, 1);
  EXPECT_EQ(Wagers(Phantom, BetOnNumber(ComeFamily, 8)), Stats());
}

TEST_F(BetTables, NumberThrownOnTheComeOutEndsWhatWasEstablished) {
  UpdateEstablished(6, true);
  UpdateEstablished(6, false);
  RecordBetOutcome(Phantom, BetOnNumber(ComeFamily, 6), 1, 1);
  EXPECT_EQ(Wagers(Phantom, BetOnNumber(ComeFamily, 6)), Stats());
}

TEST_F(BetTables, SevenEndsAllThatWasEstablishedAndCrapsNone) {
  UpdateEstablished(4, true);
  UpdateEstablished(10, true);
  for (const int total : {2, 3, 11, 12}) UpdateEstablished(total, true);
  RecordBetOutcome(Phantom, Come4, 1, 1);
  EXPECT_EQ(Wagers(Phantom, Come4)[StatCount], Currency(1));
  UpdateEstablished(7, true);
  RecordBetOutcome(Phantom, Come4, 1, 1);
  RecordBetOutcome(Phantom, DontCome10, 1, 1);
  EXPECT_EQ(Wagers(Phantom, Come4)[StatCount], Currency(1));
  EXPECT_EQ(Wagers(Phantom, DontCome10), Stats());
}

TEST_F(BetTables, PutBetsLetTheComeSideThrough) {
  Game.AllowPutBets = true;
  for (const int bet : {int{Come4}, int{Come10Odds}, int{DontCome4}, int{DontCome10Odds}}) {
    RecordBetOutcome(Phantom, bet, 1, 1);
  }
  EXPECT_EQ(Wagers(Phantom, Come4)[StatCount], Currency(1));
  EXPECT_EQ(Wagers(Phantom, Come10Odds)[StatCount], Currency(1));
  EXPECT_EQ(Wagers(Phantom, DontCome4), Stats());
  EXPECT_EQ(Wagers(Phantom, DontCome10Odds), Stats());
}

TEST_F(BetTables, ActualWagersNeedNoMark) {
  RecordBetOutcome(Actual, DontCome4, 10, 10);
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
