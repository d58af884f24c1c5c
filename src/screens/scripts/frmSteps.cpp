#include "screens/scripts/frmSteps.h"

#include <QEventLoop>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>

#include "autobet/script.h"
#include "core/game_state.h"
#include "core/help_topics.h"
#include "core/host.h"
#include "screens/frame/controls.h"
#include "screens/frame/player_change.h"
#include "screens/frame/screen_table.h"
#include "screens/frame/window_places.h"

namespace {

constexpr QSize kSmallest(400, 200);
constexpr QSize kAtStart(520, 200);
constexpr int kStepLines = 2;    // of text that the longest line of a script takes
constexpr int kStatusLines = 4;  // and the longest status
constexpr int kWatch = 50;       // milliseconds between two looks at the run

QPointer<frmSteps> Steps;

/// A text of the game over as many lines as it takes; `lines` have room from the start.
QLabel* TextLabel(const char* name, int lines) {
  QLabel* label = New<QLabel>(name);
  label->setTextFormat(Qt::PlainText);
  label->setTextInteractionFlags(Qt::TextSelectableByMouse);
  label->setFocusPolicy(Qt::NoFocus);
  label->setWordWrap(true);
  label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
  label->setMinimumHeight(lines * label->fontMetrics().lineSpacing() + 2 * label->margin());
  return label;
}

/// Under the table as far as the screen has room: beside it stand the screens of figures.
void PutBelow(QWidget* window, const QWidget& table) {
  constexpr int kFrame = 40;  // the title, and the edge below
  const QRect screen = table.screen()->availableGeometry();
  const int lowest = screen.bottom() - window->height() - kFrame;
  window->move(table.x(), std::max(screen.top(), std::min(table.frameGeometry().bottom(), lowest)));
}

bool HasBreakpoint(int line) { return line >= 1 && line <= Game.ScrCount && Line(line).Breakpoint; }

bool RunGoesOn() { return Game.AutoBetRunning && !Game.HyperDriveOn; }

}  // namespace

frmSteps::frmSteps(QWidget* table)
    : Screen(table, "frmSteps", tr("Auto-Bet Steps"), kTopicTracing) {
  QWidget* content = new QWidget(this);
  QVBoxLayout* column = new QVBoxLayout(content);
  MakeLine(column);
  lblStatus_ = TextLabel("lblStatus", kStatusLines);
  column->addWidget(lblStatus_, 1);
  QHBoxLayout* buttons = new QHBoxLayout;
  buttons->addStretch(1);
  cmdNextAutoBet_ = AddButton(buttons, "cmdNextAutoBet", tr("&Next"),
                              tr("Go on to the next line (Enter or Space)"), [this] { GoOn(); });
  column->addLayout(buttons);
  setCentralWidget(content);
  MakeMenus();
  SetSizes(kSmallest, kAtStart);
  const bool wasPlaced = Game.WindowPlaces[StepsWindow].Width > 0;
  FollowPlace(this, StepsWindow);
  if (!wasPlaced) PutBelow(this, *table);
  setWindowModality(Qt::ApplicationModal);
}

/// The line in a frame, under its number.
void frmSteps::MakeLine(QVBoxLayout* column) {
  QHBoxLayout* head = new QHBoxLayout;
  lblLineNum_ = New<QLabel>("lblLineNum");
  QFont bold = font();
  bold.setBold(true);
  lblLineNum_->setFont(bold);
  head->addWidget(lblLineNum_);
  lblBreakpoint_ = New<QLabel>("lblBreakpoint", tr("● Breakpoint"));
  lblBreakpoint_->setToolTip(tr("Tracing starts at this line, as it is marked in the editor"));
  head->addWidget(lblBreakpoint_);
  head->addStretch(1);
  column->addLayout(head);
  lblAutoBetStep_ = TextLabel("lblAutoBetStep", kStepLines);
  QFrame* frame = new QFrame;
  frame->setFrameShape(QFrame::StyledPanel);
  frame->setAutoFillBackground(true);
  frame->setBackgroundRole(QPalette::Base);
  (new QVBoxLayout(frame))->addWidget(lblAutoBetStep_);
  column->addWidget(frame);
}

void frmSteps::MakeMenus() {
  MenuBar().Add(
      "mnuTrace", tr("&Tracing"),
      {Command("mnuNext", tr("&Next Line"), [this] { GoOn(); }).Told(tr("Enter or Space")),
       Separator(),
       Command("mnuCancel", tr("&Cancel Tracing"), [this] { close(); })
           .On(Qt::Key_Escape)
           .Told(tr("The rest of this run goes on without being shown")),
       Command("mnuInterrupt", tr("&Interrupt Auto-Betting..."), [this] {
         AskToInterruptRun();
         if (!RunGoesOn()) GoOn();
       })});
  const auto row = [](const char* name, const QString& caption, WindowId id) {
    return Command(name, caption, [id] { ShowScreen(id); })
        .When([id] { return HasScreen(id); }, tr("The program has no such screen yet."));
  };
  MenuBar().Add("mnuView", tr("&View"),
                {row("mnuBankroll", tr("Bank&roll"), BankrollWindow),
                 row("mnuSummary", tr("&Summary"), SummaryWindow),
                 row("mnuRollTotals", tr("Roll &Totals"), RollTotalsWindow),
                 row("mnuRollFreqs", tr("Roll &Frequencies"), RollFreqsWindow),
                 row("mnuBetStats", tr("Bet Res&ults"), BetResultsWindow),
                 row("mnuBetsWonLost", tr("Bet Tre&nds"), BetTrendsWindow),
                 row("mnuGamesLog", tr("&Games Log"), GamesWindow), Separator(),
                 row("mnuChipStacks", tr("&Chip-Stacks..."), StackValuesWindow),
                 row("mnuFlagValues", tr("Flag &Values..."), FlagsWindow),
                 row("mnuEventsLog", tr("&Events Log"), EventsLogWindow)});
}

void frmSteps::WaitAt(int line, const std::string& text, const std::string& status) {
  lblLineNum_->setText(line > 0 ? tr("Line #%1").arg(line) : QString());
  lblBreakpoint_->setVisible(HasBreakpoint(line));
  lblAutoBetStep_->setText(Text(text));
  lblStatus_->setText(tr("Status: %1").arg(Text(status)));
  if (!isVisible()) Present();
  KeepScreensUsable(this);
  cmdNextAutoBet_->setFocus();
  TheHost.RefreshViews();

  QEventLoop waiting;
  waiting_ = &waiting;
  // Whoever ends the run, on whatever way, ends the waiting.
  QTimer watch;
  watch.callOnTimeout(&waiting, [&waiting] {
    if (!RunGoesOn()) waiting.quit();
  });
  watch.start(kWatch);
  waiting.exec();
  if (!RunGoesOn() || Game.ShowStepsMode == 0) PutStepsAway();
}

void frmSteps::GoOn() {
  if (waiting_) waiting_->quit();
}

bool frmSteps::TakeKey(QKeyEvent& event) {
  const int key = event.key();
  if (key != Qt::Key_Return && key != Qt::Key_Enter && key != Qt::Key_Space) return false;
  cmdNextAutoBet_->click();
  return true;
}

/// To close the window is to end the tracing.
bool frmSteps::MayClose() {
  if (Game.AutoBetRunning) Game.ShowStepsMode = kFalse;
  GoOn();
  return true;
}

void ShowStep(QWidget* table, int line, const std::string& text, const std::string& status) {
  if (Game.TableMinimised) {
    Game.AutoBetRunning = Game.KeepRolling = false;
    return;
  }
  if (!Steps) Steps = new frmSteps(table);
  Steps->WaitAt(line, text, status);
}

void PutStepsAway() {
  KeepScreensUsable(nullptr);
  if (Steps && Steps->isVisible()) Steps->hide();
}
