#include "rules/presets.h"
#include "support/table_fixture.h"

namespace {

/// The throw of a Field combination, by its label.
struct Throw {
  int Die1, Die2;
  int Total() const { return Die1 + Die2; }
  bool IsPair() const { return Die1 == Die2; }
};

Throw ThrowOf(int combination) {
  const auto label = kFieldLabels[combination - 1];
  return {label[6] - '0', label[8] - '0'};
}

/// A line bet's worth after a throw on the come-out: a number is worth what its point is.
double WorthOfLine(int total) {
  const int ways = total <= 7 ? total - 1 : 13 - total;
  return 2 * (ways / (ways + 6.0)) - 1;
}

bool IsIn(std::initializer_list<int> totals, const Throw& t) {
  return std::ranges::find(totals, t.Total()) != totals.end();
}

using Net = std::function<double(const Throw&)>;

/// A bet that one number and 7 decide.
Net OnNumber(int number, double win, double seven) {
  return [=](const Throw& t) { return IsIn({number}, t) ? win : IsIn({7}, t) ? seven : 0; };
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
  const Net passLine = [](const Throw& t) {
    return IsIn({7, 11}, t) ? 1 : IsIn({2, 3, 12}, t) ? -1 : WorthOfLine(t.Total());
  };
  const Net bets[] = {[](const Throw& t) {
                        return IsIn({2, 12}, t) ? 2 : IsIn({5, 6, 7, 8}, t) ? -1 : 1;
                      },
                      [](const Throw& t) {
                        return !IsIn({6, 7, 8}, t) ? -1 : t.IsPair() ? 2 : 1;
                      },
                      passLine,
                      [=](const Throw& t) { return IsIn({12}, t) ? 0 : -passLine(t); },
                      OnNumber(6, 7.0 / 6, -1),
                      OnNumber(8, -1, 4.0 / 5),
                      OnNumber(10, 39.0 / 21, -1),
                      OnNumber(4, -1, 19.0 / 41),
                      [](const Throw& t) { return OnNumber(8, t.IsPair() ? 9 : -1, -1)(t); },
                      UnitsOn(4, -1),
                      UnitsOn(5, 0),
                      [](const Throw& t) { return t.Die1 == 1 && t.Die2 == 3 ? 15 : -1; },
                      [](const Throw& t) { return IsIn({7}, t) ? 1 : WorthOfLine(t.Total()); }};
  static_assert(std::size(bets) == kFieldPresets);
  for (int preset = 0; preset < kFieldPresets; ++preset) {
    SetFieldPreset(preset);
    int saysFor = 0;
    for (int combination = 1; combination <= kFieldCombinations; ++combination) {
      const PayoffRecord& record = Game.FieldPayoff[combination];
      EXPECT_NEAR(record.Win / record.Per, bets[preset](ThrowOf(combination)), 1e-12)
          << kFieldPresetNames[preset] << " at " << combination;
      if (!record.ShownAsTo) ++saysFor;
    }
    EXPECT_EQ(saysFor, preset == 9 ? 4 : preset == 10 ? 7 : 0) << preset;
  }
}

using Defaults = TableTest;

TEST_F(Defaults, ReplaceWhateverStoodBeforeButSeedsAndSoundLists) {
  Game.Bets[Field] = Game.TotalOnTable = 25;
  Game.RollCount[7] = Game.HandleLosingBets = Game.ChipCount = Game.Point = 4;
  Game.RngChoice = Rng5Ran1;
  SeedDice(46169);
  Game.DiceSounds = {"", "a.dce"};
  LayDownDefaults();
  EXPECT_EQ(Game.Bets[Field] + Game.TotalOnTable, Currency());
  EXPECT_EQ(Game.RollCount[7] + Game.ChipCount + Game.Point, 0);
  EXPECT_EQ(std::pair(Game.HandleLosingBets, Game.LastSeed), std::pair(1, 46169));
  EXPECT_EQ(Game.Ran1State.Started, 1);
  EXPECT_EQ(Game.DiceSounds.size(), 2U);
  Game.DiceSounds = {""};
}

}  // namespace
