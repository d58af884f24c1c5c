// The screen of the Events Log, by clicks and keys over logs on disk.
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>
#include <QStyle>
#include <QStyleOptionSlider>
#include <QWheelEvent>
#include <set>
#include <tuple>

#include "core/game_state.h"
#include "screens/frame/report.h"
#include "screens/screen_driver.h"
#include "screens/statistics/frmEventsLog.h"
#include "stats/events_log.h"
#include "stats/events_log_view.h"
#include "stats/log_files.h"
#include "support/scratch_folder.h"

namespace {

constexpr int kLong = 40'000;
constexpr QRgb kBlue = 0xFF0000FF;
constexpr QRgb kCyan = 0xFF00FFFF;

std::string Numbered(int lines, const std::string& words = "Event ") {
  std::string text;
  for (int i = 1; i <= lines; ++i) text += words + std::to_string(i) + ".\r\n";
  return text;
}

}  // namespace

class TestEventsLog : public QObject {
  Q_OBJECT

 private slots:
  void init() {
    folder_ = std::make_unique<ScratchFolder>("events_log_screen");
    table_ = std::make_unique<frmCrapTable>();
    OpenScreen(*table_, "mnuEventsLog", screen_);
    Game.DataPath = *folder_ / "";
    Game.EventsLogFile = *folder_ / "Events Log.txt";
    view_ = Find<picEventsLogBox>(screen_, "picEventsLog");
    bar_ = Find<QScrollBar>(screen_, "vscrEventsLog");
    screen_->resize(520, 400);
  }
  void cleanup() {
    PrintFile.clear();
    table_.reset();
    folder_.reset();
  }

  void longLogIsReachedByEveryRoad() {
    Put(Numbered(kLong));
    QCOMPARE(bar_->maximum(), 30'000);
    const int page = view_->PageStep();
    QCOMPARE(page, int((view_->height() - 3) / QFontMetricsF(QFont(font())).height()) - 1);
    QCOMPARE(bar_->pageStep(), page);
    const std::tuple<std::function<void()>, int, int> steps[] = {
        {[this] { ClickBar(QStyle::SC_ScrollBarAddLine); }, 2, 2},
        {[this] { ClickBar(QStyle::SC_ScrollBarAddLine); }, 3, 2},
        {[this] { ClickBar(QStyle::SC_ScrollBarAddPage); }, page + 3, -1},
        {[this] { Key(Qt::Key_PageUp); }, 3, 2},
        {[this] { ClickBar(QStyle::SC_ScrollBarSubLine); }, 2, 2},
        {[this] { Key(Qt::Key_PageDown), Key(Qt::Key_Down); }, page + 3, -1},
        {[this] { Key(Qt::Key_PageUp), Key(Qt::Key_Up); }, 2, 2},
        {[this] { Wheel(view_, -120), Wheel(bar_, -120); },
         2 + 2 * QApplication::wheelScrollLines(), -1},
        {[this] { DragThumbTo(bar_->height()); }, kLong, 30'000},
        {[this] { ClickBar(QStyle::SC_ScrollBarAddLine); }, kLong, 30'000},
        {[this] { ClickBar(QStyle::SC_ScrollBarSubLine); }, kLong - 1, 29'999},
        {[this] { ClickBar(QStyle::SC_ScrollBarSubPage); }, kLong - 1 - page, -1},
        {[this] { Key(Qt::Key_PageDown), Key(Qt::Key_PageDown); }, kLong, 30'000},
        {[this] { DragThumbTo(0); }, 1, 1},
        {[this] { Key(Qt::Key_End); }, kLong - page, -1},
        {[this] { Key(Qt::Key_Home), Key(Qt::Key_Up); }, 1, 1}};
    for (const auto& [act, top, value] : steps) {
      Game.GameChanged = false;
      const int before = Game.LogTopLine;
      act();
      Look();
      QCOMPARE(Game.LogTopLine, top);
      QCOMPARE(Game.GameChanged, top != before);
      QCOMPARE(view_->InView().at(0), "Event " + std::to_string(top) + ".");
      if (value > 0) QCOMPARE(bar_->value(), value);
    }
    DragThumbTo(bar_->height() / 2);
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
      const QImage picture = Put(std::string(line) + "\r\n");
      QCOMPARE(Columns(picture, kBlue).empty(), !blue);
      QCOMPARE(Columns(picture, kCyan).empty(), !cyan);
    }
    Put("Roll # 1: " + std::string(500, '6') + " end\n" + Numbered(40));
    QScrollBar* across = Find<QScrollBar>(screen_, "hscrEventsLog");
    const std::set<int> before = Columns(Look(), kCyan);
    QVERIFY(across->maximum() > 0);
    for (int i = 0; i < 3; ++i) Key(Qt::Key_Right);
    const double blank = QFontMetricsF(font()).horizontalAdvance(' ');
    QVERIFY(std::abs(*before.begin() - *Columns(Look(), kCyan).begin() - across->value() * blank) <=
            1);
    across->setValue(across->maximum());
    QVERIFY(*Columns(Look(), kCyan).rbegin() < view_->width() - 5);  // the end is in sight
    Key(Qt::Key_Down);  // over shorter lines the place isn't lost
    Look();
    QCOMPARE(across->value(), across->maximum());
    QVERIFY(across->value() > 100);
  }

  void followsTheLatestRollOrKeepsItsPlace() {
    Put(Numbered(100));
    for (const bool follows : {false, true}) {
      if (follows) Command(*screen_, "mnuKeepLatestRollOnTop");
      QCOMPARE(Game.KeepLatestRollOnTop, follows);
      for (const char* line : {"Roll #1: 5", "      Come bet won $5"}) WriteLogLine(line);
      table_->RefreshViews();
      Look();
      QCOMPARE(view_->InView().at(0), follows ? "Roll #1: 5" : "Event 1.");
      QCOMPARE(bar_->maximum(), follows ? 104 : 102);
      QCOMPARE(Find<QLabel>(screen_, "lblPosition")->text(),
               follows ? "Line 103 of 104" : "Line 1 of 102");
    }
    // Under Hyper-Drive nobody tells the views of single rolls.
    Game.HyperDriveOn = true;
    table_->RefreshViews();
    Put(Numbered(7));
    QTRY_COMPARE(bar_->maximum(), 7);
    Game.HyperDriveOn = false;
  }

  void emptyAndGrowingLogsTellOfThemselves() {
    const auto* empty = Find<QLabel>(screen_, "lblEmpty");
    const auto recording = [this] { return Find<QLabel>(screen_, "lblRecording")->text(); };
    Look();
    QVERIFY(empty->isVisible() && empty->text().contains("Switch on Record Events"));
    Command(*screen_, "mnuRecordEventsActive");
    QVERIFY(empty->text().contains("Choose in the Record menu") && recording() == "Recording");
    Command(*screen_, "mnuSelectAll");
    QVERIFY(empty->text().contains("will stand here"));
    Put("Roll # 1: 4 (1-3)\r\n  Field won\r\nRoll # 2: 9 (5-4)\r\n  Field won\r\n");
    QVERIFY(!empty->isVisible());
    QCOMPARE(Find<QLabel>(screen_, "lblLength")->text(),
             QString("64 bytes, and 30.5 MB more with a million rolls"));
    Game.EventsLogFile = *folder_ / "gone/Log.txt";
    WriteLogLine("lost");
    Look();
    QCOMPARE(recording(), QString("The log can't be written: there's no such folder"));
    Game.EventsLogFile = *folder_ / "Events Log.txt";
    WriteLogLine("kept");
    Look();
    QCOMPARE(recording(), QString("Recording"));
  }

  void aLongSearchCanBeStopped() {
    Put(Numbered(kLong));
    for (const bool forward : {true, false}) {
      double last = 0;
      int asked = 0;
      const auto goOn = [&](double share) {
        const bool further = share >= last && share <= 1;
        last = share;
        return further && ++asked < 3;
      };
      Game.LogTopLine = kLong / 2;
      QVERIFY(!FindInLog("nowhere", forward, goOn));
      QVERIFY(asked == 3 && last > 0.3);
    }
    QVERIFY(!FindInLog("event 7.", true, [](double) { return false; }));
    QCOMPARE(Game.LogTopLine, kLong / 2);
  }

  void findsBothWaysRoundTheEnds() {
    Put("Wurf: größer\r\n" + Numbered(500) + "The WINNER is here\r\n");
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
    const auto again = [this](bool back) {
      QTest::keyClick(screen_, Qt::Key_F3, back ? Qt::ShiftModifier : Qt::NoModifier);
    };
    const std::tuple<std::function<void()>, int> steps[] = {
        {[&] { again(false); }, 1},
        {[&] { ask("event 9", "cmdCancel"); }, 1},
        {[&] { ask("Event 49", "cmdOK"); }, 50},
        {[&] { again(false); }, 491},
        {[&] { again(true); }, 50},
        {[&] { again(true); }, 500},
        {[&] { again(false); }, 50},
        {[&] { ask("", "cmdOK"); }, 50},
        {[&] { again(false); }, 491},
        {[&] { ask("winner", "cmdOK"); }, 502},
        {[&] { again(false); }, 502}};  // the line at the top is tested last
    for (const auto& [act, top] : steps) {
      act();
      QCOMPARE(Game.LogTopLine, top);
    }
    QVERIFY(PlannedMessages.Shown.empty());
    ask("nowhere", "cmdOK");
    ExpectMessage("Text not found.", "Search Results");
    QCOMPARE(Game.LogTopLine, 502);
    ClearEventsLog();
    again(false);
    QCOMPARE(PlannedMessages.Shown.size(), std::size_t(2));
  }

  void logsAreBegunOpenedAndMoved() {
    // Gives a command, and a name to the file screen it opens, or none.
    const auto file = [this](const char* command, const QString& name) {
      OnNextScreen([=](QDialog* screen) {
        Find<QLineEdit>(screen, "txtFileName")->setText(name);
        ClickButton(screen, name.isEmpty() ? "cmdCancel" : "cmdOK");
      });
      Command(*screen_, command);
    };
    const auto caption = [this] { return Look(), screen_->windowTitle(); };
    Put("first\r\n");
    PlannedMessages.Answers = {{AnswerCancel}};
    Command(*screen_, "mnuNew");
    PlannedMessages.Answers = {{AnswerYes}};
    file("mnuNew", "");  // a log that was to be kept stays
    QCOMPARE(folder_->Read("Events Log.txt"), "first\r\n");
    ExpectMessage(
        "This log needs to be re-named \nif you want to save it.\n\n"
        "Do you want to re-name it now?",
        "Save Events Log?");
    QCOMPARE(caption(), "Events Log");

    folder_->Write("kept.txt", "other");
    PlannedMessages.Answers = {{AnswerYes}};
    file("mnuSaveAs", "kept");
    QCOMPARE(folder_->Read("kept.txt"), "first\r\n");
    QCOMPARE(caption(), "Events Log (kept.txt)");
    QVERIFY(PlannedMessages.Shown.back().Text.ends_with("Do you want to overwrite it?"));
    Command(*screen_, "mnuNew");  // it has a name, so there is no question
    QVERIFY(PlannedMessages.Answers.empty() && !EventsLogExists());
    QCOMPARE(folder_->Read("kept.txt"), "first\r\n");
    QCOMPARE(caption(), "Events Log");
    QVERIFY(view_->InView().empty());

    folder_->Write("Größe.txt", Numbered(3, "old "));
    Game.LogTopLine = 9;
    file("mnuOpen", "Größe.txt");
    QCOMPARE(caption(), QString("Events Log (Größe.txt)"));
    QCOMPARE(view_->InView(), (std::vector<std::string>{"old 1.", "old 2.", "old 3."}));
    QCOMPARE(Game.LogTopLine, 1);
  }

  void lostIndexAndOtherLogsAreNoticed() {
    const auto count = [this] { return Look(), bar_->maximum(); };
    QCOMPARE(count(), 1);  // without a log
    QCOMPARE(Game.LogTopLine, 1);
    Put(Numbered(300));
    std::filesystem::remove(EventsLogIndexPath());
    QCOMPARE(count(), 300);
    Game.LogTopLine = 250;
    folder_->Write("Events Log.txt", Numbered(40));
    std::filesystem::last_write_time(
        Game.EventsLogFile, std::filesystem::file_time_type::clock::now() - std::chrono::hours(1));
    QCOMPARE(count(), 40);
    QCOMPARE(view_->InView(), std::vector<std::string>{"Event 40."});
    std::filesystem::remove(Game.EventsLogFile);
    QCOMPARE(count(), 1);
    QVERIFY(view_->InView().empty());
  }

  void longLogsArePrintedInPages() {
    PrintFile = QString::fromStdString(*folder_ / "log.pdf");
    Command(*screen_, "mnuPrint");
    ExpectMessage("There are no logged events to print.", "Print Events Log");
    for (const int pages : {1, 20}) {
      Put(Numbered(65 * pages));
      Command(*screen_, "mnuPrint");
      const QByteArray pdf = QByteArray::fromStdString(folder_->Read("log.pdf"));
      const auto printed = pdf.count("/Type /Page\n");
      QVERIFY2(printed >= pages && printed <= pages + 3, qPrintable(QString::number(printed)));
    }
  }

 private:
  static QFont font() {
    QFont letters = QApplication::font();
    letters.setPointSize(9);
    return letters;
  }

  /// Puts a log on disk, and shows it from its first line.
  QImage Put(const std::string& text) {
    ClearEventsLog();
    folder_->Write("Events Log.txt", text);
    return Look();
  }
  QImage Look() {
    screen_->Refresh();
    return view_->grab().toImage();
  }
  static std::set<int> Columns(const QImage& picture, QRgb color) {
    std::set<int> columns;
    for (int x = 0; x < picture.width(); ++x)
      for (int y = 0; y < picture.height(); ++y)
        if (picture.pixel(x, y) == color) columns.insert(x);
    return columns;
  }

  void Key(Qt::Key key) { QTest::keyClick(screen_, key); }
  void Wheel(QWidget* over, int turn) {
    QWheelEvent event({5, 5}, over->mapToGlobal(QPointF(5, 5)), {}, {0, turn}, Qt::NoButton, {},
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(over, &event);
  }
  QRect PartOfBar(QStyle::SubControl part) {
    QStyleOptionSlider option;
    option.initFrom(bar_);
    option.orientation = Qt::Vertical;
    option.minimum = bar_->minimum();
    option.maximum = bar_->maximum();
    option.sliderPosition = option.sliderValue = bar_->value();
    option.pageStep = bar_->pageStep();
    option.singleStep = bar_->singleStep();
    return bar_->style()->subControlRect(QStyle::CC_ScrollBar, &option, part, bar_);
  }
  void ClickBar(QStyle::SubControl part) {
    QTest::mouseClick(bar_, Qt::LeftButton, {}, PartOfBar(part).center());
  }
  void DragThumbTo(int y) {
    const QPoint from = PartOfBar(QStyle::SC_ScrollBarSlider).center();
    QTest::mousePress(bar_, Qt::LeftButton, {}, from);
    QTest::mouseMove(bar_, {from.x(), (from.y() + y) / 2});
    Look();  // the thumb isn't pulled away while it is held
    QTest::mouseMove(bar_, {from.x(), y});
    QTest::mouseRelease(bar_, Qt::LeftButton, {}, {from.x(), y});
    Look();
  }

  std::unique_ptr<ScratchFolder> folder_;
  std::unique_ptr<frmCrapTable> table_;
  frmEventsLog* screen_ = nullptr;
  picEventsLogBox* view_ = nullptr;
  QScrollBar* bar_ = nullptr;
};

SCREEN_TEST(TestEventsLog)
#include "test_events_log.moc"
