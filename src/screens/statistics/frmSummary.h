// The whole game's figures on one screen.
#pragma once

#include <vector>

#include "figures/summary.h"
#include "screens/frame/screen.h"

class QGridLayout;

class frmSummary : public Screen {
  Q_OBJECT

 public:
  explicit frmSummary(QWidget* table);

 protected:
  void ShowRecord() override;

 private:
  QWidget* MakeGroup(const SummaryGroup& group);

  /// The labels of a row, in the order of `FigureSummary`.
  struct RowLabels {
    QLabel* Name;
    QLabel* Figure;
  };
  std::vector<RowLabels> rows_;
};
