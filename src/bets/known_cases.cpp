#include "bets/known_cases.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

#include "stats/bet_tables.h"

namespace {

constexpr unsigned kCases = 8'000;
constexpr unsigned kPlaces = 1U << 14U;       // of the decisions by their hash, a power of 2
constexpr unsigned kCaseNumbers = 1U << 18U;  // of the decisions of all rolls
constexpr std::uint16_t kNone = 0xFFFF;

/// A decision as the bet tables record it, in ten-thousandths.
struct Case {
  int Bet;
  std::int32_t Staked;
  std::int32_t Net;

  bool operator==(const Case&) const = default;
};

/// How often one waits for that.
struct CaseTally {
  int Count = 0;
  int LastRoll = 0;
};

/// Numbers of decisions of a bet: a loss and a win, `kNone` for none.
using Decisions = std::array<std::uint16_t, 2>;

struct Waiting {
  std::vector<Case> Cases;
  std::vector<CaseTally> Tallies;      // of each
  std::vector<std::uint16_t> Places;   // 1 + the number of a decision, 0 for none
  std::vector<std::uint16_t> Numbers;  // of the decisions of each roll
  BetMask EverDecided{};

  // Of most bets there is a loss and a win, of one wager: in whichever order they are recorded, the
  // tables come out the same.
  std::array<Decisions, kBetSlots> OfBets{};  // the first that a bet has shown
  BetMask OfSeveral{};                        // the bets that have shown more
  unsigned SeveralChanged = 1;                // rises with each

  std::vector<RollCases*> Rolls;       // that wait
  std::vector<std::uint16_t> Counted;  // decisions of bets of several that do
};
Waiting waiting;

bool IsWin(const Case& decided) { return decided.Net > 0; }

bool IsOfSeveral(std::uint16_t number) {
  return IsIn(waiting.OfSeveral, static_cast<unsigned>(waiting.Cases[number].Bet));
}

/// Enters a new decision with its bet.
void EnterWithBet(std::uint16_t number) {
  const Case& decided = waiting.Cases[number];
  const auto bet = static_cast<unsigned>(decided.Bet);
  Include(waiting.EverDecided, bet);
  std::uint16_t& own = waiting.OfBets[bet][IsWin(decided)];
  const std::uint16_t other = waiting.OfBets[bet][!IsWin(decided)];
  const bool sameWager = other == kNone || waiting.Cases[other].Staked == decided.Staked;
  if (own == kNone && sameWager) {
    own = number;
  } else {
    Include(waiting.OfSeveral, bet);
    ++waiting.SeveralChanged;
  }
}

/// The decisions of a roll, those of bets of several first.
std::span<const std::uint16_t> CasesOf(RollCases& roll) {
  const auto cases = std::span(waiting.Numbers).subspan(roll.First, roll.Cases);
  if (roll.SortedAt == waiting.SeveralChanged) return cases;
  const auto others = std::partition(cases.begin(), cases.end(), IsOfSeveral);
  roll.OfSeveral = static_cast<unsigned>(others - cases.begin());
  roll.SortedAt = waiting.SeveralChanged;
  return cases;
}

void CountWithLast(std::uint16_t number, int count, int lastRoll) {
  CaseTally& tally = waiting.Tallies[number];
  if (tally.Count == 0) {
    waiting.Counted.push_back(number);
    tally.LastRoll = 0;
  }
  tally.Count += count;
  tally.LastRoll = std::max(tally.LastRoll, lastRoll);
}

void Count(RollCases& roll) {
  const std::span<const std::uint16_t> cases = CasesOf(roll);
  for (const std::uint16_t number : cases.first(roll.OfSeveral))
    CountWithLast(number, roll.Count, roll.LastRoll);
  CaseTally* const tallies = waiting.Tallies.data();
  for (const std::uint16_t number : cases.subspan(roll.OfSeveral))
    tallies[number].Count += roll.Count;
  roll.Count = 0;
}

int TakeCount(std::uint16_t number) {
  return number == kNone ? 0 : std::exchange(waiting.Tallies[number].Count, 0);
}

void RecordNets(std::uint16_t number, int count) {
  const Case& decided = waiting.Cases[number];
  if (count != 0) RecordEarlierNets(decided.Bet, Currency::FromRaw(decided.Net), count);
}

void RecordWagers(std::uint16_t number, int count) {
  const Case& decided = waiting.Cases[number];
  RecordEarlierWagers(decided.Bet, Currency::FromRaw(decided.Staked), count);
}

/// Records the loss and the win of a bet that has no others.
void RecordBoth(unsigned bet) {
  const auto [loss, win] = waiting.OfBets[bet];
  const int losses = TakeCount(loss);
  const int wins = TakeCount(win);
  if (losses + wins == 0) return;
  RecordWagers(losses != 0 ? loss : win, losses + wins);
  RecordNets(loss, losses);
  RecordNets(win, wins);
}

void Record(std::uint16_t number) {
  const int count = TakeCount(number);
  if (count == 0) return;
  RecordWagers(number, count);
  RecordNets(number, count);
}

bool IsLater(std::uint16_t a, std::uint16_t b) {
  return b == kNone || (a != kNone && waiting.Tallies[a].LastRoll > waiting.Tallies[b].LastRoll);
}

/// Of each bet the last win and the last loss come at the end, in their order.
void RecordCounted() {
  std::array<Decisions, kBetSlots> last;
  ForEachIn(waiting.OfSeveral, [&last](unsigned bet) { last[bet] = {kNone, kNone}; });
  for (std::uint16_t number : waiting.Counted) {
    const Case& decided = waiting.Cases[number];
    std::uint16_t& latest = last[static_cast<unsigned>(decided.Bet)][IsWin(decided)];
    if (IsLater(number, latest)) std::swap(number, latest);
    Record(number);
  }
  ForEachIn(waiting.OfSeveral, [&last](unsigned bet) {
    auto& [first, second] = last[bet];
    if (IsLater(first, second)) std::swap(first, second);
    for (const std::uint16_t number : {first, second}) Record(number);
  });
  waiting.Counted.clear();
}

}  // namespace

std::uint16_t FindCase(int betId, Currency staked, Currency net) {
  constexpr std::uint64_t kMix = 0x9E3779B97F4A7C15U;
  const Case wanted = {betId, static_cast<std::int32_t>(staked.Raw()),
                       static_cast<std::int32_t>(net.Raw())};
  const std::uint64_t stake = static_cast<std::uint64_t>(wanted.Staked) << 7U;
  const std::uint64_t mixed =
      (stake + static_cast<unsigned>(betId)) * kMix + static_cast<std::uint64_t>(wanted.Net);
  auto place = static_cast<unsigned>(mixed * kMix >> 40U) % kPlaces;
  for (; waiting.Places[place] != 0; place = (place + 1) % kPlaces) {
    const unsigned found = waiting.Places[place] - 1U;
    if (waiting.Cases[found] == wanted) return static_cast<std::uint16_t>(found);
  }
  waiting.Cases.push_back(wanted);
  waiting.Tallies.emplace_back();
  waiting.Places[place] = static_cast<std::uint16_t>(waiting.Cases.size());
  const auto number = static_cast<std::uint16_t>(waiting.Cases.size() - 1);
  EnterWithBet(number);
  return number;
}

void AddCases(RollCases& roll, std::span<const std::uint16_t> numbers) {
  if (roll.Cases == 0) roll.First = static_cast<unsigned>(waiting.Numbers.size());
  roll.Cases += static_cast<unsigned>(numbers.size());
  waiting.Numbers.insert(waiting.Numbers.end(), numbers.begin(), numbers.end());
  for (const std::uint16_t number : numbers) {
    const Case& decided = waiting.Cases[number];
    Include(IsWin(decided) ? roll.Bets.Won : roll.Bets.Lost, static_cast<unsigned>(decided.Bet));
  }
}

bool HasRoomForCases() {
  return waiting.Cases.size() + kBetSlots <= kCases &&
         waiting.Numbers.size() + kBetSlots <= kCaseNumbers;
}

void ForgetCases() {
  waiting.Cases.clear();
  waiting.Cases.reserve(kCases);
  waiting.Tallies.clear();
  waiting.Tallies.reserve(kCases);
  waiting.Places.assign(kPlaces, 0);
  waiting.Numbers.clear();
  waiting.Numbers.reserve(kCaseNumbers);
  waiting.EverDecided = {};
  waiting.OfBets.fill({kNone, kNone});
  waiting.OfSeveral = {};
}

void CountCases(RollCases& roll, int count, int lastRoll) {
  if (roll.Cases == 0) return;
  if (roll.Count == 0) {
    waiting.Rolls.push_back(&roll);
    roll.LastRoll = 0;
  }
  roll.Count += count;
  roll.LastRoll = std::max(roll.LastRoll, lastRoll);
}

void RecordCases() {
  for (RollCases* roll : waiting.Rolls) Count(*roll);
  waiting.Rolls.clear();
  ForEachIn(Without(waiting.EverDecided, waiting.OfSeveral), RecordBoth);
  RecordCounted();
}

const BetMask& BetsEverDecided() { return waiting.EverDecided; }
