// Drives the real screens: finds controls by name, clicks places of the table, and takes hold of
// modal screens while the call that opened them waits.
#pragma once

#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <functional>

#include "core/game_state.h"
#include "core/text.h"
#include "rules/defaults.h"
#include "screens/play/frmMsg.h"
#include "screens/screen_tests.h"
#include "screens/table/frmCrapTable.h"
#include "screens/table/qt_host.h"
#include "screens/table/table_settings.h"

namespace QTest {
template <>
inline char* toString(const Currency& amount) {
  return qstrdup(PlainText(amount).c_str());
}
}  // namespace QTest

/// A fresh game behind a table that answers without pauses.
inline void BeginScreens(frmCrapTable& table) {
  static_cast<SoundState&>(Game) = SoundState();
  static_cast<ViewState&>(Game) = ViewState();
  LayDownDefaults();
  Game.GamesLogFile.clear();  // tests that want a log name one
  TheTable = {};
  PlannedMessages = MessagePlan();
  HurryHost = true;
  InstallQtHost(&table);
  table.resize(1000, 800);
  table.show();
  QVERIFY(QTest::qWaitForWindowExposed(&table));
}

/// Runs `drive` on the next modal screen, once it stands.
inline void OnNextScreen(std::function<void(QDialog*)> drive) {
  QTimer::singleShot(0, qApp, [drive = std::move(drive)] {
    if (auto* screen = qobject_cast<QDialog*>(QApplication::activeModalWidget())) {
      drive(screen);
    } else {
      OnNextScreen(drive);
    }
  });
}

inline void ClickButton(QWidget* screen, const QString& name) {
  auto* button = screen->findChild<QPushButton*>(name);
  QVERIFY2(button && button->isVisible() && button->isEnabled(), qPrintable(name));
  QTest::mouseClick(button, Qt::LeftButton);
}

/// A control of a window by its name.
template <class Control>
Control* Find(const QWidget* window, const QString& name) {
  auto* control = window->findChild<Control*>(name);
  if (!control) qFatal("no control %s", qPrintable(name));
  return control;
}

/// The text of a row of a list, and of all of its rows.
inline QString RowText(const QAbstractItemView* list, int row, int column = 0) {
  return list->model()->index(row, column).data().toString();
}
inline QString RowsOf(const QAbstractItemView* list) {
  QStringList texts;
  for (int row = 0; row < list->model()->rowCount(); ++row) texts << RowText(list, row);
  return texts.join(", ");
}

/// Clicks a row of a list at its left end, where its box is; returns the place.
inline QPoint ClickRow(QAbstractItemView* list, int row, Qt::KeyboardModifiers keys = {}) {
  const QModelIndex index = list->model()->index(row, 0);
  list->scrollTo(index);
  const QPoint place(12, list->visualRect(index).center().y());
  QTest::mouseClick(list->viewport(), Qt::LeftButton, keys, place);
  return place;
}

/// The last message shown.
inline void ExpectMessage(const std::string& text, const std::string& title) {
  QVERIFY(!PlannedMessages.Shown.empty());
  QCOMPARE(PlannedMessages.Shown.back().Text, text);
  QCOMPARE(PlannedMessages.Shown.back().Title, title);
}

/// Gives a menu command by its name.
inline void Command(QWidget& window, const QString& name) {
  auto* action = window.findChild<QAction*>(name);
  QVERIFY2(action && action->isEnabled(), qPrintable(name));
  action->trigger();
}

/// Opens a modeless screen by its menu command, over a fresh game; messages take planned answers.
template <class Screen>
void OpenScreen(frmCrapTable& table, const QString& command, Screen*& screen) {
  BeginScreens(table);
  PlannedMessages.Active = true;
  Command(table, command);
  screen = table.findChild<Screen*>();
  QVERIFY(screen && screen->isVisible() && !screen->isModal());
  QVERIFY(QTest::qWaitForWindowExposed(screen));
  screen->activateWindow();
  QTRY_VERIFY(screen->isActiveWindow());
}

/// A place of the table on the widget.
inline QPoint OnTable(frmCrapTable& table, QPointF place) {
  return TableTransform(table.Layout()->size()).map(place).toPoint();
}

inline void ClickPlace(frmCrapTable& table, QPointF place, Qt::KeyboardModifiers keys = {},
                       Qt::MouseButton button = Qt::LeftButton) {
  QTest::mouseClick(table.Layout(), button, keys, OnTable(table, place));
}

inline void ClickBet(frmCrapTable& table, int betId, Qt::KeyboardModifiers keys = {}) {
  ClickPlace(table, ChipPosition(betId), keys);
}

/// Throws these dice by a right click on the table.
inline void RightClickRolls(frmCrapTable& table, int die1, int die2) {
  Game.ManualRollPending = true;
  Game.PendingDie1 = die1;
  Game.PendingDie2 = die2;
  ClickPlace(table, {300, 210}, {}, Qt::RightButton);
}
