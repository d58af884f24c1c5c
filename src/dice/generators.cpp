#include "dice/generators.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <random>

#include "core/error_report.h"
#include "core/help_topics.h"
#include "core/host.h"
#include "core/messages.h"
#include "core/text.h"
#include "dice/matrix.h"
#include "stats/events_log.h"

namespace {

// RNG #3 and RNG #4 share one congruence.
constexpr std::int64_t kFactor = 1366;
constexpr std::int64_t kIncrement = 150889;
constexpr std::int64_t kModulus = 714025;

constexpr double kPerWord = 1.0 / 4294967296.0;
constexpr int kTableSize = 97;
constexpr float kLargestBelowOne = 0x1.fffffep-1F;

constexpr int kCongruenceSeedLimit = 999'999;
constexpr int kSeedLimit = 2'147'483'647;

constexpr int kMtMissing = 1;
constexpr int kCokusMissing = 2;

constexpr int kMatrixNumbers = 100'000;
constexpr int kDieFaces = 6;
constexpr int kDicePairs = 36;

Twister mtGenerator;
Twister cokusGenerator;

/// Fills the older variant of the Mersenne Twister: an odd first word, each next one the last
/// times 69069.
class CokusSeeds {
 public:
  using result_type = std::uint32_t;

  explicit CokusSeeds(std::uint32_t seed) : word_(seed | 1U) {}

  template <class Iterator>
  void generate(Iterator first, Iterator last) {
    for (; first != last; ++first, word_ *= 69069U) *first = word_;
  }

 private:
  std::uint32_t word_;
};

/// Hands a Twister its state word by word.
class GivenWords {
 public:
  using result_type = std::uint32_t;

  explicit GivenWords(std::span<const std::uint32_t, kTwisterWords> words) : words_(words) {}

  template <class Iterator>
  void generate(Iterator first, Iterator) {
    std::copy(words_.begin(), words_.end(), first);
  }

 private:
  std::span<const std::uint32_t, kTwisterWords> words_;
};

std::int64_t NextInCongruence(std::int64_t state) {
  const std::int64_t next = (state * kFactor + kIncrement) % kModulus;
  return next < 0 ? next + kModulus : next;
}

/// The sum that starts a generator anew; it is taken in 32 bits.
int StartingSum(int increment, int idum) {
  int sum = 0;
  if (__builtin_sub_overflow(increment, idum, &sum)) RaiseOverflow();
  return sum;
}

/// The place of a table pick, 1 to 97; 0 when the state that it comes from is out of range.
int TablePick(double state, double modulus) {
  const double pick = std::floor(kTableSize * state / modulus) + 1;
  return pick >= 1 && pick <= kTableSize ? static_cast<int>(pick) : 0;
}

// Steps of Ran1. The states are kept as `float`, which holds each of them exactly.

struct Ran1Step {
  double Factor;
  double Increment;
  std::int64_t Modulus;
};
constexpr Ran1Step kStep1 = {7141, 54773, 259200};
constexpr Ran1Step kStep2 = {8121, 28411, 134456};
constexpr Ran1Step kStep3 = {4561, 51349, 243000};

void Advance(float& state, const Ran1Step& step) {
  const double sum = std::nearbyint(step.Factor * static_cast<double>(state) + step.Increment);
  const bool inRange = std::abs(sum) < 9e18;
  state = inRange ? static_cast<float>(static_cast<std::int64_t>(sum) % step.Modulus) : -1.0F;
}

/// The highest states would round up to 1, which no draw may be.
float Ran1Entry(const Ran1Record& record) {
  const double entry =
      (static_cast<double>(record.Ix1) + static_cast<double>(record.Ix2) * 7.4373773e-6) *
      3.8580247e-6;
  return std::min(static_cast<float>(entry), kLargestBelowOne);
}

void RestartRan1(Ran1Record& record, int& idum) {
  record.Started = 1;
  record.Ix1 = static_cast<float>(StartingSum(54773, idum) % kStep1.Modulus);
  Advance(record.Ix1, kStep1);
  record.Ix2 = static_cast<float>(static_cast<std::int64_t>(record.Ix1) % kStep2.Modulus);
  Advance(record.Ix1, kStep1);
  record.Ix3 = static_cast<float>(static_cast<std::int64_t>(record.Ix1) % kStep3.Modulus);
  for (record.Pick = 1; record.Pick <= kTableSize; ++record.Pick) {
    Advance(record.Ix1, kStep1);
    Advance(record.Ix2, kStep2);
    record.Table[static_cast<unsigned>(record.Pick)] = Ran1Entry(record);
  }
  idum = 1;
}

void AdvanceRan2(Ran2Record& record) {
  record.Idum = static_cast<int>(NextInCongruence(record.Idum));
}

void RestartRan2(Ran2Record& record, int idum) {
  record.Started = 1;
  record.Idum = static_cast<int>(StartingSum(150889, idum) % kModulus);
  for (record.Pick = 1; record.Pick <= kTableSize; ++record.Pick) {
    AdvanceRan2(record);
    record.Table[static_cast<unsigned>(record.Pick)] = record.Idum;
  }
  AdvanceRan2(record);
  record.Iy = record.Idum;
}

float DrawRan1() {
  int idum = 1;
  return Ran1(idum);
}

float DrawRan2() {
  int idum = 1;
  return Ran2(idum);
}

// Rolls.

int Face(double draw) { return static_cast<int>(draw * kDieFaces) + 1; }

int CutNumber(double draw) { return static_cast<int>(draw * kMatrixNumbers) + 1; }

/// RNG #4 and #5 round, so that their number can reach 100,001. Required.
int RoundedNumber(double draw) {
  return static_cast<int>(std::nearbyint(draw * kMatrixNumbers)) + 1;
}

template <class Draw>
void RollPair(Draw draw) {
  Game.Die1 = Face(draw());
  Game.Die2 = Face(draw());
}

/// One draw makes both dice.
void RollSingleCall() {
  const int pair = static_cast<int>(genrand_real2() * kDicePairs);
  Game.Die1 = pair % kDieFaces + 1;
  Game.Die2 = pair / kDieFaces + 1;
}

/// The generator of this roll: the mixed ones alternate with the count of rolls.
int GeneratorOfRoll() {
  const bool evenRoll = Game.RollCount[0] % 2 == 0;
  switch (Game.RngChoice) {
    case Rng6Mixed15: return evenRoll ? Rng5Ran1 : Rng1Mt;
    case Rng7Mixed24: return evenRoll ? Rng4Ran2 : Rng2Cokus;
    default: return Game.RngChoice;
  }
}

void RollFairDice() {
  switch (GeneratorOfRoll()) {
    case Rng2Cokus: return RollPair(randomMT);
    case Rng3Congruence:
      Game.Die1 = Rng3(kDieFaces);
      Game.Die2 = Rng3(kDieFaces);
      return;
    case Rng4Ran2: return RollPair(DrawRan2);
    case Rng5Ran1: return RollPair(DrawRan1);
    case Rng8SingleCall: return RollSingleCall();
    default: return RollPair(genrand_real2);
  }
}

/// The generator that makes nothing but pairs of dice, if there is one.
Twister* TwisterOfRolls() {
  if (Game.UseSkewedProbability) return nullptr;
  if (Game.RngChoice == Rng1Mt) return &mtGenerator;
  return Game.RngChoice == Rng2Cokus ? &cokusGenerator : nullptr;
}

int NumberForMatrix() {
  switch (GeneratorOfRoll()) {
    case Rng2Cokus: return CutNumber(randomMT());
    case Rng3Congruence: return Rng3(kMatrixNumbers);
    case Rng4Ran2: return RoundedNumber(static_cast<double>(DrawRan2()));
    case Rng5Ran1: return RoundedNumber(static_cast<double>(DrawRan1()));
    default: return CutNumber(genrand_real2());
  }
}

// Seeds.

/// The clock seeds given out in this run of the program: `Count` of them from `First` on, round the
/// limit. A seed inside is never given again, a clock that has moved on carries the range with it.
struct CoveredSeeds {
  std::int64_t First = 0;
  std::int64_t Count = 0;
};
CoveredSeeds coveredSeeds;
CoveredSeeds coveredCongruenceSeeds;

int UnusedSeed(CoveredSeeds& covered, std::int64_t clockSeed, std::int64_t limit) {
  const std::int64_t wanted = (clockSeed - 1) % limit;
  if (covered.Count == 0 || covered.Count == limit) covered = {wanted, 0};
  const std::int64_t distance = (wanted - covered.First + limit) % limit;
  const std::int64_t offset = std::max(distance, covered.Count);
  covered.Count = offset + 1;
  return static_cast<int>((covered.First + offset) % limit) + 1;
}

/// A seed by the clock; 0 while the clock is too young for RNG #3.
int ClockSeed() {
  const std::int64_t clock = TheHost.Milliseconds();
  const bool congruence = Game.RngChoice == Rng3Congruence;
  if (congruence && clock < 100) return 0;
  const std::int64_t wanted =
      congruence ? std::llrint(static_cast<double>(clock) / 100) : std::max<std::int64_t>(clock, 1);
  CoveredSeeds& covered = congruence ? coveredCongruenceSeeds : coveredSeeds;
  const int seed = UnusedSeed(covered, wanted, SeedLimit());
  return seed == Game.LastSeed ? UnusedSeed(covered, wanted, SeedLimit()) : seed;
}

std::string SeedQuestion() {
  return "Please enter a value between 1 and " + CountText(SeedLimit()) +
         " to seed the random number generator:";
}

bool SeedInLimits(Currency seed, int limit) {
  return seed >= Currency(1) && seed <= Currency(limit);
}

/// Nobody gives the same wrong answer this often: no one is there to ask.
constexpr int kPatience = 100;

/// Asks for a seed until it is within the limits; false when the question is given up: it was
/// cancelled, or the same wrong answer came again and again.
bool AskForSeed() {
  const int limit = SeedLimit();
  const std::string question = SeedQuestion();
  const int choice = Game.RngChoice;
  Game.KeepRolling = false;
  Game.ChangeRequest = Currency();
  // Required: the input box knows the question by a choice that is 10 too high.
  Game.RngChoice = choice + 10;
  Game.MsgInput = {std::to_string(Game.LastSeed), ""};
  ShowMessage(question, "RNG Seed", kTopicGenerators, InputOk);
  for (int same = 0; !SeedInLimits(Game.ChangeRequest, limit) && same < kPatience; ++same) {
    if (Game.MsgAnswer == AnswerCancel) break;
    const Currency before = Game.ChangeRequest;
    ShowMessage("Your seed value is out of limits.\n\n" + question, "RNG Seed", kTopicGenerators,
                InputOkStop);
    if (Game.ChangeRequest != before) same = 0;
  }
  Game.RngChoice = choice;
  return SeedInLimits(Game.ChangeRequest, limit);
}

bool FindSeedValue() {
  if (Game.UserSeed) return AskForSeed();
  Game.ChangeRequest = ClockSeed();
  return true;
}

void SeedRan1(int seed) {
  int idum = -seed;
  Ran1(idum);
}

void SeedRan2(int seed) {
  int idum = -seed;
  Ran2(idum);
}

void SeedGenerator(int seed) {
  const auto word = static_cast<std::uint32_t>(seed);
  switch (Game.RngChoice) {
    case Rng1Mt:
    case Rng8SingleCall: return init_genrand(word);
    case Rng2Cokus: return srandMT(word);
    case Rng3Congruence: Rng3(kDieFaces); return;
    case Rng4Ran2: return SeedRan2(seed);
    case Rng5Ran1: return SeedRan1(seed);
    case Rng6Mixed15: init_genrand(word); return SeedRan1(seed);
    case Rng7Mixed24: srandMT(word); return SeedRan2(seed);
    default: return;
  }
}

/// Logs the state from before the seeding.
void LogSeeding() {
  if (!Game.EventsLogActive) return;
  WriteLogLine("      RNG #", Game.RngChoice + 1, " seeded: ", std::to_string(Game.RngState));
}

}  // namespace

std::span<const std::uint32_t> Twister::Ahead(unsigned count) {
  if (end_ - next_ < count) {
    const auto rest = std::copy(ahead_.begin() + next_, ahead_.begin() + end_, ahead_.begin());
    std::generate(rest, ahead_.begin() + count, std::ref(engine_));
    next_ = 0;
    end_ = count;
  }
  return {ahead_.data() + next_, count};
}

int Rng3(int limit) {
  Game.RngState = static_cast<int>(NextInCongruence(Game.RngState));
  const double product = static_cast<double>(limit) * Game.RngState;
  return static_cast<int>(product / static_cast<double>(kModulus)) + 1;
}

float Ran1(int& idum) {
  Ran1Record& record = Game.Ran1State;
  if (idum < 0 || record.Started == 0) RestartRan1(record, idum);
  Advance(record.Ix1, kStep1);
  Advance(record.Ix2, kStep2);
  Advance(record.Ix3, kStep3);
  record.Pick = TablePick(static_cast<double>(record.Ix3), static_cast<double>(kStep3.Modulus));
  if (record.Pick == 0) {
    Game.LastErrorText = "An error occurred in function Ran1\n";
    return 0;
  }
  float& slot = record.Table[static_cast<unsigned>(record.Pick)];
  const float draw = slot;
  slot = Ran1Entry(record);
  return draw;
}

float Ran2(int& idum) {
  Ran2Record& record = Game.Ran2State;
  if (idum < 0 || record.Started == 0) RestartRan2(record, idum);
  record.Pick = TablePick(record.Iy, static_cast<double>(kModulus));
  if (record.Pick == 0) {
    Game.LastErrorText = "An error occurred in function Ran2\n";
    return 0;
  }
  int& slot = record.Table[static_cast<unsigned>(record.Pick)];
  record.Iy = slot;
  AdvanceRan2(record);
  slot = record.Idum;
  return static_cast<float>(record.Iy * 1.4005112e-6);
}

void init_genrand(std::uint32_t seed) { mtGenerator.seed(seed); }

double genrand_real2() { return genrand_int32() * kPerWord; }

std::uint32_t genrand_int32() { return mtGenerator(); }

void srandMT(std::uint32_t seed) {
  CokusSeeds seeds(seed);
  cokusGenerator.seed(seeds);
}

double randomMT() { return randomMT_int32() * kPerWord; }

std::uint32_t randomMT_int32() { return cokusGenerator(); }

void PutTwisterState(std::span<const std::uint32_t, kTwisterWords> words) {
  GivenWords given(words);
  if (Game.RngChoice == Rng2Cokus)
    cokusGenerator.seed(given);
  else
    mtGenerator.seed(given);
}

void RollWithGenerator() {
  if (Game.UseSkewedProbability) {
    DiceFromMatrix(NumberForMatrix());
  } else {
    RollFairDice();
  }
}

bool LookAhead(std::span<ThrowNumber> throws) {
  Twister* const twister = TwisterOfRolls();
  if (twister == nullptr) return false;
  const auto words = twister->Ahead(2 * static_cast<unsigned>(throws.size()));
  for (std::size_t i = 0; i < throws.size(); ++i)
    throws[i] = NumberOfThrow(Face(words[2 * i] * kPerWord), Face(words[2 * i + 1] * kPerWord));
  return true;
}

void SkipThrows(unsigned count) { TwisterOfRolls()->Skip(2 * count); }

bool SeedRng(SeedSource source) {
  try {
    if (source != SeedInChangeRequest && !FindSeedValue()) return false;
    if (!SeedInLimits(Game.ChangeRequest, SeedLimit())) return false;
    LogSeeding();
    const int seed = static_cast<int>(std::nearbyint(Game.ChangeRequest.ToDouble()));
    Game.RngState = seed;
    Game.LastSeed = seed;
    SeedGenerator(seed);
    return true;
  } catch (...) {
    ReportError("Seed RNG");
    return false;
  }
}

GeneratorStates::GeneratorStates() : mt_(mtGenerator), cokus_(cokusGenerator) {}

void GeneratorStates::PutBack() const {
  mtGenerator = mt_;
  cokusGenerator = cokus_;
}

void ResetGenerators() {
  mtGenerator = Twister();
  cokusGenerator = Twister();
  coveredSeeds = coveredCongruenceSeeds = {};
}

int SeedLimit() {
  return Game.RngChoice % 10 == Rng3Congruence ? kCongruenceSeedLimit : kSeedLimit;
}

void CorrectRngChoice() {
  const int choice = Game.RngChoice;
  const bool needsMt = choice == Rng1Mt || choice == Rng6Mixed15 || choice == Rng8SingleCall;
  const bool needsCokus = choice == Rng2Cokus || choice == Rng7Mixed24;
  if ((needsMt && (Game.MissingRngFiles & kMtMissing)) ||
      (needsCokus && (Game.MissingRngFiles & kCokusMissing))) {
    Game.RngChoice = Rng4Ran2;
  }
}
