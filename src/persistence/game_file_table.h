// Where each field of the game stands in its file: one table, which reading and writing walk.
#pragma once

#include <cstdint>
#include <limits>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "core/game_state.h"
#include "core/record_file.h"

/// Records that every game file has; chips and flags follow.
inline constexpr int kFixedRecords = 574;
inline constexpr int kFirstFieldRecord = 10;

/// How a field stands in a record.
enum class SlotForm {
  CurrencySlot,  // money as it is; a whole number or a truth (-1, 0) as that many dollars
  LongSlot,
  IntegerSlot,
  ColorSlot,  // a Long with red in its lowest byte
  TextSlot,
  DoubleSlot,  // 8 bytes, at least 0, which money has no room for
};

constexpr int WidthOf(SlotForm form) {
  if (form == SlotForm::CurrencySlot || form == SlotForm::DoubleSlot) return 8;
  return form == SlotForm::IntegerSlot ? 2 : 4;
}

/// Two dice in one slot: the first times ten, and the second.
struct DicePair {
  int* First;
  int* Second;
};

/// A typed number.
struct NumberText {
  std::string* Text;
};

/// A field of the game.
using FieldPointer = std::variant<Currency*, int*, std::uint32_t*, bool*, float*, double*,
                                  std::string*, DicePair, NumberText>;

/// What a slot may hold, in ten-thousandths. What lies outside becomes the nearest end, or
/// `Instead` when there is one.
struct SlotLimits {
  std::int64_t Low = std::numeric_limits<std::int64_t>::min();
  std::int64_t High = std::numeric_limits<std::int64_t>::max();
  std::int64_t Instead = kNearest;

  static constexpr std::int64_t kNearest = std::numeric_limits<std::int64_t>::min();
};

/// One field, or an array of `Count` elements: `PerRecord` of them stand side by side from `Offset`
/// on in each of as many records as it takes.
struct FieldRow {
  std::string_view Name;
  int Record;
  int Offset;
  SlotForm Form;
  FieldPointer (*Field)(GameState& game, int index);
  SlotLimits Limits{};
  int Count = 1;
  int PerRecord = 1;
  int TextWidth = 0;
  bool Own = false;  // one of our own, in room that other readers pass over
};

/// All rows but those of the window places.
std::span<const FieldRow> GameFields();

/// The rows of the window places.
std::span<const FieldRow> WindowFields();

/// Writes the fields of rows into their records; whatever no row names stays as it is. `game` is
/// only read.
void PutFields(std::span<const FieldRow> rows, GameState& game, std::vector<Record>& records);

/// Reads the fields of rows, each brought within its limits. Our own fields, which stand behind a
/// marker, take their defaults in a file without it.
void TakeFields(std::span<const FieldRow> rows, const RecordFile& file, GameState& game);

/// The fields of record 18 from here on are our own, behind this marker.
inline constexpr int kOwnFieldsRecord = 18;
inline constexpr int kOwnFieldsOffset = 48;
inline constexpr std::string_view kOwnFieldsMarker = "KVX1";
