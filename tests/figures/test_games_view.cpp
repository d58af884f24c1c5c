#include "figures/games_view.h"

#include "support/table_fixture.h"

namespace {

constexpr double kNear = 1e-9;

/// Games whose column of net dollars holds quarters that another program can make too.
std::vector<GameRecord> SampleGames(std::int64_t multiplier) {
  std::vector<GameRecord> games(1000);
  for (std::int64_t i = 1; i <= 1000; ++i) {
    GameRecord& game = games[i - 1];
    game[RollsColumn] = i;
    game[DollarsNetColumn] = Currency::FromRaw((i * i * multiplier % 1009 - 480) * 2500);
    game[HandleColumn] = 10;
    game[EndingBankrollColumn] = game[DollarsNetColumn] + Currency(500);
  }
  return games;
}

void ExpectInterval(const std::optional<Interval>& interval, double low, double high) {
  ASSERT_TRUE(interval.has_value());
  EXPECT_NEAR(interval->Low, low, kNear);
  EXPECT_NEAR(interval->High, high, kNear);
}

// The numbers of this test are those of Python's statistics module and decimal type.
TEST(GamesView, FiguresAreThoseOfAnotherProgram) {
  const GamePopulation games = PopulationOf(SampleGames(37), DollarsNetColumn);
  const GamesSummary all = SummarizeGames(games, {}, 1);
  const GameFigures& figures = all.Figures;
  EXPECT_NEAR(figures.Mean, 6.256, kNear);
  EXPECT_NEAR(figures.Variance, 5609.533964, 1e-8);
  EXPECT_NEAR(figures.StdDev, 74.89682212217018, kNear);
  EXPECT_EQ(figures.Skew, Currency::FromDouble(-0.0030025));
  EXPECT_EQ(figures.Kurtosis, Currency::FromDouble(-1.2116567));
  EXPECT_EQ(PlainText(figures.Low) + " " + PlainText(figures.High), "-119.75 132");
  EXPECT_EQ(FormatAmount(figures.Range, kFourDecimals), "251.75");
  EXPECT_EQ(figures.OfClass, (std::array<std::int64_t, 3>{529, 2, 469}));
  EXPECT_EQ(FormatAmount(figures.Net, kFourDecimals), "6,256.0");
  EXPECT_EQ(FormatAmount(figures.Handle, kFourDecimals), "10,000.0");
  EXPECT_NEAR(figures.Advantage, 62.56, kNear);
  EXPECT_NEAR(figures.Median, 6.25, 0.25);
  const std::array percentiles = {-111.0125, -58.5625, 6.25, 70.8125, 123.2625};
  for (std::size_t i = 0; i < percentiles.size(); ++i)
    EXPECT_NEAR(all.Odds.Percentiles[i], percentiles[i], kNear);
  EXPECT_EQ(all.Odds.WorstEnding, Currency::FromDouble(380.25));
  EXPECT_NEAR(ShareWithin(all.Counted, figures.Mean, figures.StdDev), 0.573, kNear);
  ExpectInterval(all.Odds.MeanInterval, 1.611609395186366, 10.900390604813634);
  ExpectInterval(all.Odds.WonInterval, 0.49801049370900147, 0.5597675542988364);

  const GamesSummary won = SummarizeGames(games, {{}, {true, false, false}}, 8);
  EXPECT_EQ(won.Figures.Counted, 529);
  EXPECT_NEAR(won.Figures.Mean, 67.41918714555766, kNear);
  EXPECT_EQ(won.Figures.Skew, Currency::FromDouble(-0.0115));
  EXPECT_EQ(won.Figures.Kurtosis, Currency::FromDouble(-1.2231));
  ExpectInterval(won.Odds.MeanInterval, 64.05573309883113, 70.78264119228419);
  ExpectInterval(won.Odds.WonInterval, 0.49801049370900147, 0.5597675542988364);
  EXPECT_EQ(won.Odds.WorstEnding, Currency::FromDouble(500.5));

  const GamePopulation others = PopulationOf(SampleGames(53), DollarsNetColumn);
  const MeanDifference apart = CompareMeans(figures, SummarizeGames(others, {}, 1).Figures);
  EXPECT_NEAR(apart.Difference, 0.05925, kNear);
  ExpectInterval(apart.Of, -6.320752355467312, 6.439252355467313);
  const auto pairs = ComparePairs(games, others, {});
  EXPECT_NEAR(pairs->Difference, 0.05925, kNear);
  ExpectInterval(pairs->Of, -6.43105382221834, 6.549553822218339);
}

TEST(GamesView, FewGamesDivideByNothing) {
  const GamesSummary none = SummarizeGames(PopulationOf({}, DollarsNetColumn), {}, 1);
  EXPECT_TRUE(none.Histogram.Bins.empty());
  EXPECT_EQ(none.Figures.Mean + none.Figures.StdDev + none.Figures.Median + none.Figures.Mode, 0);
  EXPECT_EQ(none.Figures.Advantage + ShareWithin({}, 0, 1) + none.Odds.WonShare, 0);
  EXPECT_FALSE(none.Odds.MeanInterval.has_value());
  const auto games = SampleGames(37);
  const auto one = SummarizeGames(PopulationOf(std::span(games).first(1), HandleColumn), {}, 1);
  EXPECT_EQ(one.Figures.Median + one.Figures.Mode + one.Figures.Mean, 30);
  EXPECT_EQ(one.Figures.Skew + one.Figures.Kurtosis, Currency(0));
  EXPECT_FALSE(one.Odds.MeanInterval.has_value());
  EXPECT_FALSE(CompareMeans(one.Figures, one.Figures).Of.has_value());
  const GamesSummary same = SummarizeGames(PopulationOf(games, HandleColumn), {}, 4);
  EXPECT_EQ(same.Figures.StdDev, 0) << "all are alike";
  EXPECT_EQ(same.Figures.Kurtosis, Currency(0));
  EXPECT_EQ(BinText(same.Histogram.Bins.at(0), 1000), "10:  1,000 games  (100.00%)");
  EXPECT_EQ(BinText({1, -5, 5}, 3), "-5 to 5:  1 game  (33.33%)");
}

TEST(GamesView, ClassesPartAtTheBreakPoint) {
  const GameChoice choice{{-20, 50}, {true, true, true}};
  EXPECT_EQ(ClassLabels({}), (std::array<std::string, 3>{"Won", "Broke-even", "Lost"}));
  EXPECT_EQ(ClassLabels(choice.Break), (std::array<std::string, 3>{"> 50", "-20 - 50", "< -20"}));
  EXPECT_EQ(ClassLabels({7, 7})[EvenGames], "7");
  const GamePopulation games = PopulationOf(SampleGames(37), DollarsNetColumn);
  for (unsigned classes = 0; classes < 8; ++classes) {
    GameChoice some = choice;
    for (unsigned one = 0; one < 3; ++one) some.Include[one] = (classes >> one & 1U) != 0;
    std::vector<Currency> counted;
    for (const Currency value : games.Values) {
      const unsigned ofClass = value > 50 ? WonGames : value < -20 ? LostGames : EvenGames;
      if (some.Include[ofClass]) counted.push_back(value);
    }
    std::sort(counted.begin(), counted.end());
    EXPECT_EQ(CountedValues(games, some), counted);
  }
}

TEST(GamesView, HistogramLawsHoldForAnyValues) {
  std::mt19937_64 random(11);
  const auto below = [&](auto limit) { return static_cast<std::int64_t>(random() % limit); };
  for (int sample = 0; sample < 1000; ++sample) {
    const auto step = std::int64_t{1} << below(sample % 50 == 0 ? 50 : 20);
    const std::uint64_t spread = (std::uint64_t{1} << below(12)) + 1;
    std::vector<Currency> values(static_cast<std::size_t>(1 + below(700)));
    for (Currency& each : values) each = Currency::FromRaw((below(spread) - below(spread)) * step);
    std::sort(values.begin(), values.end());
    std::map<Currency, std::int64_t> different;
    for (const Currency value : values) ++different[value];
    const int width = kGraphBarWidths[static_cast<std::size_t>(below(4))];
    const auto most = static_cast<std::size_t>(kHistogramWidth / width);
    const GameHistogram histogram = MakeHistogram(values, width);
    EXPECT_EQ(histogram.BinPerValue, different.size() < most);
    ASSERT_EQ(histogram.Bins.size(), std::min(different.size(), most));
    std::vector<std::int64_t> counts(histogram.Bins.size());
    const WideCount range = WideCount{values.back().Raw()} - values.front().Raw();
    for (const Currency value : values) {
      const WideCount off = WideCount{value.Raw()} - values.front().Raw();
      const auto place =
          histogram.BinPerValue
              ? std::distance(different.begin(), different.find(value))
              : static_cast<std::ptrdiff_t>(off * static_cast<WideCount>(most) / range);
      ++counts[std::min(static_cast<std::size_t>(place), counts.size() - 1)];
    }
    std::int64_t fullest = 0;
    for (std::size_t bin = 0; bin < counts.size(); ++bin) {
      ASSERT_EQ(histogram.Bins[bin].Count, counts[bin]) << sample << " bin " << bin;
      EXPECT_LE(histogram.Bins[bin].Low, histogram.Bins[bin].High);
      fullest = std::max(fullest, counts[bin]);
    }
    EXPECT_EQ(histogram.Highest, fullest);
    const GamesSummary shown = SummarizeGames({values, values, values, values, values}, {}, width);
    const GameFigures& figures = shown.Figures;
    EXPECT_EQ(figures.ModeIsTied, std::count(counts.begin(), counts.end(), fullest) > 1);
    const double middle =
        (values[(values.size() - 1) / 2].ToDouble() + values[values.size() / 2].ToDouble()) / 2;
    const double off = static_cast<double>(range) / Currency::kScale / static_cast<double>(most);
    EXPECT_NEAR(figures.Median, middle, figures.MedianIsOfBin ? off : 0);
    EXPECT_FALSE(figures.MedianIsOfBin && histogram.BinPerValue);
  }
}

TEST(GamesView, FindingGoesAroundAndEndsAtTheTop) {
  const std::vector<Currency> values = {5, 7, 5, 9, 7};
  const auto find = [&](int value, int top) {
    return std::pair(FindGame(values, value, top, true), FindGame(values, value, top, false));
  };
  using Found = std::pair<std::int64_t, std::int64_t>;
  EXPECT_EQ(std::pair(find(5, 1), find(7, 5)), std::pair(Found(3, 3), Found(2, 2)));
  EXPECT_EQ(find(5, 4), Found(1, 3));
  EXPECT_EQ(find(9, 4), Found(4, 4)) << "the top itself last";
  EXPECT_EQ(find(8, 2), Found(0, 0));
  EXPECT_EQ(FindGame({}, 1, 1, true), 0);
}

TEST(GamesView, LogsAreExportedAndToldToShareTheirDice) {
  const ScratchFolder folder("games_view");
  const auto games = SampleGames(37);
  GamesLogWriter(folder / "a.glg").Append(std::span(games).first(3));
  GamesLogWriter(folder / "b.glg").Append(std::span(games).subspan(7, 3));
  const std::array<int, 3> columns = {DollarsNetColumn, RollsColumn, FirstStackColumn + 4};
  ExportGames(folder / "b.glg", columns, folder / "b.txt");
  EXPECT_EQ(folder.Read("b.txt"),
            "Game #,$ Bets Won/Lost (Net),# Rolls,Chip-Stack #4\r\n"
            "1,-32.5,8,0\r\n2,124.75,9,0\r\n3,48.25,10,0\r\n");
  const auto alike = [&] { return HaveEqualSeeds(folder / "a.glg", folder / "b.glg"); };
  EXPECT_FALSE(alike());
  folder.Write("a.csv", "seed,index,ended\n7,0,rolls\n7,1,rolls\n7,2,stopped\n");
  EXPECT_FALSE(alike());
  folder.Write("b.csv", "ended,index,more,seed\r\na,0,1,7\r\nb,1,1,7\r\nc,2,1,7\r\n");
  EXPECT_TRUE(alike());
  for (const char* other : {"seed,index\n7,0\n7,1\n7,3\n", "seed,index\n7,0\n7,1\n",
                            "seed\n7\n7\n7\n", "seed,index\n7,0\n7,1\n7,2\n7,3\n", ""}) {
    folder.Write("b.csv", other);
    EXPECT_FALSE(alike()) << other;
  }
}

}  // namespace
