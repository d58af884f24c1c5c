#include "persistence/game_file.h"

#include <algorithm>
#include <memory>

#include "autobet/output_file.h"
#include "autobet/script.h"
#include "bets/bet_history.h"
#include "bets/consistency.h"
#include "bets/ledger.h"
#include "bets/new_game.h"
#include "core/checksum.h"
#include "core/error_report.h"
#include "core/faults.h"
#include "core/file_failure.h"
#include "core/game_state.h"
#include "core/help_topics.h"
#include "core/host.h"
#include "core/messages.h"
#include "core/record_file.h"
#include "core/sounds.h"
#include "persistence/companions.h"
#include "persistence/game_file_table.h"
#include "persistence/repair.h"
#include "stats/bankroll_graph.h"

namespace {

constexpr const char* kUnableToOpen = "Unable to Open Kelvanor Game File";
constexpr const char* kUnableToSave = "Unable to Save Kelvanor Game File";

constexpr unsigned kWidth = WidthOf(SlotForm::IntegerSlot);
constexpr unsigned kChipFields = 4;
constexpr unsigned kChipsPerRecord = kRecordSize / (kChipFields * kWidth);
constexpr unsigned kFlagFields = 2;
constexpr unsigned kFlagsPerRecord = kRecordSize / (kFlagFields * kWidth);

/// Under Hyper-Drive games may end thousands of times a second, and to keep one takes as long as
/// many of them: it is done now and then only.
constexpr std::uint32_t kKeptEvery = 500;  // milliseconds

/// Room for all chips, and for more flags than a script can name.
constexpr std::size_t kMostRecords = 10'000;

void Tell(const std::string& path, const std::string& text, const char* title) {
  ShowMessage(BareName(path) + text, title, kTopicFiles, OkStop);
}

// --- The checksum ---

constexpr std::string_view kSumMark = "SUM1";
constexpr std::size_t kSumMarkOffset = 200;
constexpr std::size_t kSumOffset = kSumMarkOffset + kSumMark.size();

/// Of all bytes of a file but those of the sum itself, and of its length.
std::uint32_t SumOf(std::vector<Record> records, std::uintmax_t length) {
  records[kOwnFieldsRecord - 1].PutLong(kSumOffset, 0);
  const std::uint32_t sum =
      Crc32c({reinterpret_cast<const char*>(records.data()), records.size() * kRecordSize});
  return Crc32c(std::to_string(length), sum);
}

std::int32_t Signed(std::uint32_t sum) { return static_cast<std::int32_t>(sum); }

void PutChecksum(std::vector<Record>& records) {
  Record& own = records[kOwnFieldsRecord - 1];
  own.PutText(kSumMarkOffset, kSumMark.size(), kSumMark);
  own.PutLong(kSumOffset, Signed(SumOf(records, records.size() * kRecordSize)));
}

/// Files of before, and of other programs, have no sum. Where one of the two marks is damaged the
/// other tells.
bool HasChecksum(const Record& own) {
  const bool marked = own.Text(kSumMarkOffset, kSumMark.size()) == kSumMark;
  const bool ours = own.Text(kOwnFieldsOffset, kOwnFieldsMarker.size()) == kOwnFieldsMarker;
  return marked || (ours && (own.Long(kSumMarkOffset) != 0 || own.Long(kSumOffset) != 0));
}

bool IsDamaged(const RecordFile& file) {
  const Record own = file.At(kOwnFieldsRecord);
  return HasChecksum(own) && own.Long(kSumOffset) != Signed(SumOf(file.Records, file.Length));
}

std::string FormerFileText(const std::string& path) {
  const std::string former = path + std::string(kFormerExtension);
  if (FileLength(former) == 0) return {};
  return "\n\nThe file from before the last save is there too: " + BareName(former) + ".";
}

bool WantsDamaged(const std::string& path) {
  return AskYesNo(FileText(path,
                           "is damaged: it isn't what Kelvanor has written.\n\nDo you want to "
                           "open what can be read of it, as a new game without a name? The "
                           "file stays as it is." +
                               FormerFileText(path)),
                  "Damaged Game File", kTopicFiles);
}

void TellCountersAnew(const std::string& path) {
  ShowMessage(FileText(path,
                       "holds counts of rolls and bets that contradict each other. They begin "
                       "anew; bankroll, bets and settings are as they were saved." +
                           FormerFileText(path)),
              "Counts Begin Anew", kTopicFiles, OkStop);
}

// --- Writing ---

std::int16_t Short(int value) {
  return static_cast<std::int16_t>(std::clamp(value, -32768, 32767));
}

/// Element `index` of a list in groups of Integers begins here; the record is added when it's new.
Record& GroupRecord(std::vector<Record>& records, std::size_t first, unsigned index,
                    unsigned perRecord) {
  const std::size_t at = first + index / perRecord;
  if (records.size() <= at) records.resize(at + 1);
  return records[at];
}

void PutChips(std::vector<Record>& records) {
  const std::size_t first = records.size();
  for (unsigned i = 0; i < static_cast<unsigned>(Game.ChipCount); ++i) {
    const Chip& chip = Game.ChipList[i];
    Record& record = GroupRecord(records, first, i, kChipsPerRecord);
    unsigned offset = i % kChipsPerRecord * kChipFields * kWidth;
    for (const int value : {chip.BetId, chip.Picture, chip.X, chip.Y}) {
      record.PutInteger(offset, Short(value));
      offset += kWidth;
    }
  }
}

void PutFlags(std::vector<Record>& records) {
  const std::size_t first = records.size();
  for (unsigned i = 0; i < Game.Flags.size(); ++i) {
    Record& record = GroupRecord(records, first, i, kFlagsPerRecord);
    const unsigned offset = i % kFlagsPerRecord * kFlagFields * kWidth;
    record.PutInteger(offset, Game.Flags[i].FlagValue);
    record.PutInteger(offset + kWidth, Game.Flags[i].FlagPrev);
  }
}

/// False in `whole` when something unsaved couldn't be written.
std::vector<Record> RecordsOfGame(const KeepUnsaved& unsaved, bool& whole) {
  std::vector<Record> records(kFixedRecords);
  whole = PutCompanions(records, unsaved);
  PutFields(WindowFields(), Game, records);
  PutFields(GameFields(), Game, records);
  records[kOwnFieldsRecord - 1].PutText(kOwnFieldsOffset, kOwnFieldsMarker.size(),
                                        kOwnFieldsMarker);
  PutChips(records);
  PutFlags(records);
  PutChecksum(records);
  return records;
}

/// No game is written or read in the middle of a roll.
bool IsAmidRoll(const std::string& path, const char* doing, const char* title) {
  if (!Game.RollInProgress) return false;
  Game.LastFileResult = 0;
  Tell(path, std::string("\ncan't be ") + doing + " while the dice roll.", title);
  return true;
}

/// The game is as it stands in its file.
void NameGame(const std::string& path) {
  Game.GameFileName = IsDefaultGame(path) ? std::string() : path;
  Game.GameChanged = false;
}

/// A game that must not be saved over the file that it came from.
void LeaveUntitled() {
  Game.GameFileName.clear();
  Game.GameChanged = true;
}

// --- Reading ---

bool CanBeAGame(const RecordFile& file) {
  return file.Length >= kFixedRecords * kRecordSize && IsGameHeading(file.At(1));
}

/// Chips that are no longer in the file are free records.
void TakeChips(const RecordFile& file) {
  for (unsigned i = 0; i < static_cast<unsigned>(Game.ChipCount); ++i) {
    const Record record = file.At(kFixedRecords + 1 + i / kChipsPerRecord);
    const unsigned offset = i % kChipsPerRecord * kChipFields * kWidth;
    Game.ChipList[i] = {record.Integer(offset), record.Integer(offset + kWidth),
                        record.Integer(offset + 2 * kWidth), record.Integer(offset + 3 * kWidth)};
  }
}

std::size_t RecordsOfChips(int chips) {
  return (static_cast<std::size_t>(chips) + kChipsPerRecord - 1) / kChipsPerRecord;
}

void TakeFlags(const RecordFile& file, std::size_t chipRecords) {
  for (unsigned i = 0; i < Game.Flags.size(); ++i) {
    const Record record = file.At(kFixedRecords + chipRecords + 1 + i / kFlagsPerRecord);
    const unsigned offset = i % kFlagsPerRecord * kFlagFields * kWidth;
    Game.Flags[i].FlagValue = record.Integer(offset);
    Game.Flags[i].FlagPrev = record.Integer(offset + kWidth);
  }
  Game.FlagsTouched = true;
}

/// What no file keeps: half-done commands of the table.
void EndCommands() {
  Game.KeyedBoxOpen = false;
  Game.ClickMode = NoClickMode;
  Game.ManualRollPending = false;
  Game.KeepRolling = false;
  Game.StopMessage.clear();
}

/// What the file itself has told.
struct Taken {
  bool Sound = false;
  bool CountersAnew = false;
  std::size_t ChipRecords = 0;  // that chips take up
};

/// Reads and repairs all that stands in the file itself. When no game can be made of it the record
/// is in any state.
Taken TakeRecord(const RecordFile& file, bool windows) {
  Taken taken;
  try {
    EndCommands();
    TakeFields(GameFields(), file, Game);
    if (windows) TakeFields(WindowFields(), file, Game);
    ExpectAnyTallies();
    taken.ChipRecords = RecordsOfChips(Game.ChipCount);
    TakeChips(file);
    taken.CountersAnew = RepairGame();
    RecomputeBankrollAverage();
    taken.Sound = FirstInconsistency().empty();
  } catch (const RunTimeFault&) {
    taken.Sound = false;  // amounts beyond all reckoning
  }
  return taken;
}

/// The log has nothing to tell of what was read, and the next roll takes all snapshots.
void SettleIn() {
  Game.BetWorkingPrev = Game.BetWorking;
  Game.AutoBetActivePrev = Game.AutoBetActive;
  Game.AutoBetFilePrev = Game.AutoBetFile;
  Game.SnapshotsDue = true;
  Game.WorkingTouched = true;
  Game.WorkingSnapshotDue = true;
  Game.LastRolls.clear();
  ForgetCommands();
  LoadStickPerson();
}

void ShowGame() {
  TheHost.RefreshViews();
  TheHost.RedrawLayout();
  TheHost.RedrawBets();
}

/// Keeps rolls and other games out while the player reads of companions.
class Loading {
 public:
  Loading() { Game.RollInProgress = true; }
  ~Loading() { Game.RollInProgress = false; }
  Loading(const Loading&) = delete;
  Loading& operator=(const Loading&) = delete;
};

/// Puts back the game that stood before a load that failed half-way.
void PutBack(const GameState& former) {
  Game = former;
  ScriptEdited();
  UseOutputFile(former.AutoBetOutputFile);
}

/// Which of a game's companions are taken over with it.
enum class Companions { All, DiceAlone };

/// Reads a whole game; false when the file is none. What is in force then is not to be used.
bool TakeGame(const std::string& path, const RecordFile& file, Companions companions) {
  const Taken taken = TakeRecord(file, IsDefaultGame(path));
  if (!taken.Sound) return false;
  {
    const Loading loading;
    if (companions == Companions::All)
      TakeCompanions(file, TextOfPath(PathOf(path).parent_path()));
    else
      TakeMatrixAlone(file);
    if (taken.CountersAnew) TellCountersAnew(path);
  }
  TakeFlags(file, taken.ChipRecords);
  SettleIn();
  NameGame(path);
  if (path.ends_with(kFormerExtension)) LeaveUntitled();
  Game.LastFileResult = file.FileResult();
  return true;
}

void Open(const std::string& path, bool tellRefusal, Companions companions) {
  if (IsAmidRoll(path, "read", kUnableToOpen)) return;
  std::unique_ptr<GameState> former;
  try {
    const RecordFile file = ReadRecords(path, kMostRecords);
    const bool damaged = CanBeAGame(file) && IsDamaged(file);
    if (damaged && !WantsDamaged(path)) {
      Game.LastFileResult = 0;
      return;
    }
    former = std::make_unique<GameState>(Game);
    if (CanBeAGame(file) && TakeGame(path, file, companions)) {
      if (damaged) LeaveUntitled();
      ShowGame();
      return;
    }
    Game = *former;
    Game.LastFileResult = 0;
    if (tellRefusal)
      Tell(path,
           "\n\nThis file is either from a different version, has been corrupted, or is not a true "
           "Kelvanor game file.",
           kUnableToOpen);
  } catch (const std::exception&) {
    if (former) PutBack(*former);
    FileFailed(path, "read", "Open Game", kUnableToOpen, kTopicFiles);
  }
}

}  // namespace

bool IsDefaultGame(const std::string& path) {
  return TrimmedLower(BareName(path)) == "default.crp";
}

std::vector<Record> MakeGameRecords(const KeepUnsaved& unsaved) {
  bool whole = false;
  return RecordsOfGame(unsaved, whole);
}

void SaveGame(const std::string& path) {
  if (IsAmidRoll(path, "written", kUnableToSave)) return;
  try {
    bool whole = false;
    const std::vector<Record> records =
        RecordsOfGame(IsDefaultGame(path) ? InSession() : KeepUnsaved(), whole);
    WriteRecords(path, records, Durability::Disk, Former::Kept);
    Game.LastFileResult = whole ? static_cast<int>(records.size() * kRecordSize) : kSystemFailed;
    if (whole) NameGame(path);
  } catch (const std::exception&) {
    FileFailed(path, "written", "Save Game", kUnableToSave, kTopicFiles);
  }
}

void OpenGame(const std::string& path, bool tellRefusal) {
  Open(path, tellRefusal, Companions::All);
}

void OpenGameAlone(const std::string& path) { Open(path, true, Companions::DiceAlone); }

void SaveGameToTemp() {
  static std::uint32_t keptAt = 0;
  const std::uint32_t now = TheHost.Milliseconds();
  if (Game.HyperDriveOn && now - keptAt < kKeptEvery) return;
  keptAt = now;
  try {
    SettleLedger();
    // Under Hyper-Drive games may end many times a second.
    WriteRecords(Game.DataPath + "lastgame.crp", MakeGameRecords({}),
                 Game.HyperDriveOn ? Durability::System : Durability::Disk);
  } catch (const std::exception&) {
    ReportError("Save Game");
    Game.LastFileResult = kSystemFailed;
  }
}
