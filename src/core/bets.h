// The bet catalogue: every bet id, the families of six numbers, and the names of the bets.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "core/bit_sets.h"

/// Bet ids. They index every per-bet array, stand in scripts and in files, and never change.
/// A family of six runs in the order 4, 5, 6, 8, 9, 10.
enum BetId : int {
  BankrollIndex = 0,
  Lay4 = 1,
  Lay10 = 6,
  DontCome4 = 7,
  DontCome10 = 12,
  DontCome4Odds = 13,
  DontCome10Odds = 18,
  Come4 = 19,
  Come10 = 24,
  Come4Odds = 25,
  Come10Odds = 30,
  Place4 = 31,
  Place5 = 32,
  Place6 = 33,
  Place8 = 34,
  Place9 = 35,
  Place10 = 36,
  Buy4 = 37,
  Buy5 = 38,
  Buy9 = 41,
  Buy10 = 42,
  PassLine = 43,
  PassLineOdds = 44,
  Come = 45,
  DontPass = 46,
  DontPassOdds = 47,
  DontCome = 48,
  Field = 49,
  Big6 = 50,
  Big8 = 51,
  Hard4 = 52,
  Hard6 = 53,
  Hard8 = 54,
  Hard10 = 55,
  Two = 56,
  Three = 57,
  Seven = 58,
  Eleven = 59,
  Twelve = 60,
  Craps = 61,
  CAndE = 62,
  Horn = 63,
  World = 64,
  Over7 = 65,
  Under7 = 66,
  Hop13 = 67,
  Hop14 = 68,
  Hop15 = 69,
  Hop16 = 70,
  Hop22 = 71,
  Hop23 = 72,
  Hop24 = 73,
  Hop25 = 74,
  Hop26 = 75,
  Hop33 = 76,
  Hop34 = 77,
  Hop35 = 78,
  Hop36 = 79,
  Hop44 = 80,
  Hop45 = 81,
  Hop46 = 82,
  Hop55 = 83,
  LastBet = 83,
  Rail = 93,          // a position only: the chips in front of the player
  SmallestChip = 95,  // the five chip values; the smallest is the unit of all bets
  LargestChip = 99,
  ChipStackBase = 100,  // Chip-Stack n has the id 100 + n
  FirstChipStack = 101,
  LastSlot = 200,
};

inline constexpr int kSlots = LastSlot + 1;    // elements of the per-id arrays
inline constexpr int kBetSlots = LastBet + 1;  // elements of arrays over the bets proper
inline constexpr int kContractSlots = DontPass + 1;

/// The base of each family of six: a family's bet on number n is base + n - n / 7.
enum BetFamily : int {
  LayFamily = -3,
  DontComeFamily = 3,
  DontComeOddsFamily = 9,
  ComeFamily = 15,
  ComeOddsFamily = 21,
  PlaceFamily = 27,
  BuyFamily = 33,
};

/// The bet of `family` on `number` (4, 5, 6, 8, 9 or 10).
constexpr int BetOnNumber(BetFamily family, int number) { return family + number - number / 7; }

inline constexpr std::array<int, 6> kPointNumbers = {4, 5, 6, 8, 9, 10};

constexpr bool IsPointNumber(int total) { return total >= 4 && total <= 10 && total != 7; }

/// The number of a bet of the seven families (ids 1 to 42).
constexpr int NumberOfBet(int betId) {
  return kPointNumbers[static_cast<unsigned>((betId - 1) % 6)];
}

constexpr bool IsBet(int id) { return id >= Lay4 && id <= LastBet; }
constexpr bool IsLay(int id) { return id >= Lay4 && id <= Lay10; }
constexpr bool IsDontComeOnNumber(int id) { return id >= DontCome4 && id <= DontCome10; }
constexpr bool IsDontComeOdds(int id) { return id >= DontCome4Odds && id <= DontCome10Odds; }
constexpr bool IsComeOnNumber(int id) { return id >= Come4 && id <= Come10; }
constexpr bool IsComeOdds(int id) { return id >= Come4Odds && id <= Come10Odds; }
constexpr bool IsPlace(int id) { return id >= Place4 && id <= Place10; }
constexpr bool IsBuy(int id) { return id >= Buy4 && id <= Buy10; }
constexpr bool IsHop(int id) { return id >= Hop13 && id <= Hop55; }
constexpr bool IsOddsBet(int id) {
  return IsDontComeOdds(id) || IsComeOdds(id) || id == PassLineOdds || id == DontPassOdds;
}
constexpr bool IsChipStack(int id) { return id > ChipStackBase && id <= LastSlot; }

/// A set of bets by their ids.
using BetMask = BitSet<2>;

/// Odds on a Come or Don't Come number lie six ids above their flat bet; so does the Buy bet above
/// the Place bet of its number.
inline constexpr int kOddsOffset = 6;
inline constexpr int kBuyOffset = 6;

/// The names of bets 1 to 83 as messages and the Events Log show them; empty for other ids.
extern const std::array<std::string_view, kBetSlots> kBetNames;
