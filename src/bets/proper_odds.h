// Amounts that pay in whole chips.
#pragma once

/// Bends `Change` so that the bet becomes an amount that its payoff ratio pays in whole Units (or
/// in whole larger chips, by `AutoAdjust`), within `MinHere` and `MaxHere`. Reads the four bias
/// settings; outside Hyper-Drive it may add to `MsgText`. A change that removes the bet is left as
/// it is.
void AdjustForProperOdds(int betId);
