// The table's part of the game record: money, dice, point, shooter and chips.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "core/bets.h"
#include "core/currency.h"

/// Working states of a bet.
enum WorkingState : int { CalledOff = -1, NotWorking = 0, Working = 1, CalledOn = 2 };

/// Indices of `ShooterStats`. The entries of "this shooter" restart when the shooter changes.
enum ShooterStat : int {
  ShooterRolls = 0,
  ShooterPasses = 1,
  ShootersFinished = 2,
  MostRollsByShooter = 3,
  MostPassesByShooter = 4,
  FinishedRollsSum = 5,
  FinishedPassesSum = 6,
  PointsEstablished = 7,
  PassesByPoint = 8,
  PassesByNatural = 9,
  AllPasses = 10,
  MissesBySevenOut = 11,
  MissesOnComeOut = 12,
  AllMisses = 13,
  ComeOutRolls = 14,
  ShooterMisses = 15,
  MostMissesByShooter = 16,
  LastShooterRolls = 17,
  LastShooterPasses = 18,
  LastShooterMisses = 19,
  kShooterStats = 20,
};

/// One chip on the table: its bet (0 for a free record), its picture (1 to 5 the chip values, 6 an
/// amount not shown in full) and its centre in table units.
struct Chip {
  int BetId = 0;
  int Picture = 0;
  int X = 0;
  int Y = 0;
};

inline constexpr int kOverflowPicture = 6;
inline constexpr int kMaxChips = 1000;

/// What a run under Hyper-Drive began with, and how it ended.
struct HyperRun {
  int FirstRoll = 0;
  int LastRoll = 0;
  int RollsAsked = 0;
  std::uint32_t StartedAt = 0;  // milliseconds
  std::uint32_t EndedAt = 0;
};

/// `LeastFreeMoney` when no change asked for money.
inline constexpr Currency kFreeEnough = Currency::FromRaw(INT64_MAX);

struct TableState {
  // Money. `Bets` holds the bankroll at 0, the bets at 1 to 83, the five chip values at 95 to 99
  // and the Chip-Stacks from 101.
  std::array<Currency, kSlots> Bets{};
  std::array<Currency, kSlots> BetsAtRoll{};     // as they stood when the dice were thrown
  std::array<Currency, kSlots> BetsAfterRoll{};  // as they stood when the last roll had ended
  std::array<Currency, kContractSlots> ContractBets{};  // what a bet is established at
  std::array<Currency, 6> BuyVigHeld{};
  std::array<Currency, 6> LayVigHeld{};
  Currency TotalOnTable;  // bets 1 to 83 and the vig held up front
  Currency BankrollHigh;
  Currency BankrollLow;
  Currency InvestedBankroll;
  Currency BankrollSum;  // of the bankroll after every roll

  // What has changed since the last snapshot, one bit an id; everything when `SnapshotsDue`.
  std::array<std::uint64_t, 4> TouchedBets{};
  bool SnapshotsDue = true;
  bool EndSnapshotsDue = true;  // those after the roll

  // The bets that stood when the dice were thrown, one bit an id.
  std::array<std::uint64_t, 2> StandingBets{};

  // Working states, per bet (index 0 is not used but keeps the ids as indices).
  std::array<int, 101> BetWorking{};
  std::array<int, 101> ComeOutWorking{};
  std::array<int, 101> BetWorkingPrev{};
  bool WorkingTouched = true;      // a working state has changed since the last roll began
  bool WorkingSnapshotDue = true;  // one has changed that `BetWorkingPrev` doesn't know

  // The streak of each bet: column 1 now, column 0 as it stood one roll ago.
  std::array<std::array<int, 2>, 101> BetOutcome{};

  // Dice and point.
  int Die1 = 3;
  int Die2 = 4;
  int RollTotal = 7;
  int PrevDie1 = 3;
  int PrevDie2 = 4;
  int Point = 0;
  int PrevPoint = 0;
  int PrevPrevPoint = 0;
  std::array<int, kShooterStats> ShooterStats{};

  // The run of rolls.
  bool RollInProgress = false;
  bool KeepRolling = false;
  bool HyperDriveOn = false;
  bool KnownRollsOn = true;      // rolls that were played before may be known; see known_rolls.h
  bool LedgerOpen = false;       // rolls that are alike are counted, to be reckoned up later
  bool TalliesUnread = false;    // what the ledger holds at the end of a run is let go
  HyperRun LastRun;              // under Hyper-Drive: this run or the last one
  std::uint32_t LastTurnAt = 0;  // milliseconds, when the event loop last had a turn
  unsigned TurnOffers = 0;       // since then
  bool ManualRollPending = false;
  int PendingDie1 = 0;  // the manual pad's dice, until the roll takes them
  int PendingDie2 = 0;
  std::string StopMessage;
  bool GameChanged = false;

  // Files in use; full paths, empty for none.
  std::string GameFileName;
  std::string PrbFileName;
  std::string DiceRollFile;
  std::string GamesLogFile;
  std::string EventsLogFile;
  std::vector<std::string> StrangeFiles;  // of these: see strange_files.h

  // Names: 1 to 83 the bets, 101 to 104 the four Chip-Stacks shown on the table.
  std::array<std::string, 105> BetNames;
  std::array<std::string, 100> ChipStackName;

  // Chips on the table. Positions are the place of the first chip of each id, in table units.
  std::array<float, kSlots> BetChipX{};
  std::array<float, kSlots> BetChipY{};
  std::array<Chip, kMaxChips> ChipList{};
  int ChipCount = 0;
  int ChipColor = 1;  // what a left click lays: 1-5 chips, 7-10 shown stacks, 89-91 the markers
  std::array<int, 4> VisibleStacks = {101, 102, 103, 104};

  // The change of a bet under way: see change_bet.h. Scratch: known rolls leave it alone.
  Currency ChangeRequest;
  Currency ChangeRequest2;  // the second input box of a message
  Currency Change;
  Currency MinHere;
  Currency MaxHere;
  Currency OddsMultiple;
  unsigned MultipleSets = 0;  // times that a bet has set it
  bool MovingBet = false;
  // The least that a change left of the bankroll that it might need, since it was set.
  Currency LeastFreeMoney = kFreeEnough;

  // The decision under way: see decide_bet.h and settle.h. Scratch: known rolls leave it alone.
  int DecidedBet = 0;
  Currency GrossPayoff;
  Currency NetPayoff;
  Currency PressUnit;
  bool BetComesDown = false;
  int LastWinChoice = 0;
  int LastLossChoice = 0;
};
