#include "autobet/setting_actions.h"

#include <cmath>
#include <limits>
#include <utility>

#include "autobet/bet_ids.h"
#include "autobet/language.h"
#include "autobet/output_file.h"
#include "autobet/paths.h"
#include "autobet/script.h"
#include "autobet/values.h"
#include "bets/bankroll.h"
#include "bets/ledger.h"
#include "bets/make_bet.h"
#include "bets/new_game.h"
#include "core/ansi.h"
#include "core/host.h"
#include "core/text.h"
#include "dice/generators.h"
#include "dice/probability_file.h"
#include "figures/games_log.h"

namespace {

Currency SourceOf(const ScriptLine& line) { return ValueOf(line.OfSubject, line.OfStackNum); }

Currency SourceOfLast(const ScriptLine& line) {
  return ValueOfLast(line.OfSubject, line.OfStackNum);
}

Currency PercentOfSource(const ScriptLine& line) {
  return PercentOf(line.OfSubject, line.OfStackNum, line.LineAmount);
}

// --- The run ---

void StopRun() {
  Game.KeepRolling = false;
  if (Game.HyperDriveOn) Game.StopMessage = "Stopped by Auto-Bet command.";
}

void PlayScriptSound(const std::string& name) {
  constexpr std::uint32_t kPast = 600;
  // A run with a sound doesn't wait at its end.
  Game.AutoBetStartTime -= kPast;
  if (Game.DisableAllSound || Game.AutoBetSounds || Game.HyperDriveOn) return;
  const std::string file = Trimmed(name);
  if (!file.empty()) TheHost.PlaySound(PathIn(Game.AppPath, file), SoundMode::Start);
}

// --- Flags ---

/// The value of a flag; false when it doesn't fit.
bool FlagValueOf(Currency amount, std::int16_t& value) {
  using Limits = std::numeric_limits<std::int16_t>;
  const double whole = std::nearbyint(amount.ToDouble());
  if (whole < Limits::min() || whole > Limits::max()) return false;
  value = static_cast<std::int16_t>(whole);
  return true;
}

void SetFlagAt(int index, Currency amount) {
  std::int16_t value = 0;
  if (index < 0 || index >= std::ssize(Game.Flags) || !FlagValueOf(amount, value)) return;
  Game.Flags[static_cast<unsigned>(index)].FlagValue = value;
  Game.FlagsTouched = true;
}

void SetEveryFlag(Currency amount) {
  std::int16_t value = 0;
  if (!FlagValueOf(amount, value)) return;
  for (Flag& flag : Game.Flags) flag.FlagValue = value;
  Game.FlagsTouched = true;
}

// --- Names of Chip-Stacks ---

void NameStack(int stack, const std::string& name) {
  if (stack < 0 || stack >= std::ssize(Game.ChipStackName)) return;
  // In place: a name that is set after every roll allocates nothing.
  Game.ChipStackName[static_cast<unsigned>(stack)].assign(name, 0, name.find_last_not_of(' ') + 1);
  Game.GameChanged = true;
}

void NameStackReferredTo(int stack, const std::string& name) {
  const int id = StackReferredTo(stack);
  // A stack that holds 0 names none here.
  if (id == 0 || Game.Bets[static_cast<unsigned>(ChipStackBase + stack)] == 0) return;
  NameStack(id - ChipStackBase, name);
}

void ClearStackNames() {
  Game.ChipStackName = {};
  Game.GameChanged = true;
}

// --- Auto-Play ---

void Choose(int& setting, int choice, int lastChoice) {
  if (choice < 0 || choice > lastChoice) return;
  setting = choice;
  Game.GameChanged = true;
}

void SetFullOddsSetting(bool& setting, bool on, void (*apply)()) {
  setting = on;
  Game.GameChanged = true;
  if (on) apply();
}

// --- Money ---

void UseAtm(AtmKind kind, Currency amount) {
  if (amount > 0) AtmTransaction(kind, amount);
}

// --- Dice ---

void LoadProbability(const std::string& name) {
  LoadProbabilityFile(PathIn(Game.AppPath, name));
  if (Game.LastFileResult > 0) Game.UseSkewedProbability = true;
}

/// Generators are numbered from 1. Required: only the first five can be chosen.
void SelectGenerator(Currency number) {
  constexpr int kBeyond = 6;
  if (number < 1 || number >= kBeyond) return;
  Game.RngChoice = static_cast<int>(number.Raw() / Currency::kScale) - 1;
  CorrectRngChoice();
}

void SeedWith(Currency seed) {
  Game.ChangeRequest = seed;
  SeedRng(SeedInChangeRequest);
}

/// The clock it is, whatever the player has chosen to be asked for.
void SeedByClock() {
  constexpr int kSixth = 6;
  if (Game.RngChoice == Rng3Congruence) Game.RngState /= kSixth;
  const bool asks = std::exchange(Game.UserSeed, false);
  SeedRng(FindSeed);
  Game.UserSeed = asks;
}

// --- The output file ---

void OutputText(const std::string& name) {
  std::string text = RightTrimmed(name);
  if (text.ends_with(';'))
    text.pop_back();
  else
    text += '\t';
  WriteOutput(ToAnsi(text));
}

void OutputAmount(Currency value) { WriteOutput(PlainText(value) + "\t"); }

// --- The table ---

void ResetTableByScript(bool preserveStacks) {
  if (!TheHost.ScriptEndsGame()) return;
  TheHost.SaveGameToTemp();
  AppendGameRecord(Game.GamesLogFile);
  NewGame(preserveStacks);
}

// --- Which of them ---

/// Actions on money and on the dice; false for any other code.
bool PerformBankOrDice(const ScriptLine& line) {
  switch (line.LineCode) {
    case AtmWithdraw: UseAtm(AtmWithdrawal, line.LineAmount); return true;
    case AtmWithdrawPercent: UseAtm(AtmWithdrawal, PercentOfSource(line)); return true;
    case AtmDepositAction: UseAtm(AtmDeposit, line.LineAmount); return true;
    case AtmDepositPercent: UseAtm(AtmDeposit, PercentOfSource(line)); return true;
    case ActivateProbability: LoadProbability(Trimmed(line.LineName)); return true;
    case DeactivateProbability: Game.UseSkewedProbability = false; return true;
    case SelectRng: SelectGenerator(line.LineAmount); return true;
    case SelectRngValue: SelectGenerator(SourceOf(line)); return true;
    case SelectRngValueOfLast: SelectGenerator(SourceOfLast(line)); return true;
    case SeedWithClock: SeedByClock(); return true;
    case SeedWithNumber: SeedWith(line.LineAmount); return true;
    case SeedWithValue: SeedWith(SourceOf(line)); return true;
    case SeedWithValueOfLast: SeedWith(SourceOfLast(line)); return true;
    default: return false;
  }
}

/// Actions on the output file; false for any other code.
bool PerformOutput(const ScriptLine& line) {
  switch (line.LineCode) {
    case OpenOutput: OpenOutputFile(Trimmed(line.LineName), OutputMode::Empty); return true;
    case AppendOutput: OpenOutputFile(Trimmed(line.LineName), OutputMode::Append); return true;
    case CloseOutput: CloseOutputFile(); return true;
    case OutputMessage: OutputText(line.LineName); return true;
    case OutputValue: OutputAmount(SourceOf(line)); return true;
    case OutputValueOfLast: OutputAmount(SourceOfLast(line)); return true;
    case OutputNewLine: WriteOutput("\r\n"); return true;
    default: return false;
  }
}

}  // namespace

void ResetRollsOf(int event) {
  const auto slot = static_cast<unsigned>(event);
  SettleEvents();
  Game.ShooterEvent[slot] = Game.ShooterEventPrev[slot] = 0;
  Game.ShooterSince[slot] = Game.ShooterSincePrev[slot] = 0;
  Game.GameChanged = true;
}

void PerformSetting(const ScriptLine& line, const ActionPlan& plan) {
  const bool on = line.LineAmount != 0;
  switch (line.LineCode) {
    case SetFlag: return SetFlagAt(plan.FlagIndex, line.LineAmount);
    case SetAllFlags: return SetEveryFlag(line.LineAmount);
    case StopRolling: return StopRun();
    case PlaySoundFile: return PlayScriptSound(line.LineName);
    case InvokeShowSteps: Game.ShowStepsMode = kTrue; return;
    case NameChipStack: return NameStack(line.OfStackNum, line.LineName);
    case NameChipStackRef: return NameStackReferredTo(line.OfStackNum, line.LineName);
    case ClearChipStackNames: return ClearStackNames();
    case SetWinningBets: return Choose(Game.HandleWinningBets, line.ToSubject, WinParlay);
    case SetLosingBets: return Choose(Game.HandleLosingBets, line.ToSubject, LossDoubleBet);
    case SetAutoTakeOdds: return SetFullOddsSetting(Game.AutoTakeFullOdds, on, TakeAllFullOdds);
    case SetAutoLayOdds: return SetFullOddsSetting(Game.AutoLayFullOdds, on, LayAllFullOdds);
    case ResetTableKeepStacks: return ResetTableByScript(true);
    case ResetTable: return ResetTableByScript(false);
    default:
      if (!PerformBankOrDice(line)) PerformOutput(line);
  }
}
