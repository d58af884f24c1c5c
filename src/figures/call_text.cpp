#include "figures/call_text.h"

#include <array>

#include "core/text.h"

namespace {

constexpr std::array<const char*, 13> kNumbers = {"",     "one",    "two",   "three", "four",
                                                  "five", "six",    "seven", "eight", "nine",
                                                  "ten",  "eleven", "twelve"};

std::string WordOf(int number) {
  const bool known = number > 0 && number < static_cast<int>(kNumbers.size());
  return known ? kNumbers[static_cast<unsigned>(number)] : "";
}

/// A sentence of some words.
std::string Sentence(std::string words) {
  if (!words.empty() && words[0] >= 'a' && words[0] <= 'z') words[0] += 'A' - 'a';
  return words + '.';
}

std::string Counted(long long count, const char* unit) {
  return CountText(count) + ' ' + unit + (count == 1 ? "" : "s");
}

}  // namespace

std::string TotalWord(int total) { return total > 1 ? WordOf(total) : std::string(); }

std::string PointWords(const CalledThrow& thrown) {
  const int total = thrown.Die1 + thrown.Die2;
  if (thrown.PrevPoint == 0) {
    if (thrown.Point != 0) return "point is " + std::to_string(thrown.Point);
    return total == 7 || total == 11 ? "Pass Line wins" : "Pass Line loses";
  }
  if (thrown.Point != 0) return "point is still " + std::to_string(thrown.Point);
  return total == thrown.PrevPoint ? "point made" : "seven out";
}

std::string CallNetText(Currency net) {
  const char* sign = net > Currency() ? "+$" : net < Currency() ? "-$" : "$";
  return sign + MoneyText(Abs(net));
}

std::string SpokenMoney(Currency amount) {
  constexpr std::int64_t kPerCent = 100;  // raw units
  constexpr int kCents = 100;
  const std::int64_t cents = (Abs(amount).Raw() + kPerCent / 2) / kPerCent;
  const std::string sign = amount < Currency() && cents != 0 ? "minus " : "";
  const std::int64_t dollars = cents / kCents;
  const std::int64_t rest = cents % kCents;
  if (rest == 0) return sign + Counted(dollars, "dollar");
  if (dollars == 0) return sign + Counted(rest, "cent");
  return sign + Counted(dollars, "dollar") + ' ' + Counted(rest, "cent");
}

std::string SpokenCall(const CalledThrow& thrown) {
  std::string call = Sentence(TotalWord(thrown.Die1 + thrown.Die2) + ", " + WordOf(thrown.Die1) +
                              ' ' + WordOf(thrown.Die2));
  call += ' ' + Sentence(PointWords(thrown));
  if (thrown.Net == Currency()) return call;
  return call + ' ' +
         Sentence((thrown.Net > Currency() ? "won " : "lost ") + SpokenMoney(Abs(thrown.Net)));
}
