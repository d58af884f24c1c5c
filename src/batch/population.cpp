#include "batch/population.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <utility>

#include "autobet/checker.h"
#include "autobet/engine.h"
#include "autobet/language.h"
#include "autobet/paths.h"
#include "autobet/script.h"
#include "autobet/script_file.h"
#include "batch/failure.h"
#include "batch/stream.h"
#include "bets/headless_host.h"
#include "bets/new_game.h"
#include "core/record_file.h"
#include "dice/generators.h"
#include "dice/probability_file.h"
#include "dice/tape_file.h"
#include "figures/games_log.h"
#include "persistence/game_file.h"
#include "play/course.h"
#include "play/roll_cycle.h"
#include "play/start_up.h"
#include "rules/defaults.h"

namespace {

/// The folder of a file, with a trailing separator, empty for the current one.
std::string FolderOf(const std::string& path) {
  const std::size_t slash = path.find_last_of('/');
  return slash == std::string::npos ? std::string() : path.substr(0, slash + 1);
}

/// A message of the engine in one line.
std::string InOneLine(const std::string& text) {
  std::string line;
  for (const char letter : text) {
    const bool blank = letter == '\n' || letter == ' ';
    if (!blank || !line.ends_with(' ')) line += blank ? ' ' : letter;
  }
  return RightTrimmed(line);
}

/// Folds the bytes of a file into a number, by the FNV-1a rule.
std::uint64_t FoldFile(std::uint64_t fold, const std::string& path) {
  std::ifstream file(PathOf(path), std::ios::binary);
  for (char byte = 0; file.get(byte);) {
    fold ^= static_cast<unsigned char>(byte);
    fold *= 0x100000001B3U;
  }
  return fold;
}

bool SeedsDice(int action) {
  return action == SelectRng || action == SelectRngValue || action == SelectRngValueOfLast ||
         (action >= SeedWithClock && action <= SeedWithValue) || action == SeedWithValueOfLast;
}

bool WritesOutput(int action) {
  return action == OpenOutput || action == AppendOutput || action == CloseOutput ||
         action == OutputMessage || action == OutputValue || action == OutputValueOfLast ||
         action == OutputNewLine;
}

/// "line 3" or "lines 3, 5, 9".
std::string LinesText(const std::vector<int>& lines) {
  std::string text = lines.size() == 1 ? "line " : "lines ";
  for (const int line : lines) text += (line == lines.front() ? "" : ", ") + std::to_string(line);
  return text;
}

/// What a game may change and a new game leaves as it is.
void PutBack(const GameState& beginning) {
  static_cast<Settings&>(Game) = beginning;
  static_cast<AutoPlaySettings&>(Game) = beginning;
  static_cast<DiceState&>(Game) = beginning;
  Game.Bets = beginning.Bets;
  Game.InvestedBankroll = beginning.InvestedBankroll;
  Game.ChipStackName = beginning.ChipStackName;
  Game.Flags = beginning.Flags;
  Game.FlagsTouched = true;
  Game.PrbFileName = beginning.PrbFileName;
  Game.Die1 = beginning.Die1;
  Game.Die2 = beginning.Die2;
  Game.RollTotal = beginning.RollTotal;
  Game.PrevDie1 = beginning.PrevDie1;
  Game.PrevDie2 = beginning.PrevDie2;
  Game.ShowStepsMode = 0;
  Game.LastErrorText.clear();
  Game.StopMessage.clear();
}

}  // namespace

Population::Population(const PopulationPlan& plan) : plan_(plan), formerHost_(TheHost) {
  TheHost = HeadlessHost();
  TheHost.ShowMessage = [this, answer = TheHost.ShowMessage](bool modal) {
    asked_ = true;
    if (told_.empty()) told_ = InOneLine(Game.MsgText);
    answer(modal);
  };
  TheHost.Yield = [this] {
    if (OnTurn) OnTurn();
  };
  TheHost.ScriptEndsGame = [this] {
    if (!played_) TakeResult(EndReason::NewGame);
    Game.KeepRolling = false;
    return false;
  };
  try {
    StartAfresh();
    LayDownDefaults();
    Game.MissingRngFiles = kGeneratorsLeftOut;
    OpenGameFile();
    OpenScriptFile();
    PassOverLines();
    LayDown();
  } catch (...) {
    TheHost = formerHost_;
    throw;
  }
}

Population::~Population() {
  Game.Course = {};
  Game.HyperDriveOn = false;
  Game.TalliesUnread = false;
  TheHost = formerHost_;
}

void Population::OpenGameFile() {
  fingerprint_ = 0xCBF29CE484222325U;
  if (!plan_.GameFile.empty()) {
    const std::string& path = plan_.GameFile;
    if (FileLength(path) == 0) throw BatchFailure(path + ": there is no such game");
    Game.DataPath = FolderOf(path);  // where unsaved dice of the last session lie
    told_.clear();
    OpenGameAlone(path);
    if (Game.LastFileResult <= 0) throw BatchFailure(path + ": " + told_);
    if (Game.UseSkewedProbability && Game.PrbFileName.empty())
      throw BatchFailure(path + ": its skewed dice can't be read" +
                         (told_.empty() ? ", as they were never saved" : ". " + told_));
    if (!told_.empty()) notes_.push_back(path + ": " + told_);
    fingerprint_ = FoldFile(fingerprint_, path);
    if (Game.UseSkewedProbability) fingerprint_ = FoldFile(fingerprint_, Game.PrbFileName);
  }
  if (plan_.Rng > 0) Game.RngChoice = plan_.Rng - 1;
  const std::string name = "RNG #" + std::to_string(Game.RngChoice + 1);
  if (!HasOwnSequences(Game.RngChoice))
    throw BatchFailure(name + " has too few sequences to give each game its own dice: choose #1, " +
                       "#2 or #8 in the game, or by --rng");
  const int chosen = Game.RngChoice;
  CorrectRngChoice();
  if (Game.RngChoice != chosen) throw BatchFailure("this program was built without " + name);
}

void Population::OpenScriptFile() {
  const std::string& path = plan_.Script;
  if (FileLength(path) == 0) throw BatchFailure(path + ": there is no such script");
  Game.AppPath = FolderOf(path);  // files that the script names without a folder lie beside it
  told_.clear();
  OpenWholeScript(path);
  if (Game.LastFileResult <= 0) throw BatchFailure(path + ": " + told_);
  if (Game.ScrCount == 0) throw BatchFailure(path + ": the script has no lines");
  const ScriptFault fault = FindScriptFault();
  if (!fault.Text.empty())
    throw BatchFailure(path + ", line " + std::to_string(fault.LineNumber) + ": " +
                       InOneLine(fault.Text));
  fingerprint_ = FoldFile(fingerprint_, path);
}

/// Lines that reach outside become remarks; files that others read must be there.
void Population::PassOverLines() {
  std::vector<int> seeding;
  std::vector<int> writing;
  const bool skewed = Game.UseSkewedProbability;
  const ProbabilityMatrix matrix = Game.ProbMatrix;
  const std::string matrixName = Game.PrbFileName;
  for (int number = 1; number <= Game.ScrCount; ++number) {
    const int action = ActionOf(number);
    if (SeedsDice(action)) seeding.push_back(number);
    if (WritesOutput(action)) writing.push_back(number);
    if (action == ActivateProbability) {
      const std::string path = PathIn(Game.AppPath, Trimmed(Line(number).LineName));
      told_.clear();
      LoadProbabilityFile(path);
      if (Game.LastFileResult <= 0)
        throw BatchFailure(plan_.Script + ", line " + std::to_string(number) + ": " + told_);
      fingerprint_ = FoldFile(fingerprint_, path);
    }
  }
  Game.UseSkewedProbability = skewed;
  Game.ProbMatrix = matrix;
  Game.PrbFileName = matrixName;
  Game.ProbabilityChanged = false;
  for (const std::vector<int>* lines : {&seeding, &writing})
    for (const int number : *lines) Line(number).LineKind = RemarkLine;
  ScriptEdited();
  if (!seeding.empty())
    notes_.push_back(plan_.Script + ": " + LinesText(seeding) +
                     " passed over: each game keeps the dice of its own");
  if (!writing.empty())
    notes_.push_back(plan_.Script + ": " + LinesText(writing) +
                     " passed over: no output file is written");
}

void Population::LayDown() {
  // Nobody is there to be asked for a bankroll.
  if (Game.BankrollInitType == PromptForBankroll) Game.BankrollInitType = StartWithAmount;
  Game.ReSeed = false;
  Game.UserSeed = false;
  Game.Notify &= ~NoticeAutoBetHyper;
  Game.AutoBetActive = 1;
  Game.ScriptChanged = false;
  Game.EventsLogActive = false;
  Game.ClearLogOnNew = false;
  Game.GamesLogFile.clear();
  Game.RecorderStatus = RecorderOff;
  Game.BankrollAutoPrint = false;
  Game.AutoRollDice = false;
  Game.HyperThrottle = 0;
  Game.NumAutoRolls = plan_.Rolls;
  Game.TalliesUnread = true;
  beginning_ = std::make_unique<GameState>(Game);
}

void Population::BeginGame(std::int64_t index) {
  index_ = index;
  played_.reset();
  asked_ = false;
  PutBack(*beginning_);
  Game.HyperDriveOn = true;
  NewGame(false);
  SeedGameDice(plan_.Seed, static_cast<std::uint64_t>(index));
  BeginCourse();
}

EndReason Population::ReasonOfEnd() const {
  if (!Game.LastErrorText.empty()) return EndReason::Fault;
  if (asked_) return EndReason::Question;
  if (Abs(Bankroll()) > kRollingLimit) return EndReason::BankLimit;
  if (Game.RollCount[AnyRoll] < plan_.Rolls) return EndReason::Stopped;
  return EndReason::Rolls;
}

void Population::TakeResult(EndReason ended) {
  EndCourse();
  const GameCourse& course = Game.Course;
  played_ = PlayedGame{FinishedGame(),
                       {index_, ended, std::max(Game.BankrollHigh, Bankroll()),
                        std::min(Game.BankrollLow, Bankroll()), course.DeepestFall,
                        course.MostAtRisk, course.LongestLosingStreak, course.RefusedBets},
                       {}};
}

void Population::PlayOut() {
  Game.KeepRolling = true;
  RunInitializingCycle();
  if (Game.KeepRolling) RollDice();
  Game.HyperDriveOn = false;
  Game.KeepRolling = false;
  if (!played_) TakeResult(ReasonOfEnd());
  played_->Fault = InOneLine(Game.LastErrorText);
}

std::optional<PlayedGame> Population::Play(std::int64_t index) {
  BeginGame(index);
  PlayOut();
  if (played_->Record[RollsColumn] == 0) return std::nullopt;
  return std::exchange(played_, std::nullopt);
}

std::int64_t Population::Record(std::int64_t index, const std::string& tape) {
  BeginGame(index);
  OpenDiceRollFile(tape);
  if (Game.LastFileResult < 0) throw BatchFailure(tape + ": " + InOneLine(Game.LastErrorText));
  Game.RecorderStatus = Recording;
  PlayOut();
  const bool kept = Game.RecorderStatus == Recording;
  CloseDiceRollFile();
  if (!kept) throw BatchFailure(tape + ": can't be written: " + InOneLine(Game.LastErrorText));
  return static_cast<std::int64_t>(played_->Record[RollsColumn].ToDouble());
}
