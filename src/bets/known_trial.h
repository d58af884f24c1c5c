// Whether it pays to look for what is known.
#pragma once

#include <algorithm>

/// Play that never comes back to what it has done before is left alone for longer and longer, so
/// that learning it for nothing costs little.
class KnownTrial {
 public:
  /// `patience`: how much may be learnt for nothing. `rest`: tries that are left out then at first.
  explicit KnownTrial(int patience = 512, int rest = 16'384)
      : patience_(patience), shortRest_(rest), nextRest_(rest) {}

  /// True while it isn't worth trying; each call is a try less to wait.
  bool Rests() { return resting_ > 0 && resting_-- > 0; }

  bool IsResting() const { return resting_ > 0; }

  /// Something was learnt, and may never be of use.
  void Learnt() {
    if (--score_ > -patience_) return;
    score_ = 0;
    resting_ = nextRest_;
    nextRest_ = std::min(nextRest_ * 2, shortRest_ * kLongRest);
  }

  /// What was known has been of use so many times.
  void Used(int times) {
    score_ = std::min(score_ + times, patience_);
    if (score_ > 0) nextRest_ = shortRest_;
  }

 private:
  static constexpr int kLongRest = 8;  // times the first

  int patience_;
  int shortRest_;
  int score_ = 0;
  int resting_ = 0;
  int nextRest_;
};
