// What action lines do beside bets: flags, names, settings, money, dice, files and the table.
#pragma once

#include "autobet/actions.h"

/// Performs an action that has no bets as its targets. Unknown codes do nothing. Values out of
/// their range change nothing.
void PerformSetting(const ScriptLine& line, const ActionPlan& plan);

/// "Reset rolls" of an event 2 to 89.
void ResetRollsOf(int event);
