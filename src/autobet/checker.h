// Whether a script is well formed.
#pragma once

/// Looks for the first fault of the script's structure. A sound script (an empty one is) leaves
/// `MsgText` empty; a fault brings its line to the top of the editor through the Host, and is shown
/// with its text in `MsgText` and its title in `MsgTitle`.
void CheckScript();

/// The player's command: `CheckScript`, and a word on a script that is sound or empty.
void CheckScriptCommand();
