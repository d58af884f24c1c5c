// What the Games Log tells of a game, and the log that is in use.
#pragma once

#include <optional>
#include <span>
#include <string>

#include "figures/games_view.h"
#include "stats/games_file.h"

/// The record of the game as it stands: reads the bet tables and builds their totals row anew.
GameRecord FinishedGame();

/// Appends the game that is about to end to a log (`GatherGameRecord`); a game without rolls isn't
/// written, and none where the log has no name. Call it before `NewGame`. Failures are kept in
/// `LastErrorText`, and the game waits to be written with the next.
void AppendGameRecord(const std::string& file);

/// Takes a log into use. False for a file that is none, of which the player is told; nothing has
/// changed then. Throws std::system_error when the file can't be read. `LastFileResult` is its
/// length, 0 after a refusal.
bool OpenGamesLog(const std::string& path);

/// Copies the log in use, its dead records too, and goes on with the copy. False when there is none
/// yet. Throws std::system_error when the copy can't be written.
bool SaveGamesLogAs(const std::string& path);

/// Goes back to the log of the default name and empties it; the log that was in use stays as a file
/// of its own. With a game in progress the player is told where it will go. False when the log
/// can't be written, which the player is told too.
bool BeginNewGamesLog();

/// Asks which games to delete from the log in use, and deletes them. Tells what can't be done.
void AskAndDeleteGames();

/// Appends the live games of another log to the one in use, after a question that tells both
/// counts. Refuses the log itself and what is no log. True when games have been appended.
bool MergeGamesLog(const std::string& path);

/// Writes columns of the log in use as CSV. True when it is written; the player is told of a
/// failure.
bool ExportGamesLog(const std::string& path, std::span<const int> columns);

/// Asks for a break-point, with the one in force to start from. Nothing when the player cancels.
std::optional<BreakPoint> AskBreakPoint(const BreakPoint& now);

/// Asks for the value to look for in a column. Nothing when the player doesn't say.
std::optional<Currency> AskValueToFind(int column, const std::string& lastText);

/// True when two names are of one log.
bool IsSameLog(const std::string& one, const std::string& other);

/// True when `path` bears the default name, or none.
bool IsDefaultGamesLog(const std::string& path);

/// The path of the log of the default name.
std::string DefaultGamesLog();
