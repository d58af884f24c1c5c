#include "autobet/script_records.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

namespace {

constexpr std::size_t kTextOffset = 0;
constexpr std::size_t kCodeOffset = 130;
constexpr std::size_t kNameOffset = 134;
constexpr std::size_t kAmountOffset = 214;
constexpr std::size_t kReservedOffset = 238;
constexpr std::size_t kReservedWidth = 18;

constexpr float kLargestAmount = 9e14F;  // what surely fits into a Currency
constexpr float kLargestSubject = 2'147'483'520.0F;

std::optional<Currency> ReadAmount(const Record& record, const ScriptLayout& layout) {
  if (layout.WideAmount) return record.Money(kAmountOffset);
  const float amount = record.Single(kAmountOffset);
  if (!(std::abs(amount) <= kLargestAmount)) return {};
  return Currency::FromDouble(static_cast<double>(amount));
}

std::int16_t Narrow(int value) {
  using Limits = std::numeric_limits<std::int16_t>;
  return static_cast<std::int16_t>(std::clamp<int>(value, Limits::min(), Limits::max()));
}

/// The highest numbers would round up to one that no line can hold.
float Widen(int subject) { return std::min(static_cast<float>(subject), kLargestSubject); }

}  // namespace

std::optional<int> HeaderLineCount(const Record& header, const ScriptLayout& layout) {
  const double count = layout.WideAmount
                           ? header.Money(kAmountOffset).ToDouble()
                           : std::nearbyint(static_cast<double>(header.Single(kAmountOffset)));
  if (!(count >= 0 && count <= kMaxScriptLines) || count != std::floor(count)) return {};
  return static_cast<int>(count);
}

Record MakeHeader(int count) {
  ScriptLine header;
  header.LineText = kScriptHeaderText;
  header.LineAmount = count;
  return MakeLineRecord(header);
}

std::optional<ScriptLine> ReadLine(const Record& record, const ScriptLayout& layout) {
  const std::optional<Currency> amount = ReadAmount(record, layout);
  const std::optional<int> ofSubject = RoundedSubject(record.Single(layout.OfSubject));
  const std::optional<int> toSubject = RoundedSubject(record.Single(layout.ToSubject));
  if (!amount || !ofSubject || !toSubject) return {};
  ScriptLine line;
  line.LineText = record.Text(kTextOffset, kLineTextWidth);
  line.LineKind = record.Integer(kKindOffset);
  line.LineCode = record.Long(kCodeOffset);
  line.LineName = record.Text(kNameOffset, kLineNameWidth);
  line.LineAmount = *amount;
  line.OfSubject = *ofSubject;
  line.OfStackNum = record.Integer(layout.OfStackNum);
  line.Spare1 = record.Integer(layout.Spare1);
  line.ToSubject = *toSubject;
  line.ToStackNum = record.Integer(layout.ToStackNum);
  line.Spare2 = record.Integer(layout.Spare2);
  return line;
}

Record MakeLineRecord(const ScriptLine& line) {
  Record record;
  record.PutText(kTextOffset, kLineTextWidth, line.LineText);
  record.PutInteger(kKindOffset, Narrow(line.LineKind));
  record.PutLong(kCodeOffset, line.LineCode);
  record.PutText(kNameOffset, kLineNameWidth, line.LineName);
  record.PutMoney(kAmountOffset, line.LineAmount);
  record.PutSingle(kLayout50.OfSubject, Widen(line.OfSubject));
  record.PutInteger(kLayout50.OfStackNum, Narrow(line.OfStackNum));
  record.PutInteger(kLayout50.Spare1, Narrow(line.Spare1));
  record.PutSingle(kLayout50.ToSubject, Widen(line.ToSubject));
  record.PutInteger(kLayout50.ToStackNum, Narrow(line.ToStackNum));
  record.PutInteger(kLayout50.Spare2, Narrow(line.Spare2));
  record.PutText(kReservedOffset, kReservedWidth, "");
  return record;
}

std::optional<int> RoundedSubject(float value) {
  using Limits = std::numeric_limits<int>;
  const double rounded = std::nearbyint(static_cast<double>(value));
  if (!(rounded >= Limits::min() && rounded <= Limits::max())) return {};
  return static_cast<int>(rounded);
}
