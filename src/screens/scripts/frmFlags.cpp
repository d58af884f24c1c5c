#include "screens/scripts/frmFlags.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QListView>
#include <QPushButton>
#include <QVBoxLayout>
#include <string>
#include <vector>

#include "autobet/script.h"
#include "core/help_topics.h"
#include "screens/frame/bind.h"
#include "screens/frame/controls.h"
#include "screens/frame/player_change.h"
#include "screens/scripts/script_commands.h"

namespace {

constexpr QSize kSmallest(280, 200);
constexpr QSize kAtStart(340, 380);

const Flag& FlagAt(int row) { return Game.Flags[static_cast<unsigned>(row)]; }

QString RowOf(int row) {
  const Flag& flag = FlagAt(row);
  return Text(flag.FlagName) + (flag.FlagValue != kFalse ? " - True" : " - False");
}

void SetFlags(const std::vector<std::string>& names, int truth) {
  for (const std::string& name : names) {
    const int at = FindFlag(name);
    if (at >= 0) Game.Flags[static_cast<unsigned>(at)].FlagValue = static_cast<std::int16_t>(truth);
  }
  Game.FlagsTouched = true;
}

}  // namespace

frmFlags::frmFlags(QWidget* table) : Screen(table, "frmFlags", tr("Flag Values"), kTopicFlags) {
  const auto name = [](int row) { return Text(FlagAt(row).FlagName); };
  flags_ = new RecordModel(
      this, [] { return static_cast<int>(Game.Flags.size()); }, {{.Text = RowOf, .ToolTip = name}},
      name);
  lstShowflags_ = New<QListView>("lstShowflags");
  lstShowflags_->setAccessibleName(tr("Flags"));
  lstShowflags_->setSelectionMode(QAbstractItemView::ExtendedSelection);
  lstShowflags_->setUniformItemSizes(true);
  lstShowflags_->setTextElideMode(Qt::ElideMiddle);  // the value stays in sight
  lstShowflags_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  lstShowflags_->setSpacing(2);
  lstShowflags_->setModel(flags_);
  lblNoFlags_ = EmptyLabel(lstShowflags_->viewport(), "lblNoFlags", tr("The script has no flags."));

  QWidget* content = new QWidget(this);
  QVBoxLayout* column = new QVBoxLayout(content);
  column->addWidget(lstShowflags_, 1);
  column->addWidget(MakeButtons());
  setCentralWidget(content);
  MenuBar().Add("mnuEdit", tr("&Edit"), {Command("mnuPrint", tr("&Print"), [this] {
                                           PrintReport(this, FlagsReport());
                                         }).On(QKeySequence::Print)});
  SetSizes(kSmallest, kAtStart);
}

QWidget* frmFlags::MakeButtons() {
  QWidget* panel = new QWidget(this);
  QHBoxLayout* row = new QHBoxLayout(panel);
  row->setContentsMargins(0, 0, 0, 0);
  const auto add = [&](const char* name, const QString& caption, const QString& tip,
                       std::function<bool()> possible, std::function<void()> act) {
    const Binding& shown =
        BindPossible(AddButton(row, name, caption, tip, std::move(act)), std::move(possible));
    connect(lstShowflags_->selectionModel(), &QItemSelectionModel::selectionChanged, &shown,
            &Binding::Load);
  };
  const auto selected = [this] { return lstShowflags_->selectionModel()->hasSelection(); };
  add("cmdSetTruth_0", tr("&True"), tr("Set the selected flags to True"), selected,
      [this] { SetSelected(kTrue); });
  add("cmdSetTruth_1", tr("&False"), tr("Set the selected flags to False"), selected,
      [this] { SetSelected(kFalse); });
  row->addStretch(1);
  const auto some = [] { return !Game.Flags.empty(); };
  add("cmdSelectAll", tr("Select &All"), tr("Select every flag"), some, [this] {
    lstShowflags_->selectAll();
    lstShowflags_->setFocus();
  });
  return panel;
}

void frmFlags::ShowRecord() {
  flags_->Refresh();
  lblNoFlags_->setVisible(Game.Flags.empty());
}

/// What is set while a script is at work or the dice are in the air is news to the run after.
void frmFlags::SetSelected(int truth) {
  std::vector<std::string> names;
  for (const int row : SelectedRows(lstShowflags_)) names.push_back(FlagAt(row).FlagName);
  ChangeByPlayer([names, truth] { SetFlags(names, truth); });
}

Report frmFlags::FlagsReport() {
  QStringList heading = GameHeading(tr("Flag values for Auto-Bet file:   %1").arg(ScriptName()));
  heading << tr("Rolls:  %1").arg(Count(Game.RollCount[0]));
  return {.Title = tr("Kelvanor Flag Values"),
          .Heading = heading,
          .Rows = static_cast<int>(Game.Flags.size()),
          .Row = [](int row) { return QStringList{RowOf(row)}; }};
}
