// Changes of house rules that touch the bets on the table, and the closing of the configuration.
#pragma once

#include <array>

#include "core/game_state.h"
#include "rules/check_result.h"
#include "rules/choices.h"

/// Change how vig is charged on all Buy or Lay bets and figure the held vig again. A change that
/// would put the bets above the bankroll isn't made, and the result holds the message. The rates
/// themselves are plain fields: what stands follows them when the configuration closes.
CheckResult SetBuyVigUpFront(bool upFront);
CheckResult SetLayVigUpFront(bool upFront);
CheckResult SetRoundBuyVig(int rounding);
CheckResult SetRoundLayVig(int rounding);

/// Sets the five chip values and lays all chips anew. Values that can't stand together change
/// nothing, and the result tells why.
CheckResult SetChipValues(const std::array<Currency, 5>& values);

/// Passes every bet through the rules in force, and lays all chips anew.
void FitBetsToRules();

/// Allows negative bankrolls or not. They stay allowed while the bankroll is negative or doesn't
/// cover the bets.
CheckResult SetNegBankroll(bool allowed);

/// What follows when the configuration closes with all entries valid (`CheckLimitsOK`): the vig
/// that standing bets hold, the peak and trough of the bankroll, the Field's derived ratio, all
/// bets under the new rules, notices and sounds. When the vig would put the bets above the bankroll
/// nothing follows: the result holds the message and its box, and the screen stays open.
CheckResult CloseConfiguration(const std::array<bool, kNoticeBoxes>& noticeBoxes);
