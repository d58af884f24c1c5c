// Changing the money on a bet: the one door that every amount goes through.
#pragma once

#include "core/game_state.h"

/// Applies `ChangeRequest`, a signed change, to a bet (1 to 83) or a Chip-Stack (101 up), bent to
/// the nearest legal amount: whole Units, the rules for contract bets and for bets that need a
/// point, the limits, proper odds amounts and the free money. Leaves the change made in `Change`,
/// the limits in `MinHere` and `MaxHere`; updates `Bets`, `TotalOnTable` and the held vig. Shows
/// the notices that are wanted; a text left in `MsgText` means that the player was told. Draws
/// nothing. No request fails: a refusal is a `Change` of 0.
void ChangeBet(int betId);

/// `ChangeBet` with a request of `change`.
void RequestChange(int betId, Currency change);

/// Leaves in `MaxHere` the largest amount allowed on a bet, in whole Units.
void FigureMaxBet(int betId);

/// `BetWorking` of a bet goes back to its default: 1, or on the come-out its `ComeOutWorking`.
void ResetBetWorking(int betId);

/// True for a bet that can't be lowered: the Pass Line with a point, Come on a number.
bool IsContractBet(int betId);
