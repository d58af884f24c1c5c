// What is laid over the plain table: it takes no bet and no roll, it leaves the game alone, and
// switched off it is gone.
#include <QSettings>

#include "screens/screen_driver.h"
#include "screens/table/band_elements.h"
#include "screens/table/first_hints.h"
#include "screens/table/rail_elements.h"
#include "screens/table/table_layer.h"
#include "screens/table/table_panel.h"
#include "screens/table/toasts.h"
#include "support/same_game.h"

namespace {

QImage Seen(frmCrapTable& table) {
  return table.Layout()->grab().toImage().convertToFormat(QImage::Format_RGB32);
}

/// Counts what is painted of the table.
class PaintCount : public QObject {
 public:
  explicit PaintCount(QWidget* of) { of->installEventFilter(this); }
  int Paints = 0;

 private:
  bool eventFilter(QObject*, QEvent* event) override {
    Paints += event->type() == QEvent::Paint;
    return false;
  }
};

}  // namespace

class TestTableAlive : public ScreenTest {
  Q_OBJECT

 private slots:
  void init() {
    TheTable = {};
    LayTable();
    static_cast<RunLimits&>(Game) = RunLimits();
    Game.HandleWinningBets = WinSameBet;
    PlannedMessages.Active = true;
    UseTableSettings();
  }

  void asToldIsThePlainTable() {
    PutBet(PassLine, 10);
    RollNamedDice(2, 2);
    for (int preset = 0; preset < kColorPresets; ++preset) {
      SetColorPreset(preset);
      for (const QSize size : {QSize(640, 540), QSize(1024, 768), QSize(1500, 900)}) {
        table_->resize(size);
        TheTable = {};
        UseTableSettings();
        const QImage alive = Seen(*table_);
        Command(*table_, "mnuTableAsTold");
        QVERIFY(!table_->ShowsPanel());
        QImage plain(table_->Layout()->size(), QImage::Format_RGB32);
        plain.fill(Qt::black);
        QPainter painter(&plain);
        TableView view = table_->View();
        view.Below = {};
        view.Above = {};
        view.CaptionPlate = TableView().CaptionPlate;
        TableCache cache;
        PaintTable(painter, plain.size(), view, cache);
        painter.end();
        QCOMPARE(Seen(*table_), plain);
        QVERIFY(alive != plain);
        Command(*table_, "mnuTableAsTold");
        QCOMPARE(TheTable.History, true);
      }
    }
  }

  /// Buttons lie where no click of the left button has a meaning, and a right click rolls on all of
  /// the layer.
  void noElementTakesABetOrTheRoll() {
    int places = 0;
    for (const bool hops : {false, true}) {
      Game.DisplayHopBets = hops;
      for (int x = 0; x < 640; ++x)
        for (int y = 0; y < 480; ++y) {
          if (RailButtonAt(QPointF(x, y)) == NoRailButton) continue;
          const SpotHit hit = FindHotSpot(x, y);
          QVERIFY2(hit.HotSpot == RailSpot && hit.PickedSpot == NoSpot && RackSlotAt(x, y) == 0,
                   qPrintable(QString("%1, %2").arg(x).arg(y)));
          ++places;
        }
    }
    QVERIFY(places > 10'000);
    int rolls = 0;
    for (const QPointF place :
         {RailButtonRect(RollButton).center(), RailButtonRect(ClearButton).center(),
          kHistoryWell.center(), kMoneyWell.center(), kBand.center()}) {
      ClickPlace(*table_, place, {}, Qt::RightButton);
      QCOMPARE(Game.RollCount[0], ++rolls);
    }
    table_->resize(1300, 800);
    QVERIFY(table_->ShowsPanel());
    QTest::mouseClick(table_->findChild<TablePanel*>(), Qt::RightButton, {}, {100, 20});
    QCOMPARE(Game.RollCount[0], ++rolls);
  }

  void theRailPlaysAGame() {
    const auto press = [&](int button) { ClickPlace(*table_, RailButtonRect(button).center()); };
    for (int b = RepeatButton; b <= ClearButton; ++b) QVERIFY(!IsRailButtonOn(b));
    Game.ChipColor = 2;
    ClickBet(*table_, Field);
    ClickBet(*table_, Field, Qt::AltModifier);
    QCOMPARE(Game.Bets[Field], Currency(5));
    press(DoubleButton);
    QCOMPARE(Game.Bets[Field], Currency(10));
    press(UndoButton);
    QCOMPARE(Game.Bets[Field], Currency(5));
    table_->Layer().Redo();
    QCOMPARE(Game.Bets[Field], Currency(10));
    Game.ManualRollPending = true;
    Game.PendingDie1 = 2;
    Game.PendingDie2 = 3;
    press(RollButton);
    QCOMPARE(Game.RollCount[0], 1);
    QCOMPARE(Game.Bets[Field], Currency());
    QCOMPARE(table_->Layer().Called()->Net, Currency(-10));
    QVERIFY(!IsRailButtonOn(UndoButton));
    press(RepeatButton);
    QCOMPARE(Game.Bets[Field], Currency(10));
    QVERIFY(!table_->Layer().Called());  // the forecast's turn
    press(ClearButton);
    QCOMPARE(Game.TotalOnTable, Currency());
    QCOMPARE(HistoryTip(kHistoryWell.topLeft() + QPointF(12, 10)), QString("2-3, five, \u2212$10"));
    TheTable.RollButtons = false;
    press(RollButton);
    QCOMPARE(Game.RollCount[0], 1);
  }

  /// Whatever is to be told stays in its place, also of the largest and smallest amounts.
  void everyElementKeepsItsPlace() {
    const Currency most = Currency::FromDouble(99'999'999.99), least(-9'999'999);
    Game.LastRolls.assign(kRollNotes, {5, 4, 8, 8, most});
    Game.LastRolls[3] = {3, 4, 8, 0, least};
    std::vector<ForecastRow> rows;
    for (int i = 0; i < 19; ++i)
      rows.push_back({2 + i % 11, i < 11 ? 0 : 1, i < 11 ? 0 : 6, 3, i % 2 ? least : most});
    for (const double scale : {1.0, 1.5, 2.0, 4.5}) {
      const auto keeps = [&](const QRectF& place, const std::function<void(QPainter&)>& paint) {
        QImage image(QSize(640, 480) * scale, QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.scale(scale, scale);
        paint(painter);
        const bool painted = image.pixelColor((place.center() * scale).toPoint()) != Qt::white;
        painter.setCompositionMode(QPainter::CompositionMode_Source);
        painter.fillRect(place.adjusted(-1.6, -1.6, 1.6, 1.6), Qt::white);
        painter.end();
        QImage white(image.size(), image.format());
        white.fill(Qt::white);
        return painted && image == white;
      };
      for (const Currency net : {most, least})
        QVERIFY(keeps(kMoneyWell, [&](QPainter& p) { PaintMoney(p, {net, most, net}); }));
      QVERIFY(keeps(kHistoryWell, [&](QPainter& p) { PaintHistory(p, 0.5); }));
      QVERIFY(keeps(kBand, [&](QPainter& p) { PaintForecastStrip(p, rows); }));
      for (const RollNote& note : Game.LastRolls)
        QVERIFY(keeps(kBand, [&](QPainter& p) { PaintCall(p, note, NoLimitReached, 1); }));
      QVERIFY(keeps(kBand, [&](QPainter& p) { PaintHyperBand(p, 100'000'000); }));
    }
  }

  /// Each row of the forecast is told by one place of the band, and none while a call stands there.
  void theBandTellsEveryRow() {
    table_->resize(640, 540);
    Game.Notify = 0;
    const auto told = [&] {
      QStringList tips;
      TheHost.RedrawBets();
      for (double x = kBand.left(); x < kBand.right(); ++x)
        tips << table_->Layer().TipAt({x, kBand.center().y()});
      tips.removeDuplicates();
      return tips.join('\n').split('\n', Qt::SkipEmptyParts);
    };
    RollNamedDice(3, 3);
    PutBet(Field, 5);
    QCOMPARE(told().size(), 11);
    for (int hop = Hop13; hop <= LastBet; hop += 2) PutBet(hop, 1);
    const qsizetype rows = told().size();
    QVERIFY(rows > 15);
    QCOMPARE(rows, qsizetype(table_->Layer().Forecast().size()));
    RollNamedDice(4, 5);
    QVERIFY(told().isEmpty());
    TheTable.StickFrame = StickCallBoard;  // tells the call itself
    QVERIFY(told().size() >= 11);
  }

  /// A result that was jumped over, one that was seen to its end, and none at all leave the same
  /// game and the same picture.
  void motionOnlyShows() {
    Game.DiceAction = DiceStationary;
    TheTable.Motion = MotionFull;
    UseTableSettings();
    const auto start = std::make_unique<GameState>(Game);
    const auto play = [&](int jumpAt) {
      Game = *start;
      HurryHost = jumpAt < 0;
      for (const int bet : {+PassLine, +Field, +Hard8, +Horn}) PutBet(bet, 20);
      RollNamedDice(3, 1);
      TheHost.RefreshViews();
      const bool moved = table_->Layer().IsMoving();
      QTest::qWait(std::max(0, jumpAt));
      if (jumpAt == 333) table_->resize(900, 700);
      if (jumpAt < 1000) QTest::mousePress(table_->Layout(), Qt::LeftButton, {}, {500, 5});
      HurryHost = true;
      table_->resize(1000, 800);
      QTest::qWait(150);  // the call has faded in
      return moved;
    };
    QVERIFY(!play(-1));
    const QImage off = Seen(*table_);
    const TableState game = Game;
    for (const int jumpAt : {1, 90, 180, 250, 333, 400, 520, 1000}) {
      QVERIFY(play(jumpAt) && !table_->Layer().IsMoving());
      QCOMPARE(Seen(*table_), off);
      QVERIFY(FieldsOf(game) == FieldsOf(static_cast<const TableState&>(Game)));
    }
  }

  /// Notices with nothing to answer become toasts; whatever asks, stays a box.
  void toastsForWhatNeedsNoAnswer() {
    TheTable.Notices = NoticesAsToast;
    int toasts = 0;
    for (const int kind : {int(PlainOk), int(OkStop), int(OkTick), int(YesNo), int(YesNoCancel),
                           int(InputOk), int(OkHelpStop)})
      for (const int box : {0, int(HideActions), int(HideLimits), int(HideCharges),
                            int(HideAutoBet), HideLimits | HideAutoBet}) {
        const bool answers = kind == PlainOk || kind == OkStop || kind == OkTick;
        const bool expected = answers && box != 0 && !(box & HideAutoBet);
        PlannedMessages.Shown.clear();
        Game.MsgAnswer = 0;
        ShowMessage("Bet increased by: $6", "Press 1 Unit Place 6", kTopicWin, kind | box);
        QCOMPARE(PlannedMessages.Shown.empty(), expected);
        QCOMPARE(Game.MsgText, std::string("Bet increased by: $6"));
        if (!expected) continue;
        ++toasts;
        QCOMPARE(Game.MsgAnswer, int(AnswerOk));
        const auto shown = table_->Layout()->findChildren<QWidget*>("toast");
        QCOMPARE(shown.size(), std::min(toasts, 2));
        for (const QWidget* toast : shown)
          QVERIFY(toast->isVisible() && table_->Layout()->rect().contains(toast->geometry()));
      }
    QCOMPARE(BetOfTitle("Press 1 Unit Place 6"), +Place6);
    QCOMPARE(BetOfTitle("Pass Line Odds Bet"), +PassLineOdds);
    QTest::keyClick(table_.get(), Qt::Key_Escape);
    QVERIFY(table_->Layout()->findChildren<QWidget*>("toast").isEmpty());
    TheTable.Notices = NoticesInBox;
    Game.Notify = 7;
    PutBet(DontCome, 5);
    ExpectMessage("You may not make a Don't Come bet until\na point is established.",
                  "Don't Come Bet");
    // The first box offers them, and none after it.
    PlannedMessages.Active = false;
    for (const bool taken : {false, true}) {
      TheTable.ToastsOffered = false;
      for (const bool first : {true, false}) {
        if (!first && taken) break;
        OnNextScreen([&](QDialog* box) {
          auto* offer = box->findChild<QCheckBox*>("chkOnTable");
          QCOMPARE(bool(offer), first);
          if (offer && taken) offer->click();
          ClickButton(box, "cmdButton_0");
        });
        PutBet(DontCome, 5);
      }
      QVERIFY(TheTable.ToastsOffered);
      QCOMPARE(TheTable.Notices, int(taken ? NoticesAsToast : NoticesInBox));
    }
    PutBet(DontCome, 5);
    QCOMPARE(table_->Layout()->findChildren<QWidget*>("toast").size(), 1);
  }

  void aPlateBesideTheChipsIsAnsweredByDigits() {
    Game.HandleWinningBets = WinManual;
    for (const QSize size : {QSize(640, 540), QSize(1000, 700)}) {
      table_->resize(size);
      for (int digit = 0; digit < 2; ++digit) {
        Game.Bets[Place6] = 0;
        RollNamedDice(6, 4);
        PutBet(Place6, 12);
        OnNextScreen([&](QDialog* screen) {
          QVERIFY(screen->windowFlags() & Qt::FramelessWindowHint);
          const auto covers = [&](QRectF what) {
            const QRect seen = table_->Layout()->FromTable(what);
            return screen->geometry().intersects(
                QRect(table_->Layout()->mapToGlobal(seen.topLeft()), seen.size()));
          };
          QVERIFY(!covers(QRectF(ChipPosition(Place6) - QPointF(8, 8), QSizeF(16, 16))));
          QVERIFY(!covers(QRectF(kDiceHome[0] - QPointF(9, 9), QSizeF(18, 18))));
          QTest::keyClick(screen, digit == 0 ? Qt::Key_1 : Qt::Key_4);
        });
        const Currency before = Bankroll();
        RollNamedDice(5, 1);
        QCOMPARE(Bankroll() - before, Currency(14));
        QCOMPARE(Game.Bets[Place6], Currency(digit == 0 ? 0 : 24));
        RollNamedDice(6, 4);
      }
    }
    // One choice for all bets of its kind that the roll decides.
    for (const int bet : {+Place8, +Hard8, +Big8}) PutBet(bet, 12);
    int asked = 0;
    OnNextScreen([&](QDialog* screen) {
      ++asked;
      Find<QCheckBox>(screen, "chkForTheRest")->setChecked(true);
      QTest::keyClick(screen, Qt::Key_2);
    });
    RollNamedDice(4, 4);
    QCOMPARE(asked, 1);
    for (const int bet : {+Place8, +Hard8, +Big8}) QCOMPARE(Game.Bets[bet], Currency(12));
  }

  void thePanelTakesOnlySpareWidth() {
    for (int width = 640; width <= 3840; width += 160)
      for (const int height : {480, 700, 1080, 2160}) {
        const int panel = TablePanel::WidthFor({width, height});
        QVERIFY(panel == 0 || (panel >= 240 && panel <= 360));
        const double scale = std::min(height / 480.0, (width - panel) / 640.0);
        QVERIFY(scale >= std::min(height / 480.0, width / 640.0) - 0.002);
      }
    TheTable.Panel = PanelAlways;
    QCOMPARE(TablePanel::WidthFor({900, 700}), 240);
    QCOMPARE(TablePanel::WidthFor({800, 700}), 0);
    table_->resize(1400, 800);
    UseTableSettings();
    for (const int bet : {+Lay4, +DontCome4, +Hop13, +World, +Field})
      table_->findChild<TablePanel*>()->ShowBet(bet);
    ClickButton(table_.get(), "cmdPace_2");
    QCOMPARE(Game.Pace, 1200);
    PlannedMessages.Answers = {{AnswerOk, "", "250"}};
    ClickButton(table_.get(), "cmdStopLoss");
    QCOMPARE(Game.StopLoss, Currency(250));
    TheTable.Pace = 0;
    UseTableSettings();
    Game.NumAutoRolls = Game.AutoRollsLeft = 5;
    ClickButton(table_.get(), "cmdRollByItself");
    QCOMPARE(Game.RollCount[0], 5);
    QVERIFY(!Game.AutoRollDice && !Game.KeepRolling);
  }

  void hyperDriveIsNotDrawn() {
    PutBet(Place6, 12);
    Game.NumAutoRolls = Game.AutoRollsLeft = 400'000;
    table_->resize(1400, 800);
    const PaintCount ofPanel(table_->findChild<TablePanel*>());
    const PaintCount count(table_->Layout());
    QElapsedTimer clock;
    clock.start();
    table_->RunHyperDrive();
    QCOMPARE(Game.RollCount[0], 400'000);
    QVERIFY2(count.Paints <= 3 + clock.elapsed() / 400, qPrintable(QString::number(count.Paints)));
    QVERIFY2(ofPanel.Paints <= 3, qPrintable(QString::number(ofPanel.Paints)));
    QVERIFY(Game.LastRolls.empty() && !table_->Layer().Called());
  }

  void hintsGoOnByDoingAndNeverComeBack() {
    TheTable.Hints = false;
    UseTableSettings();
    Command(*table_, "mnuTableHints");
    auto* hints = table_->findChild<FirstHints*>();
    QVERIFY(hints->isVisible());
    Game.ChipColor = 2;
    ClickBet(*table_, PassLine);
    QCOMPARE(hints->Step(), 1);
    RightClickRolls(*table_, 2, 2);
    QCOMPARE(hints->Step(), 2);
    ClickButton(table_.get(), "cmdNextHint");
    QCOMPARE(hints->Step(), 3);
    ClickButton(table_.get(), "cmdNextHint");
    QVERIFY(!hints->isVisible() && !TheTable.Hints);
  }

  /// A store that can't be written is told of once, and asked about at the end.
  void settingsThatCantBeKeptAreTold() {
    ReadTableSettings();
    const QString path = QSettings("kelvanor", "kelvanor").fileName();
    QFile::remove(path);
    QVERIFY(QDir().mkpath(path));
    PlannedMessages.Shown.clear();
    Command(*table_, "mnuTableHistory");
    Command(*table_, "mnuTableHistory");
    QCOMPARE(PlannedMessages.Shown.size(), std::size_t{1});
    QVERIFY(PlannedMessages.Shown[0].Text.starts_with("kelvanor.conf\ncan't be written"));
    PlannedMessages.Answers = {{AnswerOk}, {AnswerNo}};
    table_->close();
    QVERIFY(table_->isVisible());
    QCOMPARE(PlannedMessages.Shown.back().Title, std::string("Unable to Keep the Session"));
    QVERIFY(QDir().rmpath(path));
  }

  /// What the store holds comes back; what is no setting counts as its default.
  void settingsAreKeptAndDamagedOnesAreDefaults() {
    ReadTableSettings();
    QVERIFY(TheTable == TableSettings());
    for (int round = 0; round < 2; ++round) {
      Command(*table_, "mnuTableHistory");
      Command(*table_, "mnuTablePace_2");
      TheTable.WinGoal = 300;
      UseTableSettings();
      const TableSettings kept = TheTable;
      ReadTableSettings();
      QVERIFY(TheTable == kept && TheTable.Pace == 1200 && !TheTable.History);
      QSettings store("kelvanor", "kelvanor");
      for (const QString& key : store.allKeys()) store.setValue(key, "\u2603 none");
      store.setValue("Table/Pace", 601);
      store.setValue("Table/StopLoss", -5);
      store.sync();
      ReadTableSettings();
      QCOMPARE(TheTable.Pace, 1200);
      QCOMPARE(TheTable.StopLoss, Currency());
      QCOMPARE(TheTable.Motion, int(MotionAsSystem));
      TheTable = {};
      UseTableSettings();
    }
    RollNamedDice(6, 4);
    RollNamedDice(3, 4);
    const std::vector<RollNote> rolls = Game.LastRolls;
    KeepRolls();
    Game.LastRolls.clear();
    ReadRolls();
    QVERIFY(Game.LastRolls == rolls && rolls.size() == 2);
    Game.RollCount[0] = 5;  // another game
    Game.LastRolls.clear();
    ReadRolls();
    QVERIFY(Game.LastRolls.empty());
  }
};

SCREEN_TEST(TestTableAlive)
#include "test_table_alive.moc"
