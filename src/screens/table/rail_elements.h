// What lies in the rail: the last rolls, the buttons and the money.
#pragma once

#include <QPointF>
#include <QRectF>
#include <QString>

#include "core/currency.h"

class QPainter;

enum RailButton : int {
  NoRailButton = -1,
  RollButton = 0,
  RepeatButton = 1,
  DoubleButton = 2,
  UndoButton = 3,
  ClearButton = 4,
  kRailButtons = 5,
};

/// The button at a place of the table; `NoRailButton` for none, and for all of them where the
/// player doesn't want buttons.
int RailButtonAt(QPointF place);
QRectF RailButtonRect(int button);

/// Whether the button would do something now.
bool IsRailButtonOn(int button);

/// Its name with its key, and what it does.
QString RailButtonName(int button);
QString RailButtonTip(int button);

/// The money that the rail shows.
struct ShownMoney {
  Currency Bankroll;
  Currency AtRisk;
  Currency Result;

  bool operator==(const ShownMoney&) const = default;
};
ShownMoney MoneyNow();

/// What of the rail follows the mouse and the moment.
struct RailLook {
  int Pressed = NoRailButton;
  int Hovered = NoRailButton;
  bool Stops = false;  // ROLL is STOP
  double SlideIn = 1;  // of the newest roll, 0 to 1
  ShownMoney Money;
};

void PaintHistory(QPainter& painter, double slideIn);
/// The buttons of which something lies in `exposed`.
void PaintRailButtons(QPainter& painter, const RailLook& look, const QRectF& exposed);
void PaintMoney(QPainter& painter, const ShownMoney& money);

inline constexpr QRectF kHistoryWell{2.6, 39.5, 24, 291};
inline constexpr QRectF kMoneyWell{233, 446, 267, 30};

/// "5-4, nine, +$4" for the roll at a place of the history; empty elsewhere.
QString HistoryTip(QPointF place);
