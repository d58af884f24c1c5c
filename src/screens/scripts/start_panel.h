// The panels of the lines that are chosen or typed whole: starts of blocks, labels and remarks.
#pragma once

#include <string>

#include "autobet/line_choice.h"
#include "screens/scripts/line_panel.h"

class ChoiceButton;

/// The first line of a block of conditions, or of actions.
class StartPanel : public LinePanel {
  Q_OBJECT

 public:
  /// `what` ends the names of the controls: "StartCondition".
  StartPanel(const QString& what, const QString& caption, const QString& tip,
             std::span<const ListItem> list);

  bool Builds(int kind) const override { return !TextOf(list_, kind).empty(); }
  std::optional<ScriptLine> Log(int) override { return LineOfStart(kind_); }
  QWidget* FirstBox() const override;

 protected:
  void ShowChoice() override;
  void Take(const ScriptLine& line) override { kind_ = line.LineKind; }
  void Reset() override { kind_ = list_.front().Code; }
  ScriptLine Now() const override { return LineOfStart(kind_); }

 private:
  std::span<const ListItem> list_;
  int kind_ = 0;
  ChoiceButton* lblStart_;
};

/// A label; a text that begins with an apostrophe is a remark.
class LabelPanel : public LinePanel {
  Q_OBJECT

 public:
  LabelPanel();

  bool Builds(int kind) const override { return kind == LabelLine || kind == RemarkLine; }
  std::optional<ScriptLine> Log(int replaced) override;
  QWidget* FirstBox() const override;

 protected:
  void ShowChoice() override;
  void Take(const ScriptLine& line) override { typed_ = LabelTextOf(line); }
  void Reset() override { typed_.clear(); }
  ScriptLine Now() const override { return LineOfLabel(typed_); }

 private:
  std::string typed_;
  QLineEdit* txtLabel_;
};
