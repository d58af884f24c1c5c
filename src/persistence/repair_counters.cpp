#include "persistence/repair_counters.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <optional>
#include <span>

#include "core/game_state.h"

namespace {

// --- The rolls of the game ---

/// Events of which every roll shows exactly one.
struct EventGroup {
  int First;
  int Last;
};
constexpr std::array<EventGroup, 3> kGroups = {
    {{Total2, Total12}, {FirstDie1, FirstDie6}, {SecondDie1, SecondDie6}}};

std::int64_t SumOf(EventGroup group) {
  return std::accumulate(Game.RollCount.begin() + group.First,
                         Game.RollCount.begin() + group.Last + 1, std::int64_t{0});
}

/// The count of rolls that most of the record speaks for.
int AgreedRolls() {
  std::array<std::int64_t, 5> votes{};
  votes[0] = Game.RollCount[0];
  std::transform(kGroups.begin(), kGroups.end(), votes.begin() + 1, SumOf);
  votes[4] = std::int64_t{Game.ShooterStats[FinishedRollsSum]} + Game.ShooterStats[ShooterRolls];
  const auto support = [&votes](std::int64_t vote) {
    return vote > kMaxRolls ? 0 : std::count(votes.begin(), votes.end(), vote);
  };
  return static_cast<int>(
      *std::max_element(votes.begin(), votes.end(),
                        [&](std::int64_t a, std::int64_t b) { return support(a) < support(b); }));
}

// --- Events and their gaps ---

/// One event's counters, and how far they are from agreeing.
class EventCounters {
 public:
  EventCounters(int event, int rolls)
      : count_(Game.RollCount[static_cast<unsigned>(event)]),
        since_(Game.RollsSince[static_cast<unsigned>(event)]),
        gaps_(Game.RollGapTally[static_cast<unsigned>(event)]),
        rolls_(rolls) {}

  bool Agree() const { return MissingGaps() == 0 && MissingRolls() == 0; }

  /// Mends the one counter that the others speak against; false when there is no such one.
  bool MendOne() {
    const std::int64_t gaps = MissingGaps();
    const std::int64_t missing = MissingRolls();
    if (missing == 0 && gaps != 0) return MendCount(gaps);
    if (gaps == 0) return MendLongGaps(missing) || MendSince(missing);
    return MendGap(gaps, missing);
  }

  /// Lays gaps out anew, as even as they can be.
  void Rebuild() {
    count_ = std::clamp(count_, 0, rolls_);
    since_ = count_ == 0 ? rolls_ : std::clamp(since_, 0, rolls_ - count_);
    gaps_ = {};
    if (count_ == 0) return;
    const int covered = rolls_ - since_;
    const int longer = covered % count_;
    Lay(covered / count_, count_ - longer);
    Lay(covered / count_ + 1, longer);
  }

 private:
  std::int64_t MissingGaps() const {
    return count_ - std::accumulate(gaps_.begin() + 1, gaps_.end(), std::int64_t{0});
  }
  std::int64_t MissingRolls() const {
    std::int64_t covered = std::int64_t{gaps_[0]} + since_;
    for (unsigned gap = 1; gap < kLongGap; ++gap) covered += std::int64_t{gap} * gaps_[gap];
    return rolls_ - covered;
  }

  bool Fits(std::int64_t value) const { return value >= 0 && value <= rolls_; }

  bool MendCount(std::int64_t gaps) {
    // A long gap that isn't counted leaves no rolls missing either.
    const std::int64_t longGaps = gaps_[kLongGap] + gaps;
    if (gaps_[0] > 0 && Fits(longGaps) && longGaps * kLongGap <= gaps_[0] &&
        !(gaps_[kLongGap] > 0 && std::int64_t{gaps_[kLongGap]} * kLongGap <= gaps_[0])) {
      gaps_[kLongGap] = static_cast<int>(longGaps);
      return true;
    }
    if (!Fits(count_ - gaps)) return false;
    count_ = static_cast<int>(count_ - gaps);
    return true;
  }

  bool MendSince(std::int64_t missing) {
    if (!Fits(since_ + missing)) return false;
    since_ = static_cast<int>(since_ + missing);
    return true;
  }

  /// The sum of the long gaps is wrong for sure when there are none, or too few rolls for them.
  bool MendLongGaps(std::int64_t missing) {
    const std::int64_t least = std::int64_t{gaps_[kLongGap]} * kLongGap;
    const bool wrong = gaps_[kLongGap] == 0 ? gaps_[0] != 0 : gaps_[0] < least;
    const std::int64_t sum = gaps_[0] + missing;
    const bool right = gaps_[kLongGap] == 0 ? sum == 0 : Fits(sum) && sum >= least;
    if ((!wrong && Fits(since_ + missing)) || !right) return false;
    gaps_[0] = static_cast<int>(sum);
    return true;
  }

  /// A gap whose tally is off is missing as many gaps as it is missing rolls, by its length.
  bool MendGap(std::int64_t gaps, std::int64_t missing) {
    if (missing % gaps != 0) return false;
    const std::int64_t length = missing / gaps;
    if (length < 1 || length >= kLongGap) return false;
    int& tally = gaps_[static_cast<unsigned>(length)];
    if (!Fits(tally + gaps)) return false;
    tally = static_cast<int>(tally + gaps);
    return true;
  }

  void Lay(int gap, int times) {
    gaps_[static_cast<unsigned>(std::min(gap, kLongGap))] += times;
    if (gap >= kLongGap) gaps_[0] += gap * times;
  }

  int& count_;
  int& since_;
  std::array<int, kLongGap + 1>& gaps_;
  int rolls_;
};

/// Makes the counts of a group add up to the rolls. What is too much comes off the events that
/// can't be right first, then off any.
void RepairGroup(EventGroup group, int rolls) {
  std::int64_t missing = rolls - SumOf(group);
  for (const bool any : {false, true}) {
    for (int event = group.First; event <= group.Last && missing != 0; ++event) {
      if (!any && EventCounters(event, rolls).Agree()) continue;
      int& count = Game.RollCount[static_cast<unsigned>(event)];
      const std::int64_t wanted = std::clamp<std::int64_t>(count + missing, 0, rolls);
      missing -= wanted - count;
      count = static_cast<int>(wanted);
    }
  }
}

void RepairEvents(int rolls) {
  Game.RollCount[0] = Game.RollsSince[0] = rolls;
  for (int event = 1; event < kRollEvents; ++event) {
    EventCounters counters(event, rolls);
    if (!counters.Agree()) counters.MendOne();
  }
  for (const EventGroup group : kGroups) RepairGroup(group, rolls);
  for (int event = 1; event < kRollEvents; ++event) {
    EventCounters counters(event, rolls);
    if (!counters.Agree()) counters.Rebuild();
  }
  for (auto* tallies :
       {&Game.ShooterEvent, &Game.ShooterEventPrev, &Game.ShooterSince, &Game.ShooterSincePrev}) {
    for (int& tally : *tallies) tally = std::min(tally, rolls);
  }
}

// --- Shooters ---

/// What the counters of shooters must agree on: a sum of some of them is 0, or the rolls, or
/// whether a point stands.
struct Balance {
  struct Term {
    int Stat = 0;
    int Sign = 0;
  };
  enum class EqualTo { Nothing, Rolls, PointStanding };

  std::array<Term, 4> Terms{};
  EqualTo Sum = EqualTo::Nothing;
};

using enum Balance::EqualTo;

constexpr std::array<Balance, 6> kBalances = {{
    {{{{AllPasses, 1}, {PassesByPoint, -1}, {PassesByNatural, -1}}}, Nothing},
    {{{{AllMisses, 1}, {MissesBySevenOut, -1}, {MissesOnComeOut, -1}}}, Nothing},
    {{{{ShootersFinished, 1}, {MissesBySevenOut, -1}}}, Nothing},
    {{{{FinishedRollsSum, 1}, {ShooterRolls, 1}}}, Rolls},
    {{{{PointsEstablished, 1}, {PassesByPoint, -1}, {MissesBySevenOut, -1}}}, PointStanding},
    {{{{ComeOutRolls, 1}, {PassesByNatural, -1}, {MissesOnComeOut, -1}, {PointsEstablished, -1}}},
     Nothing},
}};

/// By how much a balance is off.
std::int64_t OffBy(const Balance& balance) {
  std::int64_t sum = 0;
  for (const Balance::Term term : balance.Terms)
    sum += std::int64_t{term.Sign} * Game.ShooterStats[static_cast<unsigned>(term.Stat)];
  if (balance.Sum == Rolls) return sum - Game.RollCount[0];
  if (balance.Sum == PointStanding) return sum - (Game.Point != 0 ? 1 : 0);
  return sum;
}

bool AllBalance() {
  return std::all_of(kBalances.begin(), kBalances.end(),
                     [](const Balance& balance) { return OffBy(balance) == 0; });
}

/// Sets one counter by a balance; false, and nothing changed, unless all is well then.
bool MendStat(const Balance& balance, Balance::Term term) {
  int& stat = Game.ShooterStats[static_cast<unsigned>(term.Stat)];
  const int former = stat;
  const std::int64_t wanted = stat - term.Sign * OffBy(balance);
  if (wanted >= 0 && wanted <= kMaxRolls) {
    stat = static_cast<int>(wanted);
    if (AllBalance()) return true;
  }
  stat = former;
  return false;
}

bool MendOneStat() {
  for (const Balance& balance : kBalances) {
    for (const Balance::Term term : balance.Terms) {
      if (term.Sign != 0 && MendStat(balance, term)) return true;
    }
  }
  return false;
}

/// Reckons the sums anew, from the counters that they are sums of.
void ReckonSums() {
  auto& stats = Game.ShooterStats;
  const int rolls = Game.RollCount[0];
  for (int& stat : stats) stat = std::min(stat, rolls);
  stats[FinishedRollsSum] = rolls - stats[ShooterRolls];
  for (const Balance& balance : kBalances) {
    if (balance.Sum == Rolls) continue;
    int& sum = stats[static_cast<unsigned>(balance.Terms[0].Stat)];
    sum = static_cast<int>(sum - OffBy(balance));
  }
}

void RepairShooters() {
  if (!AllBalance() && !MendOneStat()) ReckonSums();
}

// --- Bets ---

void RepairAmounts(BetStats& stats) {
  stats[StatCount] = RoundDownTo(stats[StatCount], 1);
  stats[StatRollCount] = stats[StatRollCount] > 0 && stats[StatCount] > 0 ? 1 : 0;
  if (stats[StatCount] == 0) return;
  if (stats[StatLowest] > stats[StatHighest])
    stats[StatLowest] = stats[StatHighest] = stats[StatLast];
  stats[StatLast] = std::clamp(stats[StatLast], stats[StatLowest], stats[StatHighest]);
}

/// A bet isn't decided more than once in a roll; of three counts that one is wrong which says so,
/// else the decisions are what was won and lost.
void RepairDecisions(Currency& decided, Currency& won, Currency& lost) {
  if (decided == won + lost) return;
  const Currency most = Game.RollCount[0];
  if (won > most && decided <= most) won = std::max(decided - lost, Currency(0));
  if (lost > most && decided <= most) lost = std::max(decided - won, Currency(0));
  won = std::min(won, most);
  lost = std::min(lost, most - won);
  decided = won + lost;
}

/// Squares of wagers lie between those of equal wagers and of the highest ones; a file from before
/// they were kept has none.
void RepairSquares(unsigned id) {
  const BetStats& wagers = Game.BetWagers[Actual][id];
  const double count = wagers[StatCount].ToDouble();
  const double sum = wagers[StatSum].ToDouble();
  double& squares = Game.WagerSquares[id];
  if (count == 0) {
    squares = 0;
    return;
  }
  constexpr double kHair = 1e-9;  // of what a sum of many squares may be off by
  const double least = sum / count * sum;
  const double most = std::max(least, sum * wagers[StatHighest].ToDouble());
  if (squares < least * (1 - kHair) || squares > most * (1 + kHair))
    squares = std::clamp(squares, least, most);
}

}  // namespace

void RepairCounters() {
  RepairEvents(AgreedRolls());
  RepairShooters();
}

void RepairBetTables() {
  for (int kind = Phantom; kind < kBetKinds; ++kind) {
    for (unsigned id = Lay4; id <= LastBet; ++id) {
      BetStats& wagers = Game.BetWagers[static_cast<unsigned>(kind)][id];
      BetStats& wins = Game.BetWins[static_cast<unsigned>(kind)][id];
      BetStats& losses = Game.BetLosses[static_cast<unsigned>(kind)][id];
      for (BetStats* stats : {&wagers, &wins, &losses})
        (*stats)[StatCount] = RoundDownTo((*stats)[StatCount], 1);
      RepairDecisions(wagers[StatCount], wins[StatCount], losses[StatCount]);
      for (BetStats* stats : {&wagers, &wins, &losses}) RepairAmounts(*stats);
    }
  }
  for (unsigned id = Lay4; id <= LastBet; ++id) RepairSquares(id);
}
