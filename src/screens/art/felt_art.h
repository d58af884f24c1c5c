// The nine felt patterns, drawn over a plain colour.
#pragma once

#include <QColor>

class QPainter;
class QRectF;

inline constexpr int kFeltPatterns = 9;

/// Fills an area with felt of a colour and a pattern (0 to 8). The caller clips to the table's
/// shape.
void PaintFelt(QPainter& painter, const QRectF& area, QColor color, int pattern);
