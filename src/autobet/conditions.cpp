#include "autobet/conditions.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <string_view>

#include "autobet/bet_ids.h"
#include "autobet/language.h"
#include "autobet/script.h"
#include "autobet/values.h"
#include "bets/ledger.h"

namespace {

constexpr int kFirstEvent = SubjectOf(Total2);
constexpr int kLastEvent = SubjectOf(SecondDie6);

// --- Plans ---

struct SimpleSubject {
  int Subject;
  ConditionTest Test;
  int Index = 0;
};

constexpr std::array kSimpleSubjects = {
    SimpleSubject{InitializingSubject, ConditionTest::Initializing},
    SimpleSubject{EachRoll, ConditionTest::EachRoll},
    SimpleSubject{NextIsComeOut, ConditionTest::NextIsComeOut},
    SimpleSubject{NextIsNotComeOut, ConditionTest::NextIsNotComeOut},
    SimpleSubject{LastWasComeOut, ConditionTest::LastWasComeOut},
    SimpleSubject{LastWasNotComeOut, ConditionTest::LastWasNotComeOut},
    SimpleSubject{PointEstablished, ConditionTest::PointEstablished},
    SimpleSubject{PointNotEstablished, ConditionTest::PointNotEstablished},
    SimpleSubject{PointDecidedFor, ConditionTest::PointDecidedFor},
    SimpleSubject{PointDecidedAgainst, ConditionTest::PointDecidedAgainst},
    SimpleSubject{PointDecided, ConditionTest::PointDecided},
    SimpleSubject{AnswerWasYes, ConditionTest::AnswerIs, AnswerYes},
    SimpleSubject{AnswerWasNo, ConditionTest::AnswerIs, AnswerNo},
    SimpleSubject{EachPass, ConditionTest::EachPass},
    SimpleSubject{EachMiss, ConditionTest::EachMiss},
    SimpleSubject{GameRolls, ConditionTest::RollsOfGame},
    SimpleSubject{ThisShooterRolls, ConditionTest::RollsOfShooter},
    SimpleSubject{GamePasses, ConditionTest::CountAtDecision, AllPasses},
    SimpleSubject{ThisShooterPasses, ConditionTest::CountAtDecision, ShooterPasses},
    SimpleSubject{GameMisses, ConditionTest::CountAtDecision, AllMisses},
    SimpleSubject{ThisShooterMisses, ConditionTest::CountAtDecision, ShooterMisses},
    SimpleSubject{LastShooterRollsSubject, ConditionTest::CountOfLastShooter, LastShooterRolls},
    SimpleSubject{LastShooterPassesSubject, ConditionTest::CountOfLastShooter, LastShooterPasses},
    SimpleSubject{LastShooterMissesSubject, ConditionTest::CountOfLastShooter, LastShooterMisses},
    SimpleSubject{SimulatedHours, ConditionTest::Hours},
    SimpleSubject{AvailableSubject, ConditionTest::Available},
    SimpleSubject{OneFlag, ConditionTest::OneFlag},
    SimpleSubject{AnyFlag, ConditionTest::AnyFlag},
    SimpleSubject{AllFlags, ConditionTest::AllFlags},
    // Required: both totals of flags come out as the comparison of the last flag.
    SimpleSubject{TrueFlags, ConditionTest::LastFlag},
    SimpleSubject{FalseFlags, ConditionTest::LastFlag},
};

Operand IdsOperand(int first, int last) {
  Operand operand;
  operand.What = Operand::Kind::Ids;
  operand.First = static_cast<std::int16_t>(first);
  operand.Last = static_cast<std::int16_t>(last);
  return operand;
}

Operand OperandOf(Operand::Kind what, int first) {
  Operand operand = IdsOperand(first, first);
  operand.What = what;
  return operand;
}

/// The ids or values that a subject of either side covers; nothing for a code that has none.
Operand PlanOperand(int subject, int stack) {
  if (IsBet(subject)) return IdsOperand(subject, subject);
  if (const BetGroup* group = FindBetGroup(subject)) {
    Operand operand = IdsOperand(group->Ids.First, group->Ids.Last);
    operand.Any = subject == group->Any;
    operand.All = subject == group->All;
    operand.Total = subject == group->Total;
    return operand;
  }
  BetFamily family{};
  if (FindPointFamily(subject, family)) return OperandOf(Operand::Kind::PointBet, family);
  switch (subject) {
    case BankrollSubject: return IdsOperand(BankrollIndex, BankrollIndex);
    case AverageBankroll:
      return OperandOf(Operand::Kind::Average, std::clamp(stack, 0, kGraphPoints));
    case AvailableSubject: return OperandOf(Operand::Kind::Available, 0);
    case ChipStackSubject:
      if (!IsStackNumber(stack)) return {};
      return IdsOperand(ChipStackBase + stack, ChipStackBase + stack);
    case ChipStackRef:
      return IsStackNumber(stack) ? OperandOf(Operand::Kind::StackRef, stack) : Operand();
    default: return {};
  }
}

bool ComparesAmounts(int op) { return op >= EqualTo && op <= NotLessThan; }
bool ComparesSubjects(int op) { return op >= EqualToSubject && op <= NotLessThanSubject; }
bool ComparesNames(int op) { return op == IsNamed || op == IsNotNamed; }

bool IsNumberChoice(int choice) {
  return std::any_of(kPointNumbers.begin(), kPointNumbers.end(),
                     [choice](int number) { return IsInNumberChoice(choice, number); });
}

/// Whether the test knows the operator; one that it doesn't know makes a line that never holds.
bool KnowsOperator(ConditionTest test, int op) {
  switch (test) {
    case ConditionTest::PointEstablished:
    case ConditionTest::PointNotEstablished:
    case ConditionTest::PointDecidedFor:
    case ConditionTest::PointDecidedAgainst:
    case ConditionTest::PointDecided: return IsNumberChoice(op);
    case ConditionTest::RollsOfGame:
    case ConditionTest::RollsOfShooter:
    case ConditionTest::CountAtDecision:
    case ConditionTest::CountOfLastShooter:
    case ConditionTest::Hours:
    case ConditionTest::Available: return ComparesAmounts(op) || ComparesSubjects(op);
    case ConditionTest::Event: return op >= HasRolled && op <= HasNotRolledInLast;
    case ConditionTest::Total:
      return (op >= HasWon && op <= HasLostMore) || ComparesAmounts(op) || ComparesSubjects(op) ||
             (op >= NumberIs && op <= NumberLessThan);
    case ConditionTest::Bets:
      return (op >= HasWon && op <= HasLostMore) || (op >= HasNotWon && op <= HasLostLess) ||
             ComparesAmounts(op) || ComparesSubjects(op) || ComparesNames(op);
    default: return true;
  }
}

void PlanTest(ConditionPlan& plan, const ScriptLine& line) {
  const int subject = line.OfSubject;
  const auto simple = std::find_if(kSimpleSubjects.begin(), kSimpleSubjects.end(),
                                   [=](const auto& row) { return row.Subject == subject; });
  if (simple != kSimpleSubjects.end()) {
    plan.Test = simple->Test;
    plan.Index = simple->Index;
    if (plan.Test == ConditionTest::OneFlag) plan.Index = FindFlag(line.LineName);
    if (plan.Test == ConditionTest::OneFlag && plan.Index < 0) plan.Test = ConditionTest::Never;
  } else if (subject >= kFirstEvent && subject <= kLastEvent) {
    plan.Test = ConditionTest::Event;
    plan.Index = subject - EventSubject;
  } else {
    plan.Of = PlanOperand(subject, line.OfStackNum);
    if (plan.Of.What != Operand::Kind::Nothing)
      plan.Test = plan.Of.Total ? ConditionTest::Total : ConditionTest::Bets;
  }
}

// --- Values ---

template <typename T>
bool CompareValues(T a, int op, T b) {
  switch (op) {
    case EqualTo:
    case EqualToSubject: return a == b;
    case NotEqualTo:
    case NotEqualToSubject: return a != b;
    case GreaterThan:
    case GreaterThanSubject: return a > b;
    case NotGreaterThan:
    case NotGreaterThanSubject: return a <= b;
    case LessThan:
    case LessThanSubject: return a < b;
    case NotLessThan:
    case NotLessThanSubject: return a >= b;
    default: return false;
  }
}

/// A value now, and as it stood after the last roll.
struct NowAndBefore {
  Currency Now;
  Currency Before;
};

/// Whether something holds now, and whether it did after the last roll.
struct Truths {
  bool Now = false;
  bool Old = false;
};

Truths Compare(const NowAndBefore& a, int op, const NowAndBefore& b) {
  return {CompareValues(a.Now, op, b.Now), CompareValues(a.Before, op, b.Before)};
}

NowAndBefore ValueOfId(int id) {
  return {Game.Bets[static_cast<unsigned>(id)], Game.BetsAfterRoll[static_cast<unsigned>(id)]};
}

NowAndBefore SumOfIds(const Operand& ids) {
  NowAndBefore sum;
  for (int id = ids.First; id <= ids.Last; ++id) {
    sum.Now += Game.Bets[static_cast<unsigned>(id)];
    sum.Before += Game.BetsAfterRoll[static_cast<unsigned>(id)];
  }
  return sum;
}

Currency AvailableNow() { return Game.NegBankroll ? Bankroll() : FreeMoney(); }

NowAndBefore ValueOfAvailable() {
  const NowAndBefore bankroll = ValueOfId(BankrollIndex);
  if (Game.NegBankroll) return bankroll;
  return {FreeMoney(), bankroll.Before - SumOfIds(IdsOperand(Lay4, LastBet)).Before};
}

/// The average over `span` points of the graph, at the last point and at the one before it.
NowAndBefore AverageOver(int span) {
  return {ValueOf(AverageBankroll, span), ValueOfLast(AverageBankroll, span)};
}

/// The one id that an operand stands for at the moment; 0 for none. Not for groups.
int IdNow(const Operand& operand) {
  return operand.What == Operand::Kind::StackRef
             ? StackReferredTo(operand.First)
             : BetOnPoint(static_cast<BetFamily>(operand.First));
}

/// Calls `action(id, value)` for each thing that an operand covers, in order, until it returns
/// false. What is no bet and no stack has the id -1.
template <typename Action>
void ForEach(const Operand& operand, Action action) {
  switch (operand.What) {
    case Operand::Kind::Nothing: return;
    case Operand::Kind::Ids:
      for (int id = operand.First; id <= operand.Last; ++id)
        if (!action(id, ValueOfId(id))) return;
      return;
    case Operand::Kind::StackRef:
    case Operand::Kind::PointBet:
      if (const int id = IdNow(operand); id != 0) action(id, ValueOfId(id));
      return;
    case Operand::Kind::Average: action(-1, AverageOver(operand.First)); return;
    case Operand::Kind::Available: action(-1, ValueOfAvailable()); return;
  }
}

// --- The second subject ---

/// Compares a value of the first subject with all that the second subject covers. `id` is what the
/// value belongs to: a pair of the same thing is left out.
Truths CompareWithSubject(const ConditionPlan& plan, int id, const NowAndBefore& value,
                          bool whileBlock) {
  if (plan.To.Total) return Compare(value, plan.Operator, SumOfIds(plan.To));
  // Two averages are the same thing when their spans are.
  const bool sameKind = plan.Of.What == plan.To.What && plan.Of.First == plan.To.First;
  Truths some;
  bool allNow = true;
  bool allOld = true;
  ForEach(plan.To, [&](int otherId, const NowAndBefore& other) {
    if (otherId == id && (id >= 0 || sameKind)) return true;
    const Truths pair = Compare(value, plan.Operator, other);
    some.Now |= pair.Now;
    some.Old |= pair.Old;
    allNow &= pair.Now;
    allOld &= pair.Old;
    if (plan.To.All) return allNow || allOld;
    return !(whileBlock && pair.Now);
  });
  if (!plan.To.All) return some;
  return {some.Now && allNow, some.Old && allOld};
}

std::string_view TrimmedView(std::string_view text) {
  const std::size_t first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

/// A name has no past: it was what it is.
Truths CompareName(const ConditionPlan& plan, int id) {
  if (id < ChipStackBase) return {};
  const auto stack = static_cast<unsigned>(id - ChipStackBase);
  const std::string_view name =
      stack < Game.ChipStackName.size() ? std::string_view(Game.ChipStackName[stack]) : "";
  const bool equal = TrimmedView(name) == TrimmedView(Line(plan.Index).LineName);
  const bool holds = plan.Operator == IsNamed ? equal : !equal;
  return {holds, holds};
}

// --- Bets ---

Truths CompareStreak(int op, Currency now, Currency before, Currency amount) {
  const bool grew = amount == 0;  // an amount of 0 asks only whether the streak moved
  switch (op) {
    case HasWon:
      return grew ? Truths{now >= 1 && now > before, false}
                  : Truths{now == amount, before == amount};
    case HasWonMore: return {now > amount, before > amount};
    case HasLost:
      return grew ? Truths{now < 0 && now < before, false}
                  : Truths{now == -amount, before == -amount};
    case HasLostMore: return {now < -amount, before < -amount};
    case HasNotWon:
      return grew ? Truths{now <= before, false} : Truths{now != amount, before != amount};
    case HasWonLess: return {now < amount, before < amount};
    case HasNotLost:
      return grew ? Truths{now >= before, false} : Truths{now != -amount, before != -amount};
    case HasLostLess: return {now > -amount, before > -amount};
    default: return {};
  }
}

Truths TruthsOfId(const ConditionPlan& plan, int id, const NowAndBefore& value, bool whileBlock) {
  const int op = plan.Operator;
  if (ComparesAmounts(op))
    return {CompareValues(value.Now, op, plan.Amount),
            CompareValues(value.Before, op, plan.Amount)};
  if (ComparesSubjects(op)) return CompareWithSubject(plan, id, value, whileBlock);
  if (ComparesNames(op)) return CompareName(plan, id);
  if (!IsBet(id)) return {};  // only bets have a streak
  const auto& streak = Game.BetOutcome[static_cast<unsigned>(id)];
  return CompareStreak(op, streak[1], streak[0], plan.Amount);
}

Verdict EvaluateBets(const ConditionPlan& plan, bool whileBlock) {
  const bool group = plan.Of.Any || plan.Of.All;
  const bool anyAmount =
      plan.Amount == 0 && !ComparesSubjects(plan.Operator) && !ComparesNames(plan.Operator);
  bool holds = false;
  bool someOldTrue = false;
  bool someOldFalse = false;
  ForEach(plan.Of, [&](int id, const NowAndBefore& value) {
    const bool countsNow = !group || anyAmount || value.Now != 0;
    const bool countsBefore = !group || anyAmount || value.Before > 0;
    if (!countsNow && !countsBefore) return true;
    const Truths truths = TruthsOfId(plan, id, value, whileBlock);
    if (countsBefore) (truths.Old ? someOldTrue : someOldFalse) = true;
    if (!countsNow) return true;
    if (truths.Now) {
      holds = true;
      return !(whileBlock && !plan.Of.All && (value.Now > 0 || id == BankrollIndex));
    }
    if (plan.Of.All) holds = false;
    return !plan.Of.All;
  });
  if (!holds) return {};
  return {true, !someOldTrue || (plan.Of.All ? someOldFalse : Game.RollCount[0] == 0)};
}

/// What `EvaluateBets` says of one thing that is no group.
Verdict VerdictOfOne(const Truths& truths) {
  return {truths.Now, truths.Now && (!truths.Old || Game.RollCount[0] == 0)};
}

template <int op>
Verdict EvaluateAmountOfOne(const ConditionPlan& plan, bool) {
  const NowAndBefore value = ValueOfId(plan.Of.First);
  return VerdictOfOne(
      {CompareValues(value.Now, op, plan.Amount), CompareValues(value.Before, op, plan.Amount)});
}

Verdict EvaluateStreakOfOne(const ConditionPlan& plan, bool) {
  const auto& streak = Game.BetOutcome[static_cast<unsigned>(plan.Of.First)];
  return VerdictOfOne(CompareStreak(plan.Operator, streak[1], streak[0], plan.Amount));
}

/// The evaluator of a line on bets: most ask of one bet, of the bankroll or of one stack.
Evaluator EvaluatorOfBets(const ConditionPlan& plan) {
  constexpr std::array<Evaluator, 6> kOfAmount = {
      EvaluateAmountOfOne<EqualTo>,     EvaluateAmountOfOne<NotEqualTo>,
      EvaluateAmountOfOne<GreaterThan>, EvaluateAmountOfOne<NotGreaterThan>,
      EvaluateAmountOfOne<LessThan>,    EvaluateAmountOfOne<NotLessThan>};
  const bool one = plan.Of.What == Operand::Kind::Ids && plan.Of.First == plan.Of.Last &&
                   !plan.Of.Any && !plan.Of.All;
  const int op = plan.Operator;
  if (one && ComparesAmounts(op)) return kOfAmount[static_cast<unsigned>(op - EqualTo)];
  const bool ofStreak = !ComparesSubjects(op) && !ComparesNames(op);
  return one && ofStreak && IsBet(plan.Of.First) ? EvaluateStreakOfOne : EvaluateBets;
}

// --- Totals ---

struct StreakSums {
  long long Won = 0;
  long long Lost = 0;
  bool AllAsBefore = true;
};

StreakSums SumStreaks(const Operand& ids) {
  StreakSums sums;
  for (int id = ids.First; id <= std::min<int>(ids.Last, LastBet); ++id) {
    const auto& streak = Game.BetOutcome[static_cast<unsigned>(id)];
    (streak[1] > 0 ? sums.Won : sums.Lost) += streak[1];
    sums.AllAsBefore &= streak[0] == streak[1];
  }
  sums.Lost = std::abs(sums.Lost);
  return sums;
}

Truths CompareStreakSums(const ConditionPlan& plan) {
  if (plan.Of.First > LastBet) return {};  // Chip-Stacks have no streak
  const StreakSums sums = SumStreaks(plan.Of);
  const Currency amount = plan.Amount;
  const bool old = sums.AllAsBefore;
  switch (plan.Operator) {
    case HasWon: return {Currency(sums.Won) == amount, old};
    case HasWonMore: return {Currency(sums.Won) > amount, old};
    case HasLost: return {amount != 0 && Currency(sums.Lost) == amount, old};
    default: return {Currency(sums.Lost) > amount, old};
  }
}

Truths CompareNumberOfBets(const ConditionPlan& plan) {
  constexpr int kAsComparison[] = {EqualTo, GreaterThan, LessThan};
  const int op = kAsComparison[plan.Operator - NumberIs];
  long long now = 0;
  long long old = 0;
  for (int id = plan.Of.First; id <= plan.Of.Last; ++id) {
    now += Game.Bets[static_cast<unsigned>(id)] > 0;
    old += Game.BetsAfterRoll[static_cast<unsigned>(id)] > 0;
  }
  return {CompareValues(Currency(now), op, plan.Amount),
          CompareValues(Currency(old), op, plan.Amount)};
}

Truths CompareTotal(const ConditionPlan& plan, bool whileBlock) {
  const int op = plan.Operator;
  if (op <= HasLostMore) return CompareStreakSums(plan);
  if (op >= NumberIs) return CompareNumberOfBets(plan);
  const NowAndBefore sum = SumOfIds(plan.Of);
  if (ComparesSubjects(op)) return CompareWithSubject(plan, -1, sum, whileBlock);
  return {CompareValues(sum.Now, op, plan.Amount), CompareValues(sum.Before, op, plan.Amount)};
}

Verdict EvaluateTotal(const ConditionPlan& plan, bool whileBlock) {
  const Truths truths = CompareTotal(plan, whileBlock);
  return {truths.Now, truths.Now && !truths.Old};
}

// --- Counts ---

/// A count now and one less, against the amount or the second subject.
Truths CompareCount(const ConditionPlan& plan, int count, bool whileBlock) {
  const NowAndBefore value = {count, Currency(count) - 1};
  if (ComparesSubjects(plan.Operator)) return CompareWithSubject(plan, -1, value, whileBlock);
  return {CompareValues(value.Now, plan.Operator, plan.Amount),
          CompareValues(value.Before, plan.Operator, plan.Amount)};
}

Truths CompareHours(const ConditionPlan& plan, bool whileBlock) {
  const double perHour = Game.SimRollsPerHour.ToDouble();
  if (perHour == 0) return {};
  const double rolls = Game.RollCount[0];
  const double now = rolls / perHour;
  const double before = (rolls - 1) / perHour;
  if (ComparesSubjects(plan.Operator)) {
    const NowAndBefore value = {Currency::FromDouble(now), Currency::FromDouble(before)};
    return CompareWithSubject(plan, -1, value, whileBlock);
  }
  const double amount = plan.Amount.ToDouble();
  return {CompareValues(now, plan.Operator, amount), CompareValues(before, plan.Operator, amount)};
}

Verdict NewUnlessOld(const Truths& truths) { return {truths.Now, truths.Now && !truths.Old}; }

Verdict EvaluateRollsOfGame(const ConditionPlan& plan, bool whileBlock) {
  return NewUnlessOld(CompareCount(plan, Game.RollCount[0], whileBlock));
}

Verdict EvaluateRollsOfShooter(const ConditionPlan& plan, bool whileBlock) {
  return NewUnlessOld(CompareCount(plan, Game.ShooterStats[ShooterRolls], whileBlock));
}

Verdict EvaluateHours(const ConditionPlan& plan, bool whileBlock) {
  return NewUnlessOld(CompareHours(plan, whileBlock));
}

Verdict EvaluateCountAtDecision(const ConditionPlan& plan, bool whileBlock) {
  const Truths truths =
      CompareCount(plan, Game.ShooterStats[static_cast<unsigned>(plan.Index)], whileBlock);
  return {truths.Now, truths.Now && !truths.Old && Game.Point == 0};
}

Verdict EvaluateCountOfLastShooter(const ConditionPlan& plan, bool whileBlock) {
  const Truths truths =
      CompareCount(plan, Game.ShooterStats[static_cast<unsigned>(plan.Index)], whileBlock);
  return {truths.Now,
          Game.ShooterStats[ShooterRolls] == 0 && Game.ShooterStats[ShootersFinished] >= 1};
}

Verdict EvaluateAvailable(const ConditionPlan& plan, bool whileBlock) {
  if (ComparesSubjects(plan.Operator))
    return {CompareWithSubject(plan, -1, ValueOfAvailable(), whileBlock).Now, true};
  return {CompareValues(AvailableNow(), plan.Operator, plan.Amount), true};
}

// --- Roll events ---

Verdict EvaluateEvent(const ConditionPlan& plan, bool) {
  const ShooterTally tally = ShooterTallyNow(plan.Index);
  const Currency amount = plan.Amount;
  const Currency count = tally.Count;
  const Currency countPrev = tally.CountPrev;
  const Currency since = tally.Since;
  const bool happened = tally.Count != 0;
  switch (plan.Operator) {
    case HasRolled:
      if (amount == 0) return {tally.Count > tally.CountPrev, true};
      return {count == amount, !(countPrev == amount && happened)};
    case HasRolledMore: return {count > amount, !(happened && countPrev > amount)};
    case HasNotRolled:
      if (amount == 0) return {tally.Count == tally.CountPrev, true};
      return {count != amount, !(countPrev != amount && happened)};
    case HasRolledLess: return {count < amount, !(happened && countPrev < amount)};
    case HasRolledInLast:
      return {since < amount && tally.Count >= 1,
              !(tally.CountPrev != 0 && Currency(tally.SincePrev) < amount)};
    // Required: the tally is held against the amount as well as the gap.
    case HasNotRolledInLast: return {since >= amount && count >= amount, since == amount};
    default: return {};
  }
}

// --- Passes, misses and points ---

bool JustRolled(int event) { return RollsSinceNow(event) == 0; }

bool IsOnPass() {
  return Game.Point == 0 && !JustRolled(2) && !JustRolled(3) && !JustRolled(12) &&
         !(JustRolled(7) && Game.PrevPoint != 0);
}

bool IsOnMiss() {
  if (Game.RollCount[0] == 0 || Game.Point != 0) return false;
  return JustRolled(2) || JustRolled(3) || JustRolled(12) || (JustRolled(7) && Game.PrevPoint > 0);
}

Verdict EvaluatePoint(const ConditionPlan& plan, bool) {
  const int choice = plan.Operator;
  const bool before = IsInNumberChoice(choice, Game.PrevPoint);
  const bool decided = Game.Point == 0 && Game.PrevPoint > 0;
  const bool seven = Game.RollTotal == 7;
  switch (plan.Test) {
    case ConditionTest::PointEstablished:
      return {IsInNumberChoice(choice, Game.Point), Game.PrevPoint == 0};
    case ConditionTest::PointNotEstablished: return {!IsInNumberChoice(choice, Game.Point), before};
    case ConditionTest::PointDecidedFor: return {decided && !seven && before, decided && !seven};
    case ConditionTest::PointDecidedAgainst: return {decided && seven && before, decided && seven};
    default: return {decided && before, decided};
  }
}

// --- Flags ---

Verdict CompareFlag(const Flag& flag, Currency value) {
  return {Currency(flag.FlagValue) == value, flag.FlagValue != flag.FlagPrev};
}

Verdict EvaluateOneFlag(const ConditionPlan& plan, bool) {
  return CompareFlag(Game.Flags[static_cast<unsigned>(plan.Index)], plan.Amount);
}

Verdict EvaluateLastFlag(const ConditionPlan& plan, bool) {
  return Game.Flags.empty() ? Verdict() : CompareFlag(Game.Flags.back(), plan.Amount);
}

Verdict EvaluateAnyFlag(const ConditionPlan& plan, bool) {
  for (const Flag& flag : Game.Flags)
    if (const Verdict verdict = CompareFlag(flag, plan.Amount); verdict.True) return verdict;
  return {};
}

Verdict EvaluateAllFlags(const ConditionPlan& plan, bool) {
  Verdict all;
  for (const Flag& flag : Game.Flags) {
    const Verdict verdict = CompareFlag(flag, plan.Amount);
    if (!verdict.True) return {};
    all = {true, all.New || verdict.New};
  }
  return all;
}

/// The evaluator of a plan whose codes are known.
Evaluator EvaluatorOf(const ConditionPlan& plan) {
  using Plan = const ConditionPlan&;
  switch (plan.Test) {
    case ConditionTest::Never: return [](Plan, bool) { return Verdict(); };
    case ConditionTest::Initializing:
      return [](Plan, bool) { return Verdict{Game.ScriptChanged || Game.HotKeyRunning, true}; };
    case ConditionTest::EachRoll:
      return [](Plan, bool) { return Verdict{Game.RollsSince[0] != Game.RollCount[0], true}; };
    case ConditionTest::NextIsComeOut:
      return [](Plan, bool) {
        return Verdict{Game.Point == 0, Game.RollCount[0] == 0 || Game.PrevPoint > 0};
      };
    case ConditionTest::NextIsNotComeOut:
      return [](Plan, bool) { return Verdict{Game.Point != 0, Game.PrevPoint == 0}; };
    case ConditionTest::LastWasComeOut:
      return [](Plan, bool) {
        return Verdict{Game.RollCount[0] > 0 && Game.PrevPoint == 0, Game.PrevPrevPoint > 0};
      };
    case ConditionTest::LastWasNotComeOut:
      return [](Plan, bool) { return Verdict{Game.PrevPoint != 0, Game.PrevPrevPoint == 0}; };
    case ConditionTest::PointEstablished:
    case ConditionTest::PointNotEstablished:
    case ConditionTest::PointDecidedFor:
    case ConditionTest::PointDecidedAgainst:
    case ConditionTest::PointDecided: return EvaluatePoint;
    case ConditionTest::AnswerIs:
      return [](Plan asked, bool) { return Verdict{Game.MsgAnswer == asked.Index, true}; };
    case ConditionTest::EachPass: return [](Plan, bool) { return Verdict{IsOnPass(), true}; };
    case ConditionTest::EachMiss: return [](Plan, bool) { return Verdict{IsOnMiss(), true}; };
    case ConditionTest::RollsOfGame: return EvaluateRollsOfGame;
    case ConditionTest::RollsOfShooter: return EvaluateRollsOfShooter;
    case ConditionTest::CountAtDecision: return EvaluateCountAtDecision;
    case ConditionTest::CountOfLastShooter: return EvaluateCountOfLastShooter;
    case ConditionTest::Hours: return EvaluateHours;
    case ConditionTest::Available: return EvaluateAvailable;
    case ConditionTest::Event: return EvaluateEvent;
    case ConditionTest::OneFlag: return EvaluateOneFlag;
    case ConditionTest::AnyFlag: return EvaluateAnyFlag;
    case ConditionTest::AllFlags: return EvaluateAllFlags;
    case ConditionTest::LastFlag: return EvaluateLastFlag;
    case ConditionTest::Total: return EvaluateTotal;
    case ConditionTest::Bets: return EvaluatorOfBets(plan);
  }
  return nullptr;
}

}  // namespace

ConditionPlan PlanCondition(int number) {
  const ScriptLine& line = Line(number);
  ConditionPlan plan;
  plan.Amount = line.LineAmount;
  PlanTest(plan, line);
  if (!KnowsOperator(plan.Test, line.LineCode)) plan.Test = ConditionTest::Never;
  plan.Operator = static_cast<std::uint8_t>(line.LineCode);
  if (plan.Test == ConditionTest::Bets && ComparesNames(line.LineCode)) plan.Index = number;
  if (ComparesSubjects(line.LineCode)) plan.To = PlanOperand(line.ToSubject, line.ToStackNum);
  plan.Evaluate = EvaluatorOf(plan);
  return plan;
}
