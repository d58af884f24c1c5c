#include "screens/frame/player_change.h"

#include <utility>
#include <vector>

#include "core/error_report.h"
#include "core/faults.h"
#include "core/file_failure.h"
#include "core/game_state.h"
#include "core/help_topics.h"
#include "core/host.h"
#include "core/kept_record.h"
#include "core/messages.h"
#include "screens/frame/guard.h"

double YieldTime = 0;

namespace {

int turns = 0;
std::vector<std::function<void()>> waiting;

/// A change that the game can't reckon with is taken back whole.
void CarryOut(const std::function<void()>& change) {
  KeptRecord before;
  before.Keep();
  try {
    change();
  } catch (const RunTimeFault&) {
    ReportError("Player Change");
    before.PutBack();
    ShowMessage("This can't be set: " + FaultWords() +
                    ".\n\nWhat stood before stands again. Please enter a smaller number.",
                "Change Taken Back", kTopicLimits, OkStop);
  }
}

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

bool RecordAtRest() { return !MustWait(); }

bool ChangesWait() { return !waiting.empty(); }

void CarryOutChanges() {
  if (waiting.empty() || MustWait()) return;
  for (const auto& change : std::exchange(waiting, {})) {
    Guarded("Player Change", [&] { CarryOut(change); });
    Game.GameChanged = true;
  }
  TheHost.RefreshViews();
}

EngineTurn::EngineTurn() {
  ++turns;
  CarryOutChanges();
}

EngineTurn::~EngineTurn() { --turns; }
