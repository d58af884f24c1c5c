// A new game: what is cleared, what is kept, and the bankroll it begins with.
#include "bets/new_game.h"

#include <functional>

#include "stats/bet_tables.h"
#include "stats/roll_counters.h"
#include "support/same_game.h"
#include "support/table_fixture.h"

namespace {

class NewGameTest : public TableTest {
 protected:
  /// A game of some rolls: 500 dollars brought in, 80 of them lost, 120 at work.
  NewGameTest() {
    Game.ReSeed = false;
    Game.HandleWinningBets = WinTakeDown;
    Given(Field, 80);
    Roll(2, 4);
    Given(Buy4, 20);
    Game.Bets[FirstChipStack] = 75;
    Game.ChipStackName[0] = "Mine";
    TakeShown();
  }
};

/// That a new game remembers nothing of the last is a law of long play.
TEST_F(NewGameTest, ChipStacksGoUnlessTheyAreToStay) {
  Game.NumAutoRolls = 7;
  Game.GameFileName = "some.crp";
  NewGame(true);
  EXPECT_EQ(std::pair(Bet(FirstChipStack), Bet(Buy4)), std::pair(Currency(75), Currency(0)));
  NewGame(false);
  EXPECT_EQ(Bet(FirstChipStack), Currency(0));
  EXPECT_EQ(Game.ChipStackName[0] + Game.GameFileName, "Mine");
  EXPECT_EQ(std::pair(Game.AutoRollsLeft, Game.BetWorking[Place4]), std::pair(7, +NotWorking));
}

TEST_F(NewGameTest, WhateverWritesTalliesIsCleared) {
  const std::function<void()> writers[] = {
      [] { RecordBetOutcome(Phantom, Field, 1, 2); },
      [] { RecordBetOutcome(Actual, Place8, 6, 7); },
      [] { RecordStaked(Lay4, 21, -21); },
      [] { RecordEarlierWagers(Hop55, 5, 3), RecordEarlierNets(Hop55, -5, 3); },
      [] { RecordPhantomWagers(Hard4, 1, 4), RecordPhantomNets(Hard4, 7, 4, true); },
      [] { UpdateEstablished(8, true); },
      [] { RecordStaked(Big6, 6, 6), SumBetStats(Lay4, LastBet, true); },
      [] { TallyThrow(); },
  };
  for (const auto& write : writers) {
    write();
    NewGame(false);
    ASSERT_TRUE(FieldsOf(Tallies(Game)) == FieldsOf(Tallies())) << &write - writers;
  }
}

TEST_F(NewGameTest, TheBankrollBeginsByItsType) {
  Game.BankrollInitAmt = 300;
  // The player has 420 left of 500.
  const int cases[][3] = {
      {CarryBankrollAndNet, 420, 500}, {CarryBankroll, 420, 420}, {StartWithAmount, 300, 300}};
  for (const auto& [type, bankroll, invested] : cases) {
    Game.BankrollInitType = type;
    NewGame(false);
    EXPECT_EQ(Game.InvestedBankroll, Currency(invested)) << type;
    for (const Currency amount :
         {Bankroll(), Game.BetsAtRoll[BankrollIndex], Game.BetsAfterRoll[BankrollIndex],
          Game.BankrollHigh, Game.BankrollLow})
      EXPECT_EQ(amount, Currency(bankroll)) << type;
  }
  EXPECT_TRUE(TakeShown().empty());
}

TEST_F(NewGameTest, ANegativeBeginningAllowsNegativeBankrolls) {
  Game.BankrollInitAmt = -25;
  NewGame(false);
  EXPECT_EQ(Bankroll(), Currency(-25));
  EXPECT_TRUE(Game.NegBankroll);
}

TEST_F(NewGameTest, ThePlayerIsAskedForTheBankroll) {
  Game.BankrollInitType = PromptForBankroll;
  Game.KeepRolling = true;
  Answers = {{0, false, "1,250.50", ""}};
  std::string prefilled;
  TheHost.ShowMessage = [&, show = TheHost.ShowMessage](bool modal) {
    prefilled = Game.MsgInput[0];
    show(modal);
  };
  NewGame(false);
  EXPECT_EQ(prefilled, "500");
  EXPECT_EQ(TakeOnlyMessage().Title, "Set Beginning Bankroll");
  const Currency entered = Currency::FromRaw(12'505'000);
  for (const Currency amount : {Bankroll(), Game.BankrollInitAmt, Game.InvestedBankroll})
    EXPECT_EQ(amount, entered);
  EXPECT_FALSE(Game.KeepRolling);
}

TEST_F(NewGameTest, ABankrollThatIsGoneCannotBeCarried) {
  for (const int type : {CarryBankroll, CarryBankrollAndNet}) {
    Game.BankrollInitType = type;
    Game.Bets[BankrollIndex] = type == CarryBankroll ? 0 : -40;
    Answers = {{0, false, "200", ""}};
    NewGame(false);
    EXPECT_EQ(TakeOnlyMessage().Title, "Set Beginning Bankroll");
    EXPECT_EQ(Bankroll(), Currency(200));
    EXPECT_EQ(Game.InvestedBankroll, Currency(200)) << "the net begins afresh";
    EXPECT_FALSE(Game.NegBankroll);
  }
}

TEST_F(NewGameTest, GamesThatFollowAtOnceAreNoCopiesOfEachOther) {
  Game.ReSeed = true;
  NewGame(false);
  const int seed = Game.LastSeed;
  NewGame(false);
  EXPECT_NE(Game.LastSeed, seed);
}

}  // namespace
