// Menus built from rows.
#pragma once

#include <QCoreApplication>
#include <QKeySequence>
#include <QObject>
#include <QString>
#include <functional>
#include <vector>

#include "screens/frame/field.h"

class QAction;
class QKeyEvent;
class QMainWindow;
class QMenu;

/// One entry of a menu: a command, a check mark, a choice, a submenu, or a line between them.
/// Written as a call of the routines below, with what else is to be said of it appended.
struct MenuRow {
  QString Name;  // of the action
  QString Caption;
  std::function<void()> Act{};
  QKeySequence Key{};
  QString Tip{};
  std::function<bool()> Checked{};
  std::function<QString()> CaptionNow{};
  std::function<bool()> Possible{};
  QString WhyNot{};
  bool OneOfSeveral = false;
  bool ForAllWindows = false;
  std::vector<MenuRow> Rows{};  // of a submenu

  /// The key that gives the command.
  MenuRow On(const QKeySequence& key) &&;
  /// The key gives the command in every modeless window that has no use of its own for it.
  MenuRow Everywhere() &&;
  /// The command can be given while this holds; else it is greyed and its tip says why.
  MenuRow When(std::function<bool()> possible, const QString& whyNot) &&;
  /// The command can be given while neither dice nor a script are at work.
  MenuRow AtRest() &&;
  /// The caption follows the game.
  MenuRow Named(std::function<QString()> caption) &&;
  MenuRow Told(const QString& tip) &&;
};

MenuRow Command(const QString& name, const QString& caption, std::function<void()> act);
MenuRow Toggle(const QString& name, const QString& caption, const RecordField<bool>& field);
/// A check mark that a routine of the engine sets: `act` runs as a command does.
MenuRow Check(const QString& name, const QString& caption, std::function<bool()> checked,
              std::function<void()> act);
MenuRow Choice(const QString& name, const QString& caption, const RecordField<int>& field,
               int value);
/// A choice for each caption, named `name_0` and so on, of values from `first` up.
std::vector<MenuRow> Choices(const QString& name, const QStringList& captions,
                             const RecordField<int>& field, int first = 0);
MenuRow Submenu(const QString& name, const QString& caption, std::vector<MenuRow> rows);
MenuRow Separator();

/// The menus of one window. Check marks, captions and what can be done follow the record whenever
/// a menu opens, after each command, and at `Refresh`.
class Menus : public QObject {
 public:
  /// `place` names the window in the report of a fault.
  Menus(QMainWindow* window, const char* place);

  QMenu* Add(const QString& name, const QString& caption, std::vector<MenuRow> rows);
  void Refresh();

  /// Gives the command of a key that stands for all windows; false when there is none.
  static bool TakeKeyOfAllWindows(const QKeyEvent& event);

 private:
  struct Entry {
    QAction* Action;
    MenuRow Row;
  };

  void Fill(QMenu* menu, std::vector<MenuRow> rows);
  QAction* AddAction(QMenu* menu, MenuRow row);
  void Run(std::size_t entry);

  QMainWindow* window_;
  const char* place_;
  std::vector<Entry> entries_;
};
