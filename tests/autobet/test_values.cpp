// Values that scripts take from the game.
#include "autobet/values.h"

#include "autobet/language.h"
#include "stats/bankroll_graph.h"
#include "support/table_fixture.h"

namespace {

using ValuesTest = TableTest;

/// A table on which every source has a value of its own, now and a roll ago.
void LayTable() {
  Game.Die1 = 2;
  Game.Die2 = 4;
  Game.RollTotal = 6;
  Game.PrevDie1 = 5;
  Game.PrevDie2 = 3;
  Game.Point = 6;
  for (unsigned id = Lay4; id <= LastBet; ++id) {
    Game.Bets[id] = id;
    Game.BetsAtRoll[id] = 2 * id;
  }
  for (unsigned id = ChipStackBase; id <= LastSlot; ++id) {
    Game.Bets[id] = 1;
    Game.BetsAtRoll[id] = 3;
  }
  Game.Bets[Craps] = 0;
  Game.TotalOnTable = 44;
  Game.Bets[BankrollIndex] = 700;
  Game.BetsAtRoll[BankrollIndex] = 600;
  Game.BankrollHigh = 650;
  Game.BankrollLow = 710;
  for (unsigned stat = 0; stat < kShooterStats; ++stat)
    Game.ShooterStats[stat] = 900 + static_cast<int>(stat);
  Game.RollCount[0] = 33;
  Game.BetWagers[Actual][Place4][StatRollCount] = 1;
  Game.BetWagers[Actual][Place4][StatRollAmount] = 12;
  Game.BetWagers[Actual][Hop55][StatRollCount] = 1;
  Game.BetWagers[Actual][Hop55][StatRollAmount] = Currency::FromRaw(5'000);
  Game.BetWagers[Phantom][Place4][StatRollCount] = 1;
  // The stack that names another, and what it names.
  Game.Bets[107] = Currency::FromRaw(98'000);
  Game.BetsAtRoll[107] = 20;
  Game.Bets[109] = 77;
  Game.BetsAtRoll[120] = 88;
}

TEST_F(ValuesTest, EverySourceHasItsValueOfNowAndOfTheLast) {
  LayTable();
  using Case = std::tuple<int, int, Currency, Currency>;
  const Currency own = Currency::FromRaw(98'000), half = Currency::FromRaw(125'000);
  const Currency stacks = 98 + own + 77;
  for (const auto& [source, stack, now, last] : std::initializer_list<Case>{
           {1300, 0, 6, 8},       {1301, 0, 2, 5},       {1302, 0, 4, 3},     {1311, 0, 33, 33},
           {1312, 0, 900, 917},   {1314, 0, 910, 910},   {1315, 0, 901, 918}, {1317, 0, 913, 913},
           {1318, 0, 915, 919},   {1402, 0, 700, 650},   {1400, 0, 700, 600}, {1403, 0, 700, 710},
           {1410, 0, 656, 656},   {1702, 0, 82, 82},     {1703, 0, 44, 44},   {1700, 0, 2, 2},
           {1701, 0, half, half}, {1000, 0, 3425, 6972}, {1001, 0, 21, 42},   {1002, 0, 57, 114},
           {1003, 0, 93, 186},    {1004, 0, 129, 258},   {1005, 0, 165, 330}, {1006, 0, 201, 402},
           {1007, 0, 134, 268},   {1008, 0, 134, 268},   {1009, 0, 237, 474}, {1602, 0, stacks, 0},
           {1600, 0, 1, 3},       {1600, 7, own, 20},    {1600, 100, 1, 3},   {1600, 101, 0, 0},
           {1600, -1, 0, 0},      {1601, 7, 77, 88},     {1601, 101, 0, 0},   {1800, 0, 3, 0},
           {1803, 0, 21, 0},      {1804, 0, 27, 0},      {1805, 0, 33, 0},    {1806, 0, 39, 0},
           {1, 0, 1, 2},          {83, 0, 83, 166},      {0, 0, 0, 0},        {84, 0, 0, 0},
           {1010, 0, 0, 0},       {1801, 0, 0, 0},       {2007, 0, 0, 0},     {-5, 0, 0, 0}}) {
    EXPECT_EQ(ValueOf(source, stack), now) << source << " " << stack;
    EXPECT_EQ(ValueOfLast(source, stack), last) << source << " " << stack;
  }
  Game.Point = 0;
  EXPECT_EQ(ValueOf(PointPlace, 0), Currency(0));
  for (const Currency nowhere : {Currency(100), Currency(-1), Currency(1'000'000'000)}) {
    Game.Bets[107] = nowhere;
    EXPECT_EQ(ValueOf(ChipStackRef, 7), Currency(0)) << nowhere;
  }
}

TEST_F(ValuesTest, PercentagesRoundToMoney) {
  LayTable();
  EXPECT_EQ(PercentOf(Hop55, 0, 50), Currency::FromRaw(415'000));
  EXPECT_EQ(PercentOfLast(Hop55, 0, Currency::FromRaw(5'000)), Currency::FromRaw(8'300));
  EXPECT_EQ(PercentOf(Lay4, 0, Currency::FromRaw(50)), Currency(0));  // half a count, to even
  EXPECT_EQ(PercentOf(Lay4, 0, Currency::FromRaw(150)), Currency::FromRaw(2));
  EXPECT_THROW(PercentOf(GamePassesSource, 0, Currency::FromRaw(INT64_MAX)), RunTimeFault);
}

/// Averages as a plain list of all rolls has them.
TEST_F(ValuesTest, TheAverageOfTheLastIsThatOfTheRollBefore) {
  EXPECT_EQ(ValueOf(AverageBankroll, 3), Currency(0));
  EXPECT_EQ(ValueOfLast(AverageBankroll, 0), Currency(0));
  std::vector<Currency> rolls;
  const auto mean = [&rolls](int points, int back) {
    Currency sum;
    const int end = static_cast<int>(rolls.size()) - back;
    const int count = points == 0 ? end : std::min(points, end);
    for (int i = end - count; i < end; ++i) sum += rolls[i];
    return count > 0 ? Currency::FromDouble(sum / Currency(count)) : Currency();
  };
  for (int roll = 1; roll <= 2 * kGraphPoints + 3; ++roll) {
    const Currency bankroll = 1000 + roll * roll % 97;
    rolls.push_back(bankroll);
    Game.RollCount[0] = roll;
    Game.Bets[BankrollIndex] = bankroll;
    Game.BankrollSum += bankroll;
    AddBankrollPoint();
    for (const int span : {0, 1, 4, kGraphPoints}) {
      ASSERT_EQ(ValueOf(AverageBankroll, span), mean(span, 0)) << roll << " span " << span;
      ASSERT_EQ(ValueOfLast(AverageBankroll, span), mean(span, 1)) << roll << " span " << span;
    }
  }
}

}  // namespace
