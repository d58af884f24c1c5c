// Repairs of a game that was read from a file.
#pragma once

/// Brings the record to where it agrees with itself, changing as little as it can: a value that
/// can't stand becomes the nearest one that can, and what follows from other fields is reckoned
/// anew. Of counters that contradict each other, the one is mended that all others speak against.
/// A record that agrees is left as it is. Every field must lie within its limits before. May raise
/// a run-time fault when amounts are beyond all reckoning.
void RepairGame();
