#include "core/messages.h"

#include <array>

#include "core/host.h"
#include "core/text.h"

namespace {

constexpr std::array<int, 4> kButtonAnswers = {AnswerOk, AnswerYes, AnswerNo, AnswerCancel};

/// A hide box and the bits of `Notify` that it silences in normal play and under Hyper-Drive.
struct HideBox {
  int Flag;
  int Normal;
  int Hyper;
};

constexpr std::array<HideBox, 4> kHideBoxes = {{
    {HideActions, NoticeActions, NoticeActions},
    {HideLimits, NoticeLimits, NoticeLimits},
    {HideCharges, NoticeCharges, NoticeCharges},
    {HideAutoBet, NoticeAutoBet, NoticeAutoBetHyper},
}};

void InterruptAutoBet() {
  if (Game.MsgTitle != "Auto-Bet Active" || Game.MsgAnswer != AnswerYes || !Game.AutoBetRunning) {
    return;
  }
  Game.AutoBetRunning = false;
  Game.KeepRolling = false;
  if (Game.HyperDriveOn) Game.StopMessage = "Auto-Betting interrupted.";
}

void SilenceNoticeClass() {
  for (const HideBox& box : kHideBoxes) {
    if (Game.MsgFlags & box.Flag) Game.Notify &= ~(Game.HyperDriveOn ? box.Hyper : box.Normal);
  }
  TheHost.RefreshViews();
}

/// A single box is the first one, whichever of the two flags asked for it.
void TakeInputs(const std::string& firstInput, const std::string& secondInput) {
  const int boxes = Game.MsgFlags & (InputFirst | InputSecond);
  if (boxes == 0) return;
  const bool single = boxes != (InputFirst | InputSecond);
  Game.ChangeRequest = ParseAmount(single && firstInput.empty() ? secondInput : firstInput);
  Game.ChangeRequest2 = single ? Currency() : ParseAmount(secondInput);
  Game.MsgInput = {firstInput, secondInput};
}

}  // namespace

void ShowMessage(int modal) {
  if (Game.MsgFlags == NoScreen) return;
  if (Game.TableMinimised) {
    if (Game.MsgFlags == PlainOk) return;
    Game.AutoBetRunning = false;
    Game.KeepRolling = false;
    return;
  }
  TheHost.ShowMessage(modal != 0);
}

void ShowMessage(const std::string& text, const std::string& title, int helpTopic, int flags) {
  Game.MsgText = text;
  Game.MsgTitle = title;
  Game.MsgCtx = helpTopic;
  Game.MsgFlags = flags;
  ShowMessage(1);
}

bool AskYesNo(const std::string& text, const std::string& title, int helpTopic) {
  ShowMessage(text, title, helpTopic, YesNo);
  return !Game.TableMinimised && Game.MsgAnswer == AnswerYes;
}

void ShowNotice(int classes, const std::string& title, int helpTopic) {
  Game.MsgTitle = title;
  Game.MsgCtx = helpTopic;
  Game.MsgFlags = classes == NoticeCharges ? OkTick : OkStop;
  for (const HideBox& box : kHideBoxes) {
    if (classes & (box.Normal | box.Hyper)) Game.MsgFlags |= box.Flag;
  }
  ShowMessage(1);
}

void PressMessageButton(int button, bool hideChecked, const std::string& firstInput,
                        const std::string& secondInput) {
  if (button < 0 || button >= static_cast<int>(kButtonAnswers.size())) return;
  Game.MsgAnswer = kButtonAnswers[static_cast<unsigned>(button)];
  InterruptAutoBet();
  if (hideChecked && (Game.MsgFlags & AnyHideBox)) SilenceNoticeClass();
  TakeInputs(firstInput, secondInput);
}
