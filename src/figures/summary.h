// What frmSummary shows: the figures of the whole game.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/text_table.h"
#include "figures/palette_color.h"

struct SummaryRow {
  std::string_view Control;  // the name of the label that shows the text
  std::string Label;
  std::string Text;
  int Color = PaletteBlack;            // or red below 0
  std::string_view LabelControl = {};  // the name of a label whose words change
};

/// A heading with the rows under it; the first group has none.
struct SummaryGroup {
  std::string_view Heading;
  std::vector<SummaryRow> Rows;
};

/// All figures, in the order of the screen.
std::vector<SummaryGroup> FigureSummary();

TextTable TableOf(const std::vector<SummaryGroup>& summary);
