// The screens of figures: they show what the engine reckons, also under Hyper-Drive, and let it be
// chosen, scrolled, copied and printed.
#include <QHelpEvent>
#include <QScrollBar>
#include <QToolTip>

#include "screens/screen_driver.h"
#include "screens/statistics/figure_view.h"
#include "screens/statistics/frmBetResults.h"
#include "screens/statistics/frmBetTrends.h"
#include "screens/statistics/frmRollFreqs.h"
#include "screens/statistics/frmRollTotals.h"
#include "screens/statistics/frmSummary.h"
#include "screens/table/screens.h"

namespace {

constexpr WindowId kScreens[] = {SummaryWindow, RollTotalsWindow, RollFreqsWindow, BetResultsWindow,
                                 BetTrendsWindow};

}  // namespace

class TestNumbers : public ScreenTest {
  Q_OBJECT

 private slots:
  void init() {
    LayTable();
    Game.HandleWinningBets = WinSameBet;
    Game.HandleLosingBets = LossSameBet;
    Game.Bets[BankrollIndex] = Game.InvestedBankroll = 100'000;
    for (const int bet : {+PassLine, +Place6, +Field}) PutBet(bet, 12);
    for (const WindowId id : kScreens) ShowScreen(id);
  }

  /// Each label shows the engine's figure: without rolls, after some, and after a run.
  void everyFigureIsTheEngines() {
    for (const int rolls : {0, 30, 4'000}) {
      if (rolls > 0) Run(rolls);
      const auto* summary = FindScreen(SummaryWindow);
      for (const SummaryGroup& group : FigureSummary())
        for (const SummaryRow& row : group.Rows)
          Expect(summary, QString::fromUtf8(row.Control.data()), row.Text, row.Color);

      Game.RollFreqChoice = 13;
      TheHost.RefreshViews();
      const RollFreqs freqs = FigureRollFreqs(false);
      const auto* rollFreqs = FindScreen(RollFreqsWindow);
      Expect(rollFreqs, "lblTotalRolls", freqs.TotalRolls);
      Expect(rollFreqs, "lblAverage", freqs.Average);
      Expect(rollFreqs, "lblIdealPercent", freqs.IdealPercent);
      Expect(rollFreqs, "lblLastRolled", freqs.LastRolled);
      QCOMPARE(Find<QPushButton>(rollFreqs, "cmdProbable")->text(), "True probable %:");

      const auto* trends = Find<QTableView>(FindScreen(BetTrendsWindow), "lstBetTrends");
      for (const BetTrend& trend : FigureBetTrends())
        QCOMPARE(RowText(trends, trend.BetId - 1, 1), QString::fromStdString(trend.Streak));

      const auto* results = FindScreen(BetResultsWindow);
      Find<QListView>(results, "lstBets")->selectAll();
      const BetResults figures = FigureBetResults(KeptSelection());
      for (std::size_t row = 0; row < figures.Rows.size(); ++row) {
        Expect(results, QString("lblWagers_%1").arg(row), figures.Rows[row].Wagers);
        Expect(results, QString("lblNet_%1").arg(row), figures.Rows[row].Net,
               figures.Rows[row].NetColor);
      }
      Expect(results, "lblLuck", figures.Luck);
      QCOMPARE(Find<QLabel>(FindScreen(RollTotalsWindow), "lblEmpty")->isVisible(), rolls == 0);
    }
  }

  void betsAreSelectedByMouseKeysAndName() {
    Screen* screen = FindScreen(BetResultsWindow);
    auto* list = Find<QListView>(screen, "lstBets");
    ClickRow(list, 2);
    ClickRow(list, 5, Qt::ShiftModifier);
    ClickRow(list, 9, Qt::ControlModifier);
    QCOMPARE(Selected(), (std::vector<int>{3, 4, 5, 6, 10}));
    list->setFocus();
    QTest::keyClicks(list, "Field");
    QCOMPARE(Selected(), std::vector<int>{Field});
    Find<QRadioButton>(screen, "optDataType_1")->click();
    QVERIFY(KeptSelection().Data == BetData::PhantomWagers && Game.GameChanged);
    ClickButton(screen, "cmdSelectAll");
    QCOMPARE(Selected().size(), std::size_t(LastBet));
  }

  void theChartScrollsAndTellsUnderTheMouse() {
    Run(50);
    Screen* screen = FindScreen(RollTotalsWindow);
    auto* chart = Find<picTotalsBox>(screen, "picTotals");
    auto* bar = Find<QScrollBar>(screen, "hscr");
    QVERIFY(!bar->isVisible());
    Command(*screen, "mnuDisplayTotals_2");  // 36 columns
    screen->resize(screen->minimumSize());
    QTRY_VERIFY(bar->isVisible() && bar->maximum() > 0);
    const QImage before = chart->grab().toImage();
    bar->setValue(bar->maximum());
    QVERIFY(chart->grab().toImage() != before);
    TheHost.RefreshViews();
    QCOMPARE(bar->value(), bar->maximum());  // a scrolled view stays where it is
    const QPoint place(chart->width() - 20, chart->height() / 2);
    QHelpEvent help(QEvent::ToolTip, place, chart->mapToGlobal(place));
    QApplication::sendEvent(chart, &help);
    QVERIFY(QToolTip::text().startsWith("6-6: probable 2.78 %"));
    for (const bool skewed : {false, true}) {
      Game.UseSkewedProbability = skewed;
      TheHost.RefreshViews();
      QCOMPARE(Find<QRadioButton>(screen, "optShowProb_0")->isVisible(), skewed);
    }
  }

  void everyScreenIsCopiedAndPrinted() {
    Run(200);
    for (const WindowId id : kScreens) {
      Command(*FindScreen(id), "mnuCopy");
      const QString copied = QApplication::clipboard()->text();
      QVERIFY2(copied.count('\t') > 8 && copied.count('\n') > 8, qPrintable(copied));
    }
    for (const ScreenRow& row : AllScreens()) ShowScreen(row.Id);
    int printed = 0;
    for (QAction* print : table_->findChildren<QAction*>(QRegularExpression("^mnuPrint")))
      for (const bool color : {true, false}) {
        if (!print->isEnabled() || print->menu()) continue;
        Game.ColorPrint = color;
        PlannedMessages.Shown.clear();
        PrintFile = Path(QString::number(++printed));
        print->trigger();
        QVERIFY2(QFileInfo(PrintFile).size() > 2'000 || Told().startsWith("There are no "),
                 qPrintable(print->parent()->objectName() + Told()));
      }
    QVERIFY2(printed >= 20, qPrintable(QString::number(printed)));
  }

 private:
  static void Run(int rolls) {
    Game.AutoRollDice = true;
    Game.HyperDriveOn = rolls > 1'000;
    Game.NumAutoRolls = Game.AutoRollsLeft = rolls;
    Game.KeepRolling = true;
    RollDice();
    Game.HyperDriveOn = false;
    TheHost.RefreshViews();
  }

  static void Expect(const QWidget* screen, const QString& name, const std::string& text,
                     int color = PaletteBlack) {
    const auto* label = Find<QLabel>(screen, name);
    QCOMPARE(label->text(), QString::fromStdString(text));
    QCOMPARE(label->palette().color(QPalette::WindowText), FigureInk(color));
  }

  static std::vector<int> Selected() {
    std::vector<int> ids;
    const BetSelection selection = KeptSelection();
    for (int id = Lay4; id <= LastBet; ++id)
      if (selection.Selected[id]) ids.push_back(id);
    return ids;
  }
};

SCREEN_TEST(TestNumbers)
#include "test_numbers.moc"
