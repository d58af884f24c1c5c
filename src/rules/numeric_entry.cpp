#include "rules/numeric_entry.h"

#include <algorithm>

namespace {

constexpr int kMostWholeDigits = 14;

/// The text as it stands without the selection, and the caret in it.
struct WorkingText {
  std::string Text;
  std::size_t Caret;

  bool Has(char letter) const { return Text.find(letter) != std::string::npos; }
  std::size_t Point() const { return std::min(Text.find('.'), Text.size()); }
  bool CaretBehindPoint() const { return Has('.') && Caret > Point(); }
  std::size_t DecimalsHeld() const { return Has('.') ? Text.size() - Point() - 1 : 0; }
  std::size_t WholeDigits() const { return Point() - (Has('-') ? 1 : 0); }
};

WorkingText WithoutSelection(const NumericBox& box) {
  const int size = static_cast<int>(box.Text.size());
  const auto start = static_cast<std::size_t>(std::clamp(box.SelectionStart, 0, size));
  WorkingText working{box.Text, start};
  working.Text.erase(start, static_cast<std::size_t>(std::max(box.SelectionLength, 0)));
  return working;
}

bool PointPasses(const WorkingText& text, int decimals) {
  if (decimals < 1 || text.Has('.')) return false;
  return text.Text.size() - text.Caret <= static_cast<std::size_t>(decimals);
}

bool DigitPasses(const WorkingText& text, int decimals) {
  if (text.CaretBehindPoint()) return text.DecimalsHeld() < static_cast<std::size_t>(decimals);
  return text.WholeDigits() < kMostWholeDigits;
}
}  // namespace

bool EntryKeyPasses(const NumericBox& box, int key, int decimals, bool minusAllowed) {
  if (key == kBackspaceKey) return true;
  const WorkingText text = WithoutSelection(box);
  if (box.MaxLength > 0 && text.Text.size() >= static_cast<std::size_t>(box.MaxLength)) {
    return false;
  }
  if (text.Caret == 0 && text.Has('-')) return false;
  if (key == '-') return minusAllowed && text.Caret == 0;
  if (key == '.') return PointPasses(text, decimals);
  return key >= '0' && key <= '9' && DigitPasses(text, decimals);
}

ValueColorKind ValueColor(Currency amount) {
  if (amount == Currency()) return ValueBlack;
  return amount > Currency() ? ValueBlue : ValueRed;
}
