// Which bets a throw wins and loses, and what each is paid.
#include <array>
#include <functional>
#include <map>

#include "core/decide_bet.h"
#include "core/text.h"
#include "core/vig_and_odds.h"
#include "rules/defaults.h"
#include "rules/presets.h"
#include "support/table_fixture.h"

namespace {

/// How a bet of 60 stands after a throw, told by the rules of craps and not by the program's table.
enum class Fate { Stands, Decided, Moves };
struct Expected {
  Fate How = Fate::Stands;
  int Net = 0;
};

constexpr int kStake = 60;  // every ratio at its default pays it in whole dollars

struct Throw {
  int Die1;
  int Die2;
  int Point;  // when it is thrown
  int Bar;

  int Total() const { return Die1 + Die2; }
  bool Pair() const { return Die1 == Die2; }
  bool ComeOut() const { return Point == 0; }
  bool IsCraps() const { return Total() == 2 || Total() == 3 || Total() == 12; }
};

Expected Won(int net) { return {Fate::Decided, net}; }
Expected Lost() { return {Fate::Decided, -kStake}; }

/// Bets on a number that wait for it or for a 7.
Expected OnNumber(const Throw& t, int number, bool numberWins, int pays) {
  if (t.Total() == number) return numberWins ? Won(pays) : Lost();
  if (t.Total() == 7) return numberWins ? Lost() : Won(pays);
  return {};
}

Expected OneRoll(bool wins, int pays) { return wins ? Won(pays) : Lost(); }

int TakeOdds(int number) {
  const std::map<int, int> pays = {{4, 120}, {5, 90}, {6, 72}, {8, 72}, {9, 90}, {10, 120}};
  return pays.at(number);
}
int LayOdds(int number) {
  const std::map<int, int> pays = {{4, 30}, {5, 40}, {6, 50}, {8, 50}, {9, 40}, {10, 30}};
  return pays.at(number);
}
int PlacePays(int number) {
  const std::map<int, int> pays = {{4, 108}, {5, 84}, {6, 70}, {8, 70}, {9, 84}, {10, 108}};
  return pays.at(number);
}

Expected ForPassLine(const Throw& t) {
  if (!t.ComeOut()) return OnNumber(t, t.Point, true, 60);
  if (t.Total() == 7 || t.Total() == 11) return Won(60);
  return t.IsCraps() ? Lost() : Expected{};
}

Expected ForDontPass(const Throw& t) {
  if (!t.ComeOut()) return OnNumber(t, t.Point, false, 60);
  if (t.Total() == 7 || t.Total() == 11) return Lost();
  if (t.Total() == t.Bar) return {};
  return t.IsCraps() ? Won(60) : Expected{};
}

Expected ForCome(const Throw& t) {
  if (t.Total() == 7 || t.Total() == 11) return Won(60);
  return t.IsCraps() ? Lost() : Expected{Fate::Moves};
}

Expected ForDontCome(const Throw& t) {
  if (t.Total() == 7 || t.Total() == 11) return Lost();
  if (t.Total() == t.Bar) return {};
  return t.IsCraps() ? Won(60) : Expected{Fate::Moves};
}

Expected ForField(const Throw& t) {
  if (t.Total() == 2 || t.Total() == 12) return Won(120);
  return OneRoll(t.Total() < 5 || t.Total() > 8, 60);
}

Expected ForHardWay(const Throw& t, int number, int pays) {
  if (t.Total() == number) return t.Pair() ? Won(pays) : Lost();
  return t.Total() == 7 ? Lost() : Expected{};
}

Expected ForCombination(const Throw& t, int betId) {
  const int total = t.Total();
  if (betId == Craps) return OneRoll(t.IsCraps(), 7 * 60);
  if (betId == CAndE) return OneRoll(t.IsCraps() || total == 11, 30 * (total == 11 ? 15 : 7) - 30);
  const bool horn = t.IsCraps() || total == 11;
  const int ratio = total == 2 || total == 12 ? 30 : 15;
  if (betId == Horn) return OneRoll(horn, 15 * ratio - 45);
  if (total == 7) return Won(12 * 4 - 48);
  return OneRoll(horn, 12 * ratio - 48);
}

/// The dice named by a Hop bet, lower first.
std::array<int, 2> HopDice(int betId) {
  const std::string_view name = kBetNames[static_cast<unsigned>(betId)];
  return {name[4] - '0', name[6] - '0'};
}

Expected ForHop(const Throw& t, int betId) {
  const auto [low, high] = HopDice(betId);
  const bool wins = (t.Die1 == low && t.Die2 == high) || (t.Die1 == high && t.Die2 == low);
  return OneRoll(wins, (low == high ? 30 : 15) * 60);
}

Expected ForFamily(const Throw& t, int betId) {
  const int number = kPointNumbers[static_cast<unsigned>((betId - 1) % 6)];
  switch ((betId - 1) / 6) {
    case 0: return OnNumber(t, number, false, LayOdds(number));
    case 1: return OnNumber(t, number, false, 60);
    case 2: return OnNumber(t, number, false, LayOdds(number));
    case 3: return OnNumber(t, number, true, 60);
    case 4: return OnNumber(t, number, true, TakeOdds(number));
    case 5: return OnNumber(t, number, true, PlacePays(number));
    default: return OnNumber(t, number, true, TakeOdds(number));
  }
}

Expected ForProposition(const Throw& t, int betId) {
  const int total = t.Total();
  switch (betId) {
    case Hard4: return ForHardWay(t, 4, 7 * 60);
    case Hard6: return ForHardWay(t, 6, 9 * 60);
    case Hard8: return ForHardWay(t, 8, 9 * 60);
    case Hard10: return ForHardWay(t, 10, 7 * 60);
    case Two: return OneRoll(total == 2, 30 * 60);
    case Three: return OneRoll(total == 3, 15 * 60);
    case Seven: return OneRoll(total == 7, 4 * 60);
    case Eleven: return OneRoll(total == 11, 15 * 60);
    case Twelve: return OneRoll(total == 12, 30 * 60);
    case Over7: return OneRoll(total > 7, 60);
    case Under7: return OneRoll(total < 7, 60);
    default: return ForCombination(t, betId);
  }
}

Expected Rule(const Throw& t, int betId) {
  if (betId <= Buy10) return ForFamily(t, betId);
  if (IsHop(betId)) return ForHop(t, betId);
  switch (betId) {
    case PassLine: return ForPassLine(t);
    case PassLineOdds:
      return t.ComeOut() ? Expected{} : OnNumber(t, t.Point, true, TakeOdds(t.Point));
    case Come: return ForCome(t);
    case DontPass: return ForDontPass(t);
    case DontPassOdds:
      return t.ComeOut() ? Expected{} : OnNumber(t, t.Point, false, LayOdds(t.Point));
    case DontCome: return ForDontCome(t);
    case Field: return ForField(t);
    case Big6: return OnNumber(t, 6, true, 60);
    case Big8: return OnNumber(t, 8, true, 60);
    default: return ForProposition(t, betId);
  }
}

template <class Visit>
void ForEachThrow(Visit visit) {
  for (int die1 = 1; die1 <= 6; ++die1)
    for (int die2 = 1; die2 <= 6; ++die2) visit(die1, die2);
}

class DecideBetTest : public TableTest {
 protected:
  /// A table on which nothing is asked, trimmed or refused, and decided bets come down.
  static void QuietTable(int point) {
    LayDownDefaults();
    Game.Notify = 0;
    Game.NegBankroll = true;
    Game.AutoAdjust = AdjustManual;
    Game.MaxPlacard = 100'000;
    Game.MaxPropPayoff = 100'000;
    Game.HandleWinningBets = WinTakeDown;
    Game.HandleLosingBets = LossNoBet;
    PointOn(point);
    for (int id = 1; id <= LastBet; ++id) Game.BetWorking[id] = Working;
  }

  /// The point as the roll that made it leaves it.
  static void PointOn(int point) {
    Game.RollTotal = point == 0 ? 7 : point;
    SetPoint(point);
  }

  static void PutUpAll(const Throw& t) {
    QuietTable(t.Point);
    Game.BarDont = t.Bar;
    Game.BuyVigPct = Game.LayVigPct = 0;
    for (int id = 1; id <= LastBet; ++id) Game.Bets[id] = kStake;
    RefigureHeldVig();
  }

  template <class Check>
  static void OnEveryTable(Check check) {
    for (const int bar : {2, 12})
      for (const int point : {0, 4, 5, 6, 8, 9, 10})
        ForEachThrow([&](int die1, int die2) {
          const Throw t{die1, die2, point, bar};
          PutUpAll(t);
          SCOPED_TRACE(::testing::Message()
                       << die1 << "-" << die2 << ", point " << point << ", bar " << bar);
          check(t);
        });
  }

  /// What a bet brings over the 36 throws, each of them on a fresh table.
  static Currency SumOver36(int betId, Currency stake, int point) {
    Currency sum;
    ForEachThrow([&](int die1, int die2) {
      QuietTable(point);
      sum += NetOfThrow(betId, stake, die1, die2);
    });
    return sum;
  }

  static Currency NetOfThrow(int betId, Currency stake, int die1, int die2) {
    Game.Bets[betId] = stake;
    RefigureHeldVig();
    const Currency before = Bankroll();
    Roll(die1, die2);
    return Bankroll() - before;
  }
};

TEST_F(DecideBetTest, EveryThrowPaysEveryBetByTheRulesOfCraps) {
  OnEveryTable([](const Throw& t) {
    Roll(t.Die1, t.Die2);
    Currency bankroll = 500;
    std::array<Currency, kBetSlots> stands{};
    for (int id = 1; id <= LastBet; ++id) {
      const Expected expected = Rule(t, id);
      bankroll += expected.Net;
      if (expected.How == Fate::Stands) stands[static_cast<unsigned>(id)] += kStake;
      if (expected.How == Fate::Moves)
        stands[static_cast<unsigned>(
            BetOnNumber(id == Come ? ComeFamily : DontComeFamily, t.Total()))] += kStake;
      EXPECT_EQ(Game.BetWins[Actual][static_cast<unsigned>(id)][StatRollAmount] -
                    Game.BetLosses[Actual][static_cast<unsigned>(id)][StatRollAmount],
                Currency(expected.Net))
          << BetName(id);
    }
    EXPECT_EQ(Bankroll(), bankroll);
    for (int id = 1; id <= LastBet; ++id)
      EXPECT_EQ(Bet(id), stands[static_cast<unsigned>(id)]) << BetName(id);
    ExpectBooksBalance();
  });
}

TEST_F(DecideBetTest, BetsThatAreOffLoseAndWinNothing) {
  OnEveryTable([](const Throw& t) {
    for (int id = 1; id <= LastBet; ++id) Game.BetWorking[id] = CalledOff;
    Roll(t.Die1, t.Die2);
    EXPECT_EQ(Bankroll(), Currency(500));
    for (int id = 1; id <= LastBet; ++id) {
      const bool odds = IsOddsBet(id);
      const bool decided = Rule(t, id).How == Fate::Decided;
      if (id == Come || id == DontCome || IsComeOnNumber(id) || IsDontComeOnNumber(id)) continue;
      EXPECT_EQ(Bet(id), Currency(odds && decided ? 0 : kStake)) << BetName(id);
    }
    EXPECT_EQ(Game.BetWagers[Phantom][Field][StatCount], Currency(0));
    ExpectBooksBalance();
  });
}

struct Edge {
  int BetId;
  int Stake;
  int Point;
  int SumOver36;
};

TEST_F(DecideBetTest, EdgesOverThe36ThrowsAreTheKnownFractions) {
  const Edge edges[] = {
      {Seven, 1, 0, -6},   {Two, 1, 0, -5},     {Three, 1, 0, -4},  {Eleven, 1, 6, -4},
      {Twelve, 1, 6, -5},  {Craps, 1, 0, -4},   {CAndE, 2, 0, -8},  {Horn, 4, 0, -18},
      {World, 5, 0, -24},  {Over7, 1, 0, -6},   {Under7, 1, 0, -6}, {Hop13, 1, 0, -4},
      {Hop55, 1, 0, -5},   {Hard4, 1, 6, -1},   {Hard6, 1, 8, -1},  {Hard8, 1, 0, -1},
      {Hard10, 1, 0, -1},  {Big6, 1, 4, -1},    {Big8, 1, 0, -1},   {Place6, 6, 4, -1},
      {Place8, 6, 4, -1},  {Place4, 5, 6, -3},  {Place5, 5, 6, -2}, {Place9, 5, 6, -2},
      {Place10, 5, 6, -3}, {Come4Odds, 1, 6, 0}};
  for (const Edge& edge : edges)
    EXPECT_EQ(SumOver36(edge.BetId, edge.Stake, edge.Point), Currency(edge.SumOver36))
        << BetName(edge.BetId);
}

TEST_F(DecideBetTest, TheFieldLosesOneThirtySixthWhenTwelvePaysTriple) {
  EXPECT_EQ(SumOver36(Field, 1, 0), Currency(-2));
  Currency sum;
  ForEachThrow([&](int die1, int die2) {
    QuietTable(0);
    Game.FieldPayoff[21].Win = 3;
    sum += NetOfThrow(Field, 1, die1, die2);
  });
  EXPECT_EQ(sum, Currency(-1));
}

/// What a line bet of 1 brings in 36 * 990 shooters: the come-out by its throws, each point by the
/// share of its deciding throws.
Currency LineBetOver36Times990(const std::function<Currency(int, int, int)>& net) {
  Currency sum;
  for (const int point : {0, 4, 5, 6, 8, 9, 10}) {
    Currency total;
    int decided = 0;
    int ways = 0;
    ForEachThrow([&](int die1, int die2) {
      const Currency result = net(point, die1, die2);
      total += result;
      decided += result != 0;
      ways += die1 + die2 == point;
    });
    sum += point == 0 ? total * 990 : total * (ways * 990 / decided);
  }
  return sum;
}

TEST_F(DecideBetTest, LineBetsHaveTheEdgesOfThePoint) {
  for (const int bar : {2, 12}) {
    const auto netOf = [bar](int betId) {
      return [bar, betId](int point, int die1, int die2) {
        QuietTable(point);
        Game.BarDont = bar;
        return NetOfThrow(betId, 1, die1, die2);
      };
    };
    EXPECT_EQ(LineBetOver36Times990(netOf(PassLine)), Currency(-504)) << "-7/495";
    EXPECT_EQ(LineBetOver36Times990(netOf(DontPass)), Currency(-486)) << "-3/220";
  }
}

/// The sums of the Field presets over the 36 throws, of a stake that every ratio pays whole.
TEST_F(DecideBetTest, FieldPresetsCarryTheEdgesOfTheBetsTheyStandFor) {
  constexpr std::array<std::array<int, 2>, kFieldPresets> kStakesAndSums = {{{1, -2},
                                                                             {1, -2},
                                                                             {165, -84},
                                                                             {165, -81},
                                                                             {6, -1},
                                                                             {5, -1},
                                                                             {21, -9},
                                                                             {41, -9},
                                                                             {1, -1},
                                                                             {4, -18},
                                                                             {5, -24},
                                                                             {1, -4},
                                                                             {2310, -4476}}};
  for (int preset = 0; preset < kFieldPresets; ++preset) {
    const auto [stake, expected] = kStakesAndSums[static_cast<unsigned>(preset)];
    Currency sum;
    ForEachThrow([&, stakeOf = stake](int die1, int die2) {
      QuietTable(0);
      SetFieldPreset(preset);
      sum += NetOfThrow(Field, stakeOf, die1, die2);
    });
    EXPECT_EQ(sum, Currency(expected)) << kFieldPresetNames[static_cast<unsigned>(preset)];
  }
}

TEST_F(DecideBetTest, WinningsRoundDownToUnits) {
  QuietTable(4);
  EXPECT_EQ(NetOfThrow(Place6, 7, 1, 5), Currency(8));
  FigurePayoff(FigureReal, Place6, FlatWins, 7);
  EXPECT_EQ(Game.GrossPayoff, Currency::FromRaw(81'667));
  EXPECT_EQ(Game.NetPayoff, Currency(8));
}

TEST_F(DecideBetTest, APartLossOfTheFieldRoundsAgainstThePlayer) {
  QuietTable(0);
  Game.FieldPayoff[12] = {-1, true, 2};
  EXPECT_EQ(NetOfThrow(Field, 5, 3, 4), Currency(-3));
}

TEST_F(DecideBetTest, AFieldRecordOfZeroIsNoDecision) {
  QuietTable(0);
  Game.FieldPayoff[3] = {0, true, 1};
  Game.BetOutcome[Field][1] = 3;
  EXPECT_EQ(NetOfThrow(Field, 10, 1, 3), Currency(0));
  EXPECT_EQ(Bet(Field), Currency(10));
  EXPECT_EQ(Game.BetOutcome[Field][1], 3);
  EXPECT_EQ(Game.BetWagers[Actual][Field][StatCount], Currency(0));
  EXPECT_EQ(Game.BetWagers[Phantom][Field][StatCount], Currency(0));
}

TEST_F(DecideBetTest, WorldPushesOnSevenAndComesBackToThePlayer) {
  QuietTable(0);
  EXPECT_EQ(NetOfThrow(World, 10, 2, 5), Currency(0));
  EXPECT_EQ(Bet(World), Currency(0));
  EXPECT_EQ(Game.BetWagers[Actual][World][StatCount], Currency(0)) << "a push is no decision";
  EXPECT_EQ(Game.BetOutcome[World][1], 0);
}

TEST_F(DecideBetTest, CustomRatiosPayWhatTheySay) {
  struct Case {
    int BetId;
    PayoffRecord Pays;
    int Record;
    int Point, Die1, Die2, Stake, Net;
  };
  const Case cases[] = {
      {PassLine, {3, true, 2}, Come, 0, 5, 6, 10, 15},
      {PassLine, {2, true, 1}, Come4, 4, 1, 3, 10, 20},
      {DontPass, {1, true, 5}, DontCome, 0, 1, 2, 10, 2},
      {DontPass, {2, true, 1}, DontCome10, 10, 1, 6, 10, 20},
      {PassLineOdds, {4, true, 3}, Come4Odds + 2, 6, 3, 3, 9, 12},
      {DontPassOdds, {9, true, 10}, DontCome4Odds + 3, 8, 3, 4, 10, 9},
      {CAndE, {4, false, 1}, Craps, 0, 1, 1, 10, 15},
      {Horn, {20, true, 1}, Eleven, 0, 5, 6, 4, 17},
      {World, {5, true, 1}, Seven, 6, 1, 6, 5, 1},
      {Big6, {7, true, 6}, Big6, 5, 2, 4, 12, 14},
      {Hop14, {17, false, 1}, Hop14, 0, 4, 1, 1, 17},
  };
  for (const Case& c : cases) {
    QuietTable(c.Point);
    Game.Payoff[c.Record] = c.Pays;
    EXPECT_EQ(NetOfThrow(c.BetId, c.Stake, c.Die1, c.Die2), Currency(c.Net)) << BetName(c.BetId);
  }
}

// --- Vig ---

struct VigCase {
  int BetId;
  int Stake;
  int Rounding;
  int Vig;
};

TEST_F(DecideBetTest, VigIsPaidWinOrLoseUpFrontAndOnlyOnWinsOtherwise) {
  // 5 %: of the stake on a Buy bet, of what it would win on a Lay bet.
  const VigCase cases[] = {
      {Buy4, 30, RoundedNormally, 1}, {Buy4, 31, RoundedNormally, 2}, {Buy4, 30, RoundedUp, 2},
      {Buy4, 31, RoundedDown, 1},     {Buy4, 5, RoundedDown, 1},      {Buy4, 20, RoundedUp, 1},
      {Lay4, 60, RoundedNormally, 1}, {Lay4, 62, RoundedNormally, 2}, {Lay4, 60, RoundedUp, 2},
      {Lay4, 62, RoundedDown, 1},     {Lay4, 4, RoundedDown, 1},      {Lay4, 40, RoundedUp, 1}};
  for (const VigCase& c : cases) {
    const bool buy = c.BetId == Buy4;
    const int pays = buy ? 2 * c.Stake : c.Stake / 2;
    for (const bool upFront : {false, true}) {
      for (const bool win : {false, true}) {
        SCOPED_TRACE(::testing::Message() << c.BetId << " " << c.Stake << " rounding " << c.Rounding
                                          << (upFront ? " up front" : " on the win"));
        QuietTable(6);
        Game.BuyVigUpFront = Game.LayVigUpFront = upFront;
        Game.RoundBuyVig = Game.RoundLayVig = c.Rounding;
        Put(c.BetId, c.Stake);
        EXPECT_EQ(Game.TotalOnTable, Currency(c.Stake + (upFront ? c.Vig : 0)));
        const int four = win == buy ? 4 : 7;
        Roll(1, four - 1);
        const int net = win ? pays - c.Vig : -c.Stake - (upFront ? c.Vig : 0);
        EXPECT_EQ(Bankroll(), Currency(500 + net));
        EXPECT_EQ(VigHeld(c.BetId), Currency(0));
        EXPECT_EQ(Game.TotalOnTable, Currency(0));
        const auto& wagers = Game.BetWagers[Actual][static_cast<unsigned>(c.BetId)];
        EXPECT_EQ(wagers[StatSum], Currency(c.Stake + (upFront ? c.Vig : 0)));
        const BetTable& table = win ? Game.BetWins : Game.BetLosses;
        EXPECT_EQ(table[Actual][static_cast<unsigned>(c.BetId)][StatSum],
                  Currency(win ? net : -net));
      }
    }
  }
}

TEST_F(DecideBetTest, ThePhantomVigComesFromTheRate) {
  QuietTable(6);
  Roll(1, 3);
  const auto& won = Game.BetWins[Phantom][Buy4];
  EXPECT_EQ(won[StatSum], Currency::FromRaw(19'500));  // 2 to 1 less 0.05
  EXPECT_EQ(Game.BetWagers[Phantom][Buy4][StatSum], Currency::FromRaw(10'500));
  EXPECT_EQ(Game.BetLosses[Phantom][Lay4][StatSum], Currency::FromRaw(10'250));
  EXPECT_EQ(Game.BetWagers[Phantom][Lay4][StatSum], Currency::FromRaw(10'250));
  Game.BuyVigUpFront = Game.LayVigUpFront = false;
  Roll(3, 4);
  EXPECT_EQ(Game.BetLosses[Phantom][Buy4][StatLast], Currency(1));
  EXPECT_EQ(Game.BetWins[Phantom][Lay4][StatLast], Currency::FromRaw(4'750));
  EXPECT_EQ(Game.BetWagers[Phantom][Lay4][StatLast], Currency(1));
}

// --- Odds that aren't working ---

TEST_F(DecideBetTest, ComeOddsAreOffOnTheComeOutAndComeBack) {
  for (const bool putBets : {false, true}) {
    QuietTable(0);
    Game.AllowPutBets = putBets;
    Game.HandleWinningBets = WinSameBet;
    Establish(Come4, 10);
    Establish(Come4Odds, 20);
    Game.BetWorking[Come4Odds] = NotWorking;
    Roll(2, 2);  // the 4 wins
    EXPECT_EQ(Bankroll(), Currency(510));
    EXPECT_EQ(Bet(Come4), Currency(putBets ? 10 : 0));
    EXPECT_EQ(Bet(Come4Odds), Currency(putBets ? 20 : 0)) << "odds stay on a put bet that stays";
    EXPECT_EQ(Game.BetWorking[Come4Odds], Working);
    EXPECT_EQ(Game.BetOutcome[Come4Odds][1], 0);
  }
}

TEST_F(DecideBetTest, ASevenOnTheComeOutTakesTheComeBetAndReturnsItsOdds) {
  for (const bool putBets : {false, true}) {
    QuietTable(0);
    Game.AllowPutBets = putBets;
    Establish(Come4, 10);
    Establish(Come4Odds, 20);
    Game.BetWorking[Come4Odds] = NotWorking;
    Roll(3, 4);
    EXPECT_EQ(Bankroll(), Currency(490));
    EXPECT_EQ(Bet(Come4Odds), Currency(0));
    EXPECT_EQ(Game.BetLosses[Actual][Come4Odds][StatCount], Currency(0));
  }
}

TEST_F(DecideBetTest, LineOddsThatAreOffLookAtTheBuyBetSixIdsDown) {
  for (const int buy5 : {0, 10}) {
    QuietTable(6);
    Game.AllowPutBets = true;
    Game.HandleWinningBets = WinSameBet;
    Establish(PassLine, 10);
    Establish(PassLineOdds, 20);
    Establish(Buy5, buy5);
    Game.BetWorking[PassLineOdds] = CalledOff;
    Roll(3, 3);
    EXPECT_EQ(Bankroll(), Currency(510));
    EXPECT_EQ(Bet(PassLineOdds), Currency(buy5 == 0 ? 0 : 20));
  }
}

TEST_F(DecideBetTest, AHopBetThatIsOffStandsWhenItsDiceCome) {
  QuietTable(0);
  Establish(Hop24, 5);
  Game.BetWorking[Hop24] = CalledOff;
  Roll(4, 2);
  Roll(1, 1);
  EXPECT_EQ(Bet(Hop24), Currency(5));
  EXPECT_EQ(Bankroll(), Currency(500));
}

// --- Streaks and tables ---

TEST_F(DecideBetTest, StreaksCountRealDecisionsAndKeepTheOneBefore) {
  QuietTable(0);
  const std::array<std::array<int, 2>, 6> throws = {
      {{1, 2}, {5, 5}, {3, 4}, {2, 3}, {6, 6}, {1, 5}}};
  const std::array<int, 6> streaks = {1, 2, -1, -2, 1, -1};
  for (unsigned i = 0; i < throws.size(); ++i) {
    const int before = Game.BetOutcome[Field][1];
    Establish(Field, 10);
    Roll(throws[i][0], throws[i][1]);
    EXPECT_EQ(Game.BetOutcome[Field][1], streaks[i]) << "roll " << i + 1;
    EXPECT_EQ(Game.BetOutcome[Field][0], before);
  }
  Roll(6, 6);
  EXPECT_EQ(Game.BetOutcome[Field][1], -1) << "no money, no streak";
}

TEST_F(DecideBetTest, TheTablesHoldCountSumExtremesAndTheLastRoll) {
  QuietTable(0);
  const auto roll = [](int stake, int die1, int die2) {
    Establish(Field, stake);
    Roll(die1, die2);
  };
  roll(10, 1, 1);
  roll(25, 1, 2);
  roll(5, 3, 4);
  using Stats = std::array<Currency, kBetStats>;
  EXPECT_EQ(Game.BetWagers[Actual][Field], (Stats{0, 3, 40, 25, 5, 5, 1, 5}));
  EXPECT_EQ(Game.BetWins[Actual][Field], (Stats{0, 2, 45, 25, 20, 25, 0, 0}));
  EXPECT_EQ(Game.BetLosses[Actual][Field], (Stats{0, 1, 5, 5, 5, 5, 1, 5}));
  EXPECT_EQ(Game.BetWagers[Phantom][Field], (Stats{0, 3, 3, 1, 1, 1, 1, 1}));
  EXPECT_EQ(Game.BetWins[Phantom][Field], (Stats{0, 2, 3, 2, 1, 1, 0, 0}));
}

/// The phantom Come bet on 6 stands only when one made before the last 6 would have moved there.
TEST_F(DecideBetTest, PhantomComeBetsOnNumbersNeedTheirMove) {
  QuietTable(0);
  Game.ComeOutWorking.fill(Working);
  constexpr int kCome6 = Come4 + 2;
  constexpr int kDontCome6 = DontCome4 + 2;
  const auto decisions = [](int betId) {
    return Game.BetWagers[Phantom][static_cast<unsigned>(betId)][StatCount];
  };
  Roll(3, 3);  // the come-out: no Come bet could have been up
  Roll(1, 5);  // no Come bet was on the 6, but one has moved there now
  EXPECT_EQ(decisions(kCome6), Currency(0));
  Roll(2, 4);  // decides it; behind a come-out roll nobody moves
  EXPECT_EQ(decisions(kCome6), Currency(1));
  EXPECT_EQ(decisions(kDontCome6), Currency(1));
  EXPECT_EQ(Game.BetWins[Phantom][kCome6 + kOddsOffset][StatSum], Currency::FromRaw(12'000));
  Roll(3, 3);
  EXPECT_EQ(decisions(kCome6), Currency(1));
  Roll(3, 4);  // the 6 of the roll before had moved one again
  EXPECT_EQ(decisions(kCome6), Currency(2));
  EXPECT_EQ(Game.BetWins[Phantom][kDontCome6][StatCount], Currency(1));
  Roll(3, 3);  // after a 7 none stands
  EXPECT_EQ(decisions(kCome6), Currency(2));
}

TEST_F(DecideBetTest, PutBetsLetThePhantomComeSideThrough) {
  QuietTable(0);
  Game.AllowPutBets = true;
  Roll(3, 3);
  EXPECT_EQ(Game.BetWagers[Phantom][Come4 + 2][StatCount], Currency(1));
  EXPECT_EQ(Game.BetWagers[Phantom][DontCome4 + 2][StatCount], Currency(0));
}

}  // namespace
