// What a screen of figures has in common with the others: colours, and its rows as text.
#pragma once

#include <string>
#include <vector>

/// Numbers of the 16-colour palette.
enum PaletteColor : int {
  PaletteBlack = 0,
  PaletteDarkBlue = 1,
  PaletteLightGray = 7,
  PaletteDarkGray = 8,
  PaletteBlue = 9,
  PaletteGreen = 10,
  PaletteCyan = 11,
  PaletteRed = 12,
  PaletteMagenta = 13,
  PaletteYellow = 14,
  PaletteWhite = 15,
};

/// The rows of a screen as text, for printing and copying.
struct FigureTable {
  std::string Title;
  std::vector<std::string> Headings;
  std::vector<std::vector<std::string>> Rows;
};

/// The headings and rows of a table, for a spreadsheet: cells between tabs, a line a row.
std::string TabSeparated(const FigureTable& table);
