// Long pieces of work that the player sees going on, and can end.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

/// The player has ended a piece of work.
struct WorkEnded : std::runtime_error {
  WorkEnded() : std::runtime_error("The work was ended") {}
};

/// A piece of work under way while this lives. The Host is asked a few times a second only, so that
/// short work shows nothing.
class Progress {
 public:
  /// `what` is the title under which it is shown.
  explicit Progress(std::string what);
  ~Progress();
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  /// How far the work has come, from 0 to 1. `Show` throws WorkEnded when the player wants no more
  /// of it; `ShowOnly` stands where it can't be left, and a wish to end it waits for `Show`.
  void Show(double share);
  void ShowOnly(double share);

 private:
  std::string what_;
  std::uint32_t shownAt_;
  bool shown_ = false;
  bool ended_ = false;
};
