// Controls by their given names, and texts of the game as Qt takes them.
#pragma once

#include <QLabel>
#include <QString>
#include <QStringList>
#include <functional>
#include <string_view>
#include <utility>

#include "core/currency.h"
#include "screens/frame/field.h"

class QBoxLayout;
class QCheckBox;
class QComboBox;
class QGridLayout;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QScrollArea;

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

QRadioButton* Option(const QString& name, const QString& caption, const RecordField<int>& field,
                     int value);
QCheckBox* CheckBox(const QString& name, const QString& caption, const RecordField<bool>& field);
QComboBox* ChoiceList(const QString& name, const QStringList& items, const RecordField<int>& field);

/// A box of at most `length` letters, and wide enough for them.
QLineEdit* TextBox(const QString& name, int length);

/// Adds a caption and its control as the next row of a grid.
void AddRow(QGridLayout* grid, const QString& caption, QWidget* control);

/// A window or page that may be smaller than what it holds: it then scrolls.
QScrollArea* Scrolling(QWidget* content);
