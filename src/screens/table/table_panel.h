// The panel beside the table, where the window has width to spare: the card of a bet, the forecast,
// and what steers a run of rolls.
#pragma once

#include <QPushButton>
#include <QWidget>
#include <array>

#include "figures/bet_card.h"

class frmCrapTable;

class TablePanel : public QWidget {
  Q_OBJECT

 public:
  explicit TablePanel(frmCrapTable* table);

  /// How wide the panel is beside a table of this room; 0 for no panel.
  static int WidthFor(QSize room);

  /// The panel becomes this wide, and narrower where a window shrinks.
  void SetWidth(int width);
  QSize sizeHint() const override { return {width_, 0}; }
  QSize minimumSizeHint() const override { return {0, 0}; }

  /// The bet that the card tells of; another, or none, keeps it as it is.
  void ShowBet(int betId);
  void Refresh();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;

 private:
  void MakeRunControls();
  void Arrange();
  void ArrangeRun();
  void PaintHead(QPainter& painter, const QRectF& head, const QString& title,
                 const QString& note) const;
  void PaintForecast(QPainter& painter) const;
  void PaintRun(QPainter& painter) const;
  void PaintGauge(QPainter& painter, const QRectF& line) const;
  QPushButton* AddButton(const char* name, const QString& caption);

  frmCrapTable* table_;
  int width_ = 0;
  int bet_;
  BetCard card_;
  QRectF cardBox_;
  QRectF forecastBox_;
  QRectF runBox_;
  bool runFolded_ = false;
  double letters_ = 1;  // as the desktop's have grown
  double run_ = 1;      // the same of the run, as far as it has room
  std::array<QPushButton*, 3> cmdPace_{};
  QPushButton* cmdStopLoss_ = nullptr;
  QPushButton* cmdWinGoal_ = nullptr;
  QPushButton* cmdRollByItself_ = nullptr;
  QPushButton* cmdMoreStops_ = nullptr;
};
