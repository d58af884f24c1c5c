// What a run of the batch program has written: the log, its details, and how far it came.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "batch/jobs.h"
#include "stats/games_file.h"

/// Whether what stands in the way of a run is refused, written over or gone on with.
enum class ExistingOutput { Refuse, Overwrite, Resume };

struct RunPaths {
  std::string Log;
  std::string Details;  // empty for none
};

/// The file beside a log that tells how far an unfinished run came, and of which command. It is
/// gone once the run is complete.
std::string RunFileOf(const std::string& log);

/// Throws `BatchFailure` when there is a log, or details, that a new run would write over.
void RefuseExisting(const RunPaths& paths);

/// The files of a run. Whatever happens, log and details hold whole games from the first on: the
/// run file tells up to which game both are on disk, and a run that goes on begins there.
class RunOutput {
 public:
  /// `command` tells the command from others, a line of name and value each: only the same one goes
  /// on with a run. `first` is the first game. Throws `BatchFailure`, and as `GamesLogWriter` does.
  RunOutput(const RunPaths& paths, std::vector<std::string> command, std::int64_t first,
            ExistingOutput existing);

  /// True for a run that had been complete before.
  bool WasComplete() const { return complete_; }

  /// The next game to be played, and the games in the log; those without rolls aren't there.
  std::int64_t NextGame() const { return next_; }
  std::int64_t Games() const;

  /// Takes the block of the next games.
  void Add(const GameBlock& block);

  /// Writes to disk what was taken.
  void Save();

  /// Saves, and ends the run.
  void Complete();

 private:
  void StartAnew();
  void Begin();
  void GoOn();
  void ReadProgress(const std::vector<std::string>& lines);
  void SaveGames();
  void WriteRunFile() const;

  RunPaths paths_;
  std::vector<std::string> command_;
  bool complete_ = false;
  std::unique_ptr<GamesLogWriter> log_;
  std::int64_t next_ = 0;
  std::int64_t savedNext_ = -1;     // as the run file tells it
  std::int64_t saved_ = 0;          // games in the log
  std::int64_t detailsLength_ = 0;  // on disk
  std::vector<GameRecord> waiting_;
  std::string waitingDetails_;
};
