#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "core/game_state.h"
#include "core/text.h"
#include "rules/defaults.h"
#include "rules/presets.h"
#include "rules/validators.h"

namespace {

class ConfigLimits : public ::testing::Test {
 protected:
  void SetUp() override { LayDownDefaults(); }

  static void ExpectFault(const CheckResult& result, int tab, int index, const std::string& title,
                          const std::string& text) {
    EXPECT_FALSE(result.Ok);
    EXPECT_EQ(result.Tab, tab);
    EXPECT_EQ(result.Index, index);
    EXPECT_EQ(result.Title, title);
    EXPECT_EQ(result.Text, text);
  }

  static CheckResult CheckChecks(const std::array<Currency, 5>& checks) {
    ConfigEntries entries = EntriesInForce();
    entries.Checks = checks;
    entries.MinPlacard = checks[0];
    return CheckLimitsOK(entries);
  }
};

TEST_F(ConfigLimits, DefaultsPass) { EXPECT_TRUE(CheckLimitsOK(EntriesInForce()).Ok); }

TEST_F(ConfigLimits, ChecksAboveZeroAscendingAndDivisible) {
  const Currency half = Currency::FromRaw(5'000);
  EXPECT_TRUE(CheckChecks({1, 1, 1, 1, 1}).Ok);
  EXPECT_TRUE(CheckChecks({half, 1, 25, 100, 500}).Ok);
  ExpectFault(CheckChecks({1, 5, 7, 25, 0}), 0, 4, "Check Values",
              "Check values must be greater than zero.");
  ExpectFault(CheckChecks({0, 5, 25, 100, 500}), 0, 0, "Check Values",
              "Check values must be greater than zero.");
  ExpectFault(CheckChecks({1, 25, 5, 100, 500}), 0, 2, "Check Values",
              "Checks must be listed in ascending order with the \nsmallest valued check in the "
              "leftmost position.");
  ExpectFault(CheckChecks({2, 4, 7, 25, 100}), 0, 2, "Check Values",
              "All checks must be wholly divisible by the smallest check.");
}

TEST_F(ConfigLimits, BetLimitsFollowTheSmallestCheck) {
  ConfigEntries entries = EntriesInForce();
  entries.Checks = {5, 25, 100, 500, 1000};
  ExpectFault(CheckLimitsOK(entries), 6, 0, "Configuration Limits",
              "The minimum bet cannot be less than\nthe smallest check denomination of 5");
  entries.MinPlacard = 1'500;
  const CheckResult result = CheckLimitsOK(entries);
  ExpectFault(result, 6, 0, "Configuration Limits",
              "The maximum bet must be greater than\nor equal to the minimum bet.");
  EXPECT_EQ(result.Box, ConfigBox::MaxPlacard);
  entries.MaxPlacard = 1'500;
  EXPECT_TRUE(CheckLimitsOK(entries).Ok);
}

TEST_F(ConfigLimits, BetPayoffsArePositive) {
  Game.Payoff[25].Win = 0;
  ExpectFault(CheckLimitsOK(EntriesInForce()), 7, 24, "Payoff ratio error",
              "The payoff on Come 4 Odds must be a positive amount.");
  Game.Payoff[19].Win = -1;
  ExpectFault(CheckLimitsOK(EntriesInForce()), 7, 18, "Payoff ratio error",
              "The payoff on Pass/Come 4 must be a positive amount.");
  LayDownDefaults();
  Game.Payoff[Horn].Win = 0;  // has no row
  EXPECT_TRUE(CheckLimitsOK(EntriesInForce()).Ok);
}

TEST_F(ConfigLimits, FieldLosesNoMoreThanTheBetAndWinsSomewhere) {
  Game.FieldPayoff[7] = {-5, true, 5};
  EXPECT_TRUE(CheckLimitsOK(EntriesInForce()).Ok);
  Game.FieldPayoff[7] = {-6, true, 5};
  ExpectFault(CheckLimitsOK(EntriesInForce()), 7, 6, "Payoff ratio error",
              "The loss on any Field payoff cannot \nexceed the amount wagered.");
  for (PayoffRecord& record : Game.FieldPayoff) record = {0, true, 1};
  ExpectFault(CheckLimitsOK(EntriesInForce()), 7, 0, "Payoff error",
              "At least one of the Field payoffs must be postiive.");
}

TEST_F(ConfigLimits, FirstFaultHoldsAndTheRateComesBeforeThePayoffs) {
  ConfigEntries entries = EntriesInForce();
  Game.Payoff[1].Win = 0;
  entries.RateText = "0";
  EXPECT_EQ(CheckLimitsOK(entries).Title, "Payoff ratio error");
  entries.RateChanged = true;
  EXPECT_EQ(CheckLimitsOK(entries).Title, "Sim Roll Rate Out Of Limits");
  entries.MaxPlacard = 0;
  EXPECT_EQ(CheckLimitsOK(entries).Title, "Configuration Limits");
}

TEST_F(ConfigLimits, CellUnderEditIsCommittedFirst) {
  ConfigEntries entries = EntriesInForce();
  entries.Cell = PayoffCell{PayoffGrid::Bets, 0, PayoffColumn::Win};
  entries.CellText = "0";
  EXPECT_FALSE(CheckLimitsOK(entries).Ok);
  entries.CellText = "3";
  EXPECT_TRUE(CheckLimitsOK(entries).Ok);
  EXPECT_EQ(Game.Payoff[1].Win, Currency(3));
}

class RollRate : public ConfigLimits {};

TEST_F(RollRate, EachUnitConvertsBothWays) {
  struct {
    const char* Entry;
    int Unit;
    Currency PerHour;
    const char* Shown;
  } const cases[] = {{"90", 0, 90, "90"},
                     {"1.5", 1, 90, "1.5"},
                     {"0.025", 2, 90, "0.025"},
                     {"0.5", 3, 2, "0.5"},
                     {"0.5", 4, 120, "0.5"},
                     {"40", 5, 90, "40"},
                     {"7", 4, Currency::FromRaw(85'714), "7"}};
  for (const auto& rate : cases) {
    EXPECT_TRUE(SetRollsPerHour(rate.Entry, rate.Unit).Ok);
    EXPECT_EQ(Game.SimRollsPerHour, rate.PerHour) << rate.Entry << " in unit " << rate.Unit;
    EXPECT_EQ(RollRateText(rate.Unit), rate.Shown);
  }
}

TEST_F(RollRate, LimitsOfEachUnit) {
  const char* const names[] = {"Rolls / hr", "Rolls / min", "Rolls / sec",
                               "Hrs / roll", "Mins / roll", "Secs / roll"};
  const long limits[] = {36'000'000, 600'000, 10'000, 10'000, 600'000, 36'000'000};
  for (int unit = 0; unit < kRateUnits; ++unit) {
    const std::string limit = std::to_string(limits[unit]);
    EXPECT_TRUE(SetRollsPerHour(limit, unit).Ok);
    EXPECT_GT(Game.SimRollsPerHour, Currency());
    ExpectFault(SetRollsPerHour(limit + ".0001", unit), 0, 0, "Sim Roll Rate Out Of Limits",
                std::string("The maximum simulated ") + names[unit] + " rate is " +
                    CountText(limits[unit]) + ".");
    ExpectFault(SetRollsPerHour("0", unit), 0, 0, "Sim Roll Rate Out Of Limits",
                std::string("The simulated ") + names[unit] + " must be greater than zero.");
  }
}

TEST_F(RollRate, IsNeverZero) {
  EXPECT_TRUE(SetRollsPerHour("0.00001", 0).Ok);
  EXPECT_EQ(Game.SimRollsPerHour, Currency::FromRaw(1));
  EXPECT_EQ(RollRateText(2), "<.0001");
  EXPECT_EQ(RollRateText(3), "10000");
  EXPECT_FALSE(SetRollsPerHour("", 0).Ok);
}

/// A box with its caret behind the text.
NumericBox BoxOf(const std::string& text) { return {text, static_cast<int>(text.size()), 0, 0}; }

/// The text after typing, each key through the filter at the caret's end.
std::string Typed(const std::string& keys, int decimals, bool minus) {
  std::string text;
  for (const char key : keys) {
    if (EntryKeyPasses(BoxOf(text), key, decimals, minus)) text += key;
  }
  return text;
}

TEST(EntryFilter, PassesNumbersOnly) {
  EXPECT_EQ(Typed("1a2,3$ 4", 2, false), "1234");
  EXPECT_EQ(Typed("12.345", 2, false), "12.34");
  EXPECT_EQ(Typed("12.345", 0, false), "12345");
  EXPECT_EQ(Typed("1.2.3", 2, false), "1.23");
  EXPECT_EQ(Typed("-5", 2, false), "5");
  EXPECT_EQ(Typed("-5-", 2, true), "-5");
  EXPECT_EQ(Typed("5-", 2, true), "5");
}

TEST(EntryFilter, HoldsFourteenWholeDigits) {
  EXPECT_EQ(Typed("1234567890123456", 2, false), "12345678901234");
  EXPECT_EQ(Typed("-123456789012345.67", 2, true), "-12345678901234.67");
  EXPECT_FALSE(EntryKeyPasses({"12345678901234.5", 3, 0, 0}, '7', 2, false));
  EXPECT_TRUE(EntryKeyPasses({"12345678901234.5", 16, 0, 0}, '7', 2, false));
}

TEST(EntryFilter, CountsDecimalsBehindThePoint) {
  EXPECT_TRUE(EntryKeyPasses({"12.34", 1, 0, 0}, '9', 2, false));
  EXPECT_FALSE(EntryKeyPasses({"12.34", 4, 0, 0}, '9', 2, false));
  EXPECT_TRUE(EntryKeyPasses({"1234", 2, 0, 0}, '.', 2, false));
  EXPECT_FALSE(EntryKeyPasses({"1234", 1, 0, 0}, '.', 2, false));
}

TEST(EntryFilter, NothingGoesBeforeAMinus) {
  EXPECT_FALSE(EntryKeyPasses({"-5", 0, 0, 0}, '1', 2, true));
  EXPECT_FALSE(EntryKeyPasses({"-5", 0, 0, 0}, '-', 2, true));
  EXPECT_FALSE(EntryKeyPasses({"-5", 0, 0, 0}, '.', 2, true));
  EXPECT_TRUE(EntryKeyPasses({"-5", 1, 0, 0}, '1', 2, true));
  EXPECT_TRUE(EntryKeyPasses({"5", 0, 0, 0}, '-', 2, true));
}

TEST(EntryFilter, SelectionIsAsGoodAsGone) {
  EXPECT_TRUE(EntryKeyPasses({"-12.34", 0, 6, 6}, '-', 2, true));
  EXPECT_TRUE(EntryKeyPasses({"12.34", 2, 3, 5}, '.', 2, false));
  EXPECT_TRUE(EntryKeyPasses({"12.34", 3, 1, 0}, '5', 2, false));
}

TEST(EntryFilter, FullBoxTakesOnlyBackspace) {
  EXPECT_FALSE(EntryKeyPasses({"123", 3, 0, 3}, '4', 2, false));
  EXPECT_TRUE(EntryKeyPasses({"123", 3, 0, 3}, kBackspaceKey, 2, false));
  EXPECT_TRUE(EntryKeyPasses({"123", 3, 0, 0}, '4', 2, false));
}

TEST(ValueColors, FollowTheSign) {
  EXPECT_EQ(ValueColor(0), 0);
  EXPECT_EQ(ValueColor(Currency::FromRaw(1)), 9);
  EXPECT_EQ(ValueColor(-3), 12);
}

TEST(VigPercent, IsStoredAsAFraction) {
  EXPECT_EQ(FractionOfPercent(Currency::FromRaw(55'000)), Currency::FromRaw(550));
  EXPECT_EQ(PercentOfFraction(Currency::FromRaw(550)), Currency::FromRaw(55'000));
}

class PayoffCells : public ::testing::Test {
 protected:
  void SetUp() override {
    LayDownDefaults();
    SetFieldPreset(9);  // Horn: combination 1 wins 27 per 4, shown as "31 for 4"
  }

  static std::string Shown(PayoffColumn column) {
    return PayoffCellText({PayoffGrid::Field, 0, column});
  }
  static void Enter(PayoffColumn column, const std::string& text) {
    CommitPayoffCell({PayoffGrid::Field, 0, column}, text);
  }
  static bool Press(int key) {
    return PressPayoffWordKey({PayoffGrid::Field, 0, PayoffColumn::Word}, key);
  }
  static const PayoffRecord& Record() { return Game.FieldPayoff[1]; }
};

TEST_F(PayoffCells, ForShowsTheStakeInTheLeftNumber) {
  EXPECT_EQ(Shown(PayoffColumn::Win), "31");
  EXPECT_EQ(Shown(PayoffColumn::Word), "for");
  EXPECT_EQ(Shown(PayoffColumn::Per), "4");
  Enter(PayoffColumn::Win, "12.5");
  EXPECT_EQ(Record().Win, Currency::FromRaw(85'000));
}

TEST_F(PayoffCells, ChangeOfWordKeepsTheLeftNumber) {
  EXPECT_TRUE(Press('T'));
  EXPECT_EQ(Record(), (PayoffRecord{31, true, 4}));
  EXPECT_TRUE(Press('t'));
  EXPECT_EQ(Record(), (PayoffRecord{31, true, 4}));
  EXPECT_TRUE(Press(' '));
  EXPECT_EQ(Record(), (PayoffRecord{27, false, 4}));
  EXPECT_TRUE(Press('f'));
  EXPECT_EQ(Record(), (PayoffRecord{27, false, 4}));
  EXPECT_FALSE(Press('x'));
}

TEST_F(PayoffCells, ChangeOfPerKeepsTheLeftNumber) {
  Enter(PayoffColumn::Per, "5");
  EXPECT_EQ(Record(), (PayoffRecord{26, false, 5}));
  EXPECT_EQ(Shown(PayoffColumn::Win), "31");
  Press('t');
  Enter(PayoffColumn::Per, "2");
  EXPECT_EQ(Record(), (PayoffRecord{31, true, 2}));
}

TEST_F(PayoffCells, PerIsNeverZero) {
  for (const char* entry : {"0", "", "-3"}) {
    Enter(PayoffColumn::Per, entry);
    EXPECT_EQ(Record(), (PayoffRecord{27, false, 4})) << entry;
  }
}

TEST_F(PayoffCells, OnlyFieldWinsTakeAMinus) {
  EXPECT_TRUE(PayoffCellTakesMinus({PayoffGrid::Field, 3, PayoffColumn::Win}));
  EXPECT_FALSE(PayoffCellTakesMinus({PayoffGrid::Field, 3, PayoffColumn::Per}));
  EXPECT_FALSE(PayoffCellTakesMinus({PayoffGrid::Bets, 3, PayoffColumn::Win}));
  EXPECT_EQ(PayoffCellDecimals({PayoffGrid::Bets, 3, PayoffColumn::Win}), 2);
  EXPECT_EQ(PayoffCellDecimals({PayoffGrid::Bets, 3, PayoffColumn::Per}), 0);
}

TEST_F(PayoffCells, FieldTakesThePerThatItsRecordsShare) {
  DeriveFieldPer();  // Horn: 4 and 1
  EXPECT_EQ(Game.Payoff[Field].Per, Currency(1));
  SetFieldPreset(4);  // Place 6: 6 and 1
  for (unsigned combination = 10; combination <= 12; ++combination) {
    Game.FieldPayoff[combination] = {-6, true, 6};
  }
  DeriveFieldPer();  // pushes keep their 1
  EXPECT_EQ(Game.Payoff[Field].Per, Currency(6));
  for (PayoffRecord& record : Game.FieldPayoff) record.Win = 0;
  DeriveFieldPer();
  EXPECT_EQ(Game.Payoff[Field].Per, Currency(1));
}

TEST(CompBetMask, DefaultCountsAllButOdds) {
  LayDownDefaults();
  for (int bet = 1; bet <= LastBet; ++bet) {
    EXPECT_EQ(BetCountsForComps(bet), CompBetDefault(bet)) << bet;
  }
  EXPECT_FALSE(BetCountsForComps(0));
  EXPECT_FALSE(BetCountsForComps(84));
}

TEST(CompBetMask, StoredListLiesOneBitAwayFromCAndEOn) {
  LayDownDefaults();
  for (int chosen = 1; chosen <= LastBet; ++chosen) {
    CompBetList bets{};
    bets[static_cast<unsigned>(chosen - 1)] = true;
    StoreCompBets(bets);
    const int seen = chosen < CAndE ? chosen : chosen + 1;
    for (int bet = 1; bet <= LastBet; ++bet) {
      ASSERT_EQ(BetCountsForComps(bet), bet == seen) << "bet " << bet << ", chosen " << chosen;
    }
  }
}

TEST(Choices, StylesWrapBothWays) {
  EXPECT_EQ(StepStyle(7, 1, kChipStyles), 1);
  EXPECT_EQ(StepStyle(1, -1, kChipStyles), 7);
  EXPECT_EQ(StepStyle(3, 1, kDiceStyles), 4);
  LayDownDefaults();
  Game.DiceStyle = 6;
  CorrectDiceStyle();
  EXPECT_EQ(Game.DiceStyle, 1);
}

TEST(Choices, NoticesComeFromTheirBoxes) {
  LayDownDefaults();
  EXPECT_EQ(NoticeBoxes(), (std::array{true, true, true, true, false}));
  StoreNoticeBoxes({false, true, false, false, true});
  EXPECT_EQ(Game.Notify, 18);
}

}  // namespace
