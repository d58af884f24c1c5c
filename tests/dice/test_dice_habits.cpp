// Habits of the dice that look like slips and are required.

#include <string>

#include "dice/generators.h"
#include "support/scratch_folder.h"
#include "support/table_fixture.h"

namespace {

class DiceHabits : public TableTest {
 protected:
  /// Whether the number of the next skewed roll is `limit` or less.
  static bool NumberIsUpTo(int limit) {
    constexpr int kDie1IsOne = 2;  // the column of the matrix
    Game.UseSkewedProbability = true;
    Game.ProbMatrix[1] = {};
    Game.ProbMatrix[1][kDie1IsOne][1] = limit;
    Game.ProbMatrix[1][kDie1IsOne][6] = 100'000 - limit;
    RollWithGenerator();
    return Game.Die2 == 1;
  }
};

// A draw of 1.68 in 100,000 is number 3 when it is rounded; cut it would be number 2.
TEST_F(DiceHabits, Rng4AndRng5RoundTheirNumberForTheMatrix) {
  Game.Ran2State.Started = Game.Ran1State.Started = 1;
  for (const int limit : {2, 3}) {
    Game.RngChoice = Rng4Ran2;
    Game.Ran2State.Iy = 0;
    Game.Ran2State.Table.fill(12);
    EXPECT_EQ(NumberIsUpTo(limit), limit == 3) << "RNG #4, " << limit;
    Game.RngChoice = Rng5Ran1;
    Game.Ran1State.Table.fill(1.68e-5F);
    EXPECT_EQ(NumberIsUpTo(limit), limit == 3) << "RNG #5, " << limit;
  }
}

TEST_F(DiceHabits, ASeedingIsLoggedWithTheStateBeforeIt) {
  const ScratchFolder folder("dice_habits");
  Game.DataPath = folder / "";
  Game.EventsLogFile = folder / "log.txt";
  Game.EventsLogActive = true;
  Game.RngChoice = Rng4Ran2;
  for (const int seed : {4321, 99}) {
    Game.ChangeRequest = seed;
    SeedRng(SeedInChangeRequest);
    Game.RngState += 1000;
  }
  const std::string text = folder.Read("log.txt");
  EXPECT_NE(text.find("      RNG #4 seeded: 5321"), std::string::npos) << text;
  EXPECT_EQ(text.find("seeded: 99"), std::string::npos);
  Game.DataPath.clear();
  Game.EventsLogFile.clear();
}

}  // namespace
