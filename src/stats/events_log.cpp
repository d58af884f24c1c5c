#include "stats/events_log.h"

#include <algorithm>
#include <cctype>
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

struct PendingLines : LogLines {
  std::size_t TopRoll = 0;  // from 1, the line that goes to the top of the view; 0 is none
};
PendingLines pending;

/// Where the lines of a roll begin that may still be taken back.
struct HeldLines {
  std::size_t Text = 0;
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

bool IsRollLine(const std::string& text) {
  const std::size_t start = text.find_first_not_of(' ');
  return start != std::string::npos && text.compare(start, 4, "Roll") == 0;
}

void AddLine(const std::string& text) {
  const std::size_t start = pending.Text.size();
  unsigned strange = 0;
  for (const char c : text) strange |= c < ' ' || c > '~' ? 1U : 0U;  // without a jump
  const bool plain = strange == 0;
  if (plain) {
    pending.Text += text;
  } else {
    std::string ansi = ToAnsi(text);
    // A file name may hold line ends: one event stays one line.
    std::replace_if(
        ansi.begin(), ansi.end(), [](char c) { return c == '\r' || c == '\n'; }, ' ');
    pending.Text += ansi;
  }
  pending.Text += "\r\n";
  pending.Starts.push_back(static_cast<std::uint32_t>(start));
  if (Game.KeepLatestRollOnTop && IsRollLine(text)) pending.TopRoll = pending.Starts.size();
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
  pending.Text.clear();
  pending.Starts.clear();
  pending.TopRoll = 0;
  if (held) held = HeldLines{};
}

}  // namespace

void WriteLogLine(const std::string& text) {
  try {
    AddLine(text);
  } catch (...) {
    ReportError("Write Log Line");
  }
  const bool gather = held || (Game.HyperDriveOn && Game.RollInProgress);
  if (!gather || pending.Text.size() > kMostPending) FlushEventsLog();
}

void WriteLogLine(std::initializer_list<std::string_view> parts) {
  static std::string line;  // keeps its memory
  line.clear();
  for (const std::string_view part : parts) line += part;
  WriteLogLine(line);
}

void FlushEventsLog() {
  if (pending.Starts.empty()) return;
  if (IsStrange(Game.EventsLogFile)) {
    if (pending.Text.size() <= kMostPending) return;  // until the player has been asked
    Game.EventsLogFile = DefaultEventsLog();
  }
  try {
    const auto before = static_cast<std::size_t>(AppendToLogFiles(pending));
    if (pending.TopRoll > 0) Game.LogTopLine = static_cast<int>(before + pending.TopRoll);
    failed = {};
  } catch (...) {
    ReportError("Write Log Line");
    failed = {Game.EventsLogFile, FailureReason(Game.EventsLogFile)};
  }
  ForgetPending();
}

void HoldLogLines() { held = {pending.Text.size(), pending.Starts.size(), pending.TopRoll}; }

void ReleaseLogLines() {
  if (!held) return;
  held.reset();
  if (!Game.HyperDriveOn) FlushEventsLog();
}

void DropHeldLogLines() {
  // Somebody may have looked at the log meanwhile: what was written stays.
  if (held && pending.Starts.size() >= held->Starts) {
    pending.Text.resize(held->Text);
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
