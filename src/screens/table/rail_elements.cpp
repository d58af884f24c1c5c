#include "screens/table/rail_elements.h"

#include <QCoreApplication>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>
#include <array>
#include <cmath>

#include "bets/bet_history.h"
#include "core/game_state.h"
#include "figures/call_text.h"
#include "screens/art/chip_art.h"
#include "screens/art/roles.h"
#include "screens/frame/controls.h"
#include "screens/frame/player_change.h"
#include "screens/table/table_settings.h"
#include "screens/table/table_text.h"

namespace {

struct Rail {
  Q_DECLARE_TR_FUNCTIONS(RailElements)
};

constexpr QPointF kRollCentre(38, 441);
constexpr double kRollRadius = 32.4;
constexpr QRectF kFirstButton(80, 446.6, 35.4, 29);
constexpr double kButtonStep = 37.6;
constexpr double kWordsFrom = 1.25;  // pixels for a unit at which buttons have room for words

constexpr double kNewestHeight = 18;
constexpr double kTileHeight = 13.4;
constexpr double kTileGap = 0.85;

double ScaleOf(const QPainter& painter) { return std::abs(painter.worldTransform().m22()); }

void PaintWell(QPainter& painter, const QRectF& rect, double radius) {
  painter.setPen(QPen(kPlateEdge, 0.8));
  painter.setBrush(kPlate);
  painter.drawRoundedRect(rect, radius, radius);
}

// ---- The last rolls ----

QRectF TileRect(unsigned roll) {
  const QRectF well = kHistoryWell.adjusted(2, 1.6, -2, 0);
  if (roll == 0) return {well.left(), well.top(), well.width(), kNewestHeight};
  const double top = well.top() + kNewestHeight + 1.4 + (roll - 1) * (kTileHeight + kTileGap);
  return {well.left(), top, well.width(), kTileHeight};
}

enum class RollKind { Plain, PointSet, PointMade, SevenOut, ComeOut };

RollKind KindOf(const RollNote& note) {
  if (note.PrevPoint == 0) return note.Point != 0 ? RollKind::PointSet : RollKind::ComeOut;
  if (note.Point != 0) return RollKind::Plain;
  return note.Die1 + note.Die2 == note.PrevPoint ? RollKind::PointMade : RollKind::SevenOut;
}

void PaintTick(QPainter& painter, const QRectF& tile) {
  QPen pen(Qt::white, 1.1, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
  painter.setPen(pen);
  const QPointF foot(tile.right() - 4, tile.center().y() + 1.8);
  painter.drawPolyline(QPolygonF({foot + QPointF(-1.6, -1.6), foot, foot + QPointF(2.4, -3.6)}));
}

/// The shape under a number, and the colour of the number on it.
QColor PaintTile(QPainter& painter, RollKind kind, const QRectF& tile) {
  painter.setPen(Qt::NoPen);
  painter.setBrush(Qt::NoBrush);
  const QRectF shape = tile.adjusted(0.6, 0.9, -0.6, -0.9);
  switch (kind) {
    case RollKind::PointSet:
      painter.setBrush(QColor(0xFD, 0xFB, 0xF4));
      painter.drawRoundedRect(shape, shape.height() / 2, shape.height() / 2);
      return QColor(0x17, 0x10, 0x0C);
    case RollKind::PointMade:
      painter.setBrush(kGreenTile);
      painter.drawRoundedRect(shape, 2.4, 2.4);
      PaintTick(painter, shape);
      return Qt::white;
    case RollKind::SevenOut: {
      painter.setBrush(kRedTile);
      painter.drawRect(shape.adjusted(1.4, 0, -1.4, 0));
      QPen line(kMuted, 0.7, Qt::CustomDashLine);
      line.setDashPattern({2, 2});
      painter.setPen(line);
      painter.drawLine(QPointF(tile.left(), tile.top() - 0.2),
                       QPointF(tile.right(), tile.top() - 0.2));
      return Qt::white;
    }
    case RollKind::ComeOut:
      painter.setPen(QPen(kAccent, 1));
      painter.drawRoundedRect(shape, shape.height() / 2, shape.height() / 2);
      return kInk;
    case RollKind::Plain: break;
  }
  return kInk;
}

// ---- The buttons ----

QRectF ButtonRect(int button) {
  return kFirstButton.translated((button - RepeatButton) * kButtonStep, 0);
}

void PaintArrow(QPainter& painter, QPointF centre, QColor ink, bool round) {
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(ink, 1.8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  if (round) {
    painter.drawArc(QRectF(centre - QPointF(4.8, 4.8), QSizeF(9.6, 9.6)), 150 * 16, -300 * 16);
    const QPointF tip = centre + QPointF(-4.2, -2.6);
    painter.drawPolyline(QPolygonF({tip + QPointF(-0.6, -3.2), tip, tip + QPointF(3.4, 0.2)}));
    return;
  }
  QPainterPath path(centre + QPointF(-5, -1.6));
  path.lineTo(centre + QPointF(2.2, -1.6));
  path.cubicTo(centre + QPointF(7, -1.6), centre + QPointF(7, 4.4), centre + QPointF(2.2, 4.4));
  path.lineTo(centre + QPointF(-1.6, 4.4));
  painter.drawPath(path);
  painter.drawPolyline(QPolygonF(
      {centre + QPointF(-2, -5), centre + QPointF(-5.4, -1.6), centre + QPointF(-2, 1.8)}));
}

void PaintIcon(QPainter& painter, int button, QPointF centre, QColor ink) {
  switch (button) {
    case RepeatButton: return PaintArrow(painter, centre, ink, true);
    case DoubleButton:
      return WriteIn(painter, QStringLiteral("\u00D72"), {centre - QPointF(14, 6), QSizeF(28, 12)},
                     8.4, ink, Side::Centre);
    case UndoButton: return PaintArrow(painter, centre, ink, false);
    default: break;
  }
  painter.setPen(QPen(ink, 2, Qt::SolidLine, Qt::RoundCap));
  painter.drawLine(centre + QPointF(-4.2, -4.2), centre + QPointF(4.2, 4.2));
  painter.drawLine(centre + QPointF(-4.2, 4.2), centre + QPointF(4.2, -4.2));
}

QString Word(int button) {
  switch (button) {
    case RepeatButton: return Rail::tr("Repeat");
    case DoubleButton: return Rail::tr("Double");
    case UndoButton: return Rail::tr("Undo");
    default: return Rail::tr("Clear");
  }
}

void PaintBrassButton(QPainter& painter, int button, const RailLook& look) {
  const bool pressed = look.Pressed == button;
  const bool on = IsRailButtonOn(button);
  const QRectF rect = ButtonRect(button).translated(0, pressed ? 0.8 : 0);
  painter.save();
  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor(0, 0, 0, 110));
  painter.drawRoundedRect(rect.translated(0, pressed ? 0.4 : 1.4), 5, 5);
  QLinearGradient brass(rect.topLeft(), rect.bottomLeft());
  const bool lit = on && look.Hovered == button;
  brass.setColorAt(0, on ? kBrassLight.lighter(lit ? 106 : 100) : QColor(0x8C, 0x7C, 0x5C));
  brass.setColorAt(1, on ? kBrassDark.lighter(lit ? 112 : 100) : QColor(0x62, 0x54, 0x3A));
  painter.setBrush(brass);
  painter.setPen(QPen(QColor(0x5A, 0x40, 0x12), 0.8));
  painter.drawRoundedRect(rect, 5, 5);
  const QColor ink = on ? kOnBrass : QColor(0x2C, 0x24, 0x14);
  const bool words = ScaleOf(painter) >= kWordsFrom;
  PaintIcon(painter, button, rect.center() - QPointF(0, words ? 4.6 : 0), ink);
  if (words) {
    const QRectF line(rect.left() + 1.5, rect.bottom() - 10.2, rect.width() - 3, 8);
    WriteIn(painter, Word(button), line, CapitalOf(7.6), ink, Side::Centre);
  }
  painter.restore();
}

void PaintSmallDice(QPainter& painter, QPointF centre) {
  painter.save();
  painter.translate(centre);
  const auto die = [&](QPointF at, double turn, int face) {
    painter.save();
    painter.translate(at);
    painter.rotate(turn);
    DrawPrintedDie(painter, {0, 0}, 11.4, face, QColor(0xFD, 0xF6, 0xF0), QColor(0x30, 0x08, 0x0C));
    painter.restore();
  };
  die({-6.2, 0.6}, -12, 5);
  die({6.2, -0.6}, 11, 6);
  painter.restore();
}

void PaintRollButton(QPainter& painter, const RailLook& look) {
  const bool pressed = look.Pressed == RollButton;
  const double radius = kRollRadius - (pressed ? 0.8 : 0);
  painter.save();
  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor(0, 0, 0, 120));
  painter.drawEllipse(kRollCentre + QPointF(0, 1.4), kRollRadius, kRollRadius);
  QLinearGradient rim(kRollCentre - QPointF(0, radius), kRollCentre + QPointF(0, radius));
  rim.setColorAt(0, kBrassLight);
  rim.setColorAt(1, QColor(0x6A, 0x4A, 0x16));
  painter.setBrush(rim);
  painter.drawEllipse(kRollCentre, radius, radius);
  painter.setBrush(QColor(0x2A, 0x06, 0x08));
  painter.drawEllipse(kRollCentre, radius - 2.2, radius - 2.2);
  QLinearGradient red(kRollCentre - QPointF(0, radius), kRollCentre + QPointF(0, radius));
  const bool lit = look.Hovered == RollButton;
  red.setColorAt(0, lit ? kRollLight.lighter(108) : kRollLight);
  red.setColorAt(1, lit ? kRollDark.lighter(112) : kRollDark);
  painter.setBrush(red);
  painter.drawEllipse(kRollCentre, radius - 3.2, radius - 3.2);
  const QRectF face(kRollCentre - QPointF(24, 24), QSizeF(48, 48));
  const bool key =
      !look.Stops && IsLegible(painter, CapitalOf(7.4)) && ScaleOf(painter) >= kWordsFrom;
  if (look.Stops) {
    painter.setBrush(Qt::white);
    painter.drawRoundedRect(QRectF(kRollCentre - QPointF(6, 17), QSizeF(12, 12)), 1.6, 1.6);
  } else {
    PaintSmallDice(painter, kRollCentre - QPointF(0, key ? 13 : 10));
  }
  const double y = key ? 3.2 : 6.5;
  WriteIn(painter, look.Stops ? Rail::tr("STOP") : Rail::tr("ROLL"), face.translated(0, y),
          CapitalOf(13.2), Qt::white, Side::Centre);
  if (key)
    WriteIn(painter, Rail::tr("Space"), face.translated(0, 15.2), CapitalOf(7.4),
            QColor(0xFF, 0xE4, 0xDE), Side::Centre);
  painter.restore();
}

// ---- The money ----

QString ResultLabel(Currency result) {
  if (result > Currency()) return Rail::tr("You've won");
  if (result < Currency()) return Rail::tr("You've lost");
  return Rail::tr("You're even");
}

/// An arrow that points up for a gain and down for a loss; returns where the text goes on.
double PaintResultArrow(QPainter& painter, Currency result, QPointF left) {
  if (result == Currency()) return left.x();
  const double up = result > Currency() ? 1 : -1;
  painter.setPen(Qt::NoPen);
  painter.setBrush(result > Currency() ? kGain : kLoss);
  painter.drawPolygon(QPolygonF({left + QPointF(0, 4.6 * up), left + QPointF(9.2, 4.6 * up),
                                 left + QPointF(4.6, -4.6 * up)}));
  return left.x() + 13.6;
}

void PaintSum(QPainter& painter, const QString& label, const QString& value, const QRectF& cell,
              QColor color, double valueLeft) {
  const double size = ScaleOf(painter) < kWordsFrom ? 9 : 6.2;
  WriteIn(painter, size > 7 ? label : label.toUpper(),
          {cell.left(), cell.top() + 3.2, cell.width(), 7}, CapitalOf(size), kMuted);
  WriteIn(painter, value, {valueLeft, cell.top() + 12.4, cell.right() - valueLeft, 14},
          CapitalOf(16), color);
}

}  // namespace

// ---- Buttons ----

int RailButtonAt(QPointF place) {
  if (!TheTable.RollButtons) return NoRailButton;
  const QPointF from = place - kRollCentre;
  if (from.x() * from.x() + from.y() * from.y() <= kRollRadius * kRollRadius) return RollButton;
  for (int button = RepeatButton; button <= ClearButton; ++button)
    if (ButtonRect(button).contains(place)) return button;
  return NoRailButton;
}

QRectF RailButtonRect(int button) {
  if (button != RollButton) return ButtonRect(button);
  return {kRollCentre - QPointF(kRollRadius, kRollRadius),
          QSizeF(2 * kRollRadius, 2 * kRollRadius)};
}

bool IsRailButtonOn(int button) {
  if (button == RollButton) return true;
  if (!TableAtRest()) return false;
  switch (button) {
    case RepeatButton: return CanRepeat();
    case DoubleButton: return CanDouble();
    case UndoButton: return CanUndo();
    default: return CanClear();
  }
}

QString RailButtonName(int button) {
  return button == RollButton ? Rail::tr("Roll") : Word(button);
}

QString RailButtonTip(int button) {
  switch (button) {
    case RollButton: return Rail::tr("Throw the dice (Space)");
    case RepeatButton: return Rail::tr("Repeat: lay again what lay at the last throw (R)");
    case DoubleButton: return Rail::tr("Double: as much again on every bet (D)");
    case UndoButton: return Rail::tr("Undo the last change of bets (U), redo it (Shift+U)");
    case ClearButton: return Rail::tr("Clear: take all bets down (C)");
    default: return {};
  }
}

void PaintRailButtons(QPainter& painter, const RailLook& look, const QRectF& exposed) {
  const auto shows = [&](int button) {
    return exposed.intersects(RailButtonRect(button).adjusted(-2, -2, 2, 2));
  };
  for (int button = RepeatButton; button <= ClearButton; ++button)
    if (shows(button)) PaintBrassButton(painter, button, look);
  if (shows(RollButton)) PaintRollButton(painter, look);
}

// ---- History ----

void PaintHistory(QPainter& painter, double slideIn) {
  painter.save();
  PaintWell(painter, kHistoryWell, 4);
  painter.setClipRect(kHistoryWell.adjusted(0.8, 0.8, -0.8, -0.8), Qt::IntersectClip);
  const auto& rolls = Game.LastRolls;
  for (unsigned roll = 0; roll < rolls.size(); ++roll) {
    QRectF tile = TileRect(roll);
    const double step = roll == 0 ? kNewestHeight : kTileHeight + kTileGap;
    tile.translate(0, -(1 - slideIn) * step);
    if (roll == 0) {
      painter.setPen(QPen(kAccent, 1));
      painter.setBrush(QColor(0x33, 0x24, 0x1B));
      painter.drawRoundedRect(tile.adjusted(-0.6, 0, 0.6, 0), 3, 3);
    }
    const QColor ink = PaintTile(painter, KindOf(rolls[roll]), tile.adjusted(0, 0, 0, 0));
    WriteIn(painter, QString::number(rolls[roll].Die1 + rolls[roll].Die2), tile,
            CapitalOf(roll == 0 ? 11.4 : 8.4), ink, Side::Centre);
  }
  painter.restore();
}

QString HistoryTip(QPointF place) {
  if (!TheTable.History || !kHistoryWell.contains(place)) return {};
  for (unsigned roll = 0; roll < Game.LastRolls.size(); ++roll) {
    if (!TileRect(roll).contains(place)) continue;
    const RollNote& note = Game.LastRolls[roll];
    return QString("%1-%2, %3, %4")
        .arg(note.Die1)
        .arg(note.Die2)
        .arg(Text(TotalWord(note.Die1 + note.Die2)), SignedMoney(note.Net));
  }
  return {};
}

// ---- Money ----

ShownMoney MoneyNow() {
  return {Bankroll(), Game.TotalOnTable, Bankroll() - Game.InvestedBankroll};
}

void PaintMoney(QPainter& painter, const ShownMoney& money) {
  painter.save();
  PaintWell(painter, kMoneyWell, 6);
  const double third = (kMoneyWell.width() - 12) / 3;
  const auto cell = [&](int index) {
    return QRectF(kMoneyWell.left() + 8 + index * (third + 1.6), kMoneyWell.top(), third - 6,
                  kMoneyWell.height());
  };
  painter.setPen(QPen(kPlateEdge, 0.7));
  for (int line = 1; line < 3; ++line) {
    const double x = cell(line).left() - 4.6;
    painter.drawLine(QPointF(x, kMoneyWell.top() + 5), QPointF(x, kMoneyWell.bottom() - 5));
  }
  PaintSum(painter, Rail::tr("Bankroll"), PlainMoney(money.Bankroll), cell(0), kInk,
           cell(0).left());
  PaintSum(painter, Rail::tr("At risk"), PlainMoney(money.AtRisk), cell(1), kInk, cell(1).left());
  const QRectF last = cell(2);
  const double left = PaintResultArrow(painter, money.Result, {last.left(), last.top() + 19.6});
  const QColor color = money.Result > Currency() ? kGain : money.Result < Currency() ? kLoss : kInk;
  PaintSum(painter, ResultLabel(money.Result), SignedMoney(money.Result), last, color, left);
  painter.restore();
}
