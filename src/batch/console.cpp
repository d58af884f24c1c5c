#include "batch/console.h"

#include <algorithm>
#include <chrono>
#include <string>

#include "core/text.h"

namespace {

double Now() {
  using namespace std::chrono;
  return duration<double>(steady_clock::now().time_since_epoch()).count();
}

std::string TimeText(double seconds) {
  constexpr double kMostHours = 99'999;
  constexpr int kMinute = 60;
  constexpr int kHour = 3600;
  const auto whole = static_cast<std::int64_t>(std::min(seconds, kMostHours * kHour));
  const auto two = [](std::int64_t part) {
    return (part < 10 ? ":0" : ":") + std::to_string(part);
  };
  const std::int64_t hours = whole / kHour;
  const std::int64_t minutes = whole % kHour / kMinute;
  return (hours > 0 ? std::to_string(hours) + two(minutes) : std::to_string(minutes)) +
         two(whole % kMinute);
}

}  // namespace

ProgressLine::ProgressLine(Console& console) : console_(console), began_(Now()) {}

void ProgressLine::Show(std::int64_t done, std::int64_t all) {
  if (!console_.Terminal) return;
  if (doneBefore_ < 0) doneBefore_ = done;
  const double rate = static_cast<double>(done - doneBefore_) / std::max(Now() - began_, 1e-3);
  std::string line = CountText(done) + " of " + CountText(all) + " games";
  if (rate > 0)
    line += ", " + CountText(static_cast<std::int64_t>(rate)) + " a second, " +
            TimeText(static_cast<double>(all - done) / rate) + " left";
  console_.Err << "\r\x1b[K" << line << std::flush;
  shown_ = true;
}

void ProgressLine::Clear() {
  if (shown_) console_.Err << "\r\x1b[K" << std::flush;
  shown_ = false;
}
