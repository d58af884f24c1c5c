// The table on the screen: the layout under the chips, and all that lies on it.
#pragma once

#include <QByteArray>
#include <QPixmap>
#include <QString>
#include <QTransform>
#include <array>
#include <functional>
#include <vector>

#include "core/currency.h"
#include "core/settings.h"
#include "screens/table/pile_layout.h"
#include "screens/table/table_layout.h"

class QPainter;

/// What the view adds to the game record: the dice as they are shown now, and chips in the hand.
struct TableView {
  QPointF Dice[2] = {kDiceHome[0], kDiceHome[1]};  // centres, in table units
  std::array<int, 2> Faces = {0, 0};               // 0 shows the die of the record
  std::array<double, 2> Turns = {0, 0};            // degrees
  bool Dragging = false;
  Currency DraggedAmount;
  QPointF DragPoint;  // in table units
  // What is laid over the plain table: painted under the chips and over them, and chips on their
  // way to the house or from it.
  std::function<void(QPainter&, const QRectF& exposed)> Below;
  std::function<void(QPainter&)> Above;
  std::vector<DrawnChip> Flying;
  QRectF CaptionPlate{196, 448, 228, 22};
};

/// Pictures kept between paintings. Belongs to the widget that shows the table.
struct TableCache {
  QPixmap Layout;
  QByteArray LayoutStamp;
  std::array<QPixmap, kOverflowPicture + 1> Chips;  // by chip picture
  QByteArray ChipStamp;
};

/// From table units to a widget of a size: scaled alike both ways, centred.
QTransform TableTransform(QSizeF size);

/// The place on the table of a point of the widget.
QPointF TablePoint(QPointF widgetPoint, QSizeF size);

/// All that the layout's picture depends on, but for its size: colours, felt, payoffs, panel, bar
/// number, placard, and how the player wants letters and the stick person. No bet changes it.
QByteArray LayoutStamp();

/// The table with nothing on it, in table units.
void PaintLayout(QPainter& painter);

/// All of the table, in table units.
inline constexpr QRectF kWholeTable{0, 0, kTableWidth, kTableHeight};

/// The table into a widget of a size. The layout comes from the cache; it is painted again only
/// when the size, the display scale or `LayoutStamp` changed. Of the rest at least what lies in
/// `exposed` is painted, in table units: the painter is clipped there.
void PaintTable(QPainter& painter, QSizeF size, const TableView& view, TableCache& cache,
                const QRectF& exposed = kWholeTable);

/// The caption line: that a script is at work, else what `ClickMode` waits for; empty without
/// either.
QString TableCaption();

/// "9 TO 5" or "31 FOR 1", in the words of a payoff record.
QString PayoffWords(const PayoffRecord& payoff);
