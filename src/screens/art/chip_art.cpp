#include "screens/art/chip_art.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

#include "core/settings.h"
#include "core/text.h"

namespace {

constexpr int kPictures = 6;

enum class EdgeSpots { Bars, Pairs, Triangles, Dots, Quarters, Rays, Blocks };
enum class Inlay { Plain, Ringed, Scalloped, Dark, Octagon, Star, Window };

struct ChipSet {
  EdgeSpots Spots;
  Inlay Centre;
  std::array<QRgb, kPictures> Body;
  std::array<QRgb, kPictures> Spot;
  QRgb Paper;
};

constexpr std::array<ChipSet, kChipStyles> kChipSets = {{
    {EdgeSpots::Bars,
     Inlay::Plain,
     {0xFFE9E6DC, 0xFFC8202A, 0xFF15803F, 0xFF23232A, 0xFF6B2FA0, 0xFFE0A21A},
     {0xFF2B5FA8, 0xFFFFFFFF, 0xFFFFFFFF, 0xFFFFFFFF, 0xFFF3D34A, 0xFF5A1E12},
     0xFFFFFFFF},
    {EdgeSpots::Pairs,
     Inlay::Ringed,
     {0xFF8FB7DE, 0xFFB3261E, 0xFF0E6B4F, 0xFF2A2A2A, 0xFF7C2D8E, 0xFFD99A00},
     {0xFF1B3A6B, 0xFFF7D774, 0xFFF5B7C5, 0xFFE85D4A, 0xFF9BE564, 0xFF2A2A2A},
     0xFFFFF6DC},
    {EdgeSpots::Triangles,
     Inlay::Octagon,
     {0xFFF4F1E8, 0xFFE0402F, 0xFF2C8C4A, 0xFF1F2D50, 0xFFF08A24, 0xFF9A9AA0},
     {0xFF6A6A6A, 0xFF101010, 0xFFF6E27A, 0xFF8FD0F5, 0xFF3A1B5C, 0xFFFFFFFF},
     0xFFFDFDFD},
    {EdgeSpots::Quarters,
     Inlay::Dark,
     {0xFF5B8DEF, 0xFFE23C5A, 0xFF18A566, 0xFF4A4A55, 0xFF9447D6, 0xFFF2B632},
     {0xFFF2F5FF, 0xFFFFE9EC, 0xFFE4FFF2, 0xFFD9D9E0, 0xFFF4E6FF, 0xFF40300A},
     0xFF17181C},
    {EdgeSpots::Blocks,
     Inlay::Scalloped,
     {0xFFD8CFC0, 0xFF9E1B32, 0xFF1F5C3A, 0xFF14213D, 0xFF5A189A, 0xFFB8860B},
     {0xFF8C6D46, 0xFFE8C872, 0xFFE8C872, 0xFFE8C872, 0xFFE8C872, 0xFF1C1C1C},
     0xFFF9EFD2},
    {EdgeSpots::Dots,
     Inlay::Window,
     {0xFF1E88A8, 0xFFD81B60, 0xFF43A047, 0xFF101018, 0xFF5E35B1, 0xFFFB8C00},
     {0xFFB9F6FF, 0xFFFFD1E3, 0xFFDCFFB8, 0xFF00E5FF, 0xFFFFE57F, 0xFF3A1A00},
     0xFFFFFFFF},
    {EdgeSpots::Rays,
     Inlay::Star,
     {0xFFEDE6F2, 0xFFF28B82, 0xFF7BC8A4, 0xFF6E7F99, 0xFFB79AE8, 0xFFF7D070},
     {0xFFB9A7C9, 0xFFA52A2A, 0xFF1F6B4A, 0xFF1D2636, 0xFF4B2A8C, 0xFF8A5A00},
     0xFFFFFFFF},
}};

constexpr double kRim = 10.4;   // radius of a chip in its square of 22 units
constexpr double kBelt = 7.4;   // inner end of the edge spots
constexpr double kPaper = 6.6;  // radius of the inlay

QRectF Disc(double radius) { return {-radius, -radius, 2 * radius, 2 * radius}; }

QPointF Polar(double radius, double degrees) {
  const double angle = degrees * std::numbers::pi / 180;
  return {radius * std::cos(angle), radius * std::sin(angle)};
}

QPainterPath Sector(double inner, double outer, double start, double span) {
  QPainterPath path;
  path.arcMoveTo(Disc(outer), start);
  path.arcTo(Disc(outer), start, span);
  path.arcTo(Disc(inner), start + span, -span);
  path.closeSubpath();
  return path;
}

void AddSpot(QPainterPath& path, EdgeSpots kind, double at) {
  switch (kind) {
    case EdgeSpots::Bars: path.addPath(Sector(kBelt, kRim, at - 13, 26)); break;
    case EdgeSpots::Pairs:
      path.addPath(Sector(kBelt, kRim, at - 15, 11));
      path.addPath(Sector(kBelt, kRim, at + 4, 11));
      break;
    case EdgeSpots::Triangles:
      path.moveTo(Polar(kRim, at - 20));
      path.lineTo(Polar(kPaper, at));
      path.lineTo(Polar(kRim, at + 20));
      path.quadTo(Polar(kRim * 1.06, at), Polar(kRim, at - 20));
      break;
    case EdgeSpots::Dots: path.addEllipse(Polar(8.7, at), 1.15, 1.15); break;
    case EdgeSpots::Quarters: path.addPath(Sector(kPaper, kRim, at - 22.5, 45)); break;
    case EdgeSpots::Blocks:
      path.addPath(Sector(kRim - 1.7, kRim, at - 16, 32));
      path.addPath(Sector(kBelt - 0.4, kRim - 2.4, at - 7, 14));
      break;
    case EdgeSpots::Rays: path.addPath(Sector(kPaper, kRim, at - 5.6, 11.2)); break;
  }
}

int SpotCount(EdgeSpots kind) {
  switch (kind) {
    case EdgeSpots::Pairs:
    case EdgeSpots::Quarters: return 4;
    case EdgeSpots::Dots: return 12;
    case EdgeSpots::Rays: return 16;
    case EdgeSpots::Triangles: return 8;
    default: return 6;
  }
}

QPainterPath SpotsPath(EdgeSpots kind) {
  QPainterPath path;
  path.setFillRule(Qt::WindingFill);
  const int count = SpotCount(kind);
  for (int i = 0; i < count; ++i) AddSpot(path, kind, 30 + i * 360.0 / count);
  return path;
}

QPainterPath Lobes(double radius, double depth, int lobes) {
  QPainterPath path;
  constexpr int kSteps = 96;
  for (int i = 0; i <= kSteps; ++i) {
    const double degrees = 360.0 * i / kSteps;
    const double wave = std::cos(lobes * degrees * std::numbers::pi / 180);
    const QPointF point = Polar(radius - depth * (1 - wave) / 2, degrees);
    i == 0 ? path.moveTo(point) : path.lineTo(point);
  }
  return path;
}

QPainterPath Polygon(double radius, int corners, double start) {
  QPainterPath path(Polar(radius, start));
  for (int i = 1; i < corners; ++i) path.lineTo(Polar(radius, start + 360.0 * i / corners));
  path.closeSubpath();
  return path;
}

QPainterPath InlayPath(Inlay inlay) {
  QPainterPath path;
  switch (inlay) {
    case Inlay::Scalloped: return Lobes(kPaper + 0.5, 1.0, 12);
    case Inlay::Octagon: return Polygon(kPaper + 0.5, 8, 22.5);
    case Inlay::Star: return Lobes(kPaper + 0.9, 1.7, 8);
    case Inlay::Window: path.addRoundedRect(QRectF(-7.2, -4.4, 14.4, 8.8), 4.4, 4.4); return path;
    default: path.addEllipse(Disc(kPaper)); return path;
  }
}

void DrawInlay(QPainter& painter, const ChipSet& set, QColor body) {
  const QPainterPath paper = InlayPath(set.Centre);
  painter.setPen(QPen(body.darker(150), 0.35));
  painter.setBrush(QColor::fromRgb(set.Paper));
  painter.drawPath(paper);
  painter.setBrush(Qt::NoBrush);
  if (set.Centre == Inlay::Ringed) {
    painter.setPen(QPen(QColor(0xC9, 0x9A, 0x2E), 0.6));
    painter.drawEllipse(Disc(kPaper - 0.7));
  } else if (set.Centre == Inlay::Plain || set.Centre == Inlay::Dark) {
    painter.setPen(QPen(body.lighter(set.Centre == Inlay::Dark ? 130 : 100), 0.4));
    painter.drawEllipse(Disc(kPaper - 0.6));
  }
}

void DrawChipShading(QPainter& painter) {
  QRadialGradient light(QPointF(-3.5, -4.5), 16);
  light.setColorAt(0, QColor(255, 255, 255, 70));
  light.setColorAt(0.45, QColor(255, 255, 255, 0));
  light.setColorAt(1, QColor(0, 0, 0, 75));
  painter.setBrush(light);
  painter.setPen(QPen(QColor(0, 0, 0, 150), 0.5));
  painter.drawEllipse(Disc(kRim));
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(QColor(255, 255, 255, 60), 0.4));
  painter.drawEllipse(Disc(kRim - 0.55));
}

void DrawOverflowSign(QPainter& painter, QColor color) {
  painter.setPen(Qt::NoPen);
  painter.setBrush(color);
  for (double x : {-3.1, 0.0, 3.1}) painter.drawEllipse(QPointF(x, 0), 1.05, 1.05);
}

QColor InkOn(QColor paper, QColor body) {
  if (paper.lightness() < 110) return Qt::white;
  if (body.lightness() < 85) return body.darker(115);
  return body.lightness() < 120 ? body.darker(165) : QColor(0x1C, 0x1C, 0x22);
}

/// Where the pips of a face stand, in thirds of the face.
constexpr std::array<std::array<std::pair<int, int>, 6>, 6> kPips = {{
    {{{0, 0}}},
    {{{-1, -1}, {1, 1}}},
    {{{-1, -1}, {0, 0}, {1, 1}}},
    {{{-1, -1}, {1, -1}, {-1, 1}, {1, 1}}},
    {{{-1, -1}, {1, -1}, {0, 0}, {-1, 1}, {1, 1}}},
    {{{-1, -1}, {1, -1}, {-1, 0}, {1, 0}, {-1, 1}, {1, 1}}},
}};

template <typename DrawPip>
void ForEachPip(int face, double spread, const DrawPip& drawPip) {
  const int count = std::clamp(face, 1, 6);
  for (int i = 0; i < count; ++i) {
    const auto [column, row] = kPips[static_cast<unsigned>(count - 1)][static_cast<unsigned>(i)];
    drawPip(QPointF(column * spread, row * spread));
  }
}

struct DiceSet {
  QColor Body;
  QColor Pips;
  bool Translucent;
  double Corner;  // radius of the corners, of a die of 32 units
  bool Pearl;
};

DiceSet DiceSetOf(int style, QColor body, QColor pips) {
  switch (style) {
    case 2: return {QColor(0xF6, 0xF0, 0xDF), QColor(0x1A, 0x1A, 0x1A), false, 7.5, false};
    case 3: return {QColor(0x1D, 0x5F, 0xD1), Qt::white, true, 2.6, false};
    case 4: return {QColor(0x1B, 0x1B, 0x20), QColor(0xF0, 0xC8, 0x50), false, 6, true};
    case 5: return {QColor(0x74, 0x2B, 0xC4), QColor(0xFF, 0xE9, 0xA8), true, 4.5, true};
    default: return {body, pips, true, 4.2, false};
  }
}

constexpr double kDieHalf = 13.6;  // half the side of a die in its square of 32 units
const QRectF kDieFace(-kDieHalf, -kDieHalf, 2 * kDieHalf, 2 * kDieHalf);

void DrawDieBody(QPainter& painter, const DiceSet& set) {
  QLinearGradient shade(kDieFace.topLeft(), kDieFace.bottomRight());
  const QColor dark = set.Body.lightness() < 30 ? set.Body : set.Body.darker(150);
  const QColor light = set.Body.lightness() < 40 ? QColor(0x55, 0x55, 0x5E) : set.Body.lighter(128);
  shade.setColorAt(0, light);
  shade.setColorAt(0.45, set.Body);
  shade.setColorAt(1, dark);
  painter.setBrush(shade);
  painter.setPen(QPen(set.Body.darker(220), 0.7));
  painter.drawRoundedRect(kDieFace, set.Corner, set.Corner);
}

void DrawDieLight(QPainter& painter, const DiceSet& set) {
  painter.setPen(Qt::NoPen);
  if (set.Translucent) {
    // Light that has gone through the die gathers at the far corner.
    QRadialGradient glow(QPointF(6, 7), 17);
    glow.setColorAt(0, QColor(255, 255, 255, 85));
    glow.setColorAt(1, QColor(255, 255, 255, 0));
    painter.setBrush(glow);
    painter.drawRoundedRect(kDieFace, set.Corner, set.Corner);
  }
  if (set.Pearl) {
    QConicalGradient pearl(QPointF(-4, -3), 35);
    for (int i = 0; i <= 8; ++i) {
      const int hue = (200 + i * 45) % 360;
      pearl.setColorAt(i / 8.0, QColor::fromHsl(i == 8 ? 200 : hue, 150, 170, i % 2 ? 18 : 58));
    }
    painter.setBrush(pearl);
    painter.drawRoundedRect(kDieFace, set.Corner, set.Corner);
  }
  QLinearGradient gloss(0, -kDieHalf, 0, kDieHalf);
  gloss.setColorAt(0, QColor(255, 255, 255, 95));
  gloss.setColorAt(0.35, QColor(255, 255, 255, 12));
  gloss.setColorAt(0.7, QColor(0, 0, 0, 0));
  gloss.setColorAt(1, QColor(0, 0, 0, 60));
  painter.setBrush(gloss);
  const double inset = 1.1;
  painter.drawRoundedRect(kDieFace.adjusted(inset, inset, -inset, -inset), set.Corner - 0.6,
                          set.Corner - 0.6);
}

void DrawDieShadow(QPainter& painter, double corner) {
  painter.setPen(Qt::NoPen);
  for (int i = 0; i < 4; ++i) {
    painter.setBrush(QColor(0, 0, 0, 26));
    const double grow = 1.8 - 0.6 * i;
    painter.drawRoundedRect(kDieFace.translated(1.1, 1.4).adjusted(-grow, -grow, grow, grow),
                            corner + grow, corner + grow);
  }
}

void DrawDiePip(QPainter& painter, QPointF at, QColor color) {
  constexpr double kPip = 2.75;
  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor(0, 0, 0, 90));
  painter.drawEllipse(at + QPointF(-0.25, -0.35), kPip + 0.25, kPip + 0.25);
  painter.setBrush(QColor(255, 255, 255, 70));
  painter.drawEllipse(at + QPointF(0.3, 0.4), kPip, kPip);
  QRadialGradient bowl(at + QPointF(0.6, 0.9), kPip * 1.7);
  bowl.setColorAt(0, color);
  bowl.setColorAt(0.6, color);
  bowl.setColorAt(1, color.darker(165));
  painter.setBrush(bowl);
  painter.drawEllipse(at, kPip, kPip);
}

QString ShortNumber(double value) {
  QString text = QString::number(value, 'f', 2);
  while (text.endsWith(QLatin1Char('0'))) text.chop(1);
  if (text.endsWith(QLatin1Char('.'))) text.chop(1);
  return text;
}

QString WithoutLeadingZero(QString text) {
  return text.startsWith(QLatin1String("0.")) ? text.mid(1) : text;
}

}  // namespace

QString ChipLabel(Currency value, bool useCentsSymbol) {
  const double amount = value.ToDouble();
  if (amount < 1) {
    if (!useCentsSymbol) return WithoutLeadingZero(QString::fromStdString(PlainText(value)));
    return WithoutLeadingZero(QString::fromStdString(PlainText(value * 100))) + QChar(0xA2);
  }
  if (amount >= 1e9) return ShortNumber(amount / 1e9) + QLatin1Char('B');
  if (amount >= 1e6) return ShortNumber(amount / 1e6) + QLatin1Char('M');
  if (amount >= 1000) return ShortNumber(amount / 1000) + QLatin1Char('K');
  return QString::fromStdString(MoneyText(value));
}

void DrawChip(QPainter& painter, QPointF centre, double size, int picture, int style,
              const QString& label) {
  const ChipSet& set = kChipSets[static_cast<unsigned>(std::clamp(style, 1, kChipStyles) - 1)];
  const auto index = static_cast<unsigned>(std::clamp(picture, 1, kPictures) - 1);
  const QColor body = QColor::fromRgb(set.Body[index]);
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.translate(centre);
  painter.scale(size / 22, size / 22);
  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor(0, 0, 0, 60));
  painter.drawEllipse(QPointF(0.35, 0.6), 10.5, 10.4);
  painter.setBrush(body);
  painter.drawEllipse(Disc(kRim));
  painter.setBrush(QColor::fromRgb(set.Spot[index]));
  painter.drawPath(SpotsPath(set.Spots));
  DrawChipShading(painter);
  DrawInlay(painter, set, body);
  const QColor ink = InkOn(QColor::fromRgb(set.Paper), body);
  if (picture >= kPictures) {
    DrawOverflowSign(painter, ink);
  } else {
    DrawLettering(painter, label, {0, 0}, label.size() > 2 ? 4.6 : 5.2, 10.6, ink);
  }
  painter.restore();
}

void DrawDie(QPainter& painter, QPointF centre, double size, int face, int style, QColor body,
             QColor pips, double turn) {
  const DiceSet set = DiceSetOf(style, body, pips);
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.translate(centre);
  painter.scale(size / 32, size / 32);
  painter.rotate(turn);
  DrawDieShadow(painter, set.Corner);
  DrawDieBody(painter, set);
  DrawDieLight(painter, set);
  ForEachPip(face, 7.6, [&](QPointF at) { DrawDiePip(painter, at, set.Pips); });
  painter.restore();
}

void DrawPrintedDie(QPainter& painter, QPointF centre, double size, int face, QColor body,
                    QColor pips) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.translate(centre);
  painter.scale(size / 12, size / 12);
  painter.setBrush(body);
  painter.setPen(QPen(pips, 0.6));
  painter.drawRoundedRect(QRectF(-5.4, -5.4, 10.8, 10.8), 1.8, 1.8);
  painter.setPen(Qt::NoPen);
  painter.setBrush(pips);
  ForEachPip(face, 3.1, [&](QPointF at) { painter.drawEllipse(at, 1.2, 1.2); });
  painter.restore();
}

void DrawPuck(QPainter& painter, QPointF centre, double size, bool on) {
  const QColor body = on ? QColor(0xF7, 0xF5, 0xEE) : QColor(0x1B, 0x1B, 0x1F);
  const QColor ink = on ? QColor(0x15, 0x15, 0x18) : QColor(0xF4, 0xF1, 0xE6);
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.translate(centre);
  painter.scale(size / 39, size / 39);
  painter.setPen(Qt::NoPen);
  for (int i = 0; i < 3; ++i) {
    painter.setBrush(QColor(0, 0, 0, 38));
    painter.drawEllipse(QPointF(0.7, 1.2), 18.3 - 0.5 * i, 18.3 - 0.5 * i);
  }
  QRadialGradient light(QPointF(-6, -8), 32);
  light.setColorAt(0, on ? QColor(255, 255, 255) : QColor(0x4A, 0x4A, 0x52));
  light.setColorAt(0.5, body);
  light.setColorAt(1, on ? body.darker(140) : QColor(0, 0, 0));
  painter.setBrush(light);
  painter.setPen(QPen(QColor(0, 0, 0, 170), 0.6));
  painter.drawEllipse(Disc(17.2));
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(ink, 0.9));
  painter.drawEllipse(Disc(14.4));
  painter.setPen(QPen(QColor(255, 255, 255, on ? 200 : 50), 0.6));
  painter.drawEllipse(Disc(16.3));
  painter.restore();
  DrawLettering(painter, on ? QStringLiteral("ON") : QStringLiteral("OFF"), centre, size * 9.6 / 39,
                size * 23 / 39, ink);
}

void DrawMarker(QPainter& painter, QPointF centre, double size, Marker marker) {
  struct Look {
    const char* Text;
    QColor Body;
    QColor Ink;
  };
  const Look looks[] = {{"BUY", QColor(0xF2, 0xC1, 0x2E), QColor(0x22, 0x1A, 0x05)},
                        {"LAY", QColor(0x3C, 0x8D, 0xE0), Qt::white},
                        {"ON", QColor(0xF7, 0xF5, 0xEE), QColor(0x15, 0x15, 0x18)},
                        {"OFF", QColor(0x1B, 0x1B, 0x1F), Qt::white}};
  const Look& look = looks[static_cast<int>(marker)];
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.translate(centre);
  painter.scale(size / 17, size / 17);
  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor(0, 0, 0, 90));
  painter.drawEllipse(QPointF(0.4, 0.6), 8.1, 8.1);
  QRadialGradient light(QPointF(-3, -4), 16);
  light.setColorAt(0,
                   look.Body.lightness() < 60 ? QColor(0x50, 0x50, 0x58) : look.Body.lighter(120));
  light.setColorAt(0.5, look.Body);
  light.setColorAt(1, look.Body.darker(130));
  painter.setBrush(light);
  painter.setPen(QPen(QColor(0, 0, 0, 170), 0.5));
  painter.drawEllipse(Disc(8));
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(look.Ink, 0.5));
  painter.drawEllipse(Disc(7));
  painter.restore();
  DrawLettering(painter, QLatin1String(look.Text), centre, size * 4.9 / 17, size * 11.6 / 17,
                look.Ink);
}

const QFont& LetteringFont(Lettering lettering) {
  static const std::array<QFont, 2> fonts = [] {
    const std::array<QStringList, 2> families = {
        QStringList{"DejaVu Sans", "Arial", "Helvetica", "sans-serif"},
        QStringList{"DejaVu Serif", "Georgia", "Times New Roman", "serif"}};
    std::array<QFont, 2> result;
    for (std::size_t i = 0; i < result.size(); ++i) {
      result[i].setFamilies(families[i]);
      result[i].setPixelSize(64);
      result[i].setBold(true);
      result[i].setHintingPreference(QFont::PreferNoHinting);
    }
    return result;
  }();
  return fonts[static_cast<std::size_t>(lettering)];
}

QPainterPath TextOutline(const QString& text, Lettering lettering, double capHeight,
                         double maxWidth) {
  const QFont& font = LetteringFont(lettering);
  QPainterPath path;
  path.addText(0, 0, font, text);
  const QRectF bounds = path.boundingRect();
  if (bounds.isEmpty()) return path;
  const double capital = QFontMetricsF(font).capHeight();
  const double scale = capHeight / capital;
  const double squeeze = std::min(1.0, maxWidth / (bounds.width() * scale * kNarrowing));
  QTransform transform;
  // A text that is much too wide becomes lower as well as narrower.
  transform.scale(scale * squeeze * kNarrowing, scale * std::max(squeeze, std::sqrt(squeeze)));
  transform.translate(-bounds.center().x(), capital / 2);
  return transform.map(path);
}

void DrawLettering(QPainter& painter, const QString& text, QPointF centre, double capHeight,
                   double maxWidth, QColor color, Lettering lettering) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.translate(centre);
  painter.fillPath(TextOutline(text, lettering, capHeight, maxWidth), color);
  painter.restore();
}
