// A line under construction: what the editor's boxes hold, which of them a line needs, the lists
// they offer, and the line that comes of it.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "autobet/language.h"
#include "core/script_state.h"

// --- Conditions ---

/// What the boxes of a condition hold. Texts are as typed.
struct ConditionChoice {
  int Subject = InitializingSubject;
  int Operator = 0;
  int Compare = BankrollSubject;
  bool Truth = true;
  std::string StackNum;
  std::string Flag;
  std::string Name;
  std::string Amount;
  std::string CompareStackNum;
};

/// The boxes and words that a condition needs, in their order on the line.
struct ConditionBoxes {
  std::string_view Caption;  // of the subject, as it reads
  bool StackNum = false;
  std::string_view DescribeRolls;
  bool What = false;  // the operator
  bool Flag = false;
  bool Name = false;
  std::string_view Truth;  // "is True"; empty when none is chosen
  bool Amount = false;
  bool Compare = false;
  bool CompareStackNum = false;
  std::string_view TimesWords;
};
ConditionBoxes BoxesOf(const ConditionChoice& choice);

/// Chooses from the lists. The rest of the choice stays as far as it still fits; a code that the
/// list doesn't offer changes nothing.
void ChooseSubject(ConditionChoice& choice, int subject);
void ChooseOperator(ConditionChoice& choice, int op);
void ChooseCompare(ConditionChoice& choice, int subject);

// --- Actions ---

struct ActionChoice {
  int Action = BetAmount;
  int Of = DiceTotalSource;
  int To = AllBets;
  bool Truth = true;
  std::string Label;  // empty: none is chosen
  std::string Flag;
  std::string Amount;
  std::string OfStackNum;
  std::string Name;
  std::string ToStackNum;
};

struct ActionBoxes {
  std::string_view Caption;
  bool Label = false;
  bool Flag = false;
  std::string_view Truth;  // "to True"
  bool Amount = false;
  std::string_view Operator;
  bool Of = false;
  bool OfStackNum = false;
  std::string_view On;
  bool Name = false;
  bool To = false;
  bool ToStackNum = false;
  NameUse Use = NameUse::None;  // what the name box holds
};
ActionBoxes BoxesOf(const ActionChoice& choice);

/// As the choices of a condition. A jump without a label takes the first in use.
void ChooseAction(ActionChoice& choice, int action);
void ChooseOf(ActionChoice& choice, int source);
void ChooseTo(ActionChoice& choice, int target);

/// What the list of "of" offers for an action: sources, the ways of "Round", or nothing.
std::span<const ListItem> OfList(int action);

/// What the list of "to" offers for an action.
std::span<const ListItem> ToList(int action);

// --- Lines ---

/// The line of a choice as it stands, complete with the text that it will have. What is typed wrong
/// counts as nothing.
ScriptLine LineOf(const ConditionChoice& choice);
ScriptLine LineOf(const ActionChoice& choice);
ScriptLine LineOfStart(int kind);

/// A label, or a remark when the text begins with an apostrophe.
ScriptLine LineOfLabel(const std::string& text);

/// The lines to be logged: nothing once the player has been told what is missing or wrong, under
/// "Log Condition", "Log Action" and "Log Label". A name that can't stand in a file is refused
/// rather than bent. A label that is logged again, for line `replaced`, may keep its name.
std::optional<ScriptLine> LogCondition(const ConditionChoice& choice);
std::optional<ScriptLine> LogAction(const ActionChoice& choice);
std::optional<ScriptLine> LogLabel(const std::string& text, int replaced = 0);

/// The choice that a logged line came of, for logging it again; codes that no list offers become
/// the first of their list.
ConditionChoice ConditionChoiceOf(const ScriptLine& line);
ActionChoice ActionChoiceOf(const ScriptLine& line);

/// What the label box shows for a label or a remark. A remark keeps its text, however long.
std::string LabelTextOf(const ScriptLine& line);

/// The captions of a flag's and an action's truth.
std::string_view TruthCaption(std::string_view verb, bool truth);

/// The largest numbers that a line takes.
inline constexpr int kMostStackNum = 100;
inline constexpr int kMostAverageSpan = 32'767;
