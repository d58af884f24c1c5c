// A list that opens below a control, with a box to type in what is looked for.
#pragma once

#include <QFrame>
#include <QStringList>
#include <functional>

class ChoiceModel;
class QLineEdit;
class QListView;

class ListPopup : public QFrame {
  Q_OBJECT

 public:
  /// `name` is the list's object name; `title` names it for those who can't see it.
  ListPopup(QWidget* parent, const QString& name, const QString& title);

  /// Opens below `control` with row `current` chosen; `choose` takes the row that the player
  /// chooses. What is typed leaves only the rows that hold all of its words; `typed` is its
  /// beginning. Separators can't be chosen.
  void Open(QWidget* control, const QStringList& rows, int current,
            std::function<void(int row)> choose, const QString& typed = {});

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Place(QWidget* control);
  void Filter(const QString& typed);
  void Choose();

  ChoiceModel* model_;
  QLineEdit* txtFilter_;
  QListView* list_;
  std::function<void(int)> choose_;
};
