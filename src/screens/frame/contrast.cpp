#include "screens/frame/contrast.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace {

using Triple = std::array<double, 3>;

double Linear(double share) {
  return share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
}

double Shown(double linear) {
  return linear <= 0.0031308 ? linear * 12.92 : 1.055 * std::pow(linear, 1 / 2.4) - 0.055;
}

Triple Times(const std::array<Triple, 3>& matrix, const Triple& v) {
  Triple result{};
  for (std::size_t row = 0; row < 3; ++row)
    result[row] = matrix[row][0] * v[0] + matrix[row][1] * v[1] + matrix[row][2] * v[2];
  return result;
}

// From linear red, green and blue to the eye's three cones, and from their cube roots to lightness
// and two axes of colour; Björn Ottosson's figures. Then the ways back.
constexpr std::array<Triple, 3> kCones = {{{0.4122214708, 0.5363325363, 0.0514459929},
                                           {0.2119034982, 0.6806995451, 0.1073969566},
                                           {0.0883024619, 0.2817188376, 0.6299787005}}};
constexpr std::array<Triple, 3> kAxes = {{{0.2104542553, 0.7936177850, -0.0040720468},
                                          {1.9779984951, -2.4285922050, 0.4505937099},
                                          {0.0259040371, 0.7827717662, -0.8086757660}}};
constexpr std::array<Triple, 3> kFromAxes = {{{1, 0.3963377774, 0.2158037573},
                                              {1, -0.1055613458, -0.0638541728},
                                              {1, -0.0894841775, -1.2914855480}}};
constexpr std::array<Triple, 3> kFromCones = {{{4.0767416621, -3.3077115913, 0.2309699292},
                                               {-1.2684380046, 2.6097574011, -0.3413193965},
                                               {-0.0041960863, -0.7034186147, 1.7076147010}}};

Triple LinearOf(const Oklch& color) {
  const double angle = color.Hue * std::numbers::pi / 180;
  Triple roots = Times(
      kFromAxes, {color.Lightness, color.Chroma * std::cos(angle), color.Chroma * std::sin(angle)});
  for (double& root : roots) root = root * root * root;
  return Times(kFromCones, roots);
}

bool IsOnScreen(const Triple& linear) {
  constexpr double kSlack = 1e-4;
  return std::ranges::all_of(linear,
                             [](double part) { return part > -kSlack && part < 1 + kSlack; });
}

/// The first colour off the ground on the way from a lightness to black or white.
QColor MovedTo(double end, const Ground& ground, Oklch color, double wanted) {
  constexpr double kStep = 1.0 / 256;
  const double step = end > color.Lightness ? kStep : -kStep;
  while (std::abs(color.Lightness - end) > kStep) {
    color.Lightness += step;
    const QColor moved = FromOklch(color).rgb();  // as it is painted, in eight bits a part
    if (Contrast(moved, ground) >= wanted) return moved;
  }
  return end > 0 ? Qt::white : Qt::black;
}

}  // namespace

double Luminance(QColor color) {
  return 0.2126 * Linear(color.redF()) + 0.7152 * Linear(color.greenF()) +
         0.0722 * Linear(color.blueF());
}

double Contrast(QColor a, QColor b) {
  const double other = Luminance(b);
  return Contrast(a, {other, other});
}

double Contrast(QColor color, const Ground& ground) {
  constexpr double kGlare = 0.05;
  const double own = Luminance(color);
  if (own > ground.Lightest) return (own + kGlare) / (ground.Lightest + kGlare);
  if (own < ground.Darkest) return (ground.Darkest + kGlare) / (own + kGlare);
  return 1;
}

Oklch ToOklch(QColor color) {
  Triple roots =
      Times(kCones, {Linear(color.redF()), Linear(color.greenF()), Linear(color.blueF())});
  for (double& root : roots) root = std::cbrt(root);
  const Triple axes = Times(kAxes, roots);
  const double hue = std::atan2(axes[2], axes[1]) * 180 / std::numbers::pi;
  return {axes[0], std::hypot(axes[1], axes[2]), hue};
}

QColor FromOklch(const Oklch& color) {
  Oklch shown = color;
  if (!IsOnScreen(LinearOf(shown))) {
    constexpr int kHalvings = 16;
    double weak = 0;
    double strong = color.Chroma;
    for (int i = 0; i < kHalvings; ++i) {
      shown.Chroma = (weak + strong) / 2;
      (IsOnScreen(LinearOf(shown)) ? weak : strong) = shown.Chroma;
    }
    shown.Chroma = weak;
  }
  const Triple linear = LinearOf(shown);
  const auto part = [&linear](std::size_t i) {
    return static_cast<float>(Shown(std::clamp(linear[i], 0.0, 1.0)));
  };
  return QColor::fromRgbF(part(0), part(1), part(2)).toRgb();
}

QColor MovedOff(const Ground& ground, QColor color, double wanted) {
  if (Contrast(color, ground) >= wanted) return color;
  const Oklch from = ToOklch(color);
  const bool lighter = 2 * Luminance(color) >= ground.Darkest + ground.Lightest;
  const auto room = [&](bool up) { return Contrast(QColor(up ? Qt::white : Qt::black), ground); };
  const bool own = room(lighter) >= wanted;
  const bool up = own || room(!lighter) < wanted ? lighter : !lighter;
  if (room(up) >= wanted) return MovedTo(up ? 1 : 0, ground, from, wanted);
  return room(true) >= room(false) ? Qt::white : Qt::black;
}

QColor Against(QColor color) {
  return Contrast(color, QColor(Qt::white)) > Contrast(color, QColor(Qt::black)) ? Qt::white
                                                                                 : Qt::black;
}
