// Dice Roll files as a whole: ranges of throws, and their exchange with text. All work on the tape
// `DiceRollFile` in blocks, so that a tape of any length needs little memory. Records count from 1.
// Every routine leaves `LastFileResult`: above 0 for success, 0 when there was nothing to do, -1
// when the system failed: the reason is in `LastErrorText` and the tape is as it was, or becomes so
// when it is used next (`dice/tape_change`). Ranges and positions that lie outside
// are cut to the tape, and `DiceFilePos`, `DiceFileLast` and `DiceFileEnd` follow the throws at
// which they stood. The tape itself is never the target of a copy. What takes long is shown, and
// may be ended by the player: 0, the tape as it was, and a text in `MsgText`.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

/// Opens a tape, or creates an empty one with a new name: `DiceRollFile`, `DiceFilePos` 1, the
/// recorder off.
void OpenDiceRollFile(const std::string& path);
void CloseDiceRollFile();

/// Throws on the tape in use; 0 without one.
std::int64_t DiceRollCount();

/// What there is of `count` throws from record `from`, a byte each.
std::string ReadRolls(std::int64_t from, std::int64_t count);

/// Hands out the throws of a range in blocks.
void ForRolls(std::int64_t from, std::int64_t count,
              const std::function<void(std::string_view throws)>& take);

/// Writes throws at record `at` (at most one behind the end), over those that stand there or with
/// room made for them.
void PutRolls(std::int64_t at, std::string_view throws, bool over);

/// Copies `count` throws from record `from` of the tape to a file of its own.
void CopyRollsToFile(const std::string& path, std::int64_t from, std::int64_t count);

/// Inserts all throws of another file before record `at` (at most one behind the end).
void PasteRollsFromFile(const std::string& path, std::int64_t at);

/// The throws that the digits 1 to 6 of a text make, two for a throw: die 1, then die 2. Whatever
/// else stands there is skipped, a lone last digit dropped.
std::string ThrowsOfDigits(std::string_view text);

/// Inserts the throws that the digits of a text file make, by way of a scratch file.
void PasteRollsFromText(const std::string& path, std::int64_t at);

/// Copies `count` throws over others of the tape, which may grow; or makes room before record `at`,
/// with bytes that are no throws; or takes throws out.
void CopyRollRange(std::int64_t to, std::int64_t from, std::int64_t count);
void MakeRoomForRolls(std::int64_t at, std::int64_t count);
void DeleteRollRange(std::int64_t from, std::int64_t count);

/// Writes throws as text, a line each, as the options ask; `firstNumber` numbers the first.
struct RollTextOptions {
  bool RollNumbers = false;
  bool DieNumbers = false;
  bool Totals = false;
};
std::string RollText(char throwByte, const RollTextOptions& options);
void CopyRollsToText(const std::string& path, std::int64_t from, std::int64_t count,
                     const RollTextOptions& options, std::int64_t firstNumber);
