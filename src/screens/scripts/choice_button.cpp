#include "screens/scripts/choice_button.h"

#include <QKeyEvent>
#include <QStyleOptionComboBox>
#include <QStylePainter>
#include <algorithm>
#include <utility>

#include "screens/frame/controls.h"
#include "screens/scripts/list_popup.h"

namespace {

constexpr int kNarrowest = 60;

}  // namespace

ChoiceButton::ChoiceButton(const QString& name, const QString& listName, const QString& title,
                           Items items, std::function<void(int)> choose)
    : items_(std::move(items)),
      choose_(std::move(choose)),
      popup_(new ListPopup(this, listName, title)) {
  setObjectName(name);
  setAccessibleName(title);
  setAutoDefault(false);
  connect(this, &QPushButton::clicked, this, [this] { Open(); });
}

void ChoiceButton::Show(const QString& words, int code) {
  code_ = code;
  if (words == text()) return;
  setText(words);
  updateGeometry();
}

void ChoiceButton::Open(const QString& typed) {
  const std::vector<ListItem> items = items_();
  QStringList rows;
  int current = -1;
  for (const ListItem& item : items) {
    if (item.Code == code_ && item.Text != kSeparatorText) current = static_cast<int>(rows.size());
    rows << ::Text(item.Text);
  }
  popup_->Open(
      this, rows, current,
      [this, items](int row) {
        choose_(items[static_cast<std::size_t>(row)].Code);
        setFocus();
      },
      typed);
}

QSize ChoiceButton::sizeHint() const {
  QStyleOptionComboBox option;
  option.initFrom(this);
  const QSize words(std::max(fontMetrics().horizontalAdvance(text()), kNarrowest),
                    fontMetrics().height());
  return style()->sizeFromContents(QStyle::CT_ComboBox, &option, words, this);
}

QSize ChoiceButton::minimumSizeHint() const { return {kNarrowest, sizeHint().height()}; }

void ChoiceButton::paintEvent(QPaintEvent*) {
  QStylePainter painter(this);
  QStyleOptionComboBox option;
  option.initFrom(this);
  if (isDown() || popup_->isVisible()) option.state |= QStyle::State_On;
  const QRect words =
      style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, this);
  option.currentText = fontMetrics().elidedText(text(), Qt::ElideRight, words.width());
  painter.drawComplexControl(QStyle::CC_ComboBox, option);
  painter.drawControl(QStyle::CE_ComboBoxLabel, option);
}

void ChoiceButton::keyPressEvent(QKeyEvent* event) {
  const bool plain = (event->modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier)) == 0;
  const QString typed = event->text();
  if (event->key() == Qt::Key_Down && event->modifiers() == Qt::AltModifier) return Open();
  if (plain && !typed.isEmpty() && typed[0].isPrint() && !typed[0].isSpace()) return Open(typed);
  // The arrows belong to the script.
  if (event->key() == Qt::Key_Up || event->key() == Qt::Key_Down) return event->ignore();
  QPushButton::keyPressEvent(event);
}
