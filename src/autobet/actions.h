// What the action lines do to the game.
#pragma once

#include <array>
#include <bitset>

#include "core/game_state.h"

/// Runs of like actions ("highest of", "lowest of", "average of") within one run of the script.
struct ActionRun {
  Currency RunValue;
  int RunCount = 0;
  std::array<Currency, kSlots> RunBase{};  // the bets as they stood when the run began
  std::bitset<kSlots> HasBase;             // which of them have been noted
};

/// What can be worked out about an action line before it runs: done once when a script is loaded or
/// changed, so that no line looks up a name.
struct ActionPlan {
  enum class Covers : std::uint8_t {
    Once,          // no target, or a setting: runs once with id 0
    Ids,           // the ids `First` to `Last`
    StackRef,      // the stack that stack `First` - 100 names
    PointBet,      // the bet of `Family` on the point
    NumberEvents,  // roll events `First` to `Last`
    Nothing,       // a target that the action can't have
  };
  Covers Target = Covers::Once;
  bool RestartsRun = false;  // the line before belongs to another run of like actions
  int First = 0;
  int Last = 0;
  int Family = 0;
  int FlagIndex = -1;
};

/// The plan of action line `number` of the script in force.
ActionPlan PlanAction(int number);

/// Performs action line `number` for each id or event that its target covers. "Go to", "Gosub" and
/// "Return" are the engine's and do nothing here; so do unknown codes. Bets change by `MakeBet` and
/// its rules alone. Raises a run-time fault when there is no output file to write to, when it can't
/// be opened or written, and on an overflow.
void PerformAction(int number, const ActionPlan& plan, ActionRun& run);
