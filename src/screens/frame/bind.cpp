#include "screens/frame/bind.h"

#include <QAbstractButton>
#include <QAbstractSlider>
#include <QAction>
#include <QComboBox>
#include <QEvent>
#include <QFocusEvent>
#include <QLabel>
#include <QLineEdit>

#include "core/text.h"
#include "screens/frame/guard.h"
#include "screens/frame/numeric_entry.h"
#include "screens/frame/player_change.h"

namespace {

QString Text(const std::string& text) { return QString::fromStdString(text); }

template <class T>
void Store(const RecordField<T>& field, T value) {
  ChangeByPlayer([field, value = std::move(value)] { field.Set(value); });
}

/// The wheel turns the page that a control lies on, not the control, unless it has the focus.
class WheelGuard : public QObject {
 public:
  explicit WheelGuard(QWidget* control) : QObject(control) {
    control->setFocusPolicy(Qt::StrongFocus);
    control->installEventFilter(this);
  }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() != QEvent::Wheel || static_cast<QWidget*>(watched)->hasFocus()) return false;
    event->ignore();
    return true;
  }
};

/// A box whose text is taken when the player has done with it.
class TypedBox : public QObject {
  Q_OBJECT

 public:
  TypedBox(QLineEdit* box, std::function<QString()> shown, std::function<void(QString)> take)
      : QObject(box), box_(box), shown_(std::move(shown)), take_(std::move(take)) {
    box->installEventFilter(this);
    connect(box, &QLineEdit::returnPressed, this, &TypedBox::Take);
  }

  void Load() const {
    if (box_->isModified()) return;
    const QString text = shown_();
    if (box_->text() != text) box_->setText(text);
  }

  void Take() {
    if (!box_->isModified()) return;
    box_->setModified(false);
    const QString text = box_->text();
    if (text != shown_()) take_(text);
    if (!ChangesWait()) Load();
  }

 protected:
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::FocusOut &&
        static_cast<QFocusEvent*>(event)->reason() != Qt::PopupFocusReason) {
      Take();
    }
    if (event->type() == QEvent::FocusIn && box_->isEnabled() &&
        static_cast<QFocusEvent*>(event)->reason() != Qt::PopupFocusReason) {
      QMetaObject::invokeMethod(box_, &QLineEdit::selectAll, Qt::QueuedConnection);
    }
    return false;
  }

 private:
  QLineEdit* box_;
  std::function<QString()> shown_;
  std::function<void(QString)> take_;
};

Binding& BindTyped(QLineEdit* box, std::function<QString()> shown,
                   std::function<void(QString)> take) {
  auto* typed = new TypedBox(box, std::move(shown), std::move(take));
  return *new Binding(box, [typed] { typed->Load(); });
}

/// Stores the number that a text holds, brought within the field's limits.
void StoreAmount(const RecordField<Currency>& field, const QString& text) {
  Guarded("Numeric Box", [&] {
    const Currency value = field.Nearest(ParseAmount(text.toStdString()));
    if (value != field.Get()) Store(field, value);
  });
}

}  // namespace

Binding::Binding(QObject* control, std::function<void()> load)
    : QObject(control), load_(std::move(load)) {
  load_();
}

Binding& Binding::EnabledWhen(std::function<bool()> possible, const QString& whyNot) {
  possible_ = std::move(possible);
  whyNot_ = whyNot;
  tip_ = parent()->property("toolTip").toString();
  load_ = [this, load = std::move(load_)] {
    load();
    ShowPossible();
  };
  ShowPossible();
  return *this;
}

void Binding::ShowPossible() const {
  const bool possible = possible_();
  parent()->setProperty("enabled", possible);
  if (!whyNot_.isEmpty()) parent()->setProperty("toolTip", possible ? tip_ : whyNot_);
}

Binding& Bind(QAbstractButton* box, RecordField<bool> field) {
  box->setCheckable(true);
  QObject::connect(box, &QAbstractButton::clicked, box, [field](bool on) { Store(field, on); });
  return *new Binding(box, [box, field] { box->setChecked(field.Get()); });
}

Binding& Bind(QAbstractButton* option, RecordField<int> field, int value) {
  QObject::connect(option, &QAbstractButton::clicked, option,
                   [field, value] { Store(field, value); });
  return *new Binding(option, [option, field, value] {
    // One option of a group can't be taken out by itself: the one that stands takes it out.
    if (field.Get() == value) option->setChecked(true);
  });
}

Binding& Bind(QComboBox* list, RecordField<int> field, int first) {
  new WheelGuard(list);
  QObject::connect(list, &QComboBox::activated, list,
                   [field, first](int index) { Store(field, index + first); });
  return *new Binding(list, [list, field, first] {
    const int index = field.Get() - first;
    list->setCurrentIndex(index >= 0 && index < list->count() ? index : 0);
  });
}

Binding& Bind(QLineEdit* box, RecordField<Currency> field, NumberForm form) {
  MakeNumericBox(box, form.Decimals, form.Minus);
  if (form.Stores == NumberForm::AtEachKey) {
    QObject::connect(box, &QLineEdit::textEdited, box,
                     [field](const QString& text) { StoreAmount(field, text); });
  }
  return BindTyped(
      box, [field] { return Text(PlainText(field.Get())); },
      [field](const QString& text) { StoreAmount(field, text); });
}

Binding& Bind(QLineEdit* box, RecordField<int> field, NumberForm form) {
  const auto whole = [field](Currency value) {
    const Limits<int> range = field.Range();
    return value > Currency(range.High)  ? range.High
           : value < Currency(range.Low) ? range.Low
                                         : static_cast<int>(value.ToDouble());
  };
  return Bind(box,
              RecordField<Currency>([field] { return Currency(field.Get()); },
                                    [field, whole](Currency value) { field.Set(whole(value)); })
                  .Within(Currency(field.Range().Low), Currency(field.Range().High)),
              form);
}

Binding& Bind(QLineEdit* box, RecordField<std::string> field) {
  box->setMaxLength(field.Width());
  return BindTyped(
      box, [field] { return Text(field.Get()); },
      [field](const QString& text) { Store(field, text.toStdString()); });
}

Binding& Bind(QAbstractSlider* slider, RecordField<int> field) {
  new WheelGuard(slider);
  slider->setRange(field.Range().Low, field.Range().High);
  QObject::connect(slider, &QAbstractSlider::valueChanged, slider, [field](int value) {
    if (value != field.Get()) Store(field, value);
  });
  return *new Binding(slider, [slider, field] {
    if (!slider->isSliderDown()) slider->setValue(field.Get());
  });
}

Binding& BindText(QLabel* label, std::function<QString()> text) {
  return *new Binding(label, [label, text = std::move(text)] {
    const QString shown = text();
    if (label->text() != shown) label->setText(shown);
  });
}

Binding& BindPossible(QWidget* control, std::function<bool()> possible, const QString& whyNot) {
  return (new Binding(control, [] {}))->EnabledWhen(std::move(possible), whyNot);
}

void TakeTyped(QWidget* parent) {
  for (TypedBox* box : parent->findChildren<TypedBox*>()) box->Take();
}

void LoadBindings(QObject* parent) {
  for (const Binding* binding : parent->findChildren<Binding*>()) binding->Load();
}

#include "bind.moc"
