#include "dice/tape_edit.h"

#include <algorithm>
#include <climits>

#include "core/game_state.h"
#include "core/record_file.h"
#include "dice/plain_random.h"
#include "dice/tape.h"
#include "dice/tape_file.h"

namespace {

constexpr int kFaces = 6;

int Position(std::int64_t record) {
  const std::int64_t last = std::min<std::int64_t>(DiceRollCount() + 1, INT_MAX);
  return static_cast<int>(std::clamp<std::int64_t>(record, 1, last));
}

bool& PairFlag(int die1, int die2) {
  return Game.DicePairSelected[static_cast<unsigned>((die1 - 1) * kFaces + die2 - 1)];
}

/// Calls `take` with each pair of dice that `belongs` holds for.
template <class Belongs, class Take>
void ForPairs(Belongs belongs, Take take) {
  for (int die1 = 1; die1 <= kFaces; ++die1)
    for (int die2 = 1; die2 <= kFaces; ++die2)
      if (belongs(die1, die2)) take(PairFlag(die1, die2));
}

template <class Belongs>
bool AllFlagged(Belongs belongs) {
  bool all = true;
  ForPairs(belongs, [&all](bool flag) { all = all && flag; });
  return all;
}

template <class Belongs>
void Flip(Belongs belongs) {
  const bool on = !AllFlagged(belongs);
  ForPairs(belongs, [on](bool& flag) { flag = on; });
}

auto Makes(int total) {
  return [total](int die1, int die2) { return die1 + die2 == total; };
}

auto Shows(int face) {
  return [face](int die1, int die2) { return die1 == face || die2 == face; };
}

}  // namespace

RollSelection SelectedRolls() {
  const auto [low, high] = std::minmax(Game.DiceFilePos, Game.DiceFileEnd);
  const std::int64_t from = std::max(low, 1);
  const std::int64_t to = std::min<std::int64_t>(high, DiceRollCount());
  return {from, Game.DiceFileEnd < 1 ? 0 : std::max<std::int64_t>(to - from + 1, 0)};
}

void SelectRolls(std::int64_t position, std::int64_t end) {
  Game.DiceFilePos = Position(position);
  Game.DiceFileEnd = Position(end);
}

void EnterRolls(std::string_view throws) {
  const std::int64_t at = Position(Game.DiceFilePos);
  PutRolls(at, throws, Game.InsertRolls == TypeOverRolls);
  if (Game.LastFileResult > 0) GoToRoll(at + static_cast<std::int64_t>(throws.size()));
}

char RandomThrow() {
  const int die1 = PlainFace();
  return static_cast<char>(DiceByte(die1, PlainFace()));
}

std::string CopiedRollsFile() { return Game.DataPath + "copyfile.rll"; }

bool AnyRollsCopied() { return FileLength(CopiedRollsFile()) > 0; }

void CopySelectedRolls() {
  const RollSelection rolls = SelectedRolls();
  CopyRollsToFile(CopiedRollsFile(), rolls.From, rolls.Count);
}

void DeleteSelectedRolls() {
  const RollSelection rolls = SelectedRolls();
  DeleteRollRange(rolls.From, rolls.Count);
  if (Game.LastFileResult > 0) GoToRoll(rolls.From);
}

void CutSelectedRolls() {
  CopySelectedRolls();
  if (Game.LastFileResult > 0) DeleteSelectedRolls();
}

void PasteCopiedRolls() {
  PasteRollsFromFile(CopiedRollsFile(), Game.DiceFilePos);
  if (Game.LastFileResult > 0) GoToRoll(Game.DiceFilePos);
}

bool IsHighlighted(char throwByte) {
  return IsThrow(throwByte) && PairFlag(FirstDie(throwByte), SecondDie(throwByte));
}

bool TotalIsHighlighted(int total) { return AllFlagged(Makes(total)); }
bool PipIsHighlighted(int face) { return AllFlagged(Shows(face)); }
void FlipTotal(int total) { Flip(Makes(total)); }
void FlipPip(int face) { Flip(Shows(face)); }
