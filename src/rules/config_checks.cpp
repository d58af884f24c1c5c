#include "rules/config_checks.h"

#include <algorithm>

#include "core/game_state.h"
#include "core/limits.h"
#include "core/text.h"
#include "rules/presets.h"
#include "rules/roll_rate.h"

namespace {

CheckResult Fault(int tab, ConfigBox box, int index, std::string title, std::string text) {
  return {false, tab, box, index, std::move(title), std::move(text)};
}

CheckResult CheckFault(int index, std::string text) {
  return Fault(ChecksTab, ConfigBox::Denomination, index, "Check Values", std::move(text));
}

/// The label of a row as its message names it: odds by their bet names.
std::string RowNameInMessage(const PayoffRow& row) {
  return IsOddsBet(row.BetId) ? std::string(kBetNames[static_cast<unsigned>(row.BetId)])
                              : row.Label;
}

CheckResult CheckBetPayoffs() {
  for (int index = 0; index < kPayoffRows; ++index) {
    const PayoffRow& row = PayoffRows()[static_cast<unsigned>(index)];
    if (Game.Payoff[static_cast<unsigned>(row.BetId)].Win <= Currency()) {
      return Fault(PayoffsTab, ConfigBox::BetPayoff, index, "Payoff ratio error",
                   "The payoff on " + RowNameInMessage(row) + " must be a positive amount.");
    }
  }
  return {};
}

CheckResult CheckFieldPayoffs() {
  bool anyWin = false;
  for (int index = 0; index < kFieldCombinations; ++index) {
    const PayoffRecord& record = Game.FieldPayoff[static_cast<unsigned>(index + 1)];
    if (record.Win < -record.Per) {
      return Fault(PayoffsTab, ConfigBox::FieldPayoff, index, "Payoff ratio error",
                   "The loss on any Field payoff cannot \nexceed the amount wagered.");
    }
    anyWin = anyWin || record.Win > Currency();
  }
  if (anyWin) return {};
  return Fault(PayoffsTab, ConfigBox::FieldPayoff, 0, "Payoff error",
               "At least one of the Field payoffs must be postiive.");
}

}  // namespace

ConfigEntries EntriesInForce() {
  ConfigEntries entries;
  std::copy_n(Game.Bets.begin() + SmallestChip, entries.Checks.size(), entries.Checks.begin());
  entries.MinPlacard = Game.MinPlacard;
  entries.MaxPlacard = Game.MaxPlacard;
  entries.Notices = NoticeBoxes();
  return entries;
}

CheckResult CheckDenominations(const std::array<Currency, 5>& checks) {
  for (int index = 0; index < 5; ++index) {
    const Currency value = checks[static_cast<unsigned>(index)];
    if (value == Currency()) return CheckFault(index, "Check values must be greater than zero.");
    if (value < kLeastCheck || value > kMostCheck) {
      return CheckFault(index, "Check values must lie between $" + MoneyText(kLeastCheck) +
                                   " and $" + MoneyText(kMostCheck) + ".");
    }
    if (index > 0 && value < checks[static_cast<unsigned>(index - 1)]) {
      return CheckFault(index,
                        "Checks must be listed in ascending order with the \nsmallest valued "
                        "check in the leftmost position.");
    }
    if (!IsWhole(value / checks[0])) {
      return CheckFault(index, "All checks must be wholly divisible by the smallest check.");
    }
  }
  return {};
}

CheckResult CheckPlacard(const ConfigEntries& entries) {
  const std::string title = "Configuration Limits";
  if (entries.MinPlacard < entries.Checks[0]) {
    return Fault(BetsTab, ConfigBox::MinPlacard, 0, title,
                 "The minimum bet cannot be less than\nthe smallest check denomination of " +
                     MoneyText(entries.Checks[0]));
  }
  if (entries.MaxPlacard < entries.MinPlacard) {
    return Fault(BetsTab, ConfigBox::MaxPlacard, 0, title,
                 "The maximum bet must be greater than\nor equal to the minimum bet.");
  }
  return {};
}

CheckResult CheckLimitsOK(const ConfigEntries& entries) {
  CheckResult result = CheckDenominations(entries.Checks);
  if (result.Ok) result = CheckPlacard(entries);
  if (result.Ok && entries.RateChanged)
    result = SetRollsPerHour(entries.RateText, entries.RateUnit);
  if (!result.Ok) return result;
  if (entries.Cell) CommitPayoffCell(*entries.Cell, entries.CellText);
  result = CheckBetPayoffs();
  return result.Ok ? CheckFieldPayoffs() : result;
}
