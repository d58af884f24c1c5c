// The keys of the table: bets are walked over, chips laid and buttons pressed without the mouse.
#pragma once

#include <QPainterPath>
#include <QString>

class QKeyEvent;
class QPainter;
class frmCrapTable;

/// Where the keyboard stands: on a bet or on a button of the table. The mouse hides the place, and
/// the next key finds it again.
class TableKeyboard {
 public:
  explicit TableKeyboard(frmCrapTable* table) : table_(table) {}

  /// Takes a key without Ctrl or Alt; true when it was one of the table's.
  bool Take(const QKeyEvent& event);

  /// True for a key that is taken before a menu may have it.
  bool TakesBeforeMenus(const QKeyEvent& event) const;

  /// The table has got the focus, forward or backward; Tab has been pressed in it. False where the
  /// focus is to go on to the next control.
  void Enter(bool forward);
  bool Step(bool forward);

  /// The mouse is in use.
  void Hide();

  /// The bet that the keyboard is on; 0 for none.
  int FocusedBet() const { return shown_ && button_ < 0 ? bet_ : 0; }
  /// The button that it is on, by its place in `TableButtons`; -1 for none.
  int FocusedButton() const { return shown_ ? button_ : -1; }

  /// Goes to a bet or a button, as the screen reader asks.
  void GoToBet(int betId);
  void GoToButton(int button);

  /// A mouse button at a bet's chip place, with the keys held.
  void Click(int betId, Qt::KeyboardModifiers keys = {});

  /// A dashed light round what the keyboard is on.
  void PaintFocus(QPainter& painter) const;

 private:
  bool TakeOnBet(const QKeyEvent& event);
  bool TakeWalk(const QKeyEvent& event);
  bool TakeButtonKey(const QKeyEvent& event);
  bool TakeChoice(const QKeyEvent& event);
  void ChooseStack(int step);
  void Press(int button);
  void Show();

  frmCrapTable* table_;
  int bet_ = 0;
  int button_ = -1;
  bool shown_ = false;
};
