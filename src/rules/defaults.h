// Defaults of a fresh program.
#pragma once

#include "core/settings.h"

/// Lays the whole game record down as it stands at start-up, before any game file is read: fields
/// to their defaults, payoffs, chip values, names, chip positions, working states, the fair dice
/// matrix. Folders, the screen's size, the lists of sound files and the seeds and states of the
/// generators keep their values. Each test starts with it.
void LayDownDefaults();

/// The default payoffs of all bets; with a point standing the line odds rows have its ratios.
PayoffTable DefaultPayoffs(int point);

/// Lays down the default payoffs of all bets and of the Field; with a point standing the line odds
/// rows take the ratios of the point.
void SetDefaultPayoffs();

/// The default come-out list: all bets work but Come Odds, Place, Buy, the line odds, and 45
/// and 48.
void SetDefaultComeOutWorking();

/// Chip values 1, 5, 25, 100, 500.
void SetDefaultDenominations();
