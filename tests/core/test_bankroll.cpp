// The ATM and the bank limit.
#include "core/bankroll.h"

#include <gmock/gmock.h>

#include "core/change_bet.h"
#include "core/roll_cycle.h"
#include "support/table_fixture.h"

namespace {

using ::testing::StartsWith;

constexpr int kTopic = 130;
const char* const kSelect = "\n\nSelect \"New\" from the \"Game\" menu to reset the table.";

class BankrollTest : public TableTest {
 protected:
  static void SetBankroll(Currency amount) {
    Game.Bets[BankrollIndex] = amount;
    Game.BetsAfterRoll[BankrollIndex] = amount;
  }

  /// A transaction as it moved the bankroll and the money invested, which always move alike.
  static Currency Moved(AtmKind kind, Currency amount) {
    const Currency bankroll = Bankroll();
    const Currency invested = Game.InvestedBankroll;
    AtmTransaction(kind, amount);
    EXPECT_EQ(Bankroll() - bankroll, Game.InvestedBankroll - invested);
    return Bankroll() - bankroll;
  }
};

TEST_F(BankrollTest, TheAtmMovesWhatIsAskedFor) {
  EXPECT_EQ(Moved(AtmWithdrawal, Currency::FromRaw(2'505'000)), Currency::FromRaw(2'505'000));
  EXPECT_EQ(Moved(AtmDeposit, 250), Currency(-250));
  EXPECT_EQ(Moved(AtmDeposit, Currency::FromRaw(5'005'000)), Currency::FromRaw(-5'005'000));
  EXPECT_EQ(Bankroll(), Currency(0));
  EXPECT_TRUE(TakeShown().empty());
  EXPECT_TRUE(Game.GameChanged);
}

TEST_F(BankrollTest, AWithdrawalEndsAtTheBankLimit) {
  SetBankroll(9'999'000);
  EXPECT_EQ(Moved(AtmWithdrawal, 1000), Currency(1000));
  EXPECT_TRUE(TakeShown().empty());
  EXPECT_EQ(Moved(AtmWithdrawal, 500), Currency(0));
  const ShownMessage told = TakeOnlyMessage();
  EXPECT_EQ(told.Text,
            "Requested amount:  $500\nAllowed amount:  $0\n\n"
            "The full amount of this transaction was not allowed since it would have caused the "
            "current bankroll \nto exceed the bank limit of $10,000,000");
  EXPECT_EQ(told.Title, "ATM Withdrawal");
  EXPECT_EQ(told.HelpTopic, kTopic);
  SetBankroll(Currency(9'999'999));
  EXPECT_EQ(Moved(AtmWithdrawal, Currency::FromRaw(12'500)), Currency(1));
  EXPECT_THAT(TakeOnlyMessage().Text,
              StartsWith("Requested amount:  $1.25\nAllowed amount:  $1\n\nThe full"));
}

TEST_F(BankrollTest, ADepositEndsAtTheFreeMoney) {
  EXPECT_EQ(Moved(AtmDeposit, 600), Currency(-500));
  EXPECT_EQ(TakeOnlyMessage().Text,
            "Requested amount:  $600\nAllowed amount:  $500\n\n"
            "The full amount of this transaction was not allowed since it would have \n"
            "resulted in a negative current bankroll.\n\n"
            "You can deposit more by checking the box marked, \"Allow negative bankroll amounts\" "
            "on the Configuration screen.");
  SetBankroll(500);
  Given(Field, 100);
  EXPECT_EQ(Moved(AtmDeposit, 401), Currency(-400));
  EXPECT_EQ(TakeOnlyMessage().Text,
            "Requested amount:  $401\nAllowed amount:  $400\n\n"
            "The full amount of this transaction was not allowed since it would have \n"
            "caused your current bankroll to drop below the amount of your current bets.\n\n"
            "You can deposit more by checking the box marked, \"Allow negative bankroll amounts\" "
            "on the Configuration screen, and/or by reducing the amount of your current bets.");
  Put(Two, 1);
  EXPECT_EQ(Bet(Two), Currency(0)) << "nothing is free to bet";
}

TEST_F(BankrollTest, ADepositOfMoneyThatIsShortIsNothing) {
  SetBankroll(-50);
  EXPECT_EQ(Moved(AtmDeposit, 10), Currency(0));
  EXPECT_THAT(TakeOnlyMessage().Text,
              StartsWith("Requested amount:  $10\nAllowed amount:  $0\n\n"));
}

TEST_F(BankrollTest, ANegativeBankrollEndsAtTheLimitBelow) {
  Game.NegBankroll = true;
  EXPECT_EQ(Moved(AtmDeposit, 10'000'500), Currency(-10'000'500));
  EXPECT_TRUE(TakeShown().empty());
  SetBankroll(-9'999'900);
  EXPECT_EQ(Moved(AtmDeposit, 150), Currency(-100));
  const ShownMessage told = TakeOnlyMessage();
  EXPECT_EQ(told.Text,
            "Requested amount:  $150\nAllowed amount:  $100\n\n"
            "The full amount of this transaction was not allowed since it would have caused your "
            "current bankroll \nto exceed the bank limit of $-10,000,000");
  EXPECT_EQ(told.Title, "ATM Deposit");
}

TEST_F(BankrollTest, AtmNoticesAreAClassButOnTheConfigurationScreen) {
  Game.Notify = ~NoticeActions;
  EXPECT_EQ(Moved(AtmDeposit, 600), Currency(-500));
  EXPECT_TRUE(TakeShown().empty());
  Game.ConfigureActive = true;
  Game.HyperDriveOn = true;
  AtmTransaction(AtmDeposit, 5);
  EXPECT_EQ(TakeOnlyMessage().Text,
            "Requested amount:  $5\nAllowed amount:  $0\n\n"
            "The full amount of this transaction was not allowed since it would have \n"
            "resulted in a negative current bankroll.\n\n"
            "You can deposit more by checking the box marked, "
            "\"Allow negative bankroll amounts\".");
  Game.ConfigureActive = false;
  Game.Notify = 15;
  AtmTransaction(AtmDeposit, 5);
  EXPECT_TRUE(TakeShown().empty()) << "never under Hyper-Drive";
}

// --- The bank limit ---

class BankLimitTest : public BankrollTest {
 protected:
  void SetUp() override {
    BankrollTest::SetUp();
    TheHost.CelebrateBank = [this] { ++Celebrated; };
    Game.HandleWinningBets = WinTakeDown;
    Game.NegBankroll = true;
  }
  int Celebrated = 0;
};

TEST_F(BankLimitTest, ARollThatPassesTheLimitIsCelebratedAndTheNextIsNotThrown) {
  SetBankroll(9'999'990);
  Establish(Field, 9);
  Roll(1, 2);
  EXPECT_EQ(Bankroll(), Currency(9'999'999));
  EXPECT_TRUE(TakeShown().empty()) << "strictly above";
  Establish(Field, 1);
  Roll(1, 2);
  const ShownMessage won = {
      std::string("Congratulations!\n\nYou broke the bank limit of $10,000,000") + kSelect,
      "Kelvanor", kTopic, OkTick};
  EXPECT_EQ(TakeOnlyMessage(), won);
  EXPECT_EQ(Celebrated, 1);
  EXPECT_EQ(Game.RollCount[0], 2);
  Roll(1, 2);
  EXPECT_EQ(Game.RollCount[0], 2);
  EXPECT_EQ(TakeOnlyMessage(), won);
  EXPECT_EQ(Celebrated, 1) << "the bankroll hasn't moved";
  EXPECT_FALSE(Game.RollInProgress);
}

TEST_F(BankLimitTest, TheLimitBelowIsNoLuckyDay) {
  SetBankroll(-9'999'990);
  Establish(Field, 10);
  Roll(3, 4);
  const ShownMessage told = TakeOnlyMessage();
  EXPECT_EQ(told.Text, std::string("Sorry ... this wasn't your lucky day.\n\n"
                                   "You've exceeded the max loss limit of $10,000,000") +
                           kSelect);
  EXPECT_EQ(told.Title, "Kelvanor");
  EXPECT_EQ(told.HelpTopic, kTopic);
  EXPECT_EQ(Celebrated, 0);
  Roll(3, 4);
  EXPECT_EQ(Game.RollCount[0], 1);
}

TEST_F(BankLimitTest, HyperDriveStopsWithTheReason) {
  Game.HyperDriveOn = true;
  SetBankroll(9'999'990);
  Establish(Field, 10);
  Game.KeepRolling = true;
  Roll(1, 2);
  EXPECT_EQ(Game.RollCount[0], 1);
  EXPECT_FALSE(Game.KeepRolling);
  EXPECT_EQ(Game.StopMessage,
            std::string("Stopped by breaking the bank limit of $10,000,000") + kSelect);
  SetBankroll(-9'999'990);
  Establish(Field, 10);
  Game.KeepRolling = true;
  Roll(3, 4);
  EXPECT_EQ(Game.RollCount[0], 2);
  EXPECT_EQ(Game.StopMessage,
            std::string("Stopped by exceeding the max loss limit of $10,000,000") + kSelect);
  EXPECT_TRUE(TakeShown().empty());
  EXPECT_EQ(Celebrated, 0);
}

}  // namespace
