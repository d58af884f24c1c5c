// Run-time faults: what a routine can't go on from, and how it is reported.
#pragma once

#include <exception>
#include <string>

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

/// Puts the description of the fault now being handled, its number and `place` into
/// `LastErrorText`. Overflow is number 6, Division by zero 11, lack of memory 7, and any other
/// failure of the library or the system 51. Call it inside a catch clause.
void ReportError(const std::string& place);
