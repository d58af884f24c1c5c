// Simulated time: how long a casino would take for the rolls of a game.
#pragma once

#include <cstdint>
#include <string>

/// `rolls` at `SimRollsPerHour`, in hours.
double SimHours(std::int64_t rolls);

/// The figures of `lblRollsPerHour` and `lblHours`: up to four decimals unless they are whole.
std::string RollsPerHourText();
std::string SimHoursText(std::int64_t rolls);
