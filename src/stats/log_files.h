// The two files of the Events Log on disk, and what keeps them in step.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/raw_file.h"

/// The path of the index: always this one name, whatever the log's.
std::string EventsLogIndexPath();

/// The length of a record of the index.
inline constexpr std::int64_t kIndexRecord = 4;

/// Lines on their way to the log.
struct LogLines {
  std::string_view Text;                  // in ANSI, each line with its end
  std::span<const std::uint32_t> Starts;  // where each line begins in `Text`
};

/// Appends the lines to the log and their positions to the index, and makes the dates of the files
/// equal; each file is opened once. An index that was no index of this log is built anew. Returns
/// the number of indexed lines before these. Throws when something can't be written: without the
/// log's lines the files stand as before, without an index it is built by the next who needs it.
std::int64_t AppendToLogFiles(const LogLines& lines);

/// True when the index is that of the log: dates equal, and its last entry the log's last line.
/// Throws when there is something in the place of a file that can't be read.
bool LogIndexIsValid();

/// Builds the index from the log in one pass, in pieces, as far as an entry can name a place (2
/// GB). Throws when it can't; the former index stands then.
void BuildLogIndex();

/// Up to `count` entries of an open index from record `first` on.
std::vector<std::int64_t> ReadIndexEntries(const RawFile& index, std::int64_t first,
                                           std::int64_t count);

/// Up to `length` bytes of an open log from `position` (from 1) on.
std::string ReadLogText(const RawFile& log, std::int64_t position, std::int64_t length);
