#include "screens/statistics/frmEventsLog.h"

#include <QApplication>
#include <QDate>
#include <QDialog>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QLocale>
#include <QMenuBar>
#include <QPainter>
#include <QProgressDialog>
#include <QPushButton>
#include <QVBoxLayout>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>
#include <utility>

#include "core/help_topics.h"
#include "core/messages.h"
#include "core/record_file.h"
#include "core/text.h"
#include "screens/files/frmFile.h"
#include "screens/frame/guard.h"
#include "screens/frame/help.h"
#include "screens/frame/paper.h"
#include "screens/frame/pointer.h"
#include "stats/events_log.h"
#include "stats/events_log_view.h"

namespace {

constexpr const char* kPlace = "Events Log";
constexpr const char* kDefaultName = "Events Log.txt";

constexpr QRgb kPaper = 0xFFFFFFFF;
constexpr QRgb kInk = 0xFF000000;
constexpr QRgb kBlue = 0xFF0000FF;  // colour 9 of the palette
constexpr QRgb kCyan = 0xFF00FFFF;  // colour 11
constexpr int kIndent = 5;          // of the text in the view
constexpr int kHeadroom = 3;        // above the line at the top
constexpr int kFewestLetters = 48;  // of the system's, that the view has room for
constexpr int kFewestLines = 6;
constexpr int kNormalFont = 9;
constexpr int kSmallestFont = 2;  // sizes stay above it
constexpr int kLargestFont = 199;
constexpr int kFontStep = 2;
constexpr int kSideStep = 4;  // blanks
constexpr int kRefreshOfRun = 250;
constexpr int kLinesPerRead = 500;

QString Text(const std::string& text) { return QString::fromStdString(text); }
QString Count(int count) { return Text(CountText(count)); }

QString LogName() { return Text(BareName(Game.EventsLogFile)); }

bool HasDefaultName() {
  return Game.EventsLogFile.empty() || LogName().toLower() == QString(kDefaultName).toLower();
}

/// The letters of the view. A size that no game could have made is drawn as the nearest one.
QFont LogFont() {
  if (Game.LogFontSize < 1) Game.LogFontSize = kNormalFont;
  QFont font = QApplication::font();
  font.setPointSize(std::min(Game.LogFontSize, kLargestFont));
  font.setBold(Game.LogFontBold);
  font.setItalic(Game.LogFontItalic);
  return font;
}

/// A line as it is drawn: tabs and other control characters take the place of a blank.
QString Shown(std::string line) {
  for (char& letter : line)
    if (static_cast<unsigned char>(letter) < ' ') letter = ' ';
  return Text(line);
}

void DrawLogLine(QPainter& painter, QPointF corner, const std::string& line) {
  const QFontMetricsF metrics(painter.font());
  const LogLineLook look = LookOfLogLine(line);
  if (look == LogLineLook::Roll) {
    const LogLineResult result = ResultInLogLine(line);
    const double left = metrics.horizontalAdvance(Shown(line.substr(0, result.Start)));
    const double width = metrics.horizontalAdvance(Shown(line.substr(result.Start, result.Length)));
    const QRectF box(corner.x() + left, corner.y(), width, metrics.height());
    if (result.Length > 0) painter.fillRect(box.adjusted(-2, 0, 2, 0), QColor::fromRgb(kCyan));
  }
  painter.setPen(QColor::fromRgb(look == LogLineLook::Plain ? kInk : kBlue));
  painter.drawText(corner + QPointF(0, metrics.ascent()), Shown(line));
}

int CurrentLines() {
  EnsureLogIndex();
  return LogLineCount();
}

/// Asks what to look for; empty when the player doesn't say.
QString AskForText(QWidget* parent, const QString& start) {
  QDialog screen(parent);
  screen.setObjectName("frmFind");
  screen.setWindowTitle(screen.tr("Find"));
  QVBoxLayout* column = new QVBoxLayout(&screen);
  QLabel* words = new QLabel(
      "Enter the text you'd like to find:\n\n"
      "If found, the line will appear at the top of the events log.");
  QLineEdit* txtFind = new QLineEdit(start);
  txtFind->setObjectName("txtFind");
  txtFind->setAccessibleName(screen.tr("Text to find"));
  txtFind->selectAll();
  QDialogButtonBox* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
  buttons->button(QDialogButtonBox::Ok)->setObjectName("cmdOK");
  buttons->button(QDialogButtonBox::Cancel)->setObjectName("cmdCancel");
  QObject::connect(buttons, &QDialogButtonBox::accepted, &screen, &QDialog::accept);
  QObject::connect(buttons, &QDialogButtonBox::rejected, &screen, &QDialog::reject);
  column->setSpacing(12);
  column->addWidget(words);
  column->addWidget(txtFind);
  column->addWidget(buttons);
  column->setSizeConstraint(QLayout::SetFixedSize);
  return screen.exec() == QDialog::Accepted ? txtFind->text() : QString();
}

/// Prints lines under each other, page after page.
class PagePrinter {
 public:
  PagePrinter(QPainter& painter, QSizeF page, std::function<void()> nextPage)
      : painter_(painter), page_(page), nextPage_(std::move(nextPage)) {}

  void Print(const QString& text, int size, bool bold) {
    if (y_ + size * 1.5 > page_.height()) {
      nextPage_();
      y_ = 0;
    }
    y_ = PrintLine(painter_, y_, page_.width(), text, size, bold);
  }

 private:
  QPainter& painter_;
  QSizeF page_;
  std::function<void()> nextPage_;
  double y_ = 0;
};

QStringList PrintHeading() {
  return {"Kelvanor Events Log", QLocale().toString(QDate::currentDate(), QLocale::LongFormat),
          "Events Log File:  " + LogName()};
}

}  // namespace

// ---- picEventsLog ----

picEventsLogBox::picEventsLogBox(QWidget* parent) : QWidget(parent) {
  setObjectName("picEventsLog");
  setAccessibleName(tr("Events Log"));
  setFocusPolicy(Qt::StrongFocus);
  setAttribute(Qt::WA_OpaquePaintEvent);
  setMinimumSize(fontMetrics().averageCharWidth() * kFewestLetters,
                 fontMetrics().height() * kFewestLines);
}

int picEventsLogBox::WholeLines() const {
  return static_cast<int>((height() - kHeadroom) / QFontMetricsF(LogFont()).height());
}

int picEventsLogBox::PageStep() const { return std::max(1, WholeLines() - 1); }

void picEventsLogBox::ShiftBy(int blanks) {
  shift_ = blanks;
  update();
}

int picEventsLogBox::BlanksInView() const {
  const double blank = QFontMetricsF(LogFont()).horizontalAdvance(' ');
  return std::max(1, static_cast<int>((width() - 2 * kIndent) / blank));
}

int picEventsLogBox::BlanksBeyond() const {
  const double blank = QFontMetricsF(LogFont()).horizontalAdvance(' ');
  return std::max(0, static_cast<int>(std::ceil((widest_ + 2 * kIndent - width()) / blank)));
}

void picEventsLogBox::Read() {
  const int lines = CurrentLines();
  Game.LogTopLine = std::clamp(Game.LogTopLine, 1, std::max(1, lines));
  inView_.clear();
  if (lines > 0) inView_ = ReadLogLines(Game.LogTopLine, WholeLines() + 1);
  Measure();
  emit WasRead();
}

/// The widest line so far, so that the view doesn't lose its place sideways over shorter ones.
void picEventsLogBox::Measure() {
  const QString what = LogFont().key() + Text(Game.EventsLogFile);
  if (std::exchange(measured_, what) != what) widest_ = 0;
  const QFontMetricsF metrics(LogFont());
  for (const std::string& line : inView_)
    widest_ = std::max(widest_, metrics.horizontalAdvance(Shown(line)));
}

void picEventsLogBox::paintEvent(QPaintEvent*) {
  Guarded(kPlace, [this] { Read(); });
  QPainter painter(this);
  painter.fillRect(rect(), QColor::fromRgb(kPaper));
  painter.setFont(LogFont());
  const QFontMetricsF metrics(painter.font());
  const double left = kIndent - shift_ * metrics.horizontalAdvance(' ');
  double top = kHeadroom;
  for (const std::string& line : inView_) {
    DrawLogLine(painter, {left, top}, line);
    top += metrics.height();
  }
}

// ---- frmEventsLog ----

frmEventsLog::frmEventsLog(QWidget* parent) : QMainWindow(parent) {
  setObjectName("frmEventsLog");
  QWidget* content = new QWidget(this);
  QVBoxLayout* column = new QVBoxLayout(content);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  setCentralWidget(content);
  MakeView(column);
  MakeStatusRow(column);
  MakeFileMenu();
  MakeEditMenu();
  MakeRecordMenu();
  MakeFontMenu();
  timerRun_ = new QTimer(this);
  timerRun_->setInterval(kRefreshOfRun);
  connect(timerRun_, &QTimer::timeout, this, [this] { RefreshEventsLogView(); });
  resize(560, 480);
  ShowCaption();
  ShowChecks();
  picEventsLog_->setFocus();
}

void frmEventsLog::MakeView(QVBoxLayout* column) {
  QWidget* parent = centralWidget();
  picEventsLog_ = new picEventsLogBox(parent);
  picEventsLog_->installEventFilter(this);
  connect(picEventsLog_, &picEventsLogBox::WasRead, this, [this] { ShowBars(); });

  vscrEventsLog_ = new QScrollBar(Qt::Vertical, parent);
  vscrEventsLog_->setObjectName("vscrEventsLog");
  vscrEventsLog_->setContextMenuPolicy(Qt::PreventContextMenu);
  vscrEventsLog_->installEventFilter(this);
  connect(vscrEventsLog_, &QScrollBar::actionTriggered, this,
          [this](int action) { Guarded(kPlace, [this, action] { BarActed(action); }); });
  connect(vscrEventsLog_, &QScrollBar::sliderReleased, this, [this] { RefreshEventsLogView(); });

  hscrEventsLog_ = new QScrollBar(Qt::Horizontal, parent);
  hscrEventsLog_->setObjectName("hscrEventsLog");
  hscrEventsLog_->setSingleStep(kSideStep);
  connect(hscrEventsLog_, &QScrollBar::valueChanged, picEventsLog_, &picEventsLogBox::ShiftBy);

  QGridLayout* grid = new QGridLayout;
  grid->setSpacing(0);
  grid->addWidget(picEventsLog_, 0, 0);
  grid->addWidget(vscrEventsLog_, 0, 1);
  grid->addWidget(hscrEventsLog_, 1, 0);
  grid->setColumnStretch(0, 1);
  grid->setRowStretch(0, 1);
  column->addLayout(grid, 1);
}

void frmEventsLog::MakeStatusRow(QVBoxLayout* column) {
  QHBoxLayout* row = new QHBoxLayout;
  lblPosition_ = new QLabel;
  lblPosition_->setObjectName("lblPosition");
  lblPosition_->setMinimumWidth(1);
  lblRecording_ = new QLabel;
  lblRecording_->setObjectName("lblRecording");
  for (QLabel* label : {lblPosition_, lblRecording_}) label->setMargin(4);
  row->addWidget(lblPosition_, 1);
  row->addWidget(lblRecording_);
  column->addLayout(row);
}

// ---- The menus ----

QAction* frmEventsLog::Command(QMenu* menu, const QString& name, const QString& caption,
                               const QKeySequence& key, std::function<void()> act) {
  QAction* action = menu->addAction(caption);
  action->setObjectName(name);
  action->setShortcut(key);
  connect(action, &QAction::triggered, this, [this, act = std::move(act)] {
    Guarded(kPlace, act);
    RefreshEventsLogView();
  });
  return action;
}

void frmEventsLog::Check(QMenu* menu, const char* name, const char* caption,
                         std::function<bool()> checked, std::function<void()> act) {
  QAction* action = Command(menu, name, caption, {}, [act = std::move(act)] {
    act();
    Game.GameChanged = true;
  });
  action->setCheckable(true);
  checks_.push_back([action, checked = std::move(checked)] { action->setChecked(checked()); });
}

void frmEventsLog::Toggle(QMenu* menu, const char* name, const char* caption, bool& field) {
  Check(
      menu, name, caption, [&field] { return field; }, [&field] { field = !field; });
}

void frmEventsLog::MakeFileMenu() {
  QMenu* menu = menuBar()->addMenu(tr("&File"));
  menu->setObjectName("mnuFile");
  Command(menu, "mnuNew", "&New", QKeySequence::New, [this] { NewLog(); });
  Command(menu, "mnuOpen", "&Open ...", QKeySequence::Open,
          [this] { RunFileScreen(this, FileCommand::OpenEventsLog); });
  Command(menu, "mnuSaveAs", "Save &As ...", QKeySequence::Save,
          [this] { RunFileScreen(this, FileCommand::SaveEventsLogAs); });
  menu->addSeparator();
  Command(menu, "mnuPrint", "&Print", QKeySequence::Print, [this] { PrintLog(); });
}

void frmEventsLog::MakeEditMenu() {
  QMenu* menu = menuBar()->addMenu(tr("&Edit"));
  menu->setObjectName("mnuEdit");
  // Required: no line can be selected, so there is never anything to cut or copy.
  Command(menu, "mnuCut", "C&ut", QKeySequence::Cut, [] {})->setEnabled(false);
  Command(menu, "mnuCopy", "&Copy", QKeySequence::Copy, [] {})->setEnabled(false);
  menu->addSeparator();
  Command(menu, "mnuFind", "&Find ...", QKeySequence::Find, [this] { AskAndFind(); });
  mnuFindNext_ =
      Command(menu, "mnuFindNext", "Find &Next", Qt::Key_F3, [this] { FindAgain(true); });
  mnuFindPrevious_ = Command(menu, "mnuFindPrevious", "Find Pre&vious", Qt::SHIFT | Qt::Key_F3,
                             [this] { FindAgain(false); });
}

void frmEventsLog::MakeRecordMenu() {
  struct Switch {
    const char* Name;
    const char* Caption;
    bool& Field;
  };
  static const Switch kSwitches[] = {
      {"mnuRecordRolls", "&Rolls", Game.LogRolls},
      {"mnuRecordBetChanges", "&Bets Made/Changed", Game.LogBetChanges},
      {"mnuRecordBetsWon", "Bets &Won", Game.LogBetsWon},
      {"mnuRecordBetsLost", "Bets &Lost", Game.LogBetsLost},
      {"mnuRecordChipStackChanges", "&ChipStacks Changed", Game.LogChipStackChanges},
      {"mnuRecordPassesMisses", "&Passes/Misses/Points", Game.LogPassesMisses},
      {"mnuRecordShooterChanges", "&Shooter Changes", Game.LogShooterChanges},
      {"mnuRecordBankrollChanges", "B&ankroll Changes", Game.LogBankrollChanges}};
  const auto setAll = [](bool on) {
    return [on] {
      for (const Switch& event : kSwitches) event.Field = on;
      Game.GameChanged = true;
    };
  };
  QMenu* menu = menuBar()->addMenu(tr("&Record"));
  menu->setObjectName("mnuRecord");
  Toggle(menu, "mnuRecordEventsActive", "&Record Events", Game.EventsLogActive);
  menu->addSeparator();
  for (const Switch& event : kSwitches) Toggle(menu, event.Name, event.Caption, event.Field);
  menu->addSeparator();
  Command(menu, "mnuSelectAll", "Select &All Events", {}, setAll(true));
  Command(menu, "mnuDeselectAll", "&Deselect All Events", {}, setAll(false));
  menu->addSeparator();
  Toggle(menu, "mnuClearLog", "&Clear Log When New Games Start", Game.ClearLogOnNew);
  Toggle(menu, "mnuKeepLatestRollOnTop", "&Scroll New Rolls To Top", Game.KeepLatestRollOnTop);
  connect(menu, &QMenu::aboutToShow, this, [this] { ShowChecks(); });
}

void frmEventsLog::MakeFontMenu() {
  QMenu* menu = menuBar()->addMenu(tr("F&ont"));
  menu->setObjectName("mnuFont");
  int& size = Game.LogFontSize;
  Check(
      menu, "mnuFontSize_0", "&Smaller", [&size] { return size < kNormalFont; },
      [&size] {
        if (size - kFontStep > kSmallestFont) size -= kFontStep;
      });
  Check(
      menu, "mnuFontSize_1", "&Normal", [&size] { return size == kNormalFont; },
      [&size] { size = kNormalFont; });
  Check(
      menu, "mnuFontSize_2", "&Larger", [&size] { return size > kNormalFont; },
      [&size] { size = std::min(size, kLargestFont - kFontStep) + kFontStep; });
  menu->addSeparator();
  Toggle(menu, "mnuFontBold", "&Bold", Game.LogFontBold);
  Toggle(menu, "mnuFontItalic", "&Italic", Game.LogFontItalic);
  connect(menu, &QMenu::aboutToShow, this, [this] { ShowChecks(); });
}

void frmEventsLog::ShowChecks() {
  for (const auto& check : checks_) check();
  mnuFindNext_->setEnabled(!findText_.isEmpty());
  mnuFindPrevious_->setEnabled(!findText_.isEmpty());
}

// ---- Commands ----

void frmEventsLog::NewLog() {
  if (HasDefaultName()) {
    ShowMessage(
        "This log needs to be re-named \nif you want to save it.\n\n"
        "Do you want to re-name it now?",
        "Save Events Log?", kTopicEventsLog, YesNoCancel);
    if (Game.MsgAnswer != AnswerYes && Game.MsgAnswer != AnswerNo) return;
    // A log that was to be kept and wasn't stays.
    if (Game.MsgAnswer == AnswerYes && !RunFileScreen(this, FileCommand::SaveEventsLogAs)) return;
  }
  Game.EventsLogFile = Game.DataPath + kDefaultName;
  ClearEventsLog();
  Game.GameChanged = true;
}

void frmEventsLog::PrintLog() {
  constexpr int kHeadingSize = 12;
  constexpr int kTextSize = 9;
  constexpr const char* kTitle = "Print Events Log";
  const int lines = CurrentLines();
  if (lines == 0) {
    ShowMessage("There are no logged events to print.", kTitle, kTopicEventsLog, OkStop);
    return;
  }
  if (!CanPrint()) {
    ShowMessage("There's no printer to print on.", kTitle, kTopicEventsLog, OkStop);
    return;
  }
  QProgressDialog progress(tr("Printing the Events Log ..."), tr("Cancel"), 0, lines, this);
  progress.setWindowTitle(kTitle);
  progress.setWindowModality(Qt::ApplicationModal);
  PrintOnPaper("Kelvanor Events Log", [&](QPainter& painter, QSizeF page, const auto& nextPage) {
    PagePrinter printer(painter, page, nextPage);
    const QStringList heading = PrintHeading();
    for (const QString& line : heading)
      printer.Print(line, kHeadingSize, &line == &heading.front());
    printer.Print({}, kTextSize, false);
    for (int first = 1; first <= lines && !progress.wasCanceled(); first += kLinesPerRead) {
      for (const std::string& line :
           ReadLogLines(first, std::min(kLinesPerRead, lines - first + 1)))
        printer.Print(Shown(line), kTextSize, false);
      progress.setValue(first);
    }
  });
}

void frmEventsLog::AskAndFind() {
  const QString text = AskForText(this, findText_).toLower();
  if (text.isEmpty()) return;
  findText_ = text;
  FindAgain(true);
}

void frmEventsLog::FindAgain(bool forward) {
  if (findText_.isEmpty()) return;
  const bool found = [&] {
    const PointerLook busy(Qt::WaitCursor);  // a long log is read from end to end
    EnsureLogIndex();
    return FindInLog(findText_.toStdString(), forward);
  }();
  if (found) {
    Game.GameChanged = true;
    return;
  }
  ShowMessage("Text not found.", "Search Results", kTopicEventsLog, OkStop);
}

// ---- Scrolling ----

void frmEventsLog::GoTo(int line) {
  if (std::exchange(Game.LogTopLine, line) != line) Game.GameChanged = true;
  RefreshEventsLogView();
}

void frmEventsLog::GoBy(int lines) {
  GoTo(TopLineAfterClick(Game.LogTopLine, CurrentLines(), lines));
}

/// The bar has been clicked or dragged: it follows the line at the top, not the other way round.
void frmEventsLog::BarActed(int action) {
  const int lines = CurrentLines();
  const int page = picEventsLog_->PageStep();
  switch (action) {
    case QScrollBar::SliderSingleStepAdd: GoBy(1); break;
    case QScrollBar::SliderSingleStepSub: GoBy(-1); break;
    case QScrollBar::SliderPageStepAdd: GoBy(page); break;
    case QScrollBar::SliderPageStepSub: GoBy(-page); break;
    case QScrollBar::SliderMove:
      GoTo(TopLineAfterDrag(vscrEventsLog_->sliderPosition(), lines));
      return;  // the thumb stays where it is held
    default: break;
  }
  vscrEventsLog_->setSliderPosition(LogBarValue(Game.LogTopLine, lines));
}

void frmEventsLog::Turn(const QWheelEvent& event) {
  const QPoint angle = event.angleDelta();
  if (std::abs(angle.x()) > std::abs(angle.y())) {
    const int notches = -angle.x() / QWheelEvent::DefaultDeltasPerStep;
    hscrEventsLog_->setValue(hscrEventsLog_->value() + notches * kSideStep);
    return;
  }
  turned_ -= angle.y() * QApplication::wheelScrollLines();
  const int lines = turned_ / QWheelEvent::DefaultDeltasPerStep;
  turned_ %= QWheelEvent::DefaultDeltasPerStep;
  if (lines != 0) GoBy(lines);
}

bool frmEventsLog::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::Wheel) return QMainWindow::eventFilter(watched, event);
  Guarded(kPlace, [&] { Turn(*static_cast<QWheelEvent*>(event)); });
  return true;
}

void frmEventsLog::keyPressEvent(QKeyEvent* event) {
  const auto sideways = [this](int blanks) {
    hscrEventsLog_->setValue(hscrEventsLog_->value() + blanks);
  };
  switch (event->key()) {
    case Qt::Key_Up: GoBy(-1); break;
    case Qt::Key_Down: GoBy(1); break;
    case Qt::Key_PageUp: GoBy(-picEventsLog_->PageStep()); break;
    case Qt::Key_PageDown: GoBy(picEventsLog_->PageStep()); break;
    case Qt::Key_Home: GoTo(1); break;
    case Qt::Key_End: GoTo(std::max(1, CurrentLines() - picEventsLog_->PageStep())); break;
    case Qt::Key_Left: sideways(-kSideStep); break;
    case Qt::Key_Right: sideways(kSideStep); break;
    case Qt::Key_F1: ShowHelp(kTopicEventsLog); break;
    case Qt::Key_Escape: close(); break;
    default: QMainWindow::keyPressEvent(event);
  }
}

// ---- What is shown ----

void frmEventsLog::RefreshEventsLogView() {
  if (!isVisible()) return;
  ShowCaption();
  ShowChecks();
  picEventsLog_->update();
  // Under Hyper-Drive nothing tells of single rolls.
  if (Game.HyperDriveOn != timerRun_->isActive())
    Game.HyperDriveOn ? timerRun_->start() : timerRun_->stop();
}

void frmEventsLog::ShowCaption() {
  setWindowTitle(HasDefaultName() ? QString("Events Log")
                                  : QString("Events Log (%1)").arg(LogName()));
  lblRecording_->setText(Game.EventsLogActive ? tr("Recording") : tr("Not recording"));
}

/// The bars and the position stand by what the view has just read.
void frmEventsLog::ShowBars() {
  const int lines = LogLineCount();
  vscrEventsLog_->setRange(1, LogBarMaximum(lines));
  vscrEventsLog_->setPageStep(picEventsLog_->PageStep());
  if (!vscrEventsLog_->isSliderDown())
    vscrEventsLog_->setValue(LogBarValue(Game.LogTopLine, lines));
  hscrEventsLog_->setRange(0, picEventsLog_->BlanksBeyond());
  hscrEventsLog_->setPageStep(picEventsLog_->BlanksInView());
  lblPosition_->setText(lines == 0 ? QString()
                                   : tr("Line %1 of %2").arg(Count(Game.LogTopLine), Count(lines)));
}

void frmEventsLog::showEvent(QShowEvent* event) {
  QMainWindow::showEvent(event);
  RefreshEventsLogView();
}

void frmEventsLog::hideEvent(QHideEvent* event) {
  timerRun_->stop();
  QMainWindow::hideEvent(event);
}
