// What every bet is worth under the rules and the dice in force.
#include <QAbstractTableModel>
#include <QHeaderView>
#include <QLabel>
#include <QScrollBar>
#include <QTableView>
#include <QVBoxLayout>

#include "core/game_state.h"
#include "rules/advantage_table.h"
#include "screens/frame/controls.h"
#include "screens/frame/player_change.h"
#include "screens/frame/report.h"
#include "screens/rules/config_page.h"

namespace {

/// The table of advantages, in the order given or sorted.
class AdvantageModel : public QAbstractTableModel {
 public:
  using QAbstractTableModel::QAbstractTableModel;

  void Refresh() {
    const bool others = rows_.empty();
    if (others) beginResetModel();
    rows_ = AdvantageRows();
    if (sorted_) SortAdvantages(rows_, column_ - 1, descending_);
    if (others) endResetModel();
    emit headerDataChanged(Qt::Horizontal, 0, kAdvantageColumns);
    emit dataChanged(index(0, 0), index(rowCount() - 1, kAdvantageColumns));
  }

  /// Up, down, and back to the order given.
  void SortBy(int column) {
    const bool again = sorted_ && column_ == column;
    sorted_ = !again || !descending_;
    descending_ = again && !descending_;
    column_ = column;
    Refresh();
  }

  void ShowOrder(QHeaderView* head) const {
    head->setSortIndicator(sorted_ ? column_ : -1,
                           descending_ ? Qt::DescendingOrder : Qt::AscendingOrder);
  }

  const std::vector<AdvantageRow>& Rows() const { return rows_; }

  int rowCount(const QModelIndex& parent = {}) const override {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
  }
  int columnCount(const QModelIndex& parent = {}) const override {
    return parent.isValid() ? 0 : kAdvantageColumns + 1;
  }
  QVariant data(const QModelIndex& index, int role) const override {
    const AdvantageRow& row = rows_[static_cast<unsigned>(index.row())];
    if (role == Qt::TextAlignmentRole) return Alignment(index.column());
    if (role != Qt::DisplayRole) return {};
    return Text(index.column() == 0 ? row.Label
                                    : row.Texts[static_cast<unsigned>(index.column() - 1)]);
  }
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override {
    if (orientation != Qt::Horizontal) return {};
    if (role == Qt::TextAlignmentRole) return Alignment(section);
    if (role != Qt::DisplayRole) return {};
    return section == 0 ? QObject::tr("Bet")
                        : Text(AdvantageHeads()[static_cast<unsigned>(section - 1)]);
  }

 private:
  static QVariant Alignment(int column) {
    return QVariant((column == 0 ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignVCenter);
  }

  std::vector<AdvantageRow> rows_;
  bool sorted_ = false;
  bool descending_ = false;
  int column_ = 0;
};

class AdvantagePage : public ConfigPage {
  Q_DECLARE_TR_FUNCTIONS(AdvantagePage)

 public:
  AdvantagePage() {
    QVBoxLayout* column = new QVBoxLayout(this);
    lblNote_ = New<QLabel>("lblAdvantageNote");
    column->addWidget(lblNote_);
    model_ = new AdvantageModel(this);
    view_ = New<QTableView>("picAdvantage");
    view_->setAccessibleName(tr("Advantages"));
    view_->verticalScrollBar()->setObjectName("vsbAdvantage");
    view_->setModel(model_);
    view_->setSelectionBehavior(QAbstractItemView::SelectRows);
    view_->setSelectionMode(QAbstractItemView::SingleSelection);
    view_->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    view_->setAlternatingRowColors(true);
    view_->setTabKeyNavigation(false);
    view_->verticalHeader()->hide();
    view_->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
    QHeaderView* head = view_->horizontalHeader();
    head->setSectionResizeMode(QHeaderView::Stretch);
    head->setMinimumSectionSize(fontMetrics().horizontalAdvance("StDev/Roll") + 28);
    head->setHighlightSections(false);
    head->setSectionsClickable(true);
    head->setSortIndicatorShown(true);
    head->setToolTip(tr("Click to sort; the third click brings the given order back."));
    model_->ShowOrder(head);
    connect(head, &QHeaderView::sectionClicked, this, [this, head](int section) {
      model_->SortBy(section);
      model_->ShowOrder(head);
    });
    column->addWidget(view_, 1);
  }

  std::vector<TabMenu> MenusOfTab() override {
    return {
        {"mnuOptionsAdvantage",
         tr("&Options"),
         {AdvantageTab},
         {Toggle("mnuIncludeZeroOutcomes", tr("Count &zero outcomes as decisions"),
                 Game.IncludeZeroOutcomes),
          Toggle("mnuShowMiscData", tr("Show &misc. roll, dec, and time data"), Game.ShowMiscData),
          Separator(),
          Command("mnuPrintAdvantages", tr("&Print the advantages"),
                  [this] { PrintReport(window(), Sheet()); })
              .On(QKeySequence("Ctrl+Shift+P")),
          Command("mnuCopyAdvantages", tr("&Copy as text"), [this] {
            CopyReport(Sheet());
          }).On(QKeySequence::Copy)}}};
  }

  void ShowRecord() override {
    lblNote_->setText(Game.ShowMiscData ? QString() : Text(kAdvantageNote));
    model_->Refresh();
    if (placed_) return;
    placed_ = true;
    view_->verticalScrollBar()->setValue(Game.AdvantageScroll);
  }

  void Leave() override {
    if (isVisible()) Game.AdvantageScroll = view_->verticalScrollBar()->value();
  }

 private:
  Report Sheet() const { return ReportOf(AdvantageSheet(model_->Rows())); }

  QLabel* lblNote_ = nullptr;
  AdvantageModel* model_ = nullptr;
  QTableView* view_ = nullptr;
  bool placed_ = false;
};

}  // namespace

ConfigPage* MakeAdvantagePage() { return new AdvantagePage; }
