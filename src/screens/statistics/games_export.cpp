#include "screens/statistics/games_export.h"

#include <QDialogButtonBox>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

#include "core/help_topics.h"
#include "screens/frame/controls.h"
#include "screens/frame/dialog.h"
#include "stats/games_file.h"

std::vector<int> AskForColumns(QWidget* parent, const std::vector<int>& last) {
  Dialog screen(parent, "frmExportGames", QObject::tr("Export Games Log"), kTopicGamesLog);
  auto* column = new QVBoxLayout(&screen);
  auto* list = New<QListWidget>("lstColumns");
  for (int i = 0; i < kGameColumns; ++i) {
    auto* item = new QListWidgetItem(Text(GameColumnName(i)), list);
    const bool chosen =
        last.empty() ? i < FirstStackColumn : std::find(last.begin(), last.end(), i) != last.end();
    item->setCheckState(chosen ? Qt::Checked : Qt::Unchecked);
  }
  list->setCurrentRow(0);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
  buttons->button(QDialogButtonBox::Ok)->setObjectName("cmdOK");
  buttons->button(QDialogButtonBox::Cancel)->setObjectName("cmdCancel");
  QObject::connect(buttons, &QDialogButtonBox::accepted, &screen, &QDialog::accept);
  QObject::connect(buttons, &QDialogButtonBox::rejected, &screen, &QDialog::reject);
  column->addWidget(Caption(QObject::tr("Check the &columns to be written:"), list));
  column->addWidget(list, 1);
  column->addWidget(buttons);
  screen.resize(320, 480);
  std::vector<int> columns;
  if (screen.exec() != QDialog::Accepted) return columns;
  for (int i = 0; i < list->count(); ++i)
    if (list->item(i)->checkState() == Qt::Checked) columns.push_back(i);
  return columns;
}
