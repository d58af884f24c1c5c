#include "bets/headless_host.h"
#include "support/table_fixture.h"

namespace {

using Messages = TableTest;

TEST_F(Messages, MinimisedTableDropsAPlainMessage) {
  for (const int flags : {NoScreen, PlainOk, YesNo, OkStop, InputOk, OkTick}) {
    Game.TableMinimised = flags != NoScreen;
    Game.KeepRolling = Game.AutoBetRunning = true;
    ShowMessage("text", "title", 130, flags);
    EXPECT_TRUE(Shown.empty());
    EXPECT_EQ(Game.MsgText, "text");
    const bool goesOn = flags == NoScreen || flags == PlainOk;  // what asks stops the run
    EXPECT_TRUE(Game.KeepRolling == goesOn && Game.AutoBetRunning == goesOn) << flags;
  }
}

TEST_F(Messages, HeadlessHostAnswersByRule) {
  TheHost = HeadlessHost();
  EXPECT_FALSE(AskYesNo("Sure?", "title", 1));
  ShowMessage("text", "title", 1, OkStop);
  EXPECT_EQ(Game.MsgAnswer, AnswerOk);
  Game.MsgInput = {"500", "3"};
  ShowMessage("text", "title", 1, TwoInputsOkCancel);
  EXPECT_EQ(std::pair(Game.MsgAnswer, Game.ChangeRequest), std::pair(+AnswerOk, Currency(500)));
  EXPECT_EQ(Game.ChangeRequest2, Currency(3));
  const std::uint32_t start = TheHost.Milliseconds();
  TheHost.Wait(250);
  EXPECT_EQ(TheHost.Milliseconds(), start + 250);
}

}  // namespace
