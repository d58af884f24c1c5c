#include "figures/roll_totals.h"

#include <algorithm>
#include <cmath>

#include "bets/ledger.h"
#include "core/game_state.h"
#include "core/number_format.h"
#include "dice/matrix.h"
#include "stats/roll_counters.h"

namespace {

enum Display : int { StandardNumbers = 0, DistinctCombos = 1, UniqueCombos = 2, DiceFaces = 3 };

constexpr std::array<FigureChoice, 4> kDisplays = {{{"11 Standard Numbers", StandardNumbers},
                                                    {"21 Distinguishable Combos", DistinctCombos},
                                                    {"36 Unique Combos", UniqueCombos},
                                                    {"Dice Faces", DiceFaces}}};

constexpr std::array<FigureChoice, 4> kBackColors = {{{"&Cyan", PaletteCyan},
                                                      {"&Black", PaletteBlack},
                                                      {"&White", PaletteWhite},
                                                      {"&Gray", PaletteDarkGray}}};

constexpr std::array<FigureChoice, 10> kGraphColors = {{{"&Black", 0},
                                                        {"&White", 1},
                                                        {"&Red", 2},
                                                        {"Bl&ue", 3},
                                                        {"&Yellow", 4},
                                                        {"B&lack and Blue", 5},
                                                        {"Bl&ack and Red", 6},
                                                        {"R&ed and Blue", 7},
                                                        {"Yell&ow and Blue", 8},
                                                        {"&Multi-Color", 9}}};

/// The colours that the bars of a choice take in turn.
const std::vector<int>& BarColors(int choice) {
  static const std::array<std::vector<int>, kGraphColors.size()> kColors = {
      {{PaletteBlack},
       {PaletteWhite},
       {PaletteRed},
       {PaletteBlue},
       {PaletteYellow},
       {PaletteBlack, PaletteBlue},
       {PaletteBlack, PaletteRed},
       {PaletteRed, PaletteBlue},
       {PaletteYellow, PaletteBlue},
       {PaletteRed, PaletteYellow, PaletteBlue, PaletteGreen, PaletteMagenta, PaletteWhite}}};
  return kColors[static_cast<std::size_t>(std::clamp(choice, 0, 9))];
}

struct Combo {
  int Low;
  int High;
};
constexpr std::array<Combo, 21> kCombos = {
    {{1, 1}, {1, 2}, {1, 3}, {2, 2}, {1, 4}, {2, 3}, {1, 5}, {2, 4}, {3, 3}, {1, 6}, {2, 5},
     {3, 4}, {2, 6}, {3, 5}, {4, 4}, {3, 6}, {4, 5}, {4, 6}, {5, 5}, {5, 6}, {6, 6}}};

std::string ComboLabel(int first, int second) {
  return std::to_string(first) + "-" + std::to_string(second);
}

// --- Bars ---

void AddBar(RollTotals& totals, std::string label, int event) {
  RollTotalsBar bar;
  bar.Label = std::move(label);
  bar.Event = event;
  totals.Bars.push_back(std::move(bar));
}

void AddNumbers(RollTotals& totals) {
  totals.Headings = {{"NUMBER", 0}};
  for (int number = 2; number <= 12; ++number) AddBar(totals, std::to_string(number), number);
}

void AddCombos(RollTotals& totals, bool ordered) {
  totals.Headings = {{"COMBINATIONS", 0}};
  for (const auto [low, high] : kCombos) {
    AddBar(totals, ComboLabel(low, high),
           ordered ? EventOfDice(low, high) : EventOfCombination(low, high));
    if (ordered && low != high) AddBar(totals, ComboLabel(high, low), EventOfDice(high, low));
  }
}

void AddFaces(RollTotals& totals) {
  constexpr int kFaces = 6;
  totals.Headings = {{"DIE1", 0}, {"DIE2", kFaces}};
  for (int bar = 0; bar < 2 * kFaces; ++bar)
    AddBar(totals, std::to_string(bar % kFaces + 1), FirstDie1 + bar);
}

void AddBars(RollTotals& totals) {
  switch (Game.RollTotalsDisplay) {
    case DistinctCombos: return AddCombos(totals, false);
    case UniqueCombos: return AddCombos(totals, true);
    case DiceFaces: return AddFaces(totals);
    default: return AddNumbers(totals);
  }
}

// --- Figures ---

std::string PercentText(double percent) { return FormatNumber(percent, "#,#.00;-#,#;0"); }

std::string TipOf(const RollTotalsBar& bar) {
  return bar.Label + ": probable " + bar.ProbableText + " %, actual " + bar.ActualText + " %, " +
         bar.CountText + (bar.CountText == "1" ? " roll, " : " rolls, ") + bar.SinceText +
         " since last appeared";
}

void FillFigures(RollTotalsBar& bar, bool skewed) {
  const auto event = static_cast<unsigned>(bar.Event);
  const double rolls = Game.RollCount[0];
  bar.Probable = std::max(EventProbability(bar.Event, skewed), 0.0);
  bar.Actual = rolls > 0 ? Game.RollCount[event] / rolls * 100 : 0;
  bar.ProbableText = PercentText(bar.Probable);
  bar.ActualText = PercentText(bar.Actual);
  bar.CountText = FormatNumber(Game.RollCount[event], kWholePattern);
  bar.SinceText = FormatNumber(Game.RollsSince[event], kWholePattern);
  bar.Tip = TipOf(bar);
}

void FillScale(RollTotals& totals) {
  double highest = 0;
  for (const RollTotalsBar& bar : totals.Bars)
    highest = std::max({highest, bar.Probable, bar.Actual});
  totals.Top = TopOfScale(highest);
  for (std::size_t line = 0; line < totals.ScaleLabels.size(); ++line)
    totals.ScaleLabels[line] = FormatNumber(totals.Top * static_cast<double>(line) / 4, "#,##0.##");
  for (RollTotalsBar& bar : totals.Bars) {
    bar.ProbableHeight = bar.Probable / totals.Top * kRollTotalsBarHeight;
    bar.ActualHeight = bar.Actual / totals.Top * kRollTotalsBarHeight;
  }
}

void FillColors(RollTotals& totals) {
  const auto& colors = BarColors(Game.RollTotalsGraphColor);
  for (std::size_t i = 0; i < totals.Bars.size(); ++i)
    totals.Bars[i].ActualColor = colors[i % colors.size()];
  const bool gray = Game.RollTotalsBackColor == PaletteDarkGray;
  totals.BackColor = Game.RollTotalsBackColor;
  totals.TextColor = gray || totals.BackColor == PaletteBlack ? PaletteWhite : PaletteBlack;
  totals.ProbableColor = gray ? PaletteLightGray : PaletteDarkGray;
}

}  // namespace

std::span<const FigureChoice> RollTotalsDisplays() { return kDisplays; }
std::span<const FigureChoice> RollTotalsBackColors() { return kBackColors; }
std::span<const FigureChoice> RollTotalsGraphColors() { return kGraphColors; }

double TopOfScale(double highest) {
  const double step = highest >= 8 ? 5 : 4;
  return std::max(std::ceil(highest / step) * step, step);
}

RollTotals FigureRollTotals() {
  SettleLedger();
  RollTotals totals;
  totals.OffersComparison = Game.UseSkewedProbability;
  totals.VersusSkewed = Game.UseSkewedProbability && Game.ShowVsSkewed;
  totals.TotalRolls = FormatNumber(Game.RollCount[0], kWholePattern);
  if (Game.RollCount[0] == 0) totals.Empty = "Throw the dice to fill this chart.";
  AddBars(totals);
  for (RollTotalsBar& bar : totals.Bars) FillFigures(bar, totals.VersusSkewed);
  FillScale(totals);
  FillColors(totals);
  return totals;
}

TextTable TableOf(const RollTotals& totals) {
  TextTable table{"Roll Totals", {totals.Headings[0].Text}, {}};
  if (totals.Headings.size() > 1) table.Headings = {"DIE"};
  table.Headings.insert(table.Headings.end(), kRollTotalsRows.begin(), kRollTotalsRows.end());
  std::size_t heading = 0;
  for (std::size_t i = 0; i < totals.Bars.size(); ++i) {
    while (heading + 1 < totals.Headings.size() && totals.Headings[heading + 1].FirstBar <= i)
      ++heading;
    const RollTotalsBar& bar = totals.Bars[i];
    const std::string label =
        totals.Headings.size() > 1 ? totals.Headings[heading].Text + " " + bar.Label : bar.Label;
    table.Rows.push_back({label, bar.ProbableText, bar.ActualText, bar.CountText, bar.SinceText});
  }
  table.Rows.push_back({"Total rolls", "", "", totals.TotalRolls, ""});
  return table;
}
