#include "stats/roll_counters.h"
#include "support/table_fixture.h"

namespace {

std::multiset<int> EventsOf(int die1, int die2) {
  const auto events = EventsOfThrow(die1, die2);
  return {events.begin(), events.end()};
}

TEST(RollEvents, ComeAsOftenAsTheirThrows) {
  std::map<int, int> expected;
  for (int total = 2; total <= 12; ++total) expected[total] = total <= 7 ? total - 1 : 13 - total;
  for (int hard = 13; hard <= 16; ++hard) expected[hard] = 1;
  for (int face = 78; face <= 89; ++face) expected[face] = 6;
  for (int ordered = 22; ordered <= 64; ++ordered) expected[ordered] = 1;
  for (const int two : {26, 31, 32, 37, 38, 45, 46, 47, 52, 53, 58, 59, 62}) expected[two] = 2;
  constexpr int kOfTheRest[] = {24, 18, 14, 4, 16};  // events 17 to 21, then 65 to 77
  for (int event = 17; event <= 21; ++event) expected[event] = kOfTheRest[event - 17];
  int group = 65;
  for (const int count : {12, 6, 12, 12, 2, 4, 6, 8, 10, 3, 3, 8, 3}) expected[group++] = count;
  std::map<int, int> ways;
  for (int dice = 0; dice < 36; ++dice)
    for (const int event : EventsOf(dice / 6 + 1, dice % 6 + 1)) ++ways[event];
  EXPECT_EQ(ways, expected);
}

class RollTally : public TableTest {
 protected:
  /// Throws the dice once as the roll cycle counts it.
  static void Throw(int die1, int die2) {
    for (int& since : Game.RollsSince) ++since;
    for (int& since : Game.ShooterSince) ++since;
    Game.Die1 = die1;
    Game.Die2 = die2;
    TallyThrow();
  }
};

TEST_F(RollTally, GapOf199HasItsOwnColumnAndOf200DoesNot) {
  for (int gap : {199, 200, 201}) {
    for (int roll = 1; roll < gap; ++roll) Throw(3, 4);
    Throw(6, 6);
  }
  EXPECT_EQ(Game.RollGapTally[12][199], 1);
  EXPECT_EQ(Game.RollGapTally[12][kLongGap], 2);
  EXPECT_EQ(std::pair(Game.RollGapTally[12][0], Game.ShooterSince[12]), std::pair(401, 0));
}

}  // namespace
