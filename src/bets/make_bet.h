// Placing bets: changing a bet with its chips, its sound and the odds that follow it.
#pragma once

#include "core/game_state.h"

/// `ChangeBet`, then chips at (x, y), the chip sound, and odds that must follow the flat bet. The
/// click mode goes back to none. `Change` is the flat bet's on return.
void MakeBet(int betId, int x, int y);

/// `MakeBet` at the bet's own place.
void MakeBet(int betId);

/// Odds that are too high for their flat bet come down, and full odds follow it when they are to.
/// `MakeBet` calls it after a change; so does whoever writes the amount of a flat bet by hand.
void LetOddsFollow(int betId);

/// Asks for the whole bet to come down; a contract bet stays.
void RemoveBet(int betId);

/// Moves a Come or Don't Come bet to its number. Nothing happens when `fromId` is empty.
void MoveBet(int fromId, int toId);

/// Turns a Place bet into the Buy bet of its number. Refuses any other bet with a notice; nothing
/// happens on an empty spot or a Buy bet.
void BuyPlaceBet(int betId);

enum CallCode : int { CallCodeOff = 90, CallCodeOn = 91 };

/// Calls a bet ON or OFF. One call undoes the opposite call rather than reverse it.
void CallBet(int betId, CallCode onOrOff);

/// `CallBet`, then the table is drawn. With a `betId` of 0 and no keyed-bet box open they set the
/// click mode instead; with the box open they act on its bet.
void CallBetOn(int betId);
void CallBetOff(int betId);

/// Calls all bets that may be called, without a notice for those that may not.
void CallAllBets(CallCode onOrOff);

/// Removes every bet that the rules let go.
void RemoveAllBets();

/// Takes the amount keyed into the bet box: the bet is set to it as a fresh bet under all rules.
/// Reads `KeyedBetId` and `KeyedBetText`; the text then shows what stands.
void EnterKeyedBet();

/// Closes the keyed-bet box without taking its amount.
void CloseKeyedBox();

/// Sets an odds bet to the most that rules and bankroll allow, without notices.
void SetFullOdds(int oddsBetId);
void TakeAllFullOdds();
void LayAllFullOdds();

/// Passes every bet with money through the rules again, without notices, so that it obeys limits
/// that have changed.
void ReAdjustAllBets();
