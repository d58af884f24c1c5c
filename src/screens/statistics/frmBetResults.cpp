#include "screens/statistics/frmBetResults.h"

#include <QGridLayout>
#include <QItemSelectionModel>
#include <QLabel>
#include <QListView>
#include <QRadioButton>
#include <QSplitter>
#include <QVBoxLayout>

#include "core/game_state.h"
#include "core/help_topics.h"
#include "core/text.h"
#include "screens/frame/bind.h"
#include "screens/frame/controls.h"
#include "screens/frame/player_change.h"
#include "screens/statistics/figure_view.h"

namespace {

constexpr QSize kSmallest(520, 360);
constexpr QSize kAtStart(860, 480);
constexpr int kBetweenFigures = 16;
constexpr int kListEdges = 28;           // the scroll bar and the frame of a list
constexpr double kLeastHeadFont = 0.66;  // of the usual letters

/// Writes a figure in the largest letters that let it fit.
void ShowFitting(QLabel* label, const std::string& text) {
  QFont font = label->parentWidget()->font();
  const double least = font.pointSizeF() * kLeastHeadFont;
  while (font.pointSizeF() - 1 >= least &&
         QFontMetrics(font).horizontalAdvance(Text(text)) > label->width())
    font.setPointSizeF(font.pointSizeF() - 1);
  if (label->font() != font) label->setFont(font);
  ShowFigure(label, text);
}

RecordField<int> DataType() {
  return {[] { return static_cast<int>(KeptSelection().Data); },
          [](int data) {
            BetSelection selection = KeptSelection();
            selection.Data = static_cast<BetData>(data);
            KeepSelection(selection);
          }};
}

}  // namespace

frmBetResults::frmBetResults(QWidget* table)
    : Screen(table, "frmBetResults", tr("Bet Results"), kTopicBetResults) {
  QSplitter* halves = new QSplitter(this);
  halves->addWidget(MakeChoice());
  halves->addWidget(MakePanel());
  halves->setStretchFactor(1, 1);
  halves->setChildrenCollapsible(false);
  setCentralWidget(halves);
  MenuBar().Add("mnuFile", tr("&File"), ReportRows(this, [] {
                  const BetSelection selection = KeptSelection();
                  return ReportOf(TableOf(FigureBetResults(selection), selection));
                }));
  SetSizes(kSmallest, kAtStart);
}

QWidget* frmBetResults::MakeChoice() {
  bets_ = new RecordModel(this, [] { return LastBet; },
                          {{.Text = [](int row) { return Text(BetName(row + Lay4)); }}});
  lstBets_ = new QListView;
  lstBets_->setObjectName("lstBets");
  lstBets_->setAccessibleName(tr("Bets"));
  lstBets_->setSelectionMode(QAbstractItemView::ExtendedSelection);
  lstBets_->setUniformItemSizes(true);
  lstBets_->setModel(bets_);
  lstBets_->setMinimumWidth(lstBets_->sizeHintForColumn(0) + kListEdges);
  connect(lstBets_->selectionModel(), &QItemSelectionModel::selectionChanged, this,
          [this] { TakeSelection(); });
  QWidget* panel = new QWidget;
  QVBoxLayout* column = new QVBoxLayout(panel);
  column->addWidget(lstBets_, 1);
  AddButton(column, "cmdSelectAll", tr("Select &All"), tr("Select all bets"), [this] {
    lstBets_->selectAll();
    lstBets_->setFocus();
  });
  return panel;
}

QLabel* frmBetResults::AddHeadFigure(QGridLayout* grid, int column, const QString& caption,
                                     const char* name) {
  QLabel* figure = NewFigureLabel(name, "100,000,000");
  figure->setAccessibleName(caption);
  grid->addWidget(new QLabel(caption), 0, column * 2);
  grid->addWidget(figure, 0, column * 2 + 1);
  grid->setColumnStretch(column * 2 + 1, 1);
  return figure;
}

QWidget* frmBetResults::MakePanel() {
  QWidget* panel = new QWidget;
  QVBoxLayout* column = new QVBoxLayout(panel);
  for (int i = 0; i < static_cast<int>(kBetDataCaptions.size()); ++i) {
    QRadioButton* option = new QRadioButton(Text(kBetDataCaptions[static_cast<unsigned>(i)]));
    option->setObjectName(QString("optDataType_%1").arg(i));
    if (i == static_cast<int>(BetData::AllGames)) option->setToolTip(Text(kAllGamesTip));
    Bind(option, DataType(), i);
    column->addWidget(option);
  }
  QWidget* paper = new QWidget;
  PutOnPaper(paper);
  column->addWidget(paper, 1);
  QVBoxLayout* lines = new QVBoxLayout(paper);
  QGridLayout* head = new QGridLayout;
  head->setHorizontalSpacing(kBetweenFigures);
  lblNumRolls_ = AddHeadFigure(head, 0, tr("Total rolls:"), "lblNumRolls");
  lblRollsPerHour_ = AddHeadFigure(head, 1, tr("Rolls / hr:"), "lblRollsPerHour");
  lblHours_ = AddHeadFigure(head, 2, tr("Sim hrs:"), "lblHours");
  lines->addLayout(head);

  QGridLayout* grid = new QGridLayout;
  grid->setHorizontalSpacing(14);
  grid->setVerticalSpacing(3);
  const char* names[kColumns + 1] = {"lblLeftSide", "lblWagers", "lblWins",
                                     "lblLosses",   "lblNet",    "lblNetPct"};
  const QString headings[kColumns + 1] = {{},           tr("Wagers"), tr("Wins"),
                                          tr("Losses"), tr("Net"),    tr("Net %")};
  for (int at = 0; at <= kColumns; ++at) {
    QLabel* heading = new QLabel(headings[at]);
    QFont bold = heading->font();
    bold.setBold(true);
    heading->setFont(bold);
    grid->addWidget(heading, 0, at, at == 0 ? Qt::AlignLeft : Qt::AlignRight);
    for (int row = 0; row < kBetResultsRows; ++row) {
      QLabel* cell = NewFigureLabel(QString("%1_%2").arg(names[at]).arg(row), {});
      if (at == 0) cell->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
      grid->addWidget(cell, row + 1, at);
      cells_[static_cast<unsigned>(row)][static_cast<unsigned>(at)] = cell;
    }
    if (at > 0) grid->setColumnStretch(at, 1);
  }
  lines->addLayout(grid);
  QGridLayout* foot = new QGridLayout;
  foot->setHorizontalSpacing(kBetweenFigures);
  lblOnBets_ = AddHeadFigure(foot, 0, tr("On these bets now:"), "lblOnBets");
  lblOnBetsLastRoll_ = AddHeadFigure(foot, 1, tr("At the last roll:"), "lblOnBetsLastRoll");
  lines->addLayout(foot);
  lblLuck_ = NewFigureLabel("lblLuck", {});
  lblLuck_->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  lblLuck_->setWordWrap(true);
  foot->addWidget(new QLabel(tr("Luck:")), 1, 0, Qt::AlignTop);
  foot->addWidget(lblLuck_, 1, 1, 1, 3);
  lblEmpty_ = NewFigureLabel("lblEmpty", {});
  lblEmpty_->setAlignment(Qt::AlignCenter);
  lblEmpty_->setWordWrap(true);
  lines->addWidget(lblEmpty_);
  lines->addStretch(1);
  return panel;
}

// ---- The selection ----

void frmBetResults::TakeSelection() {
  if (showing_) return;
  BetSelection selection = KeptSelection();
  selection.Selected.fill(false);
  for (const int row : SelectedRows(lstBets_))
    selection.Selected[static_cast<unsigned>(row + Lay4)] = true;
  ChangeByPlayer([selected = selection.Selected] {
    BetSelection kept = KeptSelection();
    kept.Selected = selected;
    KeepSelection(kept);
  });
}

void frmBetResults::ShowSelection() {
  const BetSelection selection = KeptSelection();
  QItemSelection rows;
  for (int row = 0; row < LastBet; ++row) {
    if (!selection.Selected[static_cast<unsigned>(row + Lay4)]) continue;
    const QModelIndex index = bets_->index(row, 0);
    rows.select(index, index);
  }
  if (lstBets_->selectionModel()->selection().indexes().size() == rows.indexes().size() &&
      std::equal(rows.begin(), rows.end(), rows.begin(), [&](const auto& range, const auto&) {
        return lstBets_->selectionModel()->isSelected(range.indexes().first());
      }))
    return;
  showing_ = true;
  lstBets_->selectionModel()->select(rows, QItemSelectionModel::ClearAndSelect);
  showing_ = false;
}

// ---- What is shown ----

void frmBetResults::ShowRecord() {
  ShowSelection();
  const BetResults results = FigureBetResults(KeptSelection());
  ShowFitting(lblNumRolls_, results.TotalRolls);
  ShowFitting(lblRollsPerHour_, results.RollsPerHour);
  ShowFitting(lblHours_, results.SimHours);
  ShowFigure(lblOnBets_, results.OnBets);
  ShowFigure(lblOnBetsLastRoll_, results.OnBetsLastRoll);
  ShowFigure(lblLuck_, results.Luck);
  lblLuck_->setToolTip(Text(results.LuckTip));
  ShowFigure(lblEmpty_, results.Empty, PaletteDarkGray);
  lblEmpty_->setVisible(!results.Empty.empty());
  for (std::size_t row = 0; row < results.Rows.size() && row < cells_.size(); ++row) {
    const BetResultsRow& figures = results.Rows[row];
    const std::string* texts[] = {&figures.Label,  &figures.Wagers, &figures.Wins,
                                  &figures.Losses, &figures.Net,    &figures.NetPct};
    for (std::size_t at = 0; at < std::size(texts); ++at)
      ShowFigure(cells_[row][at], *texts[at], at >= 4 ? figures.NetColor : +PaletteBlack);
  }
}
