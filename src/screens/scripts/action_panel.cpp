#include "screens/scripts/action_panel.h"

#include <QAction>
#include <QEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStyle>
#include <utility>

#include "core/game_state.h"
#include "screens/files/frmFile.h"
#include "screens/frame/controls.h"
#include "screens/frame/guard.h"
#include "screens/scripts/choice_button.h"

namespace {

constexpr int kAmountLetters = 12;
constexpr int kAmountDecimals = 4;
constexpr int kStackNumLetters = 5;

FileCommand FileCommandOf(int action) {
  if (action == PlaySoundFile) return FileCommand::SelectWave;
  if (action == ActivateProbability) return FileCommand::SelectProbability;
  return FileCommand::SelectOutput;
}

std::vector<ListItem> LabelsInUse() {
  std::vector<ListItem> rows;
  for (const std::string& label : Game.ScriptLabels)
    rows.push_back({static_cast<int>(rows.size()), label});
  return rows;
}

}  // namespace

ActionPanel::ActionPanel(ListPopup* flags)
    : LinePanel("picAction", tr("&Action"), "cmdLogAction",
                tr("Log the action before the current line (Enter)")) {
  MakeParts(flags);
  connect(lblActionTF_, &QPushButton::clicked, this,
          [this] { Change([this] { choice_.Truth = !choice_.Truth; }); });
  file_ = txtActionName_->addAction(style()->standardIcon(QStyle::SP_DialogOpenButton),
                                    QLineEdit::TrailingPosition);
  file_->setObjectName("cmdActionFile");
  file_->setToolTip(tr("Choose a file"));
  connect(file_, &QAction::triggered, this, &ActionPanel::ChooseFile);
  txtActionName_->installEventFilter(this);
  SetFirstBox(lblAction_);
  Drop();
}

void ActionPanel::MakeParts(ListPopup* flags) {
  lblAction_ = Add(new ChoiceButton(
      "lblAction", "listAction", tr("Action"), [] { return RowsOf(ActionList()); },
      [this](int code) { Change([&] { ChooseAction(choice_, code); }); }));
  lblLabel_ = Add(
      new ChoiceButton("lblLabel", "listLabels", tr("Labels in use"), LabelsInUse, [this](int row) {
        const auto at = static_cast<std::size_t>(row);
        if (at >= Game.ScriptLabels.size()) return;
        Change([&] { choice_.Label = Game.ScriptLabels[at]; });
      }));
  txtActionFlag_ = AddFlag("txtActionFlag", choice_.Flag, flags);
  lblActionTF_ = Add(New<QPushButton>("lblActionTF"));
  lblActionTF_->setAutoDefault(false);
  lblActionTF_->setToolTip(tr("Click to turn it round"));
  txtActionAmount_ =
      AddNumber("txtActionAmount", tr("Number"), choice_.Amount, kAmountLetters, kAmountDecimals);
  lblOperator_ = AddWords("lblOperator");
  lblOf_ = Add(new ChoiceButton(
      "lblOf", "listOf", tr("Of what"), [this] { return RowsOf(OfList(choice_.Action)); },
      [this](int code) { Change([&] { ChooseOf(choice_, code); }); }));
  txtActionOfStackNum_ =
      AddNumber("txtActionOfStackNum", tr("Number of the Chip-Stack or of rolls"),
                choice_.OfStackNum, kStackNumLetters, 0);
  lblOn_ = AddWords("lblOn");
  txtActionName_ = AddBox("txtActionName", tr("Text or name"), choice_.Name, 30);
  lblTo_ = Add(new ChoiceButton(
      "lblTo", "listTo", tr("On what"), [this] { return RowsOf(ToList(choice_.Action)); },
      [this](int code) { Change([&] { ChooseTo(choice_, code); }); }));
  txtActionToStackNum_ = AddNumber("txtActionToStackNum", tr("Number of the Chip-Stack"),
                                   choice_.ToStackNum, kStackNumLetters, 0);
}

QWidget* ActionPanel::FirstBox() const { return lblAction_; }

void ActionPanel::ShowChoice() {
  const ActionBoxes boxes = BoxesOf(choice_);
  ShowOrder();
  lblAction_->Show(Text(boxes.Caption), choice_.Action);
  ShowLabel(boxes.Label);
  ShowBox(txtActionFlag_, boxes.Flag, choice_.Flag);
  lblActionTF_->setText(Text(boxes.Truth));
  lblActionTF_->setVisible(!boxes.Truth.empty());
  ShowBox(txtActionAmount_, boxes.Amount, choice_.Amount);
  ShowWords(lblOperator_, boxes.Operator);
  lblOf_->Show(Text(TextOf(OfList(choice_.Action), choice_.Of)), choice_.Of);
  lblOf_->setVisible(boxes.Of);
  ShowBox(txtActionOfStackNum_, boxes.OfStackNum, choice_.OfStackNum);
  ShowWords(lblOn_, boxes.On);
  ShowBox(txtActionName_, boxes.Name, choice_.Name);
  file_->setVisible(boxes.Use == NameUse::File);
  lblTo_->Show(Text(TextOf(ToList(choice_.Action), choice_.To)), choice_.To);
  lblTo_->setVisible(boxes.To);
  ShowBox(txtActionToStackNum_, boxes.ToStackNum, choice_.ToStackNum);
}

void ActionPanel::ShowLabel(bool needed) {
  int row = -1;
  for (std::size_t i = 0; i < Game.ScriptLabels.size(); ++i)
    if (Game.ScriptLabels[i] == choice_.Label) row = static_cast<int>(i);
  const std::string_view words = choice_.Label.empty() ? kNoLabelsText : choice_.Label;
  lblLabel_->Show(Text(words), row);
  lblLabel_->setVisible(needed);
}

/// The parts stand in the order of the words; that of "Round" is its own.
void ActionPanel::ShowOrder() {
  const bool rounds = choice_.Action == RoundBet;
  if (std::exchange(rounds_, rounds) == rounds) return;
  if (rounds) return SetOrder({lblAction_, lblTo_, txtActionToStackNum_, lblOf_, txtActionAmount_});
  SetOrder({lblAction_, lblLabel_, txtActionFlag_, lblActionTF_, txtActionAmount_, lblOperator_,
            lblOf_, txtActionOfStackNum_, lblOn_, txtActionName_, lblTo_, txtActionToStackNum_});
}

void ActionPanel::ShowNamesInUse() {
  if (!BoxesOf(choice_).Label || !choice_.Label.empty()) return;
  ChooseAction(choice_, choice_.Action);  // takes the first label in use
  ShowLabel(true);
}

void ActionPanel::ChooseFile() {
  if (BoxesOf(choice_).Use != NameUse::File) return;
  Guarded("frmAutoBet", [this] {
    if (!RunFileScreen(window(), FileCommandOf(choice_.Action))) return;
    Change([this] { choice_.Name = Game.SelectedFileName; });
  });
}

bool ActionPanel::eventFilter(QObject* watched, QEvent* event) {
  if (watched == txtActionName_ && event->type() == QEvent::MouseButtonDblClick &&
      BoxesOf(choice_).Use == NameUse::File) {
    ChooseFile();
    return true;
  }
  return LinePanel::eventFilter(watched, event);
}
