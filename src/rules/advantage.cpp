#include "rules/advantage.h"

#include <bit>
#include <cmath>
#include <exception>

#include "core/error_report.h"
#include "dice/matrix.h"
#include "dice/throw_kinds.h"

namespace {

constexpr int kThrows = 36;
constexpr ThrowSet kSevens = ThrowsOf(7);

double Ratio(const PayoffRecord& payoff) { return payoff.Win / payoff.Per; }

const PayoffRecord& PayoffOf(int betId) { return Game.Payoff[static_cast<unsigned>(betId)]; }

// --- The dice ---

/// The chance of each kind of throw, and of each total.
struct Chances {
  std::array<double, kThrowKinds + 1> OfKind{};
  std::array<double, 13> OfTotal{};

  double Of(ThrowSet throws) const {
    double chance = 0;
    for (; throws != 0; throws &= throws - 1)
      chance += OfKind[static_cast<unsigned>(std::countr_zero(throws))];
    return chance;
  }
};

int WeightOf(const ThrowKind& kind, bool skewed) {
  if (!skewed) return kind.Ways();
  const int share = ShareOfThrow(Game.ProbMatrix, kind.Low, kind.High);
  return kind.IsPair() ? share : share + ShareOfThrow(Game.ProbMatrix, kind.High, kind.Low);
}

Chances ChancesOf(bool skewed) {
  Chances chances;
  std::array<int, 13> totals{};
  const double whole = skewed ? kWholeShare : kThrows;
  for (unsigned kind = 1; kind <= kThrowKinds; ++kind) {
    const int weight = WeightOf(kThrowKindTable[kind], skewed);
    chances.OfKind[kind] = weight / whole;
    totals[static_cast<unsigned>(kThrowKindTable[kind].Total())] += weight;
  }
  for (unsigned total = 2; total < totals.size(); ++total)
    chances.OfTotal[total] = totals[total] / whole;
  return chances;
}

// --- Win ratios ---

/// What a Lay bet wins. Vig up front joins the money at risk.
double LayRatio(const PayoffRecord& payoff) {
  const double ratio = Ratio(payoff);
  const double vig = Game.LayVigPct.ToDouble() * ratio;
  return Game.LayVigUpFront ? (ratio - vig) / (1 + vig) : ratio - vig;
}

/// What a Buy bet wins. Vig on the win leaves whole ten-thousandths, halves to even.
double BuyRatio(const PayoffRecord& payoff) {
  const double vig = Game.BuyVigPct.ToDouble();
  if (Game.BuyVigUpFront) return (Ratio(payoff) - vig) / (1 + vig);
  const double won = static_cast<double>(payoff.Win.Raw()) * Currency::kScale /
                     static_cast<double>(payoff.Per.Raw());
  return std::nearbyint(won - static_cast<double>(Game.BuyVigPct.Raw())) / Currency::kScale;
}

double WinRatio(int betId) {
  const PayoffRecord& payoff = PayoffOf(betId);
  if (IsLay(betId) && payoff.Win > 0) return LayRatio(payoff);
  if (IsBuy(betId) && payoff.Win > 0) return BuyRatio(payoff);
  return Ratio(payoff);
}

// --- Outcomes ---

struct Outcome {
  double Chance = 0;
  double Gain = 0;
};

/// All that can become of a bet, and the rolls that it takes.
class Outcomes {
 public:
  double Rolls = 1;
  double Waiting = 0;  // of these rolls, those between the first throw and the decision

  void Add(double chance, double gain) { list_[count_++] = {chance, gain}; }

  Advantage Figures(bool countZeros) const;

 private:
  template <class Term>
  double Sum(Term term) const {
    double sum = 0;
    for (unsigned i = 0; i < count_; ++i) sum += term(list_[i]);
    return sum;
  }

  std::array<Outcome, kThrowKinds> list_{};
  unsigned count_ = 0;
};

double Square(double value) { return value * value; }

/// Halves go away from zero, also those that binary fractions miss by a hair.
double RoundedToSix(double value) {
  constexpr double kMillion = 1e6;
  constexpr double kHair = 1e-6;
  return std::copysign(std::floor(std::abs(value) * kMillion + 0.5 + kHair) / kMillion, value) +
         0.0;
}

Advantage Outcomes::Figures(bool countZeros) const {
  const double decided = Sum([](const Outcome& o) { return o.Gain != 0 ? o.Chance : 0; });
  if (decided == 0 || Rolls == 0) return {};
  const double whole = countZeros ? 1 : decided;
  const double gain = Sum([](const Outcome& o) { return o.Chance * o.Gain; });
  const double perRoll = gain / Rolls;
  const double perDecision = gain / whole;
  const double rollSquares = Waiting * Square(perRoll) + Sum([perRoll](const Outcome& o) {
                               return o.Chance * Square(o.Gain - perRoll);
                             });
  const double decisionSquares = Sum([countZeros, perDecision](const Outcome& o) {
    return countZeros || o.Gain != 0 ? o.Chance * Square(o.Gain - perDecision) : 0;
  });
  return {RoundedToSix(perRoll), RoundedToSix(perDecision), RoundedToSix(Rolls / whole),
          RoundedToSix(std::sqrt(rollSquares / Rolls)),
          RoundedToSix(std::sqrt(decisionSquares / whole))};
}

// --- Bets that are looked at throw by throw ---

/// The throws on which a bet wins its ratio, and those on which it is lost.
struct Deciders {
  ThrowSet Wins = 0;
  ThrowSet Loses = 0;
};

constexpr Deciders NumberBeforeSeven(int number) { return {ThrowsOf(number), kSevens}; }

constexpr Deciders SevenBeforeNumber(int number) { return {kSevens, ThrowsOf(number)}; }

constexpr Deciders HardWay(int number) {
  const ThrowSet hard = ThrowOf(number / 2, number / 2);
  return {hard, (ThrowsOf(number) & ~hard) | kSevens};
}

constexpr Deciders OneRoll(ThrowSet wins) { return {wins, kAllThrows & ~wins}; }

/// Hop bets run through the throws from 1-3 on, by the lower die.
constexpr Deciders Hop(int betId) {
  int next = Hop13;
  for (int low = 1; low <= 6; ++low) {
    for (int high = low == 1 ? 3 : low; high <= 6; ++high)
      if (next++ == betId) return OneRoll(ThrowOf(low, high));
  }
  return {};
}

constexpr Deciders DecidersOf(int betId) {
  if (IsHop(betId)) return Hop(betId);
  switch (betId) {
    case Big6: return NumberBeforeSeven(6);
    case Big8: return NumberBeforeSeven(8);
    case Hard4: return HardWay(4);
    case Hard6: return HardWay(6);
    case Hard8: return HardWay(8);
    case Hard10: return HardWay(10);
    case Two: return OneRoll(ThrowsOf(2));
    case Three: return OneRoll(ThrowsOf(3));
    case Seven: return OneRoll(kSevens);
    case Eleven: return OneRoll(ThrowsOf(11));
    case Twelve: return OneRoll(ThrowsOf(12));
    case Craps: return OneRoll(ThrowsOf(2, 3, 12));
    case Over7: return OneRoll(ThrowsOf(8, 9, 10, 11, 12));
    case Under7: return OneRoll(ThrowsOf(2, 3, 4, 5, 6));
    default: break;
  }
  if (betId >= Lay4 && betId <= DontCome10Odds) return SevenBeforeNumber(NumberOfBet(betId));
  if (betId >= Come4 && betId <= Buy10) return NumberBeforeSeven(NumberOfBet(betId));
  return {};
}

constexpr auto kDeciders = [] {
  std::array<Deciders, kBetSlots> deciders{};
  for (int betId = Lay4; betId <= LastBet; ++betId)
    deciders[static_cast<unsigned>(betId)] = DecidersOf(betId);
  return deciders;
}();

Outcomes SimpleOutcomes(int betId, const Chances& chances) {
  const Deciders& deciders = kDeciders[static_cast<unsigned>(betId)];
  Outcomes outcomes;
  outcomes.Add(chances.Of(deciders.Wins), WinRatio(betId));
  outcomes.Add(chances.Of(deciders.Loses), -1);
  outcomes.Add(chances.Of(kAllThrows & ~(deciders.Wins | deciders.Loses)), 0);
  return outcomes;
}

Outcomes FieldOutcomes(const Chances& chances) {
  Outcomes outcomes;
  for (unsigned kind = 1; kind <= kThrowKinds; ++kind)
    outcomes.Add(chances.OfKind[kind], Ratio(Game.FieldPayoff[kind]));
  return outcomes;
}

/// The bet on a total that is a part of a combination bet; 0 when that has no such part.
int PartOn(int total, int betId) {
  const bool craps = total == 2 || total == 3 || total == 12;
  if (betId == CAndE) return craps ? +Craps : total == 11 ? +Eleven : 0;
  switch (total) {
    case 2: return Two;
    case 3: return Three;
    case 7: return betId == World ? +Seven : 0;
    case 11: return Eleven;
    case 12: return Twelve;
    default: return 0;
  }
}

/// One part of a combination bet wins and the others are lost. A sum of whole numbers, so that a
/// push comes out as exactly 0.
double GainOfPart(const PayoffRecord& payoff, int parts) {
  return (payoff.Win - payoff.Per * (parts - 1)) / (payoff.Per * parts);
}

Outcomes CombinationOutcomes(int betId, const Chances& chances) {
  const int parts = betId == CAndE ? 2 : betId == Horn ? 4 : 5;
  Outcomes outcomes;
  for (int total = 2; total <= 12; ++total) {
    const int part = PartOn(total, betId);
    outcomes.Add(chances.OfTotal[static_cast<unsigned>(total)],
                 part == 0 ? -1 : GainOfPart(PayoffOf(part), parts));
  }
  return outcomes;
}

// --- Line bets: a come-out, and perhaps a point ---

/// The sides of the line, and the bets by whose records they are paid.
struct Line {
  bool Pass;
  BetId ComeOut;
  BetFamily OnNumber;
};

constexpr Line kPass = {true, Come, ComeFamily};
constexpr Line kDont = {false, DontCome, DontComeFamily};

double ComeOutGain(const Line& line, int total) {
  if (!line.Pass && total == Game.BarDont) return 0;
  const bool natural = total == 7 || total == 11;
  return natural == line.Pass ? Ratio(PayoffOf(line.ComeOut)) : -1;
}

Outcomes LineOutcomes(const Line& line, const Chances& chances) {
  Outcomes outcomes;
  outcomes.Rolls = 0;
  for (const int total : {2, 3, 7, 11, 12}) {
    const double chance = chances.OfTotal[static_cast<unsigned>(total)];
    outcomes.Add(chance, ComeOutGain(line, total));
    outcomes.Rolls += chance;
  }
  for (const int point : kPointNumbers) {
    const double made = chances.OfTotal[static_cast<unsigned>(point)];
    const double either = made + chances.OfTotal[7];
    if (either == 0) continue;
    const double wins = line.Pass ? made : chances.OfTotal[7];
    const double loses = line.Pass ? chances.OfTotal[7] : made;
    outcomes.Add(made * wins / either, Ratio(PayoffOf(BetOnNumber(line.OnNumber, point))));
    outcomes.Add(made * loses / either, -1);
    outcomes.Rolls += made * (1 + 1 / either);
    outcomes.Waiting += made / either;
  }
  return outcomes;
}

Outcomes OutcomesOf(int betId, const Chances& chances) {
  switch (betId) {
    case PassLine:
    case Come: return LineOutcomes(kPass, chances);
    case DontPass:
    case DontCome: return LineOutcomes(kDont, chances);
    case PassLineOdds: return SimpleOutcomes(BetOnNumber(ComeOddsFamily, Game.Point), chances);
    case DontPassOdds: return SimpleOutcomes(BetOnNumber(DontComeOddsFamily, Game.Point), chances);
    case Field: return FieldOutcomes(chances);
    case CAndE:
    case Horn:
    case World: return CombinationOutcomes(betId, chances);
    default: return SimpleOutcomes(betId, chances);
  }
}

}  // namespace

bool HasAdvantage(int betId) {
  const bool needsPoint = betId == PassLineOdds || betId == DontPassOdds;
  return IsBet(betId) && (!needsPoint || IsPointNumber(Game.Point));
}

Advantage FigureAdvantage(int betId, bool skewed) {
  return FigureAdvantage(betId, skewed, Game.IncludeZeroOutcomes);
}

Advantage FigureAdvantage(int betId, bool skewed, bool countZeros) {
  if (!HasAdvantage(betId)) return {};
  try {
    return OutcomesOf(betId, ChancesOf(skewed)).Figures(countZeros);
  } catch (const std::exception&) {
    ReportError("Figure Advantage");
    return {};
  }
}
