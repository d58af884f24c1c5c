#include "persistence/kept_game.h"

#include <array>
#include <chrono>
#include <ctime>
#include <filesystem>

#include "autobet/script_file.h"
#include "core/checksum.h"
#include "core/error_report.h"
#include "core/file_failure.h"
#include "core/game_state.h"
#include "core/help_topics.h"
#include "core/host.h"
#include "core/messages.h"
#include "core/record_file.h"
#include "dice/probability_file.h"
#include "persistence/companions.h"
#include "persistence/game_file.h"

namespace {

namespace fs = std::filesystem;

constexpr std::array kNames = {"kept1", "kept2"};
constexpr const char* kDeclined = "-declined.crp";

/// What has been kept so far in this session.
struct Keeping {
  bool Offered = false;
  std::uint32_t Game = 0;  // checksums
  unsigned Edits = 0;
  int Loads = 0;
  ProbabilityMatrix Matrix{};
};
Keeping keeping;

std::string InData(const std::string& name) { return Game.DataPath + name; }

bool IsThere(const std::string& name) {
  std::error_code none;
  return fs::is_regular_file(PathOf(InData(name)), none);
}

void Remove(const std::string& name) {
  std::error_code ignored;
  fs::remove(PathOf(InData(name)), ignored);
}

/// A declined game keeps its name and its companions; the other name is free.
std::string NameInUse() {
  return IsThere(std::string(kNames[0]) + kDeclined) ? kNames[1] : kNames[0];
}

bool NeedsKeeping() {
  return Game.GameChanged || (Game.ScriptUnsaved && Game.ScrCount > 0) || Game.ProbabilityChanged;
}

bool StoreNothing(const std::string&) { return true; }

/// Script and matrix are written only when they may differ from those that were kept.
KeepUnsaved UnsavedOf(const std::string& name) {
  const bool sameScript = keeping.Edits == Game.ScriptEdits && keeping.Loads == Game.ScriptLoads &&
                          IsThere(name + ".bet");
  const bool sameMatrix = keeping.Matrix == Game.ProbMatrix && IsThere(name + ".prb");
  return {InData(name), sameScript ? StoreNothing : StoreScript,
          sameMatrix ? StoreNothing : StoreProbability};
}

void WriteKeptGame() {
  const std::string name = NameInUse();
  const std::vector<Record> records = MakeGameRecords(UnsavedOf(name));
  keeping.Edits = Game.ScriptEdits;
  keeping.Loads = Game.ScriptLoads;
  keeping.Matrix = Game.ProbMatrix;
  const std::uint32_t sum =
      Crc32c({reinterpret_cast<const char*>(records.data()), records.size() * kRecordSize});
  if (sum == keeping.Game && IsThere(name + ".crp")) return;
  WriteRecords(InData(name + ".crp"), records);
  keeping.Game = sum;
}

std::string LocalTimeOf(const std::string& path) {
  std::error_code failure;
  const auto written = fs::last_write_time(PathOf(path), failure);
  if (failure) return {};
  const std::time_t time = std::chrono::system_clock::to_time_t(
      std::chrono::time_point_cast<std::chrono::system_clock::duration>(
          std::chrono::file_clock::to_sys(written)));
  std::tm parts{};
  if (localtime_r(&time, &parts) == nullptr) return {};
  std::array<char, 40> text{};
  const std::size_t length = std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M:%S", &parts);
  return {text.data(), length};
}

bool WantsKeptGame(const std::string& path, const std::string& declined) {
  return AskYesNo(FileText(path,
                           "Kelvanor was not closed properly. The game that was being played "
                           "has been kept, as it stood on " +
                               LocalTimeOf(path) +
                               ".\n\nDo you want to go on with it?\n\nWith No, the game of the "
                               "last session that was closed goes on, and the kept one stays "
                               "as " +
                               declined + "."),
                  "Kelvanor Was Not Closed Properly", kTopicFiles);
}

/// What the kept files stand for has no name of the player's.
void ForgetNames(const std::string& name) {
  Game.GameFileName.clear();
  Game.GameChanged = true;
  if (Game.AutoBetFile == InData(name + ".bet")) {
    Game.AutoBetFile.clear();
    Game.ScriptUnsaved = true;
  }
  if (Game.PrbFileName == InData(name + ".prb")) {
    Game.PrbFileName.clear();
    Game.ProbabilityChanged = true;
  }
}

void Decline(const std::string& name) {
  for (const char* other : kNames)
    if (name != other) Remove(std::string(other) + kDeclined);
  std::error_code ignored;
  fs::rename(PathOf(InData(name + ".crp")), PathOf(InData(name + kDeclined)), ignored);
}

}  // namespace

void KeepGame() {
  if (!keeping.Offered) return;
  const int result = Game.LastFileResult;
  try {
    if (NeedsKeeping())
      WriteKeptGame();
    else
      RemoveKeptGame();
  } catch (const std::exception&) {
    ReportError("Keep Game");
  }
  Game.LastFileResult = result;
}

void RemoveKeptGame() {
  const std::string name = NameInUse();
  for (const char* extension : {".crp", ".bet", ".prb"}) Remove(name + extension);
}

void OfferKeptGame() {
  keeping = Keeping();
  const std::string name = NameInUse();
  if (!IsThere(name + ".crp")) {
    keeping.Offered = true;
    return;
  }
  const std::string path = InData(name + ".crp");
  bool opened = WantsKeptGame(path, name + kDeclined);
  if (opened) {
    OpenGame(path, true);
    opened = Game.LastFileResult > 0;
  }
  if (opened)
    ForgetNames(name);
  else
    Decline(name);
  TheHost.RefreshViews();
  keeping.Offered = true;
}
