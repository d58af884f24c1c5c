// What the screens of figures have in common.
#pragma once

#include <QColor>
#include <QWidget>

#include "figures/palette_color.h"
#include "screens/frame/menus.h"
#include "screens/frame/report.h"

class QLabel;

/// A colour of the 16-colour palette.
QColor PaletteInk(int color);

/// The same as the ink of a figure that stands on paper: it can be read on that of our own colours,
/// too.
QColor FigureInk(int color);

/// A figure on paper: black letters on white whatever the desktop's colours are, so that red and
/// blue mean the same everywhere; where windows have colours of our own, in these.
void PutOnPaper(QWidget* panel);

/// Writes a figure where it has changed, in its colour.
void ShowFigure(QLabel* label, const std::string& text, int color = PaletteBlack);

/// A label for a figure, as wide as `widest`; it can be selected and copied.
QLabel* NewFigureLabel(const QString& name, const QString& widest);

/// The commands that print and copy what a screen shows.
std::vector<MenuRow> ReportRows(QWidget* window, std::function<Report()> report);
