#include "autoplay/hyper_drive.h"

#include <algorithm>

#include "autobet/engine.h"
#include "bets/bankroll.h"
#include "bets/chips.h"
#include "core/help_topics.h"
#include "core/host.h"
#include "core/messages.h"
#include "play/roll_cycle.h"

namespace {

constexpr double kMilliseconds = 1000;

/// Under Hyper-Drive only a script bets, and only with money.
bool NoBetCanBeMade() {
  const bool scripted = Game.AutoBetActive == 1 && Game.ScrCount > 0;
  const bool broke = !Game.NegBankroll && FreeMoney() < Unit();
  return Game.TotalOnTable == 0 && (!scripted || broke);
}

void BeginRun() {
  Game.HyperDriveOn = true;
  Game.KeepRolling = true;
  Game.HyperDriveStopped = false;
  Game.LastRun = {Game.RollCount[0], 0, Game.AutoRollsLeft, TheHost.Milliseconds(), 0};
  TheHost.RefreshViews();
}

void LayOutAllChips() {
  for (int id = Lay4; id <= LastBet; ++id) ArrangeChips(id);
  for (int id = FirstChipStack; id < LastSlot; ++id) ArrangeChips(id);
  Game.NeedRepaint = true;
  TheHost.RedrawBets();
}

void EndRun() {
  Game.LastRun.EndedAt = TheHost.Milliseconds();
  Game.LastRun.LastRoll = Game.RollCount[0];
  Game.HyperDriveOn = false;
  Game.KeepRolling = false;
  Game.HyperDriveStopped = Game.TableMinimised;
  TheHost.RefreshViews();
  LayOutAllChips();
  if (!Game.StopMessage.empty())
    ShowMessage(Game.StopMessage, "Hyper-Drive", kTopicHyperDrive, OkTick);
  TheHost.PrintDuePage();
}

}  // namespace

void ToggleHyperDrive() {
  if (Game.KeepRolling) {
    Game.KeepRolling = false;
    return;
  }
  if (Game.RollInProgress) return;
  if (Abs(Bankroll()) > kRollingLimit) return CheckBankLimits();
  // The offer comes before the run: under Hyper-Drive nothing shows that a script is at work. A
  // script that is interrupted there, or wants to stop, holds the run up.
  Game.KeepRolling = true;
  if (Game.ScriptChanged) InitAutoBets();
  if (!Game.KeepRolling) return;
  BeginRun();
  RollDice();
  EndRun();
}

RunProgress HyperDriveProgress() {
  const HyperRun& run = Game.LastRun;
  RunProgress progress;
  const int lastRoll = Game.HyperDriveOn ? Game.RollCount[0] : run.LastRoll;
  progress.RollsDone = std::max(lastRoll - run.FirstRoll, 0);
  progress.RollsAsked = run.RollsAsked;
  if (Game.HyperDriveOn)  // the player may change the count meanwhile
    progress.RollsAsked = Game.AutoRollsLeft > 0 ? progress.RollsDone + Game.AutoRollsLeft : 0;
  const std::uint32_t now = Game.HyperDriveOn ? TheHost.Milliseconds() : run.EndedAt;
  const double seconds = (now - run.StartedAt) / kMilliseconds;
  if (seconds > 0) progress.RollsPerSecond = progress.RollsDone / seconds;
  progress.RollsAtMost = kMaxRolls - run.FirstRoll;
  if (progress.RollsAsked > 0)
    progress.RollsAtMost = std::min(progress.RollsAsked, progress.RollsAtMost);
  if (progress.RollsAsked > 0 && Game.HyperDriveOn && progress.RollsPerSecond > 0)
    progress.SecondsLeft = (progress.RollsAtMost - progress.RollsDone) / progress.RollsPerSecond;
  progress.NoBet = Game.HyperDriveOn && NoBetCanBeMade();
  return progress;
}
