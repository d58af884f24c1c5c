// Looking at the Events Log: any stretch of it, without loading it.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "core/game_state.h"

/// Brings the index up to date with the log: it is rebuilt when it is missing, or its date isn't
/// that of the log, or its last entry can't belong to the log. Nothing happens without a log.
void EnsureLogIndex();

/// Recreates the index from the log, reading it once from end to end in pieces, and makes their
/// dates equal. What fails goes to `LastErrorText`.
void RebuildLogIndex();

/// Lines of the log, by the length of the index; 0 without a log.
int LogLineCount();

/// Up to `count` lines from line `first` (from 1), without their line ends, in UTF-8. Reads only
/// these lines; a line beyond `kLongestLine` bytes is cut.
std::vector<std::string> ReadLogLines(int first, int count);
inline constexpr int kLongestLine = 4096;

/// Brings the index up to date and `LogTopLine` within the log; returns the number of lines.
int FollowEventsLog();

/// Looks for `text` (any case) from the line after `LogTopLine`, or before it, round both ends; the
/// line at the top is looked at last. True when it was found: `LogTopLine` is that line then, and
/// the game has changed. Now and then `goOn` is asked, with the share of the log that has been
/// searched (0 to 1); false gives the search up.
bool FindInLog(const std::string& text, bool forward,
               const std::function<bool(double share)>& goOn = {});

/// How a line is coloured.
enum class LogLineLook { Plain, NewGame, Roll };
LogLineLook LookOfLogLine(const std::string& line);
/// The result in a roll's line: where it begins and how long it is.
struct LogLineResult {
  std::size_t Start = 0;
  std::size_t Length = 0;
};
LogLineResult ResultInLogLine(const std::string& line);

/// The vertical scroll bar over `lines` lines.
inline constexpr int kLongestScrollBar = 30'000;
int LogBarMaximum(int lines);
int LogBarValue(int topLine, int lines);
/// The top line after the bar was moved by line or page clicks, and after its thumb was dragged.
int TopLineAfterClick(int topLine, int lines, int barChange);
int TopLineAfterDrag(int barValue, int lines);

/// Moves the log to another name, with `EventsLogFile` (overwriting has been asked for). False when
/// it can't be moved: nothing has changed then, and `LastErrorText` says why.
bool MoveEventsLog(const std::string& path);
