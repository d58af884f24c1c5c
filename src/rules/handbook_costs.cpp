#include "rules/handbook_costs.h"

#include <sstream>

#include "core/number_format.h"
#include "core/text.h"
#include "rules/advantage.h"
#include "rules/advantage_table.h"

namespace {

constexpr std::string_view kBegin = "<!-- costs:";
constexpr std::string_view kEnd = "<!-- end costs -->";
constexpr int kPointsOfLineOdds[] = {4, 5, 6};  // 10, 9 and 8 are like them

std::string Percent(double share) {
  return FormatNumber(share == 0 ? 0 : -100 * share, "0.###") + " %";
}

void AddRow(std::string& table, const std::string& name, int betId, int paidAs) {
  const Advantage worth = FigureAdvantage(betId, false);
  const std::string pays = PayoffText(paidAs);
  table += "| " + name + " | " + (pays.empty() ? "by the throw" : pays) + " | " +
           Percent(worth.EVDec) + " | " + Percent(worth.EVRoll) + " | " +
           FormatNumber(worth.RollsDec, "0.##") + " |\n";
}

std::string CostTable(std::string_view betIds) {
  std::string table =
      "\n| Bet | Pays | Edge on each bet | Edge on each roll | Rolls to a decision |\n"
      "|:--|:--|--:|--:|--:|\n";
  std::istringstream ids{std::string(betIds)};
  for (int id = 0; ids >> id;) {
    if (id != PassLineOdds && id != DontPassOdds) {
      AddRow(table, BetName(id), id, id);
      continue;
    }
    const int before = Game.Point;
    for (const int point : kPointsOfLineOdds) {
      Game.Point = point;
      AddRow(table,
             BetName(id) + " on " + std::to_string(point) + " or " + std::to_string(14 - point), id,
             (id == PassLineOdds ? Come4Odds : DontCome4Odds) + point - 4);
    }
    Game.Point = before;
  }
  return table + '\n';
}

}  // namespace

std::string WithCosts(std::string_view page) {
  std::string made;
  while (true) {
    const std::size_t begin = page.find(kBegin);
    if (begin == page.npos) break;
    const std::size_t line = page.find('\n', begin);
    const std::size_t end = page.find(kEnd, begin);
    if (line == page.npos || end == page.npos || end < line) break;
    const std::size_t ids = begin + kBegin.size();
    made += page.substr(0, line + 1);
    made += CostTable(page.substr(ids, page.find("-->", ids) - ids));
    page.remove_prefix(end);
  }
  return made += page;
}
