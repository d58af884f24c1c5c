#include "figures/figure_table.h"

namespace {

void AddLine(std::string& text, const std::vector<std::string>& cells) {
  for (std::size_t i = 0; i < cells.size(); ++i) {
    if (i > 0) text += '\t';
    text += cells[i];
  }
  text += '\n';
}

}  // namespace

std::string TabSeparated(const FigureTable& table) {
  std::string text;
  if (!table.Headings.empty()) AddLine(text, table.Headings);
  for (const auto& row : table.Rows) AddLine(text, row);
  return text;
}
