// How often each number came up, beside how often it should.
#pragma once

#include "figures/roll_totals.h"
#include "screens/frame/screen.h"

class QRadioButton;
class QScrollBar;

/// The chart; a bar tells its figures under the mouse.
class picTotalsBox : public QWidget {
  Q_OBJECT

 public:
  explicit picTotalsBox(QWidget* parent);

  void Show(RollTotals totals);
  void ScrollTo(int place);

  /// How far the columns reach beyond the view.
  int Beyond() const;

 signals:
  void Resized();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  bool event(QEvent* event) override;

 private:
  RollTotals totals_;
  int scrolled_ = 0;
};

class frmRollTotals : public Screen {
  Q_OBJECT

 public:
  explicit frmRollTotals(QWidget* table);

 protected:
  void ShowRecord() override;

 private:
  void MakeMenus();
  void ShowBar();

  picTotalsBox* picTotals_ = nullptr;
  QScrollBar* hscr_ = nullptr;
  QLabel* lblTotalRolls_ = nullptr;
  QLabel* lblEmpty_ = nullptr;
  QWidget* picComparison_ = nullptr;
};
