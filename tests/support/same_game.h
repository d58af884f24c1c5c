// The fields that two ways of playing the same game must leave alike.
#pragma once

#include <tuple>

#include "core/game_state.h"

inline auto FieldsOf(const TableState& table) {
  return std::tie(table.Die1, table.Die2, table.Point, table.Bets, table.BetsAtRoll,
                  table.BetsAfterRoll, table.ContractBets, table.BuyVigHeld, table.LayVigHeld,
                  table.TotalOnTable, table.InvestedBankroll, table.BankrollHigh, table.BankrollLow,
                  table.BankrollSum, table.BetWorking, table.BetWorkingPrev, table.BetOutcome,
                  table.ShooterStats, table.OddsMultiple);
}

inline auto FieldsOf(const Tallies& counters) {
  return std::tie(counters.RollCount, counters.RollsSince, counters.RollGapTally,
                  counters.ShooterEvent, counters.ShooterEventPrev, counters.ShooterSince,
                  counters.ShooterSincePrev, counters.BetWagers, counters.BetWins,
                  counters.BetLosses, counters.WagerSquares);
}

inline auto FieldsOf(const GraphState& graph) {
  return std::tie(graph.BankrollHistory, graph.BankrollAverage, graph.BankrollHistoryCount);
}

/// What a game has come to.
struct StateOfPlay {
  TableState Table = Game;
  Tallies Counters = Game;
  GraphState Graph = Game;

  bool operator==(const StateOfPlay& other) const {
    return FieldsOf(Table) == FieldsOf(other.Table) &&
           FieldsOf(Counters) == FieldsOf(other.Counters) &&
           FieldsOf(Graph) == FieldsOf(other.Graph);
  }
};
