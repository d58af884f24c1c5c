// What a game of a population tells beside its record in the log, as a line of a CSV file.
#pragma once

#include <cstdint>
#include <string>

#include "core/currency.h"

/// Why a game ended.
enum class EndReason { Rolls, NewGame, Stopped, BankLimit, Question, Fault };

struct GameDetails {
  std::int64_t Index = 0;  // from 0
  EndReason Ended = EndReason::Rolls;
  Currency HighestBankroll;
  Currency LowestBankroll;
  Currency DeepestFall;
  Currency MostAtRisk;
  int LosingStreak = 0;
  int RefusedBets = 0;
};

/// The heading line of a details file, with its end.
extern const char* const kDetailsHeading;

/// The line of a game, with its end.
std::string DetailsLine(std::uint64_t seed, const GameDetails& details);
