// The manual roll pad: every key of every display pressed for real, typing, and its buttons.

#include "screens/play/frmRYON.h"
#include "screens/play/pad_button.h"
#include "screens/screen_driver.h"

class TestPad : public ScreenTest {
  Q_OBJECT

 private slots:
  void init() { Open("mnuRollYourOwnNumbers", pad_); }

  void everyKeyThrowsWhatItSays() {
    const int keys[] = {11, 36, 36, 6};
    for (int display = 0; display < kPadDisplays; ++display) {
      Menu(QString("mnuDisplayRYON_%1").arg(display));
      int pressed = 0;
      for (PadButton* key : pad_->findChildren<PadButton*>()) {
        if (!key->isVisible()) continue;
        QVERIFY(!key->accessibleName().isEmpty());
        ++pressed;
        const int rolls = Game.RollCount[0];
        QTest::mouseClick(key, Qt::LeftButton);
        if (display == PadFaces) {
          QCOMPARE(Game.RollCount[0], rolls);
          QCOMPARE(Typed(), QString("Die 1 is a %1. Which is die 2?").arg(key->text()));
          QTest::mouseClick(Get<PadButton>("cmdFace_4"), Qt::LeftButton);
        }
        QCOMPARE(Game.RollCount[0], rolls + 1);
        const QString pair = QString("%1-%2").arg(Game.Die1).arg(Game.Die2);
        QCOMPARE(display == PadTotals ? QString::number(Game.RollTotal)
                                      : (display == PadFaces ? pair.left(1) : pair),
                 key->text());
        QVERIFY(Typed().startsWith("Last throw:  " + QString::number(Game.RollTotal)));
      }
      QCOMPARE(pressed, keys[display]);
    }
  }

  void digitsThrow() {
    QTest::keyClick(pad_, Qt::Key_1);
    QCOMPARE(Typed(), "0, 1 or 2 makes it a 10, 11 or 12.");
    QTest::keyClick(pad_, Qt::Key_2, Qt::KeypadModifier);
    QCOMPARE(QPoint(Game.Die1, Game.Die2), QPoint(6, 6));
    Menu("mnuDisplayRYON_3");
    QTest::keyClick(pad_, Qt::Key_5);
    QTest::keyClick(pad_, Qt::Key_Escape);  // takes back what was chosen, and no more
    QVERIFY(pad_->isVisible() && Typed().contains("die 1, then die 2"));
    QTest::keyClick(pad_, Qt::Key_5);
    Menu("mnuDisplayRYON_0");  // another display begins anew
    QVERIFY(!Typed().contains("Die 1 is"));
  }

  void buttonsAreShownAndAskBeforeTheyInterrupt() {
    auto* random = Get<QPushButton>("cmdRandomRoll");
    auto* hyperDrive = Get<QPushButton>("cmdHyperDrive");
    auto* counter = Get<QLabel>("lblRollCounter");
    QVERIFY(!random->isVisible() && !hyperDrive->isVisible() && !counter->isVisible());
    for (const char* row : {"mnuRollCounter", "mnuHyperDriveButton", "mnuRandomButton"}) Menu(row);
    QVERIFY(random->isVisible() && hyperDrive->isVisible() && counter->isVisible());
    Click("cmdRandomRoll");
    QCOMPARE(counter->text() + "|" + hyperDrive->text(), "Rolls:  1|Start Hyper-&Drive");

    int asked = 0;
    QTimer act;
    connect(&act, &QTimer::timeout, this, [&] {
      if (!Game.HyperDriveOn || Game.RollCount[0] < 1'000 || asked == 3) return;
      QCOMPARE(hyperDrive->text(), "Stop Hyper-&Drive");
      const int rolls = static_cast<int>(PlannedMessages.Shown.size());
      PlannedMessages.Answers = {{AnswerNo}};
      switch (++asked) {
        case 1: random->click(); break;
        case 2: QTest::keyClicks(pad_, "7"); break;
        default: hyperDrive->click(); return;
      }
      QCOMPARE(static_cast<int>(PlannedMessages.Shown.size()), rolls + 1);
      ExpectMessage("Do you want to stop Hyper-Drive?", "Hyper-Drive Active");
      QVERIFY(Game.KeepRolling && !Game.ManualRollPending);
    });
    act.start(5);
    Click("cmdHyperDrive");
    QVERIFY(asked == 3 && !Game.RollInProgress);
    QCOMPARE(hyperDrive->text(), "Start Hyper-&Drive");
    Game.AutoBetRunning = Game.KeepRolling = true;
    PlannedMessages.Answers = {{AnswerYes}};
    Click("cmdRandomRoll");
    ExpectMessage("Do you want to interrupt Auto-Betting? ", "Auto-Bet Active");
    QVERIFY(!Game.AutoBetRunning && !Game.KeepRolling);
  }

  void isHiddenByItsMenuAndByTheCheckMark() {
    auto* mark = Find<QAction>(table_.get(), "mnuRollYourOwnNumbers");
    QVERIFY(mark->isChecked() && Game.RollYourOwnNumbers);
    Menu("mnuHide");
    TheHost.RefreshViews();
    QVERIFY(!pad_->isVisible() && !mark->isChecked() && !Game.RollYourOwnNumbers);
    mark->trigger();
    QVERIFY(pad_->isVisible() && mark->isChecked() && Game.RollYourOwnNumbers);
    mark->trigger();
    QVERIFY(!pad_->isVisible() && !Game.RollYourOwnNumbers);
  }

 private:
  QString Typed() const { return Label("lblTyped"); }

  frmRYON* pad_ = nullptr;
};

SCREEN_TEST(TestPad)
#include "test_pad.moc"
