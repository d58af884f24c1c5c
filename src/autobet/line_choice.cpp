#include "autobet/line_choice.h"

#include <algorithm>
#include <charconv>

#include "autobet/compose.h"
#include "autobet/script.h"
#include "core/ansi.h"
#include "core/help_topics.h"
#include "core/messages.h"
#include "core/text.h"

namespace {

constexpr const char* kConditionTitle = "Log Condition";
constexpr const char* kActionTitle = "Log Action";
constexpr const char* kLabelTitle = "Log Label";
constexpr const char* kNoFlagName = "You need to enter a Flag name.";
constexpr char kRemarkSign = '\'';
constexpr std::size_t kMostLabelLetters = kLineNameWidth;
constexpr std::size_t kMostRemarkLetters = kLineTextWidth - 1;  // less the blank before it
constexpr std::size_t kMostNumberLetters = 24;

// --- Lists ---

bool Offers(std::span<const ListItem> list, int code) { return !TextOf(list, code).empty(); }

/// `code` when the list offers it, else its first row; 0 for an empty list.
int OfferedOrFirst(std::span<const ListItem> list, int code) {
  if (list.empty() || Offers(list, code)) return code;
  return list.front().Code;
}

// --- Typed numbers ---

/// Whether a text is a number: a sign, digits with grouping commas, decimals. An empty one counts
/// as 0.
bool IsNumber(std::string_view text) {
  constexpr std::string_view kDigits = "0123456789";
  const auto eat = [&text](std::string_view letters) {
    const std::size_t end = std::min(text.find_first_not_of(letters), text.size());
    text.remove_prefix(end);
    return end;
  };
  if (text.starts_with('-') || text.starts_with('+')) text.remove_prefix(1);
  std::size_t digits = text.starts_with(',') ? 0 : eat("0123456789,");
  if (text.starts_with('.')) {
    text.remove_prefix(1);
    digits += eat(kDigits);
  }
  return digits > 0 && text.empty();
}

/// The words against a typed amount; empty when it is one.
std::string FaultOfAmount(const std::string& typed) {
  const std::string text = Trimmed(typed);
  if (text.empty()) return {};
  if (!IsNumber(text)) return "Please enter a number. " + Quoted(text) + " is none.";
  const std::string whole = text.substr(0, text.find('.'));
  const bool zero = whole.find_first_of("123456789") == std::string::npos;
  if (text.size() > kMostNumberLetters || (!zero && ParseAmount(text) == Currency()))
    return "The number " + text + " is too large for a line.";
  return {};
}

/// A typed whole number, 0 for none; nothing when it isn't from 0 to `most`.
std::optional<int> WholeNumber(const std::string& typed, int most) {
  const std::string text = Trimmed(typed);
  if (text.empty()) return 0;
  int number = 0;
  const char* end = text.data() + text.size();
  const auto [stop, failure] = std::from_chars(text.data(), end, number);
  if (failure != std::errc() || stop != end || number < 0 || number > most) return {};
  return number;
}

int MostOf(int code) { return code == AverageBankroll ? kMostAverageSpan : kMostStackNum; }

std::string FaultOfStackNum(const std::string& typed, int code) {
  const int most = MostOf(code);
  if (WholeNumber(typed, most)) return {};
  const std::string what = code == AverageBankroll ? "number of rolls" : "Chip-Stack number";
  return "Please enter a " + what + " from 0 to " + std::to_string(most) + ".";
}

// --- Typed names ---

/// A typed name as a line keeps it: without the blanks behind it, and on one line.
std::string KeptName(std::string name) {
  std::replace_if(
      name.begin(), name.end(), [](char letter) { return letter >= '\0' && letter < ' '; }, ' ');
  return RightTrimmed(name);
}

/// The words against a name that no file could hold; empty when it can stand.
std::string FaultOfName(const std::string& name, std::size_t most) {
  const std::string ansi = ToAnsi(name);
  if (ansi.size() > most)
    return "The text has " + std::to_string(ansi.size()) + " letters.\nThere's room for " +
           std::to_string(most) + ".";
  if (FromAnsi(ansi) != name)
    return "The text holds letters that an Auto-Bet file can't keep:\n" + Quoted(FromAnsi(ansi)) +
           " would be left of it.\nPlease use Western letters.";
  return {};
}

/// Tells what is wrong, if anything is. True when nothing is.
bool IsSound(const std::string& fault, const char* title) {
  if (fault.empty()) return true;
  ShowMessage(fault, title, kTopicScriptEditor, OkStop);
  return false;
}

bool IsSoundName(bool needed, const std::string& typed, const char* title) {
  return !needed || IsSound(FaultOfName(KeptName(typed), kLineNameWidth), title);
}

bool IsSoundFlag(bool needed, const std::string& typed, const char* title) {
  if (!needed) return true;
  return IsSound(Trimmed(KeptName(typed)).empty() ? kNoFlagName : "", title) &&
         IsSoundName(true, typed, title);
}

bool IsSoundAmount(bool needed, const std::string& typed, const char* title) {
  return !needed || IsSound(FaultOfAmount(typed), title);
}

bool IsSoundStackNum(bool needed, const std::string& typed, int code, const char* title) {
  return !needed || IsSound(FaultOfStackNum(typed, code), title);
}

// --- Fields and boxes ---

Currency AmountOf(const std::string& typed) {
  return FaultOfAmount(typed).empty() ? ParseAmount(typed) : Currency();
}

int StackNumOf(bool needed, const std::string& typed, int code) {
  return needed ? WholeNumber(typed, MostOf(code)).value_or(0) : 0;
}

std::string NumberText(bool shown, int number) { return shown ? std::to_string(number) : ""; }

const ActionForm& FormOf(int action) {
  const ActionForm* form = FindAction(action);
  return form != nullptr ? *form : kActionForms.front();
}

ScriptLine Completed(ScriptLine line) {
  LogLine(line);
  return line;
}

bool LabelIsInUse(const std::string& name, int replaced) {
  const std::string wanted = TrimmedLower(name);
  for (int number = 1; number <= Game.ScrCount; ++number) {
    if (number != replaced && Line(number).LineKind == LabelLine &&
        TrimmedLower(Line(number).LineName) == wanted)
      return true;
  }
  return false;
}

}  // namespace

std::string_view TruthCaption(std::string_view verb, bool truth) {
  if (verb == kToWord) return truth ? "to True" : "to False";
  if (verb == "are") return truth ? "are True" : "are False";
  return truth ? "is True" : "is False";
}

// --- Conditions ---

ConditionBoxes BoxesOf(const ConditionChoice& choice) {
  const ConditionForm form = FormOfCondition(choice.Subject);
  ConditionBoxes boxes;
  boxes.Caption = form.Caption;
  boxes.StackNum = form.StackNum;
  boxes.DescribeRolls = form.AfterStack;
  boxes.What = !OperatorList(choice.Subject).empty();
  boxes.Flag = form.FlagName;
  if (form.Truth) boxes.Truth = TruthCaption(form.TruthVerb, choice.Truth);
  if (!form.Amount) return boxes;
  boxes.Name = OperatorComparesNames(choice.Operator);
  boxes.Compare = OperatorComparesSubjects(choice.Operator);
  boxes.CompareStackNum = boxes.Compare && ShowsStackNum(choice.Compare);
  boxes.Amount = !boxes.Name && !boxes.Compare;
  if (boxes.Amount) boxes.TimesWords = TimesWords(choice.Operator);
  return boxes;
}

void ChooseSubject(ConditionChoice& choice, int subject) {
  if (!Offers(ConditionList(), subject)) return;
  choice.Subject = subject;
  choice.Operator = OfferedOrFirst(OperatorList(subject), choice.Operator);
}

void ChooseOperator(ConditionChoice& choice, int op) {
  if (Offers(OperatorList(choice.Subject), op)) choice.Operator = op;
}

void ChooseCompare(ConditionChoice& choice, int subject) {
  if (Offers(CompareList(), subject)) choice.Compare = subject;
}

ScriptLine LineOf(const ConditionChoice& choice) {
  const ConditionBoxes boxes = BoxesOf(choice);
  ScriptLine line;
  line.LineKind = ConditionLine;
  line.OfSubject = choice.Subject;
  line.OfStackNum = StackNumOf(boxes.StackNum, choice.StackNum, choice.Subject);
  if (boxes.What) line.LineCode = choice.Operator;
  if (boxes.Flag) line.LineName = KeptName(choice.Flag);
  if (boxes.Name) line.LineName = KeptName(choice.Name);
  if (!boxes.Truth.empty()) line.LineAmount = choice.Truth ? kTrue : kFalse;
  if (boxes.Amount) line.LineAmount = AmountOf(choice.Amount);
  if (boxes.Compare) line.ToSubject = choice.Compare;
  line.ToStackNum = StackNumOf(boxes.CompareStackNum, choice.CompareStackNum, choice.Compare);
  return Completed(line);
}

std::optional<ScriptLine> LogCondition(const ConditionChoice& choice) {
  const ConditionBoxes boxes = BoxesOf(choice);
  const bool sound =
      IsSoundFlag(boxes.Flag, choice.Flag, kConditionTitle) &&
      IsSoundName(boxes.Name, choice.Name, kConditionTitle) &&
      IsSoundStackNum(boxes.StackNum, choice.StackNum, choice.Subject, kConditionTitle) &&
      IsSoundAmount(boxes.Amount, choice.Amount, kConditionTitle) &&
      IsSoundStackNum(boxes.CompareStackNum, choice.CompareStackNum, choice.Compare,
                      kConditionTitle);
  if (!sound) return {};
  return LineOf(choice);
}

ConditionChoice ConditionChoiceOf(const ScriptLine& line) {
  ConditionChoice choice;
  ChooseSubject(choice, line.OfSubject);
  ChooseOperator(choice, line.LineCode);
  ChooseCompare(choice, line.ToSubject);
  const ConditionBoxes boxes = BoxesOf(choice);
  choice.Truth = boxes.Truth.empty() || line.LineAmount != Currency(kFalse);
  choice.StackNum = NumberText(boxes.StackNum, line.OfStackNum);
  if (boxes.Flag) choice.Flag = line.LineName;
  if (boxes.Name) choice.Name = line.LineName;
  const bool hidesAmount = line.LineAmount == Currency() && OperatorHidesZero(choice.Operator);
  if (boxes.Amount && !hidesAmount) choice.Amount = PlainText(line.LineAmount);
  choice.CompareStackNum = NumberText(boxes.CompareStackNum, line.ToStackNum);
  return choice;
}

// --- Actions ---

std::span<const ListItem> OfList(int action) {
  if (action == RoundBet) return kRoundingWays;
  if (FormOf(action).Source) return SourceList();
  return {};
}

std::span<const ListItem> ToList(int action) { return TargetList(FormOf(action).To); }

ActionBoxes BoxesOf(const ActionChoice& choice) {
  const ActionForm& form = FormOf(choice.Action);
  ActionBoxes boxes;
  boxes.Caption = form.Lead;
  boxes.Label = form.Name == NameUse::Label;
  boxes.Flag = form.Name == NameUse::Flag;
  if (form.Truth) boxes.Truth = TruthCaption(kToWord, choice.Truth);
  boxes.Amount = form.Amount;
  boxes.Operator = form.Operator;
  boxes.Of = form.Source;
  boxes.OfStackNum =
      form.StackNum || (form.Source && form.Code != RoundBet && ShowsStackNum(choice.Of));
  boxes.On = form.On;
  boxes.Use = form.Name;
  boxes.Name = form.Name != NameUse::None && !boxes.Label && !boxes.Flag;
  boxes.To = form.To != TargetUse::None;
  boxes.ToStackNum = form.To == TargetUse::Bets && ShowsStackNum(choice.To);
  return boxes;
}

void ChooseAction(ActionChoice& choice, int action) {
  if (FindAction(action) == nullptr) return;
  choice.Action = action;
  choice.Of = OfferedOrFirst(OfList(action), choice.Of);
  choice.To = OfferedOrFirst(ToList(action), choice.To);
  const bool wantsLabel = FormOf(action).Name == NameUse::Label && choice.Label.empty();
  if (wantsLabel && !Game.ScriptLabels.empty()) choice.Label = Game.ScriptLabels.front();
}

void ChooseOf(ActionChoice& choice, int source) {
  if (Offers(OfList(choice.Action), source)) choice.Of = source;
}

void ChooseTo(ActionChoice& choice, int target) {
  if (Offers(ToList(choice.Action), target)) choice.To = target;
}

ScriptLine LineOf(const ActionChoice& choice) {
  const ActionBoxes boxes = BoxesOf(choice);
  ScriptLine line;
  line.LineKind = ActionLine;
  line.LineCode = choice.Action;
  if (boxes.Label) line.LineName = choice.Label;
  if (boxes.Flag) line.LineName = KeptName(choice.Flag);
  if (boxes.Name) line.LineName = KeptName(choice.Name);
  if (!boxes.Truth.empty()) line.LineAmount = choice.Truth ? kTrue : kFalse;
  if (boxes.Amount) line.LineAmount = AmountOf(choice.Amount);
  if (boxes.Of) line.OfSubject = choice.Of;
  line.OfStackNum = StackNumOf(boxes.OfStackNum, choice.OfStackNum, boxes.Of ? choice.Of : 0);
  if (boxes.To) line.ToSubject = choice.To;
  line.ToStackNum = StackNumOf(boxes.ToStackNum, choice.ToStackNum, choice.To);
  return Completed(line);
}

std::optional<ScriptLine> LogAction(const ActionChoice& choice) {
  const ActionBoxes boxes = BoxesOf(choice);
  const bool labelMissing = boxes.Label && Trimmed(choice.Label).empty();
  const bool sound =
      IsSound(labelMissing ? "You need to enter a label to go to." : "", kActionTitle) &&
      IsSoundFlag(boxes.Flag, choice.Flag, kActionTitle) &&
      IsSoundName(boxes.Name, choice.Name, kActionTitle) &&
      IsSoundAmount(boxes.Amount, choice.Amount, kActionTitle) &&
      IsSoundStackNum(boxes.OfStackNum, choice.OfStackNum, boxes.Of ? choice.Of : 0,
                      kActionTitle) &&
      IsSoundStackNum(boxes.ToStackNum, choice.ToStackNum, choice.To, kActionTitle);
  if (!sound) return {};
  return LineOf(choice);
}

ActionChoice ActionChoiceOf(const ScriptLine& line) {
  ActionChoice choice;
  ChooseAction(choice, line.LineCode);
  ChooseOf(choice, line.OfSubject);
  ChooseTo(choice, line.ToSubject);
  const ActionBoxes boxes = BoxesOf(choice);
  choice.Truth = boxes.Truth.empty() || line.LineAmount != Currency(kFalse);
  if (boxes.Label) choice.Label = line.LineName;
  if (boxes.Flag) choice.Flag = line.LineName;
  if (boxes.Name) choice.Name = line.LineName;
  if (boxes.Amount) choice.Amount = PlainText(line.LineAmount);
  choice.OfStackNum = NumberText(boxes.OfStackNum, line.OfStackNum);
  choice.ToStackNum = NumberText(boxes.ToStackNum, line.ToStackNum);
  return choice;
}

// --- Other lines ---

ScriptLine LineOfStart(int kind) {
  ScriptLine line;
  line.LineKind = kind;
  return Completed(line);
}

ScriptLine LineOfLabel(const std::string& text) {
  ScriptLine line;
  line.LineName = KeptName(text);
  line.LineKind = line.LineName.starts_with(kRemarkSign) ? RemarkLine : LabelLine;
  return Completed(line);
}

std::optional<ScriptLine> LogLabel(const std::string& text, int replaced) {
  const ScriptLine line = LineOfLabel(text);
  const bool remark = line.LineKind == RemarkLine;
  if (!remark) {
    const bool blank = Trimmed(line.LineName).empty();
    if (!IsSound(blank ? "You must enter a label name." : "", kLabelTitle)) return {};
    const bool inUse = LabelIsInUse(line.LineName, replaced);
    if (!IsSound(inUse ? "That label name is already in use." : "", kLabelTitle)) return {};
  }
  const std::size_t most = remark ? kMostRemarkLetters : kMostLabelLetters;
  if (!IsSound(FaultOfName(line.LineName, most), kLabelTitle)) return {};
  return line;
}

std::string LabelTextOf(const ScriptLine& line) {
  // A file keeps 80 letters of a remark's name, but all of its text.
  return line.LineKind == RemarkLine ? Trimmed(line.LineText) : line.LineName;
}
