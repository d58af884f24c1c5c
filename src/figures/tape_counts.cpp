#include "figures/tape_counts.h"

#include "core/game_state.h"
#include "dice/tape.h"
#include "dice/tape_file.h"

namespace {

constexpr int kFaces = 6;
constexpr double kPairs = 36;
constexpr double kPercent = 100;

unsigned PairOf(int die1, int die2) {
  return static_cast<unsigned>((die1 - 1) * kFaces + die2 - 1);
}

/// The pairs for which `belongs` holds, as one kind.
template <class Belongs>
TapeKind KindOf(const std::string& name, const TapeCounts& counts, Belongs belongs) {
  TapeKind kind{name};
  int pairs = 0;
  for (int die1 = 1; die1 <= kFaces; ++die1) {
    for (int die2 = 1; die2 <= kFaces; ++die2) {
      if (!belongs(die1, die2)) continue;
      ++pairs;
      kind.Count += counts.Pairs[PairOf(die1, die2)];
    }
  }
  const std::int64_t throws = counts.Rolls - counts.NoThrows;
  if (throws > 0)
    kind.Share = kPercent * static_cast<double>(kind.Count) / static_cast<double>(throws);
  kind.FairShare = kPercent * pairs / kPairs;
  return kind;
}

}  // namespace

TapeCounts CountTape(const RollSelection& rolls) {
  std::array<std::int64_t, 256> bytes{};
  ForRolls(rolls.From, rolls.Count, [&bytes](std::string_view throws) {
    for (const char throwByte : throws) ++bytes[static_cast<unsigned char>(throwByte)];
  });
  TapeCounts counts;
  if (Game.LastFileResult <= 0) return counts;
  for (int value = 0; value < 256; ++value) {
    const std::int64_t count = bytes[static_cast<unsigned>(value)];
    const char throwByte = static_cast<char>(value);
    counts.Rolls += count;
    (IsThrow(throwByte) ? counts.Pairs[PairOf(FirstDie(throwByte), SecondDie(throwByte))]
                        : counts.NoThrows) += count;
  }
  return counts;
}

std::vector<TapeKind> HighlightedKinds(const TapeCounts& counts) {
  std::vector<TapeKind> kinds;
  std::array<bool, 36> named{};
  const auto add = [&](const std::string& name, auto belongs) {
    kinds.push_back(KindOf(name, counts, [&](int die1, int die2) {
      if (!belongs(die1, die2)) return false;
      return named[PairOf(die1, die2)] = true;
    }));
  };
  for (int total = 2; total <= 2 * kFaces; ++total)
    if (TotalIsHighlighted(total))
      add("Total " + std::to_string(total), [=](int a, int b) { return a + b == total; });
  for (int face = 1; face <= kFaces; ++face)
    if (PipIsHighlighted(face))
      add("A " + std::to_string(face) + " on a die",
          [=](int a, int b) { return a == face || b == face; });
  for (int die1 = 1; die1 <= kFaces; ++die1)
    for (int die2 = 1; die2 <= kFaces; ++die2)
      if (Game.DicePairSelected[PairOf(die1, die2)] && !named[PairOf(die1, die2)])
        add(std::to_string(die1) + "-" + std::to_string(die2),
            [=](int a, int b) { return a == die1 && b == die2; });
  if (kinds.empty()) return kinds;
  kinds.push_back(KindOf("All highlighted", counts, [](int die1, int die2) {
    return Game.DicePairSelected[PairOf(die1, die2)];
  }));
  return kinds;
}
