// A new game: what is cleared, what is kept, and the bankroll it begins with.
#include "bets/new_game.h"
#include "core/text.h"
#include "play/roll_cycle.h"
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
    Game.Bets[FirstChipStack] = 75;
    Game.ChipStackName[0] = "Mine";
    TakeShown();
  }
};

TEST_F(NewGameTest, TheTableAndTheBooksAreEmpty) {
  Game.NumAutoRolls = 7;
  Game.OddsMultiple = 0;
  Game.GameFileName = "some.crp";
  NewGame(false);
  for (int id = Lay4; id <= LastBet; ++id) EXPECT_EQ(Bet(id), Currency(0)) << BetName(id);
  for (const Currency amount :
       {Game.TotalOnTable, Game.BuyVigHeld[0], Game.BankrollSum,
        Game.BetLosses[Actual][Field][StatCount], Game.BetWagers[Phantom][Field][StatCount]})
    EXPECT_EQ(amount, Currency(0));
  for (const int count :
       {Game.Point, Game.PrevPoint, Game.RollCount[0], Game.RollCount[6], Game.ShooterEvent[6],
        Game.ShooterSince[7], Game.BetOutcome[Field][1], Game.BankrollHistoryCount, Game.ChipCount})
    EXPECT_EQ(count, 0);
  EXPECT_EQ(Game.ShooterStats, (std::array<int, kShooterStats>{}));
  EXPECT_EQ(Game.BetWorking[Place4], NotWorking) << "back on the come-out";
  EXPECT_EQ(Game.AutoRollsLeft, 7);
  EXPECT_EQ(Game.OddsMultiple, Game.OddsAllowed68) << "a first point of 8 must find a multiple";
  EXPECT_EQ(Game.GameFileName, "");
  EXPECT_EQ((std::array{Game.Bets[95], Game.Bets[99]}), (std::array{Currency(1), Currency(500)}));
}

TEST_F(NewGameTest, ChipStacksGoUnlessTheyAreToStay) {
  NewGame(true);
  EXPECT_EQ(Bet(FirstChipStack), Currency(75));
  NewGame(false);
  EXPECT_EQ(Bet(FirstChipStack), Currency(0));
  EXPECT_EQ(Game.ChipStackName[0], "Mine");
}

TEST_F(NewGameTest, TheBankrollBeginsByItsType) {
  Game.BankrollInitAmt = 300;
  const struct {
    int Type, Bankroll, Invested;
  } cases[] = {{CarryBankrollAndNet, 420, 500},  // the player has 420 left of 500
               {CarryBankroll, 420, 420},
               {StartWithAmount, 300, 300}};
  for (const auto& c : cases) {
    Game.BankrollInitType = c.Type;
    NewGame(false);
    EXPECT_EQ(Game.InvestedBankroll, Currency(c.Invested)) << c.Type;
    for (const Currency amount :
         {Bankroll(), Game.BetsAtRoll[BankrollIndex], Game.BetsAfterRoll[BankrollIndex],
          Game.BankrollHigh, Game.BankrollLow})
      EXPECT_EQ(amount, Currency(c.Bankroll)) << c.Type;
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
  EXPECT_EQ((std::array{Bankroll(), Game.BankrollInitAmt, Game.InvestedBankroll}),
            (std::array{entered, entered, entered}));
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
