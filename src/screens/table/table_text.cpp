#include "screens/table/table_text.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>
#include <cmath>

#include "core/text.h"
#include "figures/call_text.h"
#include "screens/frame/controls.h"

namespace {

constexpr double kSmallestLetters = 8;  // logical pixels
constexpr double kAnyWidth = 1e6;

QString WithMinus(const std::string& text) { return Text(text).replace('-', QChar(0x2212)); }

}  // namespace

bool IsLegible(const QPainter& painter, double capital) {
  const QTransform& transform = painter.worldTransform();
  return capital * std::abs(transform.m22()) >= CapitalOf(kSmallestLetters) - 0.01;
}

double TextWidth(const QString& text, double capital, Lettering lettering) {
  return TextOutline(text, lettering, capital, kAnyWidth).boundingRect().width();
}

void WriteIn(QPainter& painter, const QString& text, const QRectF& rect, double capital,
             QColor color, Side side, Lettering lettering) {
  if (text.isEmpty() || !IsLegible(painter, capital)) return;
  const QPainterPath outline = TextOutline(text, lettering, capital, rect.width());
  const QRectF bounds = outline.boundingRect();
  QPointF at = rect.center();
  if (side == Side::Left) at.setX(rect.left() - bounds.left());
  if (side == Side::Right) at.setX(rect.right() - bounds.right());
  painter.fillPath(outline.translated(at), color);
}

QString SignedMoney(Currency amount) { return WithMinus(CallNetText(amount)); }

QString PlainMoney(Currency amount) {
  return WithMinus((amount < Currency() ? "-$" : "$") + MoneyText(Abs(amount)));
}
