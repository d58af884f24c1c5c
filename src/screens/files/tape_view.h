// The view over a tape: a stretch of it, read when it comes into view.
#pragma once

#include <QBasicTimer>
#include <QPixmap>
#include <QWidget>
#include <array>
#include <string>

/// The throws in view, in rows of the same length that begin with the number of their first roll.
/// Whatever the length of the tape, only what is in view is read.
class picDiceRollsBox : public QWidget {
  Q_OBJECT

 public:
  explicit picDiceRollsBox(QWidget* parent);

  /// Reads the tape in use anew. What can't be read is shown as no throws.
  void Load();

  /// Throws on the tape when it was read last, and why it couldn't be read; empty when it could.
  std::int64_t Length() const { return length_; }
  const std::string& Failure() const { return failure_; }

  /// Rows of the whole tape with the free place behind its last throw, those that fit whole, and
  /// the throws in each.
  int Rows() const;
  int WholeRows() const;
  int PerRow() const { return perRow_; }

  int TopRow() const { return top_; }
  void ScrollTo(int row);
  void BringIntoView(std::int64_t record);
  void BringToMiddle(std::int64_t record);

  /// Where a throw is drawn.
  QRectF CellOf(std::int64_t record) const;

 signals:
  /// The view shows another stretch, or another length of rows.
  void Scrolled();

  /// The player points at throws: where a selection begins, and where it ends.
  void Selected(qint64 position, qint64 end);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void timerEvent(QTimerEvent* event) override;
  bool event(QEvent* event) override;

 private:
  void Measure();
  void ReadView();
  int RowOf(std::int64_t record) const;
  std::int64_t FirstInView() const;
  std::int64_t RecordAt(QPointF place) const;
  void DragTo(QPointF place);
  const QPixmap& Die(int face);
  void PaintRowNumbers(QPainter& painter) const;
  void PaintRoll(QPainter& painter, const QRectF& cell, char throwByte);
  void PaintPosition(QPainter& painter) const;

  std::int64_t length_ = 0;
  std::string failure_;
  std::string inView_;
  int perRow_ = 1;
  int top_ = 0;
  double gutter_ = 0;  // with the numbers of the rolls
  QSizeF cell_{1, 1};
  double die_ = 1;
  std::array<QPixmap, 7> dice_;
  std::int64_t anchor_ = 0;  // where the drag under way began
  QPointF mouse_;
  QBasicTimer drag_;  // goes on scrolling while the mouse is held beyond the view
};
