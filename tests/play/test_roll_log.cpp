// The Events Log of a session, line by line.
#include "stats/log_files.h"
#include "support/table_fixture.h"

namespace {

class RollLogTest : public FolderTest {
 protected:
  RollLogTest() {
    Game.EventsLogActive = true;
    Game.ReSeed = false;
    Game.AutoAdjust = AdjustManual;
    Game.HandleWinningBets = WinTakeDown;
    Game.Notify = 0;
  }

  static void PutAll(std::initializer_list<std::pair<int, int>> changes) {
    for (const auto& [betId, change] : changes) Put(betId, change);
  }

  /// The lines written since the last call.
  std::string TakeLog() {
    const std::string text = folder_.Read(kLog);
    std::string lines = text.substr(taken_);
    taken_ = text.size();
    std::erase(lines, '\r');
    return lines;
  }

  static constexpr const char* kLog = "Events Log.txt";
  static constexpr const char* kIndex = "Events Log.ref";

 private:
  std::size_t taken_ = 0;
};

TEST_F(RollLogTest, EachClassHasItsSwitch) {
  const std::pair<bool EventsLogSettings::*, const char*> cases[] = {
      {&EventsLogSettings::LogRolls, " Roll #1:  4 (1.3) from manual roll pad\n"},
      {&EventsLogSettings::LogBetChanges, "      $10 bet on Field\n      $5 bet on Two\n"},
      {&EventsLogSettings::LogBetsWon, "      Field bet won $10\n"},
      {&EventsLogSettings::LogBetsLost, "      Two bet lost $5\n"},
      {&EventsLogSettings::LogChipStackChanges, "      Chip-Stack #5 increased to $1,000\n"},
      {&EventsLogSettings::LogPassesMisses, "      Point established\n"},
      {&EventsLogSettings::LogBankrollChanges, "      Bankroll increased to $505 ($5 gain)\n"}};
  for (const auto& [logs, lines] : cases)
    for (const bool active : {true, false}) {
      static_cast<EventsLogSettings&>(Game) = EventsLogSettings();
      NewGame(false);
      Game.EventsLogActive = active;
      Game.*logs = true;
      PutAll({{Field, 10}, {Two, 5}, {105, 1000}});
      Roll(1, 3);
      EXPECT_EQ(TakeLog(), active ? lines : "");
    }
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
  EXPECT_EQ(folder_.Read(kLog), " New game started\r\n      Beginning bankroll: $500\r\n");
  EXPECT_EQ(Game.LogTopLine, 1);
  Game.EventsLogActive = false;
  NewGame(false);
  EXPECT_EQ(folder_.Count(), 0U) << "cleared, and nothing is written";
}

TEST_F(RollLogTest, UnderHyperDriveTheLogIsWrittenBeforeEachTurnAndAtTheEnd) {
  Game.LogRolls = true;
  Game.HyperDriveOn = true;
  const auto lines = [&] { return static_cast<int>(folder_.Read(kIndex).size() / kIndexRecord); };
  for (const int throttle : {0, 1}) {
    int turns = 0, late = 0;
    TheHost.Yield = [&] {
      ++turns;
      if (lines() != Game.RollCount[0] || !LogIndexIsValid()) ++late;
    };
    Game.HyperThrottle = throttle;
    Game.NumAutoRolls = Game.AutoRollsLeft = throttle == 0 ? 1000 : 20;
    Game.KeepRolling = true;
    RollDice();
    EXPECT_TRUE(turns >= throttle * 20 && late == 0) << turns << " turns, " << late << " late";
    EXPECT_EQ(lines(), Game.RollCount[0]);
  }
  EXPECT_EQ(Game.RollCount[0], 1020);
  Game.HyperDriveOn = false;
}

TEST_F(RollLogTest, ABetMovedOntoANumberThatWasDecidedIsTheNewOne) {
  LogEverything();
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
    const char* told = line == Come ? "Come 5 bet still $20\n" : "Don't Come 5 bet removed\n";
    EXPECT_TRUE(log.find(told) != log.npos && log.find("increased") == log.npos) << log;
  }
}

}  // namespace
