// What the modal windows stand on.
#pragma once

#include <QDialog>
#include <functional>

class QBoxLayout;
class QPushButton;

/// A window that waits for an answer: its name, a caption that is never cut, its help topic, F1 and
/// the last error.
class Dialog : public QDialog {
  Q_OBJECT

 public:
  /// `name` is the window's object name and stands in the report of a fault.
  Dialog(QWidget* parent, const char* name, const QString& caption, int helpTopic);

 protected:
  /// Runs what a control does; a fault in it is reported under the window's name.
  void Do(const std::function<void()>& act);

  /// A button at the end of a row or column that does `act`. Enter presses the default one.
  QPushButton* AddButton(QBoxLayout* row, const QString& name, const QString& caption,
                         std::function<void()> act);

  void keyPressEvent(QKeyEvent* event) override;

 private:
  QByteArray place_;
  int helpTopic_;
};
