// What the bankroll graph is seen through: its scale and its top line.
#pragma once

#include "core/game_state.h"

/// The reference lines of the graph: the points at which they stand, 0 for none.
struct ReferenceLines {
  int First = 0;
  int Second = 0;
};

/// Fits scale and top line to the page: after each point and each change of the view. With
/// `recentre` the bankroll (or what the reference lines meet) comes to the middle. The scale only
/// widens during a page; the snap-back type returns to `GraphBaseScale` when a page begins.
void RefitGraph(bool recentre, ReferenceLines lines = {});

/// Units of `GraphScale` between two lines of the graph, and from its top to its bottom.
inline constexpr int kGraphLine = 50;
inline constexpr int kGraphPanel = 300;

/// A scale chosen by the player: it is also the one that a snap-back returns to. The graph is
/// centred anew.
void SetGraphScale(Currency scale, ReferenceLines lines = {});

/// Moves the zero line up (or down, for a number below 0) by lines of the graph.
void MoveZeroLine(int lines);

/// The next step up from a scale on the ladder 1, 2, 4, 10, 20, 40, 100 and so on, and down.
Currency NextGraphScale(Currency scale);
Currency PreviousGraphScale(Currency scale);
