// Known decisions: what a decision of a bet does that it has met before, for play whose rolls as a
// whole never come back (scripts, presses). See known_rolls.h.
#pragma once

#include "core/game_state.h"

/// All that a decision depends on besides the rules and the bet, while the money isn't short.
struct DecisionCase {
  Currency Amount;
  Currency Beside;         // the flat bet of odds, the vig held for Buy and Lay
  unsigned Situation = 0;  // point, dice and handling; 0 for none

  bool operator==(const DecisionCase&) const = default;
};

/// What it does.
struct KnownDecision {
  DecisionCase Case;
  Currency Staked;  // with what vig joins it
  Currency Net;     // as the bankroll takes it
  Currency Stands;  // the amount that is left on the bet
  Currency VigHeld;
  Currency OnTable;  // what it changes of the table's total
  Currency Multiple;
  /// What it needs: less than this free to bet is too little. The least amount for nothing.
  Currency FreeNeeded;
  bool ResetsWorking = false;
};

/// What a decision of a bet will do; none when that isn't known, the money is short, or the record
/// isn't in the hands of Hyper-Drive. `outcome` tells apart what the bet may be paid at, 0 to 127.
const KnownDecision* FindKnownDecision(int betId, int code, int outcome);

/// Does it, as `DecideWager` played it in full when it was learnt. What only tells of the decision
/// under way is left alone.
void TakeKnownDecision(int betId, const KnownDecision& known);

/// Watches a decision that is played in full, for as long as it lives, and knows it from `Learn`
/// on. An Overflow on the way leaves nothing known.
class DecisionLesson {
 public:
  DecisionLesson(int betId, int code, int outcome);
  ~DecisionLesson();
  DecisionLesson(const DecisionLesson&) = delete;
  DecisionLesson& operator=(const DecisionLesson&) = delete;

  void Learn() const;

 private:
  int betId_;
  DecisionCase case_;
  Currency bankroll_;
  Currency onTable_;
  Currency leastFree_;
  bool workingTouched_;
};

/// The rules are others.
void ForgetKnownDecisions();
