// What the condition lines ask of the game.
#pragma once

#include <cstdint>

#include "core/game_state.h"

/// Truth of a condition, and whether it "just now occurred": didn't hold one roll ago.
struct Verdict {
  bool True = false;
  bool New = false;
};

/// The bets or values that a subject stands for.
struct Operand {
  enum class Kind : std::uint8_t {
    Nothing,
    Ids,        // the ids `First` to `Last`; the bankroll is id 0
    StackRef,   // the stack that stack `First` names
    PointBet,   // the bet of family `First` on the point
    Average,    // the average bankroll over `First` points
    Available,  // the bankroll that is free to bet
  };
  Kind What = Kind::Nothing;
  bool Any = false;  // a group of which one, all, or the sum is meant
  bool All = false;
  bool Total = false;
  std::int16_t First = 0;
  std::int16_t Last = 0;
};

/// What a condition line tests, in the order of the tables.
enum class ConditionTest : std::uint8_t {
  Never,
  Initializing,
  EachRoll,
  NextIsComeOut,
  NextIsNotComeOut,
  LastWasComeOut,
  LastWasNotComeOut,
  PointEstablished,
  PointNotEstablished,
  PointDecidedFor,
  PointDecidedAgainst,
  PointDecided,
  AnswerIs,
  EachPass,
  EachMiss,
  RollsOfGame,
  RollsOfShooter,
  CountAtDecision,  // a count that moves only when a point or a come-out is decided
  CountOfLastShooter,
  Hours,
  Available,
  Event,
  OneFlag,
  AnyFlag,
  AllFlags,
  LastFlag,
  Total,
  Bets,
};

struct ConditionPlan;

/// Evaluates a condition. `whileBlock`: the block is of a "while" kind, which asks no more of a
/// group than one bet that holds.
using Evaluator = Verdict (*)(const ConditionPlan& plan, bool whileBlock);

/// A condition line with its codes resolved: made once when a script is loaded or changed, so that
/// no line looks up a name or a code while it runs.
struct ConditionPlan {
  Evaluator Evaluate = nullptr;
  ConditionTest Test = ConditionTest::Never;
  std::uint8_t Operator = 0;
  int Index = 0;  // the event, flag, shooter's statistic or answer; of a name the line it is in
  Operand Of;
  Operand To;
  Currency Amount;
};

/// The plan of condition line `number` of the script in force. What no list offers becomes a
/// condition that never holds.
ConditionPlan PlanCondition(int number);
