// What a script costs under Hyper-Drive, a line. Each script is held against the same game without
// one, measured in the same run: the difference is shared among the lines passed, and what the
// script's bets cost at the table is in it. The last column is what the profile adds to a line.
#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <functional>
#include <string>
#include <vector>

#include "allocations.h"
#include "autobet/engine.h"
#include "autobet/language.h"
#include "autobet/script.h"
#include "bets/headless_host.h"
#include "dice/generators.h"
#include "play/roll_cycle.h"
#include "rules/defaults.h"

namespace {

constexpr int kRolls = 200'000;
constexpr int kRounds = 7;
constexpr std::uint32_t kSeed = 20'240'601;

// --- Scripts ---

void Add(const ScriptLine& line) { InsertLine(Game.ScrCount + 1, line); }

void Start(int kind) {
  ScriptLine line;
  line.LineKind = kind;
  Add(line);
}

void If(int subject, int op = 0, Currency amount = 0, const std::string& name = "") {
  ScriptLine line;
  line.LineKind = ConditionLine;
  line.OfSubject = subject;
  line.LineCode = op;
  line.LineAmount = amount;
  line.LineName = name;
  Add(line);
}

void IfStack(int stack, int op, Currency amount) {
  If(ChipStackSubject, op, amount);
  Line(Game.ScrCount).OfStackNum = stack;
}

void Do(int action, Currency amount, int target, const std::string& name = "") {
  ScriptLine line;
  line.LineKind = ActionLine;
  line.LineCode = action;
  line.LineAmount = amount;
  line.ToSubject = target;
  line.LineName = name;
  Add(line);
}

/// Ten lines: a Pass Line bet on the come-out, and odds behind it.
void PassAndOdds() {
  Start(WhenLine);
  If(NextIsComeOut);
  Start(ThenLine);
  Do(BetAmount, 10, PassLine);
  Start(WhileLine);
  If(PointEstablished, AnyNumber);
  Start(AndWhileLine);
  If(PassLineOdds, EqualTo, 0);
  Start(ThenLine);
  Do(BetAmount, 20, PassLineOdds);
}

/// Fifteen lines: a Place bet that is pressed after every other win, as a flag remembers.
void PressOneNumber(int placeBet, Currency stake) {
  const std::string flag = "press " + std::to_string(placeBet);
  Start(WhileLine);
  If(placeBet, EqualTo, 0);
  If(NextIsNotComeOut);
  Start(ThenLine);
  Do(BetAmount, stake, placeBet);
  Start(WhenLine);
  If(placeBet, HasWon);
  Start(AndWhileLine);
  If(OneFlag, 0, kTrue, flag);
  Start(ThenLine);
  Do(AddAmount, stake, placeBet);
  Do(SetFlag, kFalse, 0, flag);
  Start(ElseLine);
  Do(SetFlag, kTrue, 0, flag);
  Start(WhenLine);  // begins the next statement: a finished one leaves nothing behind
}

/// Sixty lines.
void PlacePress() {
  PressOneNumber(Place5, 5);
  PressOneNumber(Place6, 6);
  PressOneNumber(Place8, 6);
  PressOneNumber(Place9, 5);
  Line(Game.ScrCount).LineKind = RemarkLine;
}

using Condition = std::function<void(int)>;

const std::array<Condition, 5> kPlainConditions = {
    [](int i) { If(Place4 + i % 6, HasWon); },
    [](int i) { If(OneFlag, 0, kTrue, "flag " + std::to_string(i % 20)); },
    [](int i) { If(BankrollSubject, GreaterThan, 5'000'000 + i); },
    [](int i) { If(ThisShooterRolls, EqualTo, 20 + i % 30); },
    [](int i) { If(1 + i % LastBet, LessThan, 0); }};

const std::array<Condition, 5> kOtherConditions = {
    [](int i) { If(EventSubject + 2 + i % 88, HasRolled, 3); },
    [](int i) { IfStack(1 + i % 90, EqualTo, 7); }, [](int) { If(1207, GreaterThan, 500); },
    [](int) { If(1005, HasLostMore, 3); },
    [](int i) { If(PointDecidedFor, kPointNumbers[static_cast<unsigned>(i % 6)] + 30); }};

/// A thousand lines: 250 statements, few of which hold.
void AddStatements(const std::function<const Condition&(unsigned)>& conditionOf) {
  for (int i = 0; i < 250; ++i) {
    Start(i % 2 == 0 ? WhenLine : WhileLine);
    conditionOf(static_cast<unsigned>(i))(i);
    Start(ThenLine);
    Do(SetFlag, i % 3 == 0 ? kTrue : kFalse, 0, "flag " + std::to_string(i % 20));
  }
}

/// On all that a script can look at.
void Thousand() {
  AddStatements([](unsigned i) -> const Condition& {
    return (i % 2 == 0 ? kPlainConditions : kOtherConditions)[i / 2 % kPlainConditions.size()];
  });
}

/// On bets, flags and counts.
void PlainThousand() {
  AddStatements(
      [](unsigned i) -> const Condition& { return kPlainConditions[i % kPlainConditions.size()]; });
}

// --- Measuring ---

/// The processor's time of this program: what else the machine does stays out of it.
struct CpuClock {
  using duration = std::chrono::duration<double>;
  using rep = duration::rep;
  using period = duration::period;
  using time_point = std::chrono::time_point<CpuClock>;
  static time_point now() {
    return time_point(duration(static_cast<double>(std::clock()) / CLOCKS_PER_SEC));
  }
};

struct Measured {
  double Nanoseconds = 0;  // a roll
  long Allocations = 0;    // in all rolls but the first
};

void RunHyperDrive(int rolls) {
  Game.NumAutoRolls = Game.AutoRollsLeft = rolls;
  Game.HyperDriveOn = true;
  Game.KeepRolling = true;
  RollDice();
  Game.HyperDriveOn = false;
}

Measured Play(void (*script)()) {
  LayDownDefaults();
  TheHost = HeadlessHost();
  ClearScript();
  Game.NegBankroll = true;
  if (script != nullptr) script();
  Game.AutoBetActive = script != nullptr ? 1 : 0;
  Game.ScriptChanged = false;
  init_genrand(kSeed);
  RunHyperDrive(1);
  const long before = Allocations();
  const auto start = CpuClock::now();
  RunHyperDrive(kRolls);
  const std::chrono::duration<double, std::nano> passed = CpuClock::now() - start;
  if (Game.RollCount[0] != kRolls + 1) std::puts("the run stopped early");
  return {passed.count() / kRolls, Allocations() - before};
}

/// How long runs of the script take on the table as it stands.
double TimeOfRuns(bool profiled) {
  constexpr int kLines = 200'000;
  Game.Profile.On = profiled;
  const auto start = CpuClock::now();
  for (int lines = 0; lines < kLines; lines += Game.ScrCount) RunAutoBets();
  Game.Profile.On = false;
  return (CpuClock::now() - start).count();
}

/// What the profile adds to a line, in hundredths of its time. The least of many times of both, by
/// turns: what slows the machine for a while slows both.
double CostOfProfile() {
  constexpr int kTries = 200;
  double without = 1e9;
  double with = 1e9;
  Game.HyperDriveOn = true;
  for (int i = 0; i < kTries; ++i) {
    without = std::min(without, TimeOfRuns(false));
    with = std::min(with, TimeOfRuns(true));
  }
  Game.HyperDriveOn = false;
  return 100 * (with - without) / without;
}

double BareThrow() {
  init_genrand(kSeed);
  int total = 0;
  const auto start = CpuClock::now();
  for (int roll = 0; roll < kRolls; ++roll) {
    total += static_cast<int>(genrand_real2() * 6) + 1;
    total += static_cast<int>(genrand_real2() * 6) + 1;
  }
  const std::chrono::duration<double, std::nano> passed = CpuClock::now() - start;
  if (total == 0) std::puts("no dice");
  return passed.count() / kRolls;
}

double Median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

void Measure(const char* name, void (*script)()) {
  std::vector<double> perLine;
  std::vector<double> multiples;
  long allocated = 0;
  for (int round = 0; round < kRounds; ++round) {
    const double bare = BareThrow();
    const double without = Play(nullptr).Nanoseconds;
    const Measured with = Play(script);
    perLine.push_back((with.Nanoseconds - without) / Game.ScrCount);
    multiples.push_back(perLine.back() / bare);
    allocated += with.Allocations;
  }
  std::printf("%-14s %6d %14.2f %16.2f %12ld %10.1f %%\n", name, Game.ScrCount, Median(perLine),
              Median(multiples), allocated, CostOfProfile());
}

}  // namespace

int main() {
  std::printf("%-14s %6s %14s %16s %12s %12s\n", "", "lines", "ns a line", "x bare throw",
              "allocations", "profile");
  Measure("PassAndOdds", PassAndOdds);
  Measure("PlacePress", PlacePress);
  Measure("Thousand", Thousand);
  Measure("PlainThousand", PlainThousand);
  return 0;
}
