#include "stats/events_log.h"

#include "core/error_report.h"

#include <array>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace {

namespace fs = std::filesystem;

constexpr std::uintmax_t kIndexRecord = 4;

/// The size of a file; 0 when it doesn't exist.
std::uintmax_t SizeOf(const std::string& path) {
  std::error_code error;
  const std::uintmax_t size = fs::file_size(path, error);
  return error ? 0 : size;
}

void Check(const std::ios& stream, const std::string& path) {
  if (!stream) throw std::runtime_error("Unable to write " + path);
}

std::array<char, kIndexRecord> LittleEndian(std::uintmax_t value) {
  std::array<char, kIndexRecord> bytes;
  for (char& byte : bytes) {
    byte = static_cast<char>(value & 0xFFU);
    value >>= 8U;
  }
  return bytes;
}

/// Writes `position` into the record after the last whole one and returns its number.
std::uintmax_t AddToIndex(const std::string& path, std::uintmax_t position) {
  if (position > INT32_MAX) RaiseOverflow();
  const std::uintmax_t record = SizeOf(path) / kIndexRecord + 1;
  // Creates the file where it doesn't exist, without emptying one that does.
  std::ofstream(path, std::ios::binary | std::ios::app).close();
  std::fstream index(path, std::ios::binary | std::ios::in | std::ios::out);
  index.seekp(static_cast<std::streamoff>((record - 1) * kIndexRecord));
  const auto bytes = LittleEndian(position);
  index.write(bytes.data(), bytes.size());
  index.close();
  Check(index, path);
  return record;
}

void AddToLog(const std::string& path, const std::string& text) {
  std::ofstream log(path, std::ios::binary | std::ios::app);
  log << text << "\r\n";
  log.close();
  Check(log, path);
}

bool IsRollLine(const std::string& text) {
  const std::size_t start = text.find_first_not_of(' ');
  return start != std::string::npos && text.compare(start, 4, "Roll") == 0;
}

}  // namespace

void WriteLogLine(const std::string& text) {
  try {
    const std::uintmax_t position = SizeOf(Game.EventsLogFile) + 1;
    const std::uintmax_t record = AddToIndex(EventsLogIndexPath(), position);
    AddToLog(Game.EventsLogFile, text);
    if (Game.KeepLatestRollOnTop && IsRollLine(text)) Game.LogTopLine = static_cast<int>(record);
  } catch (...) {
    ReportError("Write Log Line");
  }
}

void ClearEventsLog() {
  std::error_code ignored;
  fs::remove(EventsLogIndexPath(), ignored);
  fs::remove(Game.EventsLogFile, ignored);
  Game.LogTopLine = 1;
}

bool EventsLogExists() {
  std::error_code ignored;
  return fs::exists(Game.EventsLogFile, ignored);
}

std::string EventsLogIndexPath() { return Game.DataPath + "Events Log.ref"; }
