#include "screens/statistics/graph_printer.h"

#include <QObject>
#include <QPainter>
#include <vector>

#include "core/text.h"
#include "screens/frame/controls.h"
#include "screens/frame/report.h"
#include "screens/statistics/graph_painter.h"

namespace {

constexpr std::size_t kGraphsOnPage = 6;
constexpr int kColumns = 2;
constexpr int kRows = 3;

// In points.
constexpr double kGap = 14;
constexpr double kScaleWidth = 46;
constexpr double kCaption = 13;
constexpr int kSmallFont = 8;

std::vector<GraphState> Due;

QString Count(int count) { return Text(CountText(count)); }

void PrintScale(QPainter& painter, const QRectF& panel, const GraphState& graph) {
  for (int below = 0; below <= kGraphPanel; below += kGraphLine) {
    const double y = panel.top() + panel.height() * below / kGraphPanel;
    painter.drawText(
        QRectF(panel.left() - kScaleWidth, y - kCaption / 2, kScaleWidth - 4, kCaption),
        Qt::AlignRight | Qt::AlignVCenter,
        Text(MoneyText(graph.GraphTop - graph.GraphScale * below)));
  }
}

void PrintOneGraph(QPainter& painter, const QRectF& cell, const GraphState& graph) {
  const QRectF panel = cell.adjusted(kScaleWidth, kCaption, 0, -kCaption);
  SetPrintFont(painter, kSmallFont, false);
  painter.drawText(
      QRectF(panel.left(), cell.top(), panel.width(), kCaption), Qt::AlignLeft,
      QObject::tr("Rolls %1 to %2    High: %3    Low: %4")
          .arg(Count(RollAtPoint(1, graph)), Count(RollAtPoint(kGraphPoints, graph)),
               Text(MoneyText(graph.GraphPeriodHigh)), Text(MoneyText(graph.GraphPeriodLow))));
  PrintScale(painter, panel, graph);
  PaintGraph(painter, panel, {}, graph);
}

void PaintGraphs(QPainter& painter, QSizeF rest) {
  const QSizeF cell((rest.width() - kGap * (kColumns - 1)) / kColumns,
                    (rest.height() - kGap * (kRows - 1)) / kRows);
  for (std::size_t i = 0; i < Due.size(); ++i) {
    const int at = static_cast<int>(i);
    const QPointF corner(at % kColumns * (cell.width() + kGap),
                         at / kColumns * (cell.height() + kGap));
    PrintOneGraph(painter, QRectF(corner, cell), Due[i]);
  }
}

}  // namespace

void CollectGraph() {
  Due.push_back(Game);
  if (Due.size() == kGraphsOnPage) PrintDueGraphs();
}

int GraphsDue() { return static_cast<int>(Due.size()); }

void PrintDueGraphs(QWidget* parent) {
  if (Due.empty()) return;
  struct Clearing {
    ~Clearing() { Due.clear(); }
  } const whateverHappens;
  Report report;
  report.Title = QObject::tr("Kelvanor Bankroll Graph");
  report.Heading = GameHeading(report.Title);
  report.Picture = [](QPainter& painter, QSizeF rest, int) {
    PaintGraphs(painter, rest);
    return false;
  };
  parent ? static_cast<void>(PrintReport(parent, report)) : PrintAtOnce(report);
}
