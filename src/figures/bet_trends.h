// What frmBetTrends shows: the streak of every bet.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/text_table.h"
#include "figures/palette_color.h"

inline constexpr std::string_view kBetTrendsHeading =
    "Recent Won / Lost trend for bets actually made (losses shown as negative numbers).";

struct BetTrend {
  int BetId = 0;
  std::string Name;
  std::string Streak;  // empty without a decision
  int Color = PaletteBlack;
};

/// Bets 1 to 83 in order.
std::vector<BetTrend> FigureBetTrends();

TextTable TableOf(const std::vector<BetTrend>& trends);
