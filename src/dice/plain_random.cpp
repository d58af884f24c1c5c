#include "dice/plain_random.h"

#include <cstdlib>
#include <ctime>

int PlainRandom(int low, int high) {
  static const bool seeded = [] {
    std::srand(static_cast<unsigned>(std::time(nullptr)));
    return true;
  }();
  static_cast<void>(seeded);
  const double share = std::rand() / (RAND_MAX + 1.0);
  return low + static_cast<int>(share * (high - low + 1));
}
