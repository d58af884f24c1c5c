// The main screen: the table, its menus and the quick status line.
#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QPixmap>
#include <QPointF>
#include <QTimer>
#include <QVBoxLayout>
#include <functional>

#include "screens/table/table_keyboard.h"
#include "screens/table/table_painter.h"

class FirstHints;
class FloatingCard;
class frmCrapTable;
class Menus;
class TableLayer;
class TablePanel;
class QHelpEvent;

/// The table itself: a drawing of 640 by 480 units that fills the widget as far as its shape
/// allows.
class picLayoutBox : public QWidget {
  Q_OBJECT

 public:
  explicit picLayoutBox(frmCrapTable* table);

  /// A place of the widget in table units.
  QPointF ToTable(QPointF place) const;

  /// A rectangle of the table on the widget.
  QRect FromTable(QRectF place) const;

  TableKeyboard& Keyboard() { return keyboard_; }

  /// Lets a chip fall on the table; it lies there until `ClearRain`.
  void RainChip(int picture, QPointF place);
  void ClearRain();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  bool event(QEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  bool focusNextPrevChild(bool next) override;

 private:
  void ShowTip(const QHelpEvent& event);

  frmCrapTable* table_;
  TableKeyboard keyboard_;
  TableCache cache_;
  QPixmap rain_;
};

class frmCrapTable : public QMainWindow {
  Q_OBJECT

 public:
  frmCrapTable();
  ~frmCrapTable() override;

  /// Draws the chips, the dice, the markers, the box and the quick status anew.
  void RedrawBets();

  /// Draws the layout under them too.
  void RedrawLayout();

  /// Brings every open view up to date.
  void RefreshViews();

  /// The title of the window, by the game file and by Hyper-Drive while it is minimised.
  void ShowCaption();

  /// Throws the dice, unless a roll is under way. A window that was closed meanwhile closes then.
  void Roll();

  /// The same with dice named by the player.
  void RollNamed(int die1, int die2);

  /// The roll command of the menu: asks where a run goes on, takes a keyed amount, and stops or
  /// starts the auto-roll.
  void RollByCommand();

  /// Shows the table where it was left, and the screens that could be seen when the last session
  /// ended.
  void ShowAsLeft();

  /// Starts a run under Hyper-Drive, and comes back when it has ended; stops one that goes on. A
  /// window that was closed meanwhile closes then.
  void RunHyperDrive();

  /// Rolls until something stops the run, as with the auto-roll of Auto-Play; stops a run that goes
  /// on.
  void RollByItself();

  /// What is laid over the plain table, and the panel beside it.
  TableLayer& Layer() { return *layer_; }
  bool ShowsPanel() const;

  /// Ends the program as closing the window does, without a question: whatever runs or asks is
  /// ended first, and the game kept for the next start.
  void EndUnasked();

  /// The login session is about to end: the game is kept, and a closing that follows soon asks
  /// nothing.
  void LoginEnds();

  /// What is drawn beside the game record: the dice as they lie, chips in the hand.
  TableView& View() { return view_; }
  picLayoutBox* Layout() { return picLayout_; }

  // The mouse on `picLayout`, in table units.
  void MouseMoved(QPointF place);
  void MouseLeft();
  void MousePressed(QPointF place, const QMouseEvent& event);
  void MouseReleased(QPointF place, const QMouseEvent& event);

  /// The status line and F1 speak of a place, as if the mouse were there.
  void PointAt(QPointF place);

  /// Puts the keyed-bet box where the record says, or away.
  void PlaceKeyedBox();

 protected:
  void closeEvent(QCloseEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;
  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  bool focusNextPrevChild(bool next) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void OpenAsLeft();
  void MakeLayer();
  void PlacePanel();
  void FollowSettings();
  void PlaceOnScreen();
  /// Runs what throws dice or runs a script; a window that was closed meanwhile closes then.
  void RunAtTable(const std::function<void()>& run);
  void EndRun();
  void RollOn();
  void ShowToAsk();
  bool KeepSession();
  void EndStep();
  void CloseUnasked(QCloseEvent* event);
  void KeepGameWhilePlaying();
  void MakeKeyedBox();
  void TakeKeyedAmount();
  void MakeStatusRow(QVBoxLayout* column);
  void ShowQuickStatus();
  void ShowScript();
  bool TakeHotKey(const QKeyEvent& event);
  bool TakeTableKey(const QKeyEvent& event);
  int SpotUnderMouse() const;

  TableView view_;
  picLayoutBox* picLayout_ = nullptr;
  TableLayer* layer_ = nullptr;
  TablePanel* panel_ = nullptr;
  FloatingCard* card_ = nullptr;
  FirstHints* hints_ = nullptr;
  QLabel* lblQuickStats_ = nullptr;
  QLabel* lblAutoBet_ = nullptr;
  QTimer* timerQuickStats_ = nullptr;
  QLineEdit* txtEnterBet_ = nullptr;
  Menus* menus_ = nullptr;
  QPointF mouse_{-1, -1};
  int helpTopic_ = 0;
  bool takingKeyedAmount_ = false;
  bool chipsInHand_ = false;
  bool hintsWanted_ = false;
  bool drawnForHyperDrive_ = false;
  bool running_ = false;
  bool closeAfterRun_ = false;
  bool keepDue_ = false;          // the game is kept as soon as the roll is whole
  bool ending_ = false;           // nobody is there to be asked
  bool rollOnIfItStays_ = false;  // nobody has asked the dice to stop
};
