// The Events Log: a text file of what happened, with an index of line positions.
#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>

#include "core/game_state.h"
#include "core/text.h"

/// Appends one line to the log and its position to the index. Its parts are texts (UTF-8 here, ANSI
/// in the file), amounts, told as by `MoneyText`, and counts, as by `CountText`. Callers test
/// `EventsLogActive` and the switch of their class first. During a run under Hyper-Drive lines are
/// gathered, up to about 1 MB, and written by `FlushEventsLog`. With `KeepLatestRollOnTop` a roll's
/// line, once written, is `LogTopLine`. A log that can't be written is passed over: the reason goes
/// to `LastErrorText`, the game goes on without those lines.
template <typename... Parts>
void WriteLogLine(const Parts&... parts);

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

// --- How a line is made: put at once where it waits, as a logged roll takes several ---

namespace log_line {

template <std::size_t size>
std::size_t LongestText(const char (&)[size]) {
  return size - 1;
}
inline std::size_t LongestText(std::string_view text) { return text.size(); }
inline std::size_t LongestText(Currency) { return kLongestNumber; }
inline std::size_t LongestText(int) { return kLongestNumber; }

template <std::size_t size>
char* Put(char* to, const char (&text)[size]) {
  return std::copy_n(text, size - 1, to);
}
inline char* Put(char* to, std::string_view text) { return to + text.copy(to, text.size()); }
inline char* Put(char* to, Currency amount) { return PutMoney(to, amount); }
inline char* Put(char* to, int count) { return PutCount(to, count); }

/// Where the next line begins, with room for `longest` characters; null when there is no memory.
char* Begin(std::size_t longest);

/// The line ends before `end`.
void End(char* end);

}  // namespace log_line

template <typename... Parts>
void WriteLogLine(const Parts&... parts) {
  char* end = log_line::Begin((log_line::LongestText(parts) + ...));
  if (end == nullptr) return;
  ((end = log_line::Put(end, parts)), ...);
  log_line::End(end);
}
