// Hot-Keys: Ctrl and a letter run a script file at the table.
#pragma once

#include <cstddef>
#include <string>

#include "core/script_state.h"

/// Letters of a file name and of a description that the table's file has room for.
inline constexpr std::size_t kHotKeyTextWidth = 100;

/// Whether a Hot-Key can have this key.
bool IsHotKey(char key);

/// The place of the first Hot-Key with this key, whatever its case; the number of rows for none.
std::size_t FindHotKey(char key);

/// The full path of a row's file: names without a folder are in `AppPath`.
std::string HotKeyPath(const HotKey& row);

/// A file's path as a row keeps it: without the folder for what lies in or below `AppPath`.
std::string HotKeyFileName(const std::string& path);

/// Reads `HotKeys.dta` in `DataPath`, or the one in `AppPath` where there is none yet, into
/// `Game.HotKeys`. A missing file means no Hot-Keys; a damaged one is read as far as it can be told
/// from rubbish, and `HotKeysDamaged` is set.
void LoadHotKeys();

/// Writes `HotKeys.dta` in `DataPath` in table order. What couldn't be read of a damaged one is
/// first kept as "HotKeys.bad". `LastFileResult` is its length; -1 when the system failed, which is
/// told under "Hot-Key": the file then stays as it was.
void SaveHotKeys();

/// Runs the file of the first Hot-Key with this key, and reads the script in force back from its
/// file. A file that isn't there is told under "Hot-Key". False when no Hot-Key has the key, or a
/// script, a roll or Hyper-Drive is running.
bool RunHotKey(char key);
