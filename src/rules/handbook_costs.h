// What the bets cost, as the handbook tells it: reckoned by the program, so that no page goes
// stale.
#pragma once

#include <string>
#include <string_view>

/// A page of the handbook with the tables between `<!-- costs: 24 25 -->` and `<!-- end costs -->`
/// made anew: for each bet by its id what it pays, the house's edge on each bet and each roll, and
/// the rolls that it takes. Line odds have a row for each kind of point. Figures are those of the
/// rules in force with fair dice. Lays down nothing; `Point` is left as it was.
std::string WithCosts(std::string_view page);
