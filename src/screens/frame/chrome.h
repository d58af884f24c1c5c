// The colours of menus, windows and dialogs: those of the table's felt, of the system, or black and
// white.
#pragma once

#include <QColor>
#include <QPalette>
#include <functional>

class QObject;

enum class Chrome { OfTable, OfSystem, HighContrast };

/// The colours of windows by what they are for.
struct ChromeColors {
  QColor Base;    // what figures and letters are typed on
  QColor Window;  // behind controls
  QColor Raised;  // buttons
  QColor Border;
  QColor Muted;
  QColor Text;
  QColor Accent;
  QColor OnAccent;
  QColor Gain;
  QColor Loss;
};

/// The colours that go with a felt: dark with a dark one, in a faint shade of it; in that of the
/// lines where the felt has none.
ChromeColors ChromeOfFelt(QColor felt, QColor lines);

QPalette PaletteOf(const ChromeColors& colors);

/// Gives all windows their colours, where these aren't in force already. On a desktop of high
/// contrast those of the table give way to the desktop's.
void UseChrome(Chrome choice, QColor felt, QColor lines);

/// The colours in force; those of the system come from its palette.
const ChromeColors& ColorsOfWindows();

/// True where windows have colours of our own: figures then stand on the window's paper, not on
/// white.
bool HasOwnChrome();

/// `follow` runs now and after each change of the colours. Nothing is followed once `with` is gone.
void FollowChrome(QObject* with, std::function<void()> follow);

/// A told colour of letters as it can be read on the paper in force: black is the colour of text,
/// the others keep their hue and move in lightness as far as they must.
QColor InkOnPaper(QColor told);

/// What figures are written on: white, or the base of our own colours.
QColor PaperColor();

/// The red of amounts below zero and of faults, on the window's own ground.
QColor WarningInk();
