// The game file (`.crp`): all of a game in records of 256 bytes.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "persistence/companions.h"

/// What is added to the name of a game file when its former content is kept.
inline constexpr std::string_view kFormerExtension = ".bak";

/// Writes the game to `path`; the old file stays whole until the new one is complete, and then as a
/// `.bak` beside it. On
/// `default.crp` it also writes what isn't saved elsewhere (an untitled script, an unsaved matrix)
/// beside it. Afterwards the game is unchanged as far as saving goes, and `GameFileName` is the
/// path (empty for `default.crp`). `LastFileResult` is the length written, or -1 when the system
/// failed, or 0 in the middle of a roll: then nothing has changed and the player is told why. When
/// only something beside `default.crp` couldn't be written, it is -1 and all else is written.
void SaveGame(const std::string& path);

/// Reads a game; of a file that isn't as it was written the player is asked first, and it becomes a
/// game without a name, as a `.bak` does. `tellRefusal`: the player asked for the file and is told
/// when it is none. Tells of companion files that are missing or have changed. A file that can't be
/// a game leaves everything as it was; a value that can't stand is put to its nearest legal one.
/// `LastFileResult` is the length, 0 after a refusal (in the middle of a roll too), -1 when the
/// system failed.
void OpenGame(const std::string& path, bool tellRefusal);

/// Reads a game as `OpenGame` does, refusals told, and of its companions the skewed dice alone.
/// Nothing else is opened and nothing is written: no script, tape, log or output file is in use
/// afterwards.
void OpenGameAlone(const std::string& path);

/// Keeps a copy of the game that a script is about to end, in `DataPath`. Under Hyper-Drive, of
/// games that end within 100 milliseconds of each other, the first.
void SaveGameToTemp();

/// The records that a file of the game has, after what is unsaved was written; that may throw.
std::vector<Record> MakeGameRecords(const KeepUnsaved& unsaved);

/// True for the file of the last session (compared by its bare name, in lower case).
bool IsDefaultGame(const std::string& path);
