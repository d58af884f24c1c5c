#include <gtest/gtest.h>

#include <map>
#include <tuple>
#include <utility>

#include "core/game_state.h"
#include "dice/generators.h"
#include "rules/defaults.h"
#include "support/table_fixture.h"

namespace {

class Defaults : public ::testing::Test {
 protected:
  void SetUp() override { LayDownDefaults(); }

  static std::pair<Currency, Currency> Ratio(int bet) {
    return {Game.Payoff[bet].Win, Game.Payoff[bet].Per};
  }
};

using Pays = std::pair<Currency, Currency>;

TEST_F(Defaults, ReplaceWhateverStoodBeforeButSeedsAndSoundLists) {
  Game.Bets[Field] = Game.TotalOnTable = 25;
  Game.RollCount[7] = Game.HandleLosingBets = Game.ChipCount = Game.Point = 4;
  Game.RngChoice = Rng5Ran1;
  SeedDice(46169);
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

TEST_F(Defaults, RestoredPayoffsFollowAStandingPoint) {
  Game.Point = 9;
  Game.Payoff[Place6].Win = 99;
  SetDefaultPayoffs();
  EXPECT_EQ(Ratio(PassLineOdds), Pays(3, 2));
  EXPECT_EQ(Ratio(DontPassOdds), Pays(2, 3));
  EXPECT_EQ(Ratio(Place6), Pays(7, 6));
}

}  // namespace
