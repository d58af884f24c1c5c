#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

#include "core/text.h"
#include "rules/defaults.h"

namespace {

Currency Raw(std::int64_t count) { return Currency::FromRaw(count); }

TEST(Texts, MoneyIsGroupedWithTheDecimalsItNeeds) {
  EXPECT_EQ(MoneyText(0), "0");
  EXPECT_EQ(MoneyText(999), "999");
  EXPECT_EQ(MoneyText(1'234), "1,234");
  EXPECT_EQ(MoneyText(10'000'000), "10,000,000");
  EXPECT_EQ(MoneyText(Raw(5'000)), "0.50");
  EXPECT_EQ(MoneyText(Raw(123'333)), "12.3333");
  EXPECT_EQ(MoneyText(Raw(123'330)), "12.333");
  EXPECT_EQ(MoneyText(Raw(12'345'600)), "1,234.56");
  EXPECT_EQ(MoneyText(Raw(1)), "0.0001");
}

TEST(Texts, NegativeMoneyKeepsItsSign) {
  EXPECT_EQ(MoneyText(-5), "-5");
  EXPECT_EQ(MoneyText(-1'000), "-1,000");
  EXPECT_EQ(MoneyText(Raw(-5'000)), "-0.50");
  EXPECT_EQ(MoneyText(Raw(std::numeric_limits<std::int64_t>::min())), "-922,337,203,685,477.5808");
}

TEST(Texts, PlainNumbersHaveNoGroupingAndNoSpareZeros) {
  EXPECT_EQ(PlainText(Raw(125'000)), "12.5");
  EXPECT_EQ(PlainText(-3), "-3");
  EXPECT_EQ(PlainText(1'234'567), "1234567");
  EXPECT_EQ(PlainText(Raw(-1'500)), "-0.15");
}

TEST(Texts, CountsAreGrouped) {
  EXPECT_EQ(CountText(0), "0");
  EXPECT_EQ(CountText(100'000'000), "100,000,000");
  EXPECT_EQ(CountText(-1'234), "-1,234");
}

TEST(Texts, TypedAmountIsReadBack) {
  EXPECT_EQ(ParseAmount("12.5"), Raw(125'000));
  EXPECT_EQ(ParseAmount(" 1,234.56"), Raw(12'345'600));
  EXPECT_EQ(ParseAmount("-3"), Currency(-3));
  EXPECT_EQ(ParseAmount(".25"), Raw(2'500));
  EXPECT_EQ(ParseAmount("7."), Currency(7));
  for (const std::int64_t count : {1LL, -99'999LL, 123'456'789'012'345LL}) {
    EXPECT_EQ(ParseAmount(PlainText(Raw(count))), Raw(count));
    EXPECT_EQ(ParseAmount(MoneyText(Raw(count))), Raw(count));
  }
}

TEST(Texts, DecimalsBeyondTheFourthRoundHalvesToEven) {
  EXPECT_EQ(ParseAmount("0.00005"), Raw(0));
  EXPECT_EQ(ParseAmount("0.00015"), Raw(2));
  EXPECT_EQ(ParseAmount("0.000050001"), Raw(1));
  EXPECT_EQ(ParseAmount("-0.00015"), Raw(-2));
  EXPECT_EQ(ParseAmount("0.00004999"), Raw(0));
}

TEST(Texts, TextWithoutANumberIsNothing) {
  for (const char* text : {"", " ", "-", ".", "abc", "$", "<.0001", "99999999999999999999"}) {
    EXPECT_EQ(ParseAmount(text), Currency()) << text;
  }
}

TEST(Texts, BetsAndStacksHaveTheirNames) {
  LayDownDefaults();
  EXPECT_EQ(BetName(1), "Lay 4");
  EXPECT_EQ(BetName(18), "Don't Come 10 Odds");
  EXPECT_EQ(BetName(62), "C and E");
  EXPECT_EQ(BetName(83), "Hop 5-5");
  EXPECT_EQ(BetName(93), "Rail");
  EXPECT_EQ(BetName(104), "Chip-Stack # 4");
  EXPECT_EQ(BetName(105), "Chip-Stack #5");
  EXPECT_EQ(BetName(200), "Chip-Stack #100");
  for (const int id : {-1, 0, 84, 92, 95, 100, 201}) EXPECT_EQ(BetName(id), "") << id;
}

}  // namespace
