#include "screens/statistics/frmRollTotals.h"

#include <QHBoxLayout>
#include <QHelpEvent>
#include <QLabel>
#include <QPainter>
#include <QRadioButton>
#include <QScrollBar>
#include <QToolTip>
#include <QVBoxLayout>

#include "core/game_state.h"
#include "core/help_topics.h"
#include "screens/frame/bind.h"
#include "screens/frame/controls.h"
#include "screens/statistics/figure_view.h"
#include "screens/statistics/roll_totals_painter.h"

namespace {

constexpr QSize kSmallest(360, 280);
constexpr QSize kAtStart(880, 460);
constexpr QSizeF kPrinted(540, 300);  // points

/// Choices of a menu, each by the value that it stands for.
std::vector<MenuRow> Rows(const QString& name, std::span<const FigureChoice> choices, int& field) {
  std::vector<MenuRow> rows;
  int index = 0;
  for (const FigureChoice& choice : choices)
    rows.push_back(
        Choice(QString("%1_%2").arg(name).arg(index++), Text(choice.Caption), field, choice.Value));
  return rows;
}

Report Print() {
  const RollTotals totals = FigureRollTotals();
  Report report = ReportOf(TableOf(totals));
  report.Picture = [totals](QPainter& painter, QSizeF rest, int) {
    SetPrintFont(painter, 7, false);
    const QSizeF size = kPrinted.boundedTo(rest);
    PaintRollTotals(painter, QRectF(QPointF(), size), totals, 0, !Game.ColorPrint);
    return false;
  };
  return report;
}

}  // namespace

// ---- picTotals ----

picTotalsBox::picTotalsBox(QWidget* parent) : QWidget(parent) {
  setObjectName("picTotals");
  setAccessibleName(tr("Chart of the roll totals"));
  setAttribute(Qt::WA_OpaquePaintEvent);
  setMinimumSize(300, 180);
}

void picTotalsBox::Show(RollTotals totals) {
  totals_ = std::move(totals);
  update();
}

void picTotalsBox::ScrollTo(int place) {
  scrolled_ = place;
  update();
}

int picTotalsBox::Beyond() const {
  const RollTotalsFrame frame(rect(), font(), totals_, 0);
  return std::max(0, qRound(frame.Columns() - frame.Chart().width()));
}

void picTotalsBox::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  PaintRollTotals(painter, rect(), totals_, scrolled_, false);
}

void picTotalsBox::resizeEvent(QResizeEvent*) { emit Resized(); }

bool picTotalsBox::event(QEvent* event) {
  if (event->type() != QEvent::ToolTip) return QWidget::event(event);
  const auto* help = static_cast<QHelpEvent*>(event);
  const std::size_t bar = RollTotalsFrame(rect(), font(), totals_, scrolled_).BarAt(help->pos());
  if (bar < totals_.Bars.size()) {
    QToolTip::showText(help->globalPos(), Text(totals_.Bars[bar].Tip), this);
  } else {
    QToolTip::hideText();
  }
  return true;
}

// ---- frmRollTotals ----

frmRollTotals::frmRollTotals(QWidget* table)
    : Screen(table, "frmRollTotals", tr("Roll Totals"), kTopicRollTotals) {
  QWidget* content = new QWidget(this);
  QVBoxLayout* column = new QVBoxLayout(content);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  picTotals_ = new picTotalsBox(content);
  lblEmpty_ = EmptyLabel(picTotals_, "lblEmpty", {});
  lblEmpty_->setAlignment(Qt::AlignTop | Qt::AlignRight);  // above the low bars
  hscr_ = new QScrollBar(Qt::Horizontal);
  hscr_->setObjectName("hscr");
  connect(hscr_, &QScrollBar::valueChanged, picTotals_, &picTotalsBox::ScrollTo);
  connect(picTotals_, &picTotalsBox::Resized, this, [this] { ShowBar(); });
  column->addWidget(picTotals_, 1);
  column->addWidget(hscr_);
  QHBoxLayout* foot = new QHBoxLayout;
  foot->setContentsMargins(8, 6, 8, 6);
  foot->addWidget(new QLabel(tr("Total rolls")));
  foot->addSpacing(8);
  lblTotalRolls_ = new QLabel;
  lblTotalRolls_->setObjectName("lblTotalRolls");
  lblTotalRolls_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  foot->addWidget(lblTotalRolls_);
  foot->addStretch(1);
  picComparison_ = new QWidget;
  QHBoxLayout* pair = new QHBoxLayout(picComparison_);
  pair->setContentsMargins(0, 0, 0, 0);
  const RecordField<int> versus([] { return Game.ShowVsSkewed ? 1 : 0; },
                                [](int skewed) { Game.ShowVsSkewed = skewed != 0; });
  const QStringList captions = {tr("  Show % vs. true probability"),
                                tr("  Show % vs. current skewed probability")};
  for (int i = 0; i < captions.size(); ++i) {
    QRadioButton* option = new QRadioButton(captions[i]);
    option->setObjectName(QString("optShowProb_%1").arg(i));
    Bind(option, versus, i);
    pair->addWidget(option);
  }
  foot->addWidget(picComparison_);
  column->addLayout(foot);
  setCentralWidget(content);
  MakeMenus();
  SetSizes(kSmallest, kAtStart);
}

void frmRollTotals::MakeMenus() {
  MenuBar().Add("mnuFile", tr("&File"), ReportRows(this, Print));
  MenuBar().Add(
      "mnuOptions", tr("&Options"),
      {Submenu("mnuDisplayTotals", tr("&Display Totals"),
               Rows("mnuDisplayTotals", RollTotalsDisplays(), Game.RollTotalsDisplay)),
       Submenu("mnuBackgroundColor", tr("&Background Color"),
               Rows("mnuBackgroundColor", RollTotalsBackColors(), Game.RollTotalsBackColor)),
       Submenu("mnuGraphColor", tr("&Graph Color"),
               Rows("mnuGraphColor", RollTotalsGraphColors(), Game.RollTotalsGraphColor))});
}

void frmRollTotals::ShowBar() {
  const int beyond = picTotals_->Beyond();
  hscr_->setRange(0, beyond);
  hscr_->setPageStep(std::max(1, picTotals_->width() / 2));
  hscr_->setSingleStep(24);
  hscr_->setVisible(beyond > 0);
}

void frmRollTotals::ShowRecord() {
  RollTotals totals = FigureRollTotals();
  const QString rolls = Text(totals.TotalRolls);
  if (lblTotalRolls_->text() != rolls) lblTotalRolls_->setText(rolls);
  picComparison_->setVisible(totals.OffersComparison);
  lblEmpty_->setText(Text(totals.Empty));
  QPalette paper = lblEmpty_->palette();
  paper.setColor(QPalette::Disabled, QPalette::WindowText, PaletteInk(totals.TextColor));
  lblEmpty_->setPalette(paper);
  lblEmpty_->setVisible(!totals.Empty.empty());
  picTotals_->Show(std::move(totals));
  ShowBar();
}
