// Start-up and closing of the game, as far as they need no screen.
#pragma once

#include <functional>
#include <string>

/// Makes the record, and all that stands beside it, what they are in a program that has just been
/// loaded: no field set, no file open, no generator seeded.
void StartAfresh();

/// Lays down defaults and finds what ships with the program, in the order of a start: paths,
/// seeding, house rules, sound lists, the last game. `programFolder` is where the program
/// lies, `dataFolder` where saved state goes. Afterwards the table can be shown.
void StartUp(const std::string& programFolder, const std::string& dataFolder);

/// What follows once the table is shown: reports missing support files, and the first stick call.
void AfterTableShown();

/// Asks what must be asked before the program may end: to interrupt Auto-Bet, to stop Hyper-Drive.
/// False when the player wants to go on. `storeWindowPlaces` runs once both have been answered.
bool MayClose(const std::function<void()>& storeWindowPlaces);

/// Deletes the scratch files of the run.
void CloseGame();
