// The editor of Dice Roll files: looking at a tape, typing, drawing, moving and counting throws.
#pragma once

#include "figures/tape_counts.h"
#include "screens/frame/record_model.h"
#include "screens/frame/screen.h"

class QGridLayout;
class QGroupBox;
class QLineEdit;
class QScrollArea;
class QScrollBar;
class QTableView;
class QTimer;
class picDiceRollsBox;

class frmDiceRollFiles : public Screen {
  Q_OBJECT

 public:
  explicit frmDiceRollFiles(QWidget* table);

 protected:
  void ShowRecord() override;
  bool TakeKey(QKeyEvent& event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void MakeView(QGridLayout* grid);
  QScrollArea* MakePanel();
  QGroupBox* MakeRecorder();
  QGroupBox* MakeNewRolls();
  QGroupBox* MakeOutput();
  QGroupBox* MakeCounts();
  QLayout* MakeStatusRow();
  void MakeMenus();
  void MakeHighlightMenu();

  void Select(std::int64_t position, std::int64_t end);
  bool TakeArrow(const QKeyEvent& event);
  bool TakeDigit(int digit);
  void TakeTypedRolls();
  void DeleteBefore();
  void BarActed();
  void FollowFile();

  void CountRolls(bool anyLength);
  void ShowBar();
  void ShowStatus();

  picDiceRollsBox* picDiceRolls_ = nullptr;
  QScrollBar* vscrDiceRolls_ = nullptr;
  QLabel* lblEmpty_ = nullptr;
  QLabel* lblTotalNumRolls_ = nullptr;
  QLabel* lblSelected_ = nullptr;
  QLabel* lblTyped_ = nullptr;
  QLabel* lblCounted_ = nullptr;
  QLineEdit* txtRollNumbers_ = nullptr;
  QPushButton* cmdCount_ = nullptr;
  QTableView* lstCounts_ = nullptr;
  RecordModel* kinds_ = nullptr;
  QTimer* timerFile_ = nullptr;

  int die1_ = 0;          // typed, and waiting for the second die
  int seenPosition_ = 0;  // `DiceFilePos` as the view followed it last
  std::string seenTape_;  // and whose position that is
  TapeCounts counts_;
  std::vector<TapeKind> shown_;
  QString countedOf_;  // what `counts_` holds: tape, length and stretch
};
