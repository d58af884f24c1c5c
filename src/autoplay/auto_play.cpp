#include "autoplay/auto_play.h"

#include <algorithm>

#include "bets/chips.h"
#include "bets/make_bet.h"
#include "core/help_topics.h"
#include "core/host.h"
#include "core/messages.h"
#include "core/text.h"
#include "play/roll_cycle.h"
#include "rules/defaults.h"

namespace {

void RefreshTable() {
  Game.GameChanged = true;
  Game.NeedRepaint = true;
  TheHost.RedrawBets();
}

}  // namespace

const std::array<std::string_view, kAutoStops> kAutoStopNames = {"Any winning roll",
                                                                 "Any losing roll",
                                                                 "A 2",
                                                                 "Any 3",
                                                                 "Any 4",
                                                                 "A Hard 4",
                                                                 "Any 5",
                                                                 "Any 6",
                                                                 "A Hard 6",
                                                                 "Any 7",
                                                                 "Any 8",
                                                                 "A Hard 8",
                                                                 "Any 9",
                                                                 "Any 10",
                                                                 "A Hard 10",
                                                                 "Any 11",
                                                                 "A 12"};

const std::array<std::string_view, 8> kWinChoiceNames = {" Manual",
                                                         " Take Bet and Winnings",
                                                         " Same Bet - Take Winnings",
                                                         " Press 1 Unit",
                                                         " Press Double",
                                                         " Parlay",
                                                         " Same Bet:",
                                                         " Bet:"};

const std::array<std::string_view, 8> kLossChoiceNames = {" Manual",
                                                          " No Bet/Take Remainder (if any)",
                                                          " Bet Remainder (if any)",
                                                          " Same Bet",
                                                          " Same Bet Plus 1 Unit",
                                                          " Double Bet:",
                                                          " Same Bet:",
                                                          " Bet:"};

const std::array<std::string_view, 3> kAdjustModeNames = {" Manual", " Auto w/ Minor Correction",
                                                          " Auto w/ Color Correction"};

const std::array<std::string_view, 3> kLayBiasNames = {
    "Lay bets bias: nearest", "Lay bets bias: increase", "Lay bets bias: decrease"};
const std::array<std::string_view, 3> kPlaceBiasNames = {
    "Place bets bias: nearest", "Place bets bias: increase", "Place bets bias: decrease"};
const std::array<std::string_view, 3> kDoBiasNames = {
    "\"Do\" odds bias: nearest", "\"Do\" odds bias: increase", "\"Do\" odds bias: decrease"};
const std::array<std::string_view, 3> kDontBiasNames = {"\"Don't\" odds bias: nearest",
                                                        "\"Don't\" odds bias: increase",
                                                        "\"Don't\" odds bias: decrease"};

void SetAutoTakeFullOdds(bool on) {
  Game.AutoTakeFullOdds = on;
  if (on && AskYesNo("Auto-Take Full Odds is now active.\n\nDo you also want to take full odds on "
                     "any bets that are already on the table?",
                     "Auto-Take Full Odds", kTopicAutoPlay))
    TakeAllFullOdds();
  RefreshTable();
}

void SetAutoLayFullOdds(bool on) {
  Game.AutoLayFullOdds = on;
  if (on && AskYesNo("Auto-Lay Full Odds is now active.\n\nDo you also want to lay full odds on "
                     "any bets that are already on the table?",
                     "Auto-Lay Full Odds", kTopicAutoPlay))
    LayAllFullOdds();
  RefreshTable();
}

void SetAutoAdjust(int mode) {
  Game.AutoAdjust = std::clamp(mode, +AdjustManual, +AdjustColor);
  if (Game.AutoAdjust > AdjustManual) ReAdjustAllBets();
  RefreshTable();
}

void SetAutoArrangeChips(bool on) {
  Game.AutoArrangeChips = on;
  if (on)
    for (int id = Lay4; id <= LastBet; ++id) ArrangeChips(id);
  RefreshTable();
}

void SetComeOutWorking(std::span<const int> betIds, bool works) {
  for (const int id : betIds)
    if (IsBet(id)) Game.ComeOutWorking[static_cast<unsigned>(id)] = works ? Working : NotWorking;
  UpdateWorkingStates();
  RefreshTable();
}

void ToggleComeOutWorking(int betId) {
  const std::array<int, 1> one = {betId};
  if (IsBet(betId))
    SetComeOutWorking(one, Game.ComeOutWorking[static_cast<unsigned>(betId)] == NotWorking);
}

void RestoreComeOutWorking() {
  SetDefaultComeOutWorking();
  UpdateWorkingStates();
  RefreshTable();
}

std::string ComeOutLine(int betId) {
  return BetName(betId) +
         (Game.ComeOutWorking[static_cast<unsigned>(betId)] == NotWorking ? " - No" : " - Yes");
}

void SetAutoRollDice(bool on) {
  Game.AutoRollDice = on;
  if (!on && !Game.HyperDriveOn) Game.KeepRolling = false;
  if (on && Game.AutoRollsLeft != Game.NumAutoRolls &&
      !AskYesNo("Would you like to resume the current roll count at " +
                    CountText(Game.AutoRollsLeft) + "\n\nIf not, then the count will be reset to " +
                    CountText(Game.NumAutoRolls),
                "Auto-Roll", kTopicAutoPlay))
    Game.AutoRollsLeft = Game.NumAutoRolls;
  RefreshTable();
}

void SetNumAutoRolls(long long rolls) {
  Game.NumAutoRolls = static_cast<int>(std::clamp<long long>(rolls, 0, kMaxRolls));
  Game.AutoRollsLeft = Game.NumAutoRolls;
  Game.GameChanged = true;
}

void SetAutoRollDelay(long long seconds) {
  Game.AutoRollDelay = static_cast<int>(std::clamp<long long>(seconds, 0, kMaxAutoRollDelay));
  Game.GameChanged = true;
}
