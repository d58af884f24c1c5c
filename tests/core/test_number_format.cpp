#include "core/number_format.h"

#include <gtest/gtest.h>

#include <limits>
#include <tuple>

namespace {

TEST(NumberFormat, FollowsThePatternsOfTheScreens) {
  const std::tuple<double, const char*, const char*> cases[] = {
      {1234567, "#,#;-#,#;0", "1,234,567"},
      {-1234, "#,#;-#,#;0", "-1,234"},
      {0, "#,#;-#,#;0", "0"},
      {0.5, "#,#.0###;-#,#;0", ".5"},
      {1234.56785, "#,#.0###;-#,#;0", "1,234.5679"},
      {1e-7, "#,#.0###;-#,#;0", "0"},
      {999.99999, "#,#.0###;-#,#;0", "1,000.0"},
      {12.0004, "#,#.###;-#,#.###;0", "12"},
      {-0.0001, "#,#.###;-#,#.###;0", "0"},
      {-0.001, "0.00", "0.00"},
      {-1.5, "0.00", "-1.50"},
      {1.005, "0.00", "1.01"},
      {0.125, "#,#.00;-#,#;0", ".13"},
      {-0.0141414, "#,#.00 %;-#,#.00 %;0 %", "-1.41 %"},
      {12.5, "#,#.00 %;-#,#.00 %;0 %", "1,250.00 %"},
      {-0.00004, "0.0# %;-0.0# %;0 %", "0 %"},
      {1234.5, "$#,0.00;0;0", "$1,234.50"},
      {-3, "$#,0.00;0;0", "0"},
      {1e300, "0", nullptr},
      {std::numeric_limits<double>::quiet_NaN(), "#,#.00;-#,#;0", "0"},
      {-std::numeric_limits<double>::infinity(), "0.00;-0.00;0.00", "0.00"}};
  for (const auto& [value, pattern, text] : cases) {
    if (text == nullptr)
      EXPECT_EQ(FormatNumber(value, pattern).size(), 301U);
    else
      EXPECT_EQ(FormatNumber(value, pattern), text) << value << " " << pattern;
  }
}

TEST(NumberFormat, AmountsAreExactBeyondMoney) {
  const WideCount most = WideCount{std::numeric_limits<std::int64_t>::max()} * 83;
  EXPECT_EQ(FormatAmount(most, "#,#.0###;-#,#;0"), "76,553,987,905,894,639.1981");
  EXPECT_EQ(FormatAmount(-most, "#,#;-#,#;0"), "-76,553,987,905,894,639");
  EXPECT_EQ(FormatAmount(Currency::FromRaw(-5), "#,#.0###;-#,#.0###;0"), "-.0005");
}

}  // namespace
