#include "figures/call_text.h"

#include <gtest/gtest.h>

#include <tuple>

TEST(CallText, TellsEveryKindOfThrow) {
  const auto cents = [](int amount) { return Currency::FromRaw(amount * 100); };
  const std::tuple<CalledThrow, const char*, const char*> calls[] = {
      {{6, 3, 8, 8, 4}, "Nine, six three. Point is still 8. Won 4 dollars.", "+$4"},
      {{1, 4, 0, 5, 0}, "Five, one four. Point is 5.", "$0"},
      {{4, 6, 10, 0, cents(150)}, "Ten, four six. Point made. Won 1 dollar 50 cents.", "+$1.50"},
      {{5, 2, 10, 0, -1250}, "Seven, five two. Seven out. Lost 1,250 dollars.", "-$1,250"},
      {{5, 6, 0, 0, 1}, "Eleven, five six. Pass Line wins. Won 1 dollar.", "+$1"},
      {{6, 6, 0, 0, cents(-1)}, "Twelve, six six. Pass Line loses. Lost 1 cent.", "-$0.01"},
      {{1, 1, 2, 0, 0}, "Two, one one. Point made.", "$0"}};
  for (const auto& [thrown, spoken, net] : calls) {
    EXPECT_EQ(SpokenCall(thrown), spoken);
    EXPECT_EQ(CallNetText(thrown.Net), net);
  }
  EXPECT_EQ(SpokenMoney(-9'999'999), "minus 9,999,999 dollars");
  EXPECT_EQ(SpokenMoney(Currency(99'999'999) + cents(99)), "99,999,999 dollars 99 cents");
  EXPECT_EQ(SpokenMoney(0), "0 dollars");
}
