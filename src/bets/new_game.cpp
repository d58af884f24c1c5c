#include "bets/new_game.h"

#include <algorithm>
#include <utility>

#include "bets/bet_history.h"
#include "bets/chips.h"
#include "bets/ledger.h"
#include "core/help_topics.h"
#include "core/messages.h"
#include "core/text.h"
#include "dice/generators.h"
#include "stats/bankroll_graph.h"
#include "stats/bet_tables.h"
#include "stats/events_log.h"

namespace {

void ClearBets(bool preserveStacks) {
  Game.ChipCount = 0;
  for (int id = Lay4; id <= LastBet; ++id) Game.Bets[id] = 0;
  if (!preserveStacks) std::fill(Game.Bets.begin() + ChipStackBase, Game.Bets.end(), Currency(0));
  Game.TotalOnTable = 0;
  Game.BuyVigHeld = {};
  Game.LayVigHeld = {};
  Game.ContractBets = {};
  // Stacks that are kept are no news to the log.
  Game.BetsAtRoll = Game.Bets;
  Game.BetsAfterRoll = Game.Bets;
  ArrangeAllChips();
}

/// No gap is longer than the game: of the largest table only what a short game can have filled.
void ClearGaps() {
  if (!std::exchange(Game.GapsTallied, false)) return;
  const int longest = std::min(Game.RollCount[AnyRoll], kLongGap - 1);
  for (auto& gaps : Game.RollGapTally) {
    std::fill_n(gaps.begin(), longest + 1, 0);
    gaps[kLongGap] = 0;
  }
}

/// In place: a fresh record to copy from would take as long again.
void ClearTallies() {
  ClearGaps();
  Game.RollCount = {};
  Game.RollsSince = {};
  Game.ShooterEvent = {};
  Game.ShooterEventPrev = {};
  Game.ShooterSince = {};
  Game.ShooterSincePrev = {};
  ClearBetTables();
}

void ClearStatistics() {
  ClearTallies();
  Game.ShooterStats = {};
  Game.BetOutcome = {};
  Game.Point = Game.PrevPoint = Game.PrevPrevPoint = 0;
  // A first point of 8 must not find a multiple of 0.
  Game.OddsMultiple = Game.OddsAllowed68;
  Game.BetWorking = Game.ComeOutWorking;
  Game.BetWorkingPrev = Game.BetWorking;
  if (LedgerIsOpen()) OpenLedger();  // what it has counted belongs to the old game
  Game.SnapshotsDue = true;
  Game.WorkingTouched = true;
}

void AskForBankroll() {
  Game.ChangeRequest = Game.BankrollInitAmt;  // stands when nobody can answer
  Game.MsgInput = {PlainText(Game.BankrollInitAmt), ""};
  ShowMessage("Enter your beginning bankroll: ", "Set Beginning Bankroll", kTopicLimits, InputOk);
  Game.BankrollInitAmt = Game.ChangeRequest;
  Game.Bets[BankrollIndex] = Game.BankrollInitAmt;
  Game.KeepRolling = false;
}

void SetBeginningBankroll() {
  Currency& bankroll = Game.Bets[BankrollIndex];
  const bool carry =
      Game.BankrollInitType == CarryBankroll || Game.BankrollInitType == CarryBankrollAndNet;
  if (Game.BankrollInitType == PromptForBankroll || (carry && bankroll <= 0)) {
    AskForBankroll();
    Game.InvestedBankroll = bankroll;
  } else {
    if (!carry) bankroll = Game.BankrollInitAmt;
    if (Game.BankrollInitType != CarryBankrollAndNet) Game.InvestedBankroll = bankroll;
  }
  Game.BetsAtRoll[BankrollIndex] = bankroll;
  Game.BetsAfterRoll[BankrollIndex] = bankroll;
  if (bankroll < 0) Game.NegBankroll = true;
  Game.BankrollHigh = bankroll;
  Game.BankrollLow = bankroll;
  Game.BankrollSum = 0;
}

void StartLog() {
  if (Game.ClearLogOnNew) {
    ClearEventsLog();
    Game.LogTopLine = 1;
  }
  if (!Game.EventsLogActive) return;
  if (EventsLogExists()) WriteLogLine("======================================");
  WriteLogLine(" New game started");
  WriteLogLine("      Beginning bankroll: $", Bankroll());
  if (Game.LogShooterChanges) WriteLogLine("------New shooter coming out----------");
}

}  // namespace

void ExpectAnyTallies() {
  for (const BetKind kind : {Phantom, Actual})
    for (unsigned row = 0; row < Game.BetWagers[kind].size(); ++row) {
      Include(Game.TalliedBets[kind], row);
      Include(Game.RolledBets[kind], row);
    }
  Game.GapsTallied = true;
}

void NewGame(bool preserveStacks) {
  AddFinishedGame();
  ClearBets(preserveStacks);
  ClearStatistics();
  SetBeginningBankroll();
  RestartGraph();
  Game.AutoRollsLeft = Game.NumAutoRolls;
  StartLog();
  Game.LastRolls.clear();
  if (!Game.RollInProgress) ForgetCommands();  // it is done when the run ends
  Game.GameFileName.clear();
  Game.GameChanged = false;
  if (Game.ReSeed) SeedRng(FindSeed);
}
