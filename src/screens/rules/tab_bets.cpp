// The limits of bets, odds, and the vig on Buy and Lay bets.
#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QVBoxLayout>

#include "bets/rule_changes.h"
#include "core/game_state.h"
#include "core/help_topics.h"
#include "core/host.h"
#include "core/limits.h"
#include "rules/choices.h"
#include "screens/frame/bind.h"
#include "screens/frame/controls.h"
#include "screens/rules/config_page.h"

namespace {

constexpr int kPercentDecimals = 1;
constexpr Currency kLargestPercent = kMostVig * 100;

/// A fraction as the percentage that its box shows and takes. Standing bets follow it when the
/// screen closes.
RecordField<Currency> Percent(Currency& fraction) {
  return RecordField<Currency>(
             [&fraction] { return PercentOfFraction(fraction); },
             [&fraction](Currency percent) { fraction = FractionOfPercent(percent); })
      .Within(0, kLargestPercent);
}

/// A setting that the engine may refuse; the control then shows what stands.
RecordField<int> Rounding(int& field, CheckResult (*set)(int)) {
  return RecordField(field).Through([set](int value) { Tell(set(value), kTopicConfigureBets); });
}

/// Choice 0 charges up front.
RecordField<int> WhenCharged(bool& upFront, CheckResult (*set)(bool)) {
  return {[&upFront] { return upFront ? 0 : 1; },
          [set](int choice) { Tell(set(choice == 0), kTopicConfigureBets); }};
}

class BetsPage : public ConfigPage {
  Q_DECLARE_TR_FUNCTIONS(BetsPage)

 public:
  BetsPage() {
    QGridLayout* grid = new QGridLayout(this);
    grid->addWidget(MakeLimits(), 0, 0);
    grid->addWidget(MakeOdds(), 0, 1);
    grid->addWidget(MakeVig(tr("Lay bets"), "Lay", Game.LayVigPct, Game.LayVigUpFront,
                            SetLayVigUpFront, Game.RoundLayVig, SetRoundLayVig),
                    1, 0);
    grid->addWidget(MakeVig(tr("Buy bets"), "Buy", Game.BuyVigPct, Game.BuyVigUpFront,
                            SetBuyVigUpFront, Game.RoundBuyVig, SetRoundBuyVig),
                    1, 1);
    grid->addWidget(MakeLine(), 2, 0, 1, 2);
    grid->setRowStretch(3, 1);
    grid->setColumnStretch(0, 1);
    grid->setColumnStretch(1, 1);
  }

  void Gather(ConfigEntries& entries) const override {
    entries.MinPlacard = minPlacard_.Get();
    entries.MaxPlacard = maxPlacard_.Get();
  }

  QWidget* BoxOf(ConfigBox box, int) override {
    switch (box) {
      case ConfigBox::MinPlacard: return txtMinPlacardBet_;
      case ConfigBox::MaxPlacard: return txtMaxPlacardBet_;
      case ConfigBox::LayVigPct: return txtLayVigPct_;
      case ConfigBox::BuyVigPct: return txtBuyVigPct_;
      default: return nullptr;
    }
  }

 private:
  static QLineEdit* Amount(QGridLayout* grid, const QString& caption, const QString& name,
                           const RecordField<Currency>& field, int decimals = kMoneyDecimals) {
    QLineEdit* box = TextBox(name, kMoneyLength);
    Bind(box, field, {.Decimals = decimals, .Stores = NumberForm::AtEachKey});
    AddRow(grid, caption, box);
    return box;
  }

  /// Minimum and maximum are stored once they agree.
  RecordField<Currency> Pending(PendingEntry& entry, const Currency& field) {
    return RecordField<Currency>([&entry] { return entry.Get(); },
                                 [this, &entry](Currency value) {
                                   entry.Set(value);
                                   StoreLimits();
                                 })
        .Within(0, LimitsOf(&field).High);
  }

  void StoreLimits() {
    ConfigEntries entries = EntriesInForce();
    Gather(entries);
    if (!CheckPlacard(entries).Ok) return;
    Game.MinPlacard = entries.MinPlacard;
    Game.MaxPlacard = entries.MaxPlacard;
    TheHost.RedrawLayout();
  }

  QGroupBox* MakeLimits() {
    QGroupBox* group = new QGroupBox(tr("Limits"));
    QGridLayout* grid = new QGridLayout(group);
    txtMinPlacardBet_ =
        Amount(grid, tr("Minimum bet"), "txtMinPlacardBet", Pending(minPlacard_, Game.MinPlacard));
    txtMaxPlacardBet_ =
        Amount(grid, tr("Maximum bet"), "txtMaxPlacardBet", Pending(maxPlacard_, Game.MaxPlacard));
    Amount(grid, tr("Max prop bet payoff"), "txtMaxPropBetPayoff", Game.MaxPropPayoff);
    Amount(grid, tr("Max odds bet"), "txtMaxOddsBet", Game.MaxOddsBet);
    grid->setRowStretch(grid->rowCount(), 1);
    return group;
  }

  static QGroupBox* MakeOdds() {
    QGroupBox* group = new QGroupBox(tr("Odds allowed, times the flat bet"));
    QGridLayout* grid = new QGridLayout(group);
    Amount(grid, tr("4 and 10"), "txtOddsAllowed410", Game.OddsAllowed410);
    Amount(grid, tr("5 and 9"), "txtOddsAllowed59", Game.OddsAllowed59);
    Amount(grid, tr("6 and 8"), "txtOddsAllowed68", Game.OddsAllowed68);
    AddRow(grid, tr("Odds calculation method:"),
           ChoiceList(
               "cmbOddsCalcMethod",
               {tr("Auto select"), tr("X Flat - No Push"), tr("X Flat w/ Minor Push"),
                tr("X Flat w/ Color Push"), tr("X Flat - Single Odds"), tr("Flat - Single Odds X")},
               Game.OddsCalcMethod));
    grid->setRowStretch(grid->rowCount(), 1);
    return group;
  }

  QGroupBox* MakeVig(const QString& title, const QString& family, Currency& rate, bool& upFront,
                     CheckResult (*setUpFront)(bool), int& rounding,
                     CheckResult (*setRounding)(int)) {
    QGroupBox* group = new QGroupBox(title);
    QGridLayout* grid = new QGridLayout(group);
    QLineEdit* box = TextBox(QString("txt%1VigPct").arg(family), kMoneyLength);
    Bind(box, Percent(rate), {.Decimals = kPercentDecimals, .Stores = NumberForm::AtEachKey});
    (family == "Lay" ? txtLayVigPct_ : txtBuyVigPct_) = box;
    AddRow(grid, tr("Vig, percent:"), box);
    AddRow(grid, tr("Charge:"),
           ChoiceList(QString("cmbRound%1Vig").arg(family),
                      {tr("Rounded normally"), tr("Rounded down"), tr("Rounded up")},
                      Rounding(rounding, setRounding)));
    const QStringList captions = {tr(" Charge all %1 bets").arg(family),
                                  tr(" Charge winning %1 bets only").arg(family)};
    for (int choice = 0; choice < captions.size(); ++choice) {
      grid->addWidget(Option(QString("opt%1Vig_%2").arg(family).arg(choice), captions[choice],
                             WhenCharged(upFront, setUpFront), choice),
                      grid->rowCount(), 0, 1, 2);
    }
    grid->setRowStretch(grid->rowCount(), 1);
    return group;
  }

  static QGroupBox* MakeLine() {
    constexpr int kBarredNumbers[] = {2, 12};
    QGroupBox* group = new QGroupBox(tr("Line bets"));
    QHBoxLayout* row = new QHBoxLayout(group);
    row->addWidget(new QLabel(tr("On the come-out the Don't bets push on:")));
    for (int choice = 0; choice < 2; ++choice) {
      row->addWidget(Option(
          QString("optBarDont_%1").arg(choice), tr(" Bar %1").arg(kBarredNumbers[choice]),
          RecordField(Game.BarDont).Then([] { TheHost.RedrawLayout(); }), kBarredNumbers[choice]));
    }
    row->addSpacing(24);
    row->addWidget(CheckBox("chkAllowPutBets", tr(" Allow Put Bets"), Game.AllowPutBets));
    row->addStretch(1);
    return group;
  }

  PendingEntry minPlacard_{Game.MinPlacard};
  PendingEntry maxPlacard_{Game.MaxPlacard};
  QLineEdit* txtMinPlacardBet_ = nullptr;
  QLineEdit* txtMaxPlacardBet_ = nullptr;
  QLineEdit* txtLayVigPct_ = nullptr;
  QLineEdit* txtBuyVigPct_ = nullptr;
};

}  // namespace

ConfigPage* MakeBetsPage() { return new BetsPage; }
