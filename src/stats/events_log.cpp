#include "stats/events_log.h"

#include <algorithm>
#include <filesystem>

#include "core/ansi.h"
#include "core/error_report.h"
#include "core/record_file.h"
#include "stats/log_files.h"

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kMostPending = 1'000'000;  // bytes

struct PendingLines : LogLines {
  std::size_t TopRoll = 0;  // from 1, the line that goes to the top of the view; 0 is none
};
PendingLines pending;

bool IsRollLine(const std::string& text) {
  const std::size_t start = text.find_first_not_of(' ');
  return start != std::string::npos && text.compare(start, 4, "Roll") == 0;
}

void AddLine(const std::string& text) {
  const std::size_t start = pending.Text.size();
  const bool plain =
      std::all_of(text.begin(), text.end(), [](char c) { return c >= ' ' && c <= '~'; });
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

/// Keeps the memory for the next lines.
void ForgetPending() {
  pending.Text.clear();
  pending.Starts.clear();
  pending.TopRoll = 0;
}

}  // namespace

void WriteLogLine(const std::string& text) {
  try {
    AddLine(text);
  } catch (...) {
    ReportError("Write Log Line");
  }
  const bool gather = Game.HyperDriveOn && Game.RollInProgress;
  if (!gather || pending.Text.size() > kMostPending) FlushEventsLog();
}

void FlushEventsLog() {
  if (pending.Starts.empty()) return;
  try {
    const auto before = static_cast<std::size_t>(AppendToLogFiles(pending));
    if (pending.TopRoll > 0) Game.LogTopLine = static_cast<int>(before + pending.TopRoll);
  } catch (...) {
    ReportError("Write Log Line");
  }
  ForgetPending();
}

void ClearEventsLog() {
  FlushEventsLog();
  std::error_code ignored;
  fs::remove(PathOf(EventsLogIndexPath()), ignored);
  fs::remove(PathOf(Game.EventsLogFile), ignored);
  Game.LogTopLine = 1;
}

bool EventsLogExists() {
  FlushEventsLog();
  std::error_code ignored;
  return fs::exists(PathOf(Game.EventsLogFile), ignored);
}
