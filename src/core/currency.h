// Money: exact amounts to the ten-thousandth of a dollar.
#pragma once

#include <cmath>
#include <compare>
#include <concepts>
#include <cstdint>

#include "core/faults.h"

/// A signed amount of money, held as a 64-bit count of ten-thousandths of a dollar.
///
/// Sums and whole-number multiples are exact. A product of two amounts rounds to four decimals, to
/// nearest, halves to even, from the full 128-bit product. A quotient of two amounts is a `double`
/// taken from their counts, so that an exact multiple gives a whole number; stored again as money
/// it rounds like a product. Whatever doesn't fit raises the Overflow fault, never a wrap.
class Currency {
 public:
  static constexpr std::int64_t kScale = 10'000;

  constexpr Currency() = default;

  /// Whole dollars.
  template <std::integral Whole>
  constexpr Currency(Whole dollars) : raw_(Times(static_cast<std::int64_t>(dollars), kScale)) {}

  static constexpr Currency FromRaw(std::int64_t tenThousandths) {
    Currency result;
    result.raw_ = tenThousandths;
    return result;
  }

  /// The amount nearest to `dollars`, halves to even.
  static Currency FromDouble(double dollars) { return FromCount(dollars * kScale); }

  /// The amount whose count of ten-thousandths is nearest to `count`, halves to even.
  static Currency FromCount(double count) {
    const double rounded = std::nearbyint(count);
    if (!(std::abs(rounded) < 9.2233720368547758e18)) RaiseOverflow();
    return FromRaw(static_cast<std::int64_t>(rounded));
  }

  constexpr std::int64_t Raw() const { return raw_; }
  constexpr double ToDouble() const { return static_cast<double>(raw_) / kScale; }

  constexpr auto operator<=>(const Currency&) const = default;

  constexpr Currency operator-() const { return Currency() - *this; }
  constexpr Currency& operator+=(Currency other) {
    std::int64_t sum = 0;  // an amount that overflows stays as it was
    if (__builtin_add_overflow(raw_, other.raw_, &sum)) RaiseOverflow();
    raw_ = sum;
    return *this;
  }
  constexpr Currency& operator-=(Currency other) {
    std::int64_t difference = 0;
    if (__builtin_sub_overflow(raw_, other.raw_, &difference)) RaiseOverflow();
    raw_ = difference;
    return *this;
  }
  friend constexpr Currency operator+(Currency a, Currency b) { return a += b; }
  friend constexpr Currency operator-(Currency a, Currency b) { return a -= b; }

  /// A whole number of times an amount, exact.
  template <std::integral Whole>
  friend constexpr Currency operator*(Currency a, Whole times) {
    return FromRaw(Times(a.raw_, static_cast<std::int64_t>(times)));
  }

  /// A product of two amounts, rounded to four decimals, halves to even.
  friend constexpr Currency operator*(Currency a, Currency b) {
    return FromRaw(RoundedProduct(a.raw_, b.raw_));
  }

  /// The quotient in double precision; a zero divisor raises the Division by zero fault.
  friend constexpr double operator/(Currency a, Currency b) {
    if (b.raw_ == 0) RaiseDivisionByZero();
    return static_cast<double>(a.raw_) / static_cast<double>(b.raw_);
  }

 private:
  static constexpr std::int64_t Times(std::int64_t a, std::int64_t b) {
    std::int64_t result = 0;
    if (__builtin_mul_overflow(a, b, &result)) RaiseOverflow();
    return result;
  }
  static constexpr std::int64_t RoundedProduct(std::int64_t a, std::int64_t b) {
    // Most products fit into 64 bits, where they cost a tenth.
    std::int64_t product = 0;
    if (!__builtin_mul_overflow(a, b, &product)) return RoundedQuotient(product);
    __extension__ using Wide = __int128;
    const Wide quotient = RoundedQuotient(static_cast<Wide>(a) * b);
    if (quotient > INT64_MAX || quotient < INT64_MIN) RaiseOverflow();
    return static_cast<std::int64_t>(quotient);
  }
  /// A product of two counts, back in ten-thousandths.
  template <typename Count>
  static constexpr Count RoundedQuotient(Count product) {
    const Count quotient = product / kScale;
    const Count rest = product % kScale;
    const Count twice = rest < 0 ? -2 * rest : 2 * rest;
    const bool away = twice > kScale || (twice == kScale && quotient % 2 != 0);
    return away ? quotient + (product < 0 ? -1 : 1) : quotient;
  }

  std::int64_t raw_ = 0;
};

/// The floor of a quotient.
inline double Int(double value) { return std::floor(value); }

inline bool IsWhole(double value) { return std::floor(value) == value; }

/// `times` times `unit` for a whole `times` held as a double; a value that doesn't fit is an
/// Overflow fault.
inline Currency WholeTimes(double times, Currency unit) {
  if (!(std::abs(times) < 9.2e18)) RaiseOverflow();
  return unit * static_cast<std::int64_t>(times);
}

/// `amount` rounded down to a whole number of `unit`.
inline Currency RoundDownTo(Currency amount, Currency unit) {
  return WholeTimes(Int(amount / unit), unit);
}

inline Currency Abs(Currency amount) { return amount < Currency() ? -amount : amount; }
