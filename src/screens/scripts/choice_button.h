// A word of a line that is chosen from a list.
#pragma once

#include <QPushButton>
#include <functional>
#include <vector>

#include "autobet/language.h"

class ListPopup;

/// Looks as a choice and opens its list: by a click, the space bar, Alt and the down key, or a
/// letter, which begins what is looked for.
class ChoiceButton : public QPushButton {
  Q_OBJECT

 public:
  using Items = std::function<std::vector<ListItem>()>;

  /// `listName` is the list's object name; `choose` takes the code of the row that was chosen.
  ChoiceButton(const QString& name, const QString& listName, const QString& title, Items items,
               std::function<void(int code)> choose);

  /// Shows a choice: its words on the line and its code.
  void Show(const QString& words, int code);

  void Open(const QString& typed = {});

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  Items items_;
  std::function<void(int)> choose_;
  ListPopup* popup_;
  int code_ = 0;
};
