// What the player's commands do with the script: open, save, switch on, clear.
#pragma once

#include <QString>

class QWidget;

/// Opens a script that the player chooses. One that isn't well formed switches Auto-Bet off; one
/// that can't be read leaves the script in force.
void OpenAutoBetFileCommand(QWidget* parent);

/// Saves the script under a name that the player chooses; asks before it writes over a file. True
/// when it was saved.
bool SaveAutoBetFileAsCommand(QWidget* parent);

/// Switches Auto-Bet on or off. A script that isn't well formed isn't switched on. One that is
/// switched on is offered its initializing cycle before the next roll.
void ToggleAutoBetCommand();

/// Begins an empty script, on asking.
void ClearScriptCommand();

/// Asks whether a new game keeps the script; one that is kept and switched on begins afresh.
void AskToKeepScript();

/// The script's file without its folder; "untitled" for a script that is in no file.
QString ScriptName();

/// What the table's status row says of the script; empty without one.
QString ScriptCaption();
