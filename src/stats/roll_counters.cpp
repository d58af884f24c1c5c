#include "stats/roll_counters.h"

#include <algorithm>
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
    {Total2, Throw12, Throw13, Throw14, Throw15, Throw16},   //
    {Throw21, Throw22, Throw23, Throw24, Throw25, Throw26},  //
    {Throw31, Throw32, Throw33, Throw34, Throw35, Throw36},  //
    {Throw41, Throw42, Throw43, Throw44, Throw45, Throw46},  //
    {Throw51, Throw52, Throw53, Throw54, Throw55, Throw56},  //
    {Throw61, Throw62, Throw63, Throw64, Throw65, Total12},
};

/// An event for two unlike dice in either order; the lower die first. 0 where it would be the
/// total.
constexpr int kComboEvents[6][6] = {
    {0, 0, Either13, Either14, Either15, Either16},  //
    {0, 0, Either23, Either24, Either25, Either26},  //
    {0, 0, 0, Either34, Either35, Either36},         //
    {0, 0, 0, 0, Either45, Either46},                //
    {0, 0, 0, 0, 0, 0},                              //
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
    {PointNumbers, SetOf(4, 5, 6, 8, 9, 10)},
    {InsideNumbers, SetOf(5, 6, 8, 9)},
    {OutsideNumbers, SetOf(4, 5, 9, 10)},
    {CrapsNumbers, SetOf(2, 3, 12)},
    {FieldNumbers, SetOf(2, 3, 4, 9, 10, 11, 12)},
    {ComeOutDecisions, SetOf(2, 3, 7, 11, 12)},
    {HornNumbers, SetOf(2, 3, 11, 12)},
    {LowPointNumbers, SetOf(4, 5, 6)},
    {HighPointNumbers, SetOf(8, 9, 10)},
    {TwoOrTwelve, SetOf(2, 12)},
    {ThreeOrEleven, SetOf(3, 11)},
    {FourOrTen, SetOf(4, 10)},
    {FiveOrNine, SetOf(5, 9)},
    {SixOrEight, SetOf(6, 8)},
    {TwoOrThree, SetOf(2, 3)},
    {ThreeOrTwelve, SetOf(3, 12)},
    {SevenOrEleven, SetOf(7, 11)},
    {ElevenOrTwelve, SetOf(11, 12)},
}};

constexpr ThrowEvents FindEvents(int die1, int die2) {
  ThrowEvents events;
  const int total = die1 + die2;
  events.Add(FirstDie1 + die1 - 1);
  events.Add(SecondDie1 + die2 - 1);
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
  Game.GapsTallied = true;
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

int EventOfDice(int die1, int die2) { return kPairEvents[die1 - 1][die2 - 1]; }

int EventOfCombination(int die1, int die2) {
  if (die1 == die2) return EventOfDice(die1, die2);
  const int combo = kComboEvents[std::min(die1, die2) - 1][std::max(die1, die2) - 1];
  return combo > 0 ? combo : die1 + die2;
}

void TallyThrow() {
  for (const unsigned char event : EventsOfThrow(Game.Die1, Game.Die2)) TallyEvent(event);
}
