// The file screen and the commands that open it, by clicks and keys.
#include "screens/files/frmFile.h"

#include <QCompleter>
#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>

#include "persistence/kept_game.h"
#include "persistence/session.h"
#include "screens/files/data_folder.h"
#include "screens/files/folder_lock.h"
#include "screens/frame/controls.h"
#include "screens/frame/window_places.h"
#include "screens/screen_driver.h"
#include "screens/statistics/frmBankroll.h"
#include "screens/table/game_commands.h"

class TestFileScreen : public ScreenTest {
  Q_OBJECT

 private slots:
  void init() {
    static_cast<ScriptState&>(Game) = ScriptState();
    static_cast<KeptViews&>(Game) = KeptViews();
    LayTable();
  }

  void screenStartsInTheDataFolderAndFollowsItsLists() {
    Write("b.bet");
    Write("A ñ.BET");
    Write("other.txt");
    QVERIFY(QDir(folder_->path()).mkpath("Unter ordner/tief"));
    Write("Unter ordner/x.bet");
    Game.AutoBetFile = FilePath("b.bet");
    frmFile screen(FileCommand::OpenScript, nullptr);
    screen.show();
    QCOMPARE(screen.windowTitle(), "Open Auto-Bet File");
    QCOMPARE(Find<QLineEdit>(&screen, "txtFileName")->text(), "b.bet");
    QCOMPARE(Rows(screen, "filFiles"), "A ñ.BET, b.bet");
    auto* completer = Find<QLineEdit>(&screen, "txtFileName")->completer();
    completer->setCompletionPrefix("a");
    QCOMPARE(completer->currentCompletion(), "A ñ.BET");

    ClickRow(screen, "filFiles", "A ñ.BET");
    QCOMPARE(Find<QLineEdit>(&screen, "txtFileName")->text(), "A ñ.BET");
    ClickRow(screen, "dirDirectory", "Unter ordner", true);  // twice, and goes in once
    QCOMPARE(Rows(screen, "dirDirectory") + ": " + Rows(screen, "filFiles"), ".., tief: x.bet");
    ClickRow(screen, "dirDirectory", "tief");
    QVERIFY(Find<QLabel>(&screen, "lblNoFiles")->isVisible());
    ClickRow(screen, "dirDirectory", "..");
    QVERIFY(QDir(folder_->path()).removeRecursively());
    ClickRow(screen, "dirDirectory", "..");  // gone meanwhile
    ExpectMessage(QDir::toNativeSeparators(folder_->path()).toStdString() +
                      "\ncan't be opened: there's no such folder.",
                  "Open Auto-Bet File");
    QVERIFY(Game.LastErrorText.find("File Screen") != std::string::npos);

    ClickRow(screen, "drvDrive", "/");
    QCOMPARE(Find<QLineEdit>(&screen, "txtFolder")->text(), "/");
    QCOMPARE(PlannedMessages.Shown.size(), std::size_t(1));
  }

  void examplesAreTwoClicksAway() {
    QVERIFY(QDir(folder_->path()).mkpath("examples"));
    Write("examples/first.bet");
    const std::string appPath = std::exchange(Game.AppPath, FilePath(""));
    frmFile screen(FileCommand::SelectHotKeyScript, nullptr);
    screen.show();
    ClickRow(screen, "drvDrive", "Examples");
    ClickRow(screen, "filFiles", "first.bet");
    ClickButton(&screen, "cmdOK");
    QCOMPARE(Text(Game.SelectedFileName), Path("examples/first.bet"));
    Game.AppPath = appPath;
  }

  void everyTitleFitsItsScreen() {
    Game.WindowPlaces[FileWindow] = {0, 0, 0, 200, 200};
    for (int command = 0; command < kFileCommands; ++command) {
      const frmFile screen(static_cast<FileCommand>(command), nullptr);
      QVERIFY(screen.width() > QFontMetrics(screen.font()).horizontalAdvance(screen.windowTitle()));
    }
  }

  void builtProgramsKeepTheirStateElsewhere() {
    QStandardPaths::setTestModeEnabled(true);
    QVERIFY(QDir(folder_->path()).mkpath("build/bin"));
    QCOMPARE(DataFolder(Path("build/bin")), Path("build/bin"));  // installed where it may write
    Write("build/CMakeCache.txt");
    const QString folder = DataFolder(Path("build/bin"));
    QCOMPARE(folder, QStandardPaths::writableLocation(QStandardPaths::AppDataLocation));
    QVERIFY(QFileInfo(folder).isWritable());
    QStandardPaths::setTestModeEnabled(false);
  }

  void screenStaysUntilTheCommandIsDone() {
    Write("full.crp");
    PlannedMessages.Answers = {{AnswerOk}, {AnswerNo}};
    OnNextScreen([&](QDialog* screen) {
      auto* name = Find<QLineEdit>(screen, "txtFileName");
      name->clear();
      ClickButton(screen, "cmdOK");
      ExpectMessage("Please enter a file name.", "Missing Filename");
      QTest::keyClicks(name, " full");
      QTest::keyClick(name, Qt::Key_Return);
      ExpectMessage("full.crp\n\nis already on file.\nDo you want to overwrite it?",
                    "Save Game File As");
      QVERIFY(screen->isVisible());
      name->clear();
      QTest::keyClicks(name, "gone/new");  // a folder that isn't there, in the one that is shown
      ClickButton(screen, "cmdOK");
      ExpectMessage("new.crp\ncan't be written: there's no such folder.\n\nFolder:  " +
                        Path("gone").toStdString(),
                    "Unable to Save Kelvanor Game File");
      QVERIFY(screen->isVisible());
      name->setText("new game");
      ClickButton(screen, "cmdOK");
      QVERIFY(!screen->isVisible());
    });
    Command(*table_, "mnuSaveGameAs");
    QCOMPARE(PlannedMessages.Shown.size(), std::size_t(3));
    QCOMPARE(Game.GameFileName, FilePath("new game.crp"));
    QCOMPARE(table_->windowTitle(), "Kelvanor (new game.crp)");
    QCOMPARE(QFileInfo(Path("full.crp")).size(), 1);

    Game.Bets[BankrollIndex] = 77;
    Game.GameChanged = true;
    Command(*table_, "mnuSaveGame");
    QCOMPARE(PlannedMessages.Shown.size(), std::size_t(3));
    Game.Bets[BankrollIndex] = 1;
    OnNextScreen([](QDialog* screen) { ClickRow(*screen, "filFiles", "new game.crp", true); });
    Command(*table_, "mnuOpenGame");
    QCOMPARE(Bankroll(), Currency(77));
  }

  void deleteKeyDeletesAFileThatIsNotInUse() {
    Write("a.bet");
    Write("b.bet");
    Game.AutoBetFile = FilePath("a.bet");
    OnNextScreen([&](QDialog* screen) {
      auto* files = Find<QListView>(screen, "filFiles");
      const auto press = [&](const char* file, int answer) {
        ClickRow(*screen, "filFiles", file);
        PlannedMessages.Answers = {{answer}};
        QTest::keyClick(files, Qt::Key_Delete);
        return Rows(*screen, "filFiles");
      };
      QCOMPARE(press("a.bet", AnswerOk), "a.bet, b.bet");
      QCOMPARE(press("b.bet", AnswerNo), "a.bet, b.bet");
      QCOMPARE(press("b.bet", AnswerYes), "a.bet");
      ClickButton(screen, "cmdCancel");
    });
    QVERIFY(!RunFileScreen(table_.get(), FileCommand::OpenScript));
    QCOMPARE(PlannedMessages.Shown.size(), std::size_t(3));
    QVERIFY(!QFile::exists(Path("b.bet")));
  }

  void leavingOffersToSaveEachInTurn() {
    ScriptLine line;
    line.LineKind = RemarkLine;
    const std::string titles[] = {"Save Auto-Bets?", "Save Probabilities?", "Save Game?"};
    for (std::size_t asked = 1; asked <= 3; ++asked) {
      ClearScript();
      InsertLine(1, line);
      Game.ProbabilityChanged = Game.GameChanged = true;
      PlannedMessages.Shown.clear();
      PlannedMessages.Answers.assign(asked - 1, {AnswerNo});
      PlannedMessages.Answers.push_back({AnswerCancel});
      asked == 2 ? Command(*table_, "mnuNew") : static_cast<void>(table_->close());
      QVERIFY(table_->isVisible() && Game.GameChanged && Game.ScrCount == 1);
      QCOMPARE(PlannedMessages.Shown.size(), asked);
      for (std::size_t i = 0; i < asked; ++i) QCOMPARE(PlannedMessages.Shown[i].Title, titles[i]);
    }
    QVERIFY(!QFile::exists(Path("default.crp")));

    PlannedMessages.Answers = {{AnswerNo}, {AnswerYes}, {AnswerYes}};
    OnNextScreen([](QDialog* screen) {
      Find<QLineEdit>(screen, "txtFileName")->setText("mine");
      OnNextScreen([](QDialog* second) { second->reject(); });  // no name for the game: go back
      ClickButton(screen, "cmdOK");
    });
    table_->close();
    QVERIFY(table_->isVisible() && QFile::exists(Path("mine.prb")) && !Game.ProbabilityChanged);

    // A game that can't be kept isn't thrown away unasked.
    const std::string dataPath = std::exchange(Game.DataPath, FilePath("gone/"));
    PlannedMessages.Answers = {{AnswerNo}, {AnswerNo}, {AnswerOk}, {AnswerOk}, {AnswerNo}};
    table_->close();
    ExpectQuestionAboutSession();
    QVERIFY(table_->isVisible() && PlannedMessages.Answers.empty());
    Game.DataPath = dataPath;
    Game.GameChanged = true;

    Write("active.tmp");
    table_->ShowAsLeft();
    Command(*table_, "mnuBankroll");
    table_->move(33, 44);
    PlannedMessages.Answers = {{AnswerNo}, {AnswerNo}};
    table_->close();
    QVERIFY(!table_->isVisible() && QFile::exists(Path("default.crp")));
    QVERIFY(!QFile::exists(Path("active.tmp")) && QApplication::overrideCursor() == nullptr);
    OpenLastSession();
    QVERIFY(WasOpen(BankrollWindow) && !WasOpen(FlagsWindow));
    QCOMPARE(Game.WindowPlaces[TableWindow].Left, 33);
  }

  void windowsComeBackOnTheScreenThatIsThere() {
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    const WindowPlace places[] = {{-1, 20, 30, 500, 400},
                                  {-1, 90'000, -90'000, 500, 400},
                                  {-1, -50, 10, 90'000, 90'000},
                                  {-1, 2'147'483'647, 2'147'483'647, 2'147'483'647, 2'147'483'647}};
    for (const WindowPlace& place : places) {
      Game.WindowPlaces[SummaryWindow] = place;
      QWidget window;
      FollowPlace(&window, SummaryWindow);
      QVERIFY2(screen.contains(QRect(window.pos(), window.size())),
               qPrintable(QString::number(place.Top)));
      if (place.Top == 20) QCOMPARE(window.geometry(), QRect(30, 20, 500, 400));
    }
    Game.WindowPlaces[BankrollWindow] = {-1, 20, 30, 700, 500};
    table_->ShowAsLeft();
    auto* bankroll = table_->findChild<frmBankroll*>();
    QVERIFY(bankroll && bankroll->isVisible() && bankroll->pos() == QPoint(30, 20));
    bankroll->close();
    QVERIFY(!WasOpen(BankrollWindow));
  }

  void enterWithCompletionsInSightIsMeantForOk() {
    Write("one.bet");
    Write("one more.bet");
    Game.SelectedFileName.clear();
    frmFile screen(FileCommand::SelectHotKeyScript, nullptr);
    screen.show();
    screen.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&screen));
    auto* name = Find<QLineEdit>(&screen, "txtFileName");
    QTest::keyClicks(name, "one");
    auto* list = name->completer()->popup();
    QTRY_VERIFY(list->isVisible());
    QTest::keyClick(list, Qt::Key_Return);
    QTRY_VERIFY(!screen.isVisible());
    QCOMPARE(Game.SelectedFileName, FilePath("one.bet"));
  }

  void closingAMinimisedTableStillAsks() {
    Game.GameChanged = true;
    table_->showMinimized();
    QTRY_VERIFY(Game.TableMinimised);
    Game.MsgAnswer = AnswerNo;
    PlannedMessages.Answers = {{AnswerCancel}};
    QVERIFY(!table_->close());
    ExpectMessage(
        "Your current game has not been saved.\nDo you want to save it now?\n\n"
        "With No it goes on all the same when you start Kelvanor again.",
        "Save Game?");
    QVERIFY(!table_->isMinimized());
  }

  void closingThatIsCancelledLeavesTheDiceRolling() {
    Game.GameChanged = Game.AutoRollDice = true;
    PlannedMessages.Answers = {{AnswerCancel}};
    QTimer::singleShot(0, table_.get(), [&] { table_->close(); });
    ClickPlace(*table_, {300, 210}, {}, Qt::RightButton);
    QCOMPARE(PlannedMessages.Shown.size(), std::size_t(1));
    QVERIFY(!Game.RollInProgress);
    const int rolled = Game.RollCount[0];
    QTimer stop;
    connect(&stop, &QTimer::timeout, this, [&] {
      if (Game.RollCount[0] > rolled + 2) Game.KeepRolling = false;
    });
    stop.start(1);
    QTRY_VERIFY(Game.RollCount[0] > rolled + 2);
    QTRY_VERIFY(!Game.RollInProgress);
  }

  void sessionThatCannotBeKeptMayGoOn() {
    QVERIFY(QDir(folder_->path()).removeRecursively());
    Game.GameChanged = false;
    PlannedMessages.Answers = {{AnswerOk}, {AnswerNo}, {AnswerOk}, {AnswerYes}};
    QVERIFY(!table_->close());
    QVERIFY(PlannedMessages.Shown.front().Text.starts_with("default.crp\ncan't be written: "));
    ExpectQuestionAboutSession();
    QVERIFY(table_->isVisible() && !QGuiApplication::overrideCursor());
    QVERIFY(table_->close() && !table_->isVisible());
  }

  /// The program is told to end while the dice roll and a screen waits for an answer.
  void aProgramThatIsToldToEndAsksNothing() {
    OfferKeptGame();
    PlannedMessages.Active = false;
    Game.HandleWinningBets = WinManual;
    Game.HandleLosingBets = LossManual;
    Game.AutoRollDice = true;
    PutBet(Field, 5);
    OnNextScreen([this](QDialog*) { table_->EndUnasked(); });
    ClickPlace(*table_, {300, 210}, {}, Qt::RightButton);
    QTRY_VERIFY(!table_->isVisible());
    QCOMPARE(FirstInconsistency(), std::string());
    QVERIFY(QFile::exists(Path("default.crp")) && QFile::exists(Path("kept1.crp")));
  }

  void folderIsHeldByOneProgram() {
    FolderLock mine(folder_->path());
    QVERIFY(mine.Take());
    FolderLock second(folder_->path());
    QVERIFY(!second.Take() && second.Refusal().contains(QDir::toNativeSeparators(folder_->path())));
    QVERIFY(FolderLock(Path("gone")).Take());  // nothing can be lost there

    // A program that was killed leaves its lock behind.
    QVERIFY(QDir(folder_->path()).mkpath("other"));
    QProcess dead;
    dead.start("true", QStringList());
    const qint64 id = dead.processId();
    QVERIFY(dead.waitForFinished());
    Write("other/kelvanor.lock",
          QByteArray::number(id) + "\nkelvanor\n" + QSysInfo::machineHostName().toUtf8() + "\n");
    QVERIFY(FolderLock(Path("other")).Take());
  }

 private:
  static void ExpectQuestionAboutSession() {
    const ShownMessage& question = PlannedMessages.Shown.back();
    QCOMPARE(question.Title, std::string("Unable to Keep the Session"));
    QVERIFY(question.Text.starts_with("default.crp\ncan't be written: "));
  }

  static QString Rows(const QWidget& screen, const QString& name) {
    return RowsOf(Find<QListView>(&screen, name));
  }

  static void ClickRow(const QWidget& screen, const QString& name, const QString& text,
                       bool twice = false) {
    auto* list = Find<QListView>(&screen, name);
    for (int row = 0; row < list->model()->rowCount(); ++row) {
      if (RowText(list, row) != text) continue;
      const QPoint place = ::ClickRow(list, row);
      if (twice) QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, place);
      return;
    }
    QFAIL(qPrintable(text));
  }
};

SCREEN_TEST(TestFileScreen)
#include "test_file_screen.moc"
