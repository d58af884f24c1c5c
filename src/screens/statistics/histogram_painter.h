// The histogram of a population of games, on the screen and on paper.
#pragma once

#include <QPainter>
#include <optional>

#include "figures/games_view.h"

/// What is drawn: the bars of one log, or of two in the same bars. Heights are shares of the games
/// of each log.
struct HistogramPicture {
  SharedHistogram Bars;  // `Second` is empty where nothing is compared
  std::int64_t FirstGames = 0;
  std::int64_t SecondGames = 0;
  double Mean = 0;
  std::optional<double> SecondMean;
  double Reach = 0;  // of the band around the mean
  int Pointed = -1;  // a bar
};

/// The colours of the first log and of the one that it is compared with.
inline constexpr QRgb kFirstLogInk = 0xFF2C6FBB;
inline constexpr QRgb kSecondLogInk = 0xFFE07B18;

/// The places of the parts of a histogram in an area.
class HistogramFrame {
 public:
  /// `scale` is the number of the display's pixels to a unit.
  HistogramFrame(QRectF area, const QFont& font, const HistogramPicture& picture, double scale);

  QRectF Chart() const { return chart_; }

  /// The left edge of a bar, on whole pixels at any scale of the display.
  double Edge(std::size_t bar) const;

  /// The bar at a place of the area; -1 where there is none.
  int BarAt(QPointF place) const;

  /// How far to the right a value lies.
  double PlaceOf(double value) const;

 private:
  const HistogramPicture& picture_;
  double scale_;
  QRectF chart_;
};

/// Paints the histogram on white paper; on gray paper colours become shades.
void PaintHistogram(QPainter& painter, QRectF area, const HistogramPicture& picture, bool gray);
