#include "rules/roll_rate.h"

#include <algorithm>

#include "core/game_state.h"
#include "core/text.h"

namespace {

constexpr Currency kSmallestRate = Currency::FromRaw(1);
CheckResult RateFault(const std::string& text) {
  return {false, ChecksTab, ConfigBox::RollRate, 0, "Sim Roll Rate Out Of Limits", text};
}

const RateUnit& UnitAt(int unit) {
  return kRateUnitTable[static_cast<unsigned>(std::clamp(unit, 0, kRateUnits - 1))];
}

/// An entry too small for four decimals still isn't zero.
Currency RateEntry(const std::string& text) {
  const Currency entry = ParseAmount(text);
  const bool hasValue = text.find_first_of("123456789") != std::string::npos;
  return entry == Currency() && hasValue ? kSmallestRate : entry;
}

/// From the unit to rolls per hour, and back: the same formula serves both ways for time per roll.
Currency RateFromUnit(Currency entry, const RateUnit& unit) {
  return unit.PerRoll ? Currency::FromDouble(Currency(unit.Factor) / entry) : entry * unit.Factor;
}

Currency RateInUnit(Currency rate, const RateUnit& unit) {
  const Currency factor = unit.Factor;
  return Currency::FromDouble(unit.PerRoll ? factor / rate : rate / factor);
}
}  // namespace

const std::array<RateUnit, kRateUnits> kRateUnitTable = {{
    {"Rolls / hr", 1, false, 36'000'000, " rate is 36,000,000."},
    {"Rolls / min", 60, false, 600'000, " rate is 600,000."},
    {"Rolls / sec", 3600, false, 10'000, " rate is 10,000."},
    {"Hrs / roll", 1, true, 10'000, " rate is 10,000."},
    {"Mins / roll", 60, true, 600'000, " rate is 600,000."},
    {"Secs / roll", 3600, true, 36'000'000, " rate is 36,000,000."},
}};

CheckResult SetRollsPerHour(const std::string& text, int unit) {
  const RateUnit& rateUnit = UnitAt(unit);
  const std::string item(rateUnit.Item);
  const Currency entry = RateEntry(text);
  if (entry <= Currency()) {
    return RateFault("The simulated " + item + " must be greater than zero.");
  }
  if (entry > Currency(rateUnit.Largest)) {
    return RateFault("The maximum simulated " + item + std::string(rateUnit.LimitWords));
  }
  Game.SimRollsPerHour = std::max(RateFromUnit(entry, rateUnit), kSmallestRate);
  return {};
}

std::string RollRateText(int unit) {
  const Currency shown = RateInUnit(std::max(Game.SimRollsPerHour, kSmallestRate), UnitAt(unit));
  return shown == Currency() ? "<.0001" : PlainText(shown);
}
