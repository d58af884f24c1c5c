// What the player's commands do with Dice Roll files: open, record, edit, print.
#pragma once

#include <functional>
#include <string_view>

class QWidget;

/// Opens a tape or makes a new one; closes it.
void OpenDiceRollsCommand(QWidget* parent);
void CloseDiceRollsCommand();

/// Sets the recorder to a `RecorderStatusKind`. Without a tape it is refused, and stays off.
void SetRecorderCommand(int status);

/// Carries out a change of the tape by a routine of dice/tape_edit. Without a tape, and where it
/// fails, the player is told; `done` says what couldn't be ("written"), of the tape or of `path`.
void EditTape(std::string_view done, const std::function<void()>& edit,
              std::function<std::string()> path = {});

/// Writes throws at the position, as typed.
void EnterRollsCommand(std::string_view throws);

/// Copies, cuts, pastes or deletes throws.
void CopyRollsCommand();
void CutRollsCommand();
void PasteRollsCommand();
void DeleteRollsCommand();

/// Prints the tape or what is selected of it, as the output options ask.
void PrintRollsCommand(QWidget* parent);
