#include "batch/show_figures.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>
#include <iomanip>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "batch/failure.h"
#include "batch/merge.h"
#include "core/number_format.h"
#include "core/text.h"
#include "figures/games_view.h"

namespace {

constexpr std::string_view kNumberPattern = "#,##0.00##;-#,##0.00##;0";
constexpr std::string_view kPercentPattern = "0.00%;-0.00%;0.00%";
constexpr int kLabelWidth = 22;
constexpr int kValueWidth = 26;

// --- What is shown ---

/// Everything that is known of a column of a log.
struct LogFigures {
  std::string Path;
  GamePopulation Population;
  GameChoice Choice;
  GameFigures Figures;
  GameOdds Odds;
};

std::string Lower(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
  return text;
}

/// The column of a name, capitals or not; the net result without one.
int ColumnNamed(const std::string& name) {
  if (name.empty()) return DollarsNetColumn;
  std::string names;
  for (int column = 0; column < FirstStackColumn; ++column) {
    if (Lower(GameColumnName(column)) == Lower(name)) return column;
    names += "\"" + GameColumnName(column) + "\", ";
  }
  for (int column = FirstStackColumn; column < kGameColumns; ++column)
    if (Lower(GameColumnName(column)) == Lower(name)) return column;
  throw UsageFailure("--column " + name + ": there are " + names + "\"" +
                     GameColumnName(FirstStackColumn) + "\" to \"" +
                     GameColumnName(kGameColumns - 1) + "\"");
}

LogFigures FiguresOf(const std::string& path, const BatchOptions& options) {
  OpenWholeLog(path);
  LogFigures log;
  log.Path = path;
  log.Population = LoadPopulation(path, ColumnNamed(options.Column));
  if (options.BreakPoint) log.Choice.Break = {options.BreakPoint->Low, options.BreakPoint->High};
  const std::vector<Currency>& values = log.Population.Sorted;  // all games count
  const GameHistogram histogram = MakeHistogram(values, kGraphBarWidths.front());
  log.Figures = FigureGames(log.Population, log.Choice, values, histogram);
  log.Odds = FigureOdds(log.Population, log.Choice, values, log.Figures);
  return log;
}

// --- Text ---

std::string NumberText(double value) { return FormatNumber(value, kNumberPattern); }
std::string WideText(WideCount value) { return FormatAmount(value, kNumberPattern); }
std::string ShareText(double share) { return FormatNumber(share, kPercentPattern); }

std::string RangeText(const std::optional<Interval>& interval) {
  if (!interval) return "-";
  return NumberText(interval->Low) + " to " + NumberText(interval->High);
}

/// A line of a listing: what it is, and how it is said of a log.
struct TextRow {
  std::string Label;
  std::string (*Say)(const LogFigures&);
};

std::string ClassText(const LogFigures& log, GameClass which) {
  const std::int64_t count = log.Figures.OfClass[which];
  const double share = static_cast<double>(count) /
                       static_cast<double>(std::max<std::int64_t>(log.Figures.Games, 1));
  return CountText(count) + "  (" + ShareText(share) + ")";
}

const TextRow kRows[] = {
    {"Games", [](const LogFigures& log) { return CountText(log.Figures.Games); }},
    {"won", [](const LogFigures& log) { return ClassText(log, WonGames); }},
    {"even", [](const LogFigures& log) { return ClassText(log, EvenGames); }},
    {"lost", [](const LogFigures& log) { return ClassText(log, LostGames); }},
    {"  95 % interval",
     [](const LogFigures& log) {
       return ShareText(log.Odds.WonInterval.Low) + " to " + ShareText(log.Odds.WonInterval.High);
     }},
    {"Mean", [](const LogFigures& log) { return NumberText(log.Figures.Mean); }},
    {"  95 % interval", [](const LogFigures& log) { return RangeText(log.Odds.MeanInterval); }},
    {"Std Dev", [](const LogFigures& log) { return NumberText(log.Figures.StdDev); }},
    {"Skew", [](const LogFigures& log) { return PlainText(log.Figures.Skew); }},
    {"Kurtosis", [](const LogFigures& log) { return PlainText(log.Figures.Kurtosis); }},
    {"Low", [](const LogFigures& log) { return WideText(log.Figures.Low.Raw()); }},
    {" 5 % point", [](const LogFigures& log) { return NumberText(log.Odds.Percentiles[0]); }},
    {"25 % point", [](const LogFigures& log) { return NumberText(log.Odds.Percentiles[1]); }},
    {"Median", [](const LogFigures& log) { return NumberText(log.Odds.Percentiles[2]); }},
    {"75 % point", [](const LogFigures& log) { return NumberText(log.Odds.Percentiles[3]); }},
    {"95 % point", [](const LogFigures& log) { return NumberText(log.Odds.Percentiles[4]); }},
    {"High", [](const LogFigures& log) { return WideText(log.Figures.High.Raw()); }},
    {"Worst ending bankroll",
     [](const LogFigures& log) { return WideText(log.Odds.WorstEnding.Raw()); }},
    {"Net $", [](const LogFigures& log) { return WideText(log.Figures.Net); }},
    {"Handle $", [](const LogFigures& log) { return WideText(log.Figures.Handle); }},
    {"Advantage %", [](const LogFigures& log) { return NumberText(log.Figures.Advantage); }},
};

/// The label of a row; those of the classes follow the break-point.
std::string LabelOf(const TextRow& row, const LogFigures& log) {
  constexpr std::array<std::string_view, kGameClasses> kClasses = {"won", "even", "lost"};
  const auto which = std::find(kClasses.begin(), kClasses.end(), row.Label);
  if (which == kClasses.end()) return row.Label;
  return ClassLabels(log.Choice.Break)[static_cast<std::size_t>(which - kClasses.begin())];
}

void PrintRows(const std::vector<LogFigures>& logs, std::ostream& out) {
  for (const TextRow& row : kRows) {
    out << std::left << std::setw(kLabelWidth) << LabelOf(row, logs.front()) << std::right;
    for (const LogFigures& log : logs) out << std::setw(kValueWidth) << row.Say(log);
    out << "\n";
  }
}

// --- JSON ---

std::string JsonText(const std::string& text) {
  std::string quoted = "\"";
  for (const char letter : text) {
    if (letter == '"' || letter == '\\') quoted += '\\';
    quoted += letter < ' ' && letter >= 0 ? ' ' : letter;
  }
  return quoted + "\"";
}

/// A number in as many digits as tell it from all others.
std::string JsonNumber(double value) {
  std::array<char, 32> digits{};
  return {digits.data(), std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr};
}

std::string JsonInterval(const std::optional<Interval>& interval) {
  if (!interval) return "null";
  return "[" + JsonNumber(interval->Low) + ", " + JsonNumber(interval->High) + "]";
}

using JsonFields = std::vector<std::pair<std::string, std::string>>;

std::string JsonObject(const JsonFields& fields, const std::string& indent) {
  std::string text = "{";
  for (const auto& [name, value] : fields)
    text += (text.size() > 1 ? ",\n  " : "\n  ") + indent + JsonText(name) + ": " + value;
  return text + "\n" + indent + "}";
}

JsonFields JsonOf(const LogFigures& log, const std::string& column) {
  const GameFigures& figures = log.Figures;
  const GameOdds& odds = log.Odds;
  const auto wide = [](WideCount value) { return FormatAmount(value, "0.####;-0.####;0"); };
  JsonFields fields = {
      {"file", JsonText(log.Path)},
      {"column", JsonText(column)},
      {"break_point",
       "[" + PlainText(log.Choice.Break.Low) + ", " + PlainText(log.Choice.Break.High) + "]"},
      {"games", std::to_string(figures.Games)},
      {"won", std::to_string(figures.OfClass[WonGames])},
      {"even", std::to_string(figures.OfClass[EvenGames])},
      {"lost", std::to_string(figures.OfClass[LostGames])},
      {"won_share", JsonNumber(odds.WonShare)},
      {"won_share_95", JsonInterval(odds.WonInterval)},
      {"mean", JsonNumber(figures.Mean)},
      {"mean_95", JsonInterval(odds.MeanInterval)},
      {"variance", JsonNumber(figures.Variance)},
      {"std_dev", JsonNumber(figures.StdDev)},
      {"skew", PlainText(figures.Skew)},
      {"kurtosis", PlainText(figures.Kurtosis)},
      {"low", PlainText(figures.Low)},
  };
  for (std::size_t i = 0; i < kShownPercentiles.size(); ++i)
    fields.emplace_back("percent_" + std::to_string(kShownPercentiles[i]),
                        JsonNumber(odds.Percentiles[i]));
  fields.insert(fields.end(), {{"high", PlainText(figures.High)},
                               {"worst_ending_bankroll", PlainText(odds.WorstEnding)},
                               {"net", wide(figures.Net)},
                               {"handle", wide(figures.Handle)},
                               {"advantage", JsonNumber(figures.Advantage)}});
  return fields;
}

}  // namespace

int ShowFigures(const BatchOptions& options, Console& console) {
  const std::string column = GameColumnName(ColumnNamed(options.Column));
  std::vector<LogFigures> logs;
  logs.push_back(FiguresOf(options.Files[0], options));
  if (options.Json) {
    console.Out << JsonObject(JsonOf(logs[0], column), "") << "\n";
    return BatchDone;
  }
  console.Out << logs[0].Path << ":  " << column << "\n\n";
  PrintRows(logs, console.Out);
  return BatchDone;
}

int ShowComparison(const BatchOptions& options, Console& console) {
  const std::string column = GameColumnName(ColumnNamed(options.Column));
  std::vector<LogFigures> logs;
  for (const std::string& path : options.Files) logs.push_back(FiguresOf(path, options));
  const MeanDifference apart = CompareMeans(logs[0].Figures, logs[1].Figures);
  std::optional<PairedDifference> paired;
  if (HaveEqualSeeds(logs[0].Path, logs[1].Path))
    paired = ComparePairs(logs[0].Population, logs[1].Population, logs[0].Choice);
  if (options.Json) {
    JsonFields fields = {{"first", JsonObject(JsonOf(logs[0], column), "  ")},
                         {"second", JsonObject(JsonOf(logs[1], column), "  ")},
                         {"mean_difference", JsonNumber(apart.Difference)},
                         {"mean_difference_95", JsonInterval(apart.Of)},
                         {"same_dice", paired ? "true" : "false"}};
    if (paired) fields.emplace_back("paired_difference_95", JsonInterval(paired->Of));
    console.Out << JsonObject(fields, "") << "\n";
    return BatchDone;
  }
  console.Out << "A: " << logs[0].Path << "\nB: " << logs[1].Path << "\nColumn: " << column
              << "\n\n"
              << std::setw(kLabelWidth + kValueWidth) << "A" << std::setw(kValueWidth) << "B"
              << "\n";
  PrintRows(logs, console.Out);
  console.Out << "\nMean of A less mean of B: " << NumberText(apart.Difference)
              << ", 95 % interval " << RangeText(apart.Of) << "\n";
  if (paired)
    console.Out << "Game by game on the same dice: 95 % interval " << RangeText(paired->Of) << "\n";
  else
    console.Out << "The details beside the logs don't tell that they were played on the same "
                   "dice.\n";
  return BatchDone;
}
