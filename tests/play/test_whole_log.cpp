// One game that has every kind of line in its log, against the words worked out by hand.
#include <iterator>

#include "bets/bankroll.h"
#include "dice/tape.h"
#include "stats/events_log_view.h"
#include "support/table_fixture.h"

namespace {

enum Settling { TakeOrLeave, SameAgain, SameAgainAfterLoss, PressDoubleIt, ParlayIt };

class WholeLog : public FolderTest {
 protected:
  WholeLog() {
    LogEverything();
    Game.KeepLatestRollOnTop = true;
    Game.ReSeed = false;
    Game.AutoAdjust = AdjustManual;
    Game.HandleWinningBets = WinManual;
    Game.HandleLosingBets = LossManual;
    Game.Notify = 0;
    Game.RngState = 41;
  }

  static void PutAll(std::initializer_list<std::pair<int, int>> changes) {
    for (const auto& [betId, change] : changes) Put(betId, change);
  }

  /// A roll with the answers to its settle screens.
  void RollAnd(int die1, int die2, std::initializer_list<int> buttons) {
    SettleButtons = buttons;
    Roll(die1, die2);
    EXPECT_TRUE(SettleButtons.empty()) << die1 << "-" << die2;
  }

  void PlayTape(int die1, int die2) {
    Game.DiceRollFile = folder_.Write("tape.rol", {static_cast<char>(DiceByte(die1, die2))});
    Game.RecorderStatus = Playback;
    RollDice();
    Game.RecorderStatus = 0;
  }

  /// Throws these dice only: the first die is 1 to 3, and the second not below it.
  static void RollSkewed(unsigned die1, unsigned die2) {
    for (auto& column : Game.ProbMatrix[1]) column.fill(0);
    Game.ProbMatrix[1][die1 + 1][die1 + die2 - 1] = 100'000;
    Game.UseSkewedProbability = true;
    RollDice();
    Game.UseSkewedProbability = false;
  }

  void PlayBeforePoint() {
    NewGame(false);
    SeedDice(11);  // throws 2-1, then 1-4
    AtmTransaction(AtmWithdrawal, Currency::FromRaw(10'005'000));
    Game.Script.resize(1);  // a line that does nothing
    Game.ScrCount = 1;
    Game.AutoBetActive = 1;
    PutAll({{PassLine, 10}, {DontPass, 10}, {Field, 10}, {107, 1234}});
    RollAnd(6, 6, {SameAgainAfterLoss, SameAgain});
    Game.AutoBetFile = "/scripts/gr\u00FCn.bet";
    SettleButtons = {TakeOrLeave, ParlayIt, TakeOrLeave};
    RollDice();
    PlayTape(2, 2);
  }

  void PlayOnPointOf4() {
    AtmTransaction(AtmDeposit, 500);
    PutAll({{Place8, 12}, {Buy10, 20}, {Come, 10}, {DontCome, 10}});
    CallBet(Place8, CallCodeOff);
    RollDice();
    CallBet(Place8, CallCodeOn);  // undoes the call
    PutAll({{Place8, 6}, {Come4Odds + 1, 10}, {107, -34}});
    RollAnd(4, 4, {PressDoubleIt});
    CallBet(Place8, CallCodeOn);
    RemoveBet(Come4Odds + 1);
    RollAnd(5, 5, {TakeOrLeave});
    CallBet(Place8, CallCodeOff);  // undoes the call
    PutAll({{Place8, -24}, {Lay4, 40}});
    RollAnd(2, 2, {TakeOrLeave, TakeOrLeave});
  }

  void PlayToTheEnd() {
    Game.AutoBetActive = 0;
    Roll(5, 6);
    Game.ScrCount = 0;
    Game.AutoBetFile.clear();
    RollAnd(3, 4, {TakeOrLeave, TakeOrLeave});
    Put(PassLine, 10);
    RollSkewed(2, 3);
    Put(DontCome, 10);
    Game.PrbFileName = "loaded.prb";
    RollSkewed(2, 2);
    RemoveBet(DontCome4);
    Put(PassLineOdds, 20);
    RollAnd(6, 1, {TakeOrLeave, TakeOrLeave, TakeOrLeave});
    NewGame(false);
    Game.RngChoice = Rng3Congruence;
    SeedDice(77);
    Roll(1, 1);
  }

  /// The words worked out by hand. Don't Pass is pushed on roll 1; Buy 10 wins 40 less a vig of 1,
  /// and Lay 4 loses 40 with one.
  std::string Expected() const {
    std::ifstream file(KELVANOR_PROJECT "/tests/play/whole_log.txt");
    std::string text(std::istreambuf_iterator<char>(file), {});
    const std::string tape = "{tape}";
    return text.replace(text.find(tape), tape.size(), folder_ / "tape.rol");
  }
};

TEST_F(WholeLog, EveryKindOfLineIsToldInItsWordsAndItsPlace) {
  PlayBeforePoint();
  PlayOnPointOf4();
  PlayToTheEnd();
  std::string told;
  for (const std::string& line : ReadLogLines(1, LogLineCount())) told += line + "\n";
  EXPECT_EQ(told, Expected());
  EXPECT_EQ(Game.LogTopLine, LogLineCount() - 1);
  // In the file a character is a byte, and a line ends in two.
  const std::string file = folder_.Read("Events Log.txt");
  EXPECT_NE(file.find("gr\xFCn.bet"), std::string::npos);
  EXPECT_EQ(std::count(file.begin(), file.end(), '\r'), LogLineCount());
  EXPECT_EQ(file.substr(0, 25), " New game started\r\n      ");
}

}  // namespace
