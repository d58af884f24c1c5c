// The advantages of all bets as a table: to be shown, sorted, printed and copied.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "core/text_table.h"

inline constexpr int kAdvantageColumns = 5;

/// Stands over the table while its figures are percentages.
inline constexpr std::string_view kAdvantageNote = "All figures shown in percentage";

struct AdvantageRow {
  int BetId = 0;
  std::string Label;
  bool Blank = false;  // line odds without a point: nothing is shown
  std::array<double, kAdvantageColumns> Values{};
  std::array<std::string, kAdvantageColumns> Texts;
};

/// The heads of the columns, by `ShowMiscData`.
const std::array<std::string_view, kAdvantageColumns>& AdvantageHeads();

/// A row for each bet, in their order. Percentages and the spread, or with `ShowMiscData` rolls,
/// decisions and time, by `SimRollsPerHour`.
std::vector<AdvantageRow> AdvantageRows();

/// Sorts by a column, -1 for the labels; equal rows stay in their order and blank ones come last.
void SortAdvantages(std::vector<AdvantageRow>& rows, int column, bool descending);

/// A time in hours, as hours, minutes and seconds with their hundredths.
std::string TimeText(double hours);

/// The advantages as they are shown, in the order given.
TextTable AdvantageSheet(const std::vector<AdvantageRow>& rows);

/// The ratio at which a bet is paid, as "9 to 5"; empty where it has several.
std::string PayoffText(int betId);

/// All payoffs with the advantages of their bets, the Field's throw by throw.
TextTable PayoffSheet();
