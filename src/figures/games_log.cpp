#include "figures/games_log.h"

#include <algorithm>
#include <cctype>
#include <climits>
#include <filesystem>

#include "core/error_report.h"
#include "core/game_state.h"
#include "core/help_topics.h"
#include "core/messages.h"
#include "stats/bet_tables.h"

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kDefaultName = "default.glg";
constexpr int kTotals = 0;
constexpr double kPercent = 100;

/// `part` as a percentage of `whole`, 0 where there is no whole.
Currency PercentOf(Currency part, Currency whole) {
  if (whole == 0) return 0;
  return Currency::FromDouble(kPercent * static_cast<double>(part.Raw()) /
                              static_cast<double>(whole.Raw()));
}

int LengthAsResult(const std::string& path) {
  return static_cast<int>(std::min<std::uintmax_t>(FileLength(path), INT_MAX));
}

}  // namespace

GameRecord FinishedGame() {
  SumBetStats(Lay4, LastBet, true);
  const BetStats& wagers = Game.BetWagers[Actual][kTotals];
  const BetStats& wins = Game.BetWins[Actual][kTotals];
  const BetStats& losses = Game.BetLosses[Actual][kTotals];
  GameRecord game;
  game[RollsColumn] = Game.RollCount[AnyRoll];
  game[BetsDecidedColumn] = wagers[StatCount];
  game[BetsWonColumn] = wins[StatCount];
  game[BetsLostColumn] = losses[StatCount];
  game[BetsNetColumn] = wins[StatCount] - losses[StatCount];
  game[HandleColumn] = wagers[StatSum];
  game[DollarsWonColumn] = wins[StatSum];
  game[DollarsLostColumn] = losses[StatSum];
  game[DollarsNetColumn] = wins[StatSum] - losses[StatSum];
  game[AdvantageColumn] = PercentOf(game[DollarsNetColumn], game[HandleColumn]);
  game[InvestedColumn] = Game.InvestedBankroll;
  game[EndingBankrollColumn] = Bankroll();
  std::copy_n(Game.Bets.begin() + ChipStackBase, kGameColumns - FirstStackColumn,
              game.begin() + FirstStackColumn);
  return game;
}

void AppendGameRecord(const std::string& file) {
  if (file.empty() || Game.RollCount[AnyRoll] == 0) return;
  try {
    GatherGameRecord(file, FinishedGame());
  } catch (...) {
    ReportError("Append Game Record");
  }
}

bool OpenGamesLog(const std::string& path) {
  FlushGamesLog();  // what is gathered belongs to the log in force
  if (!IsGamesLog(path)) {
    Game.LastFileResult = 0;
    ShowMessage(BareName(path) +
                    "\nis either from an older version, has been corrupted, or is not a true "
                    "Kelvanor Games File",
                "Unable to Open Kelvanor Games File", kTopicFiles, OkStop);
    return false;
  }
  Game.GamesLogFile = path;
  Game.LastFileResult = LengthAsResult(path);
  return true;
}

bool SaveGamesLogAs(const std::string& path) {
  FlushGamesLog();
  std::error_code ignored;
  if (!fs::exists(PathOf(Game.GamesLogFile), ignored)) return false;
  if (!fs::equivalent(PathOf(path), PathOf(Game.GamesLogFile), ignored))
    CopyGamesLog(Game.GamesLogFile, path);
  Game.GamesLogFile = path;
  Game.LastFileResult = std::max(LengthAsResult(path), 1);
  return true;
}

std::string DefaultGamesLog() { return Game.DataPath + std::string(kDefaultName); }

bool IsDefaultGamesLog(const std::string& path) {
  const std::string name = BareName(path);
  return path.empty() || std::equal(name.begin(), name.end(), kDefaultName.begin(),
                                    kDefaultName.end(), [](char one, char other) {
                                      return std::tolower(static_cast<unsigned char>(one)) ==
                                             std::tolower(static_cast<unsigned char>(other));
                                    });
}
