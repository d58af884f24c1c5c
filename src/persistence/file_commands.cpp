#include "persistence/file_commands.h"

#include <algorithm>
#include <array>
#include <climits>
#include <cstdint>
#include <filesystem>
#include <system_error>
#include <utility>

#include "autobet/script.h"
#include "autobet/script_file.h"
#include "core/ansi.h"
#include "core/error_report.h"
#include "core/file_failure.h"
#include "core/help_topics.h"
#include "core/host.h"
#include "core/messages.h"
#include "core/record_file.h"
#include "core/strange_files.h"
#include "dice/probability_file.h"
#include "dice/tape_edit.h"
#include "dice/tape_file.h"
#include "figures/games_log.h"
#include "persistence/game_file.h"
#include "stats/events_log.h"
#include "stats/events_log_view.h"

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kExtensionLength = 4;
constexpr std::string_view kAnyExtension = "*.*";

constexpr int kDone = 1;
constexpr int kRefused = 0;

constexpr std::array<FileCommandRow, kFileCommands> kRows = {{
    {FileCommand::OpenGame, "Open Game File", "*.crp"},
    {FileCommand::SaveGameAs, "Save Game File As", "*.crp"},
    {FileCommand::OpenDiceRolls, "Open Dice Roll File  or  Enter Name For A New File", "*.rol"},
    {FileCommand::CopyToDiceRolls, "Copy To Dice Roll File", "*.rol"},
    {FileCommand::CopyDiceRollsToText, "Copy Dice Rolls To Text File", "*.txt"},
    {FileCommand::PasteDiceRolls, "Paste From Dice Roll File", "*.rol"},
    {FileCommand::PasteDiceRollsFromText, "Paste From Ascii/Text File", "*.*"},
    {FileCommand::OpenScript, "Open Auto-Bet File", "*.bet"},
    {FileCommand::PasteScript, "Paste From Auto-Bet File", "*.bet"},
    {FileCommand::SaveScriptAs, "Save Auto-Bet File As", "*.bet"},
    {FileCommand::CopyToScript, "Copy To Auto-Bet File", "*.bet"},
    {FileCommand::CopyScriptToText, "Copy To Text File", "*.txt"},
    {FileCommand::SelectWave, "Select Wave File", "*.wav"},
    {FileCommand::SelectProbability, "Select Probability File", "*.prb"},
    {FileCommand::SelectOutput, "Select File  or  Enter New File Name", "*.*"},
    {FileCommand::SelectHotKeyScript, "Select Auto-Bet File for Hot-Key", "*.bet"},
    {FileCommand::OpenGamesLog, "Open Games Log", "*.glg"},
    {FileCommand::SaveGamesLogAs, "Save Games Log As", "*.glg"},
    {FileCommand::OpenEventsLog, "Open Events Log", "*.txt"},
    {FileCommand::SaveEventsLogAs, "Save Events Log As", "*.txt"},
    {FileCommand::OpenProbability, "Open Probability File", "*.prb"},
    {FileCommand::SaveProbabilityAs, "Save Probability File As", "*.prb"},
    {FileCommand::SelectGamesLogToMerge, "Merge Games Log", "*.glg"},
    {FileCommand::SelectGamesLogToCompare, "Compare With Games Log", "*.glg"},
    {FileCommand::SelectGamesLogExport, "Export Games Log To Text File", "*.txt"},
}};

std::string Lower(std::string_view text) {
  std::string lower(text);
  for (char& letter : lower) {
    if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter - 'A' + 'a');
  }
  return lower;
}

std::string_view LastOf(std::string_view text, std::size_t count) {
  return text.substr(text.size() - std::min(count, text.size()));
}

bool Exists(const std::string& path) {
  std::error_code ignored;
  return fs::exists(PathOf(path), ignored);
}

/// True for two names of one file, or two names that differ in the case of their letters alone.
bool IsSameFile(const std::string& one, const std::string& other) {
  if (one.empty() || other.empty()) return false;
  const auto plain = [](const std::string& path) {
    return Lower(TextOfPath(PathOf(path).lexically_normal()));
  };
  std::error_code ignored;
  return plain(one) == plain(other) || fs::equivalent(PathOf(one), PathOf(other), ignored);
}

/// Refuses for a reason of the game's own.
bool Refuse(FileCommand command, const std::string& path, const std::string& words) {
  Game.LastFileResult = kRefused;
  ShowMessage(FileText(path, words), std::string(RowOf(command).Title), kTopicFiles, OkStop);
  return false;
}

[[noreturn]] void FailForWant(std::errc reason) {
  throw std::system_error(std::make_error_code(reason));
}

// ---- The routines of the commands ----

bool Succeeded() { return Game.LastFileResult > 0; }

/// A companion of the game is another file now.
bool SucceededWithChange() {
  if (Succeeded()) Game.GameChanged = true;
  return Succeeded();
}

bool RunOpenGame(const std::string& path) {
  OpenGame(path, true);
  return Succeeded();
}

bool RunSaveGame(const std::string& path) {
  SaveGame(path);
  return Succeeded();
}

bool RunOpenDiceRolls(const std::string& path) {
  OpenDiceRollFile(path);
  if (Succeeded()) TrustFile(path);
  return SucceededWithChange();
}

constexpr const char* kNoRollsSelected = "can't be written: there are no dice rolls selected.";

bool RunCopyToDiceRolls(const std::string& path) {
  const RollSelection rolls = SelectedRolls();
  if (rolls.Count == 0) return Refuse(FileCommand::CopyToDiceRolls, path, kNoRollsSelected);
  if (IsSameFile(path, Game.DiceRollFile)) {
    return Refuse(FileCommand::CopyToDiceRolls, path,
                  "is the Dice Roll file in use, and can't be copied over.");
  }
  CopyRollsToFile(path, rolls.From, rolls.Count);
  return Succeeded();
}

/// The number of the first throw in a text; a selection from the middle may be numbered anew.
std::int64_t FirstNumber(std::int64_t from) {
  if (!Game.ShowRollNumbers || from == 1) return from;
  const bool anew = AskYesNo(
      "The rolls you've selected do not begin with roll #1.  Would you like to renumber them in "
      "the output starting with #1?",
      std::string(RowOf(FileCommand::CopyDiceRollsToText).Title), kTopicFiles);
  Game.MsgText.clear();  // a question tells of no failure
  return anew ? 1 : from;
}

bool RunCopyDiceRollsToText(const std::string& path) {
  const RollSelection rolls = SelectedRolls();
  if (rolls.Count == 0) return Refuse(FileCommand::CopyDiceRollsToText, path, kNoRollsSelected);
  if (!Game.ShowDieNumbers && !Game.ShowNumbersCalled) {
    ShowMessage(kNoOutputChosen, std::string(RowOf(FileCommand::CopyDiceRollsToText).Title),
                kTopicFiles, OkStop);
    Game.LastFileResult = kRefused;
    return false;
  }
  const RollTextOptions options{Game.ShowRollNumbers, Game.ShowDieNumbers, Game.ShowNumbersCalled};
  CopyRollsToText(path, rolls.From, rolls.Count, options, FirstNumber(rolls.From));
  return Succeeded();
}

constexpr const char* kNoTape = "can't be pasted: there's no Dice Roll file open.";

/// The position stands behind what came in, and nothing is selected.
bool PastedWithChange() {
  if (Succeeded()) GoToRoll(Game.DiceFilePos);
  return SucceededWithChange();
}

bool RunPasteDiceRolls(const std::string& path) {
  if (Game.DiceRollFile.empty()) return Refuse(FileCommand::PasteDiceRolls, path, kNoTape);
  PasteRollsFromFile(path, Game.DiceFilePos);
  return PastedWithChange();
}

bool RunPasteDiceRollsFromText(const std::string& path) {
  if (Game.DiceRollFile.empty()) return Refuse(FileCommand::PasteDiceRollsFromText, path, kNoTape);
  PasteRollsFromText(path, Game.DiceFilePos);
  return PastedWithChange();
}

/// Copying and pasting are at work while it lives.
class CopyMode {
 public:
  CopyMode() { Game.ScriptCopyMode = true; }
  ~CopyMode() { Game.ScriptCopyMode = false; }
  CopyMode(const CopyMode&) = delete;
  CopyMode& operator=(const CopyMode&) = delete;
};

bool RunOpenScript(const std::string& path) {
  OpenScript(path);
  return SucceededWithChange();
}

bool RunPasteScript(const std::string& path) {
  const CopyMode mode;
  OpenScript(path);
  return SucceededWithChange();
}

bool RunSaveScript(const std::string& path) {
  SaveScript(path);
  return Succeeded();
}

bool AnyLineSelected() {
  const auto end = Game.Script.begin() + Game.ScrCount;
  return std::any_of(Game.Script.begin(), end,
                     [](const ScriptLine& line) { return line.LineSelected; });
}

constexpr const char* kNoLinesSelected = "can't be written: there are no lines selected.";

bool RunCopyToScript(const std::string& path) {
  if (!AnyLineSelected()) return Refuse(FileCommand::CopyToScript, path, kNoLinesSelected);
  const CopyMode mode;
  SaveScript(path);
  return Succeeded();
}

bool RunCopyScriptToText(const std::string& path) {
  if (!AnyLineSelected()) return Refuse(FileCommand::CopyScriptToText, path, kNoLinesSelected);
  std::string text;
  for (int number = 1; number <= Game.ScrCount; ++number) {
    if (Line(number).LineSelected) text += ToAnsi(Line(number).LineText) + "\r\n";
  }
  FileReplacement file(path);
  file.Write(text);
  file.Finish();
  Game.LastFileResult = static_cast<int>(std::min<std::size_t>(text.size(), INT_MAX));
  return true;
}

/// The commands that only name a file.
bool SelectOnly(const std::string& path) {
  Game.SelectedFileName = path;
  return true;
}

bool RunOpenGamesLog(const std::string& path) {
  return OpenGamesLog(path) && SucceededWithChange();
}

bool RunSaveGamesLog(const std::string& path) {
  if (!SaveGamesLogAs(path)) {
    return Refuse(FileCommand::SaveGamesLogAs, path,
                  "can't be written: there is no Games Log yet.");
  }
  return SucceededWithChange();
}

bool RunOpenEventsLog(const std::string& path) {
  static_cast<void>(ReadRecords(path, 1));  // fails where there's nothing to read
  FlushEventsLog();                         // what is gathered belongs to the log in force
  Game.EventsLogFile = path;
  TrustFile(path);
  Game.LogTopLine = 1;
  EnsureLogIndex();
  Game.LastFileResult = kDone;
  return SucceededWithChange();
}

bool RunSaveEventsLog(const std::string& path) {
  if (!EventsLogExists()) {
    return Refuse(FileCommand::SaveEventsLogAs, path,
                  "can't be written: there is no Events Log yet.");
  }
  if (!MayWriteTo(Game.EventsLogFile, "the Events Log, and would be moved", "it stays where it is"))
    return false;
  // Moved onto itself the log would be lost.
  const bool moved = IsSameFile(path, Game.EventsLogFile) || MoveEventsLog(path);
  if (moved) TrustFile(path);
  Game.LastFileResult = moved ? kDone : kSystemFailed;
  return SucceededWithChange();
}

bool RunOpenProbability(const std::string& path) {
  LoadProbabilityFile(path);
  return SucceededWithChange();
}

bool RunSaveProbability(const std::string& path) {
  SaveProbabilityFile(path);
  return Succeeded();
}

// ---- The table of commands ----

enum class Needs { Nothing, File, Permission, PermissionToCopyOver };

struct Routine {
  const char* Done;  // of the file, in "can't be ..."
  Needs Before;
  bool (*Run)(const std::string& path);
  std::string_view QuestionTitle;  // where it isn't the title of the command
};

constexpr std::array<Routine, kFileCommands> kRoutines = {{
    {"read", Needs::File, RunOpenGame, {}},
    {"written", Needs::Permission, RunSaveGame, {}},
    {"opened", Needs::Nothing, RunOpenDiceRolls, {}},
    {"written", Needs::PermissionToCopyOver, RunCopyToDiceRolls, "Copy to Dice Roll File"},
    {"written", Needs::Permission, RunCopyDiceRollsToText, {}},
    {"pasted", Needs::File, RunPasteDiceRolls, {}},
    {"pasted", Needs::File, RunPasteDiceRollsFromText, {}},
    {"read", Needs::File, RunOpenScript, {}},
    {"pasted", Needs::File, RunPasteScript, {}},
    {"written", Needs::Permission, RunSaveScript, {}},
    {"written", Needs::Permission, RunCopyToScript, "Copy to Auto-Bet File"},
    {"written", Needs::Permission, RunCopyScriptToText, {}},
    {"chosen", Needs::Nothing, SelectOnly, {}},
    {"chosen", Needs::Nothing, SelectOnly, {}},
    {"chosen", Needs::Nothing, SelectOnly, {}},
    {"chosen", Needs::File, SelectOnly, {}},
    {"read", Needs::File, RunOpenGamesLog, {}},
    {"written", Needs::Permission, RunSaveGamesLog, {}},
    {"read", Needs::File, RunOpenEventsLog, {}},
    {"written", Needs::Permission, RunSaveEventsLog, {}},
    {"read", Needs::File, RunOpenProbability, {}},
    {"written", Needs::Permission, RunSaveProbability, {}},
    {"read", Needs::File, SelectOnly, {}},
    {"read", Needs::File, SelectOnly, {}},
    {"written", Needs::Permission, SelectOnly, {}},
}};

bool MayWriteOver(const std::string& path, const Routine& routine, std::string_view title) {
  if (FileLength(path) == 0) return true;
  const char* question = routine.Before == Needs::PermissionToCopyOver
                             ? "Do you want to copy over it?"
                             : "Do you want to overwrite it?";
  if (!routine.QuestionTitle.empty()) title = routine.QuestionTitle;
  return AskYesNo(BareName(path) + "\n\nis already on file.\n" + question, std::string(title),
                  kTopicFiles);
}

bool MayRun(FileCommand command, const Routine& routine, const std::string& path) {
  switch (routine.Before) {
    case Needs::Nothing: return true;
    case Needs::File:
      if (!Exists(path)) FailForWant(std::errc::no_such_file_or_directory);
      return true;
    default: return MayWriteOver(path, routine, RowOf(command).Title);
  }
}

/// What went wrong, unless the routine has told it itself.
void TellFailure(FileCommand command, const std::string& path) {
  if (!Game.MsgText.empty()) return;
  const char* done = kRoutines[static_cast<std::size_t>(command)].Done;
  ShowMessage(Game.LastFileResult == kRefused
                  ? FileText(path, "holds nothing that could be used here.")
                  : FileFailureText(path, done),
              std::string(RowOf(command).Title), kTopicFiles, OkStop);
}

// ---- Files in use ----

struct FileInUse {
  std::string GameState::*Path;
  std::string_view Kind;
  std::string_view Words;
};

constexpr std::array<FileInUse, 5> kFilesInUse = {{
    {&GameState::DiceRollFile, "Roll", "Dice Roll file"},
    {&GameState::AutoBetFile, "Auto-Bet", "Auto-Bet file"},
    {&GameState::PrbFileName, "Probability", "Probability file"},
    {&GameState::GamesLogFile, "Games", "Games Log"},
    {&GameState::EventsLogFile, "Events", "Events Log"},
}};

const FileInUse* FindFileInUse(const std::string& path) {
  const auto found = std::find_if(kFilesInUse.begin(), kFilesInUse.end(), [&](const auto& file) {
    return IsSameFile(path, Game.*file.Path);
  });
  return found == kFilesInUse.end() ? nullptr : &*found;
}

constexpr const char* kDeleteTitle = "Delete File";

void DeleteFile(const std::string& path) {
  if (!fs::remove(PathOf(path))) FailForWant(std::errc::no_such_file_or_directory);
}

}  // namespace

const FileCommandRow& RowOf(FileCommand command) {
  return kRows[static_cast<std::size_t>(command)];
}

std::optional<FileCommand> OpenCommandOf(std::string_view path) {
  for (const FileCommand command :
       {FileCommand::OpenGame, FileCommand::OpenScript, FileCommand::OpenDiceRolls,
        FileCommand::OpenProbability, FileCommand::OpenGamesLog})
    if (Lower(path).ends_with(LastOf(RowOf(command).Pattern, kExtensionLength))) return command;
  return std::nullopt;
}

std::string CompletePath(std::string_view typed, const std::string& folder,
                         std::string_view pattern) {
  const std::string name = Trimmed(std::string(typed));
  if (name.empty()) return {};
  std::string path = TextOfPath(fs::absolute(PathOf(folder) / PathOf(name)).lexically_normal());
  const std::string_view extension = LastOf(pattern, kExtensionLength);
  if (extension == kAnyExtension) return path;
  if (path.ends_with('.')) path += LastOf(extension, kExtensionLength - 1);
  if (Lower(path).ends_with(kFormerExtension)) return path;  // a file as it was before a save
  if (Lower(pattern).find(Lower(LastOf(path, kExtensionLength))) == std::string::npos)
    path += extension;
  return path;
}

bool RunFileCommand(FileCommand command, const std::string& path) {
  const Routine& routine = kRoutines[static_cast<std::size_t>(command)];
  bool succeeded = false;
  try {
    if (!MayRun(command, routine, path)) return false;
    Game.MsgText.clear();
    succeeded = routine.Run(path);
  } catch (const std::exception&) {
    Game.MsgText.clear();
    ReportError(std::string(RowOf(command).Title));
    Game.LastFileResult = kSystemFailed;
  }
  if (!succeeded) TellFailure(command, path);
  return succeeded;
}

std::string_view KindInUse(const std::string& path) {
  const FileInUse* file = FindFileInUse(path);
  return file ? file->Kind : std::string_view();
}

bool DeleteFileByKey(const std::string& path) {
  if (const FileInUse* file = FindFileInUse(path)) {
    ShowMessage(BareName(path) + "\n\ncan't be deleted, as it's the " + std::string(file->Words) +
                    " in use.",
                kDeleteTitle, kTopicFiles, OkStop);
    return false;
  }
  if (!AskYesNo("Are you sure you want to delete:\n\n" + BareName(path), kDeleteTitle, kTopicFiles))
    return false;
  try {
    DeleteFile(path);
  } catch (const std::exception&) {
    FileFailed(path, "deleted", kDeleteTitle, kDeleteTitle, kTopicFiles);
    return false;
  }
  TheHost.RefreshViews();  // a view of the deleted log begins anew
  return true;
}

std::string OpenFileOf(FileCommand command) {
  switch (command) {
    case FileCommand::OpenGame:
    case FileCommand::SaveGameAs: return Game.GameFileName;
    case FileCommand::OpenDiceRolls: return Game.DiceRollFile;
    case FileCommand::OpenScript:
    case FileCommand::SaveScriptAs: return Game.AutoBetFile;
    case FileCommand::OpenGamesLog:
    case FileCommand::SaveGamesLogAs: return Game.GamesLogFile;
    case FileCommand::OpenEventsLog:
    case FileCommand::SaveEventsLogAs: return Game.EventsLogFile;
    case FileCommand::OpenProbability:
    case FileCommand::SaveProbabilityAs: return Game.PrbFileName;
    default: return {};
  }
}
