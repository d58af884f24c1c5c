#include "autobet/message_actions.h"

#include "autobet/actions.h"
#include "autobet/script.h"
#include "autobet/values.h"
#include "bets/turns.h"
#include "core/help_topics.h"
#include "core/messages.h"
#include "core/text.h"

namespace {

bool MessagesWanted() {
  return (Game.Notify & (Game.HyperDriveOn ? NoticeAutoBetHyper : NoticeAutoBet)) != 0;
}

/// Shows `MsgText`; false when the table is minimised, and the run stops. What Hyper-Drive has only
/// counted is reckoned up first: the player can look at it, and may change bets and rules.
bool ShowBox(int flags) {
  const bool seen = !Game.TableMinimised;
  BeforeScreen();
  Game.MsgTitle = "Auto-Bet line # " + std::to_string(Game.ScrLine);
  Game.MsgCtx = kTopicScripts;
  Game.MsgFlags = flags;
  ShowMessage(1);
  AfterScreen();
  if (Game.HyperDriveOn) Game.KeepRolling = false;
  return seen;
}

bool AreOfOneBox(int action, int other) {
  return (IsMessageAction(action) && IsMessageAction(other)) ||
         (IsQuestionAction(action) && IsQuestionAction(other));
}

std::string TextOfLine(const ScriptLine& line) {
  if (line.LineCode == ShowMessageText || line.LineCode == AskQuestion)
    return RightTrimmed(line.LineName);
  return MoneyText(ValueOf(line.OfSubject, line.OfStackNum)) + " ;";
}

/// What the lines in a row that end with line `last` say. They are gathered when the box is shown:
/// between two lines another message may have used the slots.
std::string TextOfBox(int last) {
  int first = last;
  while (AreOfOneBox(ActionOf(last), ActionOf(first - 1))) --first;
  std::string text;
  for (int number = first; number <= last; ++number) {
    text += TextOfLine(Line(number));
    // A text with a ";" at its end is joined by the next one; any other ends its line.
    if (text.ends_with(';'))
      text.pop_back();
    else
      text += '\n';
  }
  return text;
}

std::string PromptOf(const ScriptLine& line) {
  constexpr std::size_t kTarget = 34;  // where the words of the target begin
  const std::string target = line.LineText.size() > kTarget ? line.LineText.substr(kTarget) : "";
  return "Please enter a value to bet on:  " + target;
}

}  // namespace

void PerformMessage(int number) {
  const int action = ActionOf(number);
  if (AreOfOneBox(action, ActionOf(number + 1))) return;
  const bool question = IsQuestionAction(action);
  if (!question && !MessagesWanted()) return;
  Game.MsgText = TextOfBox(number);
  const bool seen = ShowBox(question ? +YesNo : ButtonOk | HideAutoBet);
  if (seen && !question) Game.MsgAnswer = AnswerOk;
}

std::optional<Currency> AskForAmount(int number) {
  const bool asked = IsMessageAction(ActionOf(number - 1));
  Game.MsgText = asked ? TextOfBox(number - 1) : PromptOf(Line(number));
  Game.MsgInput = {};
  if (!ShowBox(InputOk)) return {};
  return Game.ChangeRequest;
}
