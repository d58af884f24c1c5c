#include "screens/scripts/frmFlags.h"

#include <QAction>
#include <QDate>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLocale>
#include <QMenuBar>
#include <QPainter>
#include <functional>
#include <string>
#include <vector>

#include "autobet/script.h"
#include "core/help_topics.h"
#include "core/host.h"
#include "core/messages.h"
#include "core/text.h"
#include "screens/frame/between_rolls.h"
#include "screens/frame/guard.h"
#include "screens/frame/help.h"
#include "screens/frame/paper.h"
#include "screens/scripts/script_commands.h"

namespace {

constexpr QSize kSmallest(280, 200);
constexpr QSize kAtStart(340, 380);
constexpr int kNameRole = Qt::UserRole;

QString NameOf(const Flag& flag) { return QString::fromStdString(flag.FlagName); }

QString RowOf(const Flag& flag) {
  return NameOf(flag) + (flag.FlagValue != kFalse ? " - True" : " - False");
}

void SetFlags(const std::vector<std::string>& names, int truth) {
  for (const std::string& name : names) {
    const int at = FindFlag(name);
    if (at >= 0) Game.Flags[static_cast<unsigned>(at)].FlagValue = static_cast<std::int16_t>(truth);
  }
  Game.FlagsTouched = true;
  Game.GameChanged = true;
}

}  // namespace

frmFlags::frmFlags(QWidget* parent) : QMainWindow(parent) {
  setObjectName("frmFlags");
  setWindowTitle(tr("Flag Values"));
  QWidget* content = new QWidget(this);
  QVBoxLayout* column = new QVBoxLayout(content);
  lstShowflags_ = new QListWidget(content);
  lstShowflags_->setObjectName("lstShowflags");
  lstShowflags_->setAccessibleName(tr("Flags"));
  lstShowflags_->setSelectionMode(QAbstractItemView::ExtendedSelection);
  lstShowflags_->setUniformItemSizes(true);
  lstShowflags_->setTextElideMode(Qt::ElideMiddle);  // the value stays in sight
  lstShowflags_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  connect(lstShowflags_, &QListWidget::itemSelectionChanged, this, [this] { ShowWhatCanBeDone(); });
  column->addWidget(lstShowflags_, 1);
  lstShowflags_->setSpacing(2);
  lblNoFlags_ = new QLabel(tr("The script has no flags."));
  lblNoFlags_->setObjectName("lblNoFlags");
  lblNoFlags_->setAlignment(Qt::AlignCenter);
  lblNoFlags_->setWordWrap(true);
  lblNoFlags_->setEnabled(false);
  (new QVBoxLayout(lstShowflags_->viewport()))->addWidget(lblNoFlags_);
  setCentralWidget(content);
  MakeButtons(column);
  MakeMenus();
  setMinimumSize(kSmallest.expandedTo(minimumSizeHint()));
  resize(kAtStart.expandedTo(sizeHint()));
  RefreshFlagsView();
}

void frmFlags::MakeButtons(QVBoxLayout* column) {
  QHBoxLayout* row = new QHBoxLayout;
  const auto add = [&](const char* name, const QString& caption, const QString& tip,
                       std::function<void()> act) {
    QPushButton* button = new QPushButton(caption, centralWidget());
    button->setObjectName(name);
    button->setToolTip(tip);
    connect(button, &QPushButton::clicked, this, [act = std::move(act)] { act(); });
    row->addWidget(button);
    return button;
  };
  cmdSetTruth_[0] = add("cmdSetTruth_0", tr("&True"), tr("Set the selected flags to True"),
                        [this] { SetSelected(kTrue); });
  cmdSetTruth_[1] = add("cmdSetTruth_1", tr("&False"), tr("Set the selected flags to False"),
                        [this] { SetSelected(kFalse); });
  row->addStretch(1);
  cmdSelectAll_ = add("cmdSelectAll", tr("Select &All"), tr("Select every flag"), [this] {
    lstShowflags_->selectAll();
    lstShowflags_->setFocus();
  });
  column->addLayout(row);
}

void frmFlags::MakeMenus() {
  QMenu* edit = menuBar()->addMenu(tr("&Edit"));
  edit->setObjectName("mnuEdit");
  QAction* print = edit->addAction(tr("&Print"));
  print->setObjectName("mnuPrint");
  print->setShortcut(QKeySequence::Print);
  connect(print, &QAction::triggered, this, [this] { PrintList(); });
}

void frmFlags::RefreshFlagsView() {
  const int count = static_cast<int>(Game.Flags.size());
  while (lstShowflags_->count() > count) delete lstShowflags_->takeItem(count);
  while (lstShowflags_->count() < count) lstShowflags_->addItem(QString());
  for (int row = 0; row < count; ++row) {
    const Flag& flag = Game.Flags[static_cast<unsigned>(row)];
    QListWidgetItem* item = lstShowflags_->item(row);
    if (const QString text = RowOf(flag); item->text() != text) item->setText(text);
    if (const QString name = NameOf(flag); item->data(kNameRole).toString() != name) {
      item->setData(kNameRole, name);
      item->setToolTip(name);
      item->setSelected(false);
    }
  }
  lblNoFlags_->setVisible(count == 0);
  ShowWhatCanBeDone();
}

void frmFlags::ShowWhatCanBeDone() {
  const bool selected = !lstShowflags_->selectedItems().isEmpty();
  for (QPushButton* button : cmdSetTruth_) button->setEnabled(selected);
  cmdSelectAll_->setEnabled(lstShowflags_->count() > 0);
}

/// What is set while a script is at work or the dice are in the air is news to the run after.
void frmFlags::SetSelected(int truth) {
  std::vector<std::string> names;
  for (const QListWidgetItem* item : lstShowflags_->selectedItems())
    names.push_back(item->data(kNameRole).toString().toStdString());
  BetweenRolls([names, truth] { SetFlags(names, truth); });
  TheHost.RefreshViews();
}

QStringList frmFlags::PrintHeading() {
  const QString game = Game.GameFileName.empty()
                           ? QString("untitled game")
                           : QFileInfo(QString::fromStdString(Game.GameFileName)).fileName();
  return {"Flag values for Auto-Bet file:   " + ScriptName(), game,
          QLocale().toString(QDate::currentDate(), QLocale::ShortFormat),
          "Rolls:  " + QString::fromStdString(CountText(Game.RollCount[0]))};
}

void frmFlags::PrintList() {
  constexpr int kHeadingSize = 12;
  constexpr int kTextSize = 10;
  if (!CanPrint())
    return ShowMessage("There's no printer to print on.", "Print", kTopicFlags, OkStop);
  const auto paint = [&](QPainter& painter, QSizeF page, const std::function<void()>& nextPage) {
    double y = 0;
    const auto print = [&](const QString& text, int size, bool bold) {
      if (y + kHeadingSize > page.height()) {
        nextPage();
        y = 0;
      }
      y = PrintLine(painter, y, page.width(), text, size, bold);
    };
    const QStringList heading = PrintHeading();
    for (const QString& line : heading) print(line, kHeadingSize, &line == &heading.front());
    print({}, kTextSize, false);
    for (const Flag& flag : Game.Flags) print(RowOf(flag), kTextSize, false);
  };
  Guarded("Print Flags", [&] { PrintOnPaper("Kelvanor Flag Values", paint); });
}

void frmFlags::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_F1: ShowHelp(kTopicFlags); break;
    case Qt::Key_Escape: close(); break;
    default: QMainWindow::keyPressEvent(event);
  }
}
