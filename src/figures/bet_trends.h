// What frmBetTrends shows: the streak of every bet.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "figures/figure_table.h"

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

FigureTable TableOf(const std::vector<BetTrend>& trends);
