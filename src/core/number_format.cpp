#include "core/number_format.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace {

/// A number written out: its size by digits, and which of them are whole.
struct Decimal {
  int Sign = 0;  // -1, 0 or 1
  std::string Digits;
  std::size_t Whole = 0;
};

Decimal DecimalOf(double value) {
  if (!std::isfinite(value) || value == 0) return {};
  std::array<char, 1100> buffer;
  const auto written = std::to_chars(buffer.data(), buffer.data() + buffer.size(), std::abs(value),
                                     std::chars_format::fixed);
  Decimal result{value < 0 ? -1 : 1, {buffer.data(), written.ptr}, 0};
  const std::size_t point = result.Digits.find('.');
  if (point != std::string::npos) result.Digits.erase(point, 1);
  result.Whole = std::min(point, result.Digits.size());
  return result;
}

Decimal DecimalOf(WideCount raw) {
  constexpr std::size_t kDecimals = 4;
  if (raw == 0) return {};
  Decimal result{raw < 0 ? -1 : 1, "", 0};
  for (WideCount rest = raw; rest != 0; rest /= 10) {
    const auto digit = static_cast<int>(rest % 10);
    result.Digits.push_back(static_cast<char>('0' + (digit < 0 ? -digit : digit)));
  }
  while (result.Digits.size() <= kDecimals) result.Digits.push_back('0');
  std::reverse(result.Digits.begin(), result.Digits.end());
  result.Whole = result.Digits.size() - kDecimals;
  return result;
}

/// One section of a pattern, taken apart.
struct Section {
  std::string_view Before;
  std::string_view Behind;
  std::size_t FewestWhole = 0;
  std::size_t FewestDecimals = 0;
  std::size_t MostDecimals = 0;
  bool Grouped = false;
  bool Hundredfold = false;
};

Section Parse(std::string_view text) {
  const std::size_t first = std::min(text.find_first_of("#0"), text.size());
  const std::size_t last = text.find_last_of("#0.,") + 1;
  const std::string_view digits = text.substr(first, std::max(first, last) - first);
  const std::size_t point = std::min(digits.find('.'), digits.size());
  const std::string_view decimals = digits.substr(std::min(point + 1, digits.size()));
  const auto zeros = [](std::string_view part) {
    return static_cast<std::size_t>(std::count(part.begin(), part.end(), '0'));
  };
  Section section;
  section.Before = text.substr(0, first);
  section.Behind = text.substr(std::max(first, last));
  section.FewestWhole = zeros(digits.substr(0, point));
  section.FewestDecimals = zeros(decimals);
  section.MostDecimals = decimals.size();
  section.Grouped = digits.find(',') != std::string_view::npos;
  section.Hundredfold = text.find('%') != std::string_view::npos;
  return section;
}

std::string_view SectionFor(int sign, std::string_view pattern) {
  std::array<std::string_view, 3> sections;
  std::size_t count = 0;
  while (count < sections.size()) {
    const std::size_t end = pattern.find(';');
    sections[count++] = pattern.substr(0, end);
    if (end == std::string_view::npos) break;
    pattern.remove_prefix(end + 1);
  }
  if (sign < 0 && count > 1) return sections[1];
  return sign == 0 && count > 2 ? sections[2] : sections[0];
}

/// Rounds to `most` decimals, and leaves exactly as many digits behind the point.
void Round(Decimal& number, std::size_t most) {
  const std::size_t kept = number.Whole + most;
  const bool up = number.Digits.size() > kept && number.Digits[kept] >= '5';
  number.Digits.resize(kept, '0');
  if (!up) return;
  std::size_t place = kept;
  while (place > 0 && number.Digits[place - 1] == '9') number.Digits[--place] = '0';
  if (place > 0) {
    ++number.Digits[place - 1];
  } else {
    number.Digits.insert(0, 1, '1');
    ++number.Whole;
  }
}

std::string Written(Decimal number, const Section& section) {
  if (section.Hundredfold) {
    number.Whole += 2;
    if (number.Digits.size() < number.Whole) number.Digits.resize(number.Whole, '0');
  }
  Round(number, section.MostDecimals);
  std::string whole = number.Digits.substr(0, number.Whole);
  std::string decimals = number.Digits.substr(number.Whole);
  whole.erase(0, whole.find_first_not_of('0'));
  if (whole.size() < section.FewestWhole) whole.insert(0, section.FewestWhole - whole.size(), '0');
  if (section.Grouped)
    for (auto place = static_cast<std::ptrdiff_t>(whole.size()) - 3; place > 0; place -= 3)
      whole.insert(static_cast<std::size_t>(place), 1, ',');
  while (decimals.size() > section.FewestDecimals && decimals.back() == '0') decimals.pop_back();
  if (!decimals.empty()) whole += "." + decimals;
  return whole.empty() ? "0" : whole;
}

std::string Format(const Decimal& number, std::string_view pattern) {
  const std::string_view text = SectionFor(number.Sign, pattern);
  const bool ownSection = text.data() != pattern.data();
  if (text == "0" && number.Sign < 0 && ownSection) return "0";
  const Section section = Parse(text);
  const std::string digits = Written(number, section);
  if (number.Sign != 0 && digits.find_first_not_of("0.,") == std::string::npos)
    return Format(Decimal(), pattern);
  const char* sign = number.Sign < 0 && !ownSection ? "-" : "";
  return sign + std::string(section.Before) + digits + std::string(section.Behind);
}

}  // namespace

std::string FormatNumber(double value, std::string_view pattern) {
  return Format(DecimalOf(value), pattern);
}

std::string FormatAmount(WideCount raw, std::string_view pattern) {
  return Format(DecimalOf(raw), pattern);
}
