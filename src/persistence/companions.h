// The companions of a game: the files that were in use when it was saved.
#pragma once

#include <string>
#include <vector>

#include "core/record_file.h"

inline constexpr int kHeadingRecords = 6;

/// True when the heading of a file says that it is a game file.
bool IsGameHeading(const Record& heading);

/// Where a script and a matrix go that aren't saved anywhere, and the routines that write them;
/// without a place they are left out.
struct KeepUnsaved {
  std::string Beside;  // a path without extension
  bool (*Script)(const std::string& path) = nullptr;
  bool (*Matrix)(const std::string& path) = nullptr;
};

/// "default.bet" and "default.prb" in `DataPath`. What can't be written is told.
KeepUnsaved InSession();

/// Fills the six headings with the files in use and their dates, after writing what is unsaved.
/// False when that couldn't be written; all else is filled in.
bool PutCompanions(std::vector<Record>& records, const KeepUnsaved& unsaved);

/// Puts the files of the headings in use, and tells the player of each that is missing or has
/// changed. Reads the script, the matrix and the recorder's state; a script that is gone leaves
/// none, a matrix that is gone the fair one. A copy of the script goes to `active.tmp`. Files that
/// will be written to are only named: of those outside `gameFolder` the player is asked before.
void TakeCompanions(const RecordFile& file, const std::string& gameFolder);

/// Puts the matrix of the headings in use, and no other file.
void TakeMatrixAlone(const RecordFile& file);

/// Writes the script in force to `active.tmp`.
void KeepActiveScript();

/// The date and time of a file as headings tell it; empty when there is no file.
std::string DateTextOf(const std::string& path);
