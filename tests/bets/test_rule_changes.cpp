// Rules that the player changes on the configuration screen while bets stand.
#include "bets/rule_changes.h"

#include "support/table_fixture.h"

namespace {

class RuleChanges : public TableTest {
 protected:
  /// A refusal tells the player why, and nothing has changed.
  static void ExpectRefused(const CheckResult& result, const char* title, const std::string& text,
                            Currency total) {
    EXPECT_FALSE(result.Ok);
    EXPECT_EQ(std::tuple(result.Title, result.Text), std::tuple(title, text));
    EXPECT_EQ(Game.TotalOnTable, total);
  }
  static void ExpectTaken(const CheckResult& result, Currency total) {
    EXPECT_TRUE(result.Ok && Game.TotalOnTable == total) << Game.TotalOnTable;
  }
};

TEST_F(RuleChanges, VigThatTheBankrollCannotCoverIsUndone) {
  const std::string text =
      "You're not allowed to change this setting at this time since the added up-front vig will "
      "cause the amount of your current bets to exceed your current bankroll.\n"
      "You can remedy this by doing one or more of the following:\n"
      " -- Check \"Allow negative bankroll amounts\", or\n"
      " -- Make a withdrawal from the ATM, or\n"
      " -- Win some more money, or\n"
      " -- Reduce the amount of your current bets.";
  ExpectTaken(SetBuyVigUpFront(false), 0);
  Given(Buy4, 500);
  ExpectRefused(SetBuyVigUpFront(true), "Buy Bet Vig", text, 500);
  EXPECT_FALSE(Game.BuyVigUpFront);
  Game.NegBankroll = true;
  ExpectTaken(SetBuyVigUpFront(true), 525);
  Given(Buy4, 0);
  Game.NegBankroll = false;
  Given(Lay4, 50);  // wins 25, vig 1.25
  ExpectTaken(SetRoundLayVig(RoundedUp), 52);
  ExpectTaken(SetRoundLayVig(RoundedDown), 51);
  Game.Bets[BankrollIndex] = 51;
  ExpectRefused(SetRoundLayVig(RoundedUp), "Lay Bet Vig", text, 51);
  EXPECT_EQ(Game.RoundLayVig, RoundedDown);
}

TEST_F(RuleChanges, TheClosingChargesTheRatesOrIsRefusedOnTheirBox) {
  Given(Buy4, 100);
  Given(Lay4, 100);
  Game.BuyVigPct = Currency::FromRaw(1'000);
  Game.Bets[BankrollIndex] = 209;  // 10 of vig on the Buy bet, 3 on the Lay bet
  Game.MaxPlacard = 50;
  const CheckResult refused = CloseConfiguration({});
  EXPECT_TRUE(!refused.Ok && refused.Title == "Buy Bet Vig" && refused.Tab == BetsTab &&
              refused.Box == ConfigBox::BuyVigPct);
  EXPECT_EQ(Game.BuyVigHeld[0], Currency(5)) << "nothing has followed";
  EXPECT_EQ(Bet(Buy4), Currency(100));
  Game.BuyVigPct = Currency::FromRaw(500);
  Game.LayVigPct = Currency::FromRaw(1'000);
  EXPECT_EQ(CloseConfiguration({}).Box, ConfigBox::LayVigPct);
  Game.Bets[BankrollIndex] = 210;
  Game.MaxPlacard = 1'000;
  ExpectTaken(CloseConfiguration({}), 210);
  EXPECT_EQ(Game.LayVigHeld[0], Currency(5));
}

TEST_F(RuleChanges, OnlyWithAPointIsAPassLineBetAContract) {
  for (const bool point : {false, true}) {
    Begin();
    Given(PassLine, 100);
    Game.ContractBets[PassLine] = 100;
    if (point) SetPoint(6);
    Game.MaxPlacard = 40;
    EXPECT_TRUE(CloseConfiguration({}).Ok);
    EXPECT_EQ(Bet(PassLine), Currency(point ? 100 : 40));
  }
}

TEST_F(RuleChanges, NegativeBankrollsStayAllowedWhileNeeded) {
  Game.NegBankroll = true;
  Game.Bets[BankrollIndex] = -5;
  ExpectRefused(SetNegBankroll(false), "Bankroll",
                "Before you can un-check this box you must first establish a non-negative bankroll "
                "by either:\n -- Winning some more money, or\n -- Making a withdrawal from the "
                "ATM.",
                0);
  Game.Bets[BankrollIndex] = 100;
  Given(Field, 1'000);
  Given(Big6, 350);
  ExpectRefused(SetNegBankroll(false), "Bankroll",
                "The amount of your current bets exceeds your current bankroll.  Therefore, before "
                "you can un-check this box you must either:\n -- Reduce the amount of your current "
                "bets, or \n -- Make at least a $1,250 withdrawal from the ATM.",
                1'350);
  EXPECT_TRUE(Game.NegBankroll);
  Game.Bets[BankrollIndex] = 1'350;
  ExpectTaken(SetNegBankroll(false), 1'350);
  EXPECT_FALSE(Game.NegBankroll);
}

TEST_F(RuleChanges, ClosingHoldsBetsToTheLimitsAndMovesPeakAndTrough) {
  Given(Field, 100);
  Given(Big6, 30);
  Game.MaxPlacard = 40;
  for (const auto& [rolls, bankroll, high, low] :
       {std::tuple{0, 800, 800, 800}, {1, 300, 800, 300}, {1, 500, 800, 300}}) {
    Game.RollCount[0] = rolls;
    Game.Bets[BankrollIndex] = bankroll;
    EXPECT_TRUE(CloseConfiguration({true, false, true, false, false}).Ok);
    EXPECT_EQ(Game.BankrollHigh, Currency(high));
    EXPECT_EQ(Game.BankrollLow, Currency(low));
  }
  ExpectBets({{Field, 40}, {Big6, 30}});
  EXPECT_EQ(Game.Notify, 5);
}

}  // namespace
