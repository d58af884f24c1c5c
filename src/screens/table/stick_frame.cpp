#include "screens/table/stick_frame.h"

#include <QColor>
#include <QObject>
#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>
#include <QString>
#include <QTextStream>

#include "core/game_state.h"
#include "figures/call_text.h"
#include "screens/art/chip_art.h"
#include "screens/art/roles.h"

namespace {

constexpr QPointF kFrameCorner(505, 4);
const QRectF kFrameSize(0, 0, 131, 93);
constexpr QColor kFrameWood(0x7A, 0x59, 0x1E);
constexpr QColor kFrameBrass(0xD8, 0xB2, 0x5C);

/// A part of the figure: filled, or drawn with a pen. The outline is in letters of path data, from
/// the corner of the frame: M, L and C with their points, Z to close.
struct Part {
  const char* Outline;
  QRgb Color;
  QRgb Below = 0;  // where the colour goes to, from the top down; 0 for one colour
  double Pen = 0;
  bool Flat = false;  // ends of the pen
};

constexpr Part kFigure[] = {
    // The lamp's cone of light.
    {"M44 0 L87 0 L118 93 L13 93 Z", 0x29FFE9B0, 0x01FFE9B0},
    // Shirt and shoulders, in light and in shade.
    {"M20 93 C21 74 33 64 50 60 L65 66 L80 60 C97 64 109 74 111 93 Z", 0xFFE9E6DC},
    {"M80 60 C97 64 109 74 111 93 L88 93 C90 80 88 68 80 60 Z", 0xFFBFBDB6},
    // Vest and lapels.
    {"M50 60 L65 79 L65 93 L40 93 C39 78 41 68 46 61.2 Z", 0xFF2C2F3B, 0xFF14161D},
    {"M80 60 L65 79 L65 93 L90 93 C91 78 89 68 84 61.2 Z", 0xFF171922},
    {"M50 60 L65 79 L61.6 84 L46.4 63 Z", 0xFF3A3E4D},
    {"M80 60 L65 79 L68.4 84 L83.6 63 Z", 0xFF252834},
    {"M65 85.4 L65 85.4", 0xFFD8B25C, 0, 2.2},
    {"M65 91 L65 91", 0xFFD8B25C, 0, 2.2},
    // Shirt front.
    {"M54 58 L65 76 L76 58 Z", 0xFFF6F4EC},
    {"M65 62 L76 58 L65 76 Z", 0xFFD5D2C8},
    // Neck and collar.
    {"M58 46 L58 57.5 C60 62 70 62 72 57.5 L72 46 Z", 0xFFB57A55},
    {"M58 50 C62 56 69 56.4 72 52 L72 48 L58 48 Z", 0xFF8F5A3C},
    {"M57.4 55.4 L53.2 58.4 L60.4 66.6 L65 62.2 Z", 0xFFFFFFFF},
    {"M72.6 55.4 L76.8 58.4 L69.6 66.6 L65 62.2 Z", 0xFFD9D6CD},
    // Bow tie.
    {"M65 63.6 C60 59.6 55.6 59 54.6 60 C53.8 62.4 53.8 65.6 54.6 68 C56 68.8 60.4 67.4 65 63.6 Z",
     0xFFC4202C},
    {"M65 63.6 C70 59.6 74.4 59 75.4 60 C76.2 62.4 76.2 65.6 75.4 68 C74 68.8 69.6 67.4 65 63.6 Z",
     0xFF93141E},
    {"M64 62.5 L66 62.5 L66 64.9 L64 64.9 Z", 0xFF7D0F18},
    {"M64 62.5 L66 62.5 L66 64.9 L64 64.9 Z", 0xFF7D0F18, 0, 2.6},
    // Head, its shaded half, ears.
    {"M51.6 27 C51 38 53 45.6 57 50 C60 53.2 63 54.6 65 54.6 C67 54.6 70 53.2 73 50 "
     "C77 45.6 79 38 78.4 27 C77 15 53 15 51.6 27 Z",
     0xFFD69A70},
    {"M65 18 C74 18 78 21 78.4 27 C79 38 77 45.6 73 50 C70 53.2 67 54.6 65 54.6 L66.4 47 "
     "C69 46.6 70 44 68.6 41 L66.4 33 Z",
     0xFFB97E57},
    {"M51.6 30.6 C48.6 29.6 48.2 37.6 52.4 39.4 Z", 0xFFC78A61},
    {"M78.4 30.6 C81.4 29.6 81.8 37.6 77.6 39.4 Z", 0xFFA56B47},
    // Nose, moustache, mouth.
    {"M64.8 33 L62.4 40.6 C62.6 42 64 42.4 65.6 42.2", 0xFF9C6340, 0, 0.9},
    {"M65 43.6 C61.6 42.9 58.6 44.6 57.4 47 C60.4 46.6 63 46.8 65 46 C67 46.8 69.6 46.6 72.6 47 "
     "C71.4 44.6 68.4 42.9 65 43.6 Z",
     0xFF33231C},
    {"M61.6 49 C63.6 50.3 66.6 50.3 68.6 49", 0xFF7C3F30, 0, 0.9},
    // Hair.
    {"M51.4 23 C50.6 27 51 31 52 34 C53.4 31 53.6 27 53.8 24 Z", 0xFF33231C},
    {"M78.6 23 C79.4 27 79 31 78 34 C76.6 31 76.4 27 76.2 24 Z", 0xFF251914},
    {"M51.8 24 C49.4 15 53 9.6 58.4 9.2 C59 6.6 67 5.2 71.6 8.4 C78 9 80.8 15.6 78.2 24 Z",
     0xFF3A2820},
    {"M71.6 8.4 C78 9 80.8 15.6 78.2 24 L71 24 C74.4 18.6 74.4 12 68 9 Z", 0xFF271914},
    {"M58.4 9.2 C57.4 13 58.4 17.6 60.4 20.6 M62.2 8.6 C61.6 12.6 63 17 65.4 20 "
     "M66.6 8.4 C67.4 12 69.4 16 70.6 20",
     0xFF6B4A38, 0, 0.8},
    {"M58.4 9.2 C61 10.6 64 7 71.6 8.4 C66 4.8 59 6.2 58.4 9.2 Z", 0xFF4F382C},
    // The shadow that the visor throws, and the eyes in it.
    {"M52.2 25 C58 28.8 72 28.8 77.8 25 L78.2 33.4 C71 37.4 59 37.4 51.9 33.4 Z", 0x9E3F2A22},
    {"M56.6 33.2 C58 32.2 60.4 32.2 61.6 33.2 M68.4 33.2 C69.6 32.2 72 32.2 73.4 33.2", 0xFF1C110D,
     0, 1.15},
    // The visor.
    {"M50.6 22.6 C56 18.4 74 18.4 79.4 22.6 L79 26 C73 22.8 57 22.8 51 26 Z", 0xFF12321F},
    {"M47.4 28.4 C51 21.6 79 21.6 82.6 28.4 C80 32.8 50 32.8 47.4 28.4 Z", 0xED1F7A48},
    {"M49.6 27.6 C54 23.4 70 22.8 77 25.2 C70 24.8 57 25.4 49.6 27.6 Z", 0xBF8FE0B0},
    // Forearms with their bands.
    {"M20 92 L37 81.6", 0xFFC4C1B7, 0, 14},
    {"M20 91.4 L37 81", 0xFFEFECE3, 0, 12.2},
    {"M110 92 L94.4 75.4", 0xFF98968F, 0, 14},
    {"M110 91.6 L94.4 75", 0xFFCFCCC3, 0, 12.2},
    {"M23.6 82.4 L30.4 93", 0xFFB3262F, 0, 2.6, true},
    {"M107.4 81.6 L98.6 89.4", 0xFF86161F, 0, 2.6, true},
    // The stick across the chest: its shadow, its wood, the light on it.
    {"M122.8 59.6 C128.8 58.4 129.4 68.4 121.8 68 L116.8 67.4 L6.8 87.8", 0x59000000, 0, 5},
    {"M120.6 57.4 C127.6 55.6 129 67.6 119.4 66 L6 86.4", 0xFF7A4F1C, 0, 4.2},
    {"M120.6 56.9 C127 55.4 128 66.4 119.2 65.2 L6 85.7", 0xFFDCAE63, 0, 2.1},
    // Hands that hold it.
    {"M37.2 75.4 C40 73.4 45.4 72.6 47.6 74.4 L49 82.6 C46 86.4 39.4 87 37.4 84.6 Z", 0xFFD69A70},
    {"M37.2 75.4 C40 73.4 45.4 72.6 47.6 74.4 L49 82.6 C46 86.4 39.4 87 37.4 84.6 Z "
     "M40.2 74.2 L41.4 82.4 M43 73.5 L44.2 81.8 M45.7 73.4 L46.8 81",
     0xFF7E4C30, 0, 0.55},
    {"M82.4 67.4 C85 65.4 90.4 64.6 92.6 66.4 L94 74.6 C91 78.4 84.4 79 82.4 76.6 Z", 0xFFC1855D},
    {"M82.4 67.4 C85 65.4 90.4 64.6 92.6 66.4 L94 74.6 C91 78.4 84.4 79 82.4 76.6 Z "
     "M85.2 66.2 L86.4 74.4 M88 65.5 L89.2 73.8 M90.7 65.4 L91.8 73",
     0xFF7E4C30, 0, 0.55},
    // Cuffs.
    {"M34.6 75.4 L38.6 73.6 L40.6 84.8 L37 86.8 Z", 0xFFFFFFFF},
    {"M34.6 75.4 L38.6 73.6 L40.6 84.8 L37 86.8 Z", 0xFFC4C1B7, 0, 0.4},
    {"M91 66.8 L95.4 68.4 L96.6 78 L93 78 Z", 0xFFE4E1D8},
    {"M91 66.8 L95.4 68.4 L96.6 78 L93 78 Z", 0xFF98968F, 0, 0.4},
};

QPointF NextPoint(QTextStream& data) {
  double x = 0;
  double y = 0;
  data >> x >> y;
  return {x, y};
}

QPainterPath PathOf(const char* outline) {
  QString letters = QLatin1String(outline);
  QTextStream data(&letters);
  QPainterPath path;
  for (QChar kind; data.skipWhiteSpace(), !data.atEnd();) {
    data >> kind;
    if (kind == u'M') path.moveTo(NextPoint(data));
    if (kind == u'L') path.lineTo(NextPoint(data));
    if (kind == u'Z') path.closeSubpath();
    if (kind != u'C') continue;
    const QPointF first = NextPoint(data);
    const QPointF second = NextPoint(data);
    path.cubicTo(first, second, NextPoint(data));
  }
  return path;
}

QBrush BrushOf(const Part& part, const QRectF& bounds) {
  if (part.Below == 0) return QColor::fromRgba(part.Color);
  QLinearGradient shade(bounds.topLeft(), bounds.bottomLeft());
  shade.setColorAt(0, QColor::fromRgba(part.Color));
  shade.setColorAt(1, QColor::fromRgba(part.Below));
  return shade;
}

void PaintPart(QPainter& painter, const Part& part) {
  const QPainterPath path = PathOf(part.Outline);
  if (part.Pen == 0) {
    painter.fillPath(path, BrushOf(part, path.boundingRect()));
    return;
  }
  painter.strokePath(path, QPen(QColor::fromRgba(part.Color), part.Pen, Qt::SolidLine,
                                part.Flat ? Qt::FlatCap : Qt::RoundCap, Qt::RoundJoin));
}

/// The dark room that the frame shows.
QBrush Room() {
  QRadialGradient room(QPointF(62, 34), 88);
  room.setColorAt(0, QColor(0x3D, 0x5A, 0x54));
  room.setColorAt(0.55, QColor(0x1D, 0x2F, 0x2F));
  room.setColorAt(1, QColor(0x0B, 0x13, 0x15));
  return room;
}

/// What is painted is cut off by the frame, which is painted last.
template <typename Paint>
void PaintFramed(QPainter& painter, const QBrush& ground, const Paint& paint) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.translate(kFrameCorner);
  QPainterPath inside;
  inside.addRoundedRect(kFrameSize.adjusted(1, 1, -1, -1), 5, 5);
  painter.fillPath(inside, ground);
  painter.save();
  painter.setClipPath(inside, Qt::IntersectClip);
  paint();
  painter.restore();
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(kFrameWood, 1.4));
  painter.drawRoundedRect(kFrameSize.adjusted(1.1, 1.1, -1.1, -1.1), 5, 5);
  painter.setPen(QPen(kFrameBrass, 0.8));
  painter.drawRoundedRect(kFrameSize.adjusted(2, 2, -2, -2), 4.4, 4.4);
  painter.restore();
}

/// Letters that begin, or end, at a place of the base line.
void WriteFrom(QPainter& painter, const QString& text, QPointF base, double capHeight, double most,
               QColor color, Lettering face, bool toLeft) {
  const QPainterPath outline = TextOutline(text, face, capHeight, most);
  const QRectF bounds = outline.boundingRect();
  const double x = toLeft ? base.x() - bounds.right() : base.x() - bounds.left();
  painter.fillPath(outline.translated(x, base.y() - capHeight / 2), color);
}

void PaintThrow(QPainter& painter, const CalledThrow& last) {
  constexpr double kDie = 37;
  constexpr QColor kBody(0xC8, 0x1E, 0x28);
  const auto die = [&](QPointF centre, double turn, int face) {
    painter.save();
    painter.translate(centre);
    painter.rotate(turn);
    DrawPrintedDie(painter, {0, 0}, kDie, face, kBody, Qt::white);
    painter.restore();
  };
  die({25, 27}, -7, last.Die1);
  die({62, 30}, 9, last.Die2);
  const int total = last.Die1 + last.Die2;
  DrawLettering(painter, QString::number(total), {106, 34}, 20, 38, Qt::white, Lettering::Serif);
  const QString net = QString::fromStdString(CallNetText(last.Net));
  const QColor color = last.Net > 0 ? kGain : last.Net < 0 ? kLoss : kMuted;
  constexpr double kNetRoom = 52;
  const double netWidth = TextOutline(net, Lettering::Plain, 12, kNetRoom).boundingRect().width();
  constexpr double kLeft = 9;
  constexpr double kRight = 122;
  WriteFrom(painter, net, {kRight, 74}, 12, kNetRoom, color, Lettering::Plain, true);
  const double room = kRight - kLeft - netWidth - 5;
  WriteFrom(painter, QString::fromStdString(TotalWord(total)).toUpper(), {kLeft, 70}, 10.4, room,
            Qt::white, Lettering::Serif, false);
  WriteFrom(painter, QString::fromStdString(PointWords(last)), {kLeft, 84}, 6.8, kRight - kLeft,
            kInk, Lettering::Plain, false);
}

}  // namespace

void PaintStickFigure(QPainter& painter) {
  PaintFramed(painter, Room(), [&] {
    for (const Part& part : kFigure) PaintPart(painter, part);
  });
}

void PaintEmptyFrame(QPainter& painter) {
  PaintFramed(painter, Room(), [&] { PaintPart(painter, kFigure[0]); });
}

void PaintCallBoard(QPainter& painter) {
  QLinearGradient board(kFrameSize.topLeft(), kFrameSize.bottomLeft());
  board.setColorAt(0, QColor(0x24, 0x18, 0x12));
  board.setColorAt(1, QColor(0x0C, 0x08, 0x06));
  PaintFramed(painter, board, [&] {
    DrawLettering(painter, QObject::tr("last roll"), {106, 15}, 5.4, 34, kMuted);
    painter.setPen(QPen(kFrameWood, 0.7));
    painter.drawLine(QPointF(8, 55), QPointF(123, 55));
    if (Game.LastRolls.empty()) return;
    const RollNote& last = Game.LastRolls.front();
    PaintThrow(painter, {last.Die1, last.Die2, last.PrevPoint, last.Point, last.Net});
  });
}
