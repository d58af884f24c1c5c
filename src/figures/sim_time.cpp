#include "figures/sim_time.h"

#include "core/game_state.h"
#include "core/number_format.h"

namespace {

std::string TimeText(double value) {
  return FormatNumber(value, IsWhole(value) ? kWholePattern : kFourDecimals);
}

}  // namespace

double SimHours(std::int64_t rolls) {
  if (Game.SimRollsPerHour <= 0) return 0;
  return static_cast<double>(rolls) / Game.SimRollsPerHour.ToDouble();
}

std::string RollsPerHourText() { return TimeText(Game.SimRollsPerHour.ToDouble()); }

std::string SimHoursText(std::int64_t rolls) { return TimeText(SimHours(rolls)); }
