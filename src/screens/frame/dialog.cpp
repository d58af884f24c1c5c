#include "screens/frame/dialog.h"

#include <QFontMetrics>
#include <QPushButton>

#include "screens/frame/controls.h"
#include "screens/frame/guard.h"
#include "screens/frame/screen.h"

namespace {

constexpr int kTitleButtons = 110;  // the room that they take beside the title

}  // namespace

Dialog::Dialog(QWidget* parent, const char* name, const QString& caption, int helpTopic)
    : QDialog(parent), place_(name), helpTopic_(helpTopic) {
  setObjectName(name);
  setWindowTitle(caption);
  QFont title = font();
  title.setBold(true);
  setMinimumWidth(QFontMetrics(title).horizontalAdvance(caption) + kTitleButtons);
}

void Dialog::Do(const std::function<void()>& act) { Guarded(place_.constData(), act); }

QPushButton* Dialog::AddButton(QBoxLayout* row, const QString& name, const QString& caption,
                               std::function<void()> act) {
  QPushButton* button = ::AddButton(row, name, caption, {}, place_.constData(), std::move(act));
  button->setAutoDefault(false);
  return button;
}

void Dialog::keyPressEvent(QKeyEvent* event) {
  if (!TakeCommonKey(*event, helpTopic_)) QDialog::keyPressEvent(event);
}
