// Scripts as the player meets them: opened, switched on, asked about, interrupted, by clicks.
#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QTemporaryDir>
#include <tuple>

#include "autobet/compose.h"
#include "autobet/language.h"
#include "autobet/script.h"
#include "autobet/script_file.h"
#include "autoplay/auto_play_settings.h"
#include "core/host.h"
#include "core/messages.h"
#include "screen_driver.h"
#include "screens/choose_file.h"
#include "screens/frmFlags.h"
#include "screens/paper.h"
#include "screens/script_commands.h"

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

constexpr const char* kOffer =
    "Your Auto-Bets have changed or been activated.\n\nYou have an opportunity now to run your "
    "Auto-Bet script for one cycle BEFORE the dice roll in order to check and set any initial "
    "conditions.\n\nWould you like to initialize your Auto-Bets?";

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
    ChooseFile = [this](QWidget*, const FileQuestion& question) {
      asked_.push_back(question);
      return chosen_.isEmpty() ? QString() : chosen_.takeFirst();
    };
  }
  void cleanup() {
    PrintFile.clear();
    asked_.clear();
    chosen_.clear();
    table_.reset();
    static_cast<ScriptState&>(Game) = ScriptState();
    ScriptEdited();
  }

  void scriptIsOpenedSwitchedOnAndOfferedItsFirstCycle() {
    const std::tuple<int, Currency> answers[] = {{AnswerYes, 510}, {AnswerNo, 500}};
    for (const auto& [answer, bankroll] : answers) {
      Game.Bets[BankrollIndex] = 500;
      Open(Write("pass.bet", kPassScript));
      QCOMPARE(asked_.back().Title, "Open Auto-Bet File");
      QCOMPARE(asked_.back().Pattern, "*.bet");
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
      ExpectMessage(kOffer, "Auto-Bet");
      QCOMPARE(Bankroll(), bankroll);
      QCOMPARE(Game.Bets[PassLine], Currency(10));
      captions.removeDuplicates();
      QCOMPARE(captions.join(' '), "Auto-Betting");
      QCOMPARE(TableCaption(), "");
      RightClickRolls(*table_, 3, 4);
      QCOMPARE(Bankroll(), bankroll + 10);
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
    const QString rubbish = folder_->filePath("rubbish.bet");
    QFile file(rubbish);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(QByteArray(700, 'x')) == 700);
    file.close();
    Command(*table_, "mnuAutoBetActive");
    Open(rubbish);
    ExpectMessage("rubbish.bet\nhas either been corrupted or is not a true Kelvanor Auto-Bet file.",
                  "Unable to Open Auto-Bet File");
    QVERIFY(Game.ScrCount == 2 && Game.AutoBetActive == 1);
    QCOMPARE(Status(), "Auto-Bet on:  pass.bet");
    Open("");  // the player thought better of it
    QCOMPARE(Game.ScrCount, 2);
    QCOMPARE(PlannedMessages.Shown.size(), std::size_t(1));

    Open(Write("faulty.bet", kFaulty));  // switches off
    QCOMPARE(PlannedMessages.Shown.size(), std::size_t(2));
    QCOMPARE(PlannedMessages.Shown.back().Title, "Missing Action Lines");
    QVERIFY(Game.ScrCount == 2 && Game.AutoBetActive == 0);
    Command(*table_, "mnuAutoBetActive");  // can't be switched on again
    QCOMPARE(PlannedMessages.Shown.size(), std::size_t(3));
    QVERIFY(Game.AutoBetActive == 0 &&
            !Find<QAction>(table_.get(), "mnuAutoBetActive")->isChecked());
  }

  void structureIsCheckedAndTheScriptCleared() {
    Command(*table_, "mnuCheckBets");
    ExpectMessage(
        "This feature checks to see that your Auto-Bet script is properly structured, but "
        "presently your script is empty.",
        "Auto-Bet");
    Open(Write("pass.bet", kPassScript));
    Command(*table_, "mnuCheckBets");
    ExpectMessage("Your script is properly structured.", "Auto-Bet");
    for (const int answer : {AnswerNo, AnswerYes}) {
      PlannedMessages.Answers = {{answer}};
      Command(*table_, "mnuNewAutoBet");
      QCOMPARE(PlannedMessages.Shown.back().Title, "Clear Auto-Bets");
      QCOMPARE(Game.ScrCount, answer == AnswerNo ? 2 : 0);
    }
    QCOMPARE(Status(), "");
    QVERIFY(QFile::exists(folder_->filePath("pass.bet")));
  }

  void savingAddsTheExtensionAndAsksBeforeItWritesOver() {
    Put(kPassScript);
    chosen_ = {folder_->filePath("x.txt")};
    Command(*table_, "mnuSaveAutoBetAs");
    QCOMPARE(asked_.back().Title, "Save Auto-Bet File As");
    QCOMPARE(asked_.back().Start, folder_->filePath("default.bet"));
    QCOMPARE(QFileInfo(folder_->filePath("x.txt.bet")).size(), 3 * 256);
    QCOMPARE(Status(), "Auto-Bet off:  x.txt.bet");
    QVERIFY(PlannedMessages.Shown.empty());

    Put(kFlagScript);
    chosen_ = {folder_->filePath("x.txt."), folder_->filePath("y.BET")};
    QFile empty(folder_->filePath("y.BET"));
    QVERIFY(empty.open(QIODevice::WriteOnly));
    empty.close();
    PlannedMessages.Answers = {{AnswerNo}};
    Command(*table_, "mnuSaveAutoBetAs");  // No chooses anew; an empty file is no loss
    ExpectMessage("x.txt.bet\n\nis already on file.\nDo you want to overwrite it?",
                  "Save Auto-Bet File As");
    QCOMPARE(PlannedMessages.Shown.size(), std::size_t(1));
    QCOMPARE(QFileInfo(folder_->filePath("x.txt.bet")).size(), 3 * 256);
    QCOMPARE(QFileInfo(folder_->filePath("y.BET")).size(), 4 * 256);

    chosen_ = {folder_->filePath("x.txt.bet")};
    PlannedMessages.Answers = {{AnswerYes}};
    Command(*table_, "mnuSaveAutoBetAs");
    QCOMPARE(QFileInfo(folder_->filePath("x.txt.bet")).size(), 4 * 256);
  }

  void fileIsChosenOnARealScreen() {
    ChooseFile = realChooseFile_;
    const QString path = Write("pass.bet", kPassScript);
    OnNextScreen([&](QDialog* screen) {
      QCOMPARE(screen->windowTitle(), "Open Auto-Bet File");
      auto* dialog = qobject_cast<QFileDialog*>(screen);
      QVERIFY(dialog && dialog->nameFilters().join(' ').contains("*.bet"));
      QCOMPARE(dialog->directory().absolutePath(), QDir(folder_->path()).absolutePath());
      dialog->findChild<QLineEdit*>("fileNameEdit")->setText("pass.bet");
      QMetaObject::invokeMethod(dialog, "accept");
    });
    Command(*table_, "mnuOpenAutoBet");
    QCOMPARE(Game.AutoBetFile, path.toStdString());
    OnNextScreen([](QDialog* screen) { screen->reject(); });
    Command(*table_, "mnuSaveAutoBetAs");
    QCOMPARE(Game.AutoBetFile, path.toStdString());
  }

  void flagsAreShownAndSetByHand() {
    Command(*table_, "mnuFlagValues");
    auto* screen = table_->findChild<frmFlags*>();
    QVERIFY(QTest::qWaitForWindowExposed(screen));
    auto* list = Find<QListWidget>(screen, "lstShowflags");
    const auto rows = [&] {
      QStringList texts;
      for (int row = 0; row < list->count(); ++row) texts << list->item(row)->text();
      return texts.join(", ");
    };
    QVERIFY(Find<QLabel>(screen, "lblNoFlags")->isVisible());
    for (const char* button : {"cmdSetTruth_0", "cmdSetTruth_1", "cmdSelectAll"})
      QVERIFY(!Find<QPushButton>(screen, button)->isEnabled());
    Open(Write("flags.bet", kFlagScript));
    QVERIFY(!Find<QLabel>(screen, "lblNoFlags")->isVisible());
    QCOMPARE(rows(), "Ready - False, Größer - False");

    TakeFlagSnapshot();
    Game.GameChanged = false;
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                      list->visualItemRect(list->item(1)).center());
    ClickButton(screen, "cmdSetTruth_0");
    QCOMPARE(rows(), "Ready - False, Größer - True");
    QVERIFY(Game.Flags[1].FlagValue == kTrue && Game.Flags[1].FlagPrev == kFalse);  // news
    QVERIFY(Game.FlagsTouched && Game.GameChanged);

    Game.AutoBetRunning = true;  // waits for the script that runs
    ClickButton(screen, "cmdSelectAll");
    ClickButton(screen, "cmdSetTruth_0");
    QCOMPARE(rows(), "Ready - False, Größer - True");
    Game.AutoBetRunning = false;
    TheHost.RefreshViews();
    QCOMPARE(rows(), "Ready - True, Größer - True");
    QCOMPARE(list->selectedItems().size(), 2);
    ClickButton(screen, "cmdSetTruth_1");
    QCOMPARE(rows(), "Ready - False, Größer - False");

    QCOMPARE(frmFlags::PrintHeading()[0], "Flag values for Auto-Bet file:   flags.bet");
    QCOMPARE(frmFlags::PrintHeading()[1], "untitled game");
    PrintFile = folder_->filePath("flags.pdf");
    Command(*screen, "mnuPrint");
    QVERIFY(QFileInfo(PrintFile).size() > 0);
    PlannedMessages.Answers = {{AnswerYes}};
    Command(*table_, "mnuNewAutoBet");
    QVERIFY(rows().isEmpty() && Find<QLabel>(screen, "lblNoFlags")->isVisible());
    QCOMPARE(frmFlags::PrintHeading()[0], "Flag values for Auto-Bet file:   untitled");
  }

  void hotKeyRunsItsFileWithCtrlAlone() {
    const QString file = Write("pass.bet", kPassScript);
    Open(Write("flags.bet", kFlagScript));
    Game.HotKeys = {{'B', file.toStdString(), ""}};
    const auto press = [&](Qt::KeyboardModifiers keys) {
      QTest::keyClick(table_.get(), Qt::Key_B, keys);
      return Game.Bets[PassLine];
    };
    for (const Qt::KeyboardModifiers keys :
         {Qt::KeyboardModifiers(), Qt::ControlModifier | Qt::ShiftModifier,
          Qt::ControlModifier | Qt::AltModifier})
      QCOMPARE(press(keys), Currency(0));
    Game.RollInProgress = true;
    QCOMPARE(press(Qt::ControlModifier), Currency(0));
    Game.RollInProgress = false;
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
    QCOMPARE(Game.ScrCount, 3);
    QVERIFY(PlannedMessages.Shown.empty());
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
    PlannedMessages.Answers = {{AnswerYes}, {AnswerYes}};  // initialize; interrupt
    QTimer::singleShot(100, table_.get(), [&] {
      QVERIFY(!table_->close());
      QVERIFY(table_->isVisible());
    });
    RightClickRolls(*table_, 3, 4);
    ExpectMessage("Do you want to interrupt Auto-Betting? ", "Auto-Bet Active");
    QVERIFY(!table_->isVisible());
  }

  void newGameAsksWhatBecomesOfTheScript() {
    const std::string question = "\nWould you like to keep them with\nyour new game?";
    Command(*table_, "mnuNew");
    QVERIFY(PlannedMessages.Shown.empty());
    for (const bool active : {false, true}) {
      Open(Write("flags.bet", kFlagScript));
      Game.AutoBetActive = active;
      Game.ScriptChanged = Game.FlagsTouched = false;
      Game.Flags[0] = {"Ready", kTrue, kTrue};
      Game.Bets[BankrollIndex] = 900;
      PlannedMessages.Answers = {{AnswerYes}};
      Command(*table_, "mnuNew");
      ExpectMessage("Your Auto-Bets are still listed on\nthe Auto-Bet screen." + question,
                    "Auto-Bets Present");
      QCOMPARE(Bankroll(), Currency(500));
      QCOMPARE(Game.ScrCount, 3);
      QCOMPARE(Game.ScriptChanged, active);  // begins afresh only where it is switched on
      QCOMPARE(Game.Flags[0].FlagValue == kFalse && Game.Flags[0].FlagPrev == kFalse, active);
    }
    PlannedMessages.Answers = {{AnswerNo}};
    Command(*table_, "mnuNew");
    QVERIFY(Game.ScrCount == 0 && Game.Flags.empty());
    QCOMPARE(Status(), "");

    Put(kFlagScript);  // in no file
    const std::tuple<std::deque<PlannedAnswer>, int, Currency> ways[] = {
        {{{AnswerCancel}}, 1, 900},
        {{{AnswerYes}}, 1, 900},  // and then no file is chosen
        {{{AnswerNo}, {AnswerYes}}, 2, 500}};
    for (const auto& [answers, messages, bankroll] : ways) {
      PlannedMessages = {true, answers, {}};
      Game.Bets[BankrollIndex] = 900;
      Command(*table_, "mnuNew");
      QCOMPARE(Bankroll(), bankroll);
      QCOMPARE(static_cast<int>(PlannedMessages.Shown.size()), messages);
      QCOMPARE(PlannedMessages.Shown[0].Text,
               "Your current logged bets have not been saved.\nDo you want to save them now?");
      QCOMPARE(PlannedMessages.Shown[0].Title, "Save Auto-Bets?");
    }
    ExpectMessage(
        "Although you didn't save your Auto-Bets\nto disk, they're still listed on "
        "the\nAuto-Bet screen." +
            question,
        "Auto-Bets Present");
    QCOMPARE(Game.ScrCount, 3);
  }

  void loggedMessagesAreTurnedOnAndOff() {
    Game.Notify = 31;
    const std::tuple<const char*, const char*, int> items[] = {
        {"mnuShowLoggedMessagesNormal", "mnuNotify_3", NoticeAutoBet},
        {"mnuShowLoggedMessagesHyper", "mnuNotify_4", NoticeAutoBetHyper}};
    for (const auto& [item, notice, bit] : items) {
      for (const bool on : {false, true}) {
        Command(*table_, item);
        QCOMPARE((Game.Notify & bit) != 0, on);
        QCOMPARE(Find<QAction>(table_.get(), item)->isChecked(), on);
        QCOMPARE(Find<QAction>(table_.get(), notice)->isChecked(), on);
      }
    }
  }

  void boxesOfScriptsFitTheScreen() {
    PlannedMessages.Active = false;
    std::string lines;
    for (int i = 1; i <= 200; ++i) lines += "Line " + std::to_string(i) + " of the script\n";
    const std::string word(80, 'W');
    for (const std::string& text : {std::string("Short\n\n"), lines, word + "\n"}) {
      bool seen = false;
      OnNextScreen([&](QDialog* screen) {
        seen = true;
        QVERIFY(screen->height() <= screen->screen()->availableSize().height());
        QVERIFY(!Find<QLabel>(screen, "lblMsg")->text().endsWith('\n'));
        const auto* area = screen->findChild<QScrollArea*>("scrMsg");
        QCOMPARE(area != nullptr, text == lines);
        if (text.front() == 'W') {
          const auto* label = Find<QLabel>(screen, "lblMsg");
          QVERIFY(label->height() >= 2 * label->fontMetrics().height());  // no letter is cut
        }
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

  void Open(const QString& path) {
    chosen_ = {path};
    Command(*table_, "mnuOpenAutoBet");
  }

  QString Status() { return Find<QLabel>(table_.get(), "lblAutoBet")->text(); }

  const std::function<QString(QWidget*, const FileQuestion&)> realChooseFile_ = ChooseFile;
  std::unique_ptr<QTemporaryDir> folder_;
  std::unique_ptr<frmCrapTable> table_;
  std::vector<FileQuestion> asked_;
  QStringList chosen_;
};

QTEST_MAIN(TestAutoBet)
#include "test_auto_bet.moc"
