#include "bets/known_cases.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

#include "stats/bet_tables.h"

namespace {

constexpr unsigned kCases = 8'000;
constexpr unsigned kPlaces = 1U << 14U;  // of the decisions by their hash, a power of 2
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

struct Waiting {
  std::vector<Case> Cases;
  std::vector<CaseTally> Tallies;      // of each
  std::vector<std::uint16_t> Places;   // 1 + the number of a decision, 0 for none
  std::vector<std::uint16_t> Counted;  // those of which some wait
};
Waiting waiting;

void Record(std::uint16_t number) {
  const Case& decided = waiting.Cases[number];
  RecordEarlierOutcomes(decided.Bet, Currency::FromRaw(decided.Staked),
                        Currency::FromRaw(decided.Net),
                        std::exchange(waiting.Tallies[number].Count, 0));
}

bool IsLater(std::uint16_t a, std::uint16_t b) {
  return b == kNone || (a != kNone && waiting.Tallies[a].LastRoll > waiting.Tallies[b].LastRoll);
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
  return static_cast<std::uint16_t>(waiting.Cases.size() - 1);
}

bool HasRoomForCases() { return waiting.Cases.size() + kBetSlots <= kCases; }

void ForgetCases() {
  waiting.Cases.clear();
  waiting.Cases.reserve(kCases);
  waiting.Tallies.clear();
  waiting.Tallies.reserve(kCases);
  waiting.Places.assign(kPlaces, 0);
}

void CountCases(std::span<const std::uint16_t> cases, int count, int lastRoll) {
  CaseTally* const tallies = waiting.Tallies.data();
  for (const std::uint16_t number : cases) {
    CaseTally& tally = tallies[number];
    if (tally.Count == 0) waiting.Counted.push_back(number);
    tally.LastRoll = std::max(tally.Count == 0 ? 0 : tally.LastRoll, lastRoll);
    tally.Count += count;
  }
}

/// Of each bet the last win and the last loss come at the end, in their order.
void RecordCases() {
  std::array<std::array<std::uint16_t, 2>, kBetSlots> last;
  last.fill({kNone, kNone});
  for (std::uint16_t number : waiting.Counted) {
    const Case& decided = waiting.Cases[number];
    std::uint16_t& latest = last[static_cast<unsigned>(decided.Bet)][decided.Net > 0 ? 1 : 0];
    if (IsLater(number, latest)) std::swap(number, latest);
    if (number != kNone) Record(number);
  }
  for (auto& [first, second] : last) {
    if (IsLater(first, second)) std::swap(first, second);
    for (const std::uint16_t number : {first, second})
      if (number != kNone) Record(number);
  }
  waiting.Counted.clear();
}
