#include "screens/play/frmSettleBet.h"

#include <QCursor>
#include <QFontMetrics>
#include <QKeyEvent>
#include <QTimer>
#include <algorithm>

#include "bets/settle.h"
#include "core/text.h"
#include "screens/frame/controls.h"
#include "screens/frame/help.h"
#include "screens/frame/numeric_entry.h"
#include "screens/play/modify_amounts.h"

namespace {

constexpr int kMargin = 16;
constexpr int kLineGap = 4;
constexpr int kColumnGap = 24;
constexpr int kChoiceGap = 11;
constexpr int kChoiceHeight = 26;
constexpr int kModifyHeight = 26;
constexpr int kModifyChoiceWidth = 84;
constexpr int kOperatorWidth = 28;
constexpr int kAmountWidth = 96;
constexpr int kUnitWidth = 84;
constexpr int kModifyGap = 5;
constexpr int kPaddingOfCaption = 36;
constexpr double kFontHeightOfUnit = 15.0;
constexpr int kAmountDecimals = 2;

constexpr int kFirstModifyChoice = 5;  // " Same Bet:", and after it " Bet:"
enum ModifyRow : int { SameBetRow = 0, BetRow = 1 };

}  // namespace

frmSettleBet::frmSettleBet(QWidget* parent) : QDialog(parent) {
  setObjectName("frmSettleBet");
  setWindowTitle(Text(Game.Settle.Caption));
  setWindowFlag(Qt::WindowCloseButtonHint, false);
  scale_ = std::max(1.0, QFontMetrics(font()).height() / kFontHeightOfUnit);
  MakeLines();
  MakeChoices();
  Arrange();
  const int choice = Game.Settle.Lost ? Game.LastLossChoice : Game.LastWinChoice;
  const int focused = Game.Settle.OnlyTakeDown ? 0 : std::clamp(choice, 0, kChoices - 1);
  QPushButton* button = cmdHandle_[static_cast<unsigned>(focused)];
  button->setDefault(true);
  button->setFocus();
}

int frmSettleBet::Units(double count) const { return qRound(count * scale_); }

/// The slot of a row: the screen's own two for a win or push, the next two for a loss.
unsigned frmSettleBet::Slot(int row) const {
  return static_cast<unsigned>((Game.Settle.Lost ? ScreenLossSameBet : ScreenWinSameBet) + row);
}

void frmSettleBet::MakeLines() {
  for (std::size_t i = 0; i < Game.Settle.Lines.size(); ++i) {
    const SettleLine& line = Game.Settle.Lines[i];
    QLabel* type = new QLabel(Text(line.Label), this);
    QLabel* amount = new QLabel(Text(line.Amount), this);
    type->setObjectName(QString("lblWonBetType_%1").arg(i));
    amount->setObjectName(QString("lblWonBet_%1").arg(i));
    QFont lineFont = font();
    lineFont.setBold(line.Bold);
    for (QLabel* label : {type, amount}) {
      label->setTextFormat(Qt::PlainText);
      label->setFont(lineFont);
      label->adjustSize();
    }
    lblWonBetType_.push_back(type);
    lblWonBet_.push_back(amount);
  }
}

void frmSettleBet::MakeChoices() {
  for (int i = 0; i < kChoices; ++i) {
    QPushButton* button =
        new QPushButton(Text(Game.Settle.Buttons[static_cast<unsigned>(i)]), this);
    button->setObjectName(QString("cmdHandle_%1").arg(i));
    button->setEnabled(i == 0 || !Game.Settle.OnlyTakeDown);
    connect(button, &QPushButton::clicked, this, [this, i] { Press(i); });
    cmdHandle_[static_cast<unsigned>(i)] = button;
    if (i >= kFirstModifyChoice) MakeModifyRow(i - kFirstModifyChoice);
  }
  ShowCaptions();
}

void frmSettleBet::MakeModifyRow(int row) {
  const unsigned at = static_cast<unsigned>(row);
  const unsigned slot = Slot(row);
  const bool enabled = !Game.Settle.OnlyTakeDown;
  // An operator joins the amount to the bet that stood; " Bet:" names the whole bet and needs none.
  if (row == SameBetRow) {
    operator_ = Game.ModifyOperator[slot];
    cmdMathOperator_ = new QPushButton(this);
    cmdMathOperator_->setObjectName(QString("cmdMathOperator_%1").arg(row));
    cmdMathOperator_->setToolTip(tr("Click for the next operator"));
    cmdMathOperator_->setEnabled(enabled);
    connect(cmdMathOperator_, &QPushButton::clicked, this, [this] { StepOperator(); });
  }
  QLineEdit* amount = new QLineEdit(this);
  amount->setObjectName(QString("txtModifyAmount_%1").arg(row));
  amount->setAccessibleName(cmdHandle_[at + kFirstModifyChoice]->text().remove('&'));
  MakeNumericBox(amount, kAmountDecimals, false);
  amount->setText(Text(PlainText(Game.ModifyAmount[slot])));
  amount->setEnabled(enabled);
  txtModifyAmount_[at] = amount;

  unit_[at] = static_cast<int>(Game.ModifyUnit[slot].ToDouble());
  QPushButton* unit = new QPushButton(this);
  unit->setObjectName(QString("cmdUnits_%1").arg(row));
  unit->setToolTip(tr("Click for the next unit"));
  unit->setEnabled(enabled);
  connect(unit, &QPushButton::clicked, this, [this, row] { StepUnit(row); });
  cmdUnits_[at] = unit;
  for (QPushButton* button : {cmdMathOperator_, unit}) button->setAutoDefault(false);
}

void frmSettleBet::StepOperator() {
  operator_ = NextOperator(operator_);
  ShowCaptions();
}

void frmSettleBet::StepUnit(int row) {
  int& unit = unit_[static_cast<unsigned>(row)];
  unit = NextUnit(unit);
  ShowCaptions();
}

void frmSettleBet::ShowCaptions() {
  cmdMathOperator_->setText(OperatorCaption(operator_));
  for (unsigned row = 0; row < kModifyRows; ++row) cmdUnits_[row]->setText(UnitCaption(unit_[row]));
}

void frmSettleBet::Arrange() {
  const int margin = Units(kMargin);
  const QFontMetrics metrics(font());
  int lines = 0;
  for (std::size_t i = 0; i < lblWonBet_.size(); ++i) {
    lines =
        std::max(lines, lblWonBetType_[i]->width() + Units(kColumnGap) + lblWonBet_[i]->width());
  }
  int choices =
      Units(kModifyChoiceWidth + kOperatorWidth + kAmountWidth + kUnitWidth + 3 * kModifyGap);
  for (const QPushButton* button : cmdHandle_) {
    choices =
        std::max(choices, metrics.horizontalAdvance(button->text()) + Units(kPaddingOfCaption));
  }
  const int inner =
      std::max({lines, choices, metrics.horizontalAdvance(windowTitle()) + Units(80)});

  int top = margin;
  for (std::size_t i = 0; i < lblWonBet_.size(); ++i) {
    lblWonBetType_[i]->move(margin, top);
    lblWonBet_[i]->move(margin + inner - lblWonBet_[i]->width(), top);
    top += lblWonBet_[i]->height() + Units(kLineGap);
  }
  top += Units(kChoiceGap);
  for (int i = 0; i < kChoices; ++i) {
    const bool modify = i >= kFirstModifyChoice;
    cmdHandle_[static_cast<unsigned>(i)]->setGeometry(
        margin, top, modify ? Units(kModifyChoiceWidth) : inner, Units(kChoiceHeight));
    if (modify) ArrangeModifyRow(i - kFirstModifyChoice, margin, top);
    top += Units(kChoiceHeight + kChoiceGap);
  }
  setFixedSize(inner + 2 * margin, top - Units(kChoiceGap) + margin);
}

void frmSettleBet::ArrangeModifyRow(int row, int left, int top) {
  const unsigned at = static_cast<unsigned>(row);
  const auto place = [&](QWidget* control, int width) {
    control->setGeometry(left, top, Units(width), Units(kModifyHeight));
    left += Units(width + kModifyGap);
  };
  left += Units(kModifyChoiceWidth + kModifyGap);
  if (row == SameBetRow) {
    place(cmdMathOperator_, kOperatorWidth);
  } else {
    left += Units(kOperatorWidth + kModifyGap);
  }
  place(txtModifyAmount_[at], kAmountWidth);
  place(cmdUnits_[at], kUnitWidth);
}

void frmSettleBet::showEvent(QShowEvent* event) {
  QDialog::showEvent(event);
  if (!Game.SnapMouse) return;
  QTimer::singleShot(0, this, [this] {
    const QWidget* button = focusWidget();
    if (button && isVisible()) QCursor::setPos(button->mapToGlobal(button->rect().center()));
  });
}

void frmSettleBet::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_F1) {
    ShowHelp(Game.Settle.HelpTopic);
    return;
  }
  QDialog::keyPressEvent(event);
}

void frmSettleBet::Store() {
  for (int row = 0; row < kModifyRows; ++row) {
    const unsigned at = static_cast<unsigned>(row);
    const unsigned slot = Slot(row);
    Game.ModifyAmount[slot] = ParseAmount(txtModifyAmount_[at]->text().toStdString());
    Game.ModifyUnit[slot] = unit_[at];
  }
  Game.ModifyOperator[Slot(SameBetRow)] = operator_;
}

void frmSettleBet::Press(int button) {
  hide();
  Store();
  PressSettleButton(button);
  done(QDialog::Accepted);
}
