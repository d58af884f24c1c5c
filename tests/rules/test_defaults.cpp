#include <gtest/gtest.h>

#include <map>
#include <tuple>
#include <utility>

#include "core/game_state.h"
#include "dice/generators.h"
#include "rules/defaults.h"

namespace {

class Defaults : public ::testing::Test {
 protected:
  void SetUp() override { LayDownDefaults(); }

  static std::pair<Currency, Currency> Ratio(int bet) {
    return {Game.Payoff[bet].Win, Game.Payoff[bet].Per};
  }
};

using Pays = std::pair<Currency, Currency>;

TEST_F(Defaults, BeginWithFiveHundredOnTheComeOut) {
  EXPECT_EQ(Bankroll(), Currency(500));
  for (const Currency amount : {Game.BetsAtRoll[0], Game.BetsAfterRoll[0], Game.BankrollHigh,
                                Game.BankrollLow, Game.InvestedBankroll}) {
    EXPECT_EQ(amount, Currency(500));
  }
  EXPECT_EQ(Game.Point, 0);
  EXPECT_EQ(Game.Die1 * 10 + Game.Die2, 34);
  EXPECT_EQ(Game.RollTotal, 7);
  EXPECT_EQ(Game.OddsMultiple, Currency::FromRaw(25'000));
  EXPECT_EQ(Game.BankrollHistory[0], Currency(1));
  EXPECT_EQ(Unit(), Currency(1));
  EXPECT_EQ(Game.Bets[LargestChip], Currency(500));
}

TEST_F(Defaults, ReplaceWhateverStoodBeforeButSeedsAndSoundLists) {
  Game.Bets[Field] = Game.TotalOnTable = 25;
  Game.RollCount[7] = Game.HandleLosingBets = Game.ChipCount = Game.Point = 4;
  Game.RngChoice = Rng5Ran1;
  Game.ChangeRequest = 46169;
  SeedRng(SeedInChangeRequest);
  Game.DiceSounds = {"", "a.dce"};
  LayDownDefaults();
  EXPECT_EQ(Game.Bets[Field] + Game.TotalOnTable, Currency());
  EXPECT_EQ(Game.RollCount[7] + Game.ChipCount + Game.Point, 0);
  EXPECT_EQ(Game.HandleLosingBets, 1);
  EXPECT_EQ(Game.LastSeed, 46169);
  EXPECT_EQ(Game.Ran1State.Started, 1);
  EXPECT_EQ(Game.DiceSounds.size(), 2U);
  Game.DiceSounds = {""};
}

TEST_F(Defaults, PayoffsAreThoseOfTheHouse) {
  const std::map<int, Pays> expected = {
      {1, {1, 2}},   {2, {2, 3}},   {3, {5, 6}},   {4, {5, 6}},   {6, {1, 2}},   {7, {1, 1}},
      {12, {1, 1}},  {13, {1, 2}},  {18, {1, 2}},  {19, {1, 1}},  {25, {2, 1}},  {27, {6, 5}},
      {30, {2, 1}},  {31, {9, 5}},  {32, {7, 5}},  {33, {7, 6}},  {34, {7, 6}},  {36, {9, 5}},
      {37, {2, 1}},  {41, {3, 2}},  {43, {1, 1}},  {44, {1, 1}},  {49, {1, 1}},  {51, {1, 1}},
      {52, {7, 1}},  {53, {9, 1}},  {54, {9, 1}},  {55, {7, 1}},  {56, {30, 1}}, {57, {15, 1}},
      {58, {4, 1}},  {59, {15, 1}}, {60, {30, 1}}, {61, {7, 1}},  {62, {1, 2}},  {63, {1, 4}},
      {64, {1, 5}},  {65, {1, 1}},  {66, {1, 1}},  {67, {15, 1}}, {70, {15, 1}}, {71, {30, 1}},
      {72, {15, 1}}, {76, {30, 1}}, {79, {15, 1}}, {80, {30, 1}}, {82, {15, 1}}, {83, {30, 1}},
  };
  for (const auto& [bet, ratio] : expected) EXPECT_EQ(Ratio(bet), ratio) << bet;
  for (const PayoffRecord& record : Game.Payoff) EXPECT_TRUE(record.ShownAsTo);
}

TEST_F(Defaults, RestoredPayoffsFollowAStandingPoint) {
  Game.Point = 9;
  Game.Payoff[Place6].Win = 99;
  SetDefaultPayoffs();
  EXPECT_EQ(Ratio(PassLineOdds), Pays(3, 2));
  EXPECT_EQ(Ratio(DontPassOdds), Pays(2, 3));
  EXPECT_EQ(Ratio(Place6), Pays(7, 6));
}

TEST_F(Defaults, BetsThatRestOnTheComeOut) {
  for (int bet = 1; bet <= LastBet; ++bet) {
    const bool rests = (bet >= 25 && bet <= 42) || bet == 44 || bet == 45 || bet == 47 || bet == 48;
    EXPECT_EQ(Game.ComeOutWorking[static_cast<unsigned>(bet)], rests ? 0 : 1) << bet;
    EXPECT_EQ(Game.BetWorking[static_cast<unsigned>(bet)], rests ? 0 : 1) << bet;
  }
}

TEST_F(Defaults, ChipsStandAtTheirPlaces) {
  const std::tuple<int, float, float> places[] = {
      {Lay4, 189, 65},    {DontCome10Odds, 459, 99}, {21, 297, 140},    {28, 351, 131},
      {Place9, 405, 165}, {Buy9, 405, 165},          {Hop36, 524, 238}, {DontPassOdds, 327, 329},
      {Hop46, 524, 313},  {Hop15, 587, 138},         {Hop35, 587, 338}, {102, 16, 166}};
  for (const auto& [id, x, y] : places)
    EXPECT_EQ(std::pair(Game.BetChipX[id], Game.BetChipY[id]), std::pair(x, y)) << id;
  EXPECT_EQ(Game.BetChipX[150], 16);
  EXPECT_EQ(Game.BetChipX[200], 16);
  for (int bet = 1; bet <= LastBet; ++bet) EXPECT_GT(Game.BetChipY[bet], 0) << bet;
}

}  // namespace
