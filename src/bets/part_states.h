// The parts of the table and their states.
//
// The bets on a number, those on the line, Come and Don't Come and all others leave one another
// alone: what a roll does to one part depends on that part, the throw, and the point as far as it
// matters to the part, while the money isn't short. Only the number that is thrown and the Come
// bets, which move to it, go together. See known_parts.h for what that is good for.
#pragma once

#include <array>
#include <cstdint>

#include "bets/ledger.h"
#include "core/game_state.h"

// The parts from 0 to 5 are the numbers in their order.
inline constexpr unsigned kComePart = 6;
inline constexpr unsigned kLinePart = 7;
inline constexpr unsigned kRestPart = 8;
inline constexpr unsigned kMultiplePart = 9;  // no bet, but `OddsMultiple`
inline constexpr unsigned kParts = 10;

/// The part of each total that is a number, `kParts` for the others.
inline constexpr auto kPartOfTotal = [] {
  std::array<unsigned, 13> parts{};
  parts.fill(kParts);
  for (unsigned i = 0; i < kPointNumbers.size(); ++i)
    parts[static_cast<unsigned>(kPointNumbers[i])] = i;
  return parts;
}();

using PartSet = unsigned;  // a bit for each part

/// A layout: the state of each part by its number, 1 to `kPartStates`. A state tells the amounts of
/// the part's bets, their working states and the point as far as it matters: all that a roll reads
/// and changes, but for the bankroll and the rules. Contracts are the amounts themselves when the
/// dice are thrown.
using PartStates = std::array<std::uint16_t, kParts>;

inline constexpr unsigned kPartStates = 16'000;

/// Whether there is room for the states that one more roll can show, and how many there are.
bool HasRoomForStates();
unsigned StateCount();

/// There are no states any more, and the parts are those that the rules make: rules that make bets
/// depend on one another across parts make one part of them all. To be called before anything is
/// read, and when the rules change.
void ForgetStates();

unsigned PartOfBet(int betId);
unsigned PartOfLine();

/// The layout on the table, entered where it is new; false when it can't be taken apart.
bool ReadParts(PartStates& states);

/// The state of `kMultiplePart` for a multiple.
std::uint16_t StateOfMultiple(Currency multiple);

/// The parts that a total may change, by its throws. The Come bets go with a number.
PartSet PartsMovedBy(const PartStates& states, unsigned total);

/// Two states together, a state of its own; `add`: entered where it is new, else 0 for none.
std::uint16_t FindJoined(std::uint16_t first, std::uint16_t second, bool add);

/// The state of the line for a throw, with what it looks at of the other parts; 0 where that can't
/// be told. When a point of 8 comes up, the odds that are taken follow the multiple that the others
/// have left, a state of `kMultiplePart`; odds that come down don't look at it. Line odds that are
/// off when they are decided look at it, and at what stands on two Buy bets: see `DecideWager`.
std::uint16_t LineState(const PartStates& before, std::uint16_t multiple, unsigned total, bool add);

bool WorkingDiffers(std::uint16_t before, std::uint16_t after);

/// The point of a layout, and the money on its table.
unsigned char PointOfParts(const PartStates& states);
Currency OnTableOfParts(const PartStates& states);

/// The place of a layout's working states in the ledger, which is given one if need be; none when
/// there is no room. `mayLoseOthers`: the ledger is settled then, and loses all places.
const LedgerProfile* ProfileOfParts(const PartStates& states, bool mayLoseOthers);

/// Brings bets, vig, odds and working states of the record to a layout.
void LayOutParts(const PartStates& states);
