#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <stdexcept>

#include "core/currency.h"
#include "core/game_state.h"

namespace {

constexpr Currency Raw(std::int64_t count) { return Currency::FromRaw(count); }
constexpr Currency kMost = Raw(std::numeric_limits<std::int64_t>::max());
constexpr Currency kLeast = Raw(std::numeric_limits<std::int64_t>::min());

/// The error number of the fault that `action` raises; 0 for none.
template <class Action>
int FaultOf(Action action) {
  try {
    action();
  } catch (const RunTimeFault& fault) {
    return fault.Number;
  }
  return 0;
}

TEST(CurrencyProduct, RoundsToFourDecimalsHalvesToEven) {
  // 0.0001 x 0.5 is half a ten-thousandth.
  EXPECT_EQ(Raw(1) * Raw(5'000), Raw(0));
  EXPECT_EQ(Raw(3) * Raw(5'000), Raw(2));
  EXPECT_EQ(Raw(5) * Raw(5'000), Raw(2));
  EXPECT_EQ(Raw(7) * Raw(5'000), Raw(4));
  EXPECT_EQ(Raw(1) * Raw(5'001), Raw(1));
  EXPECT_EQ(Raw(1) * Raw(4'999), Raw(0));
}

TEST(CurrencyProduct, RoundsAlikeOnBothSidesOfZero) {
  for (std::int64_t a = 1; a < 60; ++a) {
    const Currency product = Raw(a) * Raw(1'250);
    EXPECT_EQ(Raw(-a) * Raw(1'250), -product);
    EXPECT_EQ(Raw(a) * Raw(-1'250), -product);
    EXPECT_EQ(Raw(-a) * Raw(-1'250), product);
  }
}

TEST(CurrencyProduct, LosesNoBitsOfLargeFactors) {
  // 123,456,789.0123 x 98.7654 is 12,193,259,149.515414...
  EXPECT_EQ(Raw(1'234'567'890'123) * Raw(987'654), Raw(121'932'591'495'154));
  EXPECT_EQ(kMost * Currency(1), kMost);
  EXPECT_EQ(kLeast * Currency(1), kLeast);
}

TEST(CurrencyQuotient, OfAnExactMultipleIsWhole) {
  EXPECT_EQ(Raw(1'500) / Raw(500), 3.0);
  for (std::int64_t unit = 1; unit < 2'000; unit += 7) {
    for (std::int64_t times = 1; times < 50; ++times) {
      ASSERT_TRUE(IsWhole(Raw(unit * times) / Raw(unit)));
      ASSERT_EQ(RoundDownTo(Raw(unit * times), Raw(unit)), Raw(unit * times));
    }
  }
}

TEST(CurrencyQuotient, StoredAsMoneyRoundsHalvesToEven) {
  EXPECT_EQ(Currency::FromDouble(Currency(49) / Currency(6)), Raw(81'667));
  EXPECT_EQ(Currency::FromDouble(Currency(1) / Currency(32)), Raw(312));  // 0.03125
  EXPECT_EQ(Currency::FromDouble(Currency(3) / Currency(32)), Raw(938));  // 0.09375
  EXPECT_EQ(Currency::FromDouble(Currency(-3) / Currency(32)), Raw(-938));
}

TEST(CurrencyRoundDown, GoesBelowZeroToTheFloor) {
  EXPECT_EQ(RoundDownTo(Raw(74'999), Currency(5)), Currency(5));
  EXPECT_EQ(RoundDownTo(Raw(-1), Currency(5)), Currency(-5));
  EXPECT_EQ(RoundDownTo(Currency(-5), Currency(5)), Currency(-5));
}

TEST(CurrencyFaults, WhatDoesNotFitIsAnOverflow) {
  constexpr int kOverflow = 6;
  EXPECT_EQ(FaultOf([] { return kMost + Raw(1); }), kOverflow);
  EXPECT_EQ(FaultOf([] { return kLeast - Raw(1); }), kOverflow);
  EXPECT_EQ(FaultOf([] { return -kLeast; }), kOverflow);
  EXPECT_EQ(FaultOf([] { return kMost * 2; }), kOverflow);
  EXPECT_EQ(FaultOf([] { return kMost * Currency(2); }), kOverflow);
  EXPECT_EQ(FaultOf([] { return kMost * Raw(10'001); }), kOverflow);
  EXPECT_EQ(FaultOf([] { return Currency(std::int64_t{1'000'000'000'000'000}); }), kOverflow);
  EXPECT_EQ(FaultOf([] { return Currency::FromDouble(1e15); }), kOverflow);
  EXPECT_EQ(FaultOf([] { return Currency::FromDouble(std::nan("")); }), kOverflow);
  EXPECT_EQ(FaultOf([] { return WholeTimes(1e19, Raw(1)); }), kOverflow);
  EXPECT_EQ(FaultOf([] { return kMost - Raw(1); }), 0);
}

TEST(CurrencyFaults, ZeroDivisorIsAFaultOfItsOwn) {
  EXPECT_EQ(FaultOf([] { return Currency(1) / Currency(); }), 11);
}

TEST(Faults, ReportNamesFaultNumberAndPlace) {
  const auto reported = [](auto action) {
    try {
      action();
    } catch (...) {
      ReportError("Open Game");
    }
    return Game.LastErrorText;
  };
  EXPECT_EQ(reported([] { RaiseOverflow(); }), "Overflow, Error #6 occurred, at: Open Game\n");
  EXPECT_EQ(reported([] { RaiseDivisionByZero(); }),
            "Division by zero, Error #11 occurred, at: Open Game\n");
  EXPECT_EQ(reported([] { throw std::runtime_error("disk gone"); }),
            "disk gone, Error #51 occurred, at: Open Game\n");
}

}  // namespace
