// The script as the engine runs it: every code resolved, every name an index.
#pragma once

#include <vector>

#include "autobet/actions.h"
#include "autobet/conditions.h"

inline constexpr int kNextLine = -1;

/// A line of the program.
struct ProgramLine {
  int Kind = 0;
  int Code = 0;  // of an action
  int Plan = 0;  // its place among the conditions or the actions
  bool Breakpoint = false;
  // Of a "when" or "while": its condition follows, and `Plan` and `IfFalse` are that one's.
  bool TestedAtOnce = false;
  // Of "Go to" and "Gosub": the line of the label, 0 when there is none of that name, `kNextLine`
  // when no label is named.
  int JumpTo = 0;
  // Of a condition that is the last block before a "then": the line behind the actions, where a
  // statement goes on that is false by it. 0 for none.
  int IfFalse = 0;
};

struct Program {
  std::vector<ProgramLine> Lines;  // line n is element n - 1
  std::vector<ConditionPlan> Conditions;
  std::vector<ActionPlan> Actions;
  int FirstLine = 1;            // the first line that is no remark
  bool HasBreakpoints = false;  // of any line
};

/// The program of the script in force, made anew when `ScriptStale` is raised.
const Program& CurrentProgram();
