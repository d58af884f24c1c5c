// Texts of the elements that are laid over the table, in table units.
#pragma once

#include <QColor>
#include <QRectF>
#include <QString>

#include "core/currency.h"
#include "screens/art/chip_art.h"

class QPainter;

enum class Side { Left, Centre, Right };

/// Fills a text whose capitals are `capital` units high, at a side of a rectangle and half way down
/// it; narrower where the rectangle is. A text that would be too small to read is left out.
void WriteIn(QPainter& painter, const QString& text, const QRectF& rect, double capital,
             QColor color, Side side = Side::Left, Lettering lettering = Lettering::Plain);

/// How wide such a text is with room enough.
double TextWidth(const QString& text, double capital, Lettering lettering = Lettering::Plain);

/// The capital height of letters of a size.
inline constexpr double CapitalOf(double size) { return 0.729 * size; }

/// Whether letters of this capital height can be read at the painter's scale.
bool IsLegible(const QPainter& painter, double capital);

/// "+$14", "−$1,250.50", "$0"; with a true minus.
QString SignedMoney(Currency amount);

/// "$536", "−$1,250.50".
QString PlainMoney(Currency amount);
