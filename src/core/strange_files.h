// Files that an opened game would write to, where the player hasn't chosen them. Nothing is written
// to one before the player has been asked.
#pragma once

#include <string>

/// Notes a file that a game names; `gameFolder` is the folder of the game. One that lies there or
/// in `DataPath`, links followed, or that the player has chosen or allowed before, isn't strange.
void NoteFileOfGame(const std::string& path, const std::string& gameFolder);

/// Whether the player is still to be asked before anything is written there.
bool IsStrange(const std::string& path);

/// The player has chosen this file, or allowed it: it is remembered in `DataPath`, and never asked
/// for again.
void TrustFile(const std::string& path);

/// Asks whether a strange file may be written to; `use` tells what for, `otherwise` what happens if
/// not. True at once for any other file.
bool MayWriteTo(const std::string& path, const std::string& use, const std::string& otherwise);
