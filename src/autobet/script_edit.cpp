#include "autobet/script_edit.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <utility>

#include "autobet/profile.h"
#include "autobet/read_line.h"
#include "autobet/script.h"
#include "autobet/script_records.h"
#include "core/help_topics.h"
#include "core/messages.h"
#include "core/text.h"

namespace {

using Lines = std::vector<ScriptLine>;

constexpr const char* kPasteTitle = "Paste";

Lines::iterator Place(int number) { return Game.Script.begin() + (number - 1); }

int CountOf(const Lines& lines) { return static_cast<int>(lines.size()); }

Lines LinesFrom(int first, int count) { return {Place(first), Place(first + count)}; }

/// A line as files hold it: without what only the editor knows of it.
ScriptLine ForFile(ScriptLine line) {
  line.LineSelected = line.Breakpoint = false;
  line.LineMark = PlainMark;
  return line;
}

bool SameLine(const ScriptLine& a, const ScriptLine& b) { return ForFile(a) == ForFile(b); }

bool StandsAt(int first, const Lines& lines) {
  if (first < 1 || first - 1 + CountOf(lines) > Game.ScrCount) return false;
  return std::equal(lines.begin(), lines.end(), Place(first), SameLine);
}

void Deselect() {
  std::for_each(Place(1), Place(Game.ScrCount + 1),
                [](ScriptLine& line) { line.LineSelected = false; });
}

/// Puts `after` in the place of `before`.
void Splice(int at, const Lines& before, const Lines& after) {
  const bool selects = std::ranges::any_of(after, &ScriptLine::LineSelected);
  if (selects) Deselect();
  const std::ptrdiff_t common = std::min(CountOf(before), CountOf(after));
  std::copy(after.begin(), after.begin() + common, Place(at));
  if (before.size() > after.size())
    Game.Script.erase(Place(at) + common, Place(at) + CountOf(before));
  else
    Game.Script.insert(Place(at) + common, after.begin() + common, after.end());
  Game.ScrCount += CountOf(after) - CountOf(before);
  SpliceProfile(at, CountOf(before), CountOf(after));
}

void Finish(int cursor) {
  Game.ScriptInsertLine = std::clamp(cursor, 1, Game.ScrCount + 1);
  Game.ScriptChanged = Game.ScriptUnsaved = true;
  ScriptEdited();
}

bool Replace(int at, const Lines& before, const Lines& after) {
  if (Game.AutoBetAtWork || Game.HotKeyRunning || !StandsAt(at, before)) return false;
  Splice(at, before, after);
  return true;
}

/// Makes an edit whole: the names that its lines would enter are those that the registers don't
/// have.
ScriptEdit Completed(ScriptEdit edit) {
  const std::size_t labels = Game.ScriptLabels.size();
  const std::size_t flags = Game.Flags.size();
  NameRegisters registers;
  for (const ScriptLine& line : edit.After) registers.Offer(line);
  for (std::size_t i = labels; i < Game.ScriptLabels.size(); ++i)
    edit.NewLabels.push_back(Game.ScriptLabels[i]);
  for (std::size_t i = flags; i < Game.Flags.size(); ++i)
    edit.NewFlags.push_back(Game.Flags[i].FlagName);
  Game.ScriptLabels.resize(labels);
  Game.Flags.resize(flags);
  edit.CursorBefore = Game.ScriptInsertLine;
  return edit;
}

void TakeOutNames(const ScriptEdit& edit) {
  std::erase_if(Game.ScriptLabels, [&edit](const std::string& label) {
    return std::ranges::find(edit.NewLabels, label) != edit.NewLabels.end();
  });
  std::erase_if(Game.Flags, [&edit](const Flag& flag) {
    return std::ranges::find(edit.NewFlags, flag.FlagName) != edit.NewFlags.end();
  });
}

/// The first and the last selected line; 0 and -1 when there is none.
std::pair<int, int> SelectedStretch() {
  std::pair<int, int> stretch = {0, -1};
  for (int number = 1; number <= Game.ScrCount; ++number) {
    if (!Line(number).LineSelected) continue;
    if (stretch.first == 0) stretch.first = number;
    stretch.second = number;
  }
  return stretch;
}

std::string TextOf(const Lines& lines) {
  std::string text;
  for (const ScriptLine& line : lines) text += line.LineText + "\n";
  return text;
}

/// What the desktop may have done to the ends of lines undone.
std::string WithPlainEnds(std::string_view text) {
  std::string plain;
  std::ranges::copy_if(text, std::back_inserter(plain), [](char letter) { return letter != '\r'; });
  if (!plain.empty() && plain.back() != '\n') plain += '\n';
  return plain;
}

}  // namespace

// --- Edits ---

bool ApplyEdit(const ScriptEdit& edit) {
  if (!Replace(edit.At, edit.Before, edit.After)) return false;
  NameRegisters registers;
  for (const std::string& label : edit.NewLabels) registers.OfferLabel(label);
  for (const std::string& flag : edit.NewFlags) registers.OfferFlag(flag);
  Finish(edit.CursorAfter);
  return true;
}

bool RevertEdit(const ScriptEdit& edit) {
  if (!Replace(edit.At, edit.After, edit.Before)) return false;
  TakeOutNames(edit);
  Finish(edit.CursorBefore);
  return true;
}

bool MayEditScript() {
  if (!Game.AutoBetAtWork && !Game.HotKeyRunning) return true;
  if (AskYesNo("Do you want to interrupt Auto-Betting? ", "Auto-Bet Active", kTopicScriptEditor)) {
    Game.AutoBetRunning = false;
    Game.KeepRolling = false;
  }
  return false;
}

std::optional<ScriptEdit> InsertLines(std::vector<ScriptLine> lines, bool selected) {
  if (lines.empty()) return {};
  if (Game.ScrCount + CountOf(lines) > kMaxScriptLines) {
    ShowMessage("A script can have " + CountText(kMaxScriptLines) + " lines at most.", "Auto-Bet",
                kTopicScriptEditor, OkStop);
    return {};
  }
  for (ScriptLine& line : lines) {
    line = ForFile(std::move(line));
    line.LineSelected = selected;
  }
  ScriptEdit edit;
  edit.At = std::clamp(Game.ScriptInsertLine, 1, Game.ScrCount + 1);
  edit.CursorAfter = edit.At + (selected ? 0 : CountOf(lines));
  edit.After = std::move(lines);
  return Completed(std::move(edit));
}

std::optional<ScriptEdit> ReplaceLine(int number, const ScriptLine& line) {
  if (number < 1 || number > Game.ScrCount || SameLine(Line(number), line)) return {};
  ScriptEdit edit;
  edit.At = number;
  edit.CursorAfter = number + 1;  // writing goes on behind it
  edit.Before = {Line(number)};
  edit.After = {line};
  edit.After[0].Breakpoint = Line(number).Breakpoint;
  return Completed(std::move(edit));
}

std::optional<ScriptEdit> DeleteSelected() {
  const auto [first, last] = SelectedStretch();
  if (first == 0) return {};
  ScriptEdit edit;
  edit.At = edit.CursorAfter = first;
  edit.Before = LinesFrom(first, last - first + 1);
  std::ranges::copy_if(edit.Before, std::back_inserter(edit.After),
                       [](const ScriptLine& line) { return !line.LineSelected; });
  return Completed(std::move(edit));
}

std::optional<ScriptEdit> MoveSelected(int before) {
  const auto [first, last] = SelectedStretch();
  if (first == 0 || before < 1 || before > Game.ScrCount + 1) return {};
  ScriptEdit edit;
  edit.At = std::min(first, before);
  edit.Before = LinesFrom(edit.At, std::max(last + 1, before) - edit.At);
  edit.After = edit.Before;
  const auto selected = [](const ScriptLine& line) { return line.LineSelected; };
  const auto target = edit.After.begin() + (before - edit.At);
  const auto begin = std::stable_partition(edit.After.begin(), target, std::not_fn(selected));
  std::stable_partition(target, edit.After.end(), selected);
  edit.CursorAfter = edit.At + static_cast<int>(begin - edit.After.begin());
  if (edit.After == edit.Before) return {};
  return Completed(std::move(edit));
}

std::optional<ScriptEdit> MoveSelectedUp() { return MoveSelected(SelectedStretch().first - 1); }

std::optional<ScriptEdit> MoveSelectedDown() {
  const int last = SelectedStretch().second;
  return last < 1 ? std::nullopt : MoveSelected(last + 2);
}

std::optional<ScriptEdit> RecordEdit(const std::function<void()>& change) {
  const Lines before = LinesFrom(1, Game.ScrCount);
  const int cursor = Game.ScriptInsertLine;
  ScriptEdit edit;
  const std::size_t labels = Game.ScriptLabels.size();
  const std::size_t flags = Game.Flags.size();
  change();
  const Lines after = LinesFrom(1, Game.ScrCount);
  const auto [head, other] =
      std::mismatch(before.begin(), before.end(), after.begin(), after.end(), SameLine);
  if (head == before.end() && other == after.end()) return {};
  const auto rest = std::mismatch(before.rbegin(), std::make_reverse_iterator(head), after.rbegin(),
                                  std::make_reverse_iterator(other), SameLine);
  edit.At = static_cast<int>(head - before.begin()) + 1;
  edit.Before.assign(head, rest.first.base());
  edit.After.assign(other, rest.second.base());
  edit.CursorBefore = cursor;
  edit.CursorAfter = Game.ScriptInsertLine;
  for (std::size_t i = labels; i < Game.ScriptLabels.size(); ++i)
    edit.NewLabels.push_back(Game.ScriptLabels[i]);
  for (std::size_t i = flags; i < Game.Flags.size(); ++i)
    edit.NewFlags.push_back(Game.Flags[i].FlagName);
  return edit;
}

// --- Selection and clipboard ---

void SelectLines(int first, int last, bool keep) {
  if (!keep) Deselect();
  if (first > last) std::swap(first, last);
  for (int number = std::max(first, 1); number <= std::min(last, Game.ScrCount); ++number)
    Line(number).LineSelected = true;
}

void SelectAllLines() { SelectLines(1, Game.ScrCount); }

int SelectedLineCount() {
  return static_cast<int>(std::count_if(Place(1), Place(Game.ScrCount + 1),
                                        [](const ScriptLine& line) { return line.LineSelected; }));
}

std::string CopySelected() {
  Game.LineClipboard.clear();
  std::copy_if(Place(1), Place(Game.ScrCount + 1), std::back_inserter(Game.LineClipboard),
               [](const ScriptLine& line) { return line.LineSelected; });
  return TextOf(Game.LineClipboard);
}

std::optional<std::vector<ScriptLine>> LinesToPaste(std::string_view text) {
  if (!Game.LineClipboard.empty() && WithPlainEnds(text) == TextOf(Game.LineClipboard))
    return Game.LineClipboard;
  ReadText read = ReadScriptText(text);
  if (read.NotUnderstood.empty() && !read.Lines.empty()) return std::move(read.Lines);
  const std::string fault = read.NotUnderstood.empty()
                                ? "There are no Auto-Bet lines to paste."
                                : "Nothing has been pasted: row " + CountText(read.Row) +
                                      " of the text is no Auto-Bet line.\n\n" +
                                      read.NotUnderstood.substr(0, 200);
  ShowMessage(fault, kPasteTitle, kTopicScriptEditor, OkStop);
  return {};
}
