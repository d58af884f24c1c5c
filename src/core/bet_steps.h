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
  Currency Multiple;  // of odds, as it was last figured; no bet differs by it

  bool operator==(const BetStand& other) const {
    return Bets == other.Bets && Working == other.Working;
  }
};

/// A command: the bets before and after it.
struct BetStep {
  BetStand Before;
  BetStand After;
};

struct BetSteps {
  BetStand Noted;          // the bets when they were last looked at
  Currency FirstMultiple;  // of odds, when the first step began
  std::vector<BetStep> UndoSteps;
  std::vector<BetStep> RedoSteps;
};
