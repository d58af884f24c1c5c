#include "screens/statistics/frmEventsLog.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QLocale>
#include <QPainter>
#include <QProgressDialog>
#include <QPushButton>
#include <QVBoxLayout>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>
#include <memory>
#include <utility>

#include "core/help_topics.h"
#include "core/messages.h"
#include "core/record_file.h"
#include "screens/files/frmFile.h"
#include "screens/frame/bind.h"
#include "screens/frame/chrome.h"
#include "screens/frame/controls.h"
#include "screens/frame/dialog.h"
#include "screens/frame/guard.h"
#include "screens/frame/player_change.h"
#include "screens/frame/report.h"
#include "stats/events_log.h"
#include "stats/events_log_view.h"

namespace {

constexpr const char* kPlace = "Events Log";

constexpr int kIndent = 5;          // of the text in the view
constexpr int kHeadroom = 3;        // above the line at the top
constexpr int kFewestLetters = 48;  // of the system's, that the view has room for
constexpr int kFewestLines = 6;
constexpr int kNormalFont = 9;
constexpr int kSmallestFont = 2;  // sizes stay above it
constexpr int kLargestFont = 199;
constexpr int kFontStep = 2;
constexpr int kSideStep = 4;  // blanks
constexpr int kLinesPerRead = 500;
constexpr int kProgressSteps = 1000;  // of a search
constexpr int kPatience = 500;        // milliseconds, before its progress is shown

/// All that the log can record.
constexpr bool EventsLogSettings::*kEvents[] = {&EventsLogSettings::LogRolls,
                                                &EventsLogSettings::LogBetChanges,
                                                &EventsLogSettings::LogBetsWon,
                                                &EventsLogSettings::LogBetsLost,
                                                &EventsLogSettings::LogChipStackChanges,
                                                &EventsLogSettings::LogPassesMisses,
                                                &EventsLogSettings::LogShooterChanges,
                                                &EventsLogSettings::LogBankrollChanges};

QString LogName() { return Text(BareName(Game.EventsLogFile)); }

/// The letters of the view. A size that no game could have made is drawn as the nearest one.
QFont LogFont() {
  QFont font = QApplication::font();
  font.setPointSize(Game.LogFontSize < 1 ? kNormalFont : std::min(Game.LogFontSize, kLargestFont));
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

/// The colours of the log; as they come, those of a printed page.
struct LogInks {
  QColor Plain{Qt::black};
  QColor Marked{Qt::blue};  // colour 9 of the palette
  QColor Result{Qt::cyan};  // colour 11, behind what a roll has brought
};

LogInks InksOnScreen() {
  LogInks inks{InkOnPaper(Qt::black), InkOnPaper(Qt::blue)};
  if (PaperColor().lightness() < 128) inks.Result = QColor(0x06, 0x3A, 0x48);
  return inks;
}

void DrawLogLine(QPainter& painter, QPointF corner, const std::string& line, const LogInks& inks) {
  const QFontMetricsF metrics(painter.font());
  const LogLineLook look = LookOfLogLine(line);
  if (look == LogLineLook::Roll) {
    const LogLineResult result = ResultInLogLine(line);
    const double left = metrics.horizontalAdvance(Shown(line.substr(0, result.Start)));
    const double width = metrics.horizontalAdvance(Shown(line.substr(result.Start, result.Length)));
    const QRectF box(corner.x() + left, corner.y(), width, metrics.height());
    if (result.Length > 0) painter.fillRect(box.adjusted(-2, 0, 2, 0), inks.Result);
  }
  painter.setPen(look == LogLineLook::Plain ? inks.Plain : inks.Marked);
  painter.drawText(corner + QPointF(0, metrics.ascent()), Shown(line));
}

/// All of them, switched at once.
MenuRow SetAll(const char* name, const QString& caption, bool on) {
  return Command(name, caption, [on] {
    ChangeByPlayer([on] {
      for (bool EventsLogSettings::*event : kEvents) Game.*event = on;
    });
  });
}

std::vector<MenuRow> RecordRows() {
  const auto tr = [](const char* text) { return frmEventsLog::tr(text); };
  return {
      Toggle("mnuRecordEventsActive", tr("&Record Events"), Game.EventsLogActive),
      Separator(),
      Toggle("mnuRecordRolls", tr("&Rolls"), Game.LogRolls),
      Toggle("mnuRecordBetChanges", tr("&Bets Made/Changed"), Game.LogBetChanges),
      Toggle("mnuRecordBetsWon", tr("Bets &Won"), Game.LogBetsWon),
      Toggle("mnuRecordBetsLost", tr("Bets &Lost"), Game.LogBetsLost),
      Toggle("mnuRecordChipStackChanges", tr("&ChipStacks Changed"), Game.LogChipStackChanges),
      Toggle("mnuRecordPassesMisses", tr("&Passes/Misses/Points"), Game.LogPassesMisses),
      Toggle("mnuRecordShooterChanges", tr("&Shooter Changes"), Game.LogShooterChanges),
      Toggle("mnuRecordBankrollChanges", tr("B&ankroll Changes"), Game.LogBankrollChanges),
      Separator(),
      SetAll("mnuSelectAll", tr("Select &All Events"), true),
      SetAll("mnuDeselectAll", tr("&Deselect All Events"), false),
      Separator(),
      Toggle("mnuClearLog", tr("&Clear Log When New Games Start"), Game.ClearLogOnNew),
      Toggle("mnuKeepLatestRollOnTop", tr("&Scroll New Rolls To Top"), Game.KeepLatestRollOnTop)};
}

/// A size of the letters, checked while they have it.
MenuRow SizeRow(int index, const QString& caption, bool (*checked)(int), int (*next)(int)) {
  return Check(
      QString("mnuFontSize_%1").arg(index), caption,
      [checked] { return checked(Game.LogFontSize); },
      [next] { ChangeByPlayer([next] { Game.LogFontSize = next(Game.LogFontSize); }); });
}

std::vector<MenuRow> FontRows() {
  const auto tr = [](const char* text) { return frmEventsLog::tr(text); };
  return {SizeRow(
              0, tr("&Smaller"), [](int size) { return size < kNormalFont; },
              [](int size) { return size - kFontStep > kSmallestFont ? size - kFontStep : size; }),
          SizeRow(
              1, tr("&Normal"), [](int size) { return size == kNormalFont; },
              [](int) { return kNormalFont; }),
          SizeRow(
              2, tr("&Larger"), [](int size) { return size > kNormalFont; },
              [](int size) { return std::min(size, kLargestFont - kFontStep) + kFontStep; }),
          Separator(),
          Toggle("mnuFontBold", tr("&Bold"), Game.LogFontBold),
          Toggle("mnuFontItalic", tr("&Italic"), Game.LogFontItalic)};
}

/// What would fill an empty log.
QString WhyEmpty() {
  const auto tr = [](const char* text) { return frmEventsLog::tr(text); };
  if (!Game.EventsLogActive)
    return tr("Nothing has been logged.\n\nSwitch on Record Events in the Record menu.");
  const bool some = std::any_of(std::begin(kEvents), std::end(kEvents),
                                [](bool EventsLogSettings::*event) { return Game.*event; });
  return some ? tr("Nothing has been logged.\n\nWhat happens from now on will stand here.")
              : tr("Nothing has been logged.\n\nChoose in the Record menu what is recorded.");
}

QString SizeText(double bytes) {
  return QLocale::c().formattedDataSize(static_cast<qint64>(bytes), 1,
                                        QLocale::DataSizeTraditionalFormat);
}

/// How long the log is, and how it grows.
QString LengthText() {
  const double growth = LogGrowthOfMillionRolls();
  const QString length = SizeText(static_cast<double>(EventsLogLength()));
  return growth > 0 ? frmEventsLog::tr("%1, and %2 more with a million rolls")
                          .arg(length, SizeText(growth))
                    : length;
}

QString RecordingText() {
  if (!Game.EventsLogActive) return frmEventsLog::tr("Not recording");
  const std::string failure = LogWriteFailure();
  if (failure.empty()) return frmEventsLog::tr("Recording");
  return frmEventsLog::tr("The log can't be written: %1").arg(Text(failure));
}

/// Asks what to look for; empty when the player doesn't say.
QString AskForText(QWidget* parent, const QString& start) {
  Dialog screen(parent, "frmFind", frmEventsLog::tr("Find"), kTopicEventsLog);
  QVBoxLayout* column = new QVBoxLayout(&screen);
  auto* txtFind = New<QLineEdit>("txtFind", start);
  txtFind->selectAll();
  QLabel* words = Caption(frmEventsLog::tr("Enter the text you'd like to find:\n\n"
                                           "If found, the line will appear at the top of the "
                                           "events log."),
                          txtFind);
  QDialogButtonBox* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
  buttons->button(QDialogButtonBox::Ok)->setObjectName("cmdOK");
  buttons->button(QDialogButtonBox::Cancel)->setObjectName("cmdCancel");
  QObject::connect(buttons, &QDialogButtonBox::accepted, &screen, &QDialog::accept);
  QObject::connect(buttons, &QDialogButtonBox::rejected, &screen, &QDialog::reject);
  column->setSpacing(12);
  for (QWidget* part : std::initializer_list<QWidget*>{words, txtFind, buttons})
    column->addWidget(part);
  return screen.exec() == QDialog::Accepted ? txtFind->text() : QString();
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
  FollowEventsLog();
  inView_ = ReadLogLines(Game.LogTopLine, WholeLines() + 1);
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
  painter.fillRect(rect(), PaperColor());
  const LogInks inks = InksOnScreen();
  painter.setFont(LogFont());
  const QFontMetricsF metrics(painter.font());
  const double left = kIndent - shift_ * metrics.horizontalAdvance(' ');
  double top = kHeadroom;
  for (const std::string& line : inView_) {
    DrawLogLine(painter, {left, top}, line, inks);
    top += metrics.height();
  }
}

// ---- frmEventsLog ----

frmEventsLog::frmEventsLog(QWidget* table)
    : Screen(table, "frmEventsLog", tr("Events Log"), kTopicEventsLog) {
  QWidget* content = new QWidget(this);
  QVBoxLayout* column = new QVBoxLayout(content);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  setCentralWidget(content);
  MakeView(column);
  MakeStatusRow(column);
  MakeMenus();
  resize(560, 480);
  picEventsLog_->setFocus();
}

void frmEventsLog::MakeView(QVBoxLayout* column) {
  QWidget* parent = centralWidget();
  picEventsLog_ = new picEventsLogBox(parent);
  picEventsLog_->installEventFilter(this);
  connect(picEventsLog_, &picEventsLogBox::WasRead, this, [this] { ShowBars(); });
  lblEmpty_ = EmptyLabel(picEventsLog_, "lblEmpty", {});
  FollowChrome(lblEmpty_, [this] {  // on the paper, whatever the desktop's colors
    lblEmpty_->setStyleSheet("color: " + InkOnPaper(QColor("dimgray")).name());
  });
  BindText(lblEmpty_, WhyEmpty);

  vscrEventsLog_ = new QScrollBar(Qt::Vertical, parent);
  vscrEventsLog_->setObjectName("vscrEventsLog");
  vscrEventsLog_->setContextMenuPolicy(Qt::PreventContextMenu);
  vscrEventsLog_->installEventFilter(this);
  connect(vscrEventsLog_, &QScrollBar::actionTriggered, this,
          [this](int action) { Guarded(kPlace, [this, action] { BarActed(action); }); });
  connect(vscrEventsLog_, &QScrollBar::sliderReleased, this, [this] { Refresh(); });

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
  lblPosition_ = New<QLabel>("lblPosition");
  auto* length = New<QLabel>("lblLength");
  auto* recording = New<QLabel>("lblRecording");
  for (QLabel* label : {lblPosition_, length, recording}) {
    label->setMargin(4);
    label->setMinimumWidth(1);
    row->addWidget(label, label == length ? 1 : 0);
  }
  length->setAlignment(Qt::AlignCenter);
  BindText(length, LengthText);
  BindText(recording, RecordingText);
  column->addLayout(row);
}

// ---- The menus ----

void frmEventsLog::MakeMenus() {
  MenuBar().Add("mnuFile", tr("&File"),
                {Command("mnuNew", tr("&New"), [this] { NewLog(); }).On(QKeySequence::New),
                 Command("mnuOpen", tr("&Open ..."),
                         [this] { RunFileScreen(this, FileCommand::OpenEventsLog); })
                     .On(QKeySequence::Open),
                 Command("mnuSaveAs", tr("Save &As ..."),
                         [this] { RunFileScreen(this, FileCommand::SaveEventsLogAs); })
                     .On(QKeySequence::Save),
                 Separator(), Command("mnuPrint", tr("&Print"), [this] {
                                PrintLog();
                              }).On(QKeySequence::Print)});
  const auto searched = [this] { return !findText_.isEmpty(); };
  const QString nothing = tr("Nothing has been looked for yet.");
  MenuBar().Add(
      "mnuEdit", tr("&Edit"),
      {Command("mnuFind", tr("&Find ..."), [this] { AskAndFind(); }).On(QKeySequence::Find),
       Command("mnuFindNext", tr("Find &Next"), [this] { FindAgain(true); })
           .On(Qt::Key_F3)
           .When(searched, nothing),
       Command("mnuFindPrevious", tr("Find Pre&vious"), [this] { FindAgain(false); })
           .On(Qt::SHIFT | Qt::Key_F3)
           .When(searched, nothing)});
  MenuBar().Add("mnuRecord", tr("&Record"), RecordRows());
  MenuBar().Add("mnuFont", tr("F&ont"), FontRows());
}

// ---- Commands ----

void frmEventsLog::NewLog() {
  if (IsDefaultLogName(Game.EventsLogFile)) {
    ShowMessage(
        "This log needs to be re-named \nif you want to save it.\n\n"
        "Do you want to re-name it now?",
        "Save Events Log?", kTopicEventsLog, YesNoCancel);
    if (Game.MsgAnswer != AnswerYes && Game.MsgAnswer != AnswerNo) return;
    // A log that was to be kept and wasn't stays.
    if (Game.MsgAnswer == AnswerYes && !RunFileScreen(this, FileCommand::SaveEventsLogAs)) return;
  }
  ChangeByPlayer(BeginNewEventsLog);
}

void frmEventsLog::PrintLog() {
  const int lines = FollowEventsLog();
  if (lines == 0) {
    ShowMessage("There are no logged events to print.", "Print Events Log", kTopicEventsLog,
                OkStop);
    return;
  }
  // Lines are read in stretches; they are asked for one after the other.
  auto first = std::make_shared<int>(0);
  auto read = std::make_shared<std::vector<std::string>>();
  Report report;
  report.Title = tr("Kelvanor Events Log");
  report.Heading = GameHeading(tr("Kelvanor Events Log"));
  report.Heading << tr("Events Log File:  %1").arg(LogName());
  report.TextSize = 9;
  report.Rows = lines;
  report.Row = [first, read, lines](int row) {
    const int line = row + 1;
    if (line < *first || line >= *first + static_cast<int>(read->size())) {
      *first = line;
      *read = ReadLogLines(line, std::min(kLinesPerRead, lines - row));
    }
    const auto at = static_cast<unsigned>(line - *first);
    return QStringList{at < read->size() ? Shown((*read)[at]) : QString()};
  };
  PrintReport(this, report);
}

void frmEventsLog::AskAndFind() {
  const QString text = AskForText(this, findText_).toLower();
  if (text.isEmpty()) return;
  findText_ = text;
  FindAgain(true);
}

void frmEventsLog::FindAgain(bool forward) {
  if (findText_.isEmpty()) return;
  QProgressDialog progress(tr("Looking for \"%1\" ...").arg(findText_), tr("Stop"), 0,
                           kProgressSteps, this);
  progress.setWindowTitle(tr("Find"));
  progress.setWindowModality(Qt::ApplicationModal);
  progress.setMinimumDuration(kPatience);
  EnsureLogIndex();
  const bool found = FindInLog(findText_.toStdString(), forward, [&progress](double share) {
    progress.setValue(static_cast<int>(share * kProgressSteps));
    return !progress.wasCanceled();
  });
  progress.reset();
  if (!found && !progress.wasCanceled())
    ShowMessage("Text not found.", "Search Results", kTopicEventsLog, OkStop);
}

// ---- Scrolling ----

void frmEventsLog::GoTo(int line) {
  if (Game.LogTopLine != line) ChangeByPlayer([line] { Game.LogTopLine = line; });
}

void frmEventsLog::GoBy(int lines) {
  GoTo(TopLineAfterClick(Game.LogTopLine, FollowEventsLog(), lines));
}

/// The bar has been clicked or dragged: it follows the line at the top, not the other way round.
void frmEventsLog::BarActed(int action) {
  const int lines = FollowEventsLog();
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
  if (event->type() != QEvent::Wheel) return Screen::eventFilter(watched, event);
  Guarded(kPlace, [&] { Turn(*static_cast<QWheelEvent*>(event)); });
  return true;
}

bool frmEventsLog::TakeKey(QKeyEvent& event) {
  const auto sideways = [this](int blanks) {
    hscrEventsLog_->setValue(hscrEventsLog_->value() + blanks);
  };
  switch (event.key()) {
    case Qt::Key_Up: GoBy(-1); break;
    case Qt::Key_Down: GoBy(1); break;
    case Qt::Key_PageUp: GoBy(-picEventsLog_->PageStep()); break;
    case Qt::Key_PageDown: GoBy(picEventsLog_->PageStep()); break;
    case Qt::Key_Home: GoTo(1); break;
    case Qt::Key_End: GoTo(std::max(1, FollowEventsLog() - picEventsLog_->PageStep())); break;
    case Qt::Key_Left: sideways(-kSideStep); break;
    case Qt::Key_Right: sideways(kSideStep); break;
    default: return false;
  }
  return true;
}

// ---- What is shown ----

void frmEventsLog::ShowRecord() {
  setWindowTitle(IsDefaultLogName(Game.EventsLogFile) ? tr("Events Log")
                                                      : tr("Events Log (%1)").arg(LogName()));
  picEventsLog_->update();
}

/// The bars and the position stand by what the view has just read.
void frmEventsLog::ShowBars() {
  const int lines = LogLineCount();
  lblEmpty_->setVisible(lines == 0);
  vscrEventsLog_->setRange(1, LogBarMaximum(lines));
  vscrEventsLog_->setPageStep(picEventsLog_->PageStep());
  if (!vscrEventsLog_->isSliderDown())
    vscrEventsLog_->setValue(LogBarValue(Game.LogTopLine, lines));
  hscrEventsLog_->setRange(0, picEventsLog_->BlanksBeyond());
  hscrEventsLog_->setPageStep(picEventsLog_->BlanksInView());
  lblPosition_->setText(lines == 0 ? QString()
                                   : tr("Line %1 of %2").arg(Count(Game.LogTopLine), Count(lines)));
}
