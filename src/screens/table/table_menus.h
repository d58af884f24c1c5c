// The menus of the table.
#pragma once

#include <QAction>
#include <QMainWindow>
#include <QMenu>
#include <functional>
#include <vector>

/// Commands of the menus that open a screen or throw the dice.
struct TableActions {
  std::function<void()> Roll;
  std::function<void()> ShowBankroll;
  std::function<void()> ShowStackValues;
  std::function<void()> ShowAutoPlay;
  std::function<void()> ShowFlags;
  std::function<void()> ShowEventsLog;
};

/// Builds the menu bar of the table and keeps its check marks, captions and enabled commands in
/// step with the game record.
class TableMenus {
 public:
  TableMenus(QMainWindow* table, TableActions actions);

 private:
  /// When a command can be given: always, or only while neither dice nor a script are at work.
  enum class Needs { Nothing, TableAtRest };

  struct Item {
    QAction* Action;
    Needs When;
    std::function<bool()> Checked;     // empty for a plain command
    std::function<QString()> Caption;  // empty for a fixed caption
  };

  QMenu* Menu(QWidget* parent, const char* name, const QString& caption);
  Item& Command(QMenu* menu, const char* name, const QString& caption, Needs when,
                std::function<void()> act);
  void Toggle(QMenu* menu, const char* name, const QString& caption, Needs when, bool& field,
              std::function<void()> after = {});
  void Choice(QMenu* menu, const QString& name, const QString& caption, Needs when,
              std::function<bool()> chosen, std::function<void()> choose);
  /// Makes the choices that a menu has so far exclude each other.
  static void MakeExclusive(QMenu* menu);
  /// One choice for each caption, numbered from `first`.
  void Choices(QMenu* menu, const char* name, const QStringList& captions, Needs when, int& field,
               int first, std::function<void()> after = {});
  void SoundChoices(QMenu* menu, const char* name, const std::vector<std::string>& list, int& field,
                    std::function<void()> after);
  /// A class of notice, by its bit of `Notify`.
  void NoticeChoice(QMenu* menu, const QString& name, const QString& caption, Needs when, int bit);
  void Refresh();

  void MakeGameMenu();
  void MakeActionMenu();
  void MakeAutoBetMenu();
  void MakeViewMenu();
  void MakeOptionsMenu();
  void MakeLookMenus(QMenu* options);
  void MakePayoffMenu(QMenu* options);
  void MakeDiceMenu(QMenu* options);
  void MakeTapeMenu(QMenu* options);
  void MakeProbabilityMenu(QMenu* options);
  void MakeSoundMenu(QMenu* options);
  void MakeNoticesMenu(QMenu* options);

  QMainWindow* table_;
  TableActions actions_;
  std::vector<Item> items_;
};
