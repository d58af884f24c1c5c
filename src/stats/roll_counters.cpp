#include "stats/roll_counters.h"

#include <array>

namespace {

constexpr int kMostEvents = 16;

/// The events of one throw.
struct ThrowEvents {
  std::array<unsigned char, kMostEvents> Events{};
  unsigned Count = 0;

  constexpr void Add(int event) { Events[Count++] = static_cast<unsigned char>(event); }
};

/// An event for one throw in its order of dice.
constexpr int kPairEvents[6][6] = {
    {2, 22, 24, 27, 33, 39},   //
    {23, 13, 29, 35, 41, 48},  //
    {25, 30, 14, 43, 50, 54},  //
    {28, 36, 44, 15, 56, 60},  //
    {34, 42, 51, 57, 16, 63},  //
    {40, 49, 55, 61, 64, 12},
};

/// An event for two unlike dice in either order; the lower die first. 0 where it would be the
/// total.
constexpr int kComboEvents[6][6] = {
    {0, 0, 26, 31, 37, 45},  //
    {0, 0, 32, 38, 46, 52},  //
    {0, 0, 0, 47, 53, 58},   //
    {0, 0, 0, 0, 59, 62},    //
    {0, 0, 0, 0, 0, 0},      //
    {0, 0, 0, 0, 0, 0},
};

/// An event for a group of totals; bit n stands for total n.
struct GroupEvent {
  int Event;
  unsigned Totals;
};

template <class... Totals>
constexpr unsigned SetOf(Totals... totals) {
  return ((1U << static_cast<unsigned>(totals)) | ...);
}

constexpr std::array<GroupEvent, 18> kGroupEvents = {{
    {17, SetOf(4, 5, 6, 8, 9, 10)},
    {18, SetOf(5, 6, 8, 9)},
    {19, SetOf(4, 5, 9, 10)},
    {20, SetOf(2, 3, 12)},
    {21, SetOf(2, 3, 4, 9, 10, 11, 12)},
    {65, SetOf(2, 3, 7, 11, 12)},
    {66, SetOf(2, 3, 11, 12)},
    {67, SetOf(4, 5, 6)},
    {68, SetOf(8, 9, 10)},
    {69, SetOf(2, 12)},
    {70, SetOf(3, 11)},
    {71, SetOf(4, 10)},
    {72, SetOf(5, 9)},
    {73, SetOf(6, 8)},
    {74, SetOf(2, 3)},
    {75, SetOf(3, 12)},
    {76, SetOf(7, 11)},
    {77, SetOf(11, 12)},
}};

constexpr ThrowEvents FindEvents(int die1, int die2) {
  ThrowEvents events;
  const int total = die1 + die2;
  events.Add(77 + die1);
  events.Add(83 + die2);
  events.Add(kPairEvents[die1 - 1][die2 - 1]);
  if (total > 2 && total < 12) events.Add(total);  // 2 and 12 are their pair
  const int low = die1 < die2 ? die1 : die2;
  const int high = die1 < die2 ? die2 : die1;
  if (const int combo = kComboEvents[low - 1][high - 1]; combo > 0) events.Add(combo);
  for (const GroupEvent& group : kGroupEvents) {
    if (group.Totals >> static_cast<unsigned>(total) & 1U) events.Add(group.Event);
  }
  return events;
}

using EventTable = std::array<std::array<ThrowEvents, 6>, 6>;

constexpr EventTable BuildEventTable() {
  EventTable table;
  for (int die1 = 1; die1 <= 6; ++die1) {
    for (int die2 = 1; die2 <= 6; ++die2) {
      table[static_cast<unsigned>(die1 - 1)][static_cast<unsigned>(die2 - 1)] =
          FindEvents(die1, die2);
    }
  }
  return table;
}

constexpr EventTable kEventTable = BuildEventTable();

void Grow(int& counter, int by) {
  if (__builtin_add_overflow(counter, by, &counter)) RaiseOverflow();
}

}  // namespace

void TallyEvent(int event) {
  const auto at = static_cast<unsigned>(event);
  Grow(Game.RollCount[at], 1);
  Grow(Game.ShooterEvent[at], 1);
  const int gap = Game.RollsSince[at];
  auto& gaps = Game.RollGapTally[at];
  if (gap < kLongGap) {
    Grow(gaps[static_cast<unsigned>(gap < 0 ? 0 : gap)], 1);
  } else {
    Grow(gaps[kLongGap], 1);
    Grow(gaps[0], gap);
  }
  Game.RollsSince[at] = 0;
  Game.ShooterSince[at] = 0;
}

std::span<const unsigned char> EventsOfThrow(int die1, int die2) {
  const ThrowEvents& events =
      kEventTable[static_cast<unsigned>(die1 - 1)][static_cast<unsigned>(die2 - 1)];
  return {events.Events.data(), events.Count};
}

void TallyThrow() {
  for (const unsigned char event : EventsOfThrow(Game.Die1, Game.Die2)) TallyEvent(event);
}
