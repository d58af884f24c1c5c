#include "autobet/hot_keys.h"

#include <algorithm>
#include <charconv>
#include <vector>

#include "autobet/engine.h"
#include "autobet/paths.h"
#include "autobet/script.h"
#include "autobet/script_file.h"
#include "core/error_report.h"
#include "core/help_topics.h"
#include "core/messages.h"
#include "core/record_file.h"

namespace {

constexpr const char* kFileName = "HotKeys.dta";
constexpr std::string_view kHeaderText = "Kelvanor Hot-Key File";

constexpr std::size_t kKeyOffset = 0;
constexpr std::size_t kFileOffset = 2;
constexpr std::size_t kDescriptionOffset = 102;
constexpr std::size_t kTextWidth = kHotKeyTextWidth;
constexpr std::size_t kReservedOffset = 202;
constexpr std::size_t kReservedWidth = 54;

constexpr std::size_t kMostHotKeys = 100'000;

std::string FilePath() { return Game.AppPath + kFileName; }

char Lower(char key) { return key >= 'A' && key <= 'Z' ? static_cast<char>(key - 'A' + 'a') : key; }

/// The rows that the header tells, but no more than the file has; all it has when the header's
/// number is none.
std::size_t RowCount(const RecordFile& file) {
  const std::size_t whole = std::min<std::size_t>(file.Length / kRecordSize, file.Records.size());
  const std::size_t rows = whole == 0 ? 0 : whole - 1;
  const std::string number = Trimmed(file.At(1).Text(kDescriptionOffset, kTextWidth));
  std::size_t told = 0;
  const char* end = number.data() + number.size();
  const auto [stop, failure] = std::from_chars(number.data(), end, told);
  const bool isNumber = failure == std::errc() && stop == end;
  return isNumber ? std::min(told, rows) : rows;
}

HotKey ReadRow(const Record& record) {
  HotKey row;
  row.Key = static_cast<char>(record.Bytes()[kKeyOffset]);
  row.File = record.Text(kFileOffset, kTextWidth);
  row.Description = record.Text(kDescriptionOffset, kTextWidth);
  return row;
}

std::vector<HotKey> ReadRows() {
  std::vector<HotKey> rows;
  const RecordFile file = ReadRecords(FilePath(), kMostHotKeys + 1);
  if (file.At(1).Text(kFileOffset, kTextWidth) != kHeaderText) return rows;
  const std::size_t count = RowCount(file);
  for (std::size_t number = 1; number <= count; ++number) {
    const HotKey row = ReadRow(file.At(number + 1));
    if (IsHotKey(row.Key)) rows.push_back(row);
  }
  return rows;
}

Record MakeRow(char key, std::string_view file, std::string_view description) {
  Record record;
  record.PutText(kKeyOffset, kFileOffset, std::string_view(&key, 1));
  record.PutText(kFileOffset, kTextWidth, file);
  record.PutText(kDescriptionOffset, kTextWidth, description);
  record.PutText(kReservedOffset, kReservedWidth, "");
  return record;
}

void RunFile(const HotKey& row) {
  const std::string path = HotKeyPath(row);
  if (FileLength(path) == 0) {
    ShowMessage("The Auto-Bet file of this Hot-Key isn't there:\n\n" + path, "Hot-Key",
                kTopicHotKeys, OkStop);
    return;
  }
  Game.HotKeyRunning = true;
  OpenScript(path);
  if (Game.LastFileResult > 0) {
    RunAutoBets();
    // Required: what was edited and not saved is lost, and an untitled script can't come back.
    OpenScript(Game.AutoBetFile);
  }
  Game.HotKeyRunning = false;
}

}  // namespace

bool IsHotKey(char key) { return (key >= 'A' && key <= 'Z') || (key >= 'a' && key <= 'z'); }

std::size_t FindHotKey(char key) {
  const auto row = std::ranges::find_if(
      Game.HotKeys, [key](const HotKey& at) { return Lower(at.Key) == Lower(key); });
  return static_cast<std::size_t>(row - Game.HotKeys.begin());
}

std::string HotKeyPath(const HotKey& row) { return PathIn(Game.AppPath, row.File); }

void LoadHotKeys() {
  try {
    Game.HotKeys = ReadRows();
  } catch (const std::exception&) {
    ReportError("Load Hot-Keys");
    Game.LastFileResult = kSystemFailed;
  }
}

void SaveHotKeys() {
  try {
    std::vector<Record> records = {MakeRow(' ', kHeaderText, std::to_string(Game.HotKeys.size()))};
    for (const HotKey& row : Game.HotKeys)
      records.push_back(MakeRow(row.Key, row.File, row.Description));
    WriteRecords(FilePath(), records);
    Game.LastFileResult = static_cast<int>(records.size() * kRecordSize);
  } catch (const std::exception&) {
    ReportError("Save Hot-Keys");
    Game.LastFileResult = kSystemFailed;
  }
}

bool RunHotKey(char key) {
  if (Game.AutoBetRunning || Game.RollInProgress || Game.HyperDriveOn) return false;
  const std::size_t place = FindHotKey(key);
  if (place == Game.HotKeys.size()) return false;
  RunFile(HotKey(Game.HotKeys[place]));
  return true;
}
