#include "screens/statistics/frmRollFreqs.h"

#include <QComboBox>
#include <QCompleter>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHelpEvent>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QToolTip>
#include <QVBoxLayout>
#include <algorithm>

#include "core/game_state.h"
#include "core/help_topics.h"
#include "screens/frame/bind.h"
#include "screens/frame/chrome.h"
#include "screens/frame/controls.h"
#include "screens/statistics/figure_view.h"

namespace {

constexpr QSize kSmallest(560, 380);
constexpr QSize kAtStart(900, 640);
constexpr double kGapColumnSpace = 8;
constexpr double kMargin = 8;
const QColor kRule(0xC8, 0xC8, 0xC8);
const QColor kCurve(0xE0, 0x70, 0x20);

/// The place of a gap among eight columns of 25, from the top down.
QRectF CellOf(QRectF area, int gap) {
  const QRectF inner = area.adjusted(kMargin, kMargin, -kMargin, -kMargin);
  const double width = inner.width() / kGapColumns;
  const double height = inner.height() / kGapRows;
  return {inner.left() + (gap - 1) / kGapRows * width, inner.top() + (gap - 1) % kGapRows * height,
          width - kGapColumnSpace, height};
}

GapInks InksOnScreen() {
  GapInks inks{PaperColor(), InkOnPaper(Qt::gray), FigureInk(PaletteBlue), FigureInk(PaletteBlack)};
  // Figures stand on the bars, too.
  if (PaperColor().lightness() < 128) inks.Bar = QColor(0x2F, 0x55, 0x78);
  return inks;
}

}  // namespace

// ---- picGaps ----

picGapsBox::picGapsBox(QWidget* parent) : QWidget(parent) {
  setObjectName("picGaps");
  setAccessibleName(tr("Gaps between occurrences"));
  setAttribute(Qt::WA_OpaquePaintEvent);
  const QFontMetrics metrics(font());
  setMinimumSize(kGapColumns * metrics.horizontalAdvance("200+ 10,000"),
                 kGapRows * metrics.height() * 5 / 9);
}

void picGapsBox::Show(const RollFreqs& freqs) {
  freqs_ = freqs;
  update();
}

void picGapsBox::Paint(QPainter& painter, QRectF area, const RollFreqs& freqs,
                       const GapInks& inks) {
  painter.fillRect(area, inks.Paper);
  painter.setRenderHint(QPainter::Antialiasing);
  if (!freqs.Empty.empty()) {
    painter.setPen(inks.Remark);
    painter.drawText(area, Qt::AlignCenter | Qt::TextWordWrap, Text(freqs.Empty));
  }
  QFont font = painter.font();
  const double height = CellOf(area, 1).height();
  font.setPixelSize(std::max(6, std::min(13, static_cast<int>(height * 0.82))));
  painter.setFont(font);
  const QFontMetricsF metrics(font);
  const double numbers = metrics.horizontalAdvance("200+ ");
  for (const GapRow& gap : freqs.Gaps) {
    const QRectF cell = CellOf(area, gap.Gap);
    const QRectF bars = cell.adjusted(numbers, 1, 0, -1);
    const double scale = freqs.HighestGap > 0 ? bars.width() / freqs.HighestGap : 0;
    if (gap.Tally > 0) {
      painter.fillRect(QRectF(bars.left(), bars.top(), gap.Tally * scale, bars.height()), inks.Bar);
      painter.setPen(kRule);
      painter.drawLine(QPointF(bars.left(), cell.top()), QPointF(bars.left(), cell.bottom()));
    }
    if (gap.Expected * scale >= 1) {
      const double x = bars.left() + gap.Expected * scale;
      painter.setPen(QPen(kCurve, 1.6));
      painter.drawLine(QPointF(x, cell.top()), QPointF(x, cell.bottom()));
    }
    painter.setPen(inks.Name);
    painter.drawText(QRectF(cell.left(), cell.top(), numbers - 4, cell.height()),
                     Qt::AlignRight | Qt::AlignVCenter, Text(gap.GapText));
    painter.setPen(inks.Figure);
    painter.drawText(bars.adjusted(3, 0, 0, 0), Qt::AlignLeft | Qt::AlignVCenter,
                     Text(gap.TallyText));
  }
}

void picGapsBox::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  Paint(painter, rect(), freqs_, InksOnScreen());
}

bool picGapsBox::event(QEvent* event) {
  if (event->type() != QEvent::ToolTip) return QWidget::event(event);
  const auto* help = static_cast<QHelpEvent*>(event);
  const auto over = std::find_if(freqs_.Gaps.begin(), freqs_.Gaps.end(), [&](const GapRow& gap) {
    return CellOf(rect(), gap.Gap).contains(help->pos());
  });
  if (over == freqs_.Gaps.end()) {
    QToolTip::hideText();
  } else {
    QToolTip::showText(help->globalPos(),
                       tr("%1 rolls later: %2 times, %3 expected")
                           .arg(over->Gap)
                           .arg(over->Tally)
                           .arg(over->Expected, 0, 'f', 1),
                       this);
  }
  return true;
}

// ---- frmRollFreqs ----

frmRollFreqs::frmRollFreqs(QWidget* table)
    : Screen(table, "frmRollFreqs", tr("Roll Frequencies"), kTopicRollFrequencies) {
  QWidget* content = new QWidget(this);
  QVBoxLayout* column = new QVBoxLayout(content);
  QHBoxLayout* head = new QHBoxLayout;
  head->addWidget(MakeChoice());
  head->addStretch(1);
  QLabel* legend = new QLabel(tr("Bars: gaps seen.  Orange: expected of such dice."));
  legend->setObjectName("lblLegend");
  head->addWidget(legend);
  column->addLayout(head);
  column->addWidget(MakeFigures());
  picGaps_ = new picGapsBox(content);
  column->addWidget(picGaps_, 1);
  setCentralWidget(content);
  MenuBar().Add("mnuFile", tr("&File"), ReportRows(this, [this] { return Print(); }));
  SetSizes(kSmallest, kAtStart);
}

/// The list is found in by typing: any part of an item will do.
QComboBox* frmRollFreqs::MakeChoice() {
  QComboBox* list = new QComboBox;
  list->setObjectName("cmbFreqNum");
  list->setAccessibleName(tr("Roll event"));
  for (const FreqItem& item : FreqItems()) list->addItem(Text(item.Text));
  list->setEditable(true);
  list->setInsertPolicy(QComboBox::NoInsert);
  list->completer()->setCompletionMode(QCompleter::PopupCompletion);
  list->completer()->setFilterMode(Qt::MatchContains);
  list->setMaxVisibleItems(24);
  list->setSizeAdjustPolicy(QComboBox::AdjustToContents);
  Bind(list, Game.RollFreqChoice);
  return list;
}

QWidget* frmRollFreqs::MakeFigures() {
  QWidget* panel = new QWidget;
  PutOnPaper(panel);
  QGridLayout* grid = new QGridLayout(panel);
  grid->setHorizontalSpacing(14);
  grid->setVerticalSpacing(3);
  const auto add = [&](int row, int column, const QString& caption, const char* name) {
    QLabel* figure = NewFigureLabel(name, "100,000,000");
    figure->setAccessibleName(caption);
    if (!caption.isEmpty()) grid->addWidget(new QLabel(caption), row, column * 3);
    grid->addWidget(figure, row, column * 3 + 1);
    return figure;
  };
  lblTotalRollsAll_ = add(0, 0, tr("Total game rolls:"), "lblTotalRollsAll");
  lblTotalRolls_ = add(1, 0, tr("Total rolls this selection:"), "lblTotalRolls");
  lblActualPercent_ = add(0, 1, tr("Actual % rolled:"), "lblActualPercent");
  lblIdealPercent_ = add(1, 1, {}, "lblIdealPercent");
  lblLastRolled_ = add(0, 2, tr("# rolls since last rolled:"), "lblLastRolled");
  lblAverage_ = add(1, 2, tr("Average # of rolls to achieve:"), "lblAverage");
  cmdProbable_ = new QPushButton;
  cmdProbable_->setObjectName("cmdProbable");
  cmdProbable_->setFlat(true);
  cmdProbable_->setStyleSheet("text-align: left; padding: 1px 0px;");
  connect(cmdProbable_, &QPushButton::clicked, this, [this] {
    skewed_ = !skewed_;
    Refresh();
  });
  grid->addWidget(cmdProbable_, 1, 3);
  for (const int gap : {2, 5, 8}) grid->setColumnStretch(gap, 1);
  return panel;
}

void frmRollFreqs::ShowRecord() {
  const RollFreqs freqs = FigureRollFreqs(skewed_);
  ShowFigure(lblTotalRollsAll_, freqs.TotalRollsAll);
  ShowFigure(lblTotalRolls_, freqs.TotalRolls);
  ShowFigure(lblActualPercent_, freqs.ActualPercent);
  ShowFigure(lblIdealPercent_, freqs.IdealPercent);
  ShowFigure(lblLastRolled_, freqs.LastRolled);
  ShowFigure(lblAverage_, freqs.Average);
  cmdProbable_->setText(Text(freqs.ProbableCaption));
  cmdProbable_->setEnabled(freqs.CanFlip);
  cmdProbable_->setToolTip(freqs.CanFlip ? tr("Click for the other dice")
                                         : tr("Skewed dice aren't in use."));
  picGaps_->Show(freqs);
}

Report frmRollFreqs::Print() const {
  const RollFreqs freqs = FigureRollFreqs(skewed_);
  Report report = ReportOf(TableOf(freqs));
  report.Picture = [freqs](QPainter& painter, QSizeF rest, int) {
    const QSizeF half(rest.width(), rest.height() * 0.6);
    picGapsBox::Paint(painter, QRectF(QPointF(), half), freqs, GapInks());
    return false;
  };
  return report;
}
