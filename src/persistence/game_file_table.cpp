#include "persistence/game_file_table.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <memory>

#include "autoplay/auto_play.h"
#include "core/limits.h"
#include "core/text.h"

namespace {

using enum SlotForm;

// --- Fields ---

template <auto Member>
FieldPointer Of(GameState& game, int) {
  return &(game.*Member);
}

/// An element of an array, counted from `First`.
template <auto Member, int First = 0>
FieldPointer In(GameState& game, int index) {
  return &(game.*Member)[static_cast<unsigned>(First + index)];
}

template <int At>
FieldPointer Window(GameState& game, int index) {
  WindowPlace& place = game.WindowPlaces[At];
  int* const values[] = {&place.State, &place.Top, &place.Left, &place.Width, &place.Height};
  return values[index];
}

/// The window of the file screen is never left open.
FieldPointer FileScreen(GameState& game, int index) { return Window<FileWindow>(game, index + 1); }

FieldPointer ThrownDice(GameState& game, int) { return DicePair{&game.Die1, &game.Die2}; }
FieldPointer PreviousDice(GameState& game, int) { return DicePair{&game.PrevDie1, &game.PrevDie2}; }
FieldPointer TypedBet(GameState& game, int) { return NumberText{&game.KeyedBetText}; }

enum class PayoffPart { Win, Word, Per };

FieldPointer PartOf(PayoffRecord& record, int part) {
  if (part == static_cast<int>(PayoffPart::Win)) return &record.Win;
  if (part == static_cast<int>(PayoffPart::Word)) return &record.ShownAsTo;
  return &record.Per;
}

/// All of one part, bets 1 to 100, then the next part.
FieldPointer BetPayoff(GameState& game, int index) {
  constexpr int kIds = 100;
  return PartOf(game.Payoff[static_cast<unsigned>(index % kIds + 1)], index / kIds);
}

FieldPointer FieldBetPayoff(GameState& game, int index) {
  return PartOf(game.FieldPayoff[static_cast<unsigned>(index % kFieldCombinations + 1)],
                index / kFieldCombinations);
}

template <auto Table>
FieldPointer StatsIn(GameState& game, int index) {
  constexpr int kPerKind = 100 * kBetStats;
  const auto at = static_cast<unsigned>(index % kPerKind);
  return &(game.*
           Table)[static_cast<unsigned>(index / kPerKind)][at / kBetStats + 1][at % kBetStats];
}

template <unsigned Column>
FieldPointer Streak(GameState& game, int index) {
  return &game.BetOutcome[static_cast<unsigned>(index + 1)][Column];
}

FieldPointer Gap(GameState& game, int index) {
  constexpr int kGaps = kLongGap + 1;
  return &game.RollGapTally[static_cast<unsigned>(index / kGaps + 1)]
                           [static_cast<unsigned>(index % kGaps)];
}

/// The operators that record 13 has no slot for.
FieldPointer OtherOperator(GameState& game, int index) {
  constexpr unsigned kEntries[] = {1, 3, 6, 7};
  return &game.ModifyOperator[kEntries[index]];
}

FieldPointer ProfileSwitch(GameState& game, int) { return &game.Profile.On; }

// --- Limits ---

constexpr std::int64_t kScale = Currency::kScale;

constexpr SlotLimits Whole(std::int64_t low, std::int64_t high) {
  return {low * kScale, high * kScale};
}
constexpr SlotLimits WholeElse(std::int64_t low, std::int64_t high, std::int64_t instead) {
  return {low * kScale, high * kScale, instead * kScale};
}
constexpr SlotLimits Raw(std::int64_t low, std::int64_t high) { return {low, high}; }

constexpr SlotLimits kAnyWhole = Whole(INT_MIN, INT_MAX);
constexpr SlotLimits kTruth = Whole(-1, 0);
constexpr SlotLimits kCount = Whole(0, kMaxRolls);
constexpr SlotLimits kFromZero = Whole(0, INT_MAX);
constexpr SlotLimits UpTo(Currency most) { return {0, most.Raw()}; }
constexpr SlotLimits Around(Currency most) { return {-most.Raw(), most.Raw()}; }
constexpr SlotLimits kMoney = Around(kMostMoney);
constexpr SlotLimits kPositive = UpTo(kMostMoney);
constexpr SlotLimits kBet = UpTo(kMostBet);
constexpr SlotLimits kOdds = UpTo(kMostOdds);
constexpr SlotLimits kRatio = Around(kMostPayoff);
constexpr SlotLimits kSum = UpTo(kMostSum);

constexpr int kSlowestThrottle = 10;
constexpr int kLargestFont = 400;
constexpr int kLastTapePosition = 2'000'000'000;

/// The largest scale of the bankroll graph.
constexpr std::int64_t kLargestGraphScale = 40'000LL * 1'000'000 * kScale;

// --- The table ---

constexpr FieldRow kWindowTable[] = {
    {"frmCrapTable", 7, 0, LongSlot, Window<TableWindow>, kAnyWhole, 5, 5},
    {"frmBankroll", 8, 0, LongSlot, Window<BankrollWindow>, kAnyWhole, 5, 5},
    {"frmSummary", 8, 20, LongSlot, Window<SummaryWindow>, kAnyWhole, 5, 5},
    {"frmRollTotals", 8, 40, LongSlot, Window<RollTotalsWindow>, kAnyWhole, 5, 5},
    {"frmRollFreqs", 8, 60, LongSlot, Window<RollFreqsWindow>, kAnyWhole, 5, 5},
    {"frmBetResults", 8, 80, LongSlot, Window<BetResultsWindow>, kAnyWhole, 5, 5},
    {"frmBetTrends", 8, 100, LongSlot, Window<BetTrendsWindow>, kAnyWhole, 5, 5},
    {"frmStackValues", 8, 120, LongSlot, Window<StackValuesWindow>, kAnyWhole, 5, 5},
    {"frmFlags", 8, 140, LongSlot, Window<FlagsWindow>, kAnyWhole, 5, 5},
    {"frmGames", 8, 160, LongSlot, Window<GamesWindow>, kAnyWhole, 5, 5},
    {"frmAutoBet", 8, 180, LongSlot, Window<AutoBetWindow>, kAnyWhole, 5, 5},
    {"frmDiceRollFiles", 8, 200, LongSlot, Window<DiceRollFilesWindow>, kAnyWhole, 5, 5},
    {"frmFile", 8, 220, LongSlot, FileScreen, kAnyWhole, 4, 4},
    {"frmRYON", 8, 236, LongSlot, Window<RollPadWindow>, kAnyWhole, 5, 5},
    {"frmEventsLog", 9, 0, LongSlot, Window<EventsLogWindow>, kAnyWhole, 5, 5},
    // Our own, which stand behind the marker.
    {"frmAutoPlay", 9, 20, LongSlot, Window<AutoPlayWindow>, kAnyWhole, 5, 5},
    {"frmConfigure", 9, 40, LongSlot, Window<ConfigureWindow>, kAnyWhole, 5, 5},
    {"frmSteps", 9, 60, LongSlot, Window<StepsWindow>, kAnyWhole, 5, 5},
    {"frmHotKeys", 9, 80, LongSlot, Window<HotKeysWindow>, kAnyWhole, 5, 5},
};

using G = GameState;

constexpr FieldRow kGameTable[] = {
    // Checks, dice, sound, comps, misc.
    {"ConfigTab", 10, 0, CurrencySlot, Of<&G::ConfigTab>, Whole(0, 9)},
    {"ChipColor", 10, 8, CurrencySlot, Of<&G::ChipColor>, Whole(1, 91)},
    {"ChipStyle", 10, 16, CurrencySlot, Of<&G::ChipStyle>, Whole(1, kChipStyles)},
    {"DiceStyle", 10, 24, CurrencySlot, Of<&G::DiceStyle>, WholeElse(1, kDiceStyles, 1)},
    {"DiceAction", 10, 32, CurrencySlot, Of<&G::DiceAction>, Whole(0, DiceRemainOnTable)},
    {"SimRollsPerHour", 10, 40, CurrencySlot, Of<&G::SimRollsPerHour>, Raw(1, 36'000'000 * kScale)},
    {"UseCentsSymbol", 10, 48, CurrencySlot, Of<&G::UseCentsSymbol>, kTruth},
    {"StickPerson", 10, 56, CurrencySlot, Of<&G::StickPerson>, kFromZero},
    {"DiceSound", 10, 64, CurrencySlot, Of<&G::DiceSound>, kFromZero},
    {"ChipSound", 10, 72, CurrencySlot, Of<&G::ChipSound>, kFromZero},
    {"WinSound", 10, 80, CurrencySlot, Of<&G::WinSound>, kFromZero},
    {"AutoBetSounds", 10, 88, CurrencySlot, Of<&G::AutoBetSounds>, kTruth},
    {"DisableAllSound", 10, 96, CurrencySlot, Of<&G::DisableAllSound>, kTruth},
    {"CompBetMask", 10, 104, CurrencySlot, In<&G::CompBetMask>, kAnyWhole, 3, 3},
    {"BaseComps", 10, 128, CurrencySlot, Of<&G::BaseComps>, Whole(0, 2)},
    {"CompsUseTrueProbs", 10, 136, CurrencySlot, Of<&G::CompsUseTrueProbs>, kTruth},
    {"CompRate", 10, 144, CurrencySlot, Of<&G::CompRate>, kPositive},
    {"Notify", 10, 152, CurrencySlot, Of<&G::Notify>, WholeElse(0, 31, 15)},
    {"PrintSettings", 10, 160, CurrencySlot, In<&G::PrintSettings>, Whole(0, 15), 3, 3},
    {"SnapMouse", 10, 184, CurrencySlot, Of<&G::SnapMouse>, kTruth},
    {"RngChoice", 10, 192, CurrencySlot, Of<&G::RngChoice>, Whole(0, kGenerators - 1)},
    {"UserSeed", 10, 200, CurrencySlot, Of<&G::UserSeed>, kTruth},
    {"ReSeed", 10, 208, CurrencySlot, Of<&G::ReSeed>, kTruth},

    // Limits, vig, dice and bankroll.
    {"MinPlacard", 11, 0, CurrencySlot, Of<&G::MinPlacard>, kBet},
    {"MaxPlacard", 11, 8, CurrencySlot, Of<&G::MaxPlacard>, kBet},
    {"OddsAllowed410", 11, 16, CurrencySlot, Of<&G::OddsAllowed410>, kOdds},
    {"OddsAllowed59", 11, 24, CurrencySlot, Of<&G::OddsAllowed59>, kOdds},
    {"OddsAllowed68", 11, 32, CurrencySlot, Of<&G::OddsAllowed68>, kOdds},
    {"OddsCalcMethod", 11, 40, CurrencySlot, Of<&G::OddsCalcMethod>,
     WholeElse(0, OddsSingleOfFlat, OddsAutoSelect)},
    {"BarDont", 11, 48, CurrencySlot, Of<&G::BarDont>, Whole(2, 12)},
    {"LayVigPct", 11, 56, CurrencySlot, Of<&G::LayVigPct>, UpTo(kMostVig)},
    {"RoundLayVig", 11, 64, CurrencySlot, Of<&G::RoundLayVig>, Whole(0, RoundedUp)},
    {"LayVigUpFront", 11, 72, CurrencySlot, Of<&G::LayVigUpFront>, kTruth},
    {"BuyVigPct", 11, 80, CurrencySlot, Of<&G::BuyVigPct>, UpTo(kMostVig)},
    {"RoundBuyVig", 11, 88, CurrencySlot, Of<&G::RoundBuyVig>, Whole(0, RoundedUp)},
    {"BuyVigUpFront", 11, 96, CurrencySlot, Of<&G::BuyVigUpFront>, kTruth},
    {"AllowPutBets", 11, 104, CurrencySlot, Of<&G::AllowPutBets>, kTruth},
    {"UseSkewedProbability", 11, 112, CurrencySlot, Of<&G::UseSkewedProbability>, kTruth},
    {"ProbabilityView", 11, 120, CurrencySlot, Of<&G::ProbabilityView>, Whole(0, 3)},
    {"RollsOutOf", 11, 128, CurrencySlot, Of<&G::RollsOutOf>, UpTo(kMostRollsOutOf)},
    {"IncludeZeroOutcomes", 11, 136, CurrencySlot, Of<&G::IncludeZeroOutcomes>, kTruth},
    {"ShowMiscData", 11, 144, CurrencySlot, Of<&G::ShowMiscData>, kTruth},
    {"AdvantageScroll", 11, 152, CurrencySlot, Of<&G::AdvantageScroll>, kFromZero},
    {"PayoffsScroll", 11, 160, CurrencySlot, Of<&G::PayoffsScroll>, kFromZero},
    {"NegBankroll", 11, 168, CurrencySlot, Of<&G::NegBankroll>, kTruth},
    {"BankrollInitType", 11, 176, CurrencySlot, Of<&G::BankrollInitType>,
     Whole(0, CarryBankrollAndNet)},
    {"BankrollInitAmt", 11, 184, CurrencySlot, Of<&G::BankrollInitAmt>, kMoney},
    {"AtmAmount", 11, 192, CurrencySlot, Of<&G::AtmAmount>, kPositive},
    {"BankrollSum", 11, 200, CurrencySlot, Of<&G::BankrollSum>, Around(kMostSum)},
    {"InvestedBankroll", 11, 208, CurrencySlot, Of<&G::InvestedBankroll>, kMoney},
    {"MaxPropPayoff", 11, 216, CurrencySlot, Of<&G::MaxPropPayoff>, kPositive},
    {"MaxOddsBet", 11, 224, CurrencySlot, Of<&G::MaxOddsBet>, kBet},

    // Auto-Play.
    {"AutoAdjust", 12, 0, CurrencySlot, Of<&G::AutoAdjust>, Whole(0, AdjustColor)},
    {"AutoArrangeChips", 12, 8, CurrencySlot, Of<&G::AutoArrangeChips>, kTruth},
    {"AutoTakeFullOdds", 12, 16, CurrencySlot, Of<&G::AutoTakeFullOdds>, kTruth},
    {"AutoLayFullOdds", 12, 24, CurrencySlot, Of<&G::AutoLayFullOdds>, kTruth},
    {"AutoRemovePlace", 12, 32, CurrencySlot, Of<&G::AutoRemovePlace>, kTruth},
    {"HandleWinningBets", 12, 40, CurrencySlot, Of<&G::HandleWinningBets>, Whole(0, WinSetBet)},
    {"HandleLosingBets", 12, 48, CurrencySlot, Of<&G::HandleLosingBets>, Whole(0, LossSetBet)},
    {"AutoRollDice", 12, 56, CurrencySlot, Of<&G::AutoRollDice>, kTruth},
    {"NumAutoRolls", 12, 64, CurrencySlot, Of<&G::NumAutoRolls>, kCount},
    {"AutoRollsLeft", 12, 72, CurrencySlot, Of<&G::AutoRollsLeft>, kCount},
    {"AutoRollDelay", 12, 80, CurrencySlot, Of<&G::AutoRollDelay>, Whole(0, kMaxAutoRollDelay)},
    {"AutoStopOn", 12, 88, CurrencySlot, In<&G::AutoStopOn>, kTruth, kAutoStops, kAutoStops},
    {"LayBias", 12, 224, CurrencySlot, Of<&G::LayBias>, Whole(0, BiasDecrease)},
    {"PlaceBias", 12, 232, CurrencySlot, Of<&G::PlaceBias>, Whole(0, BiasDecrease)},
    {"DoBias", 12, 240, CurrencySlot, Of<&G::DoBias>, Whole(0, BiasDecrease)},
    {"DontBias", 12, 248, CurrencySlot, Of<&G::DontBias>, Whole(0, BiasDecrease)},
    {"ModifyOperator(0)", 13, 0, CurrencySlot, In<&G::ModifyOperator, 0>, Whole(0, ModifyDivide)},
    {"ModifyOperator(2)", 13, 8, CurrencySlot, In<&G::ModifyOperator, 2>, Whole(0, ModifyDivide)},
    {"ModifyOperator(4, 5)", 13, 16, CurrencySlot, In<&G::ModifyOperator, 4>,
     Whole(0, ModifyDivide), 2, 2},
    {"ModifyAmount", 13, 32, CurrencySlot, In<&G::ModifyAmount>, kMoney, kModifySlots,
     kModifySlots},
    {"ModifyUnit(0-5)", 13, 96, CurrencySlot, In<&G::ModifyUnit>, Whole(0, ModifyLastChip), 6, 6},

    // Roll totals, the table and the graph.
    {"RollTotalsDisplay", 13, 144, CurrencySlot, Of<&G::RollTotalsDisplay>, Whole(0, 3)},
    {"RollTotalsBackColor", 13, 152, CurrencySlot, Of<&G::RollTotalsBackColor>, Whole(0, 15)},
    {"RollTotalsGraphColor", 13, 160, CurrencySlot, Of<&G::RollTotalsGraphColor>, Whole(0, 9)},
    {"RollTotalsView", 13, 168, CurrencySlot, In<&G::RollTotalsView>, kAnyWhole, 2, 2},
    {"KeyInBetAmounts", 14, 8, CurrencySlot, Of<&G::KeyInBetAmounts>, kTruth},
    {"DisplayBetAmounts", 14, 16, CurrencySlot, Of<&G::DisplayBetAmounts>, kTruth},
    {"RollYourOwnNumbers", 14, 24, CurrencySlot, Of<&G::RollYourOwnNumbers>, kTruth},
    {"KeyedBetText", 14, 32, CurrencySlot, TypedBet, kMoney},
    {"DisplayHopBets", 14, 40, CurrencySlot, Of<&G::DisplayHopBets>, kTruth},
    {"ChipCount", 14, 48, CurrencySlot, Of<&G::ChipCount>, Whole(0, kMaxChips)},
    {"Point", 14, 56, CurrencySlot, Of<&G::Point>, Whole(0, 10)},
    {"PrevPoint", 14, 64, CurrencySlot, Of<&G::PrevPoint>, Whole(0, 10)},
    {"PrevPrevPoint", 14, 72, CurrencySlot, Of<&G::PrevPrevPoint>, Whole(0, 10)},
    {"Die1, Die2", 14, 80, CurrencySlot, ThrownDice, Whole(11, 66)},
    {"PrevDie1, PrevDie2", 14, 88, CurrencySlot, PreviousDice, Whole(11, 66)},
    {"TotalOnTable", 14, 96, CurrencySlot, Of<&G::TotalOnTable>, kMoney},
    {"AutoBetActive", 14, 104, CurrencySlot, Of<&G::AutoBetActive>, Whole(0, 1)},
    {"ShowStepsMode", 14, 112, CurrencySlot, Of<&G::ShowStepsMode>, Whole(-1, 1)},
    {"ShowLineNumbers", 14, 120, CurrencySlot, Of<&G::ShowLineNumbers>, kTruth},
    {"BankrollHigh", 14, 136, CurrencySlot, Of<&G::BankrollHigh>, kMoney},
    {"BankrollLow", 14, 144, CurrencySlot, Of<&G::BankrollLow>, kMoney},
    {"BankrollHistoryCount", 14, 152, CurrencySlot, Of<&G::BankrollHistoryCount>,
     Whole(0, kGraphPoints)},
    {"BankrollAutoPrint", 14, 160, CurrencySlot, Of<&G::BankrollAutoPrint>, kTruth},
    {"GraphScale", 14, 168, CurrencySlot, Of<&G::GraphScale>, Raw(100, kLargestGraphScale)},
    {"GraphBaseScale", 14, 176, CurrencySlot, Of<&G::GraphBaseScale>, Raw(100, kLargestGraphScale)},
    {"GraphTop", 14, 184, CurrencySlot, Of<&G::GraphTop>, kMoney},
    {"BankrollRefLines", 14, 192, CurrencySlot, Of<&G::BankrollRefLines>, kTruth},
    {"BankrollGraphDisplay", 14, 200, CurrencySlot, Of<&G::BankrollGraphDisplay>, kAnyWhole},
    {"BankrollAutoAdjustType", 14, 208, CurrencySlot, Of<&G::BankrollAutoAdjustType>, Whole(0, 2)},
    {"BankrollGraphType", 14, 216, CurrencySlot, Of<&G::BankrollGraphType>, Whole(0, 2)},
    {"BankrollGridLines", 14, 224, CurrencySlot, Of<&G::BankrollGridLines>, kTruth},
    {"BankrollShowAverage", 14, 232, CurrencySlot, Of<&G::BankrollShowAverage>, kTruth},
    {"BankrollAverageSpan", 14, 240, CurrencySlot, Of<&G::BankrollAverageSpan>,
     Whole(0, kGraphPoints)},
    {"HyperThrottle", 14, 248, CurrencySlot, Of<&G::HyperThrottle>, Whole(0, kSlowestThrottle)},

    // The Events Log.
    {"EventsLogActive", 15, 0, LongSlot, Of<&G::EventsLogActive>, kTruth},
    {"ClearLogOnNew", 15, 4, LongSlot, Of<&G::ClearLogOnNew>, kTruth},
    {"KeepLatestRollOnTop", 15, 8, LongSlot, Of<&G::KeepLatestRollOnTop>, kTruth},
    {"LogFontSize", 15, 12, LongSlot, Of<&G::LogFontSize>, WholeElse(1, kLargestFont, 9)},
    {"LogFontBold", 15, 16, LongSlot, Of<&G::LogFontBold>, kTruth},
    {"LogFontItalic", 15, 20, LongSlot, Of<&G::LogFontItalic>, kTruth},
    {"LogBetsWon", 15, 24, LongSlot, Of<&G::LogBetsWon>, kTruth},
    {"LogBetsLost", 15, 28, LongSlot, Of<&G::LogBetsLost>, kTruth},
    {"LogBetChanges", 15, 32, LongSlot, Of<&G::LogBetChanges>, kTruth},
    {"LogChipStackChanges", 15, 36, LongSlot, Of<&G::LogChipStackChanges>, kTruth},
    {"LogPassesMisses", 15, 40, LongSlot, Of<&G::LogPassesMisses>, kTruth},
    {"LogShooterChanges", 15, 44, LongSlot, Of<&G::LogShooterChanges>, kTruth},
    {"LogBankrollChanges", 15, 48, LongSlot, Of<&G::LogBankrollChanges>, kTruth},
    {"LogRolls", 15, 52, LongSlot, Of<&G::LogRolls>, kTruth},

    // Dice tapes, Chip-Stacks, statistics screens, the roll pad.
    {"DicePairSelected", 16, 0, IntegerSlot, In<&G::DicePairSelected>, kTruth, 36, 36},
    {"RecorderStatus", 17, 0, CurrencySlot, Of<&G::RecorderStatus>, Whole(0, Playback)},
    {"InsertRolls", 17, 8, CurrencySlot, Of<&G::InsertRolls>, Whole(0, 1)},
    {"ShowDieNumbers", 17, 16, CurrencySlot, Of<&G::ShowDieNumbers>, kTruth},
    {"ShowRollNumbers", 17, 24, CurrencySlot, Of<&G::ShowRollNumbers>, kTruth},
    {"PrintSelectedRolls", 17, 32, CurrencySlot, Of<&G::PrintSelectedRolls>, kTruth},
    {"DiceFontSize", 17, 40, CurrencySlot, Of<&G::DiceFontSize>, WholeElse(1, kLargestFont, 9)},
    {"DiceFilePos", 17, 48, CurrencySlot, Of<&G::DiceFilePos>, Whole(1, kLastTapePosition)},
    {"DiceFileLast", 17, 56, CurrencySlot, Of<&G::DiceFileLast>, Whole(0, kLastTapePosition)},
    {"StackValuesView", 17, 64, CurrencySlot, In<&G::StackValuesView>, kAnyWhole, 2, 2},
    {"VisibleStacks", 17, 80, CurrencySlot, In<&G::VisibleStacks>, Whole(FirstChipStack, LastSlot),
     4, 4},
    {"ShowVsSkewed", 17, 112, CurrencySlot, Of<&G::ShowVsSkewed>, kTruth},
    {"RollFreqChoice", 17, 120, CurrencySlot, Of<&G::RollFreqChoice>, Whole(0, 87)},
    {"GamesView", 17, 128, CurrencySlot, In<&G::GamesView>, kAnyWhole, 2, 2},
    {"ShowNumbersCalled", 17, 144, CurrencySlot, Of<&G::ShowNumbersCalled>, kTruth},
    {"PadDisplay", 17, 152, CurrencySlot, Of<&G::PadDisplay>, Whole(0, 3)},
    {"PadColor", 17, 160, CurrencySlot, Of<&G::PadColor>, Whole(0, 2)},

    // Generators and colours.
    {"RngState", 18, 0, LongSlot, Of<&G::RngState>, kAnyWhole},
    {"LastSeed", 18, 4, LongSlot, Of<&G::LastSeed>, kAnyWhole},
    {"TableColor", 18, 8, ColorSlot, In<&G::TableColor>, Whole(0, 0xFFFFFF), kTableColors,
     kTableColors},
    {"TableFeltPattern", 18, 40, LongSlot, Of<&G::TableFeltPattern>, Whole(0, 8)},
    {"EventsLogActive", 18, 44, LongSlot, Of<&G::EventsLogActive>, kTruth},

    // Our own.
    {"LogTopLine", 18, 52, LongSlot, Of<&G::LogTopLine>, Whole(1, INT_MAX)},
    {"DiceFileEnd", 18, 56, LongSlot, Of<&G::DiceFileEnd>, Whole(0, kLastTapePosition)},
    {"PayoffCellLeft", 18, 60, LongSlot, Of<&G::PayoffCellLeft>, kFromZero},
    {"PayoffCellTop", 18, 64, LongSlot, Of<&G::PayoffCellTop>, kFromZero},
    {"BankrollGraphColor", 18, 68, LongSlot, Of<&G::BankrollGraphColor>, Whole(0, 7)},
    {"ModifyOperator(1, 3, 6, 7)", 18, 72, IntegerSlot, OtherOperator, Whole(0, ModifyDivide), 4,
     4},
    {"ModifyUnit(6, 7)", 18, 80, CurrencySlot, In<&G::ModifyUnit, 6>, Whole(0, ModifyLastChip), 2,
     2},
    {"WagerSquares", 19, 208, DoubleSlot, In<&G::WagerSquares, Lay4>, {}, LastBet, 6, 0, true},
    {"BetResultsChoice", 18, 96, TextSlot, Of<&G::BetResultsChoice>, {}, 1, 1, 84},
    {"ColorPrint", 18, 180, IntegerSlot, Of<&G::ColorPrint>, kTruth},
    {"PadShowCounter", 18, 182, IntegerSlot, Of<&G::PadShowCounter>, kTruth},
    {"PadShowHyperDrive", 18, 184, IntegerSlot, Of<&G::PadShowHyperDrive>, kTruth},
    {"PadShowRandom", 18, 186, IntegerSlot, Of<&G::PadShowRandom>, kTruth},
    {"OddsMultiple", 18, 188, CurrencySlot, Of<&G::OddsMultiple>, kOdds},
    {"ProfileOn", 18, 196, IntegerSlot, ProfileSwitch, kTruth},

    // Bets.
    {"Bets(0-199)", 19, 0, CurrencySlot, In<&G::Bets>, kMoney, 200, 25},
    {"Bets(200)", 26, 200, CurrencySlot, In<&G::Bets, LastSlot>, kMoney},
    {"BetsAtRoll(0-199)", 27, 0, CurrencySlot, In<&G::BetsAtRoll>, kMoney, 200, 25},
    {"BetsAtRoll(200)", 34, 200, CurrencySlot, In<&G::BetsAtRoll, LastSlot>, kMoney},
    {"BetsAfterRoll(0-199)", 35, 0, CurrencySlot, In<&G::BetsAfterRoll>, kMoney, 200, 25},
    {"BetsAfterRoll(200)", 42, 200, CurrencySlot, In<&G::BetsAfterRoll, LastSlot>, kMoney},
    {"ContractBets(0-45)", 43, 0, CurrencySlot, In<&G::ContractBets>, kMoney, 46, 23},
    {"ContractBets(46)", 44, 200, CurrencySlot, In<&G::ContractBets, DontPass>, kMoney},
    {"LayVigHeld", 45, 8, CurrencySlot, In<&G::LayVigHeld>, kPositive, 6, 6},
    {"BuyVigHeld", 45, 56, CurrencySlot, In<&G::BuyVigHeld>, kPositive, 6, 6},
    {"ComeOutWorking", 46, 0, IntegerSlot, In<&G::ComeOutWorking>, Whole(NotWorking, Working), 101,
     101},
    {"BetWorking", 47, 2, IntegerSlot, In<&G::BetWorking, 1>, Whole(CalledOff, CalledOn), 100, 100},
    {"Payoff", 48, 0, CurrencySlot, BetPayoff, kRatio, 300, 32},
    {"FieldPayoff", 58, 0, CurrencySlot, FieldBetPayoff, kRatio, 3 * kFieldCombinations, 32},

    // Statistics.
    {"BetWagers", 60, 0, CurrencySlot, StatsIn<&G::BetWagers>, kSum, 1600, 32},
    {"BetWins", 110, 0, CurrencySlot, StatsIn<&G::BetWins>, kSum, 1600, 32},
    {"BetLosses", 160, 0, CurrencySlot, StatsIn<&G::BetLosses>, kSum, 1600, 32},
    {"BankrollHistory(0)", 210, 0, CurrencySlot, In<&G::BankrollHistory>, kCount},
    {"BankrollHistory(1-31)", 210, 8, CurrencySlot, In<&G::BankrollHistory, 1>, kMoney, 31, 31},
    {"BankrollHistory(32-1050)", 211, 0, CurrencySlot, In<&G::BankrollHistory, 32>, kMoney, 1019,
     32},
    {"BetOutcome(0)", 243, 0, IntegerSlot, Streak<0>, Whole(SHRT_MIN, SHRT_MAX), 100, 100},
    {"BetOutcome(1)", 244, 0, IntegerSlot, Streak<1>, Whole(SHRT_MIN, SHRT_MAX), 100, 100},
    {"RollCount", 245, 0, LongSlot, In<&G::RollCount>, kCount, kRollEvents, 64},
    {"RollsSince", 247, 0, LongSlot, In<&G::RollsSince>, kCount, kRollEvents, 64},
    {"ShooterEvent", 249, 0, LongSlot, In<&G::ShooterEvent>, kCount, kRollEvents, 64},
    {"ShooterEventPrev", 251, 0, LongSlot, In<&G::ShooterEventPrev>, kCount, kRollEvents, 64},
    {"ShooterSince", 253, 0, LongSlot, In<&G::ShooterSince>, kCount, kRollEvents, 64},
    {"ShooterSincePrev", 255, 0, LongSlot, In<&G::ShooterSincePrev>, kCount, kRollEvents, 64},
    {"RollGapTally", 257, 0, LongSlot, Gap, kCount, 90 * (kLongGap + 1), 64},
    {"ShooterStats", 540, 0, LongSlot, In<&G::ShooterStats>, kCount, kShooterStats, kShooterStats},

    {"ChipStackName", 541, 0, TextSlot, In<&G::ChipStackName>, {}, 100, 3, 80},
};

// --- Values ---

/// The whole number nearest to a count of ten-thousandths.
std::int64_t Rounded(std::int64_t raw) {
  const std::int64_t whole = raw / kScale;
  const std::int64_t rest = raw % kScale;
  if (rest >= kScale / 2) return whole + 1;
  return rest <= -kScale / 2 ? whole - 1 : whole;
}

int RoundedInt(std::int64_t raw) {
  return static_cast<int>(std::clamp<std::int64_t>(Rounded(raw), INT_MIN, INT_MAX));
}

/// A number of ten-thousandths that no slot can overflow.
std::int64_t RawOf(double value) {
  if (std::isnan(value)) return 0;
  const double most = static_cast<double>(kMostMoney.Raw());
  return std::llround(std::clamp(value * kScale, -most, most));
}

/// Reads a field as ten-thousandths.
struct RawReader {
  std::int64_t operator()(const Currency* field) const { return field->Raw(); }
  std::int64_t operator()(const int* field) const { return *field * kScale; }
  std::int64_t operator()(const std::uint32_t* field) const {
    return static_cast<std::int32_t>(*field) * kScale;
  }
  std::int64_t operator()(const bool* field) const { return *field ? -kScale : 0; }
  std::int64_t operator()(const float* field) const { return RawOf(*field); }
  std::int64_t operator()(const double* field) const { return RawOf(*field); }
  std::int64_t operator()(const std::string*) const { return 0; }
  std::int64_t operator()(DicePair dice) const {
    return (*dice.First * 10 + *dice.Second) * kScale;
  }
  std::int64_t operator()(NumberText number) const { return ParseAmount(*number.Text).Raw(); }
};

/// Stores ten-thousandths in a field.
struct RawWriter {
  std::int64_t Raw;

  void operator()(Currency* field) const { *field = Currency::FromRaw(Raw); }
  void operator()(int* field) const { *field = RoundedInt(Raw); }
  void operator()(std::uint32_t* field) const {
    *field = static_cast<std::uint32_t>(RoundedInt(Raw));
  }
  void operator()(bool* field) const { *field = Raw != 0; }
  void operator()(float* field) const { *field = static_cast<float>(Rounded(Raw)); }
  void operator()(double* field) const { *field = static_cast<double>(Raw) / kScale; }
  void operator()(std::string*) const {}
  void operator()(DicePair dice) const {
    const int value = RoundedInt(Raw);
    *dice.First = std::clamp(value / 10, 1, 6);
    *dice.Second = std::clamp(value % 10, 1, 6);
  }
  void operator()(NumberText number) const {
    *number.Text = Raw == 0 ? std::string() : PlainText(Currency::FromRaw(Raw));
  }
};

std::int64_t Bounded(std::int64_t raw, const SlotLimits& limits, bool truth) {
  if (truth) return raw;  // whatever isn't 0 is true
  if (raw >= limits.Low && raw <= limits.High) return raw;
  if (limits.Instead != SlotLimits::kNearest) return limits.Instead;
  return std::clamp(raw, limits.Low, limits.High);
}

// --- Slots ---

std::uint32_t SwapRedAndBlue(std::uint32_t color) {
  return (color & 0xFF) << 16 | (color & 0xFF00) | (color >> 16 & 0xFF);
}

struct SlotPlace {
  std::size_t Record;
  std::size_t Offset;
};

SlotPlace PlaceOf(const FieldRow& row, int index) {
  const int width = row.Form == TextSlot ? row.TextWidth : WidthOf(row.Form);
  return {static_cast<std::size_t>(row.Record + index / row.PerRecord),
          static_cast<std::size_t>(row.Offset + index % row.PerRecord * width)};
}

void PutSlot(Record& record, std::size_t offset, SlotForm form, std::int64_t raw) {
  switch (form) {
    case CurrencySlot: record.PutMoney(offset, Currency::FromRaw(raw)); break;
    case LongSlot: record.PutLong(offset, RoundedInt(raw)); break;
    case ColorSlot:
      record.PutLong(offset, static_cast<std::int32_t>(
                                 SwapRedAndBlue(static_cast<std::uint32_t>(RoundedInt(raw)))));
      break;
    default:
      record.PutInteger(offset,
                        static_cast<std::int16_t>(std::clamp(RoundedInt(raw), SHRT_MIN, SHRT_MAX)));
  }
}

std::int64_t TakeSlot(const Record& record, std::size_t offset, SlotForm form) {
  switch (form) {
    case CurrencySlot: return record.Money(offset).Raw();
    case LongSlot: return record.Long(offset) * kScale;
    case ColorSlot: return SwapRedAndBlue(static_cast<std::uint32_t>(record.Long(offset))) * kScale;
    default: return record.Integer(offset) * kScale;
  }
}

bool IsOwnField(const FieldRow& row) {
  constexpr int kLastWindowsRecord = 9;
  constexpr int kOwnWindowsOffset = 20;
  return row.Own || (row.Record == kOwnFieldsRecord && row.Offset >= kOwnFieldsOffset) ||
         (row.Record == kLastWindowsRecord && row.Offset >= kOwnWindowsOffset);
}

void CopyField(const FieldRow& row, GameState& from, GameState& to) {
  for (int index = 0; index < row.Count; ++index) {
    const FieldPointer source = row.Field(from, index);
    const FieldPointer target = row.Field(to, index);
    if (row.Form == TextSlot)
      *std::get<std::string*>(target) = *std::get<std::string*>(source);
    else if (row.Form == DoubleSlot)
      *std::get<double*>(target) = *std::get<double*>(source);
    else
      std::visit(RawWriter{std::visit(RawReader(), source)}, target);
  }
}

/// What our own fields are in a file that another program wrote.
void TakeOwnDefaults(std::span<const FieldRow> rows, GameState& game) {
  const auto fresh = std::make_unique<GameState>();
  fresh->OddsMultiple = game.OddsAllowed68;
  for (const FieldRow& row : rows) {
    if (IsOwnField(row)) CopyField(row, *fresh, game);
  }
}

bool HasOwnFields(const RecordFile& file) {
  return file.At(kOwnFieldsRecord).Text(kOwnFieldsOffset, kOwnFieldsMarker.size()) ==
         kOwnFieldsMarker;
}

void TakeField(const FieldRow& row, const RecordFile& file, GameState& game) {
  for (int index = 0; index < row.Count; ++index) {
    const SlotPlace place = PlaceOf(row, index);
    if (place.Record > file.Records.size()) return;
    const Record& record = file.Records[place.Record - 1];
    const FieldPointer field = row.Field(game, index);
    if (row.Form == TextSlot) {
      *std::get<std::string*>(field) =
          record.Text(place.Offset, static_cast<std::size_t>(row.TextWidth));
      continue;
    }
    if (row.Form == DoubleSlot) {
      const double value = record.Double(place.Offset);
      *std::get<double*>(field) = std::isfinite(value) ? std::max(value, 0.0) : 0;
      continue;
    }
    const bool truth = std::holds_alternative<bool*>(field);
    std::visit(RawWriter{Bounded(TakeSlot(record, place.Offset, row.Form), row.Limits, truth)},
               field);
  }
}

void PutField(const FieldRow& row, GameState& game, std::vector<Record>& records) {
  for (int index = 0; index < row.Count; ++index) {
    const SlotPlace place = PlaceOf(row, index);
    Record& record = records.at(place.Record - 1);
    const FieldPointer field = row.Field(game, index);
    if (row.Form == TextSlot)
      record.PutText(place.Offset, static_cast<std::size_t>(row.TextWidth),
                     *std::get<std::string*>(field));
    else if (row.Form == DoubleSlot)
      record.PutDouble(place.Offset, *std::get<double*>(field));
    else
      PutSlot(record, place.Offset, row.Form, std::visit(RawReader(), field));
  }
}

}  // namespace

std::span<const FieldRow> GameFields() { return kGameTable; }
std::span<const FieldRow> WindowFields() { return kWindowTable; }

void PutFields(std::span<const FieldRow> rows, GameState& game, std::vector<Record>& records) {
  for (const FieldRow& row : rows) PutField(row, game, records);
}

void TakeFields(std::span<const FieldRow> rows, const RecordFile& file, GameState& game) {
  const bool ownFields = HasOwnFields(file);
  bool ownRows = false;
  for (const FieldRow& row : rows) {
    ownRows = ownRows || IsOwnField(row);
    if (ownFields || !IsOwnField(row)) TakeField(row, file, game);
  }
  if (ownRows && !ownFields) TakeOwnDefaults(rows, game);
}
