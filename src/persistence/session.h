// The game of the last session: read at start, written on closing.
#pragma once

/// Opens `default.crp` in `DataPath` when there is one, and keeps a copy of the script in
/// `active.tmp`. Without one, or with one that is no game, the defaults stand. Call it after
/// `StartUp`, with a host that can show messages.
void OpenLastSession();

/// Writes `default.crp` and deletes the scratch files of the run. A game that can't be written is
/// told to the player; the scratch files stay then, for a run that may go on. True when it was
/// written.
bool CloseSession();
