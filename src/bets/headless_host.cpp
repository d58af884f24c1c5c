#include "bets/headless_host.h"

#include <memory>

#include "bets/settle.h"
#include "core/game_state.h"
#include "core/messages.h"

namespace {

constexpr std::uint32_t kHeadlessClockStart = 1'000'000;

constexpr int kOkButton = 0;
constexpr int kNoButton = 2;

void AnswerByRule() {
  const int button = (Game.MsgFlags & ButtonNo) ? kNoButton : kOkButton;
  PressMessageButton(button, false, Game.MsgInput[0], Game.MsgInput[1]);
}

}  // namespace

Host HeadlessHost() {
  Host host;
  auto clock = std::make_shared<std::uint32_t>(kHeadlessClockStart);
  host.ShowMessage = [](bool) { AnswerByRule(); };
  host.ShowSettleScreen = [] { PressSettleButton(0); };
  host.ThrowDice = [] {};
  host.SendDiceHome = [] {};
  host.BetDecided = [](int, Currency, Currency) {};
  host.CelebrateBank = [] {};
  host.PlaySound = [](const std::string&, SoundMode) {};
  host.StopSound = [] {};
  host.Milliseconds = [clock] { return *clock; };
  host.Yield = [] {};
  host.Wait = [clock](int milliseconds) {
    if (milliseconds > 0) *clock += static_cast<std::uint32_t>(milliseconds);
  };
  host.RefreshViews = [] {};
  host.RedrawBets = [] {};
  host.RedrawLayout = [] {};
  host.ShowStep = [](int, const std::string&, const std::string&) {};
  host.ShowScriptLine = [](int) {};
  host.ShowProgress = [](const std::string&, double) { return true; };
  host.ScriptEndsGame = [] { return true; };
  host.SaveGameToTemp = [] {};
  host.PrintGraph = [] {};
  host.PrintDuePage = [] {};
  return host;
}

Host TheHost = HeadlessHost();
