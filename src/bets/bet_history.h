// Commands over all bets of the player, and the way back from each command since the last throw.
#pragma once

#include "core/game_state.h"

/// Whoever has carried out a command of the player calls this: what it did to the bets becomes one
/// step that can be undone, and what was undone before can't come back. Nothing happens when no bet
/// has changed, or while dice or a script are at work.
void NoteCommand();

/// From the bets as they stand nothing can be undone: after a throw, a script, another game, or a
/// change of the rules.
void ForgetCommands();

inline bool CanUndo() { return !Game.UndoSteps.empty(); }
inline bool CanRedo() { return !Game.RedoSteps.empty(); }

/// Takes the last command back, or carries the last undone one out again, through `ChangeBet`: what
/// comes down first, odds before the bets that they lie behind, then what goes up, the other way
/// round. No notice is shown. What stood since the throw is asked for as it was, so the rules
/// refuse little: what a roll left there against them (a contract bet below its contract, a Don't
/// bet above it, odds without their flat bet or their point), and what the bankroll no longer
/// covers after the ATM. Such a bet stays as it is; the first one is returned, or 0.
int UndoCommand();
int RedoCommand();

/// Asks again for what lay on each bet when the dice were last thrown, where less lies now: bets in
/// the order of their ids, odds behind all others. Nothing is told of what the rules refuse, and no
/// bet goes above what it was. One step.
void RepeatBets();

/// Asks for as much again on each bet with money, in the same order. Limits trim as ever. One step.
void DoubleBets();

/// Takes all bets down that may come down. One step.
void ClearBets();

/// Whether the command would have something to ask for.
bool CanRepeat();
bool CanDouble();
bool CanClear();
