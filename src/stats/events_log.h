// The Events Log: a text file of what happened, with an index of line positions.
#pragma once

#include <string>

#include "core/game_state.h"

/// Appends one line (UTF-8 here, ANSI in the file) to the log and its position to the index.
/// Callers test `EventsLogActive` and the switch of their class first. During a run under
/// Hyper-Drive lines are gathered, up to about 1 MB, and written by `FlushEventsLog`. With
/// `KeepLatestRollOnTop` a roll's line, once written, is `LogTopLine`. A log that can't be written
/// is passed over: the reason goes to `LastErrorText`, the game goes on without those lines.
void WriteLogLine(const std::string& text);

/// Writes the lines that were gathered, if any, in their order: log and index agree afterwards.
/// Called before the event loop gets a turn, at the end of a run, and before anything looks at the
/// log.
void FlushEventsLog();

/// True when the log records now, and `classSwitch` with it.
inline bool LogWants(bool classSwitch) { return Game.EventsLogActive && classSwitch; }

/// Removes the log and its index, if they exist; `LogTopLine` is 1 then.
void ClearEventsLog();

bool EventsLogExists();
