// The wave player: one file at a time.
#pragma once

#include <array>
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

/// What a sound belongs to, told by its file: calls of the stick person (.stk), dice (.dce), chips
/// (.chp), wins (.win, and the rain of chips). Any other file is none of them.
enum class SoundKind { Stick = 0, Dice = 1, Chips = 2, Win = 3, Other = 4 };
SoundKind KindOfSound(const std::string& path);

/// How loud each kind is, from 0 to 1, by `SoundKind` from Stick to Win; other sounds are played in
/// full. All of it is by the measure of `SoundVolume`.
void SetSoundVolumes(const std::array<double, 4>& volumes);

/// How loud a file is played now, from 0 to 1.
double VolumeOfSound(const std::string& path);
