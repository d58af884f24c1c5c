// The table of Hot-Keys as the player edits it.
#include <QClipboard>
#include <QComboBox>
#include <QFile>
#include <QLineEdit>
#include <QTableView>
#include <QTemporaryDir>

#include "autobet/hot_key_table.h"
#include "autobet/hot_keys.h"
#include "core/host.h"
#include "screens/frame/chrome.h"
#include "screens/frame/report.h"
#include "screens/screen_driver.h"
#include "screens/scripts/frmHotKeys.h"

class TestHotKeys : public QObject {
  Q_OBJECT

 private slots:
  void init() {
    static_cast<ScriptState&>(Game) = ScriptState();
    for (const char* name : {"a.bet", "b.bet"}) {
      QFile file(folder_.filePath(name));
      QVERIFY(file.open(QIODevice::WriteOnly) && file.write("x") == 1);
    }
    table_ = std::make_unique<frmCrapTable>();
    OpenScreen(*table_, "mnuHotKeys", screen_);
    Game.AppPath = Game.DataPath = folder_.path().toStdString() + "/";
    list_ = Find<QTableView>(screen_, "picHotKeys");
    file_ = Find<QLineEdit>(screen_, "txtAutoBetFile");
  }
  void cleanup() {
    PrintFile.clear();
    table_.reset();
    static_cast<ScriptState&>(Game) = ScriptState();
    Game.AppPath = Game.DataPath = "";
  }

  void rowsAreDefinedChangedAndKept() {
    ClickButton(screen_, "cmdAddHotKey");
    ExpectMessage("Please enter an Auto-Bet filename to define this Hot-Key.", "Hot-Key");
    Game.GameChanged = false;
    OnNextScreen([this](QDialog* chooser) {
      QCOMPARE(chooser->windowTitle(), "Select Auto-Bet File for Hot-Key");
      Find<QLineEdit>(chooser, "txtFileName")->setText(folder_.filePath("a"));
      ClickButton(chooser, "cmdOK");
    });
    QTest::mouseDClick(file_, Qt::LeftButton);
    QCOMPARE(file_->text(), "a.bet");
    QTest::keyClicks(Find<QLineEdit>(screen_, "txtDescription"), "Press");
    QTest::keyClick(file_, Qt::Key_Return);
    QCOMPARE(Find<QComboBox>(screen_, "cmbKey")->currentText(), "B");  // the next that is free
    file_->setText("gone.bet");
    ClickButton(screen_, "cmdAddHotKey");
    QCOMPARE(Rows(), " Ctrl A\ta.bet\tPress\n Ctrl B\tgone.bet\t\n");
    QVERIFY(!Game.GameChanged);  // they belong to no game

    const QModelIndex gone = list_->model()->index(1, 1);
    QCOMPARE(gone.data(Qt::ToolTipRole).toString(), "gone.bet isn't there.");
    QCOMPARE(gone.data(Qt::ForegroundRole).value<QColor>(), WarningInk());
    list_->edit(gone);  // in place
    auto* cell = qobject_cast<QLineEdit*>(list_->indexWidget(gone));
    cell->setText("b.bet");
    QTest::keyClick(cell, Qt::Key_Return);
    QTRY_VERIFY(!gone.data(Qt::ForegroundRole).isValid());

    const QPoint place = ClickRow(list_, 0);  // brought back by a double click
    QTest::mouseDClick(list_->viewport(), Qt::LeftButton, {}, place);
    QCOMPARE(file_->text(), "a.bet");
    Find<QComboBox>(screen_, "cmbKey")->setCurrentText("B");
    ClickButton(screen_, "cmdChangeHotKey");
    QCOMPARE(list_->model()->index(1, 0).data(Qt::ToolTipRole).toString(),
             "Another row with this key stands before this one.");
    LoadHotKeys();
    QCOMPARE(Rows(), " Ctrl B\ta.bet\tPress\n Ctrl B\tb.bet\t\n");
  }

  void rowsGoThroughTheClipboardAndAreUndone() {
    InsertHotKeys(0, {{'A', "a.bet", "One"}, {'B', "b.bet", "Two"}});
    TheHost.RefreshViews();
    ClickRow(list_, 1);
    Command(*screen_, "mnuCut");
    QCOMPARE(QApplication::clipboard()->text(), " Ctrl B\tb.bet\tTwo\n");
    Command(*screen_, "mnuPaste");  // before the row that is left
    QCOMPARE(Rows(), " Ctrl B\tb.bet\tTwo\n Ctrl A\ta.bet\tOne\n");
    Command(*screen_, "mnuSelectAll");
    Command(*screen_, "mnuDelete");
    QVERIFY(Rows().isEmpty() && !Find<QAction>(screen_, "mnuCut")->isEnabled());
    QApplication::clipboard()->setText(" Ctrl C\tc.bet\t\nrubbish\n");
    Command(*screen_, "mnuPaste");
    ExpectMessage("Nothing has been pasted: this is no Hot-Key.\n\nrubbish", "Hot-Key");
    for (int change = 0; change < 3; ++change) Command(*screen_, "mnuUndo");
    QVERIFY(Rows().endsWith("Two\n") && !Find<QAction>(screen_, "mnuUndo")->isEnabled());
    Command(*screen_, "mnuRedo");
    LoadHotKeys();
    QCOMPARE(Rows(), " Ctrl A\ta.bet\tOne\n");
    QVERIFY(frmHotKeys::HotKeysReport().Heading[0].startsWith("Kelvanor Hot-Keys     "));
    PrintFile = folder_.filePath("keys.pdf");
    Command(*screen_, "mnuPrint");
    QVERIFY(QFileInfo(PrintFile).size() > 0);
  }

  void whatCannotBeSavedIsToldAndTriedAgain() {
    Game.DataPath += "later/";
    file_->setText("a.bet");
    ClickButton(screen_, "cmdAddHotKey");
    QVERIFY(PlannedMessages.Shown.size() == 1 && Rows() == " Ctrl A\ta.bet\t\n");
    QVERIFY(QDir(folder_.path()).mkdir("later"));
    QTest::keyClick(screen_, Qt::Key_Escape);
    QVERIFY(!screen_->isVisible() && PlannedMessages.Shown.size() == 1);
    QVERIFY(QFile::exists(folder_.filePath("later/HotKeys.dta")));
  }

 private:
  static QString Rows() { return QString::fromStdString(TextOfHotKeys(Game.HotKeys)); }

  QTemporaryDir folder_;
  std::unique_ptr<frmCrapTable> table_;
  frmHotKeys* screen_ = nullptr;
  QTableView* list_ = nullptr;
  QLineEdit* file_ = nullptr;
};

SCREEN_TEST(TestHotKeys)
#include "test_hot_keys.moc"
