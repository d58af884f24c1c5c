#include "screens/frame/chrome.h"

#include <QApplication>
#include <QPointer>
#include <QStyle>
#include <algorithm>
#include <memory>
#include <optional>
#include <tuple>
#include <vector>

#include "screens/frame/chrome_style.h"
#include "screens/frame/contrast.h"

namespace {

constexpr double kDarkChroma = 0.032;  // at most
constexpr double kLightChroma = 0.022;
constexpr double kDarkFelt = 0.30;      // luminance
constexpr double kGrayChroma = 0.004;   // of a felt without a hue
constexpr double kHighContrast = 19.5;  // of a desktop's letters on its windows

/// The lightness of each colour, in OKLCH.
struct Lightness {
  double Base, Window, Raised, Border, Muted, Text;
};
constexpr Lightness kDark{0.175, 0.225, 0.285, 0.535, 0.78, 0.955};
constexpr Lightness kLight{0.985, 0.945, 0.895, 0.56, 0.44, 0.235};

bool Own = false;
ChromeColors Colors;

std::vector<std::function<void()>>& Followers() {
  static std::vector<std::function<void()>> followers;
  return followers;
}

const ChromeColors& BlackAndWhite() {
  static const ChromeColors colors{Qt::black,
                                   Qt::black,
                                   Qt::black,
                                   Qt::white,
                                   Qt::white,
                                   Qt::white,
                                   Qt::yellow,
                                   Qt::black,
                                   QColor(0x80, 0xFF, 0xA8),
                                   QColor(0xFF, 0xB4, 0xAA)};
  return colors;
}

ChromeColors ColorsOf(const QPalette& palette) {
  const bool dark = palette.color(QPalette::Base).lightness() < 128;
  return {palette.color(QPalette::Base),
          palette.color(QPalette::Window),
          palette.color(QPalette::Button),
          palette.color(QPalette::Mid),
          palette.color(QPalette::PlaceholderText),
          palette.color(QPalette::WindowText),
          palette.color(QPalette::Highlight),
          palette.color(QPalette::HighlightedText),
          dark ? QColor(0x7C, 0xE3, 0xA1) : QColor(0x0B, 0x66, 0x30),
          dark ? QColor(0xFF, 0x9F, 0x92) : QColor(0xA3, 0x15, 0x15)};
}

bool IsHighContrast(const QPalette& palette) {
  return Contrast(palette.color(QPalette::WindowText), palette.color(QPalette::Window)) >=
         kHighContrast;
}

/// Once it is in place it stays; it shows nothing where the colors aren't our own.
void UseChromeStyle() {
  if (!qobject_cast<ChromeStyle*>(QApplication::style()))
    QApplication::setStyle(new ChromeStyle(QApplication::style()->name()));
}

QColor Between(QColor a, QColor b) {
  return {(a.red() + b.red()) / 2, (a.green() + b.green()) / 2, (a.blue() + b.blue()) / 2};
}

}  // namespace

ChromeColors ChromeOfFelt(QColor felt, QColor lines) {
  const bool dark = Luminance(felt) < kDarkFelt;
  Oklch shade = ToOklch(felt);
  if (shade.Chroma < kGrayChroma) shade = ToOklch(lines);
  shade.Chroma =
      shade.Chroma < kGrayChroma ? 0 : std::min(shade.Chroma, dark ? kDarkChroma : kLightChroma);
  const auto at = [&shade](double lightness) {
    return FromOklch({lightness, shade.Chroma, shade.Hue});
  };
  const Lightness& light = dark ? kDark : kLight;
  ChromeColors colors;
  colors.Base = at(light.Base);
  colors.Window = at(light.Window);
  colors.Raised = at(light.Raised);
  colors.Border = at(light.Border);
  colors.Muted = at(light.Muted);
  colors.Text = at(light.Text);
  colors.Accent = dark ? QColor(0xE8, 0xC4, 0x6A) : QColor(0x7A, 0x4A, 0x00);
  colors.OnAccent = dark ? QColor(0x23, 0x18, 0x03) : QColor(Qt::white);
  colors.Gain = dark ? QColor(0x7C, 0xE3, 0xA1) : QColor(0x0B, 0x66, 0x30);
  colors.Loss = dark ? QColor(0xFF, 0x9F, 0x92) : QColor(0xA3, 0x15, 0x15);
  return colors;
}

QPalette PaletteOf(const ChromeColors& colors) {
  QPalette palette(colors.Text, colors.Raised, colors.Border, Between(colors.Border, colors.Window),
                   colors.Border, colors.Text, colors.Loss, colors.Base, colors.Window);
  palette.setColor(QPalette::AlternateBase, colors.Window);
  palette.setColor(QPalette::ButtonText, colors.Text);
  palette.setColor(QPalette::PlaceholderText, colors.Muted);
  palette.setColor(QPalette::ToolTipBase, colors.Raised);
  palette.setColor(QPalette::ToolTipText, colors.Text);
  palette.setColor(QPalette::Highlight, colors.Accent);
  palette.setColor(QPalette::HighlightedText, colors.OnAccent);
  palette.setColor(QPalette::Link, colors.Accent);
  palette.setColor(QPalette::LinkVisited, colors.Muted);
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
    palette.setColor(QPalette::Disabled, role,
                     Between(colors.Muted, Between(colors.Muted, colors.Window)));
  palette.setColor(QPalette::Disabled, QPalette::Highlight, colors.Border);
  return palette;
}

void UseChrome(Chrome choice, QColor felt, QColor lines) {
  static std::optional<std::tuple<Chrome, QRgb, QRgb>> inForce;
  const std::tuple now(choice, felt.rgb(), lines.rgb());
  if (inForce == now) return;
  inForce = now;
  static const QPalette desktop = QApplication::palette();
  Own = choice == Chrome::HighContrast || (choice == Chrome::OfTable && !IsHighContrast(desktop));
  if (Own) {
    UseChromeStyle();
    Colors = choice == Chrome::HighContrast ? BlackAndWhite() : ChromeOfFelt(felt, lines);
    QApplication::setPalette(PaletteOf(Colors));
  } else {
    QApplication::setPalette(QPalette());
    Colors = ColorsOf(QApplication::palette());
  }
  const auto followers = Followers();  // one may add another
  for (const auto& follow : followers) follow();
}

const ChromeColors& ColorsOfWindows() { return Colors; }

bool HasOwnChrome() { return Own; }

void FollowChrome(QObject* with, std::function<void()> follow) {
  follow();
  auto& followers = Followers();
  const auto key = std::make_shared<QPointer<QObject>>(with);
  followers.push_back([key, follow = std::move(follow)] {
    if (*key) follow();
  });
}

QColor PaperColor() { return Own ? Colors.Base : QColor(Qt::white); }

QColor InkOnPaper(QColor told) {
  if (!Own) return told;
  if (told.rgb() == QColor(Qt::black).rgb()) return Colors.Text;
  const double base = Luminance(Colors.Base);
  const double window = Luminance(Colors.Window);
  return MovedOff({std::min(base, window), std::max(base, window)}, told, kTextContrast);
}

QColor WarningInk() {
  if (Own) return Colors.Loss;
  return QApplication::palette().color(QPalette::Window).lightness() < 128
             ? QColor(0xFF, 0x6B, 0x6B)
             : QColor(Qt::red);
}
