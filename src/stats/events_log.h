// The Events Log: a text file of what happened, with an index of line positions.
#pragma once

#include <string>

#include "core/game_state.h"

/// Appends one line to the log and its position to the index. Callers test `EventsLogActive` and
/// the switch of their class first. A log that can't be written is passed over: the reason goes to
/// `LastErrorText`, the game goes on.
void WriteLogLine(const std::string& text);

/// True when the log records now, and `classSwitch` with it.
inline bool LogWants(bool classSwitch) { return Game.EventsLogActive && classSwitch; }

/// Removes the log and its index, if they exist.
void ClearEventsLog();

bool EventsLogExists();

/// The path of the index.
std::string EventsLogIndexPath();
