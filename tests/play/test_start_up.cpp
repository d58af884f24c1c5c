// The program from its start to the table, and its closing.

#include "play/start_up.h"
#include "support/table_fixture.h"

namespace {

class StartUpTest : public TableTest {
 protected:
  StartUpTest() {
    for (const std::string& folder : {Program, Data}) fs::create_directory(folder);
  }

  const ScratchFolder folder_{"start_up"};
  const std::string Program = folder_ / "program/";
  const std::string Data = folder_ / "data/";
};

TEST_F(StartUpTest, AFreshProgramStandsAtItsDefaults) {
  Game.Bets[Field] = 20;
  Game.Point = 6;
  Game.RngChoice = Rng7Mixed24;
  TheHost.Milliseconds = [] { return 1'234'567U; };
  StartUp(Program, Data);
  for (const Currency amount : {Bankroll(), Game.InvestedBankroll, Game.BankrollHigh,
                                Game.BankrollLow, Game.BetsAfterRoll[BankrollIndex]})
    EXPECT_EQ(amount, Currency(500));
  EXPECT_EQ(Bet(Field), Currency(0));
  EXPECT_EQ(std::tuple(Game.Die1, Game.Die2, Game.RollTotal, Game.Point), std::tuple(3, 4, 7, 0));
  EXPECT_EQ(Game.RngChoice, Rng1Mt);
  EXPECT_TRUE(Game.LastSeed >= 1'234'567 && Game.LastSeed < 1'234'667) << "seeded from the clock";
  EXPECT_EQ(Game.GamesLogFile, Data + "default.glg");
  EXPECT_EQ(Game.EventsLogFile, Data + "Events Log.txt");
  EXPECT_EQ(Game.OddsMultiple, Game.OddsAllowed68);
  EXPECT_EQ(Game.StickPerson, 0) << "nothing ships in this folder";
  EXPECT_EQ(Game.LastErrorText, "");
  for (int id = 1; id <= LastBet; ++id) {
    const bool rests = (id >= Come4Odds && id <= Buy10) || (id >= 44 && id <= 48 && id != 46);
    for (const auto& states : {Game.ComeOutWorking, Game.BetWorking, Game.BetWorkingPrev})
      EXPECT_EQ(states[id], rests ? NotWorking : Working) << id;
  }
}

TEST_F(StartUpTest, SoundSetsAreFoundAndTheFirstPersonCalls) {
  for (const char* file : {"Vera02.stk", "Vera01.stk", "Otto18.stk", "Otto17.stk", "Cup.dce"})
    std::ofstream(Program + file) << "x";
  StartUp(Program, Data);
  EXPECT_EQ(Game.StickPersons, (std::vector<std::string>{"", "Otto", "Vera"}));
  EXPECT_EQ(Game.StickPerson, 1);
  EXPECT_EQ(Game.DiceSounds, (std::vector<std::string>{"", "Cup.dce"}));
  AfterTableShown();
  Game.Point = 4;
  AfterTableShown();
  EXPECT_THAT(SoundsPlayed, testing::ElementsAre(Program + "Otto18.stk", Program + "Otto17.stk"));
  EXPECT_TRUE(TakeShown().empty());
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
  const std::string starts[] = {"", mt, cokus, mt + "\n\n" + cokus};
  for (int missing = 1; missing < 4; ++missing) {
    Game.MissingRngFiles = missing;
    AfterTableShown();
    const ShownMessage told = TakeOnlyMessage();
    EXPECT_TRUE(told.Text.starts_with(starts[missing])) << told.Text;
    EXPECT_TRUE(told.Text.ends_with(comfort)) << told.Text;
    EXPECT_EQ(told.Title, "Missing Support File");
  }
  Game.RngChoice = Rng6Mixed15;
  Game.MissingRngFiles = 1;
  RollDice();
  EXPECT_EQ(Game.RngChoice, Rng4Ran2) << "a roll falls back on what is there";
}

// --- Closing ---

TEST_F(StartUpTest, AutoBetAndHyperDriveAreAskedForInTurn) {
  const ShownMessage autoBet = {"Do you want to interrupt Auto-Betting? ", "Auto-Bet Active", 0,
                                YesNo};
  const ShownMessage hyper = {"Do you want to stop Hyper-Drive?", "Hyper-Drive Active", 0, YesNo};
  using Planned = std::deque<PlannedAnswer>;
  const std::tuple<bool, bool, Planned, bool, std::vector<ShownMessage>> cases[] = {
      // clang-format off
      {false, false, {}, true, {}}, {true, true, {kYes, kYes}, true, {autoBet, hyper}},
      {true, true, {kYes, kNo}, false, {autoBet, hyper}}, {true, false, {kNo}, false, {autoBet}},
      {false, true, {kNo}, false, {hyper}}, {false, true, {kYes}, true, {hyper}}};
  // clang-format on
  for (const auto& [running, hyperDrive, answers, closes, questions] : cases) {
    Game.AutoBetRunning = running;
    Game.HyperDriveOn = hyperDrive;
    Game.KeepRolling = true;
    Answers = answers;
    bool stored = false;
    EXPECT_EQ(MayClose([&] { stored = true; }), closes);
    EXPECT_EQ(stored, closes);
    std::vector<ShownMessage> asked = TakeShown();
    for (ShownMessage& message : asked) message.HelpTopic = 0;
    EXPECT_EQ(asked, questions);
    const bool interrupted = !answers.empty() && answers[0].Button == kYes.Button;
    EXPECT_EQ(Game.AutoBetRunning, running && !interrupted);
    EXPECT_EQ(Game.KeepRolling, !interrupted);
  }
}

TEST_F(StartUpTest, ARunThatEndsInItsTurnIsNotAskedFor) {
  Game.AutoBetRunning = Game.HyperDriveOn = true;
  TheHost.Yield = [] { Game.HyperDriveOn = false; };
  Answers = {kYes};
  EXPECT_TRUE(MayClose(nullptr));
  EXPECT_EQ(TakeShown().size(), 1U);
}

TEST_F(StartUpTest, ClosingDeletesTheScratchFilesOnly) {
  StartUp(Program, Data);
  for (const char* file : {"copyfile.rll", "active.tmp", "default.crp"})
    std::ofstream(Data + file) << "x";
  CloseGame();
  EXPECT_FALSE(fs::exists(Data + "copyfile.rll") || fs::exists(Data + "active.tmp"));
  EXPECT_TRUE(fs::exists(Data + "default.crp"));
}

}  // namespace
