// The game that is kept while it is played, for a session that isn't closed.
#pragma once

/// Writes a game that has changed since it was saved, with what is unsaved of script and matrix,
/// beside the last session in `DataPath`: never over a file of the player's. Nothing is written
/// when nothing has changed since the last call, and a game that needs no keeping any more is
/// removed. Not to be called in the middle of a roll. A failure is kept as the last error.
void KeepGame();

/// Removes the kept game: the session has been closed.
void RemoveKeptGame();

/// Offers the game of a session that wasn't closed, once, when there is one. It becomes a changed
/// game without a name; a declined one stays beside it under another name, until the next is
/// declined. Until it has been called `KeepGame` does nothing.
void OfferKeptGame();
