// Scripts as the player meets them: opened, switched on, asked about, interrupted, by clicks.

#include "autobet/script_reader.h"
#include "core/auto_play_settings.h"
#include "screens/screen_driver.h"
#include "screens/scripts/frmFlags.h"

namespace {

const char* const kPassScript = "Do this . . .\nBet $ 10 on Pass Line\n";
const char* const kFlagScript =
    "Do this . . .\nSet flag \"Ready\" to True\nSet flag \"Größer\" to False\n";
const char* const kEndless = "Label \"again\"\nDo this . . .\nGo to \"again\"\n";
const char* const kFaulty = "then . . .\nBet $ 10 on Pass Line\n";

}  // namespace

class TestAutoBet : public ScreenTest {
  Q_OBJECT

 private slots:
  void init() {
    LayTable();
    Game.HandleWinningBets = WinSameBet;
    Game.HandleLosingBets = LossSameBet;
  }

  void scriptIsOpenedSwitchedOnAndOfferedItsFirstCycle() {
    Choose(Keep("pass.bet", kPassScript));
    QCOMPARE(Status(), "Auto-Bet off:  pass.bet");
    RightClickRolls(*table_, 3, 4);
    QVERIFY(PlannedMessages.Shown.empty() && Game.Bets[PassLine] == 0);
    Command(*table_, "mnuAutoBetActive");
    QVERIFY(Find<QAction>(table_.get(), "mnuAutoBetActive")->isChecked());
    QCOMPARE(Status(), "Auto-Bet on:  pass.bet");
    QStringList captions;
    TheHost.Wait = [&](int) { captions << TableCaption(); };
    PlannedMessages.Answers = {{AnswerYes}};
    for (int roll = 0; roll < 2; ++roll) RightClickRolls(*table_, 3, 4);
    QCOMPARE(PlannedMessages.Shown.size(), std::size_t(1));  // the offer, once
    QVERIFY(Bankroll() == 520 && Game.Bets[PassLine] == 10);
    captions.removeDuplicates();
    QCOMPARE(captions.join(' ') + TableCaption(), "Auto-Betting");
    Command(*table_, "mnuAutoBetActive");
    Game.Bets[PassLine] = Game.TotalOnTable = 0;
    RightClickRolls(*table_, 3, 4);
    QCOMPARE(Game.Bets[PassLine], Currency(0));
  }

  void whatCannotRunIsRefused() {
    Choose(Keep("pass.bet", kPassScript));
    ScreenTest::Write("rubbish.bet", QByteArray(700, 'x'));
    Command(*table_, "mnuAutoBetActive");
    Choose(Path("rubbish.bet"));
    QCOMPARE(PlannedMessages.Shown.back().Title, "Unable to Open Auto-Bet File");
    QCOMPARE(Status(), "Auto-Bet on:  pass.bet");
    Choose("");  // the player thought better of it
    QVERIFY(Game.ScrCount == 2 && PlannedMessages.Shown.size() == 1);
    Choose(Keep("faulty.bet", kFaulty));   // switches off
    Command(*table_, "mnuAutoBetActive");  // can't be switched on again
    QCOMPARE(PlannedMessages.Shown.size(), std::size_t(3));
    QCOMPARE(PlannedMessages.Shown.back().Title, "Missing Action Lines");
    QVERIFY(Game.AutoBetActive == 0 &&
            !Find<QAction>(table_.get(), "mnuAutoBetActive")->isChecked());
    for (const int answer : {AnswerNo, AnswerYes}) {
      PlannedMessages.Answers = {{answer}};
      Command(*table_, "mnuNewAutoBet");
      QCOMPARE(Status(), answer == AnswerNo ? "Auto-Bet off:  faulty.bet" : "");
    }
  }

  void flagsAreShownAndSetByHand() {
    Command(*table_, "mnuFlagValues");
    auto* screen = table_->findChild<frmFlags*>();
    QVERIFY(QTest::qWaitForWindowExposed(screen));
    auto* list = Find<QListView>(screen, "lstShowflags");
    const auto rows = [list] { return RowsOf(list); };
    QVERIFY(!Find<QPushButton>(screen, "cmdSetTruth_0")->isEnabled());
    Choose(Keep("flags.bet", kFlagScript));
    QCOMPARE(rows(), "Ready - False, Größer - False");
    TakeFlagSnapshot();
    Game.GameChanged = false;
    ClickRow(list, 1);
    ClickButton(screen, "cmdSetTruth_0");
    QCOMPARE(rows(), "Ready - False, Größer - True");
    QVERIFY(Game.Flags[1].FlagPrev == kFalse && Game.FlagsTouched && Game.GameChanged);  // news

    Game.AutoBetAtWork = true;  // waits for the script that runs
    ClickButton(screen, "cmdSelectAll");
    ClickButton(screen, "cmdSetTruth_0");
    Game.AutoBetAtWork = false;
    TheHost.RefreshViews();
    QCOMPARE(rows(), "Ready - True, Größer - True");
    QCOMPARE(frmFlags::FlagsReport().Heading[0], "Flag values for Auto-Bet file:   flags.bet");
    PlannedMessages.Answers = {{AnswerYes}};
    Command(*table_, "mnuNewAutoBet");
    QVERIFY(rows().isEmpty() && Find<QLabel>(screen, "lblNoFlags")->isVisible());
  }

  void hotKeyRunsItsFileWithCtrlAlone() {
    Choose(Keep("flags.bet", kFlagScript));
    Game.HotKeys = {{'B', Keep("pass.bet", kPassScript).toStdString(), ""}};
    const auto press = [&](Qt::KeyboardModifiers keys) {
      QTest::keyClick(table_.get(), Qt::Key_B, keys);
      return Game.Bets[PassLine];
    };
    QCOMPARE(press(Qt::NoModifier), Currency(0));
    QCOMPARE(press(Qt::ControlModifier | Qt::ShiftModifier), Currency(0));
    QStringList captions;
    TheHost.Wait = [&](int) {
      captions << TableCaption();
      RightClickRolls(*table_, 3, 4);  // not while the script is at work
    };
    QCOMPARE(press(Qt::ControlModifier), Currency(10));
    QVERIFY(!captions.isEmpty() && captions.count("Hot-Key") == captions.size());
    QCOMPARE(Game.RollCount[0], 0);
    Game.KeyInBetAmounts = true;  // an amount under way is entered first
    ClickBet(*table_, Field);
    auto* box = Find<QLineEdit>(table_.get(), "txtEnterBet");
    QTest::keyClicks(box, "5");
    QTest::keyClick(box, Qt::Key_B, Qt::ControlModifier);
    QVERIFY(Game.Bets[Field] == 5 && !Game.KeyedBoxOpen);
    QCOMPARE(Status(), "Auto-Bet off:  flags.bet");
    QVERIFY(Game.ScrCount == 3 && PlannedMessages.Shown.empty());
  }

  void everyKeyAsksWhetherToInterrupt() {
    Choose(Keep("endless.bet", kEndless));
    Command(*table_, "mnuAutoBetActive");
    Find<QAction>(table_.get(), "mnuRollDice")->setEnabled(true);
    const std::pair<Qt::Key, Qt::KeyboardModifier> keys[] = {{Qt::Key_X, Qt::NoModifier},
                                                             {Qt::Key_F5, Qt::NoModifier},
                                                             {Qt::Key_B, Qt::ControlModifier}};
    for (const auto& [key, modifiers] : keys) {
      PlannedMessages.Shown.clear();
      PlannedMessages.Answers = {{AnswerNo}, {AnswerYes}};
      Game.ScriptChanged = false;
      QTimer::singleShot(100, table_.get(), [&, key = key, modifiers = modifiers] {
        QVERIFY(Game.AutoBetRunning);
        for (const char* name : {"mnuNew", "mnuOpenAutoBet", "mnuAutoBetActive"})
          Find<QAction>(table_.get(), name)->trigger();  // nothing comes of it
        QTest::keyClick(table_.get(), Qt::Key_Control);
        QVERIFY(PlannedMessages.Shown.empty());
        QTest::keyClick(table_.get(), key, modifiers);
        QVERIFY(Game.AutoBetRunning);  // No
        QTest::keyClick(table_.get(), key, modifiers);
        QVERIFY(!Game.AutoBetRunning);
      });
      RightClickRolls(*table_, 3, 4);
      ExpectMessage("Do you want to interrupt Auto-Betting? ", "Auto-Bet Active");
      QCOMPARE(PlannedMessages.Shown.size(), std::size_t(2));
      QVERIFY(!Game.RollInProgress && Game.AutoBetActive == 1 && Game.ScrCount == 3);
    }
  }

  void hyperDriveStopsAScriptThatNeverEnds() {
    Choose(Keep("endless.bet", kEndless));
    Command(*table_, "mnuAutoBetActive");
    PlannedMessages.Answers = {{AnswerYes}, {AnswerNo}, {AnswerYes}};  // initialize; interrupt
    QTimer::singleShot(100, table_.get(), [&] {
      for (int press = 0; press < 3; ++press) table_->RunHyperDrive();  // the first isn't asked
      QVERIFY(!Game.AutoBetRunning);
    });
    table_->RunHyperDrive();
    QCOMPARE(PlannedMessages.Shown.size(), std::size_t(3));
    QVERIFY(Game.RollCount[0] == 0 && !Game.HyperDriveOn);  // the run doesn't begin
  }

  void newGameAsksWhatBecomesOfTheScript() {
    const std::string question = "\nWould you like to keep them with\nyour new game?";
    for (const bool active : {false, true}) {
      Choose(Keep("flags.bet", kFlagScript));
      Game.AutoBetActive = active;
      Game.ScriptChanged = false;
      Game.Flags[0] = {"Ready", kTrue, kTrue};
      PlannedMessages.Answers = {{AnswerYes}};
      NewGame();
      ExpectMessage("Your Auto-Bets are still listed on\nthe Auto-Bet screen." + question,
                    "Auto-Bets Present");
      QCOMPARE(Game.ScriptChanged, active);  // begins afresh only where it is switched on
      QCOMPARE(Game.Flags[0].FlagValue == kFalse && Game.Flags[0].FlagPrev == kFalse, active);
    }
    PlannedMessages.Answers = {{AnswerNo}};
    NewGame();
    QVERIFY(Game.ScrCount == 0 && Game.Flags.empty() && Status().isEmpty());
    LoadScript(kFlagScript);  // in no file
    Game.ScriptUnsaved = true;
    Game.Bets[BankrollIndex] = 900;
    PlannedMessages = {true, {{AnswerCancel}}, {}};
    NewGame();
    QVERIFY(Bankroll() == 900 && PlannedMessages.Shown[0].Title == "Save Auto-Bets?");
    PlannedMessages.Answers = {{AnswerNo}, {AnswerYes}};
    NewGame();
    QVERIFY(
        Told().startsWith("Although you didn't save your Auto-Bets\nto disk, they're still listed "
                          "on the\nAuto-Bet screen."));
    QVERIFY(Told().endsWith(question.c_str()));
    PlannedMessages.Answers = {{AnswerYes}, {AnswerYes}};  // saves it under the name of all such
    NewGame();
    QVERIFY(Game.ScrCount == 3 && QFile::exists(Path("default.bet")));
    QCOMPARE(Status(), "Auto-Bet on:  default.bet");
  }

  void boxesOfScriptsFitTheScreen() {
    PlannedMessages.Active = false;
    const QString lines = QString("Line of the script\n").repeated(200);
    for (const QString& text : {QString("Short\n\n"), lines, QString(80, 'W')}) {
      OnNextScreen([&](QDialog* screen) {
        QVERIFY(screen->height() <= screen->screen()->availableSize().height());
        const auto* label = Find<QLabel>(screen, "lblMsg");
        QVERIFY(!label->text().endsWith('\n'));
        QCOMPARE(screen->findChild<QScrollArea*>("scrMsg") != nullptr, text == lines);
        QVERIFY(text[0] != 'W' || label->height() >= 2 * label->fontMetrics().height());
        ClickButton(screen, "cmdButton_0");
      });
      ShowMessage(text.toStdString(), "Auto-Bet", 640, int(OkTick) | HideAutoBet);
    }
  }

 private:
  /// Writes a script to a file and leaves none in force.
  QString Keep(const QString& name, const char* lines) {
    const ScriptState before = Game;
    LoadScript(lines);
    SaveScript(FilePath(name));
    static_cast<ScriptState&>(Game) = before;
    ScriptEdited();
    return Path(name);
  }

  /// Opens a script by the file screen, or leaves that without a file.
  void Choose(const QString& path) {
    NameFile(path);
    Command(*table_, "mnuOpenAutoBet");
  }

  /// A new game that needs no saving of the old.
  void NewGame() {
    Game.GameChanged = false;
    Command(*table_, "mnuNew");
  }

  QString Status() { return Find<QLabel>(table_.get(), "lblAutoBet")->text(); }
};

SCREEN_TEST(TestAutoBet)
#include "test_auto_bet.moc"
