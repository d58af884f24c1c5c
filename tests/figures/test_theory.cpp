// Long play against theory: shares of events, wins and expected values, luck, and hands.
#include <cmath>

#include "autoplay/hyper_drive.h"
#include "core/number_format.h"
#include "dice/generators.h"
#include "dice/matrix.h"
#include "dice/tape_file.h"
#include "figures/luck.h"
#include "figures/summary.h"
#include "support/table_fixture.h"

namespace {

// A build that isn't made for speed throws fewer dice; the bounds narrow by themselves.
#if defined(__OPTIMIZE__) && !defined(__SANITIZE_ADDRESS__)
constexpr int kRolls = 10'000'000;
#else
constexpr int kRolls = 400'000;
#endif
constexpr double kMostErrors = 4.5;  // standard errors

class Theory : public TableTest {
 protected:
  Theory() {
    Game.Notify = 0;
    Game.ReSeed = false;
    Game.RngChoice = Rng1Mt;
  }

  static void RollOn(int rolls) {
    Game.NumAutoRolls = Game.AutoRollsLeft = rolls;
    ToggleHyperDrive();
  }

  /// Two dice, each with its own taste for the high faces: cells that sum to 100,000.
  static void LoadDice() {
    SetFairMatrix();
    int rest = 100'000;
    for (int die1 = 1; die1 <= 6; ++die1)
      for (int die2 = 1; die2 <= 6; ++die2) {
        int& cell = Cell(die1, die2);
        cell = die1 + die2 == 12 ? rest : 1700 + 130 * die1 + 110 * die2 + 40 * (die1 * die2 % 5);
        rest -= cell;
      }
    Game.UseSkewedProbability = true;
  }

  static int& Cell(int die1, int die2) {
    const int row = die1 + die2 - 1;
    const int column = row >= 7 ? 8 - die2 : die1 + 1;
    return Game.ProbMatrix[1][column][row];
  }
};

// --- Shares and expected values ---

void ExpectShare(double hits, double tries, double chance, const std::string& what) {
  const double error = std::sqrt(chance * (1 - chance) * tries);
  EXPECT_LE(std::abs(hits - chance * tries), kMostErrors * error) << what;
}

TEST_F(Theory, EventsWinsAndExpectedValuesComeOutAtTheirExactValues) {
  for (const bool skewed : {false, true})
    for (const int seed : {20'250'101, 20'250'202}) {
      NewGame(false);
      if (skewed) LoadDice();
      SeedDice(seed);
      RollOn(kRolls);
      ASSERT_EQ(Game.RollCount[0], kRolls);
      for (int event = 2; event <= 89; ++event)
        ExpectShare(Game.RollCount[event], kRolls, EventProbability(event, skewed) / 100,
                    "event " + std::to_string(event));
      for (int bet = Lay4; bet <= LastBet; ++bet) {
        BetSelection alone;
        alone.Data = BetData::PhantomWagers;
        alone.Selected[bet] = true;
        const Luck luck = FigureLuck(alone);
        EXPECT_TRUE(luck.Known && !luck.About);
        EXPECT_LE(std::abs(luck.Deviations), kMostErrors) << Game.BetNames[bet];
      }
    }
}

// --- Luck ---

TEST_F(Theory, LuckSpreadsAsAStandardNormal) {
  // One game of a bet with stakes that change on the way.
  const auto play = [](int bet, int seed) {
    NewGame(false);
    SeedDice(seed);
    for (const int stake : {30, 120}) {
      // A line bet is raised and lowered between two decisions only.
      while (Game.Point != 0) RollDice();
      Put(bet, stake - Bet(bet));
      ASSERT_EQ(Bet(bet), Currency(stake));
      RollOn(60);
    }
  };

  constexpr int kGames = 2'000;
  Game.BankrollInitAmt = 500'000;
  Game.BankrollAverageSpan = 1;
  Game.HandleWinningBets = WinSameBet;
  Game.HandleLosingBets = LossSameBet;
  for (const int bet : {+Place6, +PassLine}) {
    BetSelection alone;
    alone.Selected[bet] = true;
    double sum = 0, squares = 0;
    int worse = 0;
    for (int game = 1; game <= kGames; ++game) {
      play(bet, game);
      const Luck luck = FigureLuck(alone);
      ASSERT_TRUE(luck.Known);
      sum += luck.Deviations;
      squares += luck.Deviations * luck.Deviations;
      if (luck.Worse < 0.25) ++worse;
    }
    const double mean = sum / kGames;
    const double spread = std::sqrt(squares / kGames - mean * mean);
    EXPECT_NEAR(mean, 0, 4 / std::sqrt(kGames)) << bet;
    EXPECT_NEAR(spread, 1, 4 / std::sqrt(2.0 * kGames)) << bet;
    EXPECT_NEAR(worse, kGames * 0.25, 4 * std::sqrt(kGames * 0.25 * 0.75)) << bet;
  }
}

// --- Hands ---

/// Hands, passes and points counted from the throws of a tape alone.
struct SecondCount {
  int Hands = 0, Longest = 0, RollsOfHands = 0, MostPasses = 0, PassesOfHands = 0;
  int Rolls = 0, Passes = 0;  // of the open hand
  int ComeOuts = 0, Naturals = 0, Craps = 0, Points = 0, Made = 0;
  int Point = 0;

  void Throw(int total) {
    ++Rolls;
    if (Point == 0) return ComeOut(total);
    if (total == Point) {
      ++Made;
      ++Passes;
      Point = 0;
    } else if (total == 7) {
      EndHand();
    }
  }

  void ComeOut(int total) {
    ++ComeOuts;
    if (total == 7 || total == 11) {
      ++Naturals;
      ++Passes;
    } else if (total < 4 || total == 12) {
      ++Craps;
    } else {
      ++Points;
      Point = total;
    }
  }

  void EndHand() {
    ++Hands;
    Longest = std::max(Longest, Rolls);
    MostPasses = std::max(MostPasses, Passes);
    RollsOfHands += Rolls;
    PassesOfHands += Passes;
    Rolls = Passes = Point = 0;
  }
};

TEST_F(Theory, HandsPassesAndPointsEqualASecondCountOfTheTape) {
  constexpr int kTapeRolls = 100'000;
  const ScratchFolder folder("theory");
  Game.DataPath = folder / "";
  OpenDiceRollFile(folder / "tape.rol");
  Game.RecorderStatus = Recording;
  SeedDice(31);
  RollOn(kTapeRolls);
  SecondCount count;
  for (const char byte : folder.Read("tape.rol")) {
    const auto bits = static_cast<unsigned char>(byte);
    count.Throw((bits >> 5) + (bits >> 2 & 7));
  }
  ASSERT_EQ(count.RollsOfHands + count.Rolls, kTapeRolls);
  const auto whole = [](int number) { return FormatNumber(number, kWholePattern); };
  const auto each = [&](int n) { return FormatNumber(double(n) / count.Hands, kStandardPattern); };
  const std::pair<const char*, std::string> expected[] = {
      // clang-format off
      {"lblHandTotal", whole(count.Hands)}, {"lblHandLongestRolls", whole(count.Longest)},
      {"lblHandAverageRolls", each(count.RollsOfHands)},
      {"lblHandLongestPasses", whole(count.MostPasses)},
      {"lblHandAveragePasses", each(count.PassesOfHands)},
      {"lblHandCurrentRolls", whole(count.Rolls)}, {"lblHandCurrentPasses", whole(count.Passes)},
      {"lblNumComeoutRolls", whole(count.ComeOuts)}, {"lblPassesComeout", whole(count.Naturals)},
      {"lblDontPassesComeout", whole(count.Craps)},
      {"lblNumPointsEstablished", whole(count.Points)}, {"lblPassesPoints", whole(count.Made)},
      {"lblDontPassesPoints", whole(count.Hands)},
      {"lblTotalPasses", whole(count.Naturals + count.Made)},
      {"lblTotalDontPasses", whole(count.Craps + count.Hands)}};
  // clang-format on
  std::size_t seen = 0;
  for (const SummaryGroup& group : FigureSummary())
    for (const SummaryRow& row : group.Rows)
      for (const auto& [control, text] : expected)
        if (row.Control == control) {
          EXPECT_EQ(row.Text, text) << control;
          ++seen;
        }
  EXPECT_EQ(seen, std::size(expected));
}

}  // namespace
