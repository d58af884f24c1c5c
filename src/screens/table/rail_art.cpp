#include "screens/table/rail_art.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>

#include <algorithm>

#include "core/game_state.h"
#include "core/text.h"
#include "screens/art/chip_art.h"
#include "screens/table/table_layout.h"

namespace {

constexpr QColor kBrass(0xD8, 0xB2, 0x5C);
constexpr QColor kBrassDark(0x7A, 0x59, 0x1E);

QLinearGradient Vertical(const QRectF& rect, QColor top, QColor bottom) {
  QLinearGradient gradient(rect.topLeft(), rect.bottomLeft());
  gradient.setColorAt(0, top);
  gradient.setColorAt(1, bottom);
  return gradient;
}

QLinearGradient Brass(const QRectF& rect) {
  QLinearGradient gradient(rect.topLeft(), rect.bottomLeft());
  gradient.setColorAt(0, QColor(0xF4, 0xDC, 0x98));
  gradient.setColorAt(0.5, kBrass);
  gradient.setColorAt(1, QColor(0xA5, 0x7D, 0x32));
  return gradient;
}

/// The lip of wood around the felt: the felt's outline, widened.
void PaintLip(QPainter& painter) {
  painter.setBrush(Qt::NoBrush);
  const QPainterPath& felt = FeltOutline();
  struct Layer {
    double Width;
    QColor Color;
  };
  constexpr Layer kLayers[] = {{11, QColor(0x2A, 0x12, 0x08)},
                               {9.4, QColor(0x6E, 0x35, 0x17)},
                               {6.6, QColor(0x8C, 0x49, 0x22)},
                               {3.6, QColor(0x6B, 0x33, 0x16)},
                               {1.4, kBrass}};
  for (const Layer& layer : kLayers) {
    painter.setPen(QPen(layer.Color, layer.Width));
    painter.drawPath(felt);
  }
}

/// The felt's edge without the right side, where the table goes on.
QPainterPath RailLine() {
  const QPainterPath& felt = FeltOutline();
  QPainterPath line(QPointF(kTableWidth + 60, felt.boundingRect().top()));
  for (int i = 1; i + 1 < felt.elementCount(); ++i) {
    const QPainterPath::Element element = felt.elementAt(i);
    if (element.isCurveTo()) {
      line.cubicTo(element, felt.elementAt(i + 1), felt.elementAt(i + 2));
      i += 2;
    } else {
      line.lineTo(element);
    }
  }
  line.lineTo(kTableWidth + 60, felt.boundingRect().bottom());
  return line;
}

/// The colour of the leather at a distance from the felt.
QColor LeatherAt(double distance) {
  constexpr double kCrown = 18;  // where the cushion is highest
  constexpr double kReach = 26;
  const double slope = (distance - kCrown) / kReach;
  const double light = std::max(0.0, 1 - slope * slope);
  return QColor::fromRgbF(static_cast<float>(0.12 + 0.20 * light),
                          static_cast<float>(0.065 + 0.105 * light),
                          static_cast<float>(0.045 + 0.075 * light));
}

/// The cushion follows the felt's edge: bands of leather, the farthest first.
void PaintPadding(QPainter& painter) {
  constexpr double kFarthest = 70;
  painter.fillRect(QRectF(0, 0, kTableWidth, kTableHeight), LeatherAt(kFarthest));
  const QPainterPath line = RailLine();
  painter.setBrush(Qt::NoBrush);
  for (double distance = kFarthest; distance > 0; distance -= 0.75) {
    painter.setPen(
        QPen(LeatherAt(distance), 2 * distance, Qt::SolidLine, Qt::FlatCap, Qt::RoundJoin));
    painter.drawPath(line);
  }
}

/// A line of stitches follows the rail.
void PaintStitches(QPainter& painter) {
  QPainterPath seam(QPointF(9, 52));
  seam.lineTo(9, 318);
  seam.arcTo(QRectF(9, 176, 284, 284), 180, 90);
  seam.lineTo(500, 460);
  const auto stitch = [&](QColor color, double drop) {
    QPen pen(color, 0.8, Qt::CustomDashLine, Qt::RoundCap);
    pen.setDashPattern({4, 3.5});
    painter.setPen(pen);
    painter.drawPath(seam.translated(drop, drop));
  };
  painter.setBrush(Qt::NoBrush);
  stitch(QColor(0, 0, 0, 120), 0.7);
  stitch(QColor(0xC9, 0x9A, 0x70, 170), 0);
}

void PaintWell(QPainter& painter, const QRectF& rect, double radius) {
  painter.setPen(QPen(kBrassDark, 0.7));
  painter.setBrush(Vertical(rect, QColor(0x0C, 0x08, 0x06), QColor(0x2C, 0x1E, 0x17)));
  painter.drawRoundedRect(rect, radius, radius);
  painter.setPen(QPen(QColor(255, 230, 180, 40), 0.5));
  painter.drawLine(QPointF(rect.left() + radius, rect.bottom() + 0.5),
                   QPointF(rect.right() - radius, rect.bottom() + 0.5));
}

void PaintRack(QPainter& painter) {
  for (int place = 0; place < 4; ++place)
    PaintWell(painter, StackSpotRect(place).adjusted(0, -0.5, 0, 1.5), 5);
  const QRectF chips = RackSlotRect(5).united(RackSlotRect(1)).adjusted(-1, -1.5, 1.5, 1.5);
  PaintWell(painter, chips, 6);
  painter.setPen(QPen(QColor(255, 235, 200, 26), 0.6));
  for (int color = 1; color < 5; ++color) {
    const double x = RackSlotRect(color).left() - 0.5;
    painter.drawLine(QPointF(x, 6), QPointF(x, 27));
  }
  const QRectF tools = MarkerSpotRect(BuyMarkerSpot).united(MarkerSpotRect(OnMarkerSpot));
  PaintWell(painter, tools.adjusted(-9, -4.5, 9, 5), 12);
}

void PaintFace(QPainter& painter) {
  const QColor skin(0xE9, 0xB8, 0x93);
  painter.setPen(Qt::NoPen);
  painter.setBrush(skin.darker(116));
  painter.drawRoundedRect(QRectF(564, 50, 12, 14), 4, 4);  // neck
  painter.setBrush(skin.darker(108));
  painter.drawEllipse(QPointF(557.6, 41), 2.6, 3.8);
  painter.drawEllipse(QPointF(582.4, 41), 2.6, 3.8);
  QRadialGradient cheek(QPointF(566, 36), 24);
  cheek.setColorAt(0, skin.lighter(110));
  cheek.setColorAt(1, skin.darker(112));
  painter.setBrush(cheek);
  QPainterPath face(QPointF(557.5, 34));
  face.cubicTo(557, 48, 561, 57, 570, 57);
  face.cubicTo(579, 57, 583, 48, 582.5, 34);
  face.cubicTo(582, 24, 558, 24, 557.5, 34);
  painter.drawPath(face);
  painter.setBrush(QColor(0x30, 0x22, 0x1C));
  painter.drawEllipse(QPointF(565, 41), 1.3, 1.5);
  painter.drawEllipse(QPointF(575, 41), 1.3, 1.5);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(QColor(0x4A, 0x30, 0x22), 1.1, Qt::SolidLine, Qt::RoundCap));
  painter.drawLine(QPointF(562.6, 37.6), QPointF(567, 37));
  painter.drawLine(QPointF(573, 37), QPointF(577.4, 37.6));
  painter.setPen(QPen(skin.darker(145), 0.9, Qt::SolidLine, Qt::RoundCap));
  painter.drawLine(QPointF(570, 41.5), QPointF(569, 46));
  QPainterPath smile(QPointF(564.6, 49.6));
  smile.quadTo(570, 54, 575.4, 49.6);
  painter.setPen(QPen(QColor(0x9A, 0x3B, 0x35), 1.2, Qt::SolidLine, Qt::RoundCap));
  painter.drawPath(smile);
}

void PaintHair(QPainter& painter) {
  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor(0x2B, 0x1D, 0x17));
  QPainterPath hair(QPointF(556.6, 38));
  hair.cubicTo(553, 17, 566, 14, 571, 17);
  hair.cubicTo(583, 14, 587, 26, 583.4, 38);
  hair.cubicTo(582.5, 32, 580, 29, 574, 28.4);
  hair.cubicTo(567, 28, 560, 27, 558.6, 32);
  hair.closeSubpath();
  painter.drawPath(hair);
  painter.setBrush(QColor(255, 255, 255, 26));
  QPainterPath shine(QPointF(562, 23));
  shine.quadTo(569, 17.5, 578, 21);
  shine.quadTo(570, 20, 562, 23);
  painter.drawPath(shine);
}

void PaintSuit(QPainter& painter) {
  const QColor shirt(0xF2, 0xF1, 0xEC);
  painter.setPen(Qt::NoPen);
  QPainterPath body(QPointF(534, 97));
  body.cubicTo(535, 74, 547, 66, 562, 62);
  body.lineTo(578, 62);
  body.cubicTo(593, 66, 605, 74, 606, 97);
  body.closeSubpath();
  QLinearGradient cloth(534, 0, 606, 0);
  cloth.setColorAt(0, shirt.darker(125));
  cloth.setColorAt(0.3, shirt);
  cloth.setColorAt(0.75, shirt);
  cloth.setColorAt(1, shirt.darker(130));
  painter.setBrush(cloth);
  painter.drawPath(body);
  painter.setPen(QPen(QColor(0, 0, 0, 50), 0.8));
  painter.drawLine(QPointF(547, 97), QPointF(549.5, 83));
  painter.drawLine(QPointF(593, 97), QPointF(590.5, 83));
  painter.setPen(Qt::NoPen);
  painter.setBrush(Vertical({548, 62, 44, 36}, QColor(0x2C, 0x2C, 0x36), QColor(0x12, 0x12, 0x18)));
  for (int side : {-1, 1}) {
    QPainterPath vest(QPointF(570, 90));
    vest.lineTo(570 + side * 8, 64);
    vest.cubicTo(570 + side * 16, 66, 570 + side * 19, 68, 570 + side * 20, 97 - 20);
    vest.lineTo(570 + side * 20, 97);
    vest.lineTo(570, 97);
    vest.closeSubpath();
    painter.drawPath(vest);
  }
  painter.setBrush(kBrass);
  painter.drawEllipse(QPointF(570, 93.5), 1, 1);
  painter.setBrush(QColor(0xC4, 0x1E, 0x2A));
  for (int side : {-1, 1}) {
    QPainterPath bow(QPointF(570, 64.5));
    bow.cubicTo(570 + side * 4, 61, 570 + side * 8, 60, 570 + side * 9, 60.5);
    bow.quadTo(570 + side * 9.6, 65, 570 + side * 9, 68.5);
    bow.cubicTo(570 + side * 8, 69, 570 + side * 4, 68, 570, 64.5);
    painter.drawPath(bow);
  }
  painter.setBrush(QColor(0x93, 0x12, 0x1C));
  painter.drawRoundedRect(QRectF(568, 62.4, 4, 4.2), 1, 1);
}

/// The stick: a cane with a bent end, held at the right shoulder.
void PaintStick(QPainter& painter) {
  QPainterPath cane(QPointF(627, 94));
  cane.lineTo(618, 34);
  cane.cubicTo(616, 20, 602, 20, 604, 31);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(QColor(0, 0, 0, 90), 4.4, Qt::SolidLine, Qt::RoundCap));
  painter.drawPath(cane.translated(1, 1));
  painter.setPen(QPen(QColor(0x8A, 0x5C, 0x25), 3.6, Qt::SolidLine, Qt::RoundCap));
  painter.drawPath(cane);
  painter.setPen(QPen(QColor(0xE3, 0xB6, 0x6C), 1.5, Qt::SolidLine, Qt::RoundCap));
  painter.drawPath(cane.translated(-0.6, -0.4));
}

void PaintArm(QPainter& painter) {
  QPainterPath arm(QPointF(593, 80));
  arm.cubicTo(598, 97, 614, 99, 621.5, 85);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(QColor(0xBE, 0xBC, 0xB6), 11.6, Qt::SolidLine, Qt::RoundCap));
  painter.drawPath(arm);
  painter.setPen(QPen(QColor(0xE4, 0xE3, 0xDE), 10.4, Qt::SolidLine, Qt::RoundCap));
  painter.drawPath(arm);
  painter.setPen(QPen(QColor(0x9C, 0x72, 0x52), 0.7));
  painter.setBrush(QColor(0xE9, 0xB8, 0x93));
  painter.drawRoundedRect(QRectF(618.2, 73, 10.4, 12), 4.6, 4.6);
  painter.setPen(QPen(QColor(0xC0, 0x8B, 0x66), 0.7));
  for (double y : {76.2, 79.2, 82.0}) painter.drawLine(QPointF(620, y), QPointF(625.4, y - 0.4));
}

QString MultipleText(Currency multiple) {
  return QString::fromStdString(PlainText(multiple)) + QLatin1Char('X');
}

QString DollarText(Currency amount) {
  return QLatin1Char('$') + QString::fromStdString(MoneyText(amount));
}

}  // namespace

void PaintRail(QPainter& painter) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  PaintPadding(painter);
  PaintStitches(painter);
  PaintLip(painter);
  PaintRack(painter);
  painter.restore();
}

void PaintRailShadow(QPainter& painter) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setClipPath(FeltOutline(), Qt::IntersectClip);
  painter.setBrush(Qt::NoBrush);
  for (int i = 0; i < 5; ++i) {
    painter.setPen(QPen(QColor(0, 0, 0, 30), 2.0 + 2.6 * i));
    painter.drawPath(FeltOutline());
  }
  painter.restore();
}

void PaintStickPerson(QPainter& painter) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  const QRectF frame(505, 4, 131, 93);
  painter.setPen(QPen(kBrassDark, 1.2));
  QRadialGradient room(frame.center() + QPointF(0, -10), 82);
  room.setColorAt(0, QColor(0x5E, 0x2B, 0x2B));
  room.setColorAt(1, QColor(0x1C, 0x0D, 0x12));
  painter.setBrush(room);
  painter.drawRoundedRect(frame, 6, 6);
  QPainterPath inside;
  inside.addRoundedRect(frame.adjusted(1, 1, -1, -1), 5, 5);
  painter.setClipPath(inside, Qt::IntersectClip);
  PaintSuit(painter);
  PaintFace(painter);
  PaintHair(painter);
  PaintStick(painter);
  PaintArm(painter);
  painter.setClipping(false);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(kBrass, 0.8));
  painter.drawRoundedRect(frame.adjusted(1.6, 1.6, -1.6, -1.6), 5, 5);
  painter.restore();
}

void PaintPanelSwitch(QPainter& painter) {
  const QRectF rect(599, 379, 36, 28);
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor(0, 0, 0, 90));
  painter.drawRoundedRect(rect.translated(0.8, 1.2), 5, 5);
  painter.setPen(QPen(kBrassDark, 0.8));
  painter.setBrush(Brass(rect));
  painter.drawRoundedRect(rect, 5, 5);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(QColor(255, 248, 220, 150), 0.6));
  painter.drawRoundedRect(rect.adjusted(1.4, 1.4, -1.4, -1.4), 4, 4);
  painter.restore();
  const QColor ink(0x35, 0x22, 0x08);
  DrawLettering(painter, Game.DisplayHopBets ? QStringLiteral("PROP") : QStringLiteral("HOP"),
                {617, 388.5}, 6.4, 29, ink);
  DrawLettering(painter, QStringLiteral("BETS"), {617, 398.5}, 6.4, 29, ink);
}

void PaintPlacard(QPainter& painter) {
  const QRectF rect(507, 417, 128, 57);
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor(0, 0, 0, 110));
  painter.drawRoundedRect(rect.translated(1, 1.6), 5, 5);
  painter.setPen(QPen(kBrassDark, 1));
  painter.setBrush(Vertical(rect, QColor(0x22, 0x33, 0x4E), QColor(0x0C, 0x14, 0x24)));
  painter.drawRoundedRect(rect, 5, 5);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(kBrass, 0.9));
  painter.drawRoundedRect(rect.adjusted(2.2, 2.2, -2.2, -2.2), 3.6, 3.6);
  painter.restore();
  const QColor light(0xF6, 0xF0, 0xDC);
  DrawLettering(painter, QStringLiteral("MINIMUM"), {539, 428.5}, 4.8, 54, kBrass);
  DrawLettering(painter, QStringLiteral("MAXIMUM"), {603, 428.5}, 4.8, 54, kBrass);
  DrawLettering(painter, DollarText(Game.MinPlacard), {539, 441}, 9, 56, light, Lettering::Serif);
  DrawLettering(painter, DollarText(Game.MaxPlacard), {603, 441}, 9, 56, light, Lettering::Serif);
  DrawLettering(painter, QStringLiteral("ODDS   4·10    5·9    6·8"), {571, 455.5}, 4.6, 116,
                kBrass);
  const QString odds = MultipleText(Game.OddsAllowed410) + QStringLiteral("  ·  ") +
                       MultipleText(Game.OddsAllowed59) + QStringLiteral("  ·  ") +
                       MultipleText(Game.OddsAllowed68);
  DrawLettering(painter, odds, {571, 465.5}, 6.4, 112, light);
}
