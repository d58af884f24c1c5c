// Lines read back from the text that the program shows for them.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/script_state.h"

/// The line whose text `ComposeLine` would write as `text`, complete with `LineText`; nothing for
/// any other text. Blanks in front and behind don't matter; those within, and capitals, do.
std::optional<ScriptLine> ReadLineText(std::string_view text);

/// A text of many lines as read.
struct ReadText {
  std::vector<ScriptLine> Lines;  // none when a row wasn't understood
  std::string NotUnderstood;      // that row; empty when all were
  int Row = 0;                    // its number, else the number of rows
};

/// Reads rows as `ReadLineText` does, and passes over blank ones.
ReadText ReadScriptText(std::string_view text);
