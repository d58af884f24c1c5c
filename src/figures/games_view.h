// The games of a log as a population: classes, figures and histogram of one of their columns.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "core/number_format.h"
#include "stats/games_file.h"

// --- The population ---

/// The games of a log, as far as the figures of one column need them. All lists but `Sorted` are in
/// the order of the log.
struct GamePopulation {
  std::vector<Currency> Values;
  std::vector<Currency> Sorted;  // the values, lowest first
  std::vector<Currency> Nets;
  std::vector<Currency> Handles;
  std::vector<Currency> Endings;  // ending bankrolls
};

/// Reads a column of a log, and what belongs to it. Throws as `GamesLogReader` does, and what
/// `show` throws.
GamePopulation LoadPopulation(const std::string& path, int column, const ShowShare& show = {});

/// The same of records in memory.
GamePopulation PopulationOf(std::span<const GameRecord> games, int column);

/// Where the values of won and lost games part: above `High` and below `Low`.
struct BreakPoint {
  Currency Low;
  Currency High;

  bool operator==(const BreakPoint&) const = default;
};

enum GameClass : int { WonGames = 0, EvenGames = 1, LostGames = 2, kGameClasses = 3 };

GameClass ClassOf(Currency value, const BreakPoint& breakPoint);

/// "Won", "Broke-even" and "Lost" at a break-point of 0, else "> 50", "-20 - 50" and "< -20".
std::array<std::string, kGameClasses> ClassLabels(const BreakPoint& breakPoint);

/// Which games count.
struct GameChoice {
  BreakPoint Break;
  std::array<bool, kGameClasses> Include = {true, true, true};

  bool Counts(Currency value) const {
    return Include[static_cast<unsigned>(ClassOf(value, Break))];
  }
};

/// The values of the games that count, lowest first.
std::vector<Currency> CountedValues(const GamePopulation& population, const GameChoice& choice);

// --- The histogram ---

inline constexpr int kHistogramWidth = 525;                          // units
inline constexpr std::array<int, 4> kGraphBarWidths = {1, 2, 4, 8};  // units a bar

/// A bar: its games, and the lowest and highest value among them; without games its edges.
struct GameBin {
  std::int64_t Count = 0;
  Currency Low;
  Currency High;
};

struct GameHistogram {
  std::vector<GameBin> Bins;
  bool BinPerValue = false;  // there are fewer different values than bars would fit
  std::int64_t Highest = 0;  // the count of the fullest bin
};

/// The histogram of values that are sorted, lowest first: the range is cut into as many equal bins
/// as fit at `barWidth` units a bar. A value on an edge belongs to the upper bin, the highest to
/// the last. With fewer different values than bins, a bin for each value.
GameHistogram MakeHistogram(std::span<const Currency> sorted, int barWidth);

/// The bin of a value that lies within the range of a histogram: where to draw it.
double PlaceInHistogram(const GameHistogram& histogram, double value);

/// What is said of a bar, such as "-20 to -16:  34 games  (3.4%)".
std::string BinText(const GameBin& bin, std::int64_t games);

/// "34 games  (3.4%)" of so many.
std::string ShareOfGames(std::int64_t count, std::int64_t games);

// --- The figures ---

/// The figures of the games that count; all 0 without any. Sums are in ten-thousandths.
struct GameFigures {
  std::int64_t Games = 0;  // of the log
  std::array<std::int64_t, kGameClasses> OfClass{};
  std::int64_t Counted = 0;

  double Mean = 0;
  Currency High;
  Currency Low;
  WideCount Range = 0;
  double Variance = 0;  // of the population
  double StdDev = 0;
  Currency Skew;
  Currency Kurtosis;  // less the 3 of a normal distribution
  double Median = 0;
  bool MedianIsOfBin = false;  // its bin spans more than one value
  double Mode = 0;
  bool ModeIsTied = false;
  WideCount Net = 0;
  WideCount Handle = 0;
  double Advantage = 0;  // percent
};

GameFigures FigureGames(const GamePopulation& population, const GameChoice& choice,
                        std::span<const Currency> counted, const GameHistogram& histogram);

/// The share of values, of those that are sorted, within `distance` of `mean`, from 0 to 1.
double ShareWithin(std::span<const Currency> sorted, double mean, double distance);

// --- The second panel ---

struct Interval {
  double Low = 0;
  double High = 0;
};

inline constexpr std::array<int, 5> kShownPercentiles = {5, 25, 50, 75, 95};

struct GameOdds {
  std::array<double, kShownPercentiles.size()> Percentiles{};
  double WonShare = 0;  // of all games of the log, from 0 to 1
  Interval WonInterval;
  std::optional<Interval> MeanInterval;  // nothing below 2 games
  Currency WorstEnding;
};

/// All intervals are at 95 %.
GameOdds FigureOdds(const GamePopulation& population, const GameChoice& choice,
                    std::span<const Currency> counted, const GameFigures& figures);

/// The value below which `percent` of the sorted values lie; between two values in proportion
/// (type 7 of Hyndman and Fan).
double PercentileOf(std::span<const Currency> sorted, double percent);

/// The interval of a share of which `hits` of `tries` are known, by Wilson's score.
Interval WilsonInterval(std::int64_t hits, std::int64_t tries);

/// The interval of a mean, by the normal distribution; `variance` is the population variance of
/// `count` values.
std::optional<Interval> MeanInterval(double mean, double variance, std::int64_t count);

// --- All of it ---

struct GamesSummary {
  std::vector<Currency> Counted;
  GameHistogram Histogram;
  GameFigures Figures;
  GameOdds Odds;
};
GamesSummary SummarizeGames(const GamePopulation& population, const GameChoice& choice,
                            int barWidth);

/// A figure as it is shown: a caption and a number.
struct FigureLine {
  std::string Label;
  std::string Text;
  bool Negative = false;
};

/// The given figures, and those of the second panel, in the order of the screen.
std::vector<FigureLine> FigureLines(const GameFigures& figures);
std::vector<FigureLine> OddsLines(const GameOdds& odds);

/// "12.5 to 14", "-" where there is none.
std::string IntervalText(const std::optional<Interval>& interval);

// --- Two logs ---

/// Two populations in the same bars, which span the values of both.
struct SharedHistogram {
  GameHistogram Bars;
  std::vector<std::int64_t> First;  // games in each bar
  std::vector<std::int64_t> Second;
};
SharedHistogram ShareBars(std::span<const Currency> first, std::span<const Currency> second,
                          int barWidth);

/// The difference of two means, first less second.
struct MeanDifference {
  double Difference = 0;
  std::optional<Interval> Of;
};

/// Of two populations that have nothing to do with each other.
MeanDifference CompareMeans(const GameFigures& first, const GameFigures& second);

/// Game by game, over the games that count in both; nothing where they aren't equally many, or
/// fewer than 2 count.
struct PairedDifference : MeanDifference {
  std::int64_t Pairs = 0;
};
std::optional<PairedDifference> ComparePairs(const GamePopulation& first,
                                             const GamePopulation& second,
                                             const GameChoice& choice);

/// Where the details of the games of a log are looked for: beside it, ending in ".csv".
std::string DetailsPathOf(const std::string& log);

/// True when the details files beside two logs tell that both have the same number of games and
/// that each game has been played on the dice of its fellow: equal "seed" and "index", line by
/// line. False when a file is missing or doesn't tell.
bool HaveEqualSeeds(const std::string& first, const std::string& second);

/// What a comparison comes to, in a sentence or two.
std::string ComparisonText(const MeanDifference& difference,
                           const std::optional<PairedDifference>& pairs);

// --- Looking around ---

/// The next game (from 1) with this very value, forward or back from game `top`, around the ends
/// and `top` itself last; 0 when there is none.
std::int64_t FindGame(const std::vector<Currency>& values, Currency value, std::int64_t top,
                      bool forward);

/// Writes columns of all games of a log as CSV, with a heading line, the number of the game first.
/// Throws std::system_error, and what `show` throws; the old file stands then.
void ExportGames(const std::string& log, std::span<const int> columns, const std::string& path,
                 const ShowShare& show = {});
