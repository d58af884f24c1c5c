#include "stats/log_files.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <system_error>

#include "core/error_report.h"
#include "core/faults.h"
#include "core/game_state.h"
#include "core/record_file.h"

namespace {

namespace fs = std::filesystem;

/// An entry of the index can't name a place beyond this.
constexpr std::int64_t kLastPosition = INT32_MAX;

constexpr std::int64_t kBlock = 1 << 18;  // bytes read or written at a time

fs::path LogPath() { return PathOf(Game.EventsLogFile); }
fs::path IndexPath() { return PathOf(EventsLogIndexPath()); }

/// With the reason that the system left behind; some of its failures leave none.
[[noreturn]] void Fail(const char* what, const fs::path& path) {
  const int reason = errno == 0 ? EIO : errno;
  throw fs::filesystem_error(what, path, {reason, std::generic_category()});
}

[[noreturn]] void Refuse(std::errc reason) {
  throw std::system_error(std::make_error_code(reason));
}

/// A device or a pipe could be read without end, and a log that is its own index would be lost.
void RefuseAllButFiles() {
  for (const fs::path& path : {LogPath(), IndexPath()}) {
    if (fs::is_directory(path)) Refuse(std::errc::is_a_directory);
    if (fs::exists(path) && !fs::is_regular_file(path)) Refuse(std::errc::not_supported);
  }
  if (LogPath() == IndexPath()) throw std::runtime_error("it's the index of the Events Log");
  errno = 0;
}

std::fstream OpenForAppending(const fs::path& path) {
  return std::fstream(path, std::ios::binary | std::ios::in | std::ios::out | std::ios::app);
}

/// Tells that lines aren't indexed, once for a log.
void TellTooLong() {
  if (Game.LogToldTooLong == Game.EventsLogFile) return;
  Game.LogToldTooLong = Game.EventsLogFile;
  try {
    throw RunTimeFault(6, "The Events Log is too long: its last lines can't be viewed");
  } catch (...) {
    ReportError("Events Log");
  }
}

void AddEntry(std::string& entries, std::int64_t position) {
  std::array<char, kIndexRecord> bytes;
  for (char& byte : bytes) {
    byte = static_cast<char>(position & 0xFF);
    position >>= 8;
  }
  entries.append(bytes.data(), bytes.size());
}

void WriteTo(std::ostream& file, const std::string& bytes) {
  file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

void MakeDatesEqual() {
  const auto date = fs::last_write_time(LogPath());
  fs::last_write_time(IndexPath(), date);
  // The index may lie on a disk that keeps dates less exactly.
  const auto kept = fs::last_write_time(IndexPath());
  if (kept != date) fs::last_write_time(LogPath(), kept);
}

/// Whether a line begins at `position` and is the last one of the log.
bool IsLastLine(std::istream& log, std::int64_t position) {
  constexpr std::int64_t kLook = 4096;
  const std::int64_t length = LengthOf(log);
  if (position < 1 || position > length) return false;
  const std::int64_t from = std::max<std::int64_t>(position - 1, 1);
  const std::string text = ReadLogText(log, from, kLook);
  const std::size_t start = static_cast<std::size_t>(position - from);
  if (start == 1 && text[0] != '\n') return false;
  const std::size_t end = text.find('\n', start);
  const bool beyond = length > kLastPosition;  // there may be lines that aren't indexed
  return beyond || end == std::string::npos || from + static_cast<std::int64_t>(end) == length;
}

bool FilesAgree(std::istream& log, std::istream& index) {
  const std::int64_t length = LengthOf(log);
  const std::int64_t indexLength = LengthOf(index);
  if (length == 0 || indexLength == 0) return length == indexLength;
  if (indexLength % kIndexRecord != 0) return false;
  if (fs::last_write_time(LogPath()) != fs::last_write_time(IndexPath())) return false;
  const auto last = ReadIndexEntries(index, indexLength / kIndexRecord, 1);
  return last.size() == 1 && IsLastLine(log, last[0]);
}

bool EndsInsideALine(std::istream& log) {
  const std::int64_t length = LengthOf(log);
  return length > 0 && ReadLogText(log, length, 1) != "\n";
}

/// Appends to the log; what a full disk cuts off is taken back whole.
void AppendText(std::fstream& log, const std::string& text, bool agreed) {
  const std::int64_t length = LengthOf(log);
  log.seekp(0, std::ios::end);
  WriteTo(log, text);
  log.close();
  if (log) return;
  std::error_code ignored;
  fs::resize_file(LogPath(), static_cast<std::uintmax_t>(length), ignored);
  if (agreed && length > 0) MakeDatesEqual();
  Fail("Unable to write", LogPath());
}

/// Appends the positions of lines behind a log of `length` bytes.
void AppendEntries(std::fstream& index, const LogLines& lines, std::int64_t length) {
  std::string entries;
  entries.reserve(lines.Starts.size() * kIndexRecord);
  for (const std::uint32_t start : lines.Starts) {
    const std::int64_t position = length + start + 1;
    if (position > kLastPosition) {
      TellTooLong();
      break;
    }
    AddEntry(entries, position);
  }
  index.seekp(0, std::ios::end);
  WriteTo(index, entries);
  index.close();
  if (!index) Fail("Unable to write", IndexPath());
}

/// Writes an entry for each line of the log.
void IndexLines(std::istream& log, std::ostream& index) {
  std::vector<char> block(kBlock);
  std::string entries;
  bool atStart = true;
  std::int64_t before = 0;  // bytes before the block
  while (log.read(block.data(), kBlock), log.gcount() > 0) {
    const char* const end = block.data() + log.gcount();
    for (const char* at = block.data(); at < end;) {
      const std::int64_t position = before + (at - block.data()) + 1;
      if (atStart && position > kLastPosition) {
        WriteTo(index, entries);
        return TellTooLong();
      }
      if (atStart) AddEntry(entries, position);
      const void* const lineEnd = std::memchr(at, '\n', static_cast<std::size_t>(end - at));
      atStart = lineEnd != nullptr;
      at = atStart ? static_cast<const char*>(lineEnd) + 1 : end;
    }
    before += log.gcount();
    WriteTo(index, entries);
    entries.clear();
  }
  if (log.bad()) Fail("Unable to read", LogPath());
}

}  // namespace

std::string EventsLogIndexPath() { return Game.DataPath + "Events Log.ref"; }

std::int64_t LengthOf(std::istream& file) {
  file.clear();
  file.seekg(0, std::ios::end);
  return std::max<std::int64_t>(file.tellg(), 0);
}

std::vector<std::int64_t> ReadIndexEntries(std::istream& index, std::int64_t first,
                                           std::int64_t count) {
  std::string bytes(static_cast<std::size_t>(count * kIndexRecord), '\0');
  index.clear();
  index.seekg((first - 1) * kIndexRecord);
  index.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  std::vector<std::int64_t> entries(static_cast<std::size_t>(index.gcount() / kIndexRecord));
  for (std::size_t entry = 0; entry < entries.size(); ++entry) {
    std::uint32_t bits = 0;
    for (unsigned byte = 0; byte < kIndexRecord; ++byte)
      bits |= std::uint32_t{static_cast<unsigned char>(bytes[entry * kIndexRecord + byte])}
              << (8 * byte);
    entries[entry] = static_cast<std::int32_t>(bits);
  }
  return entries;
}

std::string ReadLogText(std::istream& log, std::int64_t position, std::int64_t length) {
  std::string text(static_cast<std::size_t>(std::max<std::int64_t>(length, 0)), '\0');
  log.clear();
  log.seekg(std::max<std::int64_t>(position, 1) - 1);
  log.read(text.data(), static_cast<std::streamsize>(text.size()));
  text.resize(static_cast<std::size_t>(log.gcount()));
  return text;
}

std::int64_t AppendToLogFiles(const LogLines& lines) {
  RefuseAllButFiles();
  std::fstream log = OpenForAppending(LogPath());
  if (!log) Fail("Unable to write", LogPath());
  std::fstream index = OpenForAppending(IndexPath());
  const bool agreed = index.is_open() && FilesAgree(log, index);
  // A line that another program left open isn't gone on with.
  const std::string lineEnd = EndsInsideALine(log) ? "\r\n" : "";
  const std::int64_t length = LengthOf(log) + static_cast<std::int64_t>(lineEnd.size());
  AppendText(log, lineEnd.empty() ? lines.Text : lineEnd + lines.Text, agreed);
  if (agreed) {
    const std::int64_t before = LengthOf(index) / kIndexRecord;
    AppendEntries(index, lines, length);
    MakeDatesEqual();
    return before;
  }
  index.close();
  BuildLogIndex();
  const auto indexed = static_cast<std::int64_t>(fs::file_size(IndexPath())) / kIndexRecord;
  return std::max<std::int64_t>(indexed - static_cast<std::int64_t>(lines.Starts.size()), 0);
}

bool LogIndexIsValid() {
  RefuseAllButFiles();
  std::ifstream log(LogPath(), std::ios::binary);
  if (!log) Fail("Unable to read", LogPath());
  std::ifstream index(IndexPath(), std::ios::binary);
  return index.is_open() && FilesAgree(log, index);
}

void BuildLogIndex() {
  RefuseAllButFiles();
  fs::remove(IndexPath());
  std::ifstream log(LogPath(), std::ios::binary);
  if (!log) Fail("Unable to read", LogPath());
  try {
    std::ofstream index(IndexPath(), std::ios::binary);
    if (!index) Fail("Unable to write", IndexPath());
    IndexLines(log, index);
    index.close();
    if (!index) Fail("Unable to write", IndexPath());
    MakeDatesEqual();
  } catch (...) {
    std::error_code ignored;
    fs::remove(IndexPath(), ignored);
    throw;
  }
}
