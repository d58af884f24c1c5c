#include "play/roll_pad.h"

#include "dice/generators.h"
#include "support/table_fixture.h"

namespace {

class RollPad : public TableTest {};

TEST_F(RollPad, TotalsAreDrawnFromAllThatMakeThemAndTheGeneratorsStayAsTheyWere) {
  Game.RngChoice = Rng1Mt;
  const auto rolls = [] {
    std::vector<int> dice;
    for (int roll = 0; roll < 20; ++roll) {
      RollWithGenerator();
      dice.push_back(Game.Die1 * 10 + Game.Die2);
    }
    return dice;
  };
  init_genrand(7);
  const std::vector<int> next = rolls();
  init_genrand(7);
  for (const PadCell& cell : CellsOfPad(PadTotals)) {
    std::map<int, int> firsts;
    for (int time = 0; time < 600; ++time) {
      const std::optional<NamedThrow> named = PadEntry().TakeCell(cell);
      ASSERT_TRUE(named && named->Die2 >= 1 && named->Die2 <= 6);
      ASSERT_EQ(named->Die1 + named->Die2, cell.Total);
      ++firsts[named->Die1];
    }
    ASSERT_EQ(static_cast<int>(firsts.size()), WaysToThrow(cell.Total));
    for (const auto& [face, times] : firsts) EXPECT_GT(times * WaysToThrow(cell.Total), 300);
  }
  EXPECT_EQ(rolls(), next);
}

TEST_F(RollPad, DigitsMakeThrows) {
  for (int display = 0; display < kPadDisplays; ++display)
    for (int first = 0; first <= 9; ++first)
      for (int second = 0; second <= 9; ++second) {
        PadEntry entry;
        const std::optional<NamedThrow> one = entry.TakeDigit(display, first);
        const int waits = entry.First();
        if (display == PadTotals) {
          EXPECT_EQ(one.has_value(), first >= 2);
          EXPECT_EQ(one ? one->Die1 + one->Die2 : first, first);
          EXPECT_EQ(waits, first == 1 ? 1 : 0);
          if (waits == 0) continue;
          const std::optional<NamedThrow> two = entry.TakeDigit(display, second);
          EXPECT_EQ(two ? two->Die1 + two->Die2 : 0, second <= 2 ? 10 + second : 0);
          EXPECT_EQ(entry.First(), second <= 2 ? 0 : 1);  // goes on waiting
        } else {
          EXPECT_FALSE(one);
          EXPECT_EQ(waits, first >= 1 && first <= 6 ? first : 0);
          const bool face = second >= 1 && second <= 6;
          const std::optional<NamedThrow> two = entry.TakeDigit(display, second);
          EXPECT_EQ(two, waits && face ? std::optional(NamedThrow{waits, second}) : std::nullopt);
        }
      }
}

}  // namespace
