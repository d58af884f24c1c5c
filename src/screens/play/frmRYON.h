// The manual roll pad: the player names the next throw.
#pragma once

#include <vector>

#include "play/roll_pad.h"
#include "screens/frame/screen.h"

class PadButton;
class QStackedWidget;
class picChosenDice;

class frmRYON : public Screen {
  Q_OBJECT

 public:
  explicit frmRYON(QWidget* table);

 protected:
  void ShowRecord() override;
  void Opened() override;
  bool TakeKey(QKeyEvent& event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  void MakeHead(QBoxLayout* column);
  void MakeKeys(QBoxLayout* column);
  QWidget* MakeDisplay(int display);
  void MakeButtons(QBoxLayout* column);
  void MakeMenus();

  /// Throws what has been named, after the question where a run goes on.
  void Throw(std::optional<NamedThrow> named);
  void ShowEntry();

  PadEntry entry_;
  int display_ = PadTotals;
  std::vector<PadButton*> keys_;
  QStackedWidget* picPad_ = nullptr;
  picChosenDice* picChosen_ = nullptr;
  QLabel* lblTyped_ = nullptr;
  QLabel* lblRollCounter_ = nullptr;
  QPushButton* cmdHyperDrive_ = nullptr;
  QPushButton* cmdRandomRoll_ = nullptr;
};
