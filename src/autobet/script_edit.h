// Edits of the script as values: what stood before, what stands after. An undo stack keeps them.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/script_state.h"

/// A stretch of lines put in place of another.
struct ScriptEdit {
  int At = 1;                      // number of the first line of the stretch
  std::vector<ScriptLine> Before;  // the lines that stood there
  std::vector<ScriptLine> After;   // the lines that take their place
  int CursorBefore = 1;            // `ScriptInsertLine`
  int CursorAfter = 1;
  std::vector<std::string> NewLabels;  // names that the edit entered in the registers
  std::vector<std::string> NewFlags;
};

/// Puts the lines of an edit in place and takes them back. Both raise `ScriptChanged` and
/// `ScriptUnsaved`, and carry profile counts along with their lines. False, with nothing done, when
/// a script is at work or the script isn't the one that the edit was made for (a load or a Hot-Key
/// has replaced it; `ScriptLoads` tells).
bool ApplyEdit(const ScriptEdit& edit);
bool RevertEdit(const ScriptEdit& edit);

/// Whether lines may change now. While a script is at work the player is asked whether to interrupt
/// it, and lines may not change whatever the answer: once it has stopped, they may.
bool MayEditScript();

// --- Making edits: none of these changes the script ---

/// Lines put in before the current line, which stays behind them. With `selected` they are left as
/// the only selected lines. Nothing, on telling why, when the script would be longer than a file.
std::optional<ScriptEdit> InsertLines(std::vector<ScriptLine> lines, bool selected);

/// A line in place of line `number`, which keeps its breakpoint.
std::optional<ScriptEdit> ReplaceLine(int number, const ScriptLine& line);

/// The selected lines taken out; nothing when there are none.
std::optional<ScriptEdit> DeleteSelected();

/// The selected lines moved together before line `before` (1 to `ScrCount` + 1), or one place up or
/// down; nothing when they would stay as they are.
std::optional<ScriptEdit> MoveSelected(int before);
std::optional<ScriptEdit> MoveSelectedUp();
std::optional<ScriptEdit> MoveSelectedDown();

/// Runs a change of the script that knows no edits (a paste from a file), and tells what it did;
/// nothing when it changed no line.
std::optional<ScriptEdit> RecordEdit(const std::function<void()>& change);

// --- Selection and clipboard ---

/// Selects lines `first` to `last`, in either order, and without `keep` no other.
void SelectLines(int first, int last, bool keep = false);
void SelectAllLines();
int SelectedLineCount();

/// The selected lines go to the clipboard of lines. The text is theirs as the list shows it, for
/// the clipboard of the desktop.
std::string CopySelected();

/// The lines of a clipboard's text: those last copied when the text is still theirs, else the lines
/// that the text reads as. Nothing, on telling the first row that is no line, for any other text.
std::optional<std::vector<ScriptLine>> LinesToPaste(std::string_view text);
