#include "core/ansi.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace {

constexpr unsigned kFirstSpecial = 0x80;
constexpr unsigned kFirstLatin = 0xA0;
constexpr unsigned kPastBytes = 0x100;
constexpr char kNoPlace = '?';

/// The characters of the bytes 80 to 9F.
constexpr std::array<std::uint16_t, kFirstLatin - kFirstSpecial> kSpecials = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

void AppendUtf8(std::string& text, unsigned point) {
  if (point < 0x80) {
    text += static_cast<char>(point);
  } else if (point < 0x800) {
    text += static_cast<char>(0xC0U | (point >> 6U));
    text += static_cast<char>(0x80U | (point & 0x3FU));
  } else {
    text += static_cast<char>(0xE0U | (point >> 12U));
    text += static_cast<char>(0x80U | ((point >> 6U) & 0x3FU));
    text += static_cast<char>(0x80U | (point & 0x3FU));
  }
}

char ByteOf(unsigned point) {
  if (point < kFirstSpecial || (point >= kFirstLatin && point < kPastBytes))
    return static_cast<char>(point);
  const auto found = std::find(kSpecials.begin(), kSpecials.end(), point);
  if (found == kSpecials.end()) return kNoPlace;
  return static_cast<char>(kFirstSpecial + static_cast<unsigned>(found - kSpecials.begin()));
}

/// The form of a character by its first byte.
struct Form {
  unsigned Mask;
  unsigned Lead;
  unsigned Length;
  unsigned Smallest;  // a smaller character in this form isn't UTF-8
};
constexpr std::array<Form, 4> kForms = {
    {{0x80, 0x00, 1, 0}, {0xE0, 0xC0, 2, 0x80}, {0xF0, 0xE0, 3, 0x800}, {0xF8, 0xF0, 4, 0x10000}}};

/// Reads the character at the start of `text` into `point`; its length, or 0 when it is no UTF-8.
unsigned ReadUtf8(std::string_view text, unsigned& point) {
  const unsigned first = static_cast<unsigned char>(text[0]);
  for (const Form& form : kForms) {
    if ((first & form.Mask) != form.Lead) continue;
    if (text.size() < form.Length) return 0;
    point = first & ~form.Mask;
    for (const char byte : text.substr(1, form.Length - 1)) {
      const unsigned bits = static_cast<unsigned char>(byte);
      if ((bits & 0xC0U) != 0x80U) return 0;
      point = (point << 6U) | (bits & 0x3FU);
    }
    return point < form.Smallest ? 0 : form.Length;
  }
  return 0;
}

}  // namespace

std::string FromAnsi(std::string_view ansi) {
  std::string text;
  text.reserve(ansi.size());
  for (const char letter : ansi) {
    const unsigned byte = static_cast<unsigned char>(letter);
    const bool special = byte >= kFirstSpecial && byte < kFirstLatin;
    AppendUtf8(text, special ? kSpecials[byte - kFirstSpecial] : byte);
  }
  return text;
}

std::string ToAnsi(std::string_view utf8) {
  std::string text;
  text.reserve(utf8.size());
  while (!utf8.empty()) {
    unsigned point = 0;
    const unsigned length = ReadUtf8(utf8, point);
    text += length == 0 ? kNoPlace : ByteOf(point);
    utf8.remove_prefix(length == 0 ? 1 : length);
  }
  return text;
}
