// The panel on which a condition is built.
#pragma once

#include "autobet/line_choice.h"
#include "screens/scripts/line_panel.h"

class ChoiceButton;

class ConditionPanel : public LinePanel {
  Q_OBJECT

 public:
  explicit ConditionPanel(ListPopup* flags);

  bool Builds(int kind) const override { return kind == ConditionLine; }
  std::optional<ScriptLine> Log(int) override { return LogCondition(choice_); }
  QWidget* FirstBox() const override;

 protected:
  void ShowChoice() override;
  void Take(const ScriptLine& line) override { choice_ = ConditionChoiceOf(line); }
  void Reset() override { choice_ = {}; }
  ScriptLine Now() const override { return LineOf(choice_); }

 private:
  ConditionChoice choice_;
  ChoiceButton* lblCondition_;
  QLineEdit* txtConditionStackNum_;
  QLabel* lblDescribeRolls_;
  ChoiceButton* lblWhat_;
  QLineEdit* txtConditionFlag_;
  QLineEdit* txtConditionName_;
  QPushButton* lblConditionTF_;
  QLineEdit* txtConditionAmount_;
  ChoiceButton* lblCompare_;
  QLineEdit* txtCompareStackNum_;
  QLabel* lblDescribeTxtNumTimes_;
};
