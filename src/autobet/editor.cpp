#include "autobet/editor.h"

#include <algorithm>

#include "autobet/script.h"
#include "autobet/script_file.h"
#include "core/help_topics.h"
#include "core/host.h"
#include "core/messages.h"
#include "core/record_file.h"

namespace {

constexpr const char* kFindTitle = "Find";

int MarkOf(int kind) {
  if (kind == LabelLine) return LabelMark;
  if (kind == RemarkLine) return RemarkMark;
  return IsStartCondition(kind) || IsStartAction(kind) ? StartMark : PlainMark;
}

void ShowFound(int number) {
  if (number != 0) return TheHost.ShowScriptLine(number);
  ShowMessage("Text not found.", "Search Results", kTopicScriptEditor, OkStop);
}

/// True when the player wants to write over what somebody else has written meanwhile.
bool MayOverwriteScriptFile() {
  return !ScriptFileChanged() ||
         AskYesNo(BareName(Game.AutoBetFile) +
                      "\n\nhas been changed by another program since you opened it.\nDo you want "
                      "to overwrite it?",
                  "Save Auto-Bets?", kTopicScriptEditor);
}

}  // namespace

// --- Finding ---

int FindLine(std::string_view text, int from, bool forward) {
  const std::string wanted = LowerCase(std::string(text));
  if (wanted.empty()) return 0;
  const int step = forward ? 1 : -1;
  for (int number = from; number >= 1 && number <= Game.ScrCount; number += step) {
    if (LowerCase(Line(number).LineText).find(wanted) != std::string::npos) return number;
  }
  return 0;
}

void FindCommand() {
  Game.MsgInput = {"", Game.FindText};
  ShowMessage(
      "Enter the text you'd like to find.\nDon't worry about upper or lower case letters.\nIf "
      "found, the line will appear at the top of the screen.",
      kFindTitle, kTopicScriptEditor, InputOkCancel);
  const std::string typed = Game.MsgInput[0].empty() ? Game.MsgInput[1] : Game.MsgInput[0];
  if (Game.MsgAnswer != AnswerOk || typed.empty()) return;
  Game.FindText = typed;
  ShowFound(FindLine(typed, 1));
}

void FindNextCommand(int top) {
  if (Game.FindText.empty()) return FindCommand();
  ShowFound(FindLine(Game.FindText, top + 1));
}

void FindPreviousCommand(int top) {
  if (Game.FindText.empty()) return FindCommand();
  ShowFound(FindLine(Game.FindText, top - 1, false));
}

// --- Looking at the script ---

void MarkKinds() {
  for (int number = 1; number <= Game.ScrCount; ++number)
    Line(number).LineMark = MarkOf(Line(number).LineKind);
}

ScriptFault MarkLines() {
  MarkKinds();
  ScriptFault fault = FindScriptFault();
  if (fault.LineNumber != 0) Line(fault.LineNumber).LineMark = FaultMark;
  return fault;
}

std::vector<LineBlock> BlocksOfScript() {
  std::vector<LineBlock> blocks(static_cast<std::size_t>(Game.ScrCount));
  int statements = 0;
  LineBlock current;
  for (int number = 1; number <= Game.ScrCount; ++number) {
    const int kind = Line(number).LineKind;
    if (kind == WhenLine || kind == WhileLine || kind == DoThisLine)
      current.Statement = ++statements;
    if (IsStartCondition(kind)) current.Role = BlockRole::Conditions;
    if (IsStartAction(kind)) current.Role = BlockRole::Actions;
    if (kind == LabelLine) current = {};
    blocks[static_cast<std::size_t>(number - 1)] = current;
  }
  return blocks;
}

void ToggleBreakpoint(int number) {
  if (number < 1 || number > Game.ScrCount) return;
  Line(number).Breakpoint = !Line(number).Breakpoint;
  ScriptEdited();
}

void ClearBreakpoints() {
  for (ScriptLine& line : Game.Script) line.Breakpoint = false;
  ScriptEdited();
}

// --- Files and leaving ---

bool MayReplaceScript() {
  if (!Game.ScriptUnsaved || Game.ScrCount == 0) return true;
  ShowMessage("Your current logged bets have not been saved.\nDo you want to save them now?",
              "Save Auto-Bets?", kTopicScriptEditor, YesNoCancel);
  if (Game.MsgAnswer == AnswerYes) return SaveScriptCommand();
  return Game.MsgAnswer == AnswerNo;
}

void NewScriptCommand() {
  if (!MayReplaceScript()) return;
  ClearScript();
  Game.ScriptChanged = true;
}

bool SaveScriptCommand() {
  if (!MayOverwriteScriptFile()) return false;
  SaveScript(Game.AutoBetFile.empty() ? Game.DataPath + "default.bet" : Game.AutoBetFile);
  return Game.LastFileResult > 0;
}

std::string EditorCaption() {
  std::string caption = "Auto-Bet";
  if (!Game.AutoBetFile.empty()) caption += " (" + BareName(Game.AutoBetFile) + ")";
  return caption + (Game.ScriptUnsaved ? " *" : "");
}

void ActivateAutoBets(bool active) {
  Game.AutoBetActive = active ? 1 : 0;
  Game.ScriptChanged = true;
}

std::vector<std::string> ScriptPageHeading(const std::string& date) {
  const std::string name = Game.AutoBetFile.empty() ? "untitled" : BareName(Game.AutoBetFile);
  return {"Kelvanor Auto-Bets", date, "Auto-Bet File:   " + name};
}

bool LeaveEditor() {
  if (Game.AutoBetActive != 0 && Game.ScrCount > 0) {
    const ScriptFault fault = FindScriptFault();
    if (fault.LineNumber != 0) {
      TheHost.ShowScriptLine(fault.LineNumber);
      const bool leaves = AskYesNo(
          fault.Text +
              "\n\nWould you like to deactivate Auto-betting and return to the game table anyway?",
          fault.Title, kTopicScriptEditor);
      if (!leaves) return false;
      Game.AutoBetActive = 0;
    }
  }
  if (Game.ScriptChanged) WriteScript(Game.DataPath + "active.tmp");
  return true;
}
