// Boxes that action lines show.
#pragma once

#include <optional>

#include "autobet/actions.h"

constexpr bool IsMessageAction(int action) { return action == 79 || action == 84; }
constexpr bool IsQuestionAction(int action) { return action == 82 || action == 85; }

/// "Show message:" and "Yes/No question:", with a text or a value: gathers the text in `MsgText`,
/// and after the last line of those in a row shows it. Messages that `Notify` silences are passed
/// over. The answer is in `MsgAnswer`; under Hyper-Drive a box clears `KeepRolling`.
void PerformMessage(const ScriptLine& line, const ActionPlan& plan);

/// The amount that the player enters for "Get input and bet it on"; nothing when the table is
/// minimised, where nobody can answer.
std::optional<Currency> AskForAmount(const ScriptLine& line, const ActionPlan& plan);
