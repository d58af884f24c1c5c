// The results of any selection of bets, for actual and for phantom wagers.
#pragma once

#include <array>
#include <vector>

#include "figures/bet_results.h"
#include "screens/frame/record_model.h"
#include "screens/frame/screen.h"

class QGridLayout;
class QListView;

class frmBetResults : public Screen {
  Q_OBJECT

 public:
  explicit frmBetResults(QWidget* table);

 protected:
  void ShowRecord() override;

 private:
  static constexpr int kColumns = 5;

  QWidget* MakeChoice();
  QWidget* MakePanel();
  QLabel* AddHeadFigure(QGridLayout* grid, int column, const QString& caption, const char* name);
  void TakeSelection();
  void ShowSelection();

  RecordModel* bets_ = nullptr;
  QListView* lstBets_ = nullptr;
  QLabel* lblNumRolls_ = nullptr;
  QLabel* lblRollsPerHour_ = nullptr;
  QLabel* lblHours_ = nullptr;
  QLabel* lblOnBets_ = nullptr;
  QLabel* lblOnBetsLastRoll_ = nullptr;
  QLabel* lblLuck_ = nullptr;
  QLabel* lblEmpty_ = nullptr;
  std::array<std::array<QLabel*, kColumns + 1>, kBetResultsRows> cells_{};
  bool showing_ = false;  // the list follows the record, not the other way round
};
