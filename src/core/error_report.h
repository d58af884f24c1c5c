// How a run-time fault is reported.
#pragma once

#include <string>

/// Puts the description of the fault now being handled, its number and `place` into
/// `LastErrorText`. Overflow is number 6, Division by zero 11, lack of memory 7, and any other
/// failure of the library or the system 51; `LastSystemError` is the number that the system gave
/// it. Call it inside a catch clause.
void ReportError(const std::string& place);
