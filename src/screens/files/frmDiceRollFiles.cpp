#include "screens/files/frmDiceRollFiles.h"

#include <QApplication>
#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QTableView>
#include <QTimer>
#include <QVBoxLayout>
#include <QWheelEvent>
#include <algorithm>
#include <utility>

#include "core/game_state.h"
#include "core/help_topics.h"
#include "core/record_file.h"
#include "dice/tape_file.h"
#include "screens/files/frmFile.h"
#include "screens/files/tape_commands.h"
#include "screens/files/tape_view.h"
#include "screens/frame/bind.h"
#include "screens/frame/chrome.h"
#include "screens/frame/controls.h"
#include "screens/frame/player_change.h"

namespace {

constexpr int kSmallestFont = 6;
constexpr int kLargestFont = 48;
constexpr int kLookAgain = 1000;                  // milliseconds, whether the file has grown
constexpr std::int64_t kCountedAtOnce = 300'000;  // rolls; more are counted on demand
constexpr int kNumberLength = 10;
constexpr int kFontLength = 2;
constexpr int kFaces = 6;

QString TapeName() { return Text(BareName(Game.DiceRollFile)); }

bool IsOpen() { return !Game.DiceRollFile.empty(); }

bool AnySelected() { return SelectedRolls().Count > 0; }

/// What is counted: the selection, or the whole tape while it is but the roll at the position.
RollSelection CountedRolls() {
  const RollSelection rolls = SelectedRolls();
  return rolls.Count > 1 ? rolls : RollSelection{1, DiceRollCount()};
}

MenuRow FileRow(QWidget* window, const char* name, const QString& caption, FileCommand command) {
  return Command(name, caption, [window, command] { RunFileScreen(window, command); });
}

MenuRow WhereOpen(MenuRow row) {
  return std::move(row).When([] { return IsOpen() && TableAtRest(); },
                             frmDiceRollFiles::tr("No Dice Roll file is open, or the dice are at "
                                                  "work."));
}

MenuRow WhereSelected(MenuRow row) {
  return std::move(row).When([] { return IsOpen() && AnySelected() && TableAtRest(); },
                             frmDiceRollFiles::tr("No rolls are selected, or the dice are at "
                                                  "work."));
}

}  // namespace

frmDiceRollFiles::frmDiceRollFiles(QWidget* table)
    : Screen(table, "frmDiceRollFiles", tr("Dice Roll Files"), kTopicDiceRolls) {
  QWidget* content = new QWidget(this);
  QGridLayout* grid = new QGridLayout(content);
  grid->setContentsMargins(0, 0, 0, 0);
  grid->setSpacing(0);
  setCentralWidget(content);
  MakeView(grid);
  QScrollArea* panel = MakePanel();
  grid->addWidget(panel, 0, 2);
  grid->addLayout(MakeStatusRow(), 1, 0, 1, 3);
  grid->setColumnStretch(0, 1);
  MakeMenus();
  timerFile_ = new QTimer(this);
  timerFile_->setObjectName("timerFile");
  connect(timerFile_, &QTimer::timeout, this, [this] { Do([this] { FollowFile(); }); });
  timerFile_->start(kLookAgain);
  resize(fontMetrics().averageCharWidth() * 140,
         std::max(fontMetrics().height() * 38,
                  panel->widget()->sizeHint().height() + 4 * fontMetrics().height()));
  picDiceRolls_->setFocus();
}

void frmDiceRollFiles::MakeView(QGridLayout* grid) {
  picDiceRolls_ = new picDiceRollsBox(centralWidget());
  picDiceRolls_->installEventFilter(this);
  connect(picDiceRolls_, &picDiceRollsBox::Scrolled, this, [this] { ShowBar(); });
  connect(picDiceRolls_, &picDiceRollsBox::Selected, this,
          [this](qint64 position, qint64 end) { Do([&] { Select(position, end); }); });
  lblEmpty_ = EmptyLabel(picDiceRolls_, "lblEmpty", {});
  FollowChrome(lblEmpty_, [this] {  // on the paper, whatever the desktop's colours
    lblEmpty_->setStyleSheet("color: " + InkOnPaper(QColor("dimgray")).name());
  });
  vscrDiceRolls_ = New<QScrollBar>("vscrDiceRolls", Qt::Vertical);
  vscrDiceRolls_->installEventFilter(this);
  connect(vscrDiceRolls_, &QScrollBar::valueChanged, this,
          [this](int row) { Do([&] { picDiceRolls_->ScrollTo(row); }); });
  grid->addWidget(picDiceRolls_, 0, 0);
  grid->addWidget(vscrDiceRolls_, 0, 1);
}

// ---- The panel ----

QScrollArea* frmDiceRollFiles::MakePanel() {
  QWidget* content = new QWidget;
  QVBoxLayout* column = new QVBoxLayout(content);
  for (QGroupBox* group : {MakeRecorder(), MakeNewRolls(), MakeOutput()}) column->addWidget(group);
  column->addWidget(MakeCounts(), 1);
  QScrollArea* area = Scrolling(content);
  area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  area->setFixedWidth(content->sizeHint().width() +
                      style()->pixelMetric(QStyle::PM_ScrollBarExtent));
  return area;
}

QGroupBox* frmDiceRollFiles::MakeRecorder() {
  QGroupBox* group = new QGroupBox(tr("Dice Roll Recorder"));
  QHBoxLayout* row = new QHBoxLayout(group);
  const QStringList captions = {tr(" &Off"), tr(" &Record"), tr(" &Playback")};
  for (int i = 0; i < captions.size(); ++i)
    row->addWidget(Option(QString("optRecorderStatus_%1").arg(i), captions[i],
                          RecordField(Game.RecorderStatus).Through(SetRecorderCommand), i));
  return group;
}

QGroupBox* frmDiceRollFiles::MakeNewRolls() {
  QGroupBox* group = new QGroupBox(tr("New Rolls"));
  QGridLayout* grid = new QGridLayout(group);
  grid->addWidget(Option("optInsertRolls_0", tr(" &Insert"), Game.InsertRolls, InsertNewRolls), 0,
                  0);
  grid->addWidget(Option("optInsertRolls_1", tr(" T&ype over"), Game.InsertRolls, TypeOverRolls), 0,
                  1);
  txtRollNumbers_ = New<QLineEdit>("txtRollNumbers");
  txtRollNumbers_->setPlaceholderText("6 1  (4-3)  55");
  txtRollNumbers_->setToolTip(
      tr("Digits from 1 to 6, two for a roll: die 1, then die 2. Whatever "
         "else stands here is skipped."));
  txtRollNumbers_->setAccessibleName(tr("Rolls to enter"));
  connect(txtRollNumbers_, &QLineEdit::returnPressed, this,
          [this] { Do([this] { TakeTypedRolls(); }); });
  grid->addWidget(txtRollNumbers_, 1, 0, 1, 2);
  QHBoxLayout* buttons = new QHBoxLayout;
  AddButton(buttons, "cmdRollNumbers", tr("En&ter Rolls"),
            tr("Writes the rolls typed above. Digits typed while the rolls have the focus are "
               "taken at once."),
            [this] { TakeTypedRolls(); });
  AddButton(buttons, "cmdRandomNum", tr("Rando&m Roll"), tr("Writes one random roll"), [this] {
    die1_ = 0;
    EnterRollsCommand(std::string(1, RandomThrow()));
  });
  grid->addLayout(buttons, 2, 0, 1, 2);
  return group;
}

QGroupBox* frmDiceRollFiles::MakeOutput() {
  QGroupBox* group = new QGroupBox(tr("Output Options"));
  QVBoxLayout* column = new QVBoxLayout(group);
  column->addWidget(CheckBox("chkRollNums", tr("Include roll numbers"), Game.ShowRollNumbers));
  column->addWidget(CheckBox("chkDieNums", tr("Include individual die #'s"), Game.ShowDieNumbers));
  column->addWidget(
      CheckBox("chkNumbersCalled", tr("Include numbers called"), Game.ShowNumbersCalled));
  column->addWidget(
      CheckBox("chkPrintSelectedRolls", tr("Print selected rolls only"), Game.PrintSelectedRolls));
  return group;
}

QGroupBox* frmDiceRollFiles::MakeCounts() {
  QGroupBox* group = new QGroupBox(tr("Highlighted"));
  QVBoxLayout* column = new QVBoxLayout(group);
  lblCounted_ = New<QLabel>("lblCounted");
  lblCounted_->setWordWrap(true);
  column->addWidget(lblCounted_);
  const auto kind = [this](int row) -> const TapeKind& {
    return shown_[static_cast<unsigned>(row)];
  };
  const auto percent = [](double share) { return QString::number(share, 'f', 2); };
  kinds_ = new RecordModel(
      this, [this] { return static_cast<int>(shown_.size()); },
      {{.Heading = tr("Kind"), .Text = [kind](int row) { return Text(kind(row).Name); }},
       {.Heading = tr("Rolls"),
        .Text = [kind](int row) { return Count(kind(row).Count); },
        .Alignment = Qt::AlignRight},
       {.Heading = tr("%"),
        .Text = [kind, percent](int row) { return percent(kind(row).Share); },
        .Alignment = Qt::AlignRight},
       {.Heading = tr("Fair %"),
        .Text = [kind, percent](int row) { return percent(kind(row).FairShare); },
        .Alignment = Qt::AlignRight}});
  lstCounts_ = New<QTableView>("lstCounts");
  lstCounts_->setModel(kinds_);
  lstCounts_->setAccessibleName(tr("Highlighted rolls"));
  lstCounts_->verticalHeader()->hide();
  lstCounts_->setSelectionMode(QAbstractItemView::NoSelection);
  lstCounts_->setTabKeyNavigation(false);
  lstCounts_->setShowGrid(false);
  lstCounts_->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
  lstCounts_->horizontalHeader()->setSectionResizeMode(0, QHeaderView::Stretch);
  lstCounts_->verticalHeader()->setMinimumSectionSize(1);
  lstCounts_->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 4);
  lstCounts_->setMinimumSize(fontMetrics().averageCharWidth() * 48, fontMetrics().height() * 6);
  column->addWidget(lstCounts_, 1);
  cmdCount_ = AddButton(column, "cmdCount", tr("&Count"),
                        tr("Counts the highlighted kinds on as long a stretch as this"), [this] {
                          CountRolls(true);
                          ShowStatus();
                        });
  return group;
}

QLayout* frmDiceRollFiles::MakeStatusRow() {
  QHBoxLayout* row = new QHBoxLayout;
  row->setContentsMargins(8, 4, 8, 4);
  row->setSpacing(6);
  QLineEdit* next = TextBox("txtNextRollNum", kNumberLength);
  next->setMaximumWidth(next->minimumWidth());
  next->setToolTip(tr("The number of the next roll; type one to go there"));
  Bind(next,
       RecordField<int>([] { return Game.DiceFilePos; }, [](int record) { GoToRoll(record); }));
  row->addWidget(Caption(tr("&Next roll:"), next));
  row->addWidget(next);
  lblTotalNumRolls_ = New<QLabel>("lblTotalNumRolls");
  row->addWidget(lblTotalNumRolls_);
  row->addSpacing(16);
  lblSelected_ = New<QLabel>("lblSelected");
  row->addWidget(lblSelected_);
  row->addSpacing(16);
  lblTyped_ = New<QLabel>("lblTyped");
  row->addWidget(lblTyped_);
  row->addStretch(1);
  QLineEdit* size = TextBox("txtFontSize", kFontLength);
  size->setMaximumWidth(size->minimumWidth());
  Bind(size, RecordField(Game.DiceFontSize).Within(kSmallestFont, kLargestFont));
  row->addWidget(Caption(tr("Font &size:"), size));
  row->addWidget(size);
  return row;
}

void frmDiceRollFiles::MakeMenus() {
  MenuBar().Add(
      "mnuFile", tr("&File"),
      {Command("mnuNewOpen", tr("&New or Open..."), [this] { OpenDiceRollsCommand(this); })
           .AtRest()
           .On(QKeySequence::Open),
       WhereOpen(Command("mnuClose", tr("&Close"), CloseDiceRollsCommand)), Separator(),
       WhereSelected(FileRow(this, "mnuCopyToRollFile", tr("Copy To &Dice Roll File..."),
                             FileCommand::CopyToDiceRolls)),
       WhereOpen(FileRow(this, "mnuPasteFromRollFile", tr("Paste &From Dice Roll File..."),
                         FileCommand::PasteDiceRolls)),
       Separator(),
       WhereSelected(FileRow(this, "mnuCopyToTextFile", tr("Copy To &Text File..."),
                             FileCommand::CopyDiceRollsToText)),
       WhereOpen(FileRow(this, "mnuPasteFromTextFile", tr("Paste From &Ascii/Text File..."),
                         FileCommand::PasteDiceRollsFromText)),
       Separator(), WhereOpen(Command("mnuPrint", tr("&Print..."), [this] {
                      PrintRollsCommand(this);
                    })).On(QKeySequence::Print)});
  MenuBar().Add(
      "mnuEdit", tr("&Edit"),
      {WhereSelected(Command("mnuCut", tr("Cu&t"), CutRollsCommand)).On(QKeySequence::Cut),
       WhereSelected(Command("mnuCopy", tr("&Copy"), CopyRollsCommand)).On(QKeySequence::Copy),
       Command("mnuPaste", tr("&Paste"), PasteRollsCommand)
           .On(QKeySequence::Paste)
           .When([] { return IsOpen() && TableAtRest() && AnyRollsCopied(); },
                 tr("No rolls have been copied, or the dice are at work.")),
       WhereSelected(Command("mnuDelete", tr("&Delete"), DeleteRollsCommand))
           .On(QKeySequence::Delete),
       Separator(), WhereOpen(Command("mnuSelectAll", tr("Select &All"), [this] {
                      seenPosition_ = 1;  // the view stays where it is
                      ChangeByPlayer([] { SelectRolls(1, DiceRollCount()); });
                    })).On(QKeySequence::SelectAll)});
  MakeHighlightMenu();
}

void frmDiceRollFiles::MakeHighlightMenu() {
  const auto row = [](const QString& name, const QString& caption, bool (*checked)(int),
                      void (*flip)(int), int number) {
    return Check(
        name, caption, [checked, number] { return checked(number); },
        [flip, number] { ChangeByPlayer([flip, number] { flip(number); }); });
  };
  std::vector<MenuRow> rows;
  for (int total = 2; total <= 2 * kFaces; ++total)
    rows.push_back(row(QString("mnuAll%1").arg(total), tr("All %1s").arg(total), TotalIsHighlighted,
                       FlipTotal, total));
  rows.push_back(Separator());
  for (int face = 1; face <= kFaces; ++face)
    rows.push_back(row(QString("mnuPip%1").arg(face), tr("A &%1 on a die").arg(face),
                       PipIsHighlighted, FlipPip, face));
  rows.push_back(Separator());
  rows.push_back(Command("mnuHighlightNone", tr("&None"),
                         [] { ChangeByPlayer([] { Game.DicePairSelected.fill(false); }); }));
  MenuBar().Add("mnuHighlight", tr("Hi&ghlight"), std::move(rows));
}

// ---- Moving and selecting ----

void frmDiceRollFiles::Select(std::int64_t position, std::int64_t end) {
  if (!IsOpen()) return;
  const auto within = [this](std::int64_t record) {
    return std::clamp<std::int64_t>(record, 1, picDiceRolls_->Length() + 1);
  };
  seenPosition_ = static_cast<int>(within(position));
  die1_ = 0;
  ChangeByPlayer([position, end] { SelectRolls(position, end); });
  picDiceRolls_->BringIntoView(within(end));
}

/// The keys move the end of the selection with Shift, else the position.
bool frmDiceRollFiles::TakeArrow(const QKeyEvent& event) {
  const bool extends = event.modifiers() & Qt::ShiftModifier;
  const bool farthest = event.modifiers() & Qt::ControlModifier;
  const std::int64_t from =
      extends ? std::max(Game.DiceFileEnd, 1) : std::max<std::int64_t>(Game.DiceFilePos, 1);
  const std::int64_t row = picDiceRolls_->PerRow();
  const std::int64_t page = std::max<std::int64_t>(1, picDiceRolls_->WholeRows() - 1) * row;
  std::int64_t to = 0;
  switch (event.key()) {
    case Qt::Key_Left: to = from - 1; break;
    case Qt::Key_Right: to = from + 1; break;
    case Qt::Key_Up: to = from - row; break;
    case Qt::Key_Down: to = from + row; break;
    case Qt::Key_PageUp: to = from - page; break;
    case Qt::Key_PageDown: to = from + page; break;
    case Qt::Key_Home: to = farthest ? 1 : from - (from - 1) % row; break;
    case Qt::Key_End:
      to = farthest ? picDiceRolls_->Length() + 1 : from - (from - 1) % row + row - 1;
      break;
    default: return false;
  }
  to = std::clamp<std::int64_t>(to, 1, picDiceRolls_->Length() + 1);
  Select(extends ? Game.DiceFilePos : to, to);
  return true;
}

bool frmDiceRollFiles::TakeKey(QKeyEvent& event) {
  const Qt::KeyboardModifiers held = event.modifiers() & ~Qt::KeypadModifier;
  if (held == Qt::NoModifier && event.key() >= Qt::Key_0 && event.key() <= Qt::Key_9)
    return TakeDigit(event.key() - Qt::Key_0);
  if (event.key() == Qt::Key_Escape || event.key() == Qt::Key_Backspace) {
    if (die1_ == 0 && event.key() == Qt::Key_Escape) return false;
    if (die1_ == 0) DeleteBefore();
    die1_ = 0;
    ShowStatus();
    return true;
  }
  return IsOpen() && TakeArrow(event);
}

// ---- Entering rolls ----

bool frmDiceRollFiles::TakeDigit(int digit) {
  if (digit < 1 || digit > kFaces) {
    QApplication::beep();
    return true;
  }
  const int die1 = std::exchange(die1_, die1_ == 0 ? digit : 0);
  if (!IsOpen()) die1_ = 0;
  if (die1 != 0 || !IsOpen())
    EnterRollsCommand(ThrowsOfDigits(std::to_string(die1) + std::to_string(digit)));
  ShowStatus();
  return true;
}

/// A lone last digit stays in the box, and what couldn't be written.
void frmDiceRollFiles::TakeTypedRolls() {
  die1_ = 0;
  const std::string text = txtRollNumbers_->text().toStdString();
  const std::string throws = ThrowsOfDigits(text);
  if (throws.empty() && IsOpen()) return txtRollNumbers_->setFocus();
  const auto isFace = [](char letter) { return letter >= '1' && letter <= '0' + kFaces; };
  const bool even = std::count_if(text.begin(), text.end(), isFace) % 2 == 0;
  const auto last = std::find_if(text.rbegin(), text.rend(), isFace);
  const QString left = even ? QString() : QString(QChar(*last));
  EditTape("written", [throws, left, box = QPointer(txtRollNumbers_)] {
    EnterRolls(throws);
    if (box && Game.LastFileResult > 0) box->setText(left);
  });
}

void frmDiceRollFiles::DeleteBefore() {
  if (!IsOpen() || Game.DiceFilePos <= 1 || !TableAtRest()) return;
  EditTape("changed", [] {
    GoToRoll(Game.DiceFilePos - 1);
    DeleteSelectedRolls();
  });
}

bool frmDiceRollFiles::eventFilter(QObject* watched, QEvent* event) {
  if (watched != picDiceRolls_ || event->type() != QEvent::Wheel)
    return Screen::eventFilter(watched, event);
  QApplication::sendEvent(vscrDiceRolls_, event);
  return true;
}

/// Another program may be writing the tape.
void frmDiceRollFiles::FollowFile() {
  if (!isVisible() || !IsOpen() || !TableAtRest()) return;
  const bool readable = picDiceRolls_->Failure().empty();
  if (DiceRollCount() != picDiceRolls_->Length() || !readable) Refresh();
}

// ---- What is shown ----

void frmDiceRollFiles::ShowRecord() {
  setWindowTitle(IsOpen() ? tr("Dice Roll Files (%1)").arg(TapeName()) : tr("Dice Roll Files"));
  if (!IsOpen()) die1_ = 0;
  picDiceRolls_->Load();
  if (Game.DiceFilePos != seenPosition_ || Game.DiceRollFile != seenTape_)
    picDiceRolls_->BringToMiddle(Game.DiceFilePos);
  seenPosition_ = Game.DiceFilePos;
  seenTape_ = Game.DiceRollFile;
  CountRolls(false);
  ShowStatus();
}

void frmDiceRollFiles::ShowBar() {
  const QSignalBlocker quiet(vscrDiceRolls_);
  vscrDiceRolls_->setRange(0, std::max(0, picDiceRolls_->Rows() - picDiceRolls_->WholeRows()));
  vscrDiceRolls_->setPageStep(picDiceRolls_->WholeRows());
  vscrDiceRolls_->setValue(picDiceRolls_->TopRow());
}

/// Counts what is short enough, or `anyLength`.
void frmDiceRollFiles::CountRolls(bool anyLength) {
  const RollSelection rolls = CountedRolls();
  const QString what = QString("%1|%2|%3|%4")
                           .arg(Text(Game.DiceRollFile))
                           .arg(picDiceRolls_->Length())
                           .arg(rolls.From)
                           .arg(rolls.Count);
  const bool shortEnough = rolls.Count <= kCountedAtOnce;
  if (shortEnough || anyLength) {
    const bool any = rolls.Count > 0;
    counts_ = any ? CountTape(rolls) : TapeCounts();
    countedOf_ = !any || Game.LastFileResult > 0 ? what : QString();
  }
  const bool counted = countedOf_ == what;
  shown_ = counted ? HighlightedKinds(counts_) : std::vector<TapeKind>();
  kinds_->Refresh();
  cmdCount_->setVisible(!shortEnough);
  const bool selection = SelectedRolls().Count > 1;
  QString text = !counted    ? tr("Press Count to count %1 rolls.").arg(Count(rolls.Count))
                 : selection ? tr("Of the %1 rolls selected:").arg(Count(counts_.Rolls))
                             : tr("Of all %1 rolls:").arg(Count(counts_.Rolls));
  if (counted && shown_.empty()) text = tr("Choose totals and faces in the Highlight menu.");
  if (counted && counts_.NoThrows > 0)
    text += "\n" + tr("%1 bytes are out of limits.").arg(Count(counts_.NoThrows));
  lblCounted_->setText(text);
}

void frmDiceRollFiles::ShowStatus() {
  const std::int64_t length = picDiceRolls_->Length();
  lblTotalNumRolls_->setText(tr("of %1").arg(Count(length)));
  const RollSelection rolls = SelectedRolls();
  lblSelected_->setText(rolls.Count > 1 ? tr("Selected:  %1 rolls (%2 to %3)")
                                              .arg(Count(rolls.Count), Count(rolls.From),
                                                   Count(rolls.From + rolls.Count - 1))
                                        : QString());
  lblTyped_->setText(die1_ != 0 ? tr("Die 1 is a %1. Type die 2.").arg(die1_) : QString());
  if (!IsOpen()) {
    lblEmpty_->setText(
        tr("No Dice Roll file is open.\n\nOpen one, or enter the name of a new one, "
           "by New or Open in the File menu."));
  } else if (!picDiceRolls_->Failure().empty()) {
    lblEmpty_->setText(Text(picDiceRolls_->Failure()) +
                       tr("\n\nPut the file back, or open another one by the File menu."));
  } else {
    lblEmpty_->setText(
        tr("There are no rolls on this file yet.\n\nType two digits from 1 to 6, "
           "or record the rolls of a game."));
  }
  lblEmpty_->setVisible(length == 0 || !picDiceRolls_->Failure().empty());
}
