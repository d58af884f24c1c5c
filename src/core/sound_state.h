// Sound sets found in the program's folder.
#pragma once

#include <array>
#include <string>
#include <vector>

/// Calls of a stick person beyond the totals 2 to 12.
enum StickCallId : int {
  StickPass = 13,
  StickMiss = 14,
  StickBar = 15,
  StickPair = 16,
  StickNextThrow = 17,
  StickNewShooter = 18,
  kStickCalls = 19,
};

/// In each list slot 0 stands for "none", so that a chosen index is the place in its list.
struct SoundState {
  std::vector<std::string> StickPersons{""};
  std::vector<std::string> DiceSounds{""};
  std::vector<std::string> WinSounds{""};
  std::vector<std::string> ChipSounds{""};
  std::array<std::string, kStickCalls> StickSounds;  // paths of the calls 1 to 18
};
