// The checks of the configuration screen.
#pragma once

#include <array>
#include <optional>
#include <string>

#include "core/currency.h"
#include "rules/check_result.h"
#include "rules/choices.h"
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
  std::array<bool, kNoticeBoxes> Notices{};  // which take hold when the screen closes
};

/// The entries as they stand in their fields, with no box under edit.
ConfigEntries EntriesInForce();

/// The first checks alone: of the check values, and of the limits of a bet with the smallest of
/// them.
CheckResult CheckDenominations(const std::array<Currency, 5>& checks);
CheckResult CheckPlacard(const ConfigEntries& entries);

/// Checks the check values, then the limits of a bet, the roll rate, the cell under edit and both
/// payoff tables, up to the first fault. Stores the roll rate and the cell on its way.
CheckResult CheckLimitsOK(const ConfigEntries& entries);
