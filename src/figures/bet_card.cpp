#include "figures/bet_card.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <tuple>
#include <utility>

#include "bets/change_bet.h"
#include "bets/decide_bet.h"
#include "bets/decision_table.h"
#include "core/text.h"
#include "rules/advantage.h"

namespace {

constexpr int kThrows = 36;
constexpr const char* kTimes = "\u00D7";

/// A throw that decides the bet.
struct Outcome {
  int Die1;
  int Die2;
  PayoffRecord Ratio;
  Currency Gross;
};

int WaysOf(const Outcome& outcome) { return outcome.Die1 == outcome.Die2 ? 1 : 2; }
int TotalOf(const Outcome& outcome) { return outcome.Die1 + outcome.Die2; }

/// What every throw would make of an amount, as the point stands now.
std::vector<Outcome> OutcomesOf(int betId, Currency amount) {
  std::vector<Outcome> outcomes;
  for (int low = 1; low <= 6; ++low)
    for (int high = low; high <= 6; ++high)
      for (const DecisionStep& step : DecisionsOf(Game.Point, low, high, Game.BarDont)) {
        if (step.Kind != StepKind::Decide || step.Bet != betId) continue;
        const BetPayoff payoff =
            FigurePayoff(FigureReal, betId, static_cast<DecisionCode>(step.Code), amount,
                         {low, high, Game.Point});
        outcomes.push_back({low, high, payoff.Ratio, payoff.Gross});
      }
  return outcomes;
}

std::vector<Outcome> Part(const std::vector<Outcome>& outcomes, bool won) {
  std::vector<Outcome> part;
  std::copy_if(outcomes.begin(), outcomes.end(), std::back_inserter(part),
               [won](const Outcome& o) { return won ? o.Gross > 0 : o.Gross < 0; });
  return part;
}

int WaysOf(const std::vector<Outcome>& outcomes) {
  int ways = 0;
  for (const Outcome& outcome : outcomes) ways += WaysOf(outcome);
  return ways;
}

int WaysOfTotal(int total) { return 6 - std::abs(7 - total); }

/// "2, 3, 4-4": totals whose throws are all here, else the dice.
std::string ThrowsText(const std::vector<Outcome>& outcomes) {
  std::string text;
  const auto add = [&](const std::string& part) { text += (text.empty() ? "" : ", ") + part; };
  for (int total = 2; total <= 12; ++total) {
    std::vector<Outcome> here;
    std::copy_if(outcomes.begin(), outcomes.end(), std::back_inserter(here),
                 [total](const Outcome& o) { return TotalOf(o) == total; });
    if (WaysOf(here) == WaysOfTotal(total)) {
      add(std::to_string(total));
    } else if (total % 2 == 0 && !here.empty() && WaysOf(here) == WaysOfTotal(total) - 1) {
      add("easy " + std::to_string(total));
    } else {
      for (const Outcome& o : here) add(std::to_string(o.Die1) + '-' + std::to_string(o.Die2));
    }
  }
  return text;
}

bool FollowsItsNumber(int betId) {
  return betId == Come || betId == DontCome ||
         ((betId == PassLine || betId == DontPass) && Game.Point == 0);
}

std::string SaysOf(int betId, const std::vector<Outcome>& outcomes) {
  if ((betId == PassLineOdds || betId == DontPassOdds) && Game.Point == 0)
    return "Odds on the line, once a point stands.";
  const std::vector<Outcome> wins = Part(outcomes, true);
  const std::vector<Outcome> losses = Part(outcomes, false);
  const bool oneRoll = WaysOf(wins) + WaysOf(losses) >= kThrows - 1;
  std::string text = "Wins on " + ThrowsText(wins);
  if (oneRoll) return text + ". Loses on any other roll.";
  if (FollowsItsNumber(betId)) {
    text += ". Loses on " + ThrowsText(losses) + ". ";
    return text + (betId == Come || betId == DontCome ? "Else it goes to the number."
                                                      : "Else the number is the point.");
  }
  return text + " before " + ThrowsText(losses) + ".";
}

// ---- Payoffs ----

std::string RatioText(const PayoffRecord& ratio) {
  if (ratio.ShownAsTo) return MoneyText(ratio.Win) + " to " + MoneyText(ratio.Per);
  return MoneyText(ratio.Win + ratio.Per) + " for " + MoneyText(ratio.Per);
}

/// "1 to 1", or with others "1 to 1, 2 to 1 on 12": the ratio of most throws comes first.
std::string PaysText(const std::vector<Outcome>& wins) {
  std::vector<std::pair<std::string, std::vector<Outcome>>> ratios;
  for (const Outcome& outcome : wins) {
    const std::string text = RatioText(outcome.Ratio);
    auto known = std::find_if(ratios.begin(), ratios.end(),
                              [&](const auto& ratio) { return ratio.first == text; });
    if (known == ratios.end()) known = ratios.insert(ratios.end(), {text, {}});
    known->second.push_back(outcome);
  }
  std::stable_sort(ratios.begin(), ratios.end(), [](const auto& a, const auto& b) {
    return WaysOf(a.second) > WaysOf(b.second);
  });
  std::string text;
  for (const auto& [ratio, throws] : ratios)
    text += text.empty() ? ratio : ", " + ratio + " on " + ThrowsText(throws);
  return text;
}

/// "+$24", or from the least to the most.
std::string WinText(const std::vector<Outcome>& wins) {
  const auto [least, most] =
      std::minmax_element(wins.begin(), wins.end(),
                          [](const Outcome& a, const Outcome& b) { return a.Gross < b.Gross; });
  const auto text = [](const Outcome& outcome) {
    return "+$" + MoneyText(RoundDownTo(outcome.Gross, Unit()));
  };
  if (least->Gross == most->Gross) return text(*most);
  return text(*least) + " to " + text(*most);
}

// ---- Limits, odds, edge ----

std::string LimitsText(int betId) {
  const auto kept = std::pair(Game.MaxHere, Game.OddsMultiple);
  FigureMaxBet(betId);
  const Currency most = Game.MaxHere;
  std::tie(Game.MaxHere, Game.OddsMultiple) = kept;
  const Currency least = betId < Hard4 ? std::max(Game.MinPlacard, Unit()) : Unit();
  if (most <= 0) return "none now";
  return "$" + MoneyText(std::min(least, most)) + " to $" + MoneyText(most);
}

std::string Multiple(Currency multiple) { return PlainText(multiple) + kTimes; }

Currency MultipleOf(int number) {
  if (number == 4 || number == 10) return Game.OddsAllowed410;
  return number == 5 || number == 9 ? Game.OddsAllowed59 : Game.OddsAllowed68;
}

constexpr std::array<int, 6> kNumbers = {4, 5, 6, 8, 9, 10};

/// The number that a bet stands on; 0 for none.
int NumberOf(int betId) {
  if (betId == PassLineOdds || betId == DontPassOdds) return Game.Point;
  const auto at = [&](int first) { return kNumbers[static_cast<unsigned>(betId - first)]; };
  if (IsComeOnNumber(betId)) return at(Come4);
  if (IsComeOdds(betId)) return at(Come4Odds);
  if (IsDontComeOnNumber(betId)) return at(DontCome4);
  if (IsDontComeOdds(betId)) return at(DontCome4Odds);
  return 0;
}

int FlatOf(int oddsId) {
  if (oddsId == PassLineOdds) return PassLine;
  return oddsId == DontPassOdds ? +DontPass : oddsId - kOddsOffset;
}

std::string OddsText(int betId) {
  const bool line = betId == PassLine || betId == DontPass || betId == Come || betId == DontCome;
  const int number = NumberOf(betId);
  if (number != 0) {
    const int flat = IsOddsBet(betId) ? FlatOf(betId) : betId;
    std::string text = Multiple(MultipleOf(number));
    if (Game.Bets[flat] != 0) text += " your $" + MoneyText(Game.Bets[flat]);
    return text;
  }
  if (!line) return {};
  return Multiple(Game.OddsAllowed410) + ", " + Multiple(Game.OddsAllowed59) + ", " +
         Multiple(Game.OddsAllowed68);
}

std::string EdgeText(int betId) {
  if (!HasAdvantage(betId)) return {};
  std::array<char, 32> text{};
  const double edge = -100 * FigureAdvantage(betId).EVDec;
  std::snprintf(text.data(), text.size(), "%.2f %%", edge == 0 ? 0.0 : edge);
  return text.data();
}

std::string WorkingText(int betId) {
  switch (Game.BetWorking[betId]) {
    case CalledOff: return "called OFF";
    case NotWorking: return "not now";
    case CalledOn: return "called ON";
    default: return "yes";
  }
}

}  // namespace

BetCard CardOf(int betId, Currency chip) {
  const Currency stake = Game.Bets[betId];
  const Currency amount = stake != 0 ? stake : std::max(chip, Unit());
  const std::vector<Outcome> outcomes = OutcomesOf(betId, amount);
  const std::vector<Outcome> wins = Part(outcomes, true);
  BetCard card;
  card.Name = BetName(betId);
  if (stake != 0) card.Stake = "$" + MoneyText(stake);
  card.Says =
      wins.empty() && !IsOddsBet(betId) ? "Decided by no roll now." : SaysOf(betId, outcomes);
  const auto add = [&](const std::string& label, const std::string& value) {
    if (!value.empty()) card.Rows.push_back({label, value});
  };
  if (!wins.empty()) {
    add("Pays", PaysText(wins));
    add(stake != 0 ? "Would win" : "$" + MoneyText(amount) + " would win", WinText(wins));
  }
  add("Limits here", LimitsText(betId));
  add("Odds allowed", OddsText(betId));
  add("House edge", EdgeText(betId));
  if (stake != 0) add("Working", WorkingText(betId));
  return card;
}
