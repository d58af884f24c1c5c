#include "rules/comps.h"

#include <algorithm>

#include "core/game_state.h"
#include "core/number_format.h"
#include "core/text.h"
#include "rules/advantage.h"
#include "rules/comp_bets.h"

namespace {

constexpr const char* kWholePattern = "#,#;-#,#;0";

std::string AverageText(double average) {
  return FormatNumber(average, IsWhole(average) ? kWholePattern : "#,#.##;-#,#.00;0");
}

std::string HoursText(double hours) {
  return FormatNumber(hours, IsWhole(hours) ? kWholePattern : "#,#.0###;-#,#;0");
}

/// A casino takes nothing back.
double ShownValue(const CompFigures& figures) { return std::max(figures.Value, 0.0); }

double ValueOf(const CompFigures& figures) {
  const double rate = Game.CompRate.ToDouble();
  switch (Game.BaseComps) {
    case CompsOnAction: return figures.Action.ToDouble() / 100 * rate;
    case CompsOnActionAndTime: return figures.ActionAndTime / 100 * rate;
    default: return -figures.Vig * rate / 100;
  }
}

}  // namespace

const std::array<std::string_view, kCompLines> kCompCaptions = {
    "Total # bets",
    "Total comp action $",
    "Average comp action $",
    "Theoretical house vig $",
    "Avg. comp action x time $",
    "Total comp value $",
    "Simulated hours",
};

CompFigures FigureComps(CompsMode mode) {
  const bool trueDice = mode != CompsInForce && Game.CompsUseTrueProbs;
  const bool skewed = Game.UseSkewedProbability && !trueDice;
  CompFigures figures;
  for (int betId = Lay4; betId <= LastBet; ++betId) {
    const auto& wagers = Game.BetWagers[Actual][static_cast<unsigned>(betId)];
    if (wagers[StatCount] == 0 || !BetCountsForComps(betId)) continue;
    figures.Bets += wagers[StatCount];
    figures.Action += wagers[StatSum];
    figures.Vig += wagers[StatSum].ToDouble() * FigureAdvantage(betId, skewed).EVDec;
  }
  figures.Hours = Currency(Game.RollCount[0]) / Game.SimRollsPerHour;
  if (figures.Bets != 0) {
    figures.AverageAction = figures.Action / figures.Bets;
    figures.ActionAndTime = figures.Action.ToDouble() * figures.Hours / figures.Bets.ToDouble();
  }
  figures.Value = ValueOf(figures);
  return figures;
}

std::array<std::string, kCompLines> CompTexts(const CompFigures& figures) {
  return {MoneyText(figures.Bets),
          MoneyText(figures.Action),
          AverageText(figures.AverageAction),
          FormatNumber(-figures.Vig, "#,#.00;-#,#.00;0"),
          AverageText(figures.ActionAndTime),
          FormatNumber(ShownValue(figures), "#,#.00;0;0"),
          HoursText(figures.Hours)};
}

std::string CompValueText(const CompFigures& figures) {
  return FormatNumber(ShownValue(figures), "$#,0.00;0;0");
}
