// One whole game to the roll limit: Pass Line with full odds, every decided bet made again. Prints
// why it stopped, how long it took, and whether the record agrees with itself.
#include <chrono>
#include <cstdio>
#include <cstdlib>

#include "autoplay/hyper_drive.h"
#include "bets/change_bet.h"
#include "bets/consistency.h"
#include "bets/headless_host.h"
#include "core/text.h"
#include "dice/generators.h"
#include "rules/defaults.h"

int main() {
  LayDownDefaults();
  TheHost = HeadlessHost();
  Game.NegBankroll = true;
  Game.HandleWinningBets = WinSameBet;
  Game.HandleLosingBets = LossSameBet;
  Game.AutoTakeFullOdds = true;
  Game.ChangeRequest = 1;
  SeedRng(SeedInChangeRequest);
  RequestChange(PassLine, 5);
  const auto start = std::chrono::steady_clock::now();
  ToggleHyperDrive();
  const std::chrono::duration<double> passed = std::chrono::steady_clock::now() - start;
  const std::string fault = FirstInconsistency();
  std::printf("%s\n\n%s rolls in %.1f s, bankroll $%s\n", Game.StopMessage.c_str(),
              CountText(Game.RollCount[0]).c_str(), passed.count(), MoneyText(Bankroll()).c_str());
  std::printf("%s\n", fault.empty() ? "The record agrees with itself." : fault.c_str());
  return fault.empty() && Game.RollCount[0] == kMaxRolls ? EXIT_SUCCESS : EXIT_FAILURE;
}
