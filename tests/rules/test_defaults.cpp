#include "rules/defaults.h"
#include "support/table_fixture.h"

namespace {

using Defaults = TableTest;

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

}  // namespace
