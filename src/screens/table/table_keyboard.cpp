#include "screens/table/table_keyboard.h"

#include <QAction>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>
#include <optional>

#include "core/game_state.h"
#include "screens/art/roles.h"
#include "screens/frame/player_change.h"
#include "screens/table/bet_focus.h"
#include "screens/table/frmCrapTable.h"
#include "screens/table/table_access.h"
#include "screens/table/table_commands.h"
#include "screens/table/table_elements.h"
#include "screens/table/table_layout.h"

namespace {

constexpr int kFirstBet = PassLine;  // where the keyboard begins

std::optional<Way> WayOf(int key) {
  switch (key) {
    case Qt::Key_Left: return Way::Left;
    case Qt::Key_Right: return Way::Right;
    case Qt::Key_Up: return Way::Up;
    case Qt::Key_Down: return Way::Down;
    default: return std::nullopt;
  }
}

/// What a digit picks up: 1 to 5 the chips, 6 to 8 the markers.
QPointF PlaceOfDigit(int digit) {
  constexpr int kMarkers[] = {BuyMarkerSpot, OffMarkerSpot, OnMarkerSpot};
  constexpr int kChips = 5;
  if (digit <= kChips) return RackSlotRect(digit).center();
  return MarkerSpotRect(kMarkers[digit - kChips - 1]).center();
}

/// The key with Shift, as `TableButton` names keys.
int KeyOf(const QKeyEvent& event) {
  const bool shift = event.modifiers() & Qt::ShiftModifier;
  return event.key() | (shift ? static_cast<int>(Qt::SHIFT) : 0);
}

void Trigger(const QWidget* window, const char* command) {
  if (auto* action = window->findChild<QAction*>(command); action && action->isEnabled())
    action->trigger();
}

/// A click of the left button anywhere on the table.
void ClickAt(frmCrapTable* table, QPointF place, Qt::KeyboardModifiers keys) {
  picLayoutBox* layout = table->Layout();
  const QPointF onWidget = TableTransform(layout->size()).map(place);
  const QMouseEvent event(QEvent::MouseButtonRelease, onWidget, layout->mapToGlobal(onWidget),
                          Qt::LeftButton, Qt::NoButton, keys);
  table->MouseReleased(place, event);
}

}  // namespace

void TableKeyboard::Show() {
  shown_ = true;
  if (button_ < 0) table_->PointAt(ChipPosition(bet_));
  table_->Layout()->setFocus(Qt::OtherFocusReason);
  table_->Layout()->update();
  TellFocus(table_->Layout());
}

void TableKeyboard::Hide() {
  if (!shown_) return;
  shown_ = false;
  table_->Layout()->update();
}

void TableKeyboard::GoToBet(int betId) {
  bet_ = betId;
  button_ = -1;
  Show();
}

void TableKeyboard::GoToButton(int button) {
  button_ = button;
  Show();
}

void TableKeyboard::Enter(bool forward) {
  const auto buttons = static_cast<int>(TableButtons().size());
  if (bet_ == 0) bet_ = kFirstBet;
  button_ = forward || buttons == 0 ? -1 : buttons - 1;
  Show();
}

bool TableKeyboard::Step(bool forward) {
  const auto buttons = static_cast<int>(TableButtons().size());
  const int next = forward ? button_ + 1 : button_ - 1;
  if (!shown_ || next < -1 || next >= buttons) return false;
  button_ = next;
  Show();
  return true;
}

void TableKeyboard::Click(int betId, Qt::KeyboardModifiers keys) {
  ClickAt(table_, ChipPosition(betId), keys);
}

bool TableKeyboard::TakeOnBet(const QKeyEvent& event) {
  const int bet = FocusedBet();
  if (bet == 0 || !IsInReach(bet)) return false;
  switch (event.key()) {
    case Qt::Key_Plus: Click(bet); return true;
    case Qt::Key_Minus: Click(bet, Qt::ControlModifier); return true;
    case Qt::Key_Delete: Click(bet, Qt::ShiftModifier); return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      if (!event.isAutoRepeat()) Click(bet);
      return true;
    case Qt::Key_E:
      if (ClickMayAct() && TableAtRest()) OpenKeyedBox(bet);
      return true;
    default: return false;
  }
}

bool TableKeyboard::TakeWalk(const QKeyEvent& event) {
  const std::vector<int> bets = BetsInReach();
  if (event.key() == Qt::Key_Home || event.key() == Qt::Key_End) {
    GoToBet(event.key() == Qt::Key_Home ? bets.front() : bets.back());
    return true;
  }
  const std::optional<Way> way = WayOf(event.key());
  if (!way) return false;
  // The first key only shows where the keyboard is.
  const bool walks = shown_ && button_ < 0;
  if (!IsInReach(bet_)) bet_ = bet_ == 0 ? kFirstBet : NextBet(bet_, *way);
  GoToBet(walks ? NextBet(bet_, *way) : bet_);
  return true;
}

void TableKeyboard::Press(int button) {
  const std::vector<TableButton> buttons = TableButtons();
  if (button < 0 || button >= static_cast<int>(buttons.size())) return;
  const TableButton& pressed = buttons[static_cast<unsigned>(button)];
  if (pressed.Act && (!pressed.Enabled || pressed.Enabled())) pressed.Act();
}

bool TableKeyboard::TakeButtonKey(const QKeyEvent& event) {
  const bool enters =
      event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter || event.key() == Qt::Key_Space;
  if (FocusedButton() >= 0 && enters) {
    if (!event.isAutoRepeat()) Press(FocusedButton());
    return true;
  }
  const std::vector<TableButton> buttons = TableButtons();
  const auto named = std::ranges::find(buttons, KeyOf(event), &TableButton::Key);
  if (named != buttons.end()) {
    if (!event.isAutoRepeat()) Press(static_cast<int>(named - buttons.begin()));
    return true;
  }
  if (event.key() != Qt::Key_Space) return false;
  if (!event.isAutoRepeat()) table_->RollByCommand();
  return true;
}

/// Goes round the stacks that can be seen, by their numbers.
void TableKeyboard::ChooseStack(int step) {
  constexpr int kStacks = kLastStackColor - kFirstStackColor + 1;
  const int before = step > 0 ? kStacks - 1 : 0;
  const bool onStack = Game.ChipColor >= kFirstStackColor && Game.ChipColor <= kLastStackColor;
  const int at = onStack ? Game.ChipColor - kFirstStackColor : before;
  ClickAt(table_, RackSlotRect(kFirstStackColor + (at + step + kStacks) % kStacks).center(), {});
}

bool TableKeyboard::TakeChoice(const QKeyEvent& event) {
  const int key = event.key();
  if (key >= Qt::Key_1 && key <= Qt::Key_8) {
    ClickAt(table_, PlaceOfDigit(key - Qt::Key_0), {});
  } else if (key == Qt::Key_9 || key == Qt::Key_0) {
    ChooseStack(key == Qt::Key_9 ? 1 : -1);
  } else if (key == Qt::Key_H && !event.isAutoRepeat()) {
    Trigger(table_, "mnuDisplayHopBets");
  } else if (key == Qt::Key_I && !event.isAutoRepeat()) {
    Trigger(table_, "mnuTableForecast");
  } else {
    return false;
  }
  return true;
}

bool TableKeyboard::Take(const QKeyEvent& event) {
  if (event.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier)) return false;
  if (Game.KeyedBoxOpen) return false;
  return TakeButtonKey(event) || TakeOnBet(event) || TakeWalk(event) || TakeChoice(event);
}

bool TableKeyboard::TakesBeforeMenus(const QKeyEvent& event) const {
  return event.key() == Qt::Key_Delete && event.modifiers() == Qt::NoModifier &&
         FocusedBet() != 0 && !Game.KeyedBoxOpen;
}

void TableKeyboard::PaintFocus(QPainter& painter) const {
  QPainterPath region;
  const std::vector<TableButton> buttons = TableButtons();
  if (FocusedBet() != 0) {
    region = RegionOfBet(FocusedBet());
  } else if (FocusedButton() >= 0 && FocusedButton() < static_cast<int>(buttons.size())) {
    region.addRoundedRect(buttons[static_cast<unsigned>(FocusedButton())].Rect, 4, 4);
  }
  if (region.isEmpty()) return;
  constexpr double kUnder = 3.4;
  constexpr double kOver = 1.7;
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(Qt::black, kUnder));
  painter.drawPath(region);
  QPen dashes(kHighlight, kOver, Qt::CustomDashLine, Qt::FlatCap);
  dashes.setDashPattern({3, 2});
  painter.setPen(dashes);
  painter.drawPath(region);
  painter.restore();
}
