#include "autobet/hot_keys.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <vector>

#include "autobet/engine.h"
#include "autobet/paths.h"
#include "autobet/script.h"
#include "autobet/script_file.h"
#include "core/error_report.h"
#include "core/file_failure.h"
#include "core/help_topics.h"
#include "core/messages.h"
#include "core/record_file.h"

namespace {

constexpr const char* kFileName = "HotKeys.dta";
constexpr const char* kDamagedFileName = "HotKeys.bad";
constexpr std::string_view kHeaderText = "Kelvanor Hot-Key File";

constexpr std::size_t kKeyOffset = 0;
constexpr std::size_t kFileOffset = 2;
constexpr std::size_t kDescriptionOffset = 102;
constexpr std::size_t kTextWidth = kHotKeyTextWidth;
constexpr std::size_t kReservedOffset = 202;
constexpr std::size_t kReservedWidth = 54;

constexpr std::size_t kMostHotKeys = 100'000;

std::string FilePath() { return Game.DataPath + kFileName; }

/// The file that is read: the player's own, else the one that came with the program.
std::string FileToRead() {
  return FileLength(FilePath()) > 0 ? FilePath() : Game.AppPath + kFileName;
}

char Lower(char key) { return key >= 'A' && key <= 'Z' ? static_cast<char>(key - 'A' + 'a') : key; }

std::size_t WholeRecords(const RecordFile& file) {
  return std::min<std::size_t>(file.Length / kRecordSize, file.Records.size());
}

/// The number in the header.
std::optional<std::size_t> RowsTold(const RecordFile& file) {
  const std::string number = Trimmed(file.At(1).Text(kDescriptionOffset, kTextWidth));
  std::size_t told = 0;
  const char* end = number.data() + number.size();
  const auto [stop, failure] = std::from_chars(number.data(), end, told);
  return failure == std::errc() && stop == end ? std::optional(told) : std::nullopt;
}

HotKey ReadRow(const Record& record) {
  HotKey row;
  row.Key = static_cast<char>(record.Bytes()[kKeyOffset]);
  row.File = record.Text(kFileOffset, kTextWidth);
  row.Description = record.Text(kDescriptionOffset, kTextWidth);
  return row;
}

/// The rows that the header tells, but no more than the file has; all it has when the header's
/// number is none.
std::vector<HotKey> ReadRows(const RecordFile& file) {
  std::vector<HotKey> rows;
  const std::size_t whole = WholeRecords(file);
  if (whole == 0 || file.At(1).Text(kFileOffset, kTextWidth) != kHeaderText) return rows;
  const std::size_t count = std::min(RowsTold(file).value_or(whole - 1), whole - 1);
  for (std::size_t number = 1; number <= count; ++number) {
    const HotKey row = ReadRow(file.At(number + 1));
    if (IsHotKey(row.Key)) rows.push_back(row);
  }
  return rows;
}

/// Beside the damaged file, so that nothing in it is lost.
void KeepDamagedFile() {
  CopyWholeFile(FileToRead(), Game.DataPath + kDamagedFileName);
  Game.HotKeysDamaged = false;
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
  if (row.File.empty() || FileLength(path) == 0) {
    const std::string fault = row.File.empty()
                                  ? "This Hot-Key has no Auto-Bet file."
                                  : "The Auto-Bet file of this Hot-Key isn't there:\n\n" + path;
    ShowMessage(fault, "Hot-Key", kTopicHotKeys, OkStop);
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

std::string HotKeyFileName(const std::string& path) {
  return path.starts_with(Game.AppPath) ? path.substr(Game.AppPath.size()) : path;
}

void LoadHotKeys() {
  try {
    const RecordFile file = ReadRecords(FileToRead(), kMostHotKeys + 1);
    Game.HotKeys = ReadRows(file);
    Game.HotKeysDamaged = file.Length > 0 && RowsTold(file) != Game.HotKeys.size();
  } catch (const std::exception&) {
    ReportError("Load Hot-Keys");
    Game.HotKeysDamaged = true;
    Game.LastFileResult = kSystemFailed;
  }
}

void SaveHotKeys() {
  try {
    if (Game.HotKeysDamaged) KeepDamagedFile();
    std::vector<Record> records = {MakeRow(' ', kHeaderText, std::to_string(Game.HotKeys.size()))};
    for (const HotKey& row : Game.HotKeys)
      records.push_back(MakeRow(row.Key, row.File, row.Description));
    WriteRecords(FilePath(), records);
    Game.LastFileResult = static_cast<int>(records.size() * kRecordSize);
    Game.HotKeysUnsaved = false;
  } catch (const std::exception&) {
    Game.HotKeysUnsaved = true;
    FileFailed(FilePath(), "saved", "Save Hot-Keys", "Hot-Key", kTopicHotKeys);
  }
}

bool RunHotKey(char key) {
  if (Game.AutoBetRunning || Game.RollInProgress || Game.HyperDriveOn) return false;
  const std::size_t place = FindHotKey(key);
  if (place == Game.HotKeys.size()) return false;
  RunFile(HotKey(Game.HotKeys[place]));
  return true;
}
