#include "screens/scripts/frmHotKeys.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QDate>
#include <QGridLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>
#include <QScrollBar>
#include <QStyle>
#include <QTableView>
#include <QUndoStack>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "autobet/editor.h"
#include "autobet/hot_key_table.h"
#include "autobet/hot_keys.h"
#include "autobet/script_file.h"
#include "core/game_state.h"
#include "core/help_topics.h"
#include "core/record_file.h"
#include "screens/files/frmFile.h"
#include "screens/frame/bind.h"
#include "screens/frame/chrome.h"
#include "screens/frame/controls.h"
#include "screens/frame/player_change.h"
#include "screens/frame/screen_table.h"

namespace {

constexpr QSize kSmallest(420, 320);
constexpr QSize kAtStart(620, 420);
constexpr int kWidestTyped = 255;  // what is too long is told, not cut
constexpr int kLetters = 'Z' - 'A' + 1;

enum Column : int { KeyColumn, FileColumn, DescriptionColumn };

int RowCount() { return static_cast<int>(Game.HotKeys.size()); }
const HotKey& RowAt(int row) { return Game.HotKeys[static_cast<unsigned>(row)]; }
QString FaultAt(int row) { return Text(FaultOfHotKey(static_cast<unsigned>(row))); }

QString KeyText(int row) { return Text(HotKeyCaption(RowAt(row))); }
QString DescriptionText(int row) { return Text(RowAt(row).Description); }
QString FileText(int row) { return Text(RowAt(row).File); }

/// What is wrong with a row, else the whole of what a cell may show cut.
QString FaultOr(int row, const QString& whole) {
  const QString fault = FaultAt(row);
  return fault.isEmpty() ? whole : fault;
}
QString FileTip(int row) { return FaultOr(row, Text(HotKeyPath(RowAt(row)))); }
QString DescriptionTip(int row) { return FaultOr(row, DescriptionText(row)); }

/// Takes the room of an icon, so that keys with one and without stand in line.
QIcon NoIcon(const QStyle* style) {
  const int size = style->pixelMetric(QStyle::PM_SmallIconSize);
  QPixmap nothing(size, size);
  nothing.fill(Qt::transparent);
  return nothing;
}

int IndexOfKey(char key) { return QChar::fromLatin1(key).toUpper().unicode() - 'A'; }

/// The first letter that no row has yet.
int FreeKey() {
  int index = 0;
  while (index < kLetters && FindHotKey(static_cast<char>('A' + index)) < Game.HotKeys.size())
    ++index;
  return index % kLetters;
}

/// The whole table as it stood before and after a change.
class TableChange : public QUndoCommand {
 public:
  TableChange(const QString& name, std::vector<HotKey> before)
      : QUndoCommand(name), before_(std::move(before)), after_(Game.HotKeys) {}

  void undo() override { Put(before_); }
  void redo() override {
    if (std::exchange(isMade_, true)) Put(after_);
  }

 private:
  static void Put(const std::vector<HotKey>& rows) {
    Game.HotKeys = rows;
    SaveHotKeys();
  }

  std::vector<HotKey> before_;
  std::vector<HotKey> after_;
  bool isMade_ = false;  // the first redo comes of the change itself
};

}  // namespace

frmHotKeys::frmHotKeys(QWidget* table)
    : Screen(table, "frmHotKeys", tr("Hot-Keys"), kTopicHotKeys) {
  undo_ = new QUndoStack(this);
  QWidget* content = new QWidget(this);
  QVBoxLayout* column = new QVBoxLayout(content);
  MakeBoxes(column);
  lblDamaged_ = New<QLabel>("lblDamaged",
                            tr("The file of the Hot-Keys, HotKeys.dta, was damaged. What could be "
                               "read of it stands below; a copy of the damaged file is kept as "
                               "HotKeys.bad when you change something."));
  lblDamaged_->setWordWrap(true);
  column->addWidget(lblDamaged_);
  MakeList(column);
  setCentralWidget(content);
  MakeMenus();
  SetSizes(kSmallest, kAtStart);
}

void frmHotKeys::MakeBoxes(QVBoxLayout* column) {
  cmbKey_ = New<QComboBox>("cmbKey");
  for (char key = 'A'; key <= 'Z'; ++key) cmbKey_->addItem(QChar::fromLatin1(key));
  cmbKey_->setToolTip(tr("Ctrl and this letter run the file at the table"));
  const auto box = [this](const char* name, const QString& tip) {
    auto* edit = New<QLineEdit>(name);
    edit->setMaxLength(kWidestTyped);
    edit->setToolTip(tip);
    connect(edit, &QLineEdit::returnPressed, this, [this] { Do([this] { Add(); }); });
    return edit;
  };
  txtAutoBetFile_ = box("txtAutoBetFile", tr("A double click chooses the file"));
  txtAutoBetFile_->installEventFilter(this);
  txtDescription_ = box("txtDescription", tr("What the Hot-Key is for"));

  QGridLayout* grid = new QGridLayout;
  QHBoxLayout* file = new QHBoxLayout;
  grid->addWidget(Caption(tr("&Key:  Ctrl +"), cmbKey_), 0, 0);
  grid->addWidget(cmbKey_, 0, 1, Qt::AlignLeft);
  grid->addWidget(Caption(tr("Auto-Bet &file:"), txtAutoBetFile_), 1, 0);
  file->addWidget(txtAutoBetFile_, 1);
  AddButton(file, "cmdSelectAutoBetFile", tr("&Select..."), tr("Choose the file"),
            [this] { SelectFile(); });
  grid->addLayout(file, 1, 1);
  grid->addWidget(Caption(tr("D&escription:"), txtDescription_), 2, 0);
  grid->addWidget(txtDescription_, 2, 1);
  grid->setColumnStretch(1, 1);
  column->addLayout(grid);

  QHBoxLayout* buttons = new QHBoxLayout;
  buttons->addStretch(1);
  AddButton(buttons, "cmdAddHotKey", tr("&Add Hot-Key"),
            tr("Add what the boxes define to the end of the list"), [this] { Add(); });
  cmdChangeHotKey_ =
      AddButton(buttons, "cmdChangeHotKey", tr("&Change Hot-Key"),
                tr("Put what the boxes define in place of the chosen row"), [this] { Change(); });
  column->addLayout(buttons);
}

void frmHotKeys::MakeList(QVBoxLayout* column) {
  const auto ink = [](int row) { return FaultAt(row).isEmpty() ? QColor() : WarningInk(); };
  const QIcon warning = style()->standardIcon(QStyle::SP_MessageBoxWarning);
  const auto icon = [warning, none = NoIcon(style())](int row) {
    return FaultAt(row).isEmpty() ? none : warning;
  };
  rows_ = new RecordModel(
      this, RowCount,
      {{.Heading = tr("Key"), .Text = KeyText, .Ink = ink, .ToolTip = FileTip, .Icon = icon},
       {.Heading = tr("Auto-Bet File"),
        .Text = FileText,
        .Ink = ink,
        .ToolTip = FileTip,
        .Take = [this](int row,
                       const QString& typed) { return TakeCell(row, &HotKey::File, typed); }},
       {.Heading = tr("Description"),
        .Text = DescriptionText,
        .Ink = ink,
        .ToolTip = DescriptionTip,
        .Take = [this](int row, const QString& typed) {
          return TakeCell(row, &HotKey::Description, typed);
        }}});
  picHotKeys_ = New<QTableView>("picHotKeys");
  picHotKeys_->setAccessibleName(tr("Hot-Keys"));
  picHotKeys_->verticalScrollBar()->setObjectName("vscrHotKeys");
  picHotKeys_->setModel(rows_);
  picHotKeys_->setSelectionBehavior(QAbstractItemView::SelectRows);
  picHotKeys_->setSelectionMode(QAbstractItemView::ExtendedSelection);
  picHotKeys_->setEditTriggers(QAbstractItemView::EditKeyPressed);
  picHotKeys_->setTabKeyNavigation(false);
  picHotKeys_->setShowGrid(false);
  picHotKeys_->setWordWrap(false);
  picHotKeys_->setTextElideMode(Qt::ElideMiddle);  // the file's own name stays in sight
  picHotKeys_->verticalHeader()->hide();
  picHotKeys_->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
  QHeaderView* header = picHotKeys_->horizontalHeader();
  header->setHighlightSections(false);
  header->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  header->setSectionResizeMode(FileColumn, QHeaderView::Stretch);
  header->setSectionResizeMode(DescriptionColumn, QHeaderView::Stretch);
  const int iconAndMargins = style()->pixelMetric(QStyle::PM_SmallIconSize) + 24;
  picHotKeys_->setColumnWidth(KeyColumn,
                              fontMetrics().horizontalAdvance(" Ctrl W ") + iconAndMargins);
  connect(picHotKeys_, &QTableView::doubleClicked, this,
          [this](const QModelIndex& index) { LoadBack(index.row()); });
  const Binding& change = BindPossible(
      cmdChangeHotKey_, [this] { return Chosen().size() == 1; },
      tr("Choose the row to be changed: a double click brings it into the boxes."));
  connect(picHotKeys_->selectionModel(), &QItemSelectionModel::selectionChanged, this,
          [this, &change] {
            change.Load();
            MenuBar().Refresh();
          });
  lblNoHotKeys_ = EmptyLabel(picHotKeys_->viewport(), "lblNoHotKeys",
                             tr("No Hot-Keys yet: choose a key and an Auto-Bet file above."));
  column->addWidget(picHotKeys_, 1);
}

void frmHotKeys::MakeMenus() {
  MenuBar().Add("mnuFile", tr("&File"), {Command("mnuPrint", tr("&Print"), [this] {
                                           PrintReport(this, HotKeysReport());
                                         }).On(QKeySequence::Print)});
  const auto some = [this] { return !Chosen().empty(); };
  const QString noneChosen = tr("No row is chosen.");
  const auto row = [&](const char* name, const QString& caption, void (frmHotKeys::*act)()) {
    return Command(name, caption, [this, act] { (this->*act)(); }).When(some, noneChosen);
  };
  MenuBar().Add(
      "mnuEdit", tr("&Edit"),
      {Command("mnuUndo", tr("&Undo"), [this] { Step(&QUndoStack::undo); })
           .On(QKeySequence::Undo)
           .When([this] { return undo_->canUndo(); }, tr("Nothing has been changed."))
           .Named([this] { return tr("&Undo %1").arg(undo_->undoText()); }),
       Command("mnuRedo", tr("&Redo"), [this] { Step(&QUndoStack::redo); })
           .On(QKeySequence::Redo)
           .When([this] { return undo_->canRedo(); }, tr("Nothing has been undone."))
           .Named([this] { return tr("&Redo %1").arg(undo_->redoText()); }),
       Separator(),
       Command("mnuCut", tr("Cu&t"),
               [this] {
                 Copy();
                 Delete();
               })
           .On(QKeySequence::Cut)
           .When(some, noneChosen),
       row("mnuCopy", tr("&Copy"), &frmHotKeys::Copy).On(QKeySequence::Copy),
       Command("mnuPaste", tr("&Paste"), [this] { Paste(); })
           .On(QKeySequence::Paste)
           .Told(tr("Rows go before the chosen one")),
       row("mnuDelete", tr("&Delete"), &frmHotKeys::Delete).On(QKeySequence::Delete), Separator(),
       Command("mnuSelectAll", tr("Select &All"),
               [this] {
                 picHotKeys_->selectAll();
                 picHotKeys_->setFocus();
               })
           .On(QKeySequence::SelectAll)
           .When([] { return !Game.HotKeys.empty(); }, tr("There are no Hot-Keys.")),
       Separator(),
       Command("mnuOpenInAutoBet", tr("&Open in Auto-Bet"), [this] { OpenInEditor(); })
           .When([this] { return Chosen().size() == 1 && TableAtRest(); },
                 tr("Choose one row, while neither dice nor a script are at work."))});
}

void frmHotKeys::ShowRecord() {
  rows_->Refresh();
  lblNoHotKeys_->setVisible(Game.HotKeys.empty());
  lblDamaged_->setVisible(Game.HotKeysDamaged);
}

void frmHotKeys::Opened() { cmbKey_->setCurrentIndex(FreeKey()); }

/// A change that couldn't be written is tried once more; it has been told, and is again.
bool frmHotKeys::MayClose() {
  if (Game.HotKeysUnsaved) SaveHotKeys();
  return true;
}

bool frmHotKeys::TakeKey(QKeyEvent& event) {
  if (event.key() != Qt::Key_Return && event.key() != Qt::Key_Enter) return false;
  if (!picHotKeys_->hasFocus() || Chosen().size() != 1) return false;
  LoadBack(static_cast<int>(Chosen()[0]));
  return true;
}

bool frmHotKeys::eventFilter(QObject* watched, QEvent* event) {
  if (watched != txtAutoBetFile_ || event->type() != QEvent::MouseButtonDblClick)
    return Screen::eventFilter(watched, event);
  Do([this] { SelectFile(); });
  return true;
}

// ---- The boxes ----

HotKey frmHotKeys::Boxes() const {
  return {static_cast<char>('A' + cmbKey_->currentIndex()), txtAutoBetFile_->text().toStdString(),
          txtDescription_->text().toStdString()};
}

void frmHotKeys::ShowInBoxes(const HotKey& row) {
  cmbKey_->setCurrentIndex(IndexOfKey(row.Key));
  txtAutoBetFile_->setText(Text(row.File));
  txtDescription_->setText(Text(row.Description));
}

void frmHotKeys::SelectFile() {
  if (!RunFileScreen(this, FileCommand::SelectHotKeyScript)) return;
  txtAutoBetFile_->setText(Text(HotKeyFileName(Game.SelectedFileName)));
  txtDescription_->setFocus();
}

void frmHotKeys::Add() {
  const std::optional<HotKey> row = CheckedHotKey(Boxes());
  if (!row) return txtAutoBetFile_->setFocus();
  const std::size_t last = Game.HotKeys.size();
  Edit(tr("Add"), [&] { InsertHotKeys(last, {*row}); });
  Choose(last, 1);
  ShowInBoxes({static_cast<char>('A' + FreeKey()), "", ""});
  cmbKey_->setFocus();
}

void frmHotKeys::Change() {
  const std::vector<std::size_t> chosen = Chosen();
  if (chosen.size() != 1) return;
  if (const std::optional<HotKey> row = CheckedHotKey(Boxes()))
    Edit(tr("Change"), [&] { ReplaceHotKey(chosen[0], *row); });
}

// ---- The rows ----

std::vector<std::size_t> frmHotKeys::Chosen() const {
  std::vector<std::size_t> places;
  for (const int row : SelectedRows(picHotKeys_)) places.push_back(static_cast<unsigned>(row));
  return places;
}

/// Before the first row that is chosen, else behind all.
std::size_t frmHotKeys::PlaceToInsert() const {
  const std::vector<std::size_t> chosen = Chosen();
  return chosen.empty() ? Game.HotKeys.size() : chosen.front();
}

void frmHotKeys::Choose(std::size_t first, std::size_t count) {
  picHotKeys_->clearSelection();
  if (count == 0) return;
  const QModelIndex from = rows_->index(static_cast<int>(first), KeyColumn);
  const QModelIndex to = rows_->index(static_cast<int>(first + count) - 1, DescriptionColumn);
  picHotKeys_->setCurrentIndex(from);
  picHotKeys_->selectionModel()->select({from, to}, QItemSelectionModel::ClearAndSelect);
  picHotKeys_->scrollTo(to);
}

void frmHotKeys::LoadBack(int row) {
  ShowInBoxes(RowAt(row));
  txtAutoBetFile_->setFocus();
}

void frmHotKeys::Copy() {
  std::vector<HotKey> rows;
  for (const std::size_t place : Chosen()) rows.push_back(Game.HotKeys[place]);
  QApplication::clipboard()->setText(Text(TextOfHotKeys(rows)));
}

void frmHotKeys::Paste() {
  const auto rows = HotKeysToPaste(QApplication::clipboard()->text().toStdString());
  if (!rows || rows->empty()) return;
  const std::size_t place = PlaceToInsert();
  Edit(tr("Paste"), [&] { InsertHotKeys(place, *rows); });
  Choose(place, rows->size());
}

void frmHotKeys::Delete() {
  const std::vector<std::size_t> chosen = Chosen();
  if (chosen.empty()) return;
  Edit(tr("Delete"), [&] { DeleteHotKeys(chosen); });
  if (!Game.HotKeys.empty()) Choose(std::min(chosen.front(), Game.HotKeys.size() - 1), 1);
}

void frmHotKeys::OpenInEditor() {
  const std::string path = HotKeyPath(Game.HotKeys[Chosen().at(0)]);
  if (!MayReplaceScript()) return;
  OpenScript(path);
  if (Game.LastFileResult > 0) ShowScreen(AutoBetWindow);
}

bool frmHotKeys::TakeCell(int row, std::string HotKey::*text, const QString& typed) {
  HotKey changed = RowAt(row);
  changed.*text = typed.toStdString();
  const std::optional<HotKey> checked = CheckedHotKey(changed);
  if (!checked) return false;
  if (*checked != RowAt(row))
    Edit(tr("Change"), [&] { ReplaceHotKey(static_cast<unsigned>(row), *checked); });
  return true;
}

void frmHotKeys::Edit(const QString& name, const std::function<void()>& act) {
  const std::vector<HotKey> before = Game.HotKeys;
  act();
  undo_->push(new TableChange(name, before));
  Refresh();
}

void frmHotKeys::Step(void (QUndoStack::*direction)()) { (undo_->*direction)(); }

Report frmHotKeys::HotKeysReport() {
  const QString date = QLocale().toString(QDate::currentDate(), QLocale::LongFormat);
  return {.Title = tr("Kelvanor Hot-Keys"),
          .Heading = {Text(HotKeyHeading(date.toStdString()))},
          .Columns = {tr("Key"), tr("Auto-Bet File"), tr("Description")},
          .Rows = RowCount(),
          .Row = [](int row) {
            return QStringList{KeyText(row), FileText(row), DescriptionText(row)};
          }};
}
