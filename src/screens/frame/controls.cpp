#include "screens/frame/controls.h"

#include <QBoxLayout>
#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>

#include "core/text.h"
#include "screens/frame/bind.h"
#include "screens/frame/guard.h"

namespace {

constexpr int kRoundLetters = 16;  // frame and caret of a box

}  // namespace

QString Text(std::string_view utf8) {
  return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

QString Money(Currency amount) { return Text(MoneyText(amount)); }

QString Count(long long count) { return Text(CountText(count)); }

QLabel* Caption(const QString& text, QWidget* buddy) {
  QLabel* label = new QLabel(text);
  label->setBuddy(buddy);
  return label;
}

QPushButton* AddButton(QBoxLayout* row, const QString& name, const QString& caption,
                       const QString& tip, const char* place, std::function<void()> act) {
  QPushButton* button = New<QPushButton>(name, caption);
  button->setToolTip(tip);
  QObject::connect(button, &QPushButton::clicked, button,
                   [place, act = std::move(act)] { Guarded(place, act); });
  row->addWidget(button);
  return button;
}

QRadioButton* Option(const QString& name, const QString& caption, const RecordField<int>& field,
                     int value) {
  auto* option = New<QRadioButton>(name, caption);
  Bind(option, field, value);
  return option;
}

QCheckBox* CheckBox(const QString& name, const QString& caption, const RecordField<bool>& field) {
  auto* box = New<QCheckBox>(name, caption);
  Bind(box, field);
  return box;
}

QComboBox* ChoiceList(const QString& name, const QStringList& items,
                      const RecordField<int>& field) {
  auto* list = New<QComboBox>(name);
  list->addItems(items);
  Bind(list, field);
  return list;
}

QLineEdit* TextBox(const QString& name, int length) {
  auto* box = New<QLineEdit>(name);
  box->setMaxLength(length);
  box->setMinimumWidth(box->fontMetrics().horizontalAdvance(QString(length, '0')) + kRoundLetters);
  return box;
}

void AddRow(QGridLayout* grid, const QString& caption, QWidget* control) {
  const int row = grid->rowCount();
  grid->addWidget(Caption(caption, control), row, 0);
  grid->addWidget(control, row, 1);
}

QScrollArea* Scrolling(QWidget* content) {
  QScrollArea* area = new QScrollArea;
  area->setFrameShape(QFrame::NoFrame);
  area->setWidgetResizable(true);
  area->setAccessibleName(QObject::tr("Page"));
  area->setWidget(content);
  return area;
}
