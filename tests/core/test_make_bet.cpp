// Placing bets with their chips, sounds and odds, and what the player does with standing bets.
#include "core/make_bet.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>

#include "core/change_bet.h"
#include "core/messages.h"
#include "core/text.h"
#include "core/vig_and_odds.h"
#include "support/table_fixture.h"

namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr int kCome6 = BetOnNumber(ComeFamily, 6);
constexpr int kCome6Odds = BetOnNumber(ComeOddsFamily, 6);

class MakeBetTest : public TableTest {
 protected:
  void SetUp() override {
    TableTest::SetUp();
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

  /// A click with the chip of picture `color` in hand.
  static void Click(int betId, int color) {
    Game.ChipColor = color;
    Game.ChangeRequest = Game.Bets[SmallestChip - 1 + color];
    MakeBet(betId, 300, 290);
  }

  static void Key(int betId, const std::string& text) {
    Game.KeyedBoxOpen = true;
    Game.KeyedBetId = betId;
    Game.KeyedBetText = text;
    EnterKeyedBet();
  }
};

// --- Chips and sound ---

TEST_F(MakeBetTest, AClickLaysItsChipOnTop) {
  Click(Field, 1);
  Click(Field, 1);
  Click(Field, 2);
  Click(Field, 1);
  EXPECT_THAT(ChipsOf(Field), ElementsAre(1, 1, 2, 1));
  EXPECT_EQ(Game.ChipList[0].X, 300);
  EXPECT_EQ(Game.ChipList[0].Y, 290);
  EXPECT_TRUE(Game.ChipsChanged);
  Game.ChangeRequest = -1;
  MakeBet(Field);
  EXPECT_THAT(ChipsOf(Field), ElementsAre(2, 1, 1)) << "what is lowered is arranged";
  EXPECT_EQ(Game.ChipList[0].X, static_cast<int>(Game.BetChipX[Field]));
}

TEST_F(MakeBetTest, ChipsAreArrangedWhereOneChipWontDo) {
  Game.AutoAdjust = AdjustManual;
  for (const int id : {+Lay4, +Place4, +Buy4}) {
    for (int i = 0; i < 5; ++i) Click(id, 1);
    EXPECT_THAT(ChipsOf(id), ElementsAre(2)) << BetName(id);
  }
  Game.AutoArrangeChips = true;
  for (int i = 0; i < 5; ++i) Click(Field, 1);
  EXPECT_THAT(ChipsOf(Field), ElementsAre(2));
  Game.AutoArrangeChips = false;
  Game.MinPlacard = 10;
  Click(Big6, 1);
  EXPECT_THAT(ChipsOf(Big6), ElementsAre(2, 2)) << "the change isn't the chip's";
  Game.KeyInBetAmounts = true;
  Game.ChangeRequest = 6;
  MakeBet(Hard4);
  EXPECT_THAT(ChipsOf(Hard4), ElementsAre(2, 1));
}

TEST_F(MakeBetTest, TheChipSoundFollowsARaise) {
  Click(Field, 1);
  EXPECT_THAT(SoundsPlayed, SizeIs(1));
  Put(Field, -1);
  Put(Come, 5);  // refused
  Game.KeyInBetAmounts = true;
  Put(Field, 5);
  Game.KeyInBetAmounts = false;
  Game.DisableAllSound = true;
  Put(Field, 5);
  Game.DisableAllSound = false;
  Game.ChipSound = 0;
  Put(Field, 5);
  Game.ChipSound = 1;
  Game.HyperDriveOn = true;
  Put(Field, 5);
  EXPECT_THAT(SoundsPlayed, SizeIs(1));
}

TEST_F(MakeBetTest, HyperDriveLaysNoChips) {
  Game.HyperDriveOn = true;
  Put(Field, 5);
  Put(Place4, 5);
  EXPECT_EQ(Game.ChipCount, 0);
  EXPECT_EQ(Game.TotalOnTable, Currency(10));
}

TEST_F(MakeBetTest, TheClickModeGoesBackToNone) {
  Game.ClickMode = RemoveMode;
  Put(Field, 5);
  EXPECT_EQ(Game.ClickMode, NoClickMode);
}

// --- Odds that follow ---

TEST_F(MakeBetTest, OddsFallWithTheirFlatBet) {
  SetPoint(6);
  Establish(DontPass, 100);
  Given(DontPassOdds, 120);
  Put(DontPass, -50);
  EXPECT_EQ(Bet(DontPassOdds), Currency(120)) << "50 at 2.5 times may still be won by 150";
  Put(DontPass, -40);
  EXPECT_EQ(Game.Change, Currency(-40)) << "though the odds changed after it";
  EXPECT_EQ(Bet(DontPassOdds), Currency(30)) << "25 are won by 30";
  RemoveBet(DontPass);
  EXPECT_EQ(Bet(DontPassOdds), Currency(0));
  EXPECT_THAT(Shown, IsEmpty());
  ExpectBooksBalance();
}

TEST_F(MakeBetTest, OddsStayWhenTheFlatBetDoes) {
  SetPoint(6);
  Establish(PassLine, 10);
  Game.AutoTakeFullOdds = true;
  Game.Notify = 0;
  Put(PassLine, 5);  // refused
  EXPECT_EQ(Bet(PassLineOdds), Currency(0));
}

TEST_F(MakeBetTest, FullOddsAreTakenAndLaidByThemselves) {
  Game.Notify = 0;
  SetPoint(6);
  Game.AllowPutBets = true;
  Game.ContractBets[DontPass] = 10;
  Put(PassLine, 10);
  Put(DontPass, 10);
  EXPECT_EQ(Bet(PassLineOdds) + Bet(DontPassOdds), Currency(0));
  Game.AutoTakeFullOdds = true;
  Put(PassLine, 10);
  EXPECT_EQ(Bet(PassLineOdds), Currency(50));
  Put(kCome6, 10);
  EXPECT_EQ(Bet(kCome6Odds), Currency(25));
  Put(DontPass, -2);
  EXPECT_EQ(Bet(DontPassOdds), Currency(0));
  Game.AutoLayFullOdds = true;
  Put(DontPass, 2);
  EXPECT_EQ(Bet(DontPassOdds), Currency(30));
  Game.HyperDriveOn = true;
  Put(PassLine, -10);
  EXPECT_EQ(Bet(PassLineOdds), Currency(25));
  ExpectBooksBalance();
}

TEST_F(MakeBetTest, NoOddsFollowOnTheComeOut) {
  Game.AutoTakeFullOdds = true;
  Game.AutoLayFullOdds = true;
  Put(PassLine, 10);
  Put(DontPass, 10);
  Put(Field, 5);
  EXPECT_EQ(Game.TotalOnTable, Currency(25));
}

TEST_F(MakeBetTest, AllOddsAreTakenAndLaidInFull) {
  SetPoint(6);
  Establish(PassLine, 10);
  Establish(DontPass, 10);
  Establish(Come4, 10);
  Establish(Come10, 10);
  Establish(DontCome4, 10);
  Given(Come4Odds, 5);
  TakeAllFullOdds();
  EXPECT_EQ(Bet(PassLineOdds), Currency(25));
  EXPECT_EQ(Bet(Come4Odds), Currency(20));
  EXPECT_EQ(Bet(Come10Odds), Currency(20));
  EXPECT_EQ(Bet(kCome6Odds), Currency(0));
  EXPECT_EQ(Bet(DontPassOdds), Currency(0));
  LayAllFullOdds();
  EXPECT_EQ(Bet(DontPassOdds), Currency(30));
  EXPECT_EQ(Bet(DontCome4Odds), Currency(40));
  EXPECT_EQ(Bet(DontCome10Odds), Currency(0));
  EXPECT_THAT(ChipsOf(DontCome4Odds), ElementsAre(3, 2, 2, 2));
  EXPECT_THAT(Shown, IsEmpty());
  EXPECT_EQ(Game.Notify, 15);
  ExpectBooksBalance();
}

TEST_F(MakeBetTest, FullOddsStopAtTheBankroll) {
  Establish(kCome6, 100);
  Game.Bets[BankrollIndex] = 163;
  SetFullOdds(kCome6Odds);
  EXPECT_EQ(Bet(kCome6Odds), Currency(60)) << "63 pays properly at 60";
  EXPECT_THAT(Shown, IsEmpty());
  ExpectBooksBalance();
}

// --- Moving ---

TEST_F(MakeBetTest, ComeBetsMoveToEveryNumber) {
  SetPoint(5);
  for (const int number : kPointNumbers) {
    for (const auto& [from, family] : {std::pair{+Come, ComeFamily}, {+DontCome, DontComeFamily}}) {
      const int to = BetOnNumber(family, number);
      Given(from, 10);
      SoundsPlayed.clear();
      MoveBet(from, to);
      EXPECT_EQ(Bet(from), Currency(0));
      EXPECT_EQ(Bet(to), Currency(10)) << BetName(to);
      EXPECT_EQ(Game.ContractBets[to], Currency(10));
      EXPECT_THAT(ChipsOf(from), IsEmpty());
      EXPECT_THAT(ChipsOf(to), ElementsAre(2, 2));
    }
  }
  EXPECT_THAT(SoundsPlayed, IsEmpty());
  EXPECT_FALSE(Game.DisableAllSound);
  EXPECT_FALSE(Game.MovingBet);
  EXPECT_THAT(Shown, IsEmpty());
  ExpectBooksBalance();
  MoveBet(Come, Come4);
  EXPECT_EQ(Bet(Come4), Currency(10)) << "nothing to move";
}

TEST_F(MakeBetTest, OnlyTheAmountMovedIsAContract) {
  SetPoint(5);
  Establish(kCome6, 15);
  Given(Come, 5);
  MoveBet(Come, kCome6);
  EXPECT_EQ(Bet(kCome6), Currency(20));
  EXPECT_EQ(Game.ContractBets[kCome6], Currency(5));
}

TEST_F(MakeBetTest, AComeBetCanTakePlaceAndBuyBetsOfItsNumberDown) {
  SetPoint(5);
  Game.Notify = 0;
  for (const int id : {+Place6, Buy4 + 2, +Place8}) Put(id, 30);
  Given(DontCome, 10);
  Given(Come, 10);
  Game.AutoRemovePlace = true;
  MoveBet(DontCome, BetOnNumber(DontComeFamily, 6));
  EXPECT_EQ(Bet(Place6), Currency(30));
  MoveBet(Come, kCome6);
  EXPECT_EQ(Bet(Place6), Currency(0));
  EXPECT_EQ(Bet(Buy4 + 2), Currency(0));
  EXPECT_EQ(Bet(Place8), Currency(30));
  ExpectBooksBalance();
}

TEST_F(MakeBetTest, AMoveIsLogged) {
  const std::filesystem::path folder =
      std::filesystem::path(testing::TempDir()) / "kelvanor_move_log";
  std::filesystem::create_directories(folder);
  Game.DataPath = folder.string() + "/";  // for the index
  Game.EventsLogFile = Game.DataPath + "Events Log.txt";
  Game.EventsLogActive = true;
  Game.LogBetChanges = true;
  SetPoint(5);
  Given(Come, 10);
  MoveBet(Come, kCome6);
  std::ifstream file(Game.EventsLogFile);
  const std::string log((std::istreambuf_iterator<char>(file)), {});
  EXPECT_THAT(log, HasSubstr("      $10 Come bet moved to Come 6"));
  file.close();
  std::filesystem::remove_all(folder);
  Game.DataPath.clear();
}

// --- Buying a Place bet ---

TEST_F(MakeBetTest, APlaceBetIsBoughtForItsAmount) {
  Given(Place4, 25);
  Game.BetWorking[Place4] = CalledOn;
  Game.KeyedBoxOpen = true;
  Game.KeyedBetId = Place4;
  BuyPlaceBet(Place4);
  EXPECT_EQ(Bet(Place4), Currency(0));
  EXPECT_EQ(Bet(Buy4), Currency(25));
  EXPECT_EQ(Game.BetWorking[Buy4], CalledOn);
  EXPECT_EQ(Game.BetWorking[Place4], NotWorking);
  EXPECT_EQ(Game.KeyedBetId, Buy4);
  EXPECT_THAT(ChipsOf(Place4), IsEmpty());
  EXPECT_THAT(ChipsOf(Buy4), ElementsAre(3));
  EXPECT_EQ(TakeOnlyMessage(), Notice(NoticeCharges, "Buy 4 Bet", 225, "Total \"Vig\" charge $1"));
  ExpectBooksBalance();
}

TEST_F(MakeBetTest, ABoughtBetTakesThePlaceOfWhatStoodThere) {
  Game.Notify = 0;
  Given(Place4, 25);
  Given(Buy4, 10);
  BuyPlaceBet(Place4);
  EXPECT_EQ(Bet(Buy4), Currency(25));
  Given(Place10, 40);
  Game.Bets[BankrollIndex] = Game.TotalOnTable;
  BuyPlaceBet(Place10);
  EXPECT_EQ(Bet(Buy10), Currency(38)) << "the vig is paid from the bet";
  ExpectBooksBalance();
}

TEST_F(MakeBetTest, OnlyPlaceBetsAreBought) {
  Game.Notify = NoticeActions;
  Game.Bets[101] = 5;
  BuyPlaceBet(101);
  EXPECT_EQ(TakeOnlyMessage(),
            Notice(NoticeActions, "Chip-Stack # 1", 225, "You may not buy Chip-Stacks."));
  Given(Field, 5);
  BuyPlaceBet(Field);
  EXPECT_EQ(TakeOnlyMessage(),
            Notice(NoticeActions, "Field Bet", 225, "You may not buy this bet."));
  Given(Buy4, 20);
  BuyPlaceBet(Buy4);
  BuyPlaceBet(Place4);
  BuyPlaceBet(102);
  BuyPlaceBet(Hard4);
  Game.Notify = 0;
  BuyPlaceBet(Field);
  EXPECT_THAT(Shown, IsEmpty());
  EXPECT_EQ(Bet(Field) + Bet(Buy4), Currency(25));
}

// --- Calling ON and OFF ---

TEST_F(MakeBetTest, ACallUndoesTheOppositeCall) {
  SetPoint(6);
  Given(Hard4, 5);
  struct Step {
    CallCode Call;
    int Becomes;
  };
  for (const Step& step :
       {Step{CallCodeOff, CalledOff}, Step{CallCodeOff, CalledOff}, Step{CallCodeOn, Working},
        Step{CallCodeOn, CalledOn}, Step{CallCodeOn, CalledOn}, Step{CallCodeOff, Working}}) {
    CallBet(Hard4, step.Call);
    EXPECT_EQ(Game.BetWorking[Hard4], step.Becomes);
  }
  SetPoint(0);
  Given(Place6, 6);
  CallBet(Place6, CallCodeOn);
  CallBet(Place6, CallCodeOff);
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
    EXPECT_EQ(TakeOnlyMessage(), Notice(NoticeActions, BetName(id) + " Bet", 508,
                                        "You may not call this bet ON or OFF."));
    EXPECT_EQ(Game.BetWorking[id], state);
  }
  for (const int id : {+PassLineOdds, +DontPassOdds, kCome6Odds, +DontCome10Odds}) {
    Establish(id, 10);
    CallBet(id, CallCodeOff);
    EXPECT_EQ(Game.BetWorking[id], CalledOff) << BetName(id);
  }
  Game.Bets[101] = 5;
  CallBet(101, CallCodeOn);
  EXPECT_EQ(TakeOnlyMessage(), Notice(NoticeActions, "Chip-Stack # 1 Bet", 508,
                                      "You may not call Chip-Stacks ON or OFF."));
  Game.Notify = 0;
  CallBet(101, CallCodeOn);
  CallBet(PassLine, CallCodeOn);
  EXPECT_THAT(Shown, IsEmpty());
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
  Key(Field, "25");
  EXPECT_EQ(Bet(Field), Currency(25));
  Key(Field, "10");
  EXPECT_EQ(Bet(Field), Currency(10));
  EXPECT_THAT(ChipsOf(Field), ElementsAre(2, 2));
  Key(Field, "2000");
  EXPECT_EQ(Bet(Field), Currency(1000));
  EXPECT_EQ(Game.KeyedBetText, "1000") << "what stands after the rules";
  Key(Field, "");
  EXPECT_EQ(Bet(Field), Currency(0));
  EXPECT_EQ(Game.KeyedBetText, "0");
  Game.Notify = 0;
  Key(Buy4, "40");
  Key(Buy4, "20");
  EXPECT_EQ(Game.TotalOnTable, Currency(21));
  Key(103, "-12.5");
  EXPECT_EQ(Bet(103), Currency::FromRaw(-125'000));
  EXPECT_EQ(Game.KeyedBetText, "-12.5");
  ExpectBooksBalance();
}

TEST_F(MakeBetTest, OddsFollowAKeyedFlatBet) {
  SetPoint(6);
  Establish(DontPass, 100);
  Given(DontPassOdds, 120);
  Key(DontPass, "10");
  EXPECT_EQ(Bet(DontPassOdds), Currency(30));
  Key(DontPass, "0");
  EXPECT_EQ(Bet(DontPassOdds), Currency(0));
  ExpectBooksBalance();
}

TEST_F(MakeBetTest, AKeyedContractBetStaysAtItsContract) {
  SetPoint(6);
  Game.Notify = 0;
  Establish(PassLine, 10);
  for (const char* const text : {"5", "0", "30"}) {
    Key(PassLine, text);
    EXPECT_EQ(Bet(PassLine), Currency(10)) << text;
    EXPECT_EQ(Game.KeyedBetText, "10");
  }
  Game.AllowPutBets = true;
  Key(PassLine, "30");
  EXPECT_EQ(Bet(PassLine), Currency(30));
  Key(PassLine, "5");
  EXPECT_EQ(Bet(PassLine), Currency(10));
  ExpectBooksBalance();
}

// --- All bets ---

TEST_F(MakeBetTest, AllBetsComeDownButContracts) {
  SetPoint(6);
  for (const int id : {+PassLine, +DontPass, kCome6, +DontCome4}) Establish(id, 10);
  for (const int id : {+PassLineOdds, +DontPassOdds, +kCome6Odds, +Field, +Hop13, +Buy4})
    Establish(id, 10);
  RemoveAllBets();
  EXPECT_EQ(Game.TotalOnTable, Currency(20));
  EXPECT_EQ(Bet(PassLine) + Bet(kCome6), Currency(20));
  EXPECT_THAT(Shown, IsEmpty());
}

TEST_F(MakeBetTest, BetsObeyNewLimitsWithoutAWord) {
  SetPoint(6);
  Game.Notify = 0;
  Given(Field, 500);
  Given(Place6, 60);
  Given(Hard4, 20);
  Establish(PassLine, 100);
  Game.Notify = 15;
  Game.MaxPlacard = 50;
  Game.MaxPropPayoff = 70;
  ReAdjustAllBets();
  EXPECT_EQ(Bet(Field), Currency(50));
  EXPECT_EQ(Bet(Place6), Currency(48)) << "48 pays properly";
  EXPECT_EQ(Bet(Hard4), Currency(10));
  EXPECT_EQ(Bet(PassLine), Currency(100)) << "a contract";
  EXPECT_THAT(ChipsOf(Field), ElementsAre(3, 3));
  EXPECT_THAT(Shown, IsEmpty());
  EXPECT_EQ(Game.Notify, 15);
  ExpectBooksBalance();
}

}  // namespace
