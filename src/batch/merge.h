// Joining the parts of a population.
#pragma once

#include <string>

#include "batch/options.h"
#include "stats/games_file.h"

/// Writes the games of the logs in `Files` behind the first, in their order, to the first, which is
/// made; names that end in ".csv" are details instead. Sources stay as they are. Throws
/// `BatchFailure` for a source that is missing, cut, damaged, unfinished, or the target itself, and
/// for a target that exists; there is none then.
int MergeFiles(const BatchOptions& options);

/// Reads the games of a log that is whole. Throws `BatchFailure` for one that is missing, is no
/// log, holds fewer games than its header counts, or belongs to a run that isn't finished.
GamesLogReader OpenWholeLog(const std::string& path);
