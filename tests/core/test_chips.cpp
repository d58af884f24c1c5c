// How an amount becomes a pile of chips.
#include "core/chips.h"

#include <gmock/gmock.h>

#include "support/table_fixture.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ChipsTest : public TableTest {
 protected:
  static std::vector<Chip> ChipsOf(int betId) {
    std::vector<Chip> chips;
    for (int i = 0; i < Game.ChipCount; ++i)
      if (Game.ChipList[i].BetId == betId) chips.push_back(Game.ChipList[i]);
    return chips;
  }

  static std::vector<int> Pictures(int betId) {
    std::vector<int> pictures;
    for (const Chip& chip : ChipsOf(betId)) pictures.push_back(chip.Picture);
    return pictures;
  }

  /// The places of a bet's chips, from its first place.
  static std::vector<std::pair<int, int>> Offsets(int betId) {
    std::vector<std::pair<int, int>> offsets;
    for (const Chip& chip : ChipsOf(betId))
      offsets.emplace_back(chip.X - static_cast<int>(Game.BetChipX[betId]),
                           chip.Y - static_cast<int>(Game.BetChipY[betId]));
    return offsets;
  }

  static std::vector<int> PileOf(int betId, Currency amount) {
    Game.Bets[betId] = amount;
    ArrangeChips(betId);
    return Pictures(betId);
  }
};

TEST_F(ChipsTest, APileBeginsWithTheLargestChips) {
  EXPECT_THAT(PileOf(Field, 137), ElementsAre(4, 3, 2, 2, 1, 1));
  EXPECT_THAT(Offsets(Field), ElementsAre(std::pair{0, 0}, std::pair{3, 0}, std::pair{6, 0},
                                          std::pair{9, 0}, std::pair{12, 0}, std::pair{15, 0}));
  EXPECT_THAT(PileOf(Field, 500), ElementsAre(5)) << "the old pile is gone";
  EXPECT_THAT(PileOf(Field, 0), IsEmpty());
  EXPECT_EQ(Game.ChipCount, 0);
  EXPECT_EQ(Game.ChipColor, 1) << "the chip in hand is the same";
}

TEST_F(ChipsTest, WhatChipsDontShowIsAnOverflowChip) {
  EXPECT_THAT(PileOf(Field, Currency::FromRaw(5'000)), ElementsAre(6));
  EXPECT_THAT(PileOf(Field, Currency::FromRaw(65'000)), ElementsAre(2, 1, 6));
  const std::vector<int> pile = PileOf(Big6, 14'000);
  ASSERT_EQ(pile.size(), 14U);
  EXPECT_EQ(std::count(pile.begin(), pile.end(), 5), 13);
  EXPECT_EQ(pile.back(), kOverflowPicture);
  EXPECT_EQ(Offsets(Big6).back(), (std::pair{0, 0}));
  EXPECT_EQ(PileOf(Big6, 6500).size(), 13U) << "thirteen chips show it all";
}

TEST_F(ChipsTest, TheListIsOrderedByBet) {
  PileOf(Hop13, 7);
  PileOf(Field, 6);
  PileOf(Lay4, 5);
  std::vector<int> bets;
  for (int i = 0; i < Game.ChipCount; ++i) bets.push_back(Game.ChipList[i].BetId);
  EXPECT_THAT(bets, ElementsAre(Lay4, Field, Field, Hop13, Hop13, Hop13));
}

TEST_F(ChipsTest, OddsThatWinTheFlatBetAreHeeledAgainstIt) {
  SetPoint(4);
  Game.Bets[DontPass] = 10;
  // 20 at 1 to 2 win the 10: two 5s for the flat amount, the others beside and above them.
  EXPECT_THAT(PileOf(DontPassOdds, 20), ElementsAre(2, 2, 2, 2));
  EXPECT_THAT(Offsets(DontPassOdds),
              ElementsAre(std::pair{0, 0}, std::pair{3, 0}, std::pair{17, -3}, std::pair{20, -3}));
}

TEST_F(ChipsTest, AHeeledPileStartsWithAChipOfTheFlatBet) {
  SetPoint(4);
  Game.Bets[DontPass] = 30;
  EXPECT_THAT(PileOf(DontPassOdds, 60), ElementsAre(2, 2, 2, 2, 2, 2, 2, 2, 2, 2, 2, 2))
      << "30 is no whole number of 25s";
  Game.Bets[DontPass] = 50;
  EXPECT_THAT(PileOf(DontPassOdds, 100), ElementsAre(3, 3, 3, 3));
}

TEST_F(ChipsTest, OtherOddsLieToTheLeftOfTheFlatBet) {
  SetPoint(4);
  Game.Bets[DontPass] = 10;
  EXPECT_THAT(PileOf(DontPassOdds, 40), ElementsAre(3, 2, 2, 2));
  EXPECT_THAT(Offsets(DontPassOdds), ElementsAre(std::pair{0, 0}, std::pair{-17, 0},
                                                 std::pair{-20, 0}, std::pair{-23, 0}));
}

TEST_F(ChipsTest, OnlyShownStacksLieOnTheTable) {
  Game.VisibleStacks = {105, 102, 103, 104};
  Game.Bets[101] = Game.Bets[105] = 5;
  ArrangeChips(101);
  ArrangeChips(105);
  EXPECT_THAT(Pictures(101), IsEmpty());
  ASSERT_THAT(Pictures(105), ElementsAre(2));
  EXPECT_EQ(ChipsOf(105)[0].Y, static_cast<int>(Game.BetChipY[101])) << "at the first place";
  Game.Bets[102] = -20;
  ArrangeChips(102);
  EXPECT_THAT(Pictures(102), IsEmpty());
}

TEST_F(ChipsTest, NothingIsArrangedUnderHyperDrive) {
  Game.Bets[Field] = 5;
  Game.HyperDriveOn = true;
  ArrangeAllChips();
  EXPECT_EQ(Game.ChipCount, 0);
  Game.HyperDriveOn = false;
  ArrangeAllChips();
  EXPECT_EQ(Game.ChipCount, 1);
}

TEST_F(ChipsTest, MoreThanNineHundredChipsAreArrangedForGood) {
  for (int i = 0; i < 901; ++i) AddChip(Field, 100 + i % 50, 200);
  EXPECT_FALSE(Game.AutoArrangeChips);
  AddChip(Field, 100, 200);
  EXPECT_TRUE(Game.AutoArrangeChips);
  EXPECT_EQ(Game.ChipCount, 902);
  Game.Bets[Field] = 902;
  ArrangeChips(Field);
  EXPECT_THAT(Pictures(Field), ElementsAre(5, 4, 4, 4, 4, 1, 1));
  EXPECT_TRUE(Game.AutoArrangeChips);
}

TEST_F(ChipsTest, TheListNeverOutgrowsItsRecords) {
  for (int i = 0; i < kMaxChips + 50; ++i) AddChip(Field, 100, 200);
  EXPECT_EQ(Game.ChipCount, kMaxChips);
}

}  // namespace
