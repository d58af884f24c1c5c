// How well colours can be told apart, and colours moved until they can.
#pragma once

#include <QColor>

inline constexpr double kTextContrast = 4.5;  // of letters with what is behind them
inline constexpr double kLineContrast = 3.0;  // of lines and signs

/// Relative luminance, 0 to 1, of a colour without its opacity.
double Luminance(QColor color);

/// From 1, the same, to 21, black on white.
double Contrast(QColor a, QColor b);

/// A colour by how light it looks (0 to 1), how strong it is, and its hue in degrees.
struct Oklch {
  double Lightness = 0;
  double Chroma = 0;
  double Hue = 0;
};
Oklch ToOklch(QColor color);

/// The colour of a lightness and hue, weaker than asked where the screen has none so strong.
QColor FromOklch(const Oklch& color);

/// What letters lie on: a pattern from its darker to its lighter parts.
struct Ground {
  double Darkest = 0;  // luminances
  double Lightest = 0;
};

/// The contrast with the part of the ground that is nearest to the colour.
double Contrast(QColor color, const Ground& ground);

/// The colour nearest in lightness whose contrast with the ground is `wanted`, on its own side of
/// the ground if there is room, else on the other. Where neither has room, black or white,
/// whichever stands out more.
QColor MovedOff(const Ground& ground, QColor color, double wanted);

/// Black or white, whichever stands out more against the colour; never less than 4.5 to 1.
QColor Against(QColor color);
