// A sum that tells a file from a damaged one.
#pragma once

#include <cstdint>
#include <string_view>

/// The CRC-32C (Castagnoli) of bytes; `before` is the sum of what stands in front of them. Any
/// change of up to 32 bits in a row changes it, and others do but for one in four thousand million.
std::uint32_t Crc32c(std::string_view bytes, std::uint32_t before = 0);
