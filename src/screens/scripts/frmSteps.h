// A run of the script, line by line: what each line did, and all figures meanwhile.
#pragma once

#include <QPointer>
#include <string>

#include "screens/frame/screen.h"

class QEventLoop;
class QLabel;
class QPushButton;
class QVBoxLayout;

/// Waits with the rest of the program blocked, but for the other screens. It stands from the first
/// step of a run to the end of it.
class frmSteps : public Screen {
  Q_OBJECT

 public:
  explicit frmSteps(QWidget* table);

  /// Shows a line with what became of it, or with line 0 the end of a block, and waits until the
  /// player goes on, ends the tracing, or interrupts the run.
  void WaitAt(int line, const std::string& text, const std::string& status);

 protected:
  bool TakeKey(QKeyEvent& event) override;
  bool MayClose() override;

 private:
  void MakeLine(QVBoxLayout* column);
  void MakeMenus();
  void GoOn();

  QLabel* lblLineNum_ = nullptr;
  QLabel* lblBreakpoint_ = nullptr;
  QLabel* lblAutoBetStep_ = nullptr;
  QLabel* lblStatus_ = nullptr;
  QPushButton* cmdNextAutoBet_ = nullptr;
  QPointer<QEventLoop> waiting_;
};

/// What the Host shows of a traced line. With the table minimised the run ends, as with a question
/// that nobody could see.
void ShowStep(QWidget* table, int line, const std::string& text, const std::string& status);

/// Puts the window away at the end of a run.
void PutStepsAway();
