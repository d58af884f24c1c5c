// What bets are worth: figures known from the game, and a walk through throws and points that goes
// its own way.
#include "rules/advantage.h"

#include <cmath>
#include <optional>

#include "support/random_rules.h"
#include "support/table_fixture.h"

namespace {

using Real = long double;

// --- The walk ---

Real ChanceOf(int die1, int die2, bool skewed) {
  if (!skewed) return Real(1) / 36;
  const int row = die1 + die2 - 1;
  const int column = row >= 7 ? 8 - die2 : die1 + 1;
  return Game.ProbMatrix[1][column][row] / Real(100'000);
}

Real Pays(int at) { return Real(Game.Payoff[at].Win.Raw()) / Game.Payoff[at].Per.Raw(); }

/// A part of the stake wins at a record, the others are lost; in whole numbers, to find a push.
Real PaysPart(int record, int parts) {
  const std::int64_t win = Game.Payoff[record].Win.Raw();
  const std::int64_t per = Game.Payoff[record].Per.Raw();
  return Real(win - (parts - 1) * per) / (parts * per);
}

Real LayPays(int bet) {
  const Real vig = Real(Game.LayVigPct.Raw()) / 10'000 * Pays(bet);
  return Game.LayVigUpFront ? (1 + Pays(bet)) / (1 + vig) - 1 : Pays(bet) - vig;
}

Real BuyPays(int bet) {
  const Real vig = Real(Game.BuyVigPct.Raw()) / 10'000;
  if (Game.BuyVigUpFront) return (1 + Pays(bet)) / (1 + vig) - 1;
  const PayoffRecord& payoff = Game.Payoff[bet];
  const Real won = Real(payoff.Win.Raw() * 10'000) / payoff.Per.Raw();  // in ten-thousandths
  return std::nearbyint(won - Game.BuyVigPct.Raw()) / 10'000;
}

int NumberIn(int bet) { return std::array{4, 5, 6, 8, 9, 10}[(bet - 1) % 6]; }

Real Prop(bool wins, int bet) { return wins ? Pays(bet) : -1; }

/// What a throw gives a bet that isn't on the line.
Real GainOn(int bet, int die1, int die2) {
  const std::string order = "11 12 13 22 14 23 15 24 33 16 25 34 26 35 44 36 45 46 55 56 66";
  const int total = die1 + die2;
  const std::string name(kBetNames[bet]);
  const std::string dice = {char('0' + std::min(die1, die2)), char('0' + std::max(die1, die2))};
  if (bet <= 42) {
    const bool number = total == NumberIn(bet);
    if (!number && total != 7) return 0;
    if (bet <= 18) return number ? -1 : bet <= 6 ? LayPays(bet) : Pays(bet);
    return !number ? -1 : bet >= 37 ? BuyPays(bet) : Pays(bet);
  }
  if (name == "Field") {
    const PayoffRecord& record = Game.FieldPayoff[order.find(dice) / 3 + 1];
    return Real(record.Win.Raw()) / record.Per.Raw();
  }
  if (name.starts_with("Big")) return total == 7 ? -1 : total == name[4] - '0' ? Pays(bet) : 0;
  if (name.starts_with("Hard")) {
    if (total != std::stoi(name.substr(5))) return total == 7 ? -1 : 0;
    return Prop(die1 == die2, bet);
  }
  if (name.starts_with("Hop")) return Prop(dice[0] == name[4] && dice[1] == name[6], bet);
  const std::map<int, int> props = {{2, Two}, {3, Three}, {7, Seven}, {11, Eleven}, {12, Twelve}};
  const auto prop = props.find(total);
  const bool craps = total == 2 || total == 3 || total == 12;
  switch (bet) {
    case Craps: return Prop(craps, bet);
    case CAndE: return craps ? PaysPart(Craps, 2) : total == 11 ? PaysPart(Eleven, 2) : -1;
    case Horn:
    case World:
      if (prop == props.end() || (bet == Horn && total == 7)) return -1;
      return PaysPart(prop->second, bet == Horn ? 4 : 5);
    case Over7: return Prop(total > 7, bet);
    case Under7: return Prop(total < 7, bet);
    default: return Prop(prop != props.end() && prop->second == bet, bet);
  }
}

/// What a throw decides on the line; nothing when it goes on.
std::optional<Real> LineGain(bool pass, int point, int total) {
  const bool seven = total == 7;
  if (point != 0) {
    if (!seven && total != point) return {};
    if (seven == pass) return -1;
    return Pays((pass ? 15 : 3) + point - point / 7);
  }
  if (seven || total == 11) return pass ? Pays(45) : -1;
  if (total != 2 && total != 3 && total != 12) return {};
  if (pass) return -1;
  return total == Game.BarDont ? 0 : Pays(48);
}

struct Walk {
  std::vector<std::pair<Real, Real>> Ends;  // chance and gain
  Real Rolls = 0, Undecided = 0;            // rolls in all, and those of a line bet that go on

  /// Rolls with a point until an end; `weight` is the chance to be there.
  void OnPoint(bool pass, int point, Real weight, bool skewed) {
    Real ends = 0;
    for (int throws = 0; throws < 36; ++throws) {
      const int die1 = throws / 6 + 1, die2 = throws % 6 + 1;
      if (LineGain(pass, point, die1 + die2)) ends += ChanceOf(die1, die2, skewed);
    }
    if (ends == 0) return;
    Rolls += weight + weight / ends;
    Undecided += weight / ends;  // the throw that set the point, and all but the last after it
    for (int throws = 0; throws < 36; ++throws) {
      const int die1 = throws / 6 + 1, die2 = throws % 6 + 1;
      const auto gain = LineGain(pass, point, die1 + die2);
      if (gain) Ends.emplace_back(weight * ChanceOf(die1, die2, skewed) / ends, *gain);
    }
  }

  Walk(int bet, bool skewed) {
    const bool line = bet == 43 || bet == 45 || bet == 46 || bet == 48;
    const bool pass = bet == 43 || bet == 45;
    if (bet == 44 || bet == 47) bet = (bet == 44 ? 21 : 9) + Game.Point - Game.Point / 7;
    for (int die1 = 1; die1 <= 6; ++die1)
      for (int die2 = 1; die2 <= 6; ++die2) {
        const Real chance = ChanceOf(die1, die2, skewed);
        const auto gain = line ? LineGain(pass, 0, die1 + die2) : GainOn(bet, die1, die2);
        if (!gain) {
          OnPoint(pass, die1 + die2, chance, skewed);
          continue;
        }
        Ends.emplace_back(chance, *gain);
        if (line) Rolls += chance;
      }
    if (!line) Rolls = 1;
  }

  template <class Term>
  Real Sum(Term term) const {
    Real sum = 0;
    for (const auto& [chance, gain] : Ends) sum += term(chance, gain);
    return sum;
  }

  std::array<Real, 5> Figures() const {
    const Real decided = Sum([](Real p, Real g) { return g != 0 ? p : 0; });
    if (decided == 0) return {};
    const bool zeros = Game.IncludeZeroOutcomes;
    const Real whole = zeros ? 1 : decided;
    const Real won = Sum([](Real p, Real g) { return p * g; });
    const Real roll = won / Rolls, decision = won / whole;
    return {roll, decision, Rolls / whole,
            std::sqrt((Undecided * roll * roll +
                       Sum([=](Real p, Real g) { return p * (g - roll) * (g - roll); })) /
                      Rolls),
            std::sqrt(Sum([=](Real p, Real g) {
                        return zeros || g != 0 ? p * (g - decision) * (g - decision) : 0;
                      }) /
                      whole)};
  }
};

// --- Random rules ---

class RandomRules : public Chance {
 public:
  using Chance::Chance;
  void Draw() {
    LayDownDefaults();
    for (int changes = Below(4) == 0 ? 0 : 40; changes > 0; --changes) {
      PayoffRecord& record = Game.Payoff[1 + Below(LastBet)];
      record = {Currency::FromRaw(100 * (1 + Below(400))), Below(2) == 0, 1 + Below(16)};
    }
    if (Below(3) != 0) Game.Payoff[Seven] = {4, true, 1};  // World pushes on 7
    for (int changes = Below(22); changes > 0; --changes) {
      PayoffRecord& record = Game.FieldPayoff[1 + Below(21)];
      record.Per = 1 + Below(12);
      record.Win = Currency::FromRaw(100 * Below(500)) - record.Per;
    }
    for (Currency* pct : {&Game.LayVigPct, &Game.BuyVigPct})
      *pct = Currency::FromRaw(std::array{0, 100, 475, 500, 1000, 10'000}[Below(6)]);
    for (bool* rule : {&Game.LayVigUpFront, &Game.BuyVigUpFront, &Game.IncludeZeroOutcomes,
                       &Game.UseSkewedProbability})
      *rule = Below(2) == 0;
    Game.BarDont = Below(2) == 0 ? 2 : 12;
    Game.Point = std::array{4, 5, 6, 8, 9, 10}[Below(6)];
    DrawMatrix();
  }

 private:
  /// Now and then the sums are off, or totals are impossible: one, several, or all but one.
  void DrawMatrix() {
    const int most = 1 + Below(5600);
    const int impossible = Below(3) == 0 ? Below(1 << 13) : 0;
    for (int column = 2; column <= 7; ++column)
      for (int row = column - 1; row <= 13 - column; ++row) {
        const bool never = (impossible >> (row + 1) & 1) != 0 || Below(8) == 0;
        Game.ProbMatrix[1][column][row] = never ? 0 : Below(most);
      }
  }
};

TEST(Advantage, EqualsAWalkThroughThrowsAndPoints) {
  RandomRules rules(10);
  int decided = 0;
  for (int set = 0; set < 300; ++set) {
    rules.Draw();
    for (int bet = 1; bet <= LastBet; ++bet) {
      const Advantage figures = FigureAdvantage(bet);
      const std::array<double, 5> found = {figures.EVRoll, figures.EVDec, figures.RollsDec,
                                           figures.StDevRoll, figures.StDevDec};
      const std::array<Real, 5> walked = Walk(bet, Game.UseSkewedProbability).Figures();
      for (unsigned i = 0; i < found.size(); ++i) {
        // Rounded to whole millionths, and to the nearest.
        EXPECT_DOUBLE_EQ(found[i], std::round(found[i] * 1e6) / 1e6);
        ASSERT_NEAR(found[i], static_cast<double>(walked[i]), 0.5e-6 + 1e-11)
            << "set " << set << ", " << kBetNames[bet] << ", figure " << i;
      }
      if (figures.RollsDec != 0) ++decided;
    }
  }
  EXPECT_GT(decided, 300 * 70);
}

TEST(Advantage, IsRoundedToTheNearestMillionthAndHalvesAwayFromZero) {
  LayDownDefaults();
  Game.IncludeZeroOutcomes = true;
  Game.Payoff[Over7] = {{Currency::FromRaw(14'375)}, true, 1};  // 15 x 1.4375 - 21 ways are 9/16
  EXPECT_DOUBLE_EQ(FigureAdvantage(Over7).EVDec, 0.015625);
  for (unsigned kind = 1; kind <= 21; ++kind) Game.FieldPayoff[kind] = {-1, true, 128};
  EXPECT_DOUBLE_EQ(FigureAdvantage(Field).EVDec, -0.007813);  // a half goes away from zero
}

TEST(Advantage, IsNoneWhereNothingIsDecided) {
  LayDownDefaults();
  for (const int bet : {PassLineOdds, DontPassOdds}) {
    EXPECT_FALSE(HasAdvantage(bet));
    EXPECT_EQ(FigureAdvantage(bet), Advantage());
  }
  EXPECT_FALSE(HasAdvantage(0) || HasAdvantage(84));
  Game.Point = 9;
  EXPECT_TRUE(HasAdvantage(PassLineOdds));
  EXPECT_EQ(FigureAdvantage(PassLineOdds), FigureAdvantage(Come4Odds + 4));
  Game.ProbMatrix[1] = {};
  Game.ProbMatrix[1][2][1] = 100'000;  // 1-1 for ever
  for (const int bet : {+Place6, +Hard8, +Come10Odds}) {
    EXPECT_EQ(FigureAdvantage(bet, true), Advantage());
    EXPECT_NE(FigureAdvantage(bet, false), Advantage());
  }
}

}  // namespace
