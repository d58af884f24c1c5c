#include <gtest/gtest.h>

#include "core/headless_host.h"
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

  int shown_ = 0;
};

TEST_F(Messages, NoFlagsMeanNoScreen) {
  ShowMessage("text", "title", 130, NoScreen);
  EXPECT_EQ(shown_, 0);
  EXPECT_EQ(Game.MsgText, "text");
}

TEST_F(Messages, MinimisedTableDropsAPlainMessage) {
  Game.TableMinimised = true;
  Game.KeepRolling = Game.AutoBetRunning = true;
  ShowMessage("text", "title", 130, PlainOk);
  EXPECT_EQ(shown_, 0);
  EXPECT_TRUE(Game.KeepRolling);
  EXPECT_TRUE(Game.AutoBetRunning);
}

TEST_F(Messages, MinimisedTableStopsTheRunAtAQuestion) {
  for (const int flags : {YesNo, OkStop, InputOk, OkTick}) {
    Game.TableMinimised = true;
    Game.KeepRolling = Game.AutoBetRunning = true;
    Game.MsgAnswer = AnswerYes;
    ShowMessage("text", "title", 130, flags);
    EXPECT_EQ(shown_, 0);
    EXPECT_FALSE(Game.KeepRolling);
    EXPECT_FALSE(Game.AutoBetRunning);
    EXPECT_EQ(Game.MsgAnswer, AnswerYes);
  }
}

TEST_F(Messages, ButtonsGiveTheirAnswers) {
  const int answers[] = {1, 6, 7, 2};
  for (int button = 0; button < 4; ++button) {
    PressMessageButton(button, false, "", "");
    EXPECT_EQ(Game.MsgAnswer, answers[button]);
  }
}

TEST_F(Messages, HideBoxSilencesItsClassOnly) {
  struct {
    int Flag;
    bool Hyper;
    int Left;
  } const cases[] = {{HideActions, false, 30},
                     {HideLimits, false, 29},
                     {HideCharges, true, 27},
                     {HideAutoBet, false, 23},
                     {HideAutoBet, true, 15}};
  for (const auto& expected : cases) {
    Game.Notify = 31;
    Game.HyperDriveOn = expected.Hyper;
    Game.MsgFlags = 513 | expected.Flag;
    PressMessageButton(0, false, "", "");
    EXPECT_EQ(Game.Notify, 31);
    PressMessageButton(0, true, "", "");
    EXPECT_EQ(Game.Notify, expected.Left);
  }
}

TEST_F(Messages, NoticesCarryTheirHideBox) {
  ShowNotice(NoticeActions, "title", 508);
  EXPECT_EQ(Game.MsgFlags, 66049);
  ShowNotice(NoticeCharges, "title", 508);
  EXPECT_EQ(Game.MsgFlags, 257 + 0x40000);
  EXPECT_EQ(shown_, 2);
}

TEST_F(Messages, NoticesAreNotWantedUnderHyperDrive) {
  EXPECT_TRUE(NoticeWanted(NoticeLimits));
  Game.Notify = 15 - NoticeLimits;
  EXPECT_FALSE(NoticeWanted(NoticeLimits));
  EXPECT_TRUE(NoticeWanted(NoticeLimits | NoticeActions));
  Game.HyperDriveOn = true;
  EXPECT_FALSE(NoticeWanted(NoticeActions));
}

TEST_F(Messages, YesToInterruptingStopsAutoBet) {
  for (const bool hyper : {false, true}) {
    Game.HyperDriveOn = hyper;
    Game.AutoBetRunning = Game.KeepRolling = true;
    Game.StopMessage.clear();
    Game.MsgTitle = "Auto-Bet Active";
    PressMessageButton(2, false, "", "");
    EXPECT_TRUE(Game.AutoBetRunning);
    PressMessageButton(1, false, "", "");
    EXPECT_FALSE(Game.AutoBetRunning);
    EXPECT_FALSE(Game.KeepRolling);
    EXPECT_EQ(Game.StopMessage, hyper ? "Auto-Betting interrupted." : "");
  }
}

TEST_F(Messages, OtherTitlesInterruptNothing) {
  Game.AutoBetRunning = true;
  Game.MsgTitle = "Hyper-Drive Active";
  PressMessageButton(1, false, "", "");
  EXPECT_TRUE(Game.AutoBetRunning);
}

TEST_F(Messages, InputBoxesFillTheRequests) {
  Game.MsgFlags = TwoInputsOkCancel;
  PressMessageButton(0, false, "1,250", "-7.5");
  EXPECT_EQ(Game.ChangeRequest, Currency(1'250));
  EXPECT_EQ(Game.ChangeRequest2, Currency::FromRaw(-75'000));
  Game.MsgFlags = InputOk;
  PressMessageButton(0, false, "", "42");
  EXPECT_EQ(Game.ChangeRequest, Currency(42));
}

TEST_F(Messages, MessageWithoutInputLeavesTheRequest) {
  Game.ChangeRequest = 25;
  Game.MsgFlags = OkStop;
  PressMessageButton(0, false, "", "");
  EXPECT_EQ(Game.ChangeRequest, Currency(25));
}

TEST_F(Messages, HeadlessHostAnswersByRule) {
  TheHost = HeadlessHost();
  EXPECT_FALSE(AskYesNo("Sure?", "title", 1));
  ShowMessage("text", "title", 1, YesNoCancel);
  EXPECT_EQ(Game.MsgAnswer, AnswerNo);
  ShowMessage("text", "title", 1, OkStop);
  EXPECT_EQ(Game.MsgAnswer, AnswerOk);
  Game.MsgInput = {"500", "3"};
  ShowMessage("text", "title", 1, TwoInputsOkCancel);
  EXPECT_EQ(Game.MsgAnswer, AnswerOk);
  EXPECT_EQ(Game.ChangeRequest, Currency(500));
  EXPECT_EQ(Game.ChangeRequest2, Currency(3));
}

TEST_F(Messages, HeadlessTimeMovesOnlyWithWaits) {
  TheHost = HeadlessHost();
  const std::uint32_t start = TheHost.Milliseconds();
  EXPECT_EQ(TheHost.Milliseconds(), start);
  TheHost.Wait(250);
  EXPECT_EQ(TheHost.Milliseconds(), start + 250);
}

}  // namespace
