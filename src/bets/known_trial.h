// Whether it pays to look for what is known.
#pragma once

#include <algorithm>

/// Play that never comes back to what it has done before is left alone for longer and longer, so
/// that learning it for nothing costs little.
class KnownTrial {
 public:
  /// True while it isn't worth trying; each call is a try less to wait.
  bool Rests() { return resting_ > 0 && resting_-- > 0; }

  bool IsResting() const { return resting_ > 0; }

  /// Something was learnt, and may never be of use.
  void Learnt() {
    if (--score_ > -kPatience) return;
    score_ = 0;
    resting_ = nextRest_;
    nextRest_ = std::min(nextRest_ * 2, kLongRest);
  }

  /// What was known has been of use so many times.
  void Used(int times) {
    score_ = std::min(score_ + times, kPatience);
    if (score_ > 0) nextRest_ = kShortRest;
  }

 private:
  static constexpr int kPatience = 512;
  static constexpr int kShortRest = 16'384;
  static constexpr int kLongRest = 1 << 17;

  int score_ = 0;
  int resting_ = 0;
  int nextRest_ = kShortRest;
};
