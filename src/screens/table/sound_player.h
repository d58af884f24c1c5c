// The wave player: one file at a time.
#pragma once

#include <string>

#include "core/host.h"

/// Plays a wave file in place of the one now playing; an empty path only stops. `PlayToEnd` returns
/// when the file has ended, with the event loop running meanwhile. Without a sound device, and with
/// a file that can't be read, nothing is heard and nothing waits.
void PlayWave(const std::string& path, SoundMode mode);

void StopWave();
