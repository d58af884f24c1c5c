// The colours of letters and lines on the felt, so that they can be read on each pattern.
#pragma once

#include <QColor>
#include <optional>

#include "screens/frame/contrast.h"

/// How a letter or a line is painted: in its ink, on a stroke of the edge's colour and width.
struct FeltInk {
  QColor Ink;
  std::optional<QColor> Edge{};
  double EdgeWidth = 0;  // of the whole stroke, in table units
};

/// Letters that are lower than this count as small.
inline constexpr double kSmallCapital = 7;

/// How a letter of a colour and a height is painted on the felt in force. Where the colour is too
/// near to the felt, a capital keeps its ink and gets an opaque edge, and a small letter moves in
/// lightness; where no lightness is enough, it gets an edge, too. With `ClearLettering` off only
/// what can hardly be seen is helped.
FeltInk LetterInk(QColor ink, double capHeight);

/// How dots and rings among letters are painted: as capitals of their colour.
FeltInk SignInk(QColor ink);

/// How a line of a colour and a width is painted on the felt in force.
FeltInk LineInk(QColor ink, double width);

/// From the darkest to the lightest tenth of the felt in force where letters lie, its tinted
/// regions included.
Ground GroundOfFelt();

/// What darkens a region of the felt a little, so that it stands apart.
QColor TintOfFelt();
