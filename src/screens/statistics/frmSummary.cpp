#include "screens/statistics/frmSummary.h"

#include <QGridLayout>
#include <QLabel>
#include <QMenuBar>
#include <QScrollArea>

#include "core/help_topics.h"
#include "screens/frame/controls.h"
#include "screens/statistics/figure_view.h"

namespace {

constexpr int kColumns = 3;
constexpr QSize kSmallest(420, 300);
constexpr QSize kAtStart(930, 330);

}  // namespace

frmSummary::frmSummary(QWidget* table) : Screen(table, "frmSummary", tr("Summary"), kTopicSummary) {
  QWidget* content = new QWidget;
  PutOnPaper(content);
  QGridLayout* grid = new QGridLayout(content);
  grid->setContentsMargins(16, 12, 16, 12);
  grid->setHorizontalSpacing(36);
  grid->setVerticalSpacing(18);
  int at = 0;
  for (const SummaryGroup& group : FigureSummary()) {
    grid->addWidget(MakeGroup(group), at / kColumns, at % kColumns, Qt::AlignTop);
    ++at;
  }
  grid->setRowStretch(grid->rowCount(), 1);
  for (int column = 0; column < kColumns; ++column) grid->setColumnStretch(column, 1);
  setCentralWidget(Scrolling(content));
  MenuBar().Add("mnuFile", tr("&File"),
                ReportRows(this, [] { return ReportOf(TableOf(FigureSummary())); }));
  SetSizes(kSmallest, kAtStart);
}

QWidget* frmSummary::MakeGroup(const SummaryGroup& group) {
  QWidget* panel = new QWidget;
  QGridLayout* grid = new QGridLayout(panel);
  grid->setContentsMargins(0, 0, 0, 0);
  grid->setHorizontalSpacing(14);
  grid->setVerticalSpacing(3);
  if (!group.Heading.empty()) {
    QLabel* heading = new QLabel(Text(group.Heading).trimmed());
    QFont bold = heading->font();
    bold.setBold(true);
    heading->setFont(bold);
    grid->addWidget(heading, 0, 0, 1, 2);
  }
  int line = 1;
  for (const SummaryRow& row : group.Rows) {
    QLabel* name = new QLabel(Text(row.Label));
    name->setObjectName(Text(row.LabelControl));
    QLabel* figure = NewFigureLabel(Text(row.Control), "-100,000,000.00");
    figure->setAccessibleName(Text(row.Label));
    grid->addWidget(name, line, 0);
    grid->addWidget(figure, line, 1);
    rows_.push_back({name, figure});
    ++line;
  }
  grid->setColumnStretch(0, 1);
  return panel;
}

void frmSummary::ShowRecord() {
  auto labels = rows_.begin();
  for (const SummaryGroup& group : FigureSummary()) {
    for (const SummaryRow& row : group.Rows) {
      ShowFigure(labels->Name, row.Label);
      ShowFigure(labels->Figure, row.Text, row.Color);
      ++labels;
    }
  }
}
