// The probabilities in one picture: the diamond of the 36 throws, the totals and the faces.
#pragma once

#include <QWidget>
#include <functional>

#include "dice/matrix_edit.h"

class QLineEdit;

/// What the player does in the picture.
struct PictureCalls {
  std::function<void(MatrixPlace place, const QString& text)> Type;
  std::function<void(MatrixPlace place, int steps)> Step;
  std::function<void(MatrixPlace place)> Lock;
  std::function<void()> Chosen;  // another place is in hand
};

/// Shows the matrix of the game in the view in force. A click, Left and Right take a place in hand;
/// typing opens a box on it, the wheel and Up and Down move its share, L locks it.
class picProbabilityBox : public QWidget {
  Q_OBJECT

 public:
  explicit picProbabilityBox(PictureCalls calls);

  MatrixPlace Chosen() const { return chosen_; }
  void Choose(MatrixPlace place);

  /// What is typed in the open box is taken.
  void TakeOpenBox();

  QSize sizeHint() const override { return minimumSizeHint(); }
  QSize minimumSizeHint() const override;

  /// Where a place lies in the picture.
  QRectF AreaOf(MatrixPlace place) const;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void PaintPlace(QPainter& painter, MatrixPlace place) const;
  void PaintHeadings(QPainter& painter) const;
  QString LabelOf(MatrixPlace place) const;
  void MoveBy(int steps);
  void OpenBox(const QString& text);
  void CloseBox();
  double RowHeight() const;
  double TotalsWidth() const;
  double HalfCell() const;

  PictureCalls calls_;
  MatrixPlace chosen_{6, 2};
  QLineEdit* txtShare_ = nullptr;
  bool boxOpen_ = false;
  QString shown_;  // by the place that the box lies on
  int wheel_ = 0;
};
