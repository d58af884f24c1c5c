// What the player enters on the configuration screen: checks with their messages, the keys that a
// numeric box takes, units of the roll rate, editing of payoffs, comps and styles.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "core/settings.h"

// Checks.

/// Tabs of the configuration screen.
enum ConfigTabId : int {
  ChecksTab = 0,
  SoundTab = 1,
  CompsTab = 2,
  ColorsTab = 3,
  MiscTab = 4,
  BankrollTab = 5,
  BetsTab = 6,
  PayoffsTab = 7,
  ProbabilityTab = 8,
  AdvantageTab = 9,
};

/// The box that a check complains about.
enum class ConfigBox {
  None,
  Denomination,
  MinPlacard,
  MaxPlacard,
  RollRate,
  BetPayoff,
  FieldPayoff
};

/// What a check found. When it isn't `Ok`, the screen goes to `Tab`, to number `Index` (from 0) of
/// the boxes or grid rows named by `Box`, and shows the message.
struct CheckResult {
  bool Ok = true;
  int Tab = 0;
  ConfigBox Box = ConfigBox::None;
  int Index = 0;
  std::string Title;
  std::string Text;
};

enum class PayoffGrid { Bets, Field };
enum class PayoffColumn { Win, Word, Per };

/// A cell of the payoff grids; `Row` counts from 0.
struct PayoffCell {
  PayoffGrid Grid = PayoffGrid::Bets;
  int Row = 0;
  PayoffColumn Column = PayoffColumn::Win;
};

/// The entries of the screen that aren't in their fields yet.
struct ConfigEntries {
  std::array<Currency, 5> Checks{};
  Currency MinPlacard;
  Currency MaxPlacard;
  bool RateChanged = false;
  std::string RateText;
  int RateUnit = 0;
  std::optional<PayoffCell> Cell;
  std::string CellText;
};

/// The entries as they stand in their fields, with no box under edit.
ConfigEntries EntriesInForce();

/// Checks the check values, then the limits of a bet, the roll rate, the cell under edit and both
/// payoff tables, up to the first fault. Stores the roll rate and the cell on its way.
CheckResult CheckLimitsOK(const ConfigEntries& entries);

// The simulated roll rate.

inline constexpr int kRateUnits = 6;

struct RateUnit {
  std::string_view Item;
  int Factor;
  bool PerRoll;  // time for a roll rather than rolls in a time
  int Largest;
  std::string_view LimitWords;
};

extern const std::array<RateUnit, kRateUnits> kRateUnitTable;

/// Stores a rate entered in a unit as `SimRollsPerHour`, which is never 0.
CheckResult SetRollsPerHour(const std::string& text, int unit);

/// `SimRollsPerHour` in a unit, as its box shows it.
std::string RollRateText(int unit);

// Numeric boxes.

inline constexpr int kBackspaceKey = 8;

/// A numeric box as it stands when a key is typed.
struct NumericBox {
  std::string Text;
  int SelectionStart = 0;  // the caret stands here
  int SelectionLength = 0;
  int MaxLength = 0;  // 0 for no limit
};

/// True when a numeric box takes the key, a character code.
bool EntryKeyPasses(const NumericBox& box, int key, int decimals, bool minusAllowed);

/// Colours of the 16-colour palette for an amount: black, blue above 0, red below.
enum ValueColorKind : int { ValueBlack = 0, ValueBlue = 9, ValueRed = 12 };
ValueColorKind ValueColor(Currency amount);

/// A rate of vig is kept as a fraction and shown as a percentage.
Currency FractionOfPercent(Currency percent);
Currency PercentOfFraction(Currency fraction);

// Payoff cells.

PayoffRecord& RecordOfCell(const PayoffCell& cell);
std::string PayoffCellText(const PayoffCell& cell);
int PayoffCellDecimals(const PayoffCell& cell);
bool PayoffCellTakesMinus(const PayoffCell& cell);

/// Stores what was entered in a number cell. A `Per` that isn't above 0 stays as it was; in a "for"
/// record the number shown on the left stays when `Per` changes.
void CommitPayoffCell(const PayoffCell& cell, const std::string& text);

/// A key in a word cell: "t" and "f" choose the word, the space bar flips it. The number on the
/// left stays as shown. False for any other key.
bool PressPayoffWordKey(const PayoffCell& cell, int key);

/// `Per` of the Field bet's own record: the one that all Field payoffs but the pushes share,
/// else 1.
void DeriveFieldPer();

// Comps.

/// The choice of each bet in the list: index 0 is bet 1.
using CompBetList = std::array<bool, LastBet>;

/// True when a bet counts for comps.
bool BetCountsForComps(int betId);
CompBetList CompBets();

/// Stores the list. Required: from the bet C and E on it lies one bit away from where
/// `BetCountsForComps` looks.
void StoreCompBets(const CompBetList& bets);

/// The default of a bet: all count but odds.
bool CompBetDefault(int betId);

// Choices.

/// A style `by` places on, round both ends of 1 to `count`.
int StepStyle(int style, int by, int count);

/// A dice style outside its list becomes the first.
void CorrectDiceStyle();

inline constexpr int kNoticeBoxes = 5;
std::array<bool, kNoticeBoxes> NoticeBoxes();
void StoreNoticeBoxes(const std::array<bool, kNoticeBoxes>& boxes);

/// The caption of the net of the game.
std::string_view WonLostCaption(Currency net);
