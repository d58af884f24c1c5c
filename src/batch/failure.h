// What ends a command of the batch program.
#pragma once

#include <stdexcept>

/// Something that a command can't go on from, in words for the one who gave it.
struct BatchFailure : std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// A command line that can't be understood.
struct UsageFailure : std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// What the program returns to the shell.
enum BatchStatus : int { BatchDone = 0, BatchFailed = 1, BatchUsage = 2 };
