#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <utility>

#include "core/text.h"

namespace {

Currency Raw(std::int64_t count) { return Currency::FromRaw(count); }

TEST(Texts, MoneyIsGroupedWithTheDecimalsItNeeds) {
  const std::pair<Currency, const char*> cases[] = {
      {0, "0"},
      {1'234, "1,234"},
      {10'000'000, "10,000,000"},
      {Raw(123'333), "12.3333"},
      {Raw(123'330), "12.333"},
      {Raw(12'345'600), "1,234.56"},
      {Raw(1), "0.0001"},
      {-1'000, "-1,000"},
      {Raw(-5'000), "-0.50"},
      {Raw(std::numeric_limits<std::int64_t>::min()), "-922,337,203,685,477.5808"}};
  for (const auto& [amount, text] : cases) EXPECT_EQ(MoneyText(amount), text);
  EXPECT_EQ(PlainText(Raw(125'000)), "12.5");
  EXPECT_EQ(PlainText(1'234'567), "1234567");
  EXPECT_EQ(PlainText(Raw(-1'500)), "-0.15");
  EXPECT_EQ(CountText(100'000'000), "100,000,000");
  EXPECT_EQ(CountText(-1'234), "-1,234");
}

TEST(Texts, TypedAmountIsReadBack) {
  const std::pair<const char*, std::int64_t> cases[] = {
      {"12.5", 125'000}, {" 1,234.56", 12'345'600},
      {"-3", -30'000},   {".25", 2'500},
      {"7.", 70'000},    {"0.00005", 0},
      {"0.00015", 2},    {"0.000050001", 1},
      {"-0.00015", -2},  {"0.00004999", 0},
      {"", 0},           {" ", 0},
      {"-", 0},          {".", 0},
      {"abc", 0},        {"$", 0},
      {"<.0001", 0},     {"99999999999999999999", 0}};
  for (const auto& [text, count] : cases) EXPECT_EQ(ParseAmount(text), Raw(count)) << text;
  for (const std::int64_t count : {1LL, -99'999LL, 123'456'789'012'345LL}) {
    EXPECT_EQ(ParseAmount(PlainText(Raw(count))), Raw(count));
    EXPECT_EQ(ParseAmount(MoneyText(Raw(count))), Raw(count));
  }
}

}  // namespace
