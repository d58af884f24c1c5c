#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <stdexcept>

#include "core/currency.h"
#include "core/error_report.h"
#include "core/game_state.h"

namespace {

constexpr Currency Raw(std::int64_t count) { return Currency::FromRaw(count); }
constexpr Currency kMost = Raw(INT64_MAX), kLeast = Raw(INT64_MIN);

TEST(CurrencyProduct, RoundsToFourDecimalsHalvesToEvenAndLosesNoBits) {
  // a ten-thousandth times a half is half a ten-thousandth
  const std::int64_t cases[][3] = {{1, 5'000, 0}, {3, 5'000, 2}, {5, 5'000, 2},
                                   {7, 5'000, 4}, {1, 5'001, 1}, {1, 4'999, 0}};
  for (const auto& [a, b, product] : cases) {
    EXPECT_EQ(Raw(a) * Raw(b), Raw(product)) << a;
    EXPECT_EQ(Raw(-a) * Raw(b), Raw(-product)) << a;
    EXPECT_EQ(Raw(a) * Raw(-b), Raw(-product)) << a;
    EXPECT_EQ(Raw(-a) * Raw(-b), Raw(product)) << a;
  }
  // 123,456,789.0123 x 98.7654 is 12,193,259,149.515414...
  EXPECT_EQ(Raw(1'234'567'890'123) * Raw(987'654), Raw(121'932'591'495'154));
  EXPECT_EQ(std::pair(kMost * Currency(1), kLeast * Currency(1)), std::pair(kMost, kLeast));
}

TEST(CurrencyQuotient, IsWholeOfAMultipleHalvesToEvenAsMoneyAndDownToTheFloor) {
  for (std::int64_t unit = 1; unit < 2'000; unit += 7)
    for (std::int64_t times = 1; times < 50; ++times) {
      ASSERT_TRUE(IsWhole(Raw(unit * times) / Raw(unit)));
      ASSERT_EQ(RoundDownTo(Raw(unit * times), Raw(unit)), Raw(unit * times));
    }
  EXPECT_EQ(Currency::FromDouble(Currency(49) / Currency(6)), Raw(81'667));
  EXPECT_EQ(Currency::FromDouble(Currency(1) / Currency(32)), Raw(312));  // 0.03125
  EXPECT_EQ(Currency::FromDouble(Currency(3) / Currency(32)), Raw(938));  // 0.09375
  EXPECT_EQ(Currency::FromDouble(Currency(-3) / Currency(32)), Raw(-938));
  EXPECT_EQ(RoundDownTo(Raw(74'999), Currency(5)), Currency(5));
  EXPECT_EQ(RoundDownTo(Raw(-1), Currency(5)), Currency(-5));
  EXPECT_EQ(RoundDownTo(Currency(-5), Currency(5)), Currency(-5));
}

TEST(CurrencyFaults, WhatDoesNotFitIsAnOverflow) {
  void (*const cases[])() = {
      [] { static_cast<void>(kMost + Raw(1)); },
      [] { static_cast<void>(kLeast - Raw(1)); },
      [] { static_cast<void>(-kLeast); },
      [] { static_cast<void>(kMost * 2); },
      [] { static_cast<void>(kMost * Raw(10'001)); },
      [] { static_cast<void>(Currency(std::int64_t{1'000'000'000'000'000})); },
      [] { static_cast<void>(Currency::FromDouble(1e15)); },
      [] { static_cast<void>(Currency::FromDouble(std::nan(""))); },
      [] { static_cast<void>(WholeTimes(1e19, Raw(1))); }};
  for (const auto action : cases) EXPECT_THROW(action(), RunTimeFault);
  EXPECT_NO_THROW(static_cast<void>(kMost - Raw(1)));
}

TEST(Faults, ReportNamesFaultNumberAndPlace) {
  const std::pair<void (*)(), const char*> cases[] = {
      {[] { RaiseOverflow(); }, "Overflow, Error #6 occurred, at: Open Game\n"},
      {[] { static_cast<void>(Currency(1) / Currency()); },
       "Division by zero, Error #11 occurred, at: Open Game\n"},
      {[] { throw std::runtime_error("disk gone"); },
       "disk gone, Error #51 occurred, at: Open Game\n"}};
  for (const auto& [action, report] : cases) {
    try {
      action();
    } catch (...) {
      ReportError("Open Game");
    }
    EXPECT_EQ(Game.LastErrorText, report);
  }
}

}  // namespace
