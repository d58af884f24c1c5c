#include "core/text.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "core/game_state.h"

namespace {

constexpr int kDecimals = 4;

char* PutDigits(char* to, std::uint64_t number) {
  return std::to_chars(to, to + kLongestNumber, number).ptr;
}

/// The digits in threes.
char* PutGrouped(char* to, std::uint64_t number) {
  if (number < 1000) return PutDigits(to, number);
  to = PutGrouped(to, number / 1000);
  const auto last = static_cast<unsigned>(number % 1000);
  *to++ = ',';
  for (const unsigned digit : {last / 100, last / 10 % 10, last % 10})
    *to++ = static_cast<char>('0' + digit);
  return to;
}

/// The size of a signed number; the lowest one has none among the signed numbers.
std::uint64_t Magnitude(std::int64_t number) {
  const auto bits = static_cast<std::uint64_t>(number);
  return number < 0 ? 0 - bits : bits;
}

/// An amount with as many decimals as it needs, and at least `fewest` when it isn't whole.
char* PutAmount(char* to, Currency amount, bool grouped, int fewest) {
  const std::uint64_t size = Magnitude(amount.Raw());
  if (amount.Raw() < 0) *to++ = '-';
  to = (grouped ? PutGrouped : PutDigits)(to, size / Currency::kScale);
  std::uint64_t rest = size % Currency::kScale;
  if (rest == 0) return to;
  *to++ = '.';
  for (int places = 0; places < fewest || rest > 0; ++places) {
    rest *= 10;
    *to++ = static_cast<char>('0' + rest / Currency::kScale);
    rest %= Currency::kScale;
  }
  return to;
}

bool IsDigit(char letter) { return letter >= '0' && letter <= '9'; }

/// A typed number, taken apart.
struct TypedNumber {
  bool Negative = false;
  bool TooLarge = false;
  std::int64_t Count = 0;  // in ten-thousandths
};

void AppendDigit(TypedNumber& number, int digit) {
  number.TooLarge = number.TooLarge ||
                    __builtin_mul_overflow(number.Count, std::int64_t{10}, &number.Count) ||
                    __builtin_add_overflow(number.Count, std::int64_t{digit}, &number.Count);
}

/// Rounds by the digits that follow the fourth decimal, halves to even.
void RoundByRest(TypedNumber& number, const std::string& rest) {
  if (rest.empty() || rest[0] < '5') return;
  const bool half =
      rest[0] == '5' && std::all_of(rest.begin() + 1, rest.end(), [](char d) { return d == '0'; });
  if (half && number.Count % 2 == 0) return;
  number.TooLarge =
      number.TooLarge || __builtin_add_overflow(number.Count, std::int64_t{1}, &number.Count);
}

TypedNumber ReadNumber(const std::string& text) {
  TypedNumber number;
  std::size_t at = text.find_first_not_of(" \t");
  if (at == std::string::npos) return number;
  if (text[at] == '-' || text[at] == '+') number.Negative = text[at++] == '-';
  for (; at < text.size() && (IsDigit(text[at]) || text[at] == ','); ++at) {
    if (text[at] != ',') AppendDigit(number, text[at] - '0');
  }
  if (at < text.size() && text[at] == '.') ++at;
  const auto end = std::find_if_not(text.begin() + static_cast<std::ptrdiff_t>(at), text.end(),
                                    [](char letter) { return IsDigit(letter); });
  const std::string decimals(text.begin() + static_cast<std::ptrdiff_t>(at), end);
  for (std::size_t place = 0; place < kDecimals; ++place) {
    AppendDigit(number, place < decimals.size() ? decimals[place] - '0' : 0);
  }
  if (decimals.size() > kDecimals) RoundByRest(number, decimals.substr(kDecimals));
  return number;
}

}  // namespace

char* PutMoney(char* to, Currency amount) { return PutAmount(to, amount, true, 2); }

char* PutCount(char* to, long long count) {
  if (count < 0) *to++ = '-';
  return PutGrouped(to, Magnitude(count));
}

std::string MoneyText(Currency amount) {
  std::array<char, kLongestNumber> text;
  return {text.data(), PutMoney(text.data(), amount)};
}

std::string PlainText(Currency amount) {
  std::array<char, kLongestNumber> text;
  return {text.data(), PutAmount(text.data(), amount, false, 0)};
}

std::string CountText(long long count) {
  std::array<char, kLongestNumber> text;
  return {text.data(), PutCount(text.data(), count)};
}

Currency ParseAmount(const std::string& text) {
  const TypedNumber number = ReadNumber(text);
  if (number.TooLarge) return Currency();
  return Currency::FromRaw(number.Negative ? -number.Count : number.Count);
}

std::string Quoted(const std::string& word) { return "\"" + word + "\""; }

std::string BetName(int id) {
  if (id < 0 || id > LastSlot) return {};
  if (!IsChipStack(id)) return Game.BetNames[static_cast<unsigned>(id)];
  // The four names of Chip-Stacks belong to the places on the table.
  const auto begin = Game.VisibleStacks.begin();
  const auto shown = std::find(begin, Game.VisibleStacks.end(), id);
  if (shown != Game.VisibleStacks.end())
    return Game.BetNames[static_cast<unsigned>(FirstChipStack + (shown - begin))];
  return "Chip-Stack #" + std::to_string(id - ChipStackBase);
}
