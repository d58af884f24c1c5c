// When a population is large enough.
#pragma once

#include <cstdint>

/// Follows the mean result of games as they come, until its 95 % interval is narrow enough. What it
/// says depends on the results and their order alone.
class IntervalWatch {
 public:
  /// `width` from one end of the interval to the other.
  explicit IntervalWatch(double width) : width_(width) {}

  /// Takes the result of the next game; true once there are games enough.
  bool Take(double result);

  std::int64_t Games() const { return games_; }
  double Mean() const { return mean_; }
  double Width() const;

  /// How many games it will take, by what the games so far say; at most `most`.
  std::int64_t GamesNeeded(std::int64_t most) const;

 private:
  double width_;
  std::int64_t games_ = 0;
  double mean_ = 0;
  double squares_ = 0;  // of the distances from the mean
};
