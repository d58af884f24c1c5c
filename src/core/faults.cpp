#include "core/faults.h"

namespace {

constexpr int kOverflowNumber = 6;
constexpr int kDivisionByZeroNumber = 11;

}  // namespace

void RaiseOverflow() { throw RunTimeFault(kOverflowNumber, "Overflow"); }

void RaiseDivisionByZero() { throw RunTimeFault(kDivisionByZeroNumber, "Division by zero"); }
