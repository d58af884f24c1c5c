// The one way in which numbers are typed, on every screen.
#pragma once

class QLineEdit;

/// Makes `box` a numeric box: every key, and every character of a pasted text, goes through the
/// numeric entry filter. The value colours the text.
void MakeNumericBox(QLineEdit* box, int decimals, bool minusAllowed);
