#include "rules/check_result.h"
#include "rules/comp_bets.h"
#include "rules/config_checks.h"
#include "rules/numeric_entry.h"
#include "rules/payoff_cells.h"
#include "rules/presets.h"
#include "rules/roll_rate.h"
#include "support/table_fixture.h"

namespace {

class ConfigLimits : public TableTest {
 protected:
  /// Fails when the entries break another rule than told; no title for none.
  static void Expect(const CheckResult& result, int tab, int index, const std::string& title,
                     const std::string& text) {
    EXPECT_EQ(result.Ok, title.empty());
    EXPECT_EQ(std::tie(result.Tab, result.Index), std::tie(tab, index)) << title;
    EXPECT_EQ(std::tuple(result.Title, result.Text), std::tuple(title, text));
  }
  static void ExpectOk(const ConfigEntries& entries) {
    const CheckResult result = CheckLimitsOK(entries);
    EXPECT_TRUE(result.Ok) << result.Text;
  }
};

TEST_F(ConfigLimits, ChecksAboveZeroAscendingAndDivisible) {
  const Currency half = Currency::FromRaw(5'000);
  const char* const zero = "Check values must be greater than zero.";
  const char* const order =
      "Checks must be listed in ascending order with the \nsmallest valued check in the leftmost "
      "position.";
  const char* const multiple = "All checks must be wholly divisible by the smallest check.";
  const std::tuple<std::array<Currency, 5>, int, const char*> cases[] = {
      {{1, 1, 1, 1, 1}, 0, ""},         {{half, 1, 25, 100, 500}, 0, ""},
      {{1, 5, 7, 25, 0}, 4, zero},      {{0, 5, 25, 100, 500}, 0, zero},
      {{1, 25, 5, 100, 500}, 2, order}, {{2, 4, 7, 25, 100}, 2, multiple}};
  for (const auto& [checks, index, text] : cases) {
    ConfigEntries entries = EntriesInForce();
    entries.Checks = checks;
    entries.MinPlacard = checks[0];
    Expect(CheckLimitsOK(entries), 0, index, *text == 0 ? "" : "Check Values", text);
  }
}

TEST_F(ConfigLimits, BetLimitsFollowTheSmallestCheck) {
  ConfigEntries entries = EntriesInForce();
  entries.Checks = {5, 25, 100, 500, 1000};
  Expect(CheckLimitsOK(entries), 6, 0, "Configuration Limits",
         "The minimum bet cannot be less than\nthe smallest check denomination of 5");
  entries.MinPlacard = 1'500;
  Expect(CheckLimitsOK(entries), 6, 0, "Configuration Limits",
         "The maximum bet must be greater than\nor equal to the minimum bet.");
  EXPECT_EQ(CheckLimitsOK(entries).Box, ConfigBox::MaxPlacard);
  entries.MaxPlacard = 1'500;
  ExpectOk(entries);
}

TEST_F(ConfigLimits, BetPayoffsArePositive) {
  const std::tuple<int, int, const char*> cases[] = {{25, 0, "Come 4 Odds"},
                                                     {19, -1, "Pass/Come 4"}};
  for (const auto& [bet, win, name] : cases) {
    Game.Payoff[bet].Win = win;
    Expect(CheckLimitsOK(EntriesInForce()), 7, bet - 1, "Payoff ratio error",
           std::string("The payoff on ") + name + " must be a positive amount.");
  }
  LayDownDefaults();
  Game.Payoff[Horn].Win = 0;  // has no row
  ExpectOk(EntriesInForce());
}

TEST_F(ConfigLimits, FieldLosesNoMoreThanTheBetAndWinsSomewhere) {
  Game.FieldPayoff[7] = {-5, true, 5};
  ExpectOk(EntriesInForce());
  Game.FieldPayoff[7] = {-6, true, 5};
  Expect(CheckLimitsOK(EntriesInForce()), 7, 6, "Payoff ratio error",
         "The loss on any Field payoff cannot \nexceed the amount wagered.");
  for (PayoffRecord& record : Game.FieldPayoff) record = {0, true, 1};
  Expect(CheckLimitsOK(EntriesInForce()), 7, 0, "Payoff error",
         "At least one of the Field payoffs must be postiive.");
}

TEST_F(ConfigLimits, FirstFaultHoldsAndTheCellUnderEditIsCommittedFirst) {
  ConfigEntries entries = EntriesInForce();
  ExpectOk(entries);
  entries.Cell = PayoffCell{PayoffGrid::Bets, 0, PayoffColumn::Win};
  entries.CellText = "3";
  ExpectOk(entries);
  EXPECT_EQ(Game.Payoff[1].Win, Currency(3));
  entries.CellText = entries.RateText = "0";
  EXPECT_EQ(CheckLimitsOK(entries).Title, "Payoff ratio error");
  entries.RateChanged = true;
  EXPECT_EQ(CheckLimitsOK(entries).Title, "Sim Roll Rate Out Of Limits");
  entries.MaxPlacard = 0;
  EXPECT_EQ(CheckLimitsOK(entries).Title, "Configuration Limits");
}

class RollRate : public ConfigLimits {};

TEST_F(RollRate, EachUnitConvertsBothWaysAndTheRateIsNeverZero) {
  // clang-format off
  const std::tuple<const char*, int, Currency> entries[] = {
      {"90", 0, 90}, {"1.5", 1, 90}, {"0.025", 2, 90}, {"0.5", 3, 2}, {"0.5", 4, 120},
      {"40", 5, 90}, {"7", 4, Currency::FromRaw(85'714)}};
  // clang-format on
  for (const auto& [entry, unit, perHour] : entries) {
    EXPECT_TRUE(SetRollsPerHour(entry, unit).Ok);
    EXPECT_EQ(Game.SimRollsPerHour, perHour) << entry << " in unit " << unit;
    EXPECT_EQ(RollRateText(unit), entry);
  }
  EXPECT_TRUE(SetRollsPerHour("0.00001", 0).Ok);
  EXPECT_EQ(Game.SimRollsPerHour, Currency::FromRaw(1));
  EXPECT_EQ(std::tuple(RollRateText(2), RollRateText(3)), std::tuple("<.0001", "10000"));
  EXPECT_FALSE(SetRollsPerHour("", 0).Ok);
}

TEST_F(RollRate, LimitsOfEachUnit) {
  const std::pair<const char*, long> units[] = {
      {"Rolls / hr", 36'000'000}, {"Rolls / min", 600'000}, {"Rolls / sec", 10'000},
      {"Hrs / roll", 10'000},     {"Mins / roll", 600'000}, {"Secs / roll", 36'000'000}};
  for (int unit = 0; unit < kRateUnits; ++unit) {
    const auto& [name, most] = units[unit];
    const std::string limit = std::to_string(most);
    const std::string simulated = std::string(" simulated ") + name;
    EXPECT_TRUE(SetRollsPerHour(limit, unit).Ok);
    EXPECT_GT(Game.SimRollsPerHour, Currency());
    Expect(SetRollsPerHour(limit + ".0001", unit), 0, 0, "Sim Roll Rate Out Of Limits",
           "The maximum" + simulated + " rate is " + CountText(most) + ".");
    Expect(SetRollsPerHour("0", unit), 0, 0, "Sim Roll Rate Out Of Limits",
           "The" + simulated + " must be greater than zero.");
  }
}

TEST(EntryFilter, LooksAtCaretSelectionAndLimit) {
  // text, caret, selection, limit
  const std::tuple<NumericBox, int, bool> cases[] = {
      // Fourteen whole digits, two decimals, nothing before a minus, a selection as good as gone,
      // and a full box.
      // clang-format off
      {{"12345678901234.5", 3, 0, 0}, '7', false}, {{"12345678901234.5", 16, 0, 0}, '7', true},
      {{"12.34", 1, 0, 0}, '9', true}, {{"12.34", 4, 0, 0}, '9', false},
      {{"1234", 2, 0, 0}, '.', true}, {{"1234", 1, 0, 0}, '.', false},
      {{"-5", 0, 0, 0}, '1', false}, {{"-5", 0, 0, 0}, '-', false}, {{"-5", 0, 0, 0}, '.', false},
      {{"-5", 1, 0, 0}, '1', true}, {{"5", 0, 0, 0}, '-', true}, {{"-12.34", 0, 6, 6}, '-', true},
      {{"12.34", 2, 3, 5}, '.', true}, {{"12.34", 3, 1, 0}, '5', true},
      {{"123", 3, 0, 3}, '4', false}, {{"123", 3, 0, 3}, kBackspaceKey, true},
      {{"123", 3, 0, 0}, '4', true}};
  // clang-format on
  for (const auto& [box, key, passes] : cases)
    EXPECT_EQ(EntryKeyPasses(box, key, 2, true), passes) << box.Text << ' ' << key;
}

class PayoffCells : public TableTest {
 protected:
  PayoffCells() {
    SetFieldPreset(9);  // Horn: combination 1 wins 27 per 4, shown as "31 for 4"
  }

  static PayoffCell At(PayoffColumn column) { return {PayoffGrid::Field, 0, column}; }
  static std::string Shown(PayoffColumn column) { return PayoffCellText(At(column)); }
  static void Enter(PayoffColumn at, const std::string& text) { CommitPayoffCell(At(at), text); }
  static bool Press(int key) { return PressPayoffWordKey(At(PayoffColumn::Word), key); }
  static const PayoffRecord& Record() { return Game.FieldPayoff[1]; }
};

TEST_F(PayoffCells, ForShowsTheStakeInTheLeftNumberWhichStaysWithOtherChanges) {
  EXPECT_EQ(Shown(PayoffColumn::Win) + Shown(PayoffColumn::Word) + Shown(PayoffColumn::Per),
            "31for4");
  for (const auto& [key, word, win] :
       {std::tuple{'T', true, 31}, {'t', true, 31}, {' ', false, 27}, {'f', false, 27}}) {
    EXPECT_TRUE(Press(key));
    EXPECT_EQ(Record(), (PayoffRecord{win, word, 4})) << key;
  }
  EXPECT_FALSE(Press('x'));
  for (const char* never : {"0", "", "-3"}) {
    Enter(PayoffColumn::Per, never);
    EXPECT_EQ(Record(), (PayoffRecord{27, false, 4})) << never;
  }
  Enter(PayoffColumn::Per, "5");
  EXPECT_EQ(Record(), (PayoffRecord{26, false, 5}));
  Press('t');
  Enter(PayoffColumn::Per, "2");
  EXPECT_EQ(Record(), (PayoffRecord{31, true, 2}));
  Press('f');
  Enter(PayoffColumn::Win, "12.5");
  EXPECT_EQ(Record().Win, Currency::FromRaw(105'000));
}

TEST_F(PayoffCells, FieldTakesThePerThatItsRecordsShare) {
  DeriveFieldPer();  // Horn: 4 and 1
  EXPECT_EQ(Game.Payoff[Field].Per, Currency(1));
  SetFieldPreset(4);  // Place 6: 6 and 1
  for (unsigned combination = 10; combination <= 12; ++combination)
    Game.FieldPayoff[combination] = {-6, true, 6};
  DeriveFieldPer();  // pushes keep their 1
  EXPECT_EQ(Game.Payoff[Field].Per, Currency(6));
  for (PayoffRecord& record : Game.FieldPayoff) record.Win = 0;
  DeriveFieldPer();
  EXPECT_EQ(Game.Payoff[Field].Per, Currency(1));
}

TEST(CompBetMask, StoredListLiesOneBitAwayFromCAndEOn) {
  LayDownDefaults();
  for (int chosen = 1; chosen <= LastBet; ++chosen) {
    CompBetList bets{};
    bets[chosen - 1] = true;
    StoreCompBets(bets);
    const int seen = chosen < CAndE ? chosen : chosen + 1;
    for (int bet = 1; bet <= LastBet; ++bet)
      ASSERT_EQ(BetCountsForComps(bet), bet == seen) << "bet " << bet << ", chosen " << chosen;
  }
}

}  // namespace
