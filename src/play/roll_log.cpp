#include "play/roll_log.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <string_view>

#include "core/record_file.h"
#include "stats/events_log.h"

namespace {

constexpr std::string_view kIndent = "      ";

const std::string& NameOf(int betId) { return Game.BetNames[static_cast<unsigned>(betId)]; }

bool ScriptIsOn() { return Game.AutoBetActive != 0 && Game.ScrCount > 0; }

void LogAutoBetStart() {
  if (!ScriptIsOn()) return;
  if (Game.AutoBetFile == Game.AutoBetFilePrev && Game.AutoBetActive == Game.AutoBetActivePrev)
    return;
  const std::string name = Game.AutoBetFile.empty() ? "untitled" : BareName(Game.AutoBetFile);
  WriteLogLine(kIndent, "Auto-Bets activated (", name, ")");
}

void LogAutoBetEnd() {
  const bool emptied = Game.ScrCount == 0 && Game.AutoBetFile != Game.AutoBetFilePrev;
  const bool switchedOff =
      Game.AutoBetActive == 0 && Game.AutoBetActivePrev != 0 && Game.ScrCount > 0;
  if (emptied || switchedOff) WriteLogLine(kIndent, "Auto-Bets deactivated");
}

void LogBankroll(Currency before, std::string_view gain, std::string_view loss) {
  const Currency now = Bankroll();
  if (now > before)
    WriteLogLine(kIndent, "Bankroll increased to $", now, " ($", now - before, gain);
  else if (now < before)
    WriteLogLine(kIndent, "Bankroll decreased to $", now, " ($", before - now, loss);
}

/// Required: the words are those of the other side of the deal.
void LogAtm() {
  LogBankroll(Game.BetsAfterRoll[BankrollIndex], " ATM withdrawal)", " ATM deposit)");
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
    WriteLogLine(kIndent, NameOf(betId), " bet removed");
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
  if (text != nullptr) WriteLogLine(kIndent, NameOf(betId), text);
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
  const std::string& name = NameOf(betId);
  if (before == 0)
    WriteLogLine(kIndent, "$", now, " bet on ", name);
  else if (now > before)
    WriteLogLine(kIndent, name, " bet increased to $", now);
  else if (now < before)
    WriteLogLine(kIndent, name, " bet decreased to $", now);
  else if (created)
    WriteLogLine(kIndent, name, " bet still $", now);
  if (mayBeCalled) LogCall(betId);
}

/// The bets that may differ from what they were when the dice were thrown, a bit for each id.
std::array<std::uint64_t, 2> BetsToTell() {
  constexpr std::uint64_t kBetsOfLastWord = (std::uint64_t{2} << LastBet % 64) - 1;
  const auto working = Game.BetWorking.begin();
  const bool called = (Game.WorkingTouched || Game.WorkingSnapshotDue) &&
                      !std::equal(working, working + kBetSlots, Game.BetWorkingPrev.begin());
  if (Game.SnapshotsDue || called) return {~std::uint64_t{1}, kBetsOfLastWord};
  std::array bets = {Game.TouchedBets[0] & ~std::uint64_t{1},
                     Game.TouchedBets[1] & kBetsOfLastWord};
  static_assert(Come10 < 64);
  const bool mayHaveMoved = Game.BetsAtRoll[Come] > 0 || Game.BetsAtRoll[DontCome] > 0;
  if (!mayHaveMoved || !IsPointNumber(Game.RollTotal)) return bets;
  for (const BetFamily family : {DontComeFamily, ComeFamily})
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

bool AnyStackTouched() {
  static_assert(FirstChipStack / 64 == 1);
  const auto& touched = Game.TouchedBets;
  return Game.SnapshotsDue || (touched[1] >> FirstChipStack % 64) != 0 ||
         std::any_of(touched.begin() + 2, touched.end(),
                     [](std::uint64_t word) { return word != 0; });
}

void LogStacks() {
  if (!AnyStackTouched()) return;
  for (int id = FirstChipStack; id <= LastSlot; ++id) {
    const Currency now = Game.Bets[id];
    const Currency before = Game.BetsAtRoll[id];
    if (now == before) continue;
    WriteLogLine(kIndent, "Chip-Stack #", id - ChipStackBase,
                 now > before ? " increased to $" : " decreased to $", now);
  }
}

template <typename... Parts>
void LogThrowFrom(const Parts&... source) {
  WriteLogLine(" Roll #", Game.RollCount[0] + 1, ":  ", Game.Die1 + Game.Die2, " (", Game.Die1, ".",
               Game.Die2, ") from ", source...);
}

void LogThrowOfGenerator() {
  const int number = Game.RngChoice + 1;
  if (!Game.UseSkewedProbability)
    LogThrowFrom("RNG #", number);
  else if (Game.PrbFileName.empty())
    LogThrowFrom("RNG #", number, " using untitled probability matrix");
  else
    LogThrowFrom("RNG #", number, " using probability matrix: ", Game.PrbFileName);
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
  switch (source) {
    case DiceSource::ManualPad: return LogThrowFrom("manual roll pad");
    case DiceSource::Tape: return LogThrowFrom(Game.DiceRollFile);
    case DiceSource::Generator: return LogThrowOfGenerator();
  }
}

void LogPassOrMiss(const char* text) {
  if (LogWants(Game.LogPassesMisses)) WriteLogLine(text);
}

void LogEndOfRoll() {
  if (Game.LogBankrollChanges) LogBankroll(Game.BetsAtRoll[BankrollIndex], " gain)", " loss)");
  if (Game.LogShooterChanges && Game.PrevPoint > 0 && Game.RollTotal == 7)
    WriteLogLine("------New shooter coming out----------");
}
