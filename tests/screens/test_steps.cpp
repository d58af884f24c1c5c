// A script watched line by line, with the screens of figures beside it.
#include <QWindow>

#include "autobet/editor.h"
#include "autobet/script_reader.h"
#include "core/auto_play_settings.h"
#include "screens/screen_driver.h"
#include "screens/scripts/frmSteps.h"

namespace {

constexpr const char* kScript =
    "Do this . . .\nInvoke \"Show Steps\"\nWhile . . .\nBankroll is equal to $ 500\n"
    "or while . . .\nBankroll is equal to $ 0\nthen . . .\nBet $ 10 on Pass Line\n"
    "Show message: \"Hello\"\n";

}  // namespace

class TestSteps : public ScreenTest {
  Q_OBJECT

 private slots:
  void init() {
    LayTable();
    Game.EventsLogFile = Game.DataPath + "Events Log.txt";
    Game.HandleWinningBets = WinSameBet;
    Game.HandleLosingBets = LossSameBet;
  }

  void everyLineIsShownUntilThePlayerGoesOnOrCancels() {
    Put(kScript);
    Roll([&] {
      const Qt::Key keys[] = {Qt::Key_Return, Qt::Key_Space, Qt::Key_Enter};
      if (seen_.size() <= 3) return QTest::keyClick(steps_, keys[seen_.size() - 1]);
      ClickButton(steps_, "cmdNextAutoBet");
    });
    QCOMPARE(seen_.size(), 6);
    QCOMPARE(seen_[0],
             "Line #3| While . . .|Status: This block of conditions will be true if each "
             "line is true.");
    QCOMPARE(seen_[2], "||Status: All the conditions in the block were true. ");
    QCOMPARE(PlannedMessages.Shown.back().Title, "Auto-Bet line # 9");
    QVERIFY(!steps_->isVisible() && Game.Bets[PassLine] == 10);
    Game.ShowStepsMode = 0;  // else the next run is traced from its first line on
    for (const bool byKey : {true, false}) {
      Roll([&] {
        if (byKey) return QTest::keyClick(steps_, Qt::Key_Escape);
        Command(*steps_, "mnuCancel");
      });
      QVERIFY(seen_.size() == 1 && seen_[0].startsWith("Line #3|"));
      QVERIFY(!steps_->isVisible() && Game.ShowStepsMode == 0);
    }
  }

  void screensCanBeUsedWhileTheTableWaits() {
    Put(kScript);
    Screen* flags = ShowScreen(FlagsWindow);  // one that stands already
    Game.Flags = {{"Ready", kFalse, kFalse}};
    Roll([&] {
      QVERIFY(steps_->isModal());
      if (seen_.size() > 1) return QTest::keyClick(steps_, Qt::Key_Return);
      for (QAction* action : Find<QMenu>(steps_, "mnuView")->actions()) action->trigger();
      for (const int id : {BankrollWindow, EventsLogWindow, SummaryWindow})
        QVERIFY(FindScreen(WindowId(id)) && FindScreen(WindowId(id))->isVisible());
      // Through the window system, which holds back what is blocked.
      ClickThrough(flags, "cmdSelectAll");
      ClickThrough(flags, "cmdSetTruth_0");
      QTest::mouseClick(table_->windowHandle(), Qt::RightButton, {}, {300, 300});
      Find<QAction>(table_.get(), "mnuNew")->trigger();  // at work: nothing comes of it
      QVERIFY(Game.Flags[0].FlagValue == kFalse && steps_->isVisible());
      QTest::keyClick(steps_, Qt::Key_Return);
    });
    QCOMPARE(Game.Flags[0].FlagValue, kTrue);  // what was clicked waited for the run
    QCOMPARE(flags->windowHandle()->transientParent(), table_->windowHandle());
    QCOMPARE(Game.RollCount[0], 1);
  }

  void anEndlessScriptIsInterruptedFromTheWindowAndByClosingTheTable() {
    Put("Label \"again\"\nDo this . . .\nGo to \"again\"\n");
    Game.ShowStepsMode = kTrue;
    PlannedMessages.Answers = {{AnswerNo}, {AnswerYes}};
    Roll([&] { Command(*steps_, "mnuInterrupt"); });
    ExpectMessage("Do you want to interrupt Auto-Betting? ", "Auto-Bet Active");
    QVERIFY(seen_.size() == 2 && !steps_->isVisible() && Game.ShowStepsMode == kTrue);
    PlannedMessages.Answers = {{AnswerYes}, {AnswerNo}, {AnswerNo}};  // interrupt; save nothing
    Roll([&] { QVERIFY(!table_->close()); });
    QVERIFY(!table_->isVisible() && !steps_->isVisible());
  }

  void aBreakpointBeginsTracing() {
    Put("Do this . . .\nBet $ 10 on Pass Line\nBet $ 5 on Field\n");
    ToggleBreakpoint(3);
    Roll([&] {
      QVERIFY(Find<QLabel>(steps_, "lblBreakpoint")->isVisible());
      ClickButton(steps_, "cmdNextAutoBet");
    });
    QVERIFY(seen_.size() == 1 && seen_[0].startsWith("Line #3|"));
    Game.TableMinimised = Game.AutoRollDice = true;  // nobody could see it
    Roll([] {});
    QVERIFY(seen_.isEmpty() && !Game.KeepRolling && Game.RollCount[0] == 2);
    Game.TableMinimised = false;
    Game.NumAutoRolls = Game.AutoRollsLeft = 1'000;
    table_->RunHyperDrive();
    ExpectMessage("Stopped by the breakpoint at Auto-Bet line # 3.", "Hyper-Drive");
    QCOMPARE(Game.RollCount[0], 3);
  }

 private:
  static void Put(const char* text) {
    LoadScript(text);
    Game.AutoBetActive = 1;
    Game.ScriptChanged = false;
  }

  /// Throws the dice; `act` ends each step.
  void Roll(std::function<void()> act) {
    seen_.clear();
    QTimer player;
    player.callOnTimeout(&player, [&, acting = false]() mutable {
      steps_ = table_->findChild<frmSteps*>();
      if (acting || !steps_ || !steps_->isVisible()) return;
      acting = true;
      QStringList texts;
      for (const char* name : {"lblLineNum", "lblAutoBetStep", "lblStatus"})
        texts << Find<QLabel>(steps_, name)->text();
      seen_ << texts.join('|');
      act();
      acting = false;
    });
    player.start(0);
    RightClickRolls(*table_, 3, 4);
  }

  static void ClickThrough(QWidget* window, const QString& button) {
    auto* control = Find<QPushButton>(window, button);
    QTest::mouseClick(window->windowHandle(), Qt::LeftButton, {},
                      control->mapTo(window, control->rect().center()));
  }

  frmSteps* steps_ = nullptr;
  QStringList seen_;
};

SCREEN_TEST(TestSteps)
#include "test_steps.moc"
