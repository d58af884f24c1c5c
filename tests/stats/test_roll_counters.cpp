#include <gtest/gtest.h>

#include <map>
#include <set>

#include "rules/defaults.h"
#include "stats/roll_counters.h"

namespace {

std::multiset<int> EventsOf(int die1, int die2) {
  const auto events = EventsOfThrow(die1, die2);
  return {events.begin(), events.end()};
}

TEST(RollEvents, OfSomeThrowsAreComplete) {
  EXPECT_EQ(EventsOf(1, 1), (std::multiset{2, 20, 21, 65, 66, 69, 74, 78, 84}));
  EXPECT_EQ(EventsOf(2, 1), (std::multiset{3, 20, 21, 23, 65, 66, 70, 74, 75, 79, 84}));
  EXPECT_EQ(EventsOf(3, 1), (std::multiset{4, 17, 19, 21, 25, 26, 67, 71, 80, 84}));
  EXPECT_EQ(EventsOf(2, 2), (std::multiset{4, 13, 17, 19, 21, 67, 71, 79, 85}));
  EXPECT_EQ(EventsOf(2, 5), (std::multiset{7, 41, 46, 65, 76, 79, 88}));
  EXPECT_EQ(EventsOf(6, 2), (std::multiset{8, 17, 18, 49, 52, 68, 73, 83, 85}));
  EXPECT_EQ(EventsOf(6, 6), (std::multiset{12, 20, 21, 65, 66, 69, 75, 77, 83, 89}));
}

TEST(RollEvents, ComeAsOftenAsTheirThrows) {
  std::map<int, int> expected;
  for (int total = 2; total <= 12; ++total) expected[total] = total <= 7 ? total - 1 : 13 - total;
  for (int hard = 13; hard <= 16; ++hard) expected[hard] = 1;
  for (int face = 78; face <= 89; ++face) expected[face] = 6;
  for (int ordered = 22; ordered <= 64; ++ordered) expected[ordered] = 1;
  for (const int either : {26, 31, 32, 37, 38, 45, 46, 47, 52, 53, 58, 59, 62})
    expected[either] = 2;
  expected.merge(std::map<int, int>{{17, 24},
                                    {18, 18},
                                    {19, 14},
                                    {20, 4},
                                    {21, 16},
                                    {65, 12},
                                    {66, 6},
                                    {67, 12},
                                    {68, 12},
                                    {69, 2},
                                    {70, 4},
                                    {71, 6},
                                    {72, 8},
                                    {73, 10},
                                    {74, 3},
                                    {75, 3},
                                    {76, 8},
                                    {77, 3}});
  std::map<int, int> ways;
  for (int dice = 0; dice < 36; ++dice)
    for (const int event : EventsOf(dice / 6 + 1, dice % 6 + 1)) ++ways[event];
  EXPECT_EQ(ways, expected);
}

class RollTally : public ::testing::Test {
 protected:
  void SetUp() override { LayDownDefaults(); }

  /// Throws the dice once as the roll cycle counts it.
  static void Throw(int die1, int die2) {
    for (int& since : Game.RollsSince) ++since;
    for (int& since : Game.ShooterSince) ++since;
    Game.Die1 = die1;
    Game.Die2 = die2;
    TallyThrow();
  }
};

TEST_F(RollTally, EventRepeatedAtOnceHasAGapOfOne) {
  Throw(1, 2);
  Throw(1, 2);
  EXPECT_EQ(Game.RollCount[22], 2);
  EXPECT_EQ(Game.ShooterEvent[22], 2);
  EXPECT_EQ(Game.RollGapTally[22][1], 2);
  EXPECT_EQ(Game.RollsSince[22], 0);
  EXPECT_EQ(Game.RollsSince[23], 2);
}

TEST_F(RollTally, GapOf199HasItsOwnColumnAndOf200DoesNot) {
  for (int gap : {199, 200, 201}) {
    for (int roll = 1; roll < gap; ++roll) Throw(3, 4);
    Throw(6, 6);
  }
  EXPECT_EQ(Game.RollGapTally[12][199], 1);
  EXPECT_EQ(Game.RollGapTally[12][kLongGap], 2);
  EXPECT_EQ(Game.RollGapTally[12][0], 401);
  EXPECT_EQ(Game.ShooterSince[12], 0);
}

}  // namespace
