// What screens ask of the table, which stands above them all.
#pragma once

#include <functional>

struct TableCalls {
  std::function<void()> Roll;                         // throws the dice, unless a roll is under way
  std::function<void()> RollByCommand;                // as the menu does: asks where a run goes on
  std::function<void(int die1, int die2)> RollNamed;  // unless a roll is under way
  std::function<void()>
      RunHyperDrive;  // starts a run, and comes back when it has ended, or stops one
};

/// Filled in by the table.
extern TableCalls AtTable;
