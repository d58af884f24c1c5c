// What the Games Log tells of a game, and the log that is in use.
#pragma once

#include <string>

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

/// True when `path` bears the default name, or none.
bool IsDefaultGamesLog(const std::string& path);

/// The path of the log of the default name.
std::string DefaultGamesLog();
