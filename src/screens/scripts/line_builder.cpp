#include "screens/scripts/line_builder.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "autobet/script.h"
#include "screens/frame/controls.h"
#include "screens/frame/guard.h"
#include "screens/scripts/action_panel.h"
#include "screens/scripts/condition_panel.h"
#include "screens/scripts/list_popup.h"
#include "screens/scripts/start_panel.h"

namespace {

constexpr const char* kPlace = "frmAutoBet";
constexpr int kGap = 8;

}  // namespace

LineBuilder::LineBuilder(QWidget* parent)
    : QWidget(parent),
      flags_(new ListPopup(this, "listFlags", tr("Flags in use"))),
      action_(new ActionPanel(flags_)) {
  setObjectName("picBuilder");
  panels_ = {
      new StartPanel("StartCondition", tr("Start Con&dition"),
                     tr("Log the start of a block of conditions (Enter)"), kStartConditionList),
      new StartPanel("StartAction", tr("Star&t Action"),
                     tr("Log the start of a block of actions (Enter)"), kStartActionList),
      new ConditionPanel(flags_), action_, new LabelPanel};
  picReplacing_ = New<QWidget>("picReplacing");
  lblReplacing_ = New<QLabel>("lblReplacing");
  QHBoxLayout* row = new QHBoxLayout(picReplacing_);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(lblReplacing_, 1);
  AddButton(row, "cmdLogAsNew", tr("&Insert as New"),
            tr("Log the line before the current one, and leave that as it is"), kPlace,
            [this] { Log(replacingOn_, true); });
  QHBoxLayout* starts = new QHBoxLayout;
  starts->setSpacing(kGap);
  starts->addWidget(panels_[0]);
  starts->addWidget(panels_[1]);
  QVBoxLayout* column = new QVBoxLayout(this);
  column->setSpacing(kGap);
  column->addLayout(starts);
  for (std::size_t i = 2; i < panels_.size(); ++i) column->addWidget(panels_[i]);
  column->addWidget(picReplacing_);
  column->addStretch(1);
  for (LinePanel* panel : panels_) {
    connect(panel, &LinePanel::LogWanted, this, [this, panel] { Log(panel, false); });
    connect(panel, &LinePanel::Touched, this, [this, panel] {
      for (LinePanel* other : panels_)
        if (other != panel) other->SetTouched(false);
    });
  }
  SetReplacing(0, nullptr);
  setFocusProxy(panels_[0]->FirstBox());
}

void LineBuilder::SetReplacing(int number, LinePanel* panel) {
  for (LinePanel* other : panels_) other->SetReplacing(other == panel ? number : 0);
  replacing_ = number;
  replacingOn_ = panel;
  lblReplacing_->setText(tr("Line %1 is being changed.").arg(number));
  picReplacing_->setVisible(number > 0);
}

void LineBuilder::Load(int number) {
  if (number < 1 || number > Game.ScrCount) return;
  const ScriptLine line = Line(number);
  for (LinePanel* panel : panels_) {
    if (!panel->Builds(line.LineKind)) continue;
    panel->Load(line);
    SetReplacing(number, panel);
    panel->SetTouched(true);
    panel->FirstBox()->setFocus();
    for (LinePanel* other : panels_)
      if (other != panel) other->SetTouched(false);
  }
}

bool LineBuilder::Drop() {
  bool any = replacing_ > 0;
  for (LinePanel* panel : panels_) {
    if (!panel->IsTouched()) continue;
    any = true;
    panel->Drop();
  }
  SetReplacing(0, nullptr);
  return any;
}

void LineBuilder::Log(LinePanel* panel, bool asNew) {
  Guarded(kPlace, [&] {
    const int replaced = panel == replacingOn_ && !asNew ? replacing_ : 0;
    const std::optional<ScriptLine> line = panel->Log(replaced);
    if (!line) return;
    logging_ = panel;
    emit LineLogged(*line, replaced);
  });
}

void LineBuilder::Logged() {
  if (!logging_) return;
  logging_->SetTouched(false);
  if (logging_->Builds(LabelLine)) logging_->Drop();
  SetReplacing(0, nullptr);
  logging_ = nullptr;
}

bool LineBuilder::LogFocused() {
  const QWidget* focus = window()->focusWidget();
  for (LinePanel* panel : panels_) {
    if (!panel->isAncestorOf(focus)) continue;
    Log(panel, false);
    return true;
  }
  return false;
}

void LineBuilder::ShowNamesInUse() { action_->ShowNamesInUse(); }
