#include "batch/stream.h"

namespace {

constexpr std::uint64_t kStep = 0x9E3779B97F4A7C15U;  // odd: 2^64 over the golden ratio

}  // namespace

std::uint64_t SplitMix(std::uint64_t start, std::uint64_t place) {
  std::uint64_t word = start + place * kStep;
  word = (word ^ (word >> 30U)) * 0xBF58476D1CE4E5B9U;
  word = (word ^ (word >> 27U)) * 0x94D049BB133111EBU;
  return word ^ (word >> 31U);
}

std::array<std::uint32_t, kTwisterWords> TwisterStateOf(std::uint64_t seed, std::uint64_t game) {
  constexpr std::uint64_t kPiece = kTwisterWords / 2;
  const std::uint64_t start = SplitMix(seed, 1);
  std::array<std::uint32_t, kTwisterWords> words;
  std::uint64_t place = game * kPiece;
  for (std::size_t at = 0; at < words.size(); at += 2) {
    const std::uint64_t word = SplitMix(start, ++place);
    words[at] = static_cast<std::uint32_t>(word);
    words[at + 1] = static_cast<std::uint32_t>(word >> 32U);
  }
  return words;
}

void SeedGameDice(std::uint64_t seed, std::uint64_t game) {
  PutTwisterState(TwisterStateOf(seed, game));
}
