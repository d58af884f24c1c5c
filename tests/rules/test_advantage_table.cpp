#include "rules/advantage_table.h"

#include "support/table_fixture.h"

namespace {

using Texts = std::array<std::string, kAdvantageColumns>;

class AdvantageTable : public TableTest {
 protected:
  static AdvantageRow Row(int bet) { return AdvantageRows().at(static_cast<std::size_t>(bet - 1)); }
};

TEST_F(AdvantageTable, ShowsPercentagesOrRollsDecisionsAndTime) {
  EXPECT_EQ(Row(Place6).Texts, (Texts{"-0.46", "59.64", "-1.52", "107.88", "-55.56"}));
  EXPECT_EQ(Row(Come).Label, "Passline/Come (c.o.)");
  EXPECT_EQ(Row(DontPassOdds).Label, "Don't Pass/Come Odds");
  EXPECT_TRUE(Row(DontPassOdds).Blank);
  EXPECT_EQ(Row(DontPassOdds).Texts, Texts());
  Game.ShowMiscData = true;
  EXPECT_EQ(Row(Place6).Texts, (Texts{"3.27", "0.31", "36.67", "0.61", "0:01:38.18"}));
  EXPECT_EQ(AdvantageHeads()[4], "Time/Dec");
  Game.UseSkewedProbability = true;
  Game.ProbMatrix[1] = {};  // nothing is ever decided
  EXPECT_EQ(Row(Place6).Texts, (Texts{"0.00", "0.00", "0.00", "0.00", "0:00:00.0"}));
  EXPECT_EQ(TimeText(36'000.99), "36000:59:24.0");
  EXPECT_EQ(TimeText(1.99999999), "2:00:00.0");
}

TEST_F(AdvantageTable, SortsByAnyColumnWithBlankRowsLast) {
  for (const bool descending : {false, true})
    for (int column = 0; column < kAdvantageColumns; ++column) {
      std::vector<AdvantageRow> rows = AdvantageRows();
      SortAdvantages(rows, column, descending);
      EXPECT_TRUE(rows[81].Blank && rows[82].Blank);
      const auto at = static_cast<unsigned>(column);
      EXPECT_TRUE(std::is_sorted(rows.begin(), rows.end() - 2, [=](const auto& a, const auto& b) {
        if (a.Values[at] == b.Values[at]) return a.BetId < b.BetId;
        return (a.Values[at] < b.Values[at]) != descending;
      })) << column;
    }
}

TEST_F(AdvantageTable, GoesToPaperAndTheClipboard) {
  std::vector<AdvantageRow> rows = AdvantageRows();
  rows.resize(1);
  const TextTable shown = AdvantageSheet(rows);
  EXPECT_EQ(shown.Headings[5] + shown.Rows[0][0], "EV/HourLay 4");
  EXPECT_EQ(shown.Rows[0][5], rows[0].Texts[4]);
  Game.Payoff[Hard6] = {9, false, 1};
  const TextTable sheet = PayoffSheet();
  EXPECT_EQ(sheet.Rows.size(), 83U + 21U);
  for (const auto& cells : sheet.Rows) {
    EXPECT_EQ(cells.size(), sheet.Headings.size());
    EXPECT_TRUE(cells[0] != "Hard 6" || cells[1] == "10 for 1");
  }
}

}  // namespace
