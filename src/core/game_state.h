// The one game record: all state of the table, alive from start to end.
#pragma once

#include "core/auto_play_settings.h"
#include "core/bet_steps.h"
#include "core/course.h"
#include "core/dice_state.h"
#include "core/kept_views.h"
#include "core/message_slots.h"
#include "core/roll_notes.h"
#include "core/run_limits.h"
#include "core/script_state.h"
#include "core/settings.h"
#include "core/sound_state.h"
#include "core/table_state.h"
#include "core/tallies.h"
#include "core/view_state.h"

/// Plain data, composed of the records that the subsystems declare; free routines act on it.
/// Whatever can be a constant default stands beside its field; `LayDownDefaults` (rules/defaults.h)
/// adds the tables.
struct GameState : TableState,
                   MessageSlots,
                   ViewState,
                   KeptViews,
                   SoundState,
                   Settings,
                   AutoPlaySettings,
                   RunLimits,
                   RollNotes,
                   BetSteps,
                   ScriptState,
                   DiceState,
                   Tallies,
                   FinishedGames,
                   CourseState,
                   GraphState,
                   EventsLogSettings {};

extern GameState Game;

/// The smallest chip value: all bets are whole multiples of it.
inline Currency Unit() { return Game.Bets[SmallestChip]; }

inline Currency Bankroll() { return Game.Bets[BankrollIndex]; }

/// Notes that the amount or the contract of `id` has changed since the last snapshot. Whoever
/// writes to `Bets` while the dice roll calls it.
inline void Touch(int id) {
  Game.TouchedBets[static_cast<unsigned>(id) / 64] |= std::uint64_t{1} << (id % 64);
}

/// The money that is free to bet. It can be below 0.
inline Currency FreeMoney() { return Bankroll() - Game.TotalOnTable; }

/// The bank limit: the bankroll is held between plus and minus this amount.
inline constexpr Currency kBankLimit = 10'000'000;
/// Beyond this bankroll, either way, no dice are thrown.
inline constexpr Currency kRollingLimit = 9'999'999;
inline constexpr int kMaxRolls = 100'000'000;
