#include "bets/phantom_wagers.h"

#include <algorithm>

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
  payoffs_[last_ + 1] = {betId, PhantomStake(betId),
                         FigurePayoff(FigureRate, betId, code, 1, thrown).Gross};
  return number = static_cast<std::uint16_t>(++last_);
}

void PhantomWagers::AddStep(int betId, DecisionCode code, const AlikeRolls& rolls) {
  if (!IsOfSide(rolls.Bets, betId) || !Counts(betId, rolls.Established)) return;
  const std::uint16_t number = PayoffOf(betId, code, rolls.Thrown);
  if (payoffs_[number].Net != 0) steps_.push_back(number);
}

void PhantomWagers::MakePlan(unsigned group, const AlikeRolls& rolls, const WorkingStates& states) {
  steps_.reserve(kMostSteps);
  if (steps_.size() + kBetSlots > kMostSteps) ForgetPlans();
  const auto first = static_cast<unsigned>(steps_.size());
  const auto [die1, die2, point] = rolls.Thrown;
  for (const DecisionStep& step : DecisionsOf(point, die1, die2, Game.BarDont))
    if (step.Kind == StepKind::Decide && states[step.Bet] >= Working)
      AddStep(step.Bet, static_cast<DecisionCode>(step.Code), rolls);
  plans_[group] = {since_, first, static_cast<unsigned>(steps_.size()) - first};
}

void PhantomWagers::Add(Plan plan, int count, int lastRoll) {
  for (const std::uint16_t number : plan) {
    Tally& tally = tallies_[number];
    tally.Count += count;
    tally.LastRoll = std::max(tally.LastRoll, lastRoll);
  }
}

void PhantomWagers::Record() {
  std::array<std::array<int, 2>, kBetSlots> lastRolls{};  // of each bet lost, and won
  for (unsigned number = 1; number <= last_; ++number) {
    Tally& tally = tallies_[number];
    if (tally.Count == 0) continue;
    const PhantomOutcome& payoff = payoffs_[number];
    int& lastRoll = lastRolls[static_cast<unsigned>(payoff.Bet)][payoff.Net > 0 ? 1 : 0];
    RecordPhantoms(payoff, tally.Count, tally.LastRoll > lastRoll);
    lastRoll = std::max(lastRoll, tally.LastRoll);
    tally = {};
  }
}

void PhantomWagers::RecordLastRoll(Plan plan) const {
  for (const std::uint16_t number : plan) RecordPhantomOfRoll(payoffs_[number]);
}

void PhantomWagers::ForgetPlans() {
  ++since_;
  steps_.clear();
}

void PhantomWagers::ForgetPayoffs() {
  ForgetPlans();
  numbers_ = {};
  last_ = 0;
}
