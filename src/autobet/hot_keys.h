// Hot-Keys: Ctrl and a letter run a script file at the table.
#pragma once

/// Reads `HotKeys.dta` in `AppPath` into `Game.HotKeys`. A missing file means no Hot-Keys; a
/// damaged one is read as far as it can be told from rubbish.
void LoadHotKeys();

/// Writes `HotKeys.dta` in table order. `LastFileResult` is its length, -1 when the system failed.
void SaveHotKeys();

/// Runs the file of the first Hot-Key with this key, and reads the script in force back from its
/// file. False when no Hot-Key has the key, or a script, a roll or Hyper-Drive is running.
bool RunHotKey(char key);
