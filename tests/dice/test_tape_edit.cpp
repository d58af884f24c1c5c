#include "dice/tape_edit.h"

#include "dice/tape.h"
#include "dice/tape_file.h"
#include "figures/tape_counts.h"
#include "support/table_fixture.h"

namespace {

class TapeEdit : public FolderTest {
 protected:
  void Use(const std::string& bytes) { OpenDiceRollFile(folder_.Write("tape.rol", bytes)); }
};

/// A thousand edits of all kinds, against a string.
TEST_F(TapeEdit, EditsAsAStringIsEdited) {
  std::mt19937 random(5);
  const auto upTo = [&random](int limit) { return static_cast<int>(random() % (limit + 1U)); };
  Use("");
  std::string tape, copied;
  for (int round = 0; round < 1'000; ++round) {
    const int length = static_cast<int>(tape.size());
    if (upTo(2) > 0) {
      SelectRolls(upTo(length + 6) - 2, upTo(length + 6) - 2);
    } else if (upTo(1) > 0) {
      GoToRoll(upTo(length + 1));
    }
    const auto at = static_cast<std::size_t>(Game.DiceFilePos) - 1;
    const RollSelection rolls = SelectedRolls();
    const auto from = static_cast<std::size_t>(rolls.From) - 1;
    const auto count = static_cast<std::size_t>(rolls.Count);
    ASSERT_LE(from + count, tape.size());
    std::size_t position = at;
    switch (upTo(5)) {
      case 0:
      case 1: {
        Game.InsertRolls = upTo(1);
        std::string typed(static_cast<std::size_t>(upTo(6)), RandomThrow());
        EnterRolls(typed);
        tape.replace(at, Game.InsertRolls == TypeOverRolls ? typed.size() : 0, typed);
        position = at + typed.size();
        if (typed.empty()) continue;
        break;
      }
      case 2:
        CopySelectedRolls();
        if (count > 0) copied = tape.substr(from, count);
        ASSERT_EQ(folder_.Read("tape.rol"), tape);
        continue;
      case 3:
      case 4: {
        const bool cuts = upTo(1) > 0;
        (cuts ? CutSelectedRolls : DeleteSelectedRolls)();
        if (count == 0) continue;
        if (cuts) copied = tape.substr(from, count);
        tape.erase(from, count);
        position = from;
        break;
      }
      default:
        if (!AnyRollsCopied()) continue;
        PasteCopiedRolls();
        tape.insert(at, copied);
        position = at + copied.size();
    }
    ASSERT_GT(Game.LastFileResult, 0) << Game.LastErrorText;
    ASSERT_EQ(folder_.Read("tape.rol"), tape);
    ASSERT_EQ(Game.DiceFilePos, static_cast<int>(position) + 1);
    ASSERT_EQ(Game.DiceFileEnd, Game.DiceFilePos);
    ASSERT_EQ(ReadRolls(rolls.From, 7), tape.substr(std::min(from, tape.size()), 7));
  }
}

TEST_F(TapeEdit, EveryByteIsAThrowOrNone) {
  std::string all;
  for (int value = 0; value < 256; ++value) all += static_cast<char>(value);
  Use(all);
  int throws = 0;
  for (const char byte : all) {
    if (IsThrow(byte)) {
      ++throws;
      EXPECT_EQ(DiceByte(FirstDie(byte), SecondDie(byte)), static_cast<unsigned char>(byte) & 0xFC);
    }
    FlipTotal(7);
    EXPECT_EQ(IsHighlighted(byte), IsThrow(byte) && FirstDie(byte) + SecondDie(byte) == 7);
    FlipTotal(7);
  }
  const TapeCounts counts = CountTape({1, 256});
  EXPECT_EQ(throws, 36 * 4);
  EXPECT_TRUE(counts.Rolls == 256 && counts.NoThrows == 256 - 36 * 4);
  for (const std::int64_t pair : counts.Pairs) EXPECT_EQ(pair, 4);
}

TEST_F(TapeEdit, CountsTheKindsThatAreHighlighted) {
  Use(ThrowsOfDigits("16 61 25 33 66 66 12") + '\0');
  const auto kinds = [] {
    std::string text;
    for (const TapeKind& kind : HighlightedKinds(CountTape({1, 8})))
      text += kind.Name + " " + std::to_string(kind.Count) + ", ";
    return text;
  };
  EXPECT_EQ(kinds(), "");
  FlipTotal(7);
  FlipPip(6);
  EXPECT_TRUE(TotalIsHighlighted(7) && PipIsHighlighted(6) && TotalIsHighlighted(12));
  EXPECT_EQ(kinds(), "Total 7 3, Total 11 0, Total 12 2, A 6 on a die 4, All highlighted 5, ");
  FlipPip(6);  // takes 1-6 and 6-1 from the sevens
  EXPECT_FALSE(TotalIsHighlighted(7));
  EXPECT_EQ(kinds(), "2-5 1, 3-4 0, 4-3 0, 5-2 0, All highlighted 1, ");
  FlipTotal(7);
  EXPECT_TRUE(TotalIsHighlighted(7));
  const TapeKind sevens = HighlightedKinds(CountTape({1, 8}))[0];
  EXPECT_DOUBLE_EQ(sevens.Share, 100.0 * 3 / 7);
  EXPECT_DOUBLE_EQ(sevens.FairShare, 100.0 / 6);
}

}  // namespace
