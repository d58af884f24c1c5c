// The first steps at the table: four hints, one after the other, each beside what it speaks of.
#pragma once

#include <QPushButton>
#include <QWidget>

class frmCrapTable;

/// Darkens the table around what a hint speaks of; everything stays clickable. A step is over when
/// the player has done it, or wants the next one.
class FirstHints : public QWidget {
  Q_OBJECT

 public:
  explicit FirstHints(frmCrapTable* table);

  void Begin();
  /// Goes on when the step has been done at the table.
  void Follow();
  void End();
  int Step() const { return step_; }

 protected:
  void paintEvent(QPaintEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void GoTo(int step);
  void Place();
  QRectF Region() const;
  bool IsDone() const;

  frmCrapTable* table_;
  QWidget* balloon_;
  QPushButton* cmdNoHints_;
  QPushButton* cmdNextHint_;
  int step_ = 0;
  int rolls_ = 0;
};
