#include "batch/play.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cinttypes>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <iterator>
#include <optional>
#include <string>
#include <vector>

#include "batch/details.h"
#include "batch/failure.h"
#include "batch/interval_watch.h"
#include "batch/jobs.h"
#include "batch/population.h"
#include "batch/run_file.h"
#include "core/record_file.h"
#include "core/text.h"

namespace {

namespace fs = std::filesystem;

// --- Signals ---

volatile std::sig_atomic_t endingSignal = 0;

void NoteSignal(int signal) { endingSignal = signal; }

/// Ctrl-C and the end of a job are noted, while it lives.
class NotedSignals {
 public:
  NotedSignals() {
    endingSignal = 0;
    for (std::size_t i = 0; i < kSignals.size(); ++i) {
      struct sigaction note {};
      note.sa_handler = NoteSignal;
      ::sigaction(kSignals[i], &note, &former_[i]);
    }
  }
  ~NotedSignals() {
    for (std::size_t i = 0; i < kSignals.size(); ++i)
      ::sigaction(kSignals[i], &former_[i], nullptr);
  }
  NotedSignals(const NotedSignals&) = delete;
  NotedSignals& operator=(const NotedSignals&) = delete;

 private:
  static constexpr std::array<int, 3> kSignals = {SIGINT, SIGTERM, SIGHUP};
  std::array<struct sigaction, kSignals.size()> former_{};
};

// --- The population ---

/// What is written must not be what is read, nor each other.
void RefuseOwnSources(const BatchOptions& options) {
  const auto same = [](const std::string& a, const std::string& b) {
    std::error_code none;
    return !a.empty() && (a == b || fs::equivalent(PathOf(a), PathOf(b), none));
  };
  for (const std::string* written : {&options.Out, &options.Details})
    for (const std::string* read : {&options.Script, &options.GameFile})
      if (same(*written, *read)) throw BatchFailure(*written + " is read, and can't be written to");
  if (same(options.Out, options.Details))
    throw BatchFailure("--out and --details name the same file");
}

PopulationPlan PlanOf(const BatchOptions& options) {
  return {options.Script, options.GameFile, options.Rolls, options.Seed, options.Rng};
}

void TellNotes(const Population& population, Console& console) {
  for (const std::string& note : population.Notes()) console.Err << kBatchName << note << "\n";
}

/// Plays a stretch of games in a process of its own.
GameBlock PlayBlock(Population& population, const BatchOptions& options, std::int64_t first,
                    std::int64_t count) {
  GameBlock block = {first, count, {}, {}, 0, {}};
  block.Games.reserve(static_cast<std::size_t>(count));
  for (std::int64_t index = first; index < first + count; ++index) {
    const std::optional<PlayedGame> game = population.Play(index);
    if (!game) continue;
    block.Games.push_back(game->Record);
    if (!options.Details.empty()) block.Details += DetailsLine(options.Seed, game->Details);
    if (game->Fault.empty()) continue;
    if (++block.Faults == 1)
      block.FirstFault = "game " + std::to_string(index) + ": " + game->Fault;
  }
  return block;
}

/// What tells a command from others, as the run file keeps it.
std::vector<std::string> CommandLines(const BatchOptions& options, const Population& population) {
  std::array<char, 17> print{};
  std::snprintf(print.data(), print.size(), "%016" PRIx64, population.Fingerprint());
  return {"seed " + std::to_string(options.Seed),
          "games " + std::to_string(options.Games),
          "rolls " + std::to_string(options.Rolls),
          "shard " + std::to_string(options.Part.Part) + "/" + std::to_string(options.Part.Parts),
          "rng " + std::to_string(options.Rng),
          "until within " + PlainText(Currency::FromDouble(options.UntilWithin)),
          "details " + std::string(options.Details.empty() ? "no" : "yes"),
          "script and game " + std::string(print.data())};
}

ExistingOutput WhatOfExisting(const BatchOptions& options) {
  if (options.Resume) return ExistingOutput::Resume;
  return options.Force ? ExistingOutput::Overwrite : ExistingOutput::Refuse;
}

// --- A run ---

/// The games of a run on their way from the workers to the disk.
class Run {
 public:
  Run(const BatchOptions& options, Console& console, RunOutput& output, GameRange range)
      : console_(console),
        output_(output),
        range_(range),
        progress_(console),
        watch_(options.UntilWithin),
        watching_(options.UntilWithin > 0) {
    if (watching_ && output_.Games() > 0) WatchLog(options.Out);
  }

  void Play(Workers& workers) {
    const auto take = [this](GameBlock& block) { return Take(block); };
    if (!enough_) workers.Play(output_.NextGame(), range_.End, take, [this] { return LookUp(); });
    progress_.Clear();
    TellFaults();
    if (endingSignal != 0)
      output_.Save();
    else
      output_.Complete();
  }

  void TellWatch() const {
    if (!watching_) return;
    console_.Out << CountText(watch_.Games()) << " games: the mean result is "
                 << PlainText(Currency::FromDouble(watch_.Mean())) << ", its 95 % interval "
                 << PlainText(Currency::FromDouble(watch_.Width())) << " wide"
                 << (enough_ ? "" : ": that's all of --games") << "\n";
  }

 private:
  /// A run that goes on has seen the games of the log already.
  void WatchLog(const std::string& log) {
    const int column = DollarsNetColumn;
    const auto columns = ReadGameColumns(log, {&column, 1});
    for (const Currency result : columns.front()) enough_ = watch_.Take(result.ToDouble());
  }

  bool Take(GameBlock& block) {
    if (watching_) CutToEnough(block);
    output_.Add(block);
    faults_ += block.Faults;
    if (firstFault_.empty()) firstFault_ = block.FirstFault;
    return !enough_;
  }

  /// Games behind the one that makes the interval narrow enough are let go.
  void CutToEnough(GameBlock& block) {
    for (std::size_t i = 0; i < block.Games.size() && !enough_; ++i) {
      enough_ = watch_.Take(block.Games[i][DollarsNetColumn].ToDouble());
      if (!enough_) continue;
      block.Games.resize(i + 1);
      std::size_t end = 0;
      for (std::size_t line = 0; line <= i && !block.Details.empty(); ++line)
        end = block.Details.find('\n', end) + 1;
      block.Details.resize(end);
    }
  }

  bool LookUp() {
    if (++looks_ % kLooksPerSave == 0) output_.Save();
    const std::int64_t all = watching_ ? watch_.GamesNeeded(range_.End) : range_.End - range_.First;
    progress_.Show(output_.NextGame() - range_.First, all);
    return endingSignal == 0;
  }

  void TellFaults() const {
    if (faults_ == 0) return;
    console_.Err << kBatchName << CountText(faults_) << (faults_ == 1 ? " game" : " games")
                 << " had a fault, the first of them " << firstFault_ << "\n";
  }

  static constexpr int kLooksPerSave = 5;  // of which there are five a second

  Console& console_;
  RunOutput& output_;
  GameRange range_;
  ProgressLine progress_;
  IntervalWatch watch_;
  bool watching_ = false;
  bool enough_ = false;
  int looks_ = 0;
  std::int64_t faults_ = 0;
  std::string firstFault_;
};

void TellUnwritten(std::int64_t played, std::int64_t written, Console& console) {
  if (played == written) return;
  console.Err << kBatchName << CountText(played - written) << " of " << CountText(played)
              << " games ended before their first roll and aren't in the log\n";
}

}  // namespace

GameRange RangeOf(std::int64_t games, const Shard& shard) {
  __extension__ using Wide = __int128;
  const auto edge = [&](std::int64_t part) {
    return static_cast<std::int64_t>(static_cast<Wide>(games) * part / shard.Parts);
  };
  return {edge(shard.Part), edge(shard.Part + 1)};
}

int PlayPopulation(const BatchOptions& options, Console& console) {
  RefuseOwnSources(options);
  const RunPaths paths = {options.Out, options.Details};
  if (WhatOfExisting(options) == ExistingOutput::Refuse) RefuseExisting(paths);
  Population population(PlanOf(options));
  TellNotes(population, console);
  const GameRange range = RangeOf(options.Games > 0 ? options.Games : kMostGames, options.Part);
  console.Out.flush();
  console.Err.flush();
  const pid_t self = ::getpid();
  population.OnTurn = [self] {
    if (::getppid() != self) ::_exit(1);  // in a worker whose program is gone
  };
  Workers workers(options.Jobs > 0 ? options.Jobs : AvailableCores(),
                  [&](std::int64_t first, std::int64_t count) {
                    return PlayBlock(population, options, first, count);
                  });
  const NotedSignals noted;
  RunOutput output(paths, CommandLines(options, population), range.First, WhatOfExisting(options));
  if (output.WasComplete()) {
    console.Err << kBatchName << options.Out << " is complete: " << CountText(output.Games())
                << " games\n";
    return BatchDone;
  }
  Run run(options, console, output, range);
  run.Play(workers);
  if (endingSignal != 0) {
    console.Err << kBatchName << "ended with " << CountText(output.Games()) << " games in "
                << options.Out << "; --resume goes on\n";
    constexpr int kBySignal = 128;
    return kBySignal + endingSignal;
  }
  run.TellWatch();
  if (options.UntilWithin == 0)
    TellUnwritten(output.NextGame() - range.First, output.Games(), console);
  return BatchDone;
}

int WriteTape(const BatchOptions& options, Console& console) {
  RefuseOwnSources(options);
  std::error_code none;
  if (fs::exists(PathOf(options.Out), none) && !options.Force)
    throw BatchFailure(options.Out + " exists; --force writes over it");
  Population population(PlanOf(options));
  TellNotes(population, console);
  const std::string scratch = options.Out + ".part";
  fs::remove(PathOf(scratch), none);
  const std::int64_t rolls = population.Record(options.Index, scratch);
  if (rolls == 0) {
    fs::remove(PathOf(scratch), none);
    throw BatchFailure("game " + std::to_string(options.Index) + " ended before its first roll");
  }
  fs::rename(PathOf(scratch), PathOf(options.Out));
  console.Out << CountText(rolls) << " rolls of game " << options.Index << " in " << options.Out
              << "\n";
  return BatchDone;
}
