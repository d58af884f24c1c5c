#include "figures/games_view.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <fstream>
#include <limits>
#include <string_view>

#include "core/record_file.h"
#include "core/text.h"

namespace {

constexpr double kNormal95 = 1.959963984540054;  // standard deviations on either side
constexpr double kPercent = 100;
constexpr double kScale = Currency::kScale;

constexpr std::string_view kSharePattern = "0.00%";

/// A deviation that is typed rounds; this is less than values can differ by.
constexpr double kTolerance = 1e-7;

double Dollars(WideCount raw) { return static_cast<double>(raw) / kScale; }

WideCount RangeOf(std::span<const Currency> sorted) {
  return WideCount{sorted.back().Raw()} - sorted.front().Raw();
}

/// How many different values there are, up to `most`.
std::size_t CountDifferent(std::span<const Currency> sorted, std::size_t most) {
  std::size_t count = 0;
  for (auto at = sorted.begin(); at != sorted.end() && count < most; ++count)
    at = std::upper_bound(at, sorted.end(), *at);
  return count;
}

/// The bar of sorted values that lie side by side.
GameBin BinOf(std::span<const Currency> values) {
  return {static_cast<std::int64_t>(values.size()), values.front(), values.back()};
}

std::vector<GameBin> BinsOfValues(std::span<const Currency> sorted) {
  std::vector<GameBin> bins;
  for (auto at = sorted.begin(); at != sorted.end();) {
    const auto end = std::upper_bound(at, sorted.end(), *at);
    bins.push_back(BinOf({at, end}));
    at = end;
  }
  return bins;
}

/// The lowest value at or above edge `edge` of `bins` equal bins over a range.
Currency EdgeOf(std::span<const Currency> sorted, std::size_t edge, std::size_t bins) {
  const WideCount reach = RangeOf(sorted) * static_cast<WideCount>(edge);
  const auto count = static_cast<WideCount>(bins);
  return Currency::FromRaw(
      static_cast<std::int64_t>(sorted.front().Raw() + (reach + count - 1) / count));
}

std::vector<GameBin> EqualBins(std::span<const Currency> sorted, std::size_t count) {
  std::vector<GameBin> bins;
  bins.reserve(count);
  auto at = sorted.begin();
  for (std::size_t bin = 1; bin <= count; ++bin) {
    const Currency edge = EdgeOf(sorted, bin, count);
    const auto end = bin == count ? sorted.end() : std::lower_bound(at, sorted.end(), edge);
    bins.push_back(at == end ? GameBin{0, EdgeOf(sorted, bin - 1, count), edge} : BinOf({at, end}));
    at = end;
  }
  return bins;
}

double MiddleOf(const GameBin& bin) {
  return Dollars(WideCount{bin.Low.Raw()} + bin.High.Raw()) / 2;
}

/// The bin that holds place `place` (from 1) in sorted order.
const GameBin& BinAt(const GameHistogram& histogram, std::int64_t place) {
  std::int64_t before = 0;
  const auto found =
      std::find_if(histogram.Bins.begin(), histogram.Bins.end(),
                   [&](const GameBin& bin) { return (before += bin.Count) >= place; });
  return *found;
}

void FigureMiddle(GameFigures& figures, const GameHistogram& histogram) {
  const std::int64_t count = figures.Counted;
  const GameBin& lower = BinAt(histogram, (count + 1) / 2);
  const GameBin& upper = BinAt(histogram, count / 2 + 1);
  figures.Median = (MiddleOf(lower) + MiddleOf(upper)) / 2;
  figures.MedianIsOfBin = lower.Low != lower.High || upper.Low != upper.High;
  const auto isFullest = [&](const GameBin& bin) { return bin.Count == histogram.Highest; };
  figures.Mode = MiddleOf(*std::find_if(histogram.Bins.begin(), histogram.Bins.end(), isFullest));
  figures.ModeIsTied = std::count_if(histogram.Bins.begin(), histogram.Bins.end(), isFullest) > 1;
}

void FigureMoments(GameFigures& figures, std::span<const Currency> counted) {
  const auto count = static_cast<double>(counted.size());
  WideCount sum = 0;
  for (const Currency value : counted) sum += value.Raw();
  figures.Mean = Dollars(sum) / count;
  double squares = 0;
  for (const Currency value : counted) {
    const double off = value.ToDouble() - figures.Mean;
    squares += off * off;
  }
  figures.Variance = squares / count;
  figures.StdDev = std::sqrt(figures.Variance);
  if (figures.High == figures.Low) figures.Variance = figures.StdDev = 0;
  if (figures.StdDev == 0) return;
  // Each term has four decimals, and so has their sum.
  WideCount cubes = 0;
  WideCount fourths = 0;
  for (const Currency value : counted) {
    const double off = (value.ToDouble() - figures.Mean) / figures.StdDev;
    const double square = off * off;
    cubes += static_cast<WideCount>(std::nearbyint(square * off * kScale));
    fourths += static_cast<WideCount>(std::nearbyint(square * square * kScale));
  }
  figures.Skew = Currency::FromCount(static_cast<double>(cubes) / count);
  figures.Kurtosis = Currency::FromCount(static_cast<double>(fourths) / count) - Currency(3);
}

void FigureMoney(GameFigures& figures, const GamePopulation& population, const GameChoice& choice) {
  for (std::size_t game = 0; game < population.Values.size(); ++game) {
    const auto ofClass = static_cast<unsigned>(ClassOf(population.Values[game], choice.Break));
    ++figures.OfClass[ofClass];
    if (!choice.Include[ofClass]) continue;
    figures.Net += population.Nets[game].Raw();
    figures.Handle += population.Handles[game].Raw();
  }
  if (figures.Handle != 0)
    figures.Advantage =
        kPercent * static_cast<double>(figures.Net) / static_cast<double>(figures.Handle);
}

/// As money is shown: four decimals at most, and none where it is whole.
std::string NumberText(WideCount raw) {
  const bool fits = raw >= INT64_MIN && raw <= INT64_MAX;
  return fits ? MoneyText(Currency::FromRaw(static_cast<std::int64_t>(raw)))
              : FormatAmount(raw, kWholePattern);
}
std::string NumberText(double value) {
  return NumberText(static_cast<WideCount>(std::nearbyint(value * kScale)));
}

FigureLine Line(const std::string& label, double value) {
  return {label, NumberText(value), value < 0};
}

FigureLine LineOfSum(const std::string& label, WideCount raw) {
  return {label, NumberText(raw), raw < 0};
}

FigureLine LineOf(const std::string& label, Currency value) {
  return {label, MoneyText(value), value < 0};
}

/// How many of the sorted values lie in each bar; the bars hold all of them.
std::vector<std::int64_t> CountsIn(const GameHistogram& bars, std::span<const Currency> sorted) {
  std::vector<std::int64_t> counts;
  counts.reserve(bars.Bins.size());
  auto at = sorted.begin();
  for (const GameBin& bar : bars.Bins) {
    const auto end = bar.Count == 0 ? at : std::upper_bound(at, sorted.end(), bar.High);
    counts.push_back(end - at);
    at = end;
  }
  return counts;
}

std::optional<Interval> IntervalAround(double middle, double error) {
  return Interval{middle - kNormal95 * error, middle + kNormal95 * error};
}

/// The square of the standard error of a mean.
double ErrorSquared(double variance, std::int64_t count) {
  return variance / static_cast<double>(count - 1);
}

/// The fields of a line of a details file that tell which dice a game was played on.
class DetailsReader {
 public:
  explicit DetailsReader(const std::string& path) : file_(PathOf(path), std::ios::binary) {
    std::string heading;
    std::getline(file_, heading);
    std::size_t column = 0;
    for (std::size_t at = 0; at <= heading.size(); ++column) {
      const std::string name = FieldAt(heading, at);
      if (name == "seed") seed_ = column;
      if (name == "index") index_ = column;
    }
  }

  bool TellsDice() const { return file_.is_open() && seed_ != kNone && index_ != kNone; }

  /// Seed and index of the next game; empty at the end.
  std::string Next() {
    std::string line;
    if (!std::getline(file_, line)) return {};
    std::string seed;
    std::string index;
    std::size_t column = 0;
    for (std::size_t at = 0; at <= line.size(); ++column) {
      const std::string field = FieldAt(line, at);
      if (column == seed_) seed = field;
      if (column == index_) index = field;
    }
    return seed.empty() || index.empty() ? std::string() : seed + "," + index;
  }

 private:
  static constexpr std::size_t kNone = SIZE_MAX;

  /// The field at `at`, which moves behind it.
  static std::string FieldAt(const std::string& line, std::size_t& at) {
    const std::size_t end = std::min(line.find(',', at), line.size());
    std::string field = line.substr(at, end - at);
    if (!field.empty() && field.back() == '\r') field.pop_back();
    at = end + 1;
    return field;
  }

  std::ifstream file_;
  std::size_t seed_ = kNone;
  std::size_t index_ = kNone;
};

}  // namespace

// --- The population ---

GamePopulation LoadPopulation(const std::string& path, int column, const ShowShare& show) {
  const std::array<int, 4> columns = {column, DollarsNetColumn, HandleColumn, EndingBankrollColumn};
  auto values = ReadGameColumns(path, columns, show);
  GamePopulation population{
      std::move(values[0]), {}, std::move(values[1]), std::move(values[2]), std::move(values[3])};
  population.Sorted = population.Values;
  std::sort(population.Sorted.begin(), population.Sorted.end());
  return population;
}

GamePopulation PopulationOf(std::span<const GameRecord> games, int column) {
  GamePopulation population;
  for (const GameRecord& game : games) {
    population.Values.push_back(game[static_cast<unsigned>(column)]);
    population.Nets.push_back(game[DollarsNetColumn]);
    population.Handles.push_back(game[HandleColumn]);
    population.Endings.push_back(game[EndingBankrollColumn]);
  }
  population.Sorted = population.Values;
  std::sort(population.Sorted.begin(), population.Sorted.end());
  return population;
}

GameClass ClassOf(Currency value, const BreakPoint& breakPoint) {
  if (value > breakPoint.High) return WonGames;
  return value < breakPoint.Low ? LostGames : EvenGames;
}

std::array<std::string, kGameClasses> ClassLabels(const BreakPoint& breakPoint) {
  if (breakPoint == BreakPoint()) return {"Won", "Broke-even", "Lost"};
  const std::string low = MoneyText(breakPoint.Low);
  const std::string high = MoneyText(breakPoint.High);
  return {"> " + high, low == high ? low : low + " - " + high, "< " + low};
}

std::vector<Currency> CountedValues(const GamePopulation& population, const GameChoice& choice) {
  const auto& sorted = population.Sorted;
  const auto even = std::lower_bound(sorted.begin(), sorted.end(), choice.Break.Low);
  const auto won = std::upper_bound(even, sorted.end(), choice.Break.High);
  std::vector<Currency> counted;
  counted.reserve(sorted.size());
  if (choice.Include[LostGames]) counted.insert(counted.end(), sorted.begin(), even);
  if (choice.Include[EvenGames]) counted.insert(counted.end(), even, won);
  if (choice.Include[WonGames]) counted.insert(counted.end(), won, sorted.end());
  return counted;
}

// --- The histogram ---

GameHistogram MakeHistogram(std::span<const Currency> sorted, int barWidth) {
  GameHistogram histogram;
  if (sorted.empty()) return histogram;
  const auto most = static_cast<std::size_t>(kHistogramWidth / std::max(barWidth, 1));
  histogram.BinPerValue = CountDifferent(sorted, most) < most;
  histogram.Bins = histogram.BinPerValue ? BinsOfValues(sorted) : EqualBins(sorted, most);
  for (const GameBin& bin : histogram.Bins)
    histogram.Highest = std::max(histogram.Highest, bin.Count);
  return histogram;
}

double PlaceInHistogram(const GameHistogram& histogram, double value) {
  const auto& bins = histogram.Bins;
  const auto count = static_cast<double>(bins.size());
  if (bins.empty()) return 0;
  if (!histogram.BinPerValue) {
    const double low = bins.front().Low.ToDouble();
    const double range = bins.back().High.ToDouble() - low;
    return range > 0 ? std::clamp((value - low) / range, 0.0, 1.0) * count : 0;
  }
  // Between the middles of the bars of two values, in proportion.
  const auto above = std::find_if(bins.begin(), bins.end(),
                                  [&](const GameBin& bin) { return bin.Low.ToDouble() > value; });
  constexpr double kMiddle = 0.5;
  if (above == bins.begin()) return kMiddle;
  const auto below = above - 1;
  double place = static_cast<double>(below - bins.begin()) + kMiddle;
  if (above != bins.end())
    place += (value - below->Low.ToDouble()) / (above->Low - below->Low).ToDouble();
  return place;
}

std::string ShareOfGames(std::int64_t count, std::int64_t games) {
  const double share = games > 0 ? static_cast<double>(count) / static_cast<double>(games) : 0;
  return CountText(count) + (count == 1 ? " game" : " games") + "  (" +
         FormatNumber(share, kSharePattern) + ")";
}

std::string BinText(const GameBin& bin, std::int64_t games) {
  std::string text = MoneyText(bin.Low);
  if (bin.High != bin.Low) text += " to " + MoneyText(bin.High);
  return text + ":  " + ShareOfGames(bin.Count, games);
}

// --- The figures ---

GameFigures FigureGames(const GamePopulation& population, const GameChoice& choice,
                        std::span<const Currency> counted, const GameHistogram& histogram) {
  GameFigures figures;
  figures.Games = static_cast<std::int64_t>(population.Values.size());
  figures.Counted = static_cast<std::int64_t>(counted.size());
  FigureMoney(figures, population, choice);
  if (counted.empty()) return figures;
  figures.Low = counted.front();
  figures.High = counted.back();
  figures.Range = RangeOf(counted);
  FigureMoments(figures, counted);
  FigureMiddle(figures, histogram);
  return figures;
}

double ShareWithin(std::span<const Currency> sorted, double mean, double distance) {
  if (sorted.empty() || !(distance >= 0)) return 0;
  const double reach = distance + kTolerance;
  const auto from = std::partition_point(sorted.begin(), sorted.end(), [&](Currency value) {
    return value.ToDouble() < mean - reach;
  });
  const auto to = std::partition_point(
      from, sorted.end(), [&](Currency value) { return value.ToDouble() <= mean + reach; });
  return static_cast<double>(to - from) / static_cast<double>(sorted.size());
}

// --- The second panel ---

double PercentileOf(std::span<const Currency> sorted, double percent) {
  if (sorted.empty()) return 0;
  const double place = percent / kPercent * static_cast<double>(sorted.size() - 1);
  const auto below = static_cast<std::size_t>(place);
  const std::size_t above = std::min(below + 1, sorted.size() - 1);
  const double low = sorted[below].ToDouble();
  return low + (place - static_cast<double>(below)) * (sorted[above].ToDouble() - low);
}

Interval WilsonInterval(std::int64_t hits, std::int64_t tries) {
  if (tries == 0) return {0, 1};
  const auto n = static_cast<double>(tries);
  const double share = static_cast<double>(hits) / n;
  const double z2 = kNormal95 * kNormal95;
  const double middle = (share + z2 / (2 * n)) / (1 + z2 / n);
  const double reach =
      kNormal95 / (1 + z2 / n) * std::sqrt(share * (1 - share) / n + z2 / (4 * n * n));
  return {std::max(middle - reach, 0.0), std::min(middle + reach, 1.0)};
}

std::optional<Interval> MeanInterval(double mean, double variance, std::int64_t count) {
  if (count < 2) return std::nullopt;
  return IntervalAround(mean, std::sqrt(ErrorSquared(variance, count)));
}

GameOdds FigureOdds(const GamePopulation& population, const GameChoice& choice,
                    std::span<const Currency> counted, const GameFigures& figures) {
  GameOdds odds;
  for (std::size_t i = 0; i < kShownPercentiles.size(); ++i)
    odds.Percentiles[i] = PercentileOf(counted, kShownPercentiles[i]);
  const std::int64_t won = figures.OfClass[WonGames];
  if (figures.Games > 0)
    odds.WonShare = static_cast<double>(won) / static_cast<double>(figures.Games);
  odds.WonInterval = WilsonInterval(won, figures.Games);
  odds.MeanInterval = MeanInterval(figures.Mean, figures.Variance, figures.Counted);
  bool first = true;
  for (std::size_t game = 0; game < population.Values.size(); ++game) {
    if (!choice.Counts(population.Values[game])) continue;
    odds.WorstEnding =
        first ? population.Endings[game] : std::min(odds.WorstEnding, population.Endings[game]);
    first = false;
  }
  return odds;
}

// --- All of it ---

GamesSummary SummarizeGames(const GamePopulation& population, const GameChoice& choice,
                            int barWidth) {
  GamesSummary summary;
  summary.Counted = CountedValues(population, choice);
  summary.Histogram = MakeHistogram(summary.Counted, barWidth);
  summary.Figures = FigureGames(population, choice, summary.Counted, summary.Histogram);
  summary.Odds = FigureOdds(population, choice, summary.Counted, summary.Figures);
  return summary;
}

std::vector<FigureLine> FigureLines(const GameFigures& figures) {
  return {{"Games", CountText(figures.Counted)},
          Line("Mean", figures.Mean),
          Line(figures.MedianIsOfBin ? "   Median *" : "Median", figures.Median),
          Line(figures.ModeIsTied ? "Mode *" : "Mode", figures.Mode),
          LineOf("High", figures.High),
          LineOf("Low", figures.Low),
          LineOfSum("Range", figures.Range),
          Line("Variance", figures.Variance),
          Line("Std Dev", figures.StdDev),
          LineOf("Skew", figures.Skew),
          LineOf("Kurtosis", figures.Kurtosis),
          LineOfSum("Net $", figures.Net),
          LineOfSum("Handle $", figures.Handle),
          {"Advantage", NumberText(figures.Advantage) + "%", figures.Advantage < 0}};
}

std::vector<FigureLine> OddsLines(const GameOdds& odds) {
  std::vector<FigureLine> lines;
  for (std::size_t i = 0; i < kShownPercentiles.size(); ++i)
    lines.push_back(
        Line(std::to_string(kShownPercentiles[i]) + "% of games below", odds.Percentiles[i]));
  lines.push_back({"Share of games won", FormatNumber(odds.WonShare, kSharePattern)});
  lines.push_back({"   95% interval", FormatNumber(odds.WonInterval.Low, kSharePattern) + " to " +
                                          FormatNumber(odds.WonInterval.High, kSharePattern)});
  lines.push_back({"Mean, 95% interval", IntervalText(odds.MeanInterval)});
  lines.push_back(LineOf("Worst ending bankroll", odds.WorstEnding));
  return lines;
}

std::string IntervalText(const std::optional<Interval>& interval) {
  if (!interval) return "-";
  return NumberText(interval->Low) + " to " + NumberText(interval->High);
}

// --- Two logs ---

SharedHistogram ShareBars(std::span<const Currency> first, std::span<const Currency> second,
                          int barWidth) {
  std::vector<Currency> both(first.size() + second.size());
  std::merge(first.begin(), first.end(), second.begin(), second.end(), both.begin());
  SharedHistogram shared{MakeHistogram(both, barWidth), {}, {}};
  shared.First = CountsIn(shared.Bars, first);
  shared.Second = CountsIn(shared.Bars, second);
  return shared;
}

MeanDifference CompareMeans(const GameFigures& first, const GameFigures& second) {
  MeanDifference result{first.Mean - second.Mean, std::nullopt};
  if (first.Counted < 2 || second.Counted < 2) return result;
  result.Of =
      IntervalAround(result.Difference, std::sqrt(ErrorSquared(first.Variance, first.Counted) +
                                                  ErrorSquared(second.Variance, second.Counted)));
  return result;
}

std::optional<PairedDifference> ComparePairs(const GamePopulation& first,
                                             const GamePopulation& second,
                                             const GameChoice& choice) {
  if (first.Values.size() != second.Values.size()) return std::nullopt;
  std::vector<double> differences;
  for (std::size_t game = 0; game < first.Values.size(); ++game)
    if (choice.Counts(first.Values[game]) && choice.Counts(second.Values[game]))
      differences.push_back(
          Dollars(WideCount{first.Values[game].Raw()} - second.Values[game].Raw()));
  if (differences.size() < 2) return std::nullopt;
  const auto count = static_cast<double>(differences.size());
  PairedDifference result;
  result.Pairs = static_cast<std::int64_t>(differences.size());
  for (const double difference : differences) result.Difference += difference;
  result.Difference /= count;
  double squares = 0;
  for (const double difference : differences)
    squares += (difference - result.Difference) * (difference - result.Difference);
  result.Of = MeanInterval(result.Difference, squares / count, result.Pairs);
  return result;
}

std::string DetailsPathOf(const std::string& log) {
  return TextOfPath(PathOf(log).replace_extension(".csv"));
}

bool HaveEqualSeeds(const std::string& first, const std::string& second) {
  DetailsReader one(DetailsPathOf(first));
  DetailsReader other(DetailsPathOf(second));
  if (!one.TellsDice() || !other.TellsDice()) return false;
  const std::int64_t games = CountGames(first);
  if (games == 0 || games != CountGames(second)) return false;
  for (std::int64_t game = 0; game < games; ++game) {
    const std::string dice = one.Next();
    if (dice.empty() || dice != other.Next()) return false;
  }
  return one.Next().empty() && other.Next().empty();
}

std::string ComparisonText(const MeanDifference& difference,
                           const std::optional<PairedDifference>& pairs) {
  std::string text = "Difference of the means:  " + NumberText(difference.Difference) +
                     ",  with 95% confidence " + IntervalText(difference.Of) + ".";
  if (pairs)
    text += "  Game by game on the same dice, over " + CountText(pairs->Pairs) +
            " games:  " + NumberText(pairs->Difference) + ",  " + IntervalText(pairs->Of) + ".";
  return text;
}

// --- Looking around ---

std::int64_t FindGame(const std::vector<Currency>& values, Currency value, std::int64_t top,
                      bool forward) {
  const auto count = static_cast<std::int64_t>(values.size());
  for (std::int64_t step = 1; step <= count; ++step) {
    const std::int64_t offset = forward ? step : count - step;
    const std::int64_t game = (top - 1 + offset) % count + 1;
    if (values[static_cast<std::size_t>(game - 1)] == value) return game;
  }
  return 0;
}

void ExportGames(const std::string& log, std::span<const int> columns, const std::string& path,
                 const ShowShare& show) {
  constexpr std::int64_t kGamesAtOnce = 4096;
  const GamesLogReader reader(log);
  FileReplacement file(path);
  std::string text = "Game #";
  for (const int column : columns) text += "," + GameColumnName(column);
  text += "\r\n";
  for (std::int64_t first = 1; first <= reader.Count(); first += kGamesAtOnce) {
    std::int64_t number = first;
    for (const GameRecord& game : reader.Read(first, kGamesAtOnce)) {
      text += std::to_string(number++);
      for (const int column : columns) text += "," + PlainText(game[static_cast<unsigned>(column)]);
      text += "\r\n";
    }
    file.Write(text);
    text.clear();
    if (show) show(static_cast<double>(first) / static_cast<double>(reader.Count()));
  }
  file.Write(text);
  file.Finish();
}
