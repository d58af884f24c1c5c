#include "rules/presets.h"

#include "core/game_state.h"
#include "dice/throw_kinds.h"

namespace {

/// Field combinations as bits: bit n stands for combination n.
template <class... Combinations>
constexpr ThrowSet Set(Combinations... combinations) {
  return ((1U << static_cast<unsigned>(combinations)) | ...);
}

constexpr ThrowSet kTwoAndTwelve = ThrowsOf(2, 12);
constexpr ThrowSet kThreeAndEleven = ThrowsOf(3, 11);
constexpr ThrowSet kCraps = ThrowsOf(2, 3, 12);
constexpr ThrowSet kFourAndTen = ThrowsOf(4, 10);
constexpr ThrowSet kFiveAndNine = ThrowsOf(5, 9);
constexpr ThrowSet kSix = ThrowsOf(6);
constexpr ThrowSet kSeven = ThrowsOf(7);
constexpr ThrowSet kEight = ThrowsOf(8);
constexpr ThrowSet kFiveToEight = ThrowsOf(5, 6, 7, 8);
constexpr ThrowSet kSixToEight = ThrowsOf(6, 7, 8);
constexpr ThrowSet kNone = 0;

struct FieldRatio {
  int Win;
  int Per;
  bool ShownAsTo = true;
};

struct FieldException {
  ThrowSet Combinations;
  FieldRatio Pays;
};

/// A base for all combinations, and what differs; a later entry overrides an earlier one.
struct FieldPreset {
  FieldRatio Base;
  std::array<FieldException, 5> Exceptions;
};

constexpr FieldException kNoException = {kNone, {0, 1}};

constexpr std::array<FieldPreset, kFieldPresets> kFieldPresetTable = {{
    // Field with double on 2 and 12
    {{1, 1},
     {{{kFiveToEight, {-1, 1}},
       {kTwoAndTwelve, {2, 1}},
       kNoException,
       kNoException,
       kNoException}}},
    // Midway
    {{-1, 1},
     {{{kSixToEight, {1, 1}}, {Set(9, 15), {2, 1}}, kNoException, kNoException, kNoException}}},
    // Pass Line
    {{-1, 11},
     {{{kCraps, {-1, 1}},
       {kFourAndTen, {-1, 3}},
       {kFiveAndNine, {-1, 5}},
       {kSeven | Set(20), {1, 1}},
       kNoException}}},
    // Don't Pass, bar 12
    {{1, 11},
     {{{Set(1, 2), {1, 1}},
       {kFourAndTen, {1, 3}},
       {kFiveAndNine, {1, 5}},
       {kSeven | Set(20), {-1, 1}},
       {Set(21), {0, 1}}}}},
    // Place 6
    {{0, 1}, {{{kSix, {7, 6}}, {kSeven, {-1, 1}}, kNoException, kNoException, kNoException}}},
    // Place to lose 8
    {{0, 1}, {{{kSeven, {4, 5}}, {kEight, {-5, 5}}, kNoException, kNoException, kNoException}}},
    // Buy 10
    {{0, 1},
     {{{kSeven, {-1, 1}}, {Set(18, 19), {39, 21}}, kNoException, kNoException, kNoException}}},
    // Lay 4
    {{0, 1},
     {{{Set(3, 4), {-1, 1}}, {kSeven, {19, 41}}, kNoException, kNoException, kNoException}}},
    // Hard 8
    {{0, 1},
     {{{kSeven | Set(13, 14), {-1, 1}},
       {Set(15), {9, 1}},
       kNoException,
       kNoException,
       kNoException}}},
    // Horn
    {{-1, 1},
     {{{kTwoAndTwelve, {27, 4, false}},
       {kThreeAndEleven, {12, 4, false}},
       kNoException,
       kNoException,
       kNoException}}},
    // World
    {{-1, 1},
     {{{kTwoAndTwelve, {26, 5, false}},
       {kThreeAndEleven, {11, 5, false}},
       {kSeven, {0, 5, false}},
       kNoException,
       kNoException}}},
    // Hop 1-3
    {{-1, 1}, {{{Set(3), {15, 1}}, kNoException, kNoException, kNoException, kNoException}}},
    // Crapless Craps Pass Line
    {{-1, 11},
     {{{kTwoAndTwelve, {-5, 7}},
       {kThreeAndEleven, {-1, 2}},
       {kFourAndTen, {-1, 3}},
       {kFiveAndNine, {-1, 5}},
       {kSeven, {1, 1}}}}},
}};

PayoffRecord RecordOf(FieldRatio ratio) { return {ratio.Win, ratio.ShownAsTo, ratio.Per}; }

bool HasOwnRow(int id) {
  return (id >= Lay4 && id <= Buy10) || id == Come || id == DontCome || id == Big6 ||
         (id >= Big8 && id <= Craps) || (id >= Over7 && id <= LastBet);
}

std::array<PayoffRow, kPayoffRows> BuildPayoffRows() {
  std::array<PayoffRow, kPayoffRows> rows;
  std::size_t row = 0;
  for (int id = 1; id <= LastBet; ++id) {
    if (HasOwnRow(id)) rows[row++] = {id, RowLabel(id)};
  }
  return rows;
}

}  // namespace

const std::array<std::string_view, kFieldPresets> kFieldPresetNames = {
    "&Field w/ 2x on Two and Twelve",
    "&Midway",
    "&Pass Line",
    "&Don't Pass (bar 12)",
    "Place &6",
    "Place to &Lose 8",
    "Buy &10 (5 % vig)",
    "Lay &4 (5% vig on win only)",
    "H&ard 8",
    "&Horn",
    "&World",
    "H&op 13",
    "&Crapless Craps Pass Line",
};

const std::array<ColorPreset, kColorPresets> kColorPresetTable = {{
    {"Set traditional &green table",
     {0x1B784A, 0xFFFFFF, 0xFFBB77, 0x000000, 0xFFFFFF, 0xFFFFFF, 0xFF0000, 0xFFFFFF},
     8},
    {"Set &black-light table",
     {0x000000, 0xFF00FF, 0xFF0086, 0x77003F, 0xCC006B, 0x0000FF, 0xFF0000, 0x000000},
     6},
    {"Set &night lights table",
     {0x000000, 0xFFFF11, 0x55FFFF, 0x1111FF, 0xFF0000, 0x00FF00, 0xFF0000, 0xFFFFFF},
     0},
    {"Set &woodgrain table",
     {0xFFB366, 0x331A00, 0x770000, 0x000000, 0xFFFF11, 0xAA5500, 0x000000, 0xFFFFFF},
     6},
    {"Set &orange fizz table",
     {0xFF8811, 0xFF1111, 0xFF0086, 0x990099, 0xFFBB77, 0xFFFF00, 0xFF0000, 0xFFFFFF},
     0},
    {"Set blue &velvet table",
     {0x0067BB, 0x000000, 0xDD0000, 0x000000, 0x00EEEE, 0xEEE800, 0xFF0000, 0xFFFFFF},
     8},
}};

const std::array<std::string_view, kFieldCombinations> kFieldLabels = {
    "2    (1-1)",       "3    (1-2) (2-1)", "4    (1-3) (3-1)", "4    (2-2)",
    "5    (1-4) (4-1)", "5    (2-3) (3-2)", "6    (1-5) (5-1)", "6    (2-4) (4-2)",
    "6    (3-3)",       "7    (1-6) (6-1)", "7    (2-5) (5-2)", "7    (3-4) (4-3)",
    "8    (2-6) (6-2)", "8    (3-5) (5-3)", "8    (4-4)",       "9    (3-6) (6-3)",
    "9    (4-5) (5-4)", "10   (4-6) (6-4)", "10   (5-5)",       "11   (5-6) (6-5)",
    "12   (6-6)",
};

std::string RowLabel(int betId) {
  const std::string number = IsBet(betId) ? std::to_string(NumberOfBet(betId)) : "";
  if (IsDontComeOnNumber(betId)) return "DP/DC " + number;
  if (IsDontComeOdds(betId)) return "DP/DC " + number + " Odds";
  if (IsComeOnNumber(betId)) return "Pass/Come " + number;
  if (IsComeOdds(betId)) return "Pass/Come " + number + " Odds";
  switch (betId) {
    case PassLine: return "Passline/Come";
    case PassLineOdds: return "Passline/Come Odds";
    case Come: return "Passline/Come (c.o.)";
    case DontPass: return "Don't Pass/Come";
    case DontPassOdds: return "Don't Pass/Come Odds";
    case DontCome: return "Don't Pass/Come (c.o.)";
    default: return std::string(kBetNames[static_cast<unsigned>(betId)]);
  }
}

void SetFieldPreset(int preset) {
  if (preset < 0 || preset >= kFieldPresets) return;
  const FieldPreset& chosen = kFieldPresetTable[static_cast<unsigned>(preset)];
  for (unsigned combination = 1; combination <= kFieldCombinations; ++combination) {
    PayoffRecord& record = Game.FieldPayoff[combination];
    record = RecordOf(chosen.Base);
    for (const FieldException& exception : chosen.Exceptions) {
      if (IsIn(exception.Combinations, combination)) record = RecordOf(exception.Pays);
    }
  }
}

void SetColorPreset(int preset) {
  if (preset < 0 || preset >= kColorPresets) return;
  const ColorPreset& chosen = kColorPresetTable[static_cast<unsigned>(preset)];
  Game.TableColor = chosen.Colors;
  Game.TableFeltPattern = chosen.Pattern;
}

const std::array<PayoffRow, kPayoffRows>& PayoffRows() {
  static const std::array<PayoffRow, kPayoffRows> rows = BuildPayoffRows();
  return rows;
}
