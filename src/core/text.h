// Texts of the game: money, counts, names.
#pragma once

#include <cstddef>
#include <string>

#include "core/currency.h"

/// An amount as messages, the log and the quick status show it: thousands grouped, no decimals when
/// whole, else two, or as many as needed up to four ("1,234", "0.50", "12.3333", "-5").
std::string MoneyText(Currency amount);

/// A whole number with grouped thousands.
std::string CountText(long long count);

/// The most characters of an amount or a count.
inline constexpr std::size_t kLongestNumber = 32;

/// Put at `to`, which has room for `kLongestNumber`, what `MoneyText` and `CountText` make, and
/// return its end.
char* PutMoney(char* to, Currency amount);
char* PutCount(char* to, long long count);

/// An amount as a plain number without grouping: "12.5", "-3".
std::string PlainText(Currency amount);

/// The amount of a typed text; 0 when the text holds no number or its value is 0. Grouping commas
/// are passed over.
Currency ParseAmount(const std::string& text);

/// `word` between double quote characters.
std::string Quoted(const std::string& word);

/// The name of a bet or Chip-Stack for messages and the log, by the record's `BetNames`, and
/// "Chip-Stack #" with the number where that has no name.
std::string BetName(int id);
