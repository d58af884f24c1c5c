// What frmRollFreqs shows: the numbers and the spacing of one chosen roll event.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/text_table.h"
#include "figures/palette_color.h"

/// An item of `cmbFreqNum`; the list stands in the order of the numbers thrown.
struct FreqItem {
  std::string_view Text;
  int Event;
};
std::span<const FreqItem> FreqItems();

/// One gap of the histogram, 1 to 200; the last one takes all that are as long or longer.
struct GapRow {
  int Gap = 0;
  int Tally = 0;
  double Expected = 0;  // what dice of the probability shown would leave, of as many gaps
  std::string GapText;
  std::string TallyText;
};

struct RollFreqs {
  std::string TotalRollsAll;
  std::string TotalRolls;
  std::string ActualPercent;
  std::string LastRolled;
  std::string Average;
  std::string ProbableCaption;  // of cmdProbable
  bool CanFlip = false;         // cmdProbable is enabled
  std::string IdealPercent;
  std::vector<GapRow> Gaps;  // all of 1 to 200; those without a tally leave their row empty
  double HighestGap = 0;     // the highest tally or expected one: the top of the curve's scale
  std::string Empty;         // what would fill the histogram, while there is no gap
};

/// The columns and rows in which the gaps are printed, from the top down.
inline constexpr int kGapColumns = 8;
inline constexpr int kGapRows = 25;

/// The figures of the event chosen by `RollFreqChoice`. `skewed` asks for the probability of the
/// skewed dice, which stands only while they are in use.
RollFreqs FigureRollFreqs(bool skewed);

TextTable TableOf(const RollFreqs& freqs);
