#include "screens/table/lettering.h"

#include <QImage>
#include <QPainter>
#include <algorithm>
#include <utility>
#include <vector>

#include "core/game_state.h"
#include "screens/art/felt_art.h"
#include "screens/table/table_layout.h"
#include "screens/table/table_settings.h"

namespace {

QColor Felt() { return QColor::fromRgb(Game.TableColor[ColorFelt]); }

constexpr double kEdgeOfLetter = 0.9;  // beside it
constexpr double kEdgeOfLine = 0.5;

// ---- As it always was ----

/// Colours that the player chose too near to the felt get a thin edge that lifts them off it.
std::optional<QColor> FaintEdge(QColor ink) {
  constexpr double kEnough = 3.0;
  if (Contrast(ink, Felt()) >= kEnough) return std::nullopt;
  QColor edge = Against(Felt());
  edge.setAlpha(edge == Qt::white ? 150 : 185);
  return edge;
}

/// One that is too near to the felt moves away from it: to its own side of the felt's lightness, if
/// there is room.
QColor Moved(QColor ink) {
  constexpr double kTooNear = 2.6;
  const QColor felt = Felt();
  if (Contrast(ink, felt) >= kTooNear) return ink;
  const bool lighter = Luminance(ink) >= Luminance(felt);
  const bool room = Contrast(QColor(lighter ? Qt::white : Qt::black), felt) >= kTextContrast;
  const int end = lighter == room ? 255 : 0;
  const auto toward = [end](int channel) { return channel + (end - channel) / 8; };
  for (int step = 0; step < 16 && Contrast(ink, felt) < kTextContrast; ++step)
    ink = QColor(toward(ink.red()), toward(ink.green()), toward(ink.blue()));
  return ink;
}

FeltInk FaintLetter(QColor ink, double capHeight) {
  if (capHeight < kSmallCapital) return {Moved(ink)};
  return {ink, FaintEdge(ink), std::clamp(capHeight * 0.09, 0.7, 1.1)};
}

// ---- Readable on each pattern ----

/// The colours of a felt that few of its pixels are darker than, and lighter than.
std::pair<QRgb, QRgb> EndsOfFelt(QColor felt, int pattern) {
  constexpr int kScale = 2;  // at which threads can be seen
  constexpr QRect kWritten(45 * kScale, 45 * kScale, 455 * kScale, 345 * kScale);
  QImage picture(kWritten.size(), QImage::Format_RGB32);
  QPainter painter(&picture);
  painter.translate(-kWritten.topLeft());
  painter.scale(kScale, kScale);
  PaintFelt(painter, FeltOutline().boundingRect(), felt, pattern);
  painter.end();
  std::vector<std::pair<double, QRgb>> pixels;
  constexpr int kEach = 5;  // pixels of a row and column
  for (int y = 0; y < picture.height(); y += kEach)
    for (int x = 0; x < picture.width(); x += kEach)
      pixels.emplace_back(Luminance(QColor::fromRgb(picture.pixel(x, y))), picture.pixel(x, y));
  std::ranges::sort(pixels);
  const std::size_t few = pixels.size() / 20;
  return {pixels[few].second, pixels[pixels.size() - 1 - few].second};
}

QColor Over(QColor under, QColor veil) {
  const double share = veil.alphaF();
  const auto mixed = [share](int below, int above) {
    return qRound(below + (above - below) * share);
  };
  return {mixed(under.red(), veil.red()), mixed(under.green(), veil.green()),
          mixed(under.blue(), veil.blue())};
}

Ground FigureGround(QColor felt, int pattern) {
  const auto [dark, light] = EndsOfFelt(felt, pattern);
  Ground ground{Luminance(QColor::fromRgb(dark)), Luminance(QColor::fromRgb(light))};
  for (const QRgb end : {dark, light}) {
    const double tinted = Luminance(Over(QColor::fromRgb(end), TintOfFelt()));
    ground.Darkest = std::min(ground.Darkest, tinted);
    ground.Lightest = std::max(ground.Lightest, tinted);
  }
  return ground;
}

FeltInk WithEdge(QColor ink, double width) { return {ink, Against(ink), width}; }

}  // namespace

QColor TintOfFelt() {
  return Felt().lightness() < 40 ? QColor(255, 255, 255, 13) : QColor(0, 0, 0, 24);
}

Ground GroundOfFelt() {
  static std::pair<QRgb, int> of{0, -1};
  static Ground ground;
  const std::pair<QRgb, int> now{Felt().rgb(), static_cast<int>(Game.TableFeltPattern)};
  if (of != now) ground = FigureGround(Felt(), now.second);
  of = now;
  return ground;
}

FeltInk LetterInk(QColor ink, double capHeight) {
  if (!TheTable.ClearLettering) return FaintLetter(ink, capHeight);
  const Ground ground = GroundOfFelt();
  if (Contrast(ink, ground) >= kTextContrast) return {ink};
  if (capHeight >= kSmallCapital) return WithEdge(ink, 2 * kEdgeOfLetter);
  // A little farther than it must: some of the felt is beyond its ground.
  constexpr double kSure = 1.15 * kTextContrast;
  const QColor moved = MovedOff(ground, ink, kSure);
  if (Contrast(moved, ground) >= kTextContrast) return {moved};
  return WithEdge(moved, 2 * kEdgeOfLetter);
}

FeltInk SignInk(QColor ink) {
  return TheTable.ClearLettering ? LetterInk(ink, kSmallCapital) : FeltInk{ink};
}

FeltInk LineInk(QColor ink, double width) {
  if (!TheTable.ClearLettering || Contrast(ink, GroundOfFelt()) >= kLineContrast) return {ink};
  return WithEdge(ink, width + 2 * kEdgeOfLine);
}
