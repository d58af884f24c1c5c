// Auto-Play: what the table does by itself.
#pragma once

#include <array>

#include "core/currency.h"

/// Choices of `HandleWinningBets`.
enum WinChoice : int {
  WinManual = 0,
  WinTakeDown = 1,
  WinSameBet = 2,
  WinPressOneUnit = 3,
  WinPressDouble = 4,
  WinParlay = 5,
  WinSameBetModified = 6,
  WinSetBet = 7,
};

/// Choices of `HandleLosingBets`.
enum LossChoice : int {
  LossManual = 0,
  LossNoBet = 1,
  LossBetRemainder = 2,
  LossSameBet = 3,
  LossPlusOneUnit = 4,
  LossDoubleBet = 5,
  LossSameBetModified = 6,
  LossSetBet = 7,
};

enum AdjustMode : int { AdjustManual = 0, AdjustMinor = 1, AdjustColor = 2 };
enum BiasKind : int { BiasNearest = 0, BiasIncrease = 1, BiasDecrease = 2 };

/// Slots of the amounts of the " Same Bet:" and " Bet:" choices. The settle screen has the first
/// four, Auto-Play the others.
enum ModifySlot : int {
  ScreenWinSameBet = 0,
  ScreenWinBet = 1,
  ScreenLossSameBet = 2,
  ScreenLossBet = 3,
  AutoWinSameBet = 4,
  AutoLossSameBet = 5,
  AutoWinBet = 6,
  AutoLossBet = 7,
  kModifySlots = 8,
};

enum ModifyOperatorKind : int {
  ModifyAdd = 0,
  ModifySubtract = 1,
  ModifyTimes = 2,
  ModifyDivide = 3
};

/// `ModifyUnit`: dollars, percent, or 2 to 6 for a chip.
enum ModifyUnitKind : int {
  ModifyDollars = 0,
  ModifyPercent = 1,
  ModifyFirstChip = 2,
  ModifyLastChip = 6
};

/// Entries of `AutoStopOn`.
enum AutoStopEntry : int {
  StopOnWin = 0,
  StopOnLoss = 1,
  StopOnTwo = 2,
  StopOnThree = 3,
  StopOnFour = 4,
  StopOnHardFour = 5,
  StopOnFive = 6,
  StopOnSix = 7,
  StopOnHardSix = 8,
  StopOnSeven = 9,
  StopOnEight = 10,
  StopOnHardEight = 11,
  StopOnNine = 12,
  StopOnTen = 13,
  StopOnHardTen = 14,
  StopOnEleven = 15,
  StopOnTwelve = 16,
  kAutoStops = 17,
};

struct AutoPlaySettings {
  int HandleWinningBets = WinManual;
  int HandleLosingBets = LossNoBet;
  std::array<Currency, kModifySlots> ModifyAmount{};
  std::array<int, kModifySlots> ModifyOperator{};
  std::array<Currency, kModifySlots> ModifyUnit{};
  int AutoAdjust = AdjustColor;
  int LayBias = BiasNearest;
  int PlaceBias = BiasIncrease;
  int DoBias = BiasNearest;
  int DontBias = BiasNearest;
  bool AutoTakeFullOdds = false;
  bool AutoLayFullOdds = false;
  bool AutoRemovePlace = false;
  bool AutoArrangeChips = false;
  bool AutoRollDice = false;
  int NumAutoRolls = 0;
  int AutoRollsLeft = 0;
  int AutoRollDelay = 0;  // seconds
  std::array<bool, kAutoStops> AutoStopOn{};
  int HyperThrottle = 0;  // 0 for full speed

  bool operator==(const AutoPlaySettings&) const = default;
};
