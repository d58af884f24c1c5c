// The bankroll graph as a drawing, sharp at any size.
#pragma once

#include <QColor>
#include <QPainter>
#include <QRectF>

#include "core/game_state.h"
#include "stats/graph_view.h"

inline constexpr int kGraphColors = 8;

enum GraphTypeKind : int { PlainGraph = 0, StripedGraph = 1, SolidGraph = 2 };

/// The colours that a background goes with.
struct GraphPalette {
  QColor Background;
  QColor Line;
  QColor Average;
  QColor Reference;
  QColor Grid;
  QColor Text;
};

/// The palette of the background in force.
const GraphPalette& PaletteOfGraph(const GraphState& graph = Game);

/// Where points of the page and amounts lie on a panel.
class GraphFrame {
 public:
  explicit GraphFrame(QRectF panel, const GraphState& graph = Game)
      : panel_(panel), graph_(graph) {}

  const QRectF& Panel() const { return panel_; }
  const GraphState& Graph() const { return graph_; }
  double X(int point) const;
  double Y(Currency amount) const;

  /// The point of the page under a place, 1 to 525.
  int PointAt(double x) const;

 private:
  QRectF panel_;
  const GraphState& graph_;
};

/// What is drawn beside the game record: reference lines, and the point that is pointed at (0 for
/// none).
struct GraphView {
  ReferenceLines Lines;
  int Pointed = 0;
};

/// The number of the roll at a point of the page, and the bankroll after it.
int RollAtPoint(int point, const GraphState& graph = Game);
Currency BankrollAtPoint(int point, const GraphState& graph = Game);

/// True for a point that has been rolled.
inline bool IsDrawnPoint(int point, const GraphState& graph = Game) {
  return point > 0 && point <= graph.BankrollHistoryCount;
}

/// Paints the graph being played, or another one.
void PaintGraph(QPainter& painter, QRectF panel, const GraphView& view,
                const GraphState& graph = Game);
