#include "dice/tape_file.h"

#include <algorithm>
#include <climits>
#include <filesystem>
#include <functional>
#include <system_error>
#include <utility>
#include <vector>

#include "core/error_report.h"
#include "core/game_state.h"
#include "core/progress.h"
#include "core/raw_file.h"
#include "core/record_file.h"
#include "dice/tape.h"
#include "dice/tape_change.h"

namespace {

namespace fs = std::filesystem;

constexpr std::int64_t kBlock = 30'000;
constexpr const char* kTextScratch = "cnvrtasc.xx~";

using Block = std::vector<char>;
using Use = RawFile::Use;

/// The work on the tape that is under way.
Progress* Work = nullptr;

/// Runs a piece of work on the tape in use, which returns the number of throws that it concerned.
void OnTape(const std::string& place, const std::function<std::int64_t()>& work) {
  CloseTape();
  Progress progress(place);
  Progress* const before = std::exchange(Work, &progress);
  try {
    FinishTape(Game.DiceRollFile);
    const std::int64_t rolls = Game.DiceRollFile.empty() ? 0 : work();
    Game.LastFileResult = static_cast<int>(std::min<std::int64_t>(rolls, INT_MAX));
  } catch (const WorkEnded& ended) {
    Game.LastFileResult = 0;
    Game.MsgText = ended.what();  // the player knows
  } catch (const std::exception&) {
    ReportError(place);
    Game.LastFileResult = kSystemFailed;
  }
  Work = before;
}

double Share(std::int64_t done, std::int64_t all) {
  return static_cast<double>(done) / static_cast<double>(all);
}

bool SameFile(const std::string& a, const std::string& b) {
  std::error_code ignored;
  return fs::equivalent(PathOf(a), PathOf(b), ignored);
}

// --- Ranges ---

using Range = TapeRange;

/// The throws of a range that there are.
Range WithinTape(std::int64_t from, std::int64_t count, std::int64_t length) {
  if (count <= 0 || from > length) return {};
  const bool toTheEnd = from > 0 && count > length - from;
  const std::int64_t end = toTheEnd ? length : std::min(from + count - 1, length);
  const std::int64_t place = std::max<std::int64_t>(from, 1) - 1;
  return {place, std::max<std::int64_t>(end - place, 0)};
}

/// The place of a record, or of the one behind the last.
std::int64_t PlaceToInsert(std::int64_t at, std::int64_t length) {
  return std::clamp<std::int64_t>(at, 1, length + 1) - 1;
}

std::span<char> PartOf(Block& block, std::int64_t left) {
  return std::span(block).first(static_cast<std::size_t>(std::min(left, kBlock)));
}

/// Calls `take` with one block of a range after the other.
template <class Take>
void ForBlocks(const RawFile& file, const Range& range, Take take) {
  Block block(kBlock);
  for (std::int64_t done = 0; done < range.Count; done += kBlock) {
    Work->Show(Share(done, range.Count));
    const std::span<char> bytes = PartOf(block, range.Count - done);
    file.ReadAll(range.Place + done, bytes);
    take(std::span<const char>(bytes));
  }
}

void CopyBetween(const RawFile& source, const Range& range, RawFile& target, std::int64_t to) {
  ForBlocks(source, range, [&](std::span<const char> bytes) {
    target.Write(to, bytes);
    to += static_cast<std::int64_t>(bytes.size());
  });
}

void WriteZeros(RawFile& file, const Range& range) {
  Block zeros(kBlock);
  for (std::int64_t done = 0; done < range.Count; done += kBlock)
    file.Write(range.Place + done, PartOf(zeros, range.Count - done));
}

// --- Positions ---

int PositionOf(std::int64_t record, std::int64_t first, std::int64_t last) {
  return static_cast<int>(
      std::clamp(record, first, std::max(first, std::min<std::int64_t>(last, INT_MAX))));
}

void KeepWithinTape(std::int64_t length) {
  Game.DiceFilePos = PositionOf(Game.DiceFilePos, 1, length + 1);
  Game.DiceFileLast = PositionOf(Game.DiceFileLast, 0, length);
  Game.DiceFileEnd = PositionOf(Game.DiceFileEnd, 0, length + 1);
}

/// The positions follow the throws at which they stood.
void FollowInsertion(const Range& room, std::int64_t length) {
  for (int* position : {&Game.DiceFilePos, &Game.DiceFileLast, &Game.DiceFileEnd})
    if (*position > room.Place) *position = PositionOf(*position + room.Count, 0, length + 1);
  KeepWithinTape(length);
}

void FollowDeletion(const Range& gone, std::int64_t length) {
  const auto follow = [&gone](int& position, std::int64_t inside) {
    if (position > gone.Place + gone.Count)
      position = static_cast<int>(position - gone.Count);
    else if (position > gone.Place)
      position = PositionOf(inside, 0, INT_MAX);
  };
  follow(Game.DiceFilePos, gone.Place + 1);
  follow(Game.DiceFileEnd, gone.Place + 1);
  follow(Game.DiceFileLast, gone.Place);
  KeepWithinTape(length);
}

// --- Files ---

/// Fills room at `place` of the tape with the tape itself, as it was before the room was made.
void FillWithItself(RawFile& tape, const Range& room) {
  CopyBetween(tape, {0, room.Place}, tape, room.Place);
  CopyBetween(tape, {room.Place + room.Count, room.Count - room.Place}, tape, 2 * room.Place);
}

std::int64_t InsertFile(const std::string& path, std::int64_t at) {
  RawFile tape(Game.DiceRollFile, Use::Change);
  RawFile source(path, Use::Read);
  const Range room = {PlaceToInsert(at, tape.Length()), source.Length()};
  if (room.Count == 0) return 0;
  InsertInTape(tape, room, *Work, [&] {
    if (SameFile(path, Game.DiceRollFile))
      FillWithItself(tape, room);
    else
      CopyBetween(source, {0, room.Count}, tape, room.Place);
  });
  FollowInsertion(room, tape.Length());
  return room.Count;
}

// --- Text ---

/// Makes throws of the digits 1 to 6 as they come, two for a throw.
class DigitReader {
 public:
  void Read(char character, std::string& throws) {
    if (character < '1' || character > '6') return;
    const int digit = character - '0';
    if (die1_ != 0) throws += static_cast<char>(DiceByte(die1_, digit));
    die1_ = die1_ == 0 ? digit : 0;
  }

 private:
  int die1_ = 0;
};

/// The throws of a text in a file of their own, which goes with this.
class TextScratch {
 public:
  TextScratch(const std::string& path, const std::string& text) : path_(PathOf(path)) {
    const RawFile source(text, Use::Read);
    RemoveFile(path_);  // what a killed program left, and never what it may point to
    RawFile file(path_, Use::Create, RawFile::kThisUser);
    try {
      Convert(source, file);
    } catch (const std::exception&) {
      Remove();
      throw;
    }
  }
  ~TextScratch() { Remove(); }
  TextScratch(const TextScratch&) = delete;
  TextScratch& operator=(const TextScratch&) = delete;

 private:
  static void Convert(const RawFile& source, RawFile& file) {
    DigitReader digits;
    std::int64_t written = 0;
    ForBlocks(source, {0, source.Length()}, [&](std::span<const char> bytes) {
      std::string throws;
      for (const char character : bytes) digits.Read(character, throws);
      file.Write(written, throws);
      written += static_cast<std::int64_t>(throws.size());
    });
  }

  void Remove() {
    try {
      RemoveFile(path_);
    } catch (const std::exception&) {
      // The next conversion takes it away.
    }
  }

  std::filesystem::path path_;
};

}  // namespace

std::string ThrowsOfDigits(std::string_view text) {
  DigitReader digits;
  std::string throws;
  for (const char character : text) digits.Read(character, throws);
  return throws;
}

std::string RollText(char byte, const RollTextOptions& options) {
  const int die1 = FirstDie(byte);
  const int die2 = SecondDie(byte);
  std::string text;
  if (options.DieNumbers) text += "(" + std::to_string(die1) + "-" + std::to_string(die2) + ")";
  if (options.DieNumbers && options.Totals) text += "- ";
  if (options.Totals) text += std::to_string(die1 + die2);
  return text;
}

void OpenDiceRollFile(const std::string& path) {
  CloseTape();
  try {
    FinishTape(path);
    const bool isThere = FileExists(PathOf(path));
    const std::int64_t length = RawFile(path, isThere ? Use::Read : Use::Write).Length();
    Game.DiceRollFile = path;
    Game.DiceFilePos = 1;
    Game.DiceFileLast = Game.DiceFileEnd = 0;
    Game.RecorderStatus = RecorderOff;
    Game.LastFileResult = PositionOf(length, 1, INT_MAX);
  } catch (const std::exception&) {
    ReportError("Open Dice Roll File");
    Game.LastFileResult = kSystemFailed;
  }
}

void CloseDiceRollFile() {
  CloseTape();
  Game.LastFileResult = Game.DiceRollFile.empty() ? 0 : 1;
  Game.DiceRollFile.clear();
  Game.DiceFilePos = 1;
  Game.DiceFileLast = Game.DiceFileEnd = 0;
  Game.RecorderStatus = RecorderOff;
}

std::int64_t DiceRollCount() {
  CloseTape();
  if (Game.DiceRollFile.empty()) return 0;
  try {
    FinishTape(Game.DiceRollFile);
  } catch (const std::exception&) {
    ReportError("Finish Dice Roll File");
  }
  return static_cast<std::int64_t>(FileLength(Game.DiceRollFile));
}

void CopyRollsToFile(const std::string& path, std::int64_t from, std::int64_t count) {
  OnTape("Copy To Dice Roll File", [&]() -> std::int64_t {
    RawFile tape(Game.DiceRollFile, Use::Read);
    const Range range = WithinTape(from, count, tape.Length());
    if (range.Count == 0 || SameFile(path, Game.DiceRollFile)) return 0;
    FileReplacement file(path);
    ForBlocks(tape, range, [&file](std::span<const char> bytes) {
      file.Write({bytes.data(), bytes.size()});
    });
    file.Finish();
    return range.Count;
  });
}

void PasteRollsFromFile(const std::string& path, std::int64_t at) {
  OnTape("Paste From Dice Roll File", [&] { return InsertFile(path, at); });
}

void PasteRollsFromText(const std::string& path, std::int64_t at) {
  OnTape("Paste From Ascii/Text File", [&]() -> std::int64_t {
    const std::string scratch = Game.DataPath + kTextScratch;
    // The scratch file is emptied and deleted: it can't be what is read or written.
    if (SameFile(path, scratch) || SameFile(Game.DiceRollFile, scratch)) return 0;
    const TextScratch throws(scratch, path);
    return InsertFile(scratch, at);
  });
}

std::string ReadRolls(std::int64_t from, std::int64_t count) {
  std::string throws;
  OnTape("Read Dice Rolls", [&]() -> std::int64_t {
    RawFile tape(Game.DiceRollFile, Use::Read);
    const Range range = WithinTape(from, count, tape.Length());
    throws.resize(static_cast<std::size_t>(range.Count));
    throws.resize(tape.ReadSome(range.Place, throws));
    return static_cast<std::int64_t>(throws.size());
  });
  return throws;
}

void ForRolls(std::int64_t from, std::int64_t count,
              const std::function<void(std::string_view)>& take) {
  OnTape("Count Dice Rolls", [&]() -> std::int64_t {
    RawFile tape(Game.DiceRollFile, Use::Read);
    const Range range = WithinTape(from, count, tape.Length());
    ForBlocks(tape, range, [&take](std::span<const char> bytes) {
      take({bytes.data(), bytes.size()});
    });
    return range.Count;
  });
}

void PutRolls(std::int64_t at, std::string_view throws, bool over) {
  OnTape("Write Dice Rolls", [&]() -> std::int64_t {
    if (throws.empty()) return 0;
    RawFile tape(Game.DiceRollFile, Use::Change);
    const std::int64_t length = tape.Length();
    const auto count = static_cast<std::int64_t>(throws.size());
    const Range room = {PlaceToInsert(at, length), count};
    if (over) {
      WriteOverTape(tape, room.Place, throws, *Work);
    } else {
      InsertInTape(tape, room, *Work, [&] { tape.Write(room.Place, throws); });
      FollowInsertion(room, tape.Length());
    }
    return count;
  });
}

void CopyRollRange(std::int64_t to, std::int64_t from, std::int64_t count) {
  OnTape("Copy Dice Roll Range", [&]() -> std::int64_t {
    RawFile tape(Game.DiceRollFile, Use::Change);
    const std::int64_t length = tape.Length();
    const Range range = WithinTape(from, count, length);
    const std::int64_t place = PlaceToInsert(to, length);
    if (range.Count == 0 || place == range.Place) return 0;
    CopyOverTape(tape, range, place, *Work);
    KeepWithinTape(tape.Length());
    return range.Count;
  });
}

void MakeRoomForRolls(std::int64_t at, std::int64_t count) {
  OnTape("Make Room For Dice Rolls", [&]() -> std::int64_t {
    if (count <= 0) return 0;
    RawFile tape(Game.DiceRollFile, Use::Change);
    const std::int64_t length = tape.Length();
    const Range room = {PlaceToInsert(at, length), count};
    InsertInTape(tape, room, *Work, [&] {
      WriteZeros(tape, {room.Place, std::min(count, length - room.Place)});
    });
    FollowInsertion(room, tape.Length());
    return count;
  });
}

void DeleteRollRange(std::int64_t from, std::int64_t count) {
  OnTape("Delete Dice Roll Range", [&]() -> std::int64_t {
    RawFile tape(Game.DiceRollFile, Use::Change);
    const Range range = WithinTape(from, count, tape.Length());
    if (range.Count == 0) return 0;
    DeleteFromTape(tape, range, *Work);
    FollowDeletion(range, tape.Length());
    return range.Count;
  });
}

void CopyRollsToText(const std::string& path, std::int64_t from, std::int64_t count,
                     const RollTextOptions& options, std::int64_t firstNumber) {
  OnTape("Copy Dice Rolls To Text File", [&]() -> std::int64_t {
    RawFile tape(Game.DiceRollFile, Use::Read);
    const Range range = WithinTape(from, count, tape.Length());
    const bool anything = options.DieNumbers || options.Totals;
    if (range.Count == 0 || !anything || SameFile(path, Game.DiceRollFile)) return 0;
    FileReplacement file(path);
    std::int64_t number = std::min(firstNumber, INT64_MAX - range.Count);
    ForBlocks(tape, range, [&](std::span<const char> bytes) {
      std::string lines;
      for (const char byte : bytes) {
        if (options.RollNumbers) lines += std::to_string(number++) + " ";
        lines += RollText(byte, options) + "\r\n";
      }
      file.Write(lines);
    });
    file.Finish();
    return range.Count;
  });
}
