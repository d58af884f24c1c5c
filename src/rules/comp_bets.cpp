#include "rules/comp_bets.h"

#include "core/game_state.h"

namespace {

// Reading and writing differ from the second word on. Required.

struct MaskBit {
  std::size_t Word;
  int Bit;
};

MaskBit BitRead(int betId) {
  if (betId <= 31) return {0, betId - 1};
  if (betId <= 62) return {1, betId - 32};
  return {2, betId - 63};
}

MaskBit BitWritten(int line) {
  if (line <= 30) return {0, line};
  if (line <= 60) return {1, line - 31};
  return {2, line - 61};
}
}  // namespace

bool BetCountsForComps(int betId) {
  if (!IsBet(betId)) return false;
  const MaskBit at = BitRead(betId);
  return (Game.CompBetMask[at.Word] >> at.Bit & 1U) != 0;
}

CompBetList CompBets() {
  CompBetList bets{};
  for (int betId = 1; betId <= LastBet; ++betId) {
    bets[static_cast<unsigned>(betId - 1)] = BetCountsForComps(betId);
  }
  return bets;
}

void StoreCompBets(const CompBetList& bets) {
  Game.CompBetMask = {};
  for (int line = 0; line < LastBet; ++line) {
    const MaskBit at = BitWritten(line);
    if (bets[static_cast<unsigned>(line)]) Game.CompBetMask[at.Word] |= 1U << at.Bit;
  }
}

bool CompBetDefault(int betId) { return !IsOddsBet(betId); }
