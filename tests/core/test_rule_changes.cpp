#include <gtest/gtest.h>

#include <string>

#include "core/change_bet.h"
#include "core/headless_host.h"
#include "core/rule_changes.h"
#include "rules/defaults.h"

namespace {

class RuleChanges : public ::testing::Test {
 protected:
  void SetUp() override {
    TheHost = HeadlessHost();
    LayDownDefaults();
    Game.Notify = 0;
  }

  static void Put(int bet, Currency amount) {
    RequestChange(bet, amount);
    ASSERT_EQ(Game.Bets[static_cast<unsigned>(bet)], amount);
  }
};

std::string VigText() {
  return "You're not allowed to change this setting at this time since the added up-front vig will "
         "cause the amount of your current bets to exceed your current bankroll.\n"
         "You can remedy this by doing one or more of the following:\n"
         " -- Check \"Allow negative bankroll amounts\", or\n"
         " -- Make a withdrawal from the ATM, or\n"
         " -- Win some more money, or\n"
         " -- Reduce the amount of your current bets.";
}

TEST_F(RuleChanges, VigUpFrontThatTheBankrollCannotCoverIsUndone) {
  ASSERT_TRUE(SetBuyVigUpFront(false).Ok);
  Put(Buy4, 500);
  EXPECT_EQ(Game.TotalOnTable, Currency(500));
  const CheckResult refused = SetBuyVigUpFront(true);
  EXPECT_FALSE(refused.Ok);
  EXPECT_EQ(refused.Title, "Buy Bet Vig");
  EXPECT_EQ(refused.Text, VigText());
  EXPECT_FALSE(Game.BuyVigUpFront);
  EXPECT_EQ(Game.TotalOnTable, Currency(500));
  Game.NegBankroll = true;
  EXPECT_TRUE(SetBuyVigUpFront(true).Ok);
  EXPECT_EQ(Game.TotalOnTable, Currency(525));
}

TEST_F(RuleChanges, RoundingMovesTheHeldVigAndGoesBackWhenRefused) {
  Put(Lay4, 50);  // wins 25, vig 1.25
  EXPECT_EQ(Game.TotalOnTable, Currency(51));
  EXPECT_TRUE(SetRoundLayVig(RoundedUp).Ok);
  EXPECT_EQ(Game.TotalOnTable, Currency(52));
  EXPECT_TRUE(SetRoundLayVig(RoundedDown).Ok);
  Game.Bets[BankrollIndex] = 51;
  const CheckResult refused = SetRoundLayVig(RoundedUp);
  EXPECT_EQ(refused.Title, "Lay Bet Vig");
  EXPECT_EQ(Game.RoundLayVig, RoundedDown);
  EXPECT_EQ(Game.TotalOnTable, Currency(51));
}

TEST_F(RuleChanges, NegativeBankrollsStayAllowedWhileNeeded) {
  Game.NegBankroll = true;
  Game.Bets[BankrollIndex] = -5;
  CheckResult refused = SetNegBankroll(false);
  EXPECT_EQ(refused.Title, "Bankroll");
  EXPECT_EQ(refused.Text,
            "Before you can un-check this box you must first establish a non-negative bankroll by "
            "either:\n -- Winning some more money, or\n -- Making a withdrawal from the ATM.");
  Game.Bets[BankrollIndex] = 100;
  Put(Field, 1'000);
  Put(Big6, 350);
  refused = SetNegBankroll(false);
  EXPECT_EQ(refused.Text,
            "The amount of your current bets exceeds your current bankroll.  Therefore, before you "
            "can un-check this box you must either:\n -- Reduce the amount of your current bets, "
            "or \n -- Make at least a $1,250 withdrawal from the ATM.");
  EXPECT_TRUE(Game.NegBankroll);
  Game.Bets[BankrollIndex] = 1'350;
  EXPECT_TRUE(SetNegBankroll(false).Ok);
  EXPECT_FALSE(Game.NegBankroll);
}

TEST_F(RuleChanges, ClosingBringsBetsUnderTheNewLimits) {
  Put(Field, 100);
  Put(Big6, 30);
  Game.MaxPlacard = 40;
  CloseConfiguration({true, false, true, false, false});
  EXPECT_EQ(Game.Bets[Field], Currency(40));
  EXPECT_EQ(Game.Bets[Big6], Currency(30));
  EXPECT_EQ(Game.TotalOnTable, Currency(70));
  EXPECT_EQ(Game.Notify, 5);
}

TEST_F(RuleChanges, ClosingMovesPeakAndTroughOnlyOutwardOnceDiceHaveRolled) {
  Game.Bets[BankrollIndex] = 800;
  CloseConfiguration(NoticeBoxes());
  EXPECT_EQ(Game.BankrollHigh, Currency(800));
  EXPECT_EQ(Game.BankrollLow, Currency(800));
  Game.RollCount[0] = 1;
  Game.Bets[BankrollIndex] = 300;
  CloseConfiguration(NoticeBoxes());
  EXPECT_EQ(Game.BankrollHigh, Currency(800));
  EXPECT_EQ(Game.BankrollLow, Currency(300));
}

}  // namespace
