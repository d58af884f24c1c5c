#include "screens/art/felt_art.h"

#include <QPainter>
#include <QPainterPath>
#include <cmath>
#include <cstdint>

namespace {

/// A small generator of its own: the same felt at every painting, and no number taken from the
/// game.
class Scatter {
 public:
  double Next() {
    state_ = state_ * 6364136223846793005ULL + 1442695040888963407ULL;
    return static_cast<double>(state_ >> 40) / static_cast<double>(1ULL << 24);
  }
  double Between(double low, double high) { return low + (high - low) * Next(); }

 private:
  std::uint64_t state_ = 20;
};

/// Light and dark threads; on a dark felt only the light ones can be seen, so they are stronger.
struct Threads {
  QColor Light;
  QColor Dark;
};

Threads ThreadsOn(QColor felt) {
  const bool dark = felt.lightness() < 40;
  const bool bright = felt.lightness() > 170;
  return {QColor(255, 255, 255, dark ? 40 : 30), QColor(0, 0, 0, bright ? 34 : 46)};
}

QColor Fainter(QColor color, double share) {
  color.setAlphaF(color.alphaF() * static_cast<float>(share));
  return color;
}

void PaintStripes(QPainter& painter, const QRectF& area, double pitch, double width, QColor color) {
  painter.setPen(QPen(color, width));
  for (double x = area.left(); x < area.right(); x += pitch)
    painter.drawLine(QPointF(x, area.top()), QPointF(x, area.bottom()));
}

void PaintWeave(QPainter& painter, const QRectF& area, const Threads& threads) {
  PaintStripes(painter, area, 2, 0.7, threads.Dark);
  painter.setPen(QPen(threads.Light, 0.6));
  for (double y = area.top(); y < area.bottom(); y += 2)
    painter.drawLine(QPointF(area.left(), y), QPointF(area.right(), y));
}

void PaintTwill(QPainter& painter, const QRectF& area, const Threads& threads) {
  for (double x = area.left() - area.height(); x < area.right(); x += 4) {
    painter.setPen(QPen(threads.Dark, 1.1));
    painter.drawLine(QPointF(x, area.bottom()), QPointF(x + area.height(), area.top()));
    painter.setPen(QPen(Fainter(threads.Light, 0.8), 0.8));
    painter.drawLine(QPointF(x + 2, area.bottom()), QPointF(x + 2 + area.height(), area.top()));
  }
}

void PaintPinstripe(QPainter& painter, const QRectF& area, const Threads& threads) {
  PaintStripes(painter, area, 12, 5.5, Fainter(threads.Dark, 0.7));
  PaintStripes(painter, area.adjusted(6, 0, 0, 0), 12, 0.8, threads.Light);
}

void PaintDiamonds(QPainter& painter, const QRectF& area, const Threads& threads) {
  constexpr double kWide = 20;
  constexpr double kHigh = 28;
  painter.setPen(QPen(Fainter(threads.Light, 0.9), 0.6));
  bool odd = false;
  for (double y = area.top(); y < area.bottom() + kHigh; y += kHigh / 2, odd = !odd) {
    for (double x = area.left() - (odd ? kWide / 2 : 0); x < area.right() + kWide; x += kWide) {
      QPainterPath diamond(QPointF(x, y - kHigh / 2));
      diamond.lineTo(x + kWide / 2, y);
      diamond.lineTo(x, y + kHigh / 2);
      diamond.lineTo(x - kWide / 2, y);
      diamond.closeSubpath();
      painter.setBrush(odd ? QBrush(Fainter(threads.Dark, 0.6)) : QBrush(Qt::NoBrush));
      painter.drawPath(diamond);
    }
  }
}

QPainterPath HeartPath() {
  QPainterPath path(QPointF(0, 5));
  path.cubicTo(-9, -1, -5, -8, 0, -3);
  path.cubicTo(5, -8, 9, -1, 0, 5);
  return path;
}

QPainterPath SpadePath() {
  QPainterPath path(QPointF(0, -6));
  path.cubicTo(9, 0, 5, 6, 0.6, 2);
  path.lineTo(2, 6);
  path.lineTo(-2, 6);
  path.lineTo(-0.6, 2);
  path.cubicTo(-5, 6, -9, 0, 0, -6);
  return path;
}

QPainterPath DiamondPath() {
  QPainterPath path(QPointF(0, -6));
  path.quadTo(1.5, -1.5, 4.5, 0);
  path.quadTo(1.5, 1.5, 0, 6);
  path.quadTo(-1.5, 1.5, -4.5, 0);
  path.quadTo(-1.5, -1.5, 0, -6);
  return path;
}

QPainterPath ClubPath() {
  QPainterPath path;
  path.setFillRule(Qt::WindingFill);
  path.addEllipse(QPointF(0, -3), 2.6, 2.6);
  path.addEllipse(QPointF(-3, 1.2), 2.6, 2.6);
  path.addEllipse(QPointF(3, 1.2), 2.6, 2.6);
  path.addPolygon(QPolygonF({QPointF(-0.7, -1), QPointF(0.7, -1), QPointF(2, 6), QPointF(-2, 6)}));
  return path.simplified();
}

void PaintSuits(QPainter& painter, const QRectF& area, const Threads& threads) {
  const QPainterPath suits[] = {SpadePath(), HeartPath(), ClubPath(), DiamondPath()};
  painter.setPen(Qt::NoPen);
  int row = 0;
  for (double y = area.top() + 8; y < area.bottom() + 10; y += 15, ++row) {
    int column = row * 2 + row / 2;
    for (double x = area.left() + (row % 2 ? 11 : 0); x < area.right() + 10; x += 22, ++column) {
      painter.save();
      painter.translate(x, y);
      painter.scale(0.8, 0.8);
      painter.setBrush(row % 2 ? threads.Dark : Fainter(threads.Light, 0.75));
      painter.drawPath(suits[column % 4]);
      painter.restore();
    }
  }
}

void PaintGrain(QPainter& painter, const QRectF& area, const Threads& threads) {
  Scatter scatter;
  constexpr double kPlank = 54;
  for (double top = area.top(); top < area.bottom(); top += kPlank) {
    painter.save();
    painter.setClipRect(QRectF(area.left(), top, area.width(), kPlank), Qt::IntersectClip);
    const double eye = scatter.Between(area.left(), area.right());
    const double eyeY = top + scatter.Between(10, kPlank - 10);
    for (double y = top - 14; y < top + kPlank + 14; y += scatter.Between(1.2, 3.4)) {
      const double lift = scatter.Between(5, 11) * (y < eyeY ? -1 : 1);
      const double wave = scatter.Between(-2, 2);
      const double near = std::exp(-std::abs(y - eyeY) / 9);
      QPainterPath line(QPointF(area.left(), y + wave));
      line.cubicTo(eye - 170, y, eye - 70, y + lift * near, eye, y + lift * near);
      line.cubicTo(eye + 70, y + lift * near, eye + 170, y, area.right(), y - wave);
      const QColor color = scatter.Next() < 0.68 ? threads.Dark : threads.Light;
      painter.setPen(QPen(Fainter(color, scatter.Between(0.4, 1.3)), scatter.Between(0.4, 1.5)));
      painter.setBrush(Qt::NoBrush);
      painter.drawPath(line);
    }
    painter.restore();
    painter.setPen(QPen(threads.Dark, 1));
    painter.drawLine(QPointF(area.left(), top), QPointF(area.right(), top));
    painter.setPen(QPen(Fainter(threads.Light, 0.7), 0.6));
    painter.drawLine(QPointF(area.left(), top + 0.8), QPointF(area.right(), top + 0.8));
  }
}

void PaintSpeckle(QPainter& painter, const QRectF& area, const Threads& threads) {
  Scatter scatter;
  painter.setPen(Qt::NoPen);
  const int count = static_cast<int>(area.width() * area.height() / 34);
  for (int i = 0; i < count; ++i) {
    painter.setBrush(Fainter(i % 3 ? threads.Dark : threads.Light, scatter.Between(0.5, 2.2)));
    const double radius = scatter.Between(0.3, 1.1);
    painter.drawEllipse(QPointF(scatter.Between(area.left(), area.right()),
                                scatter.Between(area.top(), area.bottom())),
                        radius, radius);
  }
}

void PaintFibres(QPainter& painter, const QRectF& area, const Threads& threads) {
  Scatter scatter;
  const int count = static_cast<int>(area.width() * area.height() / 16);
  for (int i = 0; i < count; ++i) {
    const QPointF from(scatter.Between(area.left(), area.right()),
                       scatter.Between(area.top(), area.bottom()));
    const double angle = scatter.Between(0, 6.283);
    const double length = scatter.Between(1.2, 3.6);
    painter.setPen(
        QPen(Fainter(i % 2 ? threads.Dark : threads.Light, scatter.Between(0.35, 0.95)), 0.45));
    painter.drawLine(from, from + QPointF(std::cos(angle), std::sin(angle)) * length);
  }
}

/// The lamps over the table: brighter in the middle.
void PaintLamps(QPainter& painter, const QRectF& area) {
  QRadialGradient light(area.center() + QPointF(0, -30), area.width() * 0.62);
  light.setColorAt(0, QColor(255, 255, 255, 30));
  light.setColorAt(0.5, QColor(255, 255, 255, 6));
  light.setColorAt(0.55, QColor(0, 0, 0, 4));
  light.setColorAt(1, QColor(0, 0, 0, 74));
  painter.fillRect(area, light);
}

}  // namespace

void PaintFelt(QPainter& painter, const QRectF& area, QColor color, int pattern) {
  using Paint = void (*)(QPainter&, const QRectF&, const Threads&);
  constexpr Paint kPatterns[kFeltPatterns] = {nullptr,        PaintWeave,    PaintTwill,
                                              PaintPinstripe, PaintDiamonds, PaintSuits,
                                              PaintGrain,     PaintSpeckle,  PaintFibres};
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.fillRect(area, color);
  if (pattern > 0 && pattern < kFeltPatterns) {
    painter.setClipRect(area, Qt::IntersectClip);
    kPatterns[pattern](painter, area, ThreadsOn(color));
  }
  PaintLamps(painter, area);
  painter.restore();
}
