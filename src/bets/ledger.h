// The ledger: what Hyper-Drive only counts while it runs, and reckons up when somebody looks.
#pragma once

#include <cstdint>
#include <span>

#include "dice/throw_kinds.h"

/// While the ledger is open a roll tallies no event and no phantom wager by itself: it enters its
/// throw, and `SettleLedger` brings the tallies to where rolls played one by one would have left
/// them. The roll cycle opens it for a run under Hyper-Drive and closes it at the end, which
/// settles it unless `TalliesUnread`. Settle it before anything reads the tallies or changes a
/// house rule or a working state by hand.
void OpenLedger();
void CloseLedger();
bool LedgerIsOpen();

/// Takes notice of the working states and of the last throw, before the dice are thrown. Needs
/// `PrevPoint` of the roll to come.
void BeginLedgerRoll();

/// Enters the throw in the record; `RollCount[0]` counts it already.
void EnterThrow();

/// The place of a set of working states in the ledger, for as long as the ledger keeps it.
struct LedgerProfile {
  unsigned Place = 0;
  unsigned KeptSince = 0;

  bool IsKept() const;
};

/// Whether one more can be kept; otherwise all places are lost, for which the ledger is settled.
bool HasRoomForProfile();

/// Gives working states a place: `states` by bet id. Settles the ledger when there is no room.
void KeepProfile(LedgerProfile& profile, const std::int8_t* states);

/// A throw that isn't in the record.
struct LedgerThrow {
  ThrowNumber Thrown = 0;
  unsigned char Point = 0;  // when the dice were thrown
  unsigned Profile = 0;     // the place of the working states
};

/// Enters throws, 1 to 1,024 of them, before the record knows or counts any.
void EnterThrows(std::span<const LedgerThrow> throws);

/// House rules are others than at the last settling.
void ForgetPhantomPayoffs();

/// Brings all tallies up to date: events, gaps, phantom wagers, moving averages. Nothing happens
/// while the ledger is closed or empty.
void SettleLedger();

/// Brings the tallies of roll events up to date, and nothing else: for whoever changes them.
void SettleEvents();

/// `RollsSince` of an event 2 to 89 as it stands now, without settling.
int RollsSinceNow(int event);

/// The tallies of an event 2 to 89 for the shooter, as they stand now and stood one roll ago,
/// without settling.
struct ShooterTally {
  int Count = 0;
  int CountPrev = 0;
  int Since = 0;
  int SincePrev = 0;
};
ShooterTally ShooterTallyNow(int event);
