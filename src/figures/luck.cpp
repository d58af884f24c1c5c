#include "figures/luck.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "core/game_state.h"
#include "dice/matrix.h"
#include "rules/advantage.h"

namespace {

double ChanceOf(int total) { return EventProbability(total, Game.UseSkewedProbability) / 100; }

/// Outcomes with their weights, which need not sum to 1.
class Mixture {
 public:
  void Add(double weight, double gain) {
    weight_ += weight;
    gains_ += weight * gain;
    squares_ += weight * gain * gain;
  }
  void Add(double weight, const DecisionWorth& part) {
    weight_ += weight;
    gains_ += weight * part.Mean;
    squares_ += weight * (part.Variance + part.Mean * part.Mean);
  }
  DecisionWorth Worth() const {
    if (weight_ <= 0) return {};
    const double mean = gains_ / weight_;
    return {mean, std::max(squares_ / weight_ - mean * mean, 0.0)};
  }

 private:
  double weight_ = 0;
  double gains_ = 0;
  double squares_ = 0;
};

DecisionWorth WorthByAdvantage(int betId) {
  constexpr bool kCountZeros = false;
  const Advantage advantage = FigureAdvantage(betId, Game.UseSkewedProbability, kCountZeros);
  return {advantage.EVDec, advantage.StDevDec * advantage.StDevDec};
}

/// The flat Come and Don't Come, which leave for a number when their first throw doesn't decide.
DecisionWorth WorthOfFirstThrow(int betId) {
  const PayoffRecord& payoff = Game.Payoff[static_cast<unsigned>(betId)];
  const bool pass = betId == Come;
  Mixture outcomes;
  for (const int total : {2, 3, 7, 11, 12}) {
    if (!pass && total == Game.BarDont) continue;
    const bool natural = total == 7 || total == 11;
    outcomes.Add(ChanceOf(total), natural == pass ? payoff.Win / payoff.Per : -1.0);
  }
  return outcomes.Worth();
}

DecisionWorth WorthOverPoints(BetFamily odds) {
  Mixture points;
  for (const int point : kPointNumbers)
    points.Add(ChanceOf(point), WorthByAdvantage(BetOnNumber(odds, point)));
  return points.Worth();
}

double NetOf(const BetSums& sums) {
  return static_cast<double>(sums.Wins[StatSum] - sums.Losses[StatSum]) / Currency::kScale;
}

}  // namespace

DecisionWorth WorthOfDecision(int betId) {
  switch (betId) {
    case Come:
    case DontCome: return WorthOfFirstThrow(betId);
    case PassLineOdds: return WorthOverPoints(ComeOddsFamily);
    case DontPassOdds: return WorthOverPoints(DontComeOddsFamily);
    default: return WorthByAdvantage(betId);
  }
}

Luck FigureLuck(const BetSelection& selection) {
  double surplus = 0;
  double variance = 0;
  int bets = 0;
  for (int betId = Lay4; betId <= LastBet; ++betId) {
    if (!selection.Selected[static_cast<unsigned>(betId)]) continue;
    const BetSums sums = SumsOfBet(betId, selection.Data);
    if (sums.Wagers[StatCount] == 0) continue;
    const DecisionWorth worth = WorthOfDecision(betId);
    const double wagers = static_cast<double>(sums.Wagers[StatSum]) / Currency::kScale;
    surplus += NetOf(sums) - wagers * worth.Mean;
    variance += sums.Squares * worth.Variance;
    ++bets;
  }
  if (!(variance > 0)) return {};
  Luck luck;
  luck.Known = true;
  luck.About = bets > 1;
  luck.Deviations = surplus / std::sqrt(variance);
  luck.Worse = std::erfc(-luck.Deviations / std::numbers::sqrt2) / 2;
  return luck;
}

std::string LuckText(const Luck& luck) {
  if (!luck.Known) return "-";
  return (luck.About ? "about " : "") + FormatNumber(luck.Deviations, "+0.00;-0.00;0.00") + " (" +
         FormatNumber(luck.Worse, "0.00 %") + " do worse)";
}

std::string LuckTip(const Luck& luck) {
  if (!luck.Known) return "Shows as soon as a selected bet has been decided.";
  std::string tip =
      "By how many standard deviations the net differs from the expected value, and the share of "
      "games with these wagers that do worse.";
  if (luck.About)
    tip +=
        " It is about right only: several bets are selected, and bets that the same throws decide "
        "win and lose together.";
  return tip;
}
