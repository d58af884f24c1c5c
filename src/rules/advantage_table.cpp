#include "rules/advantage_table.h"

#include <algorithm>
#include <cmath>

#include "core/game_state.h"
#include "core/number_format.h"
#include "core/text.h"
#include "rules/advantage.h"
#include "rules/presets.h"

namespace {

using Values = std::array<double, kAdvantageColumns>;

constexpr std::array<std::string_view, kAdvantageColumns> kFigureHeads = {
    "EV/Roll", "StDev/Roll", "EV/Dec", "StDev/Dec", "EV/Hour"};
constexpr std::array<std::string_view, kAdvantageColumns> kMiscHeads = {
    "Rolls/Dec", "Decs/Roll", "Decs/Hour", "Decs/Min", "Time/Dec"};
constexpr unsigned kTimeColumn = 4;

double RollsPerHour() { return Game.SimRollsPerHour.ToDouble(); }

Values FiguresOf(const Advantage& bet) {
  return {bet.EVRoll * 100, bet.StDevRoll * 100, bet.EVDec * 100, bet.StDevDec * 100,
          bet.EVRoll * RollsPerHour() * 100};
}

Values MiscDataOf(const Advantage& bet) {
  if (bet.RollsDec == 0) return {};
  const double perHour = RollsPerHour() / bet.RollsDec;
  return {bet.RollsDec, 1 / bet.RollsDec, perHour, perHour / 60, bet.RollsDec / RollsPerHour()};
}

AdvantageRow RowOf(int betId) {
  AdvantageRow row;
  row.BetId = betId;
  row.Label = RowLabel(betId);
  row.Blank = !HasAdvantage(betId);
  if (row.Blank) return row;
  const Advantage bet = FigureAdvantage(betId);
  row.Values = Game.ShowMiscData ? MiscDataOf(bet) : FiguresOf(bet);
  for (unsigned column = 0; column < kAdvantageColumns; ++column) {
    row.Texts[column] = Game.ShowMiscData && column == kTimeColumn
                            ? TimeText(row.Values[column])
                            : FormatNumber(row.Values[column], "0.00;-0.00;0.00");
  }
  return row;
}

std::string RatioText(const PayoffRecord& payoff) {
  return PlainText(payoff.ShownAsTo ? payoff.Win : payoff.Win + payoff.Per) +
         (payoff.ShownAsTo ? " to " : " for ") + PlainText(payoff.Per);
}

template <std::size_t Count>
void Append(std::vector<std::string>& cells, const std::array<std::string, Count>& texts) {
  cells.insert(cells.end(), texts.begin(), texts.end());
}

TextTable EmptySheet(std::string title, std::vector<std::string> heads) {
  TextTable sheet{std::move(title), std::move(heads), {}};
  if (!Game.ShowMiscData) sheet.Note = kAdvantageNote;
  for (const std::string_view head : AdvantageHeads()) sheet.Headings.emplace_back(head);
  return sheet;
}

}  // namespace

std::string PayoffText(int betId) {
  const bool several = betId == Field || betId == CAndE || betId == Horn || betId == World;
  if (several || !HasAdvantage(betId)) return {};
  switch (betId) {
    case PassLine: betId = Come; break;
    case DontPass: betId = DontCome; break;
    default: break;
  }
  return RatioText(Game.Payoff[static_cast<unsigned>(betId)]);
}

const std::array<std::string_view, kAdvantageColumns>& AdvantageHeads() {
  return Game.ShowMiscData ? kMiscHeads : kFigureHeads;
}

std::vector<AdvantageRow> AdvantageRows() {
  std::vector<AdvantageRow> rows;
  for (int betId = Lay4; betId <= LastBet; ++betId) rows.push_back(RowOf(betId));
  return rows;
}

void SortAdvantages(std::vector<AdvantageRow>& rows, int column, bool descending) {
  const auto before = [column](const AdvantageRow& a, const AdvantageRow& b) {
    if (column < 0) return a.Label < b.Label;
    const auto at = static_cast<unsigned>(column);
    return a.Values[at] < b.Values[at];
  };
  const bool byValue = column >= 0;
  std::stable_sort(rows.begin(), rows.end(), [=](const AdvantageRow& a, const AdvantageRow& b) {
    if (byValue && (a.Blank || b.Blank)) return !a.Blank && b.Blank;
    return descending ? before(b, a) : before(a, b);
  });
}

std::string TimeText(double hours) {
  constexpr double kHundredths = 100;
  constexpr double kPerMinute = 60 * kHundredths;
  constexpr double kPerHour = 60 * kPerMinute;
  const double count = std::round(hours * kPerHour);
  return FormatNumber(Int(count / kPerHour), "0") + ":" +
         FormatNumber(Int(std::fmod(count, kPerHour) / kPerMinute), "00") + ":" +
         FormatNumber(std::fmod(count, kPerMinute) / kHundredths, "00.0#");
}

TextTable AdvantageSheet(const std::vector<AdvantageRow>& rows) {
  TextTable sheet = EmptySheet("Advantages", {"Bet"});
  for (const AdvantageRow& row : rows) {
    sheet.Rows.push_back({row.Label});
    Append(sheet.Rows.back(), row.Texts);
  }
  return sheet;
}

TextTable PayoffSheet() {
  TextTable sheet = EmptySheet("Payoffs and Advantages", {"Bet", "Payoff"});
  for (const AdvantageRow& row : AdvantageRows()) {
    sheet.Rows.push_back({row.Label, PayoffText(row.BetId)});
    Append(sheet.Rows.back(), row.Texts);
    if (row.BetId != Field) continue;
    for (unsigned throws = 1; throws <= kFieldCombinations; ++throws) {
      sheet.Rows.push_back(
          {"   " + std::string(kFieldLabels[throws - 1]), RatioText(Game.FieldPayoff[throws])});
      sheet.Rows.back().resize(sheet.Headings.size());
    }
  }
  return sheet;
}
