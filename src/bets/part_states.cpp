#include "bets/part_states.h"

#include <algorithm>
#include <span>
#include <vector>

#include "bets/decision_table.h"
#include "bets/vig.h"

namespace {

// The states are bounded: 3 MB at most.
constexpr unsigned kWords = 1U << 18U;
constexpr unsigned kWorkings = 250;      // sets of working states of a part
constexpr unsigned kProfiles = 250;      // and of all parts together
constexpr unsigned kPlaces = 1U << 15U;  // of the states by their hash, a power of 2

constexpr unsigned PartWhenApart(int betId) {
  if (betId <= Buy10) return static_cast<unsigned>(betId - Lay4) % 6;
  if (betId == Come || betId == DontCome) return kComePart;
  return betId <= DontPassOdds ? kLinePart : kRestPart;
}

constexpr unsigned kPointStates = 11;   // of which six and 0 are points
constexpr unsigned kStatesInWord = 16;  // working states, 4 bits each
constexpr unsigned kWorkingWords = (kBetSlots + kStatesInWord - 1) / kStatesInWord;

/// The bets of a part, and of them those that hold vig.
struct Part {
  std::vector<int> Bets;
  std::vector<int> WithVig;
  bool HasLine = false;
};

struct State {
  unsigned FirstWord = 0;
  unsigned char Part = 0;
  unsigned char Point = 0;    // of the line's part; of the others whether one stands
  unsigned char Working = 0;  // which of the part's sets of working states
  bool LineOddsAreOff = false;
  Currency OnTable;
};

using WorkingWords = std::array<std::uint64_t, kWorkingWords>;

using PartWorkings = std::array<std::uint64_t, 2>;  // of each part a byte
static_assert(kParts <= sizeof(PartWorkings));

struct KnownProfile {
  PartWorkings Workings;
  LedgerProfile Profile;
};

struct Table {
  std::array<Part, kParts> Parts;
  std::array<unsigned char, kBetSlots> PartOf{};
  std::array<std::array<PartSet, 13>, kPointStates> Moved{};  // by point and total
  bool Apart = false;
  unsigned LinePart = kLinePart;

  std::vector<State> States;  // those of two parts that are joined are among them
  std::vector<std::int64_t> Words;
  std::vector<std::uint16_t> Places;  // 1 + the number of a state, 0 for none
  std::array<std::vector<WorkingWords>, kParts> Workings;

  std::vector<KnownProfile> Profiles;
};
Table table;

constexpr unsigned char kJoined = kParts;

void Store(Currency& field, std::int64_t word) { field = Currency::FromRaw(word); }
void Store(bool& field, std::int64_t word) { field = word != 0; }
std::int64_t WordOf(Currency field) { return field.Raw(); }
std::int64_t WordOf(int field) { return field; }

/// The fields of the record that belong to a part, but for its bets and their working states.
template <typename Action>
void ForOtherFields(const Part& part, Action action) {
  for (const int bet : part.WithVig) action(HeldVigOf(bet));
  if (!part.HasLine) return;
  // A point leaves them, and they stay when it goes.
  for (const unsigned odds : {PassLineOdds, DontPassOdds}) {
    PayoffRecord& payoff = Game.Payoff[odds];
    action(payoff.Win);
    action(payoff.ShownAsTo);
    action(payoff.Per);
  }
}

WorkingWords ReadWorking(const Part& part) {
  WorkingWords words{};
  for (unsigned i = 0; i < part.Bets.size(); ++i) {
    const auto state = static_cast<std::uint64_t>(Game.BetWorking[part.Bets[i]] + 1);
    words[i / kStatesInWord] |= state << i % kStatesInWord * 4;
  }
  return words;
}

int WorkingOf(const WorkingWords& words, unsigned place) {
  return static_cast<int>(words[place / kStatesInWord] >> place % kStatesInWord * 4 & 15U) - 1;
}

unsigned FindWorking(unsigned part, const WorkingWords& words) {
  auto& workings = table.Workings[part];
  const auto found = std::find(workings.begin(), workings.end(), words);
  const auto number = static_cast<unsigned>(found - workings.begin());
  if (found == workings.end()) workings.push_back(words);
  return number;
}

bool LineOddsAreOff() {
  return std::ranges::any_of(std::array{PassLineOdds, DontPassOdds}, [](int odds) {
    return Game.Bets[odds] != 0 && Game.BetWorking[odds] < Working;
  });
}

Currency OnTableNow(const Part& part) {
  Currency sum;
  for (const int bet : part.Bets) sum += Game.Bets[bet];
  for (const int bet : part.WithVig)
    if (VigIsUpFront(bet)) sum += VigHeld(bet);
  return sum;
}

constexpr std::uint64_t kMix = 0x9E3779B97F4A7C15U;

std::uint64_t HashOf(std::span<const std::int64_t> words) {
  std::uint64_t hash = 0;
  std::uint64_t factor = kMix;
  for (const std::int64_t word : words)
    hash += static_cast<std::uint64_t>(word) * (factor += 2 * kMix);
  return hash ^ hash >> 29U ^ hash >> 47U;
}

std::uint16_t AddState(unsigned place, const State& state) {
  table.States.push_back(state);
  table.Places[place] = static_cast<std::uint16_t>(table.States.size());
  return static_cast<std::uint16_t>(table.States.size() - 1);
}

/// The state of a part with these words, entered where it is new as `make()` makes it.
template <typename Make>
std::uint16_t FindState(unsigned part, std::span<const std::int64_t> words, Make make) {
  unsigned place = static_cast<unsigned>(HashOf(words)) % kPlaces;
  for (; table.Places[place] != 0; place = (place + 1) % kPlaces) {
    const unsigned found = table.Places[place] - 1U;
    const State& other = table.States[found];
    if (other.Part == part &&
        std::equal(words.begin(), words.end(), table.Words.begin() + other.FirstWord))
      return static_cast<std::uint16_t>(found);
  }
  State state = make();
  state.Part = static_cast<unsigned char>(part);
  state.FirstWord = static_cast<unsigned>(table.Words.size());
  table.Words.insert(table.Words.end(), words.begin(), words.end());
  return AddState(place, state);
}

/// The state of a part on the table.
std::uint16_t ReadState(unsigned number) {
  static std::vector<std::int64_t> words;
  const Part& part = table.Parts[number];
  const unsigned working = FindWorking(number, ReadWorking(part));
  const int point = number == table.LinePart ? Game.Point : std::min(Game.Point, 1);
  words = {point, working};
  for (const int bet : part.Bets) words.push_back(Game.Bets[bet].Raw());
  ForOtherFields(part, [](const auto& field) { words.push_back(WordOf(field)); });
  return FindState(number, words, [&] {
    State state;
    state.Point = static_cast<unsigned char>(point);
    state.Working = static_cast<unsigned char>(working);
    state.LineOddsAreOff = part.HasLine && LineOddsAreOff();
    state.OnTable = OnTableNow(part);
    return state;
  });
}

LedgerProfile& FindProfile(const PartStates& states) {
  PartWorkings workings{};
  for (unsigned part = 0; part < kParts; ++part) {
    const std::uint64_t working = table.States[states[part]].Working;
    workings[part / 8] |= working << part % 8 * 8;
  }
  auto& profiles = table.Profiles;
  const auto found = std::ranges::find_if(profiles, [&workings](const KnownProfile& profile) {
    return profile.Workings[0] == workings[0] && profile.Workings[1] == workings[1];
  });
  if (found != profiles.end()) return found->Profile;
  profiles.push_back({workings, {}});
  return profiles.back().Profile;
}

/// The parts that a throw may change: those of the bets that it decides or moves, and all where the
/// point becomes another.
PartSet FindMoved(int point, const ThrowKind& thrown) {
  const int total = thrown.Total();
  if (total == 7 || total == point || (point == 0 && IsPointNumber(total)))
    return (1U << (kRestPart + 1)) - 1U;
  unsigned moved = 0;
  ForEachIn(StepsOfThrow(point, thrown.Low, thrown.High, Game.BarDont).Bets,
            [&moved](unsigned bet) { moved |= 1U << table.PartOf[bet]; });
  return moved;
}

void FindAllMoved() {
  for (const int point : {0, 4, 5, 6, 8, 9, 10})
    for (unsigned kind = 1; kind <= kThrowKinds; ++kind) {
      const ThrowKind& thrown = kThrowKindTable[kind];
      unsigned moved = FindMoved(point, thrown);
      // The Come bets go with the number.
      if (IsPointNumber(thrown.Total())) moved &= ~(1U << kComePart);
      table.Moved[static_cast<unsigned>(point)][static_cast<unsigned>(thrown.Total())] |= moved;
    }
}

void MakeRoom() {
  if (table.States.capacity() != 0) return;
  table.States.reserve(kPartStates);
  table.Words.reserve(kWords);
}

}  // namespace

bool HasRoomForStates() {
  // Two layouts, the parts that are joined, and the multiples.
  return table.States.size() + 4 * kParts <= kPartStates &&
         table.Words.size() + 4 * kBetSlots <= kWords && table.Profiles.size() <= kProfiles &&
         std::ranges::all_of(table.Workings,
                             [](const auto& sets) { return sets.size() + 2 <= kWorkings; });
}

void ForgetStates() {
  MakeRoom();
  table.States.assign(1, {});  // 0 is none
  table.Words.clear();
  table.Places.assign(kPlaces, 0);
  for (auto& workings : table.Workings) workings.clear();
  table.Profiles.clear();
  table.Apart = !Game.AutoRemovePlace;  // which takes down a bet of another part
  table.LinePart = table.Apart ? kLinePart : kRestPart;
  table.Parts = {};
  for (int bet = Lay4; bet <= LastBet; ++bet) {
    const unsigned part = table.Apart ? PartWhenApart(bet) : kRestPart;
    table.PartOf[static_cast<unsigned>(bet)] = static_cast<unsigned char>(part);
    table.Parts[part].Bets.push_back(bet);
    if (IsBuy(bet) || IsLay(bet)) table.Parts[part].WithVig.push_back(bet);
    table.Parts[part].HasLine |= bet == PassLine;
  }
  table.Moved = {};
  FindAllMoved();
}

unsigned StateCount() { return static_cast<unsigned>(table.States.size()); }

unsigned PartOfBet(int betId) { return table.PartOf[static_cast<unsigned>(betId)]; }

unsigned PartOfLine() { return table.LinePart; }

PartSet PartsMovedBy(const PartStates& states, unsigned total) {
  return table.Moved[PointOfParts(states)][total];
}

bool WorkingDiffers(std::uint16_t before, std::uint16_t after) {
  return table.States[before].Working != table.States[after].Working;
}

std::uint16_t StateOfMultiple(Currency multiple) {
  return FindState(kMultiplePart, std::array{multiple.Raw()}, [] { return State(); });
}

bool ReadParts(PartStates& states) {
  states[kMultiplePart] = StateOfMultiple(Game.OddsMultiple);
  Currency onTable;
  for (unsigned part = 0; part <= kRestPart; ++part) {
    states[part] = ReadState(part);
    onTable += table.States[states[part]].OnTable;
  }
  return onTable == Game.TotalOnTable;
}

std::uint16_t FindJoined(std::uint16_t first, std::uint16_t second, bool add) {
  const unsigned both = static_cast<unsigned>(first) << 16U | second;
  unsigned place = static_cast<unsigned>(both * kMix >> 40U) % kPlaces;
  for (; table.Places[place] != 0; place = (place + 1) % kPlaces) {
    const unsigned found = table.Places[place] - 1U;
    const State& state = table.States[found];
    if (state.Part == kJoined && state.FirstWord == both) return static_cast<std::uint16_t>(found);
  }
  if (!add) return 0;
  State state;
  state.FirstWord = both;
  state.Part = kJoined;
  return AddState(place, state);
}

std::uint16_t LineState(const PartStates& before, std::uint16_t multiple, unsigned total,
                        bool add) {
  const std::uint16_t state = before[table.LinePart];
  const State& line = table.States[state];
  if (total == 8 && line.Point == 0) return FindJoined(state, multiple, add);
  const bool decided = line.Point != 0 && (total == 7 || total == line.Point);
  return line.LineOddsAreOff && decided ? 0 : state;
}

unsigned char PointOfParts(const PartStates& states) {
  return table.States[states[table.LinePart]].Point;
}

Currency OnTableOfParts(const PartStates& states) {
  Currency sum;
  for (const unsigned state : states) sum += table.States[state].OnTable;
  return sum;
}

const LedgerProfile* ProfileOfParts(const PartStates& states, bool mayLoseOthers) {
  LedgerProfile& profile = FindProfile(states);
  if (profile.IsKept()) return &profile;
  if (!mayLoseOthers && !HasRoomForProfile()) return nullptr;
  std::array<std::int8_t, kBetSlots> working{};
  for (unsigned part = 0; part <= kRestPart; ++part) {
    const WorkingWords& words = table.Workings[part][table.States[states[part]].Working];
    const std::vector<int>& bets = table.Parts[part].Bets;
    for (unsigned i = 0; i < bets.size(); ++i)
      working[static_cast<unsigned>(bets[i])] = static_cast<std::int8_t>(WorkingOf(words, i));
  }
  KeepProfile(profile, working.data());
  return &profile;
}

void LayOutParts(const PartStates& states) {
  for (unsigned number = 0; number <= kRestPart; ++number) {
    const Part& part = table.Parts[number];
    const State& state = table.States[states[number]];
    const std::int64_t* word = &table.Words[state.FirstWord + 2];
    for (const int id : part.Bets) {
      const Currency amount = Currency::FromRaw(*word++);
      if (Game.Bets[id] == amount) continue;
      Game.Bets[id] = Game.BetsAfterRoll[id] = amount;
      Touch(id);
    }
    ForOtherFields(part, [&word](auto& field) { Store(field, *word++); });
    const WorkingWords& working = table.Workings[number][state.Working];
    for (unsigned i = 0; i < part.Bets.size(); ++i)
      Game.BetWorking[part.Bets[i]] = WorkingOf(working, i);
  }
  Game.OddsMultiple = Currency::FromRaw(table.Words[table.States[states[kMultiplePart]].FirstWord]);
  Game.TotalOnTable = OnTableOfParts(states);
  Game.Point = PointOfParts(states);
}
