// What all screens have in common: walks over every bound control and every menu.
#include <QAbstractSlider>
#include <QAccessible>
#include <QPrintPreviewWidget>
#include <QWheelEvent>

#include "autobet/script_file.h"
#include "persistence/game_file.h"
#include "persistence/game_file_table.h"
#include "screens/frame/bind.h"
#include "screens/frame/frmPrint.h"
#include "screens/frame/player_change.h"
#include "screens/screen_driver.h"
#include "screens/table/screens.h"

namespace {

/// All that a game file keeps of the record, as bytes: any change of a setting shows in it.
std::vector<Record> Kept() {
  std::vector<Record> records(kFixedRecords);
  PutFields(GameFields(), Game, records);
  return records;
}

}  // namespace

class TestFrame : public ScreenTest {
  Q_OBJECT

 private slots:
  void init() {
    LayTable();
    Game.EventsLogFile = Game.DataPath + "Events Log.txt";
    for (const ScreenRow& row : AllScreens()) ShowScreen(row.Id);
  }

  void everyCheckMarkOfEveryMenuMarksTheGameAsChanged() {
    int flipped = 0;
    for (QAction* action : table_->findChildren<QAction*>()) {
      if (!action->isCheckable() || action->objectName().isEmpty() || !action->isEnabled())
        continue;
      if (action->actionGroup() && action->isChecked()) continue;  // the choice that stands
      const std::vector<Record> before = Kept();
      const bool checked = action->isChecked();
      Game.GameChanged = false;
      action->trigger();
      ++flipped;
      // How the table looks belongs to no game.
      const bool ofTheGame = !action->objectName().startsWith("mnuTable");
      QVERIFY2(Game.GameChanged == ofTheGame || !PlannedMessages.Shown.empty(),
               qPrintable(action->objectName()));
      PlannedMessages.Shown.clear();
      if (ofTheGame && before == Kept()) QCOMPARE(action->isChecked(), checked);  // was refused
    }
    QVERIFY2(flipped > 45, qPrintable(QString::number(flipped)));
    QCOMPARE(FirstInconsistency(), std::string());
  }

  /// Every bound control takes whatever comes; the record stays sound, follows its limits, and the
  /// control then shows what stands.
  void everyBoundControlTakesAnything() {
    int walked = 0;
    for (Binding* binding : table_->findChildren<Binding*>()) {
      auto* control = qobject_cast<QWidget*>(binding->parent());
      if (!control || !control->isEnabled()) continue;
      for (int input = 0; input < 8; ++input) {
        const std::vector<Record> before = Kept();
        Game.GameChanged = false;
        Play(control, input);
        QVERIFY2(before == Kept() || Game.GameChanged, qPrintable(control->objectName()));
        QCOMPARE(FirstInconsistency(), std::string());
        const QString shown = ShownBy(control);
        control->window()->setFocus();
        binding->Load();
        QCOMPARE(ShownBy(control), shown);
        if (input == 1 && qobject_cast<QLineEdit*>(control)) ExpectToComeBack(control);
      }
      ++walked;
    }
    QVERIFY2(walked > 90, qPrintable(QString::number(walked)));
  }

  /// What is done while the dice fly waits for them, on every screen alike.
  void nothingIsWrittenWhileTheDiceFly() {
    Game.RollInProgress = true;
    const std::vector<Record> before = Kept();
    for (Binding* binding : table_->findChildren<Binding*>()) {
      auto* control = qobject_cast<QWidget*>(binding->parent());
      if (control && control->isEnabled() && !qobject_cast<QComboBox*>(control)) Play(control, 1);
    }
    QVERIFY(before == Kept() && ChangesWait());
    Game.RollInProgress = false;
    CarryOutChanges();
    QVERIFY(before != Kept() && Game.GameChanged && !ChangesWait());
  }

  void aChangeThatOverflowsIsPutBackWhole() {
    const std::vector<Record> before = Kept();
    ChangeByPlayer([] {
      Game.MinPlacard = 7;
      Game.BankrollSum = Currency::FromRaw(INT64_MAX);
      Game.BankrollSum += 1;
    });
    QVERIFY(before == Kept());
    QCOMPARE(PlannedMessages.Shown.back().Title, std::string("Change Taken Back"));
  }

  void aMinimisedScreenComesBackAndAHiddenOneRests() {
    Screen* flags = FindScreen(FlagsWindow);
    flags->showMinimized();
    Game.Flags = {{"Ready", 0, 0}};
    TheHost.RefreshViews();
    const auto* list = Find<QListView>(flags, "lstShowflags");
    QCOMPARE(list->model()->rowCount(), 0);  // not seen, not refreshed
    Command(*table_, "mnuFlagValues");
    QVERIFY(flags->isVisible() && !flags->isMinimized());
    QCOMPARE(list->model()->rowCount(), 1);
    QTest::keyClick(flags, Qt::Key_Escape);
    QVERIFY(!flags->isVisible());
  }

  void theTablesFunctionKeysWorkInEveryScreen() {
    for (const ScreenRow& row : AllScreens()) {
      Screen* screen = FindScreen(row.Id);
      const bool hops = Game.DisplayHopBets;
      QTest::keyClick(screen, Qt::Key_F4);
      QCOMPARE(Game.DisplayHopBets, !hops);
      Game.LastErrorText = "Overflow, Error #6 occurred, at: Roll Dice\n";
      QTest::keyClick(screen, Qt::Key_E, Qt::ControlModifier | Qt::ShiftModifier);
      ExpectMessage(Game.LastErrorText, "Last Error");
    }
  }

  void noMnemonicOfAMenuStandsTwice() {
    for (const QMenu* menu : table_->findChildren<QMenu*>()) {
      if (menu->objectName() == "mnuRecord") continue;  // its captions are given
      std::map<QChar, QString> taken;
      for (const QAction* action : menu->actions()) {
        const qsizetype at = action->text().indexOf('&');
        if (at < 0 || !action->isVisible()) continue;
        const QChar letter = action->text()[at + 1].toLower();
        QVERIFY2(!taken.contains(letter),
                 qPrintable(menu->title() + ": " + taken[letter] + ", " + action->text()));
        taken[letter] = action->text();
      }
    }
  }

  /// Each entry of each menu and each button does something that a player can notice, or is greyed
  /// and tells why.
  void thereIsNoDeadEnd() {
    LayBetsAndRoll();
    AnswerModalWindows answers;
    QStringList dead;
    int walked = 0;
    for (QAction* action : table_->findChildren<QAction*>()) {
      const QString name = action->objectName();
      if (action->isSeparator() || action->menu() || !name.startsWith("mnu")) continue;
      if (action->actionGroup() && action->isChecked()) continue;  // the choice that stands
      if (const auto* menu = qobject_cast<QMenu*>(action->parent());
          menu && !menu->menuAction()->isVisible())
        continue;  // of another tab
      // These bring back what stands here, and lead to a box that is in sight.
      static const QStringList standing = {"mnuCenter", "mnuNewProbability", "mnuFindAsTyped"};
      if (standing.contains(name)) continue;
      Try(
          action, action->isEnabled(), action->toolTip() != QString(action->text()).remove('&'),
          [action] { action->trigger(); }, answers.Answered, dead);
      ++walked;
    }
    for (QPushButton* button : table_->findChildren<QPushButton*>()) {
      if (!button->isVisible()) continue;
      Try(
          button, button->isEnabled(), !button->toolTip().isEmpty(), [button] { button->click(); },
          answers.Answered, dead);
      ++walked;
    }
    QVERIFY2(dead.isEmpty(), qPrintable(dead.join(", ")));
    QVERIFY(walked > 200);
  }

  void everyControlIsReachedByTabAndNamed() {
    for (const ScreenRow& row : AllScreens()) {
      Screen* screen = FindScreen(row.Id);
      ReachByTab(screen);
      static const QRegularExpression tabs("^cmdAltKeys_");
      for (QAbstractButton* tab : screen->findChildren<QAbstractButton*>(tabs)) {
        tab->click();
        ReachByTab(screen);
      }
    }
  }

  void aReportIsShownAndBecomesAPdf() {
    Report report;
    report.Title = "Numbers";
    report.Heading = {"Numbers", "from one to nine hundred"};
    report.Columns = {"Number", "Square"};
    report.Rows = 900;
    report.Row = [](int row) {
      return QStringList{QString::number(row + 1), QString::number((row + 1) * (row + 1))};
    };
    QCOMPARE(TextOf(report).section('\n', 0, 2), "Number\tSquare\n1\t1\n2\t4");
    frmPrint screen(report, table_.get());
    screen.show();
    QTRY_VERIFY(Find<QPrintPreviewWidget>(&screen, "picPages")->pageCount() > 5);
    QVERIFY(Find<QPushButton>(&screen, "cmdPrintToPdf")->isEnabled());
    QCOMPARE(Find<QPushButton>(&screen, "cmdPrint")->isEnabled(), CanPrint());
    PrintFile = Path("no such folder/numbers.pdf");
    QVERIFY_EXCEPTION_THROWN(PrintReport(table_.get(), report), std::exception);
  }

 private:
  /// Closes whatever waits for an answer, and counts it.
  struct AnswerModalWindows : QTimer {
    AnswerModalWindows() {
      callOnTimeout([this] {
        QWidget* window = QApplication::activePopupWidget();
        if (!window) window = QApplication::activeModalWidget();
        if (!window) return;
        ++Answered;
        window->close();
      });
      start(5);
    }
    int Answered = 0;
  };

  /// What stands is the same after it was saved and opened.
  void ExpectToComeBack(const QWidget* control) {
    const std::vector<Record> stands = Kept();
    SaveGame(FilePath("back.crp"));
    OpenGame(FilePath("back.crp"), true);
    QVERIFY2(stands == Kept(), qPrintable(control->objectName() + ": " + ShownBy(control)));
  }

  static QWidget* WindowOf(QObject* of) {
    while (!qobject_cast<QMainWindow*>(of)) of = of->parent();
    return qobject_cast<QWidget*>(of);
  }

  static void LayBetsAndRoll() {
    OpenScript(KELVANOR_PROJECT "/examples/martingale.bet");
    Game.ScriptInsertLine = 2;
    SetFieldPreset(1);
    Game.HandleWinningBets = WinSameBet;
    Game.HandleLosingBets = LossSameBet;
    Game.NumAutoRolls = Game.AutoRollsLeft = 3;
    for (const int bet : {+PassLine, +Place6, +Hard8}) PutBet(bet, 12);
    RollNamedDice(2, 2);
    TheHost.RefreshViews();
  }

  /// What a player could notice: the record, messages, the clipboard, windows, and a window's look.
  struct Noticed {
    std::vector<Record> State = Kept();
    TableSettings Settings = TheTable;
    std::size_t Messages = PlannedMessages.Shown.size();
    QString Copied = QApplication::clipboard()->text();
    int Windows = 0;
    QImage Look;

    explicit Noticed(QWidget* window) {
      for (const QWidget* shown : QApplication::topLevelWidgets()) Windows += shown->isVisible();
      Look = window->grab().toImage();
    }
    bool operator==(const Noticed&) const = default;
  };

  void Try(QObject* of, bool enabled, bool tells, const std::function<void()>& act,
           const int& answered, QStringList& dead) {
    if (!enabled && !tells) dead << of->objectName() + " is greyed";
    if (!enabled) return;
    QWidget* window = WindowOf(of);
    for (const ScreenRow& row : AllScreens()) FindScreen(row.Id)->hide();
    if (auto* handbook = table_->findChild<QWidget*>("frmHandbook")) delete handbook;
    table_->show();
    window->show();
    QApplication::clipboard()->setText("Nothing was copied.");
    Game.LogRolls = false;  // so that selecting all events changes something
    const int before = answered;
    const Noticed noticed(window);
    act();
    if (noticed == Noticed(window) && answered == before)
      dead << window->objectName() + ": " + of->objectName();
  }

  /// Tab leads through all controls of a screen, and each has a name for a reader of the screen.
  static void ReachByTab(Screen* screen) {
    QApplication::setActiveWindow(screen);
    std::set<QWidget*> reached;
    const auto controls = screen->findChildren<QWidget*>();
    for (int i = 0; i <= controls.size(); ++i) {
      QWidget* focus = QApplication::focusWidget();
      QTest::keyClick(focus ? focus : screen, Qt::Key_Tab);
      reached.insert(QApplication::focusWidget());
    }
    for (QWidget* control : controls) {
      if (!(control->focusPolicy() & Qt::TabFocus) || !control->isVisible() ||
          !control->isEnabled() || control->focusProxy())
        continue;
      const auto* option = qobject_cast<QRadioButton*>(control);  // arrows lead to the others
      const QString name = screen->objectName() + ": " + control->objectName() + " (" +
                           control->metaObject()->className() + ")";
      QVERIFY2(reached.contains(control) || (option && !option->isChecked()), qPrintable(name));
      const auto* reader = QAccessible::queryAccessibleInterface(control);
      QVERIFY2(reader && !reader->text(QAccessible::Name).isEmpty(), qPrintable(name));
    }
  }

  static QString ShownBy(const QWidget* control) {
    if (auto* box = qobject_cast<const QLineEdit*>(control)) return box->text();
    if (auto* list = qobject_cast<const QComboBox*>(control)) return list->currentText();
    if (auto* button = qobject_cast<const QAbstractButton*>(control))
      return button->text() + (button->isChecked() ? "*" : "");
    if (auto* slider = qobject_cast<const QAbstractSlider*>(control))
      return QString::number(slider->value());
    return {};
  }

  /// Something that a player could do to a control, sound or not.
  static void Play(QWidget* control, int input) {
    const QStringList pasted = {"12",      "999999999999999999", "-7.25",
                                "",        QString(300, 'W'),    "1e9\t",
                                "0.00001", "\u05d0\u4e2d"};
    if (auto* box = qobject_cast<QLineEdit*>(control)) {
      QApplication::clipboard()->setText(pasted[input]);
      box->setFocus();
      box->selectAll();
      QTest::keyClick(box, Qt::Key_Delete);
      QTest::keySequence(box, QKeySequence::Paste);
      QTest::keyClick(box, Qt::Key_Return);
    } else if (auto* button = qobject_cast<QAbstractButton*>(control)) {
      button->click();
    } else if (auto* slider = qobject_cast<QAbstractSlider*>(control)) {
      slider->setValue(input % 2 ? 1'000'000 : -input);
    } else if (control->isVisible()) {
      QWheelEvent wheel({5, 5}, control->mapToGlobal(QPointF(5, 5)), {},
                        {0, input % 2 ? 120 : -120}, {}, {}, Qt::NoScrollPhase, false);
      if (input > 3) control->setFocus();
      QApplication::sendEvent(control, &wheel);
    }
  }
};

SCREEN_TEST(TestFrame)
#include "test_frame.moc"
