#include "autobet/read_line.h"

#include <algorithm>
#include <charconv>
#include <span>
#include <utility>

#include "autobet/compose.h"
#include "autobet/language.h"
#include "core/text.h"

namespace {

/// What is left to read of a line. Each `Take` eats its words with the blanks behind them, or
/// leaves all as it was and tells false.
class Words {
 public:
  explicit Words(std::string_view text) : rest_(text) {}

  bool Done() const { return rest_.empty(); }

  bool Take(std::string_view word) {
    while (word.ends_with(' ')) word.remove_suffix(1);
    if (!rest_.starts_with(word)) return false;
    if (!word.empty() && rest_.size() > word.size() && rest_[word.size()] != ' ') return false;
    Eat(word.size());
    return true;
  }

  /// The longest text of a list that fits.
  bool TakeItem(std::span<const ListItem> list, int& code) {
    const ListItem* best = nullptr;
    for (const ListItem& item : list) {
      const bool longer = best == nullptr || item.Text.size() > best->Text.size();
      if (longer && item.Text != kSeparatorText && Words(*this).Take(item.Text)) best = &item;
    }
    if (best == nullptr) return false;
    code = best->Code;
    return Take(best->Text);
  }

  bool TakeAmount(Currency& amount) {
    const std::string word(rest_.substr(0, rest_.find(' ')));
    if (word.find_first_of("0123456789") == std::string::npos) return false;
    if (word.find_first_not_of("0123456789.,-") != std::string::npos) return false;
    amount = ParseAmount(word);
    return Take(word);
  }

  bool TakeNumber(int& number) {
    const char* end = rest_.data() + rest_.size();
    const auto [stop, error] = std::from_chars(rest_.data(), end, number);
    if (error != std::errc()) return false;
    return Take(rest_.substr(0, static_cast<std::size_t>(stop - rest_.data())));
  }

  /// A code of the list, with the stack number that belongs to it.
  bool TakeSubject(std::span<const ListItem> list, int& code, int& stack) {
    return TakeItem(list, code) && (!ShowsStackNum(code) || TakeNumber(stack));
  }

  /// A name between the first and the last quote. A text may be followed by its ";".
  bool TakeQuoted(std::string& name, bool isText) {
    const std::size_t last = rest_.rfind('"');
    if (!rest_.starts_with('"') || last == 0) return false;
    name = rest_.substr(1, last - 1);
    Eat(last + 1);
    if (isText && Take(";")) name += ';';
    return true;
  }

  bool TakeTruth(std::string_view verb, Currency& truth) {
    Words ahead(*this);
    if (!ahead.Take(verb)) return false;
    truth = ahead.Take(kTrueWord) ? kTrue : kFalse;
    if (truth == Currency(kFalse) && !ahead.Take(kFalseWord)) return false;
    *this = ahead;
    return true;
  }

 private:
  void Eat(std::size_t count) {
    rest_.remove_prefix(count);
    while (rest_.starts_with(' ')) rest_.remove_prefix(1);
  }

  std::string_view rest_;
};

bool ReadOperands(Words& words, ScriptLine& line) {
  const int op = line.LineCode;
  if (OperatorComparesNames(op)) return words.TakeQuoted(line.LineName, true);
  if (OperatorComparesSubjects(op)) {
    return words.TakeSubject(CompareList(), line.ToSubject, line.ToStackNum);
  }
  if (OperatorHidesZero(op) && words.Done()) return true;
  return words.TakeAmount(line.LineAmount) && words.Take(TimesWords(op));
}

using Lines = std::vector<ScriptLine>;

struct Subject {
  int Code = 0;
  ConditionForm Form;
};

const std::vector<Subject>& AllSubjects() {
  static const std::vector<Subject> all = [] {
    std::vector<Subject> subjects;
    for (const ListItem& item : ConditionList()) {
      if (item.Code != 0) subjects.push_back({item.Code, FormOfCondition(item.Code)});
    }
    return subjects;
  }();
  return all;
}

/// Adds to `found` each condition on a subject that the words are.
void ReadCondition(Words words, int subject, const ConditionForm& form, Lines& found) {
  ScriptLine line;
  line.LineKind = ConditionLine;
  line.OfSubject = subject;
  if (!words.Take(form.Caption)) return;
  if (form.StackNum && !words.TakeNumber(line.OfStackNum)) return;
  if (!words.Take(form.AfterStack)) return;
  if (form.FlagName && !words.TakeQuoted(line.LineName, false)) return;
  if (form.Truth && !words.TakeTruth(form.TruthVerb, line.LineAmount)) return;
  const std::span<const ListItem> operators = OperatorList(subject);
  if (operators.empty() && words.Done()) found.push_back(line);
  for (const ListItem& item : operators) {
    Words rest(words);
    ScriptLine whole = line;
    whole.LineCode = item.Code;
    const bool read = rest.Take(item.Text) && (!form.Amount || ReadOperands(rest, whole));
    if (read && rest.Done()) found.push_back(whole);
  }
}

bool ReadRound(Words& words, ScriptLine& line) {
  return words.TakeSubject(TargetList(TargetUse::Bets), line.ToSubject, line.ToStackNum) &&
         words.TakeItem(kRoundingWays, line.OfSubject) && words.TakeAmount(line.LineAmount);
}

bool ReadParts(Words& words, const ActionForm& form, ScriptLine& line) {
  if (form.Code == RoundBet) return ReadRound(words, line);
  const bool named = form.Name != NameUse::None;
  const bool isText = form.Name != NameUse::Label && form.Name != NameUse::Flag;
  if (named && !isText && !words.TakeQuoted(line.LineName, false)) return false;
  if (form.Truth && !words.TakeTruth(kToWord, line.LineAmount)) return false;
  if (form.Amount && !words.TakeAmount(line.LineAmount)) return false;
  if (!words.Take(form.Operator)) return false;
  if (form.Source && !words.TakeSubject(SourceList(), line.OfSubject, line.OfStackNum))
    return false;
  if (form.StackNum && !words.TakeNumber(line.OfStackNum)) return false;
  if (!words.Take(form.On)) return false;
  if (named && isText && !words.TakeQuoted(line.LineName, true)) return false;
  return form.To == TargetUse::None ||
         words.TakeSubject(TargetList(form.To), line.ToSubject, line.ToStackNum);
}

/// Adds the action to `found` if the words are it.
void ReadAction(Words words, const ActionForm& form, Lines& found) {
  ScriptLine line;
  line.LineKind = ActionLine;
  line.LineCode = form.Code;
  const bool read = words.Take(form.Lead) && ReadParts(words, form, line);
  if (read && words.Done()) found.push_back(line);
}

/// Adds the line to `found` if the words are one of the other kinds.
void ReadOther(std::string_view text, Lines& found) {
  ScriptLine line;
  for (const auto& list : {kStartConditionList, kStartActionList}) {
    for (const ListItem& item : list) {
      if (text == item.Text) line.LineKind = item.Code;
    }
  }
  Words words(text);
  if (words.Take(kLabelWord) && words.TakeQuoted(line.LineName, false) && words.Done()) {
    line.LineKind = LabelLine;
  }
  if (text.starts_with('\'')) {
    line.LineKind = RemarkLine;
    line.LineName = text;
  }
  if (line.LineKind != 0) found.push_back(line);
}

std::string_view WithoutMargins(std::string_view text) {
  constexpr std::string_view kMargins = " \t\r\n";
  const std::size_t first = text.find_first_not_of(kMargins);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kMargins) - first + 1);
}

}  // namespace

std::optional<ScriptLine> ReadLineText(std::string_view text) {
  const std::string_view words = WithoutMargins(text);
  Lines found;
  ReadOther(words, found);
  if (found.empty()) {
    for (const auto& [code, form] : AllSubjects()) ReadCondition(Words(words), code, form, found);
    for (const ActionForm& form : kActionForms) ReadAction(Words(words), form, found);
  }
  for (ScriptLine& line : found) {
    LogLine(line);
    if (WithoutMargins(line.LineText) == words) return std::move(line);
  }
  return {};
}

ReadText ReadScriptText(std::string_view text) {
  ReadText read;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    const std::string_view row = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    ++read.Row;
    if (WithoutMargins(row).empty()) continue;
    std::optional<ScriptLine> line = ReadLineText(row);
    if (!line) {
      read.NotUnderstood = WithoutMargins(row);
      read.Lines.clear();
      return read;
    }
    read.Lines.push_back(std::move(*line));
  }
  return read;
}
