#include "screens/play/frmStackValues.h"

#include <QApplication>
#include <QClipboard>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <QTableView>
#include <QVBoxLayout>
#include <algorithm>
#include <set>

#include "bets/chip_stacks.h"
#include "core/help_topics.h"
#include "core/messages.h"
#include "core/text.h"
#include "screens/frame/chrome.h"
#include "screens/frame/controls.h"
#include "screens/frame/numeric_entry.h"
#include "screens/frame/player_change.h"
#include "screens/frame/report.h"

namespace {

constexpr int kStacks = LastSlot - ChipStackBase;
constexpr QSize kSmallest(360, 240);  // names stay readable
constexpr QSize kAtStart(460, 480);
constexpr int kLongestName = 80;
constexpr int kValueDecimals = 4;

enum Column : int { StackColumn = 0, NameColumn = 1, ValueColumn = 2 };

int StackOfRow(int row) { return FirstChipStack + row; }
Currency ValueOfRow(int row) { return Game.Bets[static_cast<unsigned>(StackOfRow(row))]; }
std::string& NameOfRow(int row) { return Game.ChipStackName[static_cast<unsigned>(row)]; }
QString NameText(int row) { return Text(NameOfRow(row)); }

/// Values of 0 are shown, unless the player would rather have the others stand out.
bool ZeroIsShown() { return Game.StackValuesView[0] == 0; }

bool IsShown(int row) { return ValueOfRow(row) != 0 || ZeroIsShown(); }

QString ValueText(int row) { return IsShown(row) ? Money(ValueOfRow(row)) : QString(); }

bool TakeName(int row, const QString& text) {
  if (text != NameText(row))
    ChangeByPlayer([row, name = text.left(kLongestName).toStdString()] { NameOfRow(row) = name; });
  return true;
}

bool TakeValue(int row, const QString& text) {
  ChangeByPlayer(
      [row, value = ParseAmount(text.toStdString())] { SetChipStack(StackOfRow(row), value); });
  return true;
}

/// The box that opens on a name or a value.
class CellEditor : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem&,
                        const QModelIndex& index) const override {
    QLineEdit* box = new QLineEdit(parent);
    box->setObjectName("txtChipStackInput");
    box->setAccessibleName(index.column() == NameColumn ? frmStackValues::tr("Name")
                                                        : frmStackValues::tr("Value"));
    if (index.column() == ValueColumn) {
      MakeNumericBox(box, kValueDecimals, true);
    } else {
      box->setMaxLength(kLongestName);
    }
    return box;
  }
};

/// Keys go from the name of a stack to its value, and on to the name of the next.
class StackTable : public QTableView {
 public:
  using QTableView::QTableView;

 protected:
  QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers keys) override {
    const QModelIndex from = currentIndex();
    const int step = action == MoveNext ? 1 : action == MovePrevious ? -1 : 0;
    const QModelIndex to = QTableView::moveCursor(action, keys);
    if (!from.isValid()) return to;
    if (step == 0) return to.column() == StackColumn ? to.siblingAtColumn(NameColumn) : to;
    constexpr int kCells = 2;  // of a row that can be typed in
    const int cell = from.row() * kCells + from.column() - NameColumn + step;
    return model()->index(std::clamp(cell / kCells, 0, kStacks - 1), NameColumn + (cell & 1));
  }
};

/// Asks, and then clears the values, the names, or both, of all stacks.
void DeleteAllOnAsking(const char* question, const char* title, bool values, bool names) {
  if (!AskYesNo(question, title, kTopicChipStacks)) return;
  ChangeByPlayer([values, names] {
    if (names) Game.ChipStackName.fill({});
    for (int row = 0; values && row < kStacks; ++row) SetChipStack(StackOfRow(row), 0);
  });
}

}  // namespace

frmStackValues::frmStackValues(QWidget* table)
    : Screen(table, "frmStackValues", tr("Chip-Stacks"), kTopicChipStacks) {
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
  SetSizes(kSmallest, kAtStart);
}

void frmStackValues::MakeList() {
  stacks_ = new RecordModel(
      this, [] { return kStacks; },
      {{.Heading = tr("Stack"),
        .Text = [](int row) { return QString::number(row + 1); },
        .Alignment = Qt::AlignRight,
        .Idle = true,
        .Ink = [this](int) { return palette().color(QPalette::Text); }},
       {.Heading = tr("Name"), .Text = NameText, .Take = TakeName},
       {.Heading = tr("Value"),
        .Text = ValueText,
        .Alignment = Qt::AlignRight,
        .Ink = [](int row) { return ValueOfRow(row) < 0 ? WarningInk() : QColor(); },
        .EditText = [](int row) { return Text(PlainText(ValueOfRow(row))); },
        .Take = TakeValue}});
  picChipStacks_ = New<StackTable>("picChipStacks");
  picChipStacks_->setAccessibleName(tr("Chip-Stacks"));
  picChipStacks_->verticalScrollBar()->setObjectName("VScroll1");
  picChipStacks_->setModel(stacks_);
  picChipStacks_->setItemDelegate(new CellEditor(picChipStacks_));
  picChipStacks_->setEditTriggers(QAbstractItemView::CurrentChanged |
                                  QAbstractItemView::SelectedClicked |
                                  QAbstractItemView::EditKeyPressed);
  picChipStacks_->setSelectionMode(QAbstractItemView::SingleSelection);
  picChipStacks_->verticalHeader()->hide();
  picChipStacks_->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
  picChipStacks_->horizontalHeader()->setSectionResizeMode(NameColumn, QHeaderView::Stretch);
  picChipStacks_->horizontalHeader()->setHighlightSections(false);
  picChipStacks_->setColumnWidth(StackColumn, 60);
  picChipStacks_->setColumnWidth(ValueColumn, 150);
  picChipStacks_->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
  // The number of a stack stands for its name.
  connect(picChipStacks_, &QTableView::pressed, this, [this](const QModelIndex& index) {
    if (index.column() == StackColumn)
      picChipStacks_->setCurrentIndex(index.siblingAtColumn(NameColumn));
  });
}

void frmStackValues::MakeSetStacksPanel() {
  picSetStacks_ = new QFrame(this);
  picSetStacks_->setObjectName("picSetStacks");
  picSetStacks_->setFrameShape(QFrame::StyledPanel);
  QHBoxLayout* row = new QHBoxLayout(picSetStacks_);
  row->addWidget(new QLabel(tr("Stacks on the table:")));
  for (int i = 0; i < kShownStacks; ++i) {
    QLineEdit* box = new QLineEdit;
    box->setObjectName(QString("txtStackNum_%1").arg(i));
    box->setAccessibleName(tr("Chip-Stack shown at place %1").arg(i + 1));
    box->setMaxLength(3);
    MakeNumericBox(box, 0, false);
    connect(box, &QLineEdit::returnPressed, this, [this] { TakeSetStacks(); });
    row->addWidget(box);
    txtStackNum_[static_cast<unsigned>(i)] = box;
  }
  AddButton(row, "cmdOK", tr("&OK"), {}, [this] { TakeSetStacks(); });
  AddButton(row, "cmdCancel", tr("Cancel"), {}, [this] { picSetStacks_->hide(); });
  picSetStacks_->hide();
}

void frmStackValues::MakeMenus() {
  const auto chosen = [this] { return picChipStacks_->currentIndex().isValid(); };
  const QString noneChosen = tr("Choose a name or a value first.");
  MenuBar().Add(
      "mnuEdit", tr("&Edit"),
      {Command("mnuPrint", tr("&Print"), [this] { PrintList(); }).On(QKeySequence::Print),
       Separator(),
       Command("mnuCut", tr("Cu&t"),
               [this] {
                 CopyCell();
                 SetCell({});
               })
           .On(QKeySequence::Cut)
           .When(chosen, noneChosen),
       Command("mnuCopy", tr("&Copy"), [this] { CopyCell(); })
           .On(QKeySequence::Copy)
           .When(chosen, noneChosen),
       Command("mnuPaste", tr("Past&e"),
               [this] { SetCell(QApplication::clipboard()->text().section('\n', 0, 0).trimmed()); })
           .On(QKeySequence::Paste)
           .When(chosen, noneChosen),
       Command("mnuDelete", tr("&Delete"), [this] { SetCell({}); }).When(chosen, noneChosen),
       Separator(),
       Command("mnuDeleteAll", tr("Delete &All"),
               [] {
                 DeleteAllOnAsking(
                     "Are you sure you want to set all Chip-Stack values to zero and delete all "
                     "names?",
                     "Delete All", true, true);
               }),
       Command("mnuDeleteAllNames", tr("Delete All &Names"),
               [] {
                 DeleteAllOnAsking("Are you sure you want to delete all Chip-Stack names?",
                                   "Delete All Names", false, true);
               }),
       Command("mnuDeleteAllValues", tr("Delete All &Values"), [] {
         DeleteAllOnAsking("Are you sure you want to set all Chip-Stack values to zero?",
                           "Delete All Values", true, false);
       })});
  const RecordField<bool> zeroShown(ZeroIsShown,
                                    [](bool on) { Game.StackValuesView[0] = on ? 0 : 1; });
  MenuBar().Add(
      "mnuOptions", tr("&Options"),
      {Toggle("mnuDisplayZero", tr("Display &Zero Values"), zeroShown),
       Command("mnuSetStacks", tr("&Set Visible Chip-Stacks..."), [this] { OpenSetStacks(); })});
}

/// Prints the stacks that have a name or a value, or all of them where zero values are displayed.
void frmStackValues::PrintList() {
  std::vector<int> rows;
  for (int row = 0; row < kStacks; ++row)
    if (IsShown(row) || !NameOfRow(row).empty()) rows.push_back(row);
  const QString game =
      Game.GameFileName.empty() ? tr("untitled game") : QString::fromStdString(Game.GameFileName);
  Report report;
  report.Title = tr("Kelvanor Chip-Stacks");
  report.Heading = {tr("Chip-Stack values and names for %1").arg(game)};
  report.Columns = {tr("Stack"), tr("Value"), tr("Name")};
  report.Align = [](int column) {
    return Qt::Alignment(column < 2 ? Qt::AlignRight : Qt::AlignLeft);
  };
  report.Rows = static_cast<int>(rows.size());
  report.Row = [rows](int at) {
    const int row = rows[static_cast<unsigned>(at)];
    return QStringList{QString("#%1").arg(row + 1), Money(ValueOfRow(row)), NameText(row)};
  };
  PrintReport(this, report);
}

void frmStackValues::ShowRecord() { stacks_->Refresh(); }

// ---- The chosen cell ----

QModelIndex frmStackValues::Cell() const { return picChipStacks_->currentIndex(); }

QLineEdit* frmStackValues::OpenBox() const {
  return qobject_cast<QLineEdit*>(picChipStacks_->indexWidget(Cell()));
}

void frmStackValues::CopyCell() {
  if (!Cell().isValid()) return;
  const QLineEdit* box = OpenBox();
  QApplication::clipboard()->setText(box && box->hasSelectedText() ? box->selectedText()
                                     : Cell().column() == NameColumn
                                         ? NameText(Cell().row())
                                         : Cell().data(Qt::EditRole).toString());
}

/// Sets the chosen cell as if the text had been typed. An open box goes without being taken.
void frmStackValues::SetCell(const QString& text) {
  if (!Cell().isValid()) return;
  const QPersistentModelIndex cell = Cell();
  if (QLineEdit* box = OpenBox()) {
    QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    QApplication::sendEvent(box, &escape);
  }
  stacks_->setData(cell, text, Qt::EditRole);
}

// ---- The four on the table ----

void frmStackValues::OpenSetStacks() {
  for (unsigned i = 0; i < kShownStacks; ++i)
    txtStackNum_[i]->setText(QString::number(Game.VisibleStacks[i] - ChipStackBase));
  picSetStacks_->show();
  txtStackNum_[0]->setFocus();
  txtStackNum_[0]->selectAll();
}

void frmStackValues::TakeSetStacks() {
  constexpr const char* kTitle = "Set Visible Chip-Stacks";
  std::array<int, kShownStacks> ids{};
  for (unsigned i = 0; i < kShownStacks; ++i)
    ids[i] = ChipStackBase + txtStackNum_[i]->text().toInt();
  if (!std::all_of(ids.begin(), ids.end(), IsChipStack)) {
    ShowMessage("Each Chip-Stack entry should be a number from 1 to 100.", kTitle, kTopicChipStacks,
                OkStop);
    return;
  }
  if (std::set<int>(ids.begin(), ids.end()).size() != ids.size()) {
    ShowMessage("Each Chip-Stack entry should be a different number.", kTitle, kTopicChipStacks,
                OkStop);
    return;
  }
  ChangeByPlayer([ids] { ShowStacksOnTable(ids); });
  picSetStacks_->hide();
}

// ---- The window ----

void frmStackValues::Opened() { Game.StackScreenOpen = true; }

bool frmStackValues::MayClose() {
  picChipStacks_->setFocus();  // an open box is taken
  Game.StackScreenOpen = false;
  return true;
}

bool frmStackValues::TakeKey(QKeyEvent& event) {
  if (event.key() == Qt::Key_Delete) {
    SetCell({});
  } else if (event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter) {
    if (Cell().isValid() && !OpenBox()) picChipStacks_->edit(Cell());
  } else {
    return false;
  }
  return true;
}
