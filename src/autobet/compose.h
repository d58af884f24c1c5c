// The text of a script line, made from its codes.
#pragma once

#include <string>

#include "core/script_state.h"

/// The words of a line as the editor's list shows them, at most 128 characters: reads all fields of
/// `line` but `LineText`. Codes that are no part of the language give a line without their words.
std::string ComposeLine(const ScriptLine& line);

/// Completes a line as logging it would: `LineText`, and for runs of like actions the caption of
/// their source in `LineName`.
void LogLine(ScriptLine& line);
