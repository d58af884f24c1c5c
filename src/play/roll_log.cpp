#include "play/roll_log.h"

#include <array>
#include <bit>
#include <cstdint>

#include "core/record_file.h"
#include "core/text.h"
#include "stats/events_log.h"

namespace {

const char* const kIndent = "      ";

bool ScriptIsOn() { return Game.AutoBetActive != 0 && Game.ScrCount > 0; }

void LogAutoBetStart() {
  const bool changed =
      Game.AutoBetFile != Game.AutoBetFilePrev || Game.AutoBetActive != Game.AutoBetActivePrev;
  if (!ScriptIsOn() || !changed) return;
  const std::string name = Game.AutoBetFile.empty() ? "untitled" : BareName(Game.AutoBetFile);
  WriteLogLine(kIndent + ("Auto-Bets activated (" + name) + ")");
}

void LogAutoBetEnd() {
  const bool emptied = Game.AutoBetFile != Game.AutoBetFilePrev && Game.ScrCount == 0;
  const bool switchedOff =
      Game.AutoBetActive == 0 && Game.AutoBetActivePrev != 0 && Game.ScrCount > 0;
  if (emptied || switchedOff) WriteLogLine(std::string(kIndent) + "Auto-Bets deactivated");
}

/// Required: the words are those of the other side of the deal.
void LogAtm() {
  const Currency before = Game.BetsAfterRoll[BankrollIndex];
  const Currency now = Bankroll();
  if (now == before) return;
  const bool higher = now > before;
  WriteLogLine(kIndent +
               std::string(higher ? "Bankroll increased to $" : "Bankroll decreased to $") +
               MoneyText(now) + " ($" + MoneyText(Abs(now - before)) +
               (higher ? " ATM withdrawal)" : " ATM deposit)"));
}

/// The last throw moved a Come or Don't Come bet to this one.
bool WasCreatedByLastRoll(int betId) {
  if (!IsComeOnNumber(betId) && !IsDontComeOnNumber(betId)) return false;
  const int source = IsComeOnNumber(betId) ? Come : DontCome;
  return NumberOfBet(betId) == Game.RollTotal && Game.BetsAtRoll[source] > 0;
}

bool LostOnLastRoll(int betId) { return Game.BetLosses[Actual][betId][StatRollCount] > 0; }

void LogRemovedBet(int betId) {
  // Required: a Don't Come bet that the last throw had just moved is told of when it is taken.
  const bool created = IsDontComeOnNumber(betId) && WasCreatedByLastRoll(betId);
  const bool moved = betId == Come || betId == DontCome;
  if (created || (Game.BetsAtRoll[betId] > 0 && !moved && !LostOnLastRoll(betId)))
    WriteLogLine(kIndent + BetName(betId) + " bet removed");
}

void LogCall(int betId) {
  const int now = Game.BetWorking[betId];
  const int before = Game.BetWorkingPrev[betId];
  const char* text = nullptr;
  if (now == CalledOff)
    text = " bet called OFF";
  else if (now == CalledOn)
    text = " bet called ON";
  else if (before == CalledOff)
    text = " bet, OFF button removed";
  else if (before == CalledOn)
    text = " bet, ON button removed";
  if (text != nullptr) WriteLogLine(kIndent + BetName(betId) + text);
}

void LogStandingBet(int betId) {
  // What stood on the number before came down with the throw, but for a Come bet that may stay.
  const bool cameDown = IsDontComeOnNumber(betId) || !Game.AllowPutBets;
  const bool created = (Game.BetsAtRoll[betId] == 0 || cameDown) && WasCreatedByLastRoll(betId);
  const Currency before =
      created ? Game.BetsAtRoll[IsComeOnNumber(betId) ? Come : DontCome] : Game.BetsAtRoll[betId];
  const Currency now = Game.Bets[betId];
  const bool mayBeCalled = before == 0 || Game.BetWorking[betId] != Game.BetWorkingPrev[betId];
  if (now == before && !created && !mayBeCalled) return;
  const std::string name = BetName(betId);
  if (before == 0)
    WriteLogLine(kIndent + ("$" + MoneyText(now)) + " bet on " + name);
  else if (now > before)
    WriteLogLine(kIndent + name + " bet increased to $" + MoneyText(now));
  else if (now < before)
    WriteLogLine(kIndent + name + " bet decreased to $" + MoneyText(now));
  else if (created)
    WriteLogLine(kIndent + name + " bet still $" + MoneyText(now));
  if (mayBeCalled) LogCall(betId);
}

/// The bets that may differ from what they were when the dice were thrown, a bit for each id.
std::array<std::uint64_t, 2> BetsToTell() {
  constexpr std::uint64_t kBetsOfLastWord = (std::uint64_t{2} << LastBet % 64) - 1;
  if (Game.SnapshotsDue || Game.WorkingTouched || Game.WorkingSnapshotDue)
    return {~std::uint64_t{1}, kBetsOfLastWord};
  std::array bets = {Game.TouchedBets[0] & ~std::uint64_t{1},
                     Game.TouchedBets[1] & kBetsOfLastWord};
  static_assert(Come10 < 64);
  for (const BetFamily family : {DontComeFamily, ComeFamily})
    if (IsPointNumber(Game.RollTotal))
      bets[0] |= std::uint64_t{1} << BetOnNumber(family, Game.RollTotal);
  return bets;
}

void LogBets() {
  const auto bets = BetsToTell();
  for (int word = 0; word < 2; ++word)
    for (std::uint64_t bits = bets[static_cast<unsigned>(word)]; bits != 0; bits &= bits - 1) {
      const int id = word * 64 + std::countr_zero(bits);
      if (Game.Bets[id] == 0)
        LogRemovedBet(id);
      else
        LogStandingBet(id);
    }
}

void LogStacks() {
  for (int id = FirstChipStack; id <= LastSlot; ++id) {
    const Currency now = Game.Bets[id];
    const Currency before = Game.BetsAtRoll[id];
    if (now == before) continue;
    WriteLogLine(kIndent + ("Chip-Stack #" + std::to_string(id - ChipStackBase)) +
                 (now > before ? " increased to $" : " decreased to $") + MoneyText(now));
  }
}

std::string SourceText(DiceSource source) {
  switch (source) {
    case DiceSource::ManualPad: return " from manual roll pad";
    case DiceSource::Tape: return " from " + Game.DiceRollFile;
    case DiceSource::Generator: break;
  }
  std::string text = " from RNG #" + std::to_string(Game.RngChoice + 1);
  if (!Game.UseSkewedProbability) return text;
  return text + (Game.PrbFileName.empty() ? " using untitled probability matrix"
                                          : " using probability matrix: " + Game.PrbFileName);
}

}  // namespace

void LogChangesSinceRoll() {
  if (!Game.EventsLogActive) return;
  LogAutoBetStart();
  if (Game.LogBankrollChanges) LogAtm();
  if (Game.LogBetChanges) LogBets();
  if (Game.LogChipStackChanges) LogStacks();
  LogAutoBetEnd();
}

void LogThrow(DiceSource source) {
  if (!LogWants(Game.LogRolls)) return;
  const auto number = [](int value) { return std::to_string(value); };
  WriteLogLine({" Roll #", CountText(Game.RollCount[0] + 1), ":  ", number(Game.Die1 + Game.Die2),
                " (", number(Game.Die1), ".", number(Game.Die2), ")", SourceText(source)});
}

void LogPassOrMiss(const char* text) {
  if (LogWants(Game.LogPassesMisses)) WriteLogLine(text);
}

void LogEndOfRoll() {
  const Currency before = Game.BetsAtRoll[BankrollIndex];
  const Currency now = Bankroll();
  if (Game.LogBankrollChanges && now != before) {
    const bool higher = now > before;
    WriteLogLine(
        kIndent + std::string(higher ? "Bankroll increased to $" : "Bankroll decreased to $") +
        MoneyText(now) + " ($" + MoneyText(Abs(now - before)) + (higher ? " gain)" : " loss)"));
  }
  if (Game.LogShooterChanges && Game.PrevPoint > 0 && Game.RollTotal == 7)
    WriteLogLine("------New shooter coming out----------");
}
