// The cells of the payoff grids and how they are edited.
#pragma once

#include <string>

#include "core/settings.h"

enum class PayoffGrid { Bets, Field };
enum class PayoffColumn { Win, Word, Per };

/// A cell of the payoff grids; `Row` counts from 0.
struct PayoffCell {
  PayoffGrid Grid = PayoffGrid::Bets;
  int Row = 0;
  PayoffColumn Column = PayoffColumn::Win;
};

PayoffRecord& RecordOfCell(const PayoffCell& cell);
std::string PayoffCellText(const PayoffCell& cell);
int PayoffCellDecimals(const PayoffCell& cell);
bool PayoffCellTakesMinus(const PayoffCell& cell);

/// Stores what was entered in a number cell. A `Per` that isn't above 0 stays as it was; in a "for"
/// record the number shown on the left stays when `Per` changes.
void CommitPayoffCell(const PayoffCell& cell, const std::string& text);

/// A key in a word cell: "t" and "f" choose the word, the space bar flips it. The number on the
/// left stays as shown. False for any other key.
bool PressPayoffWordKey(const PayoffCell& cell, int key);

/// `Per` of the Field bet's own record: the one that all Field payoffs but the pushes share,
/// else 1.
void DeriveFieldPer();
