// What frmRollTotals shows: how often each number came up beside how often it should.
#pragma once

#include <array>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/text_table.h"
#include "figures/palette_color.h"

/// A choice of a menu and what it stands for.
struct FigureChoice {
  std::string_view Caption;
  int Value;
};

/// `mnuDisplayTotals`, `mnuBackgroundColor` (numbers of the palette) and `mnuGraphColor`.
std::span<const FigureChoice> RollTotalsDisplays();
std::span<const FigureChoice> RollTotalsBackColors();
std::span<const FigureChoice> RollTotalsGraphColors();

/// A bar as high as this is as high as the scale.
inline constexpr double kRollTotalsBarHeight = 223;

/// One column of the chart. Percents are 0 to 100, heights 0 to `kRollTotalsBarHeight`.
struct RollTotalsBar {
  std::string Label;
  int Event = 0;
  double Probable = 0;
  double Actual = 0;
  double ProbableHeight = 0;
  double ActualHeight = 0;
  int ActualColor = PaletteBlack;
  std::string ProbableText;
  std::string ActualText;
  std::string CountText;
  std::string SinceText;
  std::string Tip;  // its figures in words, for the mouse
};

/// The heading over the bars from `FirstBar` on.
struct RollTotalsHeading {
  std::string Text;
  std::size_t FirstBar = 0;
};

struct RollTotals {
  std::vector<RollTotalsHeading> Headings;
  std::vector<RollTotalsBar> Bars;
  double Top = 0;                          // of the scale, in percent
  std::array<std::string, 5> ScaleLabels;  // from 0 up
  std::string TotalRolls;
  bool OffersComparison = false;  // optShowProb is to be seen
  bool VersusSkewed = false;      // the probable bars are of the skewed dice
  int BackColor = PaletteCyan;
  int TextColor = PaletteBlack;
  int ProbableColor = PaletteDarkGray;
  std::string Empty;  // what would fill the chart, while no dice were thrown
};

/// The headings of the rows under the bars, from the top.
inline constexpr std::array<std::string_view, 4> kRollTotalsRows = {
    "Prob %", "Actual %", "# of rolls", "# of rolls since last appeared"};

/// All figures of the screen, by the settings of the record.
RollTotals FigureRollTotals();

/// The top of a scale for percents up to `highest`: a multiple of 5 from 8 on, else of 4. Never 0.
double TopOfScale(double highest);

TextTable TableOf(const RollTotals& totals);
