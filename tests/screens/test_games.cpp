// The screen of the Games Log, by clicks over logs on disk.
#include <QListWidget>
#include <QScrollBar>
#include <numeric>

#include "figures/games_log.h"
#include "screens/screen_driver.h"
#include "screens/statistics/frmGames.h"
#include "screens/table/game_commands.h"

namespace {

/// Games with quarters of dollars won and lost, the same numbers as the figures' own tests.
std::vector<GameRecord> SampleGames(std::int64_t count, std::int64_t multiplier = 37) {
  std::vector<GameRecord> games(static_cast<std::size_t>(count));
  for (std::int64_t i = 1; i <= count; ++i) {
    GameRecord& game = games[i - 1];
    game[RollsColumn] = i;
    game[DollarsNetColumn] = Currency::FromRaw((i * i * multiplier % 1009 - 480) * 2500);
    game[HandleColumn] = 10;
  }
  return games;
}

}  // namespace

class TestGames : public ScreenTest {
  Q_OBJECT

 private slots:
  void init() {
    Open("mnuGamesLog", screen_);
    Game.GamesLogFile = DefaultGamesLog();
    screen_->resize(900, 700);
  }

  void figuresFollowClassesBreakPointAndColumn() {
    QVERIFY(Label("lblEmpty").startsWith("There are no games"));
    QCOMPARE(Shown("lblFigure_1"), "Mean 0");
    Put(SampleGames(1000));
    QVERIFY(!Shows("lblEmpty"));
    QCOMPARE(Shown("lblFigure_0") + "|" + Shown("lblFigure_13"), "Games 1,000|Advantage 62.56%");
    QCOMPARE(Shown("lblOdds_7"), "Mean, 95% interval 1.6116 to 10.9004");
    QCOMPARE(Label("lblClass_0"), "529 games  (52.90%)");
    QCOMPARE(Label("lblSDShare"), "573 games  (57.30%)");
    QCOMPARE(Get<QLineEdit>("txtValueCount")->text(), "74.8968");
    Type("txtValueCount", "149.79364424434");
    QCOMPARE(Get<QLineEdit>("txtSDCount")->text(), "2");
    QCOMPARE(Label("lblValueShare"), "1,000 games  (100.00%)");
    Type("txtSDCount", "1");
    QCOMPARE(Label("lblValueShare"), "573 games  (57.30%)");

    Press("chkInclude_2");
    Press("chkInclude_1");
    QCOMPARE(Shown("lblFigure_1") + "|" + Label("lblStatus"), "Mean 67.4192|529 of 1,000 games");
    PlannedMessages.Answers = {{AnswerOk, "50", "-20"}, {AnswerCancel}};
    Menu("mnuSetBreakPoint");
    Menu("mnuSetBreakPoint");
    ExpectMessage("Enter the break-point or range that you'd \nlike to use to sort this data:",
                  "Set Break-point");
    const char* const labels[] = {"> 50", "-20 - 50", "< -20"};
    for (int i = 0; i < 3; ++i)
      QCOMPARE(Get<QCheckBox>(QString("chkInclude_%1").arg(i))->text(), labels[i]);
    Press("chkInclude_0");
    QVERIFY(Shows("lblEmpty"));
    QCOMPARE(Shown("lblFigure_0"), "Games 0");
    Menu("mnuPrint");
    ExpectMessage("There are no games selected for printing.", "Print Games Log");
    for (int i = 0; i < 3; ++i) Get<QCheckBox>(QString("chkInclude_%1").arg(i))->click();
    Get<QComboBox>("cmbView")->setCurrentIndex(RollsColumn);
    QCOMPARE(Shown("lblFigure_2"), "Median * 500.50");  // rolls 1 to 1,000, two to a bar
    Game.GameChanged = false;
    Menu("mnuGraphBarWidth_3");
    QVERIFY(Game.GameChanged && Game.GamesView[1] == 3);
    auto* picture = Get<picHistogramBox>("picHistogram");
    QCOMPARE(picture->Picture().Bars.Bars.Bins.size(), std::size_t(65));
    for (int right = 0; right < 2; ++right) QTest::keyClick(picture, Qt::Key_Right);
    QCOMPARE(Label("lblPointer"), "17 to 31:  15 games  (1.50%)");
    Write("default.glg", "damaged");
    screen_->Refresh();
    QVERIFY(Label("lblEmpty").contains("is no Games Log"));
  }

  void gamesAreFoundDeletedAndReachedByTheBar() {
    Put(SampleGames(40'000));
    Get<QRadioButton>("optDisplay_1")->click();
    auto* raw = Get<QTableView>("tblRaw");
    auto* bar = Get<QScrollBar>("vscrRaw");
    const auto top = [&] {
      return RowText(raw, raw->rowAt(2)) + "/" + RowText(raw, raw->rowAt(2), 1);
    };
    QVERIFY(Game.GamesView[0] == 1 && raw->isVisible());
    QCOMPARE(bar->maximum(), 30'000);
    bar->triggerAction(QScrollBar::SliderSingleStepAdd);
    QCOMPARE(top(), "2/2");
    bar->setSliderPosition(30'000);
    bar->triggerAction(QScrollBar::SliderMove);
    QVERIFY(raw->visualRect(raw->model()->index(39'999, 0)).isValid());
    bar->triggerAction(QScrollBar::SliderSingleStepSub);
    QCOMPARE(RowText(raw, 39'999, 3), "Lost");
    bar->setSliderPosition(1);
    bar->triggerAction(QScrollBar::SliderMove);

    // $ 124.75 is won by game 9, and by each game 1,009 behind it, or as far before it.
    PlannedMessages.Answers = {{AnswerOk, "124.75", ""}, {AnswerCancel}, {AnswerOk, "7.77", ""}};
    Menu("mnuFind");
    QCOMPARE(PlannedMessages.Shown.back().Text,
             "Enter the value you'd like to find for:\n\n$ Bets Won/Lost (Net)\n\nIf found, the "
             "line will appear at the top of the data box.");
    QCOMPARE(top(), "9/9");
    Menu("mnuFind");
    QTest::keyClick(screen_, Qt::Key_F3);
    QCOMPARE(top(), "1,000/1,000");
    QTest::keyClick(screen_, Qt::Key_F3, Qt::ShiftModifier);
    QCOMPARE(top(), "9/9");
    Menu("mnuFind");
    ExpectMessage("Value not found.", "Search Results");

    PlannedMessages.Answers = {{AnswerOk, "1", "8"}, {AnswerOk, "0", ""},
                               {AnswerOk},           {AnswerOk, "39992", "39993"},
                               {AnswerOk},           {AnswerOk, "", ""},
                               {AnswerCancel, "1"},  {AnswerOk, "2", ""}};
    Menu("mnuDelete");
    QCOMPARE(raw->model()->rowCount(), 39'992);
    QCOMPARE(RowText(raw, 0, 1), "9");
    for (int refused = 0; refused < 2; ++refused) {
      Menu("mnuDelete");
      ExpectMessage("No games deleted.  Entry out of range.", "Delete Games");
    }
    for (int more = 0; more < 3; ++more) Menu("mnuDelete");
    QCOMPARE(raw->model()->rowCount(), 39'991);
    QCOMPARE(RowText(raw, 1, 1), "11");
  }

  void logsAreBegunMergedComparedAndExported() {
    Put(SampleGames(1000));
    GamesLogWriter(FilePath("b.glg")).Append(SampleGames(1000, 53));
    Write("rubbish.glg", "rubbish");
    FileMenu("mnuCompare", "rubbish.glg");
    QVERIFY(Told().startsWith("rubbish.glg\nis no Games Log") && !Shows("lblComparison"));
    FileMenu("mnuCompare", "b");
    QCOMPARE(Label("lblFigureOther_1"), "6.1968");
    QVERIFY(Label("lblComparison").contains("0.0593,  with 95% confidence -6.3208 to 6.4393"));
    QVERIFY(!Label("lblComparison").contains("Game by game"));
    QByteArray dice = "seed,index\n";
    for (int i = 0; i < 1000; ++i) dice += "3," + QByteArray::number(i) + "\n";
    Write("default.csv", dice);
    Write("b.csv", dice);
    FileMenu("mnuCompare", "b");
    QVERIFY(Label("lblComparison").endsWith("1,000 games:  0.0592,  -6.4311 to 6.5496."));
    const SharedHistogram& bars = Get<picHistogramBox>("picHistogram")->Picture().Bars;
    QCOMPARE(std::accumulate(bars.Second.begin(), bars.Second.end(), 0LL), 1000);
    Menu("mnuEndComparison");
    QVERIFY(!Shows("lblFigureOther_1"));

    FileMenu("mnuMerge", "default.glg");
    QVERIFY(Told().contains("can't be merged into itself"));
    PlannedMessages.Answers = {{AnswerNo}, {AnswerYes}};
    FileMenu("mnuMerge", "b.glg");
    ExpectMessage(
        "Do you want to append the 1,000 games of b.glg to the 1,000 games of default.glg?",
        "Merge Games Log");
    QCOMPARE(Shown("lblFigure_0"), "Games 1,000");
    FileMenu("mnuMerge", "b.glg");
    QCOMPARE(Shown("lblFigure_0"), "Games 2,000");
    QCOMPARE(CountGames(FilePath("b.glg")), 1000);

    OnNextScreen([this](QDialog* choice) {
      auto* list = Find<QListWidget>(choice, "lstColumns");
      for (int i = 0; i < kGameColumns; ++i)
        list->item(i)->setCheckState(i == RollsColumn || i == 8 ? Qt::Checked : Qt::Unchecked);
      NameFile("out");
      ClickButton(choice, "cmdOK");
    });
    Menu("mnuExport");
    QVERIFY(Read("out.txt").startsWith("Game #,# Rolls,$ Bets Won/Lost (Net)\r\n1,1,-110.75\r\n"));

    Game.RollCount[0] = 5;
    PlannedMessages.Answers = {{AnswerYes}, {AnswerCancel}, {AnswerOk}};
    FileMenu("mnuNew", "kept");
    QCOMPARE(CountGames(FilePath("kept.glg")), 2000);
    ExpectMessage(
        "Note:  There's currently a game in progress which will be added to this new Games Log "
        "when it's finished.",
        "Game in progress will be added to new Games Log");
    QCOMPARE(screen_->windowTitle() + "|" + Shown("lblFigure_0"), "Games Log|Games 0");
    AppendGameRecord(Game.GamesLogFile);
    screen_->Refresh();
    QCOMPARE(Shown("lblFigure_0"), "Games 1");
    FileMenu("mnuOpen", "kept.glg");
    QCOMPARE(screen_->windowTitle(), "Games Log (kept.glg)");
    QCOMPARE(Shown("lblFigure_0"), "Games 2,000");
  }

  /// As one does that is named on the command line; what is none leaves all as it was.
  void aNamedLogIsOpenedAndShown() {
    GamesLogWriter(FilePath("b.glg")).Append(SampleGames(7));
    Write("rubbish.glg");
    screen_->close();
    for (const char* name : {"rubbish.glg", "b.glg"}) {
      const bool good = name[0] == 'b';
      OpenNamedFile(table_.get(), FilePath(name));
      QCOMPARE(screen_->isVisible(), good);
      QCOMPARE(Game.GamesLogFile == FilePath(name), good);
    }
  }

 private:
  /// A figure behind its caption.
  QString Shown(const QString& name) {
    QString caption = name;
    return Label(caption.replace("_", "Caption_")).trimmed() + " " + Label(name);
  }

  void Put(const std::vector<GameRecord>& games) {
    GamesLogWriter(Game.GamesLogFile).Append(games);
    screen_->Refresh();
  }

  frmGames* screen_ = nullptr;
};

SCREEN_TEST(TestGames)
#include "test_games.moc"
