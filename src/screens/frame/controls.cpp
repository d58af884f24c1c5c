#include "screens/frame/controls.h"

#include <QBoxLayout>
#include <QPushButton>

#include "core/text.h"
#include "screens/frame/guard.h"

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
