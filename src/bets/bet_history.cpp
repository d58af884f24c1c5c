#include "bets/bet_history.h"

#include <algorithm>
#include <utility>

#include "bets/change_bet.h"
#include "bets/chips.h"
#include "bets/held.h"
#include "bets/make_bet.h"
#include "core/host.h"
#include "core/kept_record.h"
#include "core/sounds.h"

namespace {

constexpr std::size_t kMostSteps = 1000;

BetStand StandNow() {
  BetStand stand;
  for (unsigned id = Lay4; id <= LastBet; ++id) {
    stand.Bets[id] = Game.Bets[id];
    if (Game.Bets[id] != 0) stand.Working[id] = Game.BetWorking[id];
  }
  stand.Multiple = Game.OddsMultiple;
  return stand;
}

/// Calls `act` for each bet: in the order of ids with the odds behind, or the odds first.
template <typename Action>
void ForBets(bool oddsFirst, Action act) {
  for (const bool odds : {oddsFirst, !oddsFirst})
    for (int id = Lay4; id <= LastBet; ++id)
      if (IsOddsBet(id) == odds) act(id);
}

/// On a point of 8 the odds of the line are held to the multiple of the odds last figured,
/// whichever they were. An amount that stood once is asked for at a multiple that allowed it.
void AllowLineOdds(int id, Currency amount) {
  if (Game.Point != 8 || (id != PassLineOdds && id != DontPassOdds)) return;
  for (const Currency multiple : {Game.OddsMultiple, Game.FirstMultiple, Game.OddsAllowed410,
                                  Game.OddsAllowed59, Game.OddsAllowed68}) {
    Game.OddsMultiple = multiple;
    FigureMaxBet(id);
    if (amount <= Game.MaxHere) return;
  }
}

/// Asks for an amount that stood once, as it was. The rules that bend a request can leave what
/// nobody may ask for: odds that were cut below the minimum, a line bet that was raised to pay
/// properly.
void AskAgain(int id, Currency amount) {
  const Held exact(Game.AutoAdjust, +AdjustManual);
  const Held put(Game.AllowPutBets, true);
  const Held least(Game.MinPlacard,
                   amount > 0 ? std::min(Game.MinPlacard, amount) : Game.MinPlacard);
  AllowLineOdds(id, amount);
  RequestChange(id, amount - Game.Bets[id]);
}

/// The bets of `stand` that a command changed are asked for; a bet that refuses is returned.
int GoBackTo(const BetStand& stand, const BetStand& from) {
  const Held silent(Game.Notify, 0);
  const auto change = [&](bool raise) {
    ForBets(!raise, [&](int id) {
      const Currency by = stand.Bets[id] - Game.Bets[id];
      if (stand.Bets[id] != from.Bets[id] && (raise ? by > 0 : by < 0))
        AskAgain(id, stand.Bets[id]);
    });
  };
  change(false);
  change(true);
  int refused = 0;
  ForBets(false, [&](int id) {
    if (stand.Bets[id] != from.Bets[id]) ArrangeChips(id);
    if (Game.Bets[id] != 0 && stand.Bets[id] != 0) Game.BetWorking[id] = stand.Working[id];
    const bool wanted = stand.Bets[id] != from.Bets[id] && stand.Bets[id] != Game.Bets[id];
    if (wanted && refused == 0) refused = id;
  });
  Game.OddsMultiple = stand.Multiple;
  Game.WorkingTouched = true;
  Game.GameChanged = true;
  Game.Noted = StandNow();
  return refused;
}

/// A number that is taken by the point can't be asked for: what moves there came from elsewhere.
bool MayRise(int id) {
  if (id == Come || id == DontCome) return Game.Point != 0;
  if (id == PassLine) return Game.Point == 0 || Game.AllowPutBets;
  if (id == DontPass) return Game.Point == 0;
  if (id == PassLineOdds) return Game.Point != 0 && Game.Bets[PassLine] != 0;
  if (id == DontPassOdds) return Game.Point != 0 && Game.Bets[DontPass] != 0;
  if (IsComeOnNumber(id)) return Game.AllowPutBets;
  if (IsDontComeOnNumber(id)) return false;
  if (IsComeOdds(id) || IsDontComeOdds(id)) return Game.Bets[id - kOddsOffset] != 0;
  return true;
}

/// Asks for more on a bet; true when that has changed it. Where the rules would lower what lies
/// there, or put more than that on it, the bet is left as it is.
bool RaiseOrLeave(int id, Currency more) {
  const Currency former = Game.Bets[id];
  KeptRecord kept;
  kept.Keep();
  RequestChange(id, more);
  if (Game.Bets[id] < former || Game.Bets[id] > former + more) kept.PutBack();
  return Game.Bets[id] != former;
}

/// A command over all bets: silent but for its chips, and one step.
template <typename Request>
void AskForAll(Request request) {
  NoteCommand();
  {
    const Held silent(Game.Notify, 0);
    ForBets(false, [&](int id) {
      const Currency more = request(id);
      if (more > 0 && MayRise(id) && RaiseOrLeave(id, more)) ArrangeChips(id);
    });
  }
  if (StandNow() != Game.Noted) PlayChipSound();
  NoteCommand();
  TheHost.RedrawBets();
}

/// What lay on a bet at the last throw and doesn't lie there now.
Currency Missing(int id) { return std::max(Currency(), Game.BetsAtRoll[id] - Game.Bets[id]); }

/// Whether any bet has the property.
template <typename Property>
bool AnyBet(Property property) {
  for (int id = Lay4; id <= LastBet; ++id)
    if (property(id)) return true;
  return false;
}

}  // namespace

void NoteCommand() {
  if (Game.RollInProgress || Game.AutoBetRunning) return;
  const BetStand now = StandNow();
  if (now == Game.Noted) return;
  if (Game.UndoSteps.size() == kMostSteps) Game.UndoSteps.erase(Game.UndoSteps.begin());
  Game.UndoSteps.push_back({Game.Noted, now});
  Game.RedoSteps.clear();
  Game.Noted = now;
}

void ForgetCommands() {
  Game.UndoSteps.clear();
  Game.RedoSteps.clear();
  Game.Noted = StandNow();
  Game.FirstMultiple = Game.OddsMultiple;
}

int UndoCommand() {
  NoteCommand();
  if (!CanUndo()) return 0;
  const BetStep step = Game.UndoSteps.back();
  Game.UndoSteps.pop_back();
  const int refused = GoBackTo(step.Before, step.After);
  Game.RedoSteps.push_back(step);
  TheHost.RedrawBets();
  return refused;
}

int RedoCommand() {
  NoteCommand();
  if (!CanRedo()) return 0;
  const BetStep step = Game.RedoSteps.back();
  Game.RedoSteps.pop_back();
  const int refused = GoBackTo(step.After, step.Before);
  Game.UndoSteps.push_back(step);
  TheHost.RedrawBets();
  return refused;
}

void RepeatBets() {
  // Amounts that are to pay properly are bent downward.
  const Held lay(Game.LayBias, +BiasDecrease);
  const Held place(Game.PlaceBias, +BiasDecrease);
  const Held take(Game.DoBias, +BiasDecrease);
  const Held dont(Game.DontBias, +BiasDecrease);
  AskForAll(Missing);
}

void DoubleBets() {
  AskForAll([](int id) { return Game.Bets[id]; });
}

void ClearBets() {
  NoteCommand();
  RemoveAllBets();
  NoteCommand();
  TheHost.RedrawBets();
}

bool CanRepeat() {
  return AnyBet([](int id) { return Missing(id) > 0 && MayRise(id); });
}

bool CanDouble() {
  const bool money = Game.NegBankroll || FreeMoney() > 0;
  return money && AnyBet([](int id) { return Game.Bets[id] != 0 && MayRise(id); });
}

bool CanClear() {
  return AnyBet([](int id) {
    return Game.Bets[id] != 0 && !(IsContractBet(id) && Game.Bets[id] <= Game.ContractBets[id]);
  });
}
