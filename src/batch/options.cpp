#include "batch/options.h"

#include <charconv>
#include <climits>
#include <cmath>
#include <set>
#include <string_view>
#include <utility>

#include "batch/failure.h"
#include "core/game_state.h"
#include "stats/games_file.h"

const char* const kBatchHelp =
    R"(Plays a betting system over many games, and tells what they came to.

kelvanor-batch play --script FILE.bet --games N --rolls M --seed S --out OUT.glg
    --game FILE.crp      house rules, dice and bankroll of a saved game
    --jobs J             processes at a time (as many as there are cores)
    --shard K/N          only part K of N equal parts; K counts from 0
    --details OUT.csv    a line a game: why it ended, deepest fall, most at risk
    --until-within X     until the 95 % interval of the mean result is X wide
    --rng R              RNG #1, #2 or #8 in place of the game's
    --resume | --force   go on with OUT.glg | play it anew
kelvanor-batch tape --script FILE.bet --rolls M --seed S --index I --out OUT.rol
    [--game FILE.crp] [--rng R] [--force]    the dice of game I of a population
kelvanor-batch merge [--force] OUT IN...     logs, or their details, in order
kelvanor-batch figures FILE.glg [--column NAME] [--break-point X[:Y]] [--json]
kelvanor-batch compare A.glg B.glg [--column NAME] [--json]
kelvanor-batch --help | --version

A game ends when the script starts a new one or stops the run, or after M rolls.
Game I of a seed has the same dice anywhere. Ctrl-C keeps what is finished.
More: man kelvanor-batch.
)";

namespace {

/// The commands that know an option, as bits.
enum Knows : unsigned {
  ByPlay = 1U << static_cast<unsigned>(BatchCommand::Play),
  ByTape = 1U << static_cast<unsigned>(BatchCommand::Tape),
  ByMerge = 1U << static_cast<unsigned>(BatchCommand::Merge),
  ByFigures = 1U << static_cast<unsigned>(BatchCommand::Figures),
  ByCompare = 1U << static_cast<unsigned>(BatchCommand::Compare),
};

[[noreturn]] void Refuse(const std::string& text) { throw UsageFailure(text); }

/// A value that is a whole number from `least` to `most`.
template <typename Number>
Number ReadNumber(std::string_view option, std::string_view text, Number least, Number most) {
  Number number = 0;
  const char* end = text.data() + text.size();
  const auto [stop, failure] = std::from_chars(text.data(), end, number);
  if (failure != std::errc() || stop != end || number < least || number > most)
    Refuse(std::string(option) + " " + std::string(text) + ": not a whole number from " +
           std::to_string(least) + " to " + std::to_string(most));
  return number;
}

Currency ReadAmount(std::string_view option, std::string_view text) {
  double amount = 0;
  const char* end = text.data() + text.size();
  const auto [stop, failure] = std::from_chars(text.data(), end, amount);
  constexpr double kMost = 9e14;
  if (failure != std::errc() || stop != end || !(std::abs(amount) < kMost))
    Refuse(std::string(option) + " " + std::string(text) + ": not a number");
  return Currency::FromDouble(amount);
}

void SetShard(BatchOptions& options, const std::string& text) {
  const std::size_t slash = text.find('/');
  if (slash == std::string::npos) Refuse("--shard " + text + ": say it as K/N, such as 0/8");
  constexpr std::int64_t kMostParts = INT32_MAX;
  const std::string_view view = text;
  options.Part.Parts =
      ReadNumber<std::int64_t>("--shard: the N of", view.substr(slash + 1), 1, kMostParts);
  options.Part.Part =
      ReadNumber<std::int64_t>("--shard: the K of", view.substr(0, slash), 0, kMostParts);
  if (options.Part.Part >= options.Part.Parts)
    Refuse("--shard " + text + ": parts count from 0 to " + std::to_string(options.Part.Parts - 1));
}

void SetRng(BatchOptions& options, const std::string& text) {
  options.Rng = ReadNumber("--rng", text, 1, static_cast<int>(kGenerators));
}

void SetBreakPoint(BatchOptions& options, const std::string& text) {
  const std::size_t colon = text.find(':');
  BreakPointOption ends;
  ends.Low = ReadAmount("--break-point", std::string_view(text).substr(0, colon));
  ends.High = colon == std::string::npos
                  ? ends.Low
                  : ReadAmount("--break-point", std::string_view(text).substr(colon + 1));
  if (ends.High < ends.Low) std::swap(ends.Low, ends.High);
  options.BreakPoint = ends;
}

void SetWidth(BatchOptions& options, const std::string& text) {
  options.UntilWithin = ReadAmount("--until-within", text).ToDouble();
  if (options.UntilWithin <= 0) Refuse("--until-within " + text + ": not a width above 0");
}

using Setter = void (*)(BatchOptions&, const std::string&);

/// An option: who knows it and needs it, and what it does with its value; without a value it sets
/// `Flag`.
struct OptionRow {
  std::string_view Name;
  unsigned KnownBy;
  unsigned NeededBy;
  Setter Set;
  bool BatchOptions::*Flag;
};

template <std::string BatchOptions::*field>
void SetText(BatchOptions& options, const std::string& text) {
  if (text.empty()) Refuse("a name is empty");
  options.*field = text;
}

constexpr std::int64_t kMostIndex = kMostGames - 1;
constexpr int kMostJobs = 4096;

const OptionRow kOptions[] = {
    {"--script", ByPlay | ByTape, ByPlay | ByTape, SetText<&BatchOptions::Script>, nullptr},
    {"--game", ByPlay | ByTape, 0, SetText<&BatchOptions::GameFile>, nullptr},
    {"--games", ByPlay | ByTape, 0,
     [](BatchOptions& options, const std::string& text) {
       options.Games = ReadNumber<std::int64_t>("--games", text, 1, kMostGames);
     },
     nullptr},
    {"--rolls", ByPlay | ByTape, ByPlay | ByTape,
     [](BatchOptions& options, const std::string& text) {
       options.Rolls = ReadNumber("--rolls", text, 1, kMaxRolls);
     },
     nullptr},
    {"--seed", ByPlay | ByTape, ByPlay | ByTape,
     [](BatchOptions& options, const std::string& text) {
       options.Seed = ReadNumber<std::uint64_t>("--seed", text, 0, UINT64_MAX);
     },
     nullptr},
    {"--shard", ByPlay, 0, SetShard, nullptr},
    {"--jobs", ByPlay, 0,
     [](BatchOptions& options, const std::string& text) {
       options.Jobs = ReadNumber("--jobs", text, 1, kMostJobs);
     },
     nullptr},
    {"--out", ByPlay | ByTape, ByPlay | ByTape, SetText<&BatchOptions::Out>, nullptr},
    {"--details", ByPlay, 0, SetText<&BatchOptions::Details>, nullptr},
    {"--until-within", ByPlay, 0, SetWidth, nullptr},
    {"--rng", ByPlay | ByTape, 0, SetRng, nullptr},
    {"--index", ByTape, ByTape,
     [](BatchOptions& options, const std::string& text) {
       options.Index = ReadNumber<std::int64_t>("--index", text, 0, kMostIndex);
     },
     nullptr},
    {"--force", ByPlay | ByTape | ByMerge, 0, nullptr, &BatchOptions::Force},
    {"--resume", ByPlay, 0, nullptr, &BatchOptions::Resume},
    {"--column", ByFigures | ByCompare, 0, SetText<&BatchOptions::Column>, nullptr},
    {"--break-point", ByFigures, 0, SetBreakPoint, nullptr},
    {"--json", ByFigures | ByCompare, 0, nullptr, &BatchOptions::Json},
};

constexpr std::pair<std::string_view, BatchCommand> kCommands[] = {
    {"--help", BatchCommand::Help},       {"-h", BatchCommand::Help},
    {"--version", BatchCommand::Version}, {"-v", BatchCommand::Version},
    {"play", BatchCommand::Play},         {"tape", BatchCommand::Tape},
    {"merge", BatchCommand::Merge},       {"figures", BatchCommand::Figures},
    {"compare", BatchCommand::Compare},
};

BatchCommand CommandOf(const std::string& word) {
  for (const auto& [name, command] : kCommands)
    if (word == name) return command;
  Refuse(word + ": not a command (play, tape, merge, figures, compare)");
}

unsigned BitOf(BatchCommand command) { return 1U << static_cast<unsigned>(command); }

const OptionRow& RowOf(std::string_view name, BatchCommand command) {
  for (const OptionRow& row : kOptions)
    if (row.Name == name && (row.KnownBy & BitOf(command)) != 0) return row;
  Refuse(std::string(name) + ": no option of this command");
}

/// Reads the option at `at`, which moves behind it and its value ("--seed 7" or "--seed=7").
void ReadOption(std::span<const std::string> arguments, std::size_t& at, BatchOptions& options,
                std::set<std::string_view>& said) {
  const std::string& word = arguments[at++];
  const std::size_t equals = word.find('=');
  const OptionRow& row = RowOf(std::string_view(word).substr(0, equals), options.Command);
  if (!said.insert(row.Name).second) Refuse(std::string(row.Name) + " is said twice");
  if (row.Set == nullptr) {
    if (equals != std::string::npos) Refuse(std::string(row.Name) + " takes no value");
    options.*row.Flag = true;
  } else if (equals != std::string::npos) {
    row.Set(options, word.substr(equals + 1));
  } else {
    if (at == arguments.size()) Refuse(std::string(row.Name) + " lacks its value");
    row.Set(options, arguments[at++]);
  }
}

void CheckNames(const BatchOptions& options) {
  const std::size_t count = options.Files.size();
  switch (options.Command) {
    case BatchCommand::Merge:
      if (count < 2) Refuse("merge needs the name of the merged file, and then those to merge");
      return;
    case BatchCommand::Figures:
      if (count != 1) Refuse("figures needs the name of one log");
      return;
    case BatchCommand::Compare:
      if (count != 2) Refuse("compare needs the names of two logs");
      return;
    default:
      if (count > 0) Refuse(options.Files.front() + ": this command takes no names alone");
  }
}

void CheckPlay(const BatchOptions& options) {
  if (options.Games == 0 && options.UntilWithin == 0)
    Refuse("say how many games, by --games or --until-within");
  if (options.Force && options.Resume) Refuse("--force and --resume exclude each other");
  if (options.UntilWithin > 0 && options.Part.Parts > 1)
    Refuse("--until-within looks at the games of a whole population: leave --shard out");
}

void Check(const BatchOptions& options, const std::set<std::string_view>& said) {
  for (const OptionRow& row : kOptions)
    if ((row.NeededBy & BitOf(options.Command)) != 0 && !said.contains(row.Name))
      Refuse(std::string(row.Name) + " is missing");
  CheckNames(options);
  if (options.Command == BatchCommand::Play) CheckPlay(options);
  if (options.Command == BatchCommand::Tape && options.Games > 0 && options.Index >= options.Games)
    Refuse("--index " + std::to_string(options.Index) + ": games count from 0 to " +
           std::to_string(options.Games - 1));
}

}  // namespace

BatchOptions ReadArguments(std::span<const std::string> arguments) {
  BatchOptions options;
  if (arguments.empty()) Refuse("say what to do: play, tape, merge, figures or compare");
  options.Command = CommandOf(arguments.front());
  std::set<std::string_view> said;
  for (std::size_t at = 1; at < arguments.size();) {
    if (arguments[at] == "--help" || arguments[at] == "-h") return {};
    if (arguments[at].starts_with("--"))
      ReadOption(arguments, at, options, said);
    else
      options.Files.push_back(arguments[at++]);
  }
  if (options.Command != BatchCommand::Help && options.Command != BatchCommand::Version)
    Check(options, said);
  return options;
}
