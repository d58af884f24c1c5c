// The chart of the roll totals, on the screen and on paper.
#pragma once

#include <QPainter>

#include "figures/roll_totals.h"

/// The places of the chart's parts in an area: the names of the rows at the left stay while the
/// columns scroll by.
class RollTotalsFrame {
 public:
  RollTotalsFrame(QRectF area, const QFont& font, const RollTotals& totals, double scrolled);

  double Names() const { return names_; }      // the width of the rows' names and the scale
  double Columns() const { return columns_; }  // the width of all columns, seen or not
  QRectF Chart() const { return chart_; }      // where the bars stand
  double Line() const { return line_; }        // the height of a row of figures

  /// The column of a bar, from the top of the chart to the last row.
  QRectF Column(std::size_t bar) const;

  /// The bar at a place of the area, or the number of bars when there is none.
  std::size_t BarAt(QPointF place) const;

 private:
  QRectF area_;
  std::size_t bars_;
  double line_;
  double names_;
  double width_;
  double columns_;
  QRectF chart_;
  double scrolled_;
};

/// Paints the chart. On gray paper colours become shades.
void PaintRollTotals(QPainter& painter, QRectF area, const RollTotals& totals, double scrolled,
                     bool gray);
