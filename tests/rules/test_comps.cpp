#include "rules/comps.h"

#include "rules/advantage.h"
#include "rules/comp_bets.h"
#include "support/table_fixture.h"

namespace {

class Comps : public TableTest {
 protected:
  Comps() {
    Game.RollCount[0] = 300;  // two and a half hours at 120 rolls
  }

  static void Wagered(int bet, int count, Currency sum) {
    Game.BetWagers[Actual][bet][StatCount] = count;
    Game.BetWagers[Actual][bet][StatSum] = sum;
  }

  static std::array<std::string, kCompLines> Texts() { return CompTexts(FigureComps(CompsForTab)); }

  using Lines = std::array<std::string, kCompLines>;
};

TEST_F(Comps, GiveBackAShareOfEachBase) {
  EXPECT_EQ(Texts(), (Lines{"0", "0", "0", "0", "0", "0", "2.5"}));
  Wagered(PassLine, 40, 1'000);        // expects -14.141
  Wagered(Field, 20, 500);             // expects -27.778
  Wagered(PassLineOdds, 10, 250'000);  // doesn't count
  EXPECT_EQ(Texts(), (Lines{"60", "1,500", "25", "41.92", "62.5", "12.58", "2.5"}));
  EXPECT_EQ(CompValueText(FigureComps(CompsForSummary)), "$12.58");
  Game.BaseComps = CompsOnAction;
  EXPECT_EQ(Texts()[5], "450.00");
  Game.BaseComps = CompsOnActionAndTime;
  Game.CompRate = Currency::FromRaw(25'000);
  EXPECT_EQ(Texts()[5], "1.56");
  Wagered(Field, 0, 0);
  Wagered(Big6, 1, Currency::FromRaw(10'005'000));
  EXPECT_EQ(Texts()[2], "48.79");
}

TEST_F(Comps, NothingIsGivenToAPlayerWithTheEdge) {
  Wagered(Two, 10, 100);
  Game.Payoff[Two] = {40, true, 1};
  const CompFigures figures = FigureComps(CompsForTab);
  EXPECT_GT(figures.Vig, 0);
  EXPECT_LT(figures.Value, 0);
  EXPECT_EQ(std::tuple(CompTexts(figures)[3], CompTexts(figures)[5]), std::tuple("-13.89", "0"));
  EXPECT_EQ(CompValueText(figures), "0");
}

TEST_F(Comps, SkewedDiceCountWhereTheyAreAskedFor) {
  Wagered(Seven, 10, 100);
  Game.UseSkewedProbability = true;
  Game.ProbMatrix[1][2][6] = 20'000;  // 1-6, so that a 7 comes more often
  const double fair = FigureComps(CompsForTab).Vig;
  EXPECT_DOUBLE_EQ(fair, -16.6667);
  EXPECT_EQ(FigureComps(CompsForSummary).Vig, fair);
  EXPECT_GT(FigureComps(CompsInForce).Vig, 0);
  Game.CompsUseTrueProbs = false;
  EXPECT_GT(FigureComps(CompsForTab).Vig, 0);
  EXPECT_EQ(FigureComps(CompsForTab).Action, Currency(100));
  EXPECT_TRUE(Game.UseSkewedProbability);
}

// Every bet counts by its own bit, and the list moves the bits from C and E on.
TEST_F(Comps, AreTheSumOverTheBetsThatCount) {
  std::mt19937 random(5);
  for (int round = 0; round < 200; ++round) {
    CompBetList list{};
    for (bool& counts : list) counts = random() % 2 == 0;
    StoreCompBets(list);
    Currency bets, action;
    double vig = 0;
    for (int bet = 1; bet <= LastBet; ++bet) {
      const int count = static_cast<int>(random() % 1000);
      Wagered(bet, count, Currency(count) * static_cast<int>(random() % 50));
      const int line = bet < CAndE ? bet : bet - 1;
      if (bet == CAndE || !list[line - 1]) continue;
      bets += count;
      action += Game.BetWagers[Actual][bet][StatSum];
      vig += Game.BetWagers[Actual][bet][StatSum].ToDouble() * FigureAdvantage(bet).EVDec;
    }
    const CompFigures figures = FigureComps(CompsForTab);
    ASSERT_EQ(figures.Bets, bets);
    ASSERT_EQ(figures.Action, action);
    ASSERT_NEAR(figures.Vig, vig, 1e-6);
    ASSERT_NEAR(figures.AverageAction * bets.ToDouble(), action.ToDouble(), 1e-3);
  }
}

}  // namespace
