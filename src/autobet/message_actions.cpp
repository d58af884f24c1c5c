#include "autobet/message_actions.h"

#include "autobet/language.h"
#include "autobet/script.h"
#include "autobet/values.h"
#include "core/ledger.h"
#include "core/messages.h"
#include "core/text.h"

namespace {

constexpr int kTopicAutoBet = 640;
constexpr std::size_t kWordsOfTarget = 34;  // where the target of "Get input" begins in its line

bool MessagesWanted() {
  return (Game.Notify & (Game.HyperDriveOn ? NoticeAutoBetHyper : NoticeAutoBet)) != 0;
}

/// Shows `MsgText`; false when the table is minimised, and the run stops. What Hyper-Drive has only
/// counted is reckoned up first: the player can look at it, and may change bets and rules.
bool ShowBox(int flags) {
  const bool seen = !Game.TableMinimised;
  const bool counting = LedgerIsOpen();
  if (counting) SettleLedger();
  Game.MsgTitle = "Auto-Bet line # " + std::to_string(Game.ScrLine);
  Game.MsgCtx = kTopicAutoBet;
  Game.MsgFlags = flags;
  ShowMessage(1);
  if (counting) Game.SnapshotsDue = Game.WorkingTouched = true;
  if (Game.HyperDriveOn) Game.KeepRolling = false;
  return seen;
}

std::string TextOfLine(const ScriptLine& line) {
  if (line.LineCode == ShowMessageText || line.LineCode == AskQuestion)
    return RightTrimmed(line.LineName);
  return MoneyText(ValueOf(line.OfSubject, line.OfStackNum)) + " ;";
}

/// A text with a ";" at its end is joined by the next one; any other ends its line.
void AddText(std::string text) {
  if (text.ends_with(';'))
    text.pop_back();
  else
    text += '\n';
  Game.MsgText += text;
}

}  // namespace

void PerformMessage(const ScriptLine& line, const ActionPlan& plan) {
  const bool question = IsQuestionAction(line.LineCode);
  const bool shown = question || MessagesWanted();
  if (!shown && !plan.FeedsInput) return;
  if (plan.StartsText) Game.MsgText.clear();
  AddText(TextOfLine(line));
  if (!plan.EndsText || !shown) return;
  const bool seen = ShowBox(question ? +YesNo : ButtonOk | HideAutoBet);
  if (seen && !question) Game.MsgAnswer = AnswerOk;
}

std::optional<Currency> AskForAmount(const ScriptLine& line, const ActionPlan& plan) {
  if (!plan.AfterMessage) {
    Game.MsgText = "Please enter a value to bet on:  ";
    if (line.LineText.size() > kWordsOfTarget) Game.MsgText += line.LineText.substr(kWordsOfTarget);
  }
  Game.MsgInput = {};
  if (!ShowBox(InputOk)) return {};
  return Game.ChangeRequest;
}
