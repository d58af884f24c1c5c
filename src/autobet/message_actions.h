// Boxes that action lines show.
#pragma once

#include <optional>

#include "autobet/language.h"
#include "core/currency.h"

constexpr bool IsMessageAction(int action) {
  return action == ShowMessageText || action == ShowMessageValue;
}
constexpr bool IsQuestionAction(int action) {
  return action == AskQuestion || action == AskQuestionValue;
}

/// "Show message:" and "Yes/No question:" on line `number`. The last of those in a row shows the
/// texts and values of all of them; messages only when `Notify` lets them through. The answer is in
/// `MsgAnswer`; under Hyper-Drive a box clears `KeepRolling`.
void PerformMessage(int number);

/// The amount that the player enters for "Get input and bet it on" of line `number`, asked for by
/// the messages in front of it or by the line's own words; nothing when the table is minimised,
/// where nobody can answer. Under Hyper-Drive the box clears `KeepRolling`.
std::optional<Currency> AskForAmount(int number);
