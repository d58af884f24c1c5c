#include "screens/statistics/roll_totals_painter.h"

#include <QFontMetricsF>
#include <algorithm>

#include "screens/frame/controls.h"
#include "screens/statistics/figure_view.h"

namespace {

constexpr double kHead = 1.9;  // of a line: the heading over the bars
constexpr double kGap = 6;
constexpr double kRows = kRollTotalsRows.size() + 1.0;  // and the labels
constexpr double kProbableWidth = 0.78;                 // of a column
constexpr double kActualWidth = 0.48;

QColor Ink(int color, bool gray) {
  const QColor ink = PaletteInk(color);
  if (!gray) return ink;
  const int shade = qGray(ink.rgb());
  return {shade, shade, shade};
}

void PaintScale(QPainter& painter, const RollTotalsFrame& frame, QRectF area,
                const RollTotals& totals, bool gray) {
  const QRectF chart = frame.Chart();
  QColor line = Ink(totals.TextColor, gray);
  line.setAlphaF(0.35F);
  for (std::size_t i = 0; i < totals.ScaleLabels.size(); ++i) {
    const double y = chart.bottom() - chart.height() * static_cast<double>(i) /
                                          static_cast<double>(totals.ScaleLabels.size() - 1);
    painter.setPen(line);
    painter.drawLine(QPointF(chart.left(), y), QPointF(area.right(), y));
    painter.setPen(Ink(totals.TextColor, gray));
    painter.drawText(QRectF(area.left(), y - frame.Line() / 2, frame.Names() - kGap, frame.Line()),
                     Qt::AlignRight | Qt::AlignVCenter, Text(totals.ScaleLabels[i]));
  }
}

void PaintColumn(QPainter& painter, const RollTotalsFrame& frame, const RollTotals& totals,
                 std::size_t at, bool gray) {
  const RollTotalsBar& bar = totals.Bars[at];
  const QRectF column = frame.Column(at);
  const QRectF chart = frame.Chart();
  const auto stand = [&](double height, double share, int color) {
    const double high = height / kRollTotalsBarHeight * chart.height();
    const double wide = column.width() * share;
    const QRectF place(column.center().x() - wide / 2, chart.bottom() - high, wide, high);
    painter.fillRect(place, Ink(color, gray));
    // A bar of the colour of the paper is seen by its edge.
    painter.setPen(QPen(Ink(totals.TextColor, gray), 0.6));
    painter.setBrush(Qt::NoBrush);
    if (high > 0) painter.drawRect(place);
  };
  stand(bar.ProbableHeight, kProbableWidth, totals.ProbableColor);
  stand(bar.ActualHeight, kActualWidth, bar.ActualColor);
  painter.setPen(Ink(totals.TextColor, gray));
  double y = chart.bottom() + kGap / 2;
  for (const std::string* text :
       {&bar.Label, &bar.ProbableText, &bar.ActualText, &bar.CountText, &bar.SinceText}) {
    painter.drawText(QRectF(column.left(), y, column.width(), frame.Line()), Qt::AlignCenter,
                     Text(*text));
    y += frame.Line();
  }
}

void PaintNames(QPainter& painter, const RollTotalsFrame& frame, QRectF area,
                const RollTotals& totals, bool gray) {
  double y = frame.Chart().bottom() + kGap / 2 + frame.Line();
  painter.setPen(Ink(totals.TextColor, gray));
  for (const std::string_view name : kRollTotalsRows) {
    painter.drawText(QRectF(area.left() + kGap, y, frame.Names() - kGap, frame.Line()),
                     Qt::AlignLeft | Qt::AlignVCenter, Text(name));
    y += frame.Line();
  }
}

}  // namespace

RollTotalsFrame::RollTotalsFrame(QRectF area, const QFont& font, const RollTotals& totals,
                                 double scrolled)
    : area_(area), bars_(totals.Bars.size()), scrolled_(scrolled) {
  const QFontMetricsF metrics(font);
  line_ = metrics.height() + 1;
  names_ = kGap * 2;
  for (const std::string_view name : kRollTotalsRows)
    names_ = std::max(names_, metrics.horizontalAdvance(Text(name)) + 2 * kGap);
  double widest = metrics.horizontalAdvance("00.00");
  for (const RollTotalsBar& bar : totals.Bars)
    for (const std::string* text : {&bar.Label, &bar.CountText, &bar.SinceText})
      widest = std::max(widest, metrics.horizontalAdvance(Text(*text)));
  const double room = area.width() - names_ - kGap;
  width_ = std::max(widest + kGap, room / static_cast<double>(std::max<std::size_t>(bars_, 1)));
  columns_ = width_ * static_cast<double>(bars_);
  const double top = area.top() + line_ * kHead;
  chart_ = QRectF(area.left() + names_, top, room,
                  std::max(20.0, area.bottom() - top - line_ * kRows - kGap));
}

QRectF RollTotalsFrame::Column(std::size_t bar) const {
  return {chart_.left() + width_ * static_cast<double>(bar) - scrolled_, chart_.top(), width_,
          area_.bottom() - chart_.top()};
}

std::size_t RollTotalsFrame::BarAt(QPointF place) const {
  for (std::size_t bar = 0; bar < bars_; ++bar)
    if (place.x() >= chart_.left() && Column(bar).contains(place)) return bar;
  return bars_;
}

void PaintRollTotals(QPainter& painter, QRectF area, const RollTotals& totals, double scrolled,
                     bool gray) {
  const RollTotalsFrame frame(area, painter.font(), totals, scrolled);
  painter.fillRect(area, Ink(totals.BackColor, gray));
  painter.setRenderHint(QPainter::Antialiasing, false);
  PaintScale(painter, frame, area, totals, gray);
  painter.save();
  painter.setClipRect(
      QRectF(frame.Chart().left(), area.top(), frame.Chart().width() + kGap, area.height()));
  for (std::size_t bar = 0; bar < totals.Bars.size(); ++bar)
    PaintColumn(painter, frame, totals, bar, gray);
  painter.setPen(Ink(totals.TextColor, gray));
  for (std::size_t at = 0; at < totals.Headings.size(); ++at) {
    const std::size_t next =
        at + 1 < totals.Headings.size() ? totals.Headings[at + 1].FirstBar : totals.Bars.size();
    const QRectF first = frame.Column(totals.Headings[at].FirstBar);
    const QRectF last = frame.Column(next - 1);
    painter.drawText(
        QRectF(first.left(), area.top(), last.right() - first.left(), frame.Line() * kHead),
        Qt::AlignCenter, Text(totals.Headings[at].Text));
  }
  painter.restore();
  PaintNames(painter, frame, area, totals, gray);
}
