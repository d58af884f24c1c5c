#include "screens/frame/player_change.h"

#include <utility>
#include <vector>

#include "core/game_state.h"
#include "core/help_topics.h"
#include "core/host.h"
#include "core/messages.h"
#include "screens/frame/guard.h"

double YieldTime = 0;

namespace {

int turns = 0;
std::vector<std::function<void()>> waiting;

bool MustWait() { return (Game.RollInProgress && turns == 0) || ScriptAtWork(); }

}  // namespace

bool ScriptAtWork() { return Game.AutoBetAtWork || Game.HotKeyRunning; }

bool TableAtRest() { return !Game.RollInProgress && !ScriptAtWork(); }

bool AskToInterruptRun() {
  if (Game.AutoBetRunning) {
    if (AskYesNo("Do you want to interrupt Auto-Betting? ", "Auto-Bet Active", kTopicScripts)) {
      Game.AutoBetRunning = false;
      Game.KeepRolling = false;
    }
    return true;
  }
  if (Game.HyperDriveOn) {
    if (AskYesNo("Do you want to stop Hyper-Drive?", "Hyper-Drive Active", kTopicHyperDrive)) {
      Game.KeepRolling = false;
    }
    return true;
  }
  return false;
}

void ChangeByPlayer(std::function<void()> change) {
  waiting.push_back(std::move(change));
  CarryOutChanges();
}

bool ChangesWait() { return !waiting.empty(); }

void CarryOutChanges() {
  if (waiting.empty() || MustWait()) return;
  for (const auto& change : std::exchange(waiting, {})) {
    Guarded("Player Change", change);
    Game.GameChanged = true;
  }
  TheHost.RefreshViews();
}

EngineTurn::EngineTurn() {
  ++turns;
  CarryOutChanges();
}

EngineTurn::~EngineTurn() { --turns; }
