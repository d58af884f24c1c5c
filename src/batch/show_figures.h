// The figures of logs, on the shell.
#pragma once

#include "batch/console.h"
#include "batch/options.h"

/// Prints the figures of a column of a log, as text or as one JSON object. Throws `BatchFailure`.
int ShowFigures(const BatchOptions& options, Console& console);

/// Prints the figures of two logs side by side, and the difference of their means.
int ShowComparison(const BatchOptions& options, Console& console);
