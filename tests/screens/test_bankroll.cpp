// The bankroll graph and the controls of Hyper-Drive, by clicks on the real screens.
#include <QElapsedTimer>
#include <QMouseEvent>
#include <QProgressBar>
#include <QSlider>
#include <QToolButton>

#include "screens/frame/chrome.h"
#include "screens/screen_driver.h"
#include "screens/statistics/frmBankroll.h"
#include "screens/statistics/graph_printer.h"
#include "stats/bankroll_graph.h"

class TestBankroll : public ScreenTest {
  Q_OBJECT

 private slots:
  void init() {
    Open("mnuBankroll", screen_);
    graph_ = Get<picGraphBox>("picGraph");
  }

  void figuresFollowTheRolls() {
    using Texts = std::vector<std::pair<const char*, const char*>>;
    const std::tuple<int, int, Texts> stages[] = {
        {0, 500, {{"lblRollsLeft", "1"}, {"lblRollsRight", "525"}, {"lblTotalRolls", "0"}}},
        {525, 600, {{"lblRollsLeft", "1"}, {"lblHigh", "600"}}},
        {10, 510, {{"lblRollsLeft", "526"}, {"lblRollsRight", "1,050"}, {"lblHigh", "510"}}},
        {5, 520, {{"lblLow", "510"}, {"lblSimHours", "4.50"}, {"lblRollsPerHour", "120"}}},
        {1, -1'234, {{"lblCurrent", "-1,234"}, {"lblLow", "-1,234"}}}};
    for (const auto& [rolls, bankroll, texts] : stages) {
      EndRolls(rolls, [amount = bankroll](int) { return amount; });
      for (const auto& [label, text] : texts) QCOMPARE(Label(label), text);
      const QColor ink = Get<QLabel>("lblCurrent")->palette().windowText().color();
      QCOMPARE(ink == WarningInk(), Bankroll() < 0);
    }
  }

  void lineFillsThePageAndStartsAgain() {
    Commands({"mnuGraphType_0", "mnuDisplayAverage", "mnuDisplayGridLines"});
    QVERIFY(ColumnsWith(PaletteOfGraph().Text).size() > 20);  // the words of an empty graph
    EndRolls(525, [](int roll) { return 500 + roll % 7; });
    QVERIFY(ColumnsWith(PaletteOfGraph().Text).empty());
    QVERIFY(*ColumnsWith(PaletteOfGraph().Line).rbegin() > graph_->width() - 6);
    EndRolls(10, [](int) { return 510; });
    const std::set<int> columns = ColumnsWith(PaletteOfGraph().Line);
    QVERIFY(!columns.empty() && *columns.rbegin() < graph_->width() / 20);
  }

  void readsThePointedRoll() {
    EndRolls(600, [](int roll) { return 1'000 - roll; });
    MoveTo(300);  // not rolled yet
    QCOMPARE(Label("lblPointer"), "");
    MoveTo(40);
    QTest::keyClick(screen_, Qt::Key_Right);
    QCOMPARE(Label("lblPointer"), "Rolls:  566    Bankroll:  434");
  }

  void buttonsAndKeysMoveTheScale() {
    Menu("mnuAutoAdjustType_0");
    const std::tuple<const char*, Qt::Key, int, const char*, const char*> steps[] = {
        {"cmdLargerScale", {}, 6, "100", "15,000"}, {"cmdSmallerScale", {}, 6, "1", "650"},
        {"", Qt::Key_PageDown, 1, "0.4", "560"},    {"", Qt::Key_PageUp, 1, "1", "650"},
        {"cmdZeroLineUp", {}, 1, "1", "600"},       {"cmdZeroLineDown", {}, 3, "1", "750"},
        {"", Qt::Key_Down, 1, "1", "800"},          {"", Qt::Key_Up, 2, "1", "700"},
        {"", Qt::Key_Home, 1, "1", "650"}};
    for (const auto& [button, key, times, scale, top] : steps) {
      for (int i = 0; i < times; ++i) {
        if (*button) Get<QToolButton>(button)->click();
        if (!*button) QTest::keyClick(screen_, key);
      }
      QCOMPARE(PlainText(Game.GraphScale), scale);
      QCOMPARE(Label("lblScale_0"), top);
      QCOMPARE(Label("lblScale_5"), Money(Game.GraphTop - Game.GraphScale * 250));
    }
  }

  void entersTheSpanOfTheAverage() {
    EndRolls(10, [](int roll) { return roll * 100; });
    const std::tuple<PlannedAnswer, int, int, const char*> entries[] = {
        {{AnswerOk, "4"}, 4, 850, "4 roll moving average"},
        {{AnswerCancel, "7"}, 4, 850, "4 roll moving average"},
        {{AnswerOk, "0"}, 0, 550, "All rolls moving average"}};
    for (const auto& [answer, span, average, caption] : entries) {
      PlannedMessages.Answers = {answer};
      Menu("mnuSetAverage");
      QCOMPARE(Game.BankrollAverageSpan, span);
      QCOMPARE(Game.BankrollAverage[10], Currency(average));
      QCOMPARE(Label("lblMovingAverage"), caption);
    }
  }

  void eachLookIsDrawnInItsOwnWay() {
    EndRolls(300, [](int roll) { return 500 + roll % 50; });
    QSet<QByteArray> pictures;
    const auto command = [&](const QString& name) {
      Menu(name);
      const QImage picture = Picture();
      pictures << QByteArray(reinterpret_cast<const char*>(picture.bits()), picture.sizeInBytes());
    };
    const std::tuple<const char*, int, int&> menus[] = {
        {"mnuSetColor_%1", 8, Game.BankrollGraphColor},
        {"mnuGraphType_%1", 3, Game.BankrollGraphType},
        {"mnuAutoAdjustType_%1", 3, Game.BankrollAutoAdjustType}};
    for (const auto& [menu, choices, field] : menus)
      for (int i = 0; i < choices; ++i) {
        command(QString(menu).arg(i));
        QCOMPARE(field, i);
      }
    for (const char* toggle : {"mnuDisplayGridLines", "mnuDisplayAverage", "mnuDisplayRefLines"})
      command(toggle);
    // Eight backgrounds, the last of them striped, two more types, three toggles: all differ.
    QCOMPARE(pictures.size(), kGraphColors + 2 + 3);
  }

  void referenceLinesAreSetAndDragged() {
    EndRolls(400, [](int roll) { return 500 + roll; });
    Commands({"mnuDisplayRefLines", "mnuAutoAdjustType_0"});
    QTest::mouseClick(graph_, Qt::LeftButton, {}, PlaceOf(60));
    QTest::mouseClick(graph_, Qt::RightButton, {}, PlaceOf(260));
    QTest::mousePress(graph_, Qt::RightButton, {}, PlaceOf(61));  // takes hold of the first
    MoveTo(120);
    QTest::mouseRelease(graph_, Qt::RightButton, {}, PlaceOf(120));
    MoveTo(450);
    QCOMPARE(Label("lblPointer"), "Between the lines:  140 rolls,  140");
    Menu("mnuCenter");  // between what the two lines meet: 620 and 760
    QCOMPARE(PlainText(Game.GraphTop), PlainText(Game.GraphScale * 50 * (690 / (2 * 50) + 3)));
  }

  void fullPagesArePrintedWhereAskedFor() {
    int printed = 0;
    TheHost.PrintDuePage = [&printed, print = TheHost.PrintDuePage] {
      printed = GraphsDue();
      print();
    };
    for (const bool on : {false, true}) {
      PrintFile = Path(on ? "on.pdf" : "off.pdf");
      if (on) Menu("mnuAutoPrint");
      QCOMPARE(Shows("lblAutoPrint"), on);
      Command(*table_, "mnuNew");
      Run(1'100);
      QCOMPARE(printed, on ? 2 : 0);
      QCOMPARE(BytesOf(PrintFile).startsWith("%PDF"), on);
    }
    QVERIFY(QFile::remove(PrintFile));
    Menu("mnuPrint");
    QVERIFY(QFile::remove(PrintFile));
  }

  void slowestRunStillAnswersAtOnce() {
    QTest::keyClick(Get<QSlider>("hscrThrottle"), Qt::Key_End);
    QCOMPARE(Label("lblThrottle"), "At most 1.0 rolls/s");
    QElapsedTimer stopped;
    After(150, [&] {
      stopped.start();
      Click("cmdHyperDriveActive");
    });
    Run(0);
    QVERIFY(stopped.elapsed() < 400);
    QCOMPARE(Game.RollCount[0], 1);
  }

  void runTellsOfItselfUntilASecondClick() {
    QStringList told;
    QElapsedTimer clock;
    After(300, [&] {
      QVERIFY(clock.elapsed() < 600);     // the event loop comes to its turn
      QVERIFY(table_->isActiveWindow());  // the focus goes to the table when a run begins
      QCOMPARE(Button("cmdHyperDrive")->text(), "Stop Hyper-&Drive");
      for (const int left : {Game.AutoRollsLeft, Game.RollCount[0], 0}) {
        Game.AutoRollsLeft = left;
        screen_->Refresh();
        told << Label("lblRun") + QString::number(Get<QProgressBar>("prgRun")->value());
      }
      Click("cmdHyperDrive");
    });
    clock.start();
    Run(90'000'000);
    const QString rolls = Money(Game.RollCount[0]);
    QVERIFY(told[0].startsWith(rolls + " of 90,000,000 rolls    "));
    QVERIFY(told[1].endsWith(" left500"));  // half done
    QVERIFY(told[2].startsWith(rolls + " rolls, no count set    "));
    QCOMPARE(Button("cmdHyperDrive")->text(), "Start Hyper-&Drive");
    QVERIFY(!Button("cmdHyperDriveActive")->isEnabled() && PlannedMessages.Shown.empty());
    QVERIFY(!Game.HyperDriveOn && !Game.KeepRolling && !Game.RollInProgress);
    QCOMPARE(Label("lblTotalRolls"), rolls);
  }

  void hairLinesAreOneDotWideAtAnyScale() {
    Menu("mnuGraphType_0");
    EndRolls(1, [](int) { return 500; });
    for (const double ratio : {1.0, 2.0, 3.0}) {
      QImage picture(QSize(525, 300) * ratio, QImage::Format_RGB32);
      picture.setDevicePixelRatio(ratio);
      QPainter painter(&picture);
      PaintGraph(painter, QRectF(0, 0, 525, 300), {});
      int dots = 0;
      for (int x = 0; x < picture.width(); ++x)
        dots += picture.pixelColor(x, qRound(20 * ratio)) == PaletteOfGraph().Grid;
      QCOMPARE(dots, 20);  // one for each upright line between 21 columns
    }
  }

  void minimisedTableTellsOfTheRun() {
    After(50, [&] {
      table_->showMinimized();
      QTRY_COMPARE(table_->windowTitle(), "Kelvanor Hyper-Drive Active");
      Game.KeepRolling = false;
    });
    Run(0);
    QCOMPARE(table_->windowTitle(), "Kelvanor Hyper-Drive Stopped");
    table_->showNormal();
    QTRY_COMPARE(table_->windowTitle(), "Kelvanor");
  }

  void runEndsWithItsCount() {
    Run(5'000);
    ExpectMessage("Stopped by roll count on Auto-Play screen.", "Hyper-Drive");
    QVERIFY(Label("lblRun").startsWith("Last run:  5,000 rolls in "));
    QCOMPARE(Label("lblRollsLeft"), "4,726");  // the tenth page
  }

  void closingDuringARunAsks() {
    PlannedMessages.Answers = {{AnswerNo}, {AnswerYes}, {AnswerNo}};
    After(100, [&] {
      screen_->close();
      QVERIFY(screen_->isVisible() && Game.KeepRolling);
      After(50, [this] { table_->close(); });  // and takes this screen with it
    });
    Run(0);
    QVERIFY(!table_->isVisible() && !screen_->isVisible() && !Game.HyperDriveOn);
    QCOMPARE(PlannedMessages.Shown[1].Text, "Do you want to stop Hyper-Drive?");
    QCOMPARE(PlannedMessages.Shown.back().Title, std::string("Save Game?"));
  }

 private:
  QImage Picture() { return graph_->grab().toImage(); }
  QPushButton* Button(const QString& name) { return Get<QPushButton>(name); }
  static QString Money(Currency amount) { return QString::fromStdString(MoneyText(amount)); }

  /// Ends rolls with bankrolls, as the roll cycle does.
  void EndRolls(int rolls, const std::function<int(int)>& bankrollAfter) {
    for (int roll = 1; roll <= rolls; ++roll) {
      ++Game.RollCount[0];
      Game.Bets[BankrollIndex] = bankrollAfter(roll);
      Game.BankrollSum += Bankroll();
      AddBankrollPoint();
    }
    screen_->Refresh();
  }

  void Run(int rolls) {
    Game.NumAutoRolls = Game.AutoRollsLeft = rolls;
    Click("cmdHyperDrive");
  }
  void After(int milliseconds, std::function<void()> act) {
    QTimer::singleShot(milliseconds, this, std::move(act));
  }
  void Commands(const QStringList& names) {
    for (const QString& name : names) Menu(name);
  }

  std::set<int> ColumnsWith(const QColor& color) { return ::ColumnsWith(Picture(), color.rgb()); }

  QPoint PlaceOf(int point) { return {qRound(graph_->Frame().X(point)), graph_->height() / 2}; }
  void MoveTo(int point) {
    const QPointF place = PlaceOf(point);
    QMouseEvent move(QEvent::MouseMove, place, graph_->mapToGlobal(place), Qt::NoButton, {}, {});
    QApplication::sendEvent(graph_, &move);
  }

  frmBankroll* screen_ = nullptr;
  picGraphBox* graph_ = nullptr;
};

SCREEN_TEST(TestBankroll)
#include "test_bankroll.moc"
