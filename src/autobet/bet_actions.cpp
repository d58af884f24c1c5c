#include "autobet/bet_actions.h"

#include <optional>
#include <utility>

#include "autobet/language.h"
#include "autobet/values.h"
#include "bets/chips.h"
#include "bets/make_bet.h"

namespace {

/// The amount of an action, or nothing: then the line does nothing.
using Value = std::optional<Currency>;

Currency& AmountOf(int id) { return Game.Bets[static_cast<unsigned>(id)]; }

void Arrange(int id) {
  if (id == DontPass || id == DontPassOdds) {
    // The odds lie on the flat bet's pile.
    ArrangeChips(DontPass);
    ArrangeChips(DontPassOdds);
  } else {
    ArrangeChips(id);
  }
}

void Request(int id, Currency change) {
  Game.ChangeRequest = change;
  if (id > LargestChip)
    MakeBet(id, 0, 0);
  else
    MakeBet(id);
  if (Game.Course.Followed && change > 0 && Game.Change == 0 && IsBet(id))
    ++Game.Course.RefusedBets;
}

/// A bet whose amount is written before the rules see a request on it. Should a run-time fault
/// prevent the request, the bet is as it was.
class RewrittenBet {
 public:
  RewrittenBet(int id, Currency amount) : id_(id), before_(AmountOf(id)), written_(amount) {
    Write(amount);
  }
  ~RewrittenBet() {
    if (!requested_ && AmountOf(id_) == written_) Write(before_);
  }
  RewrittenBet(const RewrittenBet&) = delete;
  RewrittenBet& operator=(const RewrittenBet&) = delete;

  void Request(Currency change) {
    ::Request(id_, change);
    requested_ = true;
    // The rules saw no change, but the amount differs from what the odds stand on.
    if (Game.Change == 0 && written_ != before_) LetOddsFollow(id_);
  }

 private:
  void Write(Currency amount) const {
    if (amount == AmountOf(id_)) return;
    if (IsBet(id_)) Game.TotalOnTable += amount - AmountOf(id_);
    AmountOf(id_) = amount;
    Game.GameChanged = true;
    Touch(id_);
    Arrange(id_);
  }

  int id_;
  Currency before_;
  Currency written_;
  bool requested_ = false;
};

// --- Values ---

bool IsOfLast(int form) { return form > FormAmount && form % 2 == 0; }

Currency SourceOf(const ScriptLine& line, int form) {
  return IsOfLast(form) ? ValueOfLast(line.OfSubject, line.OfStackNum)
                        : ValueOf(line.OfSubject, line.OfStackNum);
}

/// The value of the first three forms.
Currency PlainValue(const ScriptLine& line, int form) {
  switch (form) {
    case FormPercent: return PercentOf(line.OfSubject, line.OfStackNum, line.LineAmount);
    case FormPercentOfLast: return PercentOfLast(line.OfSubject, line.OfStackNum, line.LineAmount);
    default: return line.LineAmount;
  }
}

/// Rounded to a whole number, halves to even.
std::int64_t Whole(Currency amount) {
  const std::int64_t whole = amount.Raw() / Currency::kScale;
  const std::int64_t rest = amount.Raw() % Currency::kScale;
  const std::int64_t twice = 2 * (rest < 0 ? -rest : rest);
  const bool away = twice > Currency::kScale || (twice == Currency::kScale && whole % 2 != 0);
  return away ? whole + (rest < 0 ? -1 : 1) : whole;
}

/// Whole-number division; nothing by a divisor that rounds to 0.
Value WholeQuotient(Currency dividend, Currency divisor) {
  const std::int64_t by = Whole(divisor);
  if (by == 0) return {};
  return Currency(Whole(dividend) / by);
}

// --- Runs of highest, lowest and average ---

// Required: the value of a run is that of all its targets, so that of several bets only the first
// is set to a highest or a lowest.
Value Highest(Currency value, ActionRun& run) {
  if (value <= run.RunValue) return {};
  return run.RunValue = value;
}

Value Lowest(Currency value, ActionRun& run) {
  if (value <= 0 || (run.RunValue != 0 && value >= run.RunValue)) return {};
  return run.RunValue = value;
}

Value Average(Currency value, ActionRun& run) {
  if (value <= 0) return {};
  run.RunValue += value;
  ++run.RunCount;
  return WholeQuotient(run.RunValue, run.RunCount);
}

/// What the run has come to with the value of a line; nothing when it changes nothing.
Value RunResult(const ScriptLine& line, int form, ActionRun& run) {
  const Currency value = SourceOf(line, form);
  switch (form) {
    case FormHighest:
    case FormHighestOfLast: return Highest(value, run);
    case FormLowest:
    case FormLowestOfLast: return Lowest(value, run);
    default: return Average(value, run);
  }
}

/// The bet as it stood at its first value of the run.
Currency BaseOf(int id, ActionRun& run) {
  const auto slot = static_cast<unsigned>(id);
  if (!run.HasBase[slot]) {
    run.HasBase.set(slot);
    run.RunBase[slot] = AmountOf(id);
  }
  return run.RunBase[slot];
}

// --- The five actions, with a plain value and with the result of a run ---

void BetPlain(int id, const ScriptLine& line, int form) {
  // Required: the value is taken after the bet has been emptied, so a part of itself is 0.
  RewrittenBet bet(id, 0);
  bet.Request(PlainValue(line, form));
}

void DividePlain(int id, const ScriptLine& line, int form) {
  const Currency value = PlainValue(line, form);
  if (form == FormAmount && value == 0) return;
  // Required: a percentage that is no divisor is asked for as a change.
  const bool divides = form == FormAmount || value > 0;
  const Currency bet = AmountOf(id);
  Request(id, divides ? Currency::FromDouble(bet / value) - bet : value);
}

void PerformPlain(int id, int action, const ScriptLine& line, int form) {
  switch (action) {
    case BetAmount: return BetPlain(id, line, form);
    case AddAmount: return Request(id, PlainValue(line, form));
    case SubtractAmount: return Request(id, -PlainValue(line, form));
    case MultiplyBy: return Request(id, AmountOf(id) * PlainValue(line, form) - AmountOf(id));
    default: return DividePlain(id, line, form);
  }
}

/// Brings a bet to `base`, past the rules, and then asks them for a change of it.
void RequestFrom(Currency base, int id, Currency change) {
  RewrittenBet bet(id, base);
  bet.Request(change);
}

void PerformRun(int id, int action, Currency result, ActionRun& run) {
  if (action == BetAmount) return SetBet(id, result);
  const Currency base = BaseOf(id, run);
  switch (action) {
    // From where the run began, so that what is added is the result and not the sum.
    case AddAmount: return RequestFrom(base, id, result);
    case SubtractAmount: return RequestFrom(base, id, -result);
    case MultiplyBy: return Request(id, base * result - AmountOf(id));
    default:
      if (const Value quotient = WholeQuotient(base, result)) Request(id, *quotient - AmountOf(id));
  }
}

// --- Round ---

/// The largest multiple of a `unit` above 0 that isn't above `amount`.
Currency MultipleBelow(Currency amount, Currency unit) {
  std::int64_t rest = amount.Raw() % unit.Raw();
  if (rest < 0) rest += unit.Raw();
  return amount - Currency::FromRaw(rest);
}

void Call(int id, CallCode code) {
  if (Game.HyperDriveOn) return CallBet(id, code);  // nothing is drawn
  if (code == CallCodeOn)
    CallBetOn(id);
  else
    CallBetOff(id);
}

void ResetOutcome(int id) {
  if (!IsBet(id)) return;
  Game.BetOutcome[static_cast<unsigned>(id)] = {};
  Game.GameChanged = true;
}

}  // namespace

void SetBet(int id, Currency amount) { RequestFrom(0, id, amount); }

void ChangeByValue(int id, const ScriptLine& line, ActionRun& run) {
  constexpr int kForms = 10;
  const int form = line.LineCode % kForms;
  const int action = line.LineCode - form;
  if (form <= FormPercentOfLast) return PerformPlain(id, action, line, form);
  if (const Value result = RunResult(line, form, run)) PerformRun(id, action, *result, run);
}

void RoundToWhole(int id, Currency unit, int way) {
  if (unit == 0) return;
  const Currency amount = AmountOf(id);
  Currency down = MultipleBelow(amount, Abs(unit)) - amount;
  if (down == 0) return;
  Currency up = down + Abs(unit);
  // Required: more units of a negative size make a smaller amount.
  if (unit < 0) std::swap(up, down);
  const bool goesDown = way == RoundDown || (way == RoundNearest && Abs(up) > Abs(down));
  Request(id, goesDown ? down : up);
}

void TreatBet(int id, int action) {
  if (!IsBet(id) && !IsChipStack(id)) return;
  switch (action) {
    case BuyThePlaceBet: return BuyPlaceBet(id);
    case CallOff: return Call(id, CallCodeOff);
    case CallOn: return Call(id, CallCodeOn);
    case ResetWinsLosses: return ResetOutcome(id);
    default: return;
  }
}
