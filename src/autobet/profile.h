// The profile: how often each line of the script was reached, and how often it held or acted.
#pragma once

#include <cstdint>
#include <vector>

#include "core/game_state.h"

/// A run comes to a line whether or not the lines before it have settled that it is passed over. A
/// condition counts as fired when it is tested and true, an action when it is performed, a block's
/// first line when its block holds or is entered, a label each time.
struct LineProfile {
  std::int64_t Reached = 0;
  std::int64_t Fired = 0;

  bool operator==(const LineProfile&) const = default;
};

/// Whether a run counts now. A script of Hot-Keys isn't counted.
inline bool ProfileCounts() { return Game.Profile.On && !Game.HotKeyRunning; }

/// All counts back to 0. So do a load of a script, and the initializing cycle.
void ClearProfile();

/// The counts of the lines 1 to `ScrCount`, the run in progress left out.
std::vector<LineProfile> ScriptProfile();

/// Lines `at` and on have been replaced: the counts of the others go with their lines.
void SpliceProfile(int at, int removed, int inserted);

// --- Counting ---

/// Makes room for the lines of the script; the engine then counts in `Fired` by itself.
void ReadyProfile();

/// A run has walked through a stretch of lines, from its first to its last.
inline void CountWalk(int first, int last) {
  ++Game.Profile.Starts[static_cast<std::size_t>(first)];
  --Game.Profile.Starts[static_cast<std::size_t>(last) + 1];
}
