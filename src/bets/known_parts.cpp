#include "bets/known_parts.h"

#include <algorithm>
#include <bit>
#include <span>
#include <utility>
#include <vector>

#include "bets/change_bet.h"
#include "bets/known_cases.h"
#include "stats/bet_tables.h"

namespace {

// What is known is bounded: 5 MB at most, with the states and the decisions 8.
constexpr unsigned kPartRolls = 32'000;

/// What is noted of the steps of a part while a roll is learnt.
struct PartNotes {
  Currency MoneyNeeded;
  bool AsksForMoney = false;
  unsigned char MultipleAt = 0;  // the place of the last step that set `OddsMultiple`, 0 for none
  Currency Multiple;             // to what
};

constexpr unsigned char kAfterSteps = 255;  // a place behind those of all steps

struct RollNotes {
  Currency FreeBefore;
  Currency LeastFree = kFreeEnough;
  unsigned MultipleSets = 0;
  std::array<PartNotes, kParts> Parts{};
};

// In the table of rolls by state and throw.
constexpr std::uint16_t kNotKnown = 0xFFFF;
constexpr std::uint16_t kNothingHappens = 0;

struct Knowledge {
  std::vector<std::uint16_t> RollAt;  // `kColumns` of each state
  std::vector<PartRoll> Rolls;
  RollNotes Notes;
};
Knowledge known;

constexpr unsigned kThrowColumns = kThrowKinds + 1;
constexpr unsigned kColumns = 2 * kThrowColumns;

/// What is told apart of a throw: its kind by the part of the bets on one roll, else its total; and
/// whether it makes the point, which only the line's part knows.
unsigned ColumnOf(unsigned part, ThrowNumber thrown, unsigned point) {
  const unsigned total = kTotalOfThrow[thrown];
  return (part == kRestPart ? kKindOfThrow[thrown] : total) + (total == point ? kThrowColumns : 0);
}

std::uint16_t& RollAt(unsigned state, unsigned column) {
  return known.RollAt[state * kColumns + column];
}

void MakeRoomForRolls() { known.RollAt.resize(StateCount() * kColumns, kNotKnown); }

/// Calls `action(part, state, joined)` for the parts that a throw may change, until it returns
/// false. The number that is thrown is joined with the Come bets, which move to it. The line comes
/// last: `multiple()` is the state of the multiple that the others leave. `add`: what is joined for
/// the first time is entered.
template <typename Multiple, typename Action>
bool ForPartsOf(const PartStates& before, ThrowNumber thrown, bool add, Multiple multiple,
                Action action) {
  const unsigned total = kTotalOfThrow[thrown];
  const unsigned number = kPartOfTotal[total];
  const PartSet moved = PartsMovedBy(before, total);
  const unsigned line = PartOfLine();
  for (PartSet parts = moved & ~(1U << line); parts != 0; parts &= parts - 1U) {
    const auto part = static_cast<unsigned>(std::countr_zero(parts));
    const bool joined = part == number;
    const std::uint16_t state =
        joined ? FindJoined(before[part], before[kComePart], add) : before[part];
    if (state == 0 || !action(part, state, joined)) return false;
  }
  if ((moved >> line & 1U) == 0) return true;
  const std::uint16_t state = LineState(before, multiple(), total, add);
  return state != 0 && action(line, state, false);
}

// --- Learning ---

/// Amounts of which `kMaxRolls` can be added in any order: neither their sum nor the sum of their
/// squares as a `double` loses anything, or ends.
bool CanBeCounted(Currency staked, Currency net) {
  constexpr std::int64_t kQuarter = Currency::kScale / 4;
  return staked > 0 && staked <= 2048 && staked.Raw() % kQuarter == 0 && Abs(net) <= 200'000;
}

/// What a roll has decided of one part.
struct PartDecisions {
  Currency Gain;
  std::vector<std::uint16_t> Cases;

  void Clear() {
    Gain = 0;
    Cases.clear();
  }
};
using Decisions = std::array<PartDecisions, kParts>;

/// Reads off the bet tables what this roll has decided; false when it can't be counted.
bool ReadDecisions(Decisions& decisions) {
  for (PartDecisions& part : decisions) part.Clear();
  const BetMask touched = {Game.TouchedBets[0] & ~std::uint64_t{1},
                           Game.TouchedBets[1] & ((std::uint64_t{1} << kBetSlots % 64) - 1)};
  bool sound = true;
  ForEachIn(touched, [&](unsigned at) {
    const auto betId = static_cast<int>(at);
    const Currency staked = Game.BetWagers[Actual][at][StatRollAmount];
    if (Game.BetWagers[Actual][at][StatRollCount] == 0) return;
    const bool won = Game.BetWins[Actual][at][StatRollCount] != 0;
    const Currency amount = (won ? Game.BetWins : Game.BetLosses)[Actual][at][StatRollAmount];
    sound &= CanBeCounted(staked, amount);
    if (!sound) return;
    const Currency net = won ? amount : -amount;
    PartDecisions& part = decisions[PartOfBet(betId)];
    part.Gain += net;
    part.Cases.push_back(FindCase(betId, staked, net));
  });
  return sound;
}

void AddDecisions(PartRoll& roll, unsigned part, const PartDecisions& decisions) {
  const PartNotes& notes = known.Notes.Parts[part];
  roll.Gain += decisions.Gain.Raw();
  roll.MoneyNeeded += notes.MoneyNeeded.Raw();
  roll.AsksForMoney |= notes.AsksForMoney;
  if (notes.MultipleAt > roll.MultipleAt) {
    roll.MultipleAt = notes.MultipleAt;
    roll.NextMultiple = StateOfMultiple(notes.Multiple);
  }
  AddCases(roll.Cases, decisions.Cases);
}

PartRoll LearnPart(unsigned part, bool joined, const PartStates& before, const PartStates& after,
                   const Decisions& decisions) {
  PartRoll roll;
  AddDecisions(roll, part, decisions[part]);
  roll.Next = after[part];
  roll.ChangesWorking = WorkingDiffers(before[part], after[part]);
  if (joined) {
    AddDecisions(roll, kComePart, decisions[kComePart]);
    roll.NextCome = after[kComePart];
    roll.ChangesWorking |= WorkingDiffers(before[kComePart], after[kComePart]);
  }
  return roll;
}

bool ChangesNothing(const PartRoll& roll, unsigned part, const PartStates& before) {
  return roll.Cases.Cases == 0 && !roll.AsksForMoney && roll.MultipleAt == 0 &&
         roll.Next == before[part] && (roll.NextCome == 0 || roll.NextCome == before[kComePart]);
}

/// The multiple that all parts but the line's have left.
std::uint16_t MultipleBeforeLine(const PartStates& before) {
  const PartNotes* last = nullptr;
  for (unsigned part = 0; part <= kRestPart; ++part) {
    const PartNotes& notes = known.Notes.Parts[part];
    if (part != PartOfLine() && notes.MultipleAt > (last == nullptr ? 0 : last->MultipleAt))
      last = &notes;
  }
  return last == nullptr ? before[kMultiplePart] : StateOfMultiple(last->Multiple);
}

void NoteMultiple(PartNotes& notes, unsigned char place) {
  if (Game.MultipleSets == known.Notes.MultipleSets) return;
  known.Notes.MultipleSets = Game.MultipleSets;
  notes.MultipleAt = place;
  notes.Multiple = Game.OddsMultiple;
}

/// What a step took of the free money, at most, and whether it looked at it.
void NoteMoney(PartNotes& notes) {
  if (Game.NegBankroll) return;
  RollNotes& roll = known.Notes;
  const Currency least = std::min(FreeMoney(), Game.LeastFreeMoney);
  notes.MoneyNeeded += std::max(roll.FreeBefore - least, Currency(0));
  notes.AsksForMoney |= Game.LeastFreeMoney != kFreeEnough;
  roll.LeastFree = std::min(roll.LeastFree, Game.LeastFreeMoney);
  roll.FreeBefore = FreeMoney();
  Game.LeastFreeMoney = kFreeEnough;
}

}  // namespace

bool HasRoomForParts() {
  return HasRoomForStates() && HasRoomForCases() && known.Rolls.size() + kParts <= kPartRolls;
}

void ForgetParts() {
  ForgetStates();
  ForgetCases();
  known.RollAt.clear();
  known.RollAt.reserve(std::size_t{kPartStates} * kColumns);
  known.Rolls.reserve(kPartRolls);
  known.Rolls.assign(1, {});  // `kNothingHappens`
}

void BeginRollNotes() {
  MakeRoomForRolls();
  known.Notes = {FreeMoney(), kFreeEnough, Game.MultipleSets};
  Game.LeastFreeMoney = kFreeEnough;
}

void NoteStep(int betId, unsigned place) {
  PartNotes& notes = known.Notes.Parts[PartOfBet(betId)];
  NoteMultiple(notes, static_cast<unsigned char>(place + 1));
  NoteMoney(notes);
}

bool LearnParts(const PartStates& before, Currency bankrollBefore, const PartStates& after) {
  MakeRoomForRolls();
  NoteMultiple(known.Notes.Parts[PartOfLine()], kAfterSteps);
  NoteMoney(known.Notes.Parts[PartOfLine()]);
  static Decisions decisions;
  if (!ReadDecisions(decisions)) return false;
  if (known.Notes.LeastFree < 0) return true;  // it took the shape that the money allowed
  Currency gain;
  for (const PartDecisions& part : decisions) gain += part.Gain;
  if (gain != Bankroll() - bankrollBefore) return false;
  const ThrowNumber thrown = NumberOfThrow(Game.Die1, Game.Die2);
  const unsigned point = PointOfParts(before);
  ForPartsOf(
      before, thrown, true, [&before] { return MultipleBeforeLine(before); },
      [&](unsigned part, unsigned state, bool joined) {
        MakeRoomForRolls();  // for a state that has just been joined
        std::uint16_t& at = RollAt(state, ColumnOf(part, thrown, point));
        if (at != kNotKnown) return true;
        const PartRoll roll = LearnPart(part, joined, before, after, decisions);
        const bool nothing = ChangesNothing(roll, part, before);
        at = nothing ? kNothingHappens : static_cast<std::uint16_t>(known.Rolls.size());
        if (!nothing) known.Rolls.push_back(roll);
        return true;
      });
  return true;
}

bool JoinParts(const PartStates& before, ThrowNumber thrown, JoinedRoll& roll) {
  roll.Moving = 0;
  roll.Gain = roll.MoneyNeeded = 0;
  roll.AsksForMoney = roll.ChangesWorking = false;
  roll.Next = before;
  const unsigned point = PointOfParts(before);
  unsigned char multipleAt = 0;
  return ForPartsOf(
      before, thrown, false, [&roll] { return roll.Next[kMultiplePart]; },
      [&](unsigned part, unsigned state, bool) {
        const std::uint16_t at = RollAt(state, ColumnOf(part, thrown, point));
        if (at == kNothingHappens || at == kNotKnown) return at == kNothingHappens;
        PartRoll& moving = known.Rolls[at];
        roll.Rolls[roll.Moving++] = &moving;
        roll.Gain += moving.Gain;
        roll.MoneyNeeded += moving.MoneyNeeded;
        roll.AsksForMoney |= moving.AsksForMoney;
        roll.ChangesWorking |= moving.ChangesWorking;
        roll.Next[part] = moving.Next;
        if (moving.NextCome != 0) roll.Next[kComePart] = moving.NextCome;
        if (moving.MultipleAt > multipleAt) {
          multipleAt = moving.MultipleAt;
          roll.Next[kMultiplePart] = moving.NextMultiple;
        }
        return true;
      });
}
