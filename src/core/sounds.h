// Sounds of the game, through the host.
#pragma once

#include <string>

#include "core/game_state.h"

/// Fills the lists of sound sets from the files in `folder` (*.stk, *.dce, *.win, *.chp, in name
/// order) and sets the default choices. A folder without files leaves empty lists: all is silent.
void ScanSounds(const std::string& folder);

/// Sets the paths of the 18 calls of the chosen stick person; all empty for none.
void LoadStickPerson();

/// Plays call `call` of the stick person, unless sound is off or nobody was chosen.
void PlayStickCall(int call, bool toItsEnd);

void PlayChipSound();
void PlayDiceSound();
void PlayWinSound(bool toItsEnd);
