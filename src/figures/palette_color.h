// The colours of figures.
#pragma once

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
