#include "dice/matrix.h"

#include <algorithm>

#include "stats/roll_counters.h"

namespace {

constexpr int kFirstColumn = 2;
constexpr int kLastColumn = 7;
constexpr int kFairCell = 2778;
constexpr int kFairFace = 16667;
constexpr int kTotalsColumn = 1;
constexpr int kDie1Row = 12;
constexpr int kDie2Row = 13;
constexpr std::array<int, 11> kFairTotals = {2778,  5556,  8333, 11111, 13889, 16667,
                                             13889, 11111, 8333, 5556,  2778};

int FirstRow(int column) { return column - 1; }
int LastRow(int column) { return 13 - column; }

/// Numbers of our own, which leave the chosen generator alone. They follow from the seed and the
/// roll, so that a game thrown again with its seed meets the same ones.
class OwnNumbers {
 public:
  OwnNumbers()
      : state_((static_cast<std::uint64_t>(static_cast<std::uint32_t>(Game.LastSeed)) << 32U) ^
               static_cast<std::uint32_t>(Game.RollCount[0])) {}

  /// From 1 to `limit`.
  int Next(int limit) {
    state_ += 0x9E3779B97F4A7C15U;
    std::uint64_t mixed = state_;
    mixed = (mixed ^ (mixed >> 30U)) * 0xBF58476D1CE4E5B9U;
    mixed = (mixed ^ (mixed >> 27U)) * 0x94D049BB133111EBU;
    mixed ^= mixed >> 31U;
    return static_cast<int>((mixed >> 32U) * static_cast<std::uint64_t>(limit) >> 32U) + 1;
  }

 private:
  std::uint64_t state_;
};

/// Calls `visit` with column, row, and the sum of the cells before and after, in the fixed order of
/// the cells, until it returns true.
template <class Visit>
bool WalkCells(Visit visit) {
  std::int64_t before = 0;
  for (int column = kFirstColumn; column <= kLastColumn; ++column) {
    const int* rows = Game.ProbMatrix[1][static_cast<unsigned>(column)].data();
    const int last = LastRow(column);
    for (int row = FirstRow(column); row <= last; ++row) {
      const std::int64_t after = before + rows[row];
      if (visit(column, row, before, after)) return true;
      before = after;
    }
  }
  return false;
}

void TakeCell(int column, int row) {
  const bool upper = row >= 7;
  Game.Die1 = upper ? column + row - 7 : column - 1;
  Game.Die2 = upper ? 8 - column : row - column + 2;
}

bool FindCell(int x) {
  return WalkCells([x](int column, int row, std::int64_t before, std::int64_t after) {
    if (x > after || x <= before) return false;
    TakeCell(column, row);
    return true;
  });
}

// --- Shares ---

constexpr int kFaces = 6;
constexpr int kThrows = kFaces * kFaces;
constexpr float kSharesPerPercent = 1000;
constexpr int kAnyRoll = 0;
constexpr int kAnyRollOfShooter = 1;
constexpr int kLowestTotal = 2;
constexpr int kHighestTotal = 12;

/// Calls `visit` with the dice of each throw that makes an event.
template <class Visit>
void ForThrowsOf(int event, Visit visit) {
  for (int die1 = 1; die1 <= kFaces; ++die1) {
    for (int die2 = 1; die2 <= kFaces; ++die2) {
      const auto events = EventsOfThrow(die1, die2);
      if (std::find(events.begin(), events.end(), event) != events.end()) visit(die1, die2);
    }
  }
}

double FairPercent(int event) {
  int throws = 0;
  ForThrowsOf(event, [&throws](int, int) { ++throws; });
  return throws * 100.0 / kThrows;
}

std::int64_t SumOfCells(int event) {
  std::int64_t sum = 0;
  ForThrowsOf(event,
              [&sum](int die1, int die2) { sum += ShareOfThrow(Game.ProbMatrix, die1, die2); });
  return sum;
}

float MatrixShare(int event) {
  const bool total = event >= kLowestTotal && event <= kHighestTotal;
  const std::int64_t share =
      total ? Game.ProbMatrix[1][kTotalsColumn][static_cast<unsigned>(event - 1)]
            : SumOfCells(event);
  return static_cast<float>(share) / kSharesPerPercent;
}

/// True when some number from 1 to 100,000 meets a cell.
bool HasReachableCell() {
  return WalkCells([](int, int, std::int64_t before, std::int64_t after) {
    return after > before && after >= 1 && before < kWholeShare;
  });
}

}  // namespace

decltype(DiceState::ProbMatrix) FairMatrix() {
  decltype(DiceState::ProbMatrix) matrix{};
  auto& shares = matrix[1];
  for (int column = kFirstColumn; column <= kLastColumn; ++column) {
    auto& rows = shares[static_cast<unsigned>(column)];
    for (int row = FirstRow(column); row <= LastRow(column); ++row) {
      rows[static_cast<unsigned>(row)] = kFairCell;
    }
    rows[kDie1Row] = kFairFace;
    rows[kDie2Row] = kFairFace;
  }
  for (std::size_t i = 0; i < kFairTotals.size(); ++i)
    shares[kTotalsColumn][i + 1] = kFairTotals[i];
  // The values of the editor's two axes.
  matrix[0][0][1] = 1;
  matrix[0][0][2] = 6;
  return matrix;
}

void SetFairMatrix() { Game.ProbMatrix = FairMatrix(); }

void DiceFromMatrix(int x) {
  if (FindCell(x)) return;
  OwnNumbers numbers;
  if (!HasReachableCell()) {
    Game.Die1 = numbers.Next(6);
    Game.Die2 = numbers.Next(6);
    return;
  }
  while (!FindCell(numbers.Next(kWholeShare))) {
  }
}

float EventShare(int event, bool useMatrix) {
  if (event == kAnyRoll || event == kAnyRollOfShooter) return 100;
  return useMatrix ? MatrixShare(event) : static_cast<float>(FairPercent(event));
}

double EventProbability(int event, bool skewed) {
  if (event == kAnyRoll || event == kAnyRollOfShooter) return 100;
  if (!skewed) return FairPercent(event);
  return static_cast<double>(SumOfCells(event)) / kSharesPerPercent;
}
