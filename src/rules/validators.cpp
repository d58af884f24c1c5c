#include "rules/validators.h"

#include <algorithm>

#include "core/game_state.h"
#include "core/text.h"
#include "rules/presets.h"

namespace {

constexpr int kMostWholeDigits = 14;
constexpr Currency kSmallestRate = Currency::FromRaw(1);

CheckResult Fault(int tab, ConfigBox box, int index, std::string title, std::string text) {
  return {false, tab, box, index, std::move(title), std::move(text)};
}

// Checks.

CheckResult CheckFault(int index, std::string text) {
  return Fault(ChecksTab, ConfigBox::Denomination, index, "Check Values", std::move(text));
}

CheckResult CheckDenominations(const std::array<Currency, 5>& checks) {
  for (int index = 0; index < 5; ++index) {
    const Currency value = checks[static_cast<unsigned>(index)];
    if (value == Currency()) return CheckFault(index, "Check values must be greater than zero.");
    if (index > 0 && value < checks[static_cast<unsigned>(index - 1)]) {
      return CheckFault(index,
                        "Checks must be listed in ascending order with the \nsmallest valued "
                        "check in the leftmost position.");
    }
    if (!IsWhole(value / checks[0])) {
      return CheckFault(index, "All checks must be wholly divisible by the smallest check.");
    }
  }
  return {};
}

CheckResult CheckPlacard(const ConfigEntries& entries) {
  const std::string title = "Configuration Limits";
  if (entries.MinPlacard < entries.Checks[0]) {
    return Fault(BetsTab, ConfigBox::MinPlacard, 0, title,
                 "The minimum bet cannot be less than\nthe smallest check denomination of " +
                     MoneyText(entries.Checks[0]));
  }
  if (entries.MaxPlacard < entries.MinPlacard) {
    return Fault(BetsTab, ConfigBox::MaxPlacard, 0, title,
                 "The maximum bet must be greater than\nor equal to the minimum bet.");
  }
  return {};
}

/// The label of a row as its message names it: odds by their bet names.
std::string RowNameInMessage(const PayoffRow& row) {
  return IsOddsBet(row.BetId) ? std::string(kBetNames[static_cast<unsigned>(row.BetId)])
                              : row.Label;
}

CheckResult CheckBetPayoffs() {
  for (int index = 0; index < kPayoffRows; ++index) {
    const PayoffRow& row = PayoffRows()[static_cast<unsigned>(index)];
    if (Game.Payoff[static_cast<unsigned>(row.BetId)].Win <= Currency()) {
      return Fault(PayoffsTab, ConfigBox::BetPayoff, index, "Payoff ratio error",
                   "The payoff on " + RowNameInMessage(row) + " must be a positive amount.");
    }
  }
  return {};
}

CheckResult CheckFieldPayoffs() {
  bool anyWin = false;
  for (int index = 0; index < kFieldCombinations; ++index) {
    const PayoffRecord& record = Game.FieldPayoff[static_cast<unsigned>(index + 1)];
    if (record.Win < -record.Per) {
      return Fault(PayoffsTab, ConfigBox::FieldPayoff, index, "Payoff ratio error",
                   "The loss on any Field payoff cannot \nexceed the amount wagered.");
    }
    anyWin = anyWin || record.Win > Currency();
  }
  if (anyWin) return {};
  return Fault(PayoffsTab, ConfigBox::FieldPayoff, 0, "Payoff error",
               "At least one of the Field payoffs must be postiive.");
}

CheckResult RateFault(const std::string& text) {
  return Fault(ChecksTab, ConfigBox::RollRate, 0, "Sim Roll Rate Out Of Limits", text);
}

// Roll rates.

const RateUnit& UnitAt(int unit) {
  return kRateUnitTable[static_cast<unsigned>(std::clamp(unit, 0, kRateUnits - 1))];
}

/// An entry too small for four decimals still isn't zero.
Currency RateEntry(const std::string& text) {
  const Currency entry = ParseAmount(text);
  const bool hasValue = text.find_first_of("123456789") != std::string::npos;
  return entry == Currency() && hasValue ? kSmallestRate : entry;
}

/// From the unit to rolls per hour, and back: the same formula serves both ways for time per roll.
Currency RateFromUnit(Currency entry, const RateUnit& unit) {
  return unit.PerRoll ? Currency::FromDouble(Currency(unit.Factor) / entry) : entry * unit.Factor;
}

Currency RateInUnit(Currency rate, const RateUnit& unit) {
  const Currency factor = unit.Factor;
  return Currency::FromDouble(unit.PerRoll ? factor / rate : rate / factor);
}

// Numeric boxes.

/// The text as it stands without the selection, and the caret in it.
struct WorkingText {
  std::string Text;
  std::size_t Caret;

  bool Has(char letter) const { return Text.find(letter) != std::string::npos; }
  std::size_t Point() const { return std::min(Text.find('.'), Text.size()); }
  bool CaretBehindPoint() const { return Has('.') && Caret > Point(); }
  std::size_t DecimalsHeld() const { return Has('.') ? Text.size() - Point() - 1 : 0; }
  std::size_t WholeDigits() const { return Point() - (Has('-') ? 1 : 0); }
};

WorkingText WithoutSelection(const NumericBox& box) {
  const int size = static_cast<int>(box.Text.size());
  const auto start = static_cast<std::size_t>(std::clamp(box.SelectionStart, 0, size));
  WorkingText working{box.Text, start};
  working.Text.erase(start, static_cast<std::size_t>(std::max(box.SelectionLength, 0)));
  return working;
}

bool PointPasses(const WorkingText& text, int decimals) {
  if (decimals < 1 || text.Has('.')) return false;
  return text.Text.size() - text.Caret <= static_cast<std::size_t>(decimals);
}

bool DigitPasses(const WorkingText& text, int decimals) {
  if (text.CaretBehindPoint()) return text.DecimalsHeld() < static_cast<std::size_t>(decimals);
  return text.WholeDigits() < kMostWholeDigits;
}

// Payoff cells.

bool ShowsFor(const PayoffRecord& record) { return !record.ShownAsTo; }

Currency ShownWin(const PayoffRecord& record) {
  return ShowsFor(record) ? record.Win + record.Per : record.Win;
}

/// The left number stays as shown; what the bet pays follows.
void SetShownWin(PayoffRecord& record, Currency shown) {
  record.Win = ShowsFor(record) ? shown - record.Per : shown;
}

void SetWord(PayoffRecord& record, bool to) {
  const Currency shown = ShownWin(record);
  record.ShownAsTo = to;
  SetShownWin(record, shown);
}

// Comps. Reading and writing differ from the second word on. Required.

struct MaskBit {
  std::size_t Word;
  int Bit;
};

MaskBit BitRead(int betId) {
  if (betId <= 31) return {0, betId - 1};
  if (betId <= 62) return {1, betId - 32};
  return {2, betId - 63};
}

MaskBit BitWritten(int line) {
  if (line <= 30) return {0, line};
  if (line <= 60) return {1, line - 31};
  return {2, line - 61};
}

}  // namespace

const std::array<RateUnit, kRateUnits> kRateUnitTable = {{
    {"Rolls / hr", 1, false, 36'000'000, " rate is 36,000,000."},
    {"Rolls / min", 60, false, 600'000, " rate is 600,000."},
    {"Rolls / sec", 3600, false, 10'000, " rate is 10,000."},
    {"Hrs / roll", 1, true, 10'000, " rate is 10,000."},
    {"Mins / roll", 60, true, 600'000, " rate is 600,000."},
    {"Secs / roll", 3600, true, 36'000'000, " rate is 36,000,000."},
}};

ConfigEntries EntriesInForce() {
  ConfigEntries entries;
  std::copy_n(Game.Bets.begin() + SmallestChip, entries.Checks.size(), entries.Checks.begin());
  entries.MinPlacard = Game.MinPlacard;
  entries.MaxPlacard = Game.MaxPlacard;
  return entries;
}

CheckResult CheckLimitsOK(const ConfigEntries& entries) {
  CheckResult result = CheckDenominations(entries.Checks);
  if (result.Ok) result = CheckPlacard(entries);
  if (result.Ok && entries.RateChanged)
    result = SetRollsPerHour(entries.RateText, entries.RateUnit);
  if (!result.Ok) return result;
  if (entries.Cell) CommitPayoffCell(*entries.Cell, entries.CellText);
  result = CheckBetPayoffs();
  return result.Ok ? CheckFieldPayoffs() : result;
}

CheckResult SetRollsPerHour(const std::string& text, int unit) {
  const RateUnit& rateUnit = UnitAt(unit);
  const std::string item(rateUnit.Item);
  const Currency entry = RateEntry(text);
  if (entry <= Currency()) {
    return RateFault("The simulated " + item + " must be greater than zero.");
  }
  if (entry > Currency(rateUnit.Largest)) {
    return RateFault("The maximum simulated " + item + std::string(rateUnit.LimitWords));
  }
  Game.SimRollsPerHour = std::max(RateFromUnit(entry, rateUnit), kSmallestRate);
  return {};
}

std::string RollRateText(int unit) {
  const Currency shown = RateInUnit(std::max(Game.SimRollsPerHour, kSmallestRate), UnitAt(unit));
  return shown == Currency() ? "<.0001" : PlainText(shown);
}

bool EntryKeyPasses(const NumericBox& box, int key, int decimals, bool minusAllowed) {
  if (key == kBackspaceKey) return true;
  const WorkingText text = WithoutSelection(box);
  if (box.MaxLength > 0 && text.Text.size() >= static_cast<std::size_t>(box.MaxLength)) {
    return false;
  }
  if (text.Caret == 0 && text.Has('-')) return false;
  if (key == '-') return minusAllowed && text.Caret == 0;
  if (key == '.') return PointPasses(text, decimals);
  return key >= '0' && key <= '9' && DigitPasses(text, decimals);
}

ValueColorKind ValueColor(Currency amount) {
  if (amount == Currency()) return ValueBlack;
  return amount > Currency() ? ValueBlue : ValueRed;
}

Currency FractionOfPercent(Currency percent) {
  return Currency::FromDouble(percent / Currency(100));
}

Currency PercentOfFraction(Currency fraction) { return fraction * 100; }

PayoffRecord& RecordOfCell(const PayoffCell& cell) {
  const auto row = static_cast<std::size_t>(cell.Row);
  if (cell.Grid == PayoffGrid::Field) return Game.FieldPayoff.at(row + 1);
  return Game.Payoff.at(static_cast<std::size_t>(PayoffRows().at(row).BetId));
}

std::string PayoffCellText(const PayoffCell& cell) {
  const PayoffRecord& record = RecordOfCell(cell);
  switch (cell.Column) {
    case PayoffColumn::Win: return PlainText(ShownWin(record));
    case PayoffColumn::Word: return ShowsFor(record) ? "for" : "to";
    default: return PlainText(record.Per);
  }
}

int PayoffCellDecimals(const PayoffCell& cell) { return cell.Column == PayoffColumn::Win ? 2 : 0; }

bool PayoffCellTakesMinus(const PayoffCell& cell) {
  return cell.Grid == PayoffGrid::Field && cell.Column == PayoffColumn::Win;
}

void CommitPayoffCell(const PayoffCell& cell, const std::string& text) {
  PayoffRecord& record = RecordOfCell(cell);
  const Currency entry = ParseAmount(text);
  if (cell.Column == PayoffColumn::Win) {
    SetShownWin(record, entry);
  } else if (cell.Column == PayoffColumn::Per && entry > Currency()) {
    const Currency shown = ShownWin(record);
    record.Per = entry;
    SetShownWin(record, shown);
  }
}

bool PressPayoffWordKey(const PayoffCell& cell, int key) {
  PayoffRecord& record = RecordOfCell(cell);
  switch (key) {
    case 't':
    case 'T': SetWord(record, true); return true;
    case 'f':
    case 'F': SetWord(record, false); return true;
    case ' ': SetWord(record, ShowsFor(record)); return true;
    default: return false;
  }
}

void DeriveFieldPer() {
  Currency common;
  bool differ = false;
  for (unsigned combination = 1; combination <= kFieldCombinations; ++combination) {
    const PayoffRecord& record = Game.FieldPayoff[combination];
    if (record.Win == Currency()) continue;
    differ = differ || (common != Currency() && common != record.Per);
    common = record.Per;
  }
  Game.Payoff[Field].Per = differ || common == Currency() ? Currency(1) : common;
}

bool BetCountsForComps(int betId) {
  if (!IsBet(betId)) return false;
  const MaskBit at = BitRead(betId);
  return (Game.CompBetMask[at.Word] >> at.Bit & 1U) != 0;
}

CompBetList CompBets() {
  CompBetList bets{};
  for (int betId = 1; betId <= LastBet; ++betId) {
    bets[static_cast<unsigned>(betId - 1)] = BetCountsForComps(betId);
  }
  return bets;
}

void StoreCompBets(const CompBetList& bets) {
  Game.CompBetMask = {};
  for (int line = 0; line < LastBet; ++line) {
    const MaskBit at = BitWritten(line);
    if (bets[static_cast<unsigned>(line)]) Game.CompBetMask[at.Word] |= 1U << at.Bit;
  }
}

bool CompBetDefault(int betId) { return !IsOddsBet(betId); }

int StepStyle(int style, int by, int count) {
  const int place = (style - 1 + by) % count;
  return (place < 0 ? place + count : place) + 1;
}

void CorrectDiceStyle() {
  if (Game.DiceStyle < 1 || Game.DiceStyle > kDiceStyles) Game.DiceStyle = 1;
}

std::array<bool, kNoticeBoxes> NoticeBoxes() {
  std::array<bool, kNoticeBoxes> boxes{};
  for (unsigned box = 0; box < kNoticeBoxes; ++box) {
    boxes[box] = (static_cast<unsigned>(Game.Notify) >> box & 1U) != 0;
  }
  return boxes;
}

void StoreNoticeBoxes(const std::array<bool, kNoticeBoxes>& boxes) {
  Game.Notify = 0;
  for (unsigned box = 0; box < kNoticeBoxes; ++box) {
    if (boxes[box]) Game.Notify |= static_cast<int>(1U << box);
  }
}

std::string_view WonLostCaption(Currency net) {
  if (net == Currency()) return "Won/Lost:";
  return net > Currency() ? "Won:" : "Lost:";
}
