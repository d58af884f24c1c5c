// What becomes of the stake of a decided bet, and what the settle screen tells.
#include <array>

#include "core/settle.h"
#include "core/vig_and_odds.h"
#include "support/table_fixture.h"

namespace {

constexpr int kTopicWin = 500;
constexpr int kTopicLoss = 501;

class SettleTest : public TableTest {
 protected:
  void SetUp() override {
    TableTest::SetUp();
    Game.NegBankroll = true;
    Game.AutoAdjust = AdjustManual;
    Game.MaxPlacard = 1'000'000;
    Game.MaxPropPayoff = 1'000'000;
    PointOn(4);
  }

  static void PointOn(int point) {
    Game.RollTotal = point == 0 ? 7 : point;
    SetPoint(point);
  }

  /// Puts a bet up, throws, and returns what stands afterwards.
  Currency After(int betId, Currency stake, int die1, int die2) {
    Establish(betId, stake);
    Roll(die1, die2);
    ExpectBooksBalance();
    return Bet(betId);
  }

  /// A won Place 6 of 12 (it pays 14) under one choice.
  Currency WonPlaceUnder(int choice) {
    PointOn(4);
    Game.HandleWinningBets = choice;
    return After(Place6, 12, 1, 5);
  }
  Currency LostPlaceUnder(int choice) {
    PointOn(4);
    Game.HandleLosingBets = choice;
    return After(Place6, 12, 3, 4);
  }

  /// The settle screen of one decision, a line each; the net line between asterisks.
  std::string ScreenOf(int betId, Currency stake, int die1, int die2) {
    Game.HandleWinningBets = WinManual;
    Game.HandleLosingBets = LossManual;
    Settled.clear();
    After(betId, stake, die1, die2);
    EXPECT_EQ(Settled.size(), 1U);
    std::string text;
    if (Settled.empty()) return text;
    for (const SettleLine& line : Settled[0].Lines) {
      const std::string whole = line.Label + " " + line.Amount;
      text += line.Bold ? "*" + whole + "*" : whole;
      text += "\n";
    }
    return text;
  }
};

// --- The choices ---

TEST_F(SettleTest, EveryChoiceForAWonBet) {
  Game.ModifyAmount[AutoWinSameBet] = 3;
  Game.ModifyAmount[AutoWinBet] = 40;
  const std::array<int, 8> stands = {0, 0, 12, 18, 24, 26, 15, 40};
  for (int choice = 0; choice < 8; ++choice) {
    const Currency before = Bankroll();
    EXPECT_EQ(WonPlaceUnder(choice), Currency(stands[static_cast<unsigned>(choice)]))
        << "choice " << choice;
    EXPECT_EQ(Bankroll(), before + 14);
  }
}

TEST_F(SettleTest, EveryChoiceForALostBet) {
  Game.ModifyAmount[AutoLossSameBet] = 3;
  Game.ModifyAmount[AutoLossBet] = 40;
  const std::array<int, 8> stands = {0, 0, 0, 12, 18, 24, 15, 40};
  for (int choice = 0; choice < 8; ++choice) {
    const Currency before = Bankroll();
    EXPECT_EQ(LostPlaceUnder(choice), Currency(stands[static_cast<unsigned>(choice)]))
        << "choice " << choice;
    EXPECT_EQ(Bankroll(), before - 12);
  }
}

TEST_F(SettleTest, TheRemainderOfAPartLossStaysUp) {
  Game.FieldPayoff[12] = {-1, true, 2};
  Game.HandleLosingBets = LossBetRemainder;
  EXPECT_EQ(After(Field, 10, 3, 4), Currency(5));
  EXPECT_EQ(After(Field, 5, 3, 4), Currency(2)) << "a loss of 2.50 costs 3";
  EXPECT_TRUE(TakeShown().empty());
}

TEST_F(SettleTest, NothingRemainsOfALostLayBetAndItsVig) {
  Game.HandleLosingBets = LossBetRemainder;
  EXPECT_EQ(After(Lay4, 40, 1, 3), Currency(0));
  EXPECT_EQ(Bankroll(), Currency(459));
}

TEST_F(SettleTest, ABetThatMustComeDownDoesUnderEveryChoice) {
  for (int choice = 1; choice < 8; ++choice) {
    Game.HandleWinningBets = Game.HandleLosingBets = choice;
    Game.ModifyAmount.fill(30);
    for (const int betId : {Come4 + 2, DontCome4 + 2}) {
      PointOn(4);
      EXPECT_EQ(After(betId, 10, 1, 5), Currency(0)) << betId << " on its number";
    }
    PointOn(6);
    Establish(PassLine, 10);
    EXPECT_EQ(After(PassLineOdds, 20, 1, 5), Currency(0));
    Establish(PassLine, 0);
    PointOn(4);
    EXPECT_EQ(After(Come, 10, 3, 4), Currency(0));
    PointOn(4);
    EXPECT_EQ(After(DontCome, 10, 3, 4), Currency(0));
    EXPECT_FALSE(Game.BetComesDown);
  }
}

TEST_F(SettleTest, ComeBetsStayUpWherePutBetsAreAllowed) {
  Game.AllowPutBets = true;
  Game.HandleWinningBets = WinPressDouble;
  EXPECT_EQ(After(Come4 + 2, 10, 1, 5), Currency(20));
}

TEST_F(SettleTest, HyperDriveTakesManualBetsDownAndShowsNothing) {
  Game.HandleWinningBets = WinManual;
  Game.HandleLosingBets = LossManual;
  Game.HyperDriveOn = true;
  EXPECT_EQ(After(Place6, 12, 1, 5), Currency(0));
  EXPECT_EQ(After(Place6, 12, 3, 4), Currency(0));
  Game.HandleWinningBets = WinPressDouble;
  PointOn(4);
  EXPECT_EQ(After(Place6, 12, 1, 5), Currency(24));
  EXPECT_TRUE(Settled.empty());
  EXPECT_TRUE(TakeShown().empty());
}

// --- Adjusters ---

TEST_F(SettleTest, AdjustersTellTheChangeAgainstTheRoll) {
  struct Case {
    int Choice;
    ShownMessage Told;
  };
  const int flags = +OkTick | +HideCharges;
  Game.ModifyAmount[AutoWinSameBet] = -2;
  Game.ModifyAmount[AutoWinBet] = 12;
  const Case cases[] = {
      {WinPressOneUnit, {"Bet increased by: $6", "Press 1 Unit Place 6", kTopicWin, flags}},
      {WinPressDouble, {"Bet increased by: $12", "Press Double Place 6", kTopicWin, flags}},
      {WinParlay, {"Bet increased by: $14", "Parlay Place 6", kTopicWin, flags}},
      {WinSameBetModified, {"Bet decreased by: $2", "Place 6", kTopicWin, flags}},
      {WinSetBet, {"No change in bet amount.", "Place 6", kTopicWin, flags}},
  };
  for (const Case& c : cases) {
    WonPlaceUnder(c.Choice);
    EXPECT_EQ(TakeOnlyMessage(), c.Told);
  }
  WonPlaceUnder(WinSameBet);
  WonPlaceUnder(WinTakeDown);
  EXPECT_TRUE(TakeShown().empty());
  Game.Notify &= ~NoticeCharges;
  EXPECT_EQ(WonPlaceUnder(WinParlay), Currency(26));
  EXPECT_TRUE(TakeShown().empty());
}

TEST_F(SettleTest, ThePressUnitIsTheLargestChipThatDividesTheBet) {
  struct Case {
    int BetId;
    int Stake;
    int PressUnit;
  };
  for (const Case& c :
       {Case{Place6, 60, 30}, Case{Place6, 6, 6}, Case{Place6, 13, 6}, Case{Place6, 1500, 150},
        Case{Field, 100, 25}, Case{Field, 1000, 500}, Case{Place5, 10, 5}, Case{Field, 7, 1}}) {
    Game.Bets[c.BetId] = c.Stake;
    FigurePressUnit(c.BetId);
    EXPECT_EQ(Game.PressUnit, Currency(c.PressUnit)) << c.Stake << " on " << c.BetId;
  }
}

TEST_F(SettleTest, AParlayBendsDownToProperOddsWhateverTheBias) {
  Game.AutoAdjust = AdjustMinor;
  Game.Notify = 0;
  Game.HandleWinningBets = WinParlay;
  Game.PlaceBias = BiasIncrease;
  EXPECT_EQ(After(Place6, 6, 1, 5), Currency(12)) << "6 and 7 won";
  EXPECT_EQ(Game.PlaceBias, BiasIncrease);
  EXPECT_EQ(Game.LayBias, BiasNearest);
  EXPECT_EQ(Game.DoBias, BiasNearest);
  EXPECT_EQ(Game.DontBias, BiasNearest);
}

TEST_F(SettleTest, WhatIsParlayedIsThePayoffBeforeVig) {
  Game.HandleWinningBets = WinParlay;
  for (const bool upFront : {false, true}) {
    Game.LayVigUpFront = Game.BuyVigUpFront = upFront;
    PointOn(6);
    const Currency before = Bankroll();
    EXPECT_EQ(After(Lay4, 40, 3, 4), Currency(60));
    EXPECT_EQ(Bankroll(), before + 19);
    EXPECT_EQ(VigHeld(Lay4), Currency(1)) << "3 % of what 60 would win";
    Establish(Lay4, 0);
    PointOn(6);
    EXPECT_EQ(After(Buy4, 20, 1, 3), Currency(60));
    Establish(Buy4, 0);
  }
}

TEST_F(SettleTest, SameBetModifiedByEveryOperatorAndUnit) {
  struct Case {
    int Operator;
    int Unit;
    int Amount;
    int Stands;
  };
  // A stake of 12 at 7 to 6: a chip counts six times its value.
  const Case cases[] = {
      {ModifyAdd, 0, 2, 14},     {ModifyAdd, 1, 50, 18},     {ModifyAdd, 2, 2, 24},
      {ModifyAdd, 3, 2, 72},     {ModifyAdd, 4, 2, 312},     {ModifyAdd, 5, 2, 1212},
      {ModifyAdd, 6, 2, 6012},   {ModifySubtract, 0, 2, 10}, {ModifySubtract, 1, 50, 6},
      {ModifySubtract, 2, 1, 6}, {ModifySubtract, 3, 1, 0},  {ModifyTimes, 0, 2, 24},
      {ModifyTimes, 1, 150, 18}, {ModifyTimes, 2, 2, 144},   {ModifyTimes, 3, 2, 720},
      {ModifyTimes, 4, 1, 1800}, {ModifyTimes, 5, 1, 7200},  {ModifyTimes, 6, 1, 36000},
      {ModifyDivide, 0, 2, 6},   {ModifyDivide, 1, 50, 24},  {ModifyDivide, 2, 2, 1},
      {ModifyDivide, 3, 2, 0},   {ModifyDivide, 0, 0, 12},   {ModifyDivide, 1, -3, 12},
      {ModifyAdd, 1, 2, 13},     {ModifySubtract, 1, 2, 11}, {ModifyAdd, 0, -5, 7},
  };
  for (const Case& c : cases) {
    Game.ModifyOperator[AutoWinSameBet] = Game.ModifyOperator[AutoLossSameBet] = c.Operator;
    Game.ModifyUnit[AutoWinSameBet] = Game.ModifyUnit[AutoLossSameBet] = c.Unit;
    Game.ModifyAmount[AutoWinSameBet] = Game.ModifyAmount[AutoLossSameBet] = c.Amount;
    const auto what = ::testing::Message()
                      << "operator " << c.Operator << " unit " << c.Unit << " by " << c.Amount;
    EXPECT_EQ(WonPlaceUnder(WinSameBetModified), Currency(c.Stands)) << what;
    EXPECT_EQ(LostPlaceUnder(LossSameBetModified), Currency(c.Stands)) << what;
  }
}

TEST_F(SettleTest, SetBetByEveryUnit) {
  const std::array<int, 7> stands = {20, 20, 120, 600, 3000, 12000, 60000};
  for (int unit = 0; unit < 7; ++unit) {
    Game.ModifyAmount[AutoWinBet] = Game.ModifyAmount[AutoLossBet] = 20;
    Game.ModifyUnit[AutoWinBet] = Game.ModifyUnit[AutoLossBet] = unit;
    EXPECT_EQ(WonPlaceUnder(WinSetBet), Currency(stands[static_cast<unsigned>(unit)])) << unit;
    EXPECT_EQ(LostPlaceUnder(LossSetBet), Currency(stands[static_cast<unsigned>(unit)])) << unit;
  }
}

// --- The settle screen ---

TEST_F(SettleTest, LinesOfWonBets) {
  EXPECT_EQ(ScreenOf(Place6, 12, 1, 5), "Place 6 bet: $12\nPayoff at 7 to 6: $14\n");
  EXPECT_EQ(Settled[0].Caption, "* * * Winner * * *");
  EXPECT_EQ(Settled[0].HelpTopic, kTopicWin);
  EXPECT_EQ(ScreenOf(Place6, 7, 1, 5),
            "Place 6 bet: $7\nPayoff at 7 to 6: $8.1667\n*Net payoff (rounded):  $8*\n");
  PointOn(6);
  EXPECT_EQ(ScreenOf(Buy4, 20, 1, 3),
            "Buy 4 bet: $20\nPayoff at 2 to 1: $40\n-5% vig: $-1\n*Net payoff:  $39*\n");
  EXPECT_EQ(ScreenOf(CAndE, 10, 5, 6),
            "1/2 of bet: $5\nPayoff at 15 to 1: $75\nLess 1/2 of bet: $-5\n*Net payoff:  $70*\n");
  EXPECT_EQ(ScreenOf(Horn, 6, 1, 2),
            "1/4 of bet: $1.50\nPayoff at 15 to 1: $22.50\nLess 3/4 of bet: $-4.50\n"
            "*Net payoff:  $18*\n");
  Game.Payoff[Hop24].ShownAsTo = false;
  EXPECT_EQ(ScreenOf(Hop24, 1, 2, 4), "Hop 2-4 bet: $1\nPayoff at 16 for 1: $15\n");
  PointOn(6);
  EXPECT_EQ(ScreenOf(Lay4 + 1, 20, 3, 4),
            "Lay 5 bet: $20\nPayoff at 2 to 3: $13.3333\n-5% vig: $-1\n"
            "*Net payoff (rounded):  $12*\n");
  Game.LayVigPct = Currency::FromRaw(425);
  PointOn(6);
  EXPECT_EQ(ScreenOf(Lay4, 40, 3, 4),
            "Lay 4 bet: $40\nPayoff at 1 to 2: $20\n-4.25% vig: $-1\n*Net payoff:  $19*\n");
}

TEST_F(SettleTest, APushIsCalledSo) {
  EXPECT_EQ(ScreenOf(World, 5, 3, 4),
            "1/5 of bet: $1\nPayoff at 4 to 1: $4\nLess 4/5 of bet: $-4\n*Net payoff:  $0*\n");
  EXPECT_EQ(Settled[0].Caption, "Push");
  EXPECT_FALSE(Settled[0].Lost);
}

TEST_F(SettleTest, LinesOfLostBets) {
  EXPECT_EQ(ScreenOf(Place6, 12, 3, 4),
            "Place 6 bet: $12\nLoss at 1 to 1: $-12\n*Net loss:  $-12*\n");
  EXPECT_EQ(Settled[0].Caption, "Bet Lost");
  EXPECT_EQ(Settled[0].HelpTopic, kTopicLoss);
  EXPECT_TRUE(Settled[0].Lost);
  PointOn(6);
  EXPECT_EQ(ScreenOf(Buy4, 20, 3, 4),
            "Buy 4 bet: $20\nLoss at 1 to 1: $-20\n& vig: $-1\n*Net loss:  $-21*\n");
  PointOn(6);
  EXPECT_EQ(ScreenOf(Horn, 4, 1, 3),
            "1/4 of bet: $1\nLoss at 1 to 1: $-1\nLess 3/4 of bet: $-3\n*Net loss:  $-4*\n");
  Game.FieldPayoff[3] = {-1, true, 2};
  EXPECT_EQ(ScreenOf(Field, 5, 1, 3),
            "Field bet: $5\nLoss at 1 to 2: $-2.50\n*Net loss (rounded):  $-3*\n");
  Game.Payoff[Craps] = {1, true, 2};
  EXPECT_EQ(ScreenOf(CAndE, 10, 1, 1),
            "1/2 of bet: $5\nPayoff at 1 to 2: $2.50\nLess 1/2 of bet: $-5\n"
            "*Net loss (rounded):  $-3*\n");
}

TEST_F(SettleTest, AVigThatWasNotChargedIsNotTold) {
  Game.BuyVigUpFront = false;
  PointOn(6);
  EXPECT_EQ(ScreenOf(Buy4, 20, 3, 4), "Buy 4 bet: $20\nLoss at 1 to 1: $-20\n*Net loss:  $-20*\n");
}

TEST_F(SettleTest, OddsThatWereOffAreReturned) {
  PointOn(0);
  Establish(Come4, 10);
  Game.BetWorking[Come4Odds] = NotWorking;
  Game.HandleWinningBets = WinManual;
  Game.HandleLosingBets = LossNoBet;
  After(Come4Odds, 20, 3, 4);
  ASSERT_EQ(Settled.size(), 1U);
  EXPECT_EQ(Settled[0].Caption, "Odds Bet Returned");
  ASSERT_EQ(Settled[0].Lines.size(), 2U);
  EXPECT_EQ(Settled[0].Lines[0].Label, "Come 4 Odds bet:");
  EXPECT_EQ(Settled[0].Lines[0].Amount, "$20");
  EXPECT_EQ(Settled[0].Lines[1].Label, "wasn't working!");
  EXPECT_TRUE(Settled[0].OnlyTakeDown);
  EXPECT_EQ(Bankroll(), Currency(490));
}

TEST_F(SettleTest, TheButtonsSayWhatTheyDo) {
  ScreenOf(Place6, 12, 1, 5);
  EXPECT_EQ(Settled[0].Buttons,
            (std::array<std::string, 7>{
                "&Take Bet and Winnings", "&Same Bet - Take Winnings",
                "Press 1 &Unit - Add $6 to Bet", "Press - Add Winnings to &Double Bet",
                "Parlay - Add &All Winnings to Bet", "Sa&me Bet:", "&Bet:"}));
  EXPECT_FALSE(Settled[0].OnlyTakeDown);
  ScreenOf(Place6, 12, 3, 4);
  EXPECT_EQ(Settled[0].Buttons,
            (std::array<std::string, 7>{"No Bet/Take Remainder", "Bet Remainder", "Same Bet",
                                        "Press 1 &Unit - Add $6 to Bet", "Double Bet",
                                        "Sa&me Bet:", "&Bet:"}));
}

TEST_F(SettleTest, EveryButtonOfTheSettleScreen) {
  Game.ModifyAmount = {1, 31, 2, 32, 90, 91, 92, 93};
  const std::array<int, 7> won = {0, 12, 18, 24, 26, 13, 31};
  const std::array<int, 7> lost = {0, 0, 12, 18, 24, 14, 32};
  for (int button = 0; button < 7; ++button) {
    SettleButtons = {button, button};
    EXPECT_EQ(WonPlaceUnder(WinManual), Currency(won[static_cast<unsigned>(button)])) << button;
    EXPECT_EQ(Game.LastWinChoice, button);
    EXPECT_EQ(LostPlaceUnder(LossManual), Currency(lost[static_cast<unsigned>(button)])) << button;
    EXPECT_EQ(Game.LastLossChoice, button);
  }
}

TEST_F(SettleTest, OnlyTheFirstButtonServesABetThatMustComeDown) {
  Game.HandleWinningBets = WinManual;
  SettleButtons = {3};
  EXPECT_EQ(After(Come4 + 2, 10, 1, 5), Currency(0));
  ASSERT_EQ(Settled.size(), 1U);
  EXPECT_TRUE(Settled[0].OnlyTakeDown);
}

}  // namespace
