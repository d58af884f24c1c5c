// Bets that a script names by what the table shows at the moment.
#pragma once

#include <array>

#include "autobet/language.h"
#include "core/game_state.h"

inline constexpr int kMostStack = LastSlot - ChipStackBase;

constexpr bool IsStackNumber(int stack) { return stack >= 0 && stack <= kMostStack; }

/// The id of the Chip-Stack whose number is the value of Chip-Stack `stack` in `bets`; 0 when that
/// value leads out of 0 to 99, or there is no such stack.
inline int StackReferredTo(int stack, const std::array<Currency, kSlots>& bets = Game.Bets) {
  if (!IsStackNumber(stack)) return 0;
  const Currency value = bets[static_cast<unsigned>(ChipStackBase + stack)];
  if (value < 0 || value >= kMostStack) return 0;
  return ChipStackBase + static_cast<int>(value.Raw() / Currency::kScale);
}

/// The bet of a family on the point; 0 without a point.
inline int BetOnPoint(BetFamily family) {
  return Game.Point == 0 ? 0 : BetOnNumber(family, Game.Point);
}
