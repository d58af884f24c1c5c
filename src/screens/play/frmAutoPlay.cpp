#include "screens/play/frmAutoPlay.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QStyle>
#include <QVBoxLayout>
#include <algorithm>

#include "autoplay/auto_play.h"
#include "core/help_topics.h"
#include "screens/frame/bind.h"
#include "screens/frame/controls.h"
#include "screens/frame/player_change.h"
#include "screens/play/modify_amounts.h"

namespace {

constexpr QSize kSmallest(320, 220);

constexpr int kAmountDecimals = 2;
constexpr int kAmountLength = 12;
constexpr int kCountLength = 9;
constexpr int kTallest = 540;  // at first, so that much of a table stays in sight
const Currency kLargestAmount = Currency::FromRaw(9'999'999'999'900);

QComboBox* BiasList(const char* name, std::span<const std::string_view> items, int& field) {
  QStringList captions;
  for (const std::string_view item : items) captions << Text(item);
  return ChoiceList(name, captions, field);
}

/// A button whose caption is what it stands at; each click goes on to the next.
QPushButton* Stepper(const QString& name, const QString& tip, int width,
                     std::function<QString()> caption, std::function<void()> next) {
  auto* button = New<QPushButton>(name);
  button->setToolTip(tip);
  button->setFixedWidth(width);
  QObject::connect(button, &QPushButton::clicked, button, [next] { ChangeByPlayer(next); });
  new Binding(button, [button, caption] { button->setText(caption()); });
  return button;
}

}  // namespace

frmAutoPlay::frmAutoPlay(QWidget* table)
    : Screen(table, "frmAutoPlay", tr("Auto-Play"), kTopicAutoPlay) {
  QWidget* content = new QWidget;
  QGridLayout* grid = new QGridLayout(content);
  grid->addWidget(MakeHandling(tr("Auto-Handle Winning Bets"), "optHandleWinningBets",
                               kWinChoiceNames, Game.HandleWinningBets, AutoWinSameBet),
                  0, 0);
  grid->addWidget(MakeHandling(tr("Auto-Handle Losing Bets"), "optHandleLosingBets",
                               kLossChoiceNames, Game.HandleLosingBets, AutoLossSameBet),
                  1, 0);
  grid->addWidget(MakeAmounts(), 0, 1);
  grid->addWidget(MakeOdds(), 1, 1);
  grid->addWidget(MakeRolling(), 2, 0);
  grid->addWidget(MakeComeOut(), 2, 1);
  grid->setColumnStretch(0, 1);
  grid->setColumnStretch(1, 1);
  grid->setRowStretch(2, 1);
  // A small screen shows a part and scrolls.
  QScrollArea* area = Scrolling(content);
  setCentralWidget(area);
  // As wide as it needs, and no taller than leaves the dice in sight.
  setMinimumSize(kSmallest);
  resize(content->minimumSizeHint().width() + style()->pixelMetric(QStyle::PM_ScrollBarExtent),
         std::min(content->sizeHint().height(), kTallest));
}

// ---- Won and lost bets ----

QGroupBox* frmAutoPlay::MakeHandling(const QString& title, const char* name,
                                     std::span<const std::string_view> captions, int& field,
                                     int firstSlot) {
  QGroupBox* group = new QGroupBox(title);
  QVBoxLayout* column = new QVBoxLayout(group);
  constexpr int kSlotsApart = AutoWinBet - AutoWinSameBet;
  for (int i = 0; i < static_cast<int>(captions.size()); ++i) {
    QHBoxLayout* row = new QHBoxLayout;
    row->addWidget(Option(QString("%1_%2").arg(name).arg(i),
                          Text(captions[static_cast<unsigned>(i)]), field, i),
                   1);
    if (i == WinSameBetModified) row->addWidget(MakeModifyRow(firstSlot));
    if (i > WinSameBetModified) row->addWidget(MakeModifyRow(firstSlot + kSlotsApart));
    column->addLayout(row);
  }
  column->addStretch(1);
  return group;
}

QWidget* frmAutoPlay::MakeModifyRow(int slot) {
  const auto at = static_cast<unsigned>(slot);
  QWidget* panel = new QWidget;
  QHBoxLayout* row = new QHBoxLayout(panel);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(5);
  // An operator joins the amount to the bet that stood; " Bet:" names the whole bet and needs none.
  if (slot == AutoWinSameBet || slot == AutoLossSameBet) {
    row->addWidget(Stepper(
        QString("cmdMathOperator_%1").arg(slot), tr("Click for the next operator"), 30,
        [at] { return OperatorCaption(Game.ModifyOperator[at]); },
        [at] { Game.ModifyOperator[at] = NextOperator(Game.ModifyOperator[at]); }));
  }
  QLineEdit* amount = TextBox(QString("txtModifyAmount_%1").arg(slot), kAmountLength);
  amount->setAccessibleName(tr("Amount"));
  Bind(amount, RecordField(Game.ModifyAmount[at]).Within(0, kLargestAmount),
       {.Decimals = kAmountDecimals});
  row->addWidget(amount);
  const auto unit = [at] { return static_cast<int>(Game.ModifyUnit[at].ToDouble()); };
  row->addWidget(Stepper(
      QString("cmdUnits_%1").arg(slot), tr("Click for the next unit"), 92,
      [unit] { return UnitCaption(unit()); },
      [at, unit] { Game.ModifyUnit[at] = NextUnit(unit()); }));
  return panel;
}

// ---- Amounts and odds ----

QGroupBox* frmAutoPlay::MakeAmounts() {
  QGroupBox* group = new QGroupBox(tr("Auto-Adjust Bet Amounts"));
  QVBoxLayout* column = new QVBoxLayout(group);
  for (int i = 0; i < static_cast<int>(kAdjustModeNames.size()); ++i) {
    column->addWidget(Option(QString("optAutoAdjustBetAmounts_%1").arg(i),
                             Text(kAdjustModeNames[static_cast<unsigned>(i)]),
                             RecordField(Game.AutoAdjust).Through(SetAutoAdjust), i));
  }
  column->addSpacing(6);
  column->addWidget(BiasList("cmbLayBias", kLayBiasNames, Game.LayBias));
  column->addWidget(BiasList("cmbPlaceBias", kPlaceBiasNames, Game.PlaceBias));
  column->addWidget(BiasList("cmbDoBias", kDoBiasNames, Game.DoBias));
  column->addWidget(BiasList("cmbDontBias", kDontBiasNames, Game.DontBias));
  column->addStretch(1);
  return group;
}

QGroupBox* frmAutoPlay::MakeOdds() {
  QGroupBox* group = new QGroupBox(tr("Odds, Place Bets and Chips"));
  QVBoxLayout* column = new QVBoxLayout(group);
  column->addWidget(CheckBox("chkAutoTakeFullOdds", tr(" Auto-&Take Full Odds"),
                             RecordField(Game.AutoTakeFullOdds).Through(SetAutoTakeFullOdds)));
  column->addWidget(CheckBox("chkAutoLayFullOdds", tr(" Auto-&Lay Full Odds"),
                             RecordField(Game.AutoLayFullOdds).Through(SetAutoLayFullOdds)));
  column->addWidget(
      CheckBox("chkAutoRemovePlaceBets", tr(" Auto-Remove &Place Bets"), Game.AutoRemovePlace));
  column->addWidget(CheckBox("chkAutoArrangeChips", tr(" Auto-A&rrange Chips"),
                             RecordField(Game.AutoArrangeChips).Through(SetAutoArrangeChips)));
  column->addStretch(1);
  return group;
}

// ---- The come-out list ----

QGroupBox* frmAutoPlay::MakeComeOut() {
  auto* group = New<QGroupBox>("picWorkOnComeout", tr("&Working on the Come-out Roll:"));
  comeOut_ = new RecordModel(
      this, [] { return LastBet; },
      {{.Text = [](int row) { return Text(ComeOutLine(row + Lay4)); },
        .Ink =
            [this](int row) {
              const bool works =
                  Game.ComeOutWorking[static_cast<unsigned>(row + Lay4)] != NotWorking;
              return palette().color(works ? QPalette::Active : QPalette::Disabled, QPalette::Text);
            }}});
  lstWorkOnComeOut_ = New<QListView>("lstWorkOnComeOut");
  lstWorkOnComeOut_->setSelectionMode(QAbstractItemView::ExtendedSelection);
  lstWorkOnComeOut_->setAccessibleName(tr("Bets that work on the come-out roll"));
  lstWorkOnComeOut_->setUniformItemSizes(true);
  lstWorkOnComeOut_->setSpacing(1);
  lstWorkOnComeOut_->setModel(comeOut_);
  connect(lstWorkOnComeOut_, &QListView::doubleClicked, this, [](const QModelIndex& index) {
    ChangeByPlayer([betId = index.row() + Lay4] { ToggleComeOutWorking(betId); });
  });
  group->setFocusProxy(lstWorkOnComeOut_);
  QHBoxLayout* row = new QHBoxLayout(group);
  row->addWidget(lstWorkOnComeOut_, 1);
  QVBoxLayout* buttons = new QVBoxLayout;
  AddButton(buttons, "cmdYes", tr("&Yes"), {}, [this] { SetSelectedWorking(true); });
  AddButton(buttons, "cmdNo", tr("&No"), {}, [this] { SetSelectedWorking(false); });
  buttons->addSpacing(8);
  AddButton(buttons, "cmdSelectAll", tr("Select &All"), {}, [this] {
    lstWorkOnComeOut_->selectAll();
    lstWorkOnComeOut_->setFocus();
  });
  AddButton(buttons, "cmdDefault", tr("De&fault"), {},
            [] { ChangeByPlayer(RestoreComeOutWorking); });
  buttons->addStretch(1);
  row->addLayout(buttons);
  return group;
}

void frmAutoPlay::SetSelectedWorking(bool works) {
  std::vector<int> betIds;
  for (const int row : SelectedRows(lstWorkOnComeOut_)) betIds.push_back(row + Lay4);
  if (betIds.empty()) return;
  ChangeByPlayer([betIds, works] { SetComeOutWorking(betIds, works); });
}

// ---- Rolling by itself ----

QGroupBox* frmAutoPlay::MakeRolling() {
  QGroupBox* group = new QGroupBox(tr("Auto-Roll"));
  QHBoxLayout* halves = new QHBoxLayout(group);
  halves->setSpacing(14);
  QGridLayout* grid = new QGridLayout;
  grid->addWidget(CheckBox("chkAutoRollDice", tr(" Auto-Roll &Dice"),
                           RecordField(Game.AutoRollDice).Through(SetAutoRollDice)),
                  0, 0, 1, 2);
  QLineEdit* count = TextBox("txtNumAutoRolls", kCountLength);
  count->setToolTip(tr("0 puts no limit on the rolls"));
  Bind(count, RecordField(Game.NumAutoRolls).Through(SetNumAutoRolls));
  QLineEdit* delay = TextBox("txtDelayRoll", kCountLength);
  Bind(delay, RecordField(Game.AutoRollDelay).Through(SetAutoRollDelay));
  auto* remaining = New<QLabel>("lblAutoRollsRemaining");
  remaining->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  BindText(remaining, [] {
    const bool noLimit = Game.NumAutoRolls == 0 && Game.AutoRollsLeft == 0;
    return noLimit ? tr("no limit") : Count(Game.AutoRollsLeft);
  });
  grid->addWidget(Caption(tr("N&umber of rolls:"), count), 1, 0);
  grid->addWidget(count, 1, 1);
  grid->addWidget(Caption(tr("Se&conds between rolls:"), delay), 2, 0);
  grid->addWidget(delay, 2, 1);
  grid->addWidget(new QLabel(tr("Rolls remaining:")), 3, 0);
  grid->addWidget(remaining, 3, 1);
  grid->setRowStretch(4, 1);
  halves->addLayout(grid);
  QVBoxLayout* stops = new QVBoxLayout;
  QListView* list = MakeStopList();
  stops->addWidget(Caption(tr("&Stop rolling on:"), list));
  stops->addWidget(list, 1);
  halves->addLayout(stops, 1);
  return group;
}

QListView* frmAutoPlay::MakeStopList() {
  stops_ = new RecordModel(
      this, [] { return static_cast<int>(kAutoStopNames.size()); },
      {{.Text = [](int row) { return Text(kAutoStopNames[static_cast<unsigned>(row)]); },
        .Checked = [](int row) { return Game.AutoStopOn[static_cast<unsigned>(row)]; },
        .Check =
            [](int row, bool on) {
              ChangeByPlayer([row, on] { Game.AutoStopOn[static_cast<unsigned>(row)] = on; });
            }}});
  auto* list = New<QListView>("listAutoStop");
  list->setAccessibleName(tr("What stops the roll"));
  list->setMinimumWidth(150);
  list->setSpacing(1);
  list->setModel(stops_);
  return list;
}

void frmAutoPlay::ShowRecord() {
  comeOut_->Refresh();
  stops_->Refresh();
}
