// The engine: runs the script once, from its first line to its last.
#pragma once

/// Runs the script in force. Called after every roll while Auto-Bet is active, for the initializing
/// cycle, and by a Hot-Key. A run-time fault ends the run and is reported; `AutoBetRunning` is
/// false afterwards in any case. Outside Hyper-Drive a run takes at least 0.3 seconds, so that its
/// status can be read.
void RunAutoBets();

/// The offer to run the script for one cycle before the dice are thrown. Called before a roll while
/// `ScriptChanged` is set, which it clears. Nothing is asked when Auto-Bet is off or the script is
/// empty.
void InitAutoBets();

/// The initializing cycle itself: nothing that the script does in it is news to the first roll.
void RunInitializingCycle();

/// Lines between two looks at whether the run goes on.
inline constexpr int kLinesPerYield = 500;
