#include "screens/table/table_elements.h"

#include <utility>

namespace {

TableButtonsMaker Maker;
TableSentences Sentences;

}  // namespace

void SetTableButtons(TableButtonsMaker maker) { Maker = std::move(maker); }

std::vector<TableButton> TableButtons() {
  std::vector<TableButton> buttons;
  if (Maker) buttons = Maker();
  std::erase_if(buttons, [](const TableButton& button) { return !button.Act; });
  return buttons;
}

void SetTableSentences(TableSentences sentences) { Sentences = std::move(sentences); }

const TableSentences& SentencesOfTable() { return Sentences; }
