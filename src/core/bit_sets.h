// Sets of numbers from 0 on, a bit for each.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

template <std::size_t Words>
using BitSet = std::array<std::uint64_t, Words>;

template <std::size_t Words>
void Include(BitSet<Words>& set, unsigned number) {
  set[number / 64] |= std::uint64_t{1} << number % 64;
}

template <std::size_t Words>
constexpr bool IsIn(const BitSet<Words>& set, unsigned number) {
  return (set[number / 64] >> number % 64 & 1U) != 0;
}

template <std::size_t Words>
constexpr bool HasNone(const BitSet<Words>& set) {
  std::uint64_t any = 0;
  for (const std::uint64_t word : set) any |= word;
  return any == 0;
}

template <std::size_t Words>
constexpr BitSet<Words> Both(const BitSet<Words>& a, const BitSet<Words>& b) {
  BitSet<Words> both{};
  for (unsigned word = 0; word < Words; ++word) both[word] = a[word] & b[word];
  return both;
}

template <std::size_t Words>
constexpr BitSet<Words> Either(const BitSet<Words>& a, const BitSet<Words>& b) {
  BitSet<Words> either{};
  for (unsigned word = 0; word < Words; ++word) either[word] = a[word] | b[word];
  return either;
}

/// The numbers of `a` that aren't in `b`.
template <std::size_t Words>
constexpr BitSet<Words> Without(const BitSet<Words>& a, const BitSet<Words>& b) {
  BitSet<Words> rest{};
  for (unsigned word = 0; word < Words; ++word) rest[word] = a[word] & ~b[word];
  return rest;
}

/// Calls `action(number)` for each number of a set, in order.
template <std::size_t Words, typename Action>
void ForEachIn(const BitSet<Words>& set, Action action) {
  for (unsigned word = 0; word < Words; ++word)
    for (std::uint64_t bits = set[word]; bits != 0; bits &= bits - 1)
      action(word * 64 + static_cast<unsigned>(std::countr_zero(bits)));
}
