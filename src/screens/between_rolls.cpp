#include "screens/between_rolls.h"

#include <utility>
#include <vector>

#include "core/game_state.h"
#include "screens/guard.h"
#include "screens/script_commands.h"

double YieldTime = 0;

namespace {

int turns = 0;
std::vector<std::function<void()>> waiting;

bool MustWait() { return (Game.RollInProgress && turns == 0) || ScriptAtWork(); }

}  // namespace

void BetweenRolls(std::function<void()> change) {
  waiting.push_back(std::move(change));
  CarryOutChanges();
}

bool ChangesWait() { return !waiting.empty(); }

void CarryOutChanges() {
  if (MustWait()) return;
  for (const auto& change : std::exchange(waiting, {})) Guarded("Between Rolls", change);
}

EngineTurn::EngineTurn() {
  ++turns;
  CarryOutChanges();
}

EngineTurn::~EngineTurn() { --turns; }
