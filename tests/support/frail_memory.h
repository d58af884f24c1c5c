// Memory that gives out, for tests of what that costs.
#pragma once

/// While it lives, the `number`-th request for memory from its beginning (from 1) finds none.
class FrailMemory {
 public:
  explicit FrailMemory(long number);
  ~FrailMemory();
  FrailMemory(const FrailMemory&) = delete;
  FrailMemory& operator=(const FrailMemory&) = delete;

  /// Whether that request has come.
  static bool HasFailed();
};
