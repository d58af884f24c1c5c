// The program from its start to the table, and its closing.
#include <array>
#include <filesystem>
#include <fstream>

#include "core/roll_cycle.h"
#include "core/sounds.h"
#include "core/start_up.h"
#include "support/table_fixture.h"

namespace {

namespace fs = std::filesystem;

constexpr int kYes = 1;
constexpr int kNo = 2;

class StartUpTest : public TableTest {
 protected:
  void SetUp() override {
    TableTest::SetUp();
    folder_ = fs::path(::testing::TempDir()) /
              (std::string("kelvanor_start_") +
               ::testing::UnitTest::GetInstance()->current_test_info()->name());
    fs::remove_all(folder_);
    fs::create_directories(folder_ / "program");
    fs::create_directories(folder_ / "data");
    Program = (folder_ / "program").string() + "/";
    Data = (folder_ / "data").string() + "/";
  }
  void TearDown() override {
    Game.AppPath.clear();
    Game.DataPath.clear();
    fs::remove_all(folder_);
    TableTest::TearDown();
  }

  /// The player answers the next questions with these buttons.
  void Answer(std::initializer_list<int> buttons) {
    for (const int button : buttons) Answers.push_back({button, false, "", ""});
  }

  void Ship(std::initializer_list<const char*> files) const {
    for (const char* file : files) std::ofstream(Program + file) << "x";
  }

  std::string Program;
  std::string Data;

 private:
  fs::path folder_;
};

TEST_F(StartUpTest, AFreshProgramStandsAtItsDefaults) {
  Game.Bets[Field] = 20;
  Game.Point = 6;
  Game.RngChoice = Rng7Mixed24;
  StartUp(Program, Data);
  EXPECT_EQ(Bankroll(), Currency(500));
  EXPECT_EQ(Game.InvestedBankroll, Currency(500));
  EXPECT_EQ(Game.BankrollHigh, Currency(500));
  EXPECT_EQ(Game.BankrollLow, Currency(500));
  EXPECT_EQ(Game.BetsAfterRoll[BankrollIndex], Currency(500));
  EXPECT_EQ(Bet(Field), Currency(0));
  EXPECT_EQ((std::array{Game.Die1, Game.Die2, Game.RollTotal, Game.Point}),
            (std::array{3, 4, 7, 0}));
  EXPECT_EQ(Game.RngChoice, Rng1Mt);
  EXPECT_GT(Game.LastSeed, 0) << "seeded from the clock";
  EXPECT_GT(Game.SpinRate, 0);
  EXPECT_EQ(Game.GamesLogFile, Data + "default.glg");
  EXPECT_EQ(Game.EventsLogFile, Data + "Events Log.txt");
  EXPECT_EQ(Game.HandleWinningBets, WinManual);
  EXPECT_EQ(Game.HandleLosingBets, LossNoBet);
  EXPECT_EQ(Game.AutoAdjust, AdjustColor);
  EXPECT_EQ(Game.PlaceBias, BiasIncrease);
  EXPECT_EQ(Game.OddsMultiple, Game.OddsAllowed68);
  EXPECT_EQ(Game.StickPerson, 0) << "nothing ships in this folder";
  EXPECT_EQ(Game.BetNames[101], "Chip-Stack # 1");
  EXPECT_EQ(Game.LastErrorText, "");
}

TEST_F(StartUpTest, BetsOfTheComeOutListRest) {
  StartUp(Program, Data);
  for (int id = 1; id <= LastBet; ++id) {
    const bool rests =
        (id >= Come4Odds && id <= Buy10) || id == 44 || id == 45 || id == 47 || id == 48;
    EXPECT_EQ(Game.ComeOutWorking[static_cast<unsigned>(id)], rests ? NotWorking : Working) << id;
    EXPECT_EQ(Game.BetWorking[static_cast<unsigned>(id)], rests ? NotWorking : Working) << id;
    EXPECT_EQ(Game.BetWorkingPrev[static_cast<unsigned>(id)], rests ? NotWorking : Working) << id;
  }
}

TEST_F(StartUpTest, SoundSetsAreFoundAndTheFirstPersonCalls) {
  Ship(
      {"Vera02.stk", "Vera01.stk", "Otto18.stk", "Otto17.stk", "Cup.dce", "Bell.win", "Slide.chp"});
  StartUp(Program, Data);
  EXPECT_EQ(Game.StickPersons, (std::vector<std::string>{"", "Otto", "Vera"}));
  EXPECT_EQ(Game.StickPerson, 1);
  EXPECT_EQ(Game.StickSounds[StickNextThrow], Program + "Otto17.stk");
  EXPECT_EQ(Game.DiceSounds, (std::vector<std::string>{"", "Cup.dce"}));
  AfterTableShown();
  EXPECT_EQ(SoundsPlayed,
            (std::vector<std::string>{Program + "Otto18.stk", Program + "Otto17.stk"}));
  EXPECT_TRUE(TakeShown().empty());
  SoundsPlayed.clear();
  Game.Point = 4;
  AfterTableShown();
  EXPECT_TRUE(SoundsPlayed.empty());
}

TEST_F(StartUpTest, MissingSupportFilesAreTold) {
  const std::string mt =
      "Unable to locate a support file called MT19937AR.DLL\n"
      "This file is needed to operate random number generators #1, #6, and #8.";
  const std::string cokus =
      "Unable to locate a support file called COKUS.DLL\n\n"
      "This file is needed to operate random number generators #2 and #7.";
  const std::string comfort =
      "Don't worry, you can still play the game with one of the remaining random number "
      "generators.  ";
  const std::array<std::string, 4> starts = {"", mt, cokus, mt + "\n\n" + cokus};
  for (int missing = 1; missing < 4; ++missing) {
    Game.MissingRngFiles = missing;
    AfterTableShown();
    const ShownMessage told = TakeOnlyMessage();
    const std::string& start = starts[static_cast<unsigned>(missing)];
    EXPECT_EQ(told.Text.substr(0, start.size()), start);
    EXPECT_EQ(told.Text.substr(told.Text.size() - comfort.size()), comfort);
    EXPECT_EQ(told.Title, "Missing Support File");
  }
  Game.RngChoice = Rng6Mixed15;
  Game.MissingRngFiles = 1;
  RollDice();
  EXPECT_EQ(Game.RngChoice, Rng4Ran2) << "a roll falls back on what is there";
}

// --- Closing ---

TEST_F(StartUpTest, AQuietTableClosesUnasked) {
  bool stored = false;
  EXPECT_TRUE(MayClose([&] { stored = true; }));
  EXPECT_TRUE(stored);
  EXPECT_TRUE(TakeShown().empty());
}

TEST_F(StartUpTest, AutoBetAndHyperDriveAreAskedForInTurn) {
  Game.AutoBetRunning = Game.HyperDriveOn = Game.KeepRolling = true;
  Answer({kYes, kYes});
  bool stored = false;
  EXPECT_TRUE(MayClose([&] { stored = true; }));
  const std::vector<ShownMessage> asked = TakeShown();
  ASSERT_EQ(asked.size(), 2U);
  EXPECT_EQ(asked[0].Text, "Do you want to interrupt Auto-Betting? ");
  EXPECT_EQ(asked[0].Title, "Auto-Bet Active");
  EXPECT_EQ(asked[0].Flags, YesNo);
  EXPECT_EQ(asked[1].Text, "Do you want to stop Hyper-Drive?");
  EXPECT_EQ(asked[1].Title, "Hyper-Drive Active");
  EXPECT_FALSE(Game.AutoBetRunning);
  EXPECT_FALSE(Game.KeepRolling);
  EXPECT_TRUE(stored);
}

TEST_F(StartUpTest, NoKeepsTheProgramOpenAndTheRunGoing) {
  bool stored = false;
  const auto store = [&] { stored = true; };
  Game.AutoBetRunning = Game.KeepRolling = true;
  Answer({kNo});
  EXPECT_FALSE(MayClose(store));
  EXPECT_TRUE(Game.AutoBetRunning);
  EXPECT_TRUE(Game.KeepRolling);
  Game.AutoBetRunning = false;
  Game.HyperDriveOn = true;
  Answer({kNo});
  EXPECT_FALSE(MayClose(store));
  EXPECT_TRUE(Game.KeepRolling);
  EXPECT_FALSE(stored);
}

TEST_F(StartUpTest, ARunThatEndsInItsTurnIsNotAskedFor) {
  Game.AutoBetRunning = Game.HyperDriveOn = true;
  TheHost.Yield = [] { Game.HyperDriveOn = false; };
  Answer({kYes});
  EXPECT_TRUE(MayClose(nullptr));
  EXPECT_EQ(TakeShown().size(), 1U);
}

TEST_F(StartUpTest, ClosingDeletesTheScratchFilesOnly) {
  StartUp(Program, Data);
  for (const char* file : {"copyfile.rll", "active.tmp", "default.crp"})
    std::ofstream(Data + file) << "x";
  CloseGame();
  EXPECT_FALSE(fs::exists(Data + "copyfile.rll"));
  EXPECT_FALSE(fs::exists(Data + "active.tmp"));
  EXPECT_TRUE(fs::exists(Data + "default.crp"));
}

}  // namespace
