// The simulated roll rate in the units that the player chooses from.
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "rules/check_result.h"

inline constexpr int kRateUnits = 6;

struct RateUnit {
  std::string_view Item;
  int Factor;
  bool PerRoll;  // time for a roll rather than rolls in a time
  int Largest;
  std::string_view LimitWords;
};

extern const std::array<RateUnit, kRateUnits> kRateUnitTable;

/// Stores a rate entered in a unit as `SimRollsPerHour`, which is never 0.
CheckResult SetRollsPerHour(const std::string& text, int unit);

/// `SimRollsPerHour` in a unit, as its box shows it.
std::string RollRateText(int unit);
