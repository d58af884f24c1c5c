#include <gtest/gtest.h>

#include "bets/headless_host.h"
#include "core/messages.h"
#include "rules/defaults.h"

namespace {

class Messages : public ::testing::Test {
 protected:
  void SetUp() override {
    LayDownDefaults();
    TheHost = HeadlessHost();
    TheHost.ShowMessage = [this](bool) { ++shown_; };
  }
  void TearDown() override { TheHost = HeadlessHost(); }

  static void Press(int button) { PressMessageButton(button, false, "", ""); }

  int shown_ = 0;
};

TEST_F(Messages, MinimisedTableDropsAPlainMessage) {
  for (const int flags : {NoScreen, PlainOk, YesNo, OkStop, InputOk, OkTick}) {
    Game.TableMinimised = flags != NoScreen;
    Game.KeepRolling = Game.AutoBetRunning = true;
    ShowMessage("text", "title", 130, flags);
    EXPECT_EQ(shown_, 0);
    EXPECT_EQ(Game.MsgText, "text");
    const bool goesOn = flags == NoScreen || flags == PlainOk;  // what asks stops the run
    EXPECT_EQ(Game.KeepRolling, goesOn) << flags;
    EXPECT_EQ(Game.AutoBetRunning, goesOn) << flags;
  }
}

TEST_F(Messages, HideBoxSilencesItsClassOnly) {
  const struct {
    int Flag;
    bool Hyper;
    int Left;
  } cases[] = {{HideActions, false, 30},
               {HideLimits, false, 29},
               {HideCharges, true, 27},
               {HideAutoBet, false, 23},
               {HideAutoBet, true, 15}};
  for (const auto& expected : cases) {
    Game.Notify = 31;
    Game.HyperDriveOn = expected.Hyper;
    Game.MsgFlags = 513 | expected.Flag;
    Press(0);
    EXPECT_EQ(Game.Notify, 31);
    PressMessageButton(0, true, "", "");
    EXPECT_EQ(Game.Notify, expected.Left);
  }
}

TEST_F(Messages, YesToInterruptingStopsAutoBet) {
  const struct {
    const char* Title;
    bool Hyper;
    int Button;
    const char* StopMessage;  // null when the run goes on
  } cases[] = {{"Auto-Bet Active", false, 2, nullptr},
               {"Auto-Bet Active", false, 1, ""},
               {"Auto-Bet Active", true, 1, "Auto-Betting interrupted."},
               {"Hyper-Drive Active", true, 1, nullptr}};
  for (const auto& c : cases) {
    Game.HyperDriveOn = c.Hyper;
    Game.AutoBetRunning = true;
    Game.MsgTitle = c.Title;
    Press(c.Button);
    EXPECT_EQ(Game.AutoBetRunning, c.StopMessage == nullptr) << c.Title;
    EXPECT_EQ(Game.StopMessage, c.StopMessage ? c.StopMessage : "");
    EXPECT_EQ(Game.MsgAnswer, c.Button == 1 ? AnswerYes : AnswerNo);
    Game.StopMessage.clear();
  }
}

TEST_F(Messages, InputBoxesFillTheRequests) {
  Game.MsgFlags = TwoInputsOkCancel;
  PressMessageButton(0, false, "1,250", "-7.5");
  EXPECT_EQ(Game.ChangeRequest, Currency(1'250));
  EXPECT_EQ(Game.ChangeRequest2, Currency::FromRaw(-75'000));
  Game.MsgFlags = InputOk;
  PressMessageButton(0, false, "", "42");
  EXPECT_EQ(Game.ChangeRequest, Currency(42));
  Game.MsgFlags = OkStop;
  Press(0);
  EXPECT_EQ(Game.ChangeRequest, Currency(42)) << "it has no input box";
}

TEST_F(Messages, HeadlessHostAnswersByRule) {
  TheHost = HeadlessHost();
  EXPECT_FALSE(AskYesNo("Sure?", "title", 1));
  ShowMessage("text", "title", 1, OkStop);
  EXPECT_EQ(Game.MsgAnswer, AnswerOk);
  Game.MsgInput = {"500", "3"};
  ShowMessage("text", "title", 1, TwoInputsOkCancel);
  EXPECT_EQ(Game.MsgAnswer, AnswerOk);
  EXPECT_EQ(Game.ChangeRequest, Currency(500));
  EXPECT_EQ(Game.ChangeRequest2, Currency(3));
  const std::uint32_t start = TheHost.Milliseconds();
  TheHost.Wait(250);
  EXPECT_EQ(TheHost.Milliseconds(), start + 250);
}

}  // namespace
