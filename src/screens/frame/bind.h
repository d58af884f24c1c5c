// Joins a control to a field of the record.
//
// A bound control is loaded whenever its window is refreshed. What the player does with it goes
// through `ChangeByPlayer`: it waits for the dice, marks the game as changed and refreshes.
#pragma once

#include <QObject>
#include <functional>

#include "screens/frame/field.h"

class QAbstractButton;
class QAbstractSlider;
class QAction;
class QComboBox;
class QLabel;
class QLineEdit;
class QWidget;

/// The tie between a control, its parent, and what it shows.
class Binding : public QObject {
  Q_OBJECT

 public:
  Binding(QObject* control, std::function<void()> load);

  /// Shows what stands in the record.
  void Load() const { load_(); }

  /// The control can be used while this holds; else it is greyed, with the reason in its tool tip.
  Binding& EnabledWhen(std::function<bool()> possible, const QString& whyNot = {});

 private:
  void ShowPossible() const;

  std::function<void()> load_;
  std::function<bool()> possible_;
  QString whyNot_;
  QString tip_;
};

/// How a number is typed.
struct NumberForm {
  enum Storing { AtTheEnd, AtEachKey };

  int Decimals = 0;
  bool Minus = false;
  Storing Stores = AtTheEnd;  // when the box is left or Enter is pressed, or at each change
};

/// A check box or another button that stays down.
Binding& Bind(QAbstractButton* box, RecordField<bool> field);

/// One option of several: it stands for `value`.
Binding& Bind(QAbstractButton* option, RecordField<int> field, int value);

/// A list to choose from: its index, counted from `first`.
Binding& Bind(QComboBox* list, RecordField<int> field, int first = 0);

/// A number. What lies beyond the field's limits becomes the nearest value that may stand, and an
/// empty box 0. While a text is being typed it isn't loaded over.
Binding& Bind(QLineEdit* box, RecordField<Currency> field, NumberForm form);
Binding& Bind(QLineEdit* box, RecordField<int> field, NumberForm form = {});

/// A text, as long as the game file keeps it.
Binding& Bind(QLineEdit* box, RecordField<std::string> field);

/// A slider or a scroll bar, within the field's limits.
Binding& Bind(QAbstractSlider* slider, RecordField<int> field);

/// A label that shows what `text` says.
Binding& BindText(QLabel* label, std::function<QString()> text);

/// A control of which nothing but its use follows the record: it is greyed while `possible` doesn't
/// hold, with the reason in its tool tip.
Binding& BindPossible(QWidget* control, std::function<bool()> possible, const QString& whyNot = {});

/// Takes what has been typed into bound boxes below `parent` and isn't stored yet.
void TakeTyped(QWidget* parent);

/// Loads every control bound below `parent`.
void LoadBindings(QObject* parent);
