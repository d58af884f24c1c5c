// Where the batch program speaks.
#pragma once

#include <cstdint>
#include <ostream>

struct Console {
  std::ostream& Out;
  std::ostream& Err;
  bool Terminal = false;  // somebody looks at `Err` as it comes
};

/// The program's name, in front of what it says on `Err`.
inline constexpr const char* kBatchName = "kelvanor-batch: ";

/// One line on a terminal that tells how far a run is, written over itself. Nothing elsewhere.
class ProgressLine {
 public:
  explicit ProgressLine(Console& console);
  ~ProgressLine() { Clear(); }
  ProgressLine(const ProgressLine&) = delete;
  ProgressLine& operator=(const ProgressLine&) = delete;

  /// `done` of `all` games, of which those of this run were played since it began.
  void Show(std::int64_t done, std::int64_t all);
  void Clear();

 private:
  Console& console_;
  double began_ = 0;
  std::int64_t doneBefore_ = -1;
  bool shown_ = false;
};
