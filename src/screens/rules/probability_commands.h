// What the player's commands do with probability files: new, open, save.
#pragma once

class QWidget;

/// Offers to save probabilities that aren't in a file yet. False when the player goes back, or they
/// couldn't be saved.
bool MayLeaveProbability(QWidget* parent);

/// The fair dice of a new file; another file; each after the offer to save.
void NewProbabilityCommand(QWidget* parent);
void OpenProbabilityCommand(QWidget* parent);

/// Saves the probabilities in their file; without one, under a name that the player chooses. True
/// when they were saved.
bool SaveProbabilityCommand(QWidget* parent);
bool SaveProbabilityAsCommand(QWidget* parent);
