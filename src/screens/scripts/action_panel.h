// The panel on which an action is built.
#pragma once

#include "autobet/line_choice.h"
#include "screens/scripts/line_panel.h"

class ChoiceButton;

class ActionPanel : public LinePanel {
  Q_OBJECT

 public:
  explicit ActionPanel(ListPopup* flags);

  bool Builds(int kind) const override { return kind == ActionLine; }
  std::optional<ScriptLine> Log(int) override { return LogAction(choice_); }
  QWidget* FirstBox() const override;

  /// Shows the names in use after some have come or gone.
  void ShowNamesInUse();

 protected:
  void ShowChoice() override;
  void Take(const ScriptLine& line) override { choice_ = ActionChoiceOf(line); }
  void Reset() override { choice_ = {}; }
  ScriptLine Now() const override { return LineOf(choice_); }
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void MakeParts(ListPopup* flags);
  void ShowLabel(bool needed);
  void ShowOrder();
  void ChooseFile();

  ActionChoice choice_;
  bool rounds_ = false;  // the parts stand in the order of "Round"
  ChoiceButton* lblAction_;
  ChoiceButton* lblLabel_;
  QLineEdit* txtActionFlag_;
  QPushButton* lblActionTF_;
  QLineEdit* txtActionAmount_;
  QLabel* lblOperator_;
  ChoiceButton* lblOf_;
  QLineEdit* txtActionOfStackNum_;
  QLabel* lblOn_;
  QLineEdit* txtActionName_;
  QAction* file_;
  ChoiceButton* lblTo_;
  QLineEdit* txtActionToStackNum_;
};
