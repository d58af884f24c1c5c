// The checks, the dice, and the rate at which they are taken to be thrown.
#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QRadioButton>
#include <QVBoxLayout>

#include "bets/chips.h"
#include "bets/rule_changes.h"
#include "core/game_state.h"
#include "core/help_topics.h"
#include "core/host.h"
#include "core/limits.h"
#include "core/messages.h"
#include "core/text.h"
#include "rules/choices.h"
#include "rules/defaults.h"
#include "rules/roll_rate.h"
#include "screens/art/chip_art.h"
#include "screens/frame/bind.h"
#include "screens/frame/controls.h"
#include "screens/frame/numeric_entry.h"
#include "screens/frame/player_change.h"
#include "screens/rules/config_page.h"
#include "screens/rules/picture_chooser.h"

namespace {

constexpr int kChecks = 5;
constexpr int kRateDecimals = 4;
constexpr int kShownCheck = 3;  // the one that stands for its set
constexpr int kShownFace = 5;
constexpr double kPicture = 44;

void RedrawTable() { TheHost.RedrawLayout(); }

QColor TableInk(int slot) { return QColor::fromRgb(Game.TableColor[static_cast<unsigned>(slot)]); }

QString LabelOf(int picture) { return ChipLabel(ChipValue(picture), Game.UseCentsSymbol); }

void PaintDie(QPainter& painter, QPointF centre, int face, int style) {
  DrawDie(painter, centre, kPicture * 0.75, face, style, TableInk(ColorDice), TableInk(ColorPips));
}

class ChecksPage : public ConfigPage {
  Q_DECLARE_TR_FUNCTIONS(ChecksPage)

 public:
  ChecksPage() {
    QVBoxLayout* column = new QVBoxLayout(this);
    column->addWidget(MakeChecks());
    column->addWidget(MakeDice());
    column->addLayout(MakeRate());
    column->addStretch(1);
  }

  std::vector<TabMenu> MenusOfTab() override {
    return {{"mnuOptions",
             tr("&Options"),
             {ChecksTab},
             {Command("mnuRestoreDenominations", tr("&Restore default denominations"),
                      [this] { RestoreChecks(); })}}};
  }

  void Gather(ConfigEntries& entries) const override {
    entries.Checks = Entries();
    entries.RateChanged = txtRollsPerHour_->isModified();
    entries.RateText = txtRollsPerHour_->text().toStdString();
    entries.RateUnit = unit_;
  }

  QWidget* BoxOf(ConfigBox box, int index) override {
    return box == ConfigBox::Denomination ? txtDenomination_[static_cast<unsigned>(index)]
           : box == ConfigBox::RollRate   ? txtRollsPerHour_
                                          : nullptr;
  }

  void Taken() override {
    txtRollsPerHour_->setModified(false);
    ShowRate();
  }

 private:
  // ---- Checks ----

  QGroupBox* MakeChecks() {
    QGroupBox* group = new QGroupBox(tr("Checks"));
    QGridLayout* grid = new QGridLayout(group);
    for (int i = 0; i < kChecks; ++i) {
      const auto at = static_cast<unsigned>(i);
      QLineEdit* box = TextBox(QString("txtDenomination_%1").arg(i), kMoneyLength / 2);
      box->setMaxLength(kMoneyLength);
      box->setAccessibleName(tr("Check %1, counted from the smallest").arg(i + 1));
      const auto entry = RecordField<Currency>([this, at] { return pending_[at].Get(); },
                                               [this, at](Currency value) {
                                                 pending_[at].Set(value);
                                                 StoreChecks();
                                               })
                             .Within(0, kMostCheck);
      Bind(box, entry, {.Decimals = kMoneyDecimals, .Stores = NumberForm::AtEachKey});
      connect(box, &QLineEdit::editingFinished, this, [this] { FitBets(); });
      grid->addWidget(box, 0, i);
      txtDenomination_[at] = box;
    }
    grid->addWidget(CheckBox("chkUseCentsSymbol", tr(" \u00a2 symbol for checks < 1"),
                             RecordField(Game.UseCentsSymbol).Then(RedrawTable)),
                    1, 0, 1, kChecks);
    const PictureGrid sets{"picChips",
                           tr("Chip set %1"),
                           kChipStyles,
                           kChipStyles,
                           QSize(kPicture, kPicture),
                           [](QPainter& painter, const QRectF& area, int style) {
                             DrawChip(painter, area.center(), kPicture, kShownCheck, style,
                                      LabelOf(kShownCheck));
                           }};
    grid->addWidget(MakePictureChooser(sets, RecordField(Game.ChipStyle).Then(RedrawTable), 1), 2,
                    0, 1, kChecks);
    grid->addWidget(MakePicture("picChipsSelected", tr("The checks of the chosen set"),
                                QSize(kChecks * (kPicture + 8), kPicture + 4),
                                [](QPainter& painter, const QRectF& area) {
                                  for (int i = 0; i < kChecks; ++i) {
                                    const QPointF at((kPicture + 8) * (i + 0.5), area.center().y());
                                    DrawChip(painter, at, kPicture, i + 1, Game.ChipStyle,
                                             LabelOf(i + 1));
                                  }
                                }),
                    3, 0, 1, kChecks);
    return group;
  }

  std::array<Currency, kChecks> Entries() const {
    std::array<Currency, kChecks> values;
    for (unsigned i = 0; i < kChecks; ++i) values[i] = pending_[i].Get();
    return values;
  }

  /// All five are stored once they can stand together.
  void StoreChecks() {
    if (!SetChipValues(Entries()).Ok) return;
    unfit_ = true;
    RedrawTable();
  }

  /// The bets follow when the player has done with a box, not while a value is being typed.
  void FitBets() {
    if (!unfit_) return;
    unfit_ = false;
    ChangeByPlayer([] {
      FitBetsToRules();
      RedrawTable();
    });
  }

  void RestoreChecks() {
    if (!AskYesNo("Do you want to restore all checks to their original Kelvanor values?",
                  "Confirm?", kTopicConfigureChecks))
      return;
    ChangeByPlayer([this] {
      for (PendingEntry& entry : pending_) entry.Drop();
      SetDefaultDenominations();
      FitBetsToRules();
      RedrawTable();
    });
  }

  // ---- Dice ----

  static QGroupBox* MakeDice() {
    const QStringList actions = {tr(" Stationary"), tr(" Return after thrown"),
                                 tr(" Return on decision"), tr(" Remain on table")};
    const auto sendHome = [] {
      if (Game.DiceAction != DiceRemainOnTable) TheHost.SendDiceHome();
    };
    QGroupBox* group = new QGroupBox(tr("Dice"));
    QGridLayout* grid = new QGridLayout(group);
    const PictureGrid sets{"picDice",
                           tr("Dice set %1"),
                           kDiceStyles,
                           kDiceStyles,
                           QSize(kPicture, kPicture),
                           [](QPainter& painter, const QRectF& area, int style) {
                             PaintDie(painter, area.center(), kShownFace, style);
                           }};
    grid->addWidget(MakePictureChooser(sets, RecordField(Game.DiceStyle).Then(RedrawTable), 1), 0,
                    0, 2, 1);
    grid->addWidget(
        MakePicture("picDiceSelected", tr("The dice of the chosen set"),
                    QSize(kPicture * 2 + 8, kPicture),
                    [](QPainter& painter, const QRectF& area) {
                      for (int die = 0; die < 2; ++die) {
                        const QPointF at(kPicture * (die + 0.5) + 4 * die, area.center().y());
                        PaintDie(painter, at, die == 0 ? Game.Die1 : Game.Die2, Game.DiceStyle);
                      }
                    }),
        2, 0, 2, 1);
    for (int i = 0; i < actions.size(); ++i) {
      grid->addWidget(Option(QString("optDiceAction_%1").arg(i), actions[i],
                             RecordField(Game.DiceAction).Then(sendHome), i),
                      i, 1);
    }
    grid->setColumnStretch(2, 1);
    new Binding(group, CorrectDiceStyle);
    return group;
  }

  // ---- The rate ----

  QHBoxLayout* MakeRate() {
    txtRollsPerHour_ = TextBox("txtRollsPerHour", kMoneyLength + 2);
    MakeNumericBox(txtRollsPerHour_, kRateDecimals, false);
    txtRollsPerHour_->installEventFilter(this);
    cmbRollsPerTime_ = New<QComboBox>("cmbRollsPerTime");
    for (const RateUnit& unit : kRateUnitTable) cmbRollsPerTime_->addItem(Text(unit.Item));
    connect(cmbRollsPerTime_, &QComboBox::activated, this, [this](int unit) { ChangeUnit(unit); });
    new Binding(txtRollsPerHour_, [this] { ShowRate(); });
    QHBoxLayout* row = new QHBoxLayout;
    row->addWidget(Caption(tr(" Sim roll rate: "), txtRollsPerHour_));
    row->addWidget(txtRollsPerHour_);
    row->addWidget(cmbRollsPerTime_);
    row->addStretch(1);
    return row;
  }

  void ShowRate() {
    if (txtRollsPerHour_->isModified()) return;
    const QString text = QString::fromStdString(RollRateText(unit_));
    if (txtRollsPerHour_->text() != text) txtRollsPerHour_->setText(text);
  }

  /// Another unit shows the rate anew; what was typed in the old one is stored first.
  void ChangeUnit(int unit) {
    if (txtRollsPerHour_->isModified()) {
      ChangeByPlayer([this, text = txtRollsPerHour_->text().toStdString(), old = unit_, unit] {
        const CheckResult result = SetRollsPerHour(text, old);
        if (result.Ok) {
          txtRollsPerHour_->setModified(false);
          ShowIn(unit);
          return;
        }
        ShowIn(old);
        txtRollsPerHour_->setFocus();
        Tell(result, kTopicConfigureChecks);
      });
    } else {
      ShowIn(unit);
    }
  }

  void ShowIn(int unit) {
    unit_ = unit;
    cmbRollsPerTime_->setCurrentIndex(unit);
    ShowRate();
  }

  /// A rate too small to be shown gives way to the first key.
  bool eventFilter(QObject* box, QEvent* event) override {
    const bool typed = event->type() == QEvent::KeyPress &&
                       !static_cast<QKeyEvent*>(event)->text().trimmed().isEmpty();
    if (typed && txtRollsPerHour_->text().startsWith('<')) txtRollsPerHour_->clear();
    return ConfigPage::eventFilter(box, event);
  }

  std::array<PendingEntry, kChecks> pending_ = {
      PendingEntry(Game.Bets[SmallestChip]), PendingEntry(Game.Bets[SmallestChip + 1]),
      PendingEntry(Game.Bets[SmallestChip + 2]), PendingEntry(Game.Bets[SmallestChip + 3]),
      PendingEntry(Game.Bets[SmallestChip + 4])};
  std::array<QLineEdit*, kChecks> txtDenomination_{};
  QLineEdit* txtRollsPerHour_ = nullptr;
  QComboBox* cmbRollsPerTime_ = nullptr;
  int unit_ = 0;
  bool unfit_ = false;
};

}  // namespace

ConfigPage* MakeChecksPage() { return new ChecksPage; }
