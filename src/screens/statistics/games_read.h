// A Games Log as a screen has read it.
#pragma once

#include <string>

#include "figures/games_view.h"

/// A log as it was read last.
struct GamesRead {
  std::string Path;
  std::string Stamp;  // tells whether the file is still the one that was read
  int Column = -1;
  GamePopulation Games;
  std::string Failure;  // why nothing could be read

  /// Reads the log where it is another file, another column, or has changed since. True when it was
  /// read.
  bool Follow(const std::string& path, int column);
};
