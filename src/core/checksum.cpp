#include "core/checksum.h"

#include <array>

namespace {

constexpr std::array<std::uint32_t, 256> kTable = [] {
  constexpr std::uint32_t kPolynomial = 0x82F63B78;  // lowest bit first
  std::array<std::uint32_t, 256> table{};
  for (std::uint32_t byte = 0; byte < table.size(); ++byte) {
    std::uint32_t rest = byte;
    for (int bit = 0; bit < 8; ++bit) rest = rest >> 1 ^ ((rest & 1) != 0 ? kPolynomial : 0);
    table[byte] = rest;
  }
  return table;
}();

}  // namespace

std::uint32_t Crc32c(std::string_view bytes, std::uint32_t before) {
  std::uint32_t sum = ~before;
  for (const char byte : bytes)
    sum = sum >> 8 ^ kTable[(sum ^ static_cast<unsigned char>(byte)) & 0xFF];
  return ~sum;
}
