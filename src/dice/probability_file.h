// The file of the probability matrix.
#pragma once

#include <string>

/// Reads a `.prb` file into `ProbMatrix`, with its path in `PrbFileName`, `ProbabilityChanged`
/// false and `LastFileResult` 1. `LastFileResult` is 0 for a file that is no matrix, or whose dice
/// could never be thrown (a share below 0, or all 36 cells 0), and -1 when the system failed, with
/// the reason in `LastErrorText`; the player is then told and nothing else changes. Under
/// Hyper-Drive nothing is shown: the run ends with the text in `StopMessage`.
void LoadProbabilityFile(const std::string& path);

/// Writes `ProbMatrix` to a file that doesn't become its own; true on success. What it leaves is
/// told by `SaveProbabilityFile`.
bool WriteProbabilityFile(const std::string& path);

/// The same without a word to anybody; a failure is thrown.
bool StoreProbability(const std::string& path);

/// Writes `ProbMatrix` to a `.prb` file, in the way that can't lose an old one: its path is in
/// `PrbFileName` then, `ProbabilityChanged` is false and `LastFileResult` the length. When the
/// system fails `LastFileResult` is -1, the player is told as by `LoadProbabilityFile`, and nothing
/// else changes.
void SaveProbabilityFile(const std::string& path);
