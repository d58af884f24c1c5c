// Whole rolls: the point, the shooter, what stops a run, and what a roll leaves behind.
#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>

#include "core/make_bet.h"
#include "core/roll_cycle.h"
#include "core/vig_and_odds.h"
#include "dice/tape.h"
#include "support/table_fixture.h"

namespace {

using Dice = std::array<int, 2>;

class RollCycleTest : public TableTest {
 protected:
  void SetUp() override {
    TableTest::SetUp();
    Game.HandleWinningBets = WinTakeDown;
    Game.AutoAdjust = AdjustManual;
  }

  static void RollAll(std::initializer_list<Dice> throws) {
    for (const auto& [die1, die2] : throws) Roll(die1, die2);
  }
};

TEST_F(RollCycleTest, ShooterStatsOfASessionCountedByHand) {
  RollAll({{3, 4},    // natural
           {6, 6},    // barred
           {1, 1},    // craps
           {2, 4},    // point 6
           {5, 5},    //
           {3, 3},    // pass
           {5, 6},    // natural
           {4, 4},    // point 8
           {1, 6},    // seven-out
           {1, 3},    // point 4
           {5, 2},    // seven-out
           {1, 2}});  // craps
  const std::array<int, kShooterStats> expected = {1, 0, 2, 9, 3, 11, 3, 3, 1, 2,
                                                   3, 2, 3, 5, 8, 1,  3, 2, 0, 1};
  EXPECT_EQ(Game.ShooterStats, expected);
}

TEST_F(RollCycleTest, TheOtherBarMakesTheTwoABarAndTheTwelveAMiss) {
  Game.BarDont = 2;
  RollAll({{1, 1}, {6, 6}});
  EXPECT_EQ(Game.ShooterStats[MissesOnComeOut], 2);
  Game.StickPerson = 1;
  Game.StickSounds.fill("x");
  Game.StickSounds[StickBar] = "bar";
  Roll(1, 1);
  EXPECT_EQ(std::count(SoundsPlayed.begin(), SoundsPlayed.end(), "bar"), 1);
  Roll(6, 6);
  EXPECT_EQ(std::count(SoundsPlayed.begin(), SoundsPlayed.end(), "bar"), 1);
}

TEST_F(RollCycleTest, CountersOfTheGameOutliveTheShooter) {
  RollAll({{2, 4}, {3, 4}, {2, 4}});
  EXPECT_EQ(Game.RollCount[0], 3);
  EXPECT_EQ(Game.RollsSince[0], 3);
  EXPECT_EQ(Game.ShooterEvent[0], 3);
  EXPECT_EQ(Game.ShooterEvent[1], 3);
  EXPECT_EQ(Game.ShooterEvent[6], 2) << "the shooter changed in between";
  EXPECT_EQ(Game.ShooterEventPrev[6], 1);
  EXPECT_EQ(Game.ShooterSince[7], 1);
  EXPECT_EQ(Game.ShooterSincePrev[6], 1);
  EXPECT_EQ(Game.RollsSince[7], 1);
  EXPECT_EQ(Game.RollGapTally[6][2], 1);
}

TEST_F(RollCycleTest, APointIsMadeAndMissed) {
  Roll(4, 5);
  EXPECT_EQ(Game.Point, 9);
  EXPECT_EQ(Game.PrevPoint, 0);
  RollAll({{5, 6}, {1, 1}});
  EXPECT_EQ(Game.Point, 9) << "naturals and craps leave a point";
  Roll(3, 6);
  EXPECT_EQ(Game.Point, 0);
  EXPECT_EQ(Game.PrevPoint, 9);
  Roll(6, 4);
  EXPECT_EQ(Game.PrevPrevPoint, 9);
  Roll(3, 4);
  EXPECT_EQ(Game.Point, 0);
}

TEST_F(RollCycleTest, BetsGoToWorkWithThePointAndRestOnTheComeOut) {
  Given(Place8, 12);
  EXPECT_EQ(Game.BetWorking[Place8], NotWorking);
  Roll(3, 3);
  EXPECT_EQ(Game.BetWorking[Place8], Working);
  CallBet(Place8, CallCodeOn);
  EXPECT_EQ(Game.Payoff[PassLineOdds], (PayoffRecord{6, true, 5}));
  EXPECT_EQ(Game.Payoff[DontPassOdds], (PayoffRecord{5, true, 6}));
  Roll(4, 2);
  EXPECT_EQ(Game.BetWorking[Place8], CalledOn) << "a call outlasts the point";
  EXPECT_EQ(Game.BetWorking[Place6], NotWorking);
  EXPECT_EQ(Game.BetWorking[Hard8], Working);
}

TEST_F(RollCycleTest, OddsFollowThePointWhereTheyAreWanted) {
  Game.AutoTakeFullOdds = Game.AutoLayFullOdds = true;
  Game.OddsCalcMethod = OddsNoPush;
  Game.OddsMultiple = 3;
  struct Case {
    Dice Throw;
    int Take;
    int Lay;
  };
  // Twice on 4, 5, 9 and 10, two and a half times on 6; on 8 whatever was figured last.
  for (const Case& c : {Case{{1, 3}, 20, 40}, Case{{2, 3}, 20, 30}, Case{{2, 4}, 25, 30},
                        Case{{4, 4}, 25, 30}, Case{{5, 5}, 20, 40}, Case{{4, 4}, 20, 24}}) {
    SetPoint(0);
    Establish(PassLineOdds, 0);
    Establish(DontPassOdds, 0);
    Establish(PassLine, 10);
    Establish(DontPass, 10);
    Roll(c.Throw[0], c.Throw[1]);
    EXPECT_EQ(Bet(PassLineOdds), Currency(c.Take)) << c.Throw[0] + c.Throw[1];
    EXPECT_EQ(Bet(DontPassOdds), Currency(c.Lay)) << c.Throw[0] + c.Throw[1];
    ExpectBooksBalance();
  }
}

TEST_F(RollCycleTest, ThePlaceBetOfAPointComesDownWithAPassLineBet) {
  Game.AutoRemovePlace = true;
  Given(Place6, 6);
  Given(Place8, 6);
  Roll(3, 3);
  EXPECT_EQ(Bet(Place6), Currency(6)) << "no Pass Line bet";
  Roll(3, 4);
  Establish(PassLine, 10);
  Establish(Place6, 6);
  Establish(Place8, 6);
  Roll(1, 5);
  EXPECT_EQ(Bet(Place6), Currency(0));
  EXPECT_EQ(Bet(Place8), Currency(6));
  Given(Come, 5);
  Establish(Buy5 + 2, 20);
  Roll(2, 6);
  EXPECT_EQ(Bet(Come4 + 3), Currency(5));
  EXPECT_EQ(Bet(Place8), Currency(0)) << "the Come bet moved to the 8";
  EXPECT_EQ(Bet(Buy5 + 2), Currency(0));
  ExpectBooksBalance();
}

TEST_F(RollCycleTest, SnapshotsOfARoll) {
  Given(Field, 5);
  Given(PassLine, 10);
  Roll(1, 3);
  EXPECT_EQ(Game.BetsAtRoll[Field], Currency(5));
  EXPECT_EQ(Game.BetsAtRoll[BankrollIndex], Currency(500));
  EXPECT_EQ(Game.ContractBets[PassLine], Currency(10));
  EXPECT_EQ(Game.BetsAfterRoll[Field], Currency(0));
  EXPECT_EQ(Game.BetsAfterRoll[BankrollIndex], Currency(505));
  EXPECT_EQ(Game.BankrollSum, Currency(505));
  EXPECT_EQ(Game.BetWorkingPrev, Game.BetWorking);
  Given(Field, 20);
  Roll(3, 3);
  EXPECT_EQ(Game.BankrollSum, Currency(505 + 485));
  EXPECT_EQ(Game.BankrollHigh, Currency(505));
  EXPECT_EQ(Game.BankrollLow, Currency(485));
  EXPECT_TRUE(Game.GameChanged);
}

TEST_F(RollCycleTest, NamedDiceKeepTheDiceOfTheRollBefore) {
  Roll(2, 3);
  Dice seen{};
  TheHost.ThrowDice = [&] { seen = {Game.PrevDie1, Game.PrevDie2}; };
  Roll(6, 4);
  EXPECT_EQ(seen, (Dice{2, 3}));
  EXPECT_EQ((Dice{Game.PrevDie1, Game.PrevDie2}), (Dice{2, 3}));
  EXPECT_EQ((Dice{Game.Die1, Game.Die2}), (Dice{6, 4}));
}

TEST_F(RollCycleTest, TheStickPersonCallsInOrder) {
  Game.StickPerson = 1;
  for (unsigned call = 1; call < kStickCalls; ++call) Game.StickSounds[call] = std::to_string(call);
  const auto calls = [this](int die1, int die2) {
    SoundsPlayed.clear();
    Roll(die1, die2);
    std::string all;
    for (const std::string& sound : SoundsPlayed) all += sound + " ";
    return all;
  };
  EXPECT_EQ(calls(2, 2), "4 16 ");
  EXPECT_EQ(calls(2, 2), "4 16 13 17 ") << "pass, next throw";
  EXPECT_EQ(calls(6, 6), "12 15 17 ") << "bar";
  EXPECT_EQ(calls(1, 1), "2 14 17 ");
  EXPECT_EQ(calls(2, 4), "6 ");
  EXPECT_EQ(calls(3, 4), "7 14 18 17 ") << "a new shooter";
  EXPECT_EQ(calls(5, 6), "11 13 17 ");
  Game.DisableAllSound = true;
  EXPECT_EQ(calls(5, 6), "");
}

TEST_F(RollCycleTest, TheDiceGoHomeOnTheFirstDecision) {
  Game.DiceAction = DiceReturnOnDecision;
  int sent = 0;
  TheHost.SendDiceHome = [&] { ++sent; };
  Given(Field, 5);
  Given(Two, 1);
  Roll(3, 4);
  EXPECT_EQ(sent, 1);
  Roll(3, 4);
  EXPECT_EQ(sent, 1);
  Game.DiceAction = DiceRemainOnTable;
  Given(Field, 5);
  Roll(3, 4);
  EXPECT_EQ(sent, 1);
}

// --- What stops a run ---

/// True when a run of two automatic rolls, the first of them named, ends after the first.
bool StopsAfter(int die1, int die2) {
  Game.RollCount[0] = 0;
  Game.AutoRollsLeft = Game.NumAutoRolls = 2;
  Game.KeepRolling = true;
  RollNamedDice(die1, die2);
  return Game.RollCount[0] == 1;
}

TEST_F(RollCycleTest, EveryEntryOfTheAutoStopListStopsItsThrowsOnly) {
  const std::array<int, 17> totals = {0, 0, 2, 3, 4, 4, 5, 6, 6, 7, 8, 8, 9, 10, 10, 11, 12};
  Game.AutoRollDice = true;
  for (int entry = StopOnTwo; entry < kAutoStops; ++entry) {
    const bool hard = entry == StopOnHardFour || entry == StopOnHardSix ||
                      entry == StopOnHardEight || entry == StopOnHardTen;
    Game.AutoStopOn = {};
    Game.AutoStopOn[static_cast<unsigned>(entry)] = true;
    for (int die1 = 1; die1 <= 6; ++die1)
      for (int die2 = 1; die2 <= 6; ++die2)
        EXPECT_EQ(StopsAfter(die1, die2),
                  die1 + die2 == totals[static_cast<unsigned>(entry)] && (!hard || die1 == die2))
            << "entry " << entry << " on " << die1 << "-" << die2;
  }
}

TEST_F(RollCycleTest, AWinOrALossStopsAnAutomaticRun) {
  Game.AutoRollDice = true;
  const auto stops = [](AutoStopEntry entry, int die1, int die2) {
    Game.AutoStopOn = {};
    Game.AutoStopOn[entry] = true;
    Establish(Field, 5);
    return StopsAfter(die1, die2);
  };
  EXPECT_TRUE(stops(StopOnWin, 1, 1));
  EXPECT_FALSE(stops(StopOnWin, 3, 4));
  EXPECT_TRUE(stops(StopOnLoss, 3, 4));
  EXPECT_FALSE(stops(StopOnLoss, 1, 1));
  Game.AutoRollDice = false;
  Game.HyperDriveOn = true;
  EXPECT_FALSE(stops(StopOnWin, 1, 1)) << "the list is for automatic rolls that are watched";
}

TEST_F(RollCycleTest, TheCountOfRollsEndsARunAndIsLoadedAgain) {
  Game.AutoRollDice = true;
  Game.NumAutoRolls = Game.AutoRollsLeft = 3;
  Game.KeepRolling = true;
  RollDice();
  EXPECT_EQ(Game.RollCount[0], 3);
  EXPECT_EQ(Game.AutoRollsLeft, 3);
  EXPECT_FALSE(Game.KeepRolling);
  EXPECT_EQ(Game.StopMessage, "");
  Game.HyperDriveOn = true;
  Game.KeepRolling = true;
  RollDice();
  EXPECT_EQ(Game.RollCount[0], 6);
  EXPECT_EQ(Game.StopMessage, "Stopped by roll count on Auto-Play screen.");
}

TEST_F(RollCycleTest, AutomaticRollsWaitAndAClickEndsThem) {
  Game.AutoRollDice = true;
  Game.AutoRollDelay = 2;
  Game.KeepRolling = true;
  int waited = 0;
  TheHost.Milliseconds = [&] { return static_cast<std::uint32_t>(waited); };
  TheHost.Wait = [&](int milliseconds) {
    waited += milliseconds;
    if (waited > 5000) Game.KeepRolling = false;
  };
  RollDice();
  EXPECT_EQ(Game.RollCount[0], 3) << "at 0, 2 and 4 seconds";
  EXPECT_FALSE(Game.RollInProgress);
}

TEST_F(RollCycleTest, ARollInsideARollIsNotStarted) {
  TheHost.ThrowDice = [] { RollNamedDice(1, 1); };
  Roll(3, 3);
  EXPECT_EQ(Game.RollCount[0], 1);
  EXPECT_EQ(Game.RollTotal, 6);
  EXPECT_FALSE(Game.ManualRollPending);
}

TEST_F(RollCycleTest, AHundredMillionRollsAreTheLimit) {
  Game.RollCount[0] = 99'999'999;
  Roll(2, 3);
  EXPECT_EQ(Game.RollCount[0], 100'000'000);
  Game.KeepRolling = true;
  Roll(6, 6);
  EXPECT_EQ(Game.RollCount[0], 100'000'000);
  EXPECT_EQ(Game.RollTotal, 5);
  EXPECT_FALSE(Game.KeepRolling);
  EXPECT_FALSE(Game.RollInProgress);
  const ShownMessage told = TakeOnlyMessage();
  EXPECT_EQ(told.Text,
            "Sorry ... you've reached the maximum limit of 100,000,000 rolls.\n\n"
            "Select \"New\" from the \"Game\" menu to reset the table.");
  EXPECT_EQ(told.Title, "Reached Maximum Roll Limit");
  Game.HyperDriveOn = Game.KeepRolling = true;
  RollDice();
  EXPECT_EQ(Game.StopMessage,
            "Stopped due to reaching the maximum limit of 100,000,000 rolls.\n\n"
            "Select \"New\" from the \"Game\" menu to reset the table.");
  EXPECT_TRUE(TakeShown().empty());
}

TEST_F(RollCycleTest, AnOverflowEndsTheRunAndIsReported) {
  Game.BankrollSum = Currency::FromRaw(INT64_MAX);
  Game.AutoRollDice = Game.KeepRolling = true;
  Roll(2, 4);
  EXPECT_EQ(Game.LastErrorText, "Overflow, Error #6 occurred, at: Roll Dice\n");
  EXPECT_FALSE(Game.KeepRolling);
  EXPECT_FALSE(Game.RollInProgress);
  EXPECT_TRUE(TakeShown().empty());
  Game.BankrollSum = 0;
  Roll(2, 4);
  EXPECT_EQ(Game.RollTotal, 6) << "the table goes on";
}

// --- The keyed amount ---

TEST_F(RollCycleTest, AKeyedAmountIsEnteredBeforeTheRoll) {
  Game.KeyedBoxOpen = true;
  Game.KeyedBetId = Field;
  Game.KeyedBetText = "5";
  Roll(1, 1);
  EXPECT_EQ(Bankroll(), Currency(510));
}

TEST_F(RollCycleTest, AKeyedAmountThatLeavesAMessageCallsTheRollOff) {
  Game.KeyedBoxOpen = true;
  Game.KeyedBetId = Come;
  Game.KeyedBetText = "5";
  RollDice();
  EXPECT_EQ(Game.RollCount[0], 0);
  EXPECT_EQ(TakeOnlyMessage().Title, "Come Bet");
  RollDice();
  EXPECT_EQ(Game.RollCount[0], 1) << "the box shows what stands now";
}

// --- The tape ---

class TapeTest : public RollCycleTest {
 protected:
  void SetUp() override {
    RollCycleTest::SetUp();
    folder_ = std::filesystem::path(::testing::TempDir()) /
              (std::string("kelvanor_tape_") +
               ::testing::UnitTest::GetInstance()->current_test_info()->name());
    std::filesystem::create_directories(folder_);
    Game.DiceRollFile = (folder_ / "tape.rol").string();
  }
  void TearDown() override {
    std::filesystem::remove_all(folder_);
    RollCycleTest::TearDown();
  }

  static void Record(std::initializer_list<Dice> throws, std::string behind = "") {
    std::string bytes;
    for (const auto& [die1, die2] : throws) bytes += static_cast<char>(DiceByte(die1, die2));
    std::ofstream(Game.DiceRollFile, std::ios::binary) << bytes << behind;
    Game.RecorderStatus = Playback;
    Game.DiceFilePos = 1;
  }

 private:
  std::filesystem::path folder_;
};

TEST_F(TapeTest, ATapeIsPlayedToItsEnd) {
  Record({{2, 4}, {3, 3}});
  Game.AutoRollDice = Game.KeepRolling = true;
  RollDice();
  EXPECT_EQ(Game.RollCount[0], 2);
  EXPECT_FALSE(Game.KeepRolling);
  EXPECT_FALSE(Game.RollInProgress);
  EXPECT_EQ(Game.ShooterStats[PassesByPoint], 1);
  EXPECT_TRUE(TakeShown().empty());
}

TEST_F(TapeTest, TheEndOfATapeLeavesTheLastFinishedRoll) {
  Record({{2, 4}, {1, 5}, {2, 6}});
  RollDice();
  RollDice();
  RollDice();
  Establish(Field, 5);
  RollDice();
  EXPECT_EQ(Game.RollCount[0], 3);
  EXPECT_EQ((Dice{Game.Die1, Game.Die2}), (Dice{2, 6}));
  EXPECT_EQ((Dice{Game.PrevDie1, Game.PrevDie2}), (Dice{1, 5}));
  EXPECT_EQ(Game.Point, 8);
  EXPECT_EQ(Game.PrevPoint, 0);
  EXPECT_EQ(Game.PrevPrevPoint, 6);
  EXPECT_EQ(Bet(Field), Currency(5));
  EXPECT_EQ(Bankroll(), Currency(500));
  Game.RecorderStatus = RecorderOff;
  Roll(4, 4);
  EXPECT_EQ(Game.BetWagers[Phantom][Come4 + 3][StatCount], Currency(0))
      << "no Come bet could have moved on the come-out before the end";
}

TEST_F(TapeTest, HyperDriveTellsWhyATapeStopped) {
  Game.HyperDriveOn = Game.KeepRolling = true;
  Record({{2, 4}});
  RollDice();
  EXPECT_EQ(Game.RollCount[0], 1);
  EXPECT_EQ(Game.StopMessage, "Stopped due to end of Dice Roll File reached.");
  Game.KeepRolling = true;
  Record({{2, 4}}, "\xFF");
  RollDice();
  EXPECT_EQ(Game.RollCount[0], 2);
  EXPECT_EQ(Game.StopMessage, "Stopped due to Dice Roll File value out of limits.");
  EXPECT_TRUE(TakeShown().empty());
}

TEST_F(TapeTest, ABadByteStopsTheTapeAndIsTold) {
  Record({{2, 4}}, "\xFF");
  RollDice();
  RollDice();
  EXPECT_EQ(Game.RollCount[0], 1);
  EXPECT_EQ(Game.RollTotal, 6);
  EXPECT_EQ(TakeOnlyMessage().Title, "Dice Roll File Error");
}

TEST_F(TapeTest, RollsAreRecordedAndPlayedBack) {
  std::ofstream(Game.DiceRollFile).close();
  Game.RecorderStatus = Recording;
  Game.DiceFilePos = 1;
  RollAll({{6, 1}, {2, 5}});
  Game.RecorderStatus = Playback;
  Game.DiceFilePos = 1;
  RollDice();
  EXPECT_EQ((Dice{Game.Die1, Game.Die2}), (Dice{6, 1}));
  RollDice();
  EXPECT_EQ((Dice{Game.Die1, Game.Die2}), (Dice{2, 5}));
}

}  // namespace
