#include "screens/frame/field.h"

#include <unordered_map>

#include "persistence/game_file_table.h"

namespace {

constexpr int kWidestText = 255;

/// The rows of the game file's table by the place of their fields in the record.
const FieldRow* RowAt(const void* place) {
  static const std::unordered_map<const void*, const FieldRow*> rows = [] {
    std::unordered_map<const void*, const FieldRow*> found;
    const auto note = [&found](const FieldRow& row, const auto* field) {
      found.try_emplace(field, &row);
    };
    for (const FieldRow& row : GameFields()) {
      for (int index = 0; index < row.Count; ++index) {
        std::visit(
            [&](const auto& field) {
              if constexpr (std::is_pointer_v<std::decay_t<decltype(field)>>) note(row, field);
            },
            row.Field(Game, index));
      }
    }
    return found;
  }();
  const auto at = rows.find(place);
  return at == rows.end() ? nullptr : at->second;
}

}  // namespace

Limits<int> LimitsOf(const int* place) {
  using Whole = std::numeric_limits<int>;
  const FieldRow* row = RowAt(place);
  if (!row) return {Whole::min(), Whole::max()};
  const auto whole = [](std::int64_t value) {
    return static_cast<int>(
        std::clamp<std::int64_t>(value / Currency::kScale, Whole::min(), Whole::max()));
  };
  return {whole(row->Limits.Low), whole(row->Limits.High)};
}

Limits<Currency> LimitsOf(const Currency* place) {
  const FieldRow* row = RowAt(place);
  const SlotLimits limits = row ? row->Limits : SlotLimits{};
  return {Currency::FromRaw(limits.Low), Currency::FromRaw(limits.High)};
}

int WidthOf(const std::string* place) {
  const FieldRow* row = RowAt(place);
  return row && row->TextWidth > 0 ? row->TextWidth : kWidestText;
}
