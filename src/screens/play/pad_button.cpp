#include "screens/play/pad_button.h"

#include <QPainter>
#include <QStyleOptionFocusRect>
#include <algorithm>
#include <array>

#include "screens/art/chip_art.h"
#include "screens/frame/controls.h"

namespace {

constexpr double kCorner = 7;
constexpr double kDepth = 3;  // of a key, which a press takes
constexpr double kDieOfLine = 1.15;
constexpr QRgb kRed = 0xFFD8383C;
constexpr QRgb kCyan = 0xFF35C3D0;
constexpr QRgb kGrey = 0xFFB9BDC4;

/// By how far a total lies from 7, or by a face less 1.
constexpr std::array<QRgb, 6> kColors = {0xFFD8383C, 0xFFEE8A2E, 0xFFF2C744,
                                         0xFF5BB55F, 0xFF3E8EDB, 0xFF9163CC};

/// The numbers that decide a come-out roll at once.
bool EndsComeOut(int total) { return total <= 3 || total == 7 || total >= 11; }

QColor BodyOf(const PadCell& cell, int color, bool secondDie) {
  const bool face = cell.Total == 0;
  switch (color) {
    case PadRedAndCyan:
      if (face) return QColor::fromRgb(secondDie ? kCyan : kRed);
      return QColor::fromRgb(EndsComeOut(cell.Total) ? kRed : kCyan);
    case PadGray: return QColor::fromRgb(kGrey);
    default:
      return QColor::fromRgb(
          kColors[static_cast<unsigned>(face ? cell.Dice.Die1 - 1 : std::abs(cell.Total - 7))]);
  }
}

void DrawFlatDie(QPainter& painter, QPointF centre, double size, int face) {
  DrawPrintedDie(painter, centre, size, face, Qt::white, QColor(0x22, 0x22, 0x26));
}

}  // namespace

PadButton::PadButton(const QString& name, const PadCell& cell)
    : QPushButton(Text(cell.Caption)), cell_(cell) {
  setObjectName(name);
  setAutoDefault(false);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  setAttribute(Qt::WA_Hover);
  if (cell.Total == 0) {
    setAccessibleName(tr("Face %1").arg(cell.Dice.Die1));
  } else if (cell.Dice.Die1 == 0) {
    setAccessibleName(tr("Throw %1").arg(cell.Total));
    setToolTip(tr("Throws a %1, one of %2 ways").arg(cell.Total).arg(WaysToThrow(cell.Total)));
    if (WaysToThrow(cell.Total) == 1) setToolTip(tr("Throws a %1").arg(cell.Total));
  } else {
    setAccessibleName(tr("Throw %1 and %2").arg(cell.Dice.Die1).arg(cell.Dice.Die2));
    setToolTip(tr("Throws a %1 with %2").arg(cell.Total).arg(text()));
  }
  ShowColor(PadMultiColor, false);
}

void PadButton::ShowColor(int color, bool secondDie) {
  const QColor body = BodyOf(cell_, color, secondDie);
  if (body_ == body) return;
  body_ = body;
  update();
}

QSize PadButton::minimumSizeHint() const {
  const QFontMetrics metrics(font());
  return {metrics.horizontalAdvance("6-6") + 12, metrics.height() + 10};
}

QSize PadButton::sizeHint() const {
  const int line = fontMetrics().height();
  return cell_.Total == 0 ? QSize(line * 5, line * 5) : QSize(line * 3, line * 3);
}

QColor PadButton::Ink() const {
  return qGray(body_.rgb()) > 118 ? QColor(0x1B, 0x1B, 0x20) : QColor(Qt::white);
}

void PadButton::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  QRectF key = QRectF(rect()).adjusted(1, 1, -1, -1 - kDepth);
  if (isDown()) key.translate(0, kDepth - 1);
  PaintKey(painter, key);
  if (cell_.Total == 0) {
    PaintFace(painter, key);
  } else if (cell_.Dice.Die1 == 0) {
    PaintTotal(painter, key);
  } else {
    PaintPair(painter, key);
  }
  if (!hasFocus()) return;
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(Ink(), 1.4, Qt::DotLine));
  painter.drawRoundedRect(key.adjusted(3, 3, -3, -3), kCorner - 3, kCorner - 3);
}

void PadButton::PaintKey(QPainter& painter, const QRectF& key) const {
  const QRectF foot = QRectF(rect()).adjusted(1, 1 + kDepth, -1, -1);
  painter.setPen(Qt::NoPen);
  painter.setBrush(body_.darker(190));
  painter.drawRoundedRect(foot, kCorner, kCorner);
  const QColor top = underMouse() && !isDown() ? body_.lighter(112) : body_;
  QLinearGradient shade(key.topLeft(), key.bottomLeft());
  shade.setColorAt(0, isDown() ? top : top.lighter(122));
  shade.setColorAt(0.5, top);
  shade.setColorAt(1, top.darker(112));
  painter.setBrush(shade);
  painter.setPen(QPen(body_.darker(150), 1));
  painter.drawRoundedRect(key, kCorner, kCorner);
}

/// The number, and below it a dot for each way to throw it.
void PadButton::PaintTotal(QPainter& painter, const QRectF& key) const {
  QFont large = font();
  large.setBold(true);
  large.setPixelSize(std::max(8, static_cast<int>(std::min(key.height() * 0.5, 64.0))));
  painter.setFont(large);
  painter.setPen(Ink());
  painter.drawText(key.adjusted(0, 0, 0, -key.height() * 0.2), Qt::AlignCenter, text());
  const int ways = WaysToThrow(cell_.Total);
  const double dot = std::clamp(key.height() * 0.045, 1.5, 4.0);
  const double apart = dot * 3.2;
  painter.setPen(Qt::NoPen);
  painter.setBrush(Ink());
  for (int way = 0; way < ways; ++way)
    painter.drawEllipse(QPointF(key.center().x() + (way - (ways - 1) / 2.0) * apart,
                                key.bottom() - key.height() * 0.17),
                        dot, dot);
}

/// Both dice as far as there is room for them, and their caption.
void PadButton::PaintPair(QPainter& painter, const QRectF& key) const {
  const double line = QFontMetricsF(font()).height();
  const double die = std::min((key.width() - 10) / 2, key.height() - line - 8);
  QRectF words = key;
  if (die >= line * kDieOfLine * 0.7) {
    const double size = std::min(die, 44.0);
    const double top = key.center().y() - (size + line) / 2;
    const double aside = size / 2 + 1;
    DrawFlatDie(painter, {key.center().x() - aside, top + size / 2}, size, cell_.Dice.Die1);
    DrawFlatDie(painter, {key.center().x() + aside, top + size / 2}, size, cell_.Dice.Die2);
    words = QRectF(key.left(), top + size, key.width(), line);
  }
  painter.setPen(Ink());
  painter.drawText(words, Qt::AlignCenter, text());
}

void PadButton::PaintFace(QPainter& painter, const QRectF& key) const {
  const double size = std::min(key.width(), key.height()) * 0.68;
  DrawDie(painter, key.center(), size, cell_.Dice.Die1, 1, Qt::white, QColor(0x22, 0x22, 0x26));
}

// ---- picChosenDice ----

picChosenDice::picChosenDice(QWidget* parent) : QWidget(parent) {
  setObjectName("picChosenDice");
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void picChosenDice::Show(NamedThrow dice, int digit) {
  dice_ = dice;
  digit_ = digit;
  update();
}

QSize picChosenDice::sizeHint() const {
  const int die = fontMetrics().height() * 2;
  return {die * 2 + 10, die + 4};
}

void picChosenDice::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  if (digit_ != 0) {
    QFont large = font();
    large.setBold(true);
    large.setPixelSize(height() * 3 / 4);
    painter.setFont(large);
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(rect(), Qt::AlignCenter, QString("%1_").arg(digit_));
    return;
  }
  const double size = height() - 6;
  double x = size / 2 + 2;
  for (const int face : {dice_.Die1, dice_.Die2}) {
    const QPointF centre(x, height() / 2.0);
    x += size + 6;
    if (face != 0) {
      DrawDie(painter, centre, size, face, 1, Qt::white, QColor(0x22, 0x22, 0x26));
      continue;
    }
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(palette().color(QPalette::WindowText), 1.2, Qt::DashLine));
    painter.drawRoundedRect(
        QRectF(centre.x() - size / 2 + 1, centre.y() - size / 2 + 1, size - 2, size - 2), 5, 5);
  }
}
