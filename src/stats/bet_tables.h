// The bet tables: results of every bet, for the phantom wager and the actual one.
#pragma once

#include "core/game_state.h"

/// Records one decision of a bet in `BetWagers`, and in `BetWins` or `BetLosses` by the sign of
/// `net`. A net of 0 is no decision. Vig up front joins the wager: held vig for an actual wager,
/// the rate for the phantom one. A phantom decision of bets 7 to 30 counts only while the bet is
/// established, but for the Come side with put bets allowed.
void RecordBetOutcome(BetKind kind, int betId, Currency wager, Currency net);

/// What a decision adds to the phantom tables: the dollar with the vig that joins it, and what it
/// wins or loses, which isn't 0.
struct PhantomOutcome {
  int Bet = 0;
  Currency Staked;
  Currency Net;

  bool operator==(const PhantomOutcome&) const = default;
};

/// The dollar of the phantom wager on a bet, with the vig that joins it.
Currency PhantomStake(int betId);

/// Whether a phantom decision counts, by whether its bet is established.
bool PhantomCounts(int betId, bool established);

/// `count` phantom decisions of a bet, without the stats of a last roll: what was staked, and what
/// so many of them won or lost. `latest`: after all that were recorded before, of those that won,
/// or of those that lost.
void RecordPhantomWagers(int betId, Currency staked, int count);
void RecordPhantomNets(int betId, Currency net, int count, bool latest);

/// The stats of the last roll for a phantom decision that has been recorded.
void RecordPhantomOfRoll(const PhantomOutcome& outcome);

/// Records an actual decision. `staked` is the wager with what vig joins it.
void RecordStaked(int betId, Currency staked, Currency net);

/// The streak of a bet goes on, or turns, with a decision.
void CountStreak(int betId, Currency net);

/// `count` actual decisions of a bet before the last roll: what was staked, with what vig joins it,
/// and what so many of them won or lost.
void RecordEarlierWagers(int betId, Currency staked, int count);
void RecordEarlierNets(int betId, Currency net, int count);

/// Empties the tables.
void ClearBetTables();

/// Clears the stats of the last roll of all bets of a kind.
void ClearRollStats(BetKind kind);

/// Marks a Come or Don't Come bet on a number as established for the phantom wager, or not.
void SetEstablished(int betId, bool established);

/// Marks which Come and Don't Come bets on numbers are established for the phantom wager: those of
/// `lastTotal` are if a point stood when it was thrown; after a 7 none is.
void UpdateEstablished(int lastTotal, bool pointStood);

/// Builds the totals row, bet 0 of the actual wagers in the three tables: adds stats 1 to 7 of the
/// bets `first` to `last`, after zeroing the row when `clear` is true. A sum beyond what money can
/// hold stays at that.
void SumBetStats(int first, int last, bool clear);

/// Adds the actual wagers of the game that is about to end to those of the finished games.
void AddFinishedGame();
