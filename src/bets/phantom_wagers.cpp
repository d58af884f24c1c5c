#include "bets/phantom_wagers.h"

#include <algorithm>
#include <span>
#include <utility>

#include "bets/decision_table.h"

namespace {

/// A bet that depends on the number that it stands on being established.
bool IsOfComeSide(int betId) { return betId >= DontCome4 && betId <= Come10Odds; }

bool IsOfSide(Side side, int betId) {
  return side == Side::Both || (side == Side::Come) == IsOfComeSide(betId);
}

bool Counts(int betId, NumberSet established) {
  if (!IsOfComeSide(betId)) return true;
  const auto number = static_cast<unsigned>(betId - DontCome4) % kPointNumbers.size();
  return PhantomCounts(betId, (established >> number & 1U) != 0);
}

}  // namespace

/// The number of what one dollar wins or loses.
std::uint16_t PhantomWagers::PayoffOf(int betId, DecisionCode code, const DecidedThrow& thrown) {
  const int outcome = OutcomeOf(betId, code, thrown);
  const unsigned place = code > 0 ? 1 + static_cast<unsigned>(outcome) % (kPlaces - 1) : 0;
  std::uint16_t& number = numbers_[static_cast<unsigned>(betId)][place];
  if (number != 0) return number;
  const Currency net = FigurePayoff(FigureRate, betId, code, 1, thrown).Gross;
  return number = NumberOf({betId, PhantomStake(betId), net});
}

template <typename T>
T& PhantomWagers::WayOf(ByWay<T>& ways, unsigned payoff) {
  const PhantomOutcome& outcome = payoffs_[payoff];
  return ways[static_cast<unsigned>(outcome.Bet)][outcome.Net > 0 ? 1 : 0];
}

std::uint16_t PhantomWagers::NumberOf(const PhantomOutcome& payoff) {
  const auto end = payoffs_.begin() + last_ + 1;
  const auto found = std::find(payoffs_.begin() + 1, end, payoff);
  const auto number = static_cast<std::uint16_t>(found - payoffs_.begin());
  if (found != end) return number;
  last_ = number;
  payoffs_[number] = payoff;
  stakes_[static_cast<unsigned>(payoff.Bet)] = payoff.Staked;
  // Those that go the same way are told apart by what came last, in all plans.
  if (payoff.Net != 0 && ++WayOf(payoffsOf_, number) == 2) ForgetPlans();
  return number;
}

bool PhantomWagers::IsOneOfSeveral(std::uint16_t payoff) { return WayOf(payoffsOf_, payoff) > 1; }

void PhantomWagers::AddStep(int betId, DecisionCode code, const AlikeRolls& rolls) {
  if (!IsOfSide(rolls.Bets, betId) || !Counts(betId, rolls.Established)) return;
  const std::uint16_t number = PayoffOf(betId, code, rolls.Thrown);
  if (payoffs_[number].Net != 0) steps_.push_back(number);
}

bool PhantomWagers::MakePlan(unsigned group, const AlikeRolls& rolls, const WorkingStates& states) {
  if (plans_[group].Since == since_) return false;
  const unsigned since = since_;
  const auto first = static_cast<unsigned>(steps_.size());
  const auto [die1, die2, point] = rolls.Thrown;
  for (const DecisionStep& step : DecisionsOf(point, die1, die2, Game.BarDont))
    if (step.Kind == StepKind::Decide && states[step.Bet] >= Working)
      AddStep(step.Bet, static_cast<DecisionCode>(step.Code), rolls);
  if (since != since_) return true;
  const auto others = std::partition(steps_.begin() + first, steps_.end(),
                                     [this](std::uint16_t n) { return IsOneOfSeveral(n); });
  const auto ofSeveral = static_cast<unsigned>(others - steps_.begin()) - first;
  plans_[group] = {since, first, static_cast<unsigned>(steps_.size()) - first, ofSeveral};
  return true;
}

void PhantomWagers::Add(unsigned group, int count, int lastRoll) {
  const Plan& plan = plans_[group];
  const auto steps = std::span(steps_).subspan(plan.First, plan.Steps);
  for (const std::uint16_t number : steps) counts_[number] += count;
  for (const std::uint16_t number : steps.first(plan.OfSeveral)) {
    Latest& latest = WayOf(latest_, number);
    if (lastRoll > latest.Roll) latest = {number, lastRoll};
  }
}

void PhantomWagers::Record() {
  std::array<int, kBetSlots> wagers{};
  for (unsigned number = 1; number <= last_; ++number) {
    const int count = std::exchange(counts_[number], 0);
    if (count == 0) continue;
    const PhantomOutcome& payoff = payoffs_[number];
    const unsigned latest = WayOf(latest_, number).Number;
    RecordPhantomNets(payoff.Bet, payoff.Net, count, latest == 0 || latest == number);
    wagers[static_cast<unsigned>(payoff.Bet)] += count;
  }
  for (int bet = Lay4; bet <= LastBet; ++bet)
    if (const auto at = static_cast<unsigned>(bet); wagers[at] != 0)
      RecordPhantomWagers(bet, stakes_[at], wagers[at]);
  latest_ = {};
}

void PhantomWagers::RecordLastRoll(unsigned group) const {
  const Plan& plan = plans_[group];
  for (const std::uint16_t number : std::span(steps_).subspan(plan.First, plan.Steps))
    RecordPhantomOfRoll(payoffs_[number]);
}

void PhantomWagers::ForgetPlans() {
  ++since_;
  steps_.clear();
}

void PhantomWagers::ForgetPayoffs() {
  ForgetPlans();
  numbers_ = {};
  payoffsOf_ = {};
  last_ = 0;
}
