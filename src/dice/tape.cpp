#include "dice/tape.h"

#include <algorithm>
#include <array>
#include <climits>
#include <optional>
#include <stdexcept>

#include "core/error_report.h"
#include "core/raw_file.h"
#include "dice/tape_change.h"

namespace {

constexpr std::size_t kBlock = 30'000;

/// Whether there is a record here, and a position behind it.
bool IsPosition(int position) { return position >= 1 && position < INT_MAX; }

std::int64_t PlaceOf(std::int64_t record) { return record - 1; }

/// The tape between two turns of the event loop: a stretch of it that was read ahead, or that
/// waits to be written.
struct HeldTape {
  std::optional<RawFile> File;
  std::string Name;
  RawFile::Use Use = RawFile::Use::Read;
  std::int64_t First = 0;  // record of the first byte
  std::size_t Count = 0;
  int LastBefore = 0;  // `DiceFileLast` before the bytes that wait
  std::array<char, kBlock> Bytes;

  bool Waits() const { return File && Use == RawFile::Use::Change && Count > 0; }
};
HeldTape held;

void Forget() {
  held.File.reset();
  held.Count = 0;
}

void WriteWaiting() {
  if (!held.Waits()) return;
  held.File->Write(PlaceOf(held.First), std::span(held.Bytes).first(held.Count));
  held.Count = 0;
}

/// What waits isn't on the tape, and won't be.
void StopRecording() {
  if (held.Waits()) {
    Game.DiceFilePos = Game.DiceFileEnd = static_cast<int>(held.First);
    Game.DiceFileLast = held.LastBefore;
  }
  Forget();
  Game.RecorderStatus = RecorderOff;
  Game.LastErrorText = "The throw could not be written to " + Game.DiceRollFile + "\n";
}

void Hold(RawFile::Use use) {
  if (held.File && held.Use == use && held.Name == Game.DiceRollFile) return;
  CloseTape();
  FinishTape(Game.DiceRollFile);
  held.File.emplace(Game.DiceRollFile, use);
  if (use == RawFile::Use::Change && !held.File->TryLock()) {
    held.File.reset();
    FailFor(std::errc::device_or_resource_busy);
  }
  held.Name = Game.DiceRollFile;
  held.Use = use;
}

/// The byte at `DiceFilePos`; none at the end.
std::optional<char> ReadAhead() {
  if (!IsPosition(Game.DiceFilePos)) return {};
  Hold(RawFile::Use::Read);
  const std::int64_t record = Game.DiceFilePos;
  if (record < held.First || record >= held.First + static_cast<std::int64_t>(held.Count)) {
    held.First = record;
    held.Count = held.File->ReadSome(PlaceOf(record), held.Bytes);
    if (held.Count == 0) return {};
  }
  return held.Bytes[static_cast<std::size_t>(record - held.First)];
}

/// Begins a stretch of throws that wait where `DiceFilePos` stands.
void BeginStretch() {
  WriteWaiting();
  const std::int64_t end = held.File->Length() + 1;
  Game.DiceFilePos = static_cast<int>(std::min<std::int64_t>(Game.DiceFilePos, end));
  if (!IsPosition(Game.DiceFilePos)) throw std::out_of_range("position");
  held.First = Game.DiceFilePos;
  held.LastBefore = Game.DiceFileLast;
}

void AddToStretch(unsigned char byte) {
  Hold(RawFile::Use::Change);
  const bool follows = Game.DiceFilePos == held.First + static_cast<std::int64_t>(held.Count);
  const bool fits = held.Count > 0 && held.Count < kBlock;
  if (!follows || !fits || !IsPosition(Game.DiceFilePos)) BeginStretch();
  held.Bytes[held.Count++] = static_cast<char>(byte);
  Game.DiceFileLast = Game.DiceFilePos++;
  Game.DiceFileEnd = Game.DiceFilePos;
}

}  // namespace

unsigned char DiceByte(int die1, int die2) {
  return static_cast<unsigned char>(die2 * 32 + die1 * 4);
}

TapeRead ReadRecordedRoll() {
  std::optional<char> byte;
  try {
    byte = ReadAhead();
  } catch (const std::exception&) {
    ReportError("Playback Dice Rolls");
    Forget();
    return TapeRead::Unreadable;
  }
  if (!Game.HyperDriveOn) CloseTape();
  if (!byte) return TapeRead::End;
  if (!IsThrow(*byte)) {
    Game.RecorderStatus = RecorderOff;
    return TapeRead::BadByte;
  }
  Game.Die1 = FirstDie(*byte);
  Game.Die2 = SecondDie(*byte);
  Game.DiceFileEnd = ++Game.DiceFilePos;  // the game's throws select nothing
  return TapeRead::Throw;
}

void WriteRecordedRoll() {
  try {
    AddToStretch(DiceByte(Game.Die1, Game.Die2));
  } catch (const std::exception&) {
    return StopRecording();
  }
  if (!Game.HyperDriveOn) CloseTape();
}

void CloseTape() {
  try {
    WriteWaiting();
    Forget();
  } catch (const std::exception&) {
    StopRecording();
  }
}
