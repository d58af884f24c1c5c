#include "bets/known_rolls.h"

#include <algorithm>
#include <bit>
#include <cstdlib>
#include <limits>
#include <memory>
#include <vector>

#include "bets/bankroll.h"
#include "bets/decide_bet.h"
#include "bets/decision_table.h"
#include "bets/known_decisions.h"
#include "bets/known_trial.h"
#include "bets/ledger.h"
#include "dice/throw_kinds.h"
#include "stats/bet_tables.h"

namespace {

// The knowledge is bounded: some 10 MB in all. When one of these is reached it starts from nothing.
constexpr unsigned kLayouts = 2048;
constexpr unsigned kDecisions = 1U << 18U;

constexpr unsigned kKinds = kThrowKinds + 1;  // 0 is not used
constexpr unsigned kRecent = 4096;            // known rolls whose streaks wait
constexpr unsigned kPlaces = 1U << 13U;       // of the layouts by their hash, a power of 2
constexpr int kNowhere = -1;

// --- Layouts ---

/// All that a roll reads and changes, but for the bankroll and the rules. Contracts are the amounts
/// themselves when the dice are thrown.
struct Layout {
  static constexpr unsigned kAmounts = LastBet + 2 + 12 + 7;
  static constexpr unsigned kStates = 88;  // whole words

  std::array<std::int64_t, kAmounts> Amounts{};
  std::array<std::int8_t, kStates> States{};  // working states by bet id

  bool operator==(const Layout&) const = default;
};

void Store(Currency& field, std::int64_t word) { field = Currency::FromRaw(word); }
void Store(int& field, std::int64_t word) { field = static_cast<int>(word); }
void Store(bool& field, std::int64_t word) { field = word != 0; }
std::int64_t WordOf(Currency field) { return field.Raw(); }
std::int64_t WordOf(int field) { return field; }

/// The fields of the record behind the amounts of a layout that follow those of the bets.
template <typename Action>
void ForOtherFields(Action action) {
  action(Game.TotalOnTable);
  for (Currency& vig : Game.BuyVigHeld) action(vig);
  for (Currency& vig : Game.LayVigHeld) action(vig);
  // A point leaves them, and they stay when it goes.
  for (const unsigned odds : {PassLineOdds, DontPassOdds}) {
    PayoffRecord& payoff = Game.Payoff[odds];
    action(payoff.Win);
    action(payoff.ShownAsTo);
    action(payoff.Per);
  }
  action(Game.OddsMultiple);
  action(Game.Point);
}

void ReadLayout(Layout& layout) {
  std::int64_t* word = layout.Amounts.data();
  for (unsigned id = Lay4; id <= LastBet; ++id) *word++ = Game.Bets[id].Raw();
  ForOtherFields([&word](auto& field) { *word++ = WordOf(field); });
  for (unsigned id = Lay4; id <= LastBet; ++id)
    layout.States[id] = static_cast<std::int8_t>(Game.BetWorking[id]);
}

std::uint64_t HashOf(const Layout& layout) {
  constexpr std::uint64_t kMix = 0x9E3779B97F4A7C15U;
  std::uint64_t hash = 0;
  std::uint64_t factor = kMix;
  for (const std::int64_t word : layout.Amounts)
    hash += static_cast<std::uint64_t>(word) * (factor += 2 * kMix);
  for (const std::uint64_t word :
       std::bit_cast<std::array<std::uint64_t, Layout::kStates / 8>>(layout.States))
    hash += word * (factor += 2 * kMix);
  return hash ^ hash >> 29U ^ hash >> 47U;
}

// --- What is known ---

/// A decision as the bet tables record it, in ten-thousandths.
struct KnownDecision {
  int Bet;
  std::int32_t Staked;
  std::int32_t Net;
};

/// What a throw does to a layout, as each roll needs it.
struct KnownRoll {
  /// The least bankroll with which it is known: none is enough for a roll that isn't.
  std::int64_t LeastBankroll = std::numeric_limits<std::int64_t>::max();
  std::int64_t Gain = 0;
  int Next = kNowhere;  // the layout that it leaves
  int Count = 0;        // times played and not recorded yet
  int LastRoll = 0;     // the last of them
  bool TellsOfShooter = false;
};

/// The bets that it decides.
struct KnownOutcome {
  unsigned First = 0;      // of its decisions
  unsigned Decisions = 0;  // their number
  BetMask Won{};
  BetMask Lost{};
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

  bool operator==(const Rules&) const = default;
};

struct Knowledge {
  Rules Under;
  std::vector<Layout> Layouts;
  std::vector<KnownTable> Tables;      // of each layout
  std::vector<KnownRoll> Rolls;        // `kKinds` of each layout
  std::vector<KnownOutcome> Outcomes;  // of each of those rolls
  std::vector<KnownDecision> Decisions;
  BetMask Decided{};                           // the bets that any of them decides
  std::array<std::int16_t, kPlaces> Places{};  // 1 + the number of a layout, 0 for none

  int At = kNowhere;         // the layout on the table
  Currency BankrollAtStart;  // of the roll that is being learnt
  bool Learning = false;
  KnownTrial Pays;

  std::array<unsigned, kRecent> Recent{};  // the known rolls of this stretch whose streaks wait
  unsigned RecentCount = 0;
  std::vector<unsigned> Played;  // all that this stretch has played, once each
  int PlayedRolls = 0;
};
Knowledge known;

/// The place of what a throw does to a layout.
unsigned PlaceOf(int layout, ThrowNumber thrown) {
  return static_cast<unsigned>(layout) * kKinds + kKindOfThrow[thrown];
}

void Forget() {
  known.Layouts.clear();
  known.Tables.clear();
  known.Rolls.clear();
  known.Outcomes.clear();
  known.Decisions.clear();
  known.Decided = {};
  known.Places.fill(0);
  known.At = kNowhere;
}

void MakeRoom() {
  if (known.Rolls.capacity() != 0) return;
  known.Layouts.reserve(kLayouts);
  known.Tables.reserve(kLayouts);
  known.Rolls.reserve(std::size_t{kLayouts} * kKinds);
  known.Outcomes.reserve(std::size_t{kLayouts} * kKinds);
  known.Decisions.reserve(kDecisions + LastBet);
  known.Played.reserve(std::size_t{kLayouts} * kKinds);
}

void ReadRules(Rules& rules) {
  static_cast<Settings&>(rules) = Game;
  static_cast<AutoPlaySettings&>(rules) = Game;
  rules.NumAutoRolls = rules.AutoRollsLeft = 0;
  for (const unsigned moving : {0, +PassLineOdds, +DontPassOdds}) rules.Payoff[moving] = {};
  rules.ComeOut = Game.ComeOutWorking;
  std::copy_n(Game.Bets.begin() + SmallestChip, rules.Chips.size(), rules.Chips.begin());
}

/// Forgets what was learnt under other rules.
void FollowRules() {
  static Rules rules;
  ReadRules(rules);
  if (rules == known.Under) return;
  Forget();
  ForgetKnownDecisions();
  ForgetPhantomPayoffs();
  known.Under = rules;
}

/// The layout on the table, entered when it is new.
int FindLayout() {
  static Layout layout;
  ReadLayout(layout);
  auto place = static_cast<unsigned>(HashOf(layout)) % kPlaces;
  for (; known.Places[place] != 0; place = (place + 1) % kPlaces) {
    const int number = known.Places[place] - 1;
    if (known.Layouts[static_cast<unsigned>(number)] == layout) return number;
  }
  known.Layouts.push_back(layout);
  known.Tables.push_back({{}, static_cast<unsigned char>(Game.Point)});
  known.Rolls.resize(known.Rolls.size() + kKinds);
  known.Outcomes.resize(known.Rolls.size());
  known.Places[place] = static_cast<std::int16_t>(known.Layouts.size());
  return known.Places[place] - 1;
}

// --- Learning ---

/// What a known roll does can't be seen before its stretch ends: nothing may ask for it.
bool NobodyLooksOn() {
  return Game.KnownRollsOn && LedgerIsOpen() && Game.HyperDriveOn && Game.HyperThrottle == 0 &&
         !(Game.AutoBetActive == 1 && Game.ScrCount > 0) && !Game.EventsLogActive &&
         Game.RecorderStatus == RecorderOff && !Game.BankrollAutoPrint &&
         Game.ClickMode == NoClickMode && !Game.Course.Followed;
}

void AddTo(BetMask& bets, int betId) {
  bets[static_cast<unsigned>(betId) / 64] |= std::uint64_t{1} << betId % 64;
}

/// Calls `action(id)` for each bet of a set.
template <typename Action>
void ForEach(const BetMask& bets, Action action) {
  for (unsigned word = 0; word < bets.size(); ++word)
    for (std::uint64_t bits = bets[word]; bits != 0; bits &= bits - 1)
      action(static_cast<int>(word * 64) + std::countr_zero(bits));
}

/// Amounts of which `kMaxRolls` can be added in any order: neither their sum nor the sum of their
/// squares as a `double` loses anything, or ends.
bool CanBeCounted(Currency staked, Currency net) {
  constexpr std::int64_t kQuarter = Currency::kScale / 4;
  return staked > 0 && staked <= 2048 && staked.Raw() % kQuarter == 0 && Abs(net) <= 200'000;
}

/// Whether the sums of squares, to which those amounts are added, lose nothing so far.
bool SquaresAreWhole() {
  constexpr double kSmallest = 1.0 / 16;  // the square of a quarter
  constexpr double kRoom = static_cast<double>(std::int64_t{1} << 47U);
  return std::ranges::all_of(Game.WagerSquares, [](double squares) {
    return squares < kRoom && IsWhole(squares / kSmallest);
  });
}

/// Reads off the bet tables what this roll has decided; false when it can't be counted.
bool ReadDecisions(KnownOutcome& outcome) {
  outcome.First = static_cast<unsigned>(known.Decisions.size());
  const BetMask touched = {Game.TouchedBets[0] & ~std::uint64_t{1},
                           Game.TouchedBets[1] & ((std::uint64_t{1} << kBetSlots % 64) - 1)};
  bool sound = true;
  ForEach(touched, [&](int betId) {
    const auto at = static_cast<unsigned>(betId);
    const BetStats& wager = Game.BetWagers[Actual][at];
    if (wager[StatRollCount] == 0) return;
    const bool won = Game.BetWins[Actual][at][StatRollCount] != 0;
    const Currency amount = (won ? Game.BetWins : Game.BetLosses)[Actual][at][StatRollAmount];
    sound &= CanBeCounted(wager[StatRollAmount], amount);
    AddTo(won ? outcome.Won : outcome.Lost, betId);
    AddTo(known.Decided, betId);
    if (!sound) return;
    const auto net = static_cast<std::int32_t>(won ? amount.Raw() : -amount.Raw());
    known.Decisions.push_back({betId, static_cast<std::int32_t>(wager[StatRollAmount].Raw()), net});
  });
  outcome.Decisions = static_cast<unsigned>(known.Decisions.size()) - outcome.First;
  if (!sound) known.Decisions.resize(outcome.First);
  return sound;
}

void LearnRoll(unsigned at, int next) {
  KnownOutcome outcome;
  if (!ReadDecisions(outcome)) {
    known.At = kNowhere;  // the sums of squares are to be looked at again
    return;
  }
  if (Game.LeastFreeMoney < 0) return;
  KnownRoll learnt;
  learnt.Next = next;
  learnt.Gain = (Bankroll() - known.BankrollAtStart).Raw();
  // Without a change that the money could have bound, any bankroll will do.
  learnt.LeastBankroll = Game.LeastFreeMoney == kFreeEnough
                             ? std::numeric_limits<std::int64_t>::min()
                             : (known.BankrollAtStart - Game.LeastFreeMoney).Raw();
  const ThrowSteps& steps = StepsOfThrow(Game.PrevPoint, Game.Die1, Game.Die2, Game.BarDont);
  learnt.TellsOfShooter = steps.Shooter != BetMask{};
  known.Rolls[at] = learnt;
  known.Outcomes[at] = outcome;
}

bool IsFull() { return known.Layouts.size() + 2 > kLayouts || known.Decisions.size() > kDecisions; }

// --- The end of a stretch ---

/// What the waiting rolls do to the streaks: of each bet those since it last went the other way.
class RecentStreaks {
 public:
  void Add(const BetMask& won, const BetMask& lost) {
    Add(won, wins_, losses_);
    Add(lost, losses_, wins_);
  }
  bool AllEnded() const { return (open_[0] | open_[1]) == 0; }

  void Write() const {
    for (const bool won : {true, false})
      ForEach(won ? wins_ : losses_, [&](int betId) {
        const auto at = static_cast<unsigned>(betId);
        int& streak = Game.BetOutcome[at][1];
        const bool goesOn =
            (open_[at / 64] >> at % 64 & 1U) != 0 && (won ? streak > 0 : streak < 0);
        streak = (goesOn ? streak : 0) + (won ? lengths_[at] : -lengths_[at]);
        Touch(betId);
      });
  }

 private:
  void Add(const BetMask& bets, BetMask& same, const BetMask& other) {
    BetMask longer{};
    for (unsigned word = 0; word < bets.size(); ++word) {
      open_[word] &= ~(bets[word] & other[word]);
      longer[word] = bets[word] & open_[word];
      same[word] |= longer[word];
    }
    ForEach(longer, [this](int betId) { ++lengths_[static_cast<unsigned>(betId)]; });
  }

  BetMask open_ = known.Decided;
  BetMask wins_{};
  BetMask losses_{};
  std::array<int, kBetSlots> lengths_{};
};

void SettleStreaks() {
  RecentStreaks streaks;
  for (unsigned at = known.RecentCount; at > 0 && !streaks.AllEnded(); --at) {
    const KnownOutcome& outcome = known.Outcomes[known.Recent[at - 1]];
    streaks.Add(outcome.Won, outcome.Lost);
  }
  streaks.Write();
  known.RecentCount = 0;
}

/// Records all that the stretch has decided, so that the last amounts of each bet come out right.
void RecordDecisions() {
  const auto decides = [](unsigned at) { return known.Outcomes[at].Decisions > 0; };
  const auto idle = std::partition(known.Played.begin(), known.Played.end(), decides);
  std::for_each(idle, known.Played.end(), [](unsigned at) { known.Rolls[at].Count = 0; });
  known.Played.erase(idle, known.Played.end());
  std::sort(known.Played.begin(), known.Played.end(), [](unsigned a, unsigned b) {
    return known.Rolls[a].LastRoll < known.Rolls[b].LastRoll;
  });
  for (const unsigned at : known.Played) {
    KnownRoll& roll = known.Rolls[at];
    const KnownOutcome& outcome = known.Outcomes[at];
    for (unsigned i = outcome.First; i < outcome.First + outcome.Decisions; ++i) {
      const KnownDecision& decision = known.Decisions[i];
      RecordEarlierOutcomes(decision.Bet, Currency::FromRaw(decision.Staked),
                            Currency::FromRaw(decision.Net), roll.Count);
    }
    roll.Count = 0;
  }
  known.Played.clear();
}

void LayOutBets(const Layout& layout) {
  const std::int64_t* word = layout.Amounts.data();
  for (int id = Lay4; id <= LastBet; ++id, ++word) {
    Currency& bet = Game.Bets[static_cast<unsigned>(id)];
    if (bet.Raw() == *word) continue;
    bet = Game.BetsAfterRoll[static_cast<unsigned>(id)] = Currency::FromRaw(*word);
    Touch(id);
  }
  Game.BetsAfterRoll[BankrollIndex] = Bankroll();
  Touch(BankrollIndex);
  ForOtherFields([&word](auto& field) { Store(field, *word++); });
  for (unsigned id = Lay4; id <= LastBet; ++id) Game.BetWorking[id] = layout.States[id];
  Game.WorkingTouched = true;
  Game.NeedRepaint = true;
}

}  // namespace

bool KnownRollsMayFollow() {
  return known.At != kNowhere && !Game.SnapshotsDue && !Game.ManualRollPending && NobodyLooksOn();
}

void BeginLearning(bool changed, bool mayLearn) {
  if (changed) {
    known.At = kNowhere;
    if (Game.KnownRollsOn) FollowRules();
  }
  known.Learning = mayLearn && NobodyLooksOn() && !known.Pays.Rests();
  if (known.Learning && known.At == kNowhere) known.Learning = SquaresAreWhole();
  if (!known.Learning) {
    known.At = kNowhere;
    return;
  }
  MakeRoom();
  if (IsFull()) Forget();
  if (known.At == kNowhere) known.At = FindLayout();
  known.BankrollAtStart = Bankroll();
  Game.LeastFreeMoney = kFreeEnough;
}

void Learn() {
  if (!known.Learning) return;
  known.Learning = false;
  const unsigned at = PlaceOf(known.At, NumberOfThrow(Game.Die1, Game.Die2));
  if (known.Rolls[at].LeastBankroll <= known.BankrollAtStart.Raw()) {
    known.At = known.Rolls[at].Next;
    return;
  }
  known.Pays.Learnt();
  known.At = FindLayout();
  LearnRoll(at, known.At);
}

bool KnownStretch::MayLeave(Currency bankroll) {
  if (bankroll >= lowest_ && bankroll <= highest_) return true;
  if (Abs(bankroll) > kRollingLimit || RunEndAt(bankroll) != NoLimitReached) return false;
  const bool first = lowest_ > highest_;
  lowest_ = first ? bankroll : std::min(lowest_, bankroll);
  highest_ = first ? bankroll : std::max(highest_, bankroll);
  return true;
}

std::span<const KnownStep> KnownStretch::Play(std::span<const ThrowNumber> throws) {
  if (known.RecentCount + throws.size() > kRecent) SettleStreaks();
  std::array<LedgerThrow, kMostThrows> entries;
  unsigned* const recent = known.Recent.data() + known.RecentCount;
  std::int64_t bankroll = Bankroll().Raw();
  int layout = known.At;
  int now = Game.RollCount[0];
  unsigned played = 0;
  for (; played < throws.size(); ++played) {
    const unsigned at = PlaceOf(layout, throws[played]);
    KnownRoll& roll = known.Rolls[at];
    const Currency after = Currency::FromRaw(bankroll + roll.Gain);
    if (bankroll < roll.LeastBankroll || !MayLeave(after)) break;
    KnownTable& table = known.Tables[static_cast<unsigned>(layout)];
    if (!table.Profile.IsKept()) {
      if (played > 0 && !HasRoomForProfile()) break;
      KeepProfile(table.Profile, known.Layouts[static_cast<unsigned>(layout)].States.data());
    }
    entries[played] = {throws[played], table.Point, table.Profile.Place};
    steps_[played] = {after, roll.TellsOfShooter};
    recent[played] = at;
    if (roll.Count++ == 0) known.Played.push_back(at);
    roll.LastRoll = ++now;
    bankroll = after.Raw();
    layout = roll.Next;
  }
  known.At = layout;
  known.RecentCount += played;
  known.PlayedRolls += static_cast<int>(played);
  if (played > 0) EnterThrows({entries.data(), played});
  return {steps_.data(), played};
}

KnownStretch::~KnownStretch() {
  if (known.PlayedRolls == 0) return;
  known.Pays.Used(known.PlayedRolls);
  known.PlayedRolls = 0;
  SettleStreaks();
  RecordDecisions();
  LayOutBets(known.Layouts[static_cast<unsigned>(known.At)]);
}
