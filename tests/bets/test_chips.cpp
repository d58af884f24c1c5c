// How an amount becomes a pile of chips.

#include "support/table_fixture.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

using Places = std::vector<std::pair<int, int>>;

class ChipsTest : public TableTest {
 protected:
  /// The places of a bet's chips, from its first place.
  static Places Offsets(int betId) {
    Places offsets;
    for (int i = 0; i < Game.ChipCount; ++i)
      if (const Chip& chip = Game.ChipList[i]; chip.BetId == betId)
        offsets.emplace_back(chip.X - static_cast<int>(Game.BetChipX[betId]),
                             chip.Y - static_cast<int>(Game.BetChipY[betId]));
    return offsets;
  }

  /// Arranges an amount: the pictures of its chips.
  static std::vector<int> PileOf(int betId, Currency amount) {
    Game.Bets[betId] = amount;
    ArrangeChips(betId);
    std::vector<int> pictures;
    for (int i = 0; i < Game.ChipCount; ++i)
      if (Game.ChipList[i].BetId == betId) pictures.push_back(Game.ChipList[i].Picture);
    return pictures;
  }
};

TEST_F(ChipsTest, APileBeginsWithTheLargestChips) {
  EXPECT_THAT(PileOf(Field, 137), ElementsAre(4, 3, 2, 2, 1, 1));
  EXPECT_EQ(Offsets(Field), (Places{{0, 0}, {3, 0}, {6, 0}, {9, 0}, {12, 0}, {15, 0}}));
  EXPECT_THAT(PileOf(Field, 500), ElementsAre(5)) << "the old pile is gone";
  EXPECT_THAT(PileOf(Field, 0), IsEmpty());
  EXPECT_EQ(Game.ChipCount, 0);
}

TEST_F(ChipsTest, WhatChipsDontShowIsAnOverflowChip) {
  EXPECT_THAT(PileOf(Field, Currency::FromRaw(65'000)), ElementsAre(2, 1, 6));
  EXPECT_EQ(PileOf(Big6, 6500), std::vector<int>(13, 5)) << "thirteen chips show it all";
  std::vector<int> pile(13, 5);
  pile.push_back(kOverflowPicture);
  EXPECT_EQ(PileOf(Big6, 14'000), pile);
  EXPECT_EQ(Offsets(Big6).back(), std::pair(0, 0));
  EXPECT_EQ(PileOf(FirstChipStack, 14'000), pile) << "on a Chip-Stack too";
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
  EXPECT_EQ(Offsets(DontPassOdds), (Places{{0, 0}, {3, 0}, {17, -3}, {20, -3}}));
  EXPECT_THAT(PileOf(DontPassOdds, 40), ElementsAre(3, 2, 2, 2)) << "others lie to the left";
  EXPECT_EQ(Offsets(DontPassOdds), (Places{{0, 0}, {-17, 0}, {-20, 0}, {-23, 0}}));
  Game.Bets[DontPass] = 30;
  EXPECT_EQ(PileOf(DontPassOdds, 60), std::vector<int>(12, 2)) << "30 is no whole number of 25s";
  Game.Bets[DontPass] = 50;
  EXPECT_EQ(PileOf(DontPassOdds, 100), std::vector<int>(4, 3));
}

TEST_F(ChipsTest, OnlyShownStacksLieOnTheTable) {
  Game.VisibleStacks = {102, 105, 103, 104};
  EXPECT_THAT(PileOf(101, 5), IsEmpty());
  EXPECT_THAT(PileOf(102, -20), IsEmpty());
  EXPECT_THAT(PileOf(105, 5), ElementsAre(2));
  EXPECT_EQ(Game.ChipList[0].Y, static_cast<int>(Game.BetChipY[102])) << "at the second place";
}

TEST_F(ChipsTest, NothingIsArrangedUnderHyperDrive) {
  Game.Bets[Field] = 5;
  for (const bool hyperDrive : {true, false}) {
    Game.HyperDriveOn = hyperDrive;
    ArrangeAllChips();
    EXPECT_EQ(Game.ChipCount, hyperDrive ? 0 : 1);
  }
}

TEST_F(ChipsTest, MoreThanNineHundredChipsAreArrangedForGood) {
  for (int i = 0; i < 901; ++i) AddChip(Field, 100 + i % 50, 200);
  EXPECT_FALSE(Game.AutoArrangeChips);
  AddChip(Field, 100, 200);
  EXPECT_TRUE(Game.AutoArrangeChips);
  EXPECT_EQ(Game.ChipCount, 902);
  EXPECT_THAT(PileOf(Field, 902), ElementsAre(5, 4, 4, 4, 4, 1, 1));
  EXPECT_TRUE(Game.AutoArrangeChips);
  for (int i = 0; i < kMaxChips + 50; ++i) AddChip(Field, 100, 200);
  EXPECT_EQ(Game.ChipCount, kMaxChips) << "the list never outgrows its records";
}

}  // namespace
