// The list of the logged lines: what it looks like, and what the mouse does in it.
#pragma once

#include <QBasicTimer>
#include <QTableView>

class ScriptModel;

class ScriptView : public QTableView {
  Q_OBJECT

 public:
  explicit ScriptView(ScriptModel* model, QWidget* parent = nullptr);

  /// Follows the record: the current line and the selected ones.
  void ShowCursor();

  /// Makes a line the current one; `ScrCount` + 1 is the place behind the last. It alone is
  /// selected.
  void GoTo(int number);
  void MoveCurrent(int lines);

  void BringToTop(int number);
  int TopLine() const;

  /// Scrolls up or down alone: the beginning of a line says most.
  void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override;

  /// Fits the columns to what they show.
  void FitColumns();

 signals:
  void LineWanted(int number);        // a double click, or Enter
  void BreakpointWanted(int number);  // a click in the margin
  void MoveWanted(int before);        // the selected lines were dragged
  void CursorMoved();                 // current line or selection

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void timerEvent(QTimerEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void selectionChanged(const QItemSelection& selected, const QItemSelection& left) override;
  void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;

 private:
  int LineAt(const QPoint& place) const;
  int GapAt(const QPoint& place) const;
  int HeightAbove(int number) const;
  void EndMove();

  ScriptModel* model_;
  QPoint pressed_;
  bool mayMove_ = false;  // the button went down on a selected line
  int moveBefore_ = 0;    // while lines are dragged: the line before which they would go
  bool following_ = false;
  int broughtUp_ = 0;  // the line last brought to the top, while the list stands as it stood then
  int broughtUpAt_ = 0;
  QBasicTimer scroll_;
};
