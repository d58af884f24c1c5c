#include "autobet/compose.h"

#include "autobet/language.h"
#include "core/text.h"

namespace {

constexpr unsigned kLineIndent = 10;   // of conditions and actions
constexpr unsigned kStartIndent = 1;   // of every other line
constexpr unsigned kBranchIndent = 4;  // more, before what goes on from a line above
constexpr unsigned kJoinIndent = 5;    // more again, before "and when" and "and while"

std::string_view WithoutBlanks(std::string_view text) {
  const std::size_t first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

/// Whether a byte of UTF-8 belongs to the character before it.
bool ContinuesCharacter(char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U; }

/// A line under construction: an indent, and parts with one blank between them.
class Sentence {
 public:
  explicit Sentence(unsigned indent) : text_(indent, ' '), indent_(indent) {}

  void Add(std::string_view part) {
    part = WithoutBlanks(part);
    if (part.empty()) return;
    if (text_.size() > indent_) text_ += ' ';
    text_ += part;
  }

  void AddNumber(int number) { Add(std::to_string(number)); }

  void AddStackNum(int code, int number) {
    if (ShowsStackNum(code)) AddNumber(number);
  }

  void AddTruth(std::string_view verb, Currency truth) {
    Add(verb);
    Add(truth == Currency(kFalse) ? kFalseWord : kTrueWord);
  }

  /// The text, cut to the characters that the field of a file holds.
  std::string Finished() const {
    std::size_t characters = 0;
    for (std::size_t at = 0; at < text_.size(); ++at) {
      if (!ContinuesCharacter(text_[at])) ++characters;
      if (characters > kLineTextWidth) return text_.substr(0, at);
    }
    return text_;
  }

 private:
  std::string text_;
  std::size_t indent_;
};

/// A text of an action in quotes; a ";" at its end, which joins the next text to it, stands behind
/// them.
std::string QuotedText(const std::string& text) {
  if (text.empty() || text.back() != ';') return Quoted(text);
  return Quoted(text.substr(0, text.size() - 1)) + ";";
}

std::string ComposeStart(int kind) {
  const bool joins = kind == AndWhenLine || kind == AndWhileLine;
  const bool branches = (IsStartCondition(kind) && kind > WhileLine) || kind == ElseLine;
  Sentence sentence(kStartIndent + (branches ? kBranchIndent : 0) + (joins ? kJoinIndent : 0));
  sentence.Add(TextOf(IsStartCondition(kind) ? kStartConditionList : kStartActionList, kind));
  return sentence.Finished();
}

/// What an operator with an amount, a name or a second subject compares with.
void AddOperands(Sentence& sentence, const ScriptLine& line) {
  const int op = line.LineCode;
  if (OperatorComparesNames(op)) {
    sentence.Add(Quoted(line.LineName));
  } else if (OperatorComparesSubjects(op)) {
    sentence.Add(TextOf(CompareList(), line.ToSubject));
    sentence.AddStackNum(line.ToSubject, line.ToStackNum);
  } else if (line.LineAmount != Currency() || !OperatorHidesZero(op)) {
    sentence.Add(PlainText(line.LineAmount));
    sentence.Add(TimesWords(op));
  }
}

std::string ComposeCondition(const ScriptLine& line) {
  const ConditionForm form = FormOfCondition(line.OfSubject);
  Sentence sentence(kLineIndent);
  sentence.Add(form.Caption);
  if (form.StackNum) sentence.AddNumber(line.OfStackNum);
  sentence.Add(form.AfterStack);
  const std::string_view words = TextOf(OperatorList(line.OfSubject), line.LineCode);
  sentence.Add(words);
  if (form.FlagName) sentence.Add(Quoted(line.LineName));
  if (form.Truth) sentence.AddTruth(form.TruthVerb, line.LineAmount);
  if (form.Amount && !words.empty()) AddOperands(sentence, line);
  return sentence.Finished();
}

std::string ComposeRound(const ScriptLine& line, const ActionForm& form) {
  Sentence sentence(kLineIndent);
  sentence.Add(form.Lead);
  sentence.Add(TextOf(TargetList(form.To), line.ToSubject));
  sentence.AddStackNum(line.ToSubject, line.ToStackNum);
  const std::string_view way = TextOf(kRoundingWays, line.OfSubject);
  sentence.Add(way.empty() ? TextOf(kRoundingWays, RoundUp) : way);  // as it is rounded
  sentence.Add(PlainText(line.LineAmount));
  return sentence.Finished();
}

std::string ComposeAction(const ScriptLine& line) {
  const ActionForm* form = FindAction(line.LineCode);
  if (form == nullptr) return std::string(kLineIndent, ' ');
  if (form->Code == RoundBet) return ComposeRound(line, *form);
  Sentence sentence(kLineIndent);
  sentence.Add(form->Lead);
  const bool quoted = form->Name == NameUse::Label || form->Name == NameUse::Flag;
  if (quoted) sentence.Add(Quoted(line.LineName));
  if (form->Truth) sentence.AddTruth(kToWord, line.LineAmount);
  if (form->Amount) sentence.Add(PlainText(line.LineAmount));
  sentence.Add(form->Operator);
  if (form->Source) {
    sentence.Add(TextOf(SourceList(), line.OfSubject));
    sentence.AddStackNum(line.OfSubject, line.OfStackNum);
  }
  if (form->StackNum) sentence.AddNumber(line.OfStackNum);
  sentence.Add(form->On);
  if (form->Name != NameUse::None && !quoted) sentence.Add(QuotedText(line.LineName));
  sentence.Add(TextOf(TargetList(form->To), line.ToSubject));
  if (form->To == TargetUse::Bets) sentence.AddStackNum(line.ToSubject, line.ToStackNum);
  return sentence.Finished();
}

std::string ComposeLabel(const ScriptLine& line) {
  Sentence sentence(kStartIndent);
  sentence.Add(kLabelWord);
  sentence.Add(Quoted(line.LineName));
  return sentence.Finished();
}

std::string ComposeRemark(const ScriptLine& line) {
  Sentence sentence(kStartIndent);
  sentence.Add(line.LineName);
  return sentence.Finished();
}

}  // namespace

std::string ComposeLine(const ScriptLine& line) {
  if (IsStartCondition(line.LineKind) || IsStartAction(line.LineKind)) {
    return ComposeStart(line.LineKind);
  }
  switch (line.LineKind) {
    case ConditionLine: return ComposeCondition(line);
    case ActionLine: return ComposeAction(line);
    case LabelLine: return ComposeLabel(line);
    case RemarkLine: return ComposeRemark(line);
    default: return {};
  }
}

void LogLine(ScriptLine& line) {
  if (line.LineKind == ActionLine && IsRunAction(line.LineCode)) {
    Sentence source(0);
    source.Add(TextOf(SourceList(), line.OfSubject));
    source.AddStackNum(line.OfSubject, line.OfStackNum);
    line.LineName = source.Finished();
  }
  line.LineText = ComposeLine(line);
}
