// What the player's commands have done to the bets since the last throw, so that it can be undone.
#pragma once

#include <array>
#include <vector>

#include "core/bets.h"
#include "core/currency.h"

/// The bets as they stand at a moment, with the working states of those that hold money.
struct BetStand {
  std::array<Currency, LastBet + 1> Bets{};
  std::array<int, LastBet + 1> Working{};

  bool operator==(const BetStand&) const = default;
};

/// A command: the bets before and after it.
struct BetStep {
  BetStand Before;
  BetStand After;
};

struct BetSteps {
  BetStand Noted;  // the bets when they were last looked at
  std::vector<BetStep> UndoSteps;
  std::vector<BetStep> RedoSteps;
};
