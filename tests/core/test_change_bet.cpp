// The door that every amount goes through: contract and sequence rules, Units, limits, bankroll.
#include "core/change_bet.h"

#include <gmock/gmock.h>

#include <limits>

#include "core/messages.h"
#include "core/text.h"
#include "core/vig_and_odds.h"
#include "support/table_fixture.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr int kCome6 = BetOnNumber(ComeFamily, 6);
constexpr int kDontCome6 = BetOnNumber(DontComeFamily, 6);

const char* const kPassContract =
    "You may not decrease or remove your Pass Line bet \nwhile a point is established.";
const char* const kPassPut =
    "You may not make or increase a Pass Line bet\nwhile a point is established.\n\n"
    "(Unless you check \"Allow Put Bets\" on\nthe Configuration screen.)";
const char* const kComeContract =
    "You may not decrease or remove a Come bet \nwhich is established on a point.";
const char* const kComePut =
    "You may not make or increase a Come bet\ndirectly on a point number.\n\n"
    "(Unless you check \"Allow Put Bets\" on\nthe Configuration screen.)";
const char* const kDontPassLate =
    "You may not make or increase a Don't Pass bet\nwhile a point is established.";
const char* const kDontComeLate =
    "You may not make or increase a Don't Come bet\ndirectly on a point number.";
const char* const kPassOdds =
    "You may not make a Pass Line Odds Bet unless \nyou also have a Pass Line bet and \n"
    "a point is established.";
const char* const kDontOdds =
    "You may not make a Don't Pass Odds bet unless \nyou also have a Don't Pass bet and \n"
    "a point is established.";

class ChangeBetTest : public TableTest {
 protected:
  void SetUp() override {
    TableTest::SetUp();
    Game.AutoAdjust = AdjustManual;
  }

  static void SetChips(std::initializer_list<Currency> values) {
    std::copy(values.begin(), values.end(), Game.Bets.begin() + SmallestChip);
  }

  static Currency MaximumOf(int betId) {
    FigureMaxBet(betId);
    return Game.MaxHere;
  }

  static ShownMessage LimitNotice(int betId, const std::string& text) {
    return Notice(NoticeLimits, BetName(betId) + " Bet", 130, text);
  }
};

// --- Contract and sequence rules ---

/// A row: what stands, what is asked, what becomes of it, and the notice (none when silent).
struct RuleRow {
  const char* Name;
  int BetId;
  int Point;
  Currency Contract;
  Currency Standing;
  Currency Request;
  bool PutBets;
  Currency Becomes;
  const char* Text;
  int Topic;
};

std::vector<RuleRow> RuleRows() {
  return {
      {"pass restored", PassLine, 6, 10, 0, 0, false, 10, kPassContract, 250},
      {"pass lowered", PassLine, 6, 10, 10, -5, false, 10, kPassContract, 250},
      {"pass removed", PassLine, 6, 10, 10, -10, true, 10, kPassContract, 250},
      {"put pass lowered", PassLine, 6, 10, 15, -2, true, 13, nullptr, 0},
      {"put pass removed", PassLine, 6, 10, 15, -15, true, 10, nullptr, 0},
      {"put pass lowered too far", PassLine, 6, 10, 15, -10, true, 10, nullptr, 0},
      {"pass raised", PassLine, 6, 10, 10, 5, false, 10, kPassPut, 510},
      {"pass keyed above contract", PassLine, 6, 10, 0, 15, false, 10, kPassPut, 510},
      {"pass made late", PassLine, 6, 0, 0, 10, false, 0, kPassPut, 510},
      {"put pass raised", PassLine, 6, 10, 10, 5, true, 15, nullptr, 0},
      {"put pass made", PassLine, 6, 0, 0, 10, true, 10, nullptr, 0},
      {"pass on the come-out", PassLine, 0, 0, 10, 5, false, 15, nullptr, 0},
      {"pass off on the come-out", PassLine, 0, 0, 10, -10, false, 0, nullptr, 0},

      {"come restored", kCome6, 0, 5, 0, 0, false, 5,
       "You may not decrease or remove an established Come bet.", 250},
      {"come lowered", kCome6, 0, 5, 5, -2, false, 5, kComeContract, 250},
      {"come removed", kCome6, 8, 5, 5, -5, true, 5, kComeContract, 250},
      {"put come lowered", kCome6, 8, 5, 15, -10, true, 5, nullptr, 0},
      {"put come removed", kCome6, 8, 5, 15, -15, true, 5, nullptr, 0},
      {"come raised", kCome6, 8, 5, 5, 5, false, 5, kComePut, 510},
      {"come made on a number", kCome6, 8, 0, 0, 5, false, 0, kComePut, 510},
      {"come put back", kCome6, 8, 5, 0, 5, false, 5, nullptr, 0},
      {"put come raised", kCome6, 8, 5, 5, 5, true, 10, nullptr, 0},

      {"come on the come-out", Come, 0, 0, 0, 5, false, 0,
       "You may not make a Come bet until \na point is established.", 45},
      {"come with a point", Come, 6, 0, 0, 5, false, 5, nullptr, 0},
      {"come off with a point", Come, 6, 5, 5, -5, false, 0, nullptr, 0},
      {"don't come on the come-out", DontCome, 0, 0, 0, 5, false, 0,
       "You may not make a Don't Come bet until\na point is established.", 48},
      {"don't come with a point", DontCome, 6, 0, 0, 5, false, 5, nullptr, 0},

      {"don't pass raised", DontPass, 6, 10, 10, 5, false, 10, kDontPassLate, 46},
      {"don't pass raised past contract", DontPass, 6, 10, 5, 10, true, 10, kDontPassLate, 46},
      {"don't pass made late", DontPass, 6, 0, 0, 10, true, 0, kDontPassLate, 46},
      {"don't pass off", DontPass, 6, 10, 10, -10, false, 0, nullptr, 0},
      {"don't pass put back", DontPass, 6, 10, 0, 10, false, 10, nullptr, 0},
      {"don't pass on the come-out", DontPass, 0, 10, 10, 5, false, 15, nullptr, 0},
      {"don't come 6 raised", kDontCome6, 6, 10, 10, 5, true, 10, kDontComeLate, 48},
      {"don't come 6 made late", kDontCome6, 0, 0, 0, 10, false, 0, kDontComeLate, 48},
      {"don't come 6 lowered", kDontCome6, 8, 10, 10, -5, false, 5, nullptr, 0},
      {"don't come 6 put back", kDontCome6, 8, 10, 5, 5, false, 10, nullptr, 0},

      {"pass odds without a bet", PassLineOdds, 6, 0, 0, 5, false, 0, kPassOdds, 43},
      {"pass odds on the come-out", PassLineOdds, 0, 0, 0, 5, false, 0, kPassOdds, 43},
      {"don't odds without a bet", DontPassOdds, 6, 0, 0, 6, false, 0, kDontOdds, 46},
      {"don't odds on the come-out", DontPassOdds, 0, 0, 0, 6, false, 0, kDontOdds, 46},
  };
}

class ContractRules : public ChangeBetTest, public ::testing::WithParamInterface<RuleRow> {
 protected:
  static void LayOut() {
    const RuleRow& row = GetParam();
    SetPoint(row.Point);
    Game.AllowPutBets = row.PutBets;
    Establish(row.BetId, row.Standing);
    if (row.BetId < kContractSlots) Game.ContractBets[row.BetId] = row.Contract;
  }
  static void Ask() {
    const RuleRow& row = GetParam();
    RequestChange(row.BetId, row.Request);
    EXPECT_EQ(Bet(row.BetId), row.Becomes);
    EXPECT_EQ(Game.Change, row.Becomes - row.Standing);
    ExpectBooksBalance();
  }
};

TEST_P(ContractRules, BendTheRequestAndTellItOnce) {
  const RuleRow& row = GetParam();
  LayOut();
  Ask();
  if (row.Text == nullptr)
    EXPECT_THAT(Shown, IsEmpty());
  else
    EXPECT_THAT(Shown, ElementsAre(Notice(NoticeActions, BetName(row.BetId) + " Bet", row.Topic,
                                          row.Text)));
}

TEST_P(ContractRules, HoldWithTheNoticeOff) {
  LayOut();
  Game.Notify &= ~NoticeActions;
  Ask();
  EXPECT_THAT(Shown, IsEmpty());
  EXPECT_EQ(Game.MsgText, "");
}

TEST_P(ContractRules, HoldUnderHyperDrive) {
  LayOut();
  Game.HyperDriveOn = true;
  Ask();
  EXPECT_THAT(Shown, IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Rows, ContractRules, ::testing::ValuesIn(RuleRows()),
                         [](const ::testing::TestParamInfo<RuleRow>& row) {
                           std::string name;
                           for (const char letter : std::string(row.param.Name))
                             if (std::isalnum(static_cast<unsigned char>(letter))) name += letter;
                           return name + std::to_string(row.index);
                         });

TEST_F(ChangeBetTest, OddsOnANumberNeedTheirFlatBetAndNameIt) {
  const std::string wording = "You may not make an odds bet here until \nyou've established a ";
  for (int i = 0; i < 6; ++i) {
    RequestChange(Come4Odds + i, 10);
    EXPECT_EQ(TakeOnlyMessage(), Notice(NoticeActions, BetName(Come4Odds + i) + " Bet", 45,
                                        wording + BetName(Come4 + i) + " bet."));
    RequestChange(DontCome4Odds + i, 12);
    EXPECT_EQ(TakeOnlyMessage(), Notice(NoticeActions, BetName(DontCome4Odds + i) + " Bet", 48,
                                        wording + BetName(DontCome4 + i) + " bet."));
  }
  EXPECT_EQ(MoneyOnTable(), Currency(0));
}

TEST_F(ChangeBetTest, AnAmountBelowTheContractIsRestoredWithBothNotices) {
  SetPoint(6);
  Game.ContractBets[PassLine] = 10;
  Game.ContractBets[kCome6] = 10;
  RequestChange(PassLine, 3);
  EXPECT_EQ(Bet(PassLine), Currency(10));
  EXPECT_THAT(TakeShown(),
              ElementsAre(Notice(NoticeActions, "Pass Line Bet", 250, kPassContract),
                          LimitNotice(PassLine, "Minimum bet here is $10\nwhich is being bet.")));
  RequestChange(kCome6, 3);
  EXPECT_EQ(Bet(kCome6), Currency(10));
  EXPECT_THAT(TakeShown(),
              ElementsAre(Notice(NoticeActions, "Come 6 Bet", 250, kComeContract),
                          LimitNotice(kCome6, "Minimum bet here is $10\nwhich is being bet.")));
}

TEST_F(ChangeBetTest, ARefusalLeavesItsTextAndARestoredBetDoesNot) {
  RequestChange(Come, 5);
  EXPECT_NE(Game.MsgText, "");
  RequestChange(Field, 5);
  EXPECT_EQ(Game.MsgText, "");
  SetPoint(6);
  RequestChange(DontPass, 5);
  EXPECT_EQ(Game.MsgText, "");
}

TEST_F(ChangeBetTest, PutBetsDoNotMoveTheContract) {
  SetPoint(6);
  Establish(PassLine, 10);
  Game.AllowPutBets = true;
  RequestChange(PassLine, 5);
  EXPECT_EQ(Game.ContractBets[PassLine], Currency(10));
  RequestChange(PassLine, -5);
  EXPECT_EQ(Bet(PassLine), Currency(10));
  EXPECT_THAT(Shown, IsEmpty());
  RequestChange(PassLine, 5);
  RequestChange(PassLine, -10);
  EXPECT_EQ(Game.Change, Currency(-5));
  EXPECT_THAT(Shown, IsEmpty());
}

TEST_F(ChangeBetTest, ABetTakenOffGoesBackToItsOrdinaryState) {
  Given(Hard4, 5);
  Game.BetWorking[Hard4] = CalledOff;
  RequestChange(Hard4, -2);
  EXPECT_EQ(Game.BetWorking[Hard4], CalledOff);
  RequestChange(Hard4, -3);
  EXPECT_EQ(Game.BetWorking[Hard4], Working);
  Given(Place6, 6);
  Game.BetWorking[Place6] = CalledOn;
  RequestChange(Place6, -6);
  EXPECT_EQ(Game.BetWorking[Place6], NotWorking) << "Place bets rest on the come-out";
  SetPoint(8);
  Given(Place6, 6);
  Game.BetWorking[Place6] = CalledOff;
  RequestChange(Place6, -6);
  EXPECT_EQ(Game.BetWorking[Place6], Working);
}

// --- Units ---

TEST_F(ChangeBetTest, RequestsAreRoundedAwayFromZero) {
  SetChips({5, 25, 100, 500, 1000});
  RequestChange(Field, 7);
  EXPECT_EQ(Bet(Field), Currency(10));
  RequestChange(Field, 10);
  RequestChange(Field, -7);
  EXPECT_EQ(Game.Change, Currency(-10));
  EXPECT_EQ(Bet(Field), Currency(10));
  RequestChange(Field, -12);
  EXPECT_EQ(Game.Change, Currency(-10));
  RequestChange(Field, -1);
  EXPECT_EQ(Game.Change, Currency(0)) << "nothing is below an empty bet";
}

TEST_F(ChangeBetTest, UnitsOfCentsStayExact) {
  SetChips({Currency::FromRaw(500), Currency::FromRaw(2'500), 1, 5, 25});
  Game.MinPlacard = Unit();
  RequestChange(Field, Currency::FromRaw(1'500));
  EXPECT_EQ(Bet(Field), Currency::FromRaw(1'500));
  RequestChange(Field, Currency::FromRaw(1));
  EXPECT_EQ(Bet(Field), Currency::FromRaw(2'000));
  for (int i = 0; i < 7; ++i) RequestChange(Hard8, Currency::FromRaw(1'500));
  EXPECT_EQ(Bet(Hard8), Currency::FromRaw(10'500));
}

// --- Minimum ---

TEST_F(ChangeBetTest, TheMinimumLooksAtTheAmountAsAsked) {
  Establish(Place5, 5);
  Game.MinPlacard = 10;
  RequestChange(Place5, 3);
  EXPECT_EQ(Game.Change, Currency(5));
  EXPECT_EQ(TakeOnlyMessage(), LimitNotice(Place5, "Minimum bet here is $10\nwhich is being bet."));
  RequestChange(Place5, -5);
  EXPECT_EQ(Bet(Place5), Currency(0)) << "a bet lowered below the minimum comes off whole";
  EXPECT_THAT(Shown, IsEmpty());

  SetChips({5, 25, 100, 500, 1000});
  Game.MinPlacard = 5;
  RequestChange(Field, 1);
  EXPECT_EQ(Bet(Field), Currency(5));
  EXPECT_EQ(TakeOnlyMessage(), LimitNotice(Field, "Minimum bet here is $5\nwhich is being bet."));
}

TEST_F(ChangeBetTest, APropositionBetNeedsOnlyAUnit) {
  Game.MinPlacard = 25;
  RequestChange(Hard4, 1);
  RequestChange(Hop13, 1);
  EXPECT_EQ(Bet(Hard4) + Bet(Hop13), Currency(2));
  EXPECT_EQ(Game.MinHere, Unit());
  RequestChange(Big8, 1);
  EXPECT_EQ(Bet(Big8), Currency(25));
  EXPECT_EQ(Game.MinHere, Currency(25));
}

TEST_F(ChangeBetTest, AMinimumBetweenTwoUnitsTakesTheHigher) {
  SetChips({5, 25, 100, 500, 1000});
  Game.MinPlacard = 12;
  RequestChange(Field, 5);
  EXPECT_EQ(Bet(Field), Currency(15));
  EXPECT_EQ(TakeOnlyMessage(), LimitNotice(Field, "Minimum bet here is $12\nwhich is being bet."));
}

TEST_F(ChangeBetTest, WhatTheMinimumRaisedIsHeldToTheMaximum) {
  SetChips({5, 25, 100, 500, 1000});
  Game.MinPlacard = 12;
  Game.MaxPlacard = 13;
  RequestChange(Field, 5);
  EXPECT_EQ(Bet(Field), Currency(10)) << "15 is above 13";
  EXPECT_EQ(TakeOnlyMessage(), LimitNotice(Field, "Maximum bet here is $10\nwhich is being bet."));
}

TEST_F(ChangeBetTest, ARaisedMinimumTakesBetsOffButNoContract) {
  SetPoint(6);
  Establish(PassLine, 5);
  Establish(kCome6, 5);
  Establish(kDontCome6, 5);
  Establish(Place5, 5);
  Game.MinPlacard = 10;
  for (const int id : {+PassLine, kCome6, kDontCome6, +Place5}) RequestChange(id, 0);
  EXPECT_EQ(Bet(PassLine), Currency(5));
  EXPECT_EQ(Bet(kCome6), Currency(5));
  EXPECT_EQ(Bet(kDontCome6), Currency(0));
  EXPECT_EQ(Bet(Place5), Currency(0));
  ExpectBooksBalance();
}

// --- Maximum ---

TEST_F(ChangeBetTest, TheMaximumIsTold) {
  Game.Bets[BankrollIndex] = 10'000;
  RequestChange(Place5, 2000);
  EXPECT_EQ(Bet(Place5), Currency(1000));
  EXPECT_EQ(TakeOnlyMessage(),
            LimitNotice(Place5, "Maximum bet here is $1,000\nwhich is being bet."));
  RequestChange(Place5, 1);
  EXPECT_EQ(Game.Change, Currency(0));
  EXPECT_EQ(TakeOnlyMessage(),
            LimitNotice(Place5, "Maximum bet here is $1,000\nwhich is already bet."));
  EXPECT_EQ(Game.MsgText, "");
  Game.Notify &= ~NoticeLimits;
  RequestChange(Place5, 1);
  EXPECT_THAT(Shown, IsEmpty());
  EXPECT_EQ(Game.MsgText, "");
  Game.MaxPlacard = 20;
  RequestChange(Place5, 0);
  EXPECT_EQ(Bet(Place5), Currency(20));
}

TEST_F(ChangeBetTest, AContractAboveALoweredMaximumStands) {
  SetPoint(8);
  Establish(kCome6, 5);
  Game.MaxPlacard = 3;
  RequestChange(kCome6, 1);
  EXPECT_EQ(Game.Change, Currency(0));
  const ShownMessage stands = Notice(
      NoticeActions | NoticeLimits, "Come 6 Bet", 250,
      "Maximum bet here is $3\n\nHowever, because the Come 6 is a contract bet and it \nwas "
      "established at $5 before the maximum allowed was lowered \non the Configuration screen, it "
      "must remain unchanged until it resolves.");
  EXPECT_THAT(TakeShown(), ElementsAre(Notice(NoticeActions, "Come 6 Bet", 510, kComePut), stands));
  EXPECT_EQ(Game.MsgText, "");

  // One of the two classes is enough.
  Game.Notify = NoticeLimits;
  RequestChange(kCome6, 0);
  EXPECT_EQ(TakeOnlyMessage(), stands);
  Game.Notify = NoticeActions;
  RequestChange(kCome6, 0);
  EXPECT_EQ(TakeOnlyMessage(), stands);
  Game.Notify = NoticeCharges;
  RequestChange(kCome6, 0);
  EXPECT_THAT(Shown, IsEmpty());
  EXPECT_EQ(Bet(kCome6), Currency(5));
}

TEST_F(ChangeBetTest, APutBetAboveALoweredMaximumFallsToItsContract) {
  SetPoint(6);
  Establish(PassLine, 60);
  Game.AllowPutBets = true;
  Game.ContractBets[PassLine] = 50;
  Game.MaxPlacard = 20;
  RequestChange(PassLine, 0);
  EXPECT_EQ(Bet(PassLine), Currency(50));
  Game.ContractBets[PassLine] = 10;
  RequestChange(PassLine, 0);
  EXPECT_EQ(Bet(PassLine), Currency(20));
}

TEST_F(ChangeBetTest, MaximaOfTheDefaultRules) {
  const std::map<int, int> maxima = {
      {Lay4, 2000},  {Lay4 + 1, 1500},  {Lay4 + 2, 1200}, {Lay10, 2000},    {Place4, 1000},
      {Buy4, 1000},  {PassLine, 1000},  {Come, 1000},     {DontPass, 1000}, {DontCome, 1000},
      {Come4, 1000}, {DontCome4, 1000}, {Field, 1000},    {Big6, 1000},     {Hard4, 428},
      {Hard6, 333},  {Two, 100},        {Three, 200},     {Seven, 750},     {Eleven, 200},
      {Twelve, 100}, {Craps, 428},      {CAndE, 428},     {Horn, 444},      {World, 576},
      {Over7, 3000}, {Under7, 3000},    {Hop13, 200},     {Hop22, 100},     {Hop55, 100},
  };
  for (const auto& [id, maximum] : maxima)
    EXPECT_EQ(MaximumOf(id), Currency(maximum)) << BetName(id);
}

TEST_F(ChangeBetTest, MaximaFollowPayoffsAndUnits) {
  SetChips({5, 25, 100, 500, 1000});
  EXPECT_EQ(MaximumOf(Hard6), Currency(330));
  Game.MaxPlacard = 1003;
  EXPECT_EQ(MaximumOf(Field), Currency(1000));
  SetChips({Currency::FromRaw(2'500), 1, 5, 25, 100});
  Game.MaxPlacard = 1000;
  EXPECT_EQ(MaximumOf(Hard6), Currency::FromRaw(3'332'500));
  EXPECT_EQ(MaximumOf(Horn), Currency::FromRaw(4'442'500));
  Game.Payoff[Lay4] = {19, true, 41};
  EXPECT_EQ(MaximumOf(Lay4), Currency::FromRaw(21'577'500)) << "1000 won by 2157.8947";
  Game.Payoff[Craps] = {20, true, 1};
  EXPECT_EQ(MaximumOf(CAndE), Currency::FromRaw(3'157'500)) << "3000 / 9.5, the higher of the two";
  Game.Payoff[Seven] = {50, true, 1};
  EXPECT_EQ(MaximumOf(World), Currency::FromRaw(3'260'000)) << "3000 / 9.2";
}

TEST_F(ChangeBetTest, APartBetThatCannotWinIsHeldByThePlacard) {
  for (const int id : {Two, Three, Seven, Eleven, Twelve, Craps}) Game.Payoff[id] = {1, true, 1};
  EXPECT_EQ(MaximumOf(CAndE), Currency(1000)) << "1 / 2 - 0.5 is nothing";
  EXPECT_EQ(MaximumOf(Horn), Currency(1000)) << "1 / 4 - 0.75 is below nothing";
  EXPECT_EQ(MaximumOf(World), Currency(1000));
  Game.Payoff[Twelve] = {3, true, 1};
  EXPECT_EQ(MaximumOf(Horn), Currency(1000)) << "3 / 4 - 0.75 is nothing";
  Game.Payoff[Twelve] = {4, true, 1};
  EXPECT_EQ(MaximumOf(Horn), Currency(12'000)) << "3000 / 0.25: the payoff limits, not the placard";
}

// --- Bankroll ---

const char* const kShort =
    "You don't have enough bankroll remaining to bet the full amount requested.\n\n"
    "Your options are: ";
const char* const kBetLess = "\n      - Bet less on other bets.";
const char* const kWithdraw =
    "\n      - Make a withdrawal from the ATM.\n      - Allow negative bankroll amounts.";

TEST_F(ChangeBetTest, ABetShrinksToTheFreeMoney) {
  Game.Bets[BankrollIndex] = 100;
  Given(Place5, 95);
  RequestChange(Field, 10);
  EXPECT_EQ(Game.Change, Currency(5));
  EXPECT_EQ(TakeOnlyMessage(), LimitNotice(Field, std::string(kShort) + kBetLess + kWithdraw));
  EXPECT_EQ(Game.MsgText, "");
  EXPECT_EQ(Game.MaxHere, Currency(5));
  ExpectBooksBalance();
}

TEST_F(ChangeBetTest, WithoutOtherBetsThereIsNothingToBetLessOn) {
  Game.Bets[BankrollIndex] = 10;
  RequestChange(Field, 15);
  EXPECT_EQ(Bet(Field), Currency(10));
  EXPECT_EQ(TakeOnlyMessage(), LimitNotice(Field, std::string(kShort) + kWithdraw));
  RequestChange(Field, 5);
  EXPECT_EQ(Game.Change, Currency(0));
  EXPECT_EQ(TakeOnlyMessage(), LimitNotice(Field, std::string(kShort) + kWithdraw));
  Game.Notify &= ~NoticeLimits;
  RequestChange(Field, 5);
  EXPECT_EQ(Game.Change, Currency(0));
  EXPECT_THAT(Shown, IsEmpty());
}

TEST_F(ChangeBetTest, LimitAndBankrollAreToldTogether) {
  Game.Bets[BankrollIndex] = 800;
  RequestChange(Field, 2000);
  EXPECT_EQ(Bet(Field), Currency(800));
  EXPECT_EQ(TakeOnlyMessage(),
            LimitNotice(Field, "Maximum bet here is $1,000\n\n" + std::string(kShort) + kWithdraw));
}

TEST_F(ChangeBetTest, WhatIsLeftBelowTheMinimumIsNoBet) {
  Game.Bets[BankrollIndex] = 8;
  Game.MinPlacard = 10;
  RequestChange(Field, 20);
  EXPECT_EQ(Bet(Field), Currency(0));
  EXPECT_EQ(TakeOnlyMessage(),
            LimitNotice(Field, "Minimum bet here is $10\n\n" + std::string(kShort) + kWithdraw));
}

TEST_F(ChangeBetTest, ProperOddsTextIsFiguredAfreshForTheBankroll) {
  Game.AutoAdjust = AdjustMinor;
  Game.MaxPlacard = 20;
  Game.Bets[BankrollIndex] = 15;
  RequestChange(Place6, 50);
  EXPECT_EQ(Bet(Place6), Currency(12));
  EXPECT_EQ(TakeOnlyMessage(),
            LimitNotice(Place6,
                        "Maximum bet here is $20\n\nMaximum bet for proper odds payoff here is: "
                        "$12\n\n" +
                            std::string(kShort) + kWithdraw));
}

TEST_F(ChangeBetTest, VigUpFrontMustBeCovered) {
  Game.Notify = 0;
  const auto made = [](int betId, int bankroll, int request) {
    Game.Bets[BankrollIndex] = bankroll;
    RequestChange(betId, -Bet(betId));
    RequestChange(betId, request);
    ExpectBooksBalance();
    return Bet(betId);
  };
  EXPECT_EQ(made(Buy4, 21, 20), Currency(20));
  EXPECT_EQ(made(Buy4, 21, 30), Currency(20));
  EXPECT_EQ(made(Buy4, 41, 40), Currency(39)) << "40 holds a vig of 2, and 39 too";
  EXPECT_EQ(made(Buy4, 1, 10), Currency(0));
  EXPECT_EQ(made(Lay4, 0, 10), Currency(0));
  EXPECT_EQ(made(Buy4, 0, 10), Currency(0));
  EXPECT_EQ(made(Lay4, 40, 40), Currency(39));
  Game.BuyVigUpFront = false;
  Game.LayVigUpFront = false;
  RefigureHeldVig();
  EXPECT_EQ(made(Lay4, 40, 40), Currency(40));
  RequestChange(Lay4, -40);
  EXPECT_EQ(made(Buy4, 41, 45), Currency(41));
}

TEST_F(ChangeBetTest, AnOverdrawnTableShrinksToNothingAndNoFurther) {
  Given(Place5, 20);
  Game.Bets[BankrollIndex] = 12;
  RequestChange(Place5, 0);
  EXPECT_EQ(Bet(Place5), Currency(12));
  Given(Place5, 12);
  Given(Hard4, 0);
  Game.Bets[BankrollIndex] = -7;
  RequestChange(Place5, 0);
  EXPECT_EQ(Bet(Place5), Currency(0));
  RequestChange(Place5, 10);
  EXPECT_EQ(Bet(Place5), Currency(0));
  ExpectBooksBalance();
}

TEST_F(ChangeBetTest, NegativeBankrollsSetNoLimit) {
  Game.NegBankroll = true;
  Game.Bets[BankrollIndex] = -100;
  RequestChange(Buy4, 1000);
  EXPECT_EQ(Bet(Buy4), Currency(1000));
  EXPECT_EQ(Game.TotalOnTable, Currency(1050));
}

// --- Chip-Stacks ---

constexpr Currency kStackLimit = Currency::FromRaw(999'999'999'999'999'999);

TEST_F(ChangeBetTest, ChipStacksTakeAnyAmount) {
  RequestChange(101, Currency::FromRaw(5));
  RequestChange(150, 1'000'000);
  RequestChange(150, -3'000'000);
  EXPECT_EQ(Bet(101), Currency::FromRaw(5));
  EXPECT_EQ(Bet(150), Currency(-2'000'000));
  EXPECT_EQ(Game.TotalOnTable, Currency(0));
  EXPECT_EQ(Bankroll(), Currency(500));
  EXPECT_THAT(Shown, IsEmpty());
}

TEST_F(ChangeBetTest, AFullChipStackIsToldTwice) {
  const std::string most = "Maximum Chip-Stack value is: $99,999,999,999,999.9999";
  Game.Bets[102] = kStackLimit - 1;
  RequestChange(102, 5);
  EXPECT_EQ(Bet(102), kStackLimit);
  EXPECT_EQ(TakeOnlyMessage(),
            Notice(NoticeLimits, "Chip-Stack #2", 130, most + "\nwhich is being stacked."));
  RequestChange(102, 5);
  EXPECT_EQ(Game.Change, Currency(0));
  const std::string stacked = most + "\nwhich is already stacked.";
  EXPECT_THAT(TakeShown(), ElementsAre(Notice(NoticeLimits, "Chip-Stack #2", 130, stacked),
                                       LimitNotice(102, stacked + "\nwhich is already bet.")));
  RequestChange(102, Currency::FromRaw(std::numeric_limits<std::int64_t>::max()));
  EXPECT_EQ(Bet(102), kStackLimit);
}

TEST_F(ChangeBetTest, AChipStackHasALowestValue) {
  Game.Bets[130] = 1 - kStackLimit;
  RequestChange(130, -5);
  EXPECT_EQ(Bet(130), -kStackLimit);
  EXPECT_EQ(TakeOnlyMessage(),
            Notice(NoticeLimits, "Chip-Stack #30", 130,
                   "Minimum Chip-Stack value is: $-99,999,999,999,999.9999\nwhich is being "
                   "stacked."));
}

// --- All bets ---

class EveryBet : public ChangeBetTest, public ::testing::WithParamInterface<int> {
 protected:
  /// A point of 6, money enough, and the ground on which the bet may be changed freely.
  void SetUp() override {
    ChangeBetTest::SetUp();
    Game.Bets[BankrollIndex] = 100'000;
    Game.AllowPutBets = true;
    SetPoint(6);
    Establish(PassLine, 100);
    Establish(DontPass, 100);
    for (int i = 0; i < 6; ++i) {
      Establish(Come4 + i, 100);
      Establish(DontCome4 + i, 100);
    }
    const int id = GetParam();
    Establish(id, 0);
    // What may only be put back has been taken down.
    if (id == DontPass || IsDontComeOnNumber(id)) Game.ContractBets[id] = 100;
  }
};

TEST_P(EveryBet, IsMadeRaisedLoweredLimitedRefusedAndRemoved) {
  const int id = GetParam();
  const Currency before = Game.TotalOnTable;
  RequestChange(id, 12);
  EXPECT_EQ(Bet(id), Currency(12));
  ExpectBooksBalance();
  RequestChange(id, 12);
  EXPECT_EQ(Bet(id), Currency(24));
  RequestChange(id, -6);
  EXPECT_EQ(Bet(id), Currency(18));
  ExpectBooksBalance();
  TakeShown();

  Game.Notify = NoticeLimits;
  RequestChange(id, 9'999'999);
  const bool held = id == DontPass || IsDontComeOnNumber(id);
  const Currency most = MaximumOf(id);
  EXPECT_EQ(Bet(id), held ? Currency(100) : most);
  EXPECT_EQ(TakeOnlyMessage(),
            LimitNotice(id, "Maximum bet here is $" + MoneyText(most) + "\nwhich is being bet."));
  RequestChange(id, 9'999'999);
  EXPECT_EQ(Game.Change, Currency(0));
  EXPECT_EQ(TakeOnlyMessage(),
            LimitNotice(id, "Maximum bet here is $" + MoneyText(most) + "\nwhich is already bet."));

  Game.Notify = 0;
  RequestChange(id, -9'999'999);
  EXPECT_EQ(Bet(id), Currency(0));
  EXPECT_EQ(Game.TotalOnTable, before);
  RequestChange(id, -6);
  EXPECT_EQ(Game.Change, Currency(0));

  Game.Bets[BankrollIndex] = Game.TotalOnTable;
  Game.Notify = NoticeLimits;
  RequestChange(id, 12);
  EXPECT_EQ(Bet(id), Currency(0));
  EXPECT_EQ(TakeOnlyMessage(), LimitNotice(id, std::string(kShort) + kBetLess + kWithdraw));
  ExpectBooksBalance();
}

TEST_P(EveryBet, IsSilentUnderHyperDrive) {
  Game.HyperDriveOn = true;
  const int id = GetParam();
  for (const int request : {12, 9'999'999, 1, -7, -9'999'999}) {
    RequestChange(id, request);
    ExpectBooksBalance();
  }
  EXPECT_THAT(Shown, IsEmpty());
  EXPECT_EQ(Game.MsgText, "");
}

INSTANTIATE_TEST_SUITE_P(Bets, EveryBet, ::testing::Range(+Lay4, LastBet + 1));

}  // namespace
