#include "screens/statistics/histogram_painter.h"

#include <QFontMetricsF>
#include <QPaintDevice>
#include <algorithm>
#include <cmath>

#include "core/text.h"
#include "screens/frame/controls.h"

namespace {

constexpr double kEdge = 8;     // around the chart
constexpr double kTick = 4;     // of the scales
constexpr double kGapFrom = 4;  // the width from which bars stand apart
constexpr int kScaleLines = 4;
constexpr QRgb kInk = 0xFF202020;
constexpr QRgb kGridInk = 0xFFD9DDE2;
constexpr QRgb kBandInk = 0xFFEFF4FA;
constexpr QRgb kMeanInk = 0xFFB02020;
constexpr int kOverlayAlpha = 150;

std::size_t BarsOf(const HistogramPicture& picture) { return picture.Bars.Bars.Bins.size(); }

QColor Ink(QRgb color, bool gray) {
  const QColor ink = QColor::fromRgb(color);
  if (!gray) return ink;
  const int shade = qGray(color);
  return {shade, shade, shade};
}

double ShareOf(const std::vector<std::int64_t>& counts, std::size_t bar, std::int64_t games) {
  return games > 0 && bar < counts.size()
             ? static_cast<double>(counts[bar]) / static_cast<double>(games)
             : 0;
}

double HighestShare(const HistogramPicture& picture) {
  double highest = 0;
  for (std::size_t bar = 0; bar < BarsOf(picture); ++bar)
    highest = std::max({highest, ShareOf(picture.Bars.First, bar, picture.FirstGames),
                        ShareOf(picture.Bars.Second, bar, picture.SecondGames)});
  return highest;
}

/// What stands beside a line of the scale: games, or their share where two logs are compared.
QString ScaleText(const HistogramPicture& picture, double share) {
  if (!picture.Bars.Second.empty()) return Text(FormatNumber(share, "0.0##%"));
  return Text(FormatNumber(share * static_cast<double>(picture.FirstGames), "#,##0.#"));
}

/// The share at the top of the scale: whole games where there are few.
double TopShare(const HistogramPicture& picture) {
  const double highest = HighestShare(picture);
  if (!picture.Bars.Second.empty() || picture.FirstGames == 0) return highest;
  const double games = highest * static_cast<double>(picture.FirstGames);
  return std::ceil(games / kScaleLines) * kScaleLines / static_cast<double>(picture.FirstGames);
}

void PaintScale(QPainter& painter, const HistogramFrame& frame, const HistogramPicture& picture,
                bool gray) {
  const QRectF chart = frame.Chart();
  const double line = painter.fontMetrics().height();
  const double top = TopShare(picture);
  for (int i = 0; i <= kScaleLines; ++i) {
    const double y = std::round(chart.bottom() - chart.height() * i / kScaleLines);
    painter.setPen(Ink(kGridInk, gray));
    painter.drawLine(QPointF(chart.left(), y), QPointF(chart.right(), y));
    painter.setPen(Ink(kInk, gray));
    painter.drawText(QRectF(0, y - line / 2, chart.left() - kTick, line),
                     Qt::AlignRight | Qt::AlignVCenter, ScaleText(picture, top * i / kScaleLines));
  }
}

void PaintBars(QPainter& painter, const HistogramFrame& frame, const HistogramPicture& picture,
               const std::vector<std::int64_t>& counts, std::int64_t games, QColor ink) {
  const QRectF chart = frame.Chart();
  const double top = TopShare(picture);
  for (std::size_t bar = 0; bar < counts.size(); ++bar) {
    if (counts[bar] == 0 || top <= 0) continue;
    const double left = frame.Edge(bar);
    const double wide = frame.Edge(bar + 1) - left;
    // A single game among millions is still to be seen.
    const double high =
        std::max(1.0, std::round(ShareOf(counts, bar, games) / top * chart.height()));
    const bool pointed = static_cast<int>(bar) == picture.Pointed;
    painter.fillRect(QRectF(left, std::round(chart.bottom()) - high,
                            wide >= kGapFrom ? wide - 1 : std::max(wide, 1.0), high),
                     pointed ? ink.darker(150) : ink);
  }
}

/// Values below the bars, as many as have room side by side.
void PaintValues(QPainter& painter, const HistogramFrame& frame, const HistogramPicture& picture,
                 bool gray) {
  const QFontMetricsF metrics(painter.font());
  const QRectF chart = frame.Chart();
  const auto& bins = picture.Bars.Bars.Bins;
  painter.setPen(Ink(kInk, gray));
  double end = -1e9;
  const auto put = [&](std::size_t bar) {
    const bool last = bar + 1 == bins.size() && bar > 0;
    const QString text = Text(MoneyText(last ? bins[bar].High : bins[bar].Low));
    const double middle = (frame.Edge(bar) + frame.Edge(bar + 1)) / 2;
    const double wide = metrics.horizontalAdvance(text);
    const double left = std::clamp(middle - wide / 2, 0.0, chart.right() + kEdge - wide);
    if (left < end) return;
    end = left + wide + metrics.averageCharWidth() * 2;
    painter.drawLine(QPointF(middle, chart.bottom()), QPointF(middle, chart.bottom() + kTick));
    painter.drawText(QPointF(left, chart.bottom() + kTick + metrics.ascent()), text);
  };
  constexpr std::size_t kLabels = 8;
  const std::size_t steps = std::min(kLabels, bins.size() - 1);
  for (std::size_t label = 0; label <= steps; ++label)
    put(steps == 0 ? 0 : label * (bins.size() - 1) / steps);
}

void PaintMean(QPainter& painter, const HistogramFrame& frame, double mean, QColor ink) {
  const double x = frame.PlaceOf(mean);
  painter.setPen(QPen(ink, 1.5, Qt::DashLine));
  painter.drawLine(QPointF(x, frame.Chart().top()), QPointF(x, frame.Chart().bottom()));
}

}  // namespace

HistogramFrame::HistogramFrame(QRectF area, const QFont& font, const HistogramPicture& picture,
                               double scale)
    : picture_(picture), scale_(scale) {
  const QFontMetricsF metrics(font);
  const double top = TopShare(picture);
  double wide = 0;
  for (int i = 0; i <= kScaleLines; ++i)
    wide = std::max(wide, metrics.horizontalAdvance(ScaleText(picture, top * i / kScaleLines)));
  chart_ = area.adjusted(wide + kEdge + kTick, kEdge + metrics.height() / 2, -kEdge * 2,
                         -metrics.height() - kTick - kEdge);
}

double HistogramFrame::Edge(std::size_t bar) const {
  const auto bars = static_cast<double>(std::max<std::size_t>(BarsOf(picture_), 1));
  return std::round((chart_.left() + chart_.width() * static_cast<double>(bar) / bars) * scale_) /
         scale_;
}

int HistogramFrame::BarAt(QPointF place) const {
  if (place.x() < chart_.left() || place.x() >= chart_.right() || BarsOf(picture_) == 0) return -1;
  for (std::size_t bar = 0; bar < BarsOf(picture_); ++bar)
    if (place.x() < Edge(bar + 1)) return static_cast<int>(bar);
  return -1;
}

double HistogramFrame::PlaceOf(double value) const {
  const auto bars = static_cast<double>(std::max<std::size_t>(BarsOf(picture_), 1));
  return chart_.left() + chart_.width() * PlaceInHistogram(picture_.Bars.Bars, value) / bars;
}

void PaintHistogram(QPainter& painter, QRectF area, const HistogramPicture& picture, bool gray) {
  painter.fillRect(area, Qt::white);
  if (BarsOf(picture) == 0) return;
  painter.save();
  painter.translate(area.topLeft());
  const double scale = painter.device()->devicePixelRatioF() * painter.transform().m11();
  const HistogramFrame frame(QRectF(QPointF(), area.size()), painter.font(), picture, scale);
  const double left = frame.PlaceOf(picture.Mean - picture.Reach);
  const double right = frame.PlaceOf(picture.Mean + picture.Reach);
  if (picture.Reach > 0)
    painter.fillRect(QRectF(left, frame.Chart().top(), right - left, frame.Chart().height()),
                     Ink(kBandInk, gray));
  PaintScale(painter, frame, picture, gray);
  PaintBars(painter, frame, picture, picture.Bars.First, picture.FirstGames,
            Ink(kFirstLogInk, gray));
  QColor over = Ink(kSecondLogInk, gray);
  over.setAlpha(kOverlayAlpha);
  PaintBars(painter, frame, picture, picture.Bars.Second, picture.SecondGames, over);
  PaintValues(painter, frame, picture, gray);
  PaintMean(painter, frame, picture.Mean, Ink(picture.SecondMean ? kFirstLogInk : kMeanInk, gray));
  if (picture.SecondMean) PaintMean(painter, frame, *picture.SecondMean, Ink(kSecondLogInk, gray));
  painter.restore();
}
