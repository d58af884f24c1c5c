// What the player's commands do with files of the game: open and save.
#pragma once

#include <string>

class QWidget;

/// What the game in force is left for; it goes on at the next start of the program.
enum class Leaving { ForAnother, Program };

/// Offers to save the script, the probabilities and the game, each that isn't saved. False as soon
/// as the player wants to go back, or what was to be saved couldn't be.
bool MayLeaveGame(QWidget* parent, Leaving leaving = Leaving::ForAnother);

/// Opens a game that the player chooses, after the offers to save the one in force.
void OpenGameCommand(QWidget* parent);

/// Saves the game in its file; one without a file asks for a name. True when it was saved.
bool SaveGameCommand(QWidget* parent);
bool SaveGameAsCommand(QWidget* parent);

/// Opens a file named at the start of the program, by the Open command of its kind.
void OpenNamedFile(QWidget* parent, const std::string& path);
