// Turns of the event loop during a run.
#pragma once

#include <string>

/// Gives the event loop a turn. Whatever looks or acts there finds the record up to date, and what
/// it changes is not missed: the ledger is settled before, and all snapshots are due after.
void GiveTurn();

/// Gives the event loop a turn when one is due: always, but under Hyper-Drive only when 25
/// milliseconds have passed since the last one (or after many offers, should the clock stand
/// still).
void OfferTurn();

/// Whether an offer made now would give a turn; whoever asks gives it.
bool TurnIsDue();

/// Keeps the text that lines of a script gather, and the last answer to them, from what is asked
/// meanwhile.
class KeptMessage {
 public:
  KeptMessage();
  ~KeptMessage();
  KeptMessage(const KeptMessage&) = delete;
  KeptMessage& operator=(const KeptMessage&) = delete;

 private:
  std::string text_;
  int answer_;
};

/// What a screen that opens in the middle of a roll needs: call it before and after.
void BeforeScreen();
void AfterScreen();
