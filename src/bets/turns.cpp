#include "bets/turns.h"

#include <cstdint>

#include "bets/ledger.h"
#include "core/game_state.h"
#include "core/host.h"
#include "dice/tape.h"
#include "stats/events_log.h"
#include "stats/games_file.h"

namespace {

constexpr std::uint32_t kTurnEvery = 25;  // milliseconds
constexpr unsigned kMostOffers = 2048;    // without a turn, when the clock stands still

}  // namespace

KeptMessage::KeptMessage() : text_(Game.MsgText), answer_(Game.MsgAnswer) {}

KeptMessage::~KeptMessage() {
  Game.MsgText.swap(text_);
  Game.MsgAnswer = answer_;
}

void BeforeScreen() {
  SettleLedger();
  FlushEventsLog();
  FlushGamesLog();
  CloseTape();
}

void AfterScreen() {
  Game.SnapshotsDue = true;
  Game.WorkingTouched = true;
}

void GiveTurn() {
  const KeptMessage kept;
  BeforeScreen();
  TheHost.Yield();
  AfterScreen();
}

bool TurnIsDue() {
  const std::uint32_t now = TheHost.Milliseconds();
  if (Game.HyperDriveOn && ++Game.TurnOffers < kMostOffers && now - Game.LastTurnAt < kTurnEvery)
    return false;
  Game.LastTurnAt = now;
  Game.TurnOffers = 0;
  return true;
}

void OfferTurn() {
  if (TurnIsDue()) GiveTurn();
}
