// The keys that a numeric box takes, and the colour of its value.
#pragma once

#include <string>

#include "core/currency.h"

inline constexpr int kBackspaceKey = 8;

/// A numeric box as it stands when a key is typed.
struct NumericBox {
  std::string Text;
  int SelectionStart = 0;  // the caret stands here
  int SelectionLength = 0;
  int MaxLength = 0;  // 0 for no limit
};

/// True when a numeric box takes the key, a character code.
bool EntryKeyPasses(const NumericBox& box, int key, int decimals, bool minusAllowed);

/// Colours of the 16-colour palette for an amount: black, blue above 0, red below.
enum ValueColorKind : int { ValueBlack = 0, ValueBlue = 9, ValueRed = 12 };
ValueColorKind ValueColor(Currency amount);
