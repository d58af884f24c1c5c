// Drives the real screens: finds controls by name, clicks places of the table, and takes hold of
// modal screens while the call that opened them waits. Brings along what most tests of screens use.
#pragma once

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QDialog>
#include <QFile>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QPainter>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpression>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <algorithm>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <tuple>

#include "autobet/script.h"
#include "bets/chips.h"
#include "bets/consistency.h"
#include "bets/make_bet.h"
#include "core/game_state.h"
#include "core/host.h"
#include "core/messages.h"
#include "core/text.h"
#include "play/roll_cycle.h"
#include "rules/defaults.h"
#include "rules/presets.h"
#include "screens/frame/report.h"
#include "screens/frame/screen.h"
#include "screens/frame/screen_table.h"
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
  static_cast<ScriptState&>(Game) = ScriptState();
  ScriptEdited();
  Game.AppPath.clear();
  PrintFile.clear();
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
    auto* screen = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    screen ? drive(screen) : OnNextScreen(drive);
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

/// The text of the last message shown.
inline QString Told() {
  return PlannedMessages.Shown.empty() ? QString()
                                       : QString::fromStdString(PlannedMessages.Shown.back().Text);
}
inline void ExpectMessage(const std::string& text, const std::string& title) {
  QVERIFY(!PlannedMessages.Shown.empty());
  QCOMPARE(PlannedMessages.Shown.back().Text, text);
  QCOMPARE(PlannedMessages.Shown.back().Title, title);
}

inline QByteArray BytesOf(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// The columns of a picture that hold a colour.
inline std::set<int> ColumnsWith(const QImage& picture, QRgb color) {
  std::set<int> columns;
  for (int x = 0; x < picture.width(); ++x)
    for (int y = 0; y < picture.height(); ++y)
      if (picture.pixel(x, y) == color) columns.insert(x);
  return columns;
}

/// Gives a name to the next file screen, which is left without one and when it doesn't take it.
inline void NameFile(const QString& name) {
  OnNextScreen([name](QDialog* screen) {
    auto* box = screen->findChild<QLineEdit*>("txtFileName");
    if (!box) return NameFile(name);  // not yet: another screen asks before it
    if (name.isEmpty()) return screen->reject();
    box->setText(name);
    ClickButton(screen, "cmdOK");
    if (screen->isVisible()) screen->reject();
  });
}

/// Types over what a box holds.
inline void TypeOver(QLineEdit* box, const QString& text) {
  box->setFocus();
  box->selectAll();
  QTest::keyClick(box, Qt::Key_Delete);
  QTest::keyClicks(box, text);
}

/// Gives a menu command by its name.
inline void Command(QWidget& window, const QString& name) {
  auto* action = window.findChild<QAction*>(name);
  QVERIFY2(action && action->isEnabled(), qPrintable(name));
  action->trigger();
}

/// Asks for a change of a bet, as a click does.
inline void PutBet(int betId, Currency change) {
  Game.ChangeRequest = change;
  MakeBet(betId);
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

/// What the tests of a screen share: the table over a fresh game, a folder for its files, and the
/// controls of the screen that was opened by their names.
class ScreenTest : public QObject {
 protected:
  void LayTable() {
    table_.reset();
    folder_ = std::make_unique<QTemporaryDir>(QDir::tempPath() + "/Spiele ñ XXXXXX");
    table_ = std::make_unique<frmCrapTable>();
    BeginScreens(*table_);
    Game.DataPath = FilePath("");
    PlannedMessages.Active = true;
  }

  /// Opens a modeless screen by its command on a table that is laid anew.
  template <class Screen>
  void Open(const QString& command, Screen*& screen) {
    LayTable();
    Command(*table_, command);
    window_ = screen = table_->findChild<Screen*>();
    QVERIFY(screen && screen->isVisible() && !screen->isModal());
    QVERIFY(QTest::qWaitForWindowExposed(screen));
    screen->activateWindow();
    QTRY_VERIFY(screen->isActiveWindow());
  }

  template <class Control>
  Control* Get(const QString& name) const {
    return Find<Control>(window_, name);
  }
  QString Label(const QString& name) const { return Get<QLabel>(name)->text(); }
  bool Shows(const QString& name) const { return Get<QWidget>(name)->isVisible(); }
  void Click(const QString& button) { ClickButton(window_, button); }
  void Menu(const QString& name) { Command(*window_, name); }

  /// Clicks an option or a check box on its mark.
  void Press(const QString& name) {
    auto* button = Get<QAbstractButton>(name);
    QTest::mouseClick(button, Qt::LeftButton, {}, {12, button->height() / 2});
  }
  void Type(const QString& name, const QString& text) { TypeOver(Get<QLineEdit>(name), text); }

  /// Gives a command that asks for a file, and a name to the file screen.
  void FileMenu(const QString& command, const QString& name) {
    NameFile(name);
    Menu(command);
  }

  QString Path(const QString& name) const { return folder_->path() + "/" + name; }
  std::string FilePath(const QString& name) const { return Path(name).toStdString(); }
  QByteArray Read(const QString& name) const { return BytesOf(Path(name)); }
  void Write(const QString& name, const QByteArray& bytes = "x") const {
    QFile file(Path(name));
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
  }

  std::unique_ptr<QTemporaryDir> folder_;
  std::unique_ptr<frmCrapTable> table_;
  QMainWindow* window_ = nullptr;
};
