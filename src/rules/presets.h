// Ready-made sets of house rules: Field payoffs and table colours.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "core/settings.h"

inline constexpr int kFieldPresets = 13;
inline constexpr int kColorPresets = 6;

/// The captions of the Field presets, in menu order.
extern const std::array<std::string_view, kFieldPresets> kFieldPresetNames;

/// Loads `FieldPayoff` 1 to 21 with preset 0 to 12; another index changes nothing.
void SetFieldPreset(int preset);

struct ColorPreset {
  std::string_view Name;
  std::array<std::uint32_t, kTableColors> Colors;  // 0xRRGGBB, in the order of `TableColorSlot`
  float Pattern;
};

/// The colour presets, in menu order.
extern const std::array<ColorPreset, kColorPresets> kColorPresetTable;

/// Sets `TableColor` and `TableFeltPattern` to preset 0 to 5; another index changes nothing.
void SetColorPreset(int preset);

/// The labels of the 21 Field combinations, in order (index 0 is combination 1).
extern const std::array<std::string_view, kFieldCombinations> kFieldLabels;

/// What the tables of payoffs and advantages call a bet 1 to 83.
std::string RowLabel(int betId);

/// The rows of the payoff grid: a bet id and its label.
struct PayoffRow {
  int BetId;
  std::string Label;
};
inline constexpr int kPayoffRows = 75;
const std::array<PayoffRow, kPayoffRows>& PayoffRows();
