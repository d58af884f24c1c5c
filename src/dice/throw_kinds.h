// Throws by their number, and the 21 kinds of throw, the dice in either order, and sets of them.
#pragma once

#include <array>
#include <cstdint>

/// A throw by the dice in their order.
using ThrowNumber = unsigned char;

inline constexpr unsigned kThrowNumbers = 36;

constexpr ThrowNumber NumberOfThrow(int die1, int die2) {
  return static_cast<ThrowNumber>((die1 - 1) * 6 + die2 - 1);
}
constexpr int FirstDieOf(ThrowNumber thrown) { return thrown / 6 + 1; }
constexpr int SecondDieOf(ThrowNumber thrown) { return thrown % 6 + 1; }

/// The total of each throw.
inline constexpr auto kTotalOfThrow = [] {
  std::array<unsigned char, kThrowNumbers> totals{};
  for (ThrowNumber thrown = 0; thrown < kThrowNumbers; ++thrown)
    totals[thrown] = static_cast<unsigned char>(FirstDieOf(thrown) + SecondDieOf(thrown));
  return totals;
}();

/// A kind of throw, the lower die first.
struct ThrowKind {
  int Low = 0;
  int High = 0;

  constexpr int Total() const { return Low + High; }
  constexpr bool IsPair() const { return Low == High; }
  constexpr int Ways() const { return IsPair() ? 1 : 2; }
};

inline constexpr int kThrowKinds = 21;

/// The kinds in the order of the Field's payoffs: by total, then by the lower die. Index 0 is none.
inline constexpr auto kThrowKindTable = [] {
  std::array<ThrowKind, kThrowKinds + 1> table{};
  unsigned kind = 0;
  for (int total = 2; total <= 12; ++total) {
    for (int low = total <= 7 ? 1 : total - 6; low * 2 <= total; ++low)
      table[++kind] = {low, total - low};
  }
  return table;
}();

/// The kind of each throw.
inline constexpr auto kKindOfThrow = [] {
  std::array<unsigned char, kThrowNumbers> kinds{};
  for (unsigned char kind = 1; kind <= kThrowKinds; ++kind) {
    const auto [low, high] = kThrowKindTable[kind];
    kinds[NumberOfThrow(low, high)] = kinds[NumberOfThrow(high, low)] = kind;
  }
  return kinds;
}();

/// Bit n stands for kind n.
using ThrowSet = std::uint32_t;

inline constexpr ThrowSet kAllThrows = (1U << (kThrowKinds + 1)) - 2;

/// The throw of two dice, the lower first.
constexpr ThrowSet ThrowOf(int low, int high) {
  for (unsigned kind = 1; kind <= kThrowKinds; ++kind) {
    if (kThrowKindTable[kind].Low == low && kThrowKindTable[kind].High == high) return 1U << kind;
  }
  return 0;
}

/// The throws that make one of some totals.
template <class... Totals>
constexpr ThrowSet ThrowsOf(Totals... totals) {
  ThrowSet set = 0;
  for (unsigned kind = 1; kind <= kThrowKinds; ++kind) {
    if (((kThrowKindTable[kind].Total() == totals) || ...)) set |= 1U << kind;
  }
  return set;
}

constexpr bool IsIn(ThrowSet set, unsigned kind) { return (set >> kind & 1U) != 0; }
