#include "screens/play/frmAutoPlay.h"

#include <QEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QScrollArea>
#include <QSignalBlocker>
#include <QVBoxLayout>
#include <algorithm>

#include "autoplay/auto_play.h"
#include "core/help_topics.h"
#include "core/text.h"
#include "screens/frame/between_rolls.h"
#include "screens/frame/help.h"
#include "screens/frame/numeric_entry.h"
#include "screens/play/modify_amounts.h"

namespace {

constexpr int kRemainingInterval = 200;
constexpr int kAmountDecimals = 2;
constexpr int kAmountLength = 12;
constexpr int kCountLength = 9;
const Currency kLargestAmount = Currency::FromRaw(9'999'999'999'900);

QString Text(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QVBoxLayout* ColumnOf(QGroupBox* group) {
  QVBoxLayout* column = new QVBoxLayout(group);
  column->setSpacing(6);
  return column;
}

QLabel* Caption(QWidget* parent, const QString& text, QWidget* buddy) {
  QLabel* label = new QLabel(text, parent);
  label->setBuddy(buddy);
  return label;
}

/// The number of a box; an empty one counts as 0.
long long WholeNumber(const QString& text) { return text.toLongLong(); }

}  // namespace

frmAutoPlay::frmAutoPlay(QWidget* parent) : QMainWindow(parent) {
  setObjectName("frmAutoPlay");
  setWindowTitle("Auto-Play");
  content_ = new QWidget;
  QGridLayout* grid = new QGridLayout(content_);
  grid->setContentsMargins(12, 12, 12, 12);
  grid->setSpacing(12);
  grid->addWidget(MakeHandling(tr("Auto-Handle Winning Bets"), "optHandleWinningBets",
                               kWinChoiceNames, Game.HandleWinningBets, AutoWinSameBet),
                  0, 0);
  grid->addWidget(MakeHandling(tr("Auto-Handle Losing Bets"), "optHandleLosingBets",
                               kLossChoiceNames, Game.HandleLosingBets, AutoLossSameBet),
                  1, 0);
  grid->addWidget(MakeAmounts(), 0, 1);
  grid->addWidget(MakeOdds(), 1, 1);
  grid->addWidget(MakeComeOut(), 0, 2);
  grid->addWidget(MakeRolling(), 1, 2);
  grid->setColumnStretch(0, 3);
  grid->setColumnStretch(1, 2);
  grid->setColumnStretch(2, 4);
  grid->setRowStretch(0, 1);
  grid->setRowStretch(1, 1);
  // A small screen shows a part and scrolls.
  QScrollArea* area = new QScrollArea(this);
  area->setFrameShape(QFrame::NoFrame);
  area->setWidgetResizable(true);
  area->setWidget(content_);
  setCentralWidget(area);
  resize(content_->sizeHint().expandedTo({1080, 580}));
  timerRemaining_ = new QTimer(this);
  timerRemaining_->setObjectName("timerRemaining");
  connect(timerRemaining_, &QTimer::timeout, this, [this] { ShowRemaining(); });
}

// ---- The pieces ----

void frmAutoPlay::Change(std::function<void()> change) {
  BetweenRolls([change = std::move(change)] {
    change();
    Game.GameChanged = true;
  });
  RefreshAutoPlayView();
}

QRadioButton* frmAutoPlay::Option(QWidget* parent, const QString& name, std::string_view caption,
                                  int& field, int value, std::function<void()> choose) {
  QRadioButton* option = new QRadioButton(Text(caption), parent);
  option->setObjectName(name);
  connect(option, &QRadioButton::clicked, this, [this, choose] { Change(choose); });
  shows_.push_back([option, &field, value] { option->setChecked(field == value); });
  return option;
}

QComboBox* frmAutoPlay::BiasList(QWidget* parent, const char* name,
                                 std::span<const std::string_view> items, int& field) {
  QComboBox* list = new QComboBox(parent);
  list->setObjectName(name);
  for (const std::string_view item : items) list->addItem(Text(item));
  connect(list, qOverload<int>(&QComboBox::activated), this,
          [this, &field](int index) { Change([&field, index] { field = index; }); });
  shows_.push_back([list, &field] { list->setCurrentIndex(field); });
  return list;
}

QCheckBox* frmAutoPlay::Box(QWidget* parent, const char* name, const QString& caption, bool& field,
                            std::function<void(bool)> set) {
  QCheckBox* box = new QCheckBox(caption, parent);
  box->setObjectName(name);
  connect(box, &QCheckBox::clicked, this, [this, set](bool on) { Change([set, on] { set(on); }); });
  shows_.push_back([box, &field] { box->setChecked(field); });
  return box;
}

QLineEdit* frmAutoPlay::Number(QWidget* parent, const QString& name, int decimals, int length,
                               std::function<QString()> shown,
                               std::function<void(const QString&)> take) {
  QLineEdit* box = new QLineEdit(parent);
  box->setObjectName(name);
  box->setMaxLength(length);
  MakeNumericBox(box, decimals, false);
  box->setMinimumWidth(box->fontMetrics().horizontalAdvance(QString(length, '0')) + 16);
  box->installEventFilter(this);
  numbers_.push_back({box, std::move(shown), std::move(take)});
  const std::size_t at = numbers_.size() - 1;
  connect(box, &QLineEdit::returnPressed, this, [this, at] { TakeNumber(numbers_[at]); });
  shows_.push_back([this, at] {
    const NumberBox& number = numbers_[at];
    const QString text = number.Shown();
    if (!number.Box->isModified() && number.Box->text() != text) number.Box->setText(text);
  });
  return box;
}

/// Takes what was typed; the box then shows what it has become.
void frmAutoPlay::TakeNumber(const NumberBox& number) {
  if (!number.Box->isModified()) return;
  if (number.Box->text().isEmpty()) number.Box->setText("0");
  number.Box->setModified(false);
  const QString text = number.Box->text();
  if (text == number.Shown()) return;
  Change([take = number.Take, text] { take(text); });
}

bool frmAutoPlay::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::FocusOut &&
      static_cast<QFocusEvent*>(event)->reason() != Qt::PopupFocusReason) {
    for (const NumberBox& number : numbers_) {
      if (number.Box == watched) TakeNumber(number);
    }
  }
  return QMainWindow::eventFilter(watched, event);
}

// ---- Won and lost bets ----

QGroupBox* frmAutoPlay::MakeHandling(const QString& title, const char* name,
                                     std::span<const std::string_view> captions, int& field,
                                     int firstSlot) {
  QGroupBox* group = new QGroupBox(title, content_);
  QVBoxLayout* column = ColumnOf(group);
  constexpr int kSlotsApart = AutoWinBet - AutoWinSameBet;
  for (int i = 0; i < static_cast<int>(captions.size()); ++i) {
    QRadioButton* option =
        Option(group, QString("%1_%2").arg(name).arg(i), captions[static_cast<unsigned>(i)], field,
               i, [&field, i] { field = i; });
    if (i < WinSameBetModified) {
      column->addWidget(option);
      continue;
    }
    QHBoxLayout* row = new QHBoxLayout;
    row->addWidget(option, 1);
    row->addWidget(
        MakeModifyRow(group, i == WinSameBetModified ? firstSlot : firstSlot + kSlotsApart));
    column->addLayout(row);
  }
  column->addStretch(1);
  return group;
}

QWidget* frmAutoPlay::MakeModifyRow(QWidget* parent, int slot) {
  const unsigned at = static_cast<unsigned>(slot);
  QWidget* panel = new QWidget(parent);
  QHBoxLayout* row = new QHBoxLayout(panel);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(5);
  const auto button = [&](const char* name, const QString& tip, int width) {
    QPushButton* made = new QPushButton(panel);
    made->setObjectName(QString("%1_%2").arg(name).arg(slot));
    made->setToolTip(tip);
    made->setFixedWidth(width);
    return made;
  };
  // An operator joins the amount to the bet that stood; " Bet:" names the whole bet and needs none.
  if (slot == AutoWinSameBet || slot == AutoLossSameBet) {
    QPushButton* sign = button("cmdMathOperator", tr("Click for the next operator"), 30);
    connect(sign, &QPushButton::clicked, this, [this, at] {
      Change([at] { Game.ModifyOperator[at] = NextOperator(Game.ModifyOperator[at]); });
    });
    shows_.push_back([sign, at] { sign->setText(OperatorCaption(Game.ModifyOperator[at])); });
    row->addWidget(sign);
  }
  QLineEdit* amount = Number(
      panel, QString("txtModifyAmount_%1").arg(slot), kAmountDecimals, kAmountLength,
      [at] { return QString::fromStdString(PlainText(Game.ModifyAmount[at])); },
      [at](const QString& text) {
        Game.ModifyAmount[at] = std::min(ParseAmount(text.toStdString()), kLargestAmount);
      });
  amount->setAccessibleName(tr("Amount"));
  row->addWidget(amount);
  QPushButton* unit = button("cmdUnits", tr("Click for the next unit"), 92);
  connect(unit, &QPushButton::clicked, this, [this, at] {
    Change(
        [at] { Game.ModifyUnit[at] = NextUnit(static_cast<int>(Game.ModifyUnit[at].ToDouble())); });
  });
  shows_.push_back(
      [unit, at] { unit->setText(UnitCaption(static_cast<int>(Game.ModifyUnit[at].ToDouble()))); });
  row->addWidget(unit);
  return panel;
}

// ---- Amounts and odds ----

QGroupBox* frmAutoPlay::MakeAmounts() {
  QGroupBox* group = new QGroupBox(tr("Auto-Adjust Bet Amounts"), content_);
  QVBoxLayout* column = ColumnOf(group);
  for (int i = 0; i < static_cast<int>(kAdjustModeNames.size()); ++i) {
    column->addWidget(Option(group, QString("optAutoAdjustBetAmounts_%1").arg(i),
                             kAdjustModeNames[static_cast<unsigned>(i)], Game.AutoAdjust, i,
                             [i] { SetAutoAdjust(i); }));
  }
  column->addSpacing(6);
  column->addWidget(BiasList(group, "cmbLayBias", kLayBiasNames, Game.LayBias));
  column->addWidget(BiasList(group, "cmbPlaceBias", kPlaceBiasNames, Game.PlaceBias));
  column->addWidget(BiasList(group, "cmbDoBias", kDoBiasNames, Game.DoBias));
  column->addWidget(BiasList(group, "cmbDontBias", kDontBiasNames, Game.DontBias));
  column->addStretch(1);
  return group;
}

QGroupBox* frmAutoPlay::MakeOdds() {
  QGroupBox* group = new QGroupBox(tr("Odds, Place Bets and Chips"), content_);
  QVBoxLayout* column = ColumnOf(group);
  column->addWidget(Box(group, "chkAutoTakeFullOdds", " Auto-&Take Full Odds",
                        Game.AutoTakeFullOdds, SetAutoTakeFullOdds));
  column->addWidget(Box(group, "chkAutoLayFullOdds", " Auto-&Lay Full Odds", Game.AutoLayFullOdds,
                        SetAutoLayFullOdds));
  column->addWidget(Box(group, "chkAutoRemovePlaceBets", " Auto-Remove &Place Bets",
                        Game.AutoRemovePlace, [](bool on) { Game.AutoRemovePlace = on; }));
  column->addWidget(Box(group, "chkAutoArrangeChips", " Auto-A&rrange Chips", Game.AutoArrangeChips,
                        SetAutoArrangeChips));
  column->addStretch(1);
  return group;
}

// ---- The come-out list ----

QWidget* frmAutoPlay::MakeComeOut() {
  QGroupBox* group = new QGroupBox("&Working on the Come-out Roll:", content_);
  group->setObjectName("picWorkOnComeout");
  lstWorkOnComeOut_ = new QListWidget(group);
  lstWorkOnComeOut_->setObjectName("lstWorkOnComeOut");
  lstWorkOnComeOut_->setSelectionMode(QAbstractItemView::ExtendedSelection);
  lstWorkOnComeOut_->setUniformItemSizes(true);
  lstWorkOnComeOut_->setSpacing(1);
  for (int id = Lay4; id <= LastBet; ++id) new QListWidgetItem(lstWorkOnComeOut_);
  connect(lstWorkOnComeOut_, &QListWidget::itemDoubleClicked, this, &frmAutoPlay::ToggleWorking);
  shows_.push_back([this] { ShowComeOut(); });
  group->setFocusProxy(lstWorkOnComeOut_);
  QHBoxLayout* row = new QHBoxLayout(group);
  row->addWidget(lstWorkOnComeOut_, 1);
  QVBoxLayout* buttons = new QVBoxLayout;
  AddComeOutButtons(buttons, group);
  row->addLayout(buttons);
  return group;
}

void frmAutoPlay::AddComeOutButtons(QBoxLayout* column, QWidget* parent) {
  const auto add = [&](const char* name, const QString& caption, std::function<void()> act) {
    QPushButton* button = new QPushButton(caption, parent);
    button->setObjectName(name);
    connect(button, &QPushButton::clicked, this, [act] { act(); });
    column->addWidget(button);
  };
  add("cmdYes", tr("&Yes"), [this] { SetSelectedWorking(true); });
  add("cmdNo", tr("&No"), [this] { SetSelectedWorking(false); });
  column->addSpacing(8);
  add("cmdSelectAll", tr("Select &All"), [this] {
    lstWorkOnComeOut_->selectAll();
    lstWorkOnComeOut_->setFocus();
  });
  add("cmdDefault", tr("De&fault"), [this] { Change(RestoreComeOutWorking); });
  column->addStretch(1);
}

void frmAutoPlay::SetSelectedWorking(bool works) {
  std::vector<int> betIds;
  for (const QListWidgetItem* item : lstWorkOnComeOut_->selectedItems())
    betIds.push_back(lstWorkOnComeOut_->row(item) + Lay4);
  if (betIds.empty()) return;
  Change([betIds, works] { SetComeOutWorking(betIds, works); });
}

void frmAutoPlay::ToggleWorking(QListWidgetItem* item) {
  const int betId = lstWorkOnComeOut_->row(item) + Lay4;
  Change([betId] { ToggleComeOutWorking(betId); });
}

// ---- Rolling by itself ----

QGroupBox* frmAutoPlay::MakeRolling() {
  QGroupBox* group = new QGroupBox(tr("Auto-Roll"), content_);
  QHBoxLayout* halves = new QHBoxLayout(group);
  halves->setSpacing(14);
  QGridLayout* grid = new QGridLayout;
  grid->setVerticalSpacing(8);
  grid->addWidget(
      Box(group, "chkAutoRollDice", tr(" Auto-Roll &Dice"), Game.AutoRollDice, SetAutoRollDice), 0,
      0, 1, 2);
  QLineEdit* count = Number(
      group, "txtNumAutoRolls", 0, kCountLength, [] { return QString::number(Game.NumAutoRolls); },
      [](const QString& text) { SetNumAutoRolls(WholeNumber(text)); });
  count->setToolTip(tr("0 puts no limit on the rolls"));
  QLineEdit* delay = Number(
      group, "txtDelayRoll", 0, kCountLength, [] { return QString::number(Game.AutoRollDelay); },
      [](const QString& text) { SetAutoRollDelay(WholeNumber(text)); });
  lblAutoRollsRemaining_ = new QLabel(group);
  lblAutoRollsRemaining_->setObjectName("lblAutoRollsRemaining");
  lblAutoRollsRemaining_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  shows_.push_back([this] { ShowRemaining(); });
  grid->addWidget(Caption(group, tr("N&umber of rolls:"), count), 1, 0);
  grid->addWidget(count, 1, 1);
  grid->addWidget(Caption(group, tr("S&econds between rolls:"), delay), 2, 0);
  grid->addWidget(delay, 2, 1);
  grid->addWidget(new QLabel(tr("Rolls remaining:"), group), 3, 0);
  grid->addWidget(lblAutoRollsRemaining_, 3, 1);
  grid->setRowStretch(4, 1);
  halves->addLayout(grid);
  QVBoxLayout* stops = new QVBoxLayout;
  AddStopList(stops, group);
  halves->addLayout(stops, 1);
  return group;
}

void frmAutoPlay::AddStopList(QBoxLayout* column, QWidget* parent) {
  listAutoStop_ = new QListWidget(parent);
  listAutoStop_->setObjectName("listAutoStop");
  listAutoStop_->setMinimumWidth(150);
  listAutoStop_->setSpacing(1);
  for (const std::string_view name : kAutoStopNames) {
    QListWidgetItem* item = new QListWidgetItem(Text(name), listAutoStop_);
    item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
    item->setCheckState(Qt::Unchecked);
  }
  connect(listAutoStop_, &QListWidget::itemChanged, this, [this](QListWidgetItem* item) {
    const unsigned at = static_cast<unsigned>(listAutoStop_->row(item));
    const bool on = item->checkState() == Qt::Checked;
    Change([at, on] { Game.AutoStopOn[at] = on; });
  });
  shows_.push_back([this] { ShowStops(); });
  column->addWidget(Caption(parent, tr("&Stop rolling on:"), listAutoStop_));
  column->addWidget(listAutoStop_, 1);
}

// ---- What is shown ----

void frmAutoPlay::RefreshAutoPlayView() {
  if (!isVisible() || ChangesWait()) return;
  for (const auto& show : shows_) show();
}

void frmAutoPlay::ShowComeOut() {
  for (int row = 0; row < lstWorkOnComeOut_->count(); ++row) {
    QListWidgetItem* item = lstWorkOnComeOut_->item(row);
    const QString text = QString::fromStdString(ComeOutLine(row + Lay4));
    if (item->text() == text) continue;
    item->setText(text);
    const bool works = Game.ComeOutWorking[static_cast<unsigned>(row + Lay4)] != NotWorking;
    item->setForeground(
        palette().color(works ? QPalette::Active : QPalette::Disabled, QPalette::Text));
  }
}

void frmAutoPlay::ShowStops() {
  const QSignalBlocker quiet(listAutoStop_);
  for (int row = 0; row < listAutoStop_->count(); ++row) {
    const bool on = Game.AutoStopOn[static_cast<unsigned>(row)];
    listAutoStop_->item(row)->setCheckState(on ? Qt::Checked : Qt::Unchecked);
  }
}

void frmAutoPlay::ShowRemaining() {
  const bool noLimit = Game.NumAutoRolls == 0 && Game.AutoRollsLeft == 0;
  const QString text =
      noLimit ? tr("no limit") : QString::fromStdString(CountText(Game.AutoRollsLeft));
  if (lblAutoRollsRemaining_->text() != text) lblAutoRollsRemaining_->setText(text);
}

// ---- The window ----

void frmAutoPlay::showEvent(QShowEvent* event) {
  QMainWindow::showEvent(event);
  RefreshAutoPlayView();
  timerRemaining_->start(kRemainingInterval);
}

void frmAutoPlay::hideEvent(QHideEvent* event) {
  timerRemaining_->stop();
  QMainWindow::hideEvent(event);
}

void frmAutoPlay::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_F1: ShowHelp(kTopicAutoPlay); break;
    case Qt::Key_Escape: close(); break;
    default: QMainWindow::keyPressEvent(event);
  }
}
