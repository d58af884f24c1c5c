// The Events Log: a text file of what happened, with an index of line positions.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>

#include "core/game_state.h"

/// Appends one line (UTF-8 here, ANSI in the file) to the log and its position to the index.
/// Callers test `EventsLogActive` and the switch of their class first. During a run under
/// Hyper-Drive lines are gathered, up to about 1 MB, and written by `FlushEventsLog`. With
/// `KeepLatestRollOnTop` a roll's line, once written, is `LogTopLine`. A log that can't be written
/// is passed over: the reason goes to `LastErrorText`, the game goes on without those lines.
void WriteLogLine(const std::string& text);

/// The same for a line in parts.
void WriteLogLine(std::initializer_list<std::string_view> parts);

/// Writes the lines that were gathered, if any, in their order: log and index agree afterwards.
/// Called before the event loop gets a turn, at the end of a run, and before anything looks at the
/// log.
void FlushEventsLog();

/// Gathers the lines from here on. `ReleaseLogLines` lets them go where lines go;
/// `DropHeldLogLines` takes back those that haven't been written since.
void HoldLogLines();
void ReleaseLogLines();
void DropHeldLogLines();

/// True when the log records now, and `classSwitch` with it.
inline bool LogWants(bool classSwitch) { return Game.EventsLogActive && classSwitch; }

/// Why the log in use couldn't be written the last time, such as "the disk is full"; empty when it
/// could.
std::string LogWriteFailure();

/// Removes the log and its index, if they exist; `LogTopLine` is 1 then.
void ClearEventsLog();

/// Goes back to the log of the default name, "Events Log.txt" in `DataPath`, and empties it; the
/// log that was in use stays as a file of its own.
void BeginNewEventsLog();

/// The log of the default name.
std::string DefaultEventsLog();

/// True when `path` bears the default name, or none.
bool IsDefaultLogName(const std::string& path);

bool EventsLogExists();

/// The length of the log in bytes; 0 without one.
std::int64_t EventsLogLength();

/// How many bytes a million rolls would add to the log: what a roll has taken among its last lines,
/// or, where rolls aren't told, in the game so far. 0 while nothing tells it, or nothing is
/// recorded.
double LogGrowthOfMillionRolls();
