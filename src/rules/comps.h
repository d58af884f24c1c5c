// Comps: what a casino would give back for the play.
#pragma once

#include <array>
#include <string>

#include "core/currency.h"

/// What comps are a share of, the choices of `BaseComps`.
enum CompBase : int { CompsOnVig = 0, CompsOnAction = 1, CompsOnActionAndTime = 2 };

/// Whom the figures are for. The first two heed `CompsUseTrueProbs`; the third takes the dice in
/// force.
enum CompsMode : int { CompsForTab = 1, CompsForSummary = 2, CompsInForce = 3 };

/// The figures of the comps. Money that comes of an expectation or a quotient stays a double.
struct CompFigures {
  Currency Bets;             // wagers decided, of the bets that count
  Currency Action;           // their sum
  double AverageAction = 0;  // 0 without a wager, like `ActionAndTime`
  double Vig = 0;  // what the player can expect of the action; below 0 with the house's edge
  double ActionAndTime = 0;  // the average action times the hours played
  double Value = 0;
  double Hours = 0;  // of play, by `SimRollsPerHour`
};

/// Figures the comps from the actual wagers of the bets in `CompBetMask`, by `CompRate` percent of
/// the base that `BaseComps` chooses. Reads the bet tables, the payoffs and the roll rate.
CompFigures FigureComps(CompsMode mode);

inline constexpr int kCompLines = 7;

/// The captions of the lines of the comps, and the figures as they show them.
extern const std::array<std::string_view, kCompLines> kCompCaptions;
std::array<std::string, kCompLines> CompTexts(const CompFigures& figures);

/// The comp value as the summary shows it.
std::string CompValueText(const CompFigures& figures);
