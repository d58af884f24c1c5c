// The command line of the batch program.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "core/currency.h"

enum class BatchCommand { Help, Version, Play, Tape, Merge, Figures, Compare };

/// Part `Part` of `Parts` of a population, counted from 0.
struct Shard {
  std::int64_t Part = 0;
  std::int64_t Parts = 1;
};

/// The ends of a break-point, which are equal for a single value.
struct BreakPointOption {
  Currency Low;
  Currency High;
};

/// What was said on the command line; fields of other commands hold their defaults.
struct BatchOptions {
  BatchCommand Command = BatchCommand::Help;
  std::string Script;
  std::string GameFile;
  std::int64_t Games = 0;  // 0 for not said
  int Rolls = 0;
  std::uint64_t Seed = 0;
  Shard Part;
  int Jobs = 0;  // 0 for the cores of the machine
  std::string Out;
  std::string Details;
  double UntilWithin = 0;  // dollars; 0 for not said
  int Rng = 0;             // 1 to 8, 0 for the game's
  std::int64_t Index = 0;
  bool Force = false;
  bool Resume = false;
  std::string Column;
  std::optional<BreakPointOption> BreakPoint;
  bool Json = false;
  std::vector<std::string> Files;  // of the commands that take names alone
};

/// What the arguments behind the program's name say. Throws `UsageFailure`, in words, for what
/// can't be understood, is missing, or makes no sense together.
BatchOptions ReadArguments(std::span<const std::string> arguments);

/// What `--help` prints.
extern const char* const kBatchHelp;
