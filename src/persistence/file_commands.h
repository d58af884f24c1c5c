// What the file screen does: one command for each of its titles.
#pragma once

#include <optional>
#include <string>
#include <string_view>

enum class FileCommand {
  OpenGame,
  SaveGameAs,
  OpenDiceRolls,
  CopyToDiceRolls,
  CopyDiceRollsToText,
  PasteDiceRolls,
  PasteDiceRollsFromText,
  OpenScript,
  PasteScript,
  SaveScriptAs,
  CopyToScript,
  CopyScriptToText,
  SelectWave,
  SelectProbability,
  SelectOutput,
  SelectHotKeyScript,
  OpenGamesLog,
  SaveGamesLogAs,
  OpenEventsLog,
  SaveEventsLogAs,
  OpenProbability,
  SaveProbabilityAs,
  SelectGamesLogToMerge,
  SelectGamesLogToCompare,
  SelectGamesLogExport,
};
inline constexpr int kFileCommands = 25;

/// What a text or print of throws is refused with while it would hold nothing.
inline constexpr const char* kNoOutputChosen =
    "You must check at least one of the following boxes found under Output Options:\n\n"
    "Include individual die #'s\nInclude numbers called";

/// The words and the pattern of a command ("*.crp"), as its screen shows them.
struct FileCommandRow {
  FileCommand Command;
  std::string_view Title;
  std::string_view Pattern;
};
const FileCommandRow& RowOf(FileCommand command);

/// The command that opens a file of this name ("x.crp" a game, "x.bet" a script, "x.rol" a tape,
/// "x.prb" skewed dice, whatever the case); nothing for other files.
std::optional<FileCommand> OpenCommandOf(std::string_view path);

/// The full path of a typed name: trimmed, completed by the pattern's extension, in `folder` (with
/// or without a trailing separator), where a relative name begins; empty for an empty name.
std::string CompletePath(std::string_view typed, const std::string& folder,
                         std::string_view pattern);

/// Runs a command on a path: asks before a file of any length is overwritten, and calls the routine
/// of the command. True when it succeeded and the screen may close; `SelectedFileName` has the path
/// of the selecting commands, `LastFileResult` the result of the others. What fails has told why.
bool RunFileCommand(FileCommand command, const std::string& path);

/// The kind of file that the game has in use at `path` ("Roll", "Auto-Bet", "Probability", "Games",
/// "Events"), compared in lower case; empty for none.
std::string_view KindInUse(const std::string& path);

/// The delete key on a file: refuses one in use, asks, and deletes. True when it is gone.
bool DeleteFileByKey(const std::string& path);

/// The file of that kind which is open now, for the name box of the screen; empty for none.
std::string OpenFileOf(FileCommand command);
