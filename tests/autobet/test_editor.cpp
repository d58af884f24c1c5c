// The editor without its screen: building lines by choosing, edits that come back, looking at the
// script, the profile, breakpoints.

#include <regex>

#include "autobet/compose.h"
#include "autobet/editor.h"
#include "autobet/engine.h"
#include "autobet/line_choice.h"
#include "autobet/profile.h"
#include "autobet/script_edit.h"
#include "autobet/script_reader.h"
#include "autoplay/hyper_drive.h"
#include "core/help_topics.h"
#include "support/random_rules.h"
#include "support/table_fixture.h"

namespace {

class Editor : public TableTest {
 protected:
  Editor() {
    ClearScript();
    Game.LineClipboard.clear();
  }

  static std::string Script() {
    std::string text;
    for (const ScriptLine& line : Game.Script) text += Trimmed(line.LineText) + "\n";
    return text;
  }
};

std::vector<int> Codes(std::span<const ListItem> list) {
  std::vector<int> codes = CodesOf(list);
  if (codes.empty()) codes.push_back(0);
  return codes;
}

// --- Building lines ---

/// The line that was logged stands in the script with the text of its composition, and comes back
/// into the boxes such that logging it again gives the same.
template <typename Choice>
void ExpectLogged(const Choice& choice, std::optional<ScriptLine> (*log)(const Choice&),
                  Choice (*back)(const ScriptLine&)) {
  const std::optional<ScriptLine> line = log(choice);
  ASSERT_TRUE(line) << Game.MsgText;
  ASSERT_EQ(line->LineText, ComposeLine(*line));
  ASSERT_EQ(ReadLine(line->LineText), *line);
  Game.ScriptInsertLine = Game.ScrCount + 1;
  ASSERT_TRUE(ApplyEdit(*InsertLines({*line}, false)));
  ASSERT_EQ(Line(Game.ScrCount), *line);
  ASSERT_EQ(log(back(Line(Game.ScrCount))), *line);
}

TEST_F(Editor, LogsEveryConditionByChoosing) {
  const std::vector<int> seconds = Codes(CompareList());
  const ConditionChoice full = {9999,    0,           BankrollSubject, false, "7",
                                "Ä hot", "say \"x\"", "-12.5",         "100"};
  std::size_t turn = 0;
  for (const int subject : Codes(ConditionList()))
    for (const int op : Codes(OperatorList(subject))) {
      const std::size_t count = OperatorComparesSubjects(op) ? seconds.size() : 2;
      const std::size_t step = count > 7 ? 7 : 1;  // the product is beyond 100,000
      for (std::size_t second = turn++ % step; second < count; second += step) {
        ConditionChoice choice = full;
        choice.Subject = subject == 9999 ? 1300 : 9999;
        choice.Truth = turn % 2 == 0;
        ChooseSubject(choice, subject);
        ChooseOperator(choice, op);
        ChooseCompare(choice, seconds[second]);
        ASSERT_EQ(choice.Subject, subject);
        ASSERT_EQ(choice.Operator, OperatorList(subject).empty() ? choice.Operator : op);
        ExpectLogged<ConditionChoice>(choice, LogCondition, ConditionChoiceOf);
        if (HasFatalFailure()) return;
      }
    }
  EXPECT_GT(Game.ScrCount, 5'000);
  EXPECT_EQ(Game.Flags.size(), 1U);
}

TEST_F(Editor, LogsEveryActionByChoosing) {
  ASSERT_TRUE(ApplyEdit(*InsertLines({*LogLabel("Top")}, false)));
  for (const int action : Codes(ActionList())) {
    const std::vector<int> sources = Codes(OfList(action));
    const std::vector<int> targets = Codes(ToList(action));
    const std::size_t most = std::max(sources.size(), targets.size());
    for (std::size_t n = 0; n < 2 * most; ++n) {
      ActionChoice choice = {BetAmount, 0, 0, n % 2 == 0, "Top", "Hot", "2.5", "1", "text;", "99"};
      ChooseAction(choice, action);
      ChooseOf(choice, sources[n % sources.size()]);
      ChooseTo(choice, targets[(n + n / most) % targets.size()]);
      ExpectLogged<ActionChoice>(choice, LogAction, ActionChoiceOf);
      if (HasFatalFailure()) return;
    }
  }
  for (const auto& list : {kStartConditionList, kStartActionList})
    for (const ListItem& item : list) {
      const ScriptLine line = LineOfStart(item.Code);
      EXPECT_EQ(line.LineKind, item.Code);
      EXPECT_EQ(ReadLine(line.LineText), line);
    }
}

TEST_F(Editor, ABoxIsSeenWhenItsLineNeedsIt) {
  const std::tuple<int, int, const char*> cases[] = {
      {EachRoll, 0, ""},        {PointEstablished, AnyNumber, "w"},
      {OneFlag, 0, "ft"},       {AverageBankroll, EqualTo, "nwa"},
      {AllFlags, 0, "t"},       {ChipStackSubject, IsNamed, "nwN"},
      {PassLine, HasWon, "wa"}, {PassLine, LessThanSubject, "wc"}};
  for (const auto& [subject, op, boxes] : cases) {
    ConditionChoice choice;
    ChooseSubject(choice, subject);
    ChooseOperator(choice, op);
    const ConditionBoxes seen = BoxesOf(choice);
    EXPECT_EQ(std::string(seen.StackNum ? "n" : "") + (seen.What ? "w" : "") +
                  (seen.Flag ? "f" : "") + (seen.Name ? "N" : "") +
                  (seen.Truth.empty() ? "" : "t") + (seen.Amount ? "a" : "") +
                  (seen.Compare ? "c" : ""),
              boxes);
  }
}

TEST_F(Editor, RefusesWhatNoLineCanHold) {
  ConditionChoice flag, stack;
  ChooseSubject(flag, OneFlag);
  ChooseSubject(stack, ChipStackSubject);
  ActionChoice go, say;
  ChooseAction(go, GoTo);
  ChooseAction(say, ShowMessageText);
  const auto refused = [this](const auto& line, const std::string& text) {
    EXPECT_FALSE(line) << text;
    EXPECT_TRUE(TakeOnlyMessage().Text.starts_with(text));
  };
  refused(LogCondition(flag), "You need to enter a Flag name.");
  flag.Flag = std::string(300, 'n');
  refused(LogCondition(flag), "The text has 300 letters.\nThere's room for");
  for (const char* number : {"101", "-1", "1.5", "x", "99999999999"}) {
    stack.StackNum = number;
    refused(LogCondition(stack), "Please enter a Chip-Stack number from 0 ");
  }
  stack.StackNum = "100";
  for (const char* amount : {"a", "1-", "--1", "1.2.3", "99999999999999999", "."}) {
    stack.Amount = amount;
    refused(LogCondition(stack), "");
  }
  for (const char* amount : {"", " 1,000.5 ", "-3", ".5"}) {
    stack.Amount = amount;
    EXPECT_TRUE(LogCondition(stack)) << amount;
  }
  refused(LogAction(go), "You need to enter a label to go to.");
  say.Name = "\u0416";
  refused(LogAction(say), "The text holds letters that an Auto-Bet ");
  say.Name = "one\ntwo  ";
  EXPECT_EQ(LogAction(say)->LineName, "one two");

  refused(LogLabel("  "), "You must enter a label name.");
  ASSERT_TRUE(ApplyEdit(*InsertLines({*LogLabel("Loop")}, false)));
  refused(LogLabel(" loop "), "That label name is already in use.");
  const std::string remark = "'" + std::string(126, 'r');
  for (int i = 0; i < 2; ++i) ASSERT_TRUE(ApplyEdit(*InsertLines({*LogLabel(remark)}, false)));
  EXPECT_EQ(Game.ScriptLabels, std::vector<std::string>{"Loop"});
  const ScratchFolder folder("editor");
  SaveScript(folder / "a.bet");
  OpenScript(folder / "a.bet");
  EXPECT_EQ(LabelTextOf(Line(3)), remark);
}

// --- Edits ---

/// A thousand edits by chance, each of them against what a plain list would make of it; all undone
/// and done again.
TEST_F(Editor, EveryEditComesBack) {
  LoadScript("When . . .\nOn each roll\nthen . . .\nReturn\n");
  Chance chance(11);
  const auto below = [&chance](int limit) { return chance.Below(limit); };
  std::vector<ScriptEdit> done;
  std::vector<std::string> states = {Script()};
  std::vector<std::size_t> flags = {0};
  for (int round = 0; round < 1'000; ++round) {
    const int count = Game.ScrCount;
    SelectLines(0, -1);
    for (int i = 0; i < 3; ++i) {
      const int first = 1 + below(count + 1);
      SelectLines(first, first + below(4), true);
    }
    Game.ScriptInsertLine = 1 + below(count + 1);
    const std::string copied = CopySelected();
    const std::string flag = "Set flag \"" + std::to_string(below(50)) + "\" to True";
    std::optional<ScriptEdit> edit;
    switch (below(6)) {
      case 0: edit = InsertLines({ReadLine(flag)}, false); break;
      case 1: edit = count > 40 ? DeleteSelected() : std::nullopt; break;
      case 2: edit = MoveSelected(1 + below(count + 1)); break;
      case 3: edit = below(2) == 0 ? MoveSelectedUp() : MoveSelectedDown(); break;
      case 4: edit = copied.empty() ? edit : InsertLines(*LinesToPaste(copied), true); break;
      default: edit = ReplaceLine(1 + below(count), *LogLabel("'" + std::to_string(round))); break;
    }
    if (!edit) continue;
    const int selected = SelectedLineCount();
    const bool pastes = edit->Before.empty() && edit->After[0].LineSelected;
    ASSERT_TRUE(ApplyEdit(*edit));
    ASSERT_EQ(pastes ? SelectedLineCount() : selected, selected);
    done.push_back(*edit);
    states.push_back(Script());
    flags.push_back(Game.Flags.size());
  }
  ASSERT_GT(done.size(), 500U);
  for (std::size_t i = done.size(); i > 0; --i) {
    ASSERT_TRUE(RevertEdit(done[i - 1]));
    ASSERT_EQ(Script(), states[i - 1]);
    ASSERT_EQ(Game.Flags.size(), flags[i - 1]);
  }
  for (std::size_t i = 0; i < done.size(); ++i) {
    ASSERT_TRUE(ApplyEdit(done[i]));
    ASSERT_EQ(Script(), states[i + 1]);
  }
  EXPECT_TRUE(TakeShown().empty());
  LoadScript("Return");
  EXPECT_FALSE(RevertEdit(done.back())) << "another script";
}

TEST_F(Editor, MovesDeletesAndPastes) {
  LoadScript("' 1\n' 2\n' 3\n' 4\n' 5\n");
  SelectLines(4, 4);
  SelectLines(2, 2, true);
  ApplyEdit(*MoveSelected(6));
  EXPECT_EQ(Script(), "' 1\n' 3\n' 5\n' 2\n' 4\n");
  ApplyEdit(*MoveSelectedUp());
  EXPECT_EQ(Script(), "' 1\n' 3\n' 2\n' 4\n' 5\n");
  EXPECT_EQ(Game.ScriptInsertLine, 3);
  EXPECT_FALSE(MoveSelected(4)) << "where they are";
  ApplyEdit(*DeleteSelected());
  Game.ScriptInsertLine = 1;
  ApplyEdit(*InsertLines(*LinesToPaste(" ' x\r\n\r\nSet flag \"A\" to True\r\n"), true));
  EXPECT_EQ(Script(), "' x\nSet flag \"A\" to True\n' 1\n' 3\n' 5\n");
  EXPECT_EQ(std::tuple(SelectedLineCount(), Game.Flags.at(0).FlagName), std::tuple(2, "A"));
  EXPECT_FALSE(LinesToPaste("' x\nrubbish\n"));
  EXPECT_EQ(TakeOnlyMessage().Text,
            "Nothing has been pasted: row 2 of the text is no Auto-Bet line.\n\nrubbish");
  Game.AutoBetAtWork = Game.AutoBetRunning = true;
  Answers = {kYes};
  EXPECT_TRUE(!MayEditScript() && !Game.AutoBetRunning);
  EXPECT_EQ(TakeOnlyMessage().Title, "Auto-Bet Active");
  EXPECT_FALSE(ApplyEdit(*DeleteSelected()));
  Game.AutoBetAtWork = false;
}

// --- The script as a whole ---

TEST_F(Editor, FindsMarksAndTellsBlocks) {
  LoadScript(
      "' a\nWhen . . .\nOn each roll\nthen . . .\nReturn\n"
      "Label \"Ärger\"\nDo this . . .\nReturn\n");
  EXPECT_EQ(std::tuple(FindLine("RETURN", 1), FindLine("return", 6)), std::tuple(5, 8));
  EXPECT_EQ(std::tuple(FindLine("return", 7, false), FindLine("ärg", 1)), std::tuple(5, 6));
  int top = 0;
  TheHost.ShowScriptLine = [&top](int line) { top = line; };
  Answers = {{0, false, "", "return"}};
  FindCommand();
  EXPECT_EQ(top, 5);
  FindNextCommand(top);
  EXPECT_EQ(top, 8);
  FindNextCommand(top);
  EXPECT_EQ(TakeShown().back(), Stop("Search Results", kTopicScriptEditor, "Text not found."));
  FindPreviousCommand(top);
  EXPECT_EQ(top, 5);

  const auto marks = [] {
    std::string all;
    for (const ScriptLine& line : Game.Script) all += std::to_string(line.LineMark);
    return all;
  };
  EXPECT_EQ(MarkLines().LineNumber, 0);
  EXPECT_EQ(marks(), "34040240");
  std::string statements;
  for (const LineBlock& block : BlocksOfScript())
    statements += std::to_string(block.Statement) + "-CA"[static_cast<int>(block.Role)] + " ";
  EXPECT_EQ(statements, "0- 1C 1C 1A 1A 0- 2A 2A ");
  SelectLines(5, 5);
  ApplyEdit(*DeleteSelected());
  EXPECT_EQ(MarkLines().Title, "Missing Action Lines");
  EXPECT_EQ(marks(), "3401240");
}

TEST_F(Editor, LeavingAndSavingLoseNothing) {
  const ScratchFolder folder("editor");
  Game.DataPath = folder / "";
  LoadScript("When . . .\n");
  Game.AutoBetActive = 1;
  Game.ScriptChanged = Game.ScriptUnsaved = true;
  Answers = {kNo, kYes};
  EXPECT_TRUE(!LeaveEditor() && Game.AutoBetActive == 1);
  EXPECT_TRUE(LeaveEditor() && Game.AutoBetActive == 0);
  EXPECT_NE(TakeShown().back().Text.find("Would you like to deactivate"), std::string::npos);
  EXPECT_EQ(folder.Read("active.tmp").size(), 512U);
  Answers = {kYes};
  NewScriptCommand();
  EXPECT_EQ(folder.Read("default.bet").size(), 512U);
  OpenScript(folder / "default.bet");

  folder.Write("default.bet", "another program");
  ApplyEdit(*InsertLines({LineOfStart(WhileLine)}, false));
  TakeShown();
  EXPECT_FALSE(SaveScriptCommand());
  EXPECT_EQ(folder.Read("default.bet"), "another program");
  Answers = {kYes};
  EXPECT_TRUE(SaveScriptCommand() && SaveScriptCommand()) << "it is ours again";
  EXPECT_EQ(TakeShown().size(), 2U);
  EXPECT_FALSE(Game.ScriptUnsaved);
}

// --- Profile and breakpoints ---

constexpr const char* kJumping =
    // From line 1, 4, 6, 8, 10, 13 and 17.
    "While . . .\nChip-Stack # 1 is equal to $ 0\nChip-Stack # 2 is equal to $ 1\n"
    "or while . . .\nBankroll is greater than $ 0\n"
    "then . . .\nGosub \"Sub\"\n"
    "else . . .\nAdd $ 1 to Chip-Stack # 3\n"
    "Do this . . .\nGo to \"End\"\nAdd $ 1 to Chip-Stack # 3\n"
    "Label \"Sub\"\nDo this . . .\nAdd $ 0 to Chip-Stack # 4\nReturn\n"
    "Label \"End\"\nDo this . . .\nReturn\n";

std::string Counts() {
  std::string text;
  for (const LineProfile& line : ScriptProfile())
    text += std::to_string(line.Reached) + "/" + std::to_string(line.Fired) + " ";
  return text;
}

TEST_F(Editor, TheProfileCountsWhatRunsWalkThrough) {
  LoadScript(kJumping);
  RunAutoBets();
  EXPECT_EQ(Counts().find_first_of("123456789"), std::string::npos) << "it is off";
  Game.Profile.On = true;
  Game.AutoBetActive = 1;
  Game.NumAutoRolls = Game.AutoRollsLeft = 1'000;
  ToggleHyperDrive();
  ASSERT_EQ(Game.RollCount[0], 1'000);
  const auto once = "1/0 1/1 1/0 1/1 1/1 1/1 1/1 1/0 1/0 1/1 1/1 0/0 1/1 1/1 1/1 1/1 1/1 1/1 1/0 ";
  std::string expected = std::regex_replace(once, std::regex("1"), "1000");
  EXPECT_EQ(Counts(), expected);

  SelectLines(12, 12);
  ApplyEdit(*DeleteSelected());
  Game.ScriptInsertLine = 1;
  ApplyEdit(*InsertLines({*LogLabel("' new")}, false));
  EXPECT_EQ(Counts(), "0/0 " + expected.replace(expected.find(" 0/0 "), 4, ""));
  Game.ScriptChanged = true;
  Answers = {kYes};
  InitAutoBets();
  EXPECT_EQ(Counts().substr(0, 12), "1/0 1/0 1/1 ");
  Game.Profile.On = false;
}

TEST_F(Editor, ABreakpointBeginsTracingAndStopsHyperDrive) {
  std::vector<int> steps;
  bool cancels = false;
  TheHost.ShowStep = [&](int line, const std::string&, const std::string&) {
    steps.push_back(line);
    if (cancels) Game.ShowStepsMode = 0;
  };
  LoadScript(kJumping);
  ToggleBreakpoint(12);  // never reached
  ToggleBreakpoint(9);   // never taken
  ToggleBreakpoint(15);
  RunAutoBets();
  EXPECT_EQ(steps, (std::vector<int>{15, 16, 7, 8, 10, 11, 17, 18, 19}));
  steps.clear();
  cancels = true;
  Game.ShowStepsMode = 0;
  RunAutoBets();
  EXPECT_EQ(steps, std::vector<int>{15});
  Game.AutoBetActive = 1;
  Game.NumAutoRolls = Game.AutoRollsLeft = 1'000;
  ToggleHyperDrive();
  EXPECT_EQ(Game.RollCount[0], 1);
  EXPECT_EQ(TakeShown().back().Text, "Stopped by the breakpoint at Auto-Bet line # 15.");
  ClearBreakpoints();
  Game.AutoRollsLeft = 10;
  ToggleHyperDrive();
  EXPECT_EQ(std::tuple(Game.RollCount[0], steps.size()), std::tuple(11, 1U));
}

}  // namespace
