// What the stick person says of a throw, and the same as whole sentences.
#pragma once

#include <string>

#include "core/currency.h"

/// A throw that has been decided: the dice, the point before and after it (0 for none), and what
/// its bets won or lost.
struct CalledThrow {
  int Die1 = 1;
  int Die2 = 1;
  int PrevPoint = 0;
  int Point = 0;
  Currency Net;
};

/// The total in words, "nine"; empty for what two dice can't show.
std::string TotalWord(int total);

/// What became of the point: "point is 9", "point is still 8", "point made", "seven out"; on a
/// come-out without a new point "Pass Line wins" for 7 and 11, "Pass Line loses" for the rest.
std::string PointWords(const CalledThrow& thrown);

/// A net result with its sign: "+$14", "-$1,250.50"; "$0" for none.
std::string CallNetText(Currency net);

/// An amount as it is read out: "1 dollar", "536 dollars", "minus 4 dollars 50 cents".
std::string SpokenMoney(Currency amount);

/// The whole call as sentences: "Nine, six three. Point is still 8. Won 4 dollars." The last one is
/// left out where nothing was won or lost.
std::string SpokenCall(const CalledThrow& thrown);
