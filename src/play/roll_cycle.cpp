#include "play/roll_cycle.h"

#include <algorithm>
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
#include "bets/known_rolls.h"
#include "bets/ledger.h"
#include "bets/make_bet.h"
#include "bets/turns.h"
#include "core/error_report.h"
#include "core/file_failure.h"
#include "core/help_topics.h"
#include "core/host.h"
#include "core/messages.h"
#include "core/record_file.h"
#include "core/sounds.h"
#include "core/strange_files.h"
#include "core/text.h"
#include "dice/generators.h"
#include "dice/tape.h"
#include "play/course.h"
#include "play/roll_guard.h"
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

void NoteStanding(unsigned id) {
  const std::uint64_t bit = std::uint64_t{1} << id % 64;
  std::uint64_t& word = Game.StandingBets[id / 64];
  word = Game.Bets[id] != 0 ? word | bit : word & ~bit;
}

void SnapshotAllBets() {
  Game.BetsAtRoll = Game.Bets;
  std::copy_n(Game.Bets.begin(), kContractSlots, Game.ContractBets.begin());
  for (unsigned id = 0; id <= LastBet; ++id) Game.BetOutcome[id][0] = Game.BetOutcome[id][1];
  Game.StandingBets = {};
  for (unsigned id = Lay4; id <= LastBet; ++id)
    Game.StandingBets[id / 64] |= std::uint64_t{Game.Bets[id] != 0} << id % 64;
  if (Game.RollCount[AnyRoll] > 0) ClearRollStats(Actual);  // a new game has none
  Game.SnapshotsDue = false;
  // What was changed unseen has still to reach `BetsAfterRoll` at the end of the next roll.
  Game.EndSnapshotsDue = true;
}

void SnapshotTouchedBets() {
  ForEachIn(Game.TouchedBets, [](unsigned id) {
    Game.BetsAtRoll[id] = Game.Bets[id];
    if (id < kContractSlots) Game.ContractBets[id] = Game.Bets[id];
    if (id > LastBet) return;
    Game.BetOutcome[id][0] = Game.BetOutcome[id][1];
    NoteStanding(id);
  });
  ClearRollStats(Actual);
}

void KeepLastThrow(int die1, int die2) {
  Game.PrevPrevPoint = Game.PrevPoint;
  Game.PrevPoint = Game.Point;
  Game.PrevDie1 = die1;
  Game.PrevDie2 = die2;
}

void TakeSnapshots(bool mayLearn) {
  const bool all = Game.SnapshotsDue || !LedgerIsOpen();
  if (all)
    SnapshotAllBets();
  else
    SnapshotTouchedBets();
  Game.TouchedBets = {};
  if (!LedgerIsOpen()) {
    ClearRollStats(Phantom);
    UpdateEstablished(Game.RollTotal, Game.PrevPoint > 0);
    Game.ShooterEventPrev = Game.ShooterEvent;
    Game.ShooterSincePrev = Game.ShooterSince;
  }
  KeepLastThrow(Game.Die1, Game.Die2);
  Game.WorkingSnapshotDue |= Game.WorkingTouched;
  if (!LedgerIsOpen()) return;
  BeginLedgerRoll();
  BeginLearning(all, mayLearn);
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

/// The point after a total, by the point before: 0 to 10.
constexpr auto kPointAfter = [] {
  std::array<std::array<unsigned char, 13>, 11> points{};
  for (unsigned point = 0; point < points.size(); ++point)
    for (unsigned total = 2; total <= 12; ++total) {
      const bool stays = point != 0 && total != 7 && total != point;
      const bool comes = point == 0 && IsPointNumber(static_cast<int>(total));
      points[point][total] = static_cast<unsigned char>(stays ? point : comes ? total : 0);
    }
  return points;
}();

void MovePoint() {
  Game.Point =
      kPointAfter[static_cast<unsigned>(Game.PrevPoint)][static_cast<unsigned>(Game.RollTotal)];
  Game.ShooterStats[PointsEstablished] += Game.PrevPoint == 0 && Game.Point != 0 ? 1 : 0;
}

void LogPoint() {
  if (!Game.EventsLogActive) return;
  const bool pointStood = Game.PrevPoint != 0;
  if (Game.RollTotal == 7)
    LogPassOrMiss(pointStood ? "      Miss (seven-out)" : "      Pass (natural)");
  else if (Game.Point != 0 && !pointStood)
    LogPassOrMiss("      Point established");
  else if (Game.Point == 0 && pointStood)
    LogPassOrMiss("      Pass (point rolled)");
  else if (!pointStood && Game.RollTotal != 11)
    LogPassOrMiss("      Miss (craps natural)");
}

// --- Steps 12 and 13 ---

void CountRoll() {
  ++Game.RollCount[AnyRoll];
  ++Game.ShooterStats[ShooterRolls];
  if (Game.PrevPoint == 0) ++Game.ShooterStats[ComeOutRolls];
}

void CountEvents() {
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

/// Takes one step of the throw's decisions; `decide` is `DecideBet` or, where phantom wagers wait
/// in the ledger, `DecideWager`.
template <typename Decide>
void TakeStep(const DecisionStep& step, Decide decide) {
  switch (step.Kind) {
    case StepKind::Decide: return decide(step.Bet, static_cast<DecisionCode>(step.Code));
    case StepKind::Move: return MoveBet(step.Bet, step.Target);
    case StepKind::Pass: return ShooterPass();
    case StepKind::Miss: return ShooterMiss();
    case StepKind::Bar: return ShooterBar();
    case StepKind::LogNatural: return LogPassOrMiss("      Pass (natural)");
  }
}

/// While the ledger is open the phantom wagers wait, and only the bets that stand are visited: a
/// step leaves all bets alone that come after it.
void DecideThrow() {
  const ThrowSteps& steps = StepsOfThrow(Game.PrevPoint, Game.Die1, Game.Die2, Game.BarDont);
  if (LedgerIsOpen())
    return ForStandingBets(steps, Game.StandingBets, [&steps](const DecisionStep& step) {
      TakeStep(step, DecideWager);
      if (step.Bet != 0) FollowStep(step.Bet, static_cast<unsigned>(&step - steps.Steps));
    });
  for (unsigned place = 0; place < steps.Count; ++place) TakeStep(steps.Steps[place], DecideBet);
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
  if (Game.EventsLogActive) LogEndOfRoll();
}

/// What the game has won or lost ends a run of rolls at the player's limits.
void StopAtLimits() {
  const RunEndKind end = RunEndAt(Bankroll());
  if (end == NoLimitReached || !Game.KeepRolling) return;
  Game.KeepRolling = false;
  Game.RunEnd = end;
  if (Game.HyperDriveOn && Game.StopMessage.empty())
    Game.StopMessage = end == GoalReached
                           ? "Stopped by win goal of $" + MoneyText(Game.WinGoal) + "."
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
  const bool all = Game.SnapshotsDue || std::exchange(Game.EndSnapshotsDue, false);
  if (all)
    Game.BetsAfterRoll = Game.Bets;
  else
    ForEachIn(Game.TouchedBets, [](unsigned id) { Game.BetsAfterRoll[id] = Game.Bets[id]; });
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

/// Step 23. The pace of an unattended run; true when the next roll begins.
class Pace {
 public:
  /// Under Hyper-Drive at full speed: rolls from here on after which nobody can look.
  int UnseenRolls() {
    const unsigned toLook = kRollsPerLook - rolls_ % kRollsPerLook;
    if (toLook > 1) return static_cast<int>(toLook) - 1;
    return LooksNext() ? 0 : 1;
  }

  /// Those rolls have been played.
  void Pass(int unseenRolls) {
    rolls_ += static_cast<unsigned>(unseenRolls);
    if (rolls_ % kRollsPerLook == 0) asked_ = false;
  }

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
      if (LooksNext()) GiveTurn();
      asked_ = false;
    }
    return Game.KeepRolling;
  }

  /// Whether the event loop gets a turn after the roll at which the clock is looked at. It may be
  /// looked at before the roll.
  bool LooksNext() {
    if (!asked_) looks_ = TurnIsDue();
    asked_ = true;
    return looks_;
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
  bool asked_ = false;  // whether there is a turn at the next look
  bool looks_ = false;
};

// --- Known rolls ---

/// The rolls that can be played now before anybody looks, at the sums of the game too, the run ends
/// or the game is full.
int UnseenRolls(Pace& pace) {
  int rolls = std::min(kMaxRolls - 1 - Game.RollCount[0], static_cast<int>(RollsToLook));
  if (Game.AutoRollsLeft > 0) rolls = std::min(rolls, Game.AutoRollsLeft - 1);
  return rolls > 0 ? std::min(rolls, pace.UnseenRolls()) : 0;
}

/// The throws to come, as far as they can be looked at.
class ComingThrows {
 public:
  /// Looks at up to `most`. A generator that can't be looked into makes one, which waits.
  std::span<const ThrowNumber> Look(unsigned most) {
    const unsigned wanted = std::min(most, length_);
    length_ = std::min(2 * length_, static_cast<unsigned>(throws_.size()));
    const std::span<ThrowNumber> throws = std::span(throws_).first(wanted);
    if (LookAhead(throws)) return throws;
    const int die1 = Game.Die1;
    const int die2 = Game.Die2;
    RollWithGenerator();
    Game.PendingDie1 = std::exchange(Game.Die1, die1);
    Game.PendingDie2 = std::exchange(Game.Die2, die2);
    Game.ManualRollPending = true;
    throws_[0] = NumberOfThrow(Game.PendingDie1, Game.PendingDie2);
    return throws.first(1);
  }

  /// The first `count` of them have been thrown.
  static void Take(unsigned count) {
    if (Game.ManualRollPending)
      Game.ManualRollPending = count == 0;
    else
      SkipThrows(count);
  }

 private:
  std::array<ThrowNumber, std::min<std::size_t>(kMostThrowsAhead, KnownStretch::kMostThrows)>
      throws_{};
  unsigned length_ = 8;  // it may not be known for long
};

/// Does of the steps below what a known roll doesn't, but for the dice.
void PassKnownRoll(ThrowNumber thrown, const KnownStep& step) {
  Game.PrevPoint = Game.Point;
  Game.RollTotal = kTotalOfThrow[thrown];
  MovePoint();
  CountRoll();
  if (step.TellsOfShooter)
    ForStandingBets(
        StepsOfThrow(Game.PrevPoint, FirstDieOf(thrown), SecondDieOf(thrown), Game.BarDont),
        BetMask{}, [](const DecisionStep& s) { TakeStep(s, DecideWager); });
  Game.Bets[BankrollIndex] = step.Bankroll;
  FollowBankroll();
  AddBankrollPoint(false);
}

void SetDice(ThrowNumber thrown) {
  Game.Die1 = FirstDieOf(thrown);
  Game.Die2 = SecondDieOf(thrown);
}

/// Does the same for rolls in a row, and keeps the dice of the last two.
void PassKnownRolls(std::span<const ThrowNumber> throws, std::span<const KnownStep> steps) {
  const std::size_t last = steps.size() - 1;
  for (std::size_t i = 0; i < last; ++i) PassKnownRoll(throws[i], steps[i]);
  if (last > 0) SetDice(throws[last - 1]);
  KeepLastThrow(Game.Die1, Game.Die2);
  SetDice(throws[last]);
  PassKnownRoll(throws[last], steps[last]);
}

/// Plays up to `rolls` rolls for as long as they are known, and returns their number.
int PlayKnownRolls(KnownStretch& stretch, ComingThrows& coming, int rolls) {
  int played = 0;
  while (played < rolls) {
    const std::span<const ThrowNumber> throws = coming.Look(static_cast<unsigned>(rolls - played));
    const std::span<const KnownStep> steps = stretch.Play(throws);
    ComingThrows::Take(static_cast<unsigned>(steps.size()));
    if (steps.empty()) break;
    PassKnownRolls(throws, steps);
    played += static_cast<int>(steps.size());
  }
  Game.RollsSince[0] = Game.RollCount[0];
  if (Game.AutoRollsLeft > 0) Game.AutoRollsLeft -= played;
  return played;
}

/// Plays rolls for as long as they are known and nobody looks. The next one is played in full, with
/// the dice that wait if there are any.
void PlayKnownRolls(Pace& pace) {
  if (!KnownRollsMayFollow()) return;
  KnownStretch stretch;
  ComingThrows coming;
  for (int rolls = UnseenRolls(pace); rolls > 0; rolls = UnseenRolls(pace)) {
    const int played = PlayKnownRolls(stretch, coming, rolls);
    pace.Pass(played);
    RollsToLook -= static_cast<unsigned>(played);
    if (played < rolls) return;
  }
}

/// Does what the first roll of a run begins with where that roll may be known already.
void BeginKnownRolls() {
  if (!Game.KeepRolling || !NobodyLooksOn() || !SumsAreOrdinary()) return;
  SnapshotAllBets();
  Game.TouchedBets = {};
  BeginLearning(true, true);
}

/// One throw, from what the player changed before it to the views after it.
Pass OneRoll() {
  // Step 1. The roll limit.
  if (RollLimitReached()) {
    Game.ManualRollPending = false;
    return Pass::NoDice;
  }
  const bool guarded = BeginGuardedRoll();
  // Step 2. The log of what the player did since the last roll.
  LogChangesSinceRoll();
  // Steps 3 to 5. Snapshots.
  const LastThrow lastThrow;
  TakeSnapshots(!guarded);
  // Steps 6 to 10. The dice.
  if (!TakeDice()) {
    lastThrow.PutBack();
    if (guarded) EndGuardedRoll();
    return Pass::TapeStopped;
  }
  ShowThrow();
  if (Game.Course.Followed) FollowCourse();
  if (Game.RecorderStatus == Recording) WriteRecordedRoll();
  Game.RollTotal = Game.Die1 + Game.Die2;
  CallThrow();
  // Step 11. The point.
  MovePoint();
  LogPoint();
  // Steps 12 and 13. Counters and events.
  CountRoll();
  if (LedgerIsOpen())
    EnterThrow();
  else
    CountEvents();
  // Steps 14 and 15. Decisions.
  DecideThrow();
  const Currency net = Bankroll() - Game.BetsAtRoll[BankrollIndex];
  StopAutoRollOnTotal();
  // Steps 16 and 17. What follows a change of the point.
  FollowPoint();
  if (LedgerIsOpen()) Learn();
  if (Game.NeedRepaint && !Game.HyperDriveOn) TheHost.RedrawBets();
  // Steps 18 and 19. Bankroll and graph.
  FollowBankroll();
  StopAtLimits();
  FollowGraph();
  if (guarded) EndGuardedRoll();
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

Pass RunRolls() {
  Pace pace;
  if (Game.SnapshotsDue) RollsToLook = 0;
  Game.SnapshotsDue = true;
  if (Game.HyperDriveOn) OpenLedger();
  BeginKnownRolls();
  Pass pass = Pass::Rolled;
  do {
    PlayKnownRolls(pace);
    pass = OneRoll();
  } while (pace.NextRoll());
  return pass;
}

/// What a game that was opened wants written elsewhere, the player is asked for before the first
/// roll that would write it.
void AskForStrangeFiles() {
  if (Game.StrangeFiles.empty()) return;
  if (Game.EventsLogActive &&
      !MayWriteTo(
          Game.EventsLogFile, "the Events Log",
          "events are logged in " + Quoted(BareName(DefaultEventsLog())) + " of your data folder"))
    Game.EventsLogFile = DefaultEventsLog();
  if (Game.RecorderStatus == Recording &&
      !MayWriteTo(Game.DiceRollFile, "the Dice Roll file that is being recorded",
                  "the recorder is switched off"))
    Game.RecorderStatus = RecorderOff;
  if (Game.AutoBetActive == 1 && Game.ScrCount > 0 &&
      !MayWriteTo(Game.AutoBetOutputFile, "the output file of the Auto-Bets",
                  "the Auto-Bets have no output file"))
    UseOutputFile("");
}

/// Whether the dice may be thrown at all.
bool MayRoll() {
  CorrectRngChoice();
  AskForStrangeFiles();
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

/// The run ends where the last whole roll left the game; what the player is to be told of it.
std::string GiveUpRoll() {
  ReportError("Roll Dice");
  Game.KeepRolling = false;
  if (!TakeBackRoll()) return {};
  Game.KeepRolling = false;
  Game.ManualRollPending = false;
  return "The dice can't be rolled: " + FaultWords() +
         ".\n\nThe game stands as it did before this roll. Please take down the largest bets, or "
         "save "
         "the game and select " +
         Quoted("New") + " from the " + Quoted("Game") + " menu.";
}

void TellOfLostRoll(const std::string& text) {
  if (text.empty()) return;
  if (Game.HyperDriveOn)
    Game.StopMessage = text;
  else
    ShowMessage(text, "Roll Taken Back", kTopicLimits, OkStop);
}

}  // namespace

void RollDice() {
  if (Game.RollInProgress) return;
  Pass pass = Pass::NoDice;
  std::string lost;
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
    lost = GiveUpRoll();
  }
  EndDeferral();
  ForgetCommands();
  // Step 24. The end.
  if (pass != Pass::TapeStopped && !Game.TableMinimised) TheHost.RedrawBets();
  if (Game.Point == 0) StickCall();
  Game.RollInProgress = false;
  TellOfLostRoll(lost);
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
