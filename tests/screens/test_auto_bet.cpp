// Scripts as the player meets them: opened, switched on, asked about, interrupted, by clicks.
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QTemporaryDir>

#include "autobet/compose.h"
#include "autobet/language.h"
#include "autobet/script.h"
#include "autobet/script_file.h"
#include "core/auto_play_settings.h"
#include "core/host.h"
#include "core/messages.h"
#include "screens/frame/report.h"
#include "screens/screen_driver.h"
#include "screens/scripts/frmFlags.h"
#include "screens/scripts/script_commands.h"

namespace {

ScriptLine Make(int kind, int code = 0, const std::string& name = "", int amount = 0, int to = 0) {
  ScriptLine line;
  line.LineKind = kind;
  line.LineCode = code;
  line.LineName = name;
  line.LineAmount = amount;
  line.ToSubject = to;
  return line;
}

const ScriptLine kBetTen = Make(ActionLine, BetAmount, "", 10, PassLine);
const std::vector<ScriptLine> kPassScript = {Make(DoThisLine), kBetTen};
const std::vector<ScriptLine> kFlagScript = {Make(DoThisLine),
                                             Make(ActionLine, SetFlag, "Ready", kTrue),
                                             Make(ActionLine, SetFlag, "Größer", kFalse)};
const std::vector<ScriptLine> kEndless = {Make(LabelLine, 0, "again"), Make(DoThisLine),
                                          Make(ActionLine, GoTo, "again")};
const std::vector<ScriptLine> kFaulty = {Make(ThenLine), kBetTen};

constexpr const char* kSaveQuestion =
    "Your current logged bets have not been saved.\nDo you want to save them now?";

}  // namespace

class TestAutoBet : public QObject {
  Q_OBJECT

 private slots:
  void init() {
    static_cast<ScriptState&>(Game) = ScriptState();
    folder_ = std::make_unique<QTemporaryDir>();
    table_ = std::make_unique<frmCrapTable>();
    BeginScreens(*table_);
    Game.DataPath = folder_->path().toStdString() + "/";
    Game.HandleWinningBets = WinSameBet;
    Game.HandleLosingBets = LossSameBet;
    PlannedMessages.Active = true;
  }
  void cleanup() {
    PrintFile.clear();
    table_.reset();
    static_cast<ScriptState&>(Game) = ScriptState();
    ScriptEdited();
  }

  void scriptIsOpenedSwitchedOnAndOfferedItsFirstCycle() {
    for (const auto& [answer, bankroll] : {std::pair(AnswerYes, 510), {AnswerNo, 500}}) {
      Game.Bets[BankrollIndex] = 500;
      Open(Write("pass.bet", kPassScript));
      QCOMPARE(Status(), "Auto-Bet off:  pass.bet");
      RightClickRolls(*table_, 3, 4);
      QVERIFY(PlannedMessages.Shown.empty() && Game.Bets[PassLine] == 0);
      Command(*table_, "mnuAutoBetActive");
      QVERIFY(Find<QAction>(table_.get(), "mnuAutoBetActive")->isChecked());
      QCOMPARE(Status(), "Auto-Bet on:  pass.bet");
      QStringList captions;
      TheHost.Wait = [&](int) { captions << TableCaption(); };
      PlannedMessages.Answers = {{answer}};
      RightClickRolls(*table_, 3, 4);  // wins for a bet that stood before the roll
      QCOMPARE(PlannedMessages.Shown.back().Title, "Auto-Bet");  // the offer
      QCOMPARE(Bankroll(), Currency(bankroll));
      QCOMPARE(Game.Bets[PassLine], Currency(10));
      captions.removeDuplicates();
      QCOMPARE(captions.join(' ') + TableCaption(), "Auto-Betting");
      RightClickRolls(*table_, 3, 4);
      QCOMPARE(Bankroll(), Currency(bankroll + 10));
      QCOMPARE(PlannedMessages.Shown.size(), std::size_t(1));  // asked once
      Command(*table_, "mnuAutoBetActive");
      Game.Bets[PassLine] = Game.TotalOnTable = 0;
      RightClickRolls(*table_, 3, 4);
      QCOMPARE(Game.Bets[PassLine], Currency(0));
      PlannedMessages.Shown.clear();
    }
  }

  void whatCannotRunIsRefused() {
    Open(Write("pass.bet", kPassScript));
    QFile file(folder_->filePath("rubbish.bet"));
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(QByteArray(700, 'x')) == 700);
    file.close();
    Command(*table_, "mnuAutoBetActive");
    Open(file.fileName());
    QCOMPARE(PlannedMessages.Shown.back().Title, "Unable to Open Auto-Bet File");
    QCOMPARE(Status(), "Auto-Bet on:  pass.bet");
    Open("");  // the player thought better of it
    QVERIFY(Game.ScrCount == 2 && PlannedMessages.Shown.size() == 1);
    Open(Write("faulty.bet", kFaulty));    // switches off
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
    QVERIFY(QFile::exists(folder_->filePath("faulty.bet")));
  }

  void flagsAreShownAndSetByHand() {
    Command(*table_, "mnuFlagValues");
    auto* screen = table_->findChild<frmFlags*>();
    QVERIFY(QTest::qWaitForWindowExposed(screen));
    auto* list = Find<QListView>(screen, "lstShowflags");
    const auto rows = [list] { return RowsOf(list); };
    for (const char* button : {"cmdSetTruth_0", "cmdSetTruth_1", "cmdSelectAll"})
      QVERIFY(!Find<QPushButton>(screen, button)->isEnabled());
    Open(Write("flags.bet", kFlagScript));
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
    QCOMPARE(rows(), "Ready - False, Größer - True");
    Game.AutoBetAtWork = false;
    TheHost.RefreshViews();
    QCOMPARE(rows(), "Ready - True, Größer - True");
    ClickButton(screen, "cmdSetTruth_1");
    QCOMPARE(rows(), "Ready - False, Größer - False");

    QCOMPARE(frmFlags::FlagsReport().Heading[0], "Flag values for Auto-Bet file:   flags.bet");
    PrintFile = folder_->filePath("flags.pdf");
    Command(*screen, "mnuPrint");
    QVERIFY(QFileInfo(PrintFile).size() > 0);
    PlannedMessages.Answers = {{AnswerYes}};
    Command(*table_, "mnuNewAutoBet");
    QVERIFY(rows().isEmpty() && Find<QLabel>(screen, "lblNoFlags")->isVisible());
    QCOMPARE(frmFlags::FlagsReport().Heading[0], "Flag values for Auto-Bet file:   untitled");
  }

  void hotKeyRunsItsFileWithCtrlAlone() {
    Open(Write("flags.bet", kFlagScript));
    Game.HotKeys = {{'B', Write("pass.bet", kPassScript).toStdString(), ""}};
    const auto press = [&](Qt::KeyboardModifiers keys) {
      QTest::keyClick(table_.get(), Qt::Key_B, keys);
      return Game.Bets[PassLine];
    };
    for (const auto other : {Qt::NoModifier, Qt::ShiftModifier, Qt::AltModifier})
      QCOMPARE(press(other == Qt::NoModifier ? Qt::KeyboardModifiers(other)
                                             : Qt::KeyboardModifiers(Qt::ControlModifier) | other),
               Currency(0));
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
    Open(Write("endless.bet", kEndless));
    Command(*table_, "mnuAutoBetActive");
    Find<QAction>(table_.get(), "mnuRollDice")->setEnabled(true);
    for (const auto& [key, modifiers] : {std::pair(Qt::Key_X, Qt::NoModifier),
                                         {Qt::Key_F5, Qt::NoModifier},
                                         {Qt::Key_B, Qt::ControlModifier}}) {
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

  void tableClosedDuringAScriptClosesAfterIt() {
    Open(Write("endless.bet", kEndless));
    Command(*table_, "mnuAutoBetActive");
    Game.ScriptUnsaved = true;  // closing then offers to save it
    PlannedMessages.Answers = {{AnswerYes}, {AnswerYes}, {AnswerCancel}};
    QTimer::singleShot(100, table_.get(), [&] { QVERIFY(!table_->close()); });
    RightClickRolls(*table_, 3, 4);  // initialize, interrupt, stay, go
    ExpectMessage(kSaveQuestion, "Save Auto-Bets?");
    QCOMPARE(PlannedMessages.Shown[1].Title, "Auto-Bet Active");
    QVERIFY(table_->isVisible() && Game.RollCount[0] == 1);
    Game.GameChanged = false;
    PlannedMessages.Answers = {{AnswerNo}};
    QVERIFY(table_->close() && !table_->isVisible());
  }

  void hyperDriveStopsAScriptThatNeverEnds() {
    Open(Write("endless.bet", kEndless));
    Command(*table_, "mnuAutoBetActive");
    PlannedMessages.Answers = {{AnswerYes}, {AnswerNo}, {AnswerYes}};  // initialize; interrupt
    QTimer::singleShot(100, table_.get(), [&] {
      for (int press = 0; press < 3; ++press) table_->RunHyperDrive();  // the first isn't asked
      QVERIFY(!Game.AutoBetRunning);
    });
    table_->RunHyperDrive();
    ExpectMessage("Do you want to interrupt Auto-Betting? ", "Auto-Bet Active");
    QCOMPARE(PlannedMessages.Shown.size(), std::size_t(3));
    QVERIFY(Game.RollCount[0] == 0 && !Game.HyperDriveOn);  // the run doesn't begin
  }

  void newGameAsksWhatBecomesOfTheScript() {
    const std::string question = "\nWould you like to keep them with\nyour new game?";
    for (const bool active : {false, true}) {
      Open(Write("flags.bet", kFlagScript));
      Game.AutoBetActive = active;
      Game.ScriptChanged = false;
      Game.Flags[0] = {"Ready", kTrue, kTrue};
      Game.Bets[BankrollIndex] = 900;
      PlannedMessages.Answers = {{AnswerYes}};
      NewGame();
      ExpectMessage("Your Auto-Bets are still listed on\nthe Auto-Bet screen." + question,
                    "Auto-Bets Present");
      QVERIFY(Bankroll() == 500 && Game.ScrCount == 3);
      QCOMPARE(Game.ScriptChanged, active);  // begins afresh only where it is switched on
      QCOMPARE(Game.Flags[0].FlagValue == kFalse && Game.Flags[0].FlagPrev == kFalse, active);
    }
    PlannedMessages = {true, {{AnswerNo}}, {}};
    NewGame();
    QVERIFY(Game.ScrCount == 0 && Game.Flags.empty() && Status().isEmpty());
    NewGame();
    QCOMPARE(PlannedMessages.Shown.size(), std::size_t(1));  // nothing is left to ask about

    Put(kFlagScript);  // in no file
    const std::pair<std::deque<PlannedAnswer>, Currency> ways[] = {
        {{{AnswerCancel}}, 900}, {{{AnswerNo}, {AnswerYes}}, 500}};
    for (const auto& [answers, bankroll] : ways) {
      PlannedMessages = {true, answers, {}};
      Game.Bets[BankrollIndex] = 900;
      NewGame();
      QCOMPARE(Bankroll(), bankroll);
      QCOMPARE(PlannedMessages.Shown.size(), answers.size());
      QCOMPARE(PlannedMessages.Shown[0].Text, kSaveQuestion);
    }
    ExpectMessage(
        "Although you didn't save your Auto-Bets\nto disk, they're still listed on "
        "the\nAuto-Bet screen." +
            question,
        "Auto-Bets Present");
    PlannedMessages.Answers = {{AnswerYes}, {AnswerYes}};  // saves it under the name of all such
    NewGame();
    QVERIFY(Game.ScrCount == 3 && QFile::exists(folder_->filePath("default.bet")));
    QCOMPARE(Status(), "Auto-Bet on:  default.bet");
  }

  void boxesOfScriptsFitTheScreen() {
    PlannedMessages.Active = false;
    std::string lines;
    for (int i = 1; i <= 200; ++i) lines += "Line of the script\n";
    for (const std::string& text : {std::string("Short\n\n"), lines, std::string(80, 'W')}) {
      bool seen = false;
      OnNextScreen([&](QDialog* screen) {
        seen = true;
        QVERIFY(screen->height() <= screen->screen()->availableSize().height());
        const auto* label = Find<QLabel>(screen, "lblMsg");
        QVERIFY(!label->text().endsWith('\n'));
        QCOMPARE(screen->findChild<QScrollArea*>("scrMsg") != nullptr, text == lines);
        QVERIFY(text[0] != 'W' || label->height() >= 2 * label->fontMetrics().height());
        for (const QWidget* part : screen->findChildren<QWidget*>(Qt::FindDirectChildrenOnly))
          QVERIFY2(screen->rect().contains(part->geometry()), qPrintable(part->objectName()));
        ClickButton(screen, "cmdButton_0");
      });
      ShowMessage(text, "Auto-Bet", 640, int(OkTick) | HideAutoBet);
      QVERIFY(seen);
    }
  }

 private:
  /// Lines as logged one after the other into an empty script.
  static void Put(const std::vector<ScriptLine>& lines) {
    ClearScript();
    for (ScriptLine line : lines) {
      LogLine(line);
      InsertLine(Game.ScrCount + 1, line);
    }
    Game.ScriptChanged = false;
  }

  /// Writes a script to a file and leaves none in force.
  QString Write(const QString& name, const std::vector<ScriptLine>& lines) {
    const ScriptState before = Game;
    Put(lines);
    const QString path = folder_->filePath(name);
    SaveScript(path.toStdString());
    static_cast<ScriptState&>(Game) = before;
    ScriptEdited();
    return path;
  }

  /// Opens a script by the file screen, or leaves that without a file.
  void Open(const QString& path) {
    ChooseOnNextScreen(path);
    Command(*table_, "mnuOpenAutoBet");
  }

  static void ChooseOnNextScreen(const QString& path) {
    OnNextScreen([path](QDialog* screen) {
      if (path.isEmpty()) return screen->reject();
      Find<QLineEdit>(screen, "txtFileName")->setText(path);
      ClickButton(screen, "cmdOK");
      if (screen->isVisible()) screen->reject();  // it stands as long as nothing was opened
    });
  }

  /// A new game that needs no saving of the old.
  void NewGame() {
    Game.GameChanged = false;
    Command(*table_, "mnuNew");
  }

  QString Status() { return Find<QLabel>(table_.get(), "lblAutoBet")->text(); }

  std::unique_ptr<QTemporaryDir> folder_;
  std::unique_ptr<frmCrapTable> table_;
};

SCREEN_TEST(TestAutoBet)
#include "test_auto_bet.moc"
