// The dice: state of the generators, the probability matrix and the recorder.
#pragma once

#include <array>
#include <cstdint>

enum RngKind : int {
  Rng1Mt = 0,
  Rng2Cokus = 1,
  Rng3Congruence = 2,
  Rng4Ran2 = 3,
  Rng5Ran1 = 4,
  Rng6Mixed15 = 5,
  Rng7Mixed24 = 6,
  Rng8SingleCall = 7,
  kGenerators = 8,
};

enum RecorderStatusKind : int { RecorderOff = 0, Recording = 1, Playback = 2 };

struct Ran1Record {
  int Started = 0;
  float Ix1 = 0;
  float Ix2 = 0;
  float Ix3 = 0;
  int Pick = 0;
  std::array<float, 98> Table{};
};

struct Ran2Record {
  int Started = 0;
  int Iy = 0;
  int Pick = 0;
  int Idum = 0;
  std::array<int, 98> Table{};
};

inline constexpr int kMatrixRows = 14;
inline constexpr int kMatrixColumns = 8;

/// [layer][column][row]. Layer 1 holds shares in thousandths of a percent, layer 0 the editor's
/// locks and axis values.
using ProbabilityMatrix = std::array<std::array<std::array<int, kMatrixRows>, kMatrixColumns>, 2>;

struct DiceState {
  int RngState = 0;
  int LastSeed = 0;
  int MissingRngFiles = 0;  // bit 1: mt19937ar is not built in, bit 2: cokus is not
  Ran1Record Ran1State;
  Ran2Record Ran2State;

  bool UseSkewedProbability = false;
  ProbabilityMatrix ProbMatrix{};
  int ProbabilityView = 0;
  double RollsOutOf = 36;
  bool ProbabilityChanged = false;

  int RecorderStatus = RecorderOff;
  int DiceFilePos = 1;
  int DiceFileLast = 0;
  int DiceFileEnd = 0;
};
