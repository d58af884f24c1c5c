// Which bets a throw wins and loses, and what each is paid.
#include <utility>

#include "bets/decide_bet.h"
#include "bets/vig.h"
#include "support/table_fixture.h"

namespace {

// What a throw does to a bet of 60, told by the rules of craps and not by the program's table: the
// net of a decided bet, or one of two codes that no bet nets.
constexpr int kStake = 60;  // every ratio at its default pays it in whole dollars
constexpr int kLost = -kStake, kStands = 1, kMoves = 2;

struct Throw {
  int Die1, Die2, Point, Bar;  // the point when it is thrown

  int Total() const { return Die1 + Die2; }
  bool IsCraps() const { return Total() == 2 || Total() == 3 || Total() == 12; }
};

using ByNumber = std::array<int, 3>;  // on 4 and 10, on 5 and 9, on 6 and 8
constexpr ByNumber kTake = {120, 90, 72}, kLay = {30, 40, 50}, kPlace = {108, 84, 70};
int Pays(const ByNumber& by, int number) { return by[number < 7 ? number - 4 : 10 - number]; }

/// A bet that waits for its number or for a 7.
int OnNumber(const Throw& t, int number, bool numberWins, int pays) {
  if (t.Total() != number && t.Total() != 7) return kStands;
  return (t.Total() == number) == numberWins ? pays : kLost;
}

/// A flat bet on its come-out; `onNumber` is what a point number does to it.
int OnComeOut(const Throw& t, bool dont, int onNumber) {
  if (t.Total() == 7 || t.Total() == 11) return dont ? kLost : 60;
  if (dont && t.Total() == t.Bar) return kStands;
  if (t.IsCraps()) return dont ? 60 : kLost;
  return onNumber;
}

int HardWay(const Throw& t, int number, int pays) {
  if (t.Total() == number && t.Die1 == t.Die2) return pays;
  return t.Total() == number || t.Total() == 7 ? kLost : kStands;
}

int OneRoll(bool wins, int pays) { return wins ? pays : kLost; }

/// The dice of a Hop bet stand in its name.
int ForHop(const Throw& t, int betId) {
  const std::string_view name = kBetNames[betId];
  const int low = name[4] - '0', high = name[6] - '0';
  const bool wins = std::minmax(t.Die1, t.Die2) == std::pair<const int&, const int&>(low, high);
  return OneRoll(wins, (low == high ? 30 : 15) * 60);
}

/// Lay 4 to Buy 10: seven families of six.
int ForFamily(const Throw& t, int betId) {
  const int number = kPointNumbers[(betId - 1) % 6], family = (betId - 1) / 6;
  const int lay = Pays(kLay, number), take = Pays(kTake, number);
  const std::array<int, 7> pays = {lay, 60, lay, 60, take, Pays(kPlace, number), take};
  return OnNumber(t, number, family >= 3, pays[family]);
}

int Rule(const Throw& t, int betId) {
  if (betId <= Buy10) return ForFamily(t, betId);
  if (IsHop(betId)) return ForHop(t, betId);
  const int total = t.Total();
  const bool point = t.Point != 0;
  const bool horn = t.IsCraps() || total == 11;
  const int hornRatio = total == 2 || total == 12 ? 30 : 15;
  switch (betId) {
    case PassLine: return point ? OnNumber(t, t.Point, true, 60) : OnComeOut(t, false, kStands);
    case PassLineOdds: return point ? OnNumber(t, t.Point, true, Pays(kTake, t.Point)) : kStands;
    case Come: return OnComeOut(t, false, kMoves);
    case DontPass: return point ? OnNumber(t, t.Point, false, 60) : OnComeOut(t, true, kStands);
    case DontPassOdds: return point ? OnNumber(t, t.Point, false, Pays(kLay, t.Point)) : kStands;
    case DontCome: return OnComeOut(t, true, kMoves);
    case Field: return OneRoll(total < 5 || total > 8, total == 2 || total == 12 ? 120 : 60);
    case Big6: return OnNumber(t, 6, true, 60);
    case Big8: return OnNumber(t, 8, true, 60);
    case Hard4: return HardWay(t, 4, 7 * 60);
    case Hard6: return HardWay(t, 6, 9 * 60);
    case Hard8: return HardWay(t, 8, 9 * 60);
    case Hard10: return HardWay(t, 10, 7 * 60);
    case Two: return OneRoll(total == 2, 30 * 60);
    case Three: return OneRoll(total == 3, 15 * 60);
    case Seven: return OneRoll(total == 7, 4 * 60);
    case Eleven: return OneRoll(total == 11, 15 * 60);
    case Twelve: return OneRoll(total == 12, 30 * 60);
    case Over7: return OneRoll(total > 7, 60);
    case Under7: return OneRoll(total < 7, 60);
    case Craps: return OneRoll(t.IsCraps(), 7 * 60);
    case CAndE: return OneRoll(horn, 30 * (total == 11 ? 15 : 7) - 30);
    case Horn: return OneRoll(horn, 15 * hornRatio - 45);
    default: return total == 7 ? 12 * 4 - 48 : OneRoll(horn, 12 * hornRatio - 48);  // World
  }
}

class DecideBetTest : public TableTest {
 protected:
  /// A table on which nothing is asked, trimmed or refused, and decided bets come down.
  static void QuietTable(int point) {
    LayDownDefaults();
    Game.Notify = 0;
    Game.NegBankroll = true;
    Game.AutoAdjust = AdjustManual;
    Game.MaxPlacard = Game.MaxPropPayoff = 100'000;
    Game.HandleWinningBets = WinTakeDown;
    Game.HandleLosingBets = LossNoBet;
    Game.RollTotal = 7;
    SetPoint(point);
    for (int id = 1; id <= LastBet; ++id) Game.BetWorking[id] = Working;
  }

  template <class Check>
  static void OnEveryTable(Check check) {
    for (const int bar : {2, 12})
      for (const int point : {0, 4, 5, 6, 8, 9, 10})
        for (int dice = 0; dice < 36; ++dice) {
          const int die1 = 1 + dice / 6, die2 = 1 + dice % 6;
          SCOPED_TRACE(::testing::PrintToString(std::array{die1, die2, point, bar}));
          QuietTable(point);
          Game.BarDont = bar;
          Game.BuyVigPct = Game.LayVigPct = 0;
          for (int id = 1; id <= LastBet; ++id) Game.Bets[id] = kStake;
          RefigureHeldVig();
          check({die1, die2, point, bar});
          ExpectBooksBalance();
        }
  }

  static Currency NetOfThrow(int betId, Currency stake, int die1, int die2) {
    Game.Bets[betId] = stake;
    RefigureHeldVig();
    const Currency before = Bankroll();
    Roll(die1, die2);
    return Bankroll() - before;
  }

  static Currency PhantomDecisions(int betId) { return Game.BetWagers[Phantom][betId][StatCount]; }
};

TEST_F(DecideBetTest, EveryThrowPaysEveryBetByTheRulesOfCraps) {
  OnEveryTable([](const Throw& t) {
    Roll(t.Die1, t.Die2);
    Currency bankroll = 500;
    std::array<Currency, kBetSlots> stands{};
    for (int id = 1; id <= LastBet; ++id) {
      const int fate = Rule(t, id);
      const int net = fate == kStands || fate == kMoves ? 0 : fate;
      bankroll += net;
      if (fate == kStands) stands[id] += kStake;
      if (fate == kMoves)
        stands[BetOnNumber(id == Come ? ComeFamily : DontComeFamily, t.Total())] += kStake;
      const Currency won = Game.BetWins[Actual][id][StatRollAmount];
      EXPECT_EQ(won - Game.BetLosses[Actual][id][StatRollAmount], Currency(net)) << BetName(id);
    }
    EXPECT_EQ(Bankroll(), bankroll);
    for (int id = 1; id <= LastBet; ++id) EXPECT_EQ(Bet(id), stands[id]) << BetName(id);
  });
}

TEST_F(DecideBetTest, BetsThatAreOffLoseAndWinNothing) {
  OnEveryTable([](const Throw& t) {
    for (int id = 1; id <= LastBet; ++id) Game.BetWorking[id] = CalledOff;
    Roll(t.Die1, t.Die2);
    EXPECT_EQ(Bankroll(), Currency(500));
    for (int id = 1; id <= LastBet; ++id) {
      if (id == Come || id == DontCome || IsComeOnNumber(id) || IsDontComeOnNumber(id)) continue;
      const bool returned = IsOddsBet(id) && Rule(t, id) != kStands;
      EXPECT_EQ(Bet(id), Currency(returned ? 0 : kStake)) << BetName(id);
    }
    EXPECT_EQ(PhantomDecisions(Field), Currency(0));
  });
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
  EXPECT_EQ(std::pair(Bet(Field), Game.BetOutcome[Field][1]), std::pair(Currency(10), 3));
  EXPECT_EQ(Game.BetWagers[Actual][Field][StatCount] + PhantomDecisions(Field), Currency(0));
}

TEST_F(DecideBetTest, WorldPushesOnSevenAndComesBackToThePlayer) {
  QuietTable(0);
  EXPECT_EQ(NetOfThrow(World, 10, 2, 5), Currency(0));
  EXPECT_EQ(Bet(World), Currency(0));
  EXPECT_EQ(Game.BetWagers[Actual][World][StatCount], Currency(0)) << "a push is no decision";
  EXPECT_EQ(Game.BetOutcome[World][1], 0);
}

TEST_F(DecideBetTest, CustomRatiosPayWhatTheySay) {
  // The bet, what pays it and where, the point, the dice, the stake and what it nets.
  const std::tuple<int, PayoffRecord, int, int, int, int, int, int> cases[] = {
      {Place6, {7, true, 6}, Place6, 4, 1, 5, 7, 8},  // 8.1667, down to Units
      {PassLine, {3, true, 2}, Come, 0, 5, 6, 10, 15},
      {PassLine, {2, true, 1}, Come4, 4, 1, 3, 10, 20},
      {DontPass, {1, true, 5}, DontCome, 0, 1, 2, 10, 2},
      {DontPass, {2, true, 1}, DontCome10, 10, 1, 6, 10, 20},
      {PassLineOdds, {4, true, 3}, Come4Odds + 2, 6, 3, 3, 9, 12},
      {DontPassOdds, {9, true, 10}, DontCome4Odds + 3, 8, 3, 4, 10, 9},
      {CAndE, {4, false, 1}, Craps, 0, 1, 1, 10, 15},
      {Horn, {20, true, 1}, Eleven, 0, 5, 6, 4, 17},
      {World, {5, true, 1}, Seven, 6, 1, 6, 5, 1},
      {Hop14, {17, false, 1}, Hop14, 0, 4, 1, 1, 17}};
  for (const auto& [bet, pays, record, point, die1, die2, stake, net] : cases) {
    QuietTable(point);
    Game.Payoff[record] = pays;
    EXPECT_EQ(NetOfThrow(bet, stake, die1, die2), Currency(net)) << BetName(bet);
  }
}

// --- Vig ---

TEST_F(DecideBetTest, VigIsPaidWinOrLoseUpFrontAndOnlyOnWinsOtherwise) {
  const auto check = [](int bet, int stake, bool upFront, bool win) {
    SCOPED_TRACE(::testing::Message() << BetName(bet) << " " << stake << " up front " << upFront);
    const bool buy = bet == Buy4;
    const int vig = stake % 30 == 0 ? 1 : 2;
    const Currency wagered = stake + (upFront ? vig : 0);
    const Currency won = (buy ? 2 * stake : stake / 2) - vig;
    QuietTable(6);
    Game.BuyVigUpFront = Game.LayVigUpFront = upFront;
    Put(bet, stake);
    EXPECT_EQ(Game.TotalOnTable, wagered);
    Roll(1, win == buy ? 3 : 6);
    EXPECT_EQ(Bankroll(), Currency(500) + (win ? won : -wagered));
    EXPECT_EQ(VigHeld(bet) + Game.TotalOnTable, Currency(0));
    EXPECT_EQ(Game.BetWagers[Actual][bet][StatSum], wagered);
    EXPECT_EQ((win ? Game.BetWins : Game.BetLosses)[Actual][bet][StatSum], win ? won : wagered);
  };
  // 5 %, of the stake on a Buy bet, of what it would win on a Lay bet: 1.50 is rounded down.
  for (const auto& [bet, stake] : {std::pair{Buy4, 30}, {Buy4, 31}, {Lay4, 60}, {Lay4, 62}})
    for (const bool upFront : {false, true})
      for (const bool win : {false, true}) check(bet, stake, upFront, win);
}

// --- Odds that aren't working ---

TEST_F(DecideBetTest, ComeOddsAreOffOnTheComeOutAndComeBack) {
  // Put bets, die 2 behind a 1, and the bankroll, the flat bet and its odds afterwards.
  const int rows[][5] = {
      {false, 3, 510, 0, 0}, {true, 3, 510, 10, 20}, {false, 6, 490, 0, 0}, {true, 6, 490, 0, 0}};
  for (const auto& [putBets, die2, bankroll, flat, odds] : rows) {
    QuietTable(0);
    Game.AllowPutBets = putBets;
    Game.HandleWinningBets = WinSameBet;
    Establish(Come4, 10);
    Establish(Come4Odds, 20);
    Game.BetWorking[Come4Odds] = NotWorking;
    Roll(1, die2);
    ExpectBets({{BankrollIndex, bankroll}, {Come4, flat}, {Come4Odds, odds}});
    EXPECT_EQ(Game.BetOutcome[Come4Odds][1], 0);
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

// --- Streaks and tables ---

TEST_F(DecideBetTest, StreaksCountRealDecisionsAndKeepTheOneBefore) {
  QuietTable(0);
  const int rolls[][3] = {{1, 2, 1}, {5, 5, 2}, {3, 4, -1}, {2, 3, -2}, {6, 6, 1}, {1, 5, -1}};
  for (const auto& [die1, die2, streak] : rolls) {
    const int before = Game.BetOutcome[Field][1];
    Establish(Field, 10);
    Roll(die1, die2);
    EXPECT_EQ(Game.BetOutcome[Field], (std::array{before, streak}));
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
  constexpr int kCome6 = Come4 + 2, kDontCome6 = DontCome4 + 2;
  Roll(3, 3);  // the come-out: no Come bet could have been up
  Roll(1, 5);  // no Come bet was on the 6, but one has moved there now
  EXPECT_EQ(PhantomDecisions(kCome6), Currency(0));
  Roll(2, 4);  // decides it; behind a come-out roll nobody moves
  EXPECT_EQ(PhantomDecisions(kCome6), Currency(1));
  EXPECT_EQ(PhantomDecisions(kDontCome6), Currency(1));
  EXPECT_EQ(Game.BetWins[Phantom][kCome6 + kOddsOffset][StatSum], Currency::FromRaw(12'000));
  Roll(3, 3);
  EXPECT_EQ(PhantomDecisions(kCome6), Currency(1));
  Roll(3, 4);  // the 6 of the roll before had moved one again
  EXPECT_EQ(PhantomDecisions(kCome6), Currency(2));
  EXPECT_EQ(Game.BetWins[Phantom][kDontCome6][StatCount], Currency(1));
  Roll(3, 3);  // after a 7 none stands
  EXPECT_EQ(PhantomDecisions(kCome6), Currency(2));
  QuietTable(0);
  Game.AllowPutBets = true;
  Roll(3, 3);
  EXPECT_EQ(PhantomDecisions(kCome6), Currency(1)) << "it may have been put there";
  EXPECT_EQ(PhantomDecisions(kDontCome6), Currency(0));
}

}  // namespace
