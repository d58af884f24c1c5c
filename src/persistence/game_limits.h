// The limits of what a game file may bring in.
#pragma once

#include <cstdint>

/// The most that an amount may be, in ten-thousandths: what a Chip-Stack can hold.
inline constexpr std::int64_t kMostMoney = 999'999'999'999'999'999;

/// The largest scale of the bankroll graph.
inline constexpr std::int64_t kLargestGraphScale = 40'000LL * 1'000'000 * 10'000;
