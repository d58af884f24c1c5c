#include "stats/events_log_view.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <stdexcept>

#include "core/ansi.h"
#include "core/error_report.h"
#include "core/raw_file.h"
#include "core/record_file.h"
#include "stats/events_log.h"
#include "stats/log_files.h"

namespace {

namespace fs = std::filesystem;

// --- Finding ---

constexpr unsigned kBytes = 256;

/// Lower case in Windows-1252.
constexpr auto kLowerCase = [] {
  std::array<char, kBytes> lower{};
  for (unsigned byte = 0; byte < kBytes; ++byte) {
    const bool ascii = byte >= 'A' && byte <= 'Z';
    const bool latin = byte >= 0xC0 && byte <= 0xDE && byte != 0xD7;
    const bool special = byte == 0x8A || byte == 0x8C || byte == 0x8E;
    const unsigned shift = ascii || latin ? 0x20 : special ? 0x10 : 0;
    lower[byte] = static_cast<char>(byte == 0x9F ? 0xFF : byte + shift);
  }
  return lower;
}();

void MakeLower(std::string& ansi) {
  for (char& letter : ansi) letter = kLowerCase[static_cast<unsigned char>(letter)];
}

/// A search through the log. Lines are taken by the index in blocks, and their text in pieces.
class LogSearch {
 public:
  LogSearch(std::string words, bool forward, const std::function<bool(double)>& goOn)
      : words_(std::move(words)),
        forward_(forward),
        goOn_(goOn),
        log_(Game.EventsLogFile, RawFile::Use::Read),
        index_(EventsLogIndexPath(), RawFile::Use::Read),
        logEnd_(log_.Length() + 1) {
    MakeLower(words_);
  }

  /// The hit among lines `from` to `to` that comes first in the direction of the search; 0 without.
  int FindAmong(int from, int to) {
    for (std::int64_t left = std::int64_t{to} - from + 1; left > 0;) {
      const int count = static_cast<int>(std::min<std::int64_t>(left, kLinesAtOnce));
      left -= count;
      givenUp_ = givenUp_ || (goOn_ && !goOn_(static_cast<double>(searched_) / lines_));
      if (givenUp_) return 0;
      searched_ += count;
      const int hit = FindInBlock(
          forward_ ? static_cast<int>(to - left - count + 1) : static_cast<int>(from + left),
          count);
      if (hit != 0) return hit;
    }
    return 0;
  }

 private:
  static constexpr int kLinesAtOnce = 1 << 14;
  static constexpr std::int64_t kBytesAtOnce = 1 << 20;  // of a longer line no more is searched

  /// The lines behind one another whose text is read at once, by their places in the block.
  struct Piece {
    std::size_t First = 0;
    std::size_t End = 0;
  };

  int FindInBlock(int first, int count) {
    starts_ = ReadIndexEntries(index_, first, std::int64_t{count} + 1);
    // Behind the last line the log ends.
    if (starts_.size() <= static_cast<std::size_t>(count)) starts_.push_back(logEnd_);
    std::vector<Piece> pieces = Pieces();
    if (!forward_) std::reverse(pieces.begin(), pieces.end());
    for (const Piece& piece : pieces) {
      const int hit = FindInPiece(piece);
      if (hit >= 0) return first + hit;
    }
    return 0;
  }

  std::vector<Piece> Pieces() const {
    std::vector<Piece> pieces;
    const std::size_t lines = starts_.size() - 1;
    for (std::size_t first = 0; first < lines;) {
      std::size_t end = first + 1;
      while (end < lines && starts_[end + 1] - starts_[first] <= kBytesAtOnce) ++end;
      pieces.push_back({first, end});
      first = end;
    }
    return pieces;
  }

  /// The place in the block of the line with the hit; -1 without.
  int FindInPiece(const Piece& piece) {
    const std::int64_t start = starts_[piece.First];
    std::string text = ReadLogText(log_, start, std::min(starts_[piece.End] - start, kBytesAtOnce));
    MakeLower(text);
    const std::size_t place = forward_ ? FirstPlace(text) : LastPlace(text);
    if (place == std::string::npos) return -1;
    const auto begin = starts_.begin() + static_cast<std::ptrdiff_t>(piece.First);
    const auto end = starts_.begin() + static_cast<std::ptrdiff_t>(piece.End);
    const auto behind = std::upper_bound(begin + 1, end, start + static_cast<std::int64_t>(place));
    return static_cast<int>(behind - starts_.begin()) - 1;
  }

  std::size_t FirstPlace(const std::string& text) const {
    const std::boyer_moore_horspool_searcher searcher(words_.begin(), words_.end());
    const auto hit = std::search(text.begin(), text.end(), searcher);
    return hit == text.end() ? std::string::npos : static_cast<std::size_t>(hit - text.begin());
  }

  std::size_t LastPlace(const std::string& text) const {
    const std::boyer_moore_horspool_searcher searcher(words_.rbegin(), words_.rend());
    const auto hit = std::search(text.rbegin(), text.rend(), searcher);
    return hit == text.rend() ? std::string::npos
                              : static_cast<std::size_t>(text.rend() - hit) - words_.size();
  }

  std::string words_;
  bool forward_;
  const std::function<bool(double)>& goOn_;
  int lines_ = LogLineCount();
  int searched_ = 0;
  bool givenUp_ = false;
  RawFile log_;
  RawFile index_;
  std::int64_t logEnd_;
  std::vector<std::int64_t> starts_;  // of the lines of the block, and of the one behind them
};

int FindLine(const std::string& words, bool forward, const std::function<bool(double)>& goOn) {
  const int lines = LogLineCount();
  if (lines == 0) return 0;
  const int top = std::clamp(Game.LogTopLine, 1, lines);
  LogSearch search(words, forward, goOn);
  const std::array<std::pair<int, int>, 2> ways = {{{top + 1, lines}, {1, top - 1}}};
  for (const auto& [from, to] : {ways[forward ? 0 : 1], ways[forward ? 1 : 0], {top, top}})
    if (const int hit = search.FindAmong(from, to); hit != 0) return hit;
  return 0;
}

// --- Index ---

/// Sets a flag while it lives.
class Guard {
 public:
  explicit Guard(bool& flag) : flag_(flag) { flag_ = true; }
  ~Guard() { flag_ = false; }
  Guard(const Guard&) = delete;
  Guard& operator=(const Guard&) = delete;

 private:
  bool& flag_;
};

/// While an index is built, what happens meanwhile doesn't begin another.
template <typename Test>
void RepairIndex(Test isValid) {
  static bool repairing = false;
  if (repairing || !EventsLogExists()) return;
  const Guard guard(repairing);
  try {
    if (!isValid()) BuildLogIndex();
  } catch (...) {
    ReportError("Rebuild Log Index");
  }
}

// --- Lines ---

/// A line as it stands in the file, without its end.
std::string BareLine(std::string text) {
  text.resize(std::min(text.find('\n'), text.size()));
  if (!text.empty() && text.back() == '\r') text.pop_back();
  text.resize(std::min<std::size_t>(text.size(), kLongestLine));
  return text;
}

bool BeginsWith(const std::string& line, const char* words) {
  const std::size_t start = line.find_first_not_of(' ');
  return start != std::string::npos && line.compare(start, std::string(words).size(), words) == 0;
}

// --- Scroll bar ---

int WithinLog(double line, int lines) {
  return static_cast<int>(std::clamp<double>(line, 1, std::max(lines, 1)));
}

// --- Moving ---

/// Throws when the move would put the log in the place of its index.
void RefuseIndex(const std::string& path) {
  if (PathOf(path) != PathOf(EventsLogIndexPath())) return;
  throw std::runtime_error("it's the index of the Events Log");
}

/// A rename, or between disks a copy that takes its place when it is whole.
void MoveFile(const fs::path& from, const fs::path& to) {
  if (!FileExists(from)) FailFor(std::errc::no_such_file_or_directory);
  FileExists(to);
  try {
    RenameFile(from, to);
    SyncFolder(to.parent_path());
  } catch (const std::system_error& failure) {
    if (failure.code() != std::errc::cross_device_link) throw;
    CopyWholeFile(TextOfPath(from), TextOfPath(to));
    fs::last_write_time(to, fs::last_write_time(from));  // by which its index knows it
    RemoveFile(from);
  }
}

}  // namespace

void EnsureLogIndex() {
  RepairIndex([] { return LogIndexIsValid(); });
}

void RebuildLogIndex() {
  RepairIndex([] { return false; });
}

int LogLineCount() {
  if (!EventsLogExists()) return 0;
  const std::uintmax_t lines = FileLength(EventsLogIndexPath()) / kIndexRecord;
  return static_cast<int>(std::min<std::uintmax_t>(lines, INT32_MAX - 1));
}

int FollowEventsLog() {
  EnsureLogIndex();
  const int lines = LogLineCount();
  Game.LogTopLine = WithinLog(Game.LogTopLine, lines);
  return lines;
}

std::vector<std::string> ReadLogLines(int first, int count) {
  std::vector<std::string> lines;
  const int all = LogLineCount();
  if (first < 1 || first > all || count < 1) return lines;
  try {
    const RawFile log(Game.EventsLogFile, RawFile::Use::Read);
    const RawFile index(EventsLogIndexPath(), RawFile::Use::Read);
    // With the line behind them, where they end.
    const auto wanted = std::min<std::int64_t>(count, std::int64_t{all} - first + 1);
    auto starts = ReadIndexEntries(index, first, wanted + 1);
    if (static_cast<std::int64_t>(starts.size()) <= wanted) starts.push_back(log.Length() + 1);
    for (std::size_t line = 0; line + 1 < starts.size(); ++line) {
      constexpr std::int64_t kLineEnd = 2;
      const std::int64_t length = starts[line + 1] - starts[line];
      const std::string text =
          ReadLogText(log, starts[line], std::min(length, kLongestLine + kLineEnd));
      lines.push_back(FromAnsi(BareLine(text)));
    }
  } catch (...) {
    ReportError("Read Events Log");
  }
  return lines;
}

bool FindInLog(const std::string& text, bool forward, const std::function<bool(double)>& goOn) {
  const std::string words = ToAnsi(text);
  if (words.empty() || words.find_first_of("\r\n") != std::string::npos) return false;
  EnsureLogIndex();
  try {
    const int hit = FindLine(words, forward, goOn);
    if (hit == 0) return false;
    Game.LogTopLine = hit;
    Game.GameChanged = true;
    return true;
  } catch (...) {
    ReportError("Find In Events Log");
    return false;
  }
}

LogLineLook LookOfLogLine(const std::string& line) {
  if (BeginsWith(line, "New game started")) return LogLineLook::NewGame;
  return BeginsWith(line, "Roll #") ? LogLineLook::Roll : LogLineLook::Plain;
}

LogLineResult ResultInLogLine(const std::string& line) {
  const std::size_t colon = line.find(':');
  if (colon == std::string::npos) return {};
  const std::size_t start = line.find_first_not_of(' ', colon + 1);
  if (start == std::string::npos) return {};
  return {start, std::min(line.find(' ', start), line.size()) - start};
}

int LogBarMaximum(int lines) { return std::clamp(lines, 1, kLongestScrollBar); }

int LogBarValue(int topLine, int lines) {
  const int top = WithinLog(topLine, lines);
  if (lines <= kLongestScrollBar) return top;
  const int value =
      static_cast<int>(std::nearbyint(static_cast<double>(top) / lines * kLongestScrollBar));
  if (value <= 1) return top > 1 ? 2 : 1;
  return value == kLongestScrollBar && top < lines ? kLongestScrollBar - 1 : value;
}

int TopLineAfterClick(int topLine, int lines, int barChange) {
  return WithinLog(static_cast<double>(topLine) + barChange, lines);
}

int TopLineAfterDrag(int barValue, int lines) {
  if (lines <= kLongestScrollBar || barValue <= 1) return WithinLog(barValue, lines);
  return WithinLog(std::nearbyint(static_cast<double>(barValue) / kLongestScrollBar * lines),
                   lines);
}

bool MoveEventsLog(const std::string& path) {
  FlushEventsLog();
  try {
    RefuseIndex(path);
    if (path != Game.EventsLogFile) MoveFile(PathOf(Game.EventsLogFile), PathOf(path));
  } catch (...) {
    ReportError("Move Events Log");
    return false;
  }
  Game.EventsLogFile = path;
  return true;
}
