// The captions of the buttons beside the amounts of " Same Bet:" and " Bet:".
#pragma once

#include <QString>

/// The sign of a `ModifyOperator`.
QString OperatorCaption(int modifyOperator);

/// The caption of a `ModifyUnit`: dollars, percent or units of a chip.
QString UnitCaption(int unit);

/// The next in the round of operators, and of units.
int NextOperator(int modifyOperator);
int NextUnit(int unit);
