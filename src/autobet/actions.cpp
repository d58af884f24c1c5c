#include "autobet/actions.h"

#include <optional>

#include "autobet/bet_actions.h"
#include "autobet/bet_ids.h"
#include "autobet/language.h"
#include "autobet/message_actions.h"
#include "autobet/script.h"
#include "autobet/setting_actions.h"

namespace {

constexpr int kFormerAllNumbers = SubjectOf(PointNumbers);

bool ActsOnBets(int action) {
  switch (action) {
    case RoundBet:
    case GetInput:
    case BuyThePlaceBet:
    case CallOff:
    case CallOn:
    case ResetWinsLosses: return true;
    default: return ChangesByValue(action);
  }
}

// --- Plans ---

void CoverIds(ActionPlan& plan, int first, int last) {
  plan.Target = ActionPlan::Covers::Ids;
  plan.First = first;
  plan.Last = last;
}

void PlanBets(const ScriptLine& line, ActionPlan& plan) {
  plan.Target = ActionPlan::Covers::Nothing;
  const int target = line.ToSubject;
  const int stack = line.ToStackNum;
  BetFamily family{};
  if (target == ChipStackSubject || target == ChipStackRef) {
    if (!IsStackNumber(stack)) return;
    CoverIds(plan, ChipStackBase + stack, ChipStackBase + stack);
    if (target == ChipStackRef) plan.Target = ActionPlan::Covers::StackRef;
  } else if (FindPointFamily(target, family)) {
    plan.Target = ActionPlan::Covers::PointBet;
    plan.Family = family;
  } else if (const IdRange ids = IdsOfTarget(target); ids.First > 0 && ids.First <= ids.Last) {
    CoverIds(plan, ids.First, ids.Last);
  }
}

/// Lines of old files have another code for all the numbers, which their words tell.
bool CoversAllNumbers(const ScriptLine& line) {
  return line.ToSubject == AllNumbers ||
         (line.ToSubject == kFormerAllNumbers &&
          line.LineText.find("all the numbers") != std::string::npos);
}

void PlanEvents(const ScriptLine& line, ActionPlan& plan) {
  const bool all = CoversAllNumbers(line);
  const bool one = line.ToSubject >= SubjectOf(Total2) && line.ToSubject <= SubjectOf(SecondDie6);
  plan.Target = all || one ? ActionPlan::Covers::NumberEvents : ActionPlan::Covers::Nothing;
  if (all) {
    plan.First = Total2;
    plan.Last = SecondDie6;
  } else if (one) {
    plan.First = plan.Last = line.ToSubject - EventSubject;
  }
}

bool BeginsRun(int number) {
  if (number <= 1) return true;
  const ScriptLine& line = Line(number);
  const ScriptLine& before = Line(number - 1);
  return ActionOf(number - 1) != line.LineCode || before.ToSubject != line.ToSubject ||
         before.ToStackNum != line.ToStackNum;
}

// --- Performance ---

/// Targets of Place bets leave out what the rules would take down again.
bool WouldComeDown(int placeId) {
  const int number = NumberOfBet(placeId);
  return number == Game.Point ||
         Game.Bets[static_cast<unsigned>(BetOnNumber(ComeFamily, number))] > 0;
}

bool IsLeftOut(int target, int id) {
  if (target < AllPlaceBets || target > OutsidePlaceBets) return false;
  if (target == OutsidePlaceBets && IsPlaceSixOrEight(id)) return true;
  return Game.AutoRemovePlace && Game.Bets[PassLine] > 0 && WouldComeDown(id);
}

template <typename Act>
void ForEachTarget(const ScriptLine& line, const ActionPlan& plan, Act act) {
  switch (plan.Target) {
    case ActionPlan::Covers::Ids:
      for (int id = plan.First; id <= plan.Last; ++id)
        if (!IsLeftOut(line.ToSubject, id)) act(id);
      return;
    case ActionPlan::Covers::StackRef:
      if (const int id = StackReferredTo(plan.First - ChipStackBase); id != 0) act(id);
      return;
    case ActionPlan::Covers::PointBet:
      if (const int id = BetOnPoint(static_cast<BetFamily>(plan.Family)); id != 0) act(id);
      return;
    case ActionPlan::Covers::NumberEvents:
      for (int event = plan.First; event <= plan.Last; ++event) act(event);
      return;
    default: return;
  }
}

/// The player is asked once, when there is a bet to put the answer on.
void BetInput(int number, const ActionPlan& plan, ActionRun& run) {
  bool asked = false;
  std::optional<Currency> answer;
  ForEachTarget(Line(number), plan, [&](int id) {
    if (!asked) answer = AskForAmount(number);
    asked = true;
    if (!answer) return;
    run.RunValue = *answer;
    SetBet(id, *answer);
  });
}

void PerformOnBets(const ScriptLine& line, const ActionPlan& plan, ActionRun& run) {
  const int action = line.LineCode;
  ForEachTarget(line, plan, [&](int id) {
    if (ChangesByValue(action))
      ChangeByValue(id, line, run);
    else if (action == RoundBet)
      RoundToWhole(id, line.LineAmount, line.OfSubject);
    else
      TreatBet(id, action);
  });
}

}  // namespace

ActionPlan PlanAction(int number) {
  ActionPlan plan;
  const int action = ActionOf(number);
  if (action == 0) return plan;
  const ScriptLine& line = Line(number);
  plan.RestartsRun = BeginsRun(number);
  if (ActsOnBets(action)) PlanBets(line, plan);
  if (action == ResetRolls) PlanEvents(line, plan);
  if (action == SetFlag) plan.FlagIndex = FindFlag(Trimmed(line.LineName));
  return plan;
}

void PerformAction(int number, const ActionPlan& plan, ActionRun& run) {
  const int action = ActionOf(number);
  if (action == 0) return;
  const ScriptLine& line = Line(number);
  if (plan.RestartsRun) {
    run.RunValue = 0;
    run.RunCount = 0;
    run.HasBase.reset();
  }
  if (action == GetInput)
    BetInput(number, plan, run);
  else if (ActsOnBets(action))
    PerformOnBets(line, plan, run);
  else if (IsMessageAction(action) || IsQuestionAction(action))
    PerformMessage(number);
  else if (action == ResetRolls)
    ForEachTarget(line, plan, ResetRollsOf);
  else
    PerformSetting(line, plan);
}
