// The bankroll: of every new game, and now.
#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "bets/bankroll.h"
#include "bets/rule_changes.h"
#include "core/help_topics.h"
#include "core/host.h"
#include "core/text.h"
#include "rules/choices.h"
#include "screens/frame/bind.h"
#include "screens/frame/controls.h"
#include "screens/frame/player_change.h"
#include "screens/rules/config_page.h"

namespace {

Currency Net() { return Bankroll() - Game.InvestedBankroll; }

class BankrollPage : public ConfigPage {
  Q_DECLARE_TR_FUNCTIONS(BankrollPage)

 public:
  BankrollPage() {
    QVBoxLayout* column = new QVBoxLayout(this);
    column->addWidget(MakeNewGame());
    column->addWidget(MakeAtm());
    column->addWidget(CheckBox("chkAllowNegBankroll", tr(" Allow negative bankroll amounts"),
                               RecordField(Game.NegBankroll).Through([](bool allowed) {
                                 Tell(SetNegBankroll(allowed), kTopicConfigureBankroll);
                               })));
    column->addStretch(1);
  }

 private:
  static QLineEdit* Amount(const char* name, Currency& field, bool minus) {
    QLineEdit* box = TextBox(name, kMoneyLength);
    Bind(box, field, {.Decimals = kMoneyDecimals, .Minus = minus, .Stores = NumberForm::AtEachKey});
    return box;
  }

  static QGroupBox* MakeNewGame() {
    const QStringList captions = {tr(" Start bankroll with:"), tr(" Prompt for starting bankroll"),
                                  tr(" Carry forward bankroll from previous game"),
                                  tr(" Carry forward bankroll and net from previous game")};
    QGroupBox* group = new QGroupBox(tr("For every new game:"));
    QGridLayout* grid = new QGridLayout(group);
    for (int choice = 0; choice < captions.size(); ++choice) {
      QRadioButton* option = Option(QString("optBankrollInitType_%1").arg(choice), captions[choice],
                                    Game.BankrollInitType, choice);
      grid->addWidget(option, choice, 0, 1, choice == StartWithAmount ? 1 : 3);
    }
    QLineEdit* amount = Amount("txtBankrollInitAmount", Game.BankrollInitAmt, true);
    amount->setAccessibleName(tr("Starting bankroll"));
    grid->addWidget(amount, 0, 1);
    grid->setColumnStretch(2, 1);
    return group;
  }

  static void AddFigure(QGridLayout* grid, QLabel* caption, const char* name,
                        Currency (*amount)()) {
    auto* figure = New<QLabel>(name);
    figure->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    BindText(figure, [amount] { return "$" + Text(MoneyText(amount())); });
    const int row = grid->rowCount();
    grid->addWidget(caption, row, 0);
    grid->addWidget(figure, row, 1);
  }

  static QPushButton* AtmButton(int kind, const QString& caption) {
    auto* button = New<QPushButton>(QString("cmdAddSub_%1").arg(kind), caption);
    QObject::connect(button, &QPushButton::clicked, button, [kind] {
      ChangeByPlayer([kind] {
        if (Game.AtmAmount > 0) AtmTransaction(static_cast<AtmKind>(kind), Game.AtmAmount);
      });
    });
    return button;
  }

  static QGroupBox* MakeAtm() {
    QGroupBox* group = new QGroupBox(tr("ATM"));
    QGridLayout* grid = new QGridLayout(group);
    AddRow(grid, tr("Amount of a transaction:"), Amount("txtAddSub", Game.AtmAmount, false));
    QHBoxLayout* buttons = new QHBoxLayout;
    buttons->addWidget(AtmButton(AtmWithdrawal, tr("&Withdraw")));
    buttons->addWidget(AtmButton(AtmDeposit, tr("D&eposit")));
    grid->addLayout(buttons, 1, 2);
    AddFigure(grid, new QLabel(tr("Amount Invested:")), "lblInvestedBankroll",
              [] { return Game.InvestedBankroll; });
    AddFigure(grid, new QLabel(tr("Current Bankroll:")), "lblCurrentBankroll",
              [] { return Bankroll(); });
    auto* wonLost = New<QLabel>("lblWonLost");
    BindText(wonLost, [] { return Text(WonLostCaption(Net())); });
    AddFigure(grid, wonLost, "lblNet", Net);
    grid->setColumnStretch(3, 1);
    return group;
  }
};

}  // namespace

ConfigPage* MakeBankrollPage() { return new BankrollPage; }
