// Whether the game record agrees with itself.
#pragma once

#include <string>

/// What the record disagrees about, in a few words, or an empty text when all is well. It figures
/// anew what follows from other fields: the money on the table, held vig, the counters and their
/// sums, the chips of the bets. For tests, and for files that were read. Changes nothing. It holds
/// between rolls and changes; after a change of rules only once these have been applied to the
/// bets, and for the chips only when they are kept: not under Hyper-Drive.
std::string FirstInconsistency();

/// The same of the counters alone: rolls, events and gaps, shooters, results of the bets, and what
/// the bankroll lay between.
std::string FirstInconsistencyOfCounters();
