// What becomes of the stake of a decided bet, and what the settle screen tells.

#include "bets/settle.h"
#include "bets/vig.h"
#include "core/help_topics.h"
#include "support/table_fixture.h"

namespace {

class SettleTest : public TableTest {
 protected:
  SettleTest() {
    Game.NegBankroll = true;
    Game.AutoAdjust = AdjustManual;
    Game.MaxPlacard = Game.MaxPropPayoff = 1'000'000;
    PointOn(4);
  }

  static void PointOn(int point) {
    Game.RollTotal = 7;
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
  std::string Lines(int betId, Currency stake, int die1, int die2) {
    Game.HandleWinningBets = WinManual;
    Game.HandleLosingBets = LossManual;
    Settled.clear();
    After(betId, stake, die1, die2);
    EXPECT_EQ(Settled.size(), 1U);
    std::string text;
    for (const SettleLine& line : Settled.at(0).Lines) {
      const std::string whole = line.Label + " " + line.Amount;
      text += (line.Bold ? "*" + whole + "*" : whole) + "\n";
    }
    return text;
  }
};

// --- The choices ---

TEST_F(SettleTest, EveryChoiceForWonAndLostBets) {
  Game.ModifyAmount[AutoWinSameBet] = Game.ModifyAmount[AutoLossSameBet] = 3;
  Game.ModifyAmount[AutoWinBet] = Game.ModifyAmount[AutoLossBet] = 40;
  const std::array<int, 8> won = {0, 0, 12, 18, 24, 26, 15, 40};
  const std::array<int, 8> lost = {0, 0, 0, 12, 18, 24, 15, 40};
  for (int choice = 0; choice < 8; ++choice) {
    const Currency before = Bankroll();
    EXPECT_EQ(WonPlaceUnder(choice), Currency(won[choice])) << choice;
    EXPECT_EQ(Bankroll(), before + 14);
    EXPECT_EQ(LostPlaceUnder(choice), Currency(lost[choice])) << choice;
    EXPECT_EQ(Bankroll(), before + 2);
  }
  // Hyper-Drive takes manual bets down, and shows nothing.
  TakeShown();
  Settled.clear();
  Game.HyperDriveOn = true;
  EXPECT_EQ(WonPlaceUnder(WinManual), Currency(0));
  EXPECT_EQ(LostPlaceUnder(LossManual), Currency(0));
  EXPECT_EQ(WonPlaceUnder(WinPressDouble), Currency(24));
  EXPECT_TRUE(Settled.empty() && TakeShown().empty());
}

TEST_F(SettleTest, TheRemainderOfAPartLossStaysUp) {
  Game.FieldPayoff[12] = {-1, true, 2};
  Game.HandleLosingBets = LossBetRemainder;
  EXPECT_EQ(After(Field, 10, 3, 4), Currency(5));
  EXPECT_EQ(After(Field, 5, 3, 4), Currency(2)) << "a loss of 2.50 costs 3";
  Establish(Field, 0);
  EXPECT_EQ(After(Lay4, 40, 1, 3), Currency(0)) << "the vig went with it";
  EXPECT_EQ(Bankroll(), Currency(500 - 5 - 3 - 41));
  EXPECT_TRUE(TakeShown().empty());
}

TEST_F(SettleTest, ABetThatMustComeDownDoesUnderEveryChoice) {
  // clang-format off
  const int cases[][4] = {
      {Come4 + 2, 4, 1, 5}, {DontCome4 + 2, 4, 1, 5}, {PassLineOdds, 6, 1, 5}, {Come, 4, 3, 4},
      {DontCome, 4, 3, 4}};
  // clang-format on
  Game.ModifyAmount.fill(30);
  for (int choice = 0; choice < 8; ++choice)
    for (const auto& [betId, point, die1, die2] : cases) {
      Game.HandleWinningBets = Game.HandleLosingBets = choice;
      SettleButtons = {3};  // only the first button serves
      PointOn(point);
      Establish(PassLine, betId == PassLineOdds ? 10 : 0);
      EXPECT_EQ(After(betId, 20, die1, die2), Currency(0)) << betId << " " << choice;
      EXPECT_TRUE(choice != 0 || Settled.back().OnlyTakeDown);
    }
  Establish(PassLine, 0);
  Game.AllowPutBets = true;
  Game.HandleWinningBets = WinPressDouble;
  EXPECT_EQ(After(Come4 + 2, 10, 1, 5), Currency(20)) << "put bets may stay";
}

// --- Adjusters ---

TEST_F(SettleTest, AdjustersTellTheChangeAgainstTheRoll) {
  Game.ModifyAmount[AutoWinSameBet] = -2;
  Game.ModifyAmount[AutoWinBet] = 12;
  const std::tuple<int, const char*, const char*> cases[] = {
      {WinPressOneUnit, "Bet increased by: $6", "Press 1 Unit Place 6"},
      {WinPressDouble, "Bet increased by: $12", "Press Double Place 6"},
      {WinParlay, "Bet increased by: $14", "Parlay Place 6"},
      {WinSameBetModified, "Bet decreased by: $2", "Place 6"},
      {WinSetBet, "No change in bet amount.", "Place 6"}};
  for (const auto& [choice, text, title] : cases) {
    WonPlaceUnder(choice);
    EXPECT_EQ(TakeOnlyMessage(), (ShownMessage{text, title, kTopicWin, +OkTick | +HideCharges}));
  }
  WonPlaceUnder(WinSameBet);
  WonPlaceUnder(WinTakeDown);
  Game.Notify &= ~NoticeCharges;
  EXPECT_EQ(WonPlaceUnder(WinParlay), Currency(26));
  EXPECT_TRUE(TakeShown().empty());
}

TEST_F(SettleTest, ThePressUnitIsTheLargestChipThatDividesTheBet) {
  const int rows[][3] = {{Place6, 60, 30}, {Place6, 6, 6},     {Place6, 13, 6}, {Place6, 1500, 150},
                         {Field, 100, 25}, {Field, 1000, 500}, {Place5, 10, 5}, {Field, 7, 1}};
  for (const auto& [betId, stake, unit] : rows) {
    Game.Bets[betId] = stake;
    FigurePressUnit(betId);
    EXPECT_EQ(Game.PressUnit, Currency(unit)) << stake << " on " << betId;
  }
}

TEST_F(SettleTest, AParlayBendsDownToProperOddsWhateverTheBias) {
  Game.AutoAdjust = AdjustMinor;
  Game.Notify = 0;
  Game.HandleWinningBets = WinParlay;
  Game.PlaceBias = BiasIncrease;
  EXPECT_EQ(After(Place6, 6, 1, 5), Currency(12)) << "6 and 7 won";
  EXPECT_EQ((std::array{Game.PlaceBias, Game.LayBias, Game.DoBias, Game.DontBias}),
            (std::array{+BiasIncrease, +BiasNearest, +BiasNearest, +BiasNearest}));
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
  // A stake of 12 at 7 to 6: a chip counts six times its value.
  // The operator, the unit, the amount, and what stands.
  // clang-format off
  const int cases[][4] = {
      {ModifyAdd, 0, 2, 14}, {ModifyAdd, 1, 50, 18}, {ModifyAdd, 2, 2, 24}, {ModifyAdd, 3, 2, 72},
      {ModifyAdd, 4, 2, 312}, {ModifyAdd, 5, 2, 1212}, {ModifyAdd, 6, 2, 6012},
      {ModifySubtract, 0, 2, 10}, {ModifySubtract, 1, 50, 6}, {ModifySubtract, 2, 1, 6},
      {ModifySubtract, 3, 1, 0}, {ModifyTimes, 0, 2, 24}, {ModifyTimes, 1, 150, 18},
      {ModifyTimes, 2, 2, 144}, {ModifyTimes, 6, 1, 36000}, {ModifyDivide, 0, 2, 6},
      {ModifyDivide, 1, 50, 24}, {ModifyDivide, 2, 2, 1}, {ModifyDivide, 3, 2, 0},
      {ModifyDivide, 0, 0, 12}, {ModifyDivide, 1, -3, 12}, {ModifyAdd, 1, 2, 13},
      {ModifySubtract, 1, 2, 11}, {ModifyAdd, 0, -5, 7}};
  // clang-format on
  for (const auto& [sign, unit, amount, stands] : cases) {
    Game.ModifyOperator[AutoWinSameBet] = Game.ModifyOperator[AutoLossSameBet] = sign;
    Game.ModifyUnit[AutoWinSameBet] = Game.ModifyUnit[AutoLossSameBet] = unit;
    Game.ModifyAmount[AutoWinSameBet] = Game.ModifyAmount[AutoLossSameBet] = amount;
    SCOPED_TRACE(::testing::Message() << sign << ", " << unit << ", " << amount);
    EXPECT_EQ(WonPlaceUnder(WinSameBetModified), Currency(stands));
    EXPECT_EQ(LostPlaceUnder(LossSameBetModified), Currency(stands));
  }
}

// --- The settle screen ---

// clang-format off
TEST_F(SettleTest, LinesOfWonBets) {
  EXPECT_EQ(Lines(Place6, 12, 1, 5), "Place 6 bet: $12\nPayoff at 7 to 6: $14\n");
  EXPECT_TRUE(Settled[0].Caption == "* * * Winner * * *" && Settled[0].HelpTopic == kTopicWin);
  EXPECT_EQ(Lines(Place6, 7, 1, 5),
            "Place 6 bet: $7\nPayoff at 7 to 6: $8.1667\n*Net payoff (rounded):  $8*\n");
  EXPECT_EQ(Lines(CAndE, 10, 5, 6),
            "1/2 of bet: $5\nPayoff at 15 to 1: $75\nLess 1/2 of bet: $-5\n*Net payoff:  $70*\n");
  Game.Payoff[Hop24].ShownAsTo = false;
  EXPECT_EQ(Lines(Hop24, 1, 2, 4), "Hop 2-4 bet: $1\nPayoff at 16 for 1: $15\n");
  PointOn(6);
  EXPECT_EQ(Lines(Buy4, 20, 1, 3),
            "Buy 4 bet: $20\nPayoff at 2 to 1: $40\n-5% vig: $-1\n*Net payoff:  $39*\n");
  EXPECT_EQ(Lines(Horn, 6, 1, 2),
            "1/4 of bet: $1.50\nPayoff at 15 to 1: $22.50\nLess 3/4 of bet: $-4.50\n*Net payoff:  $18*\n");
  Game.LayVigPct = Currency::FromRaw(425);
  EXPECT_EQ(Lines(Lay4 + 1, 20, 3, 4),
            "Lay 5 bet: $20\nPayoff at 2 to 3: $13.3333\n-4.25% vig: $-1\n*Net payoff (rounded):  $12*\n");
  EXPECT_FALSE(Settled[0].Lost);
  EXPECT_EQ(Lines(World, 5, 3, 4),
            "1/5 of bet: $1\nPayoff at 4 to 1: $4\nLess 4/5 of bet: $-4\n*Net payoff:  $0*\n");
  EXPECT_TRUE(Settled[0].Caption == "Push" && !Settled[0].Lost);
}

TEST_F(SettleTest, LinesOfLostBets) {
  EXPECT_EQ(Lines(Place6, 12, 3, 4), "Place 6 bet: $12\nLoss at 1 to 1: $-12\n*Net loss:  $-12*\n");
  EXPECT_TRUE(Settled[0].Caption == "Bet Lost" && Settled[0].Lost);
  EXPECT_EQ(Settled[0].HelpTopic, kTopicLoss);
  for (const bool upFront : {true, false}) {  // a vig that wasn't charged isn't told
    PointOn(6);
    Game.BuyVigUpFront = upFront;
    EXPECT_EQ(Lines(Buy4, 20, 3, 4),
              std::string("Buy 4 bet: $20\nLoss at 1 to 1: $-20\n") +
                  (upFront ? "& vig: $-1\n*Net loss:  $-21*\n" : "*Net loss:  $-20*\n"));
  }
  PointOn(6);
  EXPECT_EQ(Lines(Horn, 4, 1, 3),
            "1/4 of bet: $1\nLoss at 1 to 1: $-1\nLess 3/4 of bet: $-3\n*Net loss:  $-4*\n");
  Game.FieldPayoff[3] = {-1, true, 2};
  EXPECT_EQ(Lines(Field, 5, 1, 3),
            "Field bet: $5\nLoss at 1 to 2: $-2.50\n*Net loss (rounded):  $-3*\n");
  Game.Payoff[Craps] = {1, true, 2};
  EXPECT_EQ(Lines(CAndE, 10, 1, 1),
            "1/2 of bet: $5\nPayoff at 1 to 2: $2.50\nLess 1/2 of bet: $-5\n*Net loss (rounded):  $-3*\n");
}
// clang-format on

TEST_F(SettleTest, OddsThatWereOffAreReturned) {
  PointOn(0);
  Establish(Come4, 10);
  Game.BetWorking[Come4Odds] = NotWorking;
  Game.HandleWinningBets = WinManual;
  Game.HandleLosingBets = LossNoBet;
  After(Come4Odds, 20, 3, 4);
  ASSERT_EQ(Settled.size(), 1U);
  EXPECT_EQ(Settled[0].Caption, "Odds Bet Returned");
  EXPECT_EQ(Settled[0].Lines.at(0).Amount + Settled[0].Lines.at(1).Label, "$20wasn't working!");
  EXPECT_TRUE(Settled[0].OnlyTakeDown);
  EXPECT_EQ(Bankroll(), Currency(490));
}

TEST_F(SettleTest, EveryButtonOfTheSettleScreen) {
  Game.ModifyAmount = {1, 31, 2, 32, 90, 91, 92, 93};
  const std::array<int, 7> won = {0, 12, 18, 24, 26, 13, 31};
  const std::array<int, 7> lost = {0, 0, 12, 18, 24, 14, 32};
  for (int button = 0; button < 7; ++button) {
    SettleButtons = {button, button};
    EXPECT_EQ(WonPlaceUnder(WinManual), Currency(won[button])) << button;
    EXPECT_EQ(Game.LastWinChoice, button);
    EXPECT_EQ(LostPlaceUnder(LossManual), Currency(lost[button])) << button;
    EXPECT_EQ(Game.LastLossChoice, button);
  }
}

}  // namespace
