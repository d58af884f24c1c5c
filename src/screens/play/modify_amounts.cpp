#include "screens/play/modify_amounts.h"

#include <algorithm>
#include <array>

#include "bets/chips.h"
#include "core/text.h"

namespace {

constexpr int kOperators = ModifyDivide + 1;
constexpr int kUnits = ModifyLastChip + 1;
constexpr std::array<const char*, kOperators> kOperatorCaptions = {"+", "-", "x", "/"};

}  // namespace

QString OperatorCaption(int modifyOperator) {
  return kOperatorCaptions[static_cast<unsigned>(std::clamp(modifyOperator, 0, kOperators - 1))];
}

QString UnitCaption(int unit) {
  if (unit <= ModifyDollars) return "$";
  if (unit == ModifyPercent) return "%";
  const Currency chip = ChipValue(std::min(unit, kUnits - 1) - ModifyFirstChip + 1);
  return QString::fromStdString("$" + MoneyText(chip) + " Units");
}

int NextOperator(int modifyOperator) { return (modifyOperator + 1) % kOperators; }

int NextUnit(int unit) { return (unit + 1) % kUnits; }
