// What every modeless window stands on.
#pragma once

#include <QMainWindow>

#include "screens/frame/menus.h"

class QBoxLayout;
class QLabel;
class QPushButton;

/// A window that shows the record beside the table: its name, caption and help topic, F1, Esc and
/// the function keys of the table, menus from rows, bound controls, and a view that is refreshed
/// only while somebody can see it.
///
/// A screen of its own adds controls in its constructor, binds them (screens/frame/bind.h), and
/// shows in `ShowRecord` what no binding shows.
class Screen : public QMainWindow {
  Q_OBJECT

 public:
  /// `name` is the window's object name and stands in the report of a fault.
  Screen(QWidget* table, const char* name, const QString& caption, int helpTopic);

  /// Brings the window up to date with the record. Nothing happens while it can't be seen, or while
  /// changes of the player wait for the dice: what was clicked stays as it was clicked.
  void Refresh();

  /// Shows the window in front of the others, also when it was minimised.
  void Present();

 protected:
  /// Shows what no binding shows.
  virtual void ShowRecord() {}

  /// The window has become visible: what it shows is about to be refreshed.
  virtual void Opened() {}

  /// Takes a key of the window's own; true when it was one.
  virtual bool TakeKey(QKeyEvent&) { return false; }

  /// What is to be done before the window closes; false keeps it open.
  virtual bool MayClose() { return true; }

  /// The topic that F1 opens.
  void SetHelpTopic(int topic) { helpTopic_ = topic; }

  /// Runs what a control does; a fault in it is reported under the window's name. For changes of
  /// the record see `ChangeByPlayer`.
  void Do(const std::function<void()>& act);

  /// The smallest size of the window and its first one, told for letters of the usual height;
  /// larger letters ask for more of both.
  void SetSizes(QSize smallest, QSize atStart);

  Menus& MenuBar() { return *menus_; }

  /// A button at the end of a row or column that does `act`.
  QPushButton* AddButton(QBoxLayout* row, const QString& name, const QString& caption,
                         const QString& tip, std::function<void()> act);

  void showEvent(QShowEvent* event) override;
  void changeEvent(QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  QByteArray place_;
  int helpTopic_;
  Menus* menus_;
};

/// The keys that mean the same in every window: F1 for help, Ctrl+Shift+E for the last error.
bool TakeCommonKey(const QKeyEvent& event, int helpTopic);

/// A label in the middle of a list (its viewport) that says what would fill it.
QLabel* EmptyLabel(QWidget* list, const char* name, const QString& text);
