// Chance that must not move the generators of the game.
#pragma once

/// A face from 1 to 6, or a whole number from `low` to `high`, both of them included, all alike
/// likely: drawn by the runtime's own random function, which is seeded by the clock at its first
/// use.
int PlainRandom(int low, int high);
inline int PlainFace() { return PlainRandom(1, 6); }
