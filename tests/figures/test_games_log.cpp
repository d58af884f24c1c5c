#include "figures/games_log.h"

#include "autobet/script_reader.h"
#include "autoplay/hyper_drive.h"
#include "support/table_fixture.h"

namespace {

class GamesLog : public FolderTest {
 protected:
  GamesLog() { Game.ReSeed = false; }

  std::vector<GameRecord> Games() const {
    const GamesLogReader log(Game.GamesLogFile);
    return log.Read(1, log.Count());
  }
};

TEST_F(GamesLog, ARecordHoldsTheMoneyOfTheGame) {
  AppendGameRecord(Game.GamesLogFile);
  EXPECT_EQ(CountGames(Game.GamesLogFile), 0) << "a game without rolls isn't written";
  Game.HandleWinningBets = WinTakeDown;
  Game.Bets[ChipStackBase] = 3;
  Game.Bets[ChipStackBase + 19] = 77;
  Given(Field, 10);
  Roll(2, 2);  // wins 10
  Given(Field, 15);
  Roll(3, 2);  // loses 15
  Given(Seven, 5);
  Roll(3, 3);  // loses 5
  AppendGameRecord(Game.GamesLogFile);
  const GameRecord game = Games().at(0);
  const std::array<double, 12> expected = {3, 3, 1, 2, -1, 30, 10, 20, -10, -33.3333, 500, 490};
  for (std::size_t column = 0; column < expected.size(); ++column)
    EXPECT_EQ(game[column], Currency::FromDouble(expected[column]))
        << GameColumnName(static_cast<int>(column));
  EXPECT_EQ(game[FirstStackColumn], Currency(3));
  EXPECT_EQ(game[FirstStackColumn + 19], Currency(77));
  NewGame(false);
  Roll(2, 2);
  AppendGameRecord(Game.GamesLogFile);
  EXPECT_EQ(Games().at(1)[AdvantageColumn], Currency(0)) << "nothing was wagered";
}

TEST_F(GamesLog, AScriptWritesEachGameThatItEnds) {
  LoadScript(
      "When . . .\nThe # of rolls in the game are equal to 10\nthen . . .\nReset table\n"
      "Do this . . .\nBet $ 5 on Field\n");
  Game.AutoBetActive = 1;
  SeedDice(7);
  int turns = 0;
  TheHost.Yield = [&] {
    if (!Game.RollInProgress) return;
    const auto games = CountGames(Game.GamesLogFile);
    if (++turns == 5) Game.KeepRolling = false;
    EXPECT_EQ(games, turns * 256 / 10) << "written before anybody looks";
  };
  TheHost.Milliseconds = [now = 0U]() mutable { return now += 30; };
  ToggleHyperDrive();
  const auto games = Games();
  EXPECT_EQ(games.size(), 128U);  // of 5 times 256 rolls
  Currency handle;
  for (const GameRecord& game : games) {
    EXPECT_EQ(game[RollsColumn], Currency(10));
    EXPECT_EQ(game[InvestedColumn] + game[DollarsNetColumn], game[EndingBankrollColumn]);
    handle += game[HandleColumn];
  }
  EXPECT_GT(handle, Currency(128 * 2 * 5));
}

}  // namespace
