#include "core/text.h"

#include <gtest/gtest.h>

#include <limits>
#include <tuple>

#include "core/number_format.h"

namespace {

Currency Raw(std::int64_t count) { return Currency::FromRaw(count); }

TEST(Texts, MoneyIsGroupedWithTheDecimalsItNeeds) {
  // clang-format off
  const std::pair<Currency, const char*> cases[] = {
      {0, "0"}, {1'234, "1,234"}, {10'000'000, "10,000,000"}, {Raw(123'333), "12.3333"},
      {Raw(123'330), "12.333"}, {Raw(12'345'600), "1,234.56"}, {Raw(1), "0.0001"},
      {-1'000, "-1,000"}, {Raw(-5'000), "-0.50"}, {Raw(INT64_MIN), "-922,337,203,685,477.5808"}};
  // clang-format on
  for (const auto& [amount, text] : cases) EXPECT_EQ(MoneyText(amount), text);
  EXPECT_EQ(PlainText(Raw(125'000)) + " " + PlainText(1'234'567), "12.5 1234567");
  EXPECT_EQ(PlainText(Raw(-1'500)), "-0.15");
  EXPECT_EQ(CountText(100'000'000), "100,000,000");
  EXPECT_EQ(CountText(-1'234), "-1,234");
}

TEST(Texts, TypedAmountIsReadBack) {
  const std::pair<const char*, std::int64_t> cases[] = {
      // clang-format off
      {"12.5", 125'000}, {" 1,234.56", 12'345'600}, {"-3", -30'000}, {".25", 2'500}, {"7.", 70'000},
      {"0.00005", 0}, {"0.00015", 2}, {"0.000050001", 1}, {"-0.00015", -2}, {"0.00004999", 0},
      {"", 0}, {" ", 0}, {"-", 0}, {".", 0}, {"abc", 0}, {"$", 0}, {"<.0001", 0},
      {"99999999999999999999", 0}};
  // clang-format on
  for (const auto& [text, count] : cases) EXPECT_EQ(ParseAmount(text), Raw(count)) << text;
  for (const std::int64_t count : {1LL, -99'999LL, 123'456'789'012'345LL}) {
    EXPECT_EQ(ParseAmount(PlainText(Raw(count))), Raw(count));
    EXPECT_EQ(ParseAmount(MoneyText(Raw(count))), Raw(count));
  }
}

// --- Numbers by a pattern ---

TEST(NumberFormat, FollowsThePatternsOfTheScreensAndIsExactBeyondMoney) {
  const std::tuple<double, const char*, const char*> cases[] = {
      // clang-format off
      {1234567, "#,#;-#,#;0", "1,234,567"}, {-1234, "#,#;-#,#;0", "-1,234"}, {0, "#,#;-#,#;0", "0"},
      {0.5, "#,#.0###;-#,#;0", ".5"}, {1234.56785, "#,#.0###;-#,#;0", "1,234.5679"},
      {1e-7, "#,#.0###;-#,#;0", "0"}, {999.99999, "#,#.0###;-#,#;0", "1,000.0"},
      {12.0004, "#,#.###;-#,#.###;0", "12"}, {-0.0001, "#,#.###;-#,#.###;0", "0"},
      {-0.001, "0.00", "0.00"}, {-1.5, "0.00", "-1.50"}, {1.005, "0.00", "1.01"},
      {0.125, "#,#.00;-#,#;0", ".13"}, {-0.0141414, "#,#.00 %;-#,#.00 %;0 %", "-1.41 %"},
      {12.5, "#,#.00 %;-#,#.00 %;0 %", "1,250.00 %"}, {-0.00004, "0.0# %;-0.0# %;0 %", "0 %"},
      {1234.5, "$#,0.00;0;0", "$1,234.50"}, {-3, "$#,0.00;0;0", "0"},
      {std::numeric_limits<double>::quiet_NaN(), "#,#.00;-#,#;0", "0"},
      {-std::numeric_limits<double>::infinity(), "0.00;-0.00;0.00", "0.00"}};
  // clang-format on
  for (const auto& [value, pattern, text] : cases)
    EXPECT_EQ(FormatNumber(value, pattern), text) << value << " " << pattern;
  EXPECT_EQ(FormatNumber(1e300, "0").size(), 301U);
  const WideCount most = WideCount{std::numeric_limits<std::int64_t>::max()} * 83;
  EXPECT_EQ(FormatAmount(most, "#,#.0###;-#,#;0"), "76,553,987,905,894,639.1981");
  EXPECT_EQ(FormatAmount(-most, "#,#;-#,#;0"), "-76,553,987,905,894,639");
  EXPECT_EQ(FormatAmount(Currency::FromRaw(-5), "#,#.0###;-#,#.0###;0"), "-.0005");
}

}  // namespace
