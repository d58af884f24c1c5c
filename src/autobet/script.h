// The script in memory: its lines and the registers of labels and flags.
#pragma once

#include <string>
#include <unordered_set>

#include "core/game_state.h"

/// Line `number`, from 1 to `ScrCount`.
inline ScriptLine& Line(int number) { return Game.Script[static_cast<unsigned>(number - 1)]; }

/// The action of line `number`; 0 for a line that is none, or isn't in the script.
int ActionOf(int number);

/// Tells the engine that lines, labels or flags have changed: names become indices anew before the
/// next run. Raises no `ScriptChanged`: that is the caller's to decide.
void ScriptEdited();

/// Tells that other lines have taken the place of the script's, as they stand in its file: edits
/// made before and counts of the profile no longer belong to it.
void ScriptReplaced();

/// Adds a label unless one with the same name in trimmed lower case is there.
void RegisterLabel(const std::string& name);

/// Adds a flag, false and right-trimmed, unless one with the same name in trimmed lower case is
/// there.
void RegisterFlag(const std::string& name);

/// Offers a line to the registers: a label line its label, a condition on a flag and "Set flag"
/// their flag.
void RegisterNames(const ScriptLine& line);

/// The registers, made ready for many lines in a row: offers to it cost the same however many names
/// there are. Labels and flags change through nothing else while it lives.
class NameRegisters {
 public:
  NameRegisters();
  void Offer(const ScriptLine& line);
  void OfferLabel(const std::string& name);
  void OfferFlag(const std::string& name);

 private:
  std::unordered_set<std::string> labels_;  // as they are compared
  std::unordered_set<std::string> flags_;
};

/// Inserts a line before line `before` (1 to `ScrCount` + 1), offers it to the registers and raises
/// `ScriptChanged`.
void InsertLine(int before, const ScriptLine& line);

/// An empty script: no lines, flags, labels or file name.
void ClearScript();

/// The number of a flag in `Flags` by its trimmed name, case kept; -1 for none.
int FindFlag(const std::string& name);

/// While it lives flags are found at once, and none may come, go or be renamed.
class FlagPlaces {
 public:
  FlagPlaces();
  ~FlagPlaces();
  FlagPlaces(const FlagPlaces&) = delete;
  FlagPlaces& operator=(const FlagPlaces&) = delete;
};

/// Every flag's value becomes its previous value.
void TakeFlagSnapshot();

/// Lower case, of all letters that files hold; of `TrimmedLower` with blanks taken off both ends,
/// as labels are compared.
std::string LowerCase(std::string text);
std::string TrimmedLower(const std::string& name);
std::string Trimmed(const std::string& name);
std::string RightTrimmed(const std::string& name);
