// The checks of the configuration screen.
#pragma once

#include <array>
#include <optional>
#include <string>

#include "core/currency.h"
#include "rules/check_result.h"
#include "rules/payoff_cells.h"

/// The entries of the screen that aren't in their fields yet.
struct ConfigEntries {
  std::array<Currency, 5> Checks{};
  Currency MinPlacard;
  Currency MaxPlacard;
  bool RateChanged = false;
  std::string RateText;
  int RateUnit = 0;
  std::optional<PayoffCell> Cell;
  std::string CellText;
};

/// The entries as they stand in their fields, with no box under edit.
ConfigEntries EntriesInForce();

/// Checks the check values, then the limits of a bet, the roll rate, the cell under edit and both
/// payoff tables, up to the first fault. Stores the roll rate and the cell on its way.
CheckResult CheckLimitsOK(const ConfigEntries& entries);
