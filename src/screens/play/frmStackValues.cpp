#include "screens/play/frmStackValues.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QMenuBar>
#include <QPainter>
#include <QPushButton>
#include <QScrollBar>
#include <QVBoxLayout>
#include <set>

#include "bets/chip_stacks.h"
#include "core/help_topics.h"
#include "core/host.h"
#include "core/messages.h"
#include "core/text.h"
#include "rules/validators.h"
#include "screens/frame/between_rolls.h"
#include "screens/frame/guard.h"
#include "screens/frame/help.h"
#include "screens/frame/numeric_entry.h"
#include "screens/frame/paper.h"

namespace {

constexpr int kStacks = LastSlot - ChipStackBase;
constexpr QSize kSmallest(360, 240);  // names stay readable
constexpr int kLongestName = 80;
constexpr int kValueDecimals = 4;

enum Column : int { StackColumn = 0, NameColumn = 1, ValueColumn = 2, kColumns = 3 };

int StackOfRow(int row) { return FirstChipStack + row; }

Currency ValueOfRow(int row) { return Game.Bets[static_cast<unsigned>(StackOfRow(row))]; }

std::string& NameOfRow(int row) { return Game.ChipStackName[static_cast<unsigned>(row)]; }

QTableWidgetItem* NewItem(Qt::Alignment alignment) {
  QTableWidgetItem* item = new QTableWidgetItem;
  item->setTextAlignment(alignment | Qt::AlignVCenter);
  item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
  return item;
}

}  // namespace

frmStackValues::frmStackValues(QWidget* parent) : QMainWindow(parent) {
  setObjectName("frmStackValues");
  setWindowTitle(tr("Chip-Stacks"));
  QWidget* content = new QWidget(this);
  QVBoxLayout* column = new QVBoxLayout(content);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  setCentralWidget(content);
  MakeList();
  MakeSetStacksPanel();
  column->addWidget(picChipStacks_, 1);
  column->addWidget(picSetStacks_);
  MakeMenus();
  setMinimumSize(kSmallest);
  resize(460, 480);
  RefreshStackView();
}

void frmStackValues::MakeList() {
  picChipStacks_ = new QTableWidget(kStacks, kColumns, this);
  picChipStacks_->setObjectName("picChipStacks");
  picChipStacks_->verticalScrollBar()->setObjectName("VScroll1");
  picChipStacks_->setHorizontalHeaderLabels({tr("Stack"), tr("Name"), tr("Value")});
  picChipStacks_->verticalHeader()->hide();
  picChipStacks_->horizontalHeader()->setSectionResizeMode(NameColumn, QHeaderView::Stretch);
  picChipStacks_->horizontalHeader()->setHighlightSections(false);
  picChipStacks_->setColumnWidth(StackColumn, 60);
  picChipStacks_->setColumnWidth(ValueColumn, 150);
  picChipStacks_->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
  picChipStacks_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  picChipStacks_->setSelectionMode(QAbstractItemView::SingleSelection);
  picChipStacks_->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
  picChipStacks_->setTabKeyNavigation(false);
  for (int row = 0; row < kStacks; ++row) {
    picChipStacks_->setItem(row, StackColumn, NewItem(Qt::AlignRight));
    picChipStacks_->setItem(row, NameColumn, NewItem(Qt::AlignLeft));
    picChipStacks_->setItem(row, ValueColumn, NewItem(Qt::AlignRight));
    picChipStacks_->item(row, StackColumn)->setText(QString::number(row + 1));
  }
  connect(picChipStacks_, &QTableWidget::cellClicked, this, [this](int row, int clicked) {
    OpenCell(row, clicked == StackColumn ? NameColumn : clicked);
  });
  connect(picChipStacks_->verticalScrollBar(), &QScrollBar::valueChanged, this,
          [this] { CommitCell(); });
}

void frmStackValues::MakeSetStacksPanel() {
  picSetStacks_ = new QFrame(this);
  picSetStacks_->setObjectName("picSetStacks");
  picSetStacks_->setFrameShape(QFrame::StyledPanel);
  QHBoxLayout* row = new QHBoxLayout(picSetStacks_);
  row->addWidget(new QLabel(tr("Stacks on the table:"), picSetStacks_));
  for (int i = 0; i < kShownStacks; ++i) {
    QLineEdit* box = new QLineEdit(picSetStacks_);
    box->setObjectName(QString("txtStackNum_%1").arg(i));
    box->setAccessibleName(tr("Chip-Stack shown at place %1").arg(i + 1));
    box->setMaxLength(3);
    MakeNumericBox(box, 0, false);
    row->addWidget(box);
    txtStackNum_[static_cast<unsigned>(i)] = box;
  }
  QPushButton* ok = new QPushButton(tr("&OK"), picSetStacks_);
  ok->setObjectName("cmdOK");
  connect(ok, &QPushButton::clicked, this, [this] { TakeSetStacks(); });
  row->addWidget(ok);
  QPushButton* cancel = new QPushButton(tr("Cancel"), picSetStacks_);
  cancel->setObjectName("cmdCancel");
  connect(cancel, &QPushButton::clicked, picSetStacks_, &QWidget::hide);
  row->addWidget(cancel);
  for (QLineEdit* box : txtStackNum_) {
    connect(box, &QLineEdit::returnPressed, this, [this] { TakeSetStacks(); });
  }
  picSetStacks_->hide();
}

void frmStackValues::MakeMenus() {
  const auto add = [this](QMenu* menu, const char* name, const char* caption, QKeySequence key,
                          std::function<void()> act) {
    QAction* action = menu->addAction(tr(caption));
    action->setObjectName(name);
    action->setShortcut(key);
    connect(action, &QAction::triggered, this, [act = std::move(act)] { act(); });
    return action;
  };
  QMenu* edit = menuBar()->addMenu(tr("&Edit"));
  edit->setObjectName("mnuEdit");
  add(edit, "mnuPrint", "&Print", QKeySequence::Print, [this] { PrintList(); });
  edit->addSeparator();
  add(edit, "mnuCut", "Cu&t", QKeySequence::Cut, [this] { CutCell(); });
  add(edit, "mnuCopy", "&Copy", QKeySequence::Copy, [this] { CopyCell(); });
  add(edit, "mnuPaste", "&Paste", QKeySequence::Paste, [this] { PasteCell(); });
  add(edit, "mnuDelete", "&Delete", {}, [this] { DeleteCell(); });
  edit->addSeparator();
  add(edit, "mnuDeleteAll", "Delete &All", {}, [this] {
    DeleteAllOnAsking(
        "Are you sure you want to set all Chip-Stack values to zero and delete all names?",
        "Delete All", true, true);
  });
  add(edit, "mnuDeleteAllNames", "Delete All &Names", {}, [this] {
    DeleteAllOnAsking("Are you sure you want to delete all Chip-Stack names?", "Delete All Names",
                      false, true);
  });
  add(edit, "mnuDeleteAllValues", "Delete All &Values", {}, [this] {
    DeleteAllOnAsking("Are you sure you want to set all Chip-Stack values to zero?",
                      "Delete All Values", true, false);
  });
  QMenu* options = menuBar()->addMenu(tr("&Options"));
  options->setObjectName("mnuOptions");
  mnuDisplayZero_ =
      add(options, "mnuDisplayZero", "Display &Zero Values", {}, [this] { RefreshStackView(); });
  mnuDisplayZero_->setCheckable(true);
  mnuDisplayZero_->setChecked(true);
  add(options, "mnuSetStacks", "&Set Visible Chip-Stacks...", {}, [this] { OpenSetStacks(); });
}

/// Prints the stacks that have a name or a value, or all of them where zero values are displayed.
void frmStackValues::PrintList() {
  constexpr int kHeadingSize = 12;
  constexpr int kTextSize = 10;
  constexpr const char* kPlace = "Print Chip-Stacks";
  if (!CanPrint())
    return ShowMessage("There's no printer to print on.", "Print", kTopicChipStacks, OkStop);
  const QString game = Game.GameFileName.empty() ? QString("untitled game")
                                                 : QString::fromStdString(Game.GameFileName);
  const auto paint = [&](QPainter& painter, QSizeF page, const std::function<void()>& nextPage) {
    double y = PrintLine(painter, 0, page.width(), "Chip-Stack values and names for " + game,
                         kHeadingSize, true);
    for (int row = 0; row < kStacks; ++row) {
      const Currency value = ValueOfRow(row);
      if (value == 0 && NameOfRow(row).empty() && !mnuDisplayZero_->isChecked()) continue;
      if (y + kHeadingSize > page.height()) {
        nextPage();
        y = 0;
      }
      y = PrintLine(painter, y, page.width(),
                    QString("#%1    %2    %3")
                        .arg(row + 1)
                        .arg(QString::fromStdString(MoneyText(value)),
                             QString::fromStdString(NameOfRow(row))),
                    kTextSize, false);
    }
  };
  Guarded(kPlace, [&] { PrintOnPaper("Kelvanor Chip-Stacks", paint); });
}

void frmStackValues::RefreshStackView() {
  const QColor plain = palette().color(QPalette::Text);
  for (int row = 0; row < kStacks; ++row) {
    const Currency value = ValueOfRow(row);
    const bool shown = value != 0 || mnuDisplayZero_->isChecked();
    picChipStacks_->item(row, NameColumn)->setText(QString::fromStdString(NameOfRow(row)));
    QTableWidgetItem* cell = picChipStacks_->item(row, ValueColumn);
    cell->setText(shown ? QString::fromStdString(MoneyText(value)) : QString());
    cell->setForeground(value < 0 ? QColor(Qt::red) : plain);
  }
}

// ---- The cell under edit ----

bool frmStackValues::HasCell() const {
  return picChipStacks_->currentRow() >= 0 && picChipStacks_->currentColumn() > StackColumn;
}

QString frmStackValues::CellText(int row, int column) const {
  return QString::fromStdString(column == NameColumn ? NameOfRow(row) : PlainText(ValueOfRow(row)));
}

void frmStackValues::StoreCell(int row, int column, const QString& text) {
  if (column == NameColumn) {
    NameOfRow(row) = text.left(kLongestName).toStdString();
    Game.GameChanged = true;
  } else if (TableAtRest()) {
    Guarded("Chip-Stacks", [&] { SetChipStack(StackOfRow(row), ParseAmount(text.toStdString())); });
  }
  TheHost.RefreshViews();
}

void frmStackValues::OpenCell(int row, int column) {
  CommitCell();
  picChipStacks_->setCurrentCell(row, column);
  editedRow_ = row;
  editedColumn_ = column;
  txtChipStackInput_ = new QLineEdit(picChipStacks_->viewport());
  txtChipStackInput_->setObjectName("txtChipStackInput");
  txtChipStackInput_->setAccessibleName(column == NameColumn ? tr("Name") : tr("Value"));
  txtChipStackInput_->setText(CellText(row, column));
  if (column == ValueColumn) {
    MakeNumericBox(txtChipStackInput_, kValueDecimals, true);
  } else {
    txtChipStackInput_->setMaxLength(kLongestName);
  }
  txtChipStackInput_->setGeometry(
      picChipStacks_->visualItemRect(picChipStacks_->item(row, column)));
  txtChipStackInput_->installEventFilter(this);
  txtChipStackInput_->show();
  txtChipStackInput_->setFocus();
  txtChipStackInput_->selectAll();
}

void frmStackValues::CommitCell() {
  if (!txtChipStackInput_) return;
  const QString text = txtChipStackInput_->text();
  const int row = editedRow_;
  const int column = editedColumn_;
  CloseCell();
  if (text != CellText(row, column)) StoreCell(row, column, text);
}

void frmStackValues::CloseCell() {
  if (!txtChipStackInput_) return;
  QLineEdit* box = txtChipStackInput_;
  txtChipStackInput_ = nullptr;
  box->setObjectName({});
  box->hide();
  box->deleteLater();
}

bool frmStackValues::eventFilter(QObject* watched, QEvent* event) {
  if (!txtChipStackInput_ || watched != txtChipStackInput_) {
    return QMainWindow::eventFilter(watched, event);
  }
  if (event->type() == QEvent::KeyPress) {
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Escape) CloseCell();
    if (key == Qt::Key_Return || key == Qt::Key_Enter) CommitCell();
    return key == Qt::Key_Escape || key == Qt::Key_Return || key == Qt::Key_Enter;
  }
  if (event->type() == QEvent::FocusOut) {
    const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
    if (reason != Qt::PopupFocusReason && reason != Qt::MenuBarFocusReason &&
        reason != Qt::ActiveWindowFocusReason) {
      CommitCell();
    }
  }
  return false;
}

// ---- The menus ----

void frmStackValues::CutCell() {
  CopyCell();
  DeleteCell();
}

void frmStackValues::CopyCell() {
  if (!HasCell()) return;
  if (txtChipStackInput_ && txtChipStackInput_->hasSelectedText()) {
    txtChipStackInput_->copy();
    return;
  }
  QApplication::clipboard()->setText(
      CellText(picChipStacks_->currentRow(), picChipStacks_->currentColumn()));
}

void frmStackValues::PasteCell() {
  if (!HasCell()) return;
  const QString text = QApplication::clipboard()->text().section('\n', 0, 0).trimmed();
  CloseCell();
  StoreCell(picChipStacks_->currentRow(), picChipStacks_->currentColumn(), text);
}

void frmStackValues::DeleteCell() {
  if (!HasCell()) return;
  CloseCell();
  StoreCell(picChipStacks_->currentRow(), picChipStacks_->currentColumn(), {});
}

void frmStackValues::DeleteAllOnAsking(const char* question, const char* title, bool values,
                                       bool names) {
  CloseCell();
  if (!AskYesNo(question, title, kTopicChipStacks)) return;
  if (names) Game.ChipStackName.fill({});
  for (int row = 0; values && TableAtRest() && row < kStacks; ++row) {
    SetChipStack(StackOfRow(row), 0);
  }
  Game.GameChanged = true;
  TheHost.RefreshViews();
}

void frmStackValues::OpenSetStacks() {
  CommitCell();
  for (unsigned i = 0; i < kShownStacks; ++i) {
    txtStackNum_[i]->setText(QString::number(Game.VisibleStacks[i] - ChipStackBase));
  }
  picSetStacks_->show();
  txtStackNum_[0]->setFocus();
  txtStackNum_[0]->selectAll();
}

void frmStackValues::TakeSetStacks() {
  constexpr const char* kTitle = "Set Visible Chip-Stacks";
  std::array<int, kShownStacks> ids{};
  for (unsigned i = 0; i < kShownStacks; ++i)
    ids[i] = ChipStackBase + txtStackNum_[i]->text().toInt();
  const bool known = std::all_of(ids.begin(), ids.end(), IsChipStack);
  if (!known) {
    ShowMessage("Each Chip-Stack entry should be a number from 1 to 100.", kTitle, kTopicChipStacks,
                OkStop);
    return;
  }
  if (std::set<int>(ids.begin(), ids.end()).size() != ids.size()) {
    ShowMessage("Each Chip-Stack entry should be a different number.", kTitle, kTopicChipStacks,
                OkStop);
    return;
  }
  ShowStacksOnTable(ids);
  picSetStacks_->hide();
}

// ---- The window ----

void frmStackValues::showEvent(QShowEvent* event) {
  QMainWindow::showEvent(event);
  Game.StackScreenOpen = true;
}

void frmStackValues::closeEvent(QCloseEvent* event) {
  CommitCell();
  Game.StackScreenOpen = false;
  QMainWindow::closeEvent(event);
}

void frmStackValues::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_F1: ShowHelp(kTopicChipStacks); break;
    case Qt::Key_Delete: DeleteCell(); break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_F2:
      if (HasCell()) OpenCell(picChipStacks_->currentRow(), picChipStacks_->currentColumn());
      break;
    case Qt::Key_Escape: close(); break;
    default: QMainWindow::keyPressEvent(event);
  }
}
