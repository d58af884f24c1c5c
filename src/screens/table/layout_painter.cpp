// The felt with its lines and lettering.
#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>
#include <optional>
#include <vector>

#include "bets/decide_bet.h"
#include "core/game_state.h"
#include "core/text.h"
#include "screens/art/chip_art.h"
#include "screens/art/felt_art.h"
#include "screens/table/lettering.h"
#include "screens/table/rail_art.h"
#include "screens/table/stick_frame.h"
#include "screens/table/table_painter.h"
#include "screens/table/table_settings.h"

namespace {

QColor SlotColor(TableColorSlot slot) {
  return QColor::fromRgb(Game.TableColor[static_cast<unsigned>(slot)]);
}

void Stroke(QPainter& painter, const QPainterPath& path, QColor color, double width) {
  painter.strokePath(path, QPen(color, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
}

void FillWithEdge(QPainter& painter, const QPainterPath& path, QColor color, double capHeight) {
  const FeltInk ink = LetterInk(color, capHeight);
  if (ink.Edge) Stroke(painter, path, *ink.Edge, ink.EdgeWidth);
  painter.fillPath(path, ink.Ink);
}

struct Letter {
  QString Text;
  QPointF Centre;
  double CapHeight;
  double MaxWidth;
  TableColorSlot Slot;
  Lettering Face = Lettering::Plain;
  double Turn = 0;
};

void Write(QPainter& painter, const Letter& letter) {
  painter.save();
  painter.translate(letter.Centre);
  painter.rotate(letter.Turn);
  FillWithEdge(painter, TextOutline(letter.Text, letter.Face, letter.CapHeight, letter.MaxWidth),
               SlotColor(letter.Slot), letter.CapHeight);
  painter.restore();
}

/// A text whose letters follow a line, spread evenly between two of its lengths.
void WriteAlong(QPainter& painter, const QString& text, const QPainterPath& line, double from,
                double to, double capHeight, TableColorSlot slot) {
  const QFont& font = LetteringFont(Lettering::Serif);
  const QFontMetricsF metrics(font);
  const double high = capHeight / metrics.capHeight();
  const double wide = high * kNarrowing;
  const double gap = (to - from - metrics.horizontalAdvance(text) * wide) /
                     std::max<double>(1, double(text.size() - 1));
  double at = from;
  for (const QChar letter : text) {
    const double width = metrics.horizontalAdvance(letter) * wide;
    const double share = line.percentAtLength(at + width / 2);
    const QPointF place = line.pointAtPercent(share);
    QPainterPath glyph;
    glyph.addText(-width / wide / 2, metrics.capHeight() / 2, font, QString(letter));
    QTransform turn;
    turn.translate(place.x(), place.y());
    turn.rotate(-line.angleAtPercent(share));
    turn.scale(wide, high);
    FillWithEdge(painter, turn.map(glyph), SlotColor(slot), capHeight);
    at += width + gap;
  }
}

QPen LinePen(double width = 1.3) {
  return {SlotColor(ColorLines), width, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin};
}

/// Draws with the pen, on an edge where the line is too near to the felt.
template <typename Draw>
void DrawLine(QPainter& painter, QPen pen, const Draw& draw) {
  const FeltInk ink = LineInk(pen.color(), pen.widthF());
  if (ink.Edge) {
    QPen edge = pen;
    edge.setColor(*ink.Edge);
    edge.setWidthF(ink.EdgeWidth);
    painter.setPen(edge);
    draw();
  }
  pen.setColor(ink.Ink);
  painter.setPen(pen);
  draw();
}

void Outline(QPainter& painter, const QPainterPath& path, double width = 1.3) {
  painter.setBrush(Qt::NoBrush);
  DrawLine(painter, LinePen(width), [&] { painter.drawPath(path); });
}

void OutlineRect(QPainter& painter, const QRectF& rect, double width = 1.3) {
  QPainterPath path;
  path.addRect(rect);
  Outline(painter, path, width);
}

/// Darkens a region a little, so that it stands apart on one felt.
void Tint(QPainter& painter, const QPainterPath& path) { painter.fillPath(path, TintOfFelt()); }

void PrintDie(QPainter& painter, QPointF centre, double size, int face) {
  DrawPrintedDie(painter, centre, size, face, SlotColor(ColorDice), SlotColor(ColorPips));
}

/// The two dice that bar the don't bets.
void PrintBar(QPainter& painter, QPointF centre, double size, QPointF apart) {
  const int face = Game.BarDont == 2 ? 1 : 6;
  PrintDie(painter, centre - apart / 2, size, face);
  PrintDie(painter, centre + apart / 2, size, face);
}

QString Pays(int betId) { return PayoffWords(Game.Payoff[static_cast<unsigned>(betId)]); }

// The line bets.

QPainterPath MiddleOfBand(double radius) {
  QPainterPath line(QPointF(kCorner.x() - radius, kArmTop));
  line.lineTo(kCorner.x() - radius, kCorner.y());
  line.arcTo(QRectF(kCorner.x() - radius, kCorner.y() - radius, 2 * radius, 2 * radius), 180, 90);
  line.lineTo(kLineRight, kCorner.y() + radius);
  return line;
}

/// The Pass Line's odds by the number, told behind the line as at the table.
QString OddsWords() {
  const auto& payoff = Game.Payoff;
  const auto part = [&](int first, int second, const char* numbers, const char* one,
                        const char* other) {
    const QString words = PayoffWords(payoff[static_cast<unsigned>(first)]);
    if (payoff[static_cast<unsigned>(first)] == payoff[static_cast<unsigned>(second)])
      return words + QLatin1String(" ON ") + QLatin1String(numbers);
    return words + QLatin1String(" ON ") + QLatin1String(one) + QLatin1String(", ") +
           PayoffWords(payoff[static_cast<unsigned>(second)]) + QLatin1String(" ON ") +
           QLatin1String(other);
  };
  const QString dot = QStringLiteral("   \u2022   ");
  return part(Come4Odds, Come10Odds, "4 & 10", "4", "10") + dot +
         part(Come4Odds + 1, Come10Odds - 1, "5 & 9", "5", "9") + dot +
         part(Come4Odds + 2, Come10Odds - 2, "6 & 8", "6", "8");
}

void PaintLineBets(QPainter& painter) {
  Tint(painter, SpotOutline(PassLine));
  Outline(painter, SpotOutline(PassLine), 1.6);
  const QPainterPath middle = MiddleOfBand((kPassInner + kPassOuter) / 2);
  WriteAlong(painter, QStringLiteral("PASS LINE"), middle, 72, 342, 16, ColorPassText);
  WriteAlong(painter, QStringLiteral("PASS LINE"), middle, 402, 592, 16, ColorPassText);
  painter.setPen(QPen(SlotColor(ColorLines), 0.7, Qt::CustomDashLine));
  QPen dashes(SlotColor(ColorLines), 0.6);
  dashes.setDashPattern({3, 5});
  painter.setPen(dashes);
  painter.setBrush(Qt::NoBrush);
  painter.drawPath(MiddleOfBand(kOddsOuter));
  Write(painter,
        {QStringLiteral("ODDS"), {48.5, 170}, 6.4, 100, ColorPassText, Lettering::Plain, 90});
  Write(painter, {QStringLiteral("ODDS  ") + OddsWords(), {298, 388.3}, 5.2, 284, ColorPassText});
}

void PaintDontBar(QPainter& painter) {
  // The strips share their lines with their neighbours.
  OutlineRect(painter, {94.8, 51.5, 26, 206});
  OutlineRect(painter, {179.5, 315.5, 265.5, 26.7});
  const QString text = QStringLiteral("DON'T PASS BAR");
  Write(painter, {text, {107.5, 137}, 9, 140, ColorDontText, Lettering::Serif, 90});
  PrintBar(painter, {107.5, 234}, 12.5, {0, 14});
  Write(painter, {text, {276, 328.5}, 9.6, 170, ColorDontText, Lettering::Serif});
  PrintBar(painter, {406, 328.5}, 14, {16, 0});
}

void PaintBigBets(QPainter& painter) {
  for (int bet : {int(Big6), int(Big8)}) {
    Tint(painter, SpotOutline(bet));
    Outline(painter, SpotOutline(bet));
  }
  Write(painter, {QStringLiteral("BIG"), {104.5, 265}, 4.8, 30, ColorPlaceText});
  Write(painter, {QStringLiteral("6"), {122.5, 275}, 15, 30, ColorPlaceText, Lettering::Serif});
  Write(painter, {QStringLiteral("8"), {151, 306.5}, 15, 30, ColorPlaceText, Lettering::Serif});
  Write(painter, {QStringLiteral("BIG"), {164, 330}, 4.8, 30, ColorPlaceText});
}

// The numbers box.

void PaintNumber(QPainter& painter, int column) {
  static constexpr const char* kNames[] = {"4", "5", "SIX", "8", "NINE", "10"};
  const QRectF rect = NumberColumn(column);
  const double middle = rect.center().x();
  const double right = rect.left() + 38.5;
  OutlineRect(painter, {rect.left() - 0.5, 51.5, 54, 126});
  for (double y : {77.0, 152.0})
    DrawLine(painter, LinePen(0.9),
             [&] { painter.drawLine(QPointF(rect.left(), y), QPointF(rect.right(), y)); });
  const bool word = column == 2 || column == 4;
  Write(painter, {QLatin1String(kNames[column]),
                  {middle + 1, 114.5},
                  word ? 17.0 : 25.0,
                  40,
                  ColorPlaceText,
                  Lettering::Serif});
  Write(painter, {QStringLiteral("LAY"), {right, 59.6}, 5, 27, ColorDontText});
  Write(painter, {Pays(Lay4 + column), {right, 70}, 5.4, 27.5, ColorDontText});
  Write(painter, {QStringLiteral("PLACE"), {right, 159}, 5, 27, ColorPlaceText});
  Write(painter, {Pays(Place4 + column), {right, 169.6}, 5.4, 27.5, ColorPlaceText});
}

void PaintNumbersBox(QPainter& painter) {
  QPainterPath odd;
  for (int column = 0; column < 6; column += 2) odd.addRect(NumberColumn(column));
  Tint(painter, odd);
  for (int column = 0; column < 6; ++column) PaintNumber(painter, column);
  OutlineRect(painter, {120.8, 51.5, 54.7, 126});
  Write(painter, {QStringLiteral("DON'T"), {148.5, 86}, 9, 46, ColorDontText, Lettering::Serif});
  Write(painter, {QStringLiteral("COME"), {148.5, 101}, 9, 46, ColorDontText, Lettering::Serif});
  Write(painter, {QStringLiteral("BAR"), {148.5, 114.5}, 6, 46, ColorDontText, Lettering::Serif});
  PrintBar(painter, {148.5, 132}, 14, {16, 0});
}

void PaintCome(QPainter& painter) {
  Outline(painter, SpotOutline(Come));
  QPainterPath arch(QPointF(160, 226));
  arch.quadTo(310.5, 202, 461, 226);
  WriteAlong(painter, QStringLiteral("COME"), arch, 62, arch.length() - 62, 32, ColorPassText);
}

// The Field.

struct FieldNumber {
  int Total;
  QString Pays;  // empty for even money
};

bool IsEvenMoney(const PayoffRecord& payoff) {
  return payoff.ShownAsTo && payoff.Win == payoff.Per;
}

bool FieldWins(const PayoffRecord& payoff) {
  return payoff.Win > Currency() || (!payoff.ShownAsTo && payoff.Win + payoff.Per > Currency());
}

double Rate(const PayoffRecord& payoff) { return payoff.Win.ToDouble() / payoff.Per.ToDouble(); }

/// What the Field pays on a total: its best throw, told with the dice where the throws differ.
std::optional<FieldNumber> FieldNumberOf(int total) {
  const PayoffRecord* best = nullptr;
  bool differ = false;
  int bestDie = 0;
  for (int die = std::max(1, total - 6); die <= total / 2; ++die) {
    const auto place = static_cast<unsigned>(FieldCombination(die, total - die));
    const PayoffRecord& payoff = Game.FieldPayoff[place];
    differ = differ || (best != nullptr && !(payoff == *best));
    if (best == nullptr || Rate(payoff) > Rate(*best)) {
      best = &payoff;
      bestDie = die;
    }
  }
  if (!FieldWins(*best)) return std::nullopt;
  QString pays = IsEvenMoney(*best) && !differ ? QString() : PayoffWords(*best);
  if (differ) pays = QStringLiteral("%1-%2: %3").arg(bestDie).arg(total - bestDie).arg(pays);
  return FieldNumber{total, pays};
}

std::vector<FieldNumber> FieldNumbers() {
  std::vector<FieldNumber> numbers;
  for (int total = 2; total <= 12; ++total)
    if (auto number = FieldNumberOf(total)) numbers.push_back(std::move(*number));
  return numbers;
}

constexpr double kFieldMiddle = 338;

/// The arch of the lettering: how far below its top a place lies.
double ArchDrop(double x) {
  const double off = (x - kFieldMiddle) / 150;
  return 11 * off * off;
}

/// The ring round a number that pays more.
void PaintRing(QPainter& painter, QPointF centre) {
  constexpr double kWidth = 1.2;
  QPainterPath ring;
  ring.addEllipse(centre, 9.6, 9.6);
  const FeltInk ink = SignInk(SlotColor(ColorFieldText));
  if (ink.Edge) Stroke(painter, ring, *ink.Edge, kWidth + ink.EdgeWidth);
  Stroke(painter, ring, ink.Ink, kWidth);
}

void PaintField(QPainter& painter) {
  Outline(painter, SpotOutline(Field));
  const std::vector<FieldNumber> numbers = FieldNumbers();
  const double count = static_cast<double>(numbers.size());
  const double pitch = std::min(46.0, 284 / std::max(1.0, count - 1));
  double x = kFieldMiddle - pitch * (count - 1) / 2;
  QPointF previous;
  for (std::size_t i = 0; i < numbers.size(); ++i, x += pitch) {
    const QPointF at(x, 269 + ArchDrop(x));
    const FieldNumber& number = numbers[i];
    if (i > 0) {
      QPainterPath dot;
      dot.addEllipse((at + previous) / 2, 1.5, 1.5);
      const FeltInk ink = SignInk(SlotColor(ColorFieldText));
      if (ink.Edge) Stroke(painter, dot, *ink.Edge, ink.EdgeWidth);
      painter.fillPath(dot, ink.Ink);
    }
    const bool special = !number.Pays.isEmpty();
    const double turn = (x - kFieldMiddle) / 150 * 8;
    if (special) {
      PaintRing(painter, at);
      Write(painter, {number.Pays, {x, at.y() + 15.6}, 5.2, pitch - 2, ColorFieldText});
    }
    Write(painter, {QString::number(number.Total), at, special ? 9.2 : 12.5, special ? 14.5 : 26.0,
                    ColorFieldText, Lettering::Serif, turn});
    previous = at;
  }
  Write(painter, {QStringLiteral("FIELD"),
                  {kFieldMiddle, 301.5},
                  14.5,
                  120,
                  ColorFieldText,
                  Lettering::Serif});
}

void PaintCAndE(QPainter& painter) {
  const QRectF box = SpotOutline(CAndE).boundingRect();
  OutlineRect(painter, box);
  painter.setBrush(Qt::NoBrush);
  for (const double x : {461, 485})
    DrawLine(painter, LinePen(1.1), [&] { painter.drawEllipse(QPointF(x, 335), 11, 11); });
  Write(painter, {QStringLiteral("C"), {461, 335}, 11, 15, ColorPassText, Lettering::Serif});
  Write(painter, {QStringLiteral("E"), {485, 335}, 11, 15, ColorPlaceText, Lettering::Serif});
  Write(painter, {QStringLiteral("C & E"), {486, 357}, 5.4, 24, ColorPlaceText});
}

// The right-hand panel.

void PrintThrow(QPainter& painter, QPointF centre, double size, int die1, int die2) {
  PrintDie(painter, centre - QPointF(size * 0.56, 0), size, die1);
  PrintDie(painter, centre + QPointF(size * 0.56, 0), size, die2);
}

/// A cell with a throw and what it pays; the left of the cell is left free for the chips.
void PaintThrowCell(QPainter& painter, int betId, int die1, int die2) {
  const QRectF cell = PanelCell(betId, false);
  OutlineRect(painter, cell, 1);
  const double x = cell.left() + 43;
  PrintThrow(painter, {x, cell.top() + 14}, 15, die1, die2);
  Write(painter, {Pays(betId), {x, cell.top() + 31}, 5.6, 36, ColorPlaceText});
}

void PaintWideCell(QPainter& painter, int betId, const QString& name) {
  const QRectF cell = PanelCell(betId, false);
  OutlineRect(painter, cell, 1);
  const double x = cell.left() + 74;
  Write(painter, {name, {x, cell.top() + 13.5}, 10, 92, ColorPlaceText, Lettering::Serif});
  Write(painter, {Pays(betId), {x, cell.top() + 29.5}, 6.4, 92, ColorPlaceText});
}

void PaintPropPanel(QPainter& painter) {
  PaintWideCell(painter, Seven, QStringLiteral("SEVEN"));
  PaintWideCell(painter, Craps, QStringLiteral("ANY CRAPS"));
  PaintThrowCell(painter, Hard4, 2, 2);
  PaintThrowCell(painter, Hard6, 3, 3);
  PaintThrowCell(painter, Hard8, 4, 4);
  PaintThrowCell(painter, Hard10, 5, 5);
  PaintThrowCell(painter, Two, 1, 1);
  PaintThrowCell(painter, Three, 1, 2);
  PaintThrowCell(painter, Eleven, 5, 6);
  PaintThrowCell(painter, Twelve, 6, 6);
  const QRectF world = PanelCell(World, false);
  const QRectF horn = PanelCell(Horn, false);
  OutlineRect(painter, world, 1);
  OutlineRect(painter, horn, 1);
  Write(painter, {QStringLiteral("WORLD"), {world.center().x(), 346}, 4.6, 25, ColorPlaceText});
  Write(
      painter,
      {QStringLiteral("HORN"), {600, horn.center().y()}, 10, 60, ColorPlaceText, Lettering::Serif});
}

void PaintHopCell(QPainter& painter, int betId) {
  const QRectF cell = PanelCell(betId, true);
  OutlineRect(painter, cell, 0.9);
  static constexpr int kHops[][2] = {{1, 3}, {1, 4}, {1, 5}, {1, 6}, {2, 2}, {2, 3},
                                     {2, 4}, {2, 5}, {2, 6}, {3, 3}, {3, 4}, {3, 5},
                                     {3, 6}, {4, 4}, {4, 5}, {4, 6}, {5, 5}};
  const int* dice = kHops[betId - Hop13];
  const double x = cell.left() + 43;
  PrintThrow(painter, {x, cell.top() + 9}, 12, dice[0], dice[1]);
  Write(painter, {Pays(betId), {x, cell.top() + 20.5}, 4.8, 34, ColorPlaceText});
}

void PaintOverUnderCell(QPainter& painter, int betId, const QString& name) {
  const QRectF cell = PanelCell(betId, true);
  OutlineRect(painter, cell, 0.9);
  const double x = cell.left() + 43;
  Write(painter, {name, {x, cell.top() + 8.5}, 5.4, 35, ColorPlaceText});
  Write(painter, {Pays(betId), {x, cell.top() + 18.5}, 4.8, 34, ColorPlaceText});
}

void PaintHopPanel(QPainter& painter) {
  PaintOverUnderCell(painter, Over7, QStringLiteral("OVER 7"));
  PaintOverUnderCell(painter, Under7, QStringLiteral("UNDER 7"));
  for (int bet = Hop13; bet <= Hop55; ++bet) PaintHopCell(painter, bet);
  const QRectF world = PanelCell(World, true);
  OutlineRect(painter, world, 0.9);
  Write(painter, {QStringLiteral("WORLD"),
                  {world.center().x(), 335},
                  6.8,
                  50,
                  ColorPlaceText,
                  Lettering::Serif});
  Write(painter,
        {QStringLiteral("HOP BETS"), {604.5, 362}, 6.8, 54, ColorPlaceText, Lettering::Serif});
}

void PaintPanel(QPainter& painter) {
  const bool hops = Game.DisplayHopBets;
  const QRectF rect = hops ? QRectF(510.5, 99.5, 125, 273) : QRectF(510.5, 106.5, 125, 269);
  QPainterPath path;
  path.addRect(rect);
  Tint(painter, path);
  hops ? PaintHopPanel(painter) : PaintPropPanel(painter);
  OutlineRect(painter, rect, 1.6);
}

void PaintHouseName(QPainter& painter) {
  const QPointF middle(310, 418.5);
  QPainterPath line(QPointF(240, middle.y()));
  line.lineTo(380, middle.y());
  WriteAlong(painter, QStringLiteral("KELVANOR"), line, 0, line.length(), 10, ColorLines);
  for (int side : {-1, 1}) {
    DrawLine(painter, LinePen(0.8), [&] {
      painter.drawLine(middle + QPointF(side * 82, 0), middle + QPointF(side * 150, 0));
    });
    painter.setBrush(SlotColor(ColorLines));
    QPainterPath diamond(middle + QPointF(side * 82, -3));
    diamond.lineTo(middle + QPointF(side * 85, 0));
    diamond.lineTo(middle + QPointF(side * 82, 3));
    diamond.lineTo(middle + QPointF(side * 79, 0));
    diamond.closeSubpath();
    painter.drawPath(diamond);
  }
}

void PaintFeltAndLines(QPainter& painter) {
  painter.save();
  painter.setClipPath(FeltOutline(), Qt::IntersectClip);
  PaintFelt(painter, FeltOutline().boundingRect(), SlotColor(ColorFelt),
            static_cast<int>(Game.TableFeltPattern));
  PaintLineBets(painter);
  PaintDontBar(painter);
  PaintBigBets(painter);
  PaintNumbersBox(painter);
  PaintCome(painter);
  PaintField(painter);
  PaintCAndE(painter);
  PaintPanel(painter);
  PaintHouseName(painter);
  painter.restore();
}

void PaintStickFrame(QPainter& painter) {
  switch (TheTable.StickFrame) {
    case StickAsTold: PaintStickPerson(painter); break;
    case StickCallBoard: break;  // changes with each throw
    case StickEmpty: PaintEmptyFrame(painter); break;
    default: PaintStickFigure(painter); break;
  }
}

template <typename Value>
void Append(QByteArray& stamp, const Value& value) {
  stamp.append(reinterpret_cast<const char*>(&value), sizeof value);
}

void Append(QByteArray& stamp, const PayoffRecord& payoff) {
  Append(stamp, payoff.Win.Raw());
  Append(stamp, payoff.Per.Raw());
  Append(stamp, payoff.ShownAsTo);
}

}  // namespace

QString PayoffWords(const PayoffRecord& payoff) {
  const Currency left = payoff.ShownAsTo ? payoff.Win : payoff.Win + payoff.Per;
  const QString word = payoff.ShownAsTo ? QStringLiteral(" TO ") : QStringLiteral(" FOR ");
  return QString::fromStdString(PlainText(left)) + word +
         QString::fromStdString(PlainText(payoff.Per));
}

void PaintLayout(QPainter& painter) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  PaintRail(painter);
  PaintFeltAndLines(painter);
  PaintRailShadow(painter);
  PaintStickFrame(painter);
  PaintPanelSwitch(painter);
  PaintPlacard(painter);
  painter.restore();
}

QByteArray LayoutStamp() {
  QByteArray stamp;
  Append(stamp, Game.TableColor);
  Append(stamp, Game.TableFeltPattern);
  // Not the working record of a decision, nor the line odds, which follow the point.
  for (int bet = Lay4; bet <= LastBet; ++bet)
    if (bet != PassLineOdds && bet != DontPassOdds)
      Append(stamp, Game.Payoff[static_cast<unsigned>(bet)]);
  for (const PayoffRecord& payoff : Game.FieldPayoff) Append(stamp, payoff);
  Append(stamp, Game.DisplayHopBets);
  Append(stamp, Game.BarDont);
  Append(stamp, TheTable.ClearLettering);
  Append(stamp, TheTable.StickFrame);
  for (Currency limit : {Game.MinPlacard, Game.MaxPlacard, Game.OddsAllowed410, Game.OddsAllowed59,
                         Game.OddsAllowed68})
    Append(stamp, limit.Raw());
  return stamp;
}
