// The message call: every message and question of the program.
#pragma once

#include <string>

#include "core/game_state.h"

/// Shows the message of the slots. Reads `MsgText`, `MsgTitle`, `MsgCtx`, `MsgFlags` and leaves
/// `MsgAnswer`. With `MsgFlags` 0 no screen is shown. With the table minimised nothing is shown: a
/// plain OK message is dropped, anything else clears `AutoBetRunning` and `KeepRolling`, so that a
/// run stops rather than wait behind a table that nobody sees, and `MsgAnswer` stays as it was.
void ShowMessage(int modal);

/// Fills the slots and shows a modal message.
void ShowMessage(const std::string& text, const std::string& title, int helpTopic, int flags);

/// Asks a Yes/No question; true for Yes, false when nobody can answer.
bool AskYesNo(const std::string& text, const std::string& title, int helpTopic);

/// True when a notice of one of the classes in `classes` would be shown now: its bit of `Notify` is
/// on and Hyper-Drive isn't running. Test this before building a text.
inline bool NoticeWanted(int classes) { return (Game.Notify & classes) && !Game.HyperDriveOn; }

/// Shows the text in `MsgText` as a notice of `classes`, with the box that hides them.
void ShowNotice(int classes, const std::string& title, int helpTopic);

/// What a button of the message screen does: takes the answer, the hide box and the texts of the
/// input boxes. `button` is 0 OK, 1 Yes, 2 No, 3 Cancel.
void PressMessageButton(int button, bool hideChecked, const std::string& firstInput,
                        const std::string& secondInput);
