// House rules and program settings: every field with its default.
#pragma once

#include <array>
#include <cstdint>

#include "core/bets.h"
#include "core/currency.h"

/// A payoff ratio: the bet wins `Win` for every `Per` net. `ShownAsTo` only chooses the words: "to"
/// shows `Win`, "for" shows `Win` + `Per`.
struct PayoffRecord {
  Currency Win = 1;
  bool ShownAsTo = true;
  Currency Per = 1;

  bool operator==(const PayoffRecord&) const = default;
};

inline constexpr int kFieldCombinations = 21;

/// Payoffs by bet id; 0 is the working record of a decision.
using PayoffTable = std::array<PayoffRecord, 101>;
inline constexpr int kChipStyles = 7;
inline constexpr int kDiceStyles = 5;

enum OddsMethod : int {
  OddsAutoSelect = 0,
  OddsNoPush = 1,
  OddsMinorPush = 2,
  OddsColorPush = 3,
  OddsSingleTimesFlat = 4,
  OddsSingleOfFlat = 5,
};

enum VigRounding : int { RoundedNormally = 0, RoundedDown = 1, RoundedUp = 2 };

enum BankrollInit : int {
  StartWithAmount = 0,
  PromptForBankroll = 1,
  CarryBankroll = 2,
  CarryBankrollAndNet = 3,
};

enum DiceActionKind : int {
  DiceStationary = 0,
  DiceReturnAfterThrown = 1,
  DiceReturnOnDecision = 2,
  DiceRemainOnTable = 3,
};

/// Slots of `TableColor`.
enum TableColorSlot : int {
  ColorFelt = 0,
  ColorLines = 1,
  ColorPassText = 2,
  ColorDontText = 3,
  ColorPlaceText = 4,
  ColorFieldText = 5,
  ColorDice = 6,
  ColorPips = 7,
  kTableColors = 8,
};

struct Settings {
  // Checks and dice.
  bool UseCentsSymbol = true;
  int ChipStyle = 1;  // 1 to 7
  int DiceStyle = 1;  // 1 to 5
  int DiceAction = DiceReturnAfterThrown;
  Currency SimRollsPerHour = 120;

  // Sound. The choices are indices into the lists found at start-up; 0 is none.
  bool DisableAllSound = false;
  bool AutoBetSounds = false;  // true silences the sounds of Auto-Bet, its name notwithstanding
  int StickPerson = 0;
  int DiceSound = 0;
  int ChipSound = 0;
  int WinSound = 0;

  // Comps.
  Currency CompRate = 30;
  int BaseComps = 0;
  bool CompsUseTrueProbs = true;
  std::array<std::uint32_t, 3> CompBetMask = {0xC0FC0FFF, 0xFFFF6FFF, 0xFFFFFFFF};

  // Colours as 0xRRGGBB, and the felt.
  std::array<std::uint32_t, kTableColors> TableColor = {0x1B784A, 0xFFFFFF, 0xFFBB77, 0x000000,
                                                        0xFFFFFF, 0xFFFFFF, 0xFF0000, 0xFFFFFF};
  float TableFeltPattern = 8;

  // Misc.
  int Notify = 15;
  bool SnapMouse = true;
  bool ColorPrint = true;
  std::array<int, 3> PrintSettings = {12, 9, 13};
  int RngChoice = 0;  // 0 to 7
  bool UserSeed = false;
  bool ReSeed = true;

  // Bankroll.
  int BankrollInitType = StartWithAmount;
  Currency BankrollInitAmt = 500;
  bool NegBankroll = false;
  Currency AtmAmount = 500;

  // Bets.
  Currency MinPlacard = 1;
  Currency MaxPlacard = 1000;
  Currency MaxPropPayoff = 3000;
  Currency MaxOddsBet = 2000;
  Currency OddsAllowed410 = 2;
  Currency OddsAllowed59 = 2;
  Currency OddsAllowed68 = Currency::FromRaw(25'000);
  int OddsCalcMethod = OddsAutoSelect;
  int BarDont = 12;  // 2 or 12, the number that pushes the don't bets
  bool AllowPutBets = false;
  Currency LayVigPct = Currency::FromRaw(500);  // a fraction: 0.05 is 5 %
  bool LayVigUpFront = true;
  int RoundLayVig = RoundedNormally;
  Currency BuyVigPct = Currency::FromRaw(500);
  bool BuyVigUpFront = true;
  int RoundBuyVig = RoundedNormally;

  // Payoffs by bet id, and by Field combination 1 to 21.
  PayoffTable Payoff{};
  std::array<PayoffRecord, kFieldCombinations + 1> FieldPayoff{};

  // Where the configuration screen was left.
  int ConfigTab = 0;
  int PayoffsScroll = 0;
  int AdvantageScroll = 0;
  int PayoffCellLeft = 0;
  int PayoffCellTop = 0;
  bool IncludeZeroOutcomes = false;
  bool ShowMiscData = false;

  bool operator==(const Settings&) const = default;
};
