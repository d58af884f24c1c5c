// The door that every amount goes through: contract and sequence rules, Units, limits, bankroll.
#include "bets/change_bet.h"

#include "support/table_fixture.h"

namespace {

using ::testing::ElementsAreArray;

constexpr int kCome6 = Come4 + 2, kDontCome6 = DontCome4 + 2;

class ChangeBetTest : public TableTest {
 protected:
  ChangeBetTest() { Game.AutoAdjust = AdjustManual; }

  static ShownMessage Limit(int betId, const std::string& text) {
    return Notice(NoticeLimits, BetName(betId) + " Bet", 130, text);
  }

  /// Asks for a change: what the bet becomes, and all that the player is told of it.
  void Ask(int id, Currency request, Currency becomes, const std::vector<ShownMessage>& told = {}) {
    SCOPED_TRACE(BetName(id) + " of " + MoneyText(Bet(id)) + " by " + MoneyText(request));
    const Currency standing = Bet(id);
    RequestChange(id, request);
    EXPECT_EQ(std::pair(Bet(id), Game.Change), std::pair(becomes, becomes - standing));
    std::vector<ShownMessage> shown = TakeShown();
    for (std::size_t i = 0; i < std::min(shown.size(), told.size()); ++i)  // as far as it is told
      if (shown[i].Text.starts_with(told[i].Text)) shown[i].Text = told[i].Text;
    EXPECT_THAT(shown, ElementsAreArray(told));
    EXPECT_EQ(Game.TotalOnTable, MoneyOnTable());
  }
};

// --- Contract and sequence rules ---

struct Refusal {
  int Topic;
  const char* Text;
};
constexpr Refusal kPassContract{250, "You may not decrease or remove your Pass Line bet \n"};
constexpr Refusal kPassPut{510, "You may not make or increase a Pass Line bet\n"};
constexpr Refusal kComeRestored{250, "You may not decrease or remove an established Come bet."};
constexpr Refusal kComeContract{250, "You may not decrease or remove a Come bet \n"};
constexpr Refusal kComePut{510, "You may not make or increase a Come bet\n"};
constexpr Refusal kComeEarly{45, "You may not make a Come bet until \n"};
constexpr Refusal kDontComeEarly{48, "You may not make a Don't Come bet until\n"};
constexpr Refusal kDontPassLate{46, "You may not make or increase a Don't Pass bet\n"};
constexpr Refusal kDontComeLate{48, "You may not make or increase a Don't Come bet\n"};
constexpr Refusal kPassOdds{43, "You may not make a Pass Line Odds Bet unless \n"};
constexpr Refusal kDontOdds{46, "You may not make a Don't Pass Odds bet unless \n"};

ShownMessage Told(int betId, const Refusal& refusal) {
  return Notice(NoticeActions, BetName(betId) + " Bet", refusal.Topic, refusal.Text);
}

/// A rule: what stands, what is asked, what becomes of it, and the refusal (none when silent).
struct Rule {
  int BetId, Point, Contract, Standing, Request, Becomes;
  const Refusal* Refused = nullptr;
};
// clang-format off
constexpr Rule kRules[] = {
    {PassLine, 6, 10, 0, 0, 10, &kPassContract}, {PassLine, 6, 10, 10, -5, 10, &kPassContract},
    {PassLine, 6, 10, 10, 5, 10, &kPassPut}, {PassLine, 6, 10, 0, 15, 10, &kPassPut},
    {PassLine, 6, 0, 0, 10, 0, &kPassPut}, {PassLine, 0, 0, 10, 5, 15},
    {PassLine, 0, 0, 10, -10, 0}, {kCome6, 0, 5, 0, 0, 5, &kComeRestored},
    {kCome6, 0, 5, 5, -2, 5, &kComeContract}, {kCome6, 8, 5, 5, 5, 5, &kComePut},
    {kCome6, 8, 0, 0, 5, 0, &kComePut}, {kCome6, 8, 5, 0, 5, 5},
    {Come, 0, 0, 0, 5, 0, &kComeEarly}, {Come, 6, 0, 0, 5, 5}, {Come, 6, 5, 5, -5, 0},
    {DontCome, 0, 0, 0, 5, 0, &kDontComeEarly}, {DontCome, 6, 0, 0, 5, 5},
    {DontPass, 6, 10, 10, 5, 10, &kDontPassLate}, {DontPass, 6, 10, 10, -10, 0},
    {DontPass, 6, 10, 0, 10, 10}, {DontPass, 0, 10, 10, 5, 15},
    {kDontCome6, 0, 0, 0, 10, 0, &kDontComeLate}, {kDontCome6, 8, 10, 10, -5, 5},
    {kDontCome6, 8, 10, 5, 5, 10}, {PassLineOdds, 6, 0, 0, 5, 0, &kPassOdds},
    {PassLineOdds, 0, 0, 0, 5, 0, &kPassOdds}, {DontPassOdds, 6, 0, 0, 6, 0, &kDontOdds},
    {DontPassOdds, 0, 0, 0, 6, 0, &kDontOdds}};
constexpr Rule kRulesWithPutBets[] = {
    {PassLine, 6, 10, 10, -10, 10, &kPassContract}, {PassLine, 6, 10, 15, -2, 13},
    {PassLine, 6, 10, 15, -15, 10}, {PassLine, 6, 10, 15, -10, 10}, {PassLine, 6, 10, 10, 5, 15},
    {PassLine, 6, 0, 0, 10, 10}, {kCome6, 8, 5, 5, -5, 5, &kComeContract},
    {kCome6, 8, 5, 15, -10, 5}, {kCome6, 8, 5, 15, -15, 5}, {kCome6, 8, 5, 5, 5, 10},
    {DontPass, 6, 10, 5, 10, 10, &kDontPassLate}, {DontPass, 6, 0, 0, 10, 0, &kDontPassLate},
    {kDontCome6, 6, 10, 10, 5, 10, &kDontComeLate}};
// clang-format on

class ContractRules : public ChangeBetTest {
 protected:
  void Hold(const Rule& rule, bool silent) {
    SetPoint(rule.Point);
    Establish(rule.BetId, rule.Standing);
    if (rule.BetId < kContractSlots) Game.ContractBets[rule.BetId] = rule.Contract;
    std::vector<ShownMessage> told;
    if (rule.Refused != nullptr && !silent) told.push_back(Told(rule.BetId, *rule.Refused));
    Ask(rule.BetId, rule.Request, rule.Becomes, told);
    Establish(rule.BetId, 0);
  }
  void HoldAll(bool silent) {
    Game.AllowPutBets = false;
    for (const Rule& rule : kRules) Hold(rule, silent);
    Game.AllowPutBets = true;
    for (const Rule& rule : kRulesWithPutBets) Hold(rule, silent);
  }
};

TEST_F(ContractRules, BendTheRequestAndTellItOnce) {
  HoldAll(false);
  Game.Notify &= ~NoticeActions;
  HoldAll(true);
  Game.Notify |= NoticeActions;
  Game.HyperDriveOn = true;
  HoldAll(true);
}

TEST_F(ChangeBetTest, OddsOnANumberNeedTheirFlatBetAndNameIt) {
  const auto refused = [this](int oddsId, int topic) {
    const std::string text = "You may not make an odds bet here until \nyou've established a " +
                             BetName(oddsId - kOddsOffset) + " bet.";
    Ask(oddsId, 12, 0, {Told(oddsId, {topic, text.c_str()})});
    EXPECT_EQ(Game.MsgText, text) << "a refusal leaves its text";
  };
  for (int i = 0; i < 6; ++i) {
    refused(Come4Odds + i, 45);
    refused(DontCome4Odds + i, 48);
  }
}

TEST_F(ChangeBetTest, AnAmountBelowTheContractIsRestoredWithBothNotices) {
  SetPoint(6);
  for (const auto& [id, refusal] : {std::pair{+PassLine, kPassContract}, {kCome6, kComeContract}}) {
    Game.ContractBets[id] = 10;
    Ask(id, 3, 10, {Told(id, refusal), Limit(id, "Minimum bet here is $10\nwhich is being bet.")});
  }
}

TEST_F(ChangeBetTest, PutBetsDoNotMoveTheContract) {
  SetPoint(6);
  Establish(PassLine, 10);
  Game.AllowPutBets = true;
  Ask(PassLine, 5, 15);
  EXPECT_EQ(std::tuple(Game.MsgText, Game.ContractBets[PassLine]), std::tuple("", Currency(10)));
  Ask(PassLine, -10, 10);
  Given(PassLine, 15);
  Game.MaxPlacard = 8;
  Ask(PassLine, -10, 10);  // cut in silence, also above a lowered maximum
}

TEST_F(ChangeBetTest, ABetTakenOffGoesBackToItsOrdinaryState) {
  const int rows[][4] = {{8, Hard4, CalledOff, Working},
                         {8, Place6, CalledOff, Working},
                         {0, Place6, CalledOn, NotWorking}};
  for (const auto& [point, bet, called, becomes] : rows) {
    SetPoint(point);
    Given(bet, 12);
    Game.BetWorking[bet] = called;
    Ask(bet, -6, 6);
    EXPECT_EQ(Game.BetWorking[bet], called);
    Ask(bet, -6, 0);
    EXPECT_EQ(Game.BetWorking[bet], becomes) << BetName(bet);
  }
}

// --- Units and the minimum ---

TEST_F(ChangeBetTest, RequestsAreRoundedAwayFromZero) {
  SetChips({5, 25, 100, 500, 1000});
  Ask(Field, 7, 10);
  Ask(Field, 10, 20);
  Ask(Field, -7, 10);
  Ask(Field, -12, 0);
  Ask(Field, -1, 0);
  SetChips({Currency::FromRaw(500), Currency::FromRaw(2'500), 1, 5, 25});
  Game.MinPlacard = Unit();
  Ask(Field, Currency::FromRaw(1'500), Currency::FromRaw(1'500));
  Ask(Field, Currency::FromRaw(1), Currency::FromRaw(2'000));
}

TEST_F(ChangeBetTest, TheMinimumLooksAtTheAmountAsAsked) {
  Establish(Place5, 5);
  Game.MinPlacard = 10;
  Ask(Place5, 3, 10, {Limit(Place5, "Minimum bet here is $10\nwhich is being bet.")});
  Ask(Place5, -5, 0);  // below the minimum a bet comes off whole
  Ask(Hard4, 1, 1);
  EXPECT_EQ(Game.MinHere, Unit()) << "a proposition bet needs only a Unit";
  SetChips({5, 25, 100, 500, 1000});
  Game.MinPlacard = 5;
  Ask(Field, 1, 5, {Limit(Field, "Minimum bet here is $5\nwhich is being bet.")});
  Game.MinPlacard = 12;
  Ask(Big8, 5, 15, {Limit(Big8, "Minimum bet here is $12\nwhich is being bet.")});
  Game.MaxPlacard = 13;
  Ask(Big6, 5, 10, {Limit(Big6, "Maximum bet here is $10\nwhich is being bet.")});
}

// --- Maximum ---

TEST_F(ChangeBetTest, NewLimitsTakeBetsDownButNoContract) {
  SetPoint(6);
  Game.AllowPutBets = true;
  Game.Notify = 0;
  // The bet, the minimum, the maximum, the contract, what stands, and what is left.
  const int rows[][6] = {{PassLine, 10, 1000, 5, 5, 5},   {kCome6, 10, 1000, 5, 5, 5},
                         {kDontCome6, 10, 1000, 5, 5, 0}, {Place5, 10, 1000, 0, 5, 0},
                         {PassLine, 5, 20, 50, 60, 50},   {PassLine, 5, 20, 10, 60, 20}};
  for (const auto& [bet, minimum, maximum, contract, standing, becomes] : rows) {
    Game.MinPlacard = minimum;
    Game.MaxPlacard = maximum;
    Establish(bet, standing);
    if (bet < kContractSlots) Game.ContractBets[bet] = contract;
    Ask(bet, 0, becomes);
  }
}

TEST_F(ChangeBetTest, AContractAboveALoweredMaximumStands) {
  SetPoint(8);
  Establish(kCome6, 5);
  Game.MaxPlacard = 3;
  const ShownMessage stands =
      Notice(NoticeActions | NoticeLimits, "Come 6 Bet", 250,
             "Maximum bet here is $3\n\nHowever, because the Come 6 is a contract bet and it \nwas "
             "established at $5 before");
  Ask(kCome6, 1, 5, {Told(kCome6, kComePut), stands});
  EXPECT_EQ(Game.MsgText, "");
  for (const int enough : {NoticeLimits, NoticeActions}) {  // one of the two classes
    Game.Notify = enough;
    Ask(kCome6, 0, 5, {stands});
  }
  Game.Notify = NoticeCharges;
  Ask(kCome6, 0, 5);
}

TEST_F(ChangeBetTest, MaximaFollowPayoffsAndUnits) {
  const std::map<int, int> maxima = {
      {Lay4, 2000}, {Lay4 + 1, 1500}, {Lay4 + 2, 1200}, {Lay10, 2000}, {Place4, 1000},
      {Buy4, 1000}, {PassLine, 1000}, {Come4, 1000},    {Field, 1000}, {Hard4, 428},
      {Two, 100},   {Three, 200},     {Seven, 750},     {Craps, 428},  {CAndE, 428},
      {Horn, 444},  {World, 576},     {Over7, 3000},    {Hop13, 200},  {Hop22, 100}};
  for (const auto& [id, most] : maxima) EXPECT_EQ(MaximumOf(id), Currency(most)) << BetName(id);
  SetChips({5, 25, 100, 500, 1000});
  EXPECT_EQ(MaximumOf(Hard6), Currency(330));
  SetChips({Currency::FromRaw(2'500), 1, 5, 25, 100});
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
  for (const int id : {CAndE, Horn, World}) EXPECT_EQ(MaximumOf(id), Currency(1000)) << BetName(id);
  Game.Payoff[Twelve] = {4, true, 1};
  EXPECT_EQ(MaximumOf(Horn), Currency(12'000)) << "3000 / 0.25: the payoff limits, not the placard";
}

// --- Bankroll ---

const std::string kShort =
    "You don't have enough bankroll remaining to bet the full amount requested.\n\n"
    "Your options are: ";
const std::string kWithdraw =
    "\n      - Make a withdrawal from the ATM.\n      - Allow negative bankroll amounts.";
const std::string kBetLess = kShort + "\n      - Bet less on other bets." + kWithdraw;

TEST_F(ChangeBetTest, ABetShrinksToTheFreeMoney) {
  // The bankroll, what lies on Place 5, the minimum, the request, what becomes of it, and the
  // notice.
  const std::tuple<int, int, int, int, int, std::string> rows[] = {
      {100, 95, 5, 10, 5, kBetLess},
      {10, 0, 5, 15, 10, kShort + kWithdraw},
      {0, 0, 5, 5, 0, kShort + kWithdraw},
      {800, 0, 5, 2000, 800, "Maximum bet here is $1,000\n\n" + kShort + kWithdraw},
      {8, 0, 10, 20, 0, "Minimum bet here is $10\n\n" + kShort + kWithdraw}};
  for (const auto& [bankroll, onPlace5, minimum, request, becomes, text] : rows) {
    Game.Bets[BankrollIndex] = bankroll;
    Game.MinPlacard = minimum;
    Establish(Place5, onPlace5);
    Establish(Field, 0);
    Ask(Field, request, becomes, {Limit(Field, text)});
  }
  Game.Notify &= ~NoticeLimits;
  Ask(Field, 20, 0);
  Game.Notify |= NoticeLimits;
  Game.MinPlacard = 5;
  Game.AutoAdjust = AdjustMinor;
  Game.MaxPlacard = 20;
  Game.Bets[BankrollIndex] = 15;
  const std::string proper = "Maximum bet for proper odds payoff here is: $12\n\n";
  Ask(Place6, 50, 12, {Limit(Place6, "Maximum bet here is $20\n\n" + proper + kShort + kWithdraw)});
}

TEST_F(ChangeBetTest, VigUpFrontMustBeCovered) {
  Game.Notify = 0;
  // The bet, the bankroll, the request, and what becomes of it with vig up front and without.
  const int rows[][5] = {{Buy4, 21, 20, 20, 20}, {Buy4, 21, 30, 20, 21}, {Buy4, 41, 40, 39, 40},
                         {Buy4, 1, 10, 0, 1},    {Lay4, 0, 10, 0, 0},    {Lay4, 40, 40, 39, 40}};
  for (const auto& [bet, bankroll, request, becomes, withoutVig] : rows) {
    Game.Bets[BankrollIndex] = bankroll;
    for (const bool upFront : {true, false}) {
      Game.BuyVigUpFront = Game.LayVigUpFront = upFront;
      Ask(bet, request, upFront ? becomes : withoutVig);
      Establish(bet, 0);
    }
  }
  Game.BuyVigUpFront = true;
  Game.Bets[BankrollIndex] = 42;
  Establish(Buy4, 20);
  Ask(Buy4, 20, 40);  // the vig that is held goes into the new one
}

TEST_F(ChangeBetTest, AnOverdrawnTableShrinksToNothingUnlessNegativeIsAllowed) {
  Game.Notify = 0;
  Establish(Place5, 20);
  Game.Bets[BankrollIndex] = 12;
  Ask(Place5, 0, 12);
  Game.Bets[BankrollIndex] = -7;
  Ask(Place5, 0, 0);
  Ask(Place5, 10, 0);
  Game.NegBankroll = true;
  Ask(Place5, 1000, 1000);
}

// --- Chip-Stacks ---

constexpr Currency kStackLimit = Currency::FromRaw(999'999'999'999'999'999);

TEST_F(ChangeBetTest, AFullChipStackIsToldTwice) {
  const std::string most = "Maximum Chip-Stack value is: $99,999,999,999,999.9999";
  const std::string already = most + "\nwhich is already stacked.";
  const auto told = [](int id, const std::string& text) {
    return Notice(NoticeLimits, "Chip-Stack #" + std::to_string(id - 100), 130, text);
  };
  Game.Bets[102] = kStackLimit - 1;
  Ask(102, 5, kStackLimit, {told(102, most + "\nwhich is being stacked.")});
  for (const Currency more : {Currency(5), Currency::FromRaw(INT64_MAX)})
    Ask(102, more, kStackLimit,
        {told(102, already), Limit(102, already + "\nwhich is already bet.")});
  Game.Bets[130] = 1 - kStackLimit;
  const std::string least =
      "Minimum Chip-Stack value is: $-99,999,999,999,999.9999\nwhich is being stacked.";
  Ask(130, -5, -kStackLimit, {told(130, least)});
}

TEST_F(ChangeBetTest, ChipStacksTakeAnyAmount) {
  Ask(101, Currency::FromRaw(5), Currency::FromRaw(5));
  Ask(150, 1'000'000, 1'000'000);
  Ask(150, -3'000'000, -2'000'000);
  EXPECT_EQ(Bankroll(), Currency(500));
}

// --- All bets ---

TEST_F(ChangeBetTest, EveryBetIsMadeRaisedLoweredLimitedRefusedAndRemoved) {
  Game.AllowPutBets = true;
  SetPoint(6);
  for (int id = Lay4; id <= LastBet; ++id) {
    Game.Bets[BankrollIndex] = 100'000;
    for (const int flat : {PassLine, DontPass}) Establish(flat, 100);
    for (int i = 0; i < 6; ++i)
      for (const int flat : {Come4 + i, DontCome4 + i}) Establish(flat, 100);
    Establish(id, 0);
    const bool held = id == DontPass || IsDontComeOnNumber(id);  // may only be put back
    if (held) Game.ContractBets[id] = 100;
    const Currency before = Game.TotalOnTable;
    Game.Notify = 0;
    Ask(id, 12, 12);
    Ask(id, 12, 24);
    Ask(id, -6, 18);

    Game.Notify = NoticeLimits;
    const std::string most = "Maximum bet here is $" + MoneyText(MaximumOf(id)) + "\nwhich is ";
    const Currency reached = held ? Currency(100) : MaximumOf(id);
    Ask(id, 9'999'999, reached, {Limit(id, most + "being bet.")});
    Ask(id, 9'999'999, reached, {Limit(id, most + "already bet.")});
    Ask(id, -9'999'999, 0);
    EXPECT_EQ(Game.TotalOnTable, before);
    Ask(id, -6, 0);
    Game.Bets[BankrollIndex] = Game.TotalOnTable;
    Ask(id, 12, 0, {Limit(id, kBetLess)});

    Game.Notify = 15;
    Game.HyperDriveOn = true;
    for (const int request : {12, 9'999'999, 1, -7, -9'999'999}) RequestChange(id, request);
    Game.HyperDriveOn = false;
    EXPECT_TRUE(Shown.empty() && Game.MsgText.empty()) << BetName(id) << " under Hyper-Drive";
    ExpectBooksBalance();
  }
}

}  // namespace
