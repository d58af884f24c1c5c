#include <gtest/gtest.h>

#include <array>
#include <map>
#include <set>

#include "core/host.h"
#include "dice/generators.h"
#include "dice/matrix.h"
#include "rules/defaults.h"

namespace {

class Matrix : public ::testing::Test {
 protected:
  void SetUp() override { LayDownDefaults(); }

  static int& Cell(int row, int column) {
    return Game.ProbMatrix[1][static_cast<unsigned>(column)][static_cast<unsigned>(row)];
  }

  static std::array<int, 2> Dice(int x) {
    DiceFromMatrix(x);
    return {Game.Die1, Game.Die2};
  }

  static void Clear() { Game.ProbMatrix[1] = {}; }
};

TEST_F(Matrix, FairCellsTotalsAndFacesAgree) {
  for (int total = 2; total <= 12; ++total) {
    const int ways = total <= 7 ? total - 1 : 13 - total;
    EXPECT_NEAR(Cell(total - 1, 1), ways * 100'000 / 36.0, 1) << total;
  }
  for (int face = 2; face <= 7; ++face) {
    EXPECT_EQ(Cell(12, face), 16667);
    EXPECT_EQ(Cell(13, face), 16667);
  }
  EXPECT_EQ(Game.ProbMatrix[0][0][1], 1);
  EXPECT_EQ(Game.ProbMatrix[0][0][2], 6);
}

TEST_F(Matrix, EveryCellHasItsOwnDiceInAFixedOrder) {
  std::map<std::array<int, 2>, int> seen;
  for (int x = 1; x <= 100'000; ++x) ++seen[Dice(x)];
  ASSERT_EQ(seen.size(), 36U);
  // The sum is 100,008: the last cell comes out 8 short.
  for (const auto& [dice, count] : seen)
    EXPECT_EQ(count, (dice == std::array{6, 1} ? 2770 : 2778)) << dice[0] << dice[1];
  EXPECT_EQ(Dice(2778), (std::array{1, 1}));
  EXPECT_EQ(Dice(2779), (std::array{1, 2}));
}

TEST_F(Matrix, NumberBeyondTheCellsIsDrawnAgainWithoutTheGenerator) {
  Clear();
  Cell(6, 2) = 10;  // 1-6 alone
  init_genrand(5489);
  EXPECT_EQ(Dice(100'001), (std::array{1, 6}));
  EXPECT_EQ(genrand_int32(), 3499211612U);
}

TEST_F(Matrix, WithoutAnyPositiveShareTheDiceAreFair) {
  Clear();
  Cell(3, 3) = -100;
  Cell(4, 4) = 60;  // never lifts the sum above 0
  std::set<std::array<int, 2>> seen;
  for (int roll = 0; roll < 3600; ++roll) {
    Game.RollCount[0] = roll;
    seen.insert(Dice(5));
  }
  EXPECT_EQ(seen.size(), 36U);
}

TEST_F(Matrix, SkewedDiceComeFromTheChosenGenerator) {
  Clear();
  Cell(5, 4) = 100'000;
  Game.UseSkewedProbability = true;
  for (int choice = 0; choice < kGenerators; ++choice) {
    Game.RngChoice = choice;
    Game.ChangeRequest = 99;
    SeedRng(SeedInChangeRequest);
    RollWithGenerator();
    ASSERT_EQ(Game.Die1 * 10 + Game.Die2, 33);
  }
}

}  // namespace
