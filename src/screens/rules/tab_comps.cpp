// Comps: what they are figured from, and their figures.
#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "core/game_state.h"
#include "core/text.h"
#include "rules/comp_bets.h"
#include "rules/comps.h"
#include "screens/frame/bind.h"
#include "screens/frame/chrome.h"
#include "screens/frame/controls.h"
#include "screens/frame/player_change.h"
#include "screens/frame/record_model.h"
#include "screens/rules/config_page.h"

namespace {

constexpr unsigned kVigLine = 3;

using ChoiceOf = std::function<bool(int betId, bool counts)>;

class CompsPage : public ConfigPage {
  Q_DECLARE_TR_FUNCTIONS(CompsPage)

 public:
  CompsPage() {
    QGridLayout* grid = new QGridLayout(this);
    grid->addWidget(MakeBase(), 0, 0);
    grid->addWidget(MakeFigures(), 1, 0);
    grid->addWidget(MakeList(), 0, 1, 3, 1);
    grid->setRowStretch(2, 1);
    grid->setColumnStretch(0, 1);
    grid->setColumnStretch(1, 1);
  }

  void ShowRecord() override {
    bets_->Refresh();
    const CompFigures figures = FigureComps(CompsForTab);
    const auto texts = CompTexts(figures);
    for (unsigned line = 0; line < kCompLines; ++line)
      lblCompdata_[line]->setText(Text(texts[line]));
    // Red when the player has the edge. On dark windows dark blue can't be read.
    QLabel* vig = lblCompdata_[kVigLine];
    const bool dark = palette().color(QPalette::Window).lightness() < 128;
    QPalette ink = palette();
    ink.setColor(QPalette::WindowText, figures.Vig > 0 ? WarningInk()
                                       : dark          ? QColor(0x8CB4FF)
                                                       : QColor(0x000080));
    vig->setPalette(ink);
  }

 private:
  static QGroupBox* MakeBase() {
    const QStringList captions = {tr(" Theoretical house vig"), tr(" Total comp action"),
                                  tr(" Average comp action and time")};
    QGroupBox* group = new QGroupBox(tr("Figure comps based on:"));
    QGridLayout* grid = new QGridLayout(group);
    for (int base = 0; base < captions.size(); ++base) {
      grid->addWidget(
          Option(QString("optBaseComps_%1").arg(base), captions[base], Game.BaseComps, base), base,
          0, 1, 3);
    }
    QLineEdit* rate = TextBox("txtCompRate", kMoneyLength);
    Bind(rate, Game.CompRate, {.Decimals = kMoneyDecimals, .Stores = NumberForm::AtEachKey});
    grid->addWidget(Caption(tr("Comp rate:"), rate), 3, 0);
    grid->addWidget(rate, 3, 1);
    grid->addWidget(new QLabel(tr("%")), 3, 2);
    grid->addWidget(
        CheckBox("chkCompsUseTrueProbs", tr(" Always figure with the true dice probabilities"),
                 Game.CompsUseTrueProbs),
        4, 0, 1, 3);
    grid->setColumnStretch(2, 1);
    return group;
  }

  QGroupBox* MakeFigures() {
    QGroupBox* group = new QGroupBox(tr("This game"));
    QGridLayout* grid = new QGridLayout(group);
    for (int line = 0; line < kCompLines; ++line) {
      const auto at = static_cast<unsigned>(line);
      auto* figure = New<QLabel>(QString("lblCompdata_%1").arg(line));
      figure->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
      grid->addWidget(new QLabel(Text(kCompCaptions[at])), line, 0);
      grid->addWidget(figure, line, 1);
      lblCompdata_[at] = figure;
    }
    return group;
  }

  QGroupBox* MakeList() {
    bets_ = new RecordModel(
        this, [] { return int{LastBet}; },
        {{.Text =
              [](int row) {
                const int betId = row + Lay4;
                return Text(BetName(betId) + (BetCountsForComps(betId) ? " - Yes" : " - No"));
              },
          .Ink =
              [this](int row) {
                const bool counts = BetCountsForComps(row + Lay4);
                return palette().color(counts ? QPalette::Active : QPalette::Disabled,
                                       QPalette::Text);
              }}});
    lstCompBets_ = New<QListView>("lstCompBets");
    lstCompBets_->setAccessibleName(tr("Bets that earn comps"));
    lstCompBets_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    lstCompBets_->setUniformItemSizes(true);
    lstCompBets_->setModel(bets_);
    connect(lstCompBets_, &QListView::doubleClicked, this,
            [this] { ChooseSelected([](int, bool counts) { return !counts; }); });
    QGroupBox* group = new QGroupBox(tr("Bets figured in comps"));
    QHBoxLayout* row = new QHBoxLayout(group);
    row->addWidget(lstCompBets_, 1);
    QVBoxLayout* buttons = new QVBoxLayout;
    AddChoice(buttons, "cmdYes", tr("&Yes"), [](int, bool) { return true; });
    AddChoice(buttons, "cmdNo", tr("&No"), [](int, bool) { return false; });
    buttons->addSpacing(8);
    auto* all = New<QPushButton>("cmdSelectAll", tr("Select All"));
    connect(all, &QPushButton::clicked, this, [this] {
      lstCompBets_->selectAll();
      lstCompBets_->setFocus();
    });
    buttons->addWidget(all);
    AddChoice(buttons, "cmdDefault", tr("De&fault"),
              [](int betId, bool) { return CompBetDefault(betId); });
    buttons->addStretch(1);
    row->addLayout(buttons);
    return group;
  }

  void AddChoice(QBoxLayout* column, const char* name, const QString& caption,
                 const ChoiceOf& choice) {
    auto* button = New<QPushButton>(name, caption);
    connect(button, &QPushButton::clicked, this, [this, choice] { ChooseSelected(choice); });
    column->addWidget(button);
  }

  /// The whole list is stored at each change.
  void ChooseSelected(const ChoiceOf& choice) {
    const std::vector<int> rows = SelectedRows(lstCompBets_);
    if (rows.empty()) return;
    ChangeByPlayer([rows, choice] {
      CompBetList bets = CompBets();
      for (const int row : rows) {
        bool& counts = bets[static_cast<unsigned>(row)];
        counts = choice(row + Lay4, counts);
      }
      StoreCompBets(bets);
    });
  }

  RecordModel* bets_ = nullptr;
  QListView* lstCompBets_ = nullptr;
  std::array<QLabel*, kCompLines> lblCompdata_{};
};

}  // namespace

ConfigPage* MakeCompsPage() { return new CompsPage; }
