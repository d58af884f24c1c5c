// The screens' answers to the engine's questions.
#pragma once

class frmCrapTable;

/// Puts the Qt host in force; `table` is the window that messages belong to and that is redrawn.
void InstallQtHost(frmCrapTable* table);

/// No pauses, no sound and no flight of the dice: for driving the screens by program.
extern bool HurryHost;
