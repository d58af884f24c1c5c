// Repairs of the counters of a game that was read from a file.
#pragma once

/// Makes the counts of rolls, roll events, gaps and shooters agree. Reads `Point`.
void RepairCounters();

/// Makes the decisions of each bet agree, for the phantom and the actual wagers. Reads the count of
/// rolls.
void RepairBetTables();
