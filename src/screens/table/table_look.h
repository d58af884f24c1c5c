// The settings of the table that reach beyond it: colours of windows and volumes.
#pragma once

/// Gives windows the colours of the choice and of the felt in force, and sounds their volumes.
/// Costs nothing where neither has changed.
void UseTableLook();
