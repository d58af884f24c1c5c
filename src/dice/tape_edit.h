// What the editor of Dice Roll files does with the tape in use: its position, the throws selected,
// throws typed and drawn, and the scratch file that stands for a clipboard. The routines that
// change files leave `LastFileResult` as those of dice/tape_file do.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/// What `InsertRolls` can be.
enum InsertRollsKind : int { InsertNewRolls = 0, TypeOverRolls = 1 };

struct RollSelection {
  std::int64_t From = 1;
  std::int64_t Count = 0;
};

/// The selected throws: from `DiceFilePos` to `DiceFileEnd`, both of them included, in either
/// order, as far as the tape goes. None while `DiceFileEnd` is 0.
RollSelection SelectedRolls();

/// Selects throws; `DiceFilePos` stands at the first one named. Records beyond the tape become its
/// ends: 1, or one behind the last.
void SelectRolls(std::int64_t position, std::int64_t end);
inline void GoToRoll(std::int64_t record) { SelectRolls(record, record); }

/// Writes throws at `DiceFilePos`, as `InsertRolls` says, and moves on behind them, `DiceFileEnd`
/// with it.
void EnterRolls(std::string_view throws);

/// A throw by two calls of the runtime's own random function.
char RandomThrow();

/// The scratch file of copied throws, in the data folder, and whether there are any.
std::string CopiedRollsFile();
bool AnyRollsCopied();

/// Copies the selected throws there, takes them out, does both, or inserts what was copied at
/// `DiceFilePos`, which then stands behind it.
void CopySelectedRolls();
void DeleteSelectedRolls();
void CutSelectedRolls();
void PasteCopiedRolls();

// --- Highlighting: a flag in `DicePairSelected` for each ordered pair of dice ---

bool IsHighlighted(char throwByte);

/// True when all pairs of a total, or all that show a face, are flagged.
bool TotalIsHighlighted(int total);
bool PipIsHighlighted(int face);

/// Flags all of them, or none where all were.
void FlipTotal(int total);
void FlipPip(int face);
