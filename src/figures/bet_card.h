// What is to be known of a bet before money is laid on it.
#pragma once

#include <string>
#include <vector>

#include "core/currency.h"

struct CardRow {
  std::string Label;
  std::string Value;
};

struct BetCard {
  std::string Name;
  std::string Stake;  // "$20"; empty without money on the bet
  std::string Says;   // what wins and what loses
  std::vector<CardRow> Rows;
};

/// The card of a bet (1 to 83) at this moment: what it pays, what its stake would win, or `chip`
/// where nothing lies, its limits, odds, edge and working state. Leaves the record as it was.
BetCard CardOf(int betId, Currency chip);
