// Repairs of a game that was read from a file.
#pragma once

/// Brings the record to where it agrees with itself, changing as little as it can: a value that
/// can't stand becomes the nearest one that can, and what follows from other fields is reckoned
/// anew. Counters that contradict each other begin anew; true when they did. A record that agrees
/// is left as it is. Every field must lie within its limits before.
bool RepairGame();
