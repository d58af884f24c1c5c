// The batch program as a routine.
#pragma once

#include <span>
#include <string>

#include "batch/console.h"

/// Runs a command line, the program's name left out; the status for the shell: 0, 1 for what went
/// wrong, 2 for a command line that can't be understood, 128 and the signal's number for a run that
/// a signal ended. What goes wrong is told on `console.Err`.
int RunBatch(std::span<const std::string> arguments, Console& console);
