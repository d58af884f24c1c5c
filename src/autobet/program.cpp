#include "autobet/program.h"

#include <string>
#include <unordered_map>

#include "autobet/language.h"
#include "autobet/script.h"

namespace {

Program program;

/// The lines of the labels by how they are searched; of equal ones the first.
std::unordered_map<std::string, int> FindLabels() {
  std::unordered_map<std::string, int> labels;
  for (int number = 1; number <= Game.ScrCount; ++number)
    if (Line(number).LineKind == LabelLine)
      labels.emplace(TrimmedLower(Line(number).LineName), number);
  return labels;
}

ProgramLine PlanLine(int number, const std::unordered_map<std::string, int>& labels) {
  const ScriptLine& line = Line(number);
  ProgramLine planned;
  planned.Kind = line.LineKind;
  planned.Code = line.LineCode;
  planned.Breakpoint = line.Breakpoint;
  program.HasBreakpoints |= line.Breakpoint;
  if (line.LineKind == ConditionLine) {
    planned.Plan = static_cast<int>(program.Conditions.size());
    program.Conditions.push_back(PlanCondition(number));
  } else if (line.LineKind == ActionLine) {
    planned.Plan = static_cast<int>(program.Actions.size());
    program.Actions.push_back(PlanAction(number));
    if (line.LineCode == GoTo || line.LineCode == Gosub) {
      const std::string wanted = TrimmedLower(line.LineName);
      const auto label = labels.find(wanted);
      if (wanted.empty())
        planned.JumpTo = kNextLine;
      else if (label != labels.end())
        planned.JumpTo = label->second;
    }
  }
  return planned;
}

/// Finds where each statement goes on whose last block is false.
void PlanFalseStatements() {
  auto behind = static_cast<int>(program.Lines.size()) + 1;  // the actions from this line on
  int ifFalse = 0;
  for (int number = behind - 1; number >= 1; --number) {
    ProgramLine& line = program.Lines[static_cast<std::size_t>(number - 1)];
    if (line.Kind == RemarkLine) continue;
    if (line.Kind == ConditionLine)
      line.IfFalse = ifFalse;
    else
      ifFalse = line.Kind == ThenLine ? behind : 0;
    if (line.Kind != ActionLine) behind = number;
  }
}

/// Gives the start of each statement what its condition needs.
void PlanStatements() {
  for (std::size_t place = 1; place < program.Lines.size(); ++place) {
    const ProgramLine& condition = program.Lines[place];
    ProgramLine& start = program.Lines[place - 1];
    const bool starts = start.Kind == WhenLine || start.Kind == WhileLine;
    if (!starts || condition.Kind != ConditionLine) continue;
    start.TestedAtOnce = true;
    start.Plan = condition.Plan;
    start.IfFalse = condition.IfFalse;
  }
}

void MakeProgram() {
  program = Program();
  const auto labels = FindLabels();
  const FlagPlaces flags;
  for (int number = 1; number <= Game.ScrCount; ++number)
    program.Lines.push_back(PlanLine(number, labels));
  PlanFalseStatements();
  PlanStatements();
  while (program.FirstLine <= Game.ScrCount && Line(program.FirstLine).LineKind == RemarkLine)
    ++program.FirstLine;
}

}  // namespace

const Program& CurrentProgram() {
  if (Game.ScriptStale) {
    MakeProgram();
    Game.ScriptStale = false;
  }
  return program;
}
