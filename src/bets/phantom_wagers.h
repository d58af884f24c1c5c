// The phantom wagers of rolls that are alike: gathered, and recorded together.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "bets/decide_bet.h"
#include "stats/bet_tables.h"

/// The working states of the bets, as they stood at a decision.
using WorkingStates = std::array<int, kBetSlots>;

/// The bets of a throw that depend on the established numbers, and all others.
enum class Side : unsigned char { Come, Others, Both };

/// The numbers that are established, one bit each in their order.
using NumberSet = unsigned;

/// What rolls that are alike have in common.
struct AlikeRolls {
  Side Bets = Side::Both;
  DecidedThrow Thrown;
  NumberSet Established = 0;
};

/// Gathers phantom wagers by bet and payoff. What rolls of a group come to depends on the rules and
/// the working states alone: it is worked out once, and kept as a plan until somebody forgets it.
class PhantomWagers {
 public:
  static constexpr unsigned kMostGroups = 1U << 13U;

  /// Makes the plan of a group, 0 to `kMostGroups` - 1, where there is none: of its rolls, and the
  /// working states under which they were thrown. True when there was none: then others may have
  /// lost theirs. All groups need one before any is added.
  bool MakePlan(unsigned group, const AlikeRolls& rolls, const WorkingStates& states);

  /// `count` rolls more of a group, of which `lastRoll` came last.
  void Add(unsigned group, int count, int lastRoll);

  /// Records what was added, as if it had been recorded roll by roll.
  void Record();

  /// Leaves the stats of the last roll, of a group, in the tables, which have none. The roll has
  /// been recorded.
  void RecordLastRoll(unsigned group) const;

  /// Working states, and so groups, are others from now on; or the rules are.
  void ForgetPlans();
  void ForgetPayoffs();

 private:
  /// What decides a bet in the same way has a place of its own.
  static constexpr unsigned kPlaces = 32;
  static constexpr unsigned kMostPayoffs = kBetSlots * kPlaces;

  /// The payoffs that a roll decides, by their number.
  struct Plan {
    unsigned Since = 0;
    unsigned First = 0;
    unsigned Steps = 0;
    unsigned OfSeveral = 0;  // of those steps, which come first
  };
  /// A bet's losses, and its wins.
  template <typename T>
  using ByWay = std::array<std::array<T, 2>, kBetSlots>;
  /// Of the payoffs that go the same way the one that came last.
  struct Latest {
    unsigned Number = 0;
    int Roll = 0;
  };

  void AddStep(int betId, DecisionCode code, const AlikeRolls& rolls);
  std::uint16_t PayoffOf(int betId, DecisionCode code, const DecidedThrow& thrown);
  std::uint16_t NumberOf(const PhantomOutcome& payoff);
  bool IsOneOfSeveral(std::uint16_t payoff);
  template <typename T>
  T& WayOf(ByWay<T>& ways, unsigned payoff);

  std::array<Plan, kMostGroups> plans_{};
  std::vector<std::uint16_t> steps_;  // of all plans: 1.4 MB at most
  unsigned since_ = 1;                // rises when the plans are forgotten

  std::array<std::array<std::uint16_t, kPlaces>, kBetSlots> numbers_{};  // 0 for none yet
  std::array<PhantomOutcome, kMostPayoffs + 1> payoffs_{};
  unsigned last_ = 0;  // the highest number of a payoff
  std::array<Currency, kBetSlots> stakes_{};
  ByWay<int> payoffsOf_{};  // how many there are

  std::array<int, kMostPayoffs + 1> counts_{};
  ByWay<Latest> latest_{};  // of those that are one of several
};
