#include "bets/known_decisions.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "bets/change_bet.h"
#include "bets/known_trial.h"
#include "bets/ledger.h"
#include "bets/odds.h"
#include "bets/vig.h"
#include "stats/bet_tables.h"

namespace {

constexpr unsigned kCases = 32;  // kept of a bet, each in a place of its own: 250 kB in all
constexpr Currency kNothing = Currency::FromRaw(std::numeric_limits<std::int64_t>::min());

std::array<std::array<KnownDecision, kCases>, kBetSlots> known;
KnownTrial trial;

/// Odds on the line are left out: a point of 8 makes them depend on the points before.
bool CanBeKnown(int betId) {
  return Game.KnownRollsOn && Game.HyperDriveOn && LedgerIsOpen() && betId != PassLineOdds &&
         betId != DontPassOdds &&
         Game.BetsAtRoll[static_cast<unsigned>(betId)] == Game.Bets[static_cast<unsigned>(betId)];
}

Currency BesideOf(int betId) {
  if (IsComeOdds(betId) || IsDontComeOdds(betId))
    return Game.Bets[static_cast<unsigned>(betId - kOddsOffset)];
  return VigHeld(betId);
}

/// From the Field on bets ask only whether a point stands.
unsigned PointSeenBy(int betId) {
  return static_cast<unsigned>(betId < Field ? Game.Point : std::min(Game.Point, 1));
}

DecisionCase CaseOf(int betId, int code, int outcome) {
  unsigned situation = 1;
  for (const auto& [part, limit] : {std::pair{PointSeenBy(betId), 16U},
                                    {static_cast<unsigned>(outcome), 128U},
                                    {static_cast<unsigned>(code + 2), 8U},
                                    {Game.RollTotal == 7 ? 1U : 0U, 2U},
                                    {static_cast<unsigned>(Game.HandleWinningBets), 16U},
                                    {static_cast<unsigned>(Game.HandleLosingBets), 16U}})
    situation = situation * limit + part;
  return {Game.Bets[static_cast<unsigned>(betId)], BesideOf(betId), situation};
}

KnownDecision& PlaceOf(int betId, const DecisionCase& decision) {
  constexpr std::uint64_t kMix = 0x9E3779B97F4A7C15U;
  const std::uint64_t mixed =
      (static_cast<std::uint64_t>(decision.Amount.Raw()) * 31 + decision.Situation) * kMix;
  static_assert(kCases == 1U << 5U);
  return known[static_cast<unsigned>(betId)][mixed >> 59U];
}

}  // namespace

const KnownDecision* FindKnownDecision(int betId, int code, int outcome) {
  if (!CanBeKnown(betId) || trial.IsResting()) return nullptr;
  const DecisionCase wanted = CaseOf(betId, code, outcome);
  const KnownDecision& found = PlaceOf(betId, wanted);
  if (found.Case != wanted || FreeMoney() < found.FreeNeeded) return nullptr;
  trial.Used(1);
  return &found;
}

void TakeKnownDecision(int betId, const KnownDecision& decision) {
  const auto at = static_cast<unsigned>(betId);
  if (decision.FreeNeeded != kNothing)
    Game.LeastFreeMoney = std::min(Game.LeastFreeMoney, FreeMoney() - decision.FreeNeeded);
  RecordStaked(betId, decision.Staked, decision.Net);
  Game.Bets[BankrollIndex] += decision.Net;
  Touch(BankrollIndex);
  if (betId < kContractSlots) Game.ContractBets[at] = 0;
  CountStreak(betId, decision.Net);
  Game.Bets[at] = decision.Stands;
  Touch(betId);
  Game.TotalOnTable += decision.OnTable;
  if (IsBuy(betId) || IsLay(betId)) HeldVigOf(betId) = decision.VigHeld;
  if (IsOddsBet(betId)) SetOddsMultiple(decision.Multiple);
  if (decision.ResetsWorking) ResetBetWorking(betId);
}

DecisionLesson::DecisionLesson(int betId, int code, int outcome)
    : betId_(betId),
      case_(CanBeKnown(betId) && !trial.Rests() ? CaseOf(betId, code, outcome) : DecisionCase()),
      bankroll_(Bankroll()),
      onTable_(Game.TotalOnTable),
      leastFree_(Game.LeastFreeMoney),
      workingTouched_(Game.WorkingTouched) {
  Game.LeastFreeMoney = kFreeEnough;
  Game.WorkingTouched = false;
}

DecisionLesson::~DecisionLesson() {
  Game.LeastFreeMoney = std::min(Game.LeastFreeMoney, leastFree_);
  Game.WorkingTouched |= workingTouched_;
}

void DecisionLesson::Learn() const {
  const auto at = static_cast<unsigned>(betId_);
  const Currency net = Bankroll() - bankroll_;
  const Currency left = Game.LeastFreeMoney;
  if (case_.Situation == 0 || left < 0 || net == 0) return;
  trial.Learnt();
  PlaceOf(betId_, case_) = {case_,
                            Game.BetWagers[Actual][at][StatRollAmount],
                            net,
                            Game.Bets[at],
                            VigHeld(betId_),
                            Game.TotalOnTable - onTable_,
                            Game.OddsMultiple,
                            left == kFreeEnough ? kNothing : bankroll_ - onTable_ - left,
                            Game.WorkingTouched};
}

void ForgetKnownDecisions() { known = {}; }
