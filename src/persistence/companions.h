// The companions of a game: the files that were in use when it was saved.
#pragma once

#include <string>
#include <vector>

#include "core/record_file.h"

inline constexpr int kHeadingRecords = 6;

/// True when the heading of a file says that it is a game file.
bool IsGameHeading(const Record& heading);

/// Fills the six headings with the files in use and their dates. For the game of the last session
/// (`keepUnsaved`) a script and a matrix that aren't saved anywhere are written beside it first.
void PutCompanions(std::vector<Record>& records, bool keepUnsaved);

/// Puts the files of the headings in use, and tells the player of each that is missing or has
/// changed. Reads the script, the matrix and the recorder's state; a script that is gone leaves
/// none, a matrix that is gone the fair one. A copy of the script goes to `active.tmp`.
void TakeCompanions(const RecordFile& file);

/// Puts the matrix of the headings in use, and no other file.
void TakeMatrixAlone(const RecordFile& file);

/// Goes on with an output file of scripts, at its end; none when the path is empty or can't be
/// written, which is kept as the last error.
void UseOutputFile(const std::string& path);

/// Writes the script in force to `active.tmp`.
void KeepActiveScript();

/// The date and time of a file as headings tell it; empty when there is no file.
std::string DateTextOf(const std::string& path);
