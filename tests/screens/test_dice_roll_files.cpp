// The editor of Dice Roll files: clicked and typed through, and as quick on a long tape.
#include <QElapsedTimer>

#include "dice/tape_file.h"
#include "screens/files/frmDiceRollFiles.h"
#include "screens/files/tape_view.h"
#include "screens/screen_driver.h"

class TestDiceRollFiles : public ScreenTest {
  Q_OBJECT

 private slots:
  void init() {
    Open("mnuDiceRollFiles", screen_);
    view_ = Get<picDiceRollsBox>("picDiceRolls");
    view_->setFocus();
  }

  void everythingNeedsAFile() {
    QCOMPARE(screen_->windowTitle(), "Dice Roll Files");
    QVERIFY(Label("lblEmpty").contains("No Dice Roll file is open."));
    const std::pair<std::function<void()>, const char*> acts[] = {
        {[&] { Click("cmdRandomNum"); }, "Record Dice Rolls"},
        {[&] { QTest::keyClick(view_, Qt::Key_3); }, "Record Dice Rolls"},
        {[&] { Press("optRecorderStatus_1"); }, "Record Dice Rolls During Game Play"},
        {[&] { Press("optRecorderStatus_2"); }, "Playback Dice Rolls During Game Play"}};
    for (const auto& [act, title] : acts) {
      act();
      ExpectMessage("You need to open a file first.", title);
    }
    QVERIFY(Get<QAbstractButton>("optRecorderStatus_0")->isChecked());
    for (const char* row : {"mnuClose", "mnuCut", "mnuPaste", "mnuPrint", "mnuCopyToTextFile"})
      QVERIFY2(!Get<QAction>(row)->isEnabled(), row);
  }

  void rollsAreTypedDrawnMovedAndDeleted() {
    Choose("mnuNewOpen", "tape");
    QCOMPARE(screen_->windowTitle(), "Dice Roll Files (tape.rol)");
    QTest::keyClicks(view_, "344");
    QVERIFY(Label("lblTyped").startsWith("Die 1 is a 4."));
    QTest::keyClick(view_, Qt::Key_Escape);  // gives up the die, not the window
    Get<QLineEdit>("txtRollNumbers")->setText("6 1, (2-2)  5 and 3, 6");
    Click("cmdRollNumbers");
    QCOMPARE(Get<QLineEdit>("txtRollNumbers")->text() + "|" + Tape(), "6|34 61 22 53");
    Click("cmdRandomNum");
    QCOMPARE(Game.DiceFilePos, 6);
    view_->setFocus();
    QTest::keyClick(view_, Qt::Key_Backspace);
    QTest::keyClick(view_, Qt::Key_Home);
    QTest::keyClicks(view_, "11");
    QCOMPARE(Tape(), "11 34 61 22 53");
    Press("optInsertRolls_1");
    QTest::keyClicks(view_, "6655");
    QCOMPARE(Tape(), "11 66 55 22 53");
    QTest::keyClick(view_, Qt::Key_Right, Qt::ShiftModifier);
    QCOMPARE(Label("lblSelected"), "Selected:  2 rolls (4 to 5)");
    Menu("mnuCut");
    QCOMPARE(Tape(), "11 66 55");
    QTest::keyClick(view_, Qt::Key_Home, Qt::ControlModifier);
    QTest::keySequence(view_, QKeySequence::Paste);
    Menu("mnuPaste");
    QCOMPARE(Tape(), "22 53 22 53 11 66 55");
    QCOMPARE(Game.DiceFilePos, 5);
    QTest::keySequence(view_, QKeySequence::SelectAll);
    QTest::keyClick(view_, Qt::Key_Delete);
    QCOMPARE(Tape(), "");
    QVERIFY(Shows("lblEmpty"));
  }

  void theMouseSelectsAndFilesAreExchanged() {
    Choose("mnuNewOpen", "tape");
    EnterOnTape("11 12 13 14 15 16 21 22 23 24 25 26 31 32 33");
    const QPoint first = CellAt(0);
    const QPoint later = CellAt(view_->PerRow() + 1);
    QTest::mousePress(view_, Qt::LeftButton, {}, later);
    QTest::mouseMove(view_, first);
    QTest::mouseRelease(view_, Qt::LeftButton, {}, first);
    QCOMPARE(SelectedRolls().Count, view_->PerRow() + 2);
    QTest::mouseClick(view_, Qt::LeftButton, {}, first);
    QCOMPARE(SelectedRolls().Count, 1);
    QTest::mouseClick(view_, Qt::LeftButton, Qt::ShiftModifier, CellAt(2));
    Choose("mnuCopyToRollFile", "part");
    QCOMPARE(QFileInfo(Path("part.rol")).size(), 3);
    Choose("mnuCopyToTextFile", "text");
    ExpectMessage(
        "You must check at least one of the following boxes found under Output Options:\n\nInclude "
        "individual die #'s\nInclude numbers called",
        "Copy Dice Rolls To Text File");
    for (const char* box : {"chkRollNums", "chkDieNums", "chkNumbersCalled"}) Press(box);
    Choose("mnuCopyToTextFile", "text");
    QCOMPARE(Read("text.txt"), "1 (1-1)- 2\r\n2 (1-2)- 3\r\n3 (1-3)- 4\r\n");
    QTest::keyClick(view_, Qt::Key_End, Qt::ControlModifier);
    Choose("mnuPasteFromRollFile", "part.rol");
    QVERIFY(Tape().endsWith("33 11 12 13"));
    QTest::keyClick(view_, Qt::Key_Home, Qt::ControlModifier);
    Choose("mnuPasteFromTextFile", "text.txt");
    QVERIFY(Tape().startsWith("11 12 21 23 31 34 11 "));  // digit by digit
    QTest::mouseClick(view_, Qt::LeftButton, {}, CellAt(1));
    Choose("mnuCopyToTextFile", "later");
    QVERIFY(Told().startsWith("The rolls you've selected do not begin"));
    Menu("mnuClose");
    QCOMPARE(screen_->windowTitle(), "Dice Roll Files");
  }

  void highlightsAndCounts() {
    Choose("mnuNewOpen", "tape");
    EnterOnTape("16 61 25 33 66 66 12");
    Menu("mnuAll7");
    QVERIFY(Get<QAction>("mnuAll7")->isChecked());
    const auto* list = Get<QTableView>("lstCounts");
    QCOMPARE(RowsOf(list), "Total 7, All highlighted");
    QCOMPARE(RowText(list, 0, 1) + " " + RowText(list, 0, 2), "3 42.86");
    QCOMPARE(Label("lblCounted"), "Of all 7 rolls:");
    Menu("mnuPip6");
    QVERIFY(Get<QAction>("mnuAll12")->isChecked());
    Menu("mnuHighlightNone");
    QCOMPARE(RowsOf(list), "");
  }

  void showsATapeGrowAndGo() {
    Choose("mnuNewOpen", "tape");
    Press("optRecorderStatus_1");
    for (int roll = 1; roll <= 40; ++roll) RightClickRolls(*table_, 1 + roll % 6, 2);
    QCOMPARE(view_->Length(), 40);
    QCOMPARE(Label("lblTotalNumRolls") + Label("lblSelected"), "of 40");
    QVERIFY(QFile::resize(Path("tape.rol"), 5));  // behind the program's back
    QTRY_COMPARE(view_->Length(), 5);
    QVERIFY(QFile::remove(Path("tape.rol")));
    QTRY_VERIFY(Label("lblEmpty").contains("can't be read: "));
    QTest::keyClicks(view_, "12");
    QVERIFY(Told().contains("can't be written: "));
    EnterOnTape("3412");
    QCOMPARE(Get<QLineEdit>("txtRollNumbers")->text(), "3412");  // not lost
    Press("optRecorderStatus_2");
    ClickPlace(*table_, {300, 210}, {}, Qt::RightButton);
    QVERIFY(Told().contains("can't be played back: "));
    QVERIFY(Get<QAbstractButton>("optRecorderStatus_0")->isChecked());
  }

  /// Jumps over a long tape, bytes that are no throws among them.
  void aHundredMillionRollsAreNoLoad() {
    Choose("mnuNewOpen", "tape");
    QVERIFY(QFile::resize(Path("tape.rol"), 100'000'000));
    TheHost.RefreshViews();
    auto* next = Get<QLineEdit>("txtNextRollNum");
    qint64 quickest = 1'000'000;
    for (const int record : {99'999'999, 5, 50'000'000, 77'777'777, 1'234'567}) {
      QElapsedTimer clock;
      clock.start();
      TypeOver(next, QString::number(record));
      QTest::keyClick(next, Qt::Key_Return);
      view_->repaint();
      quickest = std::min(quickest, clock.elapsed());
      QCOMPARE(Game.DiceFilePos, record);
    }
    QVERIFY2(quickest < 50, qPrintable(QString::number(quickest)));
    Click("cmdCount");
    QVERIFY(Label("lblCounted").contains("100,000,000 bytes are out of limits."));
  }

 private:
  /// Gives a command of files, and a name to the file screen; one that refuses is closed.
  void Choose(const char* command, const QString& name) {
    FileMenu(command, Path(name));
    screen_->activateWindow();
    QTRY_VERIFY(screen_->isActiveWindow());
  }

  void EnterOnTape(const char* digits) {
    Get<QLineEdit>("txtRollNumbers")->setText(digits);
    Click("cmdRollNumbers");
  }

  /// The rolls of tape.rol as digits.
  QString Tape() const {
    QStringList rolls;
    for (const char byte : Read("tape.rol"))
      rolls << QString::fromStdString(RollText(byte, {false, true, false}))
                   .remove(QRegularExpression("\\D"));
    return rolls.join(' ');
  }

  /// The middle of a roll in view, counted from 0.
  QPoint CellAt(int index) const { return view_->CellOf(index + 1).center().toPoint(); }

  frmDiceRollFiles* screen_ = nullptr;
  picDiceRollsBox* view_ = nullptr;
};

SCREEN_TEST(TestDiceRollFiles)
#include "test_dice_roll_files.moc"
