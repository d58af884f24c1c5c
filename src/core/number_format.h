// Numbers as the screens of figures show them, by patterns.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "core/currency.h"

/// A count of ten-thousandths wider than money: sums over all bets and games always fit.
__extension__ using WideCount = __int128;

/// A number by a pattern of up to three sections divided by ";": for values above 0 (or all that
/// have no section of their own), below 0, which writes their sign itself, and 0 with what rounds
/// to it. In a section each "0" is a digit that is always
/// there, each "#" one that shows when it's needed, a "," groups thousands, "%" shows hundredfold,
/// and whatever stands before and behind the digits is taken as it is. Digits that the pattern has
/// no place for are rounded away, halves away from 0. A section "0" below 0 shows all such values
/// as 0. A value that is no number counts as 0.
std::string FormatNumber(double value, std::string_view pattern);

/// The same for ten-thousandths, exact at any size.
std::string FormatAmount(WideCount raw, std::string_view pattern);
inline std::string FormatAmount(Currency amount, std::string_view pattern) {
  return FormatAmount(WideCount{amount.Raw()}, pattern);
}

inline constexpr std::string_view kWholePattern = "#,#;-#,#;0";
inline constexpr std::string_view kFourDecimals = "#,#.0###;-#,#;0";
/// Two decimals and grouped thousands.
inline constexpr std::string_view kStandardPattern = "#,##0.00;-#,##0.00;0";
