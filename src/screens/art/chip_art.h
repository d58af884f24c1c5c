// Chips, dice, the puck and the markers, drawn as vectors in table units.
#pragma once

#include <QColor>
#include <QFont>
#include <QPointF>
#include <QString>

#include "core/currency.h"

class QPainter;
class QPainterPath;

/// The value as it is printed on a chip: "5", "2.50", "1K", "1.5M"; below 1 "25¢" with the cents
/// sign or ".25" without.
QString ChipLabel(Currency value, bool useCentsSymbol);

/// A chip of a set (1 to 7): picture 1 to 5 with its label, or 6, the amount not shown in full.
void DrawChip(QPainter& painter, QPointF centre, double size, int picture, int style,
              const QString& label);

/// A die of a set (1 to 5); set 1 is in the given colours. `turn` in degrees, for a die in flight.
void DrawDie(QPainter& painter, QPointF centre, double size, int face, int style, QColor body,
             QColor pips, double turn = 0);

/// A die as it is printed on the felt: flat, without light or shadow.
void DrawPrintedDie(QPainter& painter, QPointF centre, double size, int face, QColor body,
                    QColor pips);

/// The puck, white with ON or black with OFF.
void DrawPuck(QPainter& painter, QPointF centre, double size, bool on);

enum class Marker { Buy, Lay, On, Off };

/// A marker that lies on a bet.
void DrawMarker(QPainter& painter, QPointF centre, double size, Marker marker);

/// Faces of the lettering.
enum class Lettering { Plain, Serif };

/// The outline of a text, `capHeight` units high and no wider than `maxWidth`, centred on the
/// origin.
QPainterPath TextOutline(const QString& text, Lettering lettering, double capHeight,
                         double maxWidth);

/// Fills a text, centred on a point.
void DrawLettering(QPainter& painter, const QString& text, QPointF centre, double capHeight,
                   double maxWidth, QColor color, Lettering lettering = Lettering::Plain);

/// The font of the lettering, at 64 pixels. Letters are drawn narrower than it has them.
const QFont& LetteringFont(Lettering lettering);
inline constexpr double kNarrowing = 0.9;
