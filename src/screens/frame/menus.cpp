#include "screens/frame/menus.h"

#include <QAction>
#include <QActionGroup>
#include <QKeyEvent>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPointer>
#include <utility>

#include "core/host.h"
#include "screens/frame/guard.h"
#include "screens/frame/player_change.h"

namespace {

QList<QPointer<QAction>> ActionsForAllWindows;

QKeySequence KeyOf(const QKeyEvent& event) {
  return QKeySequence(event.modifiers().toInt() | event.key());
}

}  // namespace

// ---- Rows ----

MenuRow MenuRow::On(const QKeySequence& key) && {
  Key = key;
  return std::move(*this);
}

MenuRow MenuRow::Everywhere() && {
  ForAllWindows = true;
  return std::move(*this);
}

MenuRow MenuRow::When(std::function<bool()> possible, const QString& whyNot) && {
  Possible = std::move(possible);
  WhyNot = whyNot;
  return std::move(*this);
}

MenuRow MenuRow::AtRest() && {
  return std::move(*this).When(TableAtRest, QObject::tr("The dice or a script are at work."));
}

MenuRow MenuRow::Named(std::function<QString()> caption) && {
  CaptionNow = std::move(caption);
  return std::move(*this);
}

MenuRow MenuRow::Told(const QString& tip) && {
  Tip = tip;
  return std::move(*this);
}

MenuRow Command(const QString& name, const QString& caption, std::function<void()> act) {
  return {name, caption, std::move(act)};
}

MenuRow Check(const QString& name, const QString& caption, std::function<bool()> checked,
              std::function<void()> act) {
  MenuRow row = Command(name, caption, std::move(act));
  row.Checked = std::move(checked);
  return row;
}

MenuRow Toggle(const QString& name, const QString& caption, const RecordField<bool>& field) {
  return Check(
      name, caption, [field] { return field.Get(); },
      [field] { ChangeByPlayer([field, on = !field.Get()] { field.Set(on); }); });
}

MenuRow Choice(const QString& name, const QString& caption, const RecordField<int>& field,
               int value) {
  MenuRow row = Check(
      name, caption, [field, value] { return field.Get() == value; },
      [field, value] { ChangeByPlayer([field, value] { field.Set(value); }); });
  row.OneOfSeveral = true;
  return row;
}

std::vector<MenuRow> Choices(const QString& name, const QStringList& captions,
                             const RecordField<int>& field, int first) {
  std::vector<MenuRow> rows;
  for (int i = 0; i < captions.size(); ++i)
    rows.push_back(Choice(QString("%1_%2").arg(name).arg(i), captions[i], field, first + i));
  return rows;
}

MenuRow Submenu(const QString& name, const QString& caption, std::vector<MenuRow> rows) {
  MenuRow row{name, caption};
  row.Rows = std::move(rows);
  return row;
}

MenuRow Separator() { return {}; }

// ---- Menus ----

Menus::Menus(QMainWindow* window, const char* place)
    : QObject(window), window_(window), place_(place) {}

QMenu* Menus::Add(const QString& name, const QString& caption, std::vector<MenuRow> rows) {
  QMenu* menu = window_->menuBar()->addMenu(caption);
  menu->setObjectName(name);
  Fill(menu, std::move(rows));
  Refresh();
  return menu;
}

void Menus::Fill(QMenu* menu, std::vector<MenuRow> rows) {
  menu->setToolTipsVisible(true);
  connect(menu, &QMenu::aboutToShow, this, [this] { Refresh(); });
  QActionGroup* group = nullptr;
  for (MenuRow& row : rows) {
    if (!row.OneOfSeveral) group = nullptr;
    if (row.Name.isEmpty()) {
      menu->addSeparator();
    } else if (!row.Rows.empty()) {
      QMenu* below = menu->addMenu(row.Caption);
      below->setObjectName(row.Name);
      Fill(below, std::move(row.Rows));
    } else {
      const bool oneOfSeveral = row.OneOfSeveral;
      QAction* action = AddAction(menu, std::move(row));
      if (!oneOfSeveral) continue;
      if (!group) group = new QActionGroup(menu);
      group->setExclusionPolicy(QActionGroup::ExclusionPolicy::ExclusiveOptional);
      group->addAction(action);
    }
  }
}

QAction* Menus::AddAction(QMenu* menu, MenuRow row) {
  QAction* action = menu->addAction(row.Caption);
  action->setObjectName(row.Name);
  action->setShortcut(row.Key);
  action->setCheckable(static_cast<bool>(row.Checked));
  if (row.ForAllWindows) ActionsForAllWindows.append(action);
  const std::size_t entry = entries_.size();
  connect(action, &QAction::triggered, this, [this, entry] { Run(entry); });
  entries_.push_back({action, std::move(row)});
  return action;
}

/// What can't be done now may have become so since the menu was refreshed: ask again.
void Menus::Run(std::size_t entry) {
  const MenuRow& row = entries_[entry].Row;
  if (!row.Possible || row.Possible()) {
    Guarded(place_, row.Act);
    TheHost.RefreshViews();
  }
  Refresh();
}

void Menus::Refresh() {
  for (const Entry& entry : entries_) {
    const MenuRow& row = entry.Row;
    const bool possible = !row.Possible || row.Possible();
    entry.Action->setEnabled(possible);
    const QString caption = row.CaptionNow ? row.CaptionNow() : row.Caption;
    if (entry.Action->text() != caption) entry.Action->setText(caption);
    // A tool tip that repeats the caption says nothing.
    entry.Action->setToolTip(!possible ? row.WhyNot : row.Tip);
    if (row.Checked) entry.Action->setChecked(row.Checked());
  }
}

bool Menus::TakeKeyOfAllWindows(const QKeyEvent& event) {
  for (const QPointer<QAction>& action : ActionsForAllWindows) {
    if (!action || action->shortcut().isEmpty() || action->shortcut() != KeyOf(event)) continue;
    action->trigger();
    return true;
  }
  return false;
}
