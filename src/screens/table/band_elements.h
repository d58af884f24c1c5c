// What stands in the band of the house name: the forecast before a throw, the call after it.
#pragma once

#include <QPointF>
#include <QRectF>
#include <QString>
#include <vector>

#include "bets/forecast.h"
#include "core/game_state.h"

class QPainter;

inline constexpr QRectF kBand{122, 405.6, 378, 27};

/// What was thrown, what became of the point and what it brought; `end` says why a run ended, and
/// stands in place of the point.
void PaintCall(QPainter& painter, const RollNote& note, int end, double opacity);

/// The net of each total, and of throws that bring something else. Rows that the strip has no cell
/// for are counted in the last one.
void PaintForecastStrip(QPainter& painter, const std::vector<ForecastRow>& rows);

/// What the cell at a place of the strip tells, in full; the last one tells the rows that it
/// counts. Empty beside the strip.
QString ForecastTip(QPointF place, const std::vector<ForecastRow>& rows);

/// "Hyper-Drive, 1,234,567 rolls".
void PaintHyperBand(QPainter& painter, int rolls);

/// What became of the point, and why a run ended.
QString CallWords(const RollNote& note, int end);

/// The name of a row of the forecast: "8", or "4-4".
QString ForecastName(const ForecastRow& row);

/// Whether any throw would bring or cost something.
bool SaysSomething(const std::vector<ForecastRow>& rows);
