// What the last rolls were and brought.
#pragma once

#include <vector>

#include "core/currency.h"

/// A roll that has ended: the dice, the point before and after it (0 for none), and what its bets
/// won or lost.
struct RollNote {
  int Die1 = 0;
  int Die2 = 0;
  int PrevPoint = 0;
  int Point = 0;
  Currency Net;

  bool operator==(const RollNote&) const = default;
};

inline constexpr unsigned kRollNotes = 20;

struct RollNotes {
  std::vector<RollNote> LastRolls;  // at most `kRollNotes`, newest first; none of Hyper-Drive
  int RollsNoted = 0;               // since the start
};
