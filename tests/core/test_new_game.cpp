// A new game: what is cleared, what is kept, and the bankroll it begins with.
#include "core/new_game.h"
#include "core/roll_cycle.h"
#include "core/text.h"
#include "support/table_fixture.h"

namespace {

class NewGameTest : public TableTest {
 protected:
  /// A game of some rolls: 500 dollars brought in, 80 of them lost, 120 at work.
  void SetUp() override {
    TableTest::SetUp();
    Game.ReSeed = false;
    Game.HandleWinningBets = WinTakeDown;
    Given(Field, 80);
    Roll(2, 4);
    Given(Buy4, 20);
    Given(PassLineOdds, 0);
    Game.Bets[FirstChipStack] = 75;
    Game.ChipStackName[0] = "Mine";
    TakeShown();
  }
};

TEST_F(NewGameTest, TheTableAndTheBooksAreEmpty) {
  Game.AutoBetActivePrev = 1;
  Game.NumAutoRolls = 7;
  Game.OddsMultiple = 0;
  Game.GameFileName = "some.crp";
  NewGame(false);
  EXPECT_EQ(Bankroll(), Currency(500));
  for (int id = Lay4; id <= LastBet; ++id) EXPECT_EQ(Bet(id), Currency(0)) << BetName(id);
  EXPECT_EQ(Game.TotalOnTable, Currency(0));
  EXPECT_EQ(Game.BuyVigHeld[0], Currency(0));
  EXPECT_EQ(Game.Point, 0);
  EXPECT_EQ(Game.PrevPoint, 0);
  EXPECT_EQ(Game.RollCount[0], 0);
  EXPECT_EQ(Game.RollCount[6], 0);
  EXPECT_EQ(Game.ShooterEvent[6], 0);
  EXPECT_EQ(Game.ShooterSince[7], 0);
  EXPECT_EQ(Game.ShooterStats, (std::array<int, kShooterStats>{}));
  EXPECT_EQ(Game.BetLosses[Actual][Field][StatCount], Currency(0));
  EXPECT_EQ(Game.BetWagers[Phantom][Field][StatCount], Currency(0));
  EXPECT_EQ(Game.BetOutcome[Field][1], 0);
  EXPECT_EQ(Game.BetWorking[Place4], NotWorking) << "back on the come-out";
  EXPECT_EQ(Game.BankrollSum, Currency(0));
  EXPECT_EQ(Game.BankrollHistoryCount, 0);
  EXPECT_EQ(Game.AutoRollsLeft, 7);
  EXPECT_EQ(Game.OddsMultiple, Game.OddsAllowed68) << "a first point of 8 must find a multiple";
  EXPECT_EQ(Game.GameFileName, "");
  EXPECT_EQ(Game.ChipCount, 0);
  EXPECT_EQ((std::array{Game.Bets[95], Game.Bets[99]}), (std::array{Currency(1), Currency(500)}));
}

TEST_F(NewGameTest, ChipStacksGoUnlessTheyAreToStay) {
  NewGame(true);
  EXPECT_EQ(Bet(FirstChipStack), Currency(75));
  NewGame(false);
  EXPECT_EQ(Bet(FirstChipStack), Currency(0));
  EXPECT_EQ(Game.ChipStackName[0], "Mine");
}

struct Beginning {
  int Type;
  int Bankroll;
  int Invested;
};

TEST_F(NewGameTest, TheBankrollBeginsByItsType) {
  Game.BankrollInitAmt = 300;
  // The player has 420 left of 500.
  for (const Beginning& b :
       {Beginning{CarryBankrollAndNet, 420, 500}, Beginning{CarryBankroll, 420, 420},
        Beginning{StartWithAmount, 300, 300}}) {
    Game.BankrollInitType = b.Type;
    NewGame(false);
    EXPECT_EQ(Bankroll(), Currency(b.Bankroll)) << b.Type;
    EXPECT_EQ(Game.InvestedBankroll, Currency(b.Invested)) << b.Type;
    EXPECT_EQ(Game.BetsAtRoll[BankrollIndex], Bankroll());
    EXPECT_EQ(Game.BetsAfterRoll[BankrollIndex], Bankroll());
    EXPECT_EQ(Game.BankrollHigh, Bankroll());
    EXPECT_EQ(Game.BankrollLow, Bankroll());
  }
  EXPECT_TRUE(TakeShown().empty());
}

TEST_F(NewGameTest, ThePlayerIsAskedForTheBankroll) {
  Game.BankrollInitType = PromptForBankroll;
  Game.KeepRolling = true;
  Answers = {{0, false, "1,250.50", ""}};
  std::string prefilled;
  const auto show = TheHost.ShowMessage;
  TheHost.ShowMessage = [&](bool modal) {
    prefilled = Game.MsgInput[0];
    show(modal);
  };
  NewGame(false);
  EXPECT_EQ(prefilled, "500");
  EXPECT_EQ(
      TakeOnlyMessage(),
      (ShownMessage{"Enter your beginning bankroll: ", "Set Beginning Bankroll", 130, InputOk}));
  const Currency entered = Currency::FromRaw(12'505'000);
  EXPECT_EQ(Bankroll(), entered);
  EXPECT_EQ(Game.BankrollInitAmt, entered);
  EXPECT_EQ(Game.InvestedBankroll, entered);
  EXPECT_EQ(Game.BankrollHigh, entered);
  EXPECT_FALSE(Game.KeepRolling);
}

TEST_F(NewGameTest, ABankrollThatIsGoneCannotBeCarried) {
  for (const int type : {CarryBankroll, CarryBankrollAndNet}) {
    for (const int left : {0, -40}) {
      Game.BankrollInitType = type;
      Game.Bets[BankrollIndex] = left;
      Game.InvestedBankroll = 500;
      Answers = {{0, false, "200", ""}};
      NewGame(false);
      EXPECT_EQ(TakeOnlyMessage().Title, "Set Beginning Bankroll");
      EXPECT_EQ(Bankroll(), Currency(200));
      EXPECT_EQ(Game.InvestedBankroll, Currency(200)) << "the net begins afresh";
      EXPECT_FALSE(Game.NegBankroll);
    }
  }
}

TEST_F(NewGameTest, ANegativeBeginningAllowsNegativeBankrolls) {
  Game.BankrollInitAmt = -25;
  NewGame(false);
  EXPECT_EQ(Bankroll(), Currency(-25));
  EXPECT_TRUE(Game.NegBankroll);
}

TEST_F(NewGameTest, GamesThatFollowAtOnceAreNoCopiesOfEachOther) {
  Game.ReSeed = true;
  NewGame(false);
  const int seed = Game.LastSeed;
  NewGame(false);
  EXPECT_NE(Game.LastSeed, seed);
}

}  // namespace
