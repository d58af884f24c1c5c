// Whatever the player changes, on whatever screen, goes through here.
#pragma once

#include <functional>

/// Carries out a change that the player made: now, or, with dice in the air or a script at work,
/// once they have done, so that it acts from the next roll on. The game then counts as changed, and
/// all open views are refreshed. A change that overflows is taken back whole, and the player told;
/// any other fault in it is reported, and the change given up.
void ChangeByPlayer(std::function<void()> change);

/// True while the record is whole: between two rolls, also of a run, and with no script at work.
bool RecordAtRest();

/// True while changes wait for the dice.
bool ChangesWait();

/// Carries out what waits, unless dice are in the air or a script is at work.
void CarryOutChanges();

/// True while a script is at work, up to the end of the pause in which its status can be read.
bool ScriptAtWork();

/// True while neither dice nor a script are at work.
bool TableAtRest();

/// Asks whether to interrupt Auto-Bet or Hyper-Drive. True when one was running.
bool AskToInterruptRun();

/// Milliseconds that the event loop has taken in the turns between the rolls of runs.
extern double YieldTime;

/// Stands for a turn of the event loop that the engine gives between two rolls.
class EngineTurn {
 public:
  EngineTurn();
  ~EngineTurn();
  EngineTurn(const EngineTurn&) = delete;
  EngineTurn& operator=(const EngineTurn&) = delete;
};
