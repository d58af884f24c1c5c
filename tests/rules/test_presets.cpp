#include <algorithm>
#include <functional>

#include "rules/presets.h"
#include "support/table_fixture.h"

namespace {

/// The throw of a Field combination, by its label.
struct Throw {
  int Die1;
  int Die2;
  int Total() const { return Die1 + Die2; }
  bool IsPair() const { return Die1 == Die2; }
};

Throw ThrowOf(int combination) {
  const auto label = kFieldLabels[static_cast<unsigned>(combination - 1)];
  return {label[6] - '0', label[8] - '0'};
}

/// A line bet's worth after a throw on the come-out: a number is worth what its point is.
double WorthOfLine(int total) {
  const int ways = total <= 7 ? total - 1 : 13 - total;
  return 2 * (ways / (ways + 6.0)) - 1;
}

bool IsIn(std::initializer_list<int> totals, const Throw& dice) {
  return std::find(totals.begin(), totals.end(), dice.Total()) != totals.end();
}

using Net = std::function<double(const Throw&)>;

/// A bet that one number and 7 decide.
Net OnNumber(int number, double win, double seven) {
  return [=](const Throw& dice) {
    return IsIn({number}, dice) ? win : IsIn({7}, dice) ? seven : 0;
  };
}

/// Units that each stand on one number, at 30 to 1 or 15 to 1; one may stand on 7 at 4 to 1.
Net UnitsOn(int units, double seven) {
  return [=](const Throw& dice) {
    if (IsIn({2, 12}, dice)) return (31.0 - units) / units;
    if (IsIn({3, 11}, dice)) return (16.0 - units) / units;
    return IsIn({7}, dice) ? seven : -1.0;
  };
}

using FieldPresets = TableTest;

TEST_F(FieldPresets, PayWhatTheirBetsAreWorth) {
  const Net passLine = [](const Throw& dice) {
    return IsIn({7, 11}, dice) ? 1 : IsIn({2, 3, 12}, dice) ? -1 : WorthOfLine(dice.Total());
  };
  const Net bets[] = {
      [](const Throw& dice) {
        return IsIn({2, 12}, dice) ? 2 : IsIn({5, 6, 7, 8}, dice) ? -1 : 1;
      },
      [](const Throw& dice) {
        return !IsIn({6, 7, 8}, dice) ? -1 : dice.IsPair() ? 2 : 1;
      },
      passLine,
      [=](const Throw& dice) { return IsIn({12}, dice) ? 0 : -passLine(dice); },
      OnNumber(6, 7.0 / 6, -1),
      OnNumber(8, -1, 4.0 / 5),
      OnNumber(10, 39.0 / 21, -1),
      OnNumber(4, -1, 19.0 / 41),
      [](const Throw& dice) { return OnNumber(8, dice.IsPair() ? 9 : -1, -1)(dice); },
      UnitsOn(4, -1),
      UnitsOn(5, 0),
      [](const Throw& dice) { return dice.Die1 == 1 && dice.Die2 == 3 ? 15 : -1; },
      [](const Throw& dice) { return IsIn({7}, dice) ? 1 : WorthOfLine(dice.Total()); },
  };
  static_assert(std::size(bets) == kFieldPresets);
  for (int preset = 0; preset < kFieldPresets; ++preset) {
    SetFieldPreset(preset);
    int saysFor = 0;
    for (int combination = 1; combination <= kFieldCombinations; ++combination) {
      const PayoffRecord& record = Game.FieldPayoff[static_cast<unsigned>(combination)];
      EXPECT_NEAR(record.Win / record.Per, bets[preset](ThrowOf(combination)), 1e-12)
          << kFieldPresetNames[static_cast<unsigned>(preset)] << " at " << combination;
      if (!record.ShownAsTo) ++saysFor;
    }
    EXPECT_EQ(saysFor, preset == 9 ? 4 : preset == 10 ? 7 : 0) << preset;
  }
}

}  // namespace
