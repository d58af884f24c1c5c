// What the dice tape costs under Hyper-Drive: rolls per second while throws are recorded and while
// they are played back, beside a run without a tape.
#include <chrono>
#include <cstdio>
#include <filesystem>

#include "bets/headless_host.h"
#include "core/record_file.h"
#include "dice/generators.h"
#include "dice/tape_file.h"
#include "play/roll_cycle.h"
#include "rules/defaults.h"

namespace {

constexpr int kRolls = 5'000'000;
constexpr std::uint32_t kSeed = 20'240'601;

/// Millions of rolls per second.
double Run(const std::string& tape, int status) {
  LayDownDefaults();
  TheHost = HeadlessHost();
  OpenDiceRollFile(tape);
  Game.RecorderStatus = status;
  Game.HyperDriveOn = Game.KeepRolling = true;
  Game.NumAutoRolls = Game.AutoRollsLeft = kRolls;
  init_genrand(kSeed);
  const auto start = std::chrono::steady_clock::now();
  RollDice();
  const std::chrono::duration<double, std::micro> passed = std::chrono::steady_clock::now() - start;
  Game.HyperDriveOn = false;
  if (Game.RollCount[0] != kRolls || Game.RecorderStatus != status)
    std::puts("the run stopped early");
  return kRolls / passed.count();
}

}  // namespace

int main() {
  const std::filesystem::path tape =
      std::filesystem::temp_directory_path() / "kelvanor_bench_tape.rol";
  std::filesystem::remove(tape);
  std::printf("%-14s %18s\n", "", "million rolls/s");
  std::printf("%-14s %18.2f\n", "NoTape", Run(TextOfPath(tape), RecorderOff));
  std::printf("%-14s %18.2f\n", "Recording", Run(TextOfPath(tape), Recording));
  std::printf("%-14s %18.2f\n", "Playback", Run(TextOfPath(tape), Playback));
  std::filesystem::remove(tape);
  return 0;
}
