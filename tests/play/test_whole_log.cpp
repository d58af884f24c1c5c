// One game that has every kind of line in its log, against the words worked out by hand.
#include <algorithm>

#include "bets/bankroll.h"
#include "bets/make_bet.h"
#include "bets/new_game.h"
#include "dice/generators.h"
#include "dice/tape.h"
#include "play/roll_cycle.h"
#include "stats/events_log.h"
#include "stats/events_log_view.h"
#include "support/scratch_folder.h"
#include "support/table_fixture.h"

namespace {

enum Settling { TakeOrLeave, SameAgain, SameAgainAfterLoss, PressDoubleIt, ParlayIt };

class WholeLog : public TableTest {
 protected:
  void SetUp() override {
    TableTest::SetUp();
    Game.DataPath = folder_ / "";
    Game.EventsLogFile = folder_ / "log.txt";
    Game.EventsLogActive = Game.KeepLatestRollOnTop = true;
    Game.LogRolls = Game.LogBetChanges = Game.LogBetsWon = Game.LogBetsLost = true;
    Game.LogChipStackChanges = Game.LogPassesMisses = true;
    Game.LogShooterChanges = Game.LogBankrollChanges = true;
    Game.ReSeed = false;
    Game.AutoAdjust = AdjustManual;
    Game.HandleWinningBets = WinManual;
    Game.HandleLosingBets = LossManual;
    Game.Notify = 0;
    Game.RngState = 41;
  }
  void TearDown() override {
    Game.DataPath.clear();
    TableTest::TearDown();
  }

  static void Seed(int seed) {
    Game.ChangeRequest = seed;
    SeedRng(SeedInChangeRequest);
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
    Seed(11);  // throws 2-1, then 1-4
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
    Seed(77);
    Roll(1, 1);
  }

  std::string Expected() const {
    return " New game started\n"
           "      Beginning bankroll: $500\n"
           "------New shooter coming out----------\n"
           "      RNG #1 seeded: 41\n"
           "      Auto-Bets activated (untitled)\n"
           "      Bankroll increased to $1,500.50 ($1,000.50 ATM withdrawal)\n"
           "      $10 bet on Pass Line\n"
           "      $10 bet on Don't Pass\n"
           "      $10 bet on Field\n"
           "      Chip-Stack #7 increased to $1,234\n"
           // Don't Pass is pushed.
           " Roll #1:  12 (6.6) from manual roll pad\n"
           "      Miss (craps natural)\n"
           "      Pass Line bet lost $10\n"
           "      Field bet won $20\n"
           "      Bankroll increased to $1,510.50 ($10 gain)\n"
           "      Auto-Bets activated (gr\u00FCn.bet)\n"
           " Roll #2:  3 (2.1) from RNG #1\n"
           "      Miss (craps natural)\n"
           "      Pass Line bet lost $10\n"
           "      Don't Pass bet won $10\n"
           "      Field bet won $10\n"
           "      Bankroll increased to $1,520.50 ($10 gain)\n"
           "      Don't Pass bet increased to $20\n"
           "      Field bet removed\n"
           " Roll #3:  4 (2.2) from " +
           (folder_ / "tape.rol") +
           "\n"
           "      Point established\n"
           "      Bankroll decreased to $1,020.50 ($500 ATM deposit)\n"
           "      $12 bet on Place 8\n"
           "      Place 8 bet called OFF\n"
           "      $20 bet on Buy 10\n"
           "      $10 bet on Come\n"
           "      $10 bet on Don't Come\n"
           " Roll #4:  5 (1.4) from RNG #1\n"
           "      $10 Don't Come bet moved to Don't Come 5\n"
           "      $10 Come bet moved to Come 5\n"
           "      Don't Come 5 bet still $10\n"
           "      Come 5 bet still $10\n"
           "      $10 bet on Come 5 Odds\n"
           "      Place 8 bet increased to $18\n"
           "      Place 8 bet, OFF button removed\n"
           "      Chip-Stack #7 decreased to $1,200\n"
           " Roll #5:  8 (4.4) from manual roll pad\n"
           "      Place 8 bet won $21\n"
           "      Bankroll increased to $1,041.50 ($21 gain)\n"
           "      Come 5 Odds bet removed\n"
           "      Place 8 bet increased to $36\n"
           "      Place 8 bet called ON\n"
           // 40 less a vig of 1.
           " Roll #6:  10 (5.5) from manual roll pad\n"
           "      Buy 10 bet won $39\n"
           "      Bankroll increased to $1,080.50 ($39 gain)\n"
           "      $40 bet on Lay 4\n"
           "      Place 8 bet decreased to $12\n"
           "      Place 8 bet, ON button removed\n"
           "      Buy 10 bet removed\n"
           " Roll #7:  4 (2.2) from manual roll pad\n"
           "      Pass (point rolled)\n"
           "      Don't Pass bet lost $20\n"
           // With a vig of 1.
           "      Lay 4 bet lost $41\n"
           "      Bankroll decreased to $1,019.50 ($61 loss)\n"
           "      Auto-Bets deactivated\n"
           " Roll #8:  11 (5.6) from manual roll pad\n"
           "      Pass (natural)\n"
           "      Auto-Bets deactivated\n"
           " Roll #9:  7 (3.4) from manual roll pad\n"
           "      Pass (natural)\n"
           "      Come 5 bet lost $10\n"
           "      Don't Come 5 bet won $10\n"
           "      Don't Come 5 bet removed\n"
           "      $10 bet on Pass Line\n"
           " Roll #10:  5 (2.3) from RNG #1 using untitled probability matrix\n"
           "      Point established\n"
           "      $10 bet on Don't Come\n"
           " Roll #11:  4 (2.2) from RNG #1 using probability matrix: loaded.prb\n"
           "      $10 Don't Come bet moved to Don't Come 4\n"
           "      Don't Come 4 bet removed\n"
           "      $20 bet on Pass Line Odds\n"
           " Roll #12:  7 (6.1) from manual roll pad\n"
           "      Miss (seven-out)\n"
           "      Place 8 bet lost $12\n"
           "      Pass Line bet lost $10\n"
           "      Pass Line Odds bet lost $20\n"
           "      Bankroll decreased to $977.50 ($42 loss)\n"
           "------New shooter coming out----------\n"
           "======================================\n"
           " New game started\n"
           "      Beginning bankroll: $500\n"
           "------New shooter coming out----------\n"
           "      RNG #3 seeded: 11\n"
           " Roll #1:  2 (1.1) from manual roll pad\n"
           "      Miss (craps natural)\n";
  }

  const ScratchFolder folder_{"whole_log"};
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
  const std::string file = folder_.Read("log.txt");
  EXPECT_NE(file.find("gr\xFCn.bet"), std::string::npos);
  EXPECT_EQ(std::count(file.begin(), file.end(), '\r'), LogLineCount());
  EXPECT_EQ(file.substr(0, 25), " New game started\r\n      ");
}

}  // namespace
