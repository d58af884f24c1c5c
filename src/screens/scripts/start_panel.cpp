#include "screens/scripts/start_panel.h"

#include <QLineEdit>

#include "screens/frame/controls.h"
#include "screens/scripts/choice_button.h"

StartPanel::StartPanel(const QString& what, const QString& caption, const QString& tip,
                       std::span<const ListItem> list)
    : LinePanel(qPrintable("pic" + what), caption, qPrintable("cmd" + what), tip), list_(list) {
  lblStart_ = Add(new ChoiceButton(
      "lbl" + what, "list" + what, QString(caption).remove('&'), [this] { return RowsOf(list_); },
      [this](int code) { Change([&] { kind_ = code; }); }));
  SetFirstBox(lblStart_);
  HideSentence();
  Drop();
}

QWidget* StartPanel::FirstBox() const { return lblStart_; }

void StartPanel::ShowChoice() { lblStart_->Show(Text(TextOf(list_, kind_)), kind_); }

LabelPanel::LabelPanel()
    : LinePanel("picLabel", tr("&Label or remark"), "cmdLogLabel",
                tr("Log the label before the current line (Enter)")) {
  txtLabel_ =
      AddBox("txtLabel", tr("Name of the label; a remark begins with an apostrophe"), typed_, 40);
  txtLabel_->setPlaceholderText(tr("Name of a label, or ' and a remark"));
  SetFirstBox(txtLabel_);
  HideSentence();
  Drop();
}

std::optional<ScriptLine> LabelPanel::Log(int replaced) { return LogLabel(typed_, replaced); }

QWidget* LabelPanel::FirstBox() const { return txtLabel_; }

void LabelPanel::ShowChoice() { ShowBox(txtLabel_, true, typed_); }
