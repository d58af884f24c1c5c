#include "screens/statistics/graph_painter.h"

#include <QFontMetricsF>
#include <QObject>
#include <QPolygonF>
#include <algorithm>
#include <array>
#include <cmath>
#include <span>

#include "core/text.h"

namespace {

constexpr int kRollsPerColumn = 25;      // between two upright lines of the grid
constexpr std::size_t kStripePitch = 5;  // rolls from one stripe to the next
constexpr std::size_t kStripeWidth = 2;
constexpr double kLineWidth = 1.6;
constexpr double kDotSize = 5;
constexpr double kTextGap = 6;
constexpr double kFarOff = 4;  // panel heights beyond which nothing is told apart

const std::array<GraphPalette, kGraphColors> kPalettes = {{
    {0xDDF1F3, 0x0B4F6C, 0xD1495B, 0x6A3D9A, 0xB4DADF, 0x12343B},  // cyan
    {0x12161C, 0x4FD6A2, 0xFFB547, 0xFF7A90, 0x2A323C, 0xDCE3EA},  // black
    {0xFFFFFF, 0x1F5FBF, 0xE0701A, 0xB5178A, 0xE2E6EB, 0x2B3138},  // white
    {0x4A1219, 0xFFD9C2, 0xFFC24B, 0x86D8FF, 0x6B2A33, 0xFFE9E2},  // red
    {0x0E4732, 0xF2EFDC, 0xFFC857, 0xFF9471, 0x1E6449, 0xE4F1E9},  // green
    {0xFFF5CC, 0x6B3E12, 0xC8371B, 0x1F6F8B, 0xEBDDA0, 0x4A3714},  // yellow
    {0x10284F, 0x8FD0FF, 0xFFCB5C, 0xFF8FA3, 0x24427A, 0xE1EBFA},  // blue
    {0x3B4048, 0xE9EDF2, 0xFFB454, 0x7FD1C7, 0x525962, 0xEEF1F4},  // gray
}};

QColor Mixed(const QColor& from, const QColor& to, double share) {
  const auto mix = [share](int a, int b) { return qRound(a + (b - a) * share); };
  return {mix(from.red(), to.red()), mix(from.green(), to.green()), mix(from.blue(), to.blue())};
}

void DrawHair(QPainter& painter, const QColor& color, QPointF from, QPointF to,
              Qt::PenStyle style = Qt::SolidLine) {
  painter.setRenderHint(QPainter::Antialiasing, false);
  QPen pen(color, 1, style);
  pen.setCosmetic(true);
  painter.setPen(pen);
  painter.drawLine(from, to);
  painter.setRenderHint(QPainter::Antialiasing);
}

void DrawAcross(QPainter& painter, const QColor& color, const QRectF& panel, double y,
                Qt::PenStyle style = Qt::SolidLine) {
  DrawHair(painter, color, {panel.left(), y}, {panel.right(), y}, style);
}

void DrawUpright(QPainter& painter, const QColor& color, const QRectF& panel, double x,
                 Qt::PenStyle style = Qt::SolidLine) {
  DrawHair(painter, color, {x, panel.top()}, {x, panel.bottom()}, style);
}

QPolygonF LineOf(const GraphFrame& frame, std::span<const Currency> amounts) {
  QPolygonF line;
  line.reserve(frame.Graph().BankrollHistoryCount + 2);
  for (int point = 1; point <= frame.Graph().BankrollHistoryCount; ++point)
    line << QPointF(frame.X(point), frame.Y(amounts[static_cast<unsigned>(point)]));
  return line;
}

void DrawLine(QPainter& painter, const QPolygonF& line, const QColor& color) {
  painter.setPen(QPen(color, kLineWidth, Qt::SolidLine, Qt::FlatCap, Qt::BevelJoin));
  painter.drawPolyline(line);
}

/// Fills from a piece of the line to its base.
void FillDown(QPainter& painter, std::span<const QPointF> piece, double base, const QColor& color) {
  QPolygonF area;
  area.reserve(static_cast<qsizetype>(piece.size()) + 2);
  area << QPointF(piece.front().x(), base);
  for (const QPointF& place : piece) area << place;
  area << QPointF(piece.back().x(), base);
  painter.setBrush(color);
  painter.drawPolygon(area);
}

/// Fills between the line and the zero line (or the edge of the panel next to it).
void FillUnder(QPainter& painter, const GraphFrame& frame, std::span<const QPointF> line) {
  const GraphPalette& colors = PaletteOfGraph(frame.Graph());
  const QRectF& panel = frame.Panel();
  const double base = std::clamp(frame.Y(0), panel.top(), panel.bottom());
  const bool striped = frame.Graph().BankrollGraphType == StripedGraph;
  painter.setRenderHint(QPainter::Antialiasing, false);
  painter.setPen(Qt::NoPen);
  FillDown(painter, line, base, Mixed(colors.Background, colors.Line, striped ? 0.14 : 0.38));
  const QColor dark = Mixed(colors.Background, colors.Line, 0.36);
  for (std::size_t at = 0; striped && at + kStripeWidth < line.size(); at += kStripePitch)
    FillDown(painter, line.subspan(at, kStripeWidth + 1), base, dark);
  painter.setBrush(Qt::NoBrush);
  painter.setRenderHint(QPainter::Antialiasing);
}

void DrawGrid(QPainter& painter, const GraphFrame& frame) {
  const QRectF& panel = frame.Panel();
  const QColor& color = PaletteOfGraph(frame.Graph()).Grid;
  for (int below = kGraphLine; below < kGraphPanel; below += kGraphLine) {
    const double y = panel.top() + panel.height() * below / kGraphPanel;
    DrawAcross(painter, color, panel, y);
  }
  for (int roll = kRollsPerColumn; roll < kGraphPoints; roll += kRollsPerColumn) {
    const double x = panel.left() + panel.width() * roll / kGraphPoints;
    DrawUpright(painter, color, panel, x);
  }
}

void DrawZeroLine(QPainter& painter, const GraphFrame& frame) {
  const QRectF& panel = frame.Panel();
  const double y = frame.Y(0);
  if (y < panel.top() || y > panel.bottom()) return;
  DrawAcross(
      painter,
      Mixed(PaletteOfGraph(frame.Graph()).Background, PaletteOfGraph(frame.Graph()).Text, 0.6),
      panel, y);
}

/// A text beside an upright line, on whichever side there is room.
void DrawBeside(QPainter& painter, const GraphFrame& frame, double x, double top,
                const QString& text, const QColor& color) {
  const QRectF& panel = frame.Panel();
  const QFontMetricsF metrics(painter.font());
  const double width = metrics.horizontalAdvance(text);
  const bool left = x + kTextGap + width > panel.right();
  const QRectF place(left ? x - kTextGap - width : x + kTextGap, top, width + 1, metrics.height());
  painter.fillRect(place.adjusted(-2, 0, 2, 0), PaletteOfGraph(frame.Graph()).Background);
  painter.setPen(color);
  painter.drawText(place, Qt::AlignLeft | Qt::AlignVCenter, text);
}

void DrawDot(QPainter& painter, QPointF place, const QColor& color) {
  painter.setPen(Qt::NoPen);
  painter.setBrush(color);
  painter.drawEllipse(place, kDotSize / 2, kDotSize / 2);
  painter.setBrush(Qt::NoBrush);
}

void DrawReferenceLine(QPainter& painter, const GraphFrame& frame, int point, int row) {
  if (point < 1 || point > kGraphPoints) return;
  const QColor& color = PaletteOfGraph(frame.Graph()).Reference;
  const QRectF& panel = frame.Panel();
  const double x = frame.X(point);
  DrawUpright(painter, color, panel, x, Qt::DashLine);
  QString text = QString::fromStdString(CountText(RollAtPoint(point, frame.Graph())));
  if (IsDrawnPoint(point, frame.Graph())) {
    const Currency amount = BankrollAtPoint(point, frame.Graph());
    const double y = frame.Y(amount);
    DrawAcross(painter, color, panel, y, Qt::DashLine);
    DrawDot(painter, {x, y}, color);
    text += ":  " + QString::fromStdString(MoneyText(amount));
  }
  const double height = QFontMetricsF(painter.font()).height();
  DrawBeside(painter, frame, x, panel.top() + kTextGap + row * (height + 2), text, color);
}

void DrawPointed(QPainter& painter, const GraphFrame& frame, int point) {
  if (!IsDrawnPoint(point, frame.Graph())) return;
  const QRectF& panel = frame.Panel();
  const GraphPalette& colors = PaletteOfGraph(frame.Graph());
  const QPointF place(frame.X(point), frame.Y(BankrollAtPoint(point, frame.Graph())));
  DrawUpright(painter, Mixed(colors.Background, colors.Text, 0.5), panel, place.x());
  DrawDot(painter, place, colors.Text);
}

void DrawInvitation(QPainter& painter, const GraphFrame& frame) {
  painter.setPen(PaletteOfGraph(frame.Graph()).Text);
  painter.drawText(frame.Panel(), Qt::AlignCenter | Qt::TextWordWrap,
                   QObject::tr("Nothing has been rolled yet.\n\nEach roll of the dice adds the "
                               "bankroll to this graph; Hyper-Drive fills it fast."));
}

}  // namespace

const GraphPalette& PaletteOfGraph(const GraphState& graph) {
  return kPalettes[static_cast<unsigned>(
      std::clamp(graph.BankrollGraphColor, 0, kGraphColors - 1))];
}

double GraphFrame::X(int point) const {
  return panel_.left() + panel_.width() * (point - 0.5) / kGraphPoints;
}

double GraphFrame::Y(Currency amount) const {
  const double units = (graph_.GraphTop - amount) / graph_.GraphScale;
  const double panels = std::clamp(units / kGraphPanel, -kFarOff, kFarOff);
  return panel_.top() + panel_.height() * panels;
}

int GraphFrame::PointAt(double x) const {
  const double share = panel_.width() > 0 ? (x - panel_.left()) / panel_.width() : 0;
  return std::clamp(static_cast<int>(std::floor(share * kGraphPoints)) + 1, 1, kGraphPoints);
}

int RollAtPoint(int point, const GraphState& graph) {
  return static_cast<int>(graph.BankrollHistory[0].ToDouble()) + point - 1;
}

Currency BankrollAtPoint(int point, const GraphState& graph) {
  return graph.BankrollHistory[static_cast<unsigned>(point)];
}

void PaintGraph(QPainter& painter, QRectF panel, const GraphView& view, const GraphState& graph) {
  const GraphPalette& colors = PaletteOfGraph(graph);
  const GraphFrame frame(panel, graph);
  const bool empty = graph.BankrollHistoryCount == 0;
  painter.save();
  painter.setClipRect(panel);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.fillRect(panel, colors.Background);
  const QPolygonF line = LineOf(frame, graph.BankrollHistory);
  if (!empty && graph.BankrollGraphType != PlainGraph) FillUnder(painter, frame, line);
  if (graph.BankrollGridLines) DrawGrid(painter, frame);
  DrawZeroLine(painter, frame);
  if (empty) {
    DrawInvitation(painter, frame);
  } else {
    DrawLine(painter, line, colors.Line);
    if (graph.BankrollShowAverage)
      DrawLine(painter, LineOf(frame, graph.BankrollAverage), colors.Average);
    DrawDot(painter, line.last(), colors.Line);
  }
  if (graph.BankrollRefLines) {
    DrawReferenceLine(painter, frame, view.Lines.First, 0);
    DrawReferenceLine(painter, frame, view.Lines.Second, 1);
  }
  DrawPointed(painter, frame, view.Pointed);
  painter.restore();
}
