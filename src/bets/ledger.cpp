#include "bets/ledger.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <vector>

#include "bets/phantom_wagers.h"
#include "core/game_state.h"
#include "stats/bankroll_graph.h"
#include "stats/bet_tables.h"
#include "stats/roll_counters.h"

namespace {

constexpr unsigned kPointStates = 7;          // come-out and six points
constexpr unsigned kKinds = kThrowKinds + 1;  // 0 is not used
constexpr unsigned kNumbers = 6;
constexpr unsigned kProfiles = 16;  // sets of working states that are told apart at a time
constexpr unsigned kMostEventsOfThrow = 11;
constexpr unsigned kMostWaiting = 1024;

// Groups go by working states, point state and dice, and for a number whether it is established. A
// 7 decides all numbers: its Come side is counted apart, by come-out or not and all that are
// established.
constexpr unsigned kSevensOfComeSide = kProfiles * kPointStates * kKinds * 2;  // the first of them
constexpr unsigned kGroups = kSevensOfComeSide + ((kProfiles * 2) << kNumbers);
static_assert(kGroups <= PhantomWagers::kMostGroups);

/// Rolls that are alike in all that phantom wagers depend on.
struct Alike {
  int Count = 0;
  int LastRoll = 0;
};

/// What the rolls of a group have in common.
struct GroupKey {
  Side Bets = Side::Both;
  unsigned Profile = 0;
  unsigned PointState = 0;
  ThrowNumber Thrown = 0;
  NumberSet Established = 0;
};

/// A throw that isn't counted yet. A game that ends without anybody having looked never counts it.
struct WaitingThrow {
  ThrowNumber Thrown = 0;
  unsigned char Point = 0;
  unsigned char Profile = 0;
  unsigned char Established = 0;
};

/// By point, 0 for none.
constexpr auto kPointStateOf = [] {
  std::array<unsigned, 11> states{};
  for (unsigned i = 0; i < kPointNumbers.size(); ++i)
    states[static_cast<unsigned>(kPointNumbers[i])] = i + 1;
  return states;
}();
int PointOf(unsigned state) { return state == 0 ? 0 : kPointNumbers[state - 1]; }
unsigned NumberBit(int number) {
  return 1U << static_cast<unsigned>(BetOnNumber(PlaceFamily, number) - Place4);
}

/// What is kept of an event from throw to throw.
struct EventSlot {
  int* Gaps = nullptr;  // its row of `RollGapTally`
  int LastAt = 0;       // the roll on which it last happened
  int Count = 0;        // how often it happened
};

struct Ledger {
  std::array<WaitingThrow, kMostWaiting> Waiting{};
  unsigned WaitingCount = 0;
  int CountedAt = 0;  // the last roll before them

  int EventsAt = 0;    // `RollCount[0]` when the events were last up to date
  int PhantomsAt = 0;  // and everything else

  std::array<EventSlot, kRollEvents + 1> Events{};     // one more for what fills up `EventRow`
  std::array<int, kLongGap + 1> NoGaps{};              // of that one
  std::array<int, kMostEventsOfThrow> LastAtBefore{};  // of the events of the last throw

  std::array<Alike, kGroups> Groups{};
  struct Touched {
    unsigned At;  // of the group
    GroupKey Key;
  };
  std::vector<Touched> TouchedGroups;
  ThrowNumber LastThrown = 0;

  NumberSet Established = 0;  // when the last throw was thrown
  std::array<WorkingStates, kProfiles> Profiles{};
  unsigned ProfileCount = 0;
  unsigned Profile = 0;    // the one in force
  unsigned KeptSince = 1;  // rises when the profiles start from nothing
};
Ledger ledger;
PhantomWagers phantomWagers;

constexpr std::array<BetFamily, 4> kMovingFamilies = {DontComeFamily, DontComeOddsFamily,
                                                      ComeFamily, ComeOddsFamily};

unsigned EstablishedInTable() {
  unsigned established = 0;
  for (const int number : kPointNumbers) {
    const auto bet = static_cast<unsigned>(BetOnNumber(ComeFamily, number));
    if (Game.BetWagers[Phantom][bet][StatEstablished] != 0) established |= NumberBit(number);
  }
  return established;
}

void TakeEventBases() {
  ledger.WaitingCount = 0;
  ledger.CountedAt = Game.RollCount[0];
  ledger.EventsAt = Game.RollCount[0];
  for (unsigned event = 0; event < kRollEvents; ++event)
    ledger.Events[event] = {Game.RollGapTally[event].data(),
                            Game.RollCount[0] - Game.RollsSince[event], 0};
  ledger.NoGaps.fill(0);
  ledger.Events[kRollEvents] = {ledger.NoGaps.data(), Game.RollCount[0], 0};
}

void TakePhantomBases() {
  ledger.PhantomsAt = Game.RollCount[0];
  ledger.Established = EstablishedInTable();
  Game.WorkingTouched = true;
}

/// `NumberBit` by total, 0 for one that is no number.
constexpr auto kBitOfTotal = [] {
  std::array<unsigned, 13> bits{};
  for (unsigned i = 0; i < kPointNumbers.size(); ++i)
    bits[static_cast<unsigned>(kPointNumbers[i])] = 1U << i;
  return bits;
}();

/// The established numbers after a throw, a total thrown with a point or without. Without a jump:
/// nobody can foretell the dice.
NumberSet EstablishedAfter(NumberSet established, int thrown, bool pointStood) {
  const auto total = static_cast<unsigned>(thrown);
  const NumberSet number = kBitOfTotal[total];
  const NumberSet others = total == 7 ? 0 : established & ~number;
  return others | (pointStood ? number : 0);
}

/// Starts the sets of working states from nothing.
void ForgetProfiles() {
  SettleLedger();
  ledger.ProfileCount = 0;
  ++ledger.KeptSince;
  phantomWagers.ForgetPlans();
}

/// Puts a set of working states in force for the rolls to come.
void PutInForce(const WorkingStates& states) {
  const auto begin = ledger.Profiles.begin();
  const auto end = begin + ledger.ProfileCount;
  auto profile = std::find(begin, end, states);
  if (profile == end) {
    if (ledger.ProfileCount == kProfiles) ForgetProfiles();
    profile = begin + ledger.ProfileCount++;
    *profile = states;
  }
  ledger.Profile = static_cast<unsigned>(profile - begin);
}

// --- Events ---

std::span<const unsigned char> EventsOf(ThrowNumber thrown) {
  return EventsOfThrow(FirstDieOf(thrown), SecondDieOf(thrown));
}

/// The events of a throw, and `kRollEvents` up to the same number for all throws: nobody can
/// foretell how many there are.
using EventRow = std::array<unsigned char, kMostEventsOfThrow>;

std::array<EventRow, kThrowNumbers> FillEventRows() {
  std::array<EventRow, kThrowNumbers> rows;
  for (ThrowNumber thrown = 0; thrown < kThrowNumbers; ++thrown) {
    rows[thrown].fill(kRollEvents);
    unsigned place = 0;
    for (const unsigned char event : EventsOf(thrown)) rows[thrown].at(place++) = event;
  }
  return rows;
}
const std::array<EventRow, kThrowNumbers> kEventRows = FillEventRows();

void CountEvents(ThrowNumber thrown, int now) {
  for (const unsigned event : kEventRows[thrown]) {
    EventSlot& slot = ledger.Events[event];
    ++slot.Count;
    const int gap = now - slot.LastAt;
    slot.LastAt = now;
    if (gap < kLongGap) {
      ++slot.Gaps[gap];
    } else {
      ++slot.Gaps[kLongGap];
      slot.Gaps[0] += gap;
    }
  }
}

/// Keeps of the last throw what its events forget.
void CountLastEvents(ThrowNumber thrown, int now) {
  ledger.LastThrown = thrown;
  const EventRow& row = kEventRows[thrown];
  for (unsigned i = 0; i < row.size(); ++i) ledger.LastAtBefore[i] = ledger.Events[row[i]].LastAt;
  CountEvents(thrown, now);
}

/// What `ShooterSince` was one roll ago, for the events of the last throw.
void SettleSinceOfLastThrow(int now) {
  const auto events = EventsOf(ledger.LastThrown);
  for (std::size_t i = 0; i < events.size(); ++i) {
    const int before = ledger.LastAtBefore[i];
    const bool sinceOpen = before > ledger.EventsAt;
    Game.ShooterSincePrev[events[i]] =
        sinceOpen ? now - 1 - before : Game.ShooterSince[events[i]] + now - 1 - ledger.EventsAt;
  }
}

void SettleSince(int now) {
  const int rolls = now - ledger.EventsAt;
  for (unsigned event = 0; event < kRollEvents; ++event)
    Game.ShooterSincePrev[event] = Game.ShooterSince[event] + rolls - 1;
  SettleSinceOfLastThrow(now);
  Game.ShooterSince[AnyRoll] += rolls;
  for (unsigned event = 1; event < kRollEvents; ++event) {
    const int since = now - ledger.Events[event].LastAt;
    const bool happened = ledger.Events[event].LastAt > ledger.EventsAt;
    const int shooterSince = happened ? since : Game.ShooterSince[event] + rolls;
    // The events that came up before the last throw stood one roll lower.
    if (happened && ledger.Events[event].LastAt < now) Game.ShooterSincePrev[event] = since - 1;
    Game.ShooterSince[event] = shooterSince;
    Game.RollsSince[event] = since;
  }
}

void SettleEventCounts() {
  const int rolls = Game.RollCount[0] - ledger.EventsAt;
  for (unsigned event = 0; event < kRollEvents; ++event) {
    Game.RollCount[event] += ledger.Events[event].Count;
    Game.ShooterEvent[event] += ledger.Events[event].Count;
  }
  Game.ShooterEvent[AnyRoll] += rolls;
  Game.ShooterEvent[AnyRollOfShooter] += rolls;
  Game.ShooterEventPrev = Game.ShooterEvent;
  --Game.ShooterEventPrev[0];
  --Game.ShooterEventPrev[1];
  for (const unsigned event : EventsOf(ledger.LastThrown)) --Game.ShooterEventPrev[event];
}

// --- Phantom wagers ---

void AddTo(unsigned at, const GroupKey& key, int now) {
  Alike& group = ledger.Groups[at];
  if (group.Count++ == 0) ledger.TouchedGroups.push_back({at, key});
  group.LastRoll = now;
}

void ForgetGroups() {
  for (const Ledger::Touched& touched : ledger.TouchedGroups) ledger.Groups[touched.At] = {};
  ledger.TouchedGroups.clear();
}

void CountGroups(const WaitingThrow& entry, int now) {
  const ThrowNumber thrown = entry.Thrown;
  const int total = kTotalOfThrow[thrown];
  const unsigned state = kPointStateOf[entry.Point];
  const unsigned profile = entry.Profile;
  const unsigned at = ((profile * kPointStates + state) * kKinds + kKindOfThrow[thrown]) * 2;
  const NumberSet established = entry.Established;
  if (total == 7) {
    const unsigned comeOut = state == 0 ? 0 : 1;
    const unsigned comeAt = kSevensOfComeSide + ((profile * 2 + comeOut) << kNumbers) + established;
    AddTo(at, {Side::Others, profile, state, thrown, 0}, now);
    AddTo(comeAt, {Side::Come, profile, state, thrown, established}, now);
  } else {
    const NumberSet own = established & kBitOfTotal[static_cast<unsigned>(total)];
    AddTo(at + (own != 0 ? 1 : 0), {Side::Both, profile, state, thrown, own}, now);
  }
}

/// Counts the throws that wait.
void CountWaiting() {
  if (ledger.WaitingCount == 0) return;
  const auto waiting = std::span(ledger.Waiting).first(ledger.WaitingCount);
  int now = ledger.CountedAt;
  for (const WaitingThrow& entry : waiting) CountGroups(entry, ++now);
  now = ledger.CountedAt;
  for (const WaitingThrow& entry : waiting.first(waiting.size() - 1))
    CountEvents(entry.Thrown, ++now);
  CountLastEvents(waiting.back().Thrown, ++now);
  Game.GapsTallied = true;
  ledger.CountedAt = now;
  ledger.WaitingCount = 0;
}

/// The places of the next throws that wait, at most `kMostWaiting`.
std::span<WaitingThrow> NextWaiting(std::size_t throws) {
  if (ledger.WaitingCount + throws > kMostWaiting) CountWaiting();
  const std::size_t first = ledger.WaitingCount;
  ledger.WaitingCount += static_cast<unsigned>(throws);
  return std::span(ledger.Waiting).subspan(first, throws);
}

WaitingThrow Waiting(const LedgerThrow& entry, NumberSet established) {
  return {entry.Thrown, entry.Point, static_cast<unsigned char>(entry.Profile),
          static_cast<unsigned char>(established)};
}

void WriteEstablished(unsigned established) {
  for (const int number : kPointNumbers)
    for (const BetFamily family : kMovingFamilies)
      SetEstablished(BetOnNumber(family, number), (established & NumberBit(number)) != 0);
}

bool MakePlanOf(const Ledger::Touched& group) {
  const GroupKey& key = group.Key;
  const DecidedThrow thrown = {FirstDieOf(key.Thrown), SecondDieOf(key.Thrown),
                               PointOf(key.PointState)};
  return phantomWagers.MakePlan(group.At, {key.Bets, thrown, key.Established},
                                ledger.Profiles[key.Profile]);
}

/// A plan that shows another way in which a bet wins makes the others void.
void MakePlans() {
  bool made = true;
  while (made) {
    made = false;
    for (const Ledger::Touched& touched : ledger.TouchedGroups) made |= MakePlanOf(touched);
  }
}

/// Only what somebody watched the rules for can be kept.
void FollowWatchOfRules() {
  static bool watched = false;
  if (!watched || !Game.KnownRollsOn) phantomWagers.ForgetPayoffs();
  watched = Game.KnownRollsOn;
}

void SettlePhantoms() {
  FollowWatchOfRules();
  MakePlans();
  for (const Ledger::Touched& touched : ledger.TouchedGroups) {
    const Alike& group = ledger.Groups[touched.At];
    phantomWagers.Add(touched.At, group.Count, group.LastRoll);
  }
  phantomWagers.Record();
  // Only the last roll leaves stats of its own.
  ClearRollStats(Phantom);
  for (const Ledger::Touched& touched : ledger.TouchedGroups)
    if (ledger.Groups[touched.At].LastRoll == Game.RollCount[0])
      phantomWagers.RecordLastRoll(touched.At);
  ForgetGroups();
  WriteEstablished(ledger.Established);
}

}  // namespace

void OpenLedger() {
  Game.LedgerOpen = true;
  ForgetGroups();
  ledger.TouchedGroups.reserve(kGroups);
  TakeEventBases();
  TakePhantomBases();
}

void CloseLedger() {
  struct Closing {
    ~Closing() { Game.LedgerOpen = false; }
  } const whateverHappens;
  if (!Game.TalliesUnread) SettleLedger();
}

bool LedgerIsOpen() { return Game.LedgerOpen; }

void BeginLedgerRoll() {
  ledger.Established = EstablishedAfter(ledger.Established, Game.RollTotal, Game.PrevPrevPoint > 0);
  if (!Game.WorkingTouched) return;
  WorkingStates states{};
  std::copy_n(Game.BetWorking.begin(), states.size(), states.begin());
  PutInForce(states);
  Game.WorkingTouched = false;
}

bool LedgerProfile::IsKept() const { return KeptSince == ledger.KeptSince; }

bool HasRoomForProfile() { return ledger.ProfileCount < kProfiles; }

void KeepProfile(LedgerProfile& profile, const std::int8_t* states) {
  WorkingStates wide{};
  std::copy_n(states, wide.size(), wide.begin());
  PutInForce(wide);
  profile = {ledger.Profile, ledger.KeptSince};
}

void ForgetPhantomPayoffs() { phantomWagers.ForgetPayoffs(); }

void EnterThrow() {
  const auto point = static_cast<unsigned char>(Game.PrevPoint);
  NextWaiting(1)[0] =
      Waiting({NumberOfThrow(Game.Die1, Game.Die2), point, ledger.Profile}, ledger.Established);
}

void EnterThrows(std::span<const LedgerThrow> throws) {
  int total = Game.RollTotal;
  int point = Game.PrevPoint;
  NumberSet established = ledger.Established;
  WaitingThrow* waiting = NextWaiting(throws.size()).data();
  for (const LedgerThrow& entry : throws) {
    established = EstablishedAfter(established, total, point > 0);
    *waiting++ = Waiting(entry, established);
    total = kTotalOfThrow[entry.Thrown];
    point = entry.Point;
  }
  ledger.Established = established;
  ledger.Profile = throws.back().Profile;
}

void SettleEvents() {
  if (!Game.LedgerOpen || Game.RollCount[0] == ledger.EventsAt) return;
  CountWaiting();
  SettleEventCounts();
  SettleSince(Game.RollCount[0]);
  TakeEventBases();
}

void SettleLedger() {
  if (!Game.LedgerOpen) return;
  SettleEvents();
  if (Game.RollCount[0] == ledger.PhantomsAt) return;
  SettlePhantoms();
  RecomputeAverages(Game.RollCount[0] - ledger.PhantomsAt);
  TakePhantomBases();
}

int RollsSinceNow(int event) {
  const auto e = static_cast<unsigned>(event);
  if (!Game.LedgerOpen) return Game.RollsSince[e];
  CountWaiting();
  return Game.RollCount[0] - ledger.Events[e].LastAt;
}

ShooterTally ShooterTallyNow(int event) {
  const auto e = static_cast<unsigned>(event);
  ShooterTally tally = {Game.ShooterEvent[e], Game.ShooterEventPrev[e], Game.ShooterSince[e],
                        Game.ShooterSincePrev[e]};
  const int now = Game.RollCount[0];
  if (!Game.LedgerOpen || now == ledger.EventsAt) return tally;
  CountWaiting();
  tally.Count += ledger.Events[e].Count;
  tally.CountPrev = tally.Count;
  const int rolls = now - ledger.EventsAt;
  const int unseen = tally.Since + rolls;  // as it stands when the event hasn't happened meanwhile
  const bool happened = ledger.Events[e].LastAt > ledger.EventsAt;
  tally.Since = happened ? now - ledger.Events[e].LastAt : unseen;
  tally.SincePrev = tally.Since - 1;
  if (ledger.Events[e].LastAt != now || !happened) return tally;
  --tally.CountPrev;
  const auto events = EventsOf(ledger.LastThrown);
  const auto place = std::find(events.begin(), events.end(), e) - events.begin();
  const int before = ledger.LastAtBefore[static_cast<unsigned>(place)];
  tally.SincePrev = before > ledger.EventsAt ? now - 1 - before : unseen - 1;
  return tally;
}
