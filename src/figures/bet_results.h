// What frmBetResults shows: the results of any selection of bets.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/text_table.h"
#include "figures/bet_sums.h"
#include "figures/palette_color.h"

/// `optDataType` 0 to 2, and what its third choice means.
inline constexpr std::array<std::string_view, 3> kBetDataCaptions = {
    " Display results of actual decided wagers",
    " Display results of continuous phantom $1 wagers",
    " Display sum of actual decided wagers (multi-game)",
};
inline constexpr std::string_view kAllGamesTip =
    "The sum of the actual wagers of all games finished since the program started, and of the "
    "running game.";

/// A row of the panel. Cells that have nothing to tell are empty.
struct BetResultsRow {
  std::string Label;
  std::string Wagers;
  std::string Wins;
  std::string Losses;
  std::string Net;
  std::string NetPct;
  int NetColor = PaletteDarkBlue;  // or red below 0
};

struct BetResults {
  std::string TotalRolls;
  std::string RollsPerHour;
  std::string SimHours;
  std::string OnBets;          // the amount now on the selected bets
  std::string OnBetsLastRoll;  // and at the last roll
  std::vector<BetResultsRow> Rows;
  std::string Luck;
  std::string LuckTip;
  std::string Empty;  // what would fill the panel, while there is nothing in it
};

/// The places of the panel's rows.
enum BetResultsRowIndex : int {
  TotalCountRow = 0,
  TotalAmountRow,
  HighRow,
  LowRow,
  AverageRow,
  LastRow,
  LastRollCountRow,
  LastRollAmountRow,
  CountPerHourRow,
  AmountPerHourRow,
  ExpectedRow,
  kBetResultsRows,
};

/// All figures of the panel. Without a decided bet they are 0.
BetResults FigureBetResults(const BetSelection& selection);

TextTable TableOf(const BetResults& results, const BetSelection& selection);
