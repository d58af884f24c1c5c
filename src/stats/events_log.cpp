#include "stats/events_log.h"

#include <algorithm>
#include <cctype>
#include <cstring>
#include <filesystem>
#include <optional>
#include <string_view>

#include "core/ansi.h"
#include "core/error_report.h"
#include "core/file_failure.h"
#include "core/record_file.h"
#include "core/strange_files.h"
#include "stats/log_files.h"

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kMostPending = 1'000'000;  // bytes
constexpr std::int64_t kTail = 1 << 16;          // bytes that tell how a log grows
constexpr double kMillion = 1e6;
constexpr std::string_view kDefaultName = "Events Log.txt";

constexpr std::string_view kLineEnd = "\r\n";
constexpr std::size_t kLook = sizeof(std::uint64_t);  // characters that are looked at at a time

/// Lines on their way to the log.
struct PendingLines {
  std::string Block;  // room, the lines at its begin
  std::size_t Length = 0;
  std::vector<std::uint32_t> Starts;  // where each line begins in `Block`
  std::size_t TopRoll = 0;  // from 1, the line that goes to the top of the view; 0 is none
};
PendingLines pending;

/// Where the lines of a roll begin that may still be taken back.
struct HeldLines {
  std::size_t Length = 0;
  std::size_t Starts = 0;
  std::size_t TopRoll = 0;
};
std::optional<HeldLines> held;

/// The log that couldn't be written, and why.
struct FailedLog {
  std::string File;
  std::string Reason;
};
FailedLog failed;

bool IsRollLine(std::string_view text) {
  const std::size_t start = text.find_first_not_of(' ');
  return start != std::string_view::npos && text.compare(start, 4, "Roll") == 0;
}

/// Whether all characters are the same in the file, which are those from ' ' to '~'. Eight are
/// looked at at a time; there is room for eight more behind them.
bool IsPlain(const char* text, char* end) {
  constexpr std::uint64_t kOnes = 0x0101010101010101U;
  constexpr std::uint64_t kBlanks = kOnes * ' ';
  constexpr std::uint64_t kStrange = kOnes * 0x80;
  std::memcpy(end, &kBlanks, kLook);
  std::uint64_t found = 0;
  for (; text < end; text += kLook) {
    std::uint64_t eight = 0;
    std::memcpy(&eight, text, kLook);
    found |= (eight - kBlanks) | (eight + kOnes) | eight;
  }
  return (found & kStrange) == 0;
}

/// The line as it stands in the file, in its place; returns its end.
char* MakeAnsi(char* text, char* end) {
  std::string ansi = ToAnsi({text, end});
  // A file name may hold line ends: one event stays one line.
  std::replace_if(
      ansi.begin(), ansi.end(), [](char c) { return c == '\r' || c == '\n'; }, ' ');
  return std::copy(ansi.begin(), ansi.end(), text);
}

void AddLine(char* end) {
  char* const text = pending.Block.data() + pending.Length;
  if (!IsPlain(text, end)) end = MakeAnsi(text, end);
  pending.Starts.push_back(static_cast<std::uint32_t>(pending.Length));
  if (Game.KeepLatestRollOnTop && IsRollLine({text, end})) pending.TopRoll = pending.Starts.size();
  end = std::copy(kLineEnd.begin(), kLineEnd.end(), end);
  pending.Length = static_cast<std::size_t>(end - pending.Block.data());
}

std::size_t NextLine(const std::string& text, std::size_t from) {
  const std::size_t end = text.find('\n', from);
  return end == std::string::npos ? text.size() : end + 1;
}

/// The last bytes of a log of `length` bytes; none when it can't be read.
std::string LogTail(std::int64_t length) {
  try {
    const RawFile log(Game.EventsLogFile, RawFile::Use::Read);
    return ReadLogText(log, std::max<std::int64_t>(length - kTail, 0) + 1, kTail);
  } catch (...) {
    ReportError("Read Events Log");
    return {};
  }
}

/// Keeps the memory for the next lines.
void ForgetPending() {
  pending.Length = 0;
  pending.Starts.clear();
  pending.TopRoll = 0;
  if (held) held = HeldLines{};
}

}  // namespace

namespace log_line {

char* Begin(std::size_t longest) {
  static_assert(kLook >= kLineEnd.size());
  const std::size_t wanted = pending.Length + longest + kLook;
  try {
    if (wanted > pending.Block.size()) pending.Block.resize(2 * wanted);
    return pending.Block.data() + pending.Length;
  } catch (...) {
    ReportError("Write Log Line");
    return nullptr;
  }
}

void End(char* end) {
  try {
    AddLine(end);
  } catch (...) {
    ReportError("Write Log Line");
  }
  const bool gather = held || (Game.HyperDriveOn && Game.RollInProgress);
  if (!gather || pending.Length > kMostPending) FlushEventsLog();
}

}  // namespace log_line

void FlushEventsLog() {
  if (pending.Starts.empty()) return;
  if (IsStrange(Game.EventsLogFile)) {
    if (pending.Length <= kMostPending) return;  // until the player has been asked
    Game.EventsLogFile = DefaultEventsLog();
  }
  try {
    const auto before = static_cast<std::size_t>(AppendToLogFiles(
        {std::string_view(pending.Block).substr(0, pending.Length), pending.Starts}));
    if (pending.TopRoll > 0) Game.LogTopLine = static_cast<int>(before + pending.TopRoll);
    failed = {};
  } catch (...) {
    ReportError("Write Log Line");
    failed = {Game.EventsLogFile, FailureReason(Game.EventsLogFile)};
  }
  ForgetPending();
}

void HoldLogLines() { held = {pending.Length, pending.Starts.size(), pending.TopRoll}; }

void ReleaseLogLines() {
  if (!held) return;
  held.reset();
  if (!Game.HyperDriveOn) FlushEventsLog();
}

void DropHeldLogLines() {
  // Somebody may have looked at the log meanwhile: what was written stays.
  if (held && pending.Starts.size() >= held->Starts) {
    pending.Length = held->Length;
    pending.Starts.resize(held->Starts);
    pending.TopRoll = held->TopRoll;
  }
  held.reset();
}

void ClearEventsLog() {
  FlushEventsLog();
  try {
    RemoveFile(PathOf(EventsLogIndexPath()));
    if (!IsStrange(Game.EventsLogFile)) RemoveFile(PathOf(Game.EventsLogFile));
  } catch (...) {
    ReportError("Clear Events Log");
  }
  Game.LogTopLine = 1;
}

std::string DefaultEventsLog() { return Game.DataPath + std::string(kDefaultName); }

std::string LogWriteFailure() {
  return failed.File == Game.EventsLogFile ? failed.Reason : std::string();
}

void BeginNewEventsLog() {
  FlushEventsLog();
  Game.EventsLogFile = DefaultEventsLog();
  ClearEventsLog();
}

bool IsDefaultLogName(const std::string& path) {
  const std::string name = BareName(path);
  return path.empty() || std::equal(name.begin(), name.end(), kDefaultName.begin(),
                                    kDefaultName.end(), [](char one, char other) {
                                      return std::tolower(static_cast<unsigned char>(one)) ==
                                             std::tolower(static_cast<unsigned char>(other));
                                    });
}

bool EventsLogExists() {
  FlushEventsLog();
  std::error_code ignored;
  return fs::exists(PathOf(Game.EventsLogFile), ignored);
}

std::int64_t EventsLogLength() {
  return EventsLogExists() ? static_cast<std::int64_t>(FileLength(Game.EventsLogFile)) : 0;
}

double LogGrowthOfMillionRolls() {
  const std::int64_t length = EventsLogLength();
  if (!Game.EventsLogActive || length == 0) return 0;
  const std::string tail = LogTail(length);
  int rolls = 0;
  std::size_t first = tail.size();
  for (std::size_t at = 0; at < tail.size(); at = NextLine(tail, at)) {
    if (!IsRollLine(tail.substr(at, tail.find('\n', at) - at))) continue;
    first = std::min(first, at);
    ++rolls;
  }
  if (rolls > 0) return static_cast<double>(tail.size() - first) / rolls * kMillion;
  return Game.RollCount[0] > 0 ? static_cast<double>(length) / Game.RollCount[0] * kMillion : 0;
}
