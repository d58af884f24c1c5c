#include "screens/statistics/frmBankroll.h"

#include <QApplication>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>
#include <utility>

#include "autoplay/hyper_drive.h"
#include "core/help_topics.h"
#include "core/messages.h"
#include "core/text.h"
#include "screens/frame/at_table.h"
#include "screens/frame/bind.h"
#include "screens/frame/chrome.h"
#include "screens/frame/controls.h"
#include "screens/frame/guard.h"
#include "screens/frame/player_change.h"
#include "screens/frame/report.h"
#include "screens/statistics/graph_printer.h"
#include "stats/bankroll_graph.h"

namespace {

constexpr const char* kPlace = "Bankroll";
constexpr int kGrasp = 6;          // how near to a reference line takes hold of it
constexpr int kFirstLineAt = 175;  // where the reference lines stand at first
constexpr int kSecondLineAt = 350;
constexpr int kSlowest = 10;       // of the throttle
constexpr int kThrottleUnit = 10;  // milliseconds, times the throttle squared
constexpr int kProgressSteps = 1000;

enum Figure : int { TotalRolls, SimHours, RollsPerHour, HighFigure, LowFigure, CurrentFigure };
const std::array<const char*, 6> kFigureNames = {"lblTotalRolls", "lblSimHours", "lblRollsPerHour",
                                                 "lblHigh",       "lblLow",      "lblCurrent"};
const std::array<const char*, 6> kFigureCaptions = {
    QT_TRANSLATE_NOOP("frmBankroll", "Total Rolls:"), QT_TRANSLATE_NOOP("frmBankroll", "Sim hrs:"),
    QT_TRANSLATE_NOOP("frmBankroll", "Rolls / hr:"),  QT_TRANSLATE_NOOP("frmBankroll", "High:"),
    QT_TRANSLATE_NOOP("frmBankroll", "Low:"),         QT_TRANSLATE_NOOP("frmBankroll", "Current:")};

/// Writes a text where it has changed: labels that move nothing else cost a run nothing.
void Show(QLabel* label, const QString& text) {
  if (label->text() != text) label->setText(text);
}

/// Shows an amount, red below 0.
void ShowAmount(QLabel* label, Currency amount) {
  Show(label, Money(amount));
  const QColor ink = amount < 0 ? WarningInk() : QColor();
  if (label->property("ink").value<QColor>() == ink) return;
  label->setProperty("ink", ink);
  QPalette palette;
  if (ink.isValid()) palette.setColor(QPalette::WindowText, ink);
  label->setPalette(palette);
}

QLabel* NewFigure(QWidget* parent, const char* name, const QString& widest) {
  QLabel* label = new QLabel(parent);
  label->setObjectName(name);
  label->setTextFormat(Qt::PlainText);
  label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  const QFontMetrics metrics(label->font());
  label->setFixedSize(metrics.horizontalAdvance(widest), metrics.height() + 2);
  return label;
}

/// A piece of a line of the graph, beside its name.
class Sample : public QWidget {
 public:
  Sample(QWidget* parent, QColor GraphPalette::*color) : QWidget(parent), color_(color) {
    setFixedSize(28, 14);
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(PaletteOfGraph().Background);
    painter.drawRoundedRect(rect(), 3, 3);
    painter.setPen(QPen(PaletteOfGraph().*color_, 2.4));
    painter.drawLine(QPointF(4, height() / 2.0), QPointF(width() - 4.0, height() / 2.0));
  }

 private:
  QColor GraphPalette::*color_;
};

QString TimeText(double seconds) {
  const long long whole = std::llround(seconds);
  const QString minutes = QString("%1:%2")
                              .arg(whole / 60 % 60, whole >= 3600 ? 2 : 1, 10, QChar('0'))
                              .arg(whole % 60, 2, 10, QChar('0'));
  return whole >= 3600 ? QString("%1:%2").arg(Count(whole / 3600), minutes) : minutes;
}

QString ThrottleText(int throttle) {
  if (throttle == 0) return QObject::tr("Full speed");
  const double perSecond = 1000.0 / (kThrottleUnit * throttle * throttle);
  return QObject::tr("At most %1 rolls/s").arg(perSecond, 0, 'f', perSecond < 10 ? 1 : 0);
}

QString RunText(const RunProgress& run) {
  if (!Game.HyperDriveOn) {
    if (run.RollsDone <= 0 || run.RollsPerSecond <= 0) return QObject::tr("No run yet");
    return QObject::tr("Last run:  %1 rolls in %2,  %3 rolls/s")
        .arg(Count(run.RollsDone), TimeText(run.RollsDone / run.RollsPerSecond),
             Count(std::llround(run.RollsPerSecond)));
  }
  QString text =
      run.RollsAsked > 0
          ? QObject::tr("%1 of %2 rolls").arg(Count(run.RollsDone), Count(run.RollsAsked))
          : QObject::tr("%1 rolls, no count set").arg(Count(run.RollsDone));
  text += QObject::tr("    %1 rolls/s").arg(Count(std::llround(run.RollsPerSecond)));
  if (run.NoBet) text += QObject::tr(", no bets");
  if (run.RollsAsked > 0) text += QObject::tr("    %1 left").arg(TimeText(run.SecondsLeft));
  return text;
}

}  // namespace

// ---- picGraph ----

picGraphBox::picGraphBox(QWidget* parent) : QWidget(parent) {
  setObjectName("picGraph");
  setAccessibleName(tr("Bankroll graph"));
  setMouseTracking(true);
  setFocusPolicy(Qt::StrongFocus);
  setAttribute(Qt::WA_OpaquePaintEvent);
  setMinimumSize(420, 210);
}

void picGraphBox::SetReferenceLine(bool second, int point) {
  (second ? view_.Lines.Second : view_.Lines.First) = point;
  update();
  emit Changed();
}

void picGraphBox::PointAt(int point) {
  if (view_.Pointed == point) return;
  view_.Pointed = point;
  update();
  emit Changed();
}

void picGraphBox::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  PaintGraph(painter, rect(), view_);
}

picGraphBox::Dragged picGraphBox::LineNear(double x) const {
  const auto near = [&](int point) {
    return point > 0 && std::abs(Frame().X(point) - x) <= kGrasp;
  };
  if (!Game.BankrollRefLines) return Dragged::Nothing;
  if (near(view_.Lines.First)) return Dragged::First;
  return near(view_.Lines.Second) ? Dragged::Second : Dragged::Nothing;
}

void picGraphBox::mousePressEvent(QMouseEvent* event) {
  if (!Game.BankrollRefLines) return;
  const double x = event->position().x();
  dragged_ = LineNear(x);
  if (dragged_ == Dragged::Nothing)
    dragged_ = event->button() == Qt::RightButton ? Dragged::Second : Dragged::First;
  SetReferenceLine(dragged_ == Dragged::Second, Frame().PointAt(x));
}

void picGraphBox::mouseMoveEvent(QMouseEvent* event) {
  const double x = event->position().x();
  const int point = Frame().PointAt(x);
  if (dragged_ != Dragged::Nothing) SetReferenceLine(dragged_ == Dragged::Second, point);
  setCursor(LineNear(x) != Dragged::Nothing ? Qt::SizeHorCursor : Qt::CrossCursor);
  PointAt(point);
}

void picGraphBox::mouseReleaseEvent(QMouseEvent*) { dragged_ = Dragged::Nothing; }

void picGraphBox::leaveEvent(QEvent*) { PointAt(0); }

void picGraphBox::resizeEvent(QResizeEvent*) { emit Resized(); }

// ---- frmBankroll ----

frmBankroll::frmBankroll(QWidget* table)
    : Screen(table, "frmBankroll", tr("Bankroll Graph"), kTopicBankrollGraph) {
  QWidget* content = new QWidget(this);
  QVBoxLayout* column = new QVBoxLayout(content);
  column->setContentsMargins(12, 10, 12, 12);
  column->setSpacing(10);
  setCentralWidget(content);
  MakeGraph(column);
  MakeFigures(column);
  MakeHyperDrive(column);
  MakeMenus();
  resize(900, 660);
  picGraph_->setFocus();
}

void frmBankroll::MakeGraph(QBoxLayout* column) {
  QWidget* parent = centralWidget();
  QHBoxLayout* head = new QHBoxLayout;
  head->setSpacing(8);
  lblMovingAverage_ = New<QLabel>("lblMovingAverage");
  lblAutoPrint_ = New<QLabel>("lblAutoPrint", tr("Auto-Print ON"));
  picLegend_ = new Sample(parent, &GraphPalette::Average);
  head->addWidget(new Sample(parent, &GraphPalette::Line));
  head->addWidget(new QLabel(tr("Bankroll")));
  head->addSpacing(12);
  head->addWidget(picLegend_);
  head->addWidget(lblMovingAverage_);
  head->addStretch(1);
  head->addWidget(lblAutoPrint_);
  column->addLayout(head);

  picGraph_ = new picGraphBox(parent);
  connect(picGraph_, &picGraphBox::Changed, this, [this] { ShowPointed(); });
  connect(picGraph_, &picGraphBox::Resized, this, [this] { PlaceScaleLabels(); });
  picScale_ = new QWidget(parent);
  picScale_->setFixedWidth(QFontMetrics(font()).horizontalAdvance("-10,000,000.00"));
  for (int i = 0; i < kScaleLabels; ++i) {
    lblScale_[static_cast<unsigned>(i)] =
        NewFigure(picScale_, QString("lblScale_%1").arg(i).toUtf8().constData(), "-10,000,000.00");
  }
  lblRollsLeft_ = New<QLabel>("lblRollsLeft");
  lblRollsRight_ = New<QLabel>("lblRollsRight");
  lblPointer_ = New<QLabel>("lblPointer");
  lblPointer_->setTextFormat(Qt::PlainText);
  lblPointer_->setAlignment(Qt::AlignCenter);
  lblPointer_->setMinimumWidth(1);

  QGridLayout* grid = new QGridLayout;
  grid->setHorizontalSpacing(8);
  grid->setVerticalSpacing(4);
  grid->addWidget(picScale_, 0, 0);
  grid->addWidget(picGraph_, 0, 1);
  grid->addWidget(MakeScaleButtons(), 0, 2);
  QHBoxLayout* foot = new QHBoxLayout;
  foot->addWidget(lblRollsLeft_);
  foot->addWidget(lblPointer_, 1);
  foot->addWidget(lblRollsRight_);
  grid->addLayout(foot, 1, 1);
  grid->setColumnStretch(1, 1);
  grid->setRowStretch(0, 1);
  column->addLayout(grid, 1);
}

QWidget* frmBankroll::MakeScaleButtons() {
  QWidget* panel = new QWidget(centralWidget());
  QVBoxLayout* column = new QVBoxLayout(panel);
  column->setContentsMargins(0, 0, 0, 0);
  const auto add = [&](const char* name, const QString& tip, auto look, std::function<void()> act) {
    QToolButton* button = new QToolButton(panel);
    button->setObjectName(name);
    button->setToolTip(tip);
    button->setAccessibleName(tip);
    button->setFixedSize(28, 28);
    button->setFocusPolicy(Qt::TabFocus);
    look(button);
    connect(button, &QToolButton::clicked, this, [act] { Guarded(kPlace, act); });
    column->addWidget(button);
  };
  const auto arrow = [](Qt::ArrowType type) {
    return [type](QToolButton* button) { button->setArrowType(type); };
  };
  const auto sign = [](const char* text) {
    return [text](QToolButton* button) { button->setText(QString::fromUtf8(text)); };
  };
  column->addStretch(1);
  add("cmdZeroLineUp", tr("Zero line up"), arrow(Qt::UpArrow),
      [] { ChangeByPlayer([] { MoveZeroLine(1); }); });
  add("cmdZeroLineDown", tr("Zero line down"), arrow(Qt::DownArrow),
      [] { ChangeByPlayer([] { MoveZeroLine(-1); }); });
  column->addSpacing(10);
  add("cmdLargerScale", tr("Larger scale"), sign("+"), [this] { StepScale(true); });
  add("cmdSmallerScale", tr("Smaller scale"), sign("\u2212"), [this] { StepScale(false); });
  column->addStretch(1);
  return panel;
}

void frmBankroll::MakeFigures(QBoxLayout* column) {
  QWidget* parent = centralWidget();
  QGridLayout* grid = new QGridLayout;
  grid->setHorizontalSpacing(10);
  grid->setVerticalSpacing(3);
  constexpr int kColumns = 3;
  for (int i = 0; i < kFigures; ++i) {
    const unsigned at = static_cast<unsigned>(i);
    const int left = i % kColumns * 3;
    lblFigure_[at] = NewFigure(parent, kFigureNames[at], "-10,000,000.0000");
    QFont bold = font();
    bold.setBold(i == CurrentFigure);
    lblFigure_[at]->setFont(bold);
    grid->addWidget(new QLabel(tr(kFigureCaptions[at])), i / kColumns, left);
    grid->addWidget(lblFigure_[at], i / kColumns, left + 1);
    if (i % kColumns + 1 < kColumns) grid->setColumnStretch(left + 2, 1);
  }
  column->addLayout(grid);
}

void frmBankroll::MakeHyperDrive(QBoxLayout* column) {
  QGroupBox* group = new QGroupBox(tr("Hyper-Drive"), centralWidget());
  QGridLayout* grid = new QGridLayout(group);
  grid->setHorizontalSpacing(12);
  cmdHyperDrive_ = New<QPushButton>("cmdHyperDrive", tr("Start Hyper-&Drive"));
  cmdHyperDrive_->setMinimumWidth(cmdHyperDrive_->sizeHint().width() + 24);
  connect(cmdHyperDrive_, &QPushButton::clicked, this, [this] { Do(AtTable.RunHyperDrive); });
  cmdHyperDriveActive_ = New<QPushButton>("cmdHyperDriveActive", tr("S&top"));
  cmdHyperDriveActive_->setToolTip(tr("Stop the run after its current roll"));
  connect(cmdHyperDriveActive_, &QPushButton::clicked, this, [this] {
    if (Game.HyperDriveOn) Do(AtTable.RunHyperDrive);
  });

  hscrThrottle_ = New<QSlider>("hscrThrottle", Qt::Horizontal);
  hscrThrottle_->setAccessibleName(tr("Throttle"));
  hscrThrottle_->setPageStep(1);
  hscrThrottle_->setTickPosition(QSlider::TicksBelow);
  Bind(hscrThrottle_, RecordField(Game.HyperThrottle).Within(0, kSlowest));
  QLabel* caption = Caption(tr("T&hrottle:"), hscrThrottle_);
  lblThrottle_ = NewFigure(group, "lblThrottle", ThrottleText(1) + "  ");
  lblThrottle_->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);

  prgRun_ = New<QProgressBar>("prgRun");
  prgRun_->setAccessibleName(tr("Progress of the run"));
  prgRun_->setRange(0, kProgressSteps);
  prgRun_->setTextVisible(false);
  prgRun_->setFixedHeight(10);
  lblRun_ = NewFigure(group, "lblRun",
                      "100,000,000 of 100,000,000 rolls    100,000,000 rolls/s    0:00:00 left");
  lblRun_->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);

  grid->addWidget(cmdHyperDrive_, 0, 0);
  grid->addWidget(caption, 0, 1);
  grid->addWidget(hscrThrottle_, 0, 2);
  grid->addWidget(lblThrottle_, 0, 3);
  grid->addWidget(cmdHyperDriveActive_, 1, 0);
  grid->addWidget(lblRun_, 1, 1, 1, 3);
  grid->addWidget(prgRun_, 2, 0, 1, 4);
  grid->setColumnStretch(2, 1);
  column->addWidget(group);
}

// ---- The menus ----

void frmBankroll::MakeMenus() {
  const auto look = [this](auto& field) {
    return RecordField(field).Then([this] { Refit(false); });
  };
  MenuBar().Add(
      "mnuOptions", tr("&Options"),
      {Command("mnuSetAverage", tr("Set Bankroll Moving &Average..."),
               [this] { AskAverageSpan(); }),
       Separator(),
       Toggle("mnuDisplayAverage", tr("Display &Moving Average"), look(Game.BankrollShowAverage)),
       Toggle("mnuDisplayRefLines", tr("Display &Reference Lines"), look(Game.BankrollRefLines)),
       Toggle("mnuDisplayGridLines", tr("Display &Grid Lines"), look(Game.BankrollGridLines)),
       Separator(),
       Submenu("mnuGraphType", tr("Graph &Type"),
               Choices("mnuGraphType", {tr("&Plain"), tr("&Striped"), tr("S&olid")},
                       look(Game.BankrollGraphType))),
       Submenu("mnuSetColor", tr("Set &Color"),
               Choices("mnuSetColor",
                       {tr("&Cyan"), tr("&Black"), tr("&White"), tr("&Red"), tr("&Green"),
                        tr("&Yellow"), tr("Bl&ue"), tr("Gr&ay")},
                       look(Game.BankrollGraphColor))),
       Separator(),
       Command("mnuPrint", tr("&Print Graph"), [this] { PrintNow(); }).On(QKeySequence::Print),
       Toggle("mnuAutoPrint", tr("A&uto-Print"), look(Game.BankrollAutoPrint))});
  MenuBar().Add("mnuScale", tr("&Scale"),
                {Submenu("mnuAutoAdjustType", tr("Ad&justment"),
                         Choices("mnuAutoAdjustType",
                                 {tr("&Manual"), tr("Automatic with &Expanding Scale"),
                                  tr("Automatic with &Snap-back Scale")},
                                 look(Game.BankrollAutoAdjustType))),
                 Separator(),
                 Command("mnuLargerScale", tr("&Larger scale"), [this] { StepScale(true); })
                     .On(Qt::Key_PageUp),
                 Command("mnuSmallerScale", tr("&Smaller scale"), [this] { StepScale(false); })
                     .On(Qt::Key_PageDown),
                 Separator(),
                 Command("mnuZeroLineUp", tr("Zero line &up"),
                         [] { ChangeByPlayer([] { MoveZeroLine(1); }); })
                     .On(Qt::Key_Up),
                 Command("mnuZeroLineDown", tr("Zero line &down"),
                         [] { ChangeByPlayer([] { MoveZeroLine(-1); }); })
                     .On(Qt::Key_Down),
                 Command("mnuCenter", tr("&Center on the bankroll"), [this] {
                   ChangeByPlayer([this] { Refit(true); });
                 }).On(Qt::Key_Home)});
}

void frmBankroll::AskAverageSpan() {
  Game.MsgInput[0] = std::to_string(Game.BankrollAverageSpan);
  ShowMessage(
      "Enter the number of rolls (max 525) that you'd like to include in the bankroll moving "
      "average (a value of 0 will display an average of all rolls since the beginning of the "
      "game):",
      "Set Bankroll Moving Average", kTopicBankrollGraph, InputOkCancel);
  if (Game.MsgAnswer != AnswerOk) return;
  const auto span = static_cast<long long>(std::floor(Game.ChangeRequest.ToDouble()));
  ChangeByPlayer([span] { SetBankrollAverageSpan(span); });
}

/// Prints the graph as it stands, and with it what has been collected.
void frmBankroll::PrintNow() {
  CollectGraph();
  PrintDueGraphs(this);
}

void frmBankroll::StepScale(bool larger) {
  ChangeByPlayer([larger, lines = picGraph_->View().Lines] {
    SetGraphScale(larger ? NextGraphScale(Game.GraphScale) : PreviousGraphScale(Game.GraphScale),
                  lines);
  });
}

void frmBankroll::StepPointed(int by) {
  const int count = Game.BankrollHistoryCount;
  if (count == 0) return;
  const int from = picGraph_->View().Pointed;
  picGraph_->PointAt(from == 0 ? count : std::clamp(from + by, 1, count));
}

/// The look has changed; what it shows is fitted again.
void frmBankroll::Refit(bool recentre) {
  const ReferenceLines& lines = picGraph_->View().Lines;
  if (Game.BankrollRefLines && lines.First == 0) picGraph_->SetReferenceLine(false, kFirstLineAt);
  if (Game.BankrollRefLines && lines.Second == 0) picGraph_->SetReferenceLine(true, kSecondLineAt);
  RefitGraph(recentre, lines);
}

// ---- What is shown ----

void frmBankroll::ShowRecord() {
  ShowScale();
  ShowFigures();
  ShowPointed();
  ShowRun();
  picLegend_->setVisible(Game.BankrollShowAverage);
  lblMovingAverage_->setVisible(Game.BankrollShowAverage);
  lblAutoPrint_->setVisible(Game.BankrollAutoPrint);
  // A run would have left the page by the time of the next drawing, and the scale beside it.
  Game.HyperDriveOn ? picGraph_->repaint() : picGraph_->update();
}

void frmBankroll::PlaceScaleLabels() {
  const double line = picGraph_->height() * kGraphLine / double(kGraphPanel);
  for (int i = 0; i < kScaleLabels; ++i) {
    QLabel* label = lblScale_[static_cast<unsigned>(i)];
    label->move(picScale_->width() - label->width(),
                std::max(0, qRound(line * i - label->height() / 2.0)));
  }
}

void frmBankroll::ShowScale() {
  PlaceScaleLabels();
  for (int i = 0; i < kScaleLabels; ++i) {
    ShowAmount(lblScale_[static_cast<unsigned>(i)],
               Game.GraphTop - Game.GraphScale * (kGraphLine * i));
  }
  Show(lblRollsLeft_, Count(RollAtPoint(1)));
  Show(lblRollsRight_, Count(RollAtPoint(kGraphPoints)));
  Show(lblMovingAverage_, Game.BankrollAverageSpan == 0
                              ? tr("All rolls moving average")
                              : tr("%1 roll moving average").arg(Game.BankrollAverageSpan));
}

void frmBankroll::ShowFigures() {
  const auto at = [this](Figure figure) { return lblFigure_[static_cast<unsigned>(figure)]; };
  Show(at(TotalRolls), Count(Game.RollCount[0]));
  const bool slow = Game.SimRollsPerHour == 0;
  Show(at(RollsPerHour), slow ? QString("< 0.0001") : Money(Game.SimRollsPerHour));
  Show(at(SimHours),
       slow ? QString("-")
            : Money(Currency::FromDouble(Currency(Game.RollCount[0]) / Game.SimRollsPerHour)));
  ShowAmount(at(HighFigure), Game.GraphPeriodHigh);
  ShowAmount(at(LowFigure), Game.GraphPeriodLow);
  ShowAmount(at(CurrentFigure), Bankroll());
}

void frmBankroll::ShowPointed() {
  const GraphView& view = picGraph_->View();
  QString text;
  if (IsDrawnPoint(view.Pointed)) {
    text = tr("Rolls:  %1    Bankroll:  %2")
               .arg(Count(RollAtPoint(view.Pointed)), Money(BankrollAtPoint(view.Pointed)));
  } else if (Game.BankrollRefLines && IsDrawnPoint(view.Lines.First) &&
             IsDrawnPoint(view.Lines.Second)) {
    const auto [from, to] = std::minmax(view.Lines.First, view.Lines.Second);
    text = tr("Between the lines:  %1 rolls,  %2")
               .arg(Count(to - from), Money(BankrollAtPoint(to) - BankrollAtPoint(from)));
  }
  Show(lblPointer_, text);
}

void frmBankroll::ShowRun() {
  const RunProgress run = HyperDriveProgress();
  Show(lblRun_, RunText(run));
  const double done = run.RollsDone;
  const double all = std::max(run.RollsAtMost, 1);
  prgRun_->setValue(Game.HyperDriveOn ? static_cast<int>(done / all * kProgressSteps) : 0);
  const QString caption = Game.HyperDriveOn ? tr("Stop Hyper-&Drive") : tr("Start Hyper-&Drive");
  if (cmdHyperDrive_->text() != caption) cmdHyperDrive_->setText(caption);
  cmdHyperDriveActive_->setEnabled(Game.HyperDriveOn);
  Show(lblThrottle_, ThrottleText(Game.HyperThrottle));
}

// ---- The window ----

void frmBankroll::Opened() { RefitGraph(Game.BankrollHistoryCount == 0, picGraph_->View().Lines); }

bool frmBankroll::MayClose() {
  return !AskToInterruptRun() || !(Game.KeepRolling || Game.AutoBetRunning);
}

bool frmBankroll::TakeKey(QKeyEvent& event) {
  if (event.key() != Qt::Key_Left && event.key() != Qt::Key_Right) return false;
  StepPointed(event.key() == Qt::Key_Right ? 1 : -1);
  return true;
}
