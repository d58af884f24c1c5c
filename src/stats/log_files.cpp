#include "stats/log_files.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <system_error>

#include "core/error_report.h"
#include "core/faults.h"
#include "core/game_state.h"
#include "core/progress.h"
#include "core/raw_file.h"
#include "core/record_file.h"

namespace {

namespace fs = std::filesystem;

/// An entry of the index can't name a place beyond this.
constexpr std::int64_t kLastPosition = INT32_MAX;

constexpr std::int64_t kBlock = 1 << 18;  // bytes read or written at a time

fs::path LogPath() { return PathOf(Game.EventsLogFile); }
fs::path IndexPath() { return PathOf(EventsLogIndexPath()); }

/// A device or a pipe could be read without end, and a log that is its own index would be lost.
void RefuseAllButFiles() {
  FileExists(LogPath());
  FileExists(IndexPath());
  if (LogPath() == IndexPath()) throw std::runtime_error("it's the index of the Events Log");
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

void MakeDatesEqual() {
  const auto date = fs::last_write_time(LogPath());
  fs::last_write_time(IndexPath(), date);
  // The index may lie on a disk that keeps dates less exactly.
  const auto kept = fs::last_write_time(IndexPath());
  if (kept != date) fs::last_write_time(LogPath(), kept);
}

/// Whether a line begins at `position` and is the last one of the log.
bool IsLastLine(const RawFile& log, std::int64_t position) {
  constexpr std::int64_t kLook = 4096;
  const std::int64_t length = log.Length();
  if (position < 1 || position > length) return false;
  const std::int64_t from = std::max<std::int64_t>(position - 1, 1);
  const std::string text = ReadLogText(log, from, kLook);
  const std::size_t start = static_cast<std::size_t>(position - from);
  if (start == 1 && text[0] != '\n') return false;
  const std::size_t end = text.find('\n', start);
  const bool beyond = length > kLastPosition;  // there may be lines that aren't indexed
  return beyond || end == std::string::npos || from + static_cast<std::int64_t>(end) == length;
}

bool FilesAgree(const RawFile& log, const RawFile& index) {
  const std::int64_t length = log.Length();
  const std::int64_t indexLength = index.Length();
  if (length == 0 || indexLength == 0) return length == indexLength;
  if (indexLength % kIndexRecord != 0) return false;
  if (fs::last_write_time(LogPath()) != fs::last_write_time(IndexPath())) return false;
  const auto last = ReadIndexEntries(index, indexLength / kIndexRecord, 1);
  return last.size() == 1 && IsLastLine(log, last[0]);
}

bool EndsInsideALine(const RawFile& log) {
  const std::int64_t length = log.Length();
  return length > 0 && ReadLogText(log, length, 1) != "\n";
}

/// Appends to the log; what a full disk cuts off is taken back whole.
void AppendText(RawFile& log, std::string_view text, bool agreed) {
  const std::int64_t length = log.Length();
  try {
    log.Write(length, text);
  } catch (const std::system_error&) {
    log.Cut(length);
    if (agreed && length > 0) MakeDatesEqual();
    throw;
  }
}

/// Appends the positions of lines behind a log of `length` bytes.
void AppendEntries(RawFile& index, const LogLines& lines, std::int64_t length) {
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
  index.Append(entries);
}

/// Writes an entry for each line of the log that an entry can name.
void IndexLines(const RawFile& log, FileReplacement& index) {
  std::vector<char> block(kBlock);
  std::string entries;
  bool atStart = true;
  const std::int64_t reach = std::min(log.Length(), kLastPosition);
  Progress progress("Rebuild Log Index");
  for (std::int64_t before = 0; before < reach;) {
    const std::size_t wanted = static_cast<std::size_t>(std::min(reach - before, kBlock));
    const std::size_t read = log.ReadSome(before, std::span(block).first(wanted));
    if (read == 0) break;
    const char* const end = block.data() + read;
    for (const char* at = block.data(); at < end;) {
      if (atStart) AddEntry(entries, before + (at - block.data()) + 1);
      const void* const lineEnd = std::memchr(at, '\n', static_cast<std::size_t>(end - at));
      atStart = lineEnd != nullptr;
      at = atStart ? static_cast<const char*>(lineEnd) + 1 : end;
    }
    before += static_cast<std::int64_t>(read);
    index.Write(entries);
    entries.clear();
    if (!Game.RollInProgress)
      progress.ShowOnly(static_cast<double>(before) / static_cast<double>(reach));
  }
  if (log.Length() > reach) TellTooLong();
}

/// The open index; none when there is none that could be gone on with.
std::unique_ptr<RawFile> OpenIndex(const RawFile& log, RawFile::Use use) {
  if (!FileExists(IndexPath())) {
    if (use == RawFile::Use::Read || log.Length() > 0) return nullptr;
    use = RawFile::Use::Write;
  }
  auto index = std::make_unique<RawFile>(IndexPath(), use);
  return FilesAgree(log, *index) ? std::move(index) : nullptr;
}

}  // namespace

std::string EventsLogIndexPath() { return Game.DataPath + "Events Log.ref"; }

std::vector<std::int64_t> ReadIndexEntries(const RawFile& index, std::int64_t first,
                                           std::int64_t count) {
  std::string bytes(static_cast<std::size_t>(count * kIndexRecord), '\0');
  const std::size_t read = index.ReadSome((first - 1) * kIndexRecord, bytes);
  std::vector<std::int64_t> entries(read / kIndexRecord);
  for (std::size_t entry = 0; entry < entries.size(); ++entry) {
    std::uint32_t bits = 0;
    for (unsigned byte = 0; byte < kIndexRecord; ++byte)
      bits |= std::uint32_t{static_cast<unsigned char>(bytes[entry * kIndexRecord + byte])}
              << (8 * byte);
    entries[entry] = static_cast<std::int32_t>(bits);
  }
  return entries;
}

std::string ReadLogText(const RawFile& log, std::int64_t position, std::int64_t length) {
  std::string text(static_cast<std::size_t>(std::max<std::int64_t>(length, 0)), '\0');
  text.resize(log.ReadSome(std::max<std::int64_t>(position, 1) - 1, text));
  return text;
}

std::int64_t AppendToLogFiles(const LogLines& lines) {
  RefuseAllButFiles();
  RawFile log(LogPath(), RawFile::Use::Write);
  const std::unique_ptr<RawFile> index = OpenIndex(log, RawFile::Use::Change);
  // A line that another program left open isn't gone on with.
  const std::string lineEnd = EndsInsideALine(log) ? "\r\n" : "";
  const std::int64_t length = log.Length() + static_cast<std::int64_t>(lineEnd.size());
  if (lineEnd.empty())
    AppendText(log, lines.Text, index != nullptr);
  else
    AppendText(log, lineEnd + std::string(lines.Text), index != nullptr);
  if (index) {
    const std::int64_t before = index->Length() / kIndexRecord;
    AppendEntries(*index, lines, length);
    MakeDatesEqual();
    return before;
  }
  BuildLogIndex();
  const auto indexed = static_cast<std::int64_t>(fs::file_size(IndexPath())) / kIndexRecord;
  return std::max<std::int64_t>(indexed - static_cast<std::int64_t>(lines.Starts.size()), 0);
}

bool LogIndexIsValid() {
  RefuseAllButFiles();
  const RawFile log(LogPath(), RawFile::Use::Read);
  return OpenIndex(log, RawFile::Use::Read) != nullptr;
}

void BuildLogIndex() {
  RefuseAllButFiles();
  const RawFile log(LogPath(), RawFile::Use::Read);
  FileReplacement index(EventsLogIndexPath());
  IndexLines(log, index);
  index.Finish(Durability::System);
  MakeDatesEqual();
}
