#include "screens/frame/numeric_entry.h"

#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPalette>

#include "core/text.h"
#include "rules/numeric_entry.h"
#include "screens/frame/chrome.h"

namespace {

QColor ColorOf(ValueColorKind kind) {
  switch (kind) {
    case ValueBlue: return {0, 0, 255};
    case ValueRed: return {255, 0, 0};
    default: return Qt::black;
  }
}

void ColorByValue(QLineEdit* box) {
  QPalette palette = box->palette();
  palette.setColor(QPalette::Base, PaperColor());
  palette.setColor(QPalette::Text,
                   InkOnPaper(ColorOf(ValueColor(ParseAmount(box->text().toStdString())))));
  box->setPalette(palette);
}

/// Stands between the keyboard and a numeric box.
class NumericFilter : public QObject {
 public:
  NumericFilter(QLineEdit* box, int decimals, bool minusAllowed)
      : QObject(box), box_(box), decimals_(decimals), minusAllowed_(minusAllowed) {}

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::KeyPress) return TakeKey(*static_cast<QKeyEvent*>(event));
    // The middle button pastes a selection past the keyboard.
    if (event->type() == QEvent::MouseButtonRelease &&
        static_cast<QMouseEvent*>(event)->button() == Qt::MiddleButton) {
      return true;
    }
    return QObject::eventFilter(watched, event);
  }

 private:
  bool TakeKey(const QKeyEvent& key) {
    if (key.matches(QKeySequence::Paste)) {
      for (const QChar letter : QApplication::clipboard()->text()) {
        if (Passes(letter)) box_->insert(letter);
      }
      return true;
    }
    // A command, whatever letter it bears; with Alt it may be a letter of the third level.
    if ((key.modifiers() & Qt::ControlModifier) && !(key.modifiers() & Qt::AltModifier)) {
      return false;
    }
    const QString text = key.text();
    if (text.isEmpty() || !text[0].isPrint()) return false;
    return !Passes(text[0]);
  }

  bool Passes(QChar letter) const {
    NumericBox state;
    state.Text = box_->text().toStdString();
    const bool selected = box_->hasSelectedText();
    state.SelectionStart = selected ? box_->selectionStart() : box_->cursorPosition();
    state.SelectionLength = selected ? box_->selectionLength() : 0;
    state.MaxLength = box_->maxLength();
    return EntryKeyPasses(state, letter.unicode(), decimals_, minusAllowed_);
  }

  QLineEdit* box_;
  int decimals_;
  bool minusAllowed_;
};

}  // namespace

void MakeNumericBox(QLineEdit* box, int decimals, bool minusAllowed) {
  box->installEventFilter(new NumericFilter(box, decimals, minusAllowed));
  box->setAlignment(Qt::AlignRight);
  box->setContextMenuPolicy(Qt::NoContextMenu);
  box->setAcceptDrops(false);
  box->setAttribute(Qt::WA_InputMethodEnabled, false);
  QObject::connect(box, &QLineEdit::textChanged, box, [box] { ColorByValue(box); });
  FollowChrome(box, [box] { ColorByValue(box); });
}
