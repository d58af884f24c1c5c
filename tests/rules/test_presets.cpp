#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <set>
#include <string>

#include "core/game_state.h"
#include "rules/defaults.h"
#include "rules/presets.h"

namespace {

constexpr double kTolerance = 1e-12;

/// The throw of a Field combination, by its label: two dice and the number of ways.
struct Throw {
  int Die1;
  int Die2;
  int Ways;
  int Total() const { return Die1 + Die2; }
  bool IsPair() const { return Die1 == Die2; }
};

Throw ThrowOf(int combination) {
  const std::string label(kFieldLabels[static_cast<unsigned>(combination - 1)]);
  const int die1 = label[6] - '0';
  const int die2 = label[8] - '0';
  return {die1, die2, die1 == die2 ? 1 : 2};
}

double NetOf(int combination) {
  const PayoffRecord& record = Game.FieldPayoff[static_cast<unsigned>(combination)];
  return record.Win / record.Per;
}

/// The chance that a point is made before a 7.
double ChanceOfPoint(int number) {
  const int ways = number <= 7 ? number - 1 : 13 - number;
  return ways / (ways + 6.0);
}

class FieldPresets : public ::testing::Test {
 protected:
  void SetUp() override { LayDownDefaults(); }

  static void Expect(int preset, const std::function<double(const Throw&)>& net) {
    SetFieldPreset(preset);
    for (int combination = 1; combination <= kFieldCombinations; ++combination) {
      EXPECT_NEAR(NetOf(combination), net(ThrowOf(combination)), kTolerance)
          << kFieldPresetNames[static_cast<unsigned>(preset)] << " at "
          << kFieldLabels[static_cast<unsigned>(combination - 1)];
    }
  }
};

TEST_F(FieldPresets, LabelsNameAll36Throws) {
  int ways = 0;
  std::set<std::string_view> labels;
  for (int combination = 1; combination <= kFieldCombinations; ++combination) {
    const Throw dice = ThrowOf(combination);
    const auto label = kFieldLabels[static_cast<unsigned>(combination - 1)];
    EXPECT_EQ(std::stoi(std::string(label)), dice.Total());
    EXPECT_EQ(label.size(), dice.IsPair() ? 10U : 16U);
    ways += dice.Ways;
    labels.insert(label);
  }
  EXPECT_EQ(ways, 36);
  EXPECT_EQ(labels.size(), 21U);
}

TEST_F(FieldPresets, FieldItself) {
  Expect(0, [](const Throw& dice) {
    if (dice.Total() == 2 || dice.Total() == 12) return 2.0;
    return dice.Total() >= 5 && dice.Total() <= 8 ? -1.0 : 1.0;
  });
}

TEST_F(FieldPresets, MidwayPaysDoubleOnItsHardWays) {
  Expect(1, [](const Throw& dice) {
    if (dice.Total() < 6 || dice.Total() > 8) return -1.0;
    return dice.IsPair() ? 2.0 : 1.0;
  });
}

/// A line bet's worth after a throw on the come-out: a number is worth what its point is.
double WorthOfLine(int total) { return 2 * ChanceOfPoint(total) - 1; }

TEST_F(FieldPresets, PassLineIsWorthItsPoint) {
  Expect(2, [](const Throw& dice) {
    switch (dice.Total()) {
      case 7:
      case 11: return 1.0;
      case 2:
      case 3:
      case 12: return -1.0;
      default: return WorthOfLine(dice.Total());
    }
  });
}

TEST_F(FieldPresets, DontPassIsWorthItsPoint) {
  Expect(3, [](const Throw& dice) {
    switch (dice.Total()) {
      case 7:
      case 11: return -1.0;
      case 2:
      case 3: return 1.0;
      case 12: return 0.0;
      default: return -WorthOfLine(dice.Total());
    }
  });
}

TEST_F(FieldPresets, CraplessPassLineMakesEveryNumberButSevenAPoint) {
  Expect(12, [](const Throw& dice) { return dice.Total() == 7 ? 1.0 : WorthOfLine(dice.Total()); });
}

TEST_F(FieldPresets, BetsOnOneNumber) {
  const auto onNumber = [](int number, double win, double seven) {
    return [=](const Throw& dice) {
      if (dice.Total() == number) return win;
      return dice.Total() == 7 ? seven : 0.0;
    };
  };
  Expect(4, onNumber(6, 7.0 / 6, -1));
  Expect(5, onNumber(8, -1, 4.0 / 5));
  Expect(6, onNumber(10, 39.0 / 21, -1));
  Expect(7, onNumber(4, -1, 19.0 / 41));
}

TEST_F(FieldPresets, HardEight) {
  Expect(8, [](const Throw& dice) {
    if (dice.Total() == 8) return dice.IsPair() ? 9.0 : -1.0;
    return dice.Total() == 7 ? -1.0 : 0.0;
  });
}

TEST_F(FieldPresets, HornAndWorldAreTheirSingleBets) {
  // Each unit of the bet stands on one number, at 30 to 1 or 15 to 1; World has one on 7 at 4 to 1.
  Expect(9, [](const Throw& dice) {
    switch (dice.Total()) {
      case 2:
      case 12: return (30.0 - 3) / 4;
      case 3:
      case 11: return (15.0 - 3) / 4;
      default: return -1.0;
    }
  });
  Expect(10, [](const Throw& dice) {
    switch (dice.Total()) {
      case 2:
      case 12: return (30.0 - 4) / 5;
      case 3:
      case 11: return (15.0 - 4) / 5;
      case 7: return (4.0 - 4) / 5;
      default: return -1.0;
    }
  });
}

TEST_F(FieldPresets, HopOneThree) {
  Expect(11, [](const Throw& dice) { return dice.Die1 == 1 && dice.Die2 == 3 ? 15.0 : -1.0; });
}

TEST_F(FieldPresets, OnlyHornAndWorldSayFor) {
  for (int preset = 0; preset < kFieldPresets; ++preset) {
    SetFieldPreset(preset);
    int saysFor = 0;
    for (int combination = 1; combination <= kFieldCombinations; ++combination) {
      const PayoffRecord& record = Game.FieldPayoff[static_cast<unsigned>(combination)];
      if (!record.ShownAsTo) ++saysFor;
    }
    EXPECT_EQ(saysFor, preset == 9 ? 4 : preset == 10 ? 7 : 0) << preset;
  }
}

TEST_F(FieldPresets, UnknownPresetChangesNothing) {
  SetFieldPreset(8);
  const auto before = Game.FieldPayoff;
  SetFieldPreset(-1);
  SetFieldPreset(kFieldPresets);
  EXPECT_EQ(Game.FieldPayoff, before);
}

TEST(ColorPresets, SetColoursAndFelt) {
  LayDownDefaults();
  const auto traditional = Game.TableColor;
  SetColorPreset(1);
  EXPECT_EQ(Game.TableColor[ColorPassText], 0xFF0086U);
  EXPECT_EQ(Game.TableColor[ColorPips], 0x000000U);
  EXPECT_EQ(Game.TableFeltPattern, 6);
  SetColorPreset(6);
  SetColorPreset(-1);
  EXPECT_EQ(Game.TableFeltPattern, 6);
  SetColorPreset(0);
  EXPECT_EQ(Game.TableColor, traditional);
  EXPECT_EQ(Game.TableFeltPattern, 8);
}

TEST(PayoffGrid, RowsStandInBetOrderWithTheirLabels) {
  const auto& rows = PayoffRows();
  std::set<int> ids;
  int last = 0;
  for (const PayoffRow& row : rows) {
    EXPECT_GT(row.BetId, last);
    last = row.BetId;
    ids.insert(row.BetId);
  }
  EXPECT_EQ(ids.size(), 75U);
  for (const int id : {43, 44, 46, 47, 49, 62, 63, 64, 84}) EXPECT_EQ(ids.count(id), 0U) << id;
  const auto label = [&](int id) {
    for (const PayoffRow& row : rows) {
      if (row.BetId == id) return row.Label;
    }
    return std::string();
  };
  EXPECT_EQ(label(1), "Lay 4");
  EXPECT_EQ(label(7), "DP/DC 4");
  EXPECT_EQ(label(18), "DP/DC 10 Odds");
  EXPECT_EQ(label(21), "Pass/Come 6");
  EXPECT_EQ(label(28), "Pass/Come 8 Odds");
  EXPECT_EQ(label(45), "Passline/Come (c.o.)");
  EXPECT_EQ(label(48), "Don't Pass/Come (c.o.)");
  EXPECT_EQ(label(83), "Hop 5-5");
}

}  // namespace
