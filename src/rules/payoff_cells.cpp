#include "rules/payoff_cells.h"

#include <algorithm>

#include "core/game_state.h"
#include "core/limits.h"
#include "core/text.h"
#include "rules/presets.h"

namespace {

bool ShowsFor(const PayoffRecord& record) { return !record.ShownAsTo; }

Currency ShownWin(const PayoffRecord& record) {
  return ShowsFor(record) ? record.Win + record.Per : record.Win;
}

/// The left number stays as shown; what the bet pays follows.
void SetShownWin(PayoffRecord& record, Currency shown) {
  const Currency win = ShowsFor(record) ? shown - record.Per : shown;
  record.Win = std::clamp(win, -kMostPayoff, kMostPayoff);
}

void SetWord(PayoffRecord& record, bool to) {
  const Currency shown = ShownWin(record);
  record.ShownAsTo = to;
  SetShownWin(record, shown);
}
}  // namespace

PayoffRecord& RecordOfCell(const PayoffCell& cell) {
  const auto row = static_cast<std::size_t>(cell.Row);
  if (cell.Grid == PayoffGrid::Field) return Game.FieldPayoff.at(row + 1);
  return Game.Payoff.at(static_cast<std::size_t>(PayoffRows().at(row).BetId));
}

std::string PayoffCellText(const PayoffCell& cell) {
  const PayoffRecord& record = RecordOfCell(cell);
  switch (cell.Column) {
    case PayoffColumn::Win: return PlainText(ShownWin(record));
    case PayoffColumn::Word: return ShowsFor(record) ? "for" : "to";
    default: return PlainText(record.Per);
  }
}

int PayoffCellDecimals(const PayoffCell& cell) { return cell.Column == PayoffColumn::Win ? 2 : 0; }

bool PayoffCellTakesMinus(const PayoffCell& cell) {
  return cell.Grid == PayoffGrid::Field && cell.Column == PayoffColumn::Win;
}

void CommitPayoffCell(const PayoffCell& cell, const std::string& text) {
  PayoffRecord& record = RecordOfCell(cell);
  const Currency entry = ParseAmount(text);
  if (cell.Column == PayoffColumn::Win) {
    SetShownWin(record, entry);
  } else if (cell.Column == PayoffColumn::Per && entry > Currency()) {
    const Currency shown = ShownWin(record);
    record.Per = std::min(entry, kMostPer);
    SetShownWin(record, shown);
  }
}

bool PressPayoffWordKey(const PayoffCell& cell, int key) {
  PayoffRecord& record = RecordOfCell(cell);
  switch (key) {
    case 't':
    case 'T': SetWord(record, true); return true;
    case 'f':
    case 'F': SetWord(record, false); return true;
    case ' ': SetWord(record, ShowsFor(record)); return true;
    default: return false;
  }
}

void DeriveFieldPer() {
  Currency common;
  bool differ = false;
  for (unsigned combination = 1; combination <= kFieldCombinations; ++combination) {
    const PayoffRecord& record = Game.FieldPayoff[combination];
    if (record.Win == Currency()) continue;
    differ = differ || (common != Currency() && common != record.Per);
    common = record.Per;
  }
  Game.Payoff[Field].Per = differ || common == Currency() ? Currency(1) : common;
}
