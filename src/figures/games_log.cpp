#include "figures/games_log.h"

#include <algorithm>
#include <cctype>
#include <climits>
#include <filesystem>

#include "core/error_report.h"
#include "core/file_failure.h"
#include "core/game_state.h"
#include "core/help_topics.h"
#include "core/host.h"
#include "core/messages.h"
#include "core/progress.h"
#include "core/text.h"
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

constexpr const char* kNewTitle = "New Games Log";
constexpr const char* kDeleteTitle = "Delete Games";
constexpr const char* kMergeTitle = "Merge Games Log";
constexpr const char* kExportTitle = "Export Games Log";

void Tell(const std::string& text, const char* title) {
  ShowMessage(text, title, kTopicGamesLog, OkStop);
}

/// Work on the log in use: shows how far it has come, tells of a failure, and brings all views up
/// to date. False when it has failed or was ended by the player.
template <class Work>
bool WorkOn(const std::string& path, const char* done, const char* title, Work work) {
  bool succeeded = false;
  try {
    FlushGamesLog();
    Progress progress(title);
    succeeded = work([&progress](double share) { progress.Show(share); });
  } catch (const WorkEnded&) {
    Game.LastFileResult = 0;
  } catch (const std::exception&) {
    FileFailed(path, done, title, title, kTopicGamesLog);
  }
  TheHost.RefreshViews();
  return succeeded;
}

bool IsBlank(const std::string& text) { return text.find_first_not_of(' ') == std::string::npos; }

/// Two numbers that were typed, in their order; a blank second one is the first again.
BreakPoint TypedRange() {
  const bool single = IsBlank(Game.MsgInput[1]);
  const auto [low, high] =
      std::minmax(Game.ChangeRequest, single ? Game.ChangeRequest : Game.ChangeRequest2);
  return {low, high};
}

std::string GamesText(std::int64_t games) {
  return CountText(games) + (games == 1 ? " game" : " games");
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
  if (!IsSameLog(path, Game.GamesLogFile)) CopyGamesLog(Game.GamesLogFile, path);
  Game.GamesLogFile = path;
  Game.LastFileResult = std::max(LengthAsResult(path), 1);
  return true;
}

bool BeginNewGamesLog() {
  const std::string path = DefaultGamesLog();
  if (!WorkOn(path, "written", kNewTitle, [&](const ShowShare&) {
        WriteEmptyGamesLog(path);
        return true;
      }))
    return false;
  Game.GamesLogFile = path;
  if (Game.RollCount[AnyRoll] > 0)
    ShowMessage(
        "Note:  There's currently a game in progress which will be added to this new Games Log "
        "when it's finished.",
        "Game in progress will be added to new Games Log", kTopicGamesLog, OkTick);
  return true;
}

void AskAndDeleteGames() {
  Game.MsgInput = {};
  ShowMessage("Enter the game number or range of game \nnumbers that you'd like to delete:",
              kDeleteTitle, kTopicGamesLog, TwoInputsOkCancel);
  if (Game.MsgAnswer != AnswerOk || IsBlank(Game.MsgInput[0] + Game.MsgInput[1])) return;
  const BreakPoint typed = TypedRange();
  const auto first = static_cast<std::int64_t>(Int(typed.Low.ToDouble()));
  const auto last = static_cast<std::int64_t>(Int(typed.High.ToDouble()));
  WorkOn(Game.GamesLogFile, "changed", kDeleteTitle, [&](const ShowShare& show) {
    const bool deleted = DeleteGames(Game.GamesLogFile, first, last, show);
    if (!deleted) Tell("No games deleted.  Entry out of range.", kDeleteTitle);
    return deleted;
  });
}

bool MergeGamesLog(const std::string& path) {
  const std::string& log = Game.GamesLogFile;
  if (IsSameLog(path, log)) {
    Tell(FileText(path, "can't be merged into itself."), kMergeTitle);
    return false;
  }
  return WorkOn(path, "merged", kMergeTitle, [&](const ShowShare& show) {
    const GamesLogReader source(path);
    const std::string question = "Do you want to append the " + GamesText(source.Count()) + " of " +
                                 BareName(path) + " to the " + GamesText(CountGames(log)) + " of " +
                                 BareName(log) + "?";
    if (source.Count() == 0) {
      Tell(FileText(path, "holds no games."), kMergeTitle);
      return false;
    }
    if (!AskYesNo(question, kMergeTitle, kTopicGamesLog)) return false;
    GamesLogWriter(log).Append(source, show);
    return true;
  });
}

bool ExportGamesLog(const std::string& path, std::span<const int> columns) {
  return WorkOn(path, "written", kExportTitle, [&](const ShowShare& show) {
    ExportGames(Game.GamesLogFile, columns, path, show);
    return true;
  });
}

std::optional<BreakPoint> AskBreakPoint(const BreakPoint& now) {
  Game.MsgInput = {PlainText(now.Low), now.Low == now.High ? "" : PlainText(now.High)};
  ShowMessage("Enter the break-point or range that you'd \nlike to use to sort this data:",
              "Set Break-point", kTopicGamesLog, TwoInputsOkCancel);
  if (Game.MsgAnswer != AnswerOk) return std::nullopt;
  return TypedRange();
}

std::optional<Currency> AskValueToFind(int column, const std::string& lastText) {
  Game.MsgInput = {"", lastText};
  ShowMessage("Enter the value you'd like to find for:\n\n" + GameColumnName(column) +
                  "\n\nIf found, the line will appear at the top of the data box.",
              "Find", kTopicGamesLog, InputOkCancel);
  const bool blank = IsBlank(Game.MsgInput[0] + Game.MsgInput[1]);
  if (Game.MsgAnswer != AnswerOk || blank) return std::nullopt;
  return Game.ChangeRequest;
}

bool IsSameLog(const std::string& one, const std::string& other) {
  std::error_code ignored;
  return one == other || fs::equivalent(PathOf(one), PathOf(other), ignored);
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
