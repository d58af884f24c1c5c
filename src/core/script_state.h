// The script's part of the game record: its lines, its flags and labels, and how it stands.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "core/currency.h"

/// Kinds of a script line; they stand in files.
enum LineKindCode : int {
  WhenLine = 1,
  WhileLine = 2,
  AndWhenLine = 3,
  AndWhileLine = 4,
  OrWhenLine = 5,
  OrWhileLine = 6,
  XorWhenLine = 7,
  XorWhileLine = 8,
  ThenLine = 11,
  ElseLine = 12,
  DoThisLine = 13,
  ConditionLine = 20,
  ActionLine = 30,
  LabelLine = 90,
  RemarkLine = 99,
};

constexpr bool IsStartCondition(int kind) { return kind >= WhenLine && kind <= XorWhileLine; }
constexpr bool IsStartAction(int kind) { return kind >= ThenLine && kind <= DoThisLine; }

inline constexpr unsigned kLineTextWidth = 128;
inline constexpr unsigned kLineNameWidth = 80;

/// How the editor's list highlights a line.
enum LineMarkForm : int { PlainMark, FaultMark, LabelMark, RemarkMark, StartMark };

/// How truth stands in `LineAmount` and in flags.
inline constexpr int kTrue = -1;
inline constexpr int kFalse = 0;

/// One line of a script. `LineCode`, the subjects and `LineName` mean what the kind of the line
/// says: see language.h for the codes. The last three fields are in memory only.
struct ScriptLine {
  std::string LineText;  // made once by `ComposeLine`; the engine doesn't parse it
  int LineKind = 0;
  int LineCode = 0;  // the operator of a condition, the action of an action line
  std::string LineName;
  Currency LineAmount;
  int OfSubject = 0;
  int OfStackNum = 0;
  int Spare1 = 0;
  int ToSubject = 0;
  int ToStackNum = 0;
  int Spare2 = 0;
  bool LineSelected = false;
  int LineMark = 0;         // a `LineMarkForm`
  bool Breakpoint = false;  // tracing starts here

  bool operator==(const ScriptLine&) const = default;
};

struct Flag {
  std::string FlagName;  // as first met, right-trimmed
  std::int16_t FlagValue = kFalse;
  std::int16_t FlagPrev = kFalse;  // as it stood when the last run finished

  bool operator==(const Flag&) const = default;
};

/// A Hot-Key: Ctrl and `Key` run the script in `File`.
struct HotKey {
  char Key = ' ';
  std::string File;
  std::string Description;

  bool operator==(const HotKey&) const = default;
};

/// What runs have counted while the profile is on; see autobet/profile.h. Element n belongs to line
/// n. A line was reached as often as the sum of `Starts` up to it says, so that lines passed in a
/// row cost nothing.
struct ProfileState {
  bool On = false;
  std::vector<std::int64_t> Starts;
  std::vector<std::int64_t> Fired;
};

struct ScriptState {
  // The lines. The table may be longer than the script: a Hot-Key never shrinks it. Whoever changes
  // lines or flags by hand calls `ScriptEdited` (script.h).
  std::vector<ScriptLine> Script;  // line n is element n - 1
  int ScrCount = 0;                // lines of the script
  std::vector<Flag> Flags;
  std::vector<std::string> ScriptLabels;
  bool FlagsTouched = true;  // a flag may differ from its `FlagPrev`
  unsigned ScriptEdits = 0;  // how often anything about the lines has changed
  int ScriptLoads = 0;       // how often the lines were replaced by other than an edit
  bool ScriptStale = true;   // names and codes are to be resolved anew before the next run

  bool ScriptUnsaved = false;   // lines differ from those in the file
  bool ScriptChanged = false;   // the player is to be offered the initializing cycle
  bool ScriptCopyMode = false;  // "Copy To" or "Paste From" an Auto-Bet file is at work
  bool HotKeyRunning = false;
  int ScriptInsertLine = 1;
  std::string FindText;                   // what was last looked for
  std::vector<ScriptLine> LineClipboard;  // the lines last cut or copied
  ProfileState Profile;

  // The box of the script, and what the log knew of it at the end of the last roll.
  int AutoBetActive = 0;
  int AutoBetActivePrev = 0;
  std::string AutoBetFile;  // full path, empty for none
  std::string AutoBetFilePrev;
  std::string AutoBetFileStamp;  // what told the file from others when it was read or written last
  std::string AutoBetOutputFile;

  // The run.
  bool AutoBetRunning = false;  // clearing it stops the engine within 500 lines
  bool AutoBetAtWork = false;   // from the first line of a run to the end of its pause
  int ScrLine = 0;              // the current line, for whoever tells of it
  int ShowStepsMode = 0;
  std::uint32_t AutoBetStartTime = 0;  // milliseconds
  std::vector<HotKey> HotKeys;         // in their order on the screen
  bool HotKeysDamaged = false;         // their file held what couldn't be read
  bool HotKeysUnsaved = false;         // their file couldn't be written
  std::string AutoBetStatus;  // what the table's status line says of the run; empty for nothing
};
