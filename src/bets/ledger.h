// The ledger: what Hyper-Drive only counts while it runs, and reckons up when somebody looks.
#pragma once

#include <cstdint>

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

/// The place of a set of working states in the ledger, for as long as the ledger keeps it.
struct LedgerProfile {
  unsigned Place = 0;
  unsigned KeptSince = 0;
};

/// `BeginLedgerRoll` with working states that aren't in the record: `states` by bet id.
void BeginLedgerRoll(LedgerProfile& profile, const std::int8_t* states);

/// Enters the throw in the record; `RollCount[0]` counts it already.
void EnterThrow();

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
