// The screen of the Events Log, by clicks and keys over logs on disk.
#include <QScrollBar>
#include <QWheelEvent>

#include "screens/screen_driver.h"
#include "screens/statistics/frmEventsLog.h"
#include "stats/events_log.h"
#include "stats/events_log_view.h"
#include "stats/log_files.h"

namespace {

constexpr int kLong = 40'000;
constexpr QRgb kBlue = 0xFF0000FF, kCyan = 0xFF00FFFF;

QByteArray Numbered(int lines, const QByteArray& words = "Event ") {
  QByteArray text;
  for (int i = 1; i <= lines; ++i) text += words + QByteArray::number(i) + ".\r\n";
  return text;
}

}  // namespace

class TestEventsLog : public ScreenTest {
  Q_OBJECT

 private slots:
  void init() {
    Open("mnuEventsLog", screen_);
    Game.EventsLogFile = FilePath("Events Log.txt");
    view_ = Get<picEventsLogBox>("picEventsLog");
    bar_ = Get<QScrollBar>("vscrEventsLog");
    screen_->resize(520, 400);
  }

  void longLogIsReachedByEveryRoad() {
    Put(Numbered(kLong));
    QCOMPARE(bar_->maximum(), 30'000);
    const int page = view_->PageStep();
    const std::tuple<std::function<void()>, int, int> steps[] = {
        {[this] { Act(QScrollBar::SliderSingleStepAdd); }, 2, 2},
        {[this] { Act(QScrollBar::SliderPageStepAdd); }, page + 2, -1},
        {[this] { Key(Qt::Key_PageUp), Key(Qt::Key_Up); }, 1, 1},
        {[this] { Key(Qt::Key_PageDown), Key(Qt::Key_Down); }, page + 2, -1},
        {[this] { Key(Qt::Key_Home), Wheel(view_, -120), Wheel(bar_, -120); },
         1 + 2 * QApplication::wheelScrollLines(), -1},
        {[this] { DragThumbTo(30'000); }, kLong, 30'000},
        {[this] { Act(QScrollBar::SliderSingleStepAdd); }, kLong, 30'000},
        {[this] { Act(QScrollBar::SliderSingleStepSub); }, kLong - 1, 29'999},
        {[this] { Act(QScrollBar::SliderPageStepSub); }, kLong - 1 - page, -1},
        {[this] { DragThumbTo(1); }, 1, 1},
        {[this] { Key(Qt::Key_End); }, kLong - page, -1}};
    for (const auto& [act, top, value] : steps) {
      Game.GameChanged = false;
      const int before = Game.LogTopLine;
      act();
      Look();
      QCOMPARE(std::pair(Game.LogTopLine, Game.GameChanged), std::pair(top, top != before));
      QCOMPARE(view_->InView().at(0), "Event " + std::to_string(top) + ".");
      if (value > 0) QCOMPARE(bar_->value(), value);
    }
    DragThumbTo(15'000);
    QVERIFY(std::abs(Game.LogTopLine - kLong / 2) < kLong / 10);
    QCOMPARE(int(view_->InView().size()), page + 2);  // and the line that is cut
  }

  void linesAreDrawnInTheirColours() {
    TheTable.Chrome = ChromeOfSystem;
    UseTableSettings();
    const std::tuple<const char*, bool, bool> lines[] = {
        {"     Bet won $5", false, false},
        {" New game started", true, false},
        {"Roll # 12: 7 (3-4) seven out", true, true}};
    for (const auto& [line, blue, cyan] : lines) {
      const QImage picture = Put(line + QByteArray("\r\n"));
      QCOMPARE(ColumnsWith(picture, kBlue).empty(), !blue);
      QCOMPARE(ColumnsWith(picture, kCyan).empty(), !cyan);
    }
    Put("Roll # 1: " + QByteArray(500, '6') + " end\n" + Numbered(40));
    QScrollBar* across = Get<QScrollBar>("hscrEventsLog");
    const std::set<int> before = ColumnsWith(Look(), kCyan);
    QVERIFY(across->maximum() > 0);
    for (int i = 0; i < 3; ++i) Key(Qt::Key_Right);
    QVERIFY(*ColumnsWith(Look(), kCyan).begin() < *before.begin());
    across->setValue(across->maximum());
    QVERIFY(*ColumnsWith(Look(), kCyan).rbegin() < view_->width() - 5);  // the end is in sight
    Key(Qt::Key_Down);  // over shorter lines the place isn't lost
    Look();
    QVERIFY(across->value() == across->maximum() && across->value() > 100);
  }

  void followsTheLatestRollOrKeepsItsPlace() {
    Put(Numbered(100));
    for (const bool follows : {false, true}) {
      if (follows) Menu("mnuKeepLatestRollOnTop");
      QCOMPARE(Game.KeepLatestRollOnTop, follows);
      for (const char* line : {"Roll #1: 5", "      Come bet won $5"}) WriteLogLine(line);
      table_->RefreshViews();
      Look();
      QCOMPARE(view_->InView().at(0), follows ? "Roll #1: 5" : "Event 1.");
      QCOMPARE(bar_->maximum(), follows ? 104 : 102);
      QCOMPARE(Label("lblPosition"), follows ? "Line 103 of 104" : "Line 1 of 102");
    }
    // Under Hyper-Drive nobody tells the views of single rolls.
    Game.HyperDriveOn = true;
    table_->RefreshViews();
    Put(Numbered(7));
    QTRY_COMPARE(bar_->maximum(), 7);
    Game.HyperDriveOn = false;
  }

  void emptyAndGrowingLogsTellOfThemselves() {
    const auto* empty = Get<QLabel>("lblEmpty");
    const auto recording = [this] { return Label("lblRecording"); };
    Look();
    QVERIFY(empty->isVisible() && empty->text().contains("Switch on Record Events"));
    Menu("mnuRecordEventsActive");
    QVERIFY(empty->text().contains("Choose in the Record menu") && recording() == "Recording");
    Put("Roll # 1: 4 (1-3)\r\n  Field won\r\nRoll # 2: 9 (5-4)\r\n  Field won\r\n");
    QCOMPARE(Label("lblLength"), "64 bytes, and 30.5 MB more with a million rolls");
    QVERIFY(!empty->isVisible());
    Game.EventsLogFile = FilePath("gone/Log.txt");
    WriteLogLine("lost");
    Look();
    QCOMPARE(recording(), QString("The log can't be written: there's no such folder"));
    Game.EventsLogFile = FilePath("Events Log.txt");
    WriteLogLine("kept");
    Look();
    QCOMPARE(recording(), QString("Recording"));
  }

  void aLongSearchCanBeStopped() {
    Put(Numbered(kLong));
    for (const bool forward : {true, false}) {
      int asked = 0;
      Game.LogTopLine = kLong / 2;
      QVERIFY(!FindInLog("nowhere", forward, [&](double at) { return at <= 1 && ++asked < 3; }));
      QVERIFY(asked == 3 && Game.LogTopLine == kLong / 2);
    }
  }

  void findsBothWaysRoundTheEnds() {
    Put("first\r\n" + Numbered(500) + "The WINNER is here\r\n");
    const auto ask = [this](const QString& text, const char* button) {
      OnNextScreen([=](QDialog* screen) {
        QCOMPARE(screen->windowTitle(), QString("Find"));
        QTest::keyClick(Find<QLineEdit>(screen, "txtFind"), Qt::Key_Delete);  // what is selected
        QTest::keyClicks(Find<QLineEdit>(screen, "txtFind"), text);
        ClickButton(screen, button);
      });
      QTest::keyClick(screen_, Qt::Key_F, Qt::ControlModifier);
      screen_->activateWindow();
      QTRY_VERIFY(screen_->isActiveWindow());
    };
    const auto again = [this](auto keys) { QTest::keyClick(screen_, Qt::Key_F3, keys); };
    const std::tuple<std::function<void()>, int> steps[] = {
        {[&] { again(Qt::NoModifier); }, 1},     {[&] { ask("event 9", "cmdCancel"); }, 1},
        {[&] { ask("Event 49", "cmdOK"); }, 50}, {[&] { again(Qt::NoModifier); }, 491},
        {[&] { again(Qt::ShiftModifier); }, 50}, {[&] { ask("winner", "cmdOK"); }, 502}};
    for (const auto& [act, top] : steps) {
      act();
      QCOMPARE(Game.LogTopLine, top);
    }
    QVERIFY(PlannedMessages.Shown.empty());
    ask("nowhere", "cmdOK");
    ExpectMessage("Text not found.", "Search Results");
  }

  void logsAreBegunOpenedAndMoved() {
    const auto caption = [this] { return Look(), screen_->windowTitle(); };
    Put("first\r\n");
    PlannedMessages.Answers = {{AnswerYes}};
    FileMenu("mnuNew", "");  // a log that was to be kept stays
    QCOMPARE(Read("Events Log.txt"), "first\r\n");
    ExpectMessage(
        "This log needs to be re-named \nif you want to save it.\n\n"
        "Do you want to re-name it now?",
        "Save Events Log?");

    Write("kept.txt", "other");
    PlannedMessages.Answers = {{AnswerYes}};
    FileMenu("mnuSaveAs", "kept");
    QCOMPARE(Read("kept.txt"), "first\r\n");
    QCOMPARE(caption(), "Events Log (kept.txt)");
    QVERIFY(Told().endsWith("Do you want to overwrite it?"));
    Menu("mnuNew");  // it has a name, so there is no question
    QVERIFY(PlannedMessages.Answers.empty() && !EventsLogExists());
    QCOMPARE(caption(), "Events Log");

    Write("Größe.txt", Numbered(3, "old "));
    Game.LogTopLine = 9;
    FileMenu("mnuOpen", "Größe.txt");
    QCOMPARE(caption(), QString("Events Log (Größe.txt)"));
    QCOMPARE(view_->InView(), (std::vector<std::string>{"old 1.", "old 2.", "old 3."}));
    QCOMPARE(Game.LogTopLine, 1);
  }

  void longLogsArePrintedInPages() {
    PrintFile = Path("log.pdf");
    Menu("mnuPrint");
    ExpectMessage("There are no logged events to print.", "Print Events Log");
    for (const int pages : {1, 20}) {
      Put(Numbered(65 * pages));
      Menu("mnuPrint");
      const QByteArray pdf = Read("log.pdf");
      const auto printed = pdf.count("/Type /Page\n");
      QVERIFY2(printed >= pages && printed <= pages + 3, qPrintable(QString::number(printed)));
    }
  }

 private:
  /// Puts a log on disk, and shows it from its first line.
  QImage Put(const QByteArray& text) {
    ClearEventsLog();
    Write("Events Log.txt", text);
    return Look();
  }
  QImage Look() {
    screen_->Refresh();
    return view_->grab().toImage();
  }

  void Key(Qt::Key key) { QTest::keyClick(screen_, key); }
  void Wheel(QWidget* over, int turn) {
    QWheelEvent event({5, 5}, over->mapToGlobal(QPointF(5, 5)), {}, {0, turn}, Qt::NoButton, {},
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(over, &event);
  }
  void Act(QScrollBar::SliderAction action) { bar_->triggerAction(action); }
  void DragThumbTo(int value) {
    bar_->setSliderDown(true);
    for (const int place : {value / 2 + 1, value}) {
      bar_->setSliderPosition(place);
      Act(QScrollBar::SliderMove);
      Look();  // the thumb isn't pulled away while it is held
      QCOMPARE(bar_->sliderPosition(), place);
    }
    bar_->setSliderDown(false);
    Look();
  }

  frmEventsLog* screen_ = nullptr;
  picEventsLogBox* view_ = nullptr;
  QScrollBar* bar_ = nullptr;
};

SCREEN_TEST(TestEventsLog)
#include "test_events_log.moc"
