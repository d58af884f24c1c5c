// Auto-Play: what a change of its settings does to the table.
#pragma once

#include <array>
#include <span>
#include <string_view>

#include "core/game_state.h"

/// The texts of the stop list, by `AutoStopEntry`.
extern const std::array<std::string_view, kAutoStops> kAutoStopNames;

/// The captions of the handling choices, by `WinChoice` and `LossChoice`.
extern const std::array<std::string_view, 8> kWinChoiceNames;
extern const std::array<std::string_view, 8> kLossChoiceNames;

/// The captions of the adjust modes.
extern const std::array<std::string_view, 3> kAdjustModeNames;

/// The items of the four bias lists, by `BiasKind`.
extern const std::array<std::string_view, 3> kLayBiasNames;
extern const std::array<std::string_view, 3> kPlaceBiasNames;
extern const std::array<std::string_view, 3> kDoBiasNames;
extern const std::array<std::string_view, 3> kDontBiasNames;

/// Full odds that follow by themselves. Turned on, the player is asked whether bets that stand take
/// them now.
void SetAutoTakeFullOdds(bool on);
void SetAutoLayFullOdds(bool on);

/// Any mode but Manual adjusts all bets at once.
void SetAutoAdjust(int mode);

/// Turned on, all bets are laid out anew.
void SetAutoArrangeChips(bool on);

/// Gives bets their state on the come-out roll, and sets the working states again.
void SetComeOutWorking(std::span<const int> betIds, bool works);
void ToggleComeOutWorking(int betId);
void RestoreComeOutWorking();

/// The line of a bet in the come-out list: its name and " - Yes" or " - No".
std::string ComeOutLine(int betId);

/// Rolling by itself. Turned on with a count that has begun, the player is asked whether to resume
/// it.
void SetAutoRollDice(bool on);

/// The number of automatic rolls (0 for no limit) and the delay between them in seconds. A number
/// out of range is put to the nearest that can stand.
void SetNumAutoRolls(long long rolls);
void SetAutoRollDelay(long long seconds);
inline constexpr int kMaxAutoRollDelay = 3600;
