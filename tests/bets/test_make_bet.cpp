// Placing bets with their chips, sounds and odds, and what the player does with standing bets.

#include "support/table_fixture.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr int kCome6 = Come4 + 2, kCome6Odds = kCome6 + kOddsOffset;

class MakeBetTest : public TableTest {
 protected:
  MakeBetTest() {
    Game.Bets[BankrollIndex] = 10'000;
    Game.ChipSounds = {"", "chip.chp"};
    Game.ChipSound = 1;
  }

  /// The pictures of a bet's chips, in the order in which they lie.
  static std::vector<int> ChipsOf(int betId) {
    std::vector<int> pictures;
    for (int i = 0; i < Game.ChipCount; ++i)
      if (Game.ChipList[i].BetId == betId) pictures.push_back(Game.ChipList[i].Picture);
    return pictures;
  }

  /// Clicks with the chip of picture `color` in hand.
  static void Click(int betId, int color, int times = 1) {
    for (; times > 0; --times) {
      Game.ChipColor = color;
      Game.ChangeRequest = ChipValue(color);
      MakeBet(betId, 300, 290);
    }
  }

  static void Key(int betId, const std::string& text) {
    Game.KeyedBoxOpen = true;
    Game.KeyedBetId = betId;
    Game.KeyedBetText = text;
    EnterKeyedBet();
  }

  void ExpectRefusal(int topic, const std::string& title, const std::string& text) {
    EXPECT_EQ(TakeOnlyMessage(), Notice(NoticeActions, title, topic, text));
  }
};

// --- Chips and sound ---

TEST_F(MakeBetTest, AClickLaysItsChipOnTop) {
  Game.ClickMode = RemoveMode;
  Click(Field, 1, 2);
  EXPECT_EQ(Game.ClickMode, NoClickMode);
  Click(Field, 2);
  Click(Field, 1);
  EXPECT_THAT(ChipsOf(Field), ElementsAre(1, 1, 2, 1));
  EXPECT_EQ(std::pair(Game.ChipList[0].X, Game.ChipList[0].Y), std::pair(300, 290));
  Put(Field, -1);
  EXPECT_THAT(ChipsOf(Field), ElementsAre(2, 1, 1)) << "what is lowered is arranged";
  EXPECT_EQ(Game.ChipList[0].X, static_cast<int>(Game.BetChipX[Field]));
}

TEST_F(MakeBetTest, ChipsAreArrangedWhereOneChipWontDo) {
  Game.AutoAdjust = AdjustManual;
  for (const int id : {Lay4, Place4, Buy4, Field}) {
    Game.AutoArrangeChips = id == Field;
    Click(id, 1, 5);
    EXPECT_THAT(ChipsOf(id), ElementsAre(2)) << BetName(id);
  }
  Game.AutoArrangeChips = false;
  Game.MinPlacard = 10;
  Click(Big6, 1);
  EXPECT_THAT(ChipsOf(Big6), ElementsAre(2, 2)) << "the change isn't the chip's";
  Game.KeyInBetAmounts = true;
  Put(Hard4, 6);
  EXPECT_THAT(ChipsOf(Hard4), ElementsAre(2, 1));
}

TEST_F(MakeBetTest, OnlyARaiseAtTheTableSounds) {
  Put(Field, 5);
  EXPECT_EQ(SoundsPlayed.size(), 1U);
  Put(Field, -1);
  Put(Come, 5);  // refused
  for (bool* const silent : {&Game.KeyInBetAmounts, &Game.DisableAllSound, &Game.HyperDriveOn}) {
    *silent = true;
    Put(Field, 5);
    *silent = false;
  }
  EXPECT_THAT(ChipsOf(Field), ElementsAre(2, 2, 1, 1, 1, 1)) << "Hyper-Drive lays no chips";
  EXPECT_EQ(SoundsPlayed.size(), 1U);
}

// --- Odds that follow ---

TEST_F(MakeBetTest, OddsFallWithTheirFlatBet) {
  SetPoint(6);
  Establish(DontPass, 100);
  Given(DontPassOdds, 120);
  Put(DontPass, -50);
  ExpectBets({{DontPassOdds, 120}});  // 50 at 2.5 times may still be won by 150
  Put(DontPass, -40);
  EXPECT_EQ(Game.Change, Currency(-40)) << "though the odds changed after it";
  ExpectBets({{DontPassOdds, 30}});
  RemoveBet(DontPass);
  ExpectBets({{DontPassOdds, 0}});
  Establish(DontPass, 100);
  Given(DontPassOdds, 120);
  Key(DontPass, "10");
  ExpectBets({{DontPassOdds, 30}});
  EXPECT_THAT(Shown, IsEmpty());
}

TEST_F(MakeBetTest, FullOddsAreTakenAndLaidByThemselves) {
  Game.Notify = 0;
  Game.AutoTakeFullOdds = Game.AutoLayFullOdds = true;
  Put(PassLine, 10);
  ExpectBets({{PassLineOdds, 0}});  // on the come-out there are none
  SetPoint(6);
  Game.ContractBets[PassLine] = Game.ContractBets[DontPass] = 10;
  Put(PassLine, 5);  // refused
  ExpectBets({{PassLine, 10}, {PassLineOdds, 0}});
  Game.AllowPutBets = true;
  Put(PassLine, 10);
  Put(kCome6, 10);
  ExpectBets({{PassLineOdds, 50}, {kCome6Odds, 25}});
  Game.AutoLayFullOdds = false;
  Put(DontPass, 8);
  ExpectBets({{DontPassOdds, 0}});
  Game.AutoLayFullOdds = true;
  Put(DontPass, 2);
  ExpectBets({{DontPassOdds, 30}});
  Game.HyperDriveOn = true;
  Put(PassLine, -10);
  ExpectBets({{PassLineOdds, 25}});
}

TEST_F(MakeBetTest, AllOddsAreTakenAndLaidInFull) {
  SetPoint(6);
  for (const int id : {PassLine, DontPass, Come4, Come10, DontCome4}) Establish(id, 10);
  Given(Come4Odds, 5);
  TakeAllFullOdds();
  ExpectBets({{PassLineOdds, 25}, {Come4Odds, 20}, {Come10Odds, 20}, {DontPassOdds, 0}});
  LayAllFullOdds();
  ExpectBets({{DontPassOdds, 30}, {DontCome4Odds, 40}, {DontCome10Odds, 0}});
  EXPECT_THAT(ChipsOf(DontCome4Odds), ElementsAre(3, 2, 2, 2));
  Establish(kCome6, 100);
  Game.Bets[BankrollIndex] = Game.TotalOnTable + 63;
  SetFullOdds(kCome6Odds);
  ExpectBets({{kCome6Odds, 60}});  // 63 pays properly at 60
  EXPECT_THAT(Shown, IsEmpty());
  EXPECT_EQ(Game.Notify, 15);
}

// --- Moving ---

TEST_F(MakeBetTest, OnlyTheAmountMovedIsAContract) {
  SetPoint(5);
  Establish(kCome6, 15);
  Given(Come, 5);
  MoveBet(Come, kCome6);
  ExpectBets({{kCome6, 20}});
  EXPECT_EQ(Game.ContractBets[kCome6], Currency(5));
}

// --- Buying a Place bet ---

TEST_F(MakeBetTest, APlaceBetIsBoughtForItsAmount) {
  Given(Place4, 25);
  Game.BetWorking[Place4] = CalledOn;
  Game.KeyedBoxOpen = true;
  Game.KeyedBetId = Place4;
  BuyPlaceBet(Place4);
  ExpectBets({{Place4, 0}, {Buy4, 25}});
  EXPECT_EQ(Game.BetWorking[Buy4], CalledOn);
  EXPECT_EQ(std::pair(Game.BetWorking[Place4], Game.KeyedBetId), std::pair(+NotWorking, +Buy4));
  EXPECT_THAT(ChipsOf(Place4), IsEmpty());
  EXPECT_THAT(ChipsOf(Buy4), ElementsAre(3));
  Game.Notify = 0;
  Given(Place4, 40);
  Game.Bets[BankrollIndex] = Game.TotalOnTable - 26;
  Game.BetWorking[Place4] = CalledOff;
  BuyPlaceBet(Place4);
  ExpectBets({{Buy4, 38}});  // in the place of what stood there; the vig is paid from the bet
  EXPECT_EQ(Game.BetWorking[Buy4], CalledOff);
}

TEST_F(MakeBetTest, OnlyPlaceBetsAreBought) {
  Game.Bets[101] = 5;
  BuyPlaceBet(101);
  ExpectRefusal(225, "Chip-Stack # 1", "You may not buy Chip-Stacks.");
  Given(Field, 5);
  BuyPlaceBet(Field);
  ExpectRefusal(225, "Field Bet", "You may not buy this bet.");
  Given(Buy4, 20);
  for (const int id : {+Buy4, +Place4, 102, +Hard4}) BuyPlaceBet(id);
  Game.Notify = 0;
  BuyPlaceBet(Field);
  EXPECT_THAT(Shown, IsEmpty());
  ExpectBets({{Field, 5}, {Buy4, 20}});
}

// --- Calling ON and OFF ---

TEST_F(MakeBetTest, ACallUndoesTheOppositeCall) {
  SetPoint(6);
  Given(Hard4, 5);
  const std::pair<CallCode, int> steps[] = {{CallCodeOff, CalledOff}, {CallCodeOff, CalledOff},
                                            {CallCodeOn, Working},    {CallCodeOn, CalledOn},
                                            {CallCodeOn, CalledOn},   {CallCodeOff, Working}};
  for (const auto& [call, becomes] : steps) {
    CallBet(Hard4, call);
    EXPECT_EQ(Game.BetWorking[Hard4], becomes);
  }
  SetPoint(0);
  Given(Place6, 6);
  for (const CallCode call : {CallCodeOn, CallCodeOff}) CallBet(Place6, call);
  EXPECT_EQ(Game.BetWorking[Place6], NotWorking);
  CallBet(Hard6, CallCodeOn);
  EXPECT_EQ(Game.BetWorking[Hard6], Working) << "no money, no call";
}

TEST_F(MakeBetTest, LineAndComeBetsAreNotCalledButTheirOddsAre) {
  SetPoint(6);
  for (const int id : {+PassLine, +DontPass, +Come, +DontCome, kCome6, +DontCome10}) {
    Establish(id, 10);
    const int state = Game.BetWorking[id];
    CallBet(id, CallCodeOff);
    ExpectRefusal(508, BetName(id) + " Bet", "You may not call this bet ON or OFF.");
    EXPECT_EQ(Game.BetWorking[id], state);
  }
  for (const int id : {+PassLineOdds, +DontPassOdds, kCome6Odds, +DontCome10Odds}) {
    Establish(id, 10);
    CallBet(id, CallCodeOff);
    EXPECT_EQ(Game.BetWorking[id], CalledOff) << BetName(id);
  }
  Game.Bets[101] = 5;
  CallBet(101, CallCodeOn);
  ExpectRefusal(508, "Chip-Stack # 1 Bet", "You may not call Chip-Stacks ON or OFF.");
}

TEST_F(MakeBetTest, ACallWaitsForAClickOrActsOnTheKeyedBet) {
  Given(Hard4, 5);
  CallBetOff(0);
  EXPECT_EQ(Game.ClickMode, CallOffMode);
  CallBetOn(0);
  EXPECT_EQ(Game.ClickMode, CallOnMode);
  Game.KeyedBoxOpen = true;
  Game.KeyedBetId = Hard4;
  CallBetOff(0);
  EXPECT_EQ(Game.BetWorking[Hard4], CalledOff);
}

// --- Keyed amounts ---

TEST_F(MakeBetTest, AKeyedAmountReplacesTheBet) {
  Game.Notify = 0;
  const std::tuple<int, const char*, const char*, Currency> rows[] = {
      {Field, "25", "25", 25}, {Field, "10", "10", 10}, {Field, "2000", "1000", 1000},
      {Field, "", "0", 0},     {Buy4, "40", "40", 42},  {103, "-12.5", "-12.5", 42}};
  for (const auto& [bet, keyed, becomes, total] : rows) {
    Key(bet, keyed);
    EXPECT_EQ(PlainText(Bet(bet)), becomes);
    EXPECT_EQ(Game.KeyedBetText, becomes) << "what stands after the rules";
    EXPECT_EQ(Game.TotalOnTable, total);
  }
  EXPECT_THAT(ChipsOf(Buy4), ElementsAre(3, 2, 2, 2));
}

TEST_F(MakeBetTest, AKeyedContractBetStaysAtItsContract) {
  SetPoint(6);
  Game.Notify = 0;
  Establish(PassLine, 10);
  for (const char* const text : {"5", "0", "30"}) {
    Key(PassLine, text);
    ExpectBets({{PassLine, 10}});
    EXPECT_EQ(Game.KeyedBetText, "10") << text;
  }
  Game.AllowPutBets = true;
  Key(PassLine, "30");
  ExpectBets({{PassLine, 30}});
  Key(PassLine, "5");
  ExpectBets({{PassLine, 10}});
}

// --- All bets ---

TEST_F(MakeBetTest, AllBetsComeDownButContracts) {
  SetPoint(6);
  for (const int id : {+PassLine, +DontPass, kCome6, +DontCome4, +PassLineOdds, +DontPassOdds,
                       kCome6Odds, +Field, +Hop13, +Buy4})
    Establish(id, 10);
  RemoveAllBets();
  ExpectBets({{PassLine, 10}, {kCome6, 10}});
  EXPECT_EQ(Game.TotalOnTable, Currency(20));
  EXPECT_THAT(Shown, IsEmpty());
}

}  // namespace
