// What each bet pays, and each kind of throw on the Field.
#include <QGridLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <QTableView>

#include "core/game_state.h"
#include "core/help_topics.h"
#include "core/host.h"
#include "core/messages.h"
#include "rules/advantage_table.h"
#include "rules/defaults.h"
#include "rules/payoff_cells.h"
#include "rules/presets.h"
#include "screens/frame/bind.h"
#include "screens/frame/controls.h"
#include "screens/frame/numeric_entry.h"
#include "screens/frame/player_change.h"
#include "screens/frame/record_model.h"
#include "screens/frame/report.h"
#include "screens/rules/config_page.h"

namespace {

/// Columns of a grid: the label, then those of the record.
enum Column : int { LabelColumn = 0, WinColumn, WordColumn, PerColumn, kColumns };

constexpr int kFirstFieldColumn = kColumns - WinColumn;  // of the kept place, behind the bets'

PayoffCell CellAt(PayoffGrid grid, const QModelIndex& index) {
  return {grid, index.row(), static_cast<PayoffColumn>(index.column() - WinColumn)};
}

/// The table shows payoffs; the bets on it follow when the screen closes.
void ChangePayoffs(const std::function<void()>& change) {
  ChangeByPlayer([change] {
    change();
    TheHost.RedrawLayout();
  });
}

/// The box that moves over a grid. Arrow keys at its ends go on to the next cell.
class PayoffBox : public QStyledItemDelegate {
 public:
  PayoffBox(QObject* parent, PayoffGrid grid) : QStyledItemDelegate(parent), grid_(grid) {}

  QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem&,
                        const QModelIndex& index) const override {
    const PayoffCell cell = CellAt(grid_, index);
    auto* box = New<QLineEdit>("txtPayoff", parent);
    box->setAccessibleName(index.siblingAtColumn(LabelColumn).data().toString());
    box->setFrame(false);
    box->setMaxLength(kMoneyLength);
    MakeNumericBox(box, PayoffCellDecimals(cell), PayoffCellTakesMinus(cell));
    return box;
  }

  bool eventFilter(QObject* editor, QEvent* event) override {
    auto* box = qobject_cast<QLineEdit*>(editor);
    if (box && event->type() == QEvent::KeyPress) {
      const int key = static_cast<QKeyEvent*>(event)->key();
      const bool whole = box->hasSelectedText() || box->text().isEmpty();
      const bool atStart = whole || box->cursorPosition() == 0;
      const bool atEnd = whole || box->cursorPosition() == box->text().size();
      if ((key == Qt::Key_Left && atStart) || (key == Qt::Key_Right && atEnd)) {
        QCoreApplication::sendEvent(parent(), event);
        return true;
      }
    }
    return QStyledItemDelegate::eventFilter(editor, event);
  }

 private:
  PayoffGrid grid_;
};

/// A grid of payoffs, edited by keyboard alone: a number in its box, the word by a letter.
class PayoffView : public QTableView {
 public:
  PayoffView(PayoffGrid grid, int rows, std::function<QString(int)> label) : grid_(grid) {
    setObjectName(grid == PayoffGrid::Bets ? "picPayoffs" : "picFieldPayoffs");
    payoffs_ = new RecordModel(
        this, [rows] { return rows; },
        {{.Heading = LabelHeading(), .Text = std::move(label), .Idle = true, .Ink = LabelInk()},
         Number(QObject::tr("Wins"), PayoffColumn::Win),
         {.Text =
              [grid](int row) {
                return TextAt({grid, row, PayoffColumn::Word});
              },
          .Alignment = Qt::AlignHCenter,
          .ToolTip =
              [](int) { return QObject::tr("Press T for to, F for for, blank for the other."); }},
         Number(QObject::tr("Bet"), PayoffColumn::Per)});
    setModel(payoffs_);
    setItemDelegate(new PayoffBox(this, grid));
    setEditTriggers(CurrentChanged | SelectedClicked | EditKeyPressed | AnyKeyPressed);
    setSelectionMode(SingleSelection);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollMode(ScrollPerPixel);
    verticalHeader()->hide();
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setSectionResizeMode(LabelColumn, QHeaderView::Stretch);
    const int digits = fontMetrics().horizontalAdvance("0000000");
    for (const int column : {WinColumn, PerColumn}) setColumnWidth(column, digits + 16);
    setColumnWidth(WordColumn, fontMetrics().horizontalAdvance("000for"));
    setMinimumWidth(fontMetrics().horizontalAdvance("Pass/Come 10 Odds 0") + 3 * digits + 60);
    setTabKeyNavigation(true);
    QObject::connect(this, &QTableView::clicked, this, [this](const QModelIndex& index) {
      if (index.column() == LabelColumn) setCurrentIndex(index.siblingAtColumn(WinColumn));
    });
  }

  void Refresh() { payoffs_->Refresh(); }

  void GoTo(int row, int column) {
    setCurrentIndex(payoffs_->index(row, column));
    scrollTo(currentIndex());
  }

  /// What is typed in the open box is taken.
  void TakeOpenBox() {
    const QModelIndex at = currentIndex();
    if (QWidget* box = at.isValid() ? indexWidget(at) : nullptr) {
      commitData(box);
      closeEditor(box, QAbstractItemDelegate::NoHint);
    }
  }

 protected:
  void keyPressEvent(QKeyEvent* event) override {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
      GoTo(std::min(currentIndex().row() + 1, payoffs_->rowCount() - 1), currentIndex().column());
    } else if (currentIndex().column() == WordColumn && PressWordKey(*event)) {
      return;
    } else {
      QTableView::keyPressEvent(event);
    }
  }

 private:
  static QString LabelHeading() { return QObject::tr("Bet or throw"); }
  std::function<QColor(int)> LabelInk() {
    return [this](int) { return palette().color(QPalette::Text); };
  }

  static QString TextAt(const PayoffCell& cell) {
    return QString::fromStdString(PayoffCellText(cell));
  }

  ListColumn Number(const QString& heading, PayoffColumn column) {
    return {.Heading = heading,
            .Text =
                [grid = grid_, column](int row) {
                  return TextAt({grid, row, column});
                },
            .Alignment = Qt::AlignRight,
            .Take =
                [grid = grid_, column](int row, const QString& text) {
                  const PayoffCell cell{grid, row, column};
                  if (text != TextAt(cell))
                    ChangePayoffs([cell, text] { CommitPayoffCell(cell, text.toStdString()); });
                  return true;
                }};
  }

  /// Letters that mean nothing are swallowed; what moves or commands goes its way.
  bool PressWordKey(const QKeyEvent& event) {
    const QString typed = event.text();
    if (typed.isEmpty() || !typed[0].isPrint()) return false;
    const int key = typed[0].unicode();
    if (key == ' ' || typed.toLower() == "t" || typed.toLower() == "f") {
      ChangePayoffs([cell = CellAt(grid_, currentIndex()), key] { PressPayoffWordKey(cell, key); });
    }
    return true;
  }

  PayoffGrid grid_;
  RecordModel* payoffs_ = nullptr;
};

void RestorePayoffs() {
  if (AskYesNo("Do you want to restore all payoffs to \ntheir original Kelvanor settings?",
               "Confirm?", kTopicConfigurePayoffs))
    ChangePayoffs(SetDefaultPayoffs);
}

class PayoffsPage : public ConfigPage {
  Q_DECLARE_TR_FUNCTIONS(PayoffsPage)

 public:
  PayoffsPage() {
    bets_ = new PayoffView(PayoffGrid::Bets, kPayoffRows, [](int row) {
      return Text(PayoffRows()[static_cast<unsigned>(row)].Label);
    });
    field_ = new PayoffView(PayoffGrid::Field, kFieldCombinations,
                            [](int row) { return Text(kFieldLabels[static_cast<unsigned>(row)]); });
    bets_->setAccessibleName(tr("Payoffs of the bets"));
    field_->setAccessibleName(tr("Payoffs of the Field"));
    bets_->verticalScrollBar()->setObjectName("vsbPayoffs");
    QGridLayout* grid = new QGridLayout(this);
    grid->addWidget(new QLabel(tr("Bets")), 0, 0);
    grid->addWidget(new QLabel(tr("Field")), 0, 1);
    grid->addWidget(bets_, 1, 0);
    grid->addWidget(field_, 1, 1);
    grid->setRowStretch(1, 1);
  }

  std::vector<TabMenu> MenusOfTab() override {
    std::vector<MenuRow> presets;
    for (int i = 0; i < kFieldPresets; ++i) {
      presets.push_back(Command(QString("mnuSetField_%1").arg(i),
                                Text(kFieldPresetNames[static_cast<unsigned>(i)]), [this, i] {
                                  field_->TakeOpenBox();
                                  ChangePayoffs([i] {
                                    SetFieldPreset(i);
                                    DeriveFieldPer();
                                  });
                                }));
    }
    return {{"mnuOptionsPayoffs",
             tr("&Options"),
             {PayoffsTab},
             {Submenu("mnuSetFieldPayoffs", tr("&Set Field payoffs to"), std::move(presets)),
              Command("mnuRestorePayoffs", tr("&Restore default payoffs"), RestorePayoffs)}},
            {"mnuPrintAdvPay",
             tr("Pri&nt"),
             {PayoffsTab, AdvantageTab},
             {Command("mnuPrintPayoffs", tr("&Payoffs with their advantages"), [this] {
                bets_->TakeOpenBox();
                field_->TakeOpenBox();
                PrintReport(window(), ReportOf(PayoffSheet()));
              }).On(QKeySequence::Print)}}};
  }

  void ShowRecord() override {
    bets_->Refresh();
    field_->Refresh();
    if (!placed_) FindPlace();
  }

  QWidget* BoxOf(ConfigBox box, int index) override {
    PayoffView* view = box == ConfigBox::BetPayoff     ? bets_
                       : box == ConfigBox::FieldPayoff ? field_
                                                       : nullptr;
    if (view) view->GoTo(index, WinColumn);
    return view;
  }

  void Leave() override {
    bets_->TakeOpenBox();
    field_->TakeOpenBox();
    if (!isVisible()) return;
    const bool inField = field_->hasFocus() || field_->isAncestorOf(focusWidget());
    const QModelIndex at = (inField ? field_ : bets_)->currentIndex();
    Game.PayoffsScroll = bets_->verticalScrollBar()->value();
    if (!at.isValid()) return;
    Game.PayoffCellTop = at.row();
    Game.PayoffCellLeft = at.column() - WinColumn + (inField ? kFirstFieldColumn : 0);
  }

 private:
  /// The cell that was left last.
  void FindPlace() {
    placed_ = true;
    const bool inField = Game.PayoffCellLeft >= kFirstFieldColumn;
    const int rows = inField ? kFieldCombinations : kPayoffRows;
    const int column = Game.PayoffCellLeft % kFirstFieldColumn + WinColumn;
    (inField ? field_ : bets_)->GoTo(std::clamp(Game.PayoffCellTop, 0, rows - 1), column);
    bets_->verticalScrollBar()->setValue(Game.PayoffsScroll);
  }

  PayoffView* bets_ = nullptr;
  PayoffView* field_ = nullptr;
  bool placed_ = false;
};

}  // namespace

ConfigPage* MakePayoffsPage() { return new PayoffsPage; }
