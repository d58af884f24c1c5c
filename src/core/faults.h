// Run-time faults: what a routine can't go on from.
#pragma once

#include <exception>

/// A run-time fault inside a routine. It never leaves the program's named places: each of them
/// catches it, calls `ReportError` and gives up its work.
struct RunTimeFault : std::exception {
  RunTimeFault(int number, const char* text) : Number(number), Text(text) {}
  const char* what() const noexcept override { return Text; }
  int Number;
  const char* Text;
};

[[noreturn]] void RaiseOverflow();
[[noreturn]] void RaiseDivisionByZero();
