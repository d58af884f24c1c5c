#include "play/roll_cycle.h"

#include <algorithm>
#include <bit>
#include <utility>

#include "autobet/engine.h"
#include "autobet/output_file.h"
#include "autobet/script.h"
#include "bets/bankroll.h"
#include "bets/bet_history.h"
#include "bets/change_bet.h"
#include "bets/chips.h"
#include "bets/decide_bet.h"
#include "bets/decision_table.h"
#include "bets/ledger.h"
#include "bets/make_bet.h"
#include "bets/turns.h"
#include "core/error_report.h"
#include "core/file_failure.h"
#include "core/help_topics.h"
#include "core/host.h"
#include "core/messages.h"
#include "core/sounds.h"
#include "core/text.h"
#include "dice/generators.h"
#include "dice/tape.h"
#include "play/course.h"
#include "play/roll_log.h"
#include "stats/bankroll_graph.h"
#include "stats/bet_tables.h"
#include "stats/events_log.h"
#include "stats/games_file.h"
#include "stats/roll_counters.h"

namespace {

/// How a pass of the loop went.
enum class Pass { Rolled, NoDice, TapeStopped };

// --- Step 1 ---

bool RollLimitReached() {
  if (Game.RollCount[0] < kMaxRolls) return false;
  Game.KeepRolling = false;
  const std::string limit = CountText(kMaxRolls) + " rolls.\n\n" + SelectNewText();
  if (Game.HyperDriveOn)
    Game.StopMessage = "Stopped due to reaching the maximum limit of " + limit;
  else
    ShowMessage("Sorry ... you've reached the maximum limit of " + limit,
                "Reached Maximum Roll Limit", kTopicLimits, OkStop);
  return true;
}

// --- Steps 3 to 5 ---

/// One bit for each id up to `LastSlot`.
constexpr std::array<std::uint64_t, 4> kEveryId = {~0ULL, ~0ULL, ~0ULL,
                                                   (1ULL << (kSlots - 3 * 64)) - 1};

/// Calls `action` for each id that has changed since the last snapshot.
template <typename Action>
void ForTouchedBets(Action action) {
  for (unsigned word = 0; word < Game.TouchedBets.size(); ++word)
    for (std::uint64_t bits = Game.TouchedBets[word]; bits != 0; bits &= bits - 1)
      action(word * 64 + static_cast<unsigned>(std::countr_zero(bits)));
}

void SnapshotAllBets() {
  Game.BetsAtRoll = Game.Bets;
  std::copy_n(Game.Bets.begin(), kContractSlots, Game.ContractBets.begin());
  for (unsigned id = 0; id <= LastBet; ++id) Game.BetOutcome[id][0] = Game.BetOutcome[id][1];
  ClearRollStats(Actual);
  Game.SnapshotsDue = false;
}

void SnapshotTouchedBets() {
  ForTouchedBets([](unsigned id) {
    Game.BetsAtRoll[id] = Game.Bets[id];
    if (id < kContractSlots) Game.ContractBets[id] = Game.Bets[id];
    if (id > LastBet) return;
    Game.BetOutcome[id][0] = Game.BetOutcome[id][1];
    ClearRollStats(static_cast<int>(id));
  });
}

void TakeSnapshots() {
  const bool all = Game.SnapshotsDue || !LedgerIsOpen();
  if (all)
    SnapshotAllBets();
  else
    SnapshotTouchedBets();
  // What was changed unseen has still to reach `BetsAfterRoll` at the end of this roll.
  Game.TouchedBets = all ? kEveryId : decltype(Game.TouchedBets){};
  if (!LedgerIsOpen()) {
    ClearRollStats(Phantom);
    UpdateEstablished(Game.RollTotal, Game.PrevPoint > 0);
    Game.ShooterEventPrev = Game.ShooterEvent;
    Game.ShooterSincePrev = Game.ShooterSince;
  }
  Game.PrevPrevPoint = Game.PrevPoint;
  Game.PrevPoint = Game.Point;
  Game.PrevDie1 = Game.Die1;
  Game.PrevDie2 = Game.Die2;
  Game.WorkingSnapshotDue |= Game.WorkingTouched;
  if (LedgerIsOpen()) BeginLedgerRoll();
}

// --- Steps 6 to 10 ---

bool PlayTape() {
  const TapeRead read = ReadRecordedRoll();
  if (read == TapeRead::Throw) return true;
  Game.KeepRolling = false;
  const bool bad = read == TapeRead::BadByte;
  if (Game.HyperDriveOn) {
    Game.StopMessage = bad ? "Stopped due to Dice Roll File value out of limits."
                           : "Stopped due to end of Dice Roll File reached.";
  } else {
    Game.RecorderStatus = RecorderOff;
    if (bad)
      ShowMessage(
          "A dice roll value has been found to be out of limits.  \n\nPlayback of this Dice Roll "
          "File has ceased so that you can check the file or continue without it.",
          "Dice Roll File Error", kTopicDiceRolls, OkStop);
    else
      ShowMessage(read == TapeRead::End ? "The Dice Roll File has ended."
                                        : FileFailureText(Game.DiceRollFile, "played back"),
                  "Playback Dice Rolls During Game Play", kTopicDiceRolls, OkStop);
  }
  return false;
}

/// Takes the dice from the source in force; false when the tape had none.
bool TakeDice() {
  if (Game.ManualRollPending) {
    Game.Die1 = Game.PendingDie1;
    Game.Die2 = Game.PendingDie2;
    Game.ManualRollPending = false;
    LogThrow(DiceSource::ManualPad);
  } else if (Game.RecorderStatus == Playback) {
    if (!PlayTape()) return false;
    LogThrow(DiceSource::Tape);
  } else {
    RollWithGenerator();
    LogThrow(DiceSource::Generator);
  }
  return true;
}

void ShowThrow() {
  Game.BetDecidedThisRoll = false;
  if (!Game.HyperDriveOn) TheHost.ThrowDice();
}

void CallThrow() {
  if (Game.HyperDriveOn) return;
  PlayStickCall(Game.RollTotal, true);
  const bool hardWay = Game.Die1 == Game.Die2 && Game.RollTotal != 2 && Game.RollTotal != 12;
  if (hardWay) PlayStickCall(StickPair, true);
}

// --- Step 11 ---

void MovePoint() {
  const int total = Game.RollTotal;
  if (total == 7) {
    Game.Point = 0;
    LogPassOrMiss(Game.PrevPoint == 0 ? "      Pass (natural)" : "      Miss (seven-out)");
  } else if (Game.Point == 0) {
    if (total == 2 || total == 3 || total == 12) {
      LogPassOrMiss("      Miss (craps natural)");
    } else if (IsPointNumber(total)) {
      Game.Point = total;
      ++Game.ShooterStats[PointsEstablished];
      LogPassOrMiss("      Point established");
    }
  } else if (total == Game.Point) {
    Game.Point = 0;
    LogPassOrMiss("      Pass (point rolled)");
  }
}

// --- Steps 12 and 13 ---

void CountRoll() {
  ++Game.RollCount[AnyRoll];
  ++Game.ShooterStats[ShooterRolls];
  if (Game.PrevPoint == 0) ++Game.ShooterStats[ComeOutRolls];
  if (LedgerIsOpen()) return EnterThrow();
  ++Game.ShooterEvent[AnyRoll];
  ++Game.ShooterEvent[AnyRollOfShooter];
  // `RollsSince[0]` isn't a gap: it follows at the end of the roll.
  for (int event = 1; event < kRollEvents; ++event) ++Game.RollsSince[event];
  for (int event = 0; event < kRollEvents; ++event) ++Game.ShooterSince[event];
  TallyThrow();
}

// --- Step 14 ---

void CallIfSeen(int call) {
  if (!Game.HyperDriveOn) PlayStickCall(call, true);
}

void ShooterPass() {
  ++Game.ShooterStats[ShooterPasses];
  ++Game.ShooterStats[AllPasses];
  ++Game.ShooterStats[Game.PrevPoint < 1 ? PassesByNatural : PassesByPoint];
  CallIfSeen(StickPass);
}

/// The shooter sevened out: the records of shooters, and the counts of this one start again.
void ChangeShooter() {
  auto& stats = Game.ShooterStats;
  ++stats[MissesBySevenOut];
  ++stats[ShootersFinished];
  stats[MostRollsByShooter] = std::max(stats[MostRollsByShooter], stats[ShooterRolls]);
  stats[MostPassesByShooter] = std::max(stats[MostPassesByShooter], stats[ShooterPasses]);
  stats[FinishedRollsSum] += stats[ShooterRolls];
  stats[FinishedPassesSum] += stats[ShooterPasses];
  stats[MostMissesByShooter] = std::max(stats[MostMissesByShooter], stats[ShooterMisses]);
  stats[LastShooterRolls] = std::exchange(stats[ShooterRolls], 0);
  stats[LastShooterPasses] = std::exchange(stats[ShooterPasses], 0);
  stats[LastShooterMisses] = std::exchange(stats[ShooterMisses], 0);
}

void ShooterMiss() {
  ++Game.ShooterStats[ShooterMisses];
  ++Game.ShooterStats[AllMisses];
  if (Game.PrevPoint < 1)
    ++Game.ShooterStats[MissesOnComeOut];
  else
    ChangeShooter();
  CallIfSeen(StickMiss);
}

void ShooterBar() {
  ++Game.ShooterStats[ShooterMisses];
  ++Game.ShooterStats[AllMisses];
  ++Game.ShooterStats[MissesOnComeOut];
  CallIfSeen(StickBar);
}

void DecideThrow() {
  const bool phantoms = !LedgerIsOpen();
  const bool empty = !phantoms && Game.TotalOnTable == 0;
  const auto stepsOf = empty ? ShooterStepsOf : DecisionsOf;
  for (const DecisionStep& step : stepsOf(Game.PrevPoint, Game.Die1, Game.Die2, Game.BarDont)) {
    switch (step.Kind) {
      case StepKind::Decide:
        if (!phantoms && Game.Bets[step.Bet] == 0) break;
        (phantoms ? DecideBet : DecideWager)(step.Bet, static_cast<DecisionCode>(step.Code));
        break;
      case StepKind::Move: MoveBet(step.Bet, step.Target); break;
      case StepKind::Pass: ShooterPass(); break;
      case StepKind::Miss: ShooterMiss(); break;
      case StepKind::Bar: ShooterBar(); break;
      case StepKind::LogNatural: LogPassOrMiss("      Pass (natural)"); break;
    }
  }
}

// --- Step 15 ---

struct StopEntries {
  AutoStopEntry Any;
  AutoStopEntry Hard;  // the same as Any where a pair is nothing special
};

StopEntries StopsOfTotal(int total) {
  switch (total) {
    case 2: return {StopOnTwo, StopOnTwo};
    case 3: return {StopOnThree, StopOnThree};
    case 4: return {StopOnFour, StopOnHardFour};
    case 5: return {StopOnFive, StopOnFive};
    case 6: return {StopOnSix, StopOnHardSix};
    case 7: return {StopOnSeven, StopOnSeven};
    case 8: return {StopOnEight, StopOnHardEight};
    case 9: return {StopOnNine, StopOnNine};
    case 10: return {StopOnTen, StopOnHardTen};
    case 11: return {StopOnEleven, StopOnEleven};
    default: return {StopOnTwelve, StopOnTwelve};
  }
}

void StopAutoRollOnTotal() {
  if (Game.HyperDriveOn || !Game.AutoRollDice) return;
  const StopEntries stops = StopsOfTotal(Game.RollTotal);
  const bool pair = Game.Die1 == Game.Die2;
  if (Game.AutoStopOn[stops.Any] || (pair && Game.AutoStopOn[stops.Hard])) Game.KeepRolling = false;
}

// --- Step 16 ---

void FollowPoint() {
  if (Game.Point == Game.PrevPoint) return;
  Game.NeedRepaint = true;
  UpdateWorkingStates();
  if (Game.Point == 0) return;
  CopyPointOddsPayoffs();
  if (Game.AutoTakeFullOdds && Game.Bets[PassLine] != 0) SetFullOdds(PassLineOdds);
  if (Game.AutoLayFullOdds && Game.Bets[DontPass] != 0) {
    ArrangeChips(DontPass);
    SetFullOdds(DontPassOdds);
  }
  if (Game.AutoRemovePlace && Game.Bets[PassLine] != 0)
    RemoveBet(BetOnNumber(PlaceFamily, Game.Point));
}

// --- Step 18 ---

void FollowBankroll() {
  const Currency bankroll = Bankroll();
  Game.BankrollSum += bankroll;
  if (Abs(bankroll) > kRollingLimit) CheckBankLimits();
  Game.BankrollHigh = std::max(Game.BankrollHigh, bankroll);
  Game.BankrollLow = std::min(Game.BankrollLow, bankroll);
  LogEndOfRoll();
}

/// What the game has won or lost ends a run of rolls at the player's limits.
void StopAtLimits() {
  const Currency result = Bankroll() - Game.InvestedBankroll;
  const bool lost = Game.StopLoss > 0 && result <= -Game.StopLoss;
  const bool won = Game.WinGoal > 0 && result >= Game.WinGoal;
  if ((!lost && !won) || !Game.KeepRolling) return;
  Game.KeepRolling = false;
  Game.RunEnd = won ? GoalReached : LossReached;
  if (Game.HyperDriveOn && Game.StopMessage.empty())
    Game.StopMessage = won ? "Stopped by win goal of $" + MoneyText(Game.WinGoal) + "."
                           : "Stopped by loss limit of $" + MoneyText(Game.StopLoss) + ".";
}

// --- Step 19 ---

void FollowGraph() {
  AddBankrollPoint(!LedgerIsOpen());
  if (!Game.BankrollAutoPrint || Game.BankrollHistoryCount < kGraphPoints) return;
  if (LedgerIsOpen()) RecomputeAverages();
  TheHost.PrintGraph();
}

// --- Step 21 ---

void TakeEndSnapshots() {
  Game.RollsSince[0] = Game.RollCount[0];
  const bool all = Game.SnapshotsDue || !LedgerIsOpen();
  if (all)
    Game.BetsAfterRoll = Game.Bets;
  else
    ForTouchedBets([](unsigned id) { Game.BetsAfterRoll[id] = Game.Bets[id]; });
  if (all || Game.WorkingTouched || Game.WorkingSnapshotDue)
    std::copy_n(Game.BetWorking.begin(), kBetSlots, Game.BetWorkingPrev.begin());
  Game.WorkingSnapshotDue = false;
  if (Game.FlagsTouched) TakeFlagSnapshot();
  if (Game.AutoBetFilePrev != Game.AutoBetFile) Game.AutoBetFilePrev = Game.AutoBetFile;
  Game.AutoBetActivePrev = Game.AutoBetActive;
}

// --- Step 22 ---

/// Notes the roll for whoever looks back; `net` is what its decisions brought.
void NoteRoll(Currency net) {
  auto& notes = Game.LastRolls;
  if (notes.size() == kRollNotes) notes.pop_back();
  ++Game.RollsNoted;
  notes.insert(notes.begin(), {Game.Die1, Game.Die2, Game.PrevPoint, Game.Point, net});
}

void CountAutoRolls() {
  if (Game.AutoRollsLeft <= 0) return;
  if (--Game.AutoRollsLeft > 0) return;
  Game.KeepRolling = false;
  if (Game.HyperDriveOn && Game.StopMessage.empty())
    Game.StopMessage = "Stopped by roll count on Auto-Play screen.";
  Game.AutoRollsLeft = Game.NumAutoRolls;
}

/// The dice and points of the last finished roll, which a pass without a throw leaves as they were.
class LastThrow {
 public:
  void PutBack() const {
    Game.PrevDie1 = prevDie1_;
    Game.PrevDie2 = prevDie2_;
    Game.PrevPoint = prevPoint_;
    Game.PrevPrevPoint = prevPrevPoint_;
  }

 private:
  int prevDie1_ = Game.PrevDie1;
  int prevDie2_ = Game.PrevDie2;
  int prevPoint_ = Game.PrevPoint;
  int prevPrevPoint_ = Game.PrevPrevPoint;
};

/// One throw, from what the player changed before it to the views after it.
Pass OneRoll() {
  // Step 1. The roll limit.
  if (RollLimitReached()) {
    Game.ManualRollPending = false;
    return Pass::NoDice;
  }
  // Step 2. The log of what the player did since the last roll.
  LogChangesSinceRoll();
  // Steps 3 to 5. Snapshots.
  const LastThrow lastThrow;
  TakeSnapshots();
  // Steps 6 to 10. The dice.
  if (!TakeDice()) {
    lastThrow.PutBack();
    return Pass::TapeStopped;
  }
  ShowThrow();
  if (Game.Course.Followed) FollowCourse();
  if (Game.RecorderStatus == Recording) WriteRecordedRoll();
  Game.RollTotal = Game.Die1 + Game.Die2;
  CallThrow();
  // Step 11. The point.
  MovePoint();
  // Steps 12 and 13. Counters and events.
  CountRoll();
  // Steps 14 and 15. Decisions.
  DecideThrow();
  const Currency net = Bankroll() - Game.BetsAtRoll[BankrollIndex];
  StopAutoRollOnTotal();
  // Steps 16 and 17. What follows a change of the point.
  FollowPoint();
  if (Game.NeedRepaint && !Game.HyperDriveOn) TheHost.RedrawBets();
  // Steps 18 and 19. Bankroll and graph.
  FollowBankroll();
  StopAtLimits();
  FollowGraph();
  // Step 20. Auto-Bet.
  if (Game.AutoBetActive == 1 && Game.ScrCount > 0) RunAutoBets();
  // Step 21. End snapshots.
  TakeEndSnapshots();
  // Step 22. Views and roll count.
  if (!Game.HyperDriveOn) {
    NoteRoll(net);
    TheHost.RefreshViews();
  }
  CountAutoRolls();
  return Pass::Rolled;
}

/// Step 23. The pace of an unattended run; true when the next roll begins.
class Pace {
 public:
  bool NextRoll() {
    if (Game.HyperDriveOn) return HyperDrive();
    if (!Game.AutoRollDice || !Game.KeepRolling) return false;
    WaitBetweenRolls();
    if (!Game.KeepRolling) return false;
    if (Game.Point == 0) StickCall();
    return true;
  }

 private:
  static constexpr unsigned kRollsPerLook = 256;  // rolls between looks at the clock
  static constexpr std::uint32_t kSpinRate = 10;  // milliseconds, times the throttle squared

  bool HyperDrive() {
    if (Game.HyperThrottle > 0) {
      GiveTurn();
      WaitWhileRolling(static_cast<std::uint32_t>(Game.HyperThrottle) * Game.HyperThrottle *
                       kSpinRate);
    } else if (++rolls_ % (LedgerIsOpen() ? kRollsPerLook : 1U) == 0) {
      OfferTurn();
    }
    return Game.KeepRolling;
  }

  static void WaitBetweenRolls() {
    constexpr std::uint32_t kSecond = 1000;
    TheHost.Yield();
    const auto delay = static_cast<std::uint32_t>(std::max(Game.AutoRollDelay, 0)) * kSecond;
    WaitWhileRolling(std::max(delay, static_cast<std::uint32_t>(std::max(Game.Pace, 0))));
  }

  /// A pause that ends early with the run.
  static void WaitWhileRolling(std::uint32_t wait) {
    constexpr std::uint32_t kSlice = 20;
    const std::uint32_t start = TheHost.Milliseconds();
    while (Game.KeepRolling) {
      const std::uint32_t passed = TheHost.Milliseconds() - start;
      if (passed >= wait) return;
      TheHost.Wait(static_cast<int>(std::min(wait - passed, kSlice)));
    }
  }

  unsigned rolls_ = 0;
};

Pass RunRolls() {
  Pace pace;
  Game.SnapshotsDue = true;
  if (Game.HyperDriveOn) OpenLedger();
  Pass pass = Pass::Rolled;
  do {
    pass = OneRoll();
  } while (pace.NextRoll());
  return pass;
}

/// Whether the dice may be thrown at all.
bool MayRoll() {
  CorrectRngChoice();
  if (Game.KeyedBoxOpen) {
    Game.MsgText.clear();
    EnterKeyedBet();
    if (!Game.MsgText.empty()) return false;
  }
  if (Game.ScriptChanged) InitAutoBets();
  if (Abs(Bankroll()) > kRollingLimit) {
    CheckBankLimits();
    return false;
  }
  return true;
}

void EndDeferral() {
  CloseTape();
  try {
    if (LedgerIsOpen()) CloseLedger();
  } catch (const std::exception&) {
    ReportError("Roll Dice");
  }
  FlushEventsLog();
  FlushGamesLog();
  try {
    FlushOutputFile();
  } catch (const std::exception&) {
    ReportError("Roll Dice");
  }
}

}  // namespace

void RollDice() {
  if (Game.RollInProgress) return;
  Pass pass = Pass::NoDice;
  try {
    if (!MayRoll()) {
      Game.KeepRolling = false;  // a run that was asked for hasn't begun
      Game.ManualRollPending = false;
      return;
    }
    Game.GameChanged = true;
    Game.StopMessage.clear();
    Game.RollInProgress = true;
    Game.RunEnd = NoLimitReached;
    pass = RunRolls();
  } catch (const std::exception&) {
    ReportError("Roll Dice");
    Game.KeepRolling = false;
  }
  EndDeferral();
  ForgetCommands();
  // Step 24. The end.
  if (pass != Pass::TapeStopped && !Game.TableMinimised) TheHost.RedrawBets();
  if (Game.Point == 0) StickCall();
  Game.RollInProgress = false;
}

void RollNamedDice(int die1, int die2) {
  if (Game.RollInProgress) return;
  Game.PendingDie1 = die1;
  Game.PendingDie2 = die2;
  Game.ManualRollPending = true;
  RollDice();
}

void UpdateWorkingStates() {
  Game.WorkingTouched = true;
  const bool justMade = Game.Point == Game.RollTotal;
  for (int id = Lay4; id <= LastBet; ++id) {
    int& state = Game.BetWorking[id];
    if (justMade && state == NotWorking) state = Working;
    if (Game.Point == 0 && state != CalledOn && state != CalledOff) state = Game.ComeOutWorking[id];
  }
}

void CopyPointOddsPayoffs() {
  if (Game.Point == 0) return;
  Game.Payoff[DontPassOdds] = Game.Payoff[BetOnNumber(DontComeOddsFamily, Game.Point)];
  Game.Payoff[PassLineOdds] = Game.Payoff[BetOnNumber(ComeOddsFamily, Game.Point)];
}

void StickCall() {
  if (Game.ShooterStats[ShooterRolls] == 0) PlayStickCall(StickNewShooter, true);
  PlayStickCall(StickNextThrow, false);
}
