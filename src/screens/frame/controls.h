// Controls by their given names, and texts of the game as Qt takes them.
#pragma once

#include <QLabel>
#include <QString>
#include <functional>
#include <string_view>
#include <utility>

#include "core/currency.h"

class QBoxLayout;
class QPushButton;

QString Text(std::string_view utf8);

/// An amount and a whole number as every screen shows them.
QString Money(Currency amount);
QString Count(long long count);

/// A control with its given name.
template <class Control, class... With>
Control* New(const QString& name, With&&... with) {
  auto* control = new Control(std::forward<With>(with)...);
  control->setObjectName(name);
  return control;
}

/// The caption of a control, with the mnemonic that leads to it.
QLabel* Caption(const QString& text, QWidget* buddy);

/// A button at the end of a row or column that does `act`; a fault in it is reported under `place`.
QPushButton* AddButton(QBoxLayout* row, const QString& name, const QString& caption,
                       const QString& tip, const char* place, std::function<void()> act);
