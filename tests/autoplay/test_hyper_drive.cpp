// Hyper-Drive: what a run leaves out, what stops it, and that a game can be played again.
#include "autoplay/hyper_drive.h"

#include "autobet/output_file.h"
#include "autoplay/auto_play.h"
#include "stats/bankroll_graph.h"
#include "support/table_fixture.h"

namespace {

constexpr Currency kBeyondTheLimit = 10'000'001;

class HyperDrive : public TableTest {
 protected:
  void SetUp() override {
    Begin();
    SeedDice(4711);
    Game.NegBankroll = true;
    Game.HandleWinningBets = WinSameBet;
    Game.HandleLosingBets = LossSameBet;
    TheHost.ThrowDice = [this] { ++throws_; };
  }

  static void RunFor(int rolls) {
    Game.NumAutoRolls = Game.AutoRollsLeft = rolls;
    ToggleHyperDrive();
  }

  int throws_ = 0;
};

TEST_F(HyperDrive, RunsWithoutDiceSoundsAndNoticesAndStopsAtTheCount) {
  Game.DiceSounds = Game.WinSounds = Game.ChipSounds = {"", "noise"};
  Game.DiceSound = Game.WinSound = Game.ChipSound = 1;
  Game.AutoRollDice = true;
  Game.AutoStopOn.fill(true);
  Given(PassLine, 10);
  Given(Field, 5);
  SoundsPlayed.clear();
  Game.HyperThrottle = 1;
  TheHost.Yield = [] { SetAutoRollDice(false); };  // that is for rolls that are watched
  RunFor(500);
  EXPECT_EQ(Game.RollCount[0], 500);
  EXPECT_EQ(Game.AutoRollsLeft, 500) << "loaded again";
  EXPECT_EQ(throws_, 0);
  EXPECT_TRUE(SoundsPlayed.empty());
  EXPECT_EQ(TakeOnlyMessage().Text, "Stopped by roll count on Auto-Play screen.");
  EXPECT_FALSE(Game.HyperDriveOn || Game.KeepRolling || Game.RollInProgress);
  Currency chips;
  for (int i = 0; i < Game.ChipCount; ++i)
    chips += Game.Bets[SmallestChip - 1 + Game.ChipList[i].Picture];
  EXPECT_EQ(chips, 15) << "the chips are laid out again";
}

TEST_F(HyperDrive, TellsWhyItStopped) {
  const std::string selectNew = "\n\nSelect \"New\" from the \"Game\" menu to reset the table.";
  // What comes, what is told then, and whether a roll was thrown before.
  const std::tuple<std::function<void()>, std::string, bool> stops[] = {
      {[] { Game.RollCount[0] = kMaxRolls; },
       "Stopped due to reaching the maximum limit of 100,000,000 rolls." + selectNew, false},
      {[] { Game.Bets[0] = 9'999'999, Given(Field, 1000); },
       "Stopped by breaking the bank limit of $10,000,000" + selectNew, true},
      {[] { Game.Bets[0] = -9'999'999, Given(Seven, 500); },
       "Stopped by exceeding the max loss limit of $10,000,000" + selectNew, true},
      {[] { Game.RecorderStatus = Playback, Game.DiceRollFile = "none.rol"; },
       "Stopped due to end of Dice Roll File reached.", false}};
  for (const auto& [prepare, text, rolls] : stops) {
    SetUp();
    prepare();
    const int before = Game.RollCount[0];
    ToggleHyperDrive();
    EXPECT_EQ(TakeOnlyMessage().Text, text);
    EXPECT_EQ(Game.RollCount[0] > before, rolls) << text;
    EXPECT_FALSE(Game.HyperDriveOn) << text;
  }
}

TEST_F(HyperDrive, ASecondClickEndsTheRunWithItsRollAndABrokenBankStartsNone) {
  int turns = 0;
  Game.HyperThrottle = 3;
  const std::uint32_t start = TheHost.Milliseconds();
  TheHost.Yield = [&turns] {
    EXPECT_GE(HyperDriveProgress().RollsDone, turns + 1);
    if (++turns == 4) ToggleHyperDrive();
  };
  Game.TableMinimised = true;
  ToggleHyperDrive();
  EXPECT_EQ(Game.RollCount[0], 4);
  EXPECT_TRUE(Shown.empty());
  EXPECT_EQ(TheHost.Milliseconds() - start, 3U * 90) << "three waits of the throttle squared";
  EXPECT_TRUE(Game.HyperDriveStopped) << "the caption of a minimised table tells it";

  Game.TableMinimised = false;
  Game.Bets[BankrollIndex] = kBeyondTheLimit;
  ToggleHyperDrive();
  EXPECT_EQ(std::tuple(Game.RollCount[0], TakeOnlyMessage().Title), std::tuple(4, "Kelvanor"));
}

TEST_F(HyperDrive, GivesTurnsThoughTheClockStandsStillOrJumpsBack) {
  for (const bool jumps : {false, true}) {
    SetUp();
    std::uint32_t clock = 500'000;
    TheHost.Milliseconds = [&clock, jumps] { return jumps ? clock -= 40 : clock; };
    TheHost.Yield = [] { Game.KeepRolling = false; };
    ToggleHyperDrive();
    EXPECT_TRUE(Game.RollCount[0] > 0 && Game.RollCount[0] < 2'000'000);
  }
}

/// What a player may change between two rolls.
void ChangeSomething(int roll) {
  switch (roll % 7) {
    case 0: Game.BarDont = 14 - Game.BarDont; break;
    case 1: CallBet(Place6, roll % 2 == 0 ? CallCodeOff : CallCodeOn); break;
    case 2: Game.Payoff[Field].Per = 1, Game.FieldPayoff[10].Win = roll % 3 - 1; break;
    case 3: Game.AllowPutBets = !Game.AllowPutBets; break;
    case 4: Game.ComeOutWorking[Come4Odds] = roll % 2, UpdateWorkingStates(); break;
    case 5: Game.ChangeRequest = roll % 4 - 1, MakeBet(PassLine); break;
    default: Game.Payoff[Hop44].Win = 20 + roll % 5; break;
  }
}

/// Under the same rules: more sets of working states than are told apart at a time.
void CallSomething(int roll) {
  Game.BetWorking[Hop13 + roll * roll % 17] = roll % 3 == 0 ? CalledOff : CalledOn;
}

TEST_F(HyperDrive, ChangesInItsTurnsCountAsBetweenTwoRolls) {
  for (const auto change : {ChangeSomething, CallSomething}) {
    constexpr int kRolls = 700;
    const auto start = [this] {
      SetUp();
      Game.Notify = 0;
      for (const int bet : {+PassLine, +Field, +Place6, +Hop44, +DontPass}) Given(bet, 12);
      Game.NumAutoRolls = Game.AutoRollsLeft = kRolls;
    };
    start();
    for (int roll = 1; roll <= kRolls; ++roll) {
      RollDice();
      change(roll);
    }
    const Tallies slow = Game;
    const auto bets = Game.Bets;
    const auto working = Game.BetWorking;

    start();
    Game.HyperThrottle = 1;
    TheHost.Yield = [change] { change(Game.RollCount[0]); };
    ToggleHyperDrive();
    EXPECT_EQ(Game.RollCount[0], kRolls);
    EXPECT_EQ(Game.Bets, bets);
    EXPECT_EQ(Game.BetWorking, working);
    EXPECT_EQ(Game.BetWagers, slow.BetWagers);
    EXPECT_EQ(Game.BetWins, slow.BetWins);
    EXPECT_EQ(Game.BetLosses, slow.BetLosses);
    EXPECT_EQ(Game.RollGapTally, slow.RollGapTally);
    EXPECT_EQ(Game.ShooterSincePrev, slow.ShooterSincePrev);
  }
}

TEST_F(HyperDrive, KnowsWhereARunEndsAndWhetherAnyoneCanBet) {
  for (const auto& [played, asked, atMost] :
       {std::tuple{0, 40, 40}, {kMaxRolls - 10, 40, 10}, {kMaxRolls - 10, 0, 10}}) {
    SetUp();
    Game.RollCount[0] = played;
    Game.ShooterStats[ShooterRolls] = played;
    std::uint32_t clock = 0;
    TheHost.Milliseconds = [&clock] { return clock += 30; };
    int turns = 0;
    double left = -1;
    TheHost.Yield = [&] {
      left = HyperDriveProgress().SecondsLeft;
      EXPECT_EQ(HyperDriveProgress().NoBet, ++turns <= 2);
      if (turns == 2) Given(Field, 5);
      if (turns == 3) Game.KeepRolling = false;
    };
    Game.HyperThrottle = 1;
    RunFor(asked);
    EXPECT_EQ(HyperDriveProgress().RollsAtMost, atMost) << asked;
    EXPECT_EQ(left > 0, asked > 0) << "time is left to a count";
  }
}

TEST_F(HyperDrive, AFullPageIsPrintedWithItsAverages) {
  Game.BankrollAutoPrint = true;
  Game.BankrollAverageSpan = 30;
  int pages = 0;
  TheHost.PrintGraph = [&pages] {
    ++pages;
    const auto printed = Game.BankrollAverage;
    RecomputeAverages();
    EXPECT_EQ(printed, Game.BankrollAverage);
  };
  Given(Field, 5);
  RunFor(2 * kGraphPoints);
  EXPECT_EQ(pages, 2);
}

TEST_F(HyperDrive, LeavesTheOutputFileWrittenOut) {
  const ScratchFolder folder("hyper_drive_output");
  Game.DataPath = folder / "";
  OpenOutputFile("out.txt", OutputMode::Empty);
  WriteOutput("waits");
  RunFor(3);
  EXPECT_EQ(folder.Read("out.txt"), "waits");
  CloseOutputFile();
}

}  // namespace
