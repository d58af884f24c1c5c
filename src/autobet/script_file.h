// Scripts on disk: the `.bet` file.
#pragma once

#include <string>

/// Reads a file into the script: a plain open; a paste before `ScriptInsertLine` under
/// `ScriptCopyMode`; a Hot-Key load under `HotKeyRunning`. Leaves the file's length in
/// `LastFileResult`, 0 after a refusal and -1 when the system failed; both tell the player under
/// "Unable to Open Auto-Bet File" and leave the script in force as it was. Asks before it converts
/// a file of the older program.
void OpenScript(const std::string& path);

/// A plain open, whatever else is at work.
void OpenWholeScript(const std::string& path);

/// Writes the whole script to a file that doesn't become its own; true on success. `LastFileResult`
/// and the player learn of it as by `SaveScript`.
bool WriteScript(const std::string& path);

/// The same without a word to anybody; a failure is thrown.
bool StoreScript(const std::string& path);

/// Writes the script, or under `ScriptCopyMode` the selected lines, to `path`, which becomes
/// `AutoBetFile` unless lines are copied or a Hot-Key is running. The old file stays whole until
/// the new one is complete. `LastFileResult` is the length written, -1 when the system failed (the
/// reason is in `LastErrorText`, and the player is told).
void SaveScript(const std::string& path);

/// Whether somebody else has written the script's file since it was read or saved here. A file that
/// is gone isn't changed: a save makes it anew.
bool ScriptFileChanged();
