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
    {"Number 2 (1-1)", Total2},
    {"Number 3 (1-2)", Throw12},
    {"Number 3 (2-1)", Throw21},
    {"Number 3 (1-2) or (2-1)", Total3},
    {"Number 4 (1-3)", Throw13},
    {"Number 4 (3-1)", Throw31},
    {"Hard 4 (2-2)", Throw22},
    {"Number 4 (1-3) or (3-1)", Either13},
    {"Any 4", Total4},
    {"Number 5 (1-4)", Throw14},
    {"Number 5 (4-1)", Throw41},
    {"Number 5 (2-3)", Throw23},
    {"Number 5 (3-2)", Throw32},
    {"Number 5 (1-4) or (4-1)", Either14},
    {"Number 5 (2-3) or (3-2)", Either23},
    {"Any 5", Total5},
    {"Number 6 (1-5)", Throw15},
    {"Number 6 (5-1)", Throw51},
    {"Number 6 (2-4)", Throw24},
    {"Number 6 (4-2)", Throw42},
    {"Hard 6 (3-3)", Throw33},
    {"Number 6 (1-5) or (5-1)", Either15},
    {"Number 6 (2-4) or (4-2)", Either24},
    {"Any 6", Total6},
    {"Number 7 (1-6)", Throw16},
    {"Number 7 (6-1)", Throw61},
    {"Number 7 (2-5)", Throw25},
    {"Number 7 (5-2)", Throw52},
    {"Number 7 (3-4)", Throw34},
    {"Number 7 (4-3)", Throw43},
    {"Number 7 (1-6) or (6-1)", Either16},
    {"Number 7 (2-5) or (5-2)", Either25},
    {"Number 7 (3-4) or (4-3)", Either34},
    {"Any 7", Total7},
    {"Number 8 (2-6)", Throw26},
    {"Number 8 (6-2)", Throw62},
    {"Number 8 (3-5)", Throw35},
    {"Number 8 (5-3)", Throw53},
    {"Hard 8 (4-4)", Throw44},
    {"Number 8 (2-6) or (6-2)", Either26},
    {"Number 8 (3-5) or (5-3)", Either35},
    {"Any 8", Total8},
    {"Number 9 (3-6)", Throw36},
    {"Number 9 (6-3)", Throw63},
    {"Number 9 (4-5)", Throw45},
    {"Number 9 (5-4)", Throw54},
    {"Number 9 (3-6) or (6-3)", Either36},
    {"Number 9 (4-5) or (5-4)", Either45},
    {"Any 9", Total9},
    {"Number 10 (4-6)", Throw46},
    {"Number 10 (6-4)", Throw64},
    {"Hard 10 (5-5)", Throw55},
    {"Number 10 (4-6) or (6-4)", Either46},
    {"Any 10", Total10},
    {"Number 11 (5-6)", Throw56},
    {"Number 11 (6-5)", Throw65},
    {"Number 11 (5-6) or (6-5)", Total11},
    {"Number 12 (6-6)", Total12},
    {"Numbers 2,3,4,9,10,11,12", FieldNumbers},
    {"Numbers 4,5,6,8,9,10", PointNumbers},
    {"Numbers 2,3,7,11,12", ComeOutDecisions},
    {"Numbers 2,3,11,12", HornNumbers},
    {"Numbers 5,6,8,9", InsideNumbers},
    {"Numbers 4,5,9,10", OutsideNumbers},
    {"Numbers 2,3,12", CrapsNumbers},
    {"Numbers 4,5,6", LowPointNumbers},
    {"Numbers 8,9,10", HighPointNumbers},
    {"Numbers 2,12", TwoOrTwelve},
    {"Numbers 3,11", ThreeOrEleven},
    {"Numbers 4,10", FourOrTen},
    {"Numbers 5,9", FiveOrNine},
    {"Numbers 6,8", SixOrEight},
    {"Numbers 2,3", TwoOrThree},
    {"Numbers 3,12", ThreeOrTwelve},
    {"Numbers 7,11", SevenOrEleven},
    {"Numbers 11,12", ElevenOrTwelve},
    {"Die 1, face 1", FirstDie1},
    {"Die 1, face 2", FirstDie2},
    {"Die 1, face 3", FirstDie3},
    {"Die 1, face 4", FirstDie4},
    {"Die 1, face 5", FirstDie5},
    {"Die 1, face 6", FirstDie6},
    {"Die 2, face 1", SecondDie1},
    {"Die 2, face 2", SecondDie2},
    {"Die 2, face 3", SecondDie3},
    {"Die 2, face 4", SecondDie4},
    {"Die 2, face 5", SecondDie5},
    {"Die 2, face 6", SecondDie6},
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

TextTable TableOf(const RollFreqs& freqs) {
  const std::string chosen(
      std::find_if(kItems.begin(), kItems.end(), [event = ChosenEvent()](const FreqItem& item) {
        return item.Event == event;
      })->Text);
  TextTable table{"Roll Frequencies: " + chosen, {"Gap", "Times", "Expected"}, {}};
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
