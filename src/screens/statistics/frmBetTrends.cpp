#include "screens/statistics/frmBetTrends.h"

#include <QHeaderView>
#include <QLabel>
#include <QTableView>
#include <QVBoxLayout>

#include "core/help_topics.h"
#include "screens/statistics/figure_view.h"

namespace {

constexpr QSize kSmallest(260, 200);
constexpr QSize kAtStart(340, 560);
constexpr const char* kWidestName = "Don't Come 10 Odds   ";

}  // namespace

frmBetTrends::frmBetTrends(QWidget* table)
    : Screen(table, "frmBetTrends", tr("Bet Trends"), kTopicBetTrends) {
  const auto at = [this](int row) -> const BetTrend& {
    return trends_[static_cast<unsigned>(row)];
  };
  rows_ =
      new RecordModel(this, [this] { return static_cast<int>(trends_.size()); },
                      {{.Heading = tr("Bet"),
                        .Text = [at](int row) { return QString::fromStdString(at(row).Name); }},
                       {.Heading = tr("Trend"),
                        .Text = [at](int row) { return QString::fromStdString(at(row).Streak); },
                        .Alignment = Qt::AlignRight,
                        .Ink = [at](int row) { return FigureInk(at(row).Color); }}});
  QTableView* list = new QTableView;
  list->setObjectName("lstBetTrends");
  list->setAccessibleName(tr("Trend of every bet"));
  PutOnPaper(list);
  list->setModel(rows_);
  list->setShowGrid(false);
  list->setAlternatingRowColors(true);
  list->setSelectionBehavior(QAbstractItemView::SelectRows);
  list->verticalHeader()->hide();
  list->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 4);
  list->horizontalHeader()->setHighlightSections(false);
  list->horizontalHeader()->setStretchLastSection(true);
  list->setColumnWidth(0, fontMetrics().horizontalAdvance(kWidestName) + 16);
  QLabel* heading = new QLabel(QString::fromUtf8(kBetTrendsHeading.data()));
  heading->setObjectName("lblHeading");
  heading->setWordWrap(true);
  QWidget* content = new QWidget(this);
  QVBoxLayout* column = new QVBoxLayout(content);
  column->addWidget(heading);
  column->addWidget(list, 1);
  setCentralWidget(content);
  MenuBar().Add("mnuFile", tr("&File"),
                ReportRows(this, [] { return ReportOf(TableOf(FigureBetTrends())); }));
  SetSizes(kSmallest, kAtStart);
}

void frmBetTrends::ShowRecord() {
  trends_ = FigureBetTrends();
  rows_->Refresh();
}
