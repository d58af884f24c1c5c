// Vig on Buy and Lay bets, the six odds methods and amounts that pay in whole chips.
#include "bets/vig.h"

#include "bets/change_bet.h"
#include "support/table_fixture.h"

namespace {

using ::testing::ElementsAreArray;

constexpr int kCome6 = Come4 + 2, kCome6Odds = kCome6 + kOddsOffset;
constexpr int kDontCome6 = DontCome4 + 2, kDontCome6Odds = kDontCome6 + kOddsOffset;
constexpr int kLay5 = Lay4 + 1, kLay6 = Lay4 + 2;

// --- Vig ---

class VigTest : public TableTest {
 protected:
  VigTest() { Game.AutoAdjust = AdjustManual; }

  static Currency Vig(int betId, Currency amount, int rounding) {
    Game.RoundBuyVig = Game.RoundLayVig = rounding;
    return IsBuy(betId) ? FigureBuyVig(betId, amount) : FigureLayVig(betId, amount);
  }

  /// A change of a bet, the money on the table after it, and the notice of its vig, if any.
  void Ask(int betId, Currency request, Currency total, const std::string& told = {}) {
    RequestChange(betId, request);
    EXPECT_EQ(Game.TotalOnTable, total) << BetName(betId);
    std::vector<ShownMessage> notices;
    if (!told.empty())
      notices = {Notice(NoticeCharges, BetName(betId) + " Bet", IsBuy(betId) ? 225 : 1, told)};
    EXPECT_THAT(TakeShown(), ElementsAreArray(notices));
  }
};

TEST_F(VigTest, IsRoundedInThreeWaysAndNeverNothing) {
  // The bet, its amount, and its vig rounded normally, down and up. Buy bets pay 5 % of the bet,
  // Lay bets of what they would win.
  const int rows[][5] = {{Buy4, 1, 1, 1, 1},   {Buy4, 20, 1, 1, 1},  {Buy4, 21, 1, 1, 2},
                         {Buy4, 30, 1, 1, 2},  {Buy4, 31, 2, 1, 2},  {Buy4, 40, 2, 2, 2},
                         {Lay4, 40, 1, 1, 1},  {Lay4, 60, 1, 1, 2},  {Lay10, 64, 2, 1, 2},
                         {kLay5, 60, 2, 2, 2}, {kLay6, 31, 1, 1, 2}, {Lay4, 4, 1, 1, 1},
                         {Buy4, 0, 0, 0, 0},   {Place4, 9, 0, 0, 0}};
  for (const auto& [bet, amount, normally, down, up] : rows) {
    SCOPED_TRACE(BetName(bet) + " of " + std::to_string(amount));
    EXPECT_EQ(Vig(bet, amount, RoundedNormally), Currency(normally));
    EXPECT_EQ(Vig(bet, amount, RoundedDown), Currency(down));
    EXPECT_EQ(Vig(bet, amount, RoundedUp), Currency(up));
  }
  SetChips({5, 25, 100, 500, 1000});
  EXPECT_EQ(Vig(Buy4, 150, RoundedNormally), Currency(5)) << "7.5 is one Unit and a half";
  EXPECT_EQ(Vig(Buy4, 105, RoundedUp), Currency(10));
  SetChips({Currency::FromRaw(2'500), 1, 5, 25, 100});
  EXPECT_EQ(Vig(Buy4, 26, RoundedUp), Currency::FromRaw(15'000));
  Game.Payoff[Lay4] = {-1, true, 2};
  EXPECT_EQ(Vig(Lay4, 40, RoundedUp), Currency(0)) << "nothing would be won";
  Game.BuyVigPct = Game.LayVigPct = 0;
  EXPECT_EQ(Vig(Buy4, 100, RoundedUp) + Vig(Lay10, 100, RoundedUp), Currency(0));
}

TEST_F(VigTest, IsToldAsItChangesAndHeldUpFront) {
  const std::string charge = "If you win, the \"Vig\" charge will be $";
  for (const int id : {+Buy4, +Lay10}) {
    const int times = IsLay(id) ? 2 : 1;
    Game.BuyVigUpFront = Game.LayVigUpFront = true;
    Ask(id, 20 * times, 20 * times + 1, "Total \"Vig\" charge $1");
    Ask(id, 60 * times, 80 * times + 4, "\"Vig\" increased by $3\n\nTotal \"Vig\" charge $4");
    Ask(id, 2, 80 * times + 6);  // the vig is the same
    Ask(id, -60 * times - 2, 20 * times + 1, "\"Vig\" decreased by $3\n\nTotal \"Vig\" charge $1");
    Ask(id, -20 * times, 0, "\"Vig\" charge returned $1");
    Game.BuyVigUpFront = Game.LayVigUpFront = false;
    Ask(id, 20 * times, 20 * times, charge + "1");
    Ask(id, 20 * times, 40 * times, "\"Vig\" increased by $1\n\n" + charge + "2");
    Ask(id, -20 * times, 20 * times, "\"Vig\" decreased by $1\n\n" + charge + "1");
    Ask(id, -20 * times, 0);
  }
}

// --- The largest odds bet ---

class OddsTest : public TableTest {
 protected:
  /// A row: the multiple allowed, the number, the flat bet, and the most on its odds.
  using Rows = std::vector<std::tuple<double, int, int, int>>;

  static void ExpectTaken(int method, const Rows& rows, BetFamily flat = ComeFamily,
                          BetFamily odds = ComeOddsFamily) {
    Game.OddsCalcMethod = method;
    for (const auto& [multiple, number, bet, most] : rows) {
      Game.OddsAllowed410 = Game.OddsAllowed59 = Currency::FromDouble(multiple);
      Game.OddsAllowed68 = Game.OddsAllowed59;
      Establish(BetOnNumber(flat, number), bet);
      EXPECT_EQ(MaximumOf(BetOnNumber(odds, number)), Currency(most))
          << multiple << " times " << bet << " on " << number;
    }
  }
  static void ExpectLaid(int method, const Rows& rows) {
    ExpectTaken(method, rows, DontComeFamily, DontComeOddsFamily);
  }
};

TEST_F(OddsTest, PushTheMultipleByTheirMethod) {
  ExpectTaken(OddsNoPush, {{2, 6, 7, 14}, {1.5, 6, 7, 10}, {0, 6, 7, 0}});
  ExpectLaid(OddsNoPush, {{2, 4, 10, 40}, {1, 6, 7, 8}});

  // To the next step within a flat bet, else the multiple stands.
  ExpectTaken(OddsMinorPush, {{2, 6, 5, 10}, {2, 6, 7, 15}, {1, 6, 3, 5}, {1, 9, 5, 6}});
  ExpectTaken(OddsMinorPush, {{2, 6, 1, 2}, {4, 6, 4, 15}});
  ExpectLaid(OddsMinorPush, {{1, 5, 7, 12}, {1, 6, 7, 12}});

  // To the largest chip that pays; the smallest chip may reach the end, the others may not.
  Game.MaxOddsBet = 5000;
  ExpectTaken(OddsColorPush, {{2, 5, 5, 10}, {2, 6, 7, 15}, {2, 6, 8, 20}, {2, 6, 10, 25}});
  ExpectTaken(OddsColorPush, {{2, 6, 50, 125}, {2, 6, 200, 500}, {2, 6, 1000, 2500}});
  ExpectTaken(OddsColorPush, {{2, 5, 200, 400}, {4, 6, 10, 40}, {4, 6, 1, 5}, {2, 6, 1, 2}});
  ExpectLaid(OddsColorPush, {{2, 5, 7, 21}, {1, 6, 7, 12}});

  ExpectTaken(OddsSingleTimesFlat, {{2, 6, 7, 15}, {1, 6, 15, 25}, {1, 6, 60, 75}});
  ExpectTaken(OddsSingleTimesFlat, {{1, 6, 2, 2}, {1, 6, 3, 5}, {2, 4, 7, 14}, {1, 5, 1, 1}});
  ExpectTaken(OddsSingleOfFlat, {{3, 6, 7, 30}, {3, 6, 15, 75}, {2, 6, 2, 4}});

  // By the multiple: single odds of it, colour push, single odds of the flat bet, or no push.
  ExpectTaken(OddsAutoSelect, {{1, 6, 15, 25}, {2, 6, 8, 20}, {2, 6, 10, 25}, {3, 6, 15, 75}});
  ExpectTaken(OddsAutoSelect, {{4, 6, 7, 30}, {3.5, 6, 7, 27}, {2.5, 6, 7, 17}, {1.5, 6, 7, 10}});

  // The house caps what they win.
  Game.MaxOddsBet = 1500;
  ExpectLaid(OddsNoPush, {{2, 4, 1000, 3000}});
  SetChips({5, 25, 100, 500, 1000});
  Game.MaxOddsBet = 1498;
  ExpectTaken(OddsNoPush, {{2, 6, 1000, 1495}});
}

TEST_F(OddsTest, ColorPushOfALargeBetIsTheFirstAmountThatWinsWholeChips) {
  Game.OddsCalcMethod = OddsColorPush;
  Game.OddsAllowed68 = 1;
  Game.MaxOddsBet = 100'000'000;
  int pushed = 0;
  for (const int chip : {1009, 2500, 4099, 5000, 7919, 9973})
    for (const int flat : {20'000, 30'100, 70'700}) {
      SetChips({1, 1, 1, 1, chip});
      Game.Bets[kCome6] = flat;
      int first = flat;
      while (first <= 2 * flat && first * 6 % (5 * chip) != 0) ++first;
      EXPECT_EQ(MaximumOf(kCome6Odds), Currency(first <= 2 * flat ? first : flat)) << chip;
      pushed += first > flat && first <= 2 * flat ? 1 : 0;
    }
  EXPECT_GT(pushed, 10);
}

TEST_F(OddsTest, ColorPushAsksForHundredsTwentyFivesAndFivesWhateverTheChips) {
  ExpectTaken(OddsColorPush, {{2, 5, 220, 450}});  // no whole 25: not 600
  SetChips({1, 2, 8, 500, 1000});
  ExpectTaken(OddsColorPush, {{2, 5, 18, 36}, {2, 5, 20, 48}});  // 18 is no whole 5
}

TEST_F(OddsTest, EachNumberHasItsMultiple) {
  Game.OddsCalcMethod = OddsNoPush;
  Game.OddsAllowed410 = 3;
  Game.OddsAllowed59 = 4;
  Game.OddsAllowed68 = 5;
  for (const auto& [number, taken] : {std::pair{4, 30}, {5, 40}, {6, 50}, {9, 40}, {10, 30}}) {
    SCOPED_TRACE(number);
    SetPoint(number);
    const int come = BetOnNumber(ComeFamily, number);
    const int dontCome = BetOnNumber(DontComeFamily, number);
    for (const int id : {+PassLine, +DontPass, come, dontCome}) Establish(id, 10);
    for (int id : {+PassLineOdds, come + kOddsOffset}) EXPECT_EQ(MaximumOf(id), Currency(taken));
    for (const int id : {+DontPassOdds, dontCome + kOddsOffset})
      EXPECT_EQ(MaximumOf(id), Currency(60)) << "ratio and multiple make up for each other";
  }
}

TEST_F(OddsTest, APointOfEightLeavesTheMultipleAsItWas) {
  Game.OddsCalcMethod = OddsNoPush;
  SetPoint(8);
  Establish(PassLine, 10);
  EXPECT_EQ(MaximumOf(PassLineOdds), Currency(25)) << "a first point of 8 finds that of 6 and 8";
  Game.OddsAllowed410 = 3;
  Game.OddsAllowed68 = 5;
  Establish(Come4, 10);
  MaximumOf(Come4Odds);
  EXPECT_EQ(MaximumOf(PassLineOdds), Currency(30));
}

// --- Proper odds amounts ---

class ProperOddsTest : public TableTest {
 protected:
  ProperOddsTest() {
    Game.Bets[BankrollIndex] = 100'000;
    Game.AutoAdjust = AdjustMinor;
    Game.LayBias = Game.PlaceBias = Game.DoBias = Game.DontBias = BiasNearest;
  }

  /// What a bet becomes that stands at `standing` when `request` is asked for, and what is told.
  void Ask(int betId, Currency standing, Currency request, Currency becomes,
           const std::string& told = {}) {
    SCOPED_TRACE(BetName(betId) + " of " + MoneyText(standing) + " by " + MoneyText(request));
    Game.Bets[betId] = standing;
    RefigureHeldVig();
    RequestChange(betId, request);
    EXPECT_EQ(Bet(betId), becomes) << BetName(betId);
    std::vector<ShownMessage> notices;
    if (!told.empty()) notices = {Notice(NoticeLimits, BetName(betId) + " Bet", 130, told)};
    EXPECT_THAT(TakeShown(), ElementsAreArray(notices));
  }
};

TEST_F(ProperOddsTest, MinorCorrectionByBias) {
  // What stands, the request, and what becomes of it by each bias: a bet made isn't taken away, nor
  // is a raise or a lowering; without a change the bet itself counts, and a tie goes up.
  const int rows[][5] = {{0, 10, 12, 12, 6},  {0, 12, 12, 12, 12},  {0, 4, 6, 6, 6},
                         {12, 2, 18, 18, 18}, {18, -1, 12, 12, 12}, {12, 7, 18, 24, 18},
                         {18, -8, 12, 6, 12}, {18, -14, 0, 0, 6},   {10, 0, 12, 12, 6},
                         {7, 0, 6, 12, 6},    {9, 0, 12, 12, 6},    {12, -12, 0, 0, 0}};
  for (const auto& [standing, request, nearest, increase, decrease] : rows)
    for (const auto& [bias, becomes] :
         {std::pair{BiasNearest, nearest}, {BiasIncrease, increase}, {BiasDecrease, decrease}}) {
      Game.PlaceBias = bias;
      Ask(Place6, standing, request, becomes);
    }
  Game.AutoAdjust = AdjustManual;
  Ask(Place6, 0, 10, 10);
  Game.AutoAdjust = AdjustMinor;
  SetChips({Currency::FromRaw(500), Currency::FromRaw(2'500), 1, 5, 25});
  Game.MinPlacard = Unit();
  Ask(Place6, 0, Currency::FromRaw(8'000), Currency::FromRaw(6'000));
}

TEST_F(ProperOddsTest, NearestPrefersAMultipleOfTheChangeAndNeverUndoesIt) {
  Ask(Place6, 0, 9, 12);
  Ask(Place6, 21, 8, 24);  // three times 8, though 30 is nearer
  Ask(Place6, 20, 5, 30);  // six times 5, though 24 is nearer
  Game.Payoff[Place6] = {7, true, 20};
  Ask(Place6, 20, 7, 40);   // 20 is nearer to 27, but no raise
  Ask(Place6, 40, -7, 20);  // 40 is nearer to 33, but no lowering
}

TEST_F(ProperOddsTest, EachFamilyHasItsBias) {
  SetPoint(6);
  for (const int id : {+PassLine, +DontPass, kCome6, kDontCome6}) Establish(id, 100);
  Game.Notify = 0;
  const std::tuple<int, int, int*, int, int> rows[] = {
      {kLay6, 10, &Game.LayBias, 12, 6},         {Place8, 10, &Game.PlaceBias, 12, 6},
      {PassLineOdds, 12, &Game.DoBias, 15, 10},  {kCome6Odds, 12, &Game.DoBias, 15, 10},
      {DontPassOdds, 10, &Game.DontBias, 12, 6}, {kDontCome6Odds, 10, &Game.DontBias, 12, 6}};
  for (const auto& [bet, request, bias, increased, decreased] : rows) {
    *bias = BiasIncrease;
    Ask(bet, 0, request, increased);
    *bias = BiasDecrease;
    Ask(bet, 0, request, decreased);
    *bias = BiasNearest;
  }
  Game.LayBias = Game.PlaceBias = Game.DoBias = Game.DontBias = BiasDecrease;
  Ask(BetOnNumber(BuyFamily, 5), 0, 5, 6);  // Buy bets have none
}

TEST_F(ProperOddsTest, LineBetsTakeTheRatioOfTheNumber) {
  Game.Payoff[Come].Per = 5;
  Game.Payoff[DontCome].Per = 4;
  Game.Payoff[kCome6].Per = Game.Payoff[kDontCome6].Per = 3;
  Game.Payoff[PassLine].Per = Game.Payoff[DontPass].Per = 100;
  Ask(PassLine, 0, 12, 10);
  Ask(DontPass, 0, 14, 16);
  SetPoint(6);
  Game.AllowPutBets = true;
  Ask(PassLine, 0, 13, 12);
  Establish(DontPass, 0);
  Game.ContractBets[DontPass] = 50;
  Ask(DontPass, 0, 13, 12);
  Establish(PassLine, 100);
  Game.Payoff[PassLineOdds].Per = 1;
  Ask(PassLineOdds, 0, 12, 10);  // by Come 6 Odds
}

TEST_F(ProperOddsTest, ContractsHold) {
  SetPoint(6);
  Game.Payoff[kCome6].Per = Game.Payoff[kDontCome6].Per = 5;
  Game.AllowPutBets = true;
  for (const int id : {+PassLine, kCome6}) Game.ContractBets[id] = 12;
  for (const int id : {+DontPass, kDontCome6}) Game.ContractBets[id] = 13;
  for (const int id : {+PassLine, kCome6}) Ask(id, 12, 0, 15);      // 10 is below the contract
  for (const int id : {+DontPass, kDontCome6}) Ask(id, 13, 0, 10);  // 15 is above it
  Ask(PassLine, 15, -2, 15,
      "Minimum bet for proper odds payoff here is: $15\nwhich is already bet.");
  Game.MaxPlacard = 14;
  Game.Notify = 0;
  for (const int id : {+PassLine, kCome6}) Ask(id, 14, -1, 12);  // no amount is proper
}

TEST_F(ProperOddsTest, ColorCorrectionPaysInTheChipsOfTheChange) {
  Game.AutoAdjust = AdjustColor;
  Ask(Place6, 0, 50, 60);    // ten 5s
  Ask(Place6, 0, 10, 12);    // 30 is more than the change
  Ask(Place6, 0, 200, 150);  // eight 25s, the nearer of 150 and 300
  Ask(Place6, 0, 25, 24);    // one 25 isn't more than one, 30 is too much
  Ask(Place6, 50, 0, 60);    // without a change the bet itself counts
  Ask(Place6, 12, 35, 60);   // 47 by 30s
  Game.Notify = 0;
  Ask(Buy4, 0, 13, 13);  // 2 to 1 pays any amount
  Game.MinPlacard = 40;
  Game.MaxPlacard = 55;
  Ask(Place6, 0, 50, 48);  // 30 and 60 are both out of bounds
}

TEST_F(ProperOddsTest, FullOddsAreNotPushedByColor) {
  Game.AutoAdjust = AdjustColor;
  Game.OddsCalcMethod = OddsNoPush;
  Game.OddsAllowed68 = 1;
  SetPoint(6);
  Game.Notify = 0;
  for (const auto& [flat, becomes] : {std::pair{57, 55}, {58, 50}}) {
    Establish(PassLine, flat);
    Ask(PassLineOdds, 2, 55, becomes);
  }
}

TEST_F(ProperOddsTest, LimitsForProperOddsAreTold) {
  Game.MaxPlacard = 18;
  Ask(Place6, 0, 15, 18);  // the maximum itself pays properly
  const std::string most = "Maximum bet for proper odds payoff here is: $";
  Game.MaxPlacard = 20;
  Game.PlaceBias = BiasIncrease;
  Ask(Place6, 0, 20, 18, most + "18\nwhich is being bet.");
  Ask(Place6, 18, 5, 18, "Maximum bet here is $20\n\n" + most + "18\nwhich is already bet.");

  Game.PlaceBias = BiasNearest;
  Game.MinPlacard = 10;
  const std::string least = "Minimum bet for proper odds payoff here is: $12\nwhich is being bet.";
  Ask(Place6, 0, 5, 12, "Minimum bet here is $10\n\n" + least);
  Game.PlaceBias = BiasDecrease;
  Ask(Place6, 0, 11, 12);  // 6 is below the minimum
  Game.PlaceBias = BiasIncrease;
  Ask(Place6, 18, -7, 0);  // 6 is below the minimum: the bet comes off

  Game.PlaceBias = BiasNearest;
  Game.MinPlacard = 7;
  Game.MaxPlacard = 10;
  const std::string unable = "Unable to auto-adjust bet for proper odds payoff.\n\n" + most + "10";
  Ask(Place6, 0, 8, 10, unable);
  Ask(Place6, 0, 20, 10, "Maximum bet here is $10\n\n" + unable);
  Ask(Place6, 9, -1, 0);  // a lowering takes the bet off
  Ask(Place6, 12, 0, 0);  // so does a lowered maximum
  Game.HyperDriveOn = true;
  Ask(Place6, 0, 20, 10);
  EXPECT_EQ(Game.MsgText, "");
}

}  // namespace
