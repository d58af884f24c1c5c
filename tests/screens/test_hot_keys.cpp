// The table of Hot-Keys as the player edits it.

#include "autobet/hot_key_table.h"
#include "autobet/hot_keys.h"
#include "screens/frame/chrome.h"
#include "screens/screen_driver.h"
#include "screens/scripts/frmHotKeys.h"

class TestHotKeys : public ScreenTest {
  Q_OBJECT

 private slots:
  void init() {
    Open("mnuHotKeys", screen_);
    for (const char* name : {"a.bet", "b.bet"}) Write(name);
    Game.AppPath = Game.DataPath;
    list_ = Get<QTableView>("picHotKeys");
    file_ = Get<QLineEdit>("txtAutoBetFile");
  }

  void rowsAreDefinedChangedAndKept() {
    Click("cmdAddHotKey");
    ExpectMessage("Please enter an Auto-Bet filename to define this Hot-Key.", "Hot-Key");
    Game.GameChanged = false;
    OnNextScreen([this](QDialog* chooser) {
      QCOMPARE(chooser->windowTitle(), "Select Auto-Bet File for Hot-Key");
      Find<QLineEdit>(chooser, "txtFileName")->setText(Path("a"));
      ClickButton(chooser, "cmdOK");
    });
    QTest::mouseDClick(file_, Qt::LeftButton);
    QCOMPARE(file_->text(), "a.bet");
    QTest::keyClicks(Get<QLineEdit>("txtDescription"), "Press");
    QTest::keyClick(file_, Qt::Key_Return);
    QCOMPARE(Get<QComboBox>("cmbKey")->currentText(), "B");  // the next that is free
    file_->setText("gone.bet");
    Click("cmdAddHotKey");
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
    Get<QComboBox>("cmbKey")->setCurrentText("B");
    Click("cmdChangeHotKey");
    QCOMPARE(list_->model()->index(1, 0).data(Qt::ToolTipRole).toString(),
             "Another row with this key stands before this one.");
    LoadHotKeys();
    QCOMPARE(Rows(), " Ctrl B\ta.bet\tPress\n Ctrl B\tb.bet\t\n");
  }

  void rowsGoThroughTheClipboardAndAreUndone() {
    InsertHotKeys(0, {{'A', "a.bet", "One"}, {'B', "b.bet", "Two"}});
    TheHost.RefreshViews();
    ClickRow(list_, 1);
    Menu("mnuCut");
    QCOMPARE(QApplication::clipboard()->text(), " Ctrl B\tb.bet\tTwo\n");
    Menu("mnuPaste");  // before the row that is left
    QCOMPARE(Rows(), " Ctrl B\tb.bet\tTwo\n Ctrl A\ta.bet\tOne\n");
    Menu("mnuSelectAll");
    Menu("mnuDelete");
    QVERIFY(Rows().isEmpty() && !Get<QAction>("mnuCut")->isEnabled());
    QApplication::clipboard()->setText(" Ctrl C\tc.bet\t\nrubbish\n");
    Menu("mnuPaste");
    ExpectMessage("Nothing has been pasted: this is no Hot-Key.\n\nrubbish", "Hot-Key");
    for (int change = 0; change < 3; ++change) Menu("mnuUndo");
    QVERIFY(Rows().endsWith("Two\n") && !Get<QAction>("mnuUndo")->isEnabled());
    Menu("mnuRedo");
    LoadHotKeys();
    QCOMPARE(Rows(), " Ctrl A\ta.bet\tOne\n");
    QVERIFY(frmHotKeys::HotKeysReport().Heading[0].startsWith("Kelvanor Hot-Keys     "));
  }

  void whatCannotBeSavedIsToldAndTriedAgain() {
    Game.DataPath += "later/";
    file_->setText("a.bet");
    Click("cmdAddHotKey");
    QVERIFY(PlannedMessages.Shown.size() == 1 && Rows() == " Ctrl A\ta.bet\t\n");
    QVERIFY(QDir(folder_->path()).mkdir("later"));
    QTest::keyClick(screen_, Qt::Key_Escape);
    QVERIFY(!screen_->isVisible() && PlannedMessages.Shown.size() == 1);
    QVERIFY(QFile::exists(Path("later/HotKeys.dta")));
  }

 private:
  static QString Rows() { return QString::fromStdString(TextOfHotKeys(Game.HotKeys)); }

  frmHotKeys* screen_ = nullptr;
  QTableView* list_ = nullptr;
  QLineEdit* file_ = nullptr;
};

SCREEN_TEST(TestHotKeys)
#include "test_hot_keys.moc"
