#include "autobet/checker.h"

#include <array>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

#include "autobet/language.h"
#include "autobet/script.h"
#include "core/help_topics.h"
#include "core/host.h"
#include "core/messages.h"

namespace {

constexpr const char* kCommandTitle = "Auto-Bet";
constexpr std::string_view kClosingText =
    "\n\nThis is not allowed and must be resolved before you can run this auto-betting script.";

/// Faults in the order of `kFaultTexts`.
enum Fault : unsigned {
  DuplicateLabel,
  MissingLabel,
  LabelPosition,
  ConditionNotAssociated,
  ActionNotAssociated,
  StartConditionNotPreceded,
  ActionBlockNotPreceded,
  ElseNotPreceded,
  StartActionNotFollowed,
  StartConditionNotFollowed,
  ActionBlockMissing,
  kFaults,
  NoFault = kFaults,
};

struct FaultText {
  std::string_view Title;
  std::string_view Text;
};
constexpr std::array<FaultText, kFaults> kFaultTexts = {{
    {"Duplicate Label",
     "The Label shown at the top of the screen appears more than once in your list."},
    {"Missing Label",
     "The \"Go to\" statement shown at the top of the screen references a Label that does not "
     "appear in your list."},
    {"Label Position", "The Label shown at the top of the screen appears between Condition Lines."},
    {"Missing Start Condition",
     "The Condition line shown at the top of the screen is not associated with a Start "
     "Condition."},
    {"Missing Start Action",
     "The Action line shown at the top of the screen is not associated with a Start Action."},
    {"Missing Condition Lines",
     "The Start Condition line shown at the top of the screen is not preceded by a Condition "
     "line."},
    {"Missing Action Lines",
     "The Action block shown at the top of the screen is not immediately preceded by a Condition "
     "block."},
    {"Missing Action Lines",
     "The \"else\" Start Action line shown at the top of the screen must be immediately preceded "
     "by a \"then\" block of action lines."},
    {"Missing Action Lines",
     "The Start Action line shown at the top of the screen is not followed by an Action line."},
    {"Missing Condition Lines",
     "The Start Condition line shown at the top of the screen is not followed by a Condition "
     "line."},
    {"Missing Action Lines",
     "The Condition block shown at the top of the screen has no Action block to go with it."},
}};

/// A fault with the line to be shown for it.
struct Finding {
  Fault What = NoFault;
  int LineNumber = 0;
};

// --- Labels ---

bool IsJump(const ScriptLine& line) {
  return line.LineKind == ActionLine && (line.LineCode == GoTo || line.LineCode == Gosub);
}

bool JoinsConditions(int kind) { return kind >= AndWhenLine && kind <= XorWhileLine; }

/// Required: labels are the same here only letter by letter, though a jump doesn't mind case.
Finding FindDuplicateLabel() {
  std::unordered_map<std::string, int> uses;
  for (int number = 1; number <= Game.ScrCount; ++number) {
    if (Line(number).LineKind == LabelLine) ++uses[Line(number).LineName];
  }
  for (int number = 1; number <= Game.ScrCount; ++number) {
    if (Line(number).LineKind == LabelLine && uses[Line(number).LineName] > 1)
      return {DuplicateLabel, number};
  }
  return {};
}

Finding FindMissingLabel() {
  std::unordered_set<std::string> labels;
  for (int number = 1; number <= Game.ScrCount; ++number) {
    if (Line(number).LineKind == LabelLine) labels.insert(TrimmedLower(Line(number).LineName));
  }
  for (int number = 1; number <= Game.ScrCount; ++number) {
    if (IsJump(Line(number)) && !labels.contains(TrimmedLower(Line(number).LineName)))
      return {MissingLabel, number};
  }
  return {};
}

Finding FindMisplacedLabel() {
  for (int number = 1; number < Game.ScrCount; ++number) {
    const int next = Line(number + 1).LineKind;
    if (Line(number).LineKind == LabelLine && (next == ConditionLine || JoinsConditions(next)))
      return {LabelPosition, number};
  }
  return {};
}

// --- Structure ---

enum class State {
  Nothing,
  ConditionStarted,
  ConditionBuilt,
  ThenStarted,
  ThenBuilt,
  ElseStarted,
  ElseBuilt,
  DoThisStarted,
  DoThisBuilt,
};

constexpr bool IsActionStarted(State state) {
  return state == State::ThenStarted || state == State::ElseStarted ||
         state == State::DoThisStarted;
}
constexpr bool IsActionBuilt(State state) {
  return state == State::ThenBuilt || state == State::ElseBuilt || state == State::DoThisBuilt;
}

/// What a line makes of a state: the next one or a fault.
struct Step {
  State Next = State::Nothing;
  Fault What = NoFault;
};

/// A step to `next` when it is `allowed`, otherwise the fault.
Step StepIf(bool allowed, State next, Fault fault) {
  return allowed ? Step{next, NoFault} : Step{State::Nothing, fault};
}

State BuiltFrom(State state) {
  switch (state) {
    case State::ThenStarted: return State::ThenBuilt;
    case State::ElseStarted: return State::ElseBuilt;
    case State::DoThisStarted: return State::DoThisBuilt;
    default: return state;
  }
}

/// The fault of a state that what follows doesn't carry on: the next line, or the script's end.
Fault Unfinished(State state) {
  if (state == State::ConditionStarted) return StartConditionNotFollowed;
  return IsActionStarted(state) ? StartActionNotFollowed : NoFault;
}

Step StepByKind(State state, int kind) {
  const bool conditionBuilt = state == State::ConditionBuilt;
  switch (kind) {
    case WhenLine:
    case WhileLine: return StepIf(!conditionBuilt, State::ConditionStarted, ActionBlockMissing);
    case AndWhenLine:
    case AndWhileLine:
    case OrWhenLine:
    case OrWhileLine:
    case XorWhenLine:
    case XorWhileLine:
      return StepIf(conditionBuilt, State::ConditionStarted, StartConditionNotPreceded);
    case ThenLine: return StepIf(conditionBuilt, State::ThenStarted, ActionBlockNotPreceded);
    case ElseLine: return StepIf(state == State::ThenBuilt, State::ElseStarted, ElseNotPreceded);
    case DoThisLine:
      return StepIf(IsActionBuilt(state) || state == State::Nothing, State::DoThisStarted,
                    ActionBlockMissing);
    case ConditionLine:
      return StepIf(conditionBuilt || state == State::ConditionStarted, State::ConditionBuilt,
                    ConditionNotAssociated);
    case ActionLine:
      return StepIf(IsActionStarted(state) || IsActionBuilt(state), BuiltFrom(state),
                    ActionNotAssociated);
    default: return {state, NoFault};
  }
}

Step StepOver(State state, int kind) {
  const int needed = state == State::ConditionStarted ? ConditionLine : ActionLine;
  if (kind != needed && Unfinished(state) != NoFault) return {State::Nothing, Unfinished(state)};
  return StepByKind(state, kind);
}

/// These faults concern what follows a Start line, which is the one to be shown.
bool ConcernsStartLine(Fault fault) {
  return fault == StartActionNotFollowed || fault == StartConditionNotFollowed ||
         fault == ActionBlockMissing;
}

Finding FindStructureFault() {
  State state = State::Nothing;
  int lastStart = 0;
  for (int number = 1; number <= Game.ScrCount; ++number) {
    const int kind = Line(number).LineKind;
    if (kind == LabelLine || kind == RemarkLine) continue;
    const Step step = StepOver(state, kind);
    if (step.What != NoFault) return {step.What, ConcernsStartLine(step.What) ? lastStart : number};
    state = step.Next;
    if (IsStartCondition(kind) || IsStartAction(kind)) lastStart = number;
  }
  if (state == State::ConditionBuilt) return {ActionBlockMissing, lastStart};
  return {Unfinished(state), lastStart};
}

Finding FindFault() {
  for (const auto pass : {FindDuplicateLabel, FindMissingLabel, FindMisplacedLabel}) {
    const Finding found = pass();
    if (found.What != NoFault) return found;
  }
  return FindStructureFault();
}

}  // namespace

ScriptFault FindScriptFault() {
  const Finding found = FindFault();
  if (found.What == NoFault) return {};
  const FaultText& fault = kFaultTexts[found.What];
  return {found.LineNumber, std::string(fault.Title),
          std::string(fault.Text) + std::string(kClosingText)};
}

void CheckScript() {
  Game.MsgText.clear();
  const ScriptFault fault = FindScriptFault();
  if (fault.LineNumber == 0) return;
  TheHost.ShowScriptLine(fault.LineNumber);
  ShowMessage(fault.Text, fault.Title, kTopicScripts, OkStop);
}

void CheckScriptCommand() {
  if (Game.ScrCount == 0) {
    ShowMessage(
        "This feature checks to see that your Auto-Bet script is properly structured, but "
        "presently "
        "your script is empty.",
        kCommandTitle, kTopicScripts, OkStop);
    return;
  }
  CheckScript();
  if (Game.MsgText.empty())
    ShowMessage("Your script is properly structured.", kCommandTitle, kTopicScripts, OkTick);
}
