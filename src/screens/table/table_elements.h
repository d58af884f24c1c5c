// What of the table beside the bets can be pressed and told: its buttons and its sentences. Who
// draws such an element fills the list; keyboard and screen reader go by it.
#pragma once

#include <QRectF>
#include <QString>
#include <functional>
#include <vector>

/// A button of the rail or of the panel. It acts as a click on it does, `ClickMayAct` included.
struct TableButton {
  QString Name;     // as it is read out: "Roll", "Repeat"
  QRectF Rect;      // in table units
  QString State{};  // as its value is read out: "Bankroll 536 dollars"; may be empty
  std::function<bool()> Enabled{};  // always, when empty
  std::function<void()> Act{};      // none for what can only be read
  int Key = 0;  // the key that presses it: a Qt::Key, or toCombined() of Qt::SHIFT and one
};

/// What stands on the table now, in the order of Tab. Asked at each key and by the screen reader,
/// so it is cheap. Without a maker there is nothing.
using TableButtonsMaker = std::function<std::vector<TableButton>()>;
void SetTableButtons(TableButtonsMaker maker);
/// Those that can be pressed.
std::vector<TableButton> TableButtons();

/// The sentences of the history, newest first, and the call that stands on the table. Either may be
/// missing. A notice is read out by `Announce` (table_access.h), as each roll is by itself.
struct TableSentences {
  std::function<std::vector<QString>()> History{};
  std::function<QString()> Call{};
};
void SetTableSentences(TableSentences sentences);
const TableSentences& SentencesOfTable();
