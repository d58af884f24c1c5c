// Faults stop at the handler of the event that they arose in.
#pragma once

#include <exception>

#include "core/error_report.h"

/// Runs `act`; a fault in it is reported under `place`, and what was under way is given up.
template <class Act>
void Guarded(const char* place, Act&& act) {
  try {
    act();
  } catch (const std::exception&) {
    ReportError(place);
  }
}
