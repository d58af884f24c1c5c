// Hyper-Drive: the roll cycle with no pause and no drawing.
#pragma once

#include "core/game_state.h"

/// Starts a run under Hyper-Drive and comes back when it has ended; while a run goes on it only
/// clears `KeepRolling`, and the run ends with its current roll. With the bankroll beyond the bank
/// limit the player is told and nothing rolls. At the end of a run `StopMessage`, if there is one,
/// is shown, and all chips are laid out anew.
void ToggleHyperDrive();

/// How far a run is: for the screens that show it.
struct RunProgress {
  int RollsDone = 0;
  int RollsAsked = 0;   // 0 when only the roll limit ends the run
  int RollsAtMost = 0;  // by the count or by the roll limit, whichever comes first
  double RollsPerSecond = 0;
  double SecondsLeft = 0;  // 0 when unknown, or when no count is set
  bool NoBet = false;      // nothing is bet, and nobody can bet before the run ends
};

/// The progress of the run under Hyper-Drive, or of the last one.
RunProgress HyperDriveProgress();
