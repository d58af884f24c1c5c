// The editor of Dice Roll files: clicked and typed through, and as quick on a long tape.
#include <QCheckBox>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QRegularExpression>
#include <QScrollBar>
#include <QTableView>
#include <QTemporaryDir>
#include <filesystem>

#include "core/game_state.h"
#include "core/host.h"
#include "dice/tape_file.h"
#include "screens/files/frmDiceRollFiles.h"
#include "screens/files/tape_view.h"
#include "screens/frame/report.h"
#include "screens/screen_driver.h"

class TestDiceRollFiles : public QObject {
  Q_OBJECT

 private slots:
  void init() {
    folder_ = std::make_unique<QTemporaryDir>();
    table_ = std::make_unique<frmCrapTable>();
    OpenScreen(*table_, "mnuDiceRollFiles", screen_);
    Game.DataPath = folder_->path().toStdString() + "/";
    view_ = Find<picDiceRollsBox>(screen_, "picDiceRolls");
    view_->setFocus();
  }
  void cleanup() { table_.reset(); }

  void everythingNeedsAFile() {
    QCOMPARE(screen_->windowTitle(), "Dice Roll Files");
    QVERIFY(Label("lblEmpty").contains("No Dice Roll file is open."));
    const auto refuses = [&](const std::function<void()>& act, const std::string& title) {
      PlannedMessages.Shown.clear();
      act();
      QCOMPARE(PlannedMessages.Shown.size(), std::size_t(1));
      ExpectMessage("You need to open a file first.", title);
    };
    refuses([&] { ClickButton(screen_, "cmdRandomNum"); }, "Record Dice Rolls");
    refuses([&] { ClickButton(screen_, "cmdRollNumbers"); }, "Record Dice Rolls");
    refuses([&] { QTest::keyClick(view_, Qt::Key_3); }, "Record Dice Rolls");
    refuses([&] { Press("optRecorderStatus_1"); }, "Record Dice Rolls During Game Play");
    refuses([&] { Press("optRecorderStatus_2"); }, "Playback Dice Rolls During Game Play");
    QVERIFY(Game.RecorderStatus == RecorderOff);
    QVERIFY(Find<QAbstractButton>(screen_, "optRecorderStatus_0")->isChecked());
    for (const char* row : {"mnuClose", "mnuCut", "mnuCopy", "mnuPaste", "mnuDelete", "mnuPrint",
                            "mnuSelectAll", "mnuCopyToTextFile", "mnuPasteFromRollFile"}) {
      const auto* action = Find<QAction>(screen_, row);
      QVERIFY2(!action->isEnabled() && !action->toolTip().isEmpty(), row);
    }
  }

  void rollsAreTypedDrawnMovedAndDeleted() {
    Choose("mnuNewOpen", "tape");
    QCOMPARE(screen_->windowTitle(), "Dice Roll Files (tape.rol)");
    QTest::keyClicks(view_, "344");
    QVERIFY(Label("lblTyped").startsWith("Die 1 is a 4."));
    QTest::keyClick(view_, Qt::Key_Escape);  // gives up the die, not the window
    Find<QLineEdit>(screen_, "txtRollNumbers")->setText("6 1, (2-2)  5 and 3, 6");
    ClickButton(screen_, "cmdRollNumbers");
    QCOMPARE(Find<QLineEdit>(screen_, "txtRollNumbers")->text(), "6");
    QCOMPARE(Tape(), "34 61 22 53");
    ClickButton(screen_, "cmdRandomNum");
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
    Command(*screen_, "mnuCut");
    QCOMPARE(Tape(), "11 66 55");
    QTest::keyClick(view_, Qt::Key_Home, Qt::ControlModifier);
    QTest::keySequence(view_, QKeySequence::Paste);
    Command(*screen_, "mnuPaste");
    QCOMPARE(Tape(), "22 53 22 53 11 66 55");
    QCOMPARE(Game.DiceFilePos, 5);
    QTest::keySequence(view_, QKeySequence::SelectAll);
    QCOMPARE(Label("lblTotalNumRolls"), "of 7");
    QTest::keyClick(view_, Qt::Key_Delete);
    QCOMPARE(Tape(), "");
    QVERIFY(Find<QLabel>(screen_, "lblEmpty")->isVisible());
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
    QCOMPARE(QFileInfo(folder_->filePath("part.rol")).size(), 3);
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
    QTest::mouseClick(view_, Qt::LeftButton, {}, CellAt(1));
    QTest::mouseClick(view_, Qt::LeftButton, Qt::ShiftModifier, CellAt(2));
    PlannedMessages.Answers = {{AnswerYes}, {AnswerYes}};
    Choose("mnuCopyToTextFile", "text");
    QVERIFY(
        PlannedMessages.Shown.back().Text.starts_with("The rolls you've selected do not begin"));
    QCOMPARE(Read("text.txt"), "1 (1-2)- 3\r\n2 (1-3)- 4\r\n");
    Choose("mnuPasteFromTextFile", "text.txt");
    QVERIFY(Tape().startsWith("11 11 23 21 34 12 "));  // digit by digit
    PrintFile = folder_->filePath("rolls.pdf");
    Command(*screen_, "mnuPrint");
    PrintFile.clear();
    QVERIFY(QFileInfo(folder_->filePath("rolls.pdf")).size() > 2'000);
    Command(*screen_, "mnuClose");
    QCOMPARE(screen_->windowTitle(), "Dice Roll Files");
  }

  void highlightsAndCounts() {
    Choose("mnuNewOpen", "tape");
    EnterOnTape("16 61 25 33 66 66 12");
    Command(*screen_, "mnuAll7");
    QVERIFY(Find<QAction>(screen_, "mnuAll7")->isChecked());
    const auto* list = Find<QTableView>(screen_, "lstCounts");
    QCOMPARE(RowsOf(list), "Total 7, All highlighted");
    QCOMPARE(RowText(list, 0, 1) + " " + RowText(list, 0, 2), "3 42.86");
    QCOMPARE(Label("lblCounted"), "Of all 7 rolls:");
    Command(*screen_, "mnuPip6");
    QVERIFY(Find<QAction>(screen_, "mnuAll12")->isChecked());
    GoToRoll(1);
    QTest::keyClick(view_, Qt::Key_End, Qt::ShiftModifier);
    QCOMPARE(Label("lblCounted"), QString("Of the %1 rolls selected:").arg(SelectedRolls().Count));
    Command(*screen_, "mnuHighlightNone");
    QCOMPARE(RowsOf(list), "");
  }

  void showsATapeGrowAndGo() {
    Choose("mnuNewOpen", "tape");
    Press("optRecorderStatus_1");
    for (int roll = 1; roll <= 40; ++roll) RightClickRolls(*table_, 1 + roll % 6, 2);
    QCOMPARE(view_->Length(), 40);
    QCOMPARE(Label("lblTotalNumRolls") + Label("lblSelected"), "of 40");
    const std::string path = folder_->filePath("tape.rol").toStdString();
    std::filesystem::resize_file(path, 5);  // behind the program's back
    QTRY_COMPARE(view_->Length(), 5);
    std::filesystem::remove(path);
    QTRY_VERIFY(Label("lblEmpty").contains("can't be read: "));
    QTest::keyClicks(view_, "12");
    QVERIFY(PlannedMessages.Shown.back().Text.find("can't be written: ") != std::string::npos);
    EnterOnTape("3412");
    QCOMPARE(Find<QLineEdit>(screen_, "txtRollNumbers")->text(), "3412");  // not lost
    Press("optRecorderStatus_2");
    ClickPlace(*table_, {300, 210}, {}, Qt::RightButton);
    QVERIFY(PlannedMessages.Shown.back().Text.find("can't be played back: ") != std::string::npos);
    QVERIFY(Find<QAbstractButton>(screen_, "optRecorderStatus_0")->isChecked());
  }

  /// Jumps over a long tape, bytes that are no throws among them.
  void aHundredMillionRollsAreNoLoad() {
    Choose("mnuNewOpen", "tape");
    std::filesystem::resize_file(folder_->filePath("tape.rol").toStdString(), 100'000'000);
    TheHost.RefreshViews();
    auto* next = Find<QLineEdit>(screen_, "txtNextRollNum");
    qint64 quickest = 1'000'000;
    for (const int record : {99'999'999, 5, 50'000'000, 77'777'777, 1'234'567}) {
      QElapsedTimer clock;
      clock.start();
      next->selectAll();
      QTest::keyClicks(next, QString::number(record));
      QTest::keyClick(next, Qt::Key_Return);
      view_->repaint();
      quickest = std::min(quickest, clock.elapsed());
      QCOMPARE(Game.DiceFilePos, record);
    }
    QVERIFY2(quickest < 50, qPrintable(QString::number(quickest)));
    auto* bar = Find<QScrollBar>(screen_, "vscrDiceRolls");
    bar->setValue(bar->maximum());
    QCOMPARE(view_->TopRow() + view_->WholeRows(), view_->Rows());
    QVERIFY(Find<QPushButton>(screen_, "cmdCount")->isVisible());
    ClickButton(screen_, "cmdCount");
    QVERIFY(Label("lblCounted").contains("100,000,000 bytes are out of limits."));
  }

 private:
  QString Label(const QString& name) const { return Find<QLabel>(screen_, name)->text(); }
  void Press(const char* name) { Find<QAbstractButton>(screen_, name)->click(); }

  /// Gives a command of files, and a name to the file screen; one that refuses is closed.
  void Choose(const char* command, const QString& name) {
    OnNextScreen([&](QDialog* screen) {
      const QString path = folder_->filePath(name);
      Find<QLineEdit>(screen, "txtFileName")->setText(path);
      ClickButton(screen, "cmdOK");
      if (screen->isVisible()) screen->reject();
    });
    Command(*screen_, command);
    screen_->activateWindow();
    QTRY_VERIFY(screen_->isActiveWindow());
  }

  void EnterOnTape(const char* digits) {
    Find<QLineEdit>(screen_, "txtRollNumbers")->setText(digits);
    ClickButton(screen_, "cmdRollNumbers");
  }

  QByteArray Read(const char* name) const {
    QFile file(folder_->filePath(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  }

  /// The rolls of tape.rol as digits.
  QString Tape() const {
    QStringList rolls;
    for (const char byte : Read("tape.rol"))
      rolls << Text(RollText(byte, {false, true, false})).remove(QRegularExpression("\\D"));
    return rolls.join(' ');
  }

  static QString Text(const std::string& text) { return QString::fromStdString(text); }

  /// The middle of a roll in view, counted from 0.
  QPoint CellAt(int index) const { return view_->CellOf(index + 1).center().toPoint(); }

  std::unique_ptr<QTemporaryDir> folder_;
  std::unique_ptr<frmCrapTable> table_;
  frmDiceRollFiles* screen_ = nullptr;
  picDiceRollsBox* view_ = nullptr;
};

SCREEN_TEST(TestDiceRollFiles)
#include "test_dice_roll_files.moc"
