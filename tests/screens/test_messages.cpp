// The message screen and the settle screen, pressed with real clicks.

#include "bets/change_bet.h"
#include "screens/frame/asking_window.h"
#include "screens/screen_driver.h"

namespace {

void Put(int betId, Currency change) {
  RequestChange(betId, change);
  QCOMPARE(Game.Change, change);
}

}  // namespace

class TestMessages : public ScreenTest {
  Q_OBJECT

 private slots:
  void init() {
    LayTable();
    PlannedMessages.Active = false;
    Game.SnapMouse = false;
  }

  void showsTheButtonsAndThePictureOfItsFlags() {
    const std::tuple<int, QString, QString, QStringList> cases[] = {
        // clang-format off
        {1, "&OK", "", {}}, {513, "&OK", "picStop", {}}, {529, "&OK &Help", "picStop", {}},
        {257, "&OK", "picOK", {}}, {66049, "&OK", "picStop", {"chkHide"}},
        {5126, "&Yes &No", "picQmark", {}}, {9222, "&Yes &No", "picQmark", {}},
        {5134, "&Yes &No &Cancel", "picQmark", {}}, {4614, "&Yes &No", "picStop", {}},
        {8710, "&Yes &No", "picStop", {}}, {129, "&OK", "", {"txtInput_1"}},
        {137, "&OK &Cancel", "", {"txtInput_1"}},
        {201, "&OK &Cancel", "", {"txtInput_0", "txtInput_1"}},
        {641, "&OK", "picStop", {"txtInput_1"}}};
    // clang-format on
    for (const auto& [flags, buttons, picture, others] : cases)
      Drive("One line\nand another", flags, [&](QDialog* screen) {
        QCOMPARE(screen->windowTitle(), "Question");
        QCOMPARE(screen->findChild<QLabel*>("lblMsg")->text(), "One line\nand another");
        QStringList captions;
        for (int i = 0; i < 5; ++i) {
          const auto* button = screen->findChild<QPushButton*>(QString("cmdButton_%1").arg(i));
          if (button && button->isVisible()) captions << button->text();
        }
        QCOMPARE(captions.join(' '), buttons);
        const QStringList parts = others + QStringList{picture};
        for (const QString name :
             {"picOK", "picStop", "picQmark", "chkHide", "txtInput_0", "txtInput_1"})
          QCOMPARE(screen->findChild<QWidget*>(name) != nullptr, parts.contains(name));
        for (const QWidget* part : screen->findChildren<QWidget*>(Qt::FindDirectChildrenOnly))
          QVERIFY2(screen->rect().contains(part->geometry()), qPrintable(part->objectName()));
        screen->reject();
      });
  }

  void answersByTheButtonPressedAndByEsc() {
    // Or a key, or the frame's cross.
    // clang-format off
    const std::tuple<int, QString, int> cases[] = {
        {YesNoCancel, "cmdButton_1", AnswerYes}, {YesNoCancel, "cmdButton_2", AnswerNo},
        {YesNoCancel, "cmdButton_3", AnswerCancel}, {OkStop, "cmdButton_0", AnswerOk},
        {YesNoCancel, "Esc", AnswerCancel}, {YesNo, "Esc", AnswerNo}, {OkStop, "Esc", AnswerOk},
        {YesNo, "close", AnswerNo}, {OkHelpStop, "cmdButton_4", AnswerOk}};
    // clang-format on
    Game.AppPath = KELVANOR_PROJECT "/docs/";  // where the handbook is
    for (const auto& [flags, button, answer] : cases) {
      Game.MsgAnswer = 0;
      Drive("Well?", flags, [&](QDialog* screen) {
        if (button == "Esc") QTest::keyClick(screen, Qt::Key_Escape);
        if (button == "close") screen->close();
        if (button.startsWith("cmd")) ClickButton(screen, button);
        if (flags != OkHelpStop) return;
        QVERIFY(screen->isVisible());  // help leaves the screen standing
        QCOMPARE(Game.MsgAnswer, 0);
        ClickButton(screen, "cmdButton_0");
      });
      QCOMPARE(Game.MsgAnswer, answer);
    }
  }

  void hidesOnlyTheClassOfTheNotice() {
    // A class, under Hyper-Drive, what is left.
    // clang-format off
    const std::tuple<int, bool, int> cases[] = {
        {HideActions, false, 30}, {HideLimits, false, 29}, {HideCharges, false, 27},
        {HideAutoBet, false, 23}, {HideAutoBet, true, 15}};
    // clang-format on
    for (const auto& [flag, hyper, left] : cases)
      for (const bool checked : {false, true}) {
        Game.Notify = 31;
        Game.HyperDriveOn = hyper;
        Drive("You may not.", OkStop | flag, [&](QDialog* screen) {
          auto* box = screen->findChild<QCheckBox*>("chkHide");
          QVERIFY(box && !box->isChecked());
          if (checked) QTest::keyClick(box, Qt::Key_Space);
          ClickButton(screen, "cmdButton_0");
        });
        Game.HyperDriveOn = false;
        QCOMPARE(Game.Notify, checked ? left : 31);
      }
  }

  void readsTheInputBoxesThroughTheFilter() {
    Game.MsgInput = {"500", "7.5"};
    Drive("Two amounts: ", TwoInputsOkCancel, [](QDialog* screen) {
      auto* first = screen->findChild<QLineEdit*>("txtInput_0");
      auto* second = screen->findChild<QLineEdit*>("txtInput_1");
      QCOMPARE(first->text() + " " + second->text(), "500 7.5");
      QVERIFY(first->geometry().right() < second->geometry().left());
      QCOMPARE(first->geometry().top(), second->geometry().top());
      first->selectAll();
      QTest::keyClicks(first, "-12x.34.56y78");
      QCOMPARE(first->text(), "-12.3456");
      second->selectAll();
      QApplication::clipboard()->setText("a1,250 b");
      QTest::keyClick(second, Qt::Key_V, Qt::ControlModifier);
      QCOMPARE(second->text(), "1250");
      ClickButton(screen, "cmdButton_0");
    });
    QCOMPARE(Game.ChangeRequest, Currency::FromRaw(-123456));
    QCOMPARE(Game.ChangeRequest2, Currency(1250));
    // A single box is the first amount.
    Game.MsgInput = {"500", ""};
    Drive("Enter your beginning bankroll: ", InputOk, [](QDialog* screen) {
      auto* box = screen->findChild<QLineEdit*>("txtInput_1");
      QCOMPARE(box->selectedText(), "500");
      QTest::keyClicks(box, "750");
      QTest::keyClick(box, Qt::Key_Return);
    });
    QCOMPARE(Game.ChangeRequest, Currency(750));
  }

  void snapsThePointerToTheButtonInFocus() {
    for (const bool snap : {false, true}) {
      Game.SnapMouse = snap;
      QCursor::setPos(1, 1);
      Drive("Well?", YesNo, [&](QDialog* screen) {
        QTest::qWait(20);
        const auto* button = screen->findChild<QPushButton*>("cmdButton_1");
        const QRect place(button->mapToGlobal(QPoint(0, 0)), button->size());
        QCOMPARE(place.contains(QCursor::pos()), snap);
        ClickButton(screen, "cmdButton_1");
      });
    }
  }

  void stopsARunRatherThanAskBehindAMinimisedTable() {
    table_->showMinimized();
    QVERIFY(Game.TableMinimised);
    PlannedMessages.Active = true;
    Game.AutoBetRunning = Game.KeepRolling = true;
    Game.MsgAnswer = AnswerCancel;
    ShowMessage("Done", "Notice", 1, PlainOk);
    QVERIFY(Game.AutoBetRunning && Game.KeepRolling);
    ShowMessage("Well?", "Question", 1, YesNo);
    QVERIFY(!Game.AutoBetRunning && !Game.KeepRolling);
    QCOMPARE(Game.MsgAnswer, int(AnswerCancel));
    QVERIFY(PlannedMessages.Shown.empty());

    table_->showNormal();
    QVERIFY(!Game.TableMinimised);
    ShowMessage("Well?", "Question", 1, YesNo);
    QCOMPARE(PlannedMessages.Shown.size(), std::size_t(1));
  }

  void belongsToTheWindowThatAsks() {
    Command(*table_, "mnuFlagValues");
    auto* flags = table_->findChild<QMainWindow*>("frmFlags");
    QVERIFY(flags && QTest::qWaitForWindowExposed(flags));
    for (QMainWindow* const asker : {flags, static_cast<QMainWindow*>(table_.get())}) {
      const auto belongs = [asker](QDialog* screen) {
        QCOMPARE(screen->parentWidget(), asker);
        if (screen->objectName() == "frmMsg") ClickButton(screen, "cmdButton_0");
      };
      asker->activateWindow();
      QTRY_VERIFY(asker->isActiveWindow());
      Drive("Well?", PlainOk, belongs);
      // At once, before a window is active again.
      QCOMPARE(AskingWindow(nullptr), asker);
      Settle(true, 0, belongs);
    }
  }

  void seesTheClickModeGoneBeforeAMessageComes() {
    Put(Field, 10);
    Game.ClickMode = BuyMode;
    bool drawn = false, told = false;
    TheHost.RedrawBets = [&] { drawn = Game.ClickMode == NoClickMode; };
    TheHost.ShowMessage = [&](bool) { told = drawn; };
    ClickBet(*table_, Field);
    InstallQtHost(table_.get());
    QVERIFY(told);
  }

  void goesOnBesideAStatusBox() {
    Game.MsgText = "Working";
    Game.MsgTitle = "Status";
    Game.MsgFlags = PlainOk;
    ShowMessage(0);
    auto* box = table_->findChild<frmMsg*>();
    QVERIFY(box && box->isVisible() && !box->isModal());
    ClickButton(box, "cmdButton_0");
    QVERIFY(!box->isVisible());
  }

  // ---- The settle screen ----

  void handlesWinsAndLossesByTheButtonPressed() {
    // Take down, same bet, press one unit and double, parlay; no bet, remainder, same bet, plus one
    // unit, double; and for both the same bet plus 3, and a bet of 25.
    const int betsAfter[2][7] = {{0, 0, 10, 15, 20, 13, 25}, {0, 10, 15, 20, 20, 13, 25}};
    for (const bool won : {false, true})
      for (int button = 0; button < 7; ++button) {
        LayDownDefaults();
        Settle(won, button, [&](QDialog* screen) {
          QCOMPARE(screen->windowTitle(), won ? "* * * Winner * * *" : "Bet Lost");
          QCOMPARE(screen->findChild<QLabel*>("lblWonBetType_0")->text(), "Field bet:");
          QCOMPARE(screen->findChild<QLabel*>("lblWonBet_0")->text(), "$10");
          if (!won) return;
          QCOMPARE(screen->findChild<QLabel*>("lblWonBetType_1")->text(), "Payoff at 1 to 1:");
          QCOMPARE(screen->findChild<QLabel*>("lblWonBet_1")->text(), "$10");
        });
        QCOMPARE(Game.Bets[Field], Currency(betsAfter[won][button]));
        QCOMPARE(Bankroll(), Currency(won ? 510 : 490));
        QCOMPARE(won ? Game.LastWinChoice : Game.LastLossChoice, button);
        QCOMPARE(Game.ModifyAmount[won ? ScreenWinSameBet : ScreenLossSameBet], Currency(3));
        QCOMPARE(Game.ModifyAmount[won ? ScreenWinBet : ScreenLossBet], Currency(25));
        QCOMPARE(Game.ModifyAmount[won ? ScreenLossBet : ScreenWinBet], Currency(0));
      }
  }

  void stepsThroughOperatorsAndUnits() {
    const auto steps = [](QDialog* screen, const char* name, int times) {
      QStringList texts;
      for (int i = 0; i < times; ++i) {
        ClickButton(screen, name);
        texts << screen->findChild<QPushButton*>(name)->text();
      }
      return texts.join(' ');
    };
    Settle(true, 5, [&](QDialog* screen) {
      QCOMPARE(steps(screen, "cmdMathOperator_0", 6), "- x / + - x");
      QCOMPARE(steps(screen, "cmdUnits_1", 7),
               "% $1 Units $5 Units $25 Units $100 Units $500 Units $");
      QCOMPARE(steps(screen, "cmdUnits_1", 3), "% $1 Units $5 Units");
    });
    QCOMPARE(Game.Bets[Field], Currency(30));  // 10 x 3
    QCOMPARE(Game.ModifyOperator[ScreenWinSameBet], int(ModifyTimes));
    QCOMPARE(Game.ModifyUnit[ScreenWinBet], Currency(3));
  }

  void staysUntilAChoiceIsMadeAndRemembersIt() {
    Settle(true, 3, [](QDialog* screen) {
      screen->close();
      QTest::keyClick(screen, Qt::Key_Escape);
      QVERIFY(screen->isVisible());
    });
    Game.Bets[Field] = Game.TotalOnTable = 0;
    Settle(true, 1, [](QDialog* screen) {
      QCOMPARE(screen->focusWidget()->objectName(), "cmdHandle_3");
      const auto button = [&](int i) {
        return screen->findChild<QWidget*>(QString("cmdHandle_%1").arg(i))->geometry();
      };
      for (int i = 1; i < 7; ++i) QVERIFY(button(i).top() - button(i - 1).bottom() >= 11);
    });
  }

  void offersOnlyToTakeDownABetThatComesDown() {
    Game.Notify = 0;
    Game.HandleWinningBets = WinManual;
    RollNamedDice(2, 2);
    Put(Come, 10);
    OnNextScreen([](QDialog* screen) {
      for (const QString name : {"cmdHandle_1", "cmdHandle_6", "txtModifyAmount_0",
                                 "txtModifyAmount_1", "cmdMathOperator_0", "cmdUnits_0"})
        QVERIFY2(!screen->findChild<QWidget*>(name)->isEnabled(), qPrintable(name));
      ClickButton(screen, "cmdHandle_0");
    });
    RollNamedDice(3, 4);
    QCOMPARE(Game.Bets[Come], Currency(0));
    QCOMPARE(Bankroll(), Currency(510));
  }

 private:
  /// Drives the screen that something shows.
  template <class Act>
  static void DriveAfter(std::function<void(QDialog*)> drive, Act act) {
    bool seen = false;
    OnNextScreen([&](QDialog* screen) {
      seen = true;
      drive(screen);
    });
    act();
    QVERIFY(seen);
  }
  static void Drive(const std::string& text, int flags, std::function<void(QDialog*)> drive) {
    DriveAfter(drive, [&] { ShowMessage(text, "Question", 1, flags); });
  }

  /// Ten dollars on the Field, won or lost, and a choice on the settle screen.
  static void Settle(bool won, int button, std::function<void(QDialog*)> look) {
    Game.Notify = 0;
    Game.HandleWinningBets = WinManual;
    Game.HandleLosingBets = LossManual;
    Put(Field, 10);
    const auto choose = [&](QDialog* screen) {
      look(screen);
      TypeOver(Find<QLineEdit>(screen, "txtModifyAmount_0"), "3");
      TypeOver(Find<QLineEdit>(screen, "txtModifyAmount_1"), "25");
      ClickButton(screen, QString("cmdHandle_%1").arg(button));
    };
    DriveAfter(choose, [won] { RollNamedDice(won ? 4 : 2, won ? 5 : 3); });
  }
};

SCREEN_TEST(TestMessages)
#include "test_messages.moc"
