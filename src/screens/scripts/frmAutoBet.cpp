#include "screens/scripts/frmAutoBet.h"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QDate>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QMenu>
#include <QScrollArea>
#include <QSplitter>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "autobet/checker.h"
#include "autobet/editor.h"
#include "autobet/profile.h"
#include "autobet/script.h"
#include "core/help_topics.h"
#include "screens/files/frmFile.h"
#include "screens/frame/bind.h"
#include "screens/frame/chrome.h"
#include "screens/frame/controls.h"
#include "screens/frame/player_change.h"
#include "screens/frame/screen_table.h"
#include "screens/scripts/line_builder.h"
#include "screens/scripts/script_commands.h"
#include "screens/scripts/script_model.h"
#include "screens/scripts/script_undo.h"
#include "screens/scripts/script_view.h"

namespace {

constexpr QSize kSmallest(760, 480);
constexpr QSize kAtStart(1100, 720);
constexpr int kPauseBeforeCheck = 1500;
constexpr int kBuilderShare = 2;  // of the window's width, against the script's
constexpr int kScriptShare = 3;
constexpr int kShares = kBuilderShare + kScriptShare;
constexpr int kFindLetters = 20;

/// Leaves the keys that move the current line to the window.
class BuilderArea : public QScrollArea {
 public:
  explicit BuilderArea(QWidget* content) {
    setFrameShape(NoFrame);
    setFocusPolicy(Qt::NoFocus);
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setMinimumWidth(content->minimumSizeHint().width() + 20);
    setWidget(content);
  }

 protected:
  void keyPressEvent(QKeyEvent* event) override { event->ignore(); }
};

bool AnySelected() { return SelectedLineCount() > 0; }

/// Whether the current line is one of the script's, not the place behind them.
bool OnLine() { return Game.ScriptInsertLine >= 1 && Game.ScriptInsertLine <= Game.ScrCount; }

bool AnyCounted() {
  const std::vector<LineProfile> counts = ScriptProfile();
  return std::any_of(counts.begin(), counts.end(),
                     [](const LineProfile& line) { return line.Reached > 0; });
}

bool AnyBreakpoint() {
  return std::any_of(Game.Script.begin(), Game.Script.end(),
                     [](const ScriptLine& line) { return line.Breakpoint; });
}

}  // namespace

frmAutoBet::frmAutoBet(QWidget* table)
    : Screen(table, "frmAutoBet", Text(EditorCaption()), kTopicScriptEditor),
      model_(new ScriptModel(this)),
      picLoggedBets_(new ScriptView(model_)),
      builder_(new LineBuilder),
      undo_(new ScriptUndo(this)),
      idle_(new QTimer(this)) {
  QSplitter* sides = New<QSplitter>("splSides");
  sides->setChildrenCollapsible(false);
  sides->addWidget(new BuilderArea(builder_));
  sides->addWidget(MakeScriptSide());
  sides->setStretchFactor(0, kBuilderShare);
  sides->setStretchFactor(1, kScriptShare);
  sides->setSizes(
      {kAtStart.width() * kBuilderShare / kShares, kAtStart.width() * kScriptShare / kShares});
  setCentralWidget(sides);
  idle_->setSingleShot(true);
  idle_->setInterval(kPauseBeforeCheck);
  connect(idle_, &QTimer::timeout, this, [this] { Do([this] { CheckLines(); }); });
  connect(builder_, &LineBuilder::LineLogged, this, &frmAutoBet::Log);
  connect(picLoggedBets_, &ScriptView::LineWanted, builder_, &LineBuilder::Load);
  connect(picLoggedBets_, &ScriptView::CursorMoved, this, [this] {
    ShowCounts();
    MenuBar().Refresh();
  });
  connect(picLoggedBets_, &ScriptView::BreakpointWanted, this,
          [](int number) { ChangeByPlayer([number] { ToggleBreakpoint(number); }); });
  connect(picLoggedBets_, &ScriptView::MoveWanted, this,
          [this](int before) { Edit(tr("Move"), [before] { return MoveSelected(before); }); });
  MakeMenus();
  builder_->setFocus();
  QWidget* before = findChild<QLineEdit*>("txtLabel");  // the last box of the builder
  for (QWidget* next :
       std::initializer_list<QWidget*>{txtFind_, chkAutoBetsActivated_, picLoggedBets_}) {
    setTabOrder(before, next);
    before = next;
  }
  setMinimumSize(kSmallest.expandedTo(minimumSizeHint()));
  resize(kAtStart.expandedTo(sizeHint()));
}

QWidget* frmAutoBet::MakeScriptSide() {
  QWidget* side = new QWidget;
  QVBoxLayout* column = new QVBoxLayout(side);
  column->addLayout(MakeHeader());
  column->addWidget(picLoggedBets_, 1);
  column->addLayout(MakeFooter());
  lblNoLines_ = EmptyLabel(picLoggedBets_->viewport(), "lblNoLines",
                           tr("The script is empty.\n\nChoose \"When . . .\" or \"Do this . . .\" "
                              "beside this list and log it, then add the conditions and actions "
                              "that belong to it.\n\nOr open one of the examples: File, Open."));
  return side;
}

QLayout* frmAutoBet::MakeHeader() {
  QHBoxLayout* row = new QHBoxLayout;
  lblAutoBetFilename_ = New<QLabel>("lblAutoBetFilename");
  lblAutoBetFilename_->setTextFormat(Qt::PlainText);
  QFont bold = lblAutoBetFilename_->font();
  bold.setBold(true);
  lblAutoBetFilename_->setFont(bold);
  lblAutoBetFilename_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  chkAutoBetsActivated_ = New<QCheckBox>("chkAutoBetsActivated", tr("ACTIVE"));
  chkAutoBetsActivated_->setToolTip(tr("The script runs after every roll"));
  Bind(chkAutoBetsActivated_,
       RecordField<bool>([] { return Game.AutoBetActive != 0; }, ActivateAutoBets));
  txtFind_ = New<QLineEdit>("txtFind");
  txtFind_->setPlaceholderText(tr("Find in the script"));
  txtFind_->setAccessibleName(tr("Find in the script"));
  txtFind_->setToolTip(tr("Enter goes on to the next line, Shift and Enter to the one before"));
  txtFind_->setClearButtonEnabled(true);
  txtFind_->setMaximumWidth(fontMetrics().averageCharWidth() * kFindLetters * 2);
  connect(txtFind_, &QLineEdit::textEdited, this, [this] { FindTyped(true, false); });
  row->addWidget(lblAutoBetFilename_, 1);
  row->addWidget(txtFind_, 1);
  row->addWidget(chkAutoBetsActivated_);
  return row;
}

QLayout* frmAutoBet::MakeFooter() {
  QHBoxLayout* row = new QHBoxLayout;
  lblNumAutoBetLines_ = New<QLabel>("lblNumAutoBetLines");
  lblNumLinesSelected_ = New<QLabel>("lblNumLinesSelected");
  lblFault_ = New<QLabel>("lblFault");
  lblFault_->setTextFormat(Qt::PlainText);
  lblFault_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  lblFault_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  row->setSpacing(16);
  row->addWidget(lblNumAutoBetLines_);
  row->addWidget(lblNumLinesSelected_);
  row->addWidget(lblFault_, 1);
  return row;
}

// ---- Menus ----

void frmAutoBet::MakeMenus() {
  const auto add = [this](const char* name, const QString& caption,
                          std::initializer_list<std::vector<MenuRow>> parts) {
    std::vector<MenuRow> rows;
    for (const std::vector<MenuRow>& part : parts) {
      if (!rows.empty()) rows.push_back(Separator());
      rows.insert(rows.end(), part.begin(), part.end());
    }
    return MenuBar().Add(name, caption, std::move(rows));
  };
  add("mnuFile", tr("&File"), {FileRows()});
  QMenu* edit = add("mnuEdit", tr("&Edit"), {EditRows(), LineRows(), FindRows()});
  picLoggedBets_->setContextMenuPolicy(Qt::CustomContextMenu);
  connect(picLoggedBets_, &QWidget::customContextMenuRequested, edit, [this, edit](QPoint place) {
    edit->popup(picLoggedBets_->viewport()->mapToGlobal(place));
  });
  add("mnuView", tr("&View"), {ViewRows()});
  add("mnuScript", tr("Scri&pt"), {ScriptRows()});
  add("mnuStatistics", tr("&Statistics"),
      {{RowThatShows(BankrollWindow), RowThatShows(SummaryWindow), RowThatShows(RollTotalsWindow),
        RowThatShows(RollFreqsWindow), RowThatShows(BetResultsWindow),
        RowThatShows(BetTrendsWindow)},
       {RowThatShows(StackValuesWindow), RowThatShows(EventsLogWindow)}});
}

std::vector<MenuRow> frmAutoBet::FileRows() {
  return {
      Command("mnuNew", tr("&New"),
              [] {
                if (MayEditScript()) NewScriptCommand();
              })
          .On(QKeySequence::New)
          .When([] { return Game.ScrCount > 0 || !Game.AutoBetFile.empty(); },
                tr("The script is empty as it is.")),
      Command("mnuOpen", tr("&Open..."),
              [this] {
                if (MayEditScript()) OpenAutoBetFileCommand(this);
              })
          .On(QKeySequence::Open),
      Command("mnuSave", tr("&Save"), [] { SaveScriptCommand(); }).On(QKeySequence::Save).AtRest(),
      Command("mnuSaveAs", tr("Save &As..."), [this] { SaveAutoBetFileAsCommand(this); })
          .On(Qt::CTRL | Qt::SHIFT | Qt::Key_S)
          .AtRest(),
      Separator(),
      Command("mnuPrint", tr("&Print..."), [this] { PrintReport(this, ScriptReport()); })
          .On(QKeySequence::Print),
      Separator(),
      Command("mnuClose", tr("&Close"), [this] { close(); })};
}

std::vector<MenuRow> frmAutoBet::EditRows() {
  const auto named = [](const QString& step, const QString& what) {
    return what.isEmpty() ? step : tr("%1 %2").arg(step, what);
  };
  const auto selected = [](MenuRow row) {
    return std::move(row).When(AnySelected, tr("No lines are selected."));
  };
  return {
      Command("mnuUndo", tr("&Undo"), [this] { Step(true); })
          .On(QKeySequence::Undo)
          .Named([=, this] { return named(tr("&Undo"), undo_->Stack().undoText()); })
          .When([this] { return undo_->Stack().canUndo(); }, tr("Nothing has been changed.")),
      Command("mnuRedo", tr("&Redo"), [this] { Step(false); })
          .On(QKeySequence::Redo)
          .Named([=, this] { return named(tr("&Redo"), undo_->Stack().redoText()); })
          .When([this] { return undo_->Stack().canRedo(); }, tr("Nothing has been undone.")),
      Separator(),
      selected(Command("mnuCut", tr("Cu&t"),
                       [this] {
                         Edit(tr("Cut"), [this] {
                           Copy();
                           return DeleteSelected();
                         });
                       })
                   .On(QKeySequence::Cut)),
      selected(Command("mnuCopy", tr("&Copy"), [this] { Copy(); }).On(QKeySequence::Copy)),
      Command("mnuPaste", tr("&Paste"), [this] { Paste(); }).On(QKeySequence::Paste),
      selected(Command("mnuDelete", tr("&Delete"), [this] { Edit(tr("Delete"), DeleteSelected); })
                   .On(QKeySequence::Delete)),
      Command("mnuSelectAll", tr("Select &All"), SelectAllLines)
          .On(QKeySequence::SelectAll)
          .When([] { return Game.ScrCount > 0; }, tr("There are no lines."))};
}

std::vector<MenuRow> frmAutoBet::LineRows() {
  return {Command("mnuChangeLine", tr("Chan&ge Line"),
                  [this] { builder_->Load(Game.ScriptInsertLine); })
              .Told(tr("Takes the current line back into the boxes; so does a double click"))
              .When(OnLine, tr("No line is chosen.")),
          Command("mnuMoveUp", tr("Mo&ve Up"), [this] { Edit(tr("Move"), MoveSelectedUp); })
              .On(Qt::CTRL | Qt::SHIFT | Qt::Key_Up)
              .When(AnySelected, tr("No lines are selected.")),
          Command("mnuMoveDown", tr("Move Do&wn"), [this] { Edit(tr("Move"), MoveSelectedDown); })
              .On(Qt::CTRL | Qt::SHIFT | Qt::Key_Down)
              .When(AnySelected, tr("No lines are selected.")),
          Separator(),
          Command("mnuCopyToAutoBetFile", tr("Copy To Auto-&Bet File..."),
                  [this] { RunFileScreen(this, FileCommand::CopyToScript); })
              .When(AnySelected, tr("No lines are selected.")),
          Command("mnuCopyToTextFile", tr("Copy To Te&xt File..."),
                  [this] { RunFileScreen(this, FileCommand::CopyScriptToText); })
              .When(AnySelected, tr("No lines are selected.")),
          Command("mnuPasteFrom", tr("Paste Fro&m..."), [this] { PasteFrom(); })};
}

std::vector<MenuRow> frmAutoBet::FindRows() {
  return {Command("mnuFind", tr("&Find..."), FindCommand).On(QKeySequence::Find),
          Command("mnuFindNext", tr("Find &Next"),
                  [this] { FindNextCommand(picLoggedBets_->TopLine()); })
              .On(Qt::Key_F3),
          Command("mnuFindPrevious", tr("Find Previou&s"),
                  [this] { FindPreviousCommand(picLoggedBets_->TopLine()); })
              .On(Qt::SHIFT | Qt::Key_F3),
          Command("mnuFindAsTyped", tr("Find as You T&ype"), [this] {
            txtFind_->setFocus();
            txtFind_->selectAll();
          }).On(Qt::CTRL | Qt::SHIFT | Qt::Key_F)};
}

std::vector<MenuRow> frmAutoBet::ViewRows() {
  return {Toggle("mnuShowLineNumbers", tr("&Line Numbers"), Game.ShowLineNumbers),
          Toggle("mnuShowProfile", tr("&Profile"), Game.Profile.On)
              .Told(tr("Counts how often each line is reached and how often it does something")),
          Command("mnuClearProfile", tr("&Clear Profile"), [] {
            ChangeByPlayer(ClearProfile);
          }).When(AnyCounted, tr("Nothing has been counted."))};
}

std::vector<MenuRow> frmAutoBet::ScriptRows() {
  const RecordField<bool> steps([] { return Game.ShowStepsMode != 0; },
                                [](bool on) { Game.ShowStepsMode = on ? kTrue : kFalse; });
  return {Command("mnuCheckBets", tr("&Check Structure"), CheckScriptCommand).AtRest(),
          RowThatShows(FlagsWindow),
          Separator(),
          Command("mnuBreakpoint", tr("&Breakpoint"),
                  [] { ChangeByPlayer([] { ToggleBreakpoint(Game.ScriptInsertLine); }); })
              .On(Qt::Key_F9)
              .Told(tr("Tracing starts at the current line"))
              .When(OnLine, tr("No line is chosen.")),
          Command("mnuClearBreakpoints", tr("Clear Breakp&oints"),
                  [] { ChangeByPlayer(ClearBreakpoints); })
              .When(AnyBreakpoint, tr("No line is marked.")),
          Toggle("mnuShowSteps", tr("Show &Steps"), steps),
          Separator(),
          Toggle("mnuShowLoggedMessagesNormal", tr("Show Logged Messages, &Normal Play"),
                 BitOf(Game.Notify, NoticeAutoBet)),
          Toggle("mnuShowLoggedMessagesHyper", tr("Show Logged Messages, &Hyper-Drive"),
                 BitOf(Game.Notify, NoticeAutoBetHyper))};
}

// ---- Changing lines ----

void frmAutoBet::Edit(const QString& what, std::function<std::optional<ScriptEdit>()> make) {
  if (!MayEditScript()) return;
  ChangeByPlayer([this, what, make = std::move(make)] {
    if (!undo_->Push(make(), what)) return;
    LinesChanged();
  });
}

void frmAutoBet::Step(bool back) {
  if (!MayEditScript()) return;
  ChangeByPlayer([this, back] {
    undo_->Step(back);
    LinesChanged();
  });
}

void frmAutoBet::Log(const ScriptLine& line, int replaced) {
  Do([&] {
    Edit(replaced > 0 ? tr("Change") : tr("Log"), [this, line, replaced] {
      builder_->Logged();
      return replaced > 0 ? ReplaceLine(replaced, line) : InsertLines({line}, false);
    });
  });
}

void frmAutoBet::Copy() { QApplication::clipboard()->setText(Text(CopySelected())); }

void frmAutoBet::Paste() {
  Edit(tr("Paste"), []() -> std::optional<ScriptEdit> {
    auto lines = LinesToPaste(QApplication::clipboard()->text().toStdString());
    if (!lines) return {};
    return InsertLines(*std::move(lines), true);
  });
}

void frmAutoBet::PasteFrom() {
  if (!MayEditScript()) return;
  undo_->Keep(RecordEdit([this] { RunFileScreen(this, FileCommand::PasteScript); }),
              tr("Paste From"));
  LinesChanged();
}

/// What is wrong is told only once the player pauses: most lines are at fault while they are
/// written.
void frmAutoBet::LinesChanged() {
  builder_->SetReplacing(0, nullptr);
  model_->ForgetFault();
  ShowFault();
  idle_->start();
}

// ---- Showing ----

void frmAutoBet::ShowRecord() {
  if (Game.HotKeyRunning) return;  // its lines are none of the player's script
  undo_->Follow();
  if (std::exchange(loads_, Game.ScriptLoads) != Game.ScriptLoads) {
    builder_->Drop();
    LinesChanged();
  }
  model_->Refresh();
  picLoggedBets_->FitColumns();
  picLoggedBets_->ShowCursor();
  builder_->ShowNamesInUse();
  lblNoLines_->setVisible(Game.ScrCount == 0);
  lblAutoBetFilename_->setText(ScriptName());
  lblAutoBetFilename_->setToolTip(Text(Game.AutoBetFile));
  setWindowTitle(Text(EditorCaption()));
  ShowCounts();
}

void frmAutoBet::ShowCounts() {
  lblNumAutoBetLines_->setText(Game.ScrCount == 1 ? tr("1 line")
                                                  : tr("%1 lines").arg(Count(Game.ScrCount)));
  const int selected = SelectedLineCount();
  lblNumLinesSelected_->setText(selected > 0 ? tr("%1 selected").arg(Count(selected)) : QString());
}

void frmAutoBet::CheckLines() {
  if (ScriptAtWork()) return idle_->start();
  model_->CheckLines();
  ShowFault();
}

void frmAutoBet::ShowFault() {
  const ScriptFault& fault = model_->Fault();
  const QString words = Text(fault.Text);
  lblFault_->setText(fault.LineNumber == 0
                         ? QString()
                         : tr("Line %1: %2").arg(fault.LineNumber).arg(Text(fault.Title)));
  lblFault_->setToolTip(words);
}

void frmAutoBet::BringToTop(int number) {
  model_->Refresh();
  picLoggedBets_->BringToTop(number);
}

Report frmAutoBet::ScriptReport() {
  QStringList heading;
  const QString date = QLocale().toString(QDate::currentDate(), QLocale::LongFormat);
  for (const std::string& line : ScriptPageHeading(date.toStdString())) heading << Text(line);
  return {.Title = tr("Kelvanor Auto-Bets"),
          .Heading = heading,
          .Rows = Game.ScrCount,
          .Row = [](int row) {
            const QString number = Game.ShowLineNumbers ? QString("%1  ").arg(row + 1, 5) : "";
            return QStringList{number + Text(Line(row + 1).LineText)};
          }};
}

// ---- Keys ----

bool frmAutoBet::TakeKey(QKeyEvent& event) {
  if (focusWidget() == txtFind_) return FindKey(event);
  const int page = std::max(picLoggedBets_->viewport()->height() / picLoggedBets_->rowHeight(0), 1);
  switch (event.key()) {
    case Qt::Key_Escape: return builder_->Drop();
    case Qt::Key_Return:
    case Qt::Key_Enter: return builder_->LogFocused();
    case Qt::Key_Up: picLoggedBets_->MoveCurrent(-1); return true;
    case Qt::Key_Down: picLoggedBets_->MoveCurrent(1); return true;
    case Qt::Key_PageUp: picLoggedBets_->MoveCurrent(-page); return true;
    case Qt::Key_PageDown: picLoggedBets_->MoveCurrent(page); return true;
    default: return false;
  }
}

bool frmAutoBet::FindKey(const QKeyEvent& event) {
  switch (event.key()) {
    case Qt::Key_Escape: picLoggedBets_->setFocus(); return true;
    case Qt::Key_Return:
    case Qt::Key_Enter: FindTyped(!(event.modifiers() & Qt::ShiftModifier), true); return true;
    default: return false;
  }
}

/// Goes to the line that holds what is typed, round the ends of the script.
void frmAutoBet::FindTyped(bool forward, bool next) {
  const std::string wanted = txtFind_->text().toStdString();
  const int step = next ? (forward ? 1 : -1) : 0;
  int found = FindLine(wanted, Game.ScriptInsertLine + step, forward);
  if (found == 0) found = FindLine(wanted, forward ? 1 : Game.ScrCount, forward);
  QPalette look;
  if (found == 0 && !wanted.empty()) look.setColor(QPalette::Text, WarningInk());
  txtFind_->setPalette(look);
  if (found == 0) return;
  Game.FindText = wanted;
  picLoggedBets_->GoTo(found);
}

bool frmAutoBet::MayClose() { return Game.HotKeyRunning || LeaveEditor(); }

void ShowLineInEditor(int number) {
  if (auto* editor = qobject_cast<frmAutoBet*>(ShowScreen(AutoBetWindow)))
    editor->BringToTop(number);
}
