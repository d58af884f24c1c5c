#include "bets/ledger.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <vector>

#include "bets/decide_bet.h"
#include "bets/decision_table.h"
#include "core/game_state.h"
#include "stats/bankroll_graph.h"
#include "stats/bet_tables.h"
#include "stats/roll_counters.h"

namespace {

constexpr unsigned kPointStates = 7;    // come-out and six points
constexpr unsigned kCombinations = 22;  // of two dice in any order; 0 is not used
constexpr unsigned kNumbers = 6;
constexpr unsigned kProfiles = 16;  // sets of working states that are told apart at a time
constexpr unsigned kMaxEventsOfThrow = 16;

/// The working states of the bets, as they stood at a decision.
using WorkingStates = std::array<int, kBetSlots>;

/// Rolls that are alike in all that phantom wagers depend on.
struct Alike {
  int Count = 0;
  int LastRoll = 0;
};

/// The bets of a throw that depend on the established numbers, and all others.
enum class Side { Come, Others, Both };

/// What the rolls of a group have in common.
struct GroupKey {
  Side Bets = Side::Both;
  unsigned Profile = 0;
  unsigned PointState = 0;
  int Die1 = 1;
  int Die2 = 1;
  unsigned Established = 0;  // one bit a number
};

unsigned PointStateOf(int point) {
  return point == 0 ? 0U : static_cast<unsigned>(BetOnNumber(PlaceFamily, point) - Place4) + 1;
}
int PointOf(unsigned state) { return state == 0 ? 0 : kPointNumbers[state - 1]; }
unsigned NumberBit(int number) {
  return 1U << static_cast<unsigned>(BetOnNumber(PlaceFamily, number) - Place4);
}

struct Ledger {
  int EventsAt = 0;    // `RollCount[0]` when the events were last up to date
  int PhantomsAt = 0;  // and everything else

  // By the dice in order, for the events.
  std::array<int, 36> Throws{};
  std::array<int, kRollEvents> LastAt{};              // the roll on which each event last happened
  std::array<int, kMaxEventsOfThrow> LastAtBefore{};  // of the events of the last throw

  // By working states, point state and dice, and for a number whether it is established. A 7
  // decides all numbers: its Come side is counted apart, by come-out or not and all that are
  // established.
  std::array<Alike, kProfiles * kPointStates * kCombinations * 2> Groups{};
  std::array<Alike, (kProfiles * 2U) << kNumbers> SevensOfComeSide{};
  struct Touched {
    Alike* Group;
    GroupKey Key;
  };
  std::vector<Touched> TouchedGroups;
  int LastDie1 = 1;
  int LastDie2 = 1;

  unsigned Established = 0;  // when the last throw was thrown
  std::array<WorkingStates, kProfiles> Profiles{};
  unsigned ProfileCount = 0;
  unsigned Profile = 0;    // the one in force
  unsigned KeptSince = 1;  // rises when the profiles start from nothing
};
Ledger ledger;

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
  ledger.EventsAt = Game.RollCount[0];
  ledger.Throws.fill(0);
  for (unsigned event = 0; event < kRollEvents; ++event)
    ledger.LastAt[event] = Game.RollCount[0] - Game.RollsSince[event];
}

void TakePhantomBases() {
  ledger.PhantomsAt = Game.RollCount[0];
  ledger.Established = EstablishedInTable();
  ledger.ProfileCount = 0;
  ++ledger.KeptSince;
  Game.WorkingTouched = true;
}

/// `NumberBit` by total, 0 for one that is no number.
constexpr auto kBitOfTotal = [] {
  std::array<unsigned, 13> bits{};
  for (unsigned i = 0; i < kPointNumbers.size(); ++i)
    bits[static_cast<unsigned>(kPointNumbers[i])] = 1U << i;
  return bits;
}();

/// The established numbers follow the throw before. Without a jump: nobody can foretell the dice.
void FollowLastThrow() {
  const auto total = static_cast<unsigned>(Game.RollTotal);
  const unsigned number = kBitOfTotal[total];
  const unsigned others = total == 7 ? 0 : ledger.Established & ~number;
  ledger.Established = others | (Game.PrevPrevPoint > 0 ? number : 0);
}

/// Puts a set of working states in force for the rolls to come.
void PutInForce(const WorkingStates& states) {
  const auto begin = ledger.Profiles.begin();
  const auto end = begin + ledger.ProfileCount;
  auto profile = std::find(begin, end, states);
  if (profile == end) {
    if (ledger.ProfileCount == kProfiles) SettleLedger();  // starts them from nothing
    profile = begin + ledger.ProfileCount++;
    *profile = states;
  }
  ledger.Profile = static_cast<unsigned>(profile - begin);
}

// --- Events ---

void CountEvents() {
  const int now = Game.RollCount[0];
  const auto events = EventsOfThrow(Game.Die1, Game.Die2);
  for (std::size_t i = 0; i < events.size(); ++i) {
    const unsigned event = events[i];
    const int gap = now - ledger.LastAt[event];
    auto& gaps = Game.RollGapTally[event];
    if (gap < kLongGap) {
      ++gaps[static_cast<unsigned>(gap)];
    } else {
      ++gaps[kLongGap];
      gaps[0] += gap;
    }
    ledger.LastAtBefore[i] = ledger.LastAt[event];
    ledger.LastAt[event] = now;
  }
  ++ledger.Throws[static_cast<unsigned>((Game.Die1 - 1) * 6 + Game.Die2 - 1)];
}

/// What `ShooterSince` was one roll ago, for the events of the last throw.
void SettleSinceOfLastThrow(int now) {
  const auto events = EventsOfThrow(ledger.LastDie1, ledger.LastDie2);
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
    const int since = now - ledger.LastAt[event];
    const bool happened = ledger.LastAt[event] > ledger.EventsAt;
    const int shooterSince = happened ? since : Game.ShooterSince[event] + rolls;
    // The events that came up before the last throw stood one roll lower.
    if (happened && ledger.LastAt[event] < now) Game.ShooterSincePrev[event] = since - 1;
    Game.ShooterSince[event] = shooterSince;
    Game.RollsSince[event] = since;
  }
}

void SettleEventCounts() {
  const int rolls = Game.RollCount[0] - ledger.EventsAt;
  for (unsigned dice = 0; dice < ledger.Throws.size(); ++dice) {
    const int count = ledger.Throws[dice];
    if (count == 0) continue;
    for (const unsigned event :
         EventsOfThrow(static_cast<int>(dice / 6) + 1, static_cast<int>(dice % 6) + 1)) {
      Game.RollCount[event] += count;
      Game.ShooterEvent[event] += count;
    }
  }
  Game.ShooterEvent[AnyRoll] += rolls;
  Game.ShooterEvent[AnyRollOfShooter] += rolls;
  Game.ShooterEventPrev = Game.ShooterEvent;
  --Game.ShooterEventPrev[0];
  --Game.ShooterEventPrev[1];
  for (const unsigned event : EventsOfThrow(ledger.LastDie1, ledger.LastDie2))
    --Game.ShooterEventPrev[event];
}

/// The throws, one bit for each pair of dice in order, that show an event.
std::array<std::uint64_t, kRollEvents> FindThrowsOfEvents() {
  std::array<std::uint64_t, kRollEvents> throws{};
  for (unsigned dice = 0; dice < 36; ++dice)
    for (const unsigned event :
         EventsOfThrow(static_cast<int>(dice / 6) + 1, static_cast<int>(dice % 6) + 1))
      throws[event] |= std::uint64_t{1} << dice;
  return throws;
}

/// How often an event has happened since its tallies were last up to date.
int ThrowsOfEvent(unsigned event) {
  static const auto throws = FindThrowsOfEvents();
  int count = 0;
  for (std::uint64_t bits = throws[event]; bits != 0; bits &= bits - 1)
    count += ledger.Throws[static_cast<unsigned>(std::countr_zero(bits))];
  return count;
}

// --- Phantom wagers ---

void AddTo(Alike& group, const GroupKey& key) {
  if (group.Count++ == 0) ledger.TouchedGroups.push_back({&group, key});
  group.LastRoll = Game.RollCount[0];
}

void CountGroups() {
  const int total = Game.Die1 + Game.Die2;
  const unsigned state = PointStateOf(Game.PrevPoint);
  const auto dice = static_cast<unsigned>(FieldCombination(Game.Die1, Game.Die2));
  const unsigned profile = ledger.Profile;
  const unsigned at = ((profile * kPointStates + state) * kCombinations + dice) * 2;
  ledger.LastDie1 = Game.Die1;
  ledger.LastDie2 = Game.Die2;
  if (total == 7) {
    AddTo(ledger.Groups[at], {Side::Others, profile, state, Game.Die1, Game.Die2, 0});
    const unsigned comeAt =
        ((profile * 2 + (state == 0 ? 0U : 1U)) << kNumbers) + ledger.Established;
    AddTo(ledger.SevensOfComeSide[comeAt],
          {Side::Come, profile, state, Game.Die1, Game.Die2, ledger.Established});
  } else {
    const unsigned own = ledger.Established & kBitOfTotal[static_cast<unsigned>(total)];
    AddTo(ledger.Groups[at + (own != 0 ? 1 : 0)],
          {Side::Both, profile, state, Game.Die1, Game.Die2, own});
  }
}

void WriteEstablished(unsigned established) {
  for (const int number : kPointNumbers)
    for (const BetFamily family : kMovingFamilies) {
      const auto bet = static_cast<unsigned>(BetOnNumber(family, number));
      Game.BetWagers[Phantom][bet][StatEstablished] = (established & NumberBit(number)) ? 1 : 0;
    }
}

bool IsOfSide(Side side, int betId) {
  const bool comeSide = betId >= DontCome4 && betId <= Come10Odds;
  return side == Side::Both || (side == Side::Come) == comeSide;
}

/// The phantom wagers of one settling, gathered by bet and outcome: what one dollar wins or loses
/// is worked out once for each outcome under the same rules.
class PhantomWagers {
 public:
  /// `count` rolls more in which the throw decides the bet; those that came last are added last.
  void Add(int betId, DecisionCode code, const DecidedThrow& thrown, int count) {
    const int outcome = OutcomeOf(betId, code, thrown);
    const auto bet = static_cast<unsigned>(betId);
    // The outcomes that a bet can have lie in places of their own.
    const unsigned place = code > 0 ? 1 + static_cast<unsigned>(outcome) % (kPlaces - 1) : 0;
    Known& known = known_[bet][place];
    if (known.Rules != rules_)
      known = {rules_, 0, 0, FigurePayoff(FigureRate, betId, code, 1, thrown).Gross};
    if (known.Gross == 0) return;
    if (known.Count == 0) gathered_.push_back({betId, &known});
    known.Count += count;
    last_[bet][known.Gross > 0 ? 1 : 0] = known.Order = ++order_;
  }

  /// Records them, of each bet the last win and the last loss at the end.
  void Record() {
    for (const bool last : {false, true})
      for (const auto& [betId, known] : gathered_) {
        const unsigned won = known->Gross > 0 ? 1 : 0;
        if (last != (known->Order == last_[static_cast<unsigned>(betId)][won])) continue;
        RecordBetOutcomes(Phantom, betId, 1, known->Gross, known->Count);
        known->Count = 0;
      }
    gathered_.clear();
    order_ = 0;
  }

  void Forget() { ++rules_; }

 private:
  static constexpr unsigned kPlaces = 32;
  struct Known {
    unsigned Rules = 0;
    int Count = 0;
    int Order = 0;
    Currency Gross;
  };
  struct Gathered {
    int Bet;
    Known* Of;
  };
  std::array<std::array<Known, kPlaces>, kBetSlots> known_;
  std::array<std::array<int, 2>, kBetSlots> last_{};
  std::vector<Gathered> gathered_;
  int order_ = 0;
  unsigned rules_ = 1;
};
PhantomWagers phantomWagers;

/// Gathers the phantom wagers of `count` rolls that are alike. Those that have to be established
/// are recorded at once: the record tells which are.
void AddGroup(const GroupKey& key, int count) {
  if (count == 0) return;
  const DecidedThrow thrown = {key.Die1, key.Die2, PointOf(key.PointState)};
  const WorkingStates& states = ledger.Profiles[key.Profile];
  if (key.Bets != Side::Others) WriteEstablished(key.Established);
  for (const DecisionStep& step :
       DecisionsOf(thrown.Point, thrown.Die1, thrown.Die2, Game.BarDont)) {
    if (step.Kind != StepKind::Decide || states[step.Bet] < Working ||
        !IsOfSide(key.Bets, step.Bet))
      continue;
    const auto code = static_cast<DecisionCode>(step.Code);
    if (IsOfSide(Side::Come, step.Bet))
      RecordBetOutcomes(Phantom, step.Bet, 1,
                        FigurePayoff(FigureRate, step.Bet, code, 1, thrown).Gross, count);
    else
      phantomWagers.Add(step.Bet, code, thrown, count);
  }
}

void SettlePhantoms() {
  auto& groups = ledger.TouchedGroups;
  if (!Game.KnownRollsOn) phantomWagers.Forget();  // nobody watches the rules
  // In the order of their last rolls, so that the last amounts of each bet come out right.
  std::sort(groups.begin(), groups.end(),
            [](const auto& a, const auto& b) { return a.Group->LastRoll < b.Group->LastRoll; });
  const int now = Game.RollCount[0];
  const auto lastRoll = std::find_if(groups.begin(), groups.end(), [now](const auto& touched) {
    return touched.Group->LastRoll == now;
  });
  for (const Ledger::Touched& touched : groups) {
    const bool ofLastRoll = touched.Group->LastRoll == now;
    AddGroup(touched.Key, touched.Group->Count - (ofLastRoll ? 1 : 0));
    *touched.Group = Alike();
  }
  phantomWagers.Record();
  // Only the last roll leaves stats of its own.
  ClearRollStats(Phantom);
  for (auto touched = lastRoll; touched != groups.end(); ++touched) AddGroup(touched->Key, 1);
  phantomWagers.Record();
  groups.clear();
  WriteEstablished(ledger.Established);
}

}  // namespace

void OpenLedger() {
  Game.LedgerOpen = true;
  for (const Ledger::Touched& touched : ledger.TouchedGroups) *touched.Group = Alike();
  ledger.TouchedGroups.clear();
  ledger.TouchedGroups.reserve(ledger.Groups.size() + ledger.SevensOfComeSide.size());
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
  FollowLastThrow();
  if (!Game.WorkingTouched) return;
  WorkingStates states{};
  std::copy_n(Game.BetWorking.begin(), states.size(), states.begin());
  PutInForce(states);
  Game.WorkingTouched = false;
}

void BeginLedgerRoll(LedgerProfile& profile, const std::int8_t* states) {
  FollowLastThrow();
  if (profile.KeptSince != ledger.KeptSince) {
    WorkingStates wide{};
    std::copy_n(states, wide.size(), wide.begin());
    PutInForce(wide);
    profile = {ledger.Profile, ledger.KeptSince};
  }
  ledger.Profile = profile.Place;
}

void ForgetPhantomPayoffs() { phantomWagers.Forget(); }

void EnterThrow() {
  CountEvents();
  CountGroups();
}

void SettleEvents() {
  if (!Game.LedgerOpen || Game.RollCount[0] == ledger.EventsAt) return;
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
  return Game.LedgerOpen ? Game.RollCount[0] - ledger.LastAt[e] : Game.RollsSince[e];
}

ShooterTally ShooterTallyNow(int event) {
  const auto e = static_cast<unsigned>(event);
  ShooterTally tally = {Game.ShooterEvent[e], Game.ShooterEventPrev[e], Game.ShooterSince[e],
                        Game.ShooterSincePrev[e]};
  const int now = Game.RollCount[0];
  if (!Game.LedgerOpen || now == ledger.EventsAt) return tally;
  tally.Count += ThrowsOfEvent(e);
  tally.CountPrev = tally.Count;
  const int rolls = now - ledger.EventsAt;
  const int unseen = tally.Since + rolls;  // as it stands when the event hasn't happened meanwhile
  const bool happened = ledger.LastAt[e] > ledger.EventsAt;
  tally.Since = happened ? now - ledger.LastAt[e] : unseen;
  tally.SincePrev = tally.Since - 1;
  if (ledger.LastAt[e] != now || !happened) return tally;
  --tally.CountPrev;
  const auto events = EventsOfThrow(ledger.LastDie1, ledger.LastDie2);
  const auto place = std::find(events.begin(), events.end(), e) - events.begin();
  const int before = ledger.LastAtBefore[static_cast<unsigned>(place)];
  tally.SincePrev = before > ledger.EventsAt ? now - 1 - before : unseen - 1;
  return tally;
}
