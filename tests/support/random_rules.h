// House rules by chance, for laws that hold whatever the rules are.
#pragma once

#include <initializer_list>
#include <random>

#include "core/game_state.h"

/// Random numbers that are the same on every machine.
class Chance {
 public:
  explicit Chance(unsigned seed) : source_(seed) {}

  int Below(int limit) { return static_cast<int>(source_() % static_cast<unsigned>(limit)); }
  int Between(int low, int high) { return low + Below(high - low + 1); }
  bool OneIn(int times) { return Below(times) == 0; }
  template <typename T>
  T Of(std::initializer_list<T> of) {
    return of.begin()[Below(static_cast<int>(of.size()))];
  }

 private:
  std::mt19937 source_;
};

inline Currency Hundredths(int count) { return Currency::FromRaw(count * Currency::kScale / 100); }

/// Draws chip values, which can only change while no money is out.
void DrawChips(Chance& chance);

/// Draws the rules that may change in the middle of a game.
void DrawRules(Chance& chance);
