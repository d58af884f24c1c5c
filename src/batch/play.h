// The commands that play games.
#pragma once

#include "batch/console.h"
#include "batch/options.h"

/// The games of a shard: `First` to `End` - 1. All shards together are the population, in order.
struct GameRange {
  std::int64_t First = 0;
  std::int64_t End = 0;
};
GameRange RangeOf(std::int64_t games, const Shard& shard);

/// Plays a population, or a part of it, into a log. Returns the status of the program: 128 and the
/// signal's number when a signal ended it. Throws what ends a command.
int PlayPopulation(const BatchOptions& options, Console& console);

/// Writes the dice of one game to a tape.
int WriteTape(const BatchOptions& options, Console& console);
