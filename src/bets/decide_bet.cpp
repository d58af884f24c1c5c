#include "bets/decide_bet.h"

#include "bets/known_decisions.h"
#include "bets/settle.h"
#include "bets/vig.h"
#include "core/host.h"
#include "core/text.h"
#include "dice/throw_kinds.h"
#include "stats/bet_tables.h"
#include "stats/events_log.h"

namespace {

Currency MoneyOf(double quotient) { return Currency::FromCount(quotient * Currency::kScale); }

/// `amount` times `Win` divided by `Per` of the record in force, rounded as money after each step.
Currency PaidAt(Currency amount, const PayoffRecord& payoff) {
  return MoneyOf(amount * payoff.Win / payoff.Per);
}

/// The vig on a bet that pays `gross` before it. Vig up front is paid win or lose, vig on the win
/// only on wins.
Currency ChargedVig(FigureMode mode, int betId, Currency gross) {
  const bool lay = IsLay(betId);
  if (!lay && !IsBuy(betId)) return 0;
  if (gross <= 0 && !VigIsUpFront(betId)) return 0;
  if (mode == FigureReal) return VigHeld(betId);
  if (!lay) return Game.BuyVigPct;
  return PaidAt(Game.LayVigPct, Game.Payoff[betId]);
}

int PropOfTotal(int total) {
  switch (total) {
    case 2: return Two;
    case 3: return Three;
    case 7: return Seven;
    case 11: return Eleven;
    default: return Twelve;
  }
}

/// The bet whose ratio a won bet is paid at.
int PayoffSource(int betId, const DecidedThrow& thrown) {
  const int point = thrown.Point;
  const int total = thrown.Die1 + thrown.Die2;
  switch (betId) {
    case PassLine: return point == 0 ? +Come : BetOnNumber(ComeFamily, point);
    case PassLineOdds: return point == 0 ? betId : BetOnNumber(ComeOddsFamily, point);
    case DontPass: return point == 0 ? +DontCome : BetOnNumber(DontComeFamily, point);
    case DontPassOdds: return point == 0 ? betId : BetOnNumber(DontComeOddsFamily, point);
    case CAndE: return total == 11 ? Eleven : Craps;
    case Horn:
    case World: return PropOfTotal(total);
    default: return betId;
  }
}

/// The parts into which a combination bet is split; 1 for all others.
int PartsOf(int betId) {
  switch (betId) {
    case CAndE: return 2;
    case Horn: return 4;
    case World: return 5;
    default: return 1;
  }
}

/// One part of a combination bet wins, the others are lost.
Currency PaidOnOnePart(int parts, Currency amount, const PayoffRecord& payoff) {
  const Currency part = MoneyOf(amount / Currency(parts));
  return PaidAt(part, payoff) - MoneyOf(amount * (parts - 1) / Currency(parts));
}

/// A won bet, before vig.
BetPayoff WonPayoff(int betId, Currency amount, const DecidedThrow& thrown) {
  BetPayoff payoff;
  payoff.Ratio = Game.Payoff[PayoffSource(betId, thrown)];
  const int parts = PartsOf(betId);
  payoff.Gross =
      parts == 1 ? PaidAt(amount, payoff.Ratio) : PaidOnOnePart(parts, amount, payoff.Ratio);
  return payoff;
}

/// A lost bet, before vig.
BetPayoff LostPayoff(int betId, Currency amount) {
  return {-amount, 0, {-1, Game.Payoff[betId].ShownAsTo, 1}};
}

BetPayoff FieldPayoffOf(Currency amount, const DecidedThrow& thrown) {
  const PayoffRecord& ratio = Game.FieldPayoff[FieldCombination(thrown.Die1, thrown.Die2)];
  return {PaidAt(amount, ratio), 0, ratio};
}

BetPayoff PayoffBeforeVig(int betId, DecisionCode code, Currency amount,
                          const DecidedThrow& thrown) {
  if (betId == Field) return FieldPayoffOf(amount, thrown);
  return code > 0 ? WonPayoff(betId, amount, thrown) : LostPayoff(betId, amount);
}

void LogDecision(int betId) {
  if (!Game.EventsLogActive) return;
  const std::string& name = Game.BetNames[static_cast<unsigned>(betId)];
  if (Game.NetPayoff > 0 && Game.LogBetsWon)
    WriteLogLine("      ", name, " bet won $", Game.NetPayoff);
  if (Game.NetPayoff < 0 && Game.LogBetsLost)
    WriteLogLine("      ", name, " bet lost $", -Game.NetPayoff);
}

/// True when the bet can't stay on the table, whatever the player chooses.
bool MustComeDown(int betId) {
  if ((betId == Come || betId == DontCome) && Game.RollTotal == 7) return true;
  if (betId == PassLineOdds || betId == DontPassOdds) return true;
  if (IsDontComeOnNumber(betId) || IsDontComeOdds(betId)) return true;
  if (IsComeOnNumber(betId)) return !Game.AllowPutBets;
  return IsComeOdds(betId) && Game.Bets[betId - kOddsOffset] == 0;
}

bool SettledByHand() { return !Game.HyperDriveOn && Game.HandleWinningBets == WinManual; }

/// Odds that weren't working come back; a flat bet that is off just stands.
void ReturnOdds(int betId, DecisionCode code) {
  const bool odds = code == OddsWin || code == OddsLose;
  if (!odds || Game.Bets[betId] == 0) return;
  Game.DecidedBet = betId;
  Game.NetPayoff = 0;
  // Required: six ids down is the flat bet of Come Odds and Don't Come Odds; for the line odds it
  // lands on Buy 5 and Buy 9.
  Game.BetComesDown = Game.Bets[betId - kOddsOffset] == 0 || !Game.AllowPutBets;
  if (SettledByHand()) FillReturnedOddsLines();
  HandleWonBet();
  Game.BetWorking[betId] = Working;
  Game.WorkingTouched = true;
}

void PlayDecision(int betId, DecisionCode code) {
  const Currency bet = Game.Bets[betId];
  const BetPayoff payoff = FigurePayoff(FigureReal, betId, code, bet, ThrowInForce());
  Game.Payoff[0] = payoff.Ratio;
  Game.GrossPayoff = payoff.Gross;
  Game.NetPayoff = payoff.Net;
  RecordBetOutcome(Actual, betId, bet, Game.NetPayoff);
  Touch(betId);
  LogDecision(betId);
  // A record that pays 0 decides nothing: the bet stands.
  if (Game.Payoff[0].Win == 0 && Game.NetPayoff == 0) return;
  Game.DecidedBet = betId;
  Game.Bets[BankrollIndex] += Game.NetPayoff;
  Touch(BankrollIndex);
  if (!Game.HyperDriveOn) TheHost.BetDecided(betId, bet, Game.NetPayoff);
  if (betId < kContractSlots) Game.ContractBets[betId] = 0;
  Game.BetComesDown = MustComeDown(betId);
  CountStreak(betId, Game.NetPayoff);
  if (Game.NetPayoff < 0) return HandleLostBet();
  if (SettledByHand()) FillWinLines();
  HandleWonBet();
}

}  // namespace

int OutcomeOf(int betId, DecisionCode code, const DecidedThrow& thrown) {
  if (betId == Field) return FieldCombination(thrown.Die1, thrown.Die2);
  return code > 0 ? PayoffSource(betId, thrown) : 0;
}

int FieldCombination(int die1, int die2) { return kKindOfThrow[NumberOfThrow(die1, die2)]; }

BetPayoff FigurePayoff(FigureMode mode, int betId, DecisionCode code, Currency amount,
                       const DecidedThrow& thrown) {
  BetPayoff payoff = PayoffBeforeVig(betId, code, amount, thrown);
  payoff.Gross -= ChargedVig(mode, betId, payoff.Gross);
  payoff.Net = RoundDownTo(payoff.Gross, Unit());
  return payoff;
}

void DecideBet(int betId, DecisionCode code) {
  if (Game.BetWorking[betId] >= Working) {
    const BetPayoff phantom = FigurePayoff(FigureRate, betId, code, 1, ThrowInForce());
    RecordBetOutcome(Phantom, betId, 1, phantom.Gross);
  }
  DecideWager(betId, code);
}

void DecideWager(int betId, DecisionCode code) {
  if (Game.BetWorking[betId] < Working) return ReturnOdds(betId, code);
  if (Game.Bets[betId] == 0) return;
  const int outcome = OutcomeOf(betId, code, ThrowInForce());
  if (const KnownDecision* known = FindKnownDecision(betId, code, outcome)) {
    Game.NetPayoff = known->Net;
    LogDecision(betId);
    return TakeKnownDecision(betId, *known);
  }
  const DecisionLesson lesson(betId, code, outcome);
  PlayDecision(betId, code);
  lesson.Learn();
}
