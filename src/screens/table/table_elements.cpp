#include "screens/table/table_elements.h"

#include <utility>

namespace {

TableButtonsMaker Maker;
TableSentences Sentences;

}  // namespace

void SetTableButtons(TableButtonsMaker maker) { Maker = std::move(maker); }

std::vector<TableButton> TableButtons() { return Maker ? Maker() : std::vector<TableButton>(); }

void SetTableSentences(TableSentences sentences) { Sentences = std::move(sentences); }

const TableSentences& SentencesOfTable() { return Sentences; }
