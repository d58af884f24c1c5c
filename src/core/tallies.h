// Counters of the game: roll events, bet results, the bankroll graph, and the log's switches.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "core/bets.h"
#include "core/currency.h"
#include "core/roll_events.h"

inline constexpr int kLongGap = 200;  // gaps of this length or more share a column

/// Stats of the bet tables.
enum BetStat : int {
  StatEstablished = 0,  // the bet is established for the phantom tally
  StatCount = 1,
  StatSum = 2,
  StatHighest = 3,
  StatLowest = 4,  // above 0; 0 for none yet
  StatLast = 5,
  StatRollCount = 6,   // decisions on the last roll
  StatRollAmount = 7,  // amount on the last roll
  kBetStats = 8,
};

/// Kinds of the bet tables: the phantom 1-unit wager on every decision, and the actual wager.
enum BetKind : int { Phantom = 0, Actual = 1, kBetKinds = 2 };

/// One of the three bet tables, [kind][bet id][stat]: the stats of one bet lie side by side.
using BetStats = std::array<Currency, kBetStats>;
using BetTable = std::array<std::array<BetStats, 101>, kBetKinds>;

struct Tallies {
  // Roll events 0 to 90; event 0 is every roll. The ...Prev fields are one roll old.
  std::array<int, kRollEvents> RollCount{};
  std::array<int, kRollEvents> RollsSince{};
  std::array<int, kRollEvents> ShooterEvent{};
  std::array<int, kRollEvents> ShooterEventPrev{};
  std::array<int, kRollEvents> ShooterSince{};
  std::array<int, kRollEvents> ShooterSincePrev{};

  // How often a gap of n rolls lay between two occurrences; column 200 counts the longer gaps, and
  // column 0 sums their rolls.
  std::array<std::array<int, kLongGap + 1>, kRollEvents> RollGapTally{};

  BetTable BetWagers{};
  BetTable BetWins{};
  BetTable BetLosses{};

  // The rows of these tables that may hold something, and whether there may be gaps: whoever writes
  // there enters it, and nothing else is cleared.
  std::array<BetMask, kBetKinds> TalliedBets{};
  std::array<BetMask, kBetKinds> RolledBets{};  // those that may hold stats of the last roll
  bool GapsTallied = false;

  // The sum of the squares of each bet's actual wagers, in dollars squared: what luck is measured
  // by.
  std::array<double, 101> WagerSquares{};
};

/// Actual wagers of the games that have ended since the program started, by bet id; the stats of a
/// last roll are not among them.
struct FinishedGames {
  std::int64_t FinishedRolls = 0;
  std::array<BetStats, 101> FinishedWagers{};
  std::array<BetStats, 101> FinishedWins{};
  std::array<BetStats, 101> FinishedLosses{};
  std::array<double, 101> FinishedSquares{};
};

inline constexpr int kGraphPoints = 525;

struct GraphState {
  // Points 1 to 525 are the page, 526 to 1050 the page before it; point 0 holds a roll number.
  std::array<Currency, 2 * kGraphPoints + 1> BankrollHistory{};
  std::array<Currency, kGraphPoints + 1> BankrollAverage{};
  int BankrollHistoryCount = 0;
  Currency GraphPeriodHigh;
  Currency GraphPeriodLow;
  int BankrollAverageSpan = 120;  // 0 for all rolls of the game
  int BankrollAutoAdjustType = 2;
  int BankrollGraphType = 1;
  int BankrollGraphColor = 0;
  bool BankrollGridLines = true;
  bool BankrollRefLines = false;
  bool BankrollShowAverage = true;
  bool BankrollAutoPrint = false;
  Currency GraphScale = 1;
  Currency GraphBaseScale = 1;
  Currency GraphTop = 150;
};

struct EventsLogSettings {
  bool EventsLogActive = false;
  bool LogRolls = false;
  bool LogBetChanges = false;
  bool LogBetsWon = false;
  bool LogBetsLost = false;
  bool LogChipStackChanges = false;
  bool LogPassesMisses = false;
  bool LogShooterChanges = false;
  bool LogBankrollChanges = false;
  bool ClearLogOnNew = false;
  bool KeepLatestRollOnTop = false;
  int LogTopLine = 1;
  std::string LogToldTooLong;  // the log that the player knows to be too long
  int LogFontSize = 9;
  bool LogFontBold = false;
  bool LogFontItalic = false;
};
