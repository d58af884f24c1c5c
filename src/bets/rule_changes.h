// Changes of house rules that touch the bets on the table, and the closing of the configuration.
#pragma once

#include <array>

#include "core/game_state.h"
#include "rules/validators.h"

/// Change how vig is charged on all Buy or Lay bets and figure the held vig again. A change that
/// would put the bets above the bankroll is undone, and the result holds the message.
CheckResult SetBuyVigUpFront(bool upFront);
CheckResult SetLayVigUpFront(bool upFront);
CheckResult SetRoundBuyVig(int rounding);
CheckResult SetRoundLayVig(int rounding);
CheckResult SetBuyVigPct(Currency fraction);
CheckResult SetLayVigPct(Currency fraction);

/// Allows negative bankrolls or not. They stay allowed while the bankroll is negative or doesn't
/// cover the bets.
CheckResult SetNegBankroll(bool allowed);

/// What follows when the configuration closes with all entries valid: the peak and trough of the
/// bankroll, the Field's derived ratio, all bets under the new rules, notices and sounds.
void CloseConfiguration(const std::array<bool, kNoticeBoxes>& noticeBoxes);
