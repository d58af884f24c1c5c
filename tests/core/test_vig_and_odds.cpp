// Vig on Buy and Lay bets, the six odds methods and amounts that pay in whole chips.
#include "core/vig_and_odds.h"

#include <gmock/gmock.h>

#include "core/change_bet.h"
#include "core/messages.h"
#include "core/text.h"
#include "support/table_fixture.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr int kCome6 = BetOnNumber(ComeFamily, 6);
constexpr int kCome6Odds = BetOnNumber(ComeOddsFamily, 6);
constexpr int kDontCome6 = BetOnNumber(DontComeFamily, 6);
constexpr int kDontCome6Odds = BetOnNumber(DontComeOddsFamily, 6);
constexpr int kLay5 = Lay4 + 1;
constexpr int kLay6 = Lay4 + 2;

void SetChips(std::initializer_list<Currency> values) {
  std::copy(values.begin(), values.end(), Game.Bets.begin() + SmallestChip);
}

// --- Vig ---

class VigTest : public TableTest {
 protected:
  void SetUp() override {
    TableTest::SetUp();
    Game.AutoAdjust = AdjustManual;
  }

  static Currency BuyVig(Currency amount, int rounding) {
    Game.RoundBuyVig = rounding;
    FigureBuyVig(Buy4, amount);
    return Game.BuyVigCalc;
  }

  static Currency LayVig(int betId, Currency amount, int rounding) {
    Game.RoundLayVig = rounding;
    FigureLayVig(betId, amount);
    return Game.LayVigCalc;
  }

  static ShownMessage VigNotice(int betId, const std::string& text) {
    return Notice(NoticeCharges, BetName(betId) + " Bet", IsBuy(betId) ? 225 : 1, text);
  }
};

TEST_F(VigTest, BuyVigIsRoundedInThreeWaysAndNeverNothing) {
  struct Row {
    int Amount, Normally, Down, Up;
  };
  // 5 %: 0.05, 0.25, 1, 1.05, 1.25, 1.5, 1.55, 1.95, 2
  for (const Row& row : {Row{1, 1, 1, 1}, Row{5, 1, 1, 1}, Row{20, 1, 1, 1}, Row{21, 1, 1, 2},
                         Row{25, 1, 1, 2}, Row{30, 1, 1, 2}, Row{31, 2, 1, 2}, Row{39, 2, 1, 2},
                         Row{40, 2, 2, 2}, Row{140, 7, 7, 7}}) {
    EXPECT_EQ(BuyVig(row.Amount, RoundedNormally), Currency(row.Normally)) << row.Amount;
    EXPECT_EQ(BuyVig(row.Amount, RoundedDown), Currency(row.Down)) << row.Amount;
    EXPECT_EQ(BuyVig(row.Amount, RoundedUp), Currency(row.Up)) << row.Amount;
  }
  EXPECT_EQ(BuyVig(0, RoundedUp), Currency(0));
}

TEST_F(VigTest, LayVigIsTakenFromWhatWouldBeWon) {
  struct Row {
    int Bet, Amount, Normally, Down, Up;
  };
  // They would win 20, 30, 32, 40, 33.3333, 30, 25.8333 and 2.
  for (const Row& row : {Row{Lay4, 40, 1, 1, 1}, Row{Lay4, 60, 1, 1, 2}, Row{Lay10, 64, 2, 1, 2},
                         Row{kLay5, 60, 2, 2, 2}, Row{kLay5, 50, 2, 1, 2}, Row{kLay6, 36, 1, 1, 2},
                         Row{kLay6, 31, 1, 1, 2}, Row{Lay4, 4, 1, 1, 1}}) {
    EXPECT_EQ(LayVig(row.Bet, row.Amount, RoundedNormally), Currency(row.Normally)) << row.Amount;
    EXPECT_EQ(LayVig(row.Bet, row.Amount, RoundedDown), Currency(row.Down)) << row.Amount;
    EXPECT_EQ(LayVig(row.Bet, row.Amount, RoundedUp), Currency(row.Up)) << row.Amount;
  }
  Game.Payoff[Lay4] = {-1, true, 2};
  EXPECT_EQ(LayVig(Lay4, 40, RoundedNormally), Currency(0)) << "nothing would be won";
}

TEST_F(VigTest, IsInWholeUnits) {
  SetChips({5, 25, 100, 500, 1000});
  EXPECT_EQ(BuyVig(100, RoundedNormally), Currency(5));
  EXPECT_EQ(BuyVig(150, RoundedNormally), Currency(5)) << "7.5 is one Unit and a half";
  EXPECT_EQ(BuyVig(155, RoundedNormally), Currency(10));
  EXPECT_EQ(BuyVig(105, RoundedUp), Currency(10));
  SetChips({Currency::FromRaw(2'500), 1, 5, 25, 100});
  EXPECT_EQ(BuyVig(26, RoundedNormally), Currency::FromRaw(12'500));
  EXPECT_EQ(BuyVig(26, RoundedUp), Currency::FromRaw(15'000));
  EXPECT_EQ(BuyVig(Currency::FromRaw(2'500), RoundedDown), Currency::FromRaw(2'500));
}

TEST_F(VigTest, IsNothingWithoutARateOrOnAnotherBet) {
  FigureBuyVig(Place4, 100);
  EXPECT_EQ(Game.BuyVigCalc, Currency(0));
  FigureLayVig(Buy4, 100);
  EXPECT_EQ(Game.LayVigCalc, Currency(0));
  Game.BuyVigPct = 0;
  Game.LayVigPct = 0;
  EXPECT_EQ(BuyVig(100, RoundedUp), Currency(0));
  EXPECT_EQ(LayVig(Lay4, 100, RoundedUp), Currency(0));
}

TEST_F(VigTest, UpFrontIsHeldAndToldAsItChanges) {
  struct Row {
    int Bet, First, Second;
    Currency FirstVig, SecondVig;
  };
  for (const Row& row : {Row{Buy4, 20, 80, 1, 4}, Row{Lay10, 40, 160, 1, 4}}) {
    RequestChange(row.Bet, row.First);
    EXPECT_EQ(TakeOnlyMessage(), VigNotice(row.Bet, "Total \"Vig\" charge $1"));
    EXPECT_EQ(VigHeld(row.Bet), row.FirstVig);
    EXPECT_EQ(Game.TotalOnTable, Currency(row.First) + row.FirstVig);
    RequestChange(row.Bet, row.Second - row.First);
    EXPECT_EQ(TakeOnlyMessage(),
              VigNotice(row.Bet, "\"Vig\" increased by $3\n\nTotal \"Vig\" charge $4"));
    EXPECT_EQ(Game.TotalOnTable, Currency(row.Second) + row.SecondVig);
    RequestChange(row.Bet, 2);
    EXPECT_THAT(Shown, IsEmpty()) << "the vig is the same";
    RequestChange(row.Bet, row.First - row.Second - 2);
    EXPECT_EQ(TakeOnlyMessage(),
              VigNotice(row.Bet, "\"Vig\" decreased by $3\n\nTotal \"Vig\" charge $1"));
    RequestChange(row.Bet, -row.First);
    EXPECT_EQ(TakeOnlyMessage(), VigNotice(row.Bet, "\"Vig\" charge returned $1"));
    EXPECT_EQ(Game.TotalOnTable, Currency(0));
    EXPECT_EQ(VigHeld(row.Bet), Currency(0));
  }
}

TEST_F(VigTest, OnTheWinIsToldButNotHeldOnTheTable) {
  Game.BuyVigUpFront = false;
  Game.LayVigUpFront = false;
  for (const int id : {+Buy10, +Lay4}) {
    const int times = IsLay(id) ? 2 : 1;
    RequestChange(id, 20 * times);
    EXPECT_EQ(TakeOnlyMessage(), VigNotice(id, "If you win, the \"Vig\" charge will be $1"));
    EXPECT_EQ(Game.TotalOnTable, Currency(20 * times));
    RequestChange(id, 20 * times);
    EXPECT_EQ(
        TakeOnlyMessage(),
        VigNotice(id, "\"Vig\" increased by $1\n\nIf you win, the \"Vig\" charge will be $2"));
    RequestChange(id, -20 * times);
    EXPECT_EQ(
        TakeOnlyMessage(),
        VigNotice(id, "\"Vig\" decreased by $1\n\nIf you win, the \"Vig\" charge will be $1"));
    RequestChange(id, -20 * times);
    EXPECT_THAT(Shown, IsEmpty());
    EXPECT_EQ(Game.TotalOnTable, Currency(0));
  }
}

TEST_F(VigTest, IsChargedWithItsNoticeOff) {
  Game.Notify &= ~NoticeCharges;
  RequestChange(Buy4, 40);
  Game.Notify = 15;
  Game.HyperDriveOn = true;
  RequestChange(Lay4, 80);
  EXPECT_THAT(Shown, IsEmpty());
  EXPECT_EQ(Game.TotalOnTable, Currency(124));
}

TEST_F(VigTest, RefiguringFollowsEveryRule) {
  Game.Notify = 0;
  RequestChange(Buy4, 25);
  RequestChange(Lay10, 60);
  EXPECT_EQ(Game.TotalOnTable, Currency(87));
  Game.RoundBuyVig = RoundedUp;
  RefigureHeldVig();
  EXPECT_EQ(Game.TotalOnTable, Currency(88));
  Game.LayVigPct = Currency::FromRaw(1'000);
  RefigureHeldVig();
  EXPECT_EQ(VigHeld(Lay10), Currency(3));
  Game.BuyVigUpFront = false;
  RefigureHeldVig();
  EXPECT_EQ(VigHeld(Buy4), Currency(2));
  EXPECT_EQ(Game.TotalOnTable, Currency(88));
}

// --- The largest odds bet ---

class OddsTest : public TableTest {
 protected:
  static void Allow(Currency multiple) {
    Game.OddsAllowed410 = Game.OddsAllowed59 = Game.OddsAllowed68 = multiple;
  }

  static Currency Maximum(int oddsBetId) {
    FigureMaxBet(oddsBetId);
    return Game.MaxHere;
  }

  /// The most on the odds of a Come bet of `flat` on `number`.
  static Currency Take(int method, Currency multiple, int number, Currency flat) {
    Game.OddsCalcMethod = method;
    Allow(multiple);
    Establish(BetOnNumber(ComeFamily, number), flat);
    return Maximum(BetOnNumber(ComeOddsFamily, number));
  }

  /// The same for a Don't Come bet.
  static Currency Lay(int method, Currency multiple, int number, Currency flat) {
    Game.OddsCalcMethod = method;
    Allow(multiple);
    Establish(BetOnNumber(DontComeFamily, number), flat);
    return Maximum(BetOnNumber(DontComeOddsFamily, number));
  }

  static constexpr Currency Tenths(int tenths) { return Currency::FromRaw(tenths * 1'000); }
};

TEST_F(OddsTest, NoPushIsTheMultipleInWholeUnits) {
  EXPECT_EQ(Take(OddsNoPush, 2, 6, 7), Currency(14));
  EXPECT_EQ(Take(OddsNoPush, Tenths(15), 6, 7), Currency(10));
  EXPECT_EQ(Take(OddsNoPush, 0, 6, 7), Currency(0));
  EXPECT_EQ(Lay(OddsNoPush, 2, 4, 10), Currency(40));
  EXPECT_EQ(Lay(OddsNoPush, 1, 6, 7), Currency(8)) << "7 are won by 8.4";
}

TEST_F(OddsTest, MinorPushGoesToTheNextStepWithinAFlatBet) {
  EXPECT_EQ(Take(OddsMinorPush, 2, 6, 5), Currency(10));
  EXPECT_EQ(Take(OddsMinorPush, 2, 6, 7), Currency(15));
  EXPECT_EQ(Take(OddsMinorPush, 1, 6, 3), Currency(5));
  EXPECT_EQ(Take(OddsMinorPush, 1, 9, 5), Currency(6));
  EXPECT_EQ(Take(OddsMinorPush, 2, 6, 1), Currency(2)) << "no step within: the multiple stands";
  EXPECT_EQ(Take(OddsMinorPush, 4, 6, 4), Currency(15)) << "20 is a whole flat bet more";
  EXPECT_EQ(Lay(OddsMinorPush, 1, 5, 7), Currency(12)) << "7 pushed to 8, won by 12";
  EXPECT_EQ(Lay(OddsMinorPush, 1, 6, 7), Currency(12));
}

TEST_F(OddsTest, ColorPushFindsTheLargestChipThatPays) {
  Game.MaxOddsBet = 5000;
  EXPECT_EQ(Take(OddsColorPush, 2, 5, 5), Currency(10));
  EXPECT_EQ(Take(OddsColorPush, 2, 6, 7), Currency(15));
  EXPECT_EQ(Take(OddsColorPush, 2, 6, 8), Currency(20));
  EXPECT_EQ(Take(OddsColorPush, 2, 6, 10), Currency(25));
  EXPECT_EQ(Take(OddsColorPush, 2, 6, 50), Currency(125));
  EXPECT_EQ(Take(OddsColorPush, 2, 6, 200), Currency(500));
  EXPECT_EQ(Take(OddsColorPush, 2, 6, 1000), Currency(2500));
  EXPECT_EQ(Take(OddsColorPush, 2, 5, 200), Currency(400)) << "400 wins 600 as it is";
  EXPECT_EQ(Take(OddsColorPush, 4, 6, 10), Currency(40)) << "50 is a whole flat bet more";
  EXPECT_EQ(Take(OddsColorPush, 4, 6, 1), Currency(5)) << "the smallest chip may reach the end";
  EXPECT_EQ(Take(OddsColorPush, 2, 6, 1), Currency(2)) << "no amount pays: the multiple stands";
  EXPECT_EQ(Lay(OddsColorPush, 2, 5, 7), Currency(21)) << "14 win whole dollars";
  EXPECT_EQ(Lay(OddsColorPush, 1, 6, 7), Currency(12)) << "7 pushed to 10, won by 12";
}

TEST_F(OddsTest, ColorPushAsksForHundredsTwentyFivesAndFivesWhateverTheChips) {
  EXPECT_EQ(Take(OddsColorPush, 2, 5, 220), Currency(450)) << "220 is no whole 25: not 600";
  SetChips({1, 2, 8, 500, 1000});
  EXPECT_EQ(Take(OddsColorPush, 2, 5, 18), Currency(36)) << "18 is no whole 5";
  EXPECT_EQ(Take(OddsColorPush, 2, 5, 20), Currency(48));
}

TEST_F(OddsTest, ColorPushIsExactInCents) {
  SetChips({Currency::FromRaw(100), Currency::FromRaw(500), Currency::FromRaw(2'500), 1, 5});
  const Currency sevenCents = Currency::FromRaw(700);
  for (const int multiple : {1, 2, 4})
    EXPECT_EQ(Take(OddsColorPush, multiple, 4, sevenCents), sevenCents * multiple);
}

TEST_F(OddsTest, SingleOddsOnTheMultiple) {
  EXPECT_EQ(Take(OddsSingleTimesFlat, 2, 6, 7), Currency(15));
  EXPECT_EQ(Take(OddsSingleTimesFlat, 1, 6, 15), Currency(25)) << "three 5s are raised to five";
  EXPECT_EQ(Take(OddsSingleTimesFlat, 1, 6, 60), Currency(75));
  EXPECT_EQ(Take(OddsSingleTimesFlat, 1, 6, 2), Currency(2)) << "below half a step";
  EXPECT_EQ(Take(OddsSingleTimesFlat, 1, 6, 3), Currency(5));
  EXPECT_EQ(Take(OddsSingleTimesFlat, 2, 4, 7), Currency(14));
}

TEST_F(OddsTest, SingleOddsOnTheFlatBet) {
  EXPECT_EQ(Take(OddsSingleOfFlat, 3, 6, 7), Currency(30));
  EXPECT_EQ(Take(OddsSingleOfFlat, 3, 6, 15), Currency(75));
  EXPECT_EQ(Take(OddsSingleOfFlat, 2, 6, 2), Currency(4));
}

TEST_F(OddsTest, AutoSelectTakesItsMethodFromTheMultiple) {
  EXPECT_EQ(Take(OddsAutoSelect, 1, 6, 15), Currency(25)) << "single odds of the multiple";
  EXPECT_EQ(Take(OddsAutoSelect, 2, 6, 8), Currency(20)) << "colour push, not single odds (25)";
  EXPECT_EQ(Take(OddsAutoSelect, 2, 6, 10), Currency(25)) << "colour push, not minor push (20)";
  EXPECT_EQ(Take(OddsAutoSelect, 3, 6, 15), Currency(75)) << "single odds of the flat bet";
  EXPECT_EQ(Take(OddsAutoSelect, 4, 6, 7), Currency(30)) << "colour push";
  EXPECT_EQ(Take(OddsAutoSelect, Tenths(35), 6, 7), Currency(27)) << "colour push from 24.50";
  EXPECT_EQ(Take(OddsAutoSelect, Tenths(25), 6, 7), Currency(17)) << "no push";
  EXPECT_EQ(Take(OddsAutoSelect, Tenths(15), 6, 7), Currency(10)) << "no push";
}

TEST_F(OddsTest, TheHouseCapsWhatOddsWin) {
  EXPECT_EQ(Take(OddsAutoSelect, Tenths(25), 6, 1000), Currency(2000));
  Game.MaxOddsBet = 1500;
  EXPECT_EQ(Lay(OddsNoPush, 2, 4, 1000), Currency(3000)) << "1500 are won by 3000";
  SetChips({5, 25, 100, 500, 1000});
  Game.MaxOddsBet = 1498;
  EXPECT_EQ(Take(OddsNoPush, 2, 6, 1000), Currency(1495));
}

TEST_F(OddsTest, EachNumberHasItsMultiple) {
  Game.OddsCalcMethod = OddsNoPush;
  Game.OddsAllowed410 = 3;
  Game.OddsAllowed59 = 4;
  Game.OddsAllowed68 = 5;
  const std::map<int, int> multiples = {{4, 3}, {5, 4}, {6, 5}, {8, 5}, {9, 4}, {10, 3}};
  for (const auto& [number, multiple] : multiples) {
    Establish(BetOnNumber(ComeFamily, number), 10);
    Establish(BetOnNumber(DontComeFamily, number), 10);
    const PayoffRecord& lays = Game.Payoff[BetOnNumber(DontComeOddsFamily, number)];
    EXPECT_EQ(Maximum(BetOnNumber(ComeOddsFamily, number)), Currency(10 * multiple)) << number;
    EXPECT_EQ(Maximum(BetOnNumber(DontComeOddsFamily, number)),
              RoundDownTo(Currency::FromDouble(10 * multiple * (lays.Per / lays.Win)), 1))
        << number;
    EXPECT_EQ(Game.OddsMultiple, Currency(multiple));
    if (number == 8) continue;
    SetPoint(number);
    Establish(PassLine, 10);
    Establish(DontPass, 10);
    EXPECT_EQ(Maximum(PassLineOdds), Currency(10 * multiple)) << number;
    EXPECT_EQ(Maximum(DontPassOdds), Maximum(BetOnNumber(DontComeOddsFamily, number))) << number;
  }
}

TEST_F(OddsTest, APointOfEightLeavesTheMultipleAsItWas) {
  Game.OddsCalcMethod = OddsNoPush;
  SetPoint(8);
  Establish(PassLine, 10);
  EXPECT_EQ(Maximum(PassLineOdds), Currency(25)) << "a first point of 8 finds that of 6 and 8";
  Game.OddsAllowed410 = 3;
  Game.OddsAllowed68 = 5;
  Establish(Come4, 10);
  Maximum(Come4Odds);
  EXPECT_EQ(Maximum(PassLineOdds), Currency(30));
  Game.Point = 6;
  EXPECT_EQ(Maximum(PassLineOdds), Currency(50));
}

TEST_F(OddsTest, AStepIsNothingUpToItsHalf) {
  EXPECT_EQ(RoundToOddsStep(0, 5), Currency(0));
  EXPECT_EQ(RoundToOddsStep(2, 5), Currency(0));
  EXPECT_EQ(RoundToOddsStep(3, 6), Currency(0));
  EXPECT_EQ(RoundToOddsStep(3, 5), Currency(5));
  EXPECT_EQ(RoundToOddsStep(10, 5), Currency(10));
  EXPECT_EQ(RoundToOddsStep(11, 5), Currency(15));
}

// --- Proper odds amounts ---

class ProperOddsTest : public TableTest {
 protected:
  void SetUp() override {
    TableTest::SetUp();
    Game.Bets[BankrollIndex] = 100'000;
    Game.AutoAdjust = AdjustMinor;
    Game.LayBias = Game.PlaceBias = Game.DoBias = Game.DontBias = BiasNearest;
  }

  /// What a bet becomes that stands at `standing` when `request` is asked for.
  static Currency Becomes(int betId, Currency standing, Currency request) {
    Game.Bets[betId] = standing;
    RefigureHeldVig();
    RequestChange(betId, request);
    return Bet(betId);
  }

  /// The result of a change of Place 6 (7 to 6) by the three biases: nearest, increase, decrease.
  static std::vector<Currency> ByBias(Currency standing, Currency request) {
    std::vector<Currency> results;
    for (const int bias : {BiasNearest, BiasIncrease, BiasDecrease}) {
      Game.PlaceBias = bias;
      results.push_back(Becomes(Place6, standing, request));
    }
    return results;
  }

  static ShownMessage LimitNotice(int betId, const std::string& text) {
    return Notice(NoticeLimits, BetName(betId) + " Bet", 130, text);
  }
};

TEST_F(ProperOddsTest, MinorCorrectionByBias) {
  EXPECT_THAT(ByBias(0, 10), ElementsAre(12, 12, 6));
  EXPECT_THAT(ByBias(0, 12), ElementsAre(12, 12, 12)) << "pays as it is";
  EXPECT_THAT(ByBias(0, 4), ElementsAre(6, 6, 6)) << "a bet made isn't taken away";
  EXPECT_THAT(ByBias(12, 2), ElementsAre(18, 18, 18)) << "nor a raise";
  EXPECT_THAT(ByBias(12, 7), ElementsAre(18, 24, 18));
  EXPECT_THAT(ByBias(18, -1), ElementsAre(12, 12, 12)) << "nor a lowering";
  EXPECT_THAT(ByBias(18, -8), ElementsAre(12, 6, 12));
  EXPECT_THAT(ByBias(18, -14), ElementsAre(0, 0, 6)) << "0 is a multiple of 14";
  EXPECT_THAT(ByBias(10, 0), ElementsAre(12, 12, 6)) << "no change asked for: the bet itself";
  EXPECT_THAT(ByBias(7, 0), ElementsAre(6, 12, 6));
  EXPECT_THAT(ByBias(9, 0), ElementsAre(12, 12, 6)) << "a tie goes up";
  EXPECT_THAT(ByBias(12, -12), ElementsAre(0, 0, 0)) << "a removal is left alone";
}

TEST_F(ProperOddsTest, NearestPrefersAMultipleOfTheChange) {
  EXPECT_EQ(Becomes(Place6, 0, 9), Currency(12));
  EXPECT_EQ(Becomes(Place6, 21, 8), Currency(24)) << "three times 8, though 30 is nearer";
  EXPECT_EQ(Becomes(Place6, 20, 5), Currency(30)) << "six times 5, though 24 is nearer";
}

TEST_F(ProperOddsTest, NearestNeverUndoesTheChange) {
  Game.Payoff[Place6] = {7, true, 20};
  EXPECT_EQ(Becomes(Place6, 20, 7), Currency(40)) << "20 is nearer to 27, but no raise";
  EXPECT_EQ(Becomes(Place6, 40, -7), Currency(20)) << "40 is nearer to 33, but no lowering";
}

TEST_F(ProperOddsTest, ManualLeavesAmountsAlone) {
  Game.AutoAdjust = AdjustManual;
  EXPECT_THAT(ByBias(0, 10), ElementsAre(10, 10, 10));
}

TEST_F(ProperOddsTest, EachFamilyHasItsBias) {
  SetPoint(6);
  for (const int id : {+PassLine, +DontPass, kCome6, kDontCome6}) Establish(id, 100);
  struct Row {
    int Bet, Request;
    int* Bias;
    int Increased, Decreased;
  };
  for (const Row& row :
       {Row{kLay6, 10, &Game.LayBias, 12, 6}, Row{Place8, 10, &Game.PlaceBias, 12, 6},
        Row{PassLineOdds, 12, &Game.DoBias, 15, 10}, Row{kCome6Odds, 12, &Game.DoBias, 15, 10},
        Row{DontPassOdds, 10, &Game.DontBias, 12, 6},
        Row{kDontCome6Odds, 10, &Game.DontBias, 12, 6}}) {
    *row.Bias = BiasIncrease;
    EXPECT_EQ(Becomes(row.Bet, 0, row.Request), Currency(row.Increased)) << BetName(row.Bet);
    *row.Bias = BiasDecrease;
    EXPECT_EQ(Becomes(row.Bet, 0, row.Request), Currency(row.Decreased)) << BetName(row.Bet);
    *row.Bias = BiasNearest;
  }
  Game.LayBias = Game.PlaceBias = Game.DoBias = Game.DontBias = BiasDecrease;
  EXPECT_EQ(Becomes(BetOnNumber(BuyFamily, 5), 0, 5), Currency(6)) << "Buy bets have none";
}

TEST_F(ProperOddsTest, LineBetsTakeTheRatioOfTheNumber) {
  Game.Payoff[Come].Per = 5;
  Game.Payoff[DontCome].Per = 4;
  Game.Payoff[kCome6].Per = 3;
  Game.Payoff[kDontCome6].Per = 3;
  Game.Payoff[PassLine].Per = 100;
  Game.Payoff[DontPass].Per = 100;
  EXPECT_EQ(Becomes(PassLine, 0, 12), Currency(10));
  EXPECT_EQ(Becomes(DontPass, 0, 14), Currency(16));
  SetPoint(6);
  Game.AllowPutBets = true;
  EXPECT_EQ(Becomes(PassLine, 0, 13), Currency(12));
  Establish(DontPass, 0);
  Game.ContractBets[DontPass] = 50;
  EXPECT_EQ(Becomes(DontPass, 0, 13), Currency(12));
  Establish(PassLine, 100);
  Game.Payoff[PassLineOdds].Per = 1;
  EXPECT_EQ(Becomes(PassLineOdds, 0, 12), Currency(10)) << "by Come 6 Odds";
}

TEST_F(ProperOddsTest, ContractsHold) {
  SetPoint(6);
  Game.Payoff[kCome6].Per = 5;
  Game.Payoff[kDontCome6].Per = 5;
  Game.AllowPutBets = true;
  for (const int id : {+PassLine, kCome6}) {
    Game.ContractBets[id] = 12;
    EXPECT_EQ(Becomes(id, 12, 0), Currency(15)) << "10 is nearer, but below the contract";
  }
  for (const int id : {+DontPass, kDontCome6}) {
    Game.ContractBets[id] = 13;
    EXPECT_EQ(Becomes(id, 13, 0), Currency(10)) << "15 is nearer, but above the contract";
  }
}

TEST_F(ProperOddsTest, AContractStandsWhereNoAmountIsProper) {
  SetPoint(6);
  Game.Payoff[kCome6].Per = 5;
  Game.AllowPutBets = true;
  Game.MaxPlacard = 14;
  for (const int id : {+PassLine, kCome6}) {
    Game.ContractBets[id] = 12;
    EXPECT_EQ(Becomes(id, 14, -1), Currency(12));
  }
}

TEST_F(ProperOddsTest, ALoweringThatEndsWhereItBeganIsToldAsAMinimum) {
  SetPoint(6);
  Game.Payoff[kCome6].Per = 5;
  Game.AllowPutBets = true;
  Game.ContractBets[PassLine] = 12;
  EXPECT_EQ(Becomes(PassLine, 15, -2), Currency(15));
  EXPECT_EQ(TakeOnlyMessage(),
            LimitNotice(PassLine,
                        "Minimum bet for proper odds payoff here is: $15\nwhich is already bet."));
}

TEST_F(ProperOddsTest, ColorCorrectionPaysInTheChipsOfTheChange) {
  EXPECT_EQ(Becomes(Place6, 0, 50), Currency(48));
  Game.AutoAdjust = AdjustColor;
  EXPECT_EQ(Becomes(Place6, 0, 50), Currency(60)) << "ten 5s";
  EXPECT_EQ(Becomes(Place6, 0, 10), Currency(12)) << "30 is more than the change";
  EXPECT_EQ(Becomes(Place6, 0, 200), Currency(150)) << "eight 25s, the nearer of 150 and 300";
  EXPECT_EQ(Becomes(Place6, 0, 25), Currency(24)) << "one 25 isn't more than one, 30 is too much";
  EXPECT_EQ(Becomes(Place6, 50, 0), Currency(60)) << "without a change the bet itself counts";
  EXPECT_EQ(Becomes(Place6, 12, 35), Currency(60)) << "47 by 30s";
  EXPECT_EQ(Becomes(Buy4, 0, 13), Currency(13)) << "2 to 1 pays any amount";
}

TEST_F(ProperOddsTest, FullOddsAreNotPushedByColor) {
  Game.AutoAdjust = AdjustColor;
  Game.OddsCalcMethod = OddsNoPush;
  Game.OddsAllowed68 = 1;
  SetPoint(6);
  Establish(PassLine, 57);
  EXPECT_EQ(Becomes(PassLineOdds, 2, 55), Currency(55));
  Establish(PassLine, 58);
  EXPECT_EQ(Becomes(PassLineOdds, 2, 55), Currency(50));
}

TEST_F(ProperOddsTest, TheMaximumForProperOddsIsTold) {
  Game.MaxPlacard = 20;
  Game.PlaceBias = BiasIncrease;
  EXPECT_EQ(Becomes(Place6, 0, 20), Currency(18));
  EXPECT_EQ(
      TakeOnlyMessage(),
      LimitNotice(Place6, "Maximum bet for proper odds payoff here is: $18\nwhich is being bet."));
  EXPECT_EQ(Becomes(Place6, 18, 5), Currency(18));
  EXPECT_EQ(TakeOnlyMessage(),
            LimitNotice(Place6,
                        "Maximum bet here is $20\n\nMaximum bet for proper odds payoff here is: "
                        "$18\nwhich is already bet."));
}

TEST_F(ProperOddsTest, TheMinimumForProperOddsIsTold) {
  Game.MinPlacard = 10;
  EXPECT_EQ(Becomes(Place6, 0, 5), Currency(12));
  EXPECT_EQ(TakeOnlyMessage(),
            LimitNotice(Place6,
                        "Minimum bet here is $10\n\nMinimum bet for proper odds payoff here is: "
                        "$12\nwhich is being bet."));
  Game.PlaceBias = BiasDecrease;
  EXPECT_EQ(Becomes(Place6, 0, 11), Currency(12)) << "6 is below the minimum";
  EXPECT_EQ(Becomes(Place6, 18, -7), Currency(12));
  Game.PlaceBias = BiasIncrease;
  EXPECT_EQ(Becomes(Place6, 18, -7), Currency(0)) << "6 is below the minimum: the bet comes off";
  EXPECT_THAT(Shown, IsEmpty());
}

TEST_F(ProperOddsTest, BetweenTwoLimitsThereMayBeNoProperAmount) {
  Game.MinPlacard = 7;
  Game.MaxPlacard = 10;
  const std::string unable = "Unable to auto-adjust bet for proper odds payoff.";
  const std::string maximum = "Maximum bet for proper odds payoff here is: $10";
  EXPECT_EQ(Becomes(Place6, 0, 8), Currency(10));
  EXPECT_EQ(TakeOnlyMessage(), LimitNotice(Place6, unable + "\n\n" + maximum));
  EXPECT_EQ(Becomes(Place6, 0, 20), Currency(10));
  EXPECT_EQ(TakeOnlyMessage(),
            LimitNotice(Place6, "Maximum bet here is $10\n\n" + unable + "\n\n" + maximum));
  EXPECT_EQ(Becomes(Place6, 9, -1), Currency(0)) << "a lowering takes the bet off";
  EXPECT_EQ(Becomes(Place6, 12, 0), Currency(0)) << "so does a lowered maximum";
  EXPECT_THAT(Shown, IsEmpty());
}

TEST_F(ProperOddsTest, ColorCorrectionGivesWayToMinorBetweenTheLimits) {
  Game.AutoAdjust = AdjustColor;
  Game.MinPlacard = 40;
  Game.MaxPlacard = 55;
  EXPECT_EQ(Becomes(Place6, 0, 50), Currency(48)) << "30 and 60 are both out of bounds";
  EXPECT_THAT(Shown, IsEmpty());
}

TEST_F(ProperOddsTest, HyperDriveAdjustsWithoutAWord) {
  Game.HyperDriveOn = true;
  Game.MinPlacard = 7;
  Game.MaxPlacard = 10;
  EXPECT_EQ(Becomes(Place6, 0, 20), Currency(10));
  EXPECT_EQ(Becomes(Place6, 9, -1), Currency(0));
  EXPECT_EQ(Game.MsgText, "");
  EXPECT_THAT(Shown, IsEmpty());
}

TEST_F(ProperOddsTest, CentsPayProperly) {
  SetChips({Currency::FromRaw(500), Currency::FromRaw(2'500), 1, 5, 25});
  Game.MinPlacard = Unit();
  EXPECT_EQ(Becomes(Place6, 0, Currency::FromRaw(9'000)), Currency::FromRaw(9'000));
  EXPECT_EQ(Becomes(Place6, 0, Currency::FromRaw(8'000)), Currency::FromRaw(9'000));
}

}  // namespace
