#include "bets/known_rolls.h"

#include <algorithm>
#include <bit>
#include <limits>
#include <utility>
#include <vector>

#include "bets/bankroll.h"
#include "bets/decision_table.h"
#include "bets/known_cases.h"
#include "bets/known_decisions.h"
#include "bets/known_parts.h"
#include "bets/known_trial.h"
#include "bets/ledger.h"
#include "dice/throw_kinds.h"
#include "stats/bet_tables.h"

namespace {

// Of what is known of whole layouts, 4 MB at most. When it is full it starts from nothing.
constexpr unsigned kLayouts = 2048;
constexpr unsigned kOutcomes = 16'384;

constexpr unsigned kKinds = kThrowKinds + 1;  // 0 is not used
constexpr unsigned kRecent = 4096;            // decided bets of known rolls whose streaks wait
constexpr unsigned kPlaces = 1U << 13U;       // of the layouts by their hash, a power of 2
constexpr int kNowhere = -1;

constexpr auto kAnyBankroll = std::numeric_limits<std::int64_t>::min();

/// What a throw does to a layout, as each roll needs it.
struct KnownRoll {
  std::int64_t LeastBankroll = kAnyBankroll;  // with less the roll may be another
  std::int64_t Gain = 0;
  int Next = kNowhere;   // the layout that it leaves; `kNowhere` when the roll isn't known
  int Count = 0;         // times played and not recorded yet
  int LastRoll = 0;      // the last of them
  unsigned Outcome = 0;  // its place among the outcomes
  bool TellsOfShooter = false;
};

/// The bets that it decides, and the parts from which it was put together.
struct KnownOutcome {
  DecidedBets Decided;
  unsigned Moving = 0;
  std::array<PartRoll*, kParts> Parts{};
};

/// What a throw needs to know of a layout.
struct KnownTable {
  LedgerProfile Profile;  // of its working states
  unsigned char Point = 0;
};

/// The settings as the knowledge depends on them: all of them, but for those that a roll moves.
struct Rules : Settings, AutoPlaySettings {
  std::array<int, 101> ComeOut{};
  std::array<Currency, 5> Chips{};
};

struct Knowledge {
  Rules Under;
  std::vector<PartStates> Layouts;
  std::vector<KnownTable> Tables;              // of each layout
  std::vector<KnownRoll> Rolls;                // `kKinds` of each layout
  std::vector<KnownOutcome> Outcomes;          // of the rolls that are known
  std::array<std::int16_t, kPlaces> Places{};  // 1 + the number of a layout, 0 for none
  KnownTrial LayoutsPay;

  PartStates Now{};          // the layout on the table
  bool Placed = false;       // whether it is known
  int At = kNowhere;         // its number among the layouts
  Currency BankrollAtStart;  // of the roll that is being learnt
  bool Learning = false;
  KnownTrial Pays{8192, 65'536};  // there is much to learn of a full table

  std::array<const DecidedBets*, kRecent> Recent{};  // of this stretch, whose streaks wait
  std::array<DecidedBets, kRecent> Joined{};         // those of rolls that were put together
  unsigned RecentCount = 0;
  std::vector<unsigned> Played;  // all that this stretch has played of whole layouts, once each
  int PlayedRolls = 0;
};
Knowledge known;

/// The place of what a throw does to a layout.
unsigned PlaceOf(int layout, ThrowNumber thrown) {
  return static_cast<unsigned>(layout) * kKinds + kKindOfThrow[thrown];
}

void ForgetLayouts() {
  known.Layouts.clear();
  known.Tables.clear();
  known.Rolls.clear();
  known.Outcomes.clear();
  known.Places.fill(0);
  known.At = kNowhere;
}

void Forget() {
  ForgetLayouts();
  ForgetParts();
  known.Placed = false;
}

void MakeRoom() {
  if (known.Rolls.capacity() != 0) return;
  known.Layouts.reserve(kLayouts);
  known.Tables.reserve(kLayouts);
  known.Rolls.reserve(std::size_t{kLayouts} * kKinds);
  known.Outcomes.reserve(kOutcomes);
  known.Played.reserve(std::size_t{kLayouts} * kKinds);
}

std::span<const Currency, 5> ChipsNow() { return std::span(Game.Bets).subspan<SmallestChip, 5>(); }

template <typename Part>
bool IsSame() {
  return static_cast<const Part&>(known.Under) == static_cast<const Part&>(Game);
}

/// Whether the rules are those under which everything was learnt.
bool RulesAreTheSame() {
  Rules& under = known.Under;
  under.NumAutoRolls = Game.NumAutoRolls;
  under.AutoRollsLeft = Game.AutoRollsLeft;
  for (const unsigned moving : {0, +PassLineOdds, +DontPassOdds})
    under.Payoff[moving] = Game.Payoff[moving];
  return IsSame<Settings>() && IsSame<AutoPlaySettings>() && under.ComeOut == Game.ComeOutWorking &&
         std::ranges::equal(under.Chips, ChipsNow());
}

/// Forgets what was learnt under other rules.
void FollowRules() {
  if (RulesAreTheSame()) return;
  Forget();
  ForgetKnownDecisions();
  ForgetPhantomPayoffs();
  static_cast<Settings&>(known.Under) = Game;
  static_cast<AutoPlaySettings&>(known.Under) = Game;
  known.Under.ComeOut = Game.ComeOutWorking;
  std::ranges::copy(ChipsNow(), known.Under.Chips.begin());
}

bool HasRoomForLayouts() {
  return known.Layouts.size() + 2 <= kLayouts && known.Outcomes.size() < kOutcomes;
}

/// The number of a layout, entered when it is new.
int FindLayout(const PartStates& layout) {
  constexpr std::uint64_t kMix = 0x9E3779B97F4A7C15U;
  std::uint64_t hash = 0;
  for (const std::uint16_t state : layout) hash = (hash + state) * kMix;
  auto place = static_cast<unsigned>(hash >> 40U) % kPlaces;
  for (; known.Places[place] != 0; place = (place + 1) % kPlaces) {
    const int number = known.Places[place] - 1;
    if (known.Layouts[static_cast<unsigned>(number)] == layout) return number;
  }
  known.Layouts.push_back(layout);
  known.Tables.push_back({{}, PointOfParts(layout)});
  known.Rolls.resize(known.Rolls.size() + kKinds);
  known.Places[place] = static_cast<std::int16_t>(known.Layouts.size());
  return known.Places[place] - 1;
}

// --- Learning ---

/// Whether the sums of squares, to which what was decided is added, lose nothing so far.
bool SquaresAreWhole() {
  constexpr double kPerDollar = 16;  // the least is the square of a quarter
  constexpr double kRoom = static_cast<double>(std::int64_t{1} << 47U);
  return std::ranges::all_of(Game.WagerSquares, [](double squares) {
    if (!(squares < kRoom)) return false;
    const double counted = squares * kPerDollar;
    return static_cast<double>(static_cast<std::int64_t>(counted)) == counted;
  });
}

bool TellsOfShooter(unsigned char point, ThrowNumber thrown) {
  return !HasNone(
      StepsOfThrow(point, FirstDieOf(thrown), SecondDieOf(thrown), Game.BarDont).Shooter);
}

/// The least bankroll with which a layout's roll is known.
std::int64_t LeastBankroll(const PartStates& before, const JoinedRoll& roll) {
  return roll.AsksForMoney ? OnTableOfParts(before).Raw() + roll.MoneyNeeded : kAnyBankroll;
}

DecidedBets DecidedOf(const JoinedRoll& roll) {
  DecidedBets decided;
  for (unsigned i = 0; i < roll.Moving; ++i) {
    const DecidedBets& bets = roll.Rolls[i]->Cases.Bets;
    decided = {Either(decided.Won, bets.Won), Either(decided.Lost, bets.Lost)};
  }
  return decided;
}

/// What was put together of its parts is known of the whole layout from here on.
void LearnLayoutRoll(int layout, ThrowNumber thrown, const JoinedRoll& joined) {
  const unsigned at = PlaceOf(layout, thrown);
  const int next = FindLayout(joined.Next);
  const auto number = static_cast<unsigned>(layout);
  KnownRoll& roll = known.Rolls[at];
  roll.Next = next;
  roll.Gain = joined.Gain;
  roll.LeastBankroll = LeastBankroll(known.Layouts[number], joined);
  roll.TellsOfShooter = TellsOfShooter(known.Tables[number].Point, thrown);
  roll.Outcome = static_cast<unsigned>(known.Outcomes.size());
  known.Outcomes.push_back({DecidedOf(joined), joined.Moving, joined.Rolls});
  known.LayoutsPay.Learnt();
}

// --- The end of a stretch ---

/// Counts by bet, a bit of each count in each of a row of sets: one more for many bets is few
/// steps, and always as many.
class BetCounts {
 public:
  static constexpr int kMost = 63;

  void Add(BetMask carry) {
    for (BetMask& bits : planes_) {
      const BetMask before = bits;
      bits = {before[0] ^ carry[0], before[1] ^ carry[1]};
      carry = Both(before, carry);
    }
  }

  /// Adds them to other counts, and starts from nothing.
  void MoveTo(std::array<int, kBetSlots>& counts) {
    for (unsigned plane = 0; plane < planes_.size(); ++plane)
      ForEachIn(std::exchange(planes_[plane], {}),
                [&](unsigned bet) { counts[bet] += 1 << plane; });
  }

 private:
  std::array<BetMask, std::bit_width(static_cast<unsigned>(kMost))> planes_{};
};

/// What the waiting rolls do to the streaks: of each bet those since it last went the other way.
class RecentStreaks {
 public:
  /// The rolls before those that were added, the last of them first.
  void Add(std::span<const DecidedBets* const> rolls) {
    for (auto roll = rolls.rbegin(); roll != rolls.rend(); ++roll) Add(**roll);
    counts_.MoveTo(lengths_);
  }
  bool AllEnded() const { return HasNone(open_); }

  void Write() const {
    for (const bool won : {true, false})
      ForEachIn(won ? last_.Won : last_.Lost, [&](unsigned bet) {
        int& streak = Game.BetOutcome[bet][1];
        const bool goesOn = IsIn(open_, bet) && (won ? streak > 0 : streak < 0);
        streak = (goesOn ? streak : 0) + (won ? lengths_[bet] : -lengths_[bet]);
        Touch(static_cast<int>(bet));
      });
  }

 private:
  void Add(const DecidedBets& decided) {
    open_ = Without(open_, Either(Both(decided.Won, last_.Lost), Both(decided.Lost, last_.Won)));
    last_.Won = Either(last_.Won, Both(decided.Won, open_));
    last_.Lost = Either(last_.Lost, Both(decided.Lost, open_));
    counts_.Add(Both(Either(decided.Won, decided.Lost), open_));
  }

  BetMask open_ = BetsEverDecided();
  DecidedBets last_;  // the bets as they went last
  BetCounts counts_;
  std::array<int, kBetSlots> lengths_{};
};

void SettleStreaks() {
  RecentStreaks streaks;
  auto rolls = std::span(known.Recent).first(known.RecentCount);
  while (!rolls.empty() && !streaks.AllEnded()) {
    const std::size_t count = std::min<std::size_t>(rolls.size(), BetCounts::kMost);
    streaks.Add(rolls.last(count));
    rolls = rolls.first(rolls.size() - count);
  }
  streaks.Write();
  known.RecentCount = 0;
}

/// Records all that the stretch has decided.
void RecordDecisions() {
  for (const unsigned at : known.Played) {
    KnownRoll& roll = known.Rolls[at];
    const KnownOutcome& outcome = known.Outcomes[roll.Outcome];
    for (unsigned i = 0; i < outcome.Moving; ++i)
      CountCases(outcome.Parts[i]->Cases, roll.Count, roll.LastRoll);
    roll.Count = 0;
  }
  known.Played.clear();
  RecordCases();
}

void LayOutBets() {
  LayOutParts(known.Now);
  Game.BetsAfterRoll[BankrollIndex] = Bankroll();
  Touch(BankrollIndex);
  Game.WorkingTouched = true;
  Game.NeedRepaint = true;
}

}  // namespace

bool NobodyLooksOn() {
  return Game.KnownRollsOn && LedgerIsOpen() && Game.HyperDriveOn && Game.HyperThrottle == 0 &&
         !(Game.AutoBetActive == 1 && Game.ScrCount > 0) && !Game.EventsLogActive &&
         Game.RecorderStatus == RecorderOff && !Game.BankrollAutoPrint &&
         Game.ClickMode == NoClickMode && !Game.Course.Followed;
}

bool KnownRollsMayFollow() {
  return known.Placed && !Game.SnapshotsDue && !Game.ManualRollPending && NobodyLooksOn();
}

void BeginLearning(bool changed, bool mayLearn) {
  if (changed) {
    known.Placed = false;
    if (Game.KnownRollsOn) FollowRules();
  }
  known.Learning = mayLearn && NobodyLooksOn() && !known.Pays.Rests();
  if (known.Learning && !known.Placed) known.Learning = SquaresAreWhole();
  if (!known.Learning) {
    known.Placed = false;
    return;
  }
  MakeRoom();
  if (!HasRoomForParts()) Forget();
  if (!HasRoomForLayouts()) ForgetLayouts();
  if (!known.Placed) {
    known.At = kNowhere;
    known.Placed = known.Learning = ReadParts(known.Now);
  }
  known.BankrollAtStart = Bankroll();
  BeginRollNotes();
}

void FollowStep(int betId, unsigned place) {
  if (known.Learning) NoteStep(betId, place);
}

void Learn() {
  if (!known.Learning) return;
  known.Learning = false;
  known.At = kNowhere;
  static JoinedRoll roll;
  if (JoinParts(known.Now, NumberOfThrow(Game.Die1, Game.Die2), roll) &&
      known.BankrollAtStart.Raw() >= LeastBankroll(known.Now, roll)) {
    known.Now = roll.Next;
    return;
  }
  known.Pays.Learnt();
  PartStates after;
  known.Placed = ReadParts(after) && LearnParts(known.Now, known.BankrollAtStart, after);
  known.Now = after;
}

bool KnownStretch::MayLeave(Currency bankroll) {
  if (bankroll >= lowest_ && bankroll <= highest_) return true;
  if (Abs(bankroll) > kRollingLimit || RunEndAt(bankroll) != NoLimitReached) return false;
  const bool first = lowest_ > highest_;
  lowest_ = first ? bankroll : std::min(lowest_, bankroll);
  highest_ = first ? bankroll : std::max(highest_, bankroll);
  return true;
}

/// Puts a roll together that isn't known of the whole layout; false when it isn't known at all.
/// `layout` is nowhere afterwards unless it is now.
bool KnownStretch::Join(int& layout, ThrowNumber thrown) {
  if (layout == kNowhere && HasRoomForLayouts() && !known.LayoutsPay.Rests()) {
    layout = FindLayout(known.Now);
    if (known.Rolls[PlaceOf(layout, thrown)].Next != kNowhere) return true;
  }
  if (layout != kNowhere) known.Now = known.Layouts[static_cast<unsigned>(layout)];
  if (!JoinParts(known.Now, thrown, joined_)) return false;
  if (!HasRoomForLayouts() || known.LayoutsPay.IsResting()) layout = kNowhere;
  if (layout != kNowhere) LearnLayoutRoll(layout, thrown, joined_);
  return true;
}

/// Plays what `Join` has put together.
bool KnownStretch::PlayParts(ThrowNumber thrown, Place at) {
  const Currency after = Currency::FromRaw(at.Bankroll + joined_.Gain);
  if (at.Bankroll < LeastBankroll(known.Now, joined_) || !MayLeave(after)) return false;
  if (workingMoved_ || !profile_.IsKept()) {
    const LedgerProfile* profile = ProfileOfParts(known.Now, at.Played == 0);
    if (profile == nullptr) return false;
    profile_ = *profile;
  }
  const unsigned char point = PointOfParts(known.Now);
  entries_[at.Played] = {thrown, point, profile_.Place};
  steps_[at.Played] = {after, TellsOfShooter(point, thrown)};
  DecidedBets& decided = known.Joined[known.RecentCount];
  decided = DecidedOf(joined_);
  for (unsigned i = 0; i < joined_.Moving; ++i) CountCases(joined_.Rolls[i]->Cases, 1, at.Roll);
  known.Recent[known.RecentCount++] = &decided;
  workingMoved_ = joined_.ChangesWorking;
  known.Now = joined_.Next;
  return true;
}

/// Plays a roll that is known of the whole layout.
bool KnownStretch::PlayLayout(int layout, ThrowNumber thrown, Place at) {
  const unsigned place = PlaceOf(layout, thrown);
  KnownRoll& roll = known.Rolls[place];
  const Currency after = Currency::FromRaw(at.Bankroll + roll.Gain);
  if (at.Bankroll < roll.LeastBankroll || !MayLeave(after)) return false;
  KnownTable& table = known.Tables[static_cast<unsigned>(layout)];
  if (!table.Profile.IsKept()) {
    const PartStates& states = known.Layouts[static_cast<unsigned>(layout)];
    const LedgerProfile* profile = ProfileOfParts(states, at.Played == 0);
    if (profile == nullptr) return false;
    table.Profile = *profile;
  }
  entries_[at.Played] = {thrown, table.Point, table.Profile.Place};
  steps_[at.Played] = {after, roll.TellsOfShooter};
  known.Recent[known.RecentCount++] = &known.Outcomes[roll.Outcome].Decided;
  if (roll.Count++ == 0) known.Played.push_back(place);
  roll.LastRoll = at.Roll;
  workingMoved_ = true;
  return true;
}

std::span<const KnownStep> KnownStretch::Play(std::span<const ThrowNumber> throws) {
  if (known.RecentCount + throws.size() > kRecent) SettleStreaks();
  int layout = known.At;
  Place at{Bankroll().Raw(), Game.RollCount[0] + 1, 0};
  unsigned ofLayouts = 0;
  for (; at.Played < throws.size(); ++at.Played, ++at.Roll) {
    const ThrowNumber thrown = throws[at.Played];
    if (layout == kNowhere || known.Rolls[PlaceOf(layout, thrown)].Next == kNowhere)
      if (!Join(layout, thrown)) break;
    if (layout == kNowhere) {
      if (!PlayParts(thrown, at)) break;
    } else {
      if (!PlayLayout(layout, thrown, at)) break;
      layout = known.Rolls[PlaceOf(layout, thrown)].Next;
      ++ofLayouts;
    }
    at.Bankroll = steps_[at.Played].Bankroll.Raw();
  }
  if (layout != kNowhere) known.Now = known.Layouts[static_cast<unsigned>(layout)];
  known.At = layout;
  // To put a roll together costs a quarter of what it costs to keep it as well.
  known.LayoutsPay.Used(static_cast<int>(ofLayouts / 4));
  known.PlayedRolls += static_cast<int>(at.Played);
  if (at.Played > 0) EnterThrows({entries_.data(), at.Played});
  return {steps_.data(), at.Played};
}

KnownStretch::~KnownStretch() {
  if (known.PlayedRolls == 0) return;
  known.Pays.Used(known.PlayedRolls);
  known.PlayedRolls = 0;
  SettleStreaks();
  RecordDecisions();
  LayOutBets();
}
