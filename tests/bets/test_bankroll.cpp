// The ATM and the bank limit.
#include "bets/bankroll.h"

#include "support/table_fixture.h"

namespace {

const char* const kSelect = "\n\nSelect \"New\" from the \"Game\" menu to reset the table.";
const char* const kNegative = "\nresulted in a negative current bankroll.";

/// How the message of a transaction begins that was cut to the allowed amount.
std::string Trimmed(const std::string& requested, const std::string& allowed) {
  return "Requested amount:  $" + requested + "\nAllowed amount:  $" + allowed +
         "\n\nThe full amount of this transaction was not allowed since it would have ";
}

class BankrollTest : public TableTest {
 protected:
  static void SetBankroll(Currency amount) {
    Game.Bets[BankrollIndex] = Game.BetsAfterRoll[BankrollIndex] = amount;
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

TEST_F(BankrollTest, TheAtmMovesWhatIsAskedForUpToTheBankLimit) {
  EXPECT_EQ(Moved(AtmWithdrawal, Currency::FromRaw(2'505'000)), Currency::FromRaw(2'505'000));
  EXPECT_EQ(Moved(AtmDeposit, 250), Currency(-250));
  EXPECT_EQ(Moved(AtmDeposit, Currency::FromRaw(5'005'000)), Currency::FromRaw(-5'005'000));
  EXPECT_EQ(Bankroll(), Currency(0));
  EXPECT_TRUE(TakeShown().empty() && Game.GameChanged);
  SetBankroll(9'999'000);
  EXPECT_EQ(Moved(AtmWithdrawal, 1000), Currency(1000));
  EXPECT_TRUE(TakeShown().empty());
  SetBankroll(9'999'999);
  EXPECT_EQ(Moved(AtmWithdrawal, Currency::FromRaw(12'500)), Currency(1));
  EXPECT_EQ(TakeOnlyMessage().Text, Trimmed("1.25", "1") + "caused the current bankroll \n" +
                                        "to exceed the bank limit of $10,000,000");
}

TEST_F(BankrollTest, ADepositEndsAtTheFreeMoney) {
  const std::string onScreen =
      "\n\nYou can deposit more by checking the box marked, \"Allow negative bankroll amounts\" on "
      "the Configuration screen";
  EXPECT_EQ(Moved(AtmDeposit, 600), Currency(-500));
  EXPECT_EQ(TakeOnlyMessage().Text, Trimmed("600", "500") + kNegative + onScreen + ".");
  SetBankroll(500);
  Given(Field, 100);
  EXPECT_EQ(Moved(AtmDeposit, 401), Currency(-400));
  EXPECT_EQ(TakeOnlyMessage().Text,
            Trimmed("401", "400") +
                "\ncaused your current bankroll to drop below the amount of your current bets." +
                onScreen + ", and/or by reducing the amount of your current bets.");
  SetBankroll(-50);
  EXPECT_EQ(Moved(AtmDeposit, 10), Currency(0));
  EXPECT_EQ(TakeOnlyMessage().Text.rfind(Trimmed("10", "0"), 0), 0U);
}

TEST_F(BankrollTest, ANegativeBankrollEndsAtTheLimitBelow) {
  Game.NegBankroll = true;
  EXPECT_EQ(Moved(AtmDeposit, 10'000'500), Currency(-10'000'500));
  EXPECT_TRUE(TakeShown().empty());
  SetBankroll(-9'999'900);
  EXPECT_EQ(Moved(AtmDeposit, 150), Currency(-100));
  EXPECT_TRUE(TakeOnlyMessage().Text.starts_with(Trimmed("150", "100")));
}

TEST_F(BankrollTest, AtmNoticesAreAClassButOnTheConfigurationScreen) {
  Game.Notify = ~NoticeActions;
  EXPECT_EQ(Moved(AtmDeposit, 600), Currency(-500));
  EXPECT_TRUE(TakeShown().empty());
  Game.ConfigureActive = Game.HyperDriveOn = true;
  AtmTransaction(AtmDeposit, 5);
  EXPECT_TRUE(TakeOnlyMessage().Text.ends_with("bankroll amounts\"."));
  Game.ConfigureActive = false;
  Game.Notify = 15;
  AtmTransaction(AtmDeposit, 5);
  EXPECT_TRUE(TakeShown().empty()) << "never under Hyper-Drive";
}

// --- The bank limit ---

class BankLimitTest : public BankrollTest {
 protected:
  BankLimitTest() {
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
  const std::string won =
      std::string("Congratulations!\n\nYou broke the bank limit of $10,000,000") + kSelect;
  EXPECT_EQ(TakeOnlyMessage().Text, won);
  EXPECT_EQ(std::pair(Celebrated, Game.RollCount[0]), std::pair(1, 2));
  Roll(1, 2);
  EXPECT_EQ(std::tuple(Game.RollCount[0], TakeOnlyMessage().Text), std::tuple(2, won));
  EXPECT_EQ(Celebrated, 1) << "the bankroll hasn't moved";
}

TEST_F(BankLimitTest, HyperDriveStopsWithTheReason) {
  Game.HyperDriveOn = true;
  for (const bool won : {true, false}) {
    SetBankroll(won ? 9'999'990 : -9'999'990);
    Establish(Field, 10);
    Game.KeepRolling = true;
    Roll(1, won ? 2 : 6);
    EXPECT_EQ(Game.RollCount[0], won ? 1 : 2);
    EXPECT_FALSE(Game.KeepRolling);
    EXPECT_EQ(Game.StopMessage, std::string("Stopped by ") +
                                    (won ? "breaking the bank" : "exceeding the max loss") +
                                    " limit of $10,000,000" + kSelect);
  }
  EXPECT_TRUE(TakeShown().empty());
  EXPECT_EQ(Celebrated, 0);
}

}  // namespace
