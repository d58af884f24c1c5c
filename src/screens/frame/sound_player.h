// The wave player: one file at a time.
#pragma once

#include <string>

#include "core/host.h"

/// Plays a wave file in place of the one now playing; an empty path only stops. `PlayToEnd` returns
/// when the file has ended, with the event loop running meanwhile. Without a sound device, and with
/// a file that can't be read, nothing is heard and nothing waits.
void PlayWave(const std::string& path, SoundMode mode);

void StopWave();

/// True when there is something to hear sounds by; asked once.
bool SoundDeviceFound();

/// How loud the program plays, from 0 to 1, for as long as it runs.
double SoundVolume();
void SetSoundVolume(double volume);
