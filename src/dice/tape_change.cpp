#include "dice/tape_change.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <memory>
#include <optional>
#include <system_error>
#include <utility>
#include <vector>

#include "core/record_file.h"
#include "core/scratch_file.h"

namespace {

namespace fs = std::filesystem;

constexpr std::int64_t kWindow = 1 << 18;      // of a long change: what a cache holds
constexpr std::int64_t kMostWindow = 1 << 28;  // of a journal that is read
constexpr std::uint64_t kMark = 0x314E524A4C4F524B;

/// A change under way: a range that moves, and the window of it that is being written.
struct Step {
  std::uint64_t Mark = kMark;
  std::uint64_t Number = 0;      // from 1, one more for each step
  std::uint64_t TapeNumber = 0;  // the file that it belongs to
  std::int64_t From = 0;         // the range
  std::int64_t Count = 0;
  std::int64_t To = 0;
  std::int64_t Done = 0;        // bytes of it that have been written before this window
  std::int64_t Window = 0;      // bytes of this window, which stand behind the step
  std::int64_t Before = 0;      // length of the tape before the change,
  std::int64_t Grown = 0;       // during it,
  std::int64_t After = 0;       // and after it
  std::uint64_t IsUndone = 0;   // whether it is taken back when it has been broken off
  std::uint64_t WindowSum = 0;  // 0 where only a kill was to be survived
  std::uint64_t Check = 0;
};
static_assert(std::is_trivially_copyable_v<Step>);
constexpr std::int64_t kStepSize = sizeof(Step);

/// A range that moves up begins with its end, so that nothing is written over before it was read.
std::int64_t OffsetOf(const Step& step) {
  return step.To > step.From ? step.Count - step.Done - step.Window : step.Done;
}

std::uint64_t Mixed(std::uint64_t sum, std::uint64_t word) {
  constexpr std::uint64_t kPrime = 0x9E3779B97F4A7C15;
  return std::rotl((sum ^ word) * kPrime, 29);
}

/// A sum over bytes.
std::uint64_t SumOf(std::span<const char> bytes) {
  std::uint64_t sum = kMark;
  for (std::size_t at = 0; at < bytes.size(); at += sizeof(std::uint64_t)) {
    std::uint64_t word = 0;
    std::memcpy(&word, bytes.data() + at, std::min(sizeof word, bytes.size() - at));
    sum = Mixed(sum, word);
  }
  return sum;
}

std::uint64_t CheckOf(Step step) {
  step.Check = 0;
  return SumOf({reinterpret_cast<const char*>(&step), sizeof step});
}

fs::path JournalOf(const fs::path& tape) {
  fs::path path = fs::canonical(tape);
  path += ".journal";
  return path;
}

/// The last step of a change, and the one before it: should the last be torn, that one is whole.
class Journal {
 public:
  /// A new one for a tape, with room for windows of `window` bytes.
  Journal(const RawFile& tape, std::int64_t window, bool safe)
      : path_(JournalOf(tape.Path())),
        scratch_(std::make_unique<ScratchFile>(path_.parent_path(), RawFile::kThisUser)),
        file_(&scratch_->File()),
        half_(kStepSize + window),
        safe_(safe) {
    file_->Grow(2 * half_);
  }

  /// One that was left behind.
  explicit Journal(const fs::path& path)
      : path_(path), left_(std::make_unique<RawFile>(path, RawFile::Use::Change)) {
    file_ = left_.get();
    half_ = file_->Length() / 2;
  }

  /// Reads the last step that is whole.
  std::optional<Step> Read(std::vector<char>& window) {
    std::optional<Step> last;
    for (const std::int64_t half : {0, 1}) {
      std::vector<char> bytes;
      const std::optional<Step> step = ReadHalf(half, bytes);
      if (!step || (last && last->Number > step->Number)) continue;
      last = step;
      window = std::move(bytes);
    }
    if (last) number_ = last->Number;
    return last;
  }

  /// The step goes behind its window: a kill leaves the former step, and the end of the power one
  /// of which the sum tells.
  void Put(Step step, std::span<const char> window) {
    step.Number = ++number_;
    step.WindowSum = safe_ ? SumOf(window) : 0;
    step.Check = CheckOf(step);
    const std::int64_t place = static_cast<std::int64_t>(number_ % 2) * half_;
    file_->Write(place + kStepSize, window);
    file_->Write(place, {reinterpret_cast<const char*>(&step), sizeof step});
    if (safe_) file_->Sync();
    if (scratch_ && !named_) TakeName();
  }

  /// The longest window.
  std::int64_t Room() const { return half_ - kStepSize; }

  /// Whether the tape has to be forced to disk before the next step.
  bool IsSafe() const { return safe_; }

  /// Ends the journal. One that comes back because the disk forgot that it was gone is empty.
  void Close() {
    file_->Cut(0);
    file_->Sync();
    RemoveFile(path_);
  }

 private:
  void TakeName() {
    scratch_->TakePlaceOf(path_);
    named_ = true;
    if (safe_) SyncFolder(path_.parent_path());
  }

  std::optional<Step> ReadHalf(std::int64_t half, std::vector<char>& window) const {
    Step step;
    const std::int64_t place = half * half_;
    if (half_ < kStepSize) return {};
    file_->ReadAll(place, {reinterpret_cast<char*>(&step), sizeof step});
    if (step.Mark != kMark || step.Check != CheckOf(step) || step.Window < 0) return {};
    if (step.Window > std::min(half_ - kStepSize, kMostWindow)) return {};
    window.resize(static_cast<std::size_t>(step.Window));
    file_->ReadAll(place + kStepSize, window);
    if (step.WindowSum != 0 && step.WindowSum != SumOf(window)) return {};
    return step;
  }

  fs::path path_;
  std::unique_ptr<ScratchFile> scratch_;
  std::unique_ptr<RawFile> left_;
  RawFile* file_ = nullptr;
  std::int64_t half_ = 0;
  std::uint64_t number_ = 0;
  bool safe_ = true;
  bool named_ = false;
};

void WriteWindow(RawFile& tape, const Journal& journal, const Step& step,
                 std::span<const char> window) {
  tape.Write(step.To + OffsetOf(step), window);
  if (journal.IsSafe()) tape.Sync();
}

/// Moves what is left of a range.
void MoveOn(RawFile& tape, Journal& journal, Step step, Progress& progress) {
  std::vector<char> window;
  while (step.Done < step.Count) {
    progress.ShowOnly(static_cast<double>(step.Done) / static_cast<double>(step.Count));
    step.Window = std::min(step.Count - step.Done, journal.Room());
    window.resize(static_cast<std::size_t>(step.Window));
    tape.ReadAll(step.From + OffsetOf(step), window);
    journal.Put(step, window);
    WriteWindow(tape, journal, step, window);
    step.Done += step.Window;
  }
}

void EndChange(RawFile& tape, Journal& journal, const Step& step) {
  if (tape.Length() > step.After) tape.Cut(step.After);
  tape.Sync();
  journal.Close();
}

/// The step that moves back what a step has moved.
Step Back(const Step& step) {
  Step back = step;
  back.From = step.To + step.Count - step.Done;
  back.To = step.From + step.Count - step.Done;
  back.Count = step.Done;
  back.Done = 0;
  back.After = step.Before;
  back.IsUndone = 0;
  return back;
}

/// Finishes or takes back what a journal tells. True when the change has been made.
bool FinishByJournal(RawFile& tape, Progress& progress) {
  const fs::path path = JournalOf(tape.Path());
  if (!fs::is_regular_file(fs::symlink_status(path))) return false;
  Journal journal(path);
  std::vector<char> window;
  std::optional<Step> step = journal.Read(window);
  if (!step || step->TapeNumber != tape.Number()) {
    journal.Close();
    return false;
  }
  // Until it has grown nothing else has happened to the tape; once it has been cut, all has.
  const std::int64_t length = tape.Length();
  if (length < step->Grown) {
    step->After = std::min(length, step->Before);
    EndChange(tape, journal, *step);
    return step->After < step->Before;
  }
  WriteWindow(tape, journal, *step, window);
  step->Done += step->Window;
  const bool isUndone = step->IsUndone != 0;
  MoveOn(tape, journal, isUndone ? Back(*step) : *step, progress);
  if (isUndone) step->After = step->Before;
  EndChange(tape, journal, *step);
  return !isUndone;
}

void TakeForChange(RawFile& tape) {
  if (!tape.TryLock()) FailFor(std::errc::device_or_resource_busy);
}

/// Runs a change. What fails is finished or taken back at once where that can be done.
template <class Work>
void Change(RawFile& tape, Progress& progress, Work work) {
  TakeForChange(tape);
  try {
    work();
  } catch (const std::exception&) {
    bool isMade = false;
    try {
      isMade = FinishByJournal(tape, progress);
    } catch (const std::exception&) {
      // It is left to the next who opens the tape.
    }
    if (!isMade) throw;
  }
}

Step StepOf(const RawFile& tape, const TapeRange& range, std::int64_t to) {
  Step step;
  step.TapeNumber = tape.Number();
  step.From = range.Place;
  step.Count = range.Count;
  step.To = to;
  step.Before = step.Grown = step.After = tape.Length();
  return step;
}

bool CanBeSafe(const Step& step) { return step.Count <= kSafeFromPowerLoss; }
std::int64_t RoomFor(const Step& step) { return CanBeSafe(step) ? step.Count : kWindow; }

/// Notes a change before anything of it, and lets the tape grow for it.
void Begin(RawFile& tape, Journal& journal, const Step& step, std::span<const char> window) {
  journal.Put(step, window);
  tape.Grow(step.Grown - step.Before);
}

/// Begins a change by the first window of a range, and moves it all.
void Move(RawFile& tape, Journal& journal, Step step, Progress& progress) {
  step.Window = RoomFor(step);
  std::vector<char> window(static_cast<std::size_t>(step.Window));
  tape.ReadAll(step.From + OffsetOf(step), window);
  Begin(tape, journal, step, window);
  WriteWindow(tape, journal, step, window);
  step.Done = step.Window;
  MoveOn(tape, journal, step, progress);
}

}  // namespace

void InsertInTape(RawFile& tape, const TapeRange& room, Progress& progress,
                  const std::function<void()>& fill) {
  if (room.Count > INT64_MAX - tape.Length()) FailFor(std::errc::no_space_on_device);
  Change(tape, progress, [&] {
    Step step = StepOf(tape, {room.Place, tape.Length() - room.Place}, room.Place + room.Count);
    step.Grown = step.After = step.Before + room.Count;
    step.IsUndone = 1;
    Journal journal(tape, RoomFor(step), CanBeSafe(step));
    Move(tape, journal, step, progress);
    fill();
    EndChange(tape, journal, step);
  });
}

void DeleteFromTape(RawFile& tape, const TapeRange& gone, Progress& progress) {
  Change(tape, progress, [&] {
    const std::int64_t behind = gone.Place + gone.Count;
    Step step = StepOf(tape, {behind, tape.Length() - behind}, gone.Place);
    step.After = step.Before - gone.Count;
    Journal journal(tape, RoomFor(step), CanBeSafe(step));
    Move(tape, journal, step, progress);
    EndChange(tape, journal, step);
  });
}

void CopyOverTape(RawFile& tape, const TapeRange& range, std::int64_t to, Progress& progress) {
  Change(tape, progress, [&] {
    Step step = StepOf(tape, range, to);
    step.Grown = step.After = std::max(step.Before, to + range.Count);
    Journal journal(tape, RoomFor(step), CanBeSafe(step));
    Move(tape, journal, step, progress);
    EndChange(tape, journal, step);
  });
}

void WriteOverTape(RawFile& tape, std::int64_t place, std::span<const char> throws,
                   Progress& progress) {
  Change(tape, progress, [&] {
    const auto count = static_cast<std::int64_t>(throws.size());
    Step step = StepOf(tape, {place, count}, place);
    step.Window = count;
    step.Grown = step.After = std::max(step.Before, place + count);
    Journal journal(tape, count, CanBeSafe(step));
    Begin(tape, journal, step, throws);
    tape.Write(place, throws);
    EndChange(tape, journal, step);
  });
}

void FinishTape(const std::string& path) {
  std::error_code none;
  const fs::path tapePath = PathOf(path);
  if (!fs::is_regular_file(tapePath, none) || !fs::exists(JournalOf(tapePath), none)) return;
  Progress progress("Finish Dice Roll File");
  RawFile tape(tapePath, RawFile::Use::Change);
  TakeForChange(tape);
  FinishByJournal(tape, progress);
}
