// The game of the last session: read at start, written on closing.
#pragma once

/// Opens `default.crp` in `DataPath` when there is one, and keeps a copy of the script in
/// `active.tmp`. Without one, or with one that is no game, the defaults stand. Call it after
/// `StartUp`, with a host that can show messages.
void OpenLastSession();

/// Writes `default.crp` with what isn't saved elsewhere, and Hot-Keys that couldn't be written
/// before, and deletes the scratch files of the run and the kept game. What can't be written is
/// told to the player; all else is written, and the scratch files stay, for a run that may go on.
/// True when everything was written.
bool CloseSession();

/// Ends a session that nobody closes: the game is kept, to be offered at the next start, and
/// `default.crp` written.
void EndSession();
