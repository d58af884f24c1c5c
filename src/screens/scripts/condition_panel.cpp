#include "screens/scripts/condition_panel.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "screens/frame/controls.h"
#include "screens/scripts/choice_button.h"

namespace {

constexpr int kAmountLetters = 12;
constexpr int kAmountDecimals = 4;
constexpr int kStackNumLetters = 5;

}  // namespace

ConditionPanel::ConditionPanel(ListPopup* flags)
    : LinePanel("picCondition", tr("&Condition"), "cmdLogCondition",
                tr("Log the condition before the current line (Enter)")) {
  lblCondition_ = Add(new ChoiceButton(
      "lblCondition", "listCondition", tr("Condition"), [] { return RowsOf(ConditionList()); },
      [this](int code) { Change([&] { ChooseSubject(choice_, code); }); }));
  txtConditionStackNum_ = AddNumber("txtConditionStackNum", tr("Number behind the subject"),
                                    choice_.StackNum, kStackNumLetters, 0);
  lblDescribeRolls_ = AddWords("lblDescribeRolls");
  lblWhat_ = Add(new ChoiceButton(
      "lblWhat", "listWhat", tr("What is asked of it"),
      [this] { return RowsOf(OperatorList(choice_.Subject)); },
      [this](int code) { Change([&] { ChooseOperator(choice_, code); }); }));
  txtConditionFlag_ = AddFlag("txtConditionFlag", choice_.Flag, flags);
  txtConditionName_ = AddBox("txtConditionName", tr("Name of the Chip-Stack"), choice_.Name, 24);
  lblConditionTF_ = Add(New<QPushButton>("lblConditionTF"));
  lblConditionTF_->setAutoDefault(false);
  lblConditionTF_->setToolTip(tr("Click to turn it round"));
  connect(lblConditionTF_, &QPushButton::clicked, this,
          [this] { Change([this] { choice_.Truth = !choice_.Truth; }); });
  txtConditionAmount_ = AddNumber("txtConditionAmount", tr("Number"), choice_.Amount,
                                  kAmountLetters, kAmountDecimals);
  lblCompare_ = Add(new ChoiceButton(
      "lblCompare", "listCompare", tr("What it is compared with"),
      [] { return RowsOf(CompareList()); },
      [this](int code) { Change([&] { ChooseCompare(choice_, code); }); }));
  txtCompareStackNum_ = AddNumber("txtCompareStackNum", tr("Number behind what is compared with"),
                                  choice_.CompareStackNum, kStackNumLetters, 0);
  lblDescribeTxtNumTimes_ = AddWords("lblDescribeTxtNumTimes");
  SetFirstBox(lblCondition_);
  Drop();
}

QWidget* ConditionPanel::FirstBox() const { return lblCondition_; }

void ConditionPanel::ShowChoice() {
  const ConditionBoxes boxes = BoxesOf(choice_);
  lblCondition_->Show(Text(boxes.Caption), choice_.Subject);
  ShowBox(txtConditionStackNum_, boxes.StackNum, choice_.StackNum);
  ShowWords(lblDescribeRolls_, boxes.DescribeRolls);
  lblWhat_->Show(Text(TextOf(OperatorList(choice_.Subject), choice_.Operator)), choice_.Operator);
  lblWhat_->setVisible(boxes.What);
  ShowBox(txtConditionFlag_, boxes.Flag, choice_.Flag);
  ShowBox(txtConditionName_, boxes.Name, choice_.Name);
  lblConditionTF_->setText(Text(boxes.Truth));
  lblConditionTF_->setVisible(!boxes.Truth.empty());
  ShowBox(txtConditionAmount_, boxes.Amount, choice_.Amount);
  lblCompare_->Show(Text(TextOf(CompareList(), choice_.Compare)), choice_.Compare);
  lblCompare_->setVisible(boxes.Compare);
  ShowBox(txtCompareStackNum_, boxes.CompareStackNum, choice_.CompareStackNum);
  ShowWords(lblDescribeTxtNumTimes_, boxes.TimesWords);
}
