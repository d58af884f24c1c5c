#include "dice/generators.h"
#include "dice/matrix.h"
#include "support/table_fixture.h"

namespace {

class Matrix : public TableTest {
 protected:
  static int& Cell(int row, int column) { return Game.ProbMatrix[1][column][row]; }

  static std::array<int, 2> Dice(int x) {
    DiceFromMatrix(x);
    return {Game.Die1, Game.Die2};
  }

  static void Clear() { Game.ProbMatrix[1] = {}; }
};

TEST_F(Matrix, EveryCellHasItsOwnDiceInAFixedOrder) {
  std::map<std::array<int, 2>, int> seen;
  for (int x = 1; x <= 100'000; ++x) ++seen[Dice(x)];
  ASSERT_EQ(seen.size(), 36U);
  // The sum is 100,008: the last cell comes out 8 short.
  for (const auto& [dice, count] : seen)
    EXPECT_EQ(count, (dice == std::array{6, 1} ? 2770 : 2778)) << dice[0] << dice[1];
  EXPECT_EQ(std::pair(Dice(2778), Dice(2779)), std::pair((std::array{1, 1}), (std::array{1, 2})));
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
    SeedDice(99);
    RollWithGenerator();
    ASSERT_EQ(Game.Die1 * 10 + Game.Die2, 33);
  }
}

TEST_F(Matrix, EventsHaveTheSharesOfTheirThrows) {
  const std::map<int, int> ways = {{2, 1},   {7, 6},   {11, 2},  {14, 1}, {22, 1}, {26, 2},
                                   {21, 16}, {65, 12}, {73, 10}, {77, 3}, {78, 6}, {89, 6},
                                   {0, 36},  {1, 36},  {90, 0},  {-1, 0}, {91, 0}, {1000, 0}};
  for (const auto& [event, count] : ways) {
    EXPECT_FLOAT_EQ(EventShare(event, false), static_cast<float>(count * 100 / 36.0)) << event;
    EXPECT_NEAR(EventShare(event, true), count * 100 / 36.0, 0.02) << event;
  }
  // Brackets are row and column: each throw has its cell, each total another.
  Game.ProbMatrix[1] = {};
  for (int row = 0; row < kMatrixRows; ++row)
    for (int column = 0; column < kMatrixColumns; ++column) Cell(row, column) = row * 100 + column;
  const std::map<int, float> shares = {{2, 0.101F},    // (1, 1), and not the throw's (1, 2)
                                       {3, 0.201F},    // (2, 1)
                                       {12, 1.101F},   // (11, 1)
                                       {22, 0.202F},   // 1-2 at (2, 2)
                                       {23, 0.203F},   // 2-1 at (2, 3)
                                       {13, 0.303F},   // 2-2 at (3, 3)
                                       {64, 1.003F},   // 6-5 at (10, 3)
                                       {26, 0.606F},   // 1-3 and 3-1 at (3, 2) and (3, 4)
                                       {74, 0.507F},   // 1-1, 1-2, 2-1
                                       {77, 3.107F},   // 5-6 at (10, 2), 6-5, 6-6 at (11, 2)
                                       {78, 2.112F}};  // 1-1 to 1-6, at (1, 2) to (6, 2)
  for (const auto& [event, share] : shares)
    EXPECT_FLOAT_EQ(EventShare(event, true), share) << event;
  EXPECT_FLOAT_EQ(EventShare(7, false), 600 / 36.0F);
}

}  // namespace
