// Following a game from throw to throw.
#pragma once

#include "core/game_state.h"

/// Begins to follow the game as it stands, before its first throw, in `Game.Course`.
void BeginCourse();

/// Takes the money on the table as it stands when the dice are thrown, and what the roll before has
/// moved. The roll cycle calls it while a game is followed.
void FollowCourse();

/// Takes what the last roll has moved, once the game is over.
void EndCourse();
