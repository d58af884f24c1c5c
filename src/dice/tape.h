// The dice tape: throws written to a file as they fall, and played back from it.
#pragma once

#include "core/game_state.h"

/// A throw as one byte: die 2 in bits 7 to 5, die 1 in bits 4 to 2.
unsigned char DiceByte(int die1, int die2);

/// The dice of a byte; 0 and 7 are no faces.
constexpr int FirstDie(char byte) { return (static_cast<unsigned char>(byte) >> 2) & 7; }
constexpr int SecondDie(char byte) { return static_cast<unsigned char>(byte) >> 5; }
constexpr bool IsThrow(char byte) { return FirstDie(byte) % 7 != 0 && SecondDie(byte) % 7 != 0; }

enum class TapeRead { Throw, End, BadByte, Unreadable };

/// Reads the throw at `DiceFilePos` of `DiceRollFile` into `Die1` and `Die2` and moves on, with
/// `DiceFileEnd`. At the end of the file, or of a file that can't be read, and on a byte that is no
/// throw, the dice stay as they are; a bad byte also turns the recorder off, and why a file can't
/// be read is in `LastErrorText`. Under Hyper-Drive the tape is read ahead
/// until `CloseTape`.
TapeRead ReadRecordedRoll();

/// Writes the dice at `DiceFilePos`, which moves on, with `DiceFileEnd`; a position behind the end
/// becomes the end. A tape that can't be written turns the recorder off and leaves the reason in
/// `LastErrorText`. Under Hyper-Drive the throws of a turn are written together, at `CloseTape`;
/// when that fails, `DiceFilePos` returns to the first of them.
void WriteRecordedRoll();

/// Lets go of the tape: throws that wait are written, and what was read ahead is forgotten. To be
/// called before anything else may look at the tape or change it.
void CloseTape();
