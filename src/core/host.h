// The seam between the engine and whatever shows it: all that the engine asks of the outside.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "core/currency.h"

enum class SoundMode { Start, PlayToEnd, Loop };

/// The engine's questions to the outside. Every member is always set: the headless host
/// (headless_host.h) answers by rule and draws nothing, for tests, benchmarks and batch runs; the
/// screens put their own in place at start.
struct Host {
  /// Shows the message of the slots (`MsgText` and the rest). Modal: waits, and leaves `MsgAnswer`,
  /// and the amounts of the input boxes in `ChangeRequest` and `ChangeRequest2`.
  std::function<void(bool modal)> ShowMessage;

  /// Shows `Game.Settle`, waits, and calls `PressSettleButton` once.
  std::function<void()> ShowSettleScreen;

  std::function<void()> ThrowDice;  // the dice in flight, ending with `Die1` and `Die2`
  std::function<void()> SendDiceHome;
  /// A roll has decided a bet of `stake`, whose chips still lie: what it won or lost. Not under
  /// Hyper-Drive.
  std::function<void(int betId, Currency stake, Currency net)> BetDecided;
  std::function<void()> CelebrateBank;  // chips fall on the table

  std::function<void(const std::string& path, SoundMode mode)> PlaySound;
  std::function<void()> StopSound;

  std::function<std::uint32_t()> Milliseconds;  // since some fixed moment; wraps
  std::function<void()> Yield;                  // one turn of the event loop
  std::function<void(int milliseconds)> Wait;   // a pause with the event loop running

  std::function<void()> RefreshViews;  // all open views after a roll
  std::function<void()> RedrawBets;    // chips, markers, puck, dice and amounts
  std::function<void()> RedrawLayout;  // the table under the chips

  /// A traced line of a script with what became of it; line 0, without a text, is the end of a
  /// block. Waits until the player goes on, or has cleared `ShowStepsMode`: tracing then ends for
  /// the rest of the run. With `AutoBetRunning` cleared the run ends behind this line.
  std::function<void(int line, const std::string& text, const std::string& status)> ShowStep;
  std::function<void(int line)> ShowScriptLine;  // the editor brings a line to its top

  /// How far a long piece of work has come, from 0 to 1, its end. False when the player wants no
  /// more of it.
  std::function<bool(const std::string& what, double share)> ShowProgress;

  /// A script is about to end the game. False when there is to be no new one: the run of rolls has
  /// been ended instead.
  std::function<bool()> ScriptEndsGame;
  std::function<void()> SaveGameToTemp;  // before the new game
  std::function<void()> PrintGraph;      // the bankroll graph joins the page to be printed
  std::function<void()> PrintDuePage;    // the graphs collected for that page are printed
};

/// The host in force.
extern Host TheHost;
