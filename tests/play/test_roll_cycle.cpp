// Whole rolls: the point, the shooter, what stops a run, and what a roll leaves behind.

#include "dice/tape.h"
#include "support/same_game.h"
#include "support/table_fixture.h"

namespace {

using Dice = std::array<int, 2>;

class RollCycleTest : public TableTest {
 protected:
  RollCycleTest() {
    Game.HandleWinningBets = WinTakeDown;
    Game.AutoAdjust = AdjustManual;
  }

  static void RollAll(std::initializer_list<Dice> throws) {
    for (const auto& [die1, die2] : throws) Roll(die1, die2);
  }

  static Dice Thrown() { return {Game.Die1, Game.Die2}; }
  static Dice ThrownBefore() { return {Game.PrevDie1, Game.PrevDie2}; }

  /// Starts a run of automatic rolls.
  static void Run() {
    Game.KeepRolling = true;
    RollDice();
  }
};

TEST_F(RollCycleTest, TheOtherBarMakesTheTwoABarAndTheTwelveAMiss) {
  Game.BarDont = 2;
  Game.StickPerson = 1;
  Game.StickSounds[StickBar] = "bar";
  RollAll({{1, 1}, {6, 6}});
  EXPECT_EQ(Game.ShooterStats[MissesOnComeOut], 2);
  EXPECT_EQ(std::count(SoundsPlayed.begin(), SoundsPlayed.end(), "bar"), 1);
}

TEST_F(RollCycleTest, CountersOfTheGameOutliveTheShooter) {
  RollAll({{2, 4}, {3, 4}, {2, 4}});
  // the shooter changed in between
  EXPECT_EQ((std::array{Game.ShooterEvent[0], Game.ShooterEvent[1], Game.ShooterEvent[6],
                        Game.RollCount[0], Game.RollsSince[0], Game.RollsSince[7],
                        Game.ShooterEventPrev[6], Game.ShooterSince[7], Game.ShooterSincePrev[6]}),
            (std::array{3, 3, 2, 3, 3, 1, 1, 1, 1}));
  EXPECT_EQ(Game.RollGapTally[6][2], 1);
}

TEST_F(RollCycleTest, BetsGoToWorkWithThePointAndRestOnTheComeOut) {
  EXPECT_EQ(Game.BetWorking[Place8], NotWorking);
  Given(Place8, 12);
  Roll(3, 3);
  EXPECT_EQ(Game.BetWorking[Place8], Working);
  CallBet(Place8, CallCodeOn);
  EXPECT_EQ(Game.Payoff[PassLineOdds], (PayoffRecord{6, true, 5}));
  EXPECT_EQ(Game.Payoff[DontPassOdds], (PayoffRecord{5, true, 6}));
  Roll(4, 2);
  EXPECT_EQ((std::array{Game.BetWorking[Place8], Game.BetWorking[Place6], Game.BetWorking[Hard8]}),
            (std::array{+CalledOn, +NotWorking, +Working}))
      << "a call outlasts the point";
}

TEST_F(RollCycleTest, OddsFollowThePointWhereTheyAreWanted) {
  Game.AutoTakeFullOdds = Game.AutoLayFullOdds = true;
  Game.OddsCalcMethod = OddsNoPush;
  Game.OddsMultiple = 3;
  const std::tuple<Dice, int, int> cases[] = {{{1, 3}, 20, 40}, {{2, 3}, 20, 30}, {{2, 4}, 25, 30},
                                              {{4, 4}, 25, 30}, {{5, 5}, 20, 40}, {{4, 4}, 20, 24}};
  // Twice on 4, 5, 9 and 10, two and a half times on 6; on 8 whatever was figured last.
  for (const auto& [dice, take, lay] : cases) {
    SetPoint(0);
    for (const int id : {+PassLine, +DontPass}) Establish(id, 10);
    for (const int id : {+PassLineOdds, +DontPassOdds}) Establish(id, 0);
    RollAll({dice});
    EXPECT_EQ(Bet(PassLineOdds), Currency(take)) << Game.RollTotal;
    EXPECT_EQ(Bet(DontPassOdds), Currency(lay)) << Game.RollTotal;
  }
}

TEST_F(RollCycleTest, ThePlaceBetOfAPointComesDownWithAPassLineBet) {
  Game.AutoRemovePlace = true;
  Given(Place6, 6);
  Roll(3, 3);
  EXPECT_EQ(Bet(Place6), Currency(6)) << "no Pass Line bet";
  Roll(3, 4);
  Establish(PassLine, 10);
  for (const int id : {+Place6, +Place8, Buy5 + 2}) Establish(id, 20);
  Roll(1, 5);
  ExpectBets({{Place6, 0}, {Place8, 20}});
  Given(Come, 5);
  Roll(2, 6);  // the Come bet moves to the 8
  ExpectBets({{Place8, 0}, {Buy5 + 2, 0}});
  ExpectBooksBalance();
}

TEST_F(RollCycleTest, SnapshotsOfARoll) {
  Dice before{};
  TheHost.ThrowDice = [&] { before = ThrownBefore(); };
  Given(Field, 5);
  Given(PassLine, 10);
  Roll(1, 3);
  EXPECT_EQ((std::array{Game.BetsAtRoll[Field], Game.BetsAtRoll[BankrollIndex],
                        Game.BetsAfterRoll[Field], Game.BetsAfterRoll[BankrollIndex]}),
            (std::array<Currency, 4>{5, 500, 0, 505}));
  EXPECT_EQ(Game.ContractBets[PassLine], Currency(10));
  EXPECT_EQ(Game.BetWorkingPrev, Game.BetWorking);
  Given(Field, 20);
  Roll(3, 3);
  EXPECT_EQ((std::array{Game.BankrollSum, Game.BankrollHigh, Game.BankrollLow}),
            (std::array<Currency, 3>{505 + 485, 505, 485}));
  EXPECT_EQ(before, (Dice{1, 3}));
  EXPECT_EQ(ThrownBefore(), before);
}

TEST_F(RollCycleTest, TheStickPersonCallsInOrder) {
  Game.StickPerson = 1;
  for (unsigned call = 1; call < kStickCalls; ++call) Game.StickSounds[call] = std::to_string(call);
  const std::pair<Dice, std::string> rolls[] = {
      {{2, 2}, "4 16 "},     {{2, 2}, "4 16 13 17 "},  // pass, next throw
      {{6, 6}, "12 15 17 "}, {{1, 1}, "2 14 17 "},     // bar, miss
      {{2, 4}, "6 "},        {{3, 4}, "7 14 18 17 "},  // a new shooter
      {{5, 6}, "11 13 17 "}};
  for (const auto& [dice, calls] : rolls) {
    SoundsPlayed.clear();
    RollAll({dice});
    std::string played;
    for (const std::string& sound : SoundsPlayed) played += sound + " ";
    EXPECT_EQ(played, calls) << Game.RollCount[0];
  }
}

TEST_F(RollCycleTest, TheDiceGoHomeOnTheFirstDecision) {
  Game.DiceAction = DiceReturnOnDecision;
  int sent = 0;
  TheHost.SendDiceHome = [&] { ++sent; };
  Given(Field, 5);
  Given(Two, 1);
  RollAll({{3, 4}, {3, 4}});
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
  const std::set<int> hard = {StopOnHardFour, StopOnHardSix, StopOnHardEight, StopOnHardTen};
  const std::array<int, 17> totals = {0, 0, 2, 3, 4, 4, 5, 6, 6, 7, 8, 8, 9, 10, 10, 11, 12};
  Game.AutoRollDice = true;
  for (int entry = StopOnTwo; entry < kAutoStops; ++entry) {
    Game.AutoStopOn = {};
    Game.AutoStopOn[entry] = true;
    for (int die1 = 1; die1 <= 6; ++die1)
      for (int die2 = 1; die2 <= 6; ++die2)
        EXPECT_EQ(StopsAfter(die1, die2),
                  die1 + die2 == totals[entry] && (die1 == die2 || !hard.contains(entry)))
            << "entry " << entry << " on " << die1 << "-" << die2;
  }
}

TEST_F(RollCycleTest, AWinOrALossStopsAnAutomaticRun) {
  // The entry, die 2 behind a 1, under Hyper-Drive (where nobody watches), and whether it stops.
  const int rows[][4] = {{StopOnWin, 1, false, true},
                         {StopOnWin, 6, false, false},
                         {StopOnLoss, 6, false, true},
                         {StopOnLoss, 1, false, false},
                         {StopOnWin, 1, true, false}};
  for (const auto& [entry, die2, hyper, stops] : rows) {
    Game.AutoRollDice = !hyper;
    Game.HyperDriveOn = hyper;
    Game.AutoStopOn = {};
    Game.AutoStopOn[entry] = true;
    Establish(Field, 5);
    EXPECT_EQ(StopsAfter(1, die2), stops != 0) << entry;
  }
}

TEST_F(RollCycleTest, AutomaticRollsWaitAndAClickEndsThem) {
  Game.AutoRollDice = true;
  Game.AutoRollDelay = 2;
  int waited = 0;
  TheHost.Milliseconds = [&] { return static_cast<std::uint32_t>(waited); };
  TheHost.Wait = [&](int milliseconds) {
    waited += milliseconds;
    if (waited > 5000) Game.KeepRolling = false;
  };
  Run();
  EXPECT_EQ(Game.RollCount[0], 3) << "at 0, 2 and 4 seconds";
  EXPECT_FALSE(Game.RollInProgress);
}

TEST_F(RollCycleTest, ARollInsideARollIsNotStarted) {
  TheHost.ThrowDice = [] { RollNamedDice(1, 1); };
  Roll(3, 3);
  EXPECT_EQ(std::pair(Game.RollCount[0], Game.RollTotal), std::pair(1, 6));
  EXPECT_FALSE(Game.ManualRollPending);
}

TEST_F(RollCycleTest, AHundredMillionRollsAreTheLimit) {
  Game.RollCount[0] = 99'999'999;
  RollAll({{2, 3}, {6, 6}});
  EXPECT_EQ(std::pair(Game.RollCount[0], Game.RollTotal), std::pair(100'000'000, 5));
  EXPECT_FALSE(Game.RollInProgress || Game.ManualRollPending);
  const std::string text = TakeOnlyMessage().Text;
  EXPECT_TRUE(text.starts_with("Sorry ... you've reached the maximum limit of 100,000,000 rolls."));
  Game.HyperDriveOn = true;
  Run();
  EXPECT_FALSE(Game.KeepRolling);
  EXPECT_EQ(Game.StopMessage, "Stopped due to reaching" + text.substr(text.find(" the maximum")));
}

TEST_F(RollCycleTest, ARollThatOverflowsIsTakenBackWhole) {
  const ScratchFolder folder("taken_back");
  Game.DataPath = folder / "";
  for (const bool hyperDrive : {false, true}) {
    LayDownDefaults();
    Game.HandleWinningBets = WinTakeDown;
    LogEverything();
    Game.EventsLogFile = folder / (hyperDrive ? "hyper.txt" : "table.txt");
    Given(Field, 5);
    Given(PassLine, 10);
    SeedDice(4711);
    Game.HyperDriveOn = hyperDrive;
    Game.NumAutoRolls = Game.AutoRollsLeft = 3;
    RollDice();
    // The last of the money that the loser of the Field can be counted with.
    const std::string log = folder.Read(hyperDrive ? "hyper.txt" : "table.txt");
    Given(Field, 5);
    Game.BetLosses[Actual][Field][StatSum] = Currency::FromRaw(INT64_MAX);
    Game.BetWins[Actual][Field][StatSum] = Currency::FromRaw(INT64_MAX);
    Game.SnapshotsDue = true;  // as after a game was read
    const StateOfPlay before;
    const int rollsLeft = Game.AutoRollsLeft;
    Game.KeepRolling = hyperDrive;
    TakeShown();
    RollDice();
    EXPECT_TRUE(StateOfPlay() == before);
    EXPECT_EQ(Game.AutoRollsLeft, rollsLeft);
    EXPECT_EQ(folder.Read(hyperDrive ? "hyper.txt" : "table.txt"), log);
    EXPECT_FALSE(Game.KeepRolling || Game.RollInProgress);
    const std::string told = hyperDrive ? Game.StopMessage : TakeOnlyMessage().Text;
    EXPECT_TRUE(told.starts_with("The dice can't be rolled: an amount is larger"));
    // The same dice fall once there is room.
    Game.BetLosses[Actual][Field] = Game.BetWins[Actual][Field] = {};
    Game.BetWagers[Actual][Field] = {};
    RollDice();
    const int totalOfLostRoll = Game.RollTotal;
    Game.HyperDriveOn = false;
    ArrangeAllChips();
    EXPECT_EQ(FirstInconsistency(), "");
    SeedDice(4711);
    RollDice();
    RollDice();
    EXPECT_EQ(Game.RollTotal, totalOfLostRoll);
  }
}

TEST_F(RollCycleTest, AKeyedAmountIsEnteredBeforeTheRollAndAMessageCallsItOff) {
  Game.KeyedBoxOpen = true;
  Game.KeyedBetText = "5";
  Game.KeyedBetId = Come;
  RollDice();
  EXPECT_EQ(std::tuple(Game.RollCount[0], TakeOnlyMessage().Title), std::tuple(0, "Come Bet"));
  RollDice();
  EXPECT_EQ(Game.RollCount[0], 1) << "the box shows what stands now";
  Game.KeyedBoxOpen = true;
  Game.KeyedBetText = "5";
  Game.KeyedBetId = Field;
  Roll(1, 1);
  EXPECT_EQ(Bankroll(), Currency(510));
}

// --- The tape ---

class TapeTest : public RollCycleTest {
 protected:
  void Record(std::initializer_list<Dice> throws, const std::string& behind = "") {
    std::string bytes;
    for (const auto& [die1, die2] : throws) bytes += static_cast<char>(DiceByte(die1, die2));
    Game.DiceRollFile = folder_.Write("tape.rol", bytes + behind);
    Game.RecorderStatus = Playback;
    Game.DiceFilePos = 1;
  }

  const ScratchFolder folder_{"roll_cycle"};
};

TEST_F(TapeTest, TheEndOfATapeLeavesTheLastFinishedRoll) {
  Record({{2, 4}, {1, 5}, {2, 6}});
  for (int roll = 0; roll < 3; ++roll) RollDice();
  Establish(Field, 5);
  RollDice();
  EXPECT_EQ(Game.RollCount[0], 3);
  EXPECT_EQ((std::array{Thrown(), ThrownBefore(), Dice{Game.Point, Game.PrevPoint}}),
            (std::array{Dice{2, 6}, Dice{1, 5}, Dice{8, 0}}));
  EXPECT_EQ(Game.PrevPrevPoint, 6);
  EXPECT_EQ(std::pair(Bet(Field), Bankroll()), std::pair(Currency(5), Currency(500)));
  Game.RecorderStatus = RecorderOff;
  Roll(4, 4);
  EXPECT_EQ(Game.BetWagers[Phantom][Come4 + 3][StatCount], Currency(0))
      << "no Come bet could have moved on the come-out before the end";
}

TEST_F(TapeTest, HyperDriveTellsWhyATapeStopped) {
  Game.HyperDriveOn = true;
  Record({{2, 4}});
  Run();
  EXPECT_EQ(Game.RollCount[0], 1);
  EXPECT_EQ(Game.StopMessage, "Stopped due to end of Dice Roll File reached.");
  Record({{2, 4}}, "\xFF");
  Run();
  EXPECT_EQ(Game.RollCount[0], 2);
  EXPECT_EQ(Game.StopMessage, "Stopped due to Dice Roll File value out of limits.");
  EXPECT_TRUE(TakeShown().empty());
  Game.HyperDriveOn = false;
  Record({}, "\xFF");
  RollDice();
  EXPECT_EQ(std::pair(Game.RollCount[0], Game.RollTotal), std::pair(2, 6));
  EXPECT_EQ(TakeOnlyMessage().Title, "Dice Roll File Error");
}

}  // namespace
