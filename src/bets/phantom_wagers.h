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

  /// The payoffs that a roll decides, by their number.
  using Plan = std::span<const std::uint16_t>;

  /// Whether there is a plan of a group, 0 to `kMostGroups` - 1, and the plan: good until another
  /// is made.
  bool HasPlan(unsigned group) const { return plans_[group].Since == since_; }
  Plan PlanOf(unsigned group) const {
    return Plan(steps_).subspan(plans_[group].First, plans_[group].Steps);
  }

  /// Makes the plan of a group: of its rolls, and the working states under which they were thrown.
  void MakePlan(unsigned group, const AlikeRolls& rolls, const WorkingStates& states);

  /// `count` rolls more, of which `lastRoll` came last.
  void Add(Plan plan, int count, int lastRoll);

  /// Records what was added, as if it had been recorded roll by roll.
  void Record();

  /// Leaves the stats of the last roll in the tables, which have none. The roll has been recorded.
  void RecordLastRoll(Plan plan) const;

  /// Working states, and so groups, are others from now on; or the rules are.
  void ForgetPlans();
  void ForgetPayoffs();

 private:
  /// What decides a bet in the same way has a place of its own.
  static constexpr unsigned kPlaces = 32;
  static constexpr unsigned kMostPayoffs = kBetSlots * kPlaces;
  static constexpr std::size_t kMostSteps = 1U << 18U;  // of all plans: 0.5 MB

  struct Kept {
    unsigned Since = 0;
    unsigned First = 0;
    unsigned Steps = 0;
  };
  struct Tally {
    int Count = 0;
    int LastRoll = 0;
  };

  void AddStep(int betId, DecisionCode code, const AlikeRolls& rolls);
  std::uint16_t PayoffOf(int betId, DecisionCode code, const DecidedThrow& thrown);

  std::array<Kept, kMostGroups> plans_{};
  std::vector<std::uint16_t> steps_;  // of all plans, by the number of the payoff
  unsigned since_ = 1;                // rises when the plans are forgotten

  std::array<std::array<std::uint16_t, kPlaces>, kBetSlots> numbers_{};  // 0 for none yet
  std::array<PhantomOutcome, kMostPayoffs + 1> payoffs_{};
  std::array<Tally, kMostPayoffs + 1> tallies_{};
  unsigned last_ = 0;  // the highest number of a payoff
};
