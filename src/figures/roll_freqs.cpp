#include "figures/roll_freqs.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

#include "bets/ledger.h"
#include "core/game_state.h"
#include "core/number_format.h"
#include "dice/matrix.h"

namespace {

constexpr std::array<FreqItem, 88> kItems = {{
    {"Number 2 (1-1)", 2},
    {"Number 3 (1-2)", 22},
    {"Number 3 (2-1)", 23},
    {"Number 3 (1-2) or (2-1)", 3},
    {"Number 4 (1-3)", 24},
    {"Number 4 (3-1)", 25},
    {"Hard 4 (2-2)", 13},
    {"Number 4 (1-3) or (3-1)", 26},
    {"Any 4", 4},
    {"Number 5 (1-4)", 27},
    {"Number 5 (4-1)", 28},
    {"Number 5 (2-3)", 29},
    {"Number 5 (3-2)", 30},
    {"Number 5 (1-4) or (4-1)", 31},
    {"Number 5 (2-3) or (3-2)", 32},
    {"Any 5", 5},
    {"Number 6 (1-5)", 33},
    {"Number 6 (5-1)", 34},
    {"Number 6 (2-4)", 35},
    {"Number 6 (4-2)", 36},
    {"Hard 6 (3-3)", 14},
    {"Number 6 (1-5) or (5-1)", 37},
    {"Number 6 (2-4) or (4-2)", 38},
    {"Any 6", 6},
    {"Number 7 (1-6)", 39},
    {"Number 7 (6-1)", 40},
    {"Number 7 (2-5)", 41},
    {"Number 7 (5-2)", 42},
    {"Number 7 (3-4)", 43},
    {"Number 7 (4-3)", 44},
    {"Number 7 (1-6) or (6-1)", 45},
    {"Number 7 (2-5) or (5-2)", 46},
    {"Number 7 (3-4) or (4-3)", 47},
    {"Any 7", 7},
    {"Number 8 (2-6)", 48},
    {"Number 8 (6-2)", 49},
    {"Number 8 (3-5)", 50},
    {"Number 8 (5-3)", 51},
    {"Hard 8 (4-4)", 15},
    {"Number 8 (2-6) or (6-2)", 52},
    {"Number 8 (3-5) or (5-3)", 53},
    {"Any 8", 8},
    {"Number 9 (3-6)", 54},
    {"Number 9 (6-3)", 55},
    {"Number 9 (4-5)", 56},
    {"Number 9 (5-4)", 57},
    {"Number 9 (3-6) or (6-3)", 58},
    {"Number 9 (4-5) or (5-4)", 59},
    {"Any 9", 9},
    {"Number 10 (4-6)", 60},
    {"Number 10 (6-4)", 61},
    {"Hard 10 (5-5)", 16},
    {"Number 10 (4-6) or (6-4)", 62},
    {"Any 10", 10},
    {"Number 11 (5-6)", 63},
    {"Number 11 (6-5)", 64},
    {"Number 11 (5-6) or (6-5)", 11},
    {"Number 12 (6-6)", 12},
    {"Numbers 2,3,4,9,10,11,12", 21},
    {"Numbers 4,5,6,8,9,10", 17},
    {"Numbers 2,3,7,11,12", 65},
    {"Numbers 2,3,11,12", 66},
    {"Numbers 5,6,8,9", 18},
    {"Numbers 4,5,9,10", 19},
    {"Numbers 2,3,12", 20},
    {"Numbers 4,5,6", 67},
    {"Numbers 8,9,10", 68},
    {"Numbers 2,12", 69},
    {"Numbers 3,11", 70},
    {"Numbers 4,10", 71},
    {"Numbers 5,9", 72},
    {"Numbers 6,8", 73},
    {"Numbers 2,3", 74},
    {"Numbers 3,12", 75},
    {"Numbers 7,11", 76},
    {"Numbers 11,12", 77},
    {"Die 1, face 1", 78},
    {"Die 1, face 2", 79},
    {"Die 1, face 3", 80},
    {"Die 1, face 4", 81},
    {"Die 1, face 5", 82},
    {"Die 1, face 6", 83},
    {"Die 2, face 1", 84},
    {"Die 2, face 2", 85},
    {"Die 2, face 3", 86},
    {"Die 2, face 4", 87},
    {"Die 2, face 5", 88},
    {"Die 2, face 6", 89},
}};

int ChosenEvent() {
  const int last = static_cast<int>(kItems.size()) - 1;
  return kItems[static_cast<std::size_t>(std::clamp(Game.RollFreqChoice, 0, last))].Event;
}

/// How many gaps there were, and the rolls that they cover.
struct GapSums {
  std::int64_t Count = 0;
  std::int64_t Rolls = 0;
};

GapSums SumOfGaps(int event) {
  const auto& tallies = Game.RollGapTally[static_cast<unsigned>(event)];
  GapSums sums{tallies[kLongGap], tallies[0]};
  for (unsigned gap = 1; gap < kLongGap; ++gap) {
    sums.Count += tallies[gap];
    sums.Rolls += std::int64_t{tallies[gap]} * gap;
  }
  return sums;
}

/// The share of gaps of a length when the event comes up with chance `p` on each roll.
double ShareOfGap(int gap, double p) {
  const double waited = std::pow(1 - p, gap - 1);
  return gap < kLongGap ? waited * p : waited;
}

void FillGaps(RollFreqs& freqs, int event, double percent, std::int64_t gaps) {
  const double p = std::clamp(percent / 100, 0.0, 1.0);
  for (int gap = 1; gap <= kLongGap; ++gap) {
    GapRow row;
    row.Gap = gap;
    row.Tally = Game.RollGapTally[static_cast<unsigned>(event)][static_cast<unsigned>(gap)];
    row.Expected = static_cast<double>(gaps) * ShareOfGap(gap, p);
    if (row.Tally > 0) {
      row.GapText = std::to_string(gap) + (gap == kLongGap ? "+" : "");
      row.TallyText = FormatNumber(row.Tally, kWholePattern);
    }
    freqs.HighestGap = std::max({freqs.HighestGap, row.Expected, static_cast<double>(row.Tally)});
    freqs.Gaps.push_back(std::move(row));
  }
}

std::string StandardText(double value) { return FormatNumber(value, kStandardPattern); }

}  // namespace

std::span<const FreqItem> FreqItems() { return kItems; }

RollFreqs FigureRollFreqs(bool skewed) {
  SettleLedger();
  const int event = ChosenEvent();
  const auto at = static_cast<unsigned>(event);
  const double rolls = Game.RollCount[0];
  const GapSums gaps = SumOfGaps(event);
  const bool versusSkewed = skewed && Game.UseSkewedProbability;
  const double probable = EventProbability(event, versusSkewed);

  RollFreqs freqs;
  freqs.TotalRollsAll = FormatNumber(rolls, kWholePattern);
  freqs.TotalRolls = FormatNumber(Game.RollCount[at], kWholePattern);
  freqs.ActualPercent = StandardText(rolls > 0 ? Game.RollCount[at] / rolls * 100 : 0);
  freqs.LastRolled = FormatNumber(Game.RollsSince[at], kWholePattern);
  const bool any = gaps.Rolls > 0 && gaps.Count > 0;
  freqs.Average =
      StandardText(any ? static_cast<double>(gaps.Rolls) / static_cast<double>(gaps.Count) : 0);
  freqs.ProbableCaption = versusSkewed ? "Skewed probable %:" : "True probable %:";
  freqs.CanFlip = Game.UseSkewedProbability;
  freqs.IdealPercent = StandardText(probable);
  if (gaps.Count == 0) freqs.Empty = "Throw the dice until the chosen event comes up.";
  FillGaps(freqs, event, probable, gaps.Count);
  return freqs;
}

FigureTable TableOf(const RollFreqs& freqs) {
  const std::string chosen(
      std::find_if(kItems.begin(), kItems.end(), [event = ChosenEvent()](const FreqItem& item) {
        return item.Event == event;
      })->Text);
  FigureTable table{"Roll Frequencies: " + chosen, {"Gap", "Times", "Expected"}, {}};
  table.Rows = {{"Total game rolls:", freqs.TotalRollsAll, ""},
                {"Total rolls this selection:", freqs.TotalRolls, ""},
                {"Actual % rolled:", freqs.ActualPercent, ""},
                {freqs.ProbableCaption, freqs.IdealPercent, ""},
                {"# rolls since last rolled:", freqs.LastRolled, ""},
                {"Average # of rolls to achieve:", freqs.Average, ""}};
  for (const GapRow& row : freqs.Gaps)
    if (row.Tally > 0)
      table.Rows.push_back({row.GapText, row.TallyText, StandardText(row.Expected)});
  return table;
}
