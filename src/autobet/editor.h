// The editor's commands on the whole script: finding, marking, saving, and leaving the screen.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "autobet/checker.h"

// --- Finding ---

/// The first line from `from` on, forward or back, whose text holds `text`, whatever the case; 0
/// for none.
int FindLine(std::string_view text, int from, bool forward = true);

/// Asks for a text under "Find", keeps it, and brings the first line that holds it to the top
/// through the Host. "Find Next" and "Find Previous" go on from the line after and before `top`. A
/// text that isn't there is told under "Search Results".
void FindCommand();
void FindNextCommand(int top);
void FindPreviousCommand(int top);

// --- Looking at the script ---

/// Sets `LineMark` of every line by its kind.
void MarkKinds();

/// Sets `LineMark` of every line, and tells the first fault, whose line is marked before all else.
ScriptFault MarkLines();

/// Where a line stands in its statement: for shading and indenting.
enum class BlockRole { None, Conditions, Actions };
struct LineBlock {
  int Statement = 0;  // counts from 1; 0 outside of any
  BlockRole Role = BlockRole::None;

  bool operator==(const LineBlock&) const = default;
};
std::vector<LineBlock> BlocksOfScript();

/// Marks a line so that tracing starts there, or takes the mark away.
void ToggleBreakpoint(int number);
void ClearBreakpoints();

// --- Files and leaving ---

/// Whether a script that isn't saved may go: asks under "Save Auto-Bets?" and saves on Yes. False
/// on Cancel, and when saving failed.
bool MayReplaceScript();

/// Begins an empty script, on asking about the one in force.
void NewScriptCommand();

/// Saves under the script's name, "default.bet" in `DataPath` without one. Asks before it writes
/// over a file that somebody else has written since. True when it was saved.
bool SaveScriptCommand();

/// "Auto-Bet", with the file's name in brackets when there is one, and a star while unsaved.
std::string EditorCaption();

/// The ACTIVE box: switches the script on or off, and offers its initializing cycle.
void ActivateAutoBets(bool active);

/// What stands above the lines on each printed page.
std::vector<std::string> ScriptPageHeading(const std::string& date);

/// Whether the screen may be left. A fault in an active script asks whether to switch it off; a
/// script that has changed is saved to "active.tmp" in `DataPath`, and its file name stays.
bool LeaveEditor();
