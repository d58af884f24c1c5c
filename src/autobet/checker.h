// Whether a script is well formed.
#pragma once

#include <string>

/// The first fault of a script: its line, and what is told of it. Line 0: the script is sound.
struct ScriptFault {
  int LineNumber = 0;
  std::string Title;
  std::string Text;
};

/// Looks for the first fault and tells nobody.
ScriptFault FindScriptFault();

/// Looks for the first fault of the script's structure. A sound script (an empty one is) leaves
/// `MsgText` empty; a fault brings its line to the top of the editor through the Host, and is shown
/// with its text in `MsgText` and its title in `MsgTitle`.
void CheckScript();

/// The player's command: `CheckScript`, and a word on a script that is sound or empty.
void CheckScriptCommand();
