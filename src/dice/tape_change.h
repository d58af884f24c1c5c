// Changes of a tape that a kill, a failing disk or the end of the power can't leave half done.
//
// What moves goes in windows. Each is kept in a journal beside the tape, "tape.rol.journal", before
// it is written to its new place, so that what was under way can always be gone on with or be taken
// back. A change of up to `kSafeFromPowerLoss` bytes is forced to disk window by window; in a
// longer one only its end is, as it would take several times as long, and losing the power in the
// middle of it may cost throws.
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>

#include "core/progress.h"
#include "core/raw_file.h"

inline constexpr std::int64_t kSafeFromPowerLoss = 4 << 20;

/// Throws in a row; places count from 0.
struct TapeRange {
  std::int64_t Place = 0;
  std::int64_t Count = 0;
};

/// The tape as a whole stands on one of the routines below; whatever they throw, it is as it was,
/// or FinishTape makes it so or finishes the change. Each throws std::system_error when the system
/// fails or another program has the tape, and what `fill` throws.

/// Makes room, for what `fill` writes there. The tape grows first: a full disk is met before any
/// throw has moved.
void InsertInTape(RawFile& tape, const TapeRange& room, Progress& progress,
                  const std::function<void()>& fill);

/// Takes a range out.
void DeleteFromTape(RawFile& tape, const TapeRange& gone, Progress& progress);

/// Copies a range over what stands at `to`, and behind the end.
void CopyOverTape(RawFile& tape, const TapeRange& range, std::int64_t to, Progress& progress);

/// Writes throws over those at `place`, and behind the end.
void WriteOverTape(RawFile& tape, std::int64_t place, std::span<const char> throws,
                   Progress& progress);

/// Finishes or takes back what a killed program has left half done. Called before a tape is used.
/// Throws when that fails.
void FinishTape(const std::string& path);
