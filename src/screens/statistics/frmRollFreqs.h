// The numbers and the spacing of one chosen roll event.
#pragma once

#include <QColor>

#include "figures/roll_freqs.h"
#include "screens/frame/report.h"
#include "screens/frame/screen.h"

class QComboBox;
class QPushButton;
class QVBoxLayout;

/// The colours of the gaps; as they come, those of a printed page.
struct GapInks {
  QColor Paper{Qt::white};
  QColor Remark{Qt::gray};
  QColor Name{Qt::blue};
  QColor Figure{Qt::black};
  QColor Bar{0x9C, 0xC4, 0xE8};
};

/// The gaps of the event, each with a bar, and behind them the curve that dice of the probability
/// shown would leave.
class picGapsBox : public QWidget {
  Q_OBJECT

 public:
  explicit picGapsBox(QWidget* parent);
  void Show(const RollFreqs& freqs);
  static void Paint(QPainter& painter, QRectF area, const RollFreqs& freqs, const GapInks& inks);

 protected:
  void paintEvent(QPaintEvent* event) override;
  bool event(QEvent* event) override;

 private:
  RollFreqs freqs_;
};

class frmRollFreqs : public Screen {
  Q_OBJECT

 public:
  explicit frmRollFreqs(QWidget* table);

 protected:
  void ShowRecord() override;

 private:
  QComboBox* MakeChoice();
  QWidget* MakeFigures();
  Report Print() const;

  bool skewed_ = false;  // compared with the skewed dice
  QPushButton* cmdProbable_ = nullptr;
  QLabel* lblTotalRollsAll_ = nullptr;
  QLabel* lblTotalRolls_ = nullptr;
  QLabel* lblActualPercent_ = nullptr;
  QLabel* lblIdealPercent_ = nullptr;
  QLabel* lblLastRolled_ = nullptr;
  QLabel* lblAverage_ = nullptr;
  picGapsBox* picGaps_ = nullptr;
};
