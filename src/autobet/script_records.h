// How a script stands in its file: the header and the line records.
#pragma once

#include <optional>
#include <string_view>

#include "core/record_file.h"
#include "core/script_state.h"

inline constexpr std::string_view kScriptHeaderText = "Kelvanor AutoBets, Data Format 5.0";
inline constexpr int kMaxScriptLines = 1'000'000;

/// The refusal of a file that can't be a script.
inline constexpr std::string_view kUnableToOpenTitle = "Unable to Open Auto-Bet File";
inline constexpr std::string_view kCorruptedText =
    "has either been corrupted or is not a true Kelvanor Auto-Bet file.";

inline constexpr std::size_t kKindOffset = 128;

/// Where the fields of a line record stand. `LineText`, `LineKind`, `LineCode`, `LineName` and
/// `LineAmount` stand at the same place in every layout.
struct ScriptLayout {
  bool WideAmount;  // `LineAmount` is a Currency, else a Single
  std::size_t OfSubject;
  std::size_t OfStackNum;
  std::size_t Spare1;
  std::size_t ToSubject;
  std::size_t ToStackNum;
  std::size_t Spare2;
};
inline constexpr ScriptLayout kLayout50 = {true, 222, 226, 228, 230, 234, 236};
inline constexpr ScriptLayout kLayout39 = {false, 218, 222, 224, 226, 230, 232};

/// The number of lines that a header tells; nothing when it can't be one: below 0, above
/// `kMaxScriptLines`, or in the wide layout not whole.
std::optional<int> HeaderLineCount(const Record& header, const ScriptLayout& layout);

/// A header for `count` lines; its other fields are blank or 0.
Record MakeHeader(int count);

/// A line as read, its numbers rounded; nothing when a number is beyond what a line can hold.
std::optional<ScriptLine> ReadLine(const Record& record, const ScriptLayout& layout);

/// A line in the layout that is written. Texts are cut at their width.
Record MakeLineRecord(const ScriptLine& line);

/// A subject as its file holds it, rounded; nothing when it is beyond a 32-bit number.
std::optional<int> RoundedSubject(float value);
