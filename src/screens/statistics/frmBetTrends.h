// The winning or losing streak of every bet.
#pragma once

#include <vector>

#include "figures/bet_trends.h"
#include "screens/frame/record_model.h"
#include "screens/frame/screen.h"

class frmBetTrends : public Screen {
  Q_OBJECT

 public:
  explicit frmBetTrends(QWidget* table);

 protected:
  void ShowRecord() override;

 private:
  std::vector<BetTrend> trends_ = FigureBetTrends();
  RecordModel* rows_ = nullptr;
};
