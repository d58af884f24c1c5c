#include "rules/defaults.h"

#include <string>

#include "core/game_state.h"
#include "dice/matrix.h"
#include "rules/presets.h"
#include "stats/bankroll_graph.h"

namespace {

struct Ratio {
  int Win;
  int Per;
};

/// The default ratio of the bets `First` to `Last`.
struct RatioRange {
  int First;
  int Last;
  Ratio Pays;
};

constexpr std::array<Ratio, 6> kTakeOddsRatios = {{{2, 1}, {3, 2}, {6, 5}, {6, 5}, {3, 2}, {2, 1}}};
constexpr std::array<Ratio, 6> kLayOddsRatios = {{{1, 2}, {2, 3}, {5, 6}, {5, 6}, {2, 3}, {1, 2}}};
constexpr std::array<Ratio, 6> kPlaceRatios = {{{9, 5}, {7, 5}, {7, 6}, {7, 6}, {7, 5}, {9, 5}}};

/// What isn't listed pays 1 to 1.
constexpr std::array<RatioRange, 17> kPropRatios = {{
    {Hard4, Hard4, {7, 1}},
    {Hard6, Hard8, {9, 1}},
    {Hard10, Hard10, {7, 1}},
    {Two, Two, {30, 1}},
    {Three, Three, {15, 1}},
    {Seven, Seven, {4, 1}},
    {Eleven, Eleven, {15, 1}},
    {Twelve, Twelve, {30, 1}},
    {Craps, Craps, {7, 1}},
    {CAndE, CAndE, {1, 2}},
    {Horn, Horn, {1, 4}},
    {World, World, {1, 5}},
    {Hop13, Hop55, {15, 1}},
    {Hop22, Hop22, {30, 1}},
    {Hop33, Hop33, {30, 1}},
    {Hop44, Hop44, {30, 1}},
    {Hop55, Hop55, {30, 1}},
}};

PayoffRecord RecordOf(Ratio ratio) { return {ratio.Win, true, ratio.Per}; }

void SetFamily(PayoffTable& payoffs, int firstBet, const std::array<Ratio, 6>& ratios) {
  auto bet = static_cast<unsigned>(firstBet);
  for (const Ratio ratio : ratios) payoffs[bet++] = RecordOf(ratio);
}

void SetRange(PayoffTable& payoffs, const RatioRange& range) {
  for (int bet = range.First; bet <= range.Last; ++bet) {
    payoffs[static_cast<unsigned>(bet)] = RecordOf(range.Pays);
  }
}

void SetLineOdds(PayoffTable& payoffs, int point) {
  if (!IsPointNumber(point)) return;
  const auto come = static_cast<unsigned>(BetOnNumber(ComeOddsFamily, point));
  const auto dont = static_cast<unsigned>(BetOnNumber(DontComeOddsFamily, point));
  payoffs[PassLineOdds] = payoffs[come];
  payoffs[DontPassOdds] = payoffs[dont];
}

// Chip positions.

constexpr std::array<float, 6> kNumberColumns = {189, 243, 297, 351, 405, 459};

struct FamilyRow {
  int FirstBet;
  float Y;
};
constexpr std::array<FamilyRow, 7> kFamilyRows = {{{Lay4, 65},
                                                   {DontCome4, 90},
                                                   {DontCome4Odds, 99},
                                                   {Come4, 140},
                                                   {Come4Odds, 131},
                                                   {Place4, 165},
                                                   {Buy4, 165}}};

struct ChipPlace {
  int Id;
  float X;
  float Y;
};
constexpr std::array<ChipPlace, 28> kChipPlaces = {{
    {PassLine, 354, 360},     {PassLineOdds, 354, 387}, {Come, 354, 210},  {DontPass, 354, 329},
    {DontPassOdds, 327, 329}, {DontCome, 135, 165},     {Field, 354, 297}, {Big6, 104, 287},
    {Big8, 130, 328},         {Hard4, 524, 204},        {Hard6, 587, 204}, {Hard8, 587, 243},
    {Hard10, 524, 243},       {Two, 587, 282},          {Three, 524, 282}, {Seven, 524, 126},
    {Eleven, 524, 321},       {Twelve, 587, 321},       {Craps, 524, 165}, {CAndE, 463, 356},
    {Horn, 553, 360},         {World, 524, 360},        {Over7, 524, 113}, {Under7, 587, 113},
    {101, 16, 217},           {102, 16, 166},           {103, 16, 115},    {104, 16, 64},
}};

constexpr float kChipStackX = 16;
constexpr float kHopTop = 138;
constexpr float kHopStep = 25;
constexpr float kHopLeft = 524;
constexpr float kHopRight = 587;
constexpr std::array<int, 8> kLeftHops = {Hop13, Hop22, Hop14, Hop23, Hop36, Hop45, Hop55, Hop46};
constexpr std::array<int, 9> kRightHops = {Hop15, Hop33, Hop24, Hop16, Hop25,
                                           Hop34, Hop44, Hop26, Hop35};

void PlaceChips(int id, float x, float y) {
  Game.BetChipX[static_cast<unsigned>(id)] = x;
  Game.BetChipY[static_cast<unsigned>(id)] = y;
}

template <std::size_t Count>
void PlaceHopColumn(const std::array<int, Count>& hops, float x) {
  float y = kHopTop;
  for (const int hop : hops) {
    PlaceChips(hop, x, y);
    y += kHopStep;
  }
}

void SetChipPositions() {
  for (int id = ChipStackBase; id <= LastSlot; ++id) PlaceChips(id, kChipStackX, 0);
  for (const FamilyRow& row : kFamilyRows) {
    int bet = row.FirstBet;
    for (const float x : kNumberColumns) PlaceChips(bet++, x, row.Y);
  }
  for (const ChipPlace& place : kChipPlaces) PlaceChips(place.Id, place.X, place.Y);
  PlaceHopColumn(kLeftHops, kHopLeft);
  PlaceHopColumn(kRightHops, kHopRight);
}

void SetBetNames() {
  for (unsigned id = 0; id < kBetSlots; ++id) Game.BetNames[id] = kBetNames[id];
  Game.BetNames[Rail] = "Rail";
  for (int stack = 1; stack <= 4; ++stack) {
    Game.BetNames[static_cast<unsigned>(ChipStackBase + stack)] =
        "Chip-Stack # " + std::to_string(stack);
  }
}

void SetDefaultBankroll() {
  const Currency bankroll = Game.BankrollInitAmt;
  Game.Bets[BankrollIndex] = bankroll;
  Game.BetsAtRoll[BankrollIndex] = bankroll;
  Game.BetsAfterRoll[BankrollIndex] = bankroll;
  Game.InvestedBankroll = bankroll;
  Game.BankrollHigh = bankroll;
  Game.BankrollLow = bankroll;
  RestartGraph();
}

/// A point isn't set, so every bet stands as on the come-out.
void SetDefaultWorkingStates() {
  SetDefaultComeOutWorking();
  for (unsigned id = 1; id <= LastBet; ++id) Game.BetWorking[id] = Game.ComeOutWorking[id];
  Game.BetWorkingPrev = Game.BetWorking;
}

/// What outlives the defaults: what was found at the start, and the seeds.
struct KeptState {
  std::string AppPath = Game.AppPath;
  std::string DataPath = Game.DataPath;
  int ScreenWidth = Game.ScreenWidth;
  int ScreenHeight = Game.ScreenHeight;
  SoundState Sounds = Game;
  RunLimits Limits = Game;
  int RngState = Game.RngState;
  int LastSeed = Game.LastSeed;
  Ran1Record Ran1State = Game.Ran1State;
  Ran2Record Ran2State = Game.Ran2State;

  void PutBack() {
    Game.AppPath = AppPath;
    Game.DataPath = DataPath;
    Game.ScreenWidth = ScreenWidth;
    Game.ScreenHeight = ScreenHeight;
    static_cast<SoundState&>(Game) = Sounds;
    static_cast<RunLimits&>(Game) = Limits;
    Game.RngState = RngState;
    Game.LastSeed = LastSeed;
    Game.Ran1State = Ran1State;
    Game.Ran2State = Ran2State;
  }
};

}  // namespace

void LayDownDefaults() {
  KeptState kept;
  Game = GameState();
  kept.PutBack();
  Game.GamesLogFile = Game.DataPath + "default.glg";
  Game.EventsLogFile = Game.DataPath + "Events Log.txt";
  SetDefaultBankroll();
  Game.OddsMultiple = Game.OddsAllowed68;
  SetFairMatrix();
  SetDefaultWorkingStates();
  SetDefaultDenominations();
  SetDefaultPayoffs();
  SetBetNames();
  SetChipPositions();
}

PayoffTable DefaultPayoffs(int point) {
  PayoffTable payoffs;
  payoffs.fill(PayoffRecord());
  SetFamily(payoffs, Lay4, kLayOddsRatios);
  SetFamily(payoffs, DontCome4Odds, kLayOddsRatios);
  SetFamily(payoffs, Come4Odds, kTakeOddsRatios);
  SetFamily(payoffs, Place4, kPlaceRatios);
  SetFamily(payoffs, Buy4, kTakeOddsRatios);
  for (const RatioRange& range : kPropRatios) SetRange(payoffs, range);
  SetLineOdds(payoffs, point);
  return payoffs;
}

void SetDefaultPayoffs() {
  Game.Payoff = DefaultPayoffs(Game.Point);
  SetFieldPreset(0);
}

void SetDefaultComeOutWorking() {
  Game.ComeOutWorking.fill(NotWorking);
  for (int id = 1; id <= LastBet + 1; ++id) {
    const bool restsOnComeOut = (id >= Come4Odds && id <= Buy10) || id == PassLineOdds ||
                                id == Come || id == DontPassOdds || id == DontCome;
    Game.ComeOutWorking[static_cast<unsigned>(id)] = restsOnComeOut ? NotWorking : Working;
  }
}

void SetDefaultDenominations() {
  unsigned slot = SmallestChip;
  for (const int value : {1, 5, 25, 100, 500}) Game.Bets[slot++] = value;
}
