// The Events Log of a session, line by line.
#include <filesystem>
#include <fstream>
#include <sstream>

#include "core/bankroll.h"
#include "core/make_bet.h"
#include "core/new_game.h"
#include "core/roll_cycle.h"
#include "dice/tape.h"
#include "stats/events_log.h"
#include "stats/log_files.h"
#include "support/table_fixture.h"

namespace {

namespace fs = std::filesystem;

std::string ReadAll(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

class RollLogTest : public TableTest {
 protected:
  void SetUp() override {
    TableTest::SetUp();
    dataPath_ = Game.DataPath;
    folder_ = fs::path(::testing::TempDir()) /
              (std::string("kelvanor_log_") +
               ::testing::UnitTest::GetInstance()->current_test_info()->name());
    fs::remove_all(folder_);
    fs::create_directories(folder_);
    Game.DataPath = folder_.string() + "/";
    Game.EventsLogFile = Game.DataPath + "Events Log.txt";
    Game.EventsLogActive = true;
    Game.ReSeed = false;
    Game.AutoAdjust = AdjustManual;
    Game.HandleWinningBets = WinTakeDown;
    Game.Notify = 0;
  }
  void TearDown() override {
    Game.DataPath = dataPath_;
    Game.EventsLogFile = dataPath_ + "Events Log.txt";
    fs::remove_all(folder_);
    TableTest::TearDown();
  }

  static void LogAll(bool on) {
    Game.LogRolls = Game.LogBetChanges = Game.LogBetsWon = Game.LogBetsLost = on;
    Game.LogChipStackChanges = Game.LogPassesMisses = on;
    Game.LogShooterChanges = Game.LogBankrollChanges = on;
  }

  static void PutAll(std::initializer_list<std::pair<int, int>> changes) {
    for (const auto& [betId, change] : changes) Put(betId, change);
  }

  /// The lines written since the last call.
  std::string TakeLog() {
    const std::string text = ReadAll(Game.EventsLogFile);
    std::string lines = text.substr(taken_);
    taken_ = text.size();
    std::erase(lines, '\r');
    return lines;
  }

 private:
  fs::path folder_;
  std::string dataPath_;
  std::size_t taken_ = 0;
};

/// The lines of a roll behind the roll's own, joined by semicolons.
std::string OnOneLineEach(std::string log) {
  const std::string indent = "\n      ";
  for (std::size_t at = log.find(indent); at != std::string::npos; at = log.find(indent, at))
    log.replace(at, indent.size(), ";");
  return log;
}

TEST_F(RollLogTest, ASessionIsToldWhole) {
  LogAll(true);
  NewGame(false);
  PutAll({{PassLine, 10}, {Field, 5}});
  Roll(2, 4);
  AtmTransaction(AtmWithdrawal, 100);
  Put(Place8, 12);
  CallBet(Place8, CallCodeOff);
  Put(Come, 10);
  Roll(4, 4);
  CallBet(Place8, CallCodeOn);  // undoes the call
  PutAll({{PassLineOdds, 20}, {FirstChipStack, 50}});
  Roll(1, 2);
  AtmTransaction(AtmDeposit, Currency::FromRaw(15'000));
  Put(Place8, 6);
  CallBet(Place8, CallCodeOn);
  PutAll({{PassLineOdds, -10}, {FirstChipStack, -20}});
  Roll(4, 2);
  Put(Place8, -18);
  for (const auto& [die1, die2] : {std::pair{3, 4}, {5, 6}, {6, 6}, {4, 5}}) Roll(die1, die2);
  Put(DontCome, 10);
  Roll(2, 3);
  RemoveBet(DontCome4 + 1);
  Roll(3, 4);
  EXPECT_EQ(OnOneLineEach(TakeLog()),
            " New game started;Beginning bankroll: $500\n"
            "------New shooter coming out----------;$10 bet on Pass Line;$5 bet on Field\n"
            " Roll #1:  6 (2.4) from manual roll pad;Point established;Field bet lost $5;"
            "Bankroll decreased to $495 ($5 loss);"
            "Bankroll increased to $595 ($100 ATM withdrawal);$12 bet on Place 8;"
            "Place 8 bet called OFF;$10 bet on Come\n"
            " Roll #2:  8 (4.4) from manual roll pad;$10 Come bet moved to Come 8;"
            "Come 8 bet still $10;Place 8 bet, OFF button removed;$20 bet on Pass Line Odds;"
            "Chip-Stack #1 increased to $50\n"
            " Roll #3:  3 (1.2) from manual roll pad;"
            "Bankroll decreased to $593.50 ($1.50 ATM deposit);Place 8 bet increased to $18;"
            "Place 8 bet called ON;Pass Line Odds bet decreased to $10;"
            "Chip-Stack #1 decreased to $30\n"
            " Roll #4:  6 (4.2) from manual roll pad;Pass (point rolled);Pass Line bet won $10;"
            "Pass Line Odds bet won $12;Bankroll increased to $615.50 ($22 gain);"
            "Place 8 bet removed;Pass Line bet removed;Pass Line Odds bet removed\n"
            " Roll #5:  7 (3.4) from manual roll pad;Pass (natural);Come 8 bet lost $10;"
            "Bankroll decreased to $605.50 ($10 loss)\n"
            " Roll #6:  11 (5.6) from manual roll pad;Pass (natural)\n"
            " Roll #7:  12 (6.6) from manual roll pad;Miss (craps natural)\n"
            " Roll #8:  9 (4.5) from manual roll pad;Point established;$10 bet on Don't Come\n"
            " Roll #9:  5 (2.3) from manual roll pad;$10 Don't Come bet moved to Don't Come 5;"
            "Don't Come 5 bet removed\n"
            " Roll #10:  7 (3.4) from manual roll pad;Miss (seven-out)\n"
            "------New shooter coming out----------\n");
}

TEST_F(RollLogTest, WinsAndLossesStandInTheOrderOfTheDecisions) {
  Game.LogBetsWon = Game.LogBetsLost = Game.LogPassesMisses = true;
  for (const int id : {+Two, +DontPass, +PassLine, +Eleven, +Field}) Given(id, 10);
  Roll(5, 6);
  EXPECT_EQ(TakeLog(),
            "      Pass (natural)\n"
            "      Pass Line bet won $10\n"
            "      Don't Pass bet lost $10\n"
            "      Eleven bet won $150\n"
            "      Field bet won $10\n"
            "      Two bet lost $10\n");
}

TEST_F(RollLogTest, EachClassHasItsSwitch) {
  const struct {
    bool EventsLogSettings::*Switch;
    const char* Lines;
  } cases[] = {
      {&EventsLogSettings::LogRolls, " Roll #1:  4 (1.3) from manual roll pad\n"},
      {&EventsLogSettings::LogBetChanges, "      $10 bet on Field\n      $5 bet on Two\n"},
      {&EventsLogSettings::LogBetsWon, "      Field bet won $10\n"},
      {&EventsLogSettings::LogBetsLost, "      Two bet lost $5\n"},
      {&EventsLogSettings::LogChipStackChanges, "      Chip-Stack #5 increased to $1,000\n"},
      {&EventsLogSettings::LogPassesMisses, "      Point established\n"},
      {&EventsLogSettings::LogBankrollChanges, "      Bankroll increased to $505 ($5 gain)\n"},
  };
  for (const auto& c : cases) {
    for (const bool active : {true, false}) {
      LogAll(false);
      Game.EventsLogActive = false;
      NewGame(false);
      Game.EventsLogActive = active;
      Game.*c.Switch = true;
      PutAll({{Field, 10}, {Two, 5}, {105, 1000}});
      Roll(1, 3);
      EXPECT_EQ(TakeLog(), active ? c.Lines : "");
    }
  }
}

TEST_F(RollLogTest, ARollTellsWhereItsDiceCameFrom) {
  Game.LogRolls = true;
  const auto source = [this](const std::string& from) {
    RollDice();
    EXPECT_EQ(TakeLog(), " Roll #" + std::to_string(Game.RollCount[0]) + ":  " +
                             std::to_string(Game.RollTotal) + " (" + std::to_string(Game.Die1) +
                             "." + std::to_string(Game.Die2) + ")" + from + "\n");
  };
  source(" from RNG #1");
  Game.RngChoice = Rng3Congruence;
  Game.RngState = 12'345;
  source(" from RNG #3");
  Game.UseSkewedProbability = true;
  source(" from RNG #3 using untitled probability matrix");
  Game.PrbFileName = "loaded.prb";
  source(" from RNG #3 using probability matrix: loaded.prb");
  Game.DiceRollFile = Game.DataPath + "tape.rol";
  std::ofstream(Game.DiceRollFile, std::ios::binary) << static_cast<char>(DiceByte(2, 5));
  Game.RecorderStatus = Playback;
  source(" from " + Game.DiceRollFile);
  Game.RollCount[0] = 1'233;
  Roll(1, 1);
  EXPECT_EQ(TakeLog(), " Roll #1,234:  2 (1.1) from manual roll pad\n");
}

TEST_F(RollLogTest, AutoBetIsToldWhenItComesAndGoes) {
  const struct {
    int Active;
    const char* File;
    const char* Told;
  } rolls[] = {{1, "", "activated (untitled)"},
               {1, "", ""},
               {1, "/scripts/grind.bet", "activated (grind.bet)"},
               {0, "/scripts/grind.bet", "deactivated"},
               {0, "", "deactivated"}};
  Game.Script.resize(3);  // lines that do nothing
  Game.ScrCount = 3;
  for (const auto& roll : rolls) {
    Game.AutoBetActive = roll.Active;
    Game.AutoBetFile = roll.File;
    if (roll.Active + Game.AutoBetFile.size() == 0) Game.ScrCount = 0;
    Roll(1, 1);
    EXPECT_EQ(TakeLog(), *roll.Told ? std::string("      Auto-Bets ") + roll.Told + "\n" : "");
  }
}

TEST_F(RollLogTest, AWonBetThatCameDownIsRemovedButComeAndLostBetsAreNot) {
  Game.LogBetChanges = true;
  SetPoint(4);
  Establish(Come, 10);
  Establish(Field, 10);
  Establish(Two, 10);
  Roll(5, 6);
  TakeLog();
  Roll(1, 3);
  EXPECT_EQ(TakeLog(), "      Field bet removed\n");
}

TEST_F(RollLogTest, ANewGameOpensTheLog) {
  NewGame(false);
  const std::string start = " New game started\n      Beginning bankroll: $500\n";
  EXPECT_EQ(TakeLog(), start);
  Game.LogShooterChanges = true;
  NewGame(false);
  EXPECT_EQ(TakeLog(), "======================================\n" + start +
                           "------New shooter coming out----------\n");
  Game.ClearLogOnNew = true;
  Game.LogTopLine = 5;
  Game.LogShooterChanges = false;
  NewGame(false);
  EXPECT_EQ(ReadAll(Game.EventsLogFile), " New game started\r\n      Beginning bankroll: $500\r\n");
  EXPECT_EQ(Game.LogTopLine, 1);
  Game.EventsLogActive = false;
  NewGame(false);
  EXPECT_FALSE(fs::exists(Game.EventsLogFile)) << "cleared, and nothing is written";
  EXPECT_FALSE(fs::exists(EventsLogIndexPath()));
}

TEST_F(RollLogTest, TheIndexFindsEveryLineAndTheLatestRollIsOnTop) {
  Game.LogRolls = Game.LogPassesMisses = true;
  Game.KeepLatestRollOnTop = true;
  Roll(1, 3);
  Roll(2, 2);
  EXPECT_EQ(Game.LogTopLine, 3);
  EXPECT_EQ(ReadAll(EventsLogIndexPath()).size(), 4 * 4U);
}

TEST_F(RollLogTest, UnderHyperDriveTheLogIsWrittenBeforeEachTurnAndAtTheEnd) {
  Game.LogRolls = true;
  Game.HyperDriveOn = true;
  const auto lines = [] {
    return static_cast<int>(ReadAll(EventsLogIndexPath()).size() / kIndexRecord);
  };
  for (const int throttle : {0, 1}) {
    int turns = 0;
    int late = 0;
    TheHost.Yield = [&] {
      ++turns;
      if (lines() != Game.RollCount[0] || !LogIndexIsValid()) ++late;
    };
    Game.HyperThrottle = throttle;
    Game.NumAutoRolls = Game.AutoRollsLeft = throttle == 0 ? 1000 : 20;
    Game.KeepRolling = true;
    RollDice();
    EXPECT_GE(turns, throttle * 20);
    EXPECT_EQ(late, 0);
    EXPECT_EQ(lines(), Game.RollCount[0]);
  }
  EXPECT_EQ(Game.RollCount[0], 1020);
  Game.HyperDriveOn = false;
}

TEST_F(RollLogTest, ALogThatCannotBeWrittenLeavesTheGameGoing) {
  Game.LogRolls = true;
  Game.DataPath += "missing/";
  Game.EventsLogFile = Game.DataPath + "Events Log.txt";
  Given(Field, 5);
  Roll(1, 1);
  EXPECT_EQ(Bankroll(), Currency(510));
  EXPECT_NE(Game.LastErrorText.find("occurred, at: Write Log Line\n"), std::string::npos);
}

TEST_F(RollLogTest, ABetMovedOntoANumberThatWasDecidedIsTheNewOne) {
  LogAll(true);
  for (const int line : {+Come, +DontCome}) {
    SetPoint(6);
    for (const int amount : {10, 20}) {
      Given(line, amount);
      Roll(2, 3);
    }
    TakeLog();
    if (line == DontCome) RemoveBet(DontCome4 + 1);
    Roll(1, 2);
    const std::string log = TakeLog();
    EXPECT_NE(log.find(line == Come ? "Come 5 bet still $20\n" : "Don't Come 5 bet removed\n"),
              std::string::npos)
        << log;
    EXPECT_EQ(log.find("increased"), std::string::npos) << log;
  }
}

}  // namespace
