// A field of the record as a control sees it: how it is read, how it is set, what it may hold.
#pragma once

#include <algorithm>
#include <functional>
#include <limits>
#include <string>
#include <type_traits>
#include <utility>

#include "core/currency.h"

/// What a number of the record may hold, from its row in the game file's table; without a row,
/// whatever its type can. Both ends count.
template <class T>
struct Limits {
  T Low;
  T High;
};

Limits<int> LimitsOf(const int* place);
Limits<Currency> LimitsOf(const Currency* place);

/// How many letters a text of the record keeps in the game file; a row's width, else 255.
int WidthOf(const std::string* place);

template <class T>
class RecordField {
 public:
  /// A field of the record, named directly. It must live as long as the program does.
  RecordField(T& place)
      : get_([&place] { return place; }), set_([&place](T value) { place = value; }) {
    if constexpr (std::is_same_v<T, int> || std::is_same_v<T, Currency>) {
      limits_ = LimitsOf(&place);
    } else if constexpr (std::is_same_v<T, std::string>) {
      width_ = WidthOf(&place);
    }
  }

  /// A value that is made of the record, and taken apart again.
  RecordField(std::function<T()> get, std::function<void(T)> set)
      : get_(std::move(get)), set_(std::move(set)) {}

  /// Set by a routine of the engine, which sees to all that follows.
  RecordField Through(std::function<void(T)> set) && {
    set_ = std::move(set);
    return std::move(*this);
  }

  /// What else is done once the value is set.
  RecordField Then(std::function<void()> effect) && {
    set_ = [set = std::move(set_), effect = std::move(effect)](T value) {
      set(std::move(value));
      effect();
    };
    return std::move(*this);
  }

  /// Narrower limits than the game file's.
  RecordField Within(T low, T high) && {
    limits_ = {low, high};
    return std::move(*this);
  }

  T Get() const { return get_(); }
  void Set(T value) const { set_(std::move(value)); }

  /// The nearest value that may stand.
  T Nearest(T value) const {
    if constexpr (std::is_same_v<T, int> || std::is_same_v<T, Currency>) {
      return std::clamp(value, limits_.Low, limits_.High);
    } else {
      return value;
    }
  }
  const Limits<T>& Range() const { return limits_; }
  int Width() const { return width_; }

 private:
  static constexpr int kWidestText = 255;

  static constexpr Limits<T> Unlimited() {
    if constexpr (std::is_same_v<T, int>) {
      return {std::numeric_limits<int>::min(), std::numeric_limits<int>::max()};
    } else if constexpr (std::is_same_v<T, Currency>) {
      return {Currency::FromRaw(std::numeric_limits<std::int64_t>::min()),
              Currency::FromRaw(std::numeric_limits<std::int64_t>::max())};
    } else {
      return {};
    }
  }

  std::function<T()> get_;
  std::function<void(T)> set_;
  Limits<T> limits_ = Unlimited();
  int width_ = kWidestText;
};

/// One bit of a mask as a truth of its own.
inline RecordField<bool> BitOf(int& mask, int bit) {
  return {[&mask, bit] { return (mask & bit) != 0; },
          [&mask, bit](bool on) { mask = on ? mask | bit : mask & ~bit; }};
}
