// The screens' answers to the engine's questions.
#pragma once

#include <cstdint>

class frmCrapTable;

/// Milliseconds since the system started. The first seeds need it before there is a table.
std::uint32_t SystemMilliseconds();

/// Puts the Qt host in force; `table` is the window that messages belong to and that is redrawn.
void InstallQtHost(frmCrapTable* table);

/// No pauses, no sound and no flight of the dice: for driving the screens by program.
extern bool HurryHost;
