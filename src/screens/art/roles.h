// The colours of what is painted on rail, plates and felt, by what they say. They are the same with
// every felt, because the rail is.
#pragma once

#include <QColor>

inline constexpr QColor kPlate(0x17, 0x10, 0x0C);  // dark wells that hold figures
inline constexpr QColor kPlateEdge(0x7A, 0x59, 0x1E);

// On a plate.
inline constexpr QColor kInk(0xF6, 0xF0, 0xDC);
inline constexpr QColor kMuted(0xD2, 0xBC, 0x8E);
inline constexpr QColor kGain(0x7C, 0xE3, 0xA1);
inline constexpr QColor kLoss(0xFF, 0x9F, 0x92);
inline constexpr QColor kAccent(0xE8, 0xC4, 0x6A);

// Tiles of the history, under white.
inline constexpr QColor kRedTile(0xB3, 0x24, 0x2E);
inline constexpr QColor kGreenTile(0x1E, 0x7A, 0x4A);

// Brass buttons, from their upper edge to the lower one, and what stands on them.
inline constexpr QColor kBrassLight(0xF3, 0xDD, 0x9B);
inline constexpr QColor kBrassDark(0xB9, 0x8F, 0x45);
inline constexpr QColor kOnBrass(0x23, 0x18, 0x03);

// The button that throws the dice, under white.
inline constexpr QColor kRollLight(0xC4, 0x2A, 0x33);
inline constexpr QColor kRollDark(0x8E, 0x14, 0x1E);

// The light round a bet that the mouse or the keyboard is on, on a black edge.
inline constexpr QColor kHighlight(0xFF, 0xE2, 0x60);
