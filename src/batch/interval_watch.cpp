#include "batch/interval_watch.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double kTwoSided95 = 1.959963984540054;  // of the normal distribution

/// A handful of games that are alike by chance must not end a run.
constexpr std::int64_t kFewest = 100;

}  // namespace

bool IntervalWatch::Take(double result) {
  // Welford's way: nothing large is subtracted.
  ++games_;
  const double distance = result - mean_;
  mean_ += distance / static_cast<double>(games_);
  squares_ += distance * (result - mean_);
  return games_ >= kFewest && Width() <= width_;
}

double IntervalWatch::Width() const {
  if (games_ < 2) return 0;
  const auto games = static_cast<double>(games_);
  return 2 * kTwoSided95 * std::sqrt(squares_ / (games - 1) / games);
}

std::int64_t IntervalWatch::GamesNeeded(std::int64_t most) const {
  const double ratio = Width() / width_;
  const double needed = std::ceil(static_cast<double>(games_) * ratio * ratio);
  if (needed >= static_cast<double>(most)) return most;
  return std::min(most, std::max({static_cast<std::int64_t>(needed), games_, kFewest}));
}
