// The panel of the histogram of a Games Log.
#pragma once

#include <QWidget>

#include "screens/statistics/histogram_painter.h"

class picHistogramBox : public QWidget {
  Q_OBJECT

 public:
  explicit picHistogramBox(QWidget* parent);

  void Show(HistogramPicture picture);
  void SetReach(double reach);
  const HistogramPicture& Picture() const { return picture_; }

  /// Points at a bar; -1 for none.
  void PointAt(int bar);

 signals:
  void Pointed();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  HistogramFrame Frame() const;

  HistogramPicture picture_;
};
